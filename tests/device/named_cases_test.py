#!/usr/bin/env python3
"""How cases of Python are reported."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

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
    def run_case(self, case):
        with tempfile.TemporaryDirectory() as folder:
            script = pathlib.Path(folder) / "sample.py"
            text = CASES.format(folder=str(pathlib.Path(__file__).parent), case=case)
            script.write_text(text, encoding="ascii")
            return subprocess.run([sys.executable, "-B", script], capture_output=True, text=True, check=False)

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


if __name__ == "__main__":
    named_cases.main()
