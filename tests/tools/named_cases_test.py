#!/usr/bin/env python3
"""How cases of Python are reported."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
from unittest import mock

SUPPORT = pathlib.Path(__file__).resolve().parents[1] / "support"
sys.path.insert(0, str(SUPPORT))
import named_cases

CASES = """
import sys
import unittest
sys.path.insert(0, {folder!r})
import named_cases

class Sample(unittest.TestCase):
    {case}

named_cases.main()
"""


class NamedCases(unittest.TestCase):
    def run_case(self, case, *arguments):
        with tempfile.TemporaryDirectory() as folder:
            script = pathlib.Path(folder) / "sample.py"
            script.write_text(CASES.format(folder=str(SUPPORT), case=case), encoding="ascii")
            return subprocess.run([sys.executable, "-B", script, *arguments],
                                  capture_output=True, text=True, check=False)

    def assert_reported(self, case, line, code):
        result = self.run_case(case)
        self.assertRegex(result.stdout, line)
        self.assertEqual((code, ""), (result.returncode, result.stderr))

    def test_a_case_that_holds_is_ok(self):
        self.assert_reported("def test_it(self): pass", r"\[       OK \] Sample\.it \(\d+ ms\)\n", 0)

    def test_a_case_that_does_not_hold_has_failed(self):
        self.assert_reported("def test_it(self): self.fail('why')",
                             r"why[^[]+\[  FAILED  \] Sample\.it \(\d+ ms\)\n", 1)

    def test_a_skipped_case_has_failed(self):
        self.assert_reported("def test_it(self): self.skipTest('why')",
                             r"skipped: why\n\[  FAILED  \] Sample\.it \(\d+ ms\)\n", 1)

    def test_a_class_that_cannot_be_set_up_has_failed(self):
        self.assert_reported("def test_it(self): pass\n    @classmethod\n"
                             "    def setUpClass(cls): raise ValueError('why')",
                             r"why[^[]+\[  FAILED  \] setUpClass \(Sample\) \(\d+ ms\)\n", 1)

    def test_a_class_without_cases_has_failed(self):
        self.assert_reported("pass", r"Running 0 tests", 1)

    def test_only_what_the_filter_matches_is_run(self):
        two = "def test_one(self): pass\n    def test_two(self): self.fail('why')"
        with mock.patch.dict(os.environ, GTEST_FILTER="*.o?e:None*"):
            self.assert_reported(two, r"Running 1 tests[^\n]+\n[^\n]+\n\[       OK \] Sample\.one", 0)
        with mock.patch.dict(os.environ, GTEST_FILTER="-*.two"):
            self.assert_reported(two, r"Running 1 tests[^\n]+\n[^\n]+\n\[       OK \] Sample\.one", 0)
        with mock.patch.dict(os.environ, GTEST_FILTER="None*"):
            self.assert_reported(two, r"Running 0 tests", 0)

    def test_cases_are_listed_and_not_run(self):
        result = self.run_case("def test_it(self): self.fail('why')", "--gtest_list_tests")
        self.assertEqual("  Sample.it\n", result.stdout)


if __name__ == "__main__":
    named_cases.main()
