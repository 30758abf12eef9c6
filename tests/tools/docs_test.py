#!/usr/bin/env python3
"""The reference that tools/docs makes, and what becomes of a header's comments on the way."""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import doc_filter
import named_cases

HEADER = """/* The file. */

/* ---- Group ---- */

/* Of the group. */

/* One. */
#define LM_ONE 1

/* Function. See LM_ONE.
 *   number   what it takes,
 *            over two lines
 * Returns
 *   0   nothing. */
int LM_CALL LMFunction(int number);
typedef int(LM_CALL* LMPointer)(int number);

/* Record. */
typedef struct LMRecord {
    int field; /* Field. */
} LMRecord;
"""


class Filter(unittest.TestCase):
    def assert_filtered(self, before, after):
        filtered = doc_filter.filtered("/* File. */\n\n" + before)
        self.assertEqual("/**\n@file\nFile.\n*/\n\n" + after, filtered)

    def test_a_comment_is_for_what_follows_up_to_an_empty_line(self):
        self.assert_filtered("/* Text. */\n#define A 1\n#define B 2\n\n#define C 3\n",
                             "/**\nText.\n*/\n#define A 1\n/**\nText.\n*/\n#define B 2\n\n#define C 3\n")

    def test_conditions_do_not_part_it_from_what_follows(self):
        self.assert_filtered("/* Text. */\n#ifdef X\n#define A 1\n#endif\n",
                             "#ifdef X\n/**\nText.\n*/\n#define A 1\n#endif\n")

    def test_titles_begin_groups(self):
        self.assert_filtered("/* ---- One ---- */\n\n/* Text. */\n\n#define A 1\n\n/* ---- Two ---- */\n",
                             "/** @name One\nText.\n*/\n/** @{ */\n#define A 1\n\n/** @} */\n"
                             "/** @name Two\n*/\n/** @{ */\n/** @} */\n")

    def test_comments_behind_fields_are_theirs(self):
        self.assert_filtered("    int a; /* One\n            * two. */\n",
                             "    int a; /**< One two. */\n")
        self.assert_filtered("    int a; /* One\n              two. */\n", "    int a; /**< One two. */\n")

    def test_indented_columns_are_definitions(self):
        self.assert_filtered("/* Text\n *   a b   one\n *         two\n *   c     three\n"
                             " *           d   four\n * Text. */\n#define A 1\n",
                             "/**\nText\n<dl>\n<dt>a b</dt>\n<dd>one\ntwo\n</dd>\n<dt>c</dt>\n<dd>three\n"
                             "<dl>\n<dt>d</dt>\n<dd>four\n</dd>\n</dl>\n</dd>\n</dl>\nText.\n*/\n"
                             "#define A 1\n")

    def test_definitions_may_stand_below_the_text_of_one(self):
        self.assert_filtered("/* Text\n *   0   one:\n *       a, b   two\n *       c\n *   1   three */\n"
                             "#define A 1\n",
                             "/**\nText\n<dl>\n<dt>0</dt>\n<dd>one:\n<dl>\n<dt>a, b</dt>\n<dd>two\n</dd>\n"
                             "<dt>c</dt>\n</dl>\n</dd>\n<dt>1</dt>\n<dd>three\n</dd>\n</dl>\n*/\n"
                             "#define A 1\n")

    def test_lists_and_code_stay(self):
        self.assert_filtered("/* Text\n *   - a\n *     b\n *\n *     code < 1;\n */\n#define A 1\n",
                             "/**\nText\n\n  - a\n    b\n\n    code < 1;\n\n*/\n#define A 1\n")

    def test_names_of_the_library_are_links_and_marks_are_themselves(self):
        self.assert_filtered('/* LMName of <LM.h>, `LMName`, "A\\" LMName.h and a@b & c. */\n#define A 1\n',
                             '/**\n#LMName of \\<LM.h\\>, `LMName`, "A\\\\" LMName.h and a\\@b \\& c.\n*/\n'
                             "#define A 1\n")

    def test_assertions_are_left_out(self):
        self.assert_filtered("typedef char LMAssertSize[1];\n#define A 1\n", "#define A 1\n")


class Reference(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def make(self, header):
        """Exit code and output for a header; the reference is in `folder`/out."""
        (self.folder / "LMSample.h").write_text(header)
        run = subprocess.run([ROOT / "tools/docs", "--output", self.folder / "out",
                              self.folder / "LMSample.h"],
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        return run.returncode, run.stdout

    def test_it_shows_what_the_comments_say(self):
        self.assertEqual((0, ""), self.make(HEADER))
        page = (self.folder / "out/LMSample_8h.html").read_text()
        for text in ("Of the group.", "LM_ONE", "what it takes,", "LMPointer"):
            self.assertIn(text, page)
        self.assertRegex(page, r"See <a [^>]*>LM_ONE</a>")

    def test_a_name_without_a_comment_is_a_mistake(self):
        function = re.search(r"/\* Function.*?\*/\n", HEADER, re.DOTALL)[0]
        for name, without in [("LM_ONE", "/* One. */\n"), ("field", " /* Field. */"),
                              ("LMRecord", "/* Record. */\n"), ("LMFunction", function)]:
            code, said = self.make(HEADER.replace(without, "").replace("See LM_ONE", ""))
            self.assertEqual(1, code, name)
            self.assertRegex(said, rf"LMSample.h:\d+: error: .*\b{name}\b.* is not documented")

    def test_a_link_to_nothing_is_a_mistake(self):
        code, said = self.make(HEADER.replace("See LM_ONE", "See LM_NONE"))
        self.assertEqual(1, code)
        self.assertIn("'LM_NONE' could not be resolved", said)

    def test_what_is_gone_does_not_stay(self):
        self.make(HEADER)
        self.make(HEADER.replace("LMRecord", "LMOther"))
        self.assertFalse((self.folder / "out/structLMRecord.html").exists())

    def test_the_tool_refuses_what_it_cannot_read(self):
        for words, said in [
                (["none.h"], "there is no file 'none.h'"), (["--none"], "there is no option '--none'"),
                (["--output"], "--output needs a folder"),
                (["--output", "/dev/null/x"], "the folder '/dev/null/x' cannot be made: Not a directory")]:
            run = subprocess.run([ROOT / "tools/docs", *words], capture_output=True, text=True, check=False)
            self.assertEqual((2, "", f"docs: {said}\n"), (run.returncode, run.stdout, run.stderr))


if __name__ == "__main__":
    named_cases.main()
