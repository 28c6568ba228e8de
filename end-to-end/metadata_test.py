#!/usr/bin/env python3
"""What a metadata file says comes out of the right record of the right carrier."""
import os
import tempfile
import unittest
import wave

from support import Run, channels_of, differing_figures, problems_of, tone, tone_in_noise

RATE = 2000  # a period of 0.9583 s is 1916 samples: few blocks see it three times
FRAME_SIZE = 512
NR_FRAMES = 15

EVERY_LINE_KIND = """\
# a line of every kind
0 RoomType 2
0 Orbimix_Preset 1 5
0 ATTN 0 6.0
0 ATTN 12 12.0
0 META 1 3.0
0 ProgramLoudness(1,2,3) -23.0
0 ProgramLoudnessRange(3) 5.5
0 MaximumTruePeak(3) -1.0
700 ShortTermLoudness(3) -30.5
1500 MomentaryLoudness(3) -22.5
1500 SpeechLoudness(2,3) -24.5
0 DefaultGain 0 Mute
0 Surrounds(1,2) 4 (1.0, 0.7)
0 Disable(LFEFronts) L_1
2000 ResetDownmix
2000 ResetDefaultGains
2000 ATTN 0 6.0
2600 META 1 6.0
5700 RoomType 3
"""


def loudness(value, first=None, second=None):
    word = value << 22
    if first is not None:
        word |= 1 << 21 | first << 11
    if second is not None:
        word |= 1 << 10 | second
    return word


# Frames of the metadata carrier that hold each instruction.  A slot is due in the first frame (the
# version in the second, the hash in the third), then whenever a period is over by the frame's end.
# Of loudness one item goes a frame, what is of the moment first.
EXPECTED = {
    ("RoomType", 2): [0, 4, 8],
    ("RoomType", 3): [11],
    ("OrbimixPreset", 21): [0, 4, 8, 12],
    ("MetaGains", 0x20): [0, 4],
    ("MetaGains", 0x40): [5, 9, 13],
    ("CodecVersion", 0x030201): [1, 5, 9, 13],
    ("BuildHash", 0xDCA34E54): [2, 6, 10, 14],
    ("ProgramLoudness", loudness(120, 120, 120)): [0, 4, 8, 12],
    ("ShortTermLoudness", loudness(695)): [1],
    ("MomentaryLoudness", loudness(775)): [2],
    ("ProgramLoudnessRange", loudness(55)): [3, 7, 11],
    ("SpeechLoudness", loudness(105, 105)): [5, 9, 13],
    ("MaximumTruePeak", loudness(0)): [6, 10, 14],
}
LAYOUT_CODES = {"9.1": 30, "13.1": 62}
ALL = list(range(NR_FRAMES))
# The entry at 2000 replaces the one at 0 as a whole: `Top`, which 13.1 alone has, is attenuated in
# the first three frames only, in each of the four carriers that hold it.
ATTENUATIONS = {
    "9.1": {"Left": {(0, 60): ALL}},
    "13.1": {"Left": {(0, 60): ALL, (12, 120): [0, 1, 2]}, "Right": {(12, 120): [0, 1, 2]},
             "LeftSurround": {(12, 120): [0, 1, 2]}, "RightSurround": {(12, 120): [0, 1, 2]}},
}

MALFORMED = [
    "META 0 1.0", "0META 0 1.0", "x META 0 1.0", " ", " # no comment", "0 Nothing", "0 META 0", "0 META",
    "0 ATTN LFE -6.0", "0 ATTN 25 1.0", "0 ATTN 3", "0 Orbimix_Preset 16 0", "0 Orbimix_Preset 0 16",
    "0 Orbimix_Preset 1", "0 RoomType 4", "0 RoomType", "0 ProgramLoudness (1) -23", "0 ProgramLoudness(4) -23",
    "0 ProgramLoudness(0) -23", "0 ProgramLoudness(x) -23", "0 ProgramLoudness(1 -23", "0 ProgramLoudness(1)",
    "0 DefaultGain 1", "0 DefaultGain 1 loud", "0 Disable Corners 2", "0 Disable(Corners) 25",
    "0 Disable(Corners 2", "0 Surrounds(1) 4 (-1.0)", "0 Surrounds(1) 4 (x)", "0 Surrounds(1) 4 1.0",
    "0 Surrounds(1) 4 (1.0", "0 LFEFronts(1) 4 (1.0)", "0 Surrounds 4 (1.0)",
]


def instructions_of(found, carrier):
    report = next(entry for entry in found["carriers"] if entry["carrier"] == carrier)
    return {(entry["name"], *entry["operands"]): entry["frames"] for entry in report["instructions"]}


def run_with(folder, layout, text, audio=None, count=NR_FRAMES * FRAME_SIZE, options=()):
    path = os.path.join(folder, "metadata.txt")
    with open(path, "w", encoding="ascii", newline="") as file:
        file.write(text)
    audio = audio or {name: tone_in_noise(count, i) for i, name in enumerate(channels_of(layout))}
    return Run(folder, layout, audio, FRAME_SIZE, "-d", path, *options, rate=RATE)


class Metadata(unittest.TestCase):
    def test_every_line_kind_arrives_when_it_is_due(self):
        for layout, code in LAYOUT_CODES.items():
            for line_end in ("\n", "\r\n"):
                with self.subTest(layout=layout, line_end=line_end), \
                        tempfile.TemporaryDirectory() as folder:
                    text = EVERY_LINE_KIND.replace("\n", line_end)
                    run = run_with(folder, layout, text, options=("-a", "bitlines(8,9)"))
                    self.assertTrue(run.succeeded, run.process.stdout + run.process.stderr)
                    found = run.check()
                    self.assertEqual(problems_of(found), [])
                    self.assertEqual(differing_figures(run.printed_quality(), found), [])
                    for report in found["carriers"]:
                        self.check_carrier(found, layout, code, report["carrier"])

    def check_carrier(self, found, layout, code, carrier):
        held = instructions_of(found, carrier)
        held = {key: frames for key, frames in held.items() if key[0] != "GroupScaler"}
        expected = {("InputLayout", code): ALL}
        for operands, frames in ATTENUATIONS[layout].get(carrier, {}).items():
            expected[("ChannelAttenuation", *operands)] = frames
        if carrier == "LFE":
            expected.update(EXPECTED)
        self.assertEqual(held, expected, carrier)

    def test_attenuated_channels_come_back_at_their_level(self):
        with tempfile.TemporaryDirectory() as folder:
            audio = {"C": tone(4096, 100, 0.5, RATE), "HC": tone(4096, 130, 0.5, RATE)}
            run = run_with(folder, "testmix2", "0 ATTN 11 6.0\n", audio)
            self.assertTrue(run.succeeded, run.process.stdout)
            found = run.check("--rebuild", os.path.join(folder, "rebuilt_"))
            self.assertEqual(problems_of(found), [])
            self.assertIn(("ChannelAttenuation", 11, 60), instructions_of(found, "Center"))
            with wave.open(os.path.join(folder, "rebuilt_HC.wav")) as file:
                data = file.readframes(4096)
            rebuilt = [int.from_bytes(data[i:i + 3], "little", signed=True)
                       for i in range(0, len(data), 3)]
            worst = max(abs(a - b) for a, b in zip(audio["HC"], rebuilt))
            self.assertLess(worst, 0.01 * 0x7FFFFF)

    def test_malformed_lines_stop_the_run_before_any_audio_is_read(self):
        for line in MALFORMED:
            with self.subTest(line=line), tempfile.TemporaryDirectory() as folder:
                run = run_with(folder, "mono", f"0 RoomType 1\n{line}\n", count=600)
                path = os.path.join(folder, "metadata.txt")
                message = f'ERROR: Could not parse the downmix coefficients from "{path}"\n' \
                          f'ERROR: Could not set the downmix filename to "{path}"\n'
                self.assertTrue(run.failed)
                self.assertIn(message, run.process.stdout)
                self.assertFalse(os.path.exists(run.carrier("C")))

    def test_a_file_that_is_not_there(self):
        with tempfile.TemporaryDirectory() as folder:
            run = Run(folder, "mono", {"C": tone(600, 100)}, FRAME_SIZE, "-d", "none.txt")
            self.assertTrue(run.failed)
            self.assertIn('ERROR: Could not read downmix file "none.txt"\n', run.process.stdout)

    def test_reals_that_no_integer_holds_end_as_out_of_range(self):
        encodes = ["0 META 1 inf", "0 META 1 nan", "0 META 1 1e300", "0 META 1 -1e300",
                   "0 ProgramLoudness(1) 1e300", "0 DefaultGain 0 1e300", "99999999999 ATTN 2 nan"]
        fails = ["0 ProgramLoudness(3) 1e300", "0 ProgramLoudness(3) nan", "0 ATTN 2 -3.0",
                 "0 ATTN 2 nan", "0 ATTN 2 inf", "0 ATTN 2 24.1", "0 MaximumTruePeak(3) 4.1"]
        for lines, succeeds in ((encodes, True), (fails, False)):
            for line in lines:
                with self.subTest(line=line), tempfile.TemporaryDirectory() as folder:
                    run = run_with(folder, "testmix2", line + "\n", count=600)
                    self.assertTrue(run.succeeded if succeeds else run.failed, run.process.stdout)

    def test_an_entry_counts_for_the_whole_of_the_block_that_it_falls_into(self):
        with tempfile.TemporaryDirectory() as folder:
            text = f"{FRAME_SIZE} Orbimix_Preset 0 7\n{FRAME_SIZE - 1} Orbimix_Preset 0 5\n"
            run = run_with(folder, "mono", text, count=4 * FRAME_SIZE)
            held = instructions_of(run.check(), "Center")
            self.assertEqual(held[("OrbimixPreset", 5)], [0])
            self.assertEqual(held[("OrbimixPreset", 7)], [1])

    def attenuations(self, layout, text):
        with tempfile.TemporaryDirectory() as folder:
            run = run_with(folder, layout, text, count=2 * FRAME_SIZE, options=("-a", "bitlines(8,9)"))
            self.assertTrue(run.succeeded, run.process.stdout)
            found = run.check()
            self.assertEqual(problems_of(found), [])
            return {key[1:]: frames for report in found["carriers"]
                    for key, frames in instructions_of(found, report["carrier"]).items()
                    if key[0] == "ChannelAttenuation"}

    def test_of_two_attenuations_in_a_block_the_later_one_holds(self):
        self.assertEqual(self.attenuations("lcr", "100 ATTN 0 3.0\n200 ATTN 0 6.0\n"), {(0, 60): [0, 1]})

    def test_no_attenuation_is_not_sent(self):
        self.assertEqual(self.attenuations("lcr", "0 ATTN 0 0\n"), {})

    def test_channels_outside_the_input_layout_are_left_out(self):
        self.assertEqual(self.attenuations("lcr", "0 ATTN 24 6.0\n0 ATTN 1 6.0\n"), {(1, 60): [0, 1]})

    def test_all_loudness_of_a_block_is_taken_in(self):
        with tempfile.TemporaryDirectory() as folder:
            text = "10 ProgramLoudness(3) -23\n20 SpeechLoudness(3) -24\n30 ProgramLoudness(2) -22\n"
            run = run_with(folder, "mono", text, count=2 * FRAME_SIZE)
            held = instructions_of(run.check(), "Center")
            self.assertEqual(held[("ProgramLoudness", loudness(120, 130))], [0])
            self.assertEqual(held[("SpeechLoudness", loudness(110))], [1])


if __name__ == "__main__":
    unittest.main()
