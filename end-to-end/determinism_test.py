#!/usr/bin/env python3
"""Without dither and on the calling thread the same input gives the same bytes."""
import os
import tempfile
import unittest
import unittest.mock

from support import Run, channels_of, tone_in_noise

COUNT = 2048


def encode(layout, options, threads):
    with tempfile.TemporaryDirectory() as folder:
        audio = {name: tone_in_noise(COUNT, i) for i, name in enumerate(channels_of(layout))}
        run = Run(folder, layout, audio, 512, "-a", options, threads=threads)
        assert run.succeeded, run.process.stdout
        return run.carrier_bytes()


class Determinism(unittest.TestCase):
    def test_twice_the_same(self):
        for layout in ("lcr", "9.1"):
            self.assertEqual(encode(layout, "dither(false)", 0), encode(layout, "dither(false)", 0))

    def test_a_log_of_all_candidates_changes_nothing(self):
        """With it, candidates that are dropped go further than they need to."""
        plain = encode("9.1", "dither(false)", 0)
        with tempfile.NamedTemporaryFile() as log, \
                unittest.mock.patch.dict(os.environ, VELA_CANDIDATES=log.name):
            self.assertEqual(encode("9.1", "dither(false)", 0), plain)

    def test_dither_makes_a_difference(self):
        """The control: what must differ does."""
        self.assertNotEqual(encode("lcr", "dither(false)", 0), encode("lcr", "dither(true)", 0))

    def test_threads_change_nothing_where_their_order_does_not_count(self):
        """One count of bit-lines leaves the filter nothing to drop, and deltas in time order need
        no draw from the shared engine."""
        options = "dither(false);bitlines(6,6);gvm.randomize_deltas(false)"
        inline = encode("9.1", options, 0)
        for threads in (1, 2, 16):
            with self.subTest(threads=threads):
                self.assertEqual(encode("9.1", options, threads), inline)


if __name__ == "__main__":
    unittest.main()
