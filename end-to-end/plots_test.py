#!/usr/bin/env python3
"""The plot files become pictures in the real gnuplot."""
import os
import shutil
import subprocess
import tempfile
import unittest

from support import Run, channels_of, tone_in_noise

DRAW_PLOTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../scripts/draw-plots")
PLOTS = "output.dbrms(rms.plot);output.dbpeak(peak.plot);output.crest(crest.plot);output.centers(centers_)"


@unittest.skipUnless(shutil.which("gnuplot"), "there is no gnuplot")
class Plots(unittest.TestCase):
    def pictures(self, folder, layout, silent=()):
        audio = {name: [0] * 2000 if name in silent else tone_in_noise(2000, i)
                 for i, name in enumerate(channels_of(layout))}
        run = Run(folder, layout, audio, 512, "-a", PLOTS)
        self.assertTrue(run.succeeded, run.process.stdout + run.process.stderr)
        subprocess.run([DRAW_PLOTS, folder], check=True, capture_output=True)
        return {name for name in os.listdir(folder) if name.endswith(".png")}

    def check(self, layout, expected, silent=()):
        with tempfile.TemporaryDirectory() as folder:
            found = self.pictures(folder, layout, silent)
            self.assertEqual(found, expected)
            for name in found:
                with open(os.path.join(folder, name), "rb") as file:
                    data = file.read()
                self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
                self.assertGreater(len(data), 2000, name)

    def test_every_kind_of_two_channels(self):
        self.check("lcr", {"rms.png", "peak.png", "crest.png", "centers_L.png", "centers_R.png"})

    def test_every_kind_of_three_channels(self):
        self.check("testmix3", {"rms.png", "peak.png", "crest.png", "centers_C.png"})

    def test_a_carrier_of_one_channel_has_no_centers_to_draw(self):
        with tempfile.TemporaryDirectory() as folder:
            self.pictures(folder, "lcr", silent=("L", "C"))
            with open(os.path.join(folder, "centers_R.gnuplot"), encoding="utf-8") as file:
                self.assertEqual(len(file.readlines()), 1)


if __name__ == "__main__":
    unittest.main()
