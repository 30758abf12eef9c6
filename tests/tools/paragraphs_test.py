#!/usr/bin/env python3
"""How tools/paragraphs.py fills comments and documents, and what it leaves alone.

The paragraphs are filled to 40 columns here.
"""
import pathlib
import sys
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import named_cases
import paragraphs


class Paragraphs(unittest.TestCase):
    def setUp(self):
        patch = mock.patch.object(paragraphs, "WIDTH", 40)
        patch.start()
        self.addCleanup(patch.stop)

    def assert_mended(self, language, before, after):
        self.assertEqual(after.split("\n"), paragraphs.mend(before.split("\n"), language)[0])
        self.assertEqual((after.split("\n"), []), paragraphs.mend(after.split("\n"), language))

    def assert_stays(self, language, text):
        self.assert_mended(language, text, text)


class Comments(Paragraphs):
    def test_long_lines_are_broken(self):
        self.assert_mended("c", "// One two three four five six seven eight nine ten.\nint x;",
                           "// One two three four five six seven\n// eight nine ten.\nint x;")

    def test_ragged_lines_are_filled(self):
        self.assert_mended("c", "  // One two\n  // three four five.\n\n  // Six.",
                           "  // One two three four five.\n\n  // Six.")

    def test_a_line_may_have_all_columns_and_no_more(self):
        self.assert_stays("c", "// " + "a" * 35 + " b")
        self.assert_mended("c", "// " + "a" * 36 + " b", "// " + "a" * 36 + "\n// b")
        self.assert_mended("c", "// " + "a" * 35 + "\n// b", "// " + "a" * 35 + " b")

    def test_letters_count_and_not_their_bytes(self):
        self.assert_stays("c", "// " + "é" * 35 + " b")

    def test_lines_end_at_no_other_blanks(self):
        self.assert_stays("c", "// One two three four five six\n// seven\u00a0eight.")

    def test_each_of_several_is_filled(self):
        self.assert_mended("c", "// One\n// two.\nint x;\n// Three four five six seven eight nine ten.",
                           "// One two.\nint x;\n// Three four five six seven eight nine\n// ten.")

    def test_block_comments_have_stars(self):
        self.assert_mended("c", "  /* One two three four five six seven eight nine. */\n  int x;",
                           "  /* One two three four five six seven\n   * eight nine. */\n  int x;")

    def test_stars_are_aligned(self):
        self.assert_mended("c", "  /* One.\n*\n       * Two. */", "  /* One.\n   *\n   * Two. */")

    def test_the_end_of_a_block_comment_counts(self):
        self.assert_stays("c", "/* " + "a" * 30 + " bbb */")
        self.assert_mended("c", "/* " + "a" * 30 + " bbbb */", "/* " + "a" * 30 + "\n * bbbb */")

    def test_the_ends_of_a_block_comment_may_stand_alone(self):
        self.assert_mended("c", "/*\n * One\n * two.\n */", "/*\n * One two.\n */")

    def test_empty_lines_part_paragraphs(self):
        self.assert_stays("c", "/* One.\n *\n * Two. */")
        self.assert_stays("c", "// One.\n//\n// Two.")

    def test_trailing_comments_continue_below_themselves(self):
        self.assert_mended("c", "int count;  // one two three four five six\nint x;  // seven",
                           "int count;  // one two three four five\n            // six\nint x;  // seven")
        self.assert_mended("c", "int a; /* one two three four five six seven */",
                           "int a; /* one two three four five six\n        * seven */")

    def test_a_trailing_comment_is_not_joined_with_the_next_line_of_code(self):
        self.assert_stays("c", "one,    // first\ntwo,    // second\n// Third.")
        self.assert_mended("c", "one,  // a\ntwo,  // b\n      // c", "one,  // a\ntwo,  // b c")

    def test_comments_in_front_of_code_stay(self):
        self.assert_stays("c", "void Function(int /*one*/, int /* two three four */ x);")

    def test_other_forms_of_comments_stay(self):
        self.assert_stays("c", "/* One\n   two */")
        self.assert_stays("c", "/** One\n * two */")
        self.assert_stays("c", "//One\n//two")

    def test_strings_are_no_comments(self):
        self.assert_stays("c", 'x = "// one\\"// two three four five six seven eight";')
        self.assert_stays("c", 'x = R"(\n// One " two\n// three.)" R"a(\n// )"\n// four)a";')
        self.assert_mended("c", "x = 1'000;  // one's\n            // two", "x = 1'000;  // one's two")
        self.assert_mended("c", "x = '\"';  // \"one\n          // two\"", "x = '\"';  // \"one two\"")

    def test_comments_of_scripts(self):
        for marker in ("#", ";"):
            self.assert_mended(marker, f"  {marker} One\n  {marker} two.\n  x = 1",
                               f"  {marker} One two.\n  x = 1")

    def test_here_documents_are_no_comments(self):
        self.assert_mended("#", "cat <<'END'\n# One\n# two\nEND\n# Three\n# four.",
                           "cat <<'END'\n# One\n# two\nEND\n# Three four.")
        self.assert_mended("#", "read x <<<END\n# One\n# two.", "read x <<<END\n# One two.")

    def test_comments_of_python(self):
        self.assert_mended("python", "x = 1  # one two three four five six seven eight",
                           "x = 1  # one two three four five six\n       # seven eight")
        self.assert_stays("python", 'x = """\n# One\n# two\n"""')


class Docstrings(Paragraphs):
    def test_paragraphs_are_filled(self):
        self.assert_mended("python", 'def f():\n    """One two three four five six seven eight."""',
                           'def f():\n    """One two three four five six seven\n    eight."""')
        self.assert_mended("python", '#!/usr/bin/python3\n"""One\ntwo.\n\nThree\nfour.\n"""\n',
                           '#!/usr/bin/python3\n"""One two.\n\nThree four.\n"""\n')

    def test_the_quotes_count(self):
        self.assert_stays("python", '"""' + "a" * 30 + ' bbb"""')
        self.assert_mended("python", '"""' + "a" * 30 + ' bbbb"""', '"""' + "a" * 30 + '\nbbbb"""')

    def test_indented_lines_stay(self):
        self.assert_stays("python", '"""One.\n\n    usage ONE\n    usage TWO\n"""')

    def test_other_strings_stay(self):
        self.assert_stays("python", 'x = """One\ntwo."""')
        self.assert_stays("python", 'x = """One two three four five six seven eight"""')


class LaidOut(Paragraphs):
    def assert_stays_in_comments(self, *lines):
        self.assert_stays("c", "\n".join(f"// {line}".rstrip() for line in lines))
        self.assert_stays("#", "\n".join(f"# {line}".rstrip() for line in lines))
        self.assert_stays("c", "/* " + "\n * ".join(lines) + "\n */")
        self.assert_stays("markdown", "\n".join(lines))

    def test_indented_lines_stay(self):
        self.assert_stays_in_comments("Usage:", "    one", "    two", "That is all.")

    def test_columns_stay(self):
        self.assert_stays_in_comments("one   the first", "two   the second", "Both.")
        self.assert_stays("c", "// one\ttwo\n// three")

    def test_lists_stay_and_their_items_are_filled(self):
        self.assert_stays_in_comments("- One.", "- Two.", "1. One.", "2. Two.")
        self.assert_mended("c", "// - One two three four five six seven eight\n//   nine.\n// - Ten.",
                           "// - One two three four five six seven\n//   eight nine.\n// - Ten.")
        self.assert_mended("markdown", "12. One\n    two.\n    - Three\n      four.\n",
                           "12. One two.\n    - Three four.\n")

    def test_a_star_in_a_sentence_is_no_item(self):
        self.assert_mended("#", "# A pattern with\n# * and ?, or\n# + and -.",
                           "# A pattern with * and ?, or + and -.")
        self.assert_stays("markdown", "All of these:\n* One\n* two")

    def test_separators_and_headings_stay(self):
        self.assert_stays_in_comments("---- One ----", "Two.", "====", "Three.")
        self.assert_stays("markdown", "# One\nTwo.")

    def test_tables_quotations_and_links_stay(self):
        self.assert_stays_in_comments("| one | two |", "|---|---|", "| three | four |")
        self.assert_stays_in_comments("> One", "> two")
        self.assert_stays_in_comments("[one]: http://one.example", "[two]: http://two.example")

    def test_code_blocks_stay(self):
        self.assert_stays_in_comments("One:", "```", "two", "three", "```", "Four.")

    def test_directives_stay(self):
        self.assert_stays("c", "// NOLINTNEXTLINE(one)\n// Two.")
        self.assert_stays("#", "# shellcheck disable=SC2086\n# One.")
        self.assert_stays("#", "#!/bin/sh\n# One.")

    def test_regions_without_clang_format_stay(self):
        self.assert_mended("c", "// clang-format off\n// One\n// two\n// clang-format on\n// Three\n// four.",
                           "// clang-format off\n// One\n// two\n// clang-format on\n// Three four.")

    def test_licence_texts_stay(self):
        self.assert_stays("c", "// Copyright (c) 2020 One\n// Two\n// three.")
        self.assert_stays("#", "# SPDX-License-Identifier: MIT\n# One.")

    def test_line_breaks_of_markdown_stay(self):
        self.assert_mended("markdown", "One  \ntwo\nthree\\\nfour", "One  \ntwo three\\\nfour")

    def test_addresses_are_not_broken(self):
        self.assert_mended("markdown", "See http://one.example/" + "a" * 40 + " too.",
                           "See\nhttp://one.example/" + "a" * 40 + "\ntoo.")

    def test_no_line_begins_with_what_would_be_laid_out(self):
        start = "a" * 30
        for word in ("-", "+", "1.", "2)", "#", ">", "|", "---", "NOLINT"):
            self.assert_mended("markdown", f"{start} bbbbbbbb {word} c", f"{start}\nbbbbbbbb {word} c")


if __name__ == "__main__":
    named_cases.main()
