#!/usr/bin/env python3
"""tools/mutate on made-up sources: what it finds in them, how that is built and run, and what it is told."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools/mutation"), str(ROOT / "tools")]
sys.path.append(str(ROOT / "tests/support"))
import build
import instrument
import known
import named_cases
import places
import runs
import unchanged


class InFolder(unittest.TestCase):
    """Each case in a folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mutate.")
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        self.folder = pathlib.Path(folder.name)

    def read(self, text, name="src/Sample.cpp"):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return list(places.Reading(name, path, ["-x", "c++", "-std=c++20"]).found())


class Found(InFolder):
    def assert_found(self, wanted, text):
        self.assertEqual(sorted(wanted), sorted(mutant.what for mutant in self.read(text)))

    def test_comparisons_are_moved_and_turned(self):
        self.assert_found(["a < b -> a <= b", "a < b -> a >= b"], "void f(int a, int b) { bool c = a < b; }")
        self.assert_found(["a == b -> a != b"], "void f(int a, int b) { bool c = a == b; }")

    def test_terms_of_conditions_are_true_and_false(self):
        self.assert_found(
            ["a && !b -> a || !b", "a -> true", "a -> false", "a -> !a", "!b -> true", "!b -> false",
             "!b -> b", "g() -> nothing"],
            "void g(); void f(bool a, bool b) { if (a && !b) g(); }")

    def test_pointer_of_a_condition_is_a_term(self):
        self.assert_found(["p -> true", "p -> false", "p -> !p", "++p -> --p", "++p -> nothing"],
                          "void f(const char* p) { while (p) ++p; }")

    def test_constants_have_neighbours(self):
        self.assert_found(["7 -> 6", "7 -> 8"], "void f() { int a = 7; }")
        self.assert_found(["0x10 -> 0xf", "0x10 -> 0x11"], "void f() { int a = 0x10; }")
        self.assert_found(["0 -> 1"], "void f() { unsigned a = 0; }")
        self.assert_found(["'x' -> 'x' + 1"], "void f() { char a = 'x'; }")
        self.assert_found(["true -> false"], "void f() { bool a = true; }")
        self.assert_found(['"ab" -> ""'], 'void f() { const char* a = "ab"; }')

    def test_arithmetic_is_another_one(self):
        self.assert_found(["a + b -> a - b", "-a -> a", "a | b -> a & b", "c += a -> c -= a",
                           "c += a -> nothing"],
                          "void f(int a, int b) { int c = a + b; int d = -a; int e = a | b; c += a; }")

    def test_returned_values_are_others(self):
        self.assert_found(["a -> true", "a -> false", "a -> !a"], "bool f(bool a) { return a; }")
        self.assert_found(["a -> 0"], "int f(int a) { return a; }")
        self.assert_found(["p -> nullptr"], "int* f(int* p) { return p; }")
        self.assert_found(["return s -> return {};"], "struct S {}; S f(S s) { return s; }")
        self.assert_found(["return g() -> return;"], "void g(); void f() { return g(); }")

    def test_statements_are_gone(self):
        self.assert_found(["c = a -> nothing", "break -> nothing", "g() -> nothing"],
                          "void g(); void f(int a, int c) { for (;;) { c = a; break; } { g(); } }")

    def test_what_takes_effect_while_compiling_stays(self):
        mutants = self.read("enum E { one = 1 }; static_assert(sizeof(char) == 1); char buffer[20];"
                            "void f(int a) { switch (a) { case 3:; } if constexpr (2 < 3) {} }")
        self.assertEqual([(what, "fixed") for what in
                          ["1 -> 0", "1 -> 2", "20 -> 19", "20 -> 21", "3 -> 2", "3 -> 4"]],
                         [(mutant.what, mutant.form) for mutant in mutants])

    def test_macro_is_changed_where_it_is_used(self):
        self.assert_found(["MOST -> MOST + 1"], "#define MOST 5\nvoid f() { int a = MOST; }")
        self.assert_found([], "#define HALF(x) ((x) / 2)\nvoid f(int b) { int a = HALF(b); }")

    def test_equal_changes_of_equal_lines_are_counted(self):
        self.assert_found(["1 -> 0", "1 -> 2", "1 -> 0 #2", "1 -> 2 #2"], "void f() { int a = 1, b = 1; }")

    def test_identity_outlives_what_stands_above(self):
        text = "void g();\nvoid f() {\n    g();\n}\n"
        before, after = self.read(text), self.read("// New.\n\n" + text.replace("    g", "  g"))
        self.assertEqual([mutant.id for mutant in before], [mutant.id for mutant in after])
        self.assertEqual(([3], [5]), ([mutant.line for mutant in before], [mutant.line for mutant in after]))

    def test_source_that_clang_does_not_take_is_told(self):
        with self.assertRaisesRegex(ValueError, "src/Sample.cpp cannot be read: "):
            self.read("void f() { nonsense }")


SAMPLE = """#include "Sample.h"
constexpr int most = 3;
int Count(int a) {
    int count = 0;
    for (int at = 0; at < a; ++at) ++count;
    return count > most ? most : count;
}
bool IsLarge(int a) { return a >= 10; }
void Never() { Count(1); }
void Drop(int* number) { delete number; }
int Wait(int from) {
    for (int at = from * 7; at < 20000; ++at) {}
    return from;
}
"""
# A program of tests that speaks as GoogleTest does.
PROGRAM = """#include "Sample.h"
#include <cstdio>
#include <fstream>
#include <string>
int main(int count, char** arguments) {
    const std::string word = count > 1 ? arguments[1] : "";
    if (word == "--gtest_list_tests")
        return std::puts("Sample.\\n  Counts\\n  Compares\\n  Drops\\n  Waits"), 0;
    std::string filter;
    std::getline(std::ifstream(word.substr(word.find('=') + 1)), filter);
    const auto fails = [&](const char* name, bool isRight) {
        const bool hasFailed = filter.find(name) != std::string::npos && !isRight;
        if (hasFailed) std::printf("[  FAILED  ] %s (0 ms)\\n", name);
        return hasFailed;
    };
    if (fails("Sample.Counts", Count(0) == 0 && Count(2) == 2 && Count(9) == 3)) return 1;
    if (fails("Sample.Compares", IsLarge(11) && !IsLarge(9))) return 1;
    for (int at = 0; at < 20; ++at) Drop(new int);
    if (fails("Sample.Waits", Wait(2856) == 2856)) return 1;
    std::puts("[  PASSED  ] all");
}
"""


class Tried(InFolder):
    def setUp(self):
        super().setUp()
        self.mutants = self.read("int Count(int a);\nbool IsLarge(int a);\nvoid Drop(int* number);\n"
                                 "int Wait(int from);\n", "Sample.h")
        self.mutants = self.read(SAMPLE, "Sample.cpp")
        self.numbered = list(enumerate(self.mutants))
        writer = instrument.Writer(SAMPLE.encode(), self.numbered)
        (self.folder / "base").mkdir()
        (self.folder / instrument.SWITCH).write_text(instrument.HEADER)
        (self.folder / "Switched.cpp").write_text(writer.text)
        (self.folder / "Program.cpp").write_text(PROGRAM)
        self.compiled = subprocess.run(
            ["g++", "-std=c++20", "-I.", "Switched.cpp", "Program.cpp", "-o", "program"],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)

    def test_each_mutant_has_its_result(self):
        self.assertEqual("", self.compiled.stdout)
        recording = runs.Recording.make([str(self.folder / "program")], "", 2, self.fail)
        self.assertEqual({"Sample.Counts", "Sample.Compares", "Sample.Drops", "Sample.Waits"},
                         {case.name for case in recording.cases})
        hunter = runs.Hunter(recording, {"Sample.cpp": {number for number, _ in self.numbered}})
        found = {mutant.what: hunter.hunt(number, mutant.file) for number, mutant in self.numbered}
        counts, compares = "program:Sample.Counts", "program:Sample.Compares"
        self.assertEqual(("killed", counts), found["at < a -> at <= a"])
        self.assertEqual(("endless", ""), found["at < a -> true"])
        self.assertEqual(("killed", counts), found["3 -> 4"])
        self.assertEqual(("living", ""), found["count > most -> count >= most"])
        self.assertEqual(("living", ""), found["a >= 10 -> a > 10"])
        self.assertEqual(("killed", compares), found["a >= 10 -> a < 10"])
        self.assertEqual(("unreached", ""), found["Count(1) -> nothing"])
        self.assertEqual(("killed", ""), found["delete number -> nothing"], "what leaks is noticed")
        self.assertEqual(("living", ""), found["from * 7 -> from / 7"], "what is slow is not endless")

    def test_complaint_leads_to_the_change_that_it_is_about(self):
        writer = instrument.Writer(SAMPLE.encode(), self.numbered)
        line = 5
        text = writer.text.split("\n")[line + 1]
        number = next(number for number, mutant in self.numbered if mutant.what == "at < a -> at <= a")
        self.assertEqual([number], instrument.mutants_at(writer, line, text.index("<=") + 1))
        self.assertEqual([], instrument.mutants_at(writer, line, 1))
        self.assertIn(number, instrument.mutants_at(writer, line, 1, "line"))

    def test_text_of_another_size_is_what_a_complaint_about_its_line_is_about(self):
        source = 'template <int n> void f(int, const char (&)[n]);\nvoid g() { f(1, "abc"); }\n'
        mutants = self.read(source)
        writer = instrument.Writer(source.encode(), list(enumerate(mutants)))
        found = instrument.mutants_at(writer, 2, 12, "texts")
        self.assertEqual(['"abc" -> ""'], [mutants[number].what for number in found])


class Unchanged(InFolder):
    def test_same_code_is_told_from_other_code(self):
        mutants = self.read("int f(int a) {\n    int b = a;\n    b = a;\n    return b + 1;\n}\n")
        build.NATIVE.mkdir(parents=True)
        judge = unchanged.Judge({"src/Sample.cpp": "g++ -Isrc -c src/Sample.cpp -o Sample.o"},
                                {"src/Sample.cpp": pathlib.Path("src/Sample.cpp").read_bytes()})
        found = {mutant.what: judge.changes_nothing(mutant) for mutant in mutants}
        self.assertTrue(found["b = a -> nothing"])
        self.assertFalse(found["b + 1 -> b - 1"])
        self.assertFalse(found["1 -> 2"])


class Listed(InFolder):
    ENTRY = "src/A.cpp: if (a < b) f();\n  a < b -> a <= b\n  a < b -> true\n  because one is\n  as good\n"

    def listed(self, text):
        path = pathlib.Path("list.txt")
        path.write_text(text)
        return known.Known(path)

    def test_entry_has_changes_and_a_reason(self):
        line = "if (a < b) f();"
        self.assertEqual({("src/A.cpp", line, "a < b -> a <= b"): "one is as good",
                          ("src/A.cpp", line, "a < b -> true"): "one is as good"},
                         self.listed("# What lives.\n\n" + self.ENTRY).reasons)

    def test_entry_that_matches_nothing_is_told_of_files_that_were_tried(self):
        listed = self.listed(self.ENTRY)
        mutant = places.Mutant("src/A.cpp", 0, 0, "value", "a < b", "true", "true", context="if (a < b) f();")
        self.assertEqual("one is as good", listed.reason_of(mutant))
        self.assertEqual([("src/A.cpp", "if (a < b) f();", "a < b -> a <= b")], listed.unmet(["src/A.cpp"]))
        self.assertEqual([], listed.unmet(["src/B.cpp"]))

    def test_entry_without_a_reason_is_refused(self):
        for text in ["src/A.cpp: f();\n  f() -> nothing\n", "src/A.cpp: f();\n  because\n",
                     "f();\n  f() -> nothing\n", self.ENTRY + "\n" + self.ENTRY]:
            with self.assertRaises(known.KnownError):
                self.listed(text)


class WrongArguments(unittest.TestCase):
    def assert_refused(self, sentence, *arguments):
        run = subprocess.run([ROOT / "tools/mutate", *arguments], capture_output=True, text=True, check=False)
        self.assertEqual((2, "", f"mutate: {sentence}\n"), (run.returncode, run.stdout, run.stderr))

    def test_option_that_does_not_exist(self):
        self.assert_refused("there is no option '--all' (--help tells them)", "--all")

    def test_identity_is_needed(self):
        self.assert_refused("--only wants one ID (--list tells them)", "--only")
        self.assert_refused("--only wants one ID (--list tells them)", "--only", "1", "2")

    def test_file_is_one_of_the_library(self):
        self.assert_refused("'tests/text/TextKeyTest.cpp' is no source in src/", "tests/text/TextKeyTest.cpp")


if __name__ == "__main__":
    named_cases.main()
