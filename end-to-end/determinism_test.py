#!/usr/bin/env python3
"""Without dither and on the calling thread the same input gives the same bytes."""
import os
import tempfile
import unittest
import unittest.mock

from support import Run, channels_of, noise, tone_in_noise

COUNT = 2048


def encode(layout, options, threads):
    with tempfile.TemporaryDirectory() as folder:
        audio = {name: tone_in_noise(COUNT, i) for i, name in enumerate(channels_of(layout))}
        run = Run(folder, layout, audio, 512, "-a", options, threads=threads)
        assert run.succeeded, run.process.stdout
        return run.carrier_bytes()


class Determinism(unittest.TestCase):
    def test_twice_the_same(self):
        for layout in ("lcr", "9.1"):
            self.assertEqual(encode(layout, "dither(false)", 0), encode(layout, "dither(false)", 0))

    def test_a_log_of_all_candidates_changes_nothing(self):
        """With it, candidates that are dropped go further than they need to."""
        plain = encode("9.1", "dither(false)", 0)
        with tempfile.NamedTemporaryFile() as log, \
                unittest.mock.patch.dict(os.environ, VELA_CANDIDATES=log.name):
            self.assertEqual(encode("9.1", "dither(false)", 0), plain)

    def test_dither_makes_a_difference(self):
        """The control: what must differ does."""
        self.assertNotEqual(encode("lcr", "dither(false)", 0), encode("lcr", "dither(true)", 0))

    def test_threads_change_nothing_where_their_order_does_not_count(self):
        """One count of bit-lines leaves the filter nothing to drop, and deltas in time order need
        no draw from the shared engine."""
        options = "dither(false);bitlines(6,6);gvm.randomize_deltas(false)"
        inline = encode("9.1", options, 0)
        for threads in (1, 2, 16):
            with self.subTest(threads=threads):
                self.assertEqual(encode("9.1", options, threads), inline)

    def test_files_of_a_run_that_fails_hold_all_blocks_before(self):
        """Some of these may still be under way.  A negative attenuation is what fails."""
        audio = {name: tone_in_noise(70000, i) for i, name in enumerate(channels_of("quad"))}
        options = "dither(false);bitlines(6,6);gvm.randomize_deltas(false)"
        with tempfile.TemporaryDirectory() as folder:
            whole = Run(folder, "quad", audio, 1024, "-a", options).carrier_bytes()
            fail = os.path.join(folder, "fail.txt")
            with open(fail, "w") as file:
                file.write(f"{67 * 1024} ATTN 0 -6.0\n")
            for threads in (0, 2, 16):
                run = Run(folder, "quad", audio, 1024, "-a", options, "-d", fail, "-P", "69",
                          threads=threads)
                self.assertTrue(run.failed)
                self.assertEqual(run.progress(), [f"{i}/69" for i in range(69)])
                for channel, data in run.carrier_bytes().items():
                    with self.subTest(threads=threads, channel=channel):
                        size = 67 * 1024 * 3
                        self.assertEqual(data[40:44], size.to_bytes(4, "little"))
                        self.assertTrue(data[44:] == whole[channel][44:44 + size], "differs")

    def test_a_block_that_nothing_fits_ends_the_run_there_whatever_was_begun(self):
        """Silence leaves room for a record, two channels do not.  What is told and written is the
        same for all threads, down to the blocks that the end of the run ends."""
        count, size = 20, 256
        fail = "{} ATTN 0 -6.0\n".format
        options = "dither(false);bitlines(3,3);gvm.randomize_deltas(false)"
        for bad in (0, 7, count - 3, count - 1):
            audio = {name: [0] * (size * bad) + noise(size * (count - bad), i, 1)
                     for i, name in enumerate(channels_of("quad"))}
            for threads in (0, 1, 2, 16):
                with self.subTest(bad=bad, threads=threads), tempfile.TemporaryDirectory() as folder:
                    # One behind it that cannot begin changes nothing.
                    metadata = os.path.join(folder, "fail.txt")
                    with open(metadata, "w") as file:
                        file.write(fail((bad + 2) * size))
                    run = Run(folder, "quad", audio, size, "-a", options, "-P", str(count),
                              *(("-d", metadata) if bad % 2 else ()), threads=threads)
                    self.assertTrue(run.failed)
                    self.assertEqual(run.progress(), [f"{i}/{count}" for i in range(bad + 2)])
                    for data in run.carrier_bytes().values():
                        self.assertEqual(len(data), 44 + 3 * size * bad)
                    self.assertFalse(os.path.exists(os.path.join(folder, "encode_time.txt")))

    def test_a_run_of_fewer_blocks_than_may_be_under_way(self):
        options = "dither(false);bitlines(6,6);gvm.randomize_deltas(false)"
        for count in range(1, 7):
            audio = {name: tone_in_noise(512 * count, i) for i, name in enumerate(channels_of("quad"))}
            carriers = []
            for threads in (0, 2, 16):
                with self.subTest(count=count, threads=threads), tempfile.TemporaryDirectory() as folder:
                    run = Run(folder, "quad", audio, 512, "-a", options, "-P", str(count), threads=threads)
                    self.assertTrue(run.succeeded)
                    self.assertEqual(run.progress(), [f"{i}/{count}" for i in range(count + 1)])
                    carriers.append(run.carrier_bytes())
                    self.assertEqual(carriers[-1], carriers[0])


if __name__ == "__main__":
    unittest.main()
