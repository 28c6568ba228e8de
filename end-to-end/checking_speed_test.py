#!/usr/bin/env python3
"""Carriers are checked much faster than they play, so that nobody leaves it out."""
import os
import resource
import tempfile
import unittest

from support import Run, channels_of, problems_of, tone_in_noise

SECONDS = 12
FRAME_SIZE = 1024


def processor_time():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


class CheckingSpeed(unittest.TestCase):
    def test_six_carriers_with_their_originals(self):
        with tempfile.TemporaryDirectory() as folder:
            audio = {name: 4 * tone_in_noise(SECONDS * 48000 // 4, i)
                     for i, name in enumerate(channels_of("9.1"))}
            # One count of bit-lines, so that encoding takes no longer than it must.
            run = Run(folder, "9.1", audio, FRAME_SIZE, "-a", "bitlines(8,8)",
                      threads=os.cpu_count())
            self.assertTrue(run.succeeded)
            before = processor_time()
            found = run.check()
            times = SECONDS / (processor_time() - before)
        self.assertEqual(problems_of(found), [])
        print(f"six carriers at 48 kHz are checked {times:.0f} times faster than real time")
        self.assertGreater(times, 25)


if __name__ == "__main__":
    unittest.main()
