#!/usr/bin/env python3
"""Whatever a desk exports: broken and odd WAV files, by name, and what becomes of each.

    reads     it is encoded
    refused   the run fails before any audio is read, without a word
    ends      the stream ends at its first block, as if there were nothing
    depth N   its samples are read, and the encoder refuses N bits in words
    missing   it counts as a file that does not exist
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../end-to-end"))
from support import VELAENC, tone  # noqa: E402

PCM, FLOAT, EXTENSIBLE = 1, 3, 0xFFFE
PCM_GUID = bytes.fromhex("0100000000001000800000AA00389B71")
FLOAT_GUID = bytes.fromhex("0300000000001000800000AA00389B71")
COUNT = 600
DATA = b"".join((x & 0xFFFFFF).to_bytes(3, "little") for x in tone(COUNT, 200))


def le(value, size):
    return value.to_bytes(size, "little")


def chunk(name, data, size=None, pad=True):
    return name + le(len(data) if size is None else size, 4) + data + b"\0" * (pad * (len(data) % 2))


def fmt(tag=PCM, channels=1, rate=48000, align=3, bits=24, byte_rate=144000, more=b""):
    return (le(tag, 2) + le(channels, 2) + le(rate, 4) + le(byte_rate, 4) + le(align, 2) + le(bits, 2)
            + more)


def extension(size=22, valid=24, mask=4, guid=PCM_GUID, more=b""):
    return le(size, 2) + le(valid, 2) + le(mask, 4) + guid + more


def wav(*chunks, size=None, form=b"WAVE", riff=b"RIFF"):
    body = form + b"".join(chunks)
    return riff + le(len(body) if size is None else size, 4) + body


def simple(**how):
    return wav(chunk(b"fmt ", fmt(**how)), chunk(b"data", DATA))


def extensible(more=b"", **how):
    return wav(chunk(b"fmt ", fmt(tag=EXTENSIBLE, more=extension(**how))), more, chunk(b"data", DATA))


FMT, AUDIO = chunk(b"fmt ", fmt()), chunk(b"data", DATA)
LIST = chunk(b"LIST", b"INFOICMT\4\0\0\0abc\0")
ODD = b"INFOx"

CASES = {
    "plain": ("reads", simple()),
    "extensible": ("reads", extensible()),
    "extensible with fact, as sox writes it": ("reads", extensible(chunk(b"fact", le(COUNT, 4)))),
    "fmt of 18 bytes, as ffmpeg writes it": ("reads", simple(more=b"\0\0")),
    "fmt of 40 bytes with tag 1": ("reads", simple(more=bytes(24))),
    "LIST first": ("reads", wav(LIST, FMT, AUDIO)),
    "LIST between": ("reads", wav(FMT, LIST, AUDIO)),
    "LIST last": ("reads", wav(FMT, AUDIO, LIST)),
    "data before fmt": ("reads", wav(AUDIO, FMT)),
    "odd chunk with pad": ("reads", wav(chunk(b"LIST", ODD), FMT, AUDIO)),
    "odd chunk without pad, then more": ("refused", wav(chunk(b"LIST", ODD, pad=False), FMT, AUDIO)),
    "odd chunk without pad at the end": ("refused", wav(FMT, AUDIO, chunk(b"LIST", ODD, pad=False))),
    "odd data with pad": ("reads", wav(FMT, chunk(b"data", DATA[:-3]))),
    "odd data without pad": ("refused", wav(FMT, chunk(b"data", DATA[:-3], pad=False))),
    "data of no whole sample at its end": ("reads", wav(FMT, chunk(b"data", DATA[:-2]))),
    "chunk of no bytes": ("reads", wav(chunk(b"JUNK", b""), FMT, AUDIO)),
    "chunk id of zeros": ("reads", wav(chunk(bytes(4), b""), FMT, AUDIO)),
    "RIFF size 0": ("reads", wav(FMT, AUDIO, size=0)),
    "RIFF size 0xFFFFFFFF": ("reads", wav(FMT, AUDIO, size=0xFFFFFFFF)),
    "RIFF size too small": ("reads", wav(FMT, AUDIO, size=36)),
    "byte rate of nothing": ("reads", simple(byte_rate=0)),
    "byte rate 0xFFFFFFFF": ("reads", simple(byte_rate=0xFFFFFFFF)),
    "sample rate 0": ("reads", simple(rate=0)),
    "sample rate 0xFFFFFFFF": ("reads", simple(rate=0xFFFFFFFF)),
    "a second data chunk": ("reads", wav(FMT, chunk(b"data", b"abc"), AUDIO)),
    "a second fmt chunk that says 16 bits": ("depth 16", wav(FMT, chunk(b"fmt ", fmt(bits=16, align=2)),
                                                             AUDIO)),
    "a second fmt chunk that is float": ("refused", wav(FMT, chunk(b"fmt ", fmt(tag=FLOAT)), AUDIO)),
    "no data chunk": ("reads", wav(FMT)),
    "data of no bytes": ("reads", wav(FMT, chunk(b"data", b""))),
    "no fmt chunk": ("refused", wav(AUDIO)),
    "no chunks": ("refused", wav()),
    "empty file": ("refused", b""),
    "four bytes": ("refused", b"RIFF"),
    "RIFX": ("refused", wav(FMT, AUDIO, riff=b"RIFX")),
    "RF64": ("refused", wav(FMT, AUDIO, riff=b"RF64")),
    "form AVI": ("refused", wav(FMT, AUDIO, form=b"AVI ")),
    "form wave in small letters": ("refused", wav(FMT, AUDIO, form=b"wave")),
    "fmt in capitals": ("refused", wav(chunk(b"FMT ", fmt()), AUDIO)),
    "fmt of no bytes": ("refused", wav(chunk(b"fmt ", b""), AUDIO)),
    "fmt of 14 bytes": ("refused", wav(chunk(b"fmt ", fmt()[:14]), AUDIO)),
    "fmt size past the end": ("refused", wav(chunk(b"fmt ", fmt(), size=1 << 20))),
    "data size past the end": ("refused", wav(FMT, chunk(b"data", DATA, size=len(DATA) + 2))),
    "data size 0xFFFFFFFF": ("refused", wav(FMT, chunk(b"data", DATA, size=0xFFFFFFFF))),
    "data size 0x80000000": ("refused", wav(FMT, chunk(b"data", DATA, size=0x80000000))),
    "one byte behind the chunks": ("refused", wav(FMT, AUDIO) + b"x"),
    "seven bytes behind the chunks": ("refused", wav(FMT, AUDIO) + bytes(7)),
    "eight zeros behind the chunks": ("reads", wav(FMT, AUDIO) + bytes(8)),
    "float of 32 bits": ("refused", simple(tag=FLOAT, align=4, bits=32)),
    "float of 64 bits": ("refused", simple(tag=FLOAT, align=8, bits=64)),
    "tag 0": ("refused", simple(tag=0)),
    "ADPCM": ("refused", simple(tag=2)),
    "a-law": ("refused", simple(tag=6)),
    "mu-law": ("refused", simple(tag=7)),
    "MP3 in WAV": ("refused", simple(tag=0x55)),
    "tag 0xFFFF": ("refused", simple(tag=0xFFFF)),
    "extensible float": ("refused", extensible(guid=FLOAT_GUID)),
    "extensible with one wrong byte in the GUID": ("refused", extensible(guid=PCM_GUID[:-1] + b"r")),
    "extensible with 20 valid bits": ("refused", extensible(valid=20)),
    "extensible with 0 valid bits": ("refused", extensible(valid=0)),
    "extensible with 32 valid bits": ("refused", extensible(valid=32)),
    "extension size 24 of 22": ("refused", extensible(size=24)),
    "extension size 22 of 24": ("refused", wav(chunk(b"fmt ", fmt(tag=EXTENSIBLE, more=extension(more=b"xx"))),
                                               AUDIO)),
    "extension size 0 of 0": ("refused", simple(tag=EXTENSIBLE, more=le(0, 2))),
    "extensible without extension": ("refused", simple(tag=EXTENSIBLE)),
    "block align 0": ("refused", simple(align=0)),
    "block align 1": ("ends", simple(align=1)),
    "block align 2": ("ends", simple(align=2)),
    "block align 4": ("reads", simple(align=4)),
    "block align 65535": ("reads", simple(align=65535)),
    "channels 0": ("ends", simple(channels=0)),
    "stereo": ("ends", simple(channels=2, align=6)),
    "channels 65535 in 3 bytes": ("ends", simple(channels=65535)),
    "channels 65535 in 65535 bytes": ("ends", wav(chunk(b"fmt ", fmt(channels=65535, align=65535)),
                                                  chunk(b"data", bytes(1 << 18)))),
    "0 bits": ("ends", simple(bits=0)),
    "8 bits": ("ends", simple(bits=8, align=1)),
    "12 bits": ("ends", simple(bits=12, align=2)),
    "20 bits": ("ends", simple(bits=20)),
    "23 bits": ("ends", simple(bits=23)),
    "25 bits": ("ends", simple(bits=25, align=4)),
    "64 bits": ("ends", simple(bits=64, align=8)),
    "65535 bits": ("ends", simple(bits=65535)),
    "16 bits": ("depth 16", simple(bits=16, align=2)),
    "32 bits": ("depth 32", simple(bits=32, align=4)),
}


class BrokenWavs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.path = os.path.join(self.folder, "C.wav")

    def outcome(self, data=None, **how):
        if data is not None:
            with open(self.path, "wb") as file:
                file.write(data)
        run = subprocess.run(
            [VELAENC, "-p", "Vela-Codec", "-l", "mono", "-f", "256", "-j", "0", "-o", "x_", "-i",
             "C:C.wav"], cwd=self.folder, capture_output=True, text=True, stdin=subprocess.DEVNULL, **how)
        self.assertEqual(run.stderr, "")
        if "does not exist" in run.stdout:
            return "missing"
        printed = run.stdout[run.stdout.index("{filename: C.wav}\n") + 18:]
        if run.returncode == 0:
            return "reads"
        self.assertEqual(run.returncode, 255)
        printed = printed.replace("Failure with ReturnCode 1\n", "")
        depth = re.fullmatch(r"Only 24bit input is supported, not (\d+)\n", printed)
        if depth:
            return "depth " + depth.group(1)
        if re.fullmatch(r"Start \d+, stop \d+, CLOCKS_PER_SEC 1000000\n", printed):
            return "ends"
        return "refused" if printed == "" else printed

    def test_there_are_more_than_sixty(self):
        self.assertGreater(len(CASES), 60)

    def test_each_comes_out_as_it_must(self):
        for name, (expected, data) in CASES.items():
            with self.subTest(name=name):
                self.assertEqual(self.outcome(data), expected)

    def test_cut_at_every_byte(self):
        whole = wav(FMT, LIST, chunk(b"data", DATA[:12]))
        self.assertEqual(self.outcome(whole), "reads")
        at_chunk_ends = {len(wav(FMT)): "reads", len(wav(FMT, LIST)): "reads"}
        for count in range(len(whole)):
            with self.subTest(count=count):
                self.assertEqual(self.outcome(whole[:count]), at_chunk_ends.get(count, "refused"))

    @unittest.skipUnless(shutil.which("sox"), "there is no sox")
    def test_what_sox_writes(self):
        subprocess.run(["sox", "-n", "-r", "48000", "-b", "24", "-c", "1", self.path, "synth", "0.02",
                        "sine", "300"], check=True)
        with open(self.path, "rb") as file:
            start = file.read(80)
        self.assertIn(b"\xfe\xff", start, "the extensible form")
        self.assertIn(b"fact", start)
        self.assertEqual(self.outcome(), "reads")

    @unittest.skipUnless(shutil.which("ffmpeg"), "there is no ffmpeg")
    def test_what_ffmpeg_writes(self):
        subprocess.run(["ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", "sine=300:duration=0.02",
                        "-c:a", "pcm_s24le", self.path], check=True)
        self.assertEqual(self.outcome(), "reads")

    def test_a_folder(self):
        os.mkdir(self.path)
        self.assertEqual(self.outcome(), "refused")

    @unittest.skipUnless(os.geteuid() == 0, "needs root to become an ordinary user")
    def test_a_file_that_may_not_be_read(self):
        with open(self.path, "wb") as file:
            file.write(simple())
        os.chmod(self.path, 0)
        os.chmod(self.folder, 0o777)
        program = os.path.join(self.folder, "velaenc")
        shutil.copy(VELAENC, program)  # the build's folder may be closed to others
        run = subprocess.run([program, "-i", "C:C.wav"], cwd=self.folder, capture_output=True, text=True,
                             user=65534, group=65534)
        self.assertIn('ERROR: Input file "C.wav" does not exist.\n', run.stdout)


if __name__ == "__main__":
    unittest.main()
