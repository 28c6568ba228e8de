#!/usr/bin/env python3
"""The real program, as somebody calls it: what it prints, and how it ends."""
import os
import re
import signal
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "../../../end-to-end"))
from support import FULL_SCALE, VELAENC, tone, write_wav  # noqa: E402

OK = "Everything went OK\n"
FAILED = "Failure with ReturnCode 1\n"
SETTINGS = "pid: N\nUsing these settings:\n"
NO_SETTINGS = ("{profile: }\n{input_speaker_layout: }\n{frame_count: -1}\n{dither_bits: 8}\n"
               "Encoder arguments:\nInput channels:\n")
UNKNOWN_PROFILE = 'ERROR: Unknown profile (or not available in this build) "%s"\n'

with open(os.path.join(HERE, "help.txt"), encoding="ascii") as help_file:
    HELP = help_file.read()
OPTIONS_HELP = HELP[:HELP.index("\nAll available speaker layouts:")]
PROFILE_HELP = """
Arguments for encoder profile Vela-Codec:
 bitlines(<2 numbers separated by comma, expressing a range in [3,14]>)
 dither(true|false)
 centers_max(<max number of centers>)
 gvm.allow_merge(true|false)
 gvm.update_all(true|false)
 gvm.force_origin_center(true|false)
 gvm.implementation(ref|fast)
 gvm.randomize_deltas(true|false)
 output.dbrms(filename)
 output.dbpeak(filename)
 output.crest(filename)
 output.centers(filename prefix)
 native_content(true|false)
"""


class Result:
    def __init__(self, process):
        self.status, self.err = process.returncode, process.stderr
        self.out = re.sub(r"^pid: \d+$", "pid: N", process.stdout, flags=re.M)


class Program(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def run_it(self, *arguments):
        # A checker must let the process die of what it dies of.
        leave = "handle_sigfpe=0"
        environment = {**os.environ, "ASAN_OPTIONS": leave, "TSAN_OPTIONS": leave}
        return Result(subprocess.run([VELAENC, *arguments], cwd=self.folder, capture_output=True,
                                     text=True, stdin=subprocess.DEVNULL, env=environment))

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name="C.wav", samples=None, **how):
        write_wav(self.path(name), tone(600, 200) if samples is None else samples, **how)

    def encode(self, *options, size=("-f", "256")):
        """A run that is fine without `options`."""
        return self.run_it("-p", "Vela-Codec", "-l", "mono", "-j", "0", *size, "-i", "C:C.wav", *options)

    def expect(self, result, out, status=0, err=""):
        self.assertEqual((result.status, result.out, result.err), (status, out, err))

    def expect_failure(self, result, out):
        self.expect(result, out + FAILED, 255)


class Help(Program):
    def test_no_arguments_end_at_the_missing_profile(self):
        self.expect_failure(self.run_it(), SETTINGS + NO_SETTINGS + UNKNOWN_PROFILE % "")

    def test_help_lists_options_layouts_and_channels(self):
        for word in ("-h", "--help"):
            self.expect(self.run_it(word), HELP + OK)

    def test_help_comes_before_version_and_complaints(self):
        self.expect(self.run_it("-v", "-h", "-p", "a", "-p", "b"), HELP + OK)

    def test_version(self):
        block = ("Version info:\n\tName: Vela-Codec v3.2\n\tVersion: 3.2.1\n\tGit hash: dca34e54\n"
                 "\tBuild date: 2016-12-19T09:00:00+01:00\n")
        for word in ("-v", "--version"):
            self.expect(self.run_it(word), block + OK)

    def test_help_as_the_last_word_asks_the_profile(self):
        settings = SETTINGS + NO_SETTINGS.replace("{profile: }", "{profile: Vela-Codec}")
        self.expect(self.run_it("-p", "Vela-Codec", "help"), settings + PROFILE_HELP + "\n" + OK)
        self.expect_failure(self.run_it("-p", "PS4", "help"),
                            SETTINGS + NO_SETTINGS.replace("{profile: }", "{profile: PS4}")
                            + UNKNOWN_PROFILE % "PS4")


class Walk(Program):
    """The walk over the arguments, with its odd endings."""

    def test_words_that_cannot_be_used(self):
        for words in (["x"], ["-"], ["-Z"], ["help", "help"], ["-p", "Vela-Codec", "x", "-h"],
                      ["--unknown", "a", "b"], ["--unknown", "-h"]):
            with self.subTest(words=words):
                self.expect_failure(self.run_it(*words), "Not all arguments could be parsed\n")

    def test_an_unknown_name_or_a_missing_value_at_the_very_end_is_as_if_not_given(self):
        for word in ("--unknown", "--threads", "-j", "--lowpass", "-f"):
            with self.subTest(word=word):
                self.expect_failure(self.run_it(word), SETTINGS + NO_SETTINGS + UNKNOWN_PROFILE % "")

    def test_an_unknown_name_before_help_still_asks_the_profile(self):
        self.expect_failure(self.run_it("--unknown", "help"),
                            SETTINGS + NO_SETTINGS + UNKNOWN_PROFILE % "")

    def test_the_name_with_a_blank_can_be_reached(self):
        result = self.run_it("--data output", "a\\b")
        self.assertIn("{*data_fn: a/b}\n", result.out)

    def test_letters_behind_a_short_name_are_ignored(self):
        self.expect_failure(self.run_it("-Lfir(20000)", "what"),
                            "pid: N\nERROR: Unknown lowpass filter what\n"
                            "ERROR: There is a problem with the options.\n")


class Complaints(Program):
    TABLE = [
        (["-p", "a", "-p", "b"], 'Profile was already set to "a"\n'),
        (["-l", "a", "-l", "b"], 'Speaker layout was already set to "a"\n'),
        (["-L", "none", "-L", "x"], 'Lowpass filter was already set to "none"\n'),
        (["-d", "a\\b", "-d", "c"], 'Downmix filename was already set to "a/b"\n'),
        (["-n", "-1", "-n", "5", "-n", "7"], 'Frame count was already set to "5"\n'),
        (["-r", "44100Hz", "-r", "x"], 'Sample rate was already set to "44100"\n'),
        (["-f", " 16", "-f", "x"], 'Frame size was already set to "16"\n'),
        (["-o", "wav:out/x_", "-o", "y"], "Could not set output file and/or format"),
        (["-O", "a", "-O", "b"], 'Data filename was already set to "a"\n'),
        (["-m", "true", "-m", "0"], 'Multi channel export was already set to "1"\n'),
        (["-m", "yes"], 'Could not understand specified multi-channel export value "yes"\n'),
        (["-j", "3", "-j", "x"], 'Nr threads was already set to "3"\n'),
        (["-P", "10", "-P", "x"], 'Progress max was already set to "10"\n'),
        (["-i", "L"], "Could not understand input channel L\n"),
        (["-i", "X:a.wav"], "Could not understand input channel X:a.wav\n"),
        (["-i", "ambi:a.wav"], "Could not understand input channel ambi:a.wav\n"),
        (["-s", "NHK", "-i", "FC:a.wav"], "Could not understand input channel FC:a.wav\n"),
        (["-m", "x", "-i", "y"], 'Could not understand specified multi-channel export value "x"\n'
                                 "Could not understand input channel y\n"),
    ]

    def test_all_are_printed_with_the_help(self):
        for words, text in self.TABLE:
            with self.subTest(words=words):
                self.expect_failure(self.run_it(*words),
                                    "ERROR:\n" + text + "\n" + OPTIONS_HELP + "\n")

    def test_some_options_may_be_repeated(self):
        result = self.run_it("-h", "-s", "a", "-s", "b", "-a", "x", "-a", "y;;z", "-v")
        self.expect(result, HELP + OK)

    def test_numbers_that_nothing_can_convert_or_hold_end_the_process(self):
        self.write()
        for words in (["-f", "x"], ["-n", ""], ["-r", "99999999999"], ["-P", "-"], ["-j", "4000000000"]):
            with self.subTest(words=words):
                result = self.run_it(*words)
                self.assertEqual(result.status, -signal.SIGABRT)
                self.assertNotIn("Failure with", result.out)
        for size in ("-1", "-5", "-6", "-2000"):
            with self.subTest(size=size):
                self.assertEqual(self.encode(size=("-f", size)).status, -signal.SIGABRT)


class Settings(Program):
    def test_print_what_was_set(self):
        self.write("a.wav")
        result = self.run_it("-p", "no", "-l", "9.1", "-d", "d\\m", "-r", "48000", "-f", "16",
                             "-n", "3", "-j", "0", "-o", "c:\\data\\x", "-O", "o", "-m", "1",
                             "-a", "p(q);r", "-a", "s", "-i", "lfe_2:a.wav", "-i", "T:a.wav", "-L", "nonesuch")
        self.expect_failure(result, SETTINGS + (
            "{profile: no}\n{input_speaker_layout: 9.1}\n{*downmix_filename: d/m}\n"
            "{*sample_rate: 48000}\n{*frame_size: 16}\n{frame_count: 3}\n{dither_bits: 8}\n"
            "{*nr_threads: 0}\n{*output_fn: /data/x}\n{*output_format: c}\n{*data_fn: o}\n"
            "{*multi_channel_export: 1}\nEncoder arguments:\n\t{argument: p(q)}\n\t{argument: r}\n"
            "\t{argument: s}\nInput channels:\n"
            "\t{channel: LFE}{variant: 2}{filename: a.wav}\n"
            "\t{channel: Top}{variant: 0}{filename: a.wav}\n") + UNKNOWN_PROFILE % "no")

    def test_every_missing_input_file_is_named(self):
        self.write()
        self.expect_failure(
            self.run_it("-i", "L:a\\b.wav", "-i", "C:C.wav", "-i", "R:c.wav"),
            'pid: N\nERROR: Input file "a/b.wav" does not exist.\n'
            'ERROR: Input file "c.wav" does not exist.\nERROR: Not all input files could be found.\n'
            "ERROR: There is a problem with the options.\n")

    def test_lowpass_texts(self):
        problem = "pid: N\n%sERROR: There is a problem with the options.\n"
        for text in ("fir", "fir(x)", "iir()", "fir (20000)", "iir(20000"):
            with self.subTest(text=text):
                self.expect_failure(self.run_it("-L", text), problem % "")
        for text in ("FIR(20000)", "x", " none"):
            with self.subTest(text=text):
                self.expect_failure(self.run_it("-L", text),
                                    problem % f"ERROR: Unknown lowpass filter {text}\n")
        for text in ("", "none", "nonesuch", "fir(20000)", "fir(20000)x", "iir( 20000 Hz)"):
            with self.subTest(text=text):
                self.expect_failure(self.run_it("-L", text),
                                    SETTINGS + NO_SETTINGS + UNKNOWN_PROFILE % "")

    def test_what_the_profile_refuses(self):
        table = [
            (["-l", "none"], 'ERROR: Unsupported input speaker layout "none"\n'),
            (["-l", ""], 'ERROR: Unsupported input speaker layout ""\n'),
            (["-l", "mono", "-s", "vel"], "ERROR: Could not set naming schema to vel\n"),
            (["-l", "mono", "-a", "what(1)"],
             'ERROR: Could not set argument to "what(1)": Unknown encoder argument "what(1)"\n'),
            (["-l", "mono", "-a", "dither(TRUE)"], 'ERROR: Could not set argument to "dither(TRUE)": \n'),
            (["-l", "mono", "-a", "dithers(true)"], 'ERROR: Could not set argument to "dithers(true)": \n'),
            (["-l", "mono", "-a", "bitlines(3;12)"], 'ERROR: Could not set argument to "bitlines(3": \n'),
            (["-l", "mono", "-a", "output.dbrmsfoo(x)"],
             'ERROR: Could not set argument to "output.dbrmsfoo(x)": \n'),
            (["-l", "mono", "-d", "none"], 'ERROR: Could not read downmix file "none"\n'
                                           'ERROR: Could not set the downmix filename to "none"\n'),
        ]
        for words, text in table:
            with self.subTest(words=words):
                result = self.run_it("-p", "Vela-Codec", *words)
                self.assertEqual((result.status, result.err), (255, ""))
                self.assertTrue(result.out.endswith("Input channels:\n" + text + FAILED), result.out)


class Encoding(Program):
    def after_settings(self, result):
        return result.out[result.out.index("Input channels:\n"):].split("\n", 2)[2]

    def test_writes_carrier_time_and_figures(self):
        self.write()
        for expected_lines in (1, 2):
            result = self.encode("-o", "enc_", "-a", "centers_max(150)x")
            self.assertEqual((result.status, result.err), (0, ""))
            self.assertRegex(self.after_settings(result), (
                r"^Start \d+, stop \d+, CLOCKS_PER_SEC 1000000\n"
                r"Quality metrics: \{channel: Center\}              \{dbrms: \S+\}\t\{dbpeak: \S+\}\t"
                r"\{crest: \S+\}\n"
                r"Quality metrics for all channels:               \{dbrms: \S+\}\t\{dbpeak: \S+\}\t"
                r"\{crest: \S+\}\n"
                r"Total duration: \S+ seconds\n"
                r"(Lowpass|Encoding): \{seconds: \S+\}\{fraction: \S+\}\n"
                r"(Lowpass|Encoding): \{seconds: \S+\}\{fraction: \S+\}\n"
                r"\*\*\* Not accounted for: \{seconds: \S+\}\{fraction: \S+\}\nEverything went OK\n$"))
            with open(self.path("encode_time.txt"), encoding="ascii") as file:
                self.assertRegex(file.read(), r"^(Time Spend: \d+\.\d{5}s\n){%d}$" % expected_lines)
        self.assertEqual(os.path.getsize(self.path("enc_C.wav")), 44 + 3 * 3 * 256)

    def test_a_time_file_that_cannot_be_opened_is_no_failure(self):
        self.write()
        os.mkdir(self.path("encode_time.txt"))
        self.assertEqual(self.encode().status, 0)

    def test_without_an_output_it_encodes_all_the_same(self):
        self.write()
        result = self.encode()
        self.assertEqual(result.status, 0)
        self.assertIn("Quality metrics: {channel: Center} ", result.out)
        self.assertIn("Quality metrics for all channels: ", result.out)
        self.assertTrue(result.out.endswith("\nEverything went OK\n"), result.out)
        self.assertEqual(sorted(os.listdir(self.folder)), ["C.wav", "encode_time.txt"])

    def test_the_prefix_is_joined_as_it_stands(self):
        self.write()
        os.mkdir(self.path("out"))
        for prefix, file in (("out\\", "out/C.wav"), ("out/enc", "out/encC.wav"), ("wav:x", "xC.wav")):
            with self.subTest(prefix=prefix):
                self.assertEqual(self.encode("-o", prefix).status, 0)
                self.assertTrue(os.path.exists(self.path(file)))

    def test_other_names_by_the_other_schema(self):
        self.write()
        self.assertEqual(self.encode("-s", "NHK", "-o", "x").status, 0)
        self.assertTrue(os.path.exists(self.path("xFC.wav")))

    def test_progress_is_printed_when_it_changes(self):
        self.write(samples=tone(4 * 256, 200))
        lines = [line for line in self.encode("-P", "2").out.split("\n") if line.startswith("Progress")]
        self.assertEqual(lines, ["Progress: 0/2", "Progress: 1/2", "Progress: 2/2"])
        lines = [line for line in self.encode("-P", "4", "-n", "8").out.split("\n")
                 if line.startswith("Progress")]
        self.assertEqual(lines, ["Progress: 0/4", "Progress: 1/4", "Progress: 2/4"])

    # A channel that has a carrier to itself, and is not the first.
    def test_what_a_filter_makes_too_loud_is_cut_and_no_error_of_the_carrier(self):
        silence = [0] * 1024
        loud = [FULL_SCALE if i // 64 % 2 == 0 else -FULL_SCALE - 1 for i in range(1024)]
        inputs = []
        for channel in ("L", "R", "C", "LFE", "Ls", "Rs"):
            self.write(channel + ".wav", loud if channel == "LFE" else silence)
            inputs += ["-i", f"{channel}:{channel}.wav"]
        for lowpass in ("none", "fir(18000)", "iir(19000)"):
            with self.subTest(lowpass=lowpass):
                result = self.run_it("-p", "Vela-Codec", "-l", "5.1", "-j", "0", "-f", "256", *inputs,
                                     "-L", lowpass)
                self.assertEqual((result.status, result.err), (0, ""))
                peaks = [float(peak) for peak in re.findall(r"{dbpeak: (\S+)}", result.out)]
                self.assertEqual(len(peaks), 7)
                self.assertLess(max(peaks), -100)

    def test_a_frame_count_ends_the_run_early(self):
        self.write(samples=tone(4 * 256, 200))
        self.assertEqual(self.encode("-n", "3", "-o", "x").status, 0)
        self.assertEqual(os.path.getsize(self.path("xC.wav")), 44 + 3 * 3 * 256)

    def test_nothing_to_encode_is_a_failure_at_the_end(self):
        self.write()
        result = self.encode("-n", "0", "-o", "x")
        self.assertRegex(self.after_settings(result), r"^Start \d+, stop \d+, .*\n" + FAILED + "$")
        self.assertEqual(sorted(os.listdir(self.folder)), ["C.wav", "encode_time.txt"])
        result = self.run_it("-p", "Vela-Codec", "-l", "mono", "-f", "256")
        self.assertEqual(result.status, 255)

    def test_a_share_of_nothing_kills_the_process(self):
        self.write()
        self.assertEqual(self.encode("-n", "0", "-P", "10").status, -signal.SIGFPE)

    def test_refusals_without_a_word(self):
        self.write()
        self.write("other-rate.wav", rate=44100)
        self.write("stereo.wav")
        table = [["-r", "44100"], ["-i", "C:other.wav"], ["-o", ""]]
        self.write("other.wav")
        for words in table:
            with self.subTest(words=words):
                result = self.encode(*words)
                self.assertEqual((result.status, result.err), (255, ""))
                last_setting = r"\n\t\{channel: Center\}\{variant: 0\}\{filename: [a-zA-Z.]+\}\n"
                self.assertRegex(result.out, last_setting + FAILED + "$")
        result = self.run_it("-p", "Vela-Codec", "-l", "stereo", "-f", "256", "-i", "L:C.wav",
                             "-i", "R:other-rate.wav")
        self.assertTrue(result.out.endswith("C.wav}\n\t{channel: Right}{variant: 0}{filename: "
                                            "other-rate.wav}\n" + FAILED), result.out)

    def test_refusals_with_a_reason(self):
        self.write()
        table = [
            (self.encode(size=()), "ERROR: No frame size was set.\n", ""),
            (self.encode("-a", "bitlines(3,14)"), "", "bitline.max is out of the allowed range [3,12]\n"),
            (self.encode("-a", "bitlines(2,12)"), "", "bitline.min is out of the allowed range [3,12]\n"),
            (self.encode("-a", "centers_max(0)"), "", ""),
            (self.encode("-a", "bitlines(9,5)"), "", ""),
            (self.encode("-L", "fir(17000)"), "ERROR: Could not create the lowpass: "
             "{settings.lowpass_type: FIR}{settings.lowpass_freq: 17000}{sample_rate: 48000}", ""),
            (self.encode("-L", "fir(18000)", size=("-f", "16")),
             "The frame size (16) cannot be smaller than the filter delay 39\n", ""),
        ]
        for result, out, err in table:
            with self.subTest(out=out, err=err):
                self.assertEqual((result.status, result.err), (255, err))
                self.assertTrue(result.out.endswith("C.wav}\n" + out + FAILED), result.out)

    def test_layouts_without_a_carrier(self):
        self.write()
        for name, bits in (("22.2", "0" + 24 * "1"), ("lfe", 21 * "0" + "1000"),
                           ("2.1", 21 * "0" + "1011"), ("ambi", "1" + 24 * "0")):
            with self.subTest(name=name):
                result = self.run_it("-p", "Vela-Codec", "-l", name, "-f", "256", "-i", "C:C.wav")
                self.assertTrue(result.out.endswith(
                    "ERROR: Cannot determine carrier speaker layout for input speaker layout "
                    f"{bits}\n" + FAILED), result.out)

    def test_a_file_that_ends_early_ends_the_stream(self):
        self.write("L.wav", tone(1024, 200))
        self.write("R.wav", tone(300, 200))
        result = self.run_it("-p", "Vela-Codec", "-l", "stereo", "-f", "256", "-i", "L:L.wav",
                             "-i", "R:R.wav", "-o", "x", "-j", "2")
        self.assertEqual(result.status, 0)
        self.assertEqual(os.path.getsize(self.path("xC.wav")), 44 + 2 * 3 * 256)


if __name__ == "__main__":
    unittest.main()
