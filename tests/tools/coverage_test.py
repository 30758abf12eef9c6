#!/usr/bin/env python3
"""What tools/coverage says to wrong arguments."""
import pathlib
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools"), str(ROOT / "tests/support")]
import coverage_figures
import named_cases


class WrongArguments(unittest.TestCase):
    def assert_refused(self, sentence, *arguments):
        run = subprocess.run([ROOT / "tools/coverage", *arguments], capture_output=True, text=True,
                             check=False)
        self.assertEqual((2, "", f"coverage: {sentence}\n"), (run.returncode, run.stdout, run.stderr))

    def test_build_that_is_not_counted_is_told_with_those_that_are(self):
        builds = ", ".join(coverage_figures.BUILDS)
        for name in ("native", "--clear", ""):
            self.assert_refused(f"'{name}' is no build that is counted ({builds})", name)

    def test_only_counts_can_be_cleared(self):
        for others in (["x"], ["--clear", "x"], ["--clear", "--clear"]):
            self.assert_refused("wanted is [BUILD [--clear]] (--help tells more)", "coverage", *others)


if __name__ == "__main__":
    named_cases.main()
