#!/usr/bin/env python3
"""Ten seconds of the service under clients of which a third misbehave.

    soak_test.py SERVICE        SERVICE: the service's program
"""
import contextlib
import io
import os
import pathlib
import sys
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(SOURCE / "tools"), str(SOURCE / "tests/support")]
import named_cases
import soak_service


class Soak(unittest.TestCase):
    def test_good_clients_are_answered_rightly_among_bad_ones(self):
        os.chdir(SOURCE)
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            code = soak_service.main(pathlib.Path(sys.argv[1]), 10, 1)
        self.assertEqual(0, code, output.getvalue())
        self.assertRegex(output.getvalue(), r"\d+ right answers and 0 wrong ones to 43 good clients")
        for kind in soak_service.BadClient(None, 0, 1).kinds:
            self.assertRegex(output.getvalue(), rf"[1-9]\d* {kind.__name__.replace('_', ' ')}\b")


if __name__ == "__main__":
    named_cases.main()
