#!/usr/bin/env python3
"""Signals at the edges: what is silent, loud, alone or unrelated still comes apart."""
import tempfile
import unittest

from support import FULL_SCALE, Run, channels_of, differing_figures, noise, problems_of, tone

LAYOUTS = ("mono", "testmix2", "testmix3", "lcr", "9.1", "13.1")
COUNT = 1500
FRAME_SIZE = 1024


class Signals(unittest.TestCase):
    def check(self, make_audio, expect=lambda found: None):
        for layout in LAYOUTS:
            for dither in ("true", "false"):
                with self.subTest(layout=layout, dither=dither), tempfile.TemporaryDirectory() as t:
                    audio = {name: make_audio(i) for i, name in enumerate(channels_of(layout))}
                    run = Run(t, layout, audio, FRAME_SIZE, "-a", f"dither({dither})")
                    self.assertTrue(run.succeeded, run.process.stdout + run.process.stderr)
                    found = run.check()
                    self.assertEqual(problems_of(found), [])
                    self.assertEqual(differing_figures(run.printed_quality(), found), [])
                    expect(found)

    def test_silence_takes_the_fewest_bitlines_and_stays_silent(self):
        def expect(found):
            self.assertEqual(found["quality_all"]["dbrms"], -144)
            for carrier in found["carriers"]:
                self.assertEqual(carrier["bitlines"], {"from": 3, "median": 3, "to": 3})
        self.check(lambda index: [0] * COUNT, expect)

    def test_correlated_sines_at_full_scale_are_attenuated_together(self):
        def expect(found):
            for carrier in found["carriers"]:
                names = {entry["name"] for entry in carrier["instructions"]}
                if carrier["centers"]["to"] > 0:
                    self.assertIn("GroupScaler", names)
        self.check(lambda index: tone(COUNT, 440, 1.0), expect)

    def test_one_channel_alone(self):
        self.check(lambda index: tone(COUNT, 330, 0.7) if index == 1 else [0] * COUNT)

    def test_white_noise_at_full_scale_without_relation(self):
        self.check(lambda index: noise(COUNT, index, 1.0))

    def test_the_extremes_of_24_bits_in_turn(self):
        self.check(lambda index: [FULL_SCALE, -FULL_SCALE - 1] * (COUNT // 2))


if __name__ == "__main__":
    unittest.main()
