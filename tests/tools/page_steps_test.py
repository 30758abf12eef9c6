#!/usr/bin/env python3
"""What tests/support/page_steps.py finds in a page that is to be followed."""
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import named_cases
from page_steps import Step, steps_of


class PageSteps(unittest.TestCase):
    def test_each_command_is_a_step(self):
        self.assertEqual([Step(3, "Title", "command", ["one"]),
                          Step(4, "Title", "command", ["two \\\n  more"]),
                          Step(9, "Next", "command", ["three"])],
                         steps_of("# Title\n\n    one\n    two \\\n      more\n\n## Next\n\n    three\n"))

    def test_a_comment_tells_what_a_block_is(self):
        page = ("# Title\n\n<!-- in: a.txt -->\n```\none\ntwo\n```\n\n<!-- files in: b/c -->\n```\nd\n```\n"
                "<!-- edit: a.tsv -->\n```\nx\ty\n```\n")
        self.assertEqual([Step(5, "Title", "in", ["one", "two"], "a.txt"),
                          Step(11, "Title", "files in", ["d"], "b/c"),
                          Step(15, "Title", "edit", ["x\ty"], "a.tsv")], steps_of(page))

    def test_what_is_printed_tells_how_the_command_ends(self):
        page = "# Title\n\n    one\n    two\n\n<!-- prints{} -->\n```\nx\n```\n"
        for mark, is_part, code in ("", False, 0), (", exit code 2", False, 2), (" among others", True, 0), \
                (" among others, exit code 1", True, 1):
            self.assertEqual([Step(3, "Title", "command", ["one"]),
                              Step(4, "Title", "command", ["two"], code=code),
                              Step(8, "Title", "prints", ["x"], is_part=is_part, code=code)],
                             steps_of(page.format(mark)))

    def test_other_blocks_are_data(self):
        self.assertEqual([], steps_of("# Title\n\n```\none\n```\n\n<!-- in: a.txt -->\n\n```\ntwo\n```\n"))

    def test_a_comment_that_means_nothing_is_a_mistake(self):
        with self.assertRaisesRegex(ValueError, "line 3: nobody knows what is meant by '<!-- print -->'"):
            steps_of("# Title\n\n<!-- print -->\n```\none\n```\n")


if __name__ == "__main__":
    named_cases.main()
