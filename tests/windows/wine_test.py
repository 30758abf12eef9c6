#!/usr/bin/env python3
"""What tools/wine says when a program ends with exit code 53.

    wine_test.py FOLDER        FOLDER: where the DLL and its stand-ins were built
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "tests/support"))
import named_cases

FOLDER = pathlib.Path(sys.argv[1])


class ExitCode53(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def take(self, *names):
        for name in names:
            shutil.copy(FOLDER / name, self.folder / name)

    @staticmethod
    def run_program(program, *arguments):
        run = subprocess.run([SOURCE / "tools/wine", program, *arguments],
                             stdin=subprocess.DEVNULL, capture_output=True, text=True, cwd="/", check=False)
        return run.returncode, run.stderr

    def assert_53(self, program, why, *arguments):
        run = self.run_program(program, *arguments)
        self.assertEqual((53, f"tools/wine: {program} ended with exit code 53: {why}\n"), run)

    def assert_missing(self, library, user):
        self.assert_53(self.folder / "c-search.exe",
                       f"{library}, which {user} needs, is neither in its folder nor part of Windows")

    def test_missing_dll_of_the_program_is_named(self):
        self.take("c-search.exe")
        self.assert_missing("OrvandeOnline.dll", "c-search.exe")

    def test_missing_dll_of_a_dll_is_named(self):
        self.take("c-search.exe", "OrvandeOnline.dll", "cellcore.dll")
        self.assert_missing("aygshell.dll", "OrvandeOnline.dll")

    def test_program_that_has_all_its_dlls_ends_with_its_own_code(self):
        self.take("c-search.exe", "OrvandeOnline.dll", "cellcore.dll", "aygshell.dll")
        self.assertEqual((2, ""), self.run_program(self.folder / "c-search.exe", "1"))

    def test_code_53_of_the_programs_own_is_told_apart(self):
        source = self.folder / "own.c"
        source.write_text("int main(void) { return 53; }\n", encoding="ascii")
        subprocess.run(["i686-w64-mingw32-gcc", "-o", self.folder / "own.exe", source], check=True)
        self.assert_53(self.folder / "own.exe", "the program has ended so by itself; no DLL is missing")

    def test_program_that_wine_finds_by_itself_may_lack_a_dll_or_not(self):
        self.assert_53("cmd", "a DLL is missing, or the program has ended so by itself", "/c", "exit 53")


if __name__ == "__main__":
    named_cases.main()
