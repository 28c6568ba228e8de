#!/usr/bin/env python3
"""Every known answer comes out of every instruction set, and the program runs where there is none of
the newer ones.

    VELAENC   a build with the switches for tests
    ANSWERS   the folder of the known answers
    OBJECTS   the object files of the module that has code for newer sets, between colons
"""
import os
import platform
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest
import unittest.mock

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import known_answer  # noqa: E402

VELAENC, ANSWERS = os.path.abspath(os.environ["VELAENC"]), os.environ["ANSWERS"]
NAMES = sorted(os.listdir(os.path.join(ANSWERS, "answers")))
FLAG = {"sse2": "sse2", "avx2": "avx2", "avx512": "avx512f"}  # as the kernel lists them
EMULATOR = shutil.which("qemu-x86_64") or shutil.which("qemu-x86_64-static")


def machine_has(name):
    with open("/proc/cpuinfo", encoding="ascii") as file:
        return FLAG[name] in file.read().split()


@unittest.skipUnless(platform.machine() == "x86_64", "there are sets to choose from on x86-64 alone")
class InstructionSets(unittest.TestCase):
    def check(self, program, names=NAMES):
        for name in names:
            with self.subTest(answer=name):
                self.assertEqual(known_answer.differences(program, ANSWERS, name), [])

    def forced(self, name):
        if not machine_has(name):
            self.skipTest(f"this machine has no {name}")
        with unittest.mock.patch.dict(os.environ, VELA_INSTRUCTION_SET=name):
            self.check(VELAENC)

    def test_sse2(self):
        self.forced("sse2")

    def test_avx2(self):
        self.forced("avx2")

    def test_avx512(self):
        self.forced("avx512")

    def test_a_set_that_is_not_there_fails_loudly(self):
        """Else a test or a timing would speak of another set than it names."""
        with unittest.mock.patch.dict(os.environ, VELA_INSTRUCTION_SET="avx1024"):
            said = known_answer.differences(VELAENC, ANSWERS, "white-testmix3")
        self.assertIn('VELA_INSTRUCTION_SET is "avx1024", but this machine has', "".join(said))

    @unittest.skipUnless(EMULATOR, "qemu-user is not installed")
    def test_a_processor_without_avx(self):
        with tempfile.TemporaryDirectory() as folder:
            program = os.path.join(folder, "velaenc")
            with open(program, "w", encoding="ascii") as file:
                file.write(f'#!/bin/sh\nexec "{EMULATOR}" -cpu Nehalem "{VELAENC}" "$@"\n')
            os.chmod(program, os.stat(program).st_mode | stat.S_IXUSR)
            self.check(program, ["scene-9.1", "white-testmix3"])

    def test_code_for_newer_sets_shares_nothing(self):
        """A function that the linker may take from there for everybody would end the program on a
        machine without that set."""
        objects = [path for path in os.environ["OBJECTS"].split(":") if "_avx" in path]
        self.assertEqual(len(objects), 2)
        for path in objects:
            symbols = subprocess.run(["nm", "--defined-only", path], capture_output=True, text=True,
                                     check=True).stdout.splitlines()
            shared = [line for line in symbols if line.split()[-2] in "uUvVwW"]
            self.assertEqual(shared, [], path)
            self.assertTrue(any(line.split()[-2] in "DRT" for line in symbols), "it has no door")


if __name__ == "__main__":
    unittest.main()
