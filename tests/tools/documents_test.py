#!/usr/bin/env python3
"""What tools/documents.py finds wrong in documents, and what tools/check-docs says."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import documents
import named_cases


class Documents(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.page = pathlib.Path(folder.name) / "page.md"

    def problems(self, text):
        """Those of a document, as (line from 1, what)."""
        self.page.write_text(text)
        return [(row + 1, what) for row, what in documents.problems(self.page)]

    def assert_good(self, text):
        self.assertEqual([], self.problems(text))

    def assert_problem(self, line, what, text):
        found = self.problems(text)
        self.assertEqual([line], sorted({row for row, _ in found}), found)
        self.assertIn(what, found[0][1])


class Links(Documents):
    def test_files_and_headings_that_are_there_are_found(self):
        self.page.with_name("other.md").write_text("# One `two`: three, four-five\n\n## Again\n\n## Again\n")
        self.assert_good("# Here\n\n[a](other.md), [b](other.md#one-two-three-four-five) and\n"
                         "![c](other.md#again-1) [d](#here) [e](.) [f](http://example/none)\n")

    def test_files_that_are_not_there_are_named(self):
        self.assert_problem(3, "there is no 'none.md'", "# Here\n\n[a](none.md#here)\n")
        self.assert_problem(1, "there is no 'none.png'", "[![a](none.png)](.)")

    def test_headings_that_are_not_there_are_named(self):
        self.page.with_name("other.md").write_text("# One\n\n```\n# Two\n```\n")
        self.assert_problem(1, "'other.md' has no heading '#two'", "[a](other.md#two)")
        self.assert_problem(1, "'page.md' has no heading '#two'", "[a](#two)")

    def test_code_has_no_links(self):
        self.assert_good("`a[i](none)`\n\n```\n[a](none)\n```\n")


class Paths(Documents):
    def test_files_of_the_project_are_found(self):
        self.assert_good("`tools/lint`, `mapshop/MapShopSearch.cpp`, `src/base/Owned`, `CgiRequest.h`,\n"
                         "`tests/simulator/ROOM`, `src/mapshop/NAME.cpp`, `tests/**/*_test.py`\n")

    def test_other_names_are_problems(self):
        self.assert_problem(2, "there is no 'tools/none'", "One\n`tools/none`")
        self.assert_problem(1, "there is no 'mapshop/None.cpp'", "`mapshop/None.cpp`")
        self.assert_problem(1, "there is no 'None.h'", "`None.h`")


class Code(Documents):
    def test_blocks_of_a_language_are_one_file(self):
        self.assert_good("```c\n#include <stdio.h>\nstatic int one = 1;\n```\n\n"
                         "<!-- inside: void Show(int two) -->\n```c\nprintf(\"%d\", one + two);\n```\n")

    def test_an_include_begins_a_new_file(self):
        self.assert_good("```c\n#include <stdio.h>\nint main(void) { return 0; }\n```\n\n"
                         "```c\n#include <stdio.h>\nint main(void) { return 1; }\n```\n")
        self.assert_problem(7, "undeclared", "```c\n#include <stdio.h>\nstatic int one = 1;\n```\n```c\n"
                                             "#include <stdio.h>\nint main(void) { return one; }\n```\n")

    def test_the_librarys_header_is_there(self):
        self.assert_good("```c\n#include \"LMOnline.h\"\nLMInt32 number;\n```\n")
        self.assert_good("```cpp\n#include \"LMOnline.h\"\nLMInt32 number;\n```\n")

    def test_mistakes_are_found_at_their_line(self):
        self.assert_problem(4, "undeclared", "# Title\n\n```c\nint x = y;\n```\n")
        self.assert_problem(4, "was not declared", "# Title\n\n```cpp\nint x = y;\n```\n")
        self.assert_problem(5, "", "# Title\n\n```python\nx = 1\ny = =\n```\n")

    def test_old_compilers_are_meant_too(self):
        self.assert_problem(2, "C90", "```c\nvoid f(void); // comment\n```\n")
        self.assert_problem(4, "mixed declarations",
                            "<!-- inside: void f(void) -->\n```c\nf();\nint x;\n```\n")

    def test_formats_are_looked_at(self):
        self.assert_problem(3, "format",
                            '```c\n#include <stdio.h>\nvoid f(void) { printf("%d", "x"); }\n```\n')

    def test_data_is_left_alone(self):
        self.assert_good("```\nint x = y;\n[a](none)\n`tools/none`\n```\n")

    def test_other_languages_are_problems(self):
        self.assert_problem(1, "nobody knows how to check 'rust'", "```rust\nlet x;\n```\n")


class Commands(Documents):
    def test_good_ones(self):
        self.assert_good("Text:\n\n    ./run search 1 2 3 4   # and a comment; a box\n"
                         "    tools/setup native && cmake --preset native && ninja -C build/native \\\n"
                         "        orvande-tests\n    X=1 ./test device 'A*'\n\n    (gdb) break none\n")
        self.assert_good("```sh\nhttp_proxy=http://127.0.0.1:80 tools/wine x.exe\n```\n")
        self.assert_good("```sh\n./run download --resume /maps/a.map a.map\n```\n")
        self.assert_good("```sh\ntools/translation template --language Dutch --output a.tsv\n```\n")
        self.assert_good("```sh\ncp a.txt build/windows/signin.Dutch.txt\n"
                         "mv build/wine-signin/home/a.txt b.txt\n```\n")

    def test_programs_that_are_not_there(self):
        self.assert_problem(3, "there is no program 'tools/none'", "Text:\n\n    tools/none x\n")
        self.assert_problem(4, "there is no program 'nonesuch'",
                            "Text:\n\n    ./run\n    ./run | nonesuch x\n")
        self.assert_problem(2, "there is no program 'build/native/nonesuch'",
                            "```sh\nbuild/native/nonesuch\n```\n")

    def test_presets_and_targets_that_are_not_there(self):
        self.assert_problem(2, "there is no preset 'none'", "```sh\ncmake --preset none\n```\n")
        self.assert_problem(2, "there is no preset 'loader'", "```sh\ncmake --build --preset loader\n```\n")
        self.assert_problem(2, "there is no preset 'device'", "```sh\nctest --preset device\n```\n")
        self.assert_problem(3, "there is no target 'nonesuch'",
                            "```sh\n./run\nninja -C build/native nonesuch\n```\n")

    def test_words_and_options_that_scripts_do_not_know(self):
        self.assert_problem(2, "./test knows no 'none'", "```sh\n./test none\n```\n")
        self.assert_problem(2, "tools/setup knows no 'none'", "```sh\ntools/setup native none\n```\n")
        self.assert_problem(2, "knows no option '--none'", "```sh\ntools/format --none\n```\n")
        self.assert_problem(2, "./run knows no option '--none'", "```sh\n./run --none\n```\n")

    def test_files_that_are_not_there(self):
        self.assert_problem(2, "there is no file 'src/none.cpp'", "```sh\ntools/format src/none.cpp\n```\n")
        self.assert_problem(2, "there is no file 'build/windows/nonesuch.Dutch.txt'",
                            "```sh\ncp a.txt build/windows/nonesuch.Dutch.txt\n```\n")
        self.assert_problem(2, "there is no file 'build/wine-none/a.txt'",
                            "```sh\nmv build/wine-none/a.txt b\n```\n")

    def test_what_is_no_shell(self):
        self.assert_problem(2, "bash says", "```sh\nif (x) { }\n```\n")


class Tool(unittest.TestCase):
    def run_tool(self, *arguments):
        run = subprocess.run([ROOT / "tools/check-docs", *arguments], capture_output=True, text=True,
                             check=False)
        return run.returncode, run.stdout, run.stderr

    def test_it_names_file_and_line(self):
        with tempfile.NamedTemporaryFile("w", suffix=".md") as file:
            file.write("One.\n\n[two](none)\n")
            file.flush()
            self.assertEqual((1, f"{file.name}:3: there is no 'none'\n", ""), self.run_tool(file.name))

    def test_it_refuses_what_is_no_document(self):
        self.assertEqual((2, "", "check-docs: there is no file '/none.md'\n"), self.run_tool("/none.md"))
        self.assertEqual((2, "", "check-docs: '/' is no text\n"), self.run_tool("/"))

    def test_without_a_file_all_that_are_listed_are_meant(self):
        self.assertEqual((0, "", ""), self.run_tool())

    def test_help_tells_how_it_is_called(self):
        self.assertIn("tools/check-docs [FILE ...]", self.run_tool("--help")[1])


if __name__ == "__main__":
    named_cases.main()
