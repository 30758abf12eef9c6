#!/usr/bin/env python3
"""What tools/format mends, what it says and what it refuses."""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
TOOLS = ROOT / "tools"
sys.path.append(str(ROOT / "tests/support"))
import named_cases


class Program(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        shutil.copy(TOOLS.parent / ".clang-format", self.folder)

    def run_format(self, *arguments, tools=TOOLS):
        command = [tools / "format", *arguments]
        run = subprocess.run(command, cwd=self.folder, capture_output=True, text=True)
        return run.returncode, run.stdout, run.stderr

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")

    def assert_mended(self, name, before, after, *places):
        """Expects that --check names the places and changes nothing, and that all are mended without it."""
        self.write(name, before)
        said = "".join(f"{name}:{place}\n" for place in places)
        self.assertEqual((1, said, ""), self.run_format("--check", name))
        self.assertEqual(before, (self.folder / name).read_text(encoding="utf-8"))
        for arguments in ([name], [name], ["--check", name]):
            self.assertEqual((0, "", ""), self.run_format(*arguments))
            self.assertEqual(after, (self.folder / name).read_text(encoding="utf-8"))

    def assert_too_long(self, name, text, *lines):
        self.write(name, text)
        said = "".join(f"{name}:{line}: longer than 110 columns\n" for line in lines)
        for arguments in (["--check", name], [name]):
            self.assertEqual((1 if lines else 0, said, ""), self.run_format(*arguments))
            self.assertEqual(text, (self.folder / name).read_text(encoding="utf-8"))

    def test_sources_are_formatted_and_filled(self):
        self.assert_mended("a.cpp", "int x;\nint  y;\n\n// One.\n// Two\n// three.\n",
                           "int x;\nint y;\n\n// One. Two three.\n",
                           "2: not as clang-format has it", "4: not filled to 110 columns")

    def test_comments_are_filled_where_clang_format_puts_them(self):
        self.assert_mended("a.h", "int x; // " + "a" * 90 + " bbbbbbbbb\n",
                           "int x;  // " + "a" * 90 + "\n        // bbbbbbbbb\n",
                           "1: not as clang-format has it")

    def test_comments_are_filled_before_clang_format_takes_them_apart(self):
        a, b = "a" * 60, "b" * 60
        self.write("a.h", f"int  x;  // {a} {b}\n         // {a} {b}\n")
        self.assertEqual((0, "", ""), self.run_format("a.h"))
        self.assertEqual(f"int x;  // {a}\n        // {b}\n        // {a}\n        // {b}\n",
                         (self.folder / "a.h").read_text(encoding="utf-8"))

    def test_documents_and_scripts_are_filled(self):
        self.assert_mended("a.md", "One.\n\nTwo\nthree.\n", "One.\n\nTwo three.\n",
                           "3: not filled to 110 columns")
        self.assert_mended("a", "#!/bin/sh\n# One\n# two.\n", "#!/bin/sh\n# One two.\n",
                           "2: not filled to 110 columns")

    def test_lines_that_cannot_be_mended_are_named(self):
        long = "a" * 111
        self.assert_too_long("a.cpp", f'auto x =\n    R"({long})";\n', 2)
        self.assert_too_long("a.py", f'x = 1\nx = "{long}"\n', 2)
        self.assert_too_long("a.md", f"```\n{long[1:]}\n{long}\n```\n", 3)
        self.assert_too_long("CMakeLists.txt", f"set(x {long})\n", 1)

    def test_tables_and_addresses_may_be_longer(self):
        self.assert_too_long("a.md", "| " + "a " * 70 + "|\n")
        self.assert_too_long("a.md", "```\na\t" + "a " * 70 + "\n```\n")
        self.assert_too_long("a.py", 'x = "http://one.example/' + "a" * 111 + '"\n')
        self.assert_too_long("a.py", 'x = "http://one.example/ ' + "a" * 111 + '"\n', 1)

    def test_data_stay(self):
        self.assert_too_long("LICENSE", "One\n# two\n# three\n" + "a " * 80)
        for name in ("French.txt", "names.tsv", "image.png"):
            self.assert_too_long(name, "# One\n# two\n" + "a " * 80)

    def test_what_is_well_says_nothing(self):
        self.write("a.md", "One.\n")
        self.write("a.c", "int x;\n")
        self.assertEqual((0, "", ""), self.run_format("a.md", "a.c"))
        self.assertEqual((0, "", ""), self.run_format("--check", "a.md", "a.c"))

    def test_arguments_that_are_no_files_are_refused(self):
        self.assertEqual((2, "", "format: there is no file 'a.md'\n"), self.run_format("a.md"))
        self.assertEqual((2, "", "format: there is no option '--chek'\n"), self.run_format("--chek"))
        self.assertEqual((2, "", "format: there is no file '.'\n"), self.run_format("--check", "."))

    def test_files_that_cannot_be_read_are_refused(self):
        (self.folder / "a.md").write_bytes(b"\xff\n")
        self.assertEqual((2, "", "format: 'a.md' is not UTF-8\n"), self.run_format("--check", "a.md"))
        self.write("a.py", "x = (\n")
        self.assertEqual((2, "", "format: 'a.py' is not Python\n"), self.run_format("--check", "a.py"))

    def test_without_a_file_all_that_git_lists_are_meant(self):
        project = self.folder / "project"
        tools = shutil.copytree(TOOLS, project / "tools")
        self.assertEqual((2, "", "format: git cannot list the files\n"), self.run_format(tools=tools))
        for name in ("listed.md", "deleted.md", "other.md"):
            self.write(f"project/{name}", "One\ntwo\n")
        subprocess.run(["git", "init", "-q"], cwd=project, check=True)
        subprocess.run(["git", "add", "listed.md", "deleted.md"], cwd=project, check=True)
        (project / "deleted.md").unlink()
        self.assertEqual((1, "listed.md:1: not filled to 110 columns\n", ""),
                         self.run_format("--check", tools=tools))

    def test_help(self):
        self.assertIn("tools/format [--check] [FILE ...]", self.run_format("--help")[1])


if __name__ == "__main__":
    named_cases.main()
