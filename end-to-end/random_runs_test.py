#!/usr/bin/env python3
"""Short runs with everything drawn at random: what a decoder rebuilds is what the encoder printed.

    random_runs_test.py [COUNT [FIRST]]     runs number FIRST to FIRST + COUNT - 1, by default 0 to 59

The number of a run is its seed: a run that fails is repeated by itself with COUNT 1.
"""
import glob
import os
import random
import sys
import tempfile

from support import LAYOUTS, Run, channels_of, differing_figures, noise, problems_of, tone, \
    write_wav

RATES = (8000, 44100, 48000, 88200, 96000, 192000)
LOUDNESS = (("ProgramLoudness", -35, -2), ("ProgramLoudnessRange", 0, 30), ("SpeechLoudness", -35, -2),
            ("MaximumTruePeak", -1, 4), ("ShortTermLoudness", -100, 0), ("MomentaryLoudness", -100, 0))


class Draw(random.Random):
    """The decisions of one run."""

    def likely(self, probability):
        return self.random() < probability

    def signal(self, count, others):
        kind = self.choice("silence tone noise scene full like".split())
        if kind == "silence":
            return [0] * count
        if kind == "tone":
            return tone(count, self.uniform(50, 3000), self.uniform(0.001, 0.9))
        if kind == "noise":
            return noise(count, self.random(), 10 ** -self.uniform(0, 6))
        if kind == "full":
            return [self.choice((0x7FFFFF, -0x800000)) for _ in range(count)]
        if kind == "like" and others:
            return [max(-0x800000, min(0x7FFFFF, x + self.randint(-9, 9))) for x in self.choice(others)]
        return [a + b for a, b in zip(tone(count, self.uniform(50, 900), 0.4), noise(count, self.random(), 0.01))]

    def audio(self, layout, count):
        audio = {}
        for channel in channels_of(layout):
            audio[channel] = self.signal(count, list(audio.values()))
        return audio

    def bitlines(self):
        # From 6 on, 256 samples hold three channels with one center and every instruction.
        high = self.randint(6, 12)
        return self.randint(3, high), high

    def arguments(self, low, high):
        given = [f"bitlines({low},{high})"]
        for switch in ("dither", "gvm.allow_merge", "gvm.update_all", "gvm.force_origin_center",
                       "gvm.randomize_deltas", "native_content"):
            if self.likely(0.3):
                given.append(f"{switch}({self.choice(('true', 'false'))})")
        if self.likely(0.3):
            given.append(f"centers_max({self.randint(1, 300)})")
        if self.likely(0.1):
            given.append("gvm.implementation(ref)")
        if self.likely(0.1):
            given.append("output.dbrms(rms.plot);output.crest(crest.plot);output.centers(centers_)")
        return ";".join(given)

    def metadata(self, count, channel_ids):
        lines = []
        for _ in range(self.randint(1, 8)):
            at = self.randrange(count)
            lines.append(f"{at} " + self.choice((
                f"RoomType {self.randint(0, 3)}", f"Orbimix_Preset {self.randint(0, 15)} {self.randint(0, 15)}",
                f"ATTN {self.choice(channel_ids)} {self.uniform(0, 20):.2f}", f"META 0 {self.uniform(0, 10):.1f}",
                self.loudness(), "ResetDownmix", "Disable(Corners) L")))
        return "\n".join(lines) + "\n"

    def loudness(self):
        name, low, high = self.choice(LOUDNESS)
        return f"{name}({self.choice(('3', '1,3', '1,2,3', '2'))}) {self.uniform(low, high):.1f}"


CHANNEL_IDS = {"L": 0, "R": 1, "C": 2, "LFE": 3, "Ls": 4, "Rs": 5, "Cs": 6, "Lb": 7, "Rb": 8, "HL": 9,
               "HR": 10, "HC": 11, "T": 12, "HLs": 13, "HRs": 14}


class RandomRun:
    def __init__(self, number, folder):
        draw = Draw(number)
        self.folder = folder
        layout = draw.choice(list(LAYOUTS))
        frame_size = draw.choice((256, 336, 512, 1000, 1024, 2048))
        count = draw.randint(1, max(frame_size, 3 * 1024))
        options = ["-a", draw.arguments(*draw.bitlines())]
        self.filtered = draw.likely(0.1)
        if self.filtered:
            options += ["-L", draw.choice(("fir(18000)", "iir(19000)"))]
        if draw.likely(0.3):
            options += ["-d", self.write("metadata.txt", draw.metadata(
                count, [CHANNEL_IDS[name] for name in channels_of(layout)]))]
        if draw.likely(0.2):
            options += ["-s", "NHK"]
        if draw.likely(0.2):
            options += ["-m", "true"]
        self.run = Run(folder, layout, draw.audio(layout, count), frame_size, *options,
                       rate=draw.choice(RATES if not self.filtered else (48000,)),
                       threads=draw.choice((0, 0, 1, 2, 3, 16)))

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="ascii") as file:
            file.write(text)
        return path

    def differences(self):
        """What is wrong, as texts."""
        if not self.run.succeeded:
            return ["it fails: " + self.run.process.stdout[-300:] + self.run.process.stderr]
        # A decoder gives what came out of the lowpass, which is nowhere to compare with.
        found = self.run.check(files=sorted(glob.glob(os.path.join(self.folder, "enc_*.wav"))) or
                               [os.path.join(self.folder, "enc_.wav")], originals=not self.filtered)
        if self.filtered or problems_of(found):
            return problems_of(found)
        return ["other figures for " + name
                for name in differing_figures(self.run.printed_quality(), found)]


def main(count=60, first=0):
    nr_different = 0
    for number in range(first, first + count):
        with tempfile.TemporaryDirectory() as folder:
            run = RandomRun(number, folder)
            for text in run.differences():
                nr_different += 1
                print(f"run {number}: {text}\n    {' '.join(run.run.process.args)}")
    print(f"{count} random runs, {nr_different} differences")
    return 1 if nr_different else 0


if __name__ == "__main__":
    sys.exit(main(*map(int, sys.argv[1:])))
