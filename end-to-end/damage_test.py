#!/usr/bin/env python3
"""Carriers that were damaged on their way are told as such, with what happened where it shows."""
import os
import random
import shutil
import signal
import subprocess
import tempfile
import unittest
import wave

from support import CARRIER_CHECK, VELAENC, Run, channels_of, problems_of, tone_in_noise, write_wav

FRAME_SIZE = 256
LAYOUT = "lcr"
COUNT = 32 * FRAME_SIZE  # fewer blocks leave too few traces of a change of level or of dither


def read_samples(path):
    with wave.open(path) as file:
        data = file.readframes(file.getnframes())
    return [int.from_bytes(data[i:i + 3], "little", signed=True) for i in range(0, len(data), 3)]


def write_16_bits(path, samples):
    with wave.open(path, "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(48000)
        file.writeframes(b"".join((x >> 8).to_bytes(2, "little", signed=True) for x in samples))


class Damage(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        audio = {name: tone_in_noise(COUNT, i) for i, name in enumerate(channels_of(LAYOUT))}
        self.run_ = Run(folder.name, LAYOUT, audio, FRAME_SIZE)
        self.assertTrue(self.run_.succeeded)
        self.left = self.run_.carrier("L")
        self.samples = read_samples(self.left)

    def problems(self):
        return problems_of(self.run_.check())

    def after(self, samples):
        write_wav(self.left, samples)
        problems = self.problems()
        self.assertTrue(problems)
        for problem in problems:
            self.assertTrue(problem.startswith(self.left + ": "), problem)
        return problems

    def test_sound_carriers_have_none(self):
        self.assertEqual(self.problems(), [])

    def test_one_wrong_bit_is_found_in_its_block(self):
        engine = random.Random(1)
        for _ in range(20):
            at, bit = engine.randrange(COUNT), engine.randrange(24)
            damaged = list(self.samples)
            value = (damaged[at] & 0xFFFFFF) ^ (1 << bit)
            damaged[at] = value - (value >> 23 << 24)
            problems = self.after(damaged)
            self.assertIn(f": block {at // FRAME_SIZE}: ", problems[0])

    def test_cut_at_the_start(self):
        for count in (1, 100, 255, 300):
            missing = count % FRAME_SIZE
            self.assertIn(f"as if the first {missing} samples of one were missing",
                          self.after(self.samples[count:])[0])

    def test_a_whole_block_less_shows_by_the_originals(self):
        self.assertIn("holds 31 blocks, but the originals make 32", self.after(self.samples[256:])[-1])

    def test_cut_at_the_end(self):
        problems = self.after(self.samples[:-100])
        self.assertIn("ends in the middle of block 31, after 156 of its 256 samples", problems[0])

    def test_16_bits(self):
        self.assertIn("converted to 16 bits", self.after([x >> 8 << 8 for x in self.samples])[0])
        write_16_bits(self.left, self.samples)
        self.assertIn("converted to 16 bits", self.problems()[0])

    def test_cut_in_the_middle(self):
        problems = self.after(self.samples[:1000] + self.samples[1010:])
        self.assertIn(": block 3: ", problems[0])
        self.assertIn("blocks go on at sample 1014, as if 10 samples were missing", problems[0])

    def test_changed_in_level(self):
        for gain, told in ((10 ** -0.3, "-6.00"), (0.97, "-0.26"), (10 ** 0.015, "+0.30"), (2, "+6.02")):
            self.assertIn(f"changed in level, by {told} dB",
                          self.after([round(x * gain) for x in self.samples])[0])

    def test_dithered_again(self):
        engine = random.Random(2)
        self.assertIn("it was dithered again",
                      self.after([x + engine.randint(-1, 1) for x in self.samples])[0])

    def test_filtered(self):
        self.assertIn("it was resampled, filtered", self.after(
            [(a + b) // 2 for a, b in zip(self.samples, self.samples[1:] + [0])])[0])

    def test_another_sample_rate(self):
        write_wav(self.left, self.samples, rate=44100)
        self.assertIn("has 44100 Hz, but the originals have 48000 Hz: it was resampled",
                      self.problems()[0])

    def test_blocks_of_another_carrier(self):
        right = read_samples(self.run_.carrier("R"))
        self.assertIn(": block 2: channel Right does not belong there in this carrier", self.after(
            self.samples[:512] + right[512:768] + self.samples[768:])[0])

    def test_carriers_exchanged(self):
        right = self.run_.carrier("R")
        os.rename(self.left, self.left + "x")
        os.rename(right, self.left)
        os.rename(self.left + "x", right)
        # Content decides which is which: both are where they belong by what they hold.
        self.assertEqual(self.problems(), [])

    def test_files_that_are_no_carriers(self):
        with open(self.left, "wb") as file:
            file.write(b"RIFF\0\0\0\0WAVE")
        self.assertIn(f"{self.left}: is no complete WAV file", self.problems()[0])
        os.remove(self.left)
        self.assertIn(f"{self.left}: cannot be opened", self.problems()[0])

    def test_exit_status_tells(self):
        check = [CARRIER_CHECK, "--frame-size", str(FRAME_SIZE)]
        for arguments, status in (([self.left], 0), ([self.left, self.run_.carrier("R")], 0),
                                  (["none.wav"], 1), ([], 2), (["--what"], 2)):
            process = subprocess.run(check + arguments, capture_output=True, text=True)
            self.assertEqual(process.returncode, status, process.stdout + process.stderr)


class BrokenRuns(unittest.TestCase):
    """A batch must be able to tell a carrier that was never finished."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.input = os.path.join(self.folder, "C.wav")
        self.output = os.path.join(self.folder, "x_C.wav")
        self.call = [VELAENC, "-p", "Vela-Codec", "-l", "mono", "-f", "256", "-j", "0", "-i",
                     "C:" + self.input, "-o", "x_"]

    def check(self):
        return subprocess.run([CARRIER_CHECK, "--frame-size", "256", "--original", "C=" + self.input,
                               self.output], capture_output=True, text=True)

    def test_killed_in_the_middle(self):
        """By the system, at 32 KB: a signal from here might come when all is written."""
        write_wav(self.input, tone_in_noise(1 << 15, 1))
        process = subprocess.run(["sh", "-c", 'ulimit -c 0; ulimit -f 64; exec "$@"', "sh", *self.call],
                                 cwd=self.folder, stdout=subprocess.DEVNULL)
        self.assertEqual(process.returncode, -signal.SIGXFSZ)
        result = self.check()
        self.assertEqual(result.returncode, 1)
        self.assertIn("is no complete WAV file", result.stdout)

    def test_a_disk_that_is_full(self):
        """Nothing in the run tells: the carrier must be held against its originals."""
        write_wav(self.input, tone_in_noise(1 << 15, 1))
        os.symlink("/dev/full", self.output)
        process = subprocess.run(self.call, cwd=self.folder, capture_output=True, text=True)
        self.assertEqual(process.returncode, 0)
        self.assertEqual(self.check().returncode, 1)

    def test_a_file_size_limit(self):
        write_wav(self.input, tone_in_noise(1 << 15, 1))
        process = subprocess.run(["sh", "-c", 'ulimit -f 32; trap "" XFSZ; exec "$@"', "sh", *self.call],
                                 cwd=self.folder, capture_output=True, text=True)
        self.assertNotIn("Clipping", process.stderr)
        result = self.check()
        self.assertEqual(result.returncode, 1)
        self.assertIn("PROBLEM: ", result.stdout)

    def test_a_folder_that_does_not_exist(self):
        write_wav(self.input, tone_in_noise(1 << 12, 1))
        process = subprocess.run(self.call[:-1] + ["no/such/x_"], cwd=self.folder,
                                 capture_output=True, text=True)
        self.assertEqual(process.returncode, 0, "a failed open is not detected")
        self.assertEqual(self.check().returncode, 1)

    def test_a_folder_that_may_not_be_written(self):
        """As an ordinary user, since root may write everywhere."""
        write_wav(self.input, tone_in_noise(1 << 12, 1))
        program = shutil.copy(VELAENC, self.folder)  # nobody may not be let in where it was built
        os.chmod(self.folder, 0o555)
        self.addCleanup(os.chmod, self.folder, 0o755)
        nobody = {"user": 65534, "group": 65534, "extra_groups": []} if os.geteuid() == 0 else {}
        process = subprocess.run([program, *self.call[1:]], cwd=self.folder, capture_output=True,
                                 text=True, **nobody)
        self.assertEqual(process.returncode, 0, "a failed open is not detected")
        self.assertFalse(os.path.exists(self.output))
        result = self.check()
        self.assertEqual(result.returncode, 1)
        self.assertIn(f"{self.output}: cannot be opened", result.stdout)


if __name__ == "__main__":
    unittest.main()
