#!/usr/bin/env python3
"""Every layout that has a carrier goes in, and every block of every carrier can be taken apart."""
import tempfile
import unittest

from support import LAYOUTS, Run, carriers_of, channels_of, differing_figures, problems_of, \
    tone_in_noise

FRAME_SIZES = (256, 1000, 1024, 4096)
RANGES = ((3, 12), (5, 5), (8, 10), (3, 3))


def settings():
    """Each layout with each frame size; over the layouts, each frame size meets each range, with
    and without dither, inline and on two threads."""
    for number, layout in enumerate(LAYOUTS):
        for place, frame_size in enumerate(FRAME_SIZES):
            yield (layout, frame_size, RANGES[(number + place) % 4],
                   "true" if (number // 4 + place) % 2 else "false", 2 * ((number // 2) % 2))


def smallest_record(nr_channels, nr_samples):
    """Bits that a record needs at the least: one center, and an index of two bits a sample."""
    fixed = 32 + 128 + 32  # sync word and checksum, header, the layout's instruction
    seeds, values_per_center = {2: (64, 1), 3: (160, 2)}[nr_channels]
    centers = 8 * 2 * values_per_center
    return fixed + seeds + centers + 2 * nr_samples


def capacity(nr_bitlines, nr_samples):
    return nr_bitlines * nr_samples - (nr_samples - 1) // 16


def cannot_hold(layout, frame_size, highest):
    """Whether no count of bit-lines has room for the record of two channels, and the layout has a
    carrier into which two go."""
    mixes = len(channels_of(layout)) > len(carriers_of(layout))
    return mixes and smallest_record(2, frame_size) > capacity(highest, frame_size)


class Layouts(unittest.TestCase):
    def test_there_are_29(self):
        self.assertEqual(len(LAYOUTS), 29)

    def test_256_samples_at_3_bitlines_hold_no_record_of_two_channels(self):
        self.assertEqual(smallest_record(2, 256), 784)
        self.assertEqual(capacity(3, 256), 753)

    def test_each_goes_there_and_back(self):
        for layout, frame_size, (low, high), dither, threads in settings():
            with self.subTest(layout=layout, frame_size=frame_size, bitlines=(low, high),
                              dither=dither, threads=threads), tempfile.TemporaryDirectory() as t:
                self.check(t, layout, frame_size, low, high, dither, threads)

    def check(self, folder, layout, frame_size, low, high, dither, threads):
        # The last block is only half there: the encoder fills it up with zeros.
        count = frame_size + frame_size // 2
        audio = {name: tone_in_noise(count, i) for i, name in enumerate(channels_of(layout))}
        run = Run(folder, layout, audio, frame_size, "-a", f"bitlines({low},{high});dither({dither})",
                  threads=threads)
        if cannot_hold(layout, frame_size, high):
            self.assertTrue(run.failed, run.process.stdout)
            return
        self.assertTrue(run.succeeded, run.process.stdout + run.process.stderr)
        found = run.check()
        self.assertEqual(problems_of(found), [])
        self.assertEqual(differing_figures(run.printed_quality(), found), [])
        for carrier in found["carriers"]:
            self.assertEqual(carrier["sound"], 2)
            self.assertGreaterEqual(carrier["bitlines"]["from"], low)
            self.assertLessEqual(carrier["bitlines"]["to"], high)


if __name__ == "__main__":
    unittest.main()
