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
from unittest import mock

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path[:0] = [str(SOURCE / "tools"), str(SOURCE / "tests/support")]
import named_cases
import soak_library
import soak_plan

FOLDER = pathlib.Path(sys.argv[1])
SERVICE = pathlib.Path("build/native/service/orvande-service")
SEED = 1


class Soak(unittest.TestCase):
    def soak(self, percent, planted=None, service=SERVICE, folder=FOLDER):
        os.chdir(SOURCE)
        output = io.StringIO()
        with contextlib.redirect_stdout(output), soak_library.WineSession():
            code = soak_library.main(service, folder, SEED, percent, planted=planted)
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

    def test_wrong_answers_are_told(self):
        wrong = [soak_plan.Operation("reload", answers={"reloaded"}),
                 soak_plan.Operation("search", answers={"no result"})]
        with mock.patch.object(soak_library.Planner, "first", lambda _: wrong):
            code, output = self.soak(0.1)
        self.assertEqual(1, code, output)
        self.assertRegex(output, r"soak: wrong: search \(none\): '.*', not one of \['no result'\]\n")
        self.assertIn(", 1 wrong\n", output)

    def test_service_or_program_that_does_not_start_is_told(self):
        code, output = self.soak(0.1, service=pathlib.Path("/bin/false"))
        self.assertEqual((1, "soak: the service does not start (see build/log/soak-library)\n"),
                         (code, output))
        code, output = self.soak(0.1, folder=pathlib.Path("/none"))
        self.assertEqual(1, code)
        self.assertRegex(output, r"\nsoak: '.*' has ended the program: it said nothing\n$")


if __name__ == "__main__":
    named_cases.main()
