#!/usr/bin/env python3
"""When a program of Windows is run once more, because Wine has crashed at its end."""
import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import named_cases
from windows_programs import RUNS, run_program


class RunProgram(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.runs = pathlib.Path(folder.name) / "runs"
        self.said = io.StringIO()

    def run_shell(self, script):
        """In it, $run is the number of the run, from 1."""
        count = 'echo >>"$1"; run=$(wc -l <"$1")'
        with contextlib.redirect_stdout(self.said):
            return run_program(["sh", "-c", f"{count}\n{script}", "program", self.runs],
                               capture_output=True, text=True)

    def count(self):
        return len(self.runs.read_text().splitlines())

    def notices(self):
        return self.said.getvalue().count("; once more\n")

    def assert_once(self, script, code):
        run = self.run_shell(script)
        self.assertEqual((code, 1, ""), (run.returncode, self.count(), self.said.getvalue()))

    def test_a_program_that_ends_by_itself_runs_once(self):
        self.assert_once("true", 0)
        self.runs.unlink()
        self.assert_once("exit 1", 1)

    def test_a_crash_of_the_programs_own_is_no_reason(self):
        self.assert_once("exit 5", 5)

    def test_a_crash_of_wine_is_said_and_the_next_run_counts(self):
        run = self.run_shell("echo all; [ $run -eq 2 ] || exit 139; echo more >&2; exit 3")
        self.assertEqual((3, "all\n", "more\n"), (run.returncode, run.stdout, run.stderr))
        self.assertEqual((2, 1), (self.count(), self.notices()))
        self.assertIn("Wine has crashed at the end of sh -c", self.said.getvalue())

    def test_a_program_that_never_ends_otherwise_has_failed(self):
        self.assertEqual(139, self.run_shell("exit 139").returncode)
        self.assertEqual((RUNS, RUNS - 1), (self.count(), self.notices()))

    def test_output_that_was_cut_off_is_no_end(self):
        with self.assertRaisesRegex(AssertionError, r"'one\\n', then 'one\\ntwo"):
            self.run_shell("echo one; [ $run -eq 2 ] || exit 139; echo two")
        self.assertEqual(2, self.count())


if __name__ == "__main__":
    named_cases.main()
