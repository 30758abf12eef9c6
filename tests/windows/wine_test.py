#!/usr/bin/env python3
"""What tools/wine says of programs that end with exit code 53, or by a crash.

    wine_test.py FOLDER        FOLDER: where the DLL and its stand-ins were built
"""
import os
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


# Crashes at a place that its argument names.
CRASHING = """
#include <stdlib.h>
#include <string.h>
#include <windows.h>
static DWORD WINAPI Crash(void* unused) { return *(volatile DWORD*)8; }
static void CrashAtExit(void) { Crash(0); }
int main(int count, char** values) {
    const char* const place = values[count - 1];
    if (strcmp(place, "thread") == 0) WaitForSingleObject(CreateThread(0, 0, Crash, 0, 0, 0), INFINITE);
    if (strcmp(place, "exit") == 0) return atexit(CrashAtExit);
    if (strcmp(place, "code") == 0) ((void (*)(void))0x12345)();
    return strcmp(place, "main") == 0 ? (int)Crash(0) : 0;
}
"""


class Programs(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    @staticmethod
    def run_program(program, *arguments, **options):
        run = subprocess.run([SOURCE / "tools/wine", program, *arguments], stdin=subprocess.DEVNULL,
                             capture_output=True, text=True, cwd="/", check=False, **options)
        return run.returncode, run.stderr

    def compile(self, name, text):
        (self.folder / f"{name}.c").write_text(text, encoding="ascii")
        program = self.folder / f"{name}.exe"
        subprocess.run(["i686-w64-mingw32-gcc", "-o", program, program.with_suffix(".c")], check=True)
        return program


class ExitCode53(Programs):
    def take(self, *names):
        for name in names:
            shutil.copy(FOLDER / name, self.folder / name)

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
        self.assert_53(self.compile("own", "int main(void) { return 53; }\n"),
                       "the program has ended so by itself; no DLL is missing")

    def test_program_that_wine_finds_by_itself_may_lack_a_dll_or_not(self):
        self.assert_53("cmd", "a DLL is missing, or the program has ended so by itself", "/c", "exit 53")


class Crashes(Programs):
    def test_the_programs_own_is_exit_code_5(self):
        """So none is taken for one of Wine's, behind which tests run a program once more."""
        program = self.compile("crashing", CRASHING)
        self.assertEqual((0, ""), self.run_program(program, "nowhere"))
        for place in ("main", "thread", "exit", "code"):
            self.assertEqual(5, self.run_program(program, place)[0], place)

    def test_one_of_wine_itself_is_told(self):
        crashing = self.folder / "wine"
        crashing.write_text("#!/bin/sh\nkill -SEGV $$\n", encoding="ascii")
        crashing.chmod(0o755)
        run = self.run_program("x.exe", env={**os.environ, "PATH": f"{self.folder}:{os.environ['PATH']}"})
        self.assertEqual((139, "tools/wine: x.exe ended with exit code 139: Wine has crashed, or the program "
                               "has ended so by itself\n"), run)


if __name__ == "__main__":
    named_cases.main()
