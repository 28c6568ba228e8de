#!/usr/bin/env python3
"""`cmake --install` puts everything where Debian looks for it, and the programs run from there."""
import os
import subprocess
import tempfile
import unittest

EXPECTED = """
bin/velaenc bin/carrier-check
share/man/man1/velaenc.1.gz share/man/man1/carrier-check.1.gz
share/bash-completion/completions/velaenc share/bash-completion/completions/carrier-check
share/zsh/vendor-completions/_velaenc
share/doc/velaenc/README.md share/doc/velaenc/CHANGELOG.md share/doc/velaenc/guide.md
share/doc/velaenc/metadata-file.md share/doc/velaenc/carrier-format.md
share/doc/velaenc/architecture.md share/doc/velaenc/examples/decode_carrier.py
share/doc/velaenc/examples/encode-title
""".split()


class Install(unittest.TestCase):
    def test_tree(self):
        with tempfile.TemporaryDirectory() as root:
            subprocess.run(["cmake", "--install", os.environ["BUILD"], "--prefix", "/usr"],
                           env=dict(os.environ, DESTDIR=root), stdout=subprocess.DEVNULL, check=True)
            prefix = os.path.join(root, "usr")
            found = {os.path.relpath(os.path.join(folder, name), prefix)
                     for folder, _, names in os.walk(prefix) for name in names}
            examples = {path for path in found if path.startswith("share/doc/velaenc/examples/")}
            self.assertEqual(found - examples, set(EXPECTED) - examples)
            self.assertLessEqual(set(EXPECTED), found)
            for name in ("velaenc", "carrier-check"):
                subprocess.run([os.path.join(prefix, "bin", name), "--help"], check=True,
                               stdout=subprocess.DEVNULL)


if __name__ == "__main__":
    unittest.main()
