#!/usr/bin/env python3
"""What tools/coverage_figures.py says of reports of gcovr."""
import json
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import coverage_figures
import named_cases
from coverage_figures import House, Judgement, Scripts, Share, Unreadable

ALL = House("house", 100, 100)


def line(number, count, *branches, **more):
    return {"line_number": number, "count": count, "gcovr/noncode": False,
            "branches": [{"count": count, "throw": False} for count in branches], **more}


def judged(house, *lines, file="house/a.cpp"):
    judgement = Judgement(house)
    judgement.take(file, lines)
    return judgement


def report(**files):
    return json.dumps({"files": [{"file": file, "lines": lines} for file, lines in files.items()]})


class Houses(unittest.TestCase):
    def test_what_runs_wholly_is_well(self):
        judgement = judged(ALL, line(1, 5), line(2, 1, 3, 4))
        self.assertEqual([], judgement.complaints)
        self.assertEqual("house: 2 of 2 (100.0 %) lines, 2 of 2 (100.0 %) branches; wanted: 100 % and 100 %",
                         judgement.figure)

    def test_a_line_that_is_not_run_is_named(self):
        self.assertEqual("house/a.cpp:7: this line is not run", judged(ALL, line(7, 0)).complaints[0])

    def test_a_branch_that_is_not_taken_is_named(self):
        self.assertEqual("house/a.cpp:7: 1 of 4 branches not taken",
                         judged(ALL, line(7, 3, 1, 0, 2, 1)).complaints[0])

    def test_branches_of_exceptions_do_not_count(self):
        branches = [{"count": 5, "throw": False}, {"count": 0, "throw": True}]
        judgement = judged(ALL, line(7, 5) | {"branches": branches})
        self.assertEqual([], judgement.complaints)
        self.assertEqual(1, judgement.branches.all)

    def test_branches_of_a_line_that_is_not_run_are_told_of_with_it(self):
        judgement = judged(ALL, line(7, 0, 0, 0))
        self.assertEqual(["house/a.cpp:7: this line is not run"], judgement.not_run)

    def test_what_does_not_run_is_kept_for_a_list_where_the_figure_is_reached(self):
        half = House("house", 50)
        judgement = judged(half, line(1, 1), line(2, 0))
        self.assertEqual([], judgement.complaints)
        self.assertEqual(["house/a.cpp:2: this line is not run"], judgement.not_run)
        self.assertTrue(judged(half, line(1, 1), line(2, 0), line(3, 0)).complaints)

    def test_only_lines_are_asked_for_where_branches_are_not(self):
        self.assertEqual([], judged(House("house", 100), line(1, 1, 1, 0)).complaints)
        self.assertTrue(judged(House("house", 0, 51), line(1, 1, 1, 0)).complaints)

    def test_a_house_of_which_nothing_was_counted_is_not_well(self):
        self.assertTrue(judged(House("house", 0)).complaints)

    def test_what_is_taken_out_does_not_count(self):
        judgement = judged(ALL, line(1, 1), line(2, 0, **{"gcovr/noncode": True}),
                           line(3, 0, **{"gcovr/excluded": True}))
        self.assertEqual([], judgement.complaints)
        self.assertEqual(1, judgement.lines.all)

    def test_only_all_of_them_are_100_per_cent(self):
        self.assertEqual("9999 of 10000 (99.9 %)", str(Share(9999, 10000)))
        self.assertEqual("0 of 0 (100.0 %)", str(Share()))


class Reports(unittest.TestCase):
    def judge(self, text, house=ALL, **sources):
        return coverage_figures.judge(house, coverage_figures.counted_files(text), sources, {"house/a.cpp"})

    def test_files_belong_to_their_folders_and_others_to_none(self):
        judgement = self.judge(report(**{
            "house/room/a.cpp": [line(1, 0), line(2, 1)], "house/b.h": [line(3, 0)],
            "houses/a.cpp": [line(4, 0)], "a.cpp": [line(5, 0)], "house/a.c": [line(6, 0)]}))
        self.assertEqual(["house/b.h:3: this line is not run", "house/room/a.cpp:1: this line is not run"],
                         judgement.not_run)

    def test_the_library_has_to_run_wholly(self):
        src, = (house for house in coverage_figures.BUILDS["coverage"].houses if house.folder == "src")
        lines = [line(1, 1)] * 9999
        self.assertEqual([], self.judge(report(**{"src/a.cpp": lines}), src).complaints)
        self.assertIn("src/a.cpp:2: 1 of 2 branches not taken",
                      self.judge(report(**{"src/a.cpp": [*lines, line(2, 1, 1, 0)]}), src).complaints)
        self.assertIn("src/a.cpp:2: this line is not run",
                      self.judge(report(**{"src/a.cpp": [*lines, line(2, 0)]}), src).complaints)

    def test_a_source_that_was_not_built_is_named(self):
        judgement = self.judge(report(**{"house/a.cpp": [line(1, 1)]}),
                               **{"house/a.cpp": "", "house/b.cpp": "", "house/c.h": "", "docs/d.cpp": ""})
        self.assertEqual(["house/b.cpp: this is in no program that is counted"], judgement.complaints)

    def test_a_source_that_only_another_build_has_is_well(self):
        house = House("house", 100, elsewhere=("house/b.cpp",))
        text = report(**{"house/a.cpp": [line(1, 1)]})
        self.assertEqual([], self.judge(text, house, **{"house/b.cpp": ""}).complaints)
        self.assertTrue(self.judge(text, house, **{"house/c.cpp": ""}).complaints)

    def test_a_mark_needs_a_reason(self):
        text = "a;  // GCOVR_EXCL_LINE: it cannot be\nb;  // GCOVR_EXCL_BR_LINE\nc;  // GCOV_EXCL_LINE:\n" \
               "// GCOVR_EXCL_START it cannot be\n// GCOVR_EXCL_STOP\n"
        judgement = self.judge(report(**{"house/a.h": [line(1, 1)]}), **{"house/a.h": text})
        self.assertEqual(
            [f"house/a.h:{number}: the mark has no reason (MARK: REASON)" for number in (2, 3, 4)],
            judgement.complaints)

    def test_what_is_no_report_is_refused(self):
        for text in ("", "{}", "[]", '{"files": [{"file": "src/a.cpp"}]}', '{"files": [{"lines": [{}]}]}'):
            with self.subTest(text=text), self.assertRaises(Unreadable):
                self.judge(text)


class Python(unittest.TestCase):
    REPORT = json.dumps({"files": {"/home/tools/a": {
        "executed_lines": [1, 3, 4], "missing_lines": [2], "excluded_lines": [4, 5]}}})

    def test_lines_are_those_of_the_report_in_their_order(self):
        self.assertEqual({"tools/a": [line(1, 1), line(2, 0), line(3, 1)]},
                         {file: [line(one["line_number"], one["count"]) for one in lines] for file, lines in
                          coverage_figures.counted_scripts(self.REPORT, "/home").items()})

    def test_figure_has_no_branches(self):
        judgement = coverage_figures.judge(Scripts("tools", 60),
                                           coverage_figures.counted_scripts(self.REPORT, "/home"), {}, set())
        self.assertEqual("scripts of tools: 2 of 3 (66.6 %) lines; wanted: 60 % of lines", judgement.figure)
        self.assertEqual([], judgement.complaints)

    def test_scripts_have_no_ending_or_that_of_python(self):
        house = Scripts("tools", 95)
        self.assertEqual(["tools/a", "tools/a.b/c", "tools/a.py"],
                         [file for file in ("tools/a", "tools/a.b/c", "tools/a.md", "tools/a.py", "a.py")
                          if house.has(file)])

    def test_those_that_are_judged_elsewhere_do_not_belong_to_it(self):
        house = Scripts("tools", 95, only=("tools/a*",), elsewhere=("tools/a/*",))
        self.assertTrue(house.has("tools/a.py"))
        self.assertFalse(house.has("tools/a/b.py"))
        self.assertFalse(house.has("tools/c.py"))

    def test_a_script_that_nothing_runs_is_named(self):
        judgement = coverage_figures.judge(Scripts("tools", 0), {"tools/a": [line(1, 1)]},
                                           {"tools/a": "", "tools/b.py": ""}, {"tools/a"})
        self.assertEqual(["tools/b.py: this is in no program that is counted"], judgement.complaints)

    def test_what_is_no_report_is_refused(self):
        for text in ("", "{}", "[]", '{"files": []}', '{"files": {"a": {"executed_lines": [1]}}}'):
            with self.subTest(text=text), self.assertRaises(Unreadable):
                coverage_figures.counted_scripts(text, "/home")


if __name__ == "__main__":
    named_cases.main()
