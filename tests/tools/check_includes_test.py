#!/usr/bin/env python3
"""What tools/check-includes says of includes that run downwards, upwards and to folders without a place."""
import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import subprocess
import sys
import tempfile
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests/support"))
import named_cases

LOADER = importlib.machinery.SourceFileLoader("check_includes", str(ROOT / "tools/check-includes"))
check_includes = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_includes", LOADER))
LOADER.exec_module(check_includes)


class Includes(unittest.TestCase):
    def check(self, *arguments, **files):
        """What is said of a house whose folders are `low`, `middle` and `high`: the exit code, the output and
        the errors. `files`: by their folders, each with what it includes."""
        with tempfile.TemporaryDirectory() as folder:
            project = pathlib.Path(folder).resolve()
            for place, included in {"low": "", "middle": "", "high": "", **files}.items():
                (project / "house" / place).mkdir(parents=True)
                (project / "house" / place / "A.h").write_text("")
                (project / "house" / place / "A.cpp").write_text(f'#include "A.h"\n{included}')
            (project / "house/Top.cpp").write_text('#include "high/A.h"\n')
            with mock.patch.multiple(check_includes, PROJECT=project,
                                     HOUSES={"house": ["low", "middle", "high"]}), \
                    contextlib.redirect_stdout(io.StringIO()) as output, \
                    contextlib.redirect_stderr(io.StringIO()) as errors:
                code = check_includes.main(list(arguments))
        return code, output.getvalue(), errors.getvalue()

    def test_downwards_is_well(self):
        self.assertEqual((0, "", ""), self.check(high='#include "middle/A.h"\n#include "low/A.h"\n'))

    def test_arrows_are_drawn_with_the_number_of_their_includes(self):
        drawn = "house: high -> low 2\nhouse: the top -> high 1\n"
        self.assertEqual((0, drawn, ""), self.check("--draw", high='#include "low/A.h"\n' * 2))

    def test_upwards_is_named(self):
        self.assertEqual((1, "", "house/low/A.cpp:2: the include runs upwards: middle is above low\n"
                          "check-includes: 1 of the includes run upwards\n"),
                         self.check(low='#include "middle/A.h"\n'))

    def test_folder_without_a_place_is_named(self):
        self.assertEqual((1, "", "house/new/A.cpp:1: the include runs upwards: new has no place in "
                          "ARCHITECTURE.md\nhouse/new/A.cpp:2: the include runs upwards: new has no place in "
                          "ARCHITECTURE.md\ncheck-includes: 2 of the includes run upwards\n"),
                         self.check(new='#include "low/A.h"\n'))

    def test_what_lies_nowhere_is_not_the_projects(self):
        self.assertEqual((0, "", ""), self.check(low='#include "other.h"\n#include <middle/A.h>\n'))


class Program(unittest.TestCase):
    def run_it(self, *arguments):
        run = subprocess.run([ROOT / "tools/check-includes", *arguments], capture_output=True, text=True,
                             check=False)
        return run.returncode, run.stdout, run.stderr

    def test_the_projects_includes_run_downwards(self):
        code, output, errors = self.run_it("--draw")
        self.assertEqual((0, ""), (code, errors))
        self.assertRegex(output, r"(?m)^src: transport -> base \d+$")

    def test_other_arguments_are_refused(self):
        self.assertEqual((2, "", "check-includes: there is no argument '--drwa' (--help tells more)\n"),
                         self.run_it("--drwa"))

    def test_help_tells_how_it_is_called(self):
        self.assertEqual((0, check_includes.__doc__, ""), self.run_it("--help"))


if __name__ == "__main__":
    named_cases.main()
