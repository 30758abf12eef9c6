#!/usr/bin/env python3
"""How many cases a log of tests stands for."""
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import named_cases
from test_log import TestLog

BEGUN = "1: [==========] Running 2 tests from 1 test suite.\n"
FIRST = "1: [ RUN      ] A.First\n1: [       OK ] A.First (0 ms)\n"
SECOND = "1: [ RUN      ] A.Second\n1: [       OK ] A.Second (0 ms)\n"
PASSED = "1/1 Test #1: library ....   Passed    0.10 sec\n"
FAILED = "1/1 Test #1: library ....***Failed    0.10 sec\n"


def counted(text, well=True):
    log = TestLog()
    log.take(text)
    log.end(well)
    return log


class Counts(unittest.TestCase):
    def assert_counts(self, passed, failed, text, well=True):
        log = counted(text, well)
        self.assertEqual((passed, failed), (log.passed, log.failed))
        return log

    def test_each_case_counts(self):
        self.assertEqual([], self.assert_counts(2, 0, BEGUN + FIRST + SECOND + PASSED).failures)

    def test_a_log_in_single_bytes_counts_the_same(self):
        log = TestLog()
        for letter in BEGUN + FIRST + SECOND + PASSED:
            log.take(letter)
        log.end(True)
        self.assertEqual((2, 0), (log.passed, log.failed))

    def test_lines_that_windows_ends_count_too(self):
        self.assert_counts(2, 0, (BEGUN + FIRST + SECOND).replace("\n", "\r\n") + PASSED)

    def test_figures_are_kept_whoever_tells_them_and_count_for_nothing(self):
        log = self.assert_counts(2, 0, BEGUN + FIRST + "1: figure: 5 runs\n" + SECOND + PASSED +
                                 "figure: 99.1 %\n")
        self.assertEqual(["5 runs", "99.1 %"], log.figures)
        self.assertEqual([], counted("1: no figure: 5\n" + BEGUN + FIRST + SECOND + PASSED).figures)

    def test_cases_count_behind_what_another_process_writes(self):
        second = SECOND.replace("[       OK", "client error:744: [       OK")
        self.assert_counts(2, 0, BEGUN + FIRST + second + PASSED)
        failed = "1: [ RUN      ] A.Second\n1: client error:744: [  FAILED  ] A.Second (1 ms)\n"
        self.assert_counts(1, 1, BEGUN + FIRST + failed + FAILED)

    def test_what_a_case_prints_of_others_counts_for_nothing(self):
        other = "1: [       OK ] B.Other (0 ms)\n"
        self.assert_counts(2, 0, BEGUN + FIRST + SECOND.replace("\n", "\n" + other, 1) + PASSED)
        self.assert_counts(1, 1, BEGUN + FIRST + FIRST.splitlines(True)[1] + other + FAILED)

    def test_a_failed_case_counts_and_is_shown(self):
        failed = "1: [ RUN      ] A.Second\n1: why\n1: [  FAILED  ] A.Second (1 ms)\n"
        summary = "1: [  FAILED  ] 1 test, listed below:\n1: [  FAILED  ] A.Second\n"
        log = self.assert_counts(1, 1, BEGUN + FIRST + failed + summary + FAILED)
        self.assertEqual(["[ RUN      ] A.Second", "why", "[  FAILED  ] A.Second (1 ms)"], log.failures[:3])

    def test_a_failed_case_is_shown_when_others_follow(self):
        failed = "1: [ RUN      ] A.First\n1: why\n1: [  FAILED  ] A.First (1 ms)\n"
        log = self.assert_counts(1, 1, BEGUN + failed + SECOND + FAILED)
        self.assertEqual(["[ RUN      ] A.First", "why", "[  FAILED  ] A.First (1 ms)"], log.failures[:3])

    def test_a_skipped_case_has_failed(self):
        skipped = "1: [ RUN      ] A.Second\n1: [  SKIPPED ] A.Second (0 ms)\n"
        log = self.assert_counts(1, 1, BEGUN + FIRST + skipped + PASSED)
        self.assertIn("[  SKIPPED ] A.Second (0 ms)", log.failures)

    def test_a_case_in_which_the_program_ends_has_failed_and_is_shown(self):
        log = self.assert_counts(1, 1, BEGUN + FIRST + "1: [ RUN      ] A.Second\n1: last words\n" + FAILED)
        self.assertIn("last words", log.failures)

    def test_a_case_that_is_not_reached_has_failed(self):
        self.assert_counts(1, 1, BEGUN + FIRST + FAILED)

    def test_a_program_that_ends_badly_after_its_last_case_has_failed_once(self):
        self.assert_counts(2, 1, BEGUN + FIRST + SECOND + "1: a leak\n" + FAILED)

    def test_a_program_that_ctest_never_saw_end_has_failed(self):
        self.assert_counts(1, 1, BEGUN + FIRST, well=False)

    def test_a_program_of_another_form_counts_once(self):
        self.assert_counts(1, 0, "1: hello\n" + PASSED)
        self.assert_counts(0, 1, "1: hello\n" + FAILED)

    def test_a_program_without_a_case_for_the_filter_counts_for_nothing(self):
        self.assert_counts(0, 0, "1: [==========] Running 0 tests from 0 test suites.\n" + PASSED)

    def test_programs_are_kept_apart(self):
        other = BEGUN.replace("1:", "2:") + FIRST.replace("1:", "2:")
        self.assert_counts(3, 1, BEGUN + other + FIRST + SECOND + PASSED + FAILED.replace("#1", "#2"))

    def test_cases_without_a_number_count(self):
        self.assert_counts(2, 0, (BEGUN + FIRST + SECOND).replace("1: ", ""))
        self.assert_counts(1, 1, (BEGUN + FIRST).replace("1: ", ""), well=False)

    def test_several_runs_in_one_log_add_up(self):
        self.assert_counts(4, 0, (BEGUN + FIRST + SECOND).replace("1: ", "") * 2)

    def test_the_log_tells_how_many_cases_there_will_be(self):
        self.assertEqual(719, counted("cases: 719\n" + BEGUN).total)

    def test_an_empty_log_counts_for_nothing(self):
        self.assert_counts(0, 0, "")


if __name__ == "__main__":
    named_cases.main()
