#!/usr/bin/env python3
"""docs/carrier-format.md against the programs: its worked block, its tables, and the decoder that was
written from it alone."""
import os
import re
import subprocess
import sys
import tempfile
import unittest

from support import CARRIER_CHECK, LAYOUTS, Run, carriers_of, channels_of, noise, tone_in_noise, \
    write_wav

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
EXAMPLES = os.path.join(ROOT, "docs", "examples")
sys.path.insert(0, EXAMPLES)
import decode_carrier  # noqa: E402

with open(os.path.join(ROOT, "docs", "carrier-format.md"), encoding="utf-8") as file:
    PAGE = file.read()


def words_behind(mark):
    """The words of the indented lines behind a mark of the page."""
    return re.search(rf"<!-- {mark} -->\n\n((?:    .*\n)+)", PAGE)[1].split()


def numbers_behind(mark):
    return list(map(int, words_behind(mark)))


def worked_samples():
    return [int.from_bytes(bytes.fromhex(word), "little", signed=True) for word in words_behind("bytes")]


def worked_fields():
    """(first bit, bits) of each row of the page's table; what is left out is not there."""
    rows = re.findall(r"^\| (\d+) \| (.*?) \|", PAGE.split("## A worked block")[1], re.MULTILINE)
    for start, cell in rows:
        for number in re.findall(r"(\d+) zeros", cell):
            cell = cell.replace(number + " zeros", "0" * int(number))
        yield int(start), re.sub("[^01]", "", cell)


def layout_rows():
    """Code, name, and the members of each carrier as the page has them."""
    for code, name, carriers in re.findall(r"^\| (\d+) \| (\S+) \| ([\w+, ]+) \|$",
                                           PAGE.split("## Layouts")[1].split("\n## ")[0], re.MULTILINE):
        yield int(code), name, [c.split(" into ")[0] for c in carriers.split(", ")]


NAMES = {"1.0": "mono", "2.0": "stereo", "6.0": "surround6.0", "6.1": "surround6.1"}


class WorkedBlock(unittest.TestCase):
    def setUp(self):
        self.samples = worked_samples()
        self.block = decode_carrier.Block(self.samples)

    def test_every_field_stands_where_the_page_says(self):
        bits = "".join(map(str, decode_carrier.record_bits(self.samples, 12)))
        fields = list(worked_fields())
        self.assertGreater(len(fields), 20)
        for start, expected in fields:
            self.assertEqual(bits[start:start + len(expected)], expected, f"from bit {start}")
        self.assertEqual(fields[-1][0] + len(fields[-1][1]), len(bits))

    def test_the_decoder_finds_the_samples_of_the_page(self):
        x, y = numbers_behind("x"), numbers_behind("y")
        self.assertEqual(self.block.ixs, numbers_behind("indices"))
        self.assertEqual(self.block.mix, numbers_behind("mix"))
        self.assertEqual(self.block.rebuild(), {"C": [v << 12 for v in x], "HC": [v << 12 for v in y]})

    def test_the_checker_finds_the_samples_of_the_page(self):
        with tempfile.TemporaryDirectory() as folder:
            path, prefix = os.path.join(folder, "C.wav"), os.path.join(folder, "rebuilt_")
            write_wav(path, self.samples)
            process = subprocess.run([CARRIER_CHECK, "--frame-size", "48", "--rebuild", prefix, path],
                                     capture_output=True, text=True)
            self.assertEqual(process.returncode, 0, process.stdout)
            for channel, mark in (("C", "x"), ("HC", "y")):
                samples, _ = decode_carrier.read_wav(prefix + channel + ".wav")
                self.assertEqual(samples, [v << 12 for v in numbers_behind(mark)])

    def test_checksums(self):
        text, value = re.search(r"The text `(\d+)` gives `(0x\w+)`", PAGE).groups()
        self.assertEqual(decode_carrier.crc_of(text.encode()), int(value, 16))
        value = re.search(r"the checksum is `(0x\w+)`", PAGE)[1]
        self.assertEqual(decode_carrier.crc_of_block(self.samples), int(value, 16))

    def test_a_changed_bit_is_no_block(self):
        """The control."""
        for bit in (0, 1, 5, 23):
            damaged = list(self.samples)
            damaged[20] ^= 1 << bit
            with self.assertRaises(decode_carrier.Damaged):
                decode_carrier.Block(damaged)


class Tables(unittest.TestCase):
    def test_layouts(self):
        rows = list(layout_rows())
        self.assertEqual(len(rows), len(LAYOUTS))
        for code, name, members in rows:
            layout = NAMES.get(name, name)
            with self.subTest(layout=layout), tempfile.TemporaryDirectory() as folder:
                audio = {channel: noise(256, i) for i, channel in enumerate(channels_of(layout))}
                run = Run(folder, layout, audio, 256, "-a", "bitlines(6,6)")
                self.assertTrue(run.succeeded, run.process.stdout)
                held = {}
                for carrier in carriers_of(layout):
                    block = decode_carrier.Block(decode_carrier.read_wav(run.carrier(carrier))[0])
                    self.assertEqual(block.scaler(30), code)
                    held["+".join(decode_carrier.NAMES[id_] for id_ in block.channels)] = carrier
                self.assertEqual(sorted(held), sorted(members))

    def test_classes_of_centers(self):
        for first, last, factor, offset in re.findall(r"^\| (\d+) to (\d+) \| (\d+) \* c ?([+-] \d+)? \|",
                                                      PAGE, re.MULTILINE):
            for size_class in (int(first), int(last)):
                slots = int(factor) * size_class + int((offset or "0").replace(" ", ""))
                with self.subTest(size_class=size_class):
                    self.assertEqual(slots, decoder_slots(size_class))


def decoder_slots(size_class):
    """As the decoder reads them from a header of that class."""
    block = object.__new__(decode_carrier.Block)
    block.mix = [0] * 48
    fields = ((2, 8), (1, 3), (1, 1), (2, 4), (1, 8), (10, 8), (0, 4), (1, 4), (size_class, 8), (0, 8),
              (6, 8), (2, 8), (11, 8), (255, 8), (255, 8), (0, 32))
    text = "".join(f"{value:0{width}b}" for value, width in fields)
    block.read_header(decode_carrier.Bits(list(map(int, text))))
    return block.nr_slots


class WholeCarriers(unittest.TestCase):
    """The decoder of the page finds the figures of the checker, and the same samples."""

    LAYOUT, MEMBERS = "11.1", "L+HL+T C+HC R+HR+T Ls+HLs+T Rs+HRs+T LFE".split()
    METADATA = "0 ATTN 12 6\n0 ATTN 0 2.5\n1500 ATTN 1 20\n0 RoomType 2\n0 MaximumTruePeak(3) -1\n"

    def test_a_scene(self):
        with tempfile.TemporaryDirectory() as folder:
            audio = {name: tone_in_noise(4000, i) for i, name in enumerate(channels_of(self.LAYOUT))}
            audio["C"] = [0x7FFFFF if t // 40 % 2 else -0x800000 for t in range(4000)]
            audio["HC"] = audio["C"]
            metadata = os.path.join(folder, "metadata.txt")
            with open(metadata, "w", encoding="ascii") as file:
                file.write(self.METADATA)
            run = Run(folder, self.LAYOUT, audio, 1024, "-d", metadata)
            self.assertTrue(run.succeeded, run.process.stdout)
            found = run.check("--rebuild", os.path.join(folder, "checker_"))
            expected = {entry["channel"]: entry for entry in found["quality"]}
            printed = self.decode(folder, run)
            for line in printed.splitlines():
                name, *figures = re.match(r"(\w+) +\{dbrms: (\S+)\}\t\{dbpeak: (\S+)\}\t\{crest", line).groups()
                entry = found["quality_all"] if name == "all" else expected.pop(self.full_name(name))
                self.assertAlmostEqual(float(figures[0]), entry["dbrms"], 3, name)
                self.assertAlmostEqual(float(figures[1]), entry["dbpeak"], 3, name)
            self.assertEqual(expected, {})
            for name in channels_of(self.LAYOUT):
                with self.subTest(channel=name):
                    self.assertEqual(*(decode_carrier.read_wav(os.path.join(folder, who + name + ".wav"))
                                       for who in ("checker_", "decoder_")))

    def decode(self, folder, run):
        arguments = [f"{name}={folder}/{name}.wav" for name in channels_of(self.LAYOUT)]
        arguments += [f"{members}@{run.carrier(members.split('+')[0])}" for members in self.MEMBERS]
        return subprocess.run(
            [sys.executable, os.path.join(EXAMPLES, "decode_carrier.py"), "--rebuild",
             os.path.join(folder, "decoder_"), *arguments],
            capture_output=True, text=True, check=True).stdout

    @staticmethod
    def full_name(name):
        full = {"L": "Left", "R": "Right", "C": "Center", "LFE": "LFE", "s": "Surround", "T": "Top"}
        return name if name == "LFE" else re.sub("H|LFE|[LRCTs]", lambda m: full.get(m[0], "Height"), name)

    def test_the_decoder_stays_small(self):
        with open(os.path.join(EXAMPLES, "decode_carrier.py"), encoding="utf-8") as file:
            self.assertLessEqual(len(file.readlines()), 300)


if __name__ == "__main__":
    unittest.main()
