#!/usr/bin/env python3
"""The analyses of tools/lint: that they find something, and that what they leave out has a reason."""
import importlib.machinery
import importlib.util
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests/support"), str(ROOT / "tools")]
import named_cases

LOADER = importlib.machinery.SourceFileLoader("lint", str(ROOT / "tools/lint"))
lint = importlib.util.module_from_spec(importlib.util.spec_from_loader("lint", LOADER))
LOADER.exec_module(lint)


class Lint(unittest.TestCase):
    def said(self, command, name, text):
        """What a tool says of a source, called as lint calls it."""
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder, name)
            source.write_text(text, encoding="ascii")
            return subprocess.run([*command, source], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                  text=True, check=False, cwd=ROOT).stdout

    def test_the_analyser_of_c_finds_what_a_compiler_does_not(self):
        text = "#include <stdlib.h>\nvoid Free(char* p) { free(p); %s }\n"
        self.assertIn("-Wanalyzer-double-free", self.said(lint.C_ANALYSIS, "wrong.c", text % "free(p);"))
        self.assertEqual("", self.said(lint.C_ANALYSIS, "right.c", text % ""))

    def test_cppcheck_finds_what_a_compiler_does_not(self):
        # What the project has no file for is not suppressed there, which it tells, too.
        command = [word for word in lint.CPPCHECK if not word.startswith("--suppressions-list")]
        text = "int Last(const int (&numbers)[4]) { return numbers[%d]; }\n"
        self.assertIn("[arrayIndexOutOfBounds]", self.said(command, "wrong.cpp", text % 4))
        self.assertEqual("", self.said(command, "right.cpp", text % 3))

    def test_every_check_that_is_left_out_has_a_reason(self):
        text = (ROOT / ".clang-tidy").read_text(encoding="utf-8")
        reasons = " ".join(re.findall(r"^#(.*)$", text, re.MULTILINE))
        checks = text.partition("Checks: >\n")[2].partition("WarningsAsErrors")[0]
        left_out = re.findall(r"^  -([a-z][\w.-]+)", checks, re.MULTILINE)
        self.assertLess(20, len(left_out))
        for name in left_out:
            self.assertRegex(reasons, rf" {re.escape(name)}[,.]", name)

    def test_every_suppression_of_cppcheck_has_a_reason(self):
        groups = (ROOT / ".cppcheck").read_text(encoding="utf-8").strip().split("\n\n")[1:]
        self.assertLess(5, len(groups))
        for group in groups:
            self.assertTrue(group.startswith("# "), group)
            for line in group.split("\n"):
                self.assertRegex(line, r"^(# .+|\w+(:[\w./]+)?)$")
                file = line.partition(":")[2]
                self.assertTrue(line.startswith("#") or (ROOT / file).exists(), line)

    def test_every_house_of_sources_is_read(self):
        houses = set(lint.HOUSES) | set(lint.READ_BY_CPPCHECK)
        for file in lint.listed("*.cpp"):
            if not file.startswith("tests/"):
                self.assertTrue(any(file.startswith(f"{house}/") for house in houses), file)


if __name__ == "__main__":
    named_cases.main()
