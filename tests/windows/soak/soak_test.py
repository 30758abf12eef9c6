#!/usr/bin/env python3
"""A hundredth of a soak, and whether a leak for each operation is found in it.

    soak_test.py FOLDER        FOLDER: where orvande-soak.exe and the DLLs lie
"""
import contextlib
import io
import os
import pathlib
import sys
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path[:0] = [str(SOURCE / "tools"), str(SOURCE / "tests/support")]
import named_cases
import soak_library

FOLDER = pathlib.Path(sys.argv[1])
SERVICE = pathlib.Path("build/native/service/orvande-service")
SEED = 1


class Soak(unittest.TestCase):
    def soak(self, percent, planted=None):
        os.chdir(SOURCE)
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            code = soak_library.main(SERVICE, FOLDER, SEED, percent, planted=planted)
        return code, output.getvalue()

    def test_nothing_grows_and_every_answer_is_right(self):
        code, output = self.soak(1)
        self.assertEqual(0, code, output)
        self.assertIn("117 operations, 0 wrong", output)

    def test_planted_handles_are_found(self):
        code, output = self.soak(0.3, "handle")
        self.assertEqual(1, code, output)
        self.assertRegex(output, r"\nhandles .*GROWS\n")
        self.assertEqual(1, output.count("GROWS"), output)


if __name__ == "__main__":
    named_cases.main()
