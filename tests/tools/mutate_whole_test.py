#!/usr/bin/env python3
"""tools/mutate on a made-up project, from the arguments to the exit code."""
import contextlib
import io
import os
import pathlib
import re
import sys
import tempfile
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools/mutation"), str(ROOT / "tools"), str(ROOT / "tests/support")]
import build
import command
import named_cases

SOURCE = """#include "ByteStream.h"
namespace {
constexpr int most = 3;
constexpr int twice = most * 2;
}  // namespace
int Count(int a) {
    static_assert(twice == 6);
    return a > most ? most : a;
}
bool IsLarge(int a) { return a >= 10; }
int Never() { return Count(1) + 1; }
"""
PROGRAM = """#include "ByteStream.h"
#include <cstdio>
#include <fstream>
#include <string>
int main(int count, char** arguments) {
    const std::string word = count > 1 ? arguments[1] : "";
    if (word == "--gtest_list_tests") return std::puts("Sample.\\n  Counts\\n  Compares"), 0;
    std::string filter;
    std::getline(std::ifstream(word.substr(word.find('=') + 1)), filter);
    if (filter.find("Counts") != filter.npos && (Count(2) != 2 || Count(9) != 3)) return 1;
    if (filter.find("Compares") != filter.npos && (!IsLarge(11) || IsLarge(9))) return 1;
    std::puts("[  PASSED  ] all");
}
"""
FILES = {
    "CMakeLists.txt": "cmake_minimum_required(VERSION 3.25)\nproject(Sample CXX)\n"
                      "set(CMAKE_CXX_STANDARD 20)\nset(CMAKE_EXPORT_COMPILE_COMMANDS ON)\n"
                      "add_subdirectory(src)\nadd_subdirectory(tests)\n",
    "src/CMakeLists.txt": "add_library(orvande_objects OBJECT transport/ByteStream.cpp)\n"
                          "target_include_directories(orvande_objects PUBLIC . transport)\n"
                          "target_precompile_headers(orvande_objects PRIVATE <cstddef>)\n",
    "src/transport/ByteStream.h": "#pragma once\nint Count(int a);\nbool IsLarge(int a);\nint Never();\n",
    "src/transport/ByteStream.cpp": SOURCE,
    "tests/CMakeLists.txt": "add_executable(sample Program.cpp)\n"
                            "target_link_libraries(sample PRIVATE orvande_objects)\n",
    "tests/Program.cpp": PROGRAM,
    "tests/mutation-survivors.txt": "# What lives.\n",
}
NAME = "src/transport/ByteStream.cpp"


def fail(sentence):
    raise SystemExit(f"mutate: {sentence}")


def listed(*patterns):
    return [name for name in sorted(FILES)
            if not patterns or any(pathlib.PurePath(name).match(pattern.replace("src/*", "src/*/*"))
                                   for pattern in patterns)]


class Whole(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        """One project for all cases: it is built once."""
        folder = tempfile.TemporaryDirectory(prefix="mutate.")
        cls.addClassCleanup(folder.cleanup)
        cls.addClassCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        for name, text in FILES.items():
            pathlib.Path(name).parent.mkdir(parents=True, exist_ok=True)
            pathlib.Path(name).write_text(text, encoding="ascii")
        for patch in (mock.patch.object(build, "PROGRAMS", ["sample"]),
                      mock.patch.object(command.files, "listed", listed),
                      mock.patch.object(command.os, "nice")):
            patch.start()
            cls.addClassCleanup(patch.stop)
        cls.code, cls.said = cls.mutate()

    @staticmethod
    def mutate(*arguments):
        """Exit code, and what is printed."""
        with contextlib.redirect_stdout(io.StringIO()) as output:
            try:
                code = command.main(arguments, fail)
            except SystemExit as end:
                code = end.code
        return code, output.getvalue()

    def test_what_no_test_notices_is_listed(self):
        self.assertEqual(1, self.code, self.said)
        living = re.findall(rf"(?m)^{NAME}:(\d+):\d+: (.*)  \[\w+\]$", self.said)
        self.assertIn(("10", "a >= 10 -> a > 10"), living)
        self.assertIn(("11", "Count(1) + 1 -> Count(1) - 1"), living)
        self.assertNotIn("a >= 10 -> a < 10", self.said)

    def test_what_is_noticed_is_counted(self):
        row = next(line for line in self.said.split("\n") if line.startswith(NAME)).split()[1:]
        made, killed, _, unreached, unchanged, living = map(int, row)
        self.assertEqual(made, sum(map(int, row[1:])))
        self.assertLess(3, killed)
        self.assertLess(0, unreached)
        self.assertLess(0, living)
        self.assertIn(f"{made} mutants made, {made - unreached} reached: {killed} killed, ", self.said)
        self.assertIn(f", {unchanged} of the same code, 0 living with a reason; ", self.said)

    def test_what_takes_effect_while_compiling_is_told(self):
        self.assertRegex(self.said, r"\([1-9]\d* more take effect while compiling and were not tried\)\n$")

    def test_what_was_tried_is_not_tried_again_unless_that_is_wanted(self):
        tried = re.search(r"of (\d+) mutants to be tried", self.said)[1]
        self.assertIn(f"mutate: 0 of {tried} mutants to be tried with 2 cases\n", self.mutate(NAME)[1])
        self.assertIn(f"mutate: {tried} of {tried} mutants to be tried with 2 cases\n",
                      self.mutate("--again", NAME)[1])

    def test_what_has_a_reason_is_not_told_and_what_needs_none_is(self):
        lines = SOURCE.split("\n")
        living = re.findall(rf"(?m)^{NAME}:(\d+):\d+: (.*)  \[\w+\]$", self.said)
        entries = "\n".join(f"{NAME}: {lines[int(number) - 1].strip()}\n  {what}\n  because it is made up\n"
                            for number, what in living)
        survivors = pathlib.Path("tests/mutation-survivors.txt")
        survivors.write_text(entries, encoding="ascii")
        self.addCleanup(survivors.write_text, FILES[str(survivors)], encoding="ascii")
        code, said = self.mutate()
        self.assertEqual(0, code, said)
        self.assertIn(f" {len(living)} living with a reason; 0 living without, ", said)
        survivors.write_text(f"{entries}\n{NAME}: gone();\n  gone() -> nothing\n  because it was\n",
                             encoding="ascii")
        code, said = self.mutate()
        self.assertEqual(1, code)
        self.assertIn(f"nothing lives any more as 'gone() -> nothing' of {NAME}: gone();\n", said)

    def test_reason_stays_where_time_alone_is_what_is_noticed(self):
        lines = SOURCE.split("\n")
        number, what = re.search(rf"(?m)^{NAME}:(\d+):\d+: (.*)  \[\w+\]$", self.said).groups()
        survivors = pathlib.Path("tests/mutation-survivors.txt")
        survivors.write_text(f"{NAME}: {lines[int(number) - 1].strip()}\n  {what}\n  because it is slow\n",
                             encoding="ascii")
        self.addCleanup(survivors.write_text, FILES[str(survivors)], encoding="ascii")

        def slow_down(made, mutation, found, *rest):
            found.update({number: "endless" for number, result in found.items() if result == "living"})

        with mock.patch.object(command, "find_unchanged", slow_down):
            self.assertNotIn("nothing lives any more", self.mutate()[1])

    def test_one_is_shown_with_its_cases(self):
        code, said = self.mutate("--list")
        self.assertEqual(0, code)
        killed, lives = (re.search(rf"(?m)^(\w+)  .*: {re.escape(what)}$", said)[1]
                         for what in ("a >= 10 -> a < 10", "a >= 10 -> a > 10"))
        code, said = self.mutate("--only", killed)
        self.assertEqual(0, code)
        self.assertIn("mutate: 1 cases come by it\nmutate:   sample:Sample.Compares\n", said)
        self.assertEqual(1, self.mutate("--only", lives)[0])
        self.assertEqual(("mutate: there is no mutant 'none' (--list tells them)", ""),
                         self.mutate("--only", "none"))

    def test_copy_that_cannot_be_built_is_told(self):
        with mock.patch.object(build, "PROGRAMS", ["sample", "none"]):
            self.assertEqual(f"mutate: the copy cannot be built (see {build.LOG})", self.mutate()[0])

    def test_interrupt_ends_it(self):
        with mock.patch.object(command, "work", side_effect=KeyboardInterrupt):
            self.assertEqual(130, self.mutate()[0])


if __name__ == "__main__":
    named_cases.main()
