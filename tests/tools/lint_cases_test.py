#!/usr/bin/env python3
"""Which cases tools/lint makes of what the tools say that it calls, in a made-up project."""
import contextlib
import importlib.machinery
import importlib.util
import io
import json
import os
import pathlib
import sys
import tempfile
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests/support"), str(ROOT / "tools")]
import named_cases

LOADER = importlib.machinery.SourceFileLoader("lint", str(ROOT / "tools/lint"))
lint = importlib.util.module_from_spec(importlib.util.spec_from_loader("lint", LOADER))
LOADER.exec_module(lint)

FILES = {
    "README.md": "# Text\n",
    "src/a.cpp": "static int Help() { return 1; }\nint A() { return Help(); }\n",
    "src/b.cpp": "static int Help() { return 2; }\nint B() { return Help(); }\n",
    "src/c.cpp": '#include "c.h"\nint C() { return 3; }\n',
    "src/c.h": "#pragma once\nint C();\n",
    "src/d.c": "void Free(char* text);\nvoid Free(char* text) { *text = 0; }\n",
    "tests/tools/a_test.py": "print('all is well')\n",
    ".clang-tidy": "Checks: '-*,readability-else-after-return'\nWarningsAsErrors: '*'\n"
                   "HeaderFilterRegex: '.*'\n",
}
TOOLS = ("tools/format", "tools/check-includes", "tools/check-docs", "tools/docs", "bin/cppcheck",
         "tools/build")


class Cases(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="lint.")
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        for name, text in FILES.items():
            self.write(name, text)
        for name in TOOLS:
            self.tool(name, "")
        entries = [{"file": f"{os.getcwd()}/src/{name}.cpp", "directory": os.getcwd(),
                    "command": f"clang++ -Winvalid-pch -Isrc -std=c++20 -o {name}.o -c src/{name}.cpp"}
                   for name in "abc"]
        for build in lint.BUILDS:
            self.write(lint.commands_file(build), json.dumps(entries))
        for patch in (mock.patch.object(lint, "listed", self.listed),
                      mock.patch.object(lint, "HOUSES", ["src"]),
                      mock.patch.object(lint.os, "chdir"),
                      mock.patch.dict(os.environ, {"PATH": f"{os.getcwd()}/bin:{os.environ['PATH']}"})):
            patch.start()
            self.addCleanup(patch.stop)
        self.report = lint.Report()

    @staticmethod
    def write(name, text):
        pathlib.Path(name).parent.mkdir(parents=True, exist_ok=True)
        pathlib.Path(name).write_text(text, encoding="ascii")

    def tool(self, name, text):
        self.write(name, f"#!/bin/sh\n{text}\n")
        pathlib.Path(name).chmod(0o755)

    @staticmethod
    def listed(*patterns):
        return [name for name in sorted([*FILES, "tools/format"])
                if not patterns or any(lint.pathlib.PurePath(name).match(pattern) for pattern in patterns)]

    def said(self, check):
        """What a check has failed, and what it says above it; whether it is told at the end is looked at."""
        with contextlib.redirect_stdout(io.StringIO()) as output:
            check(self.report)
        lines = output.getvalue().split("\n")
        begun = [line.split("] ")[1] for line in lines if line.startswith("[ RUN")]
        ended = [line.split("] ")[1].split(" ")[0] for line in lines
                 if line.startswith(("[  FAILED", "[    "))]
        self.assertEqual(begun, ended)
        self.assertIn(f" {len(begun)} tests of ", lines[0])
        failed = [line.split("] ")[1].split(" ")[0] for line in lines if line.startswith("[  FAILED")]
        self.assertEqual(bool(failed), self.report.has_failed)
        return failed, [line for line in lines if line and not line.startswith("[")]

    def test_what_is_said_of_a_file_fails_its_case(self):
        self.assertEqual(([], []), self.said(lint.check_format))
        self.tool("tools/format", "echo src/c.h:1: form; exit 1")
        self.assertEqual((["Format.src/c.h"], ["src/c.h:1: form"]), self.said(lint.check_format))

    def test_tool_that_fails_without_a_word_fails_the_first_case(self):
        self.tool("tools/format", "exit 3")
        self.assertEqual((["Format..clang-tidy"], ["tools/format ended with 3"]),
                         self.said(lint.check_format))
        self.tool("bin/cppcheck", "exit 3")
        self.assertEqual((["Cppcheck.src/a.cpp"], ["cppcheck ended with 3"]),
                         self.said(lint.check_with_cppcheck))

    def test_scripts_are_read_by_what_runs_them(self):
        self.assertEqual(([], []), self.said(lint.check_scripts))
        self.tool("tools/format", "echo $1")
        self.write("tests/tools/a_test.py", "import os\n")
        failed, said = self.said(lint.check_scripts)
        self.assertEqual(["Scripts.tests/tools/a_test.py", "Scripts.tools/format"], failed)
        self.assertIn("tests/tools/a_test.py:1:1: 'os' imported but unused", "\n".join(said))
        self.assertIn("SC2086", "\n".join(said))

    def test_cppchecks_complaint_goes_to_its_file(self):
        self.assertEqual(([], []), self.said(lint.check_with_cppcheck))
        self.tool("bin/cppcheck", "echo 'src/b.cpp:1: wrong [id]'; echo 'nofile:0: also [id]'")
        self.assertEqual((["Cppcheck.src/a.cpp", "Cppcheck.src/b.cpp"],
                          ["nofile:0: also [id]", "src/b.cpp:1: wrong [id]"]),
                         self.said(lint.check_with_cppcheck))

    def test_c_is_analysed(self):
        self.assertEqual(([], []), self.said(lint.analyse_c))
        self.write("src/d.c", "int Count(int number) { return; }\n")
        self.assertEqual(["AnalysisOfC.src/d.c"], self.said(lint.analyse_c)[0])

    def test_tools_for_the_whole_have_one_case(self):
        for tool, check, name in (("tools/check-includes", lint.check_includes, "Includes.RunDownwards"),
                                  ("tools/docs", lint.make_reference, "Reference.KnowsEveryName")):
            self.report = lint.Report()
            self.assertEqual(([], []), self.said(check))
            self.tool(tool, "echo wrong; exit 1")
            self.assertEqual(([name], ["wrong"]), self.said(check))
            self.tool(tool, "exit 1")
            self.assertEqual(([name], ["no reason given"]), self.said(check))

    def test_documents_have_their_own_lines(self):
        self.assertEqual(([], []), self.said(lint.check_docs))
        self.tool("tools/check-docs", "echo README.md:1: wrong; echo OTHER.md:2: wrong; exit 1")
        self.assertEqual((["Documents.README.md"], ["README.md:1: wrong"]), self.said(lint.check_docs))
        self.tool("tools/check-docs", "echo torn; exit 2")
        self.assertEqual((["Documents.README.md"], ["torn"]), self.said(lint.check_docs))

    def test_sources_that_disturb_each_other_are_analysed_apart(self):
        self.assertEqual(([], []), self.said(lint.analyse))
        self.write("src/b.cpp", "int B(int b) {\n    if (b > 0)\n        return 1;\n    else\n"
                                "        return 2;\n}\n")
        failed, said = self.said(lint.analyse)
        self.assertEqual(["Analysis.src/b.cpp"], failed)
        self.assertIn("[readability-else-after-return", "\n".join(said))

    def test_what_was_found_clean_is_not_analysed_again(self):
        self.said(lint.analyse)
        self.tool("bin/clang-tidy", "exit 1")
        self.assertEqual(([], []), self.said(lint.analyse))
        self.write("src/c.h", "#pragma once\nint C();  // new\n")
        self.assertIn("clang-tidy ended with 1", self.said(lint.analyse)[1])

    def test_all_of_it_is_told_by_the_exit_code(self):
        for code, change in ((0, "exit 0"), (1, "echo wrong; exit 1")):
            self.tool("tools/docs", change)
            with contextlib.redirect_stdout(io.StringIO()), self.assertRaises(SystemExit) as end:
                lint.main()
            self.assertEqual(code, end.exception.code)


if __name__ == "__main__":
    named_cases.main()
