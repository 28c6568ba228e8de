#!/usr/bin/env python3
"""Man pages and completions know every option, layout, channel and encoder argument, and no other."""
import os
import re
import shutil
import subprocess
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
MAN = os.path.join(HERE, "..", "docs", "man")
VELAENC, CARRIER_CHECK = os.path.abspath(os.environ["VELAENC"]), os.path.abspath(os.environ["CARRIER_CHECK"])
ENVIRONMENT = dict(os.environ, PATH=os.pathsep.join(
    [os.path.dirname(VELAENC), os.path.dirname(CARRIER_CHECK), os.environ["PATH"]]))


def run(*call, **options):
    return subprocess.run(call, capture_output=True, text=True, env=ENVIRONMENT, check=True, **options).stdout


HELP = run("velaenc", "--help")
OPTIONS = dict(re.findall(r"^  (-\w) (--[^\t]+)\t", HELP, re.MULTILINE))
SPEAKERS, CHANNELS = (re.findall(rf"^All available {what}:\n((?: .*\n)+)", HELP, re.MULTILINE)[0]
                      for what in ("speaker layouts", "channels"))
LAYOUTS = set(SPEAKERS.split())
CHANNELS = {line.split()[0] for line in CHANNELS.splitlines()}
ARGUMENTS = set(re.findall(r"^ ([\w.]+)\(", run("velaenc", "-p", "Vela-Codec", "help"), re.MULTILINE))
CHECK_OPTIONS = set(re.findall(r"^  (--[\w-]+)", run("carrier-check", "--help"), re.MULTILINE))


def man_page(name):
    with open(os.path.join(MAN, name + ".1"), encoding="ascii") as file:
        return file.read()


class Tables(unittest.TestCase):
    def test_there_is_something_to_compare(self):
        self.assertEqual(len(OPTIONS), 17)
        self.assertEqual(len(ARGUMENTS), 13)
        self.assertGreater(len(LAYOUTS), 60)
        self.assertEqual(len(CHANNELS), 25)
        self.assertEqual(len(CHECK_OPTIONS), 7)


class ManPages(unittest.TestCase):
    def test_options(self):
        items = re.findall(r'^\.It Fl (\w) , Fl Fl ([\w-]+(?: Li \\&" Ns \w+)?)', man_page("velaenc"), re.MULTILINE)
        self.assertEqual({"-" + short: "--" + name.replace(' Li \\&" Ns', "") for short, name in items}, OPTIONS)

    def test_encoder_arguments(self):
        items = re.findall(r"^\.It Cm ([\w.]+) Ns Pq", man_page("velaenc"), re.MULTILINE)
        self.assertEqual(set(items), ARGUMENTS)

    def test_options_of_the_checker(self):
        items = re.findall(r"^\.It Fl Fl ([\w-]+)", man_page("carrier-check"), re.MULTILINE)
        self.assertEqual({"--" + name for name in items}, CHECK_OPTIONS)

    @unittest.skipUnless(shutil.which("mandoc"), "mandoc is not installed")
    def test_the_pages_are_well_formed(self):
        for name in ("velaenc", "carrier-check"):
            run("mandoc", "-Tlint", "-Wwarning", os.path.join(MAN, name + ".1"))


class Bash(unittest.TestCase):
    def complete(self, line, function="_velaenc", **options):
        script = ('source "$0"; COMP_LINE=$1 COMP_POINT=${#1} COMPREPLY=(); "$2"; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        return run("bash", "-c", script, os.path.join(HERE, "velaenc.bash"), line, function,
                   **options).split()

    def test_options(self):
        reachable = set(OPTIONS) | {name for name in OPTIONS.values() if " " not in name}
        self.assertEqual(set(self.complete("velaenc ")), reachable)
        self.assertEqual(set(self.complete("velaenc -l 9.1 --frame")), {"--frame_size", "--frame_count"})

    def test_values(self):
        self.assertEqual(set(self.complete("velaenc -l ")), LAYOUTS)
        self.assertEqual(set(self.complete("velaenc --input ")), {name + ":" for name in CHANNELS})
        self.assertEqual(set(self.complete("velaenc -a ")), {name + "(" for name in ARGUMENTS})
        self.assertEqual(self.complete("velaenc -p V"), ["Vela-Codec"])
        self.assertEqual(self.complete("velaenc -j "), [])

    def test_files_behind_a_channel(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ("left.wav", "right.wav"):
                open(os.path.join(folder, name), "w", encoding="ascii").close()
            self.assertEqual(self.complete("velaenc -i L:l", cwd=folder), ["left.wav"])
            self.assertEqual(self.complete("carrier-check --original L=l", "_carrier_check", cwd=folder), ["left.wav"])
            self.assertEqual(set(self.complete("carrier-check ", "_carrier_check", cwd=folder)), {"left.wav", "right.wav"})

    def test_the_checker(self):
        self.assertEqual(set(self.complete("carrier-check --", "_carrier_check")), CHECK_OPTIONS)
        self.assertEqual(set(self.complete("carrier-check --layout ", "_carrier_check")), LAYOUTS)
        self.assertEqual(set(self.complete("carrier-check --original ", "_carrier_check")), {name + "=" for name in CHANNELS})


@unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
class Zsh(unittest.TestCase):
    """What the functions hand to zsh's own machinery, which stands in here as functions that print."""

    def call(self, service, function):
        stand_ins = ('_arguments() { print -l -- "$@" }; compadd() { print -l -- "${@:#-*}" }; '
                     '_files() { print files }; compset() { return 1 }; ')
        return run("zsh", "-f", "-c", stand_ins + f'service={service}; . "$0" >/dev/null; {function}',
                   os.path.join(HERE, "_velaenc"))

    def test_options(self):
        reachable = set(OPTIONS) | {name for name in OPTIONS.values() if " " not in name}
        names = re.findall(r"^\*(-[\w-]+)\[", self.call("velaenc", "_velaenc_program"), re.MULTILINE)
        self.assertEqual(set(names), reachable)
        names = re.findall(r"^\*(--[\w-]+)", self.call("carrier-check", "_velaenc_check"), re.MULTILINE)
        self.assertEqual(set(names), CHECK_OPTIONS)

    def test_values(self):
        self.assertEqual(set(self.call("velaenc", "_velaenc_layouts").split()), LAYOUTS)
        self.assertEqual(set(self.call("velaenc", "_velaenc_channel_file :").split()) - {":"}, CHANNELS)
        self.assertEqual(set(self.call("velaenc", "_velaenc_arguments").split()), {name + "(" for name in ARGUMENTS})


if __name__ == "__main__":
    unittest.main()
