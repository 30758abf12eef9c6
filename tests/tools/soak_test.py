#!/usr/bin/env python3
"""What tools/soak says to wrong arguments, how it judges samples, and what it expects of operations."""
import contextlib
import io
import pathlib
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools"), str(ROOT / "tests/support")]
import named_cases
import soak_growth
import soak_library
import soak_plan
import soak_service
from soak_faults import Fault

HANDLES = soak_growth.Limit("handles", per_thousand=5, noise=20)


def judged(figures, every=100, limit=HANDLES):
    samples = soak_growth.Samples()
    for number, figure in enumerate(figures):
        samples.add(number * every, {limit.name: figure})
    return samples.growth(limit)


class WrongArguments(unittest.TestCase):
    def assert_refused(self, sentence, *arguments):
        run = subprocess.run([ROOT / "tools/soak", *arguments], capture_output=True, text=True, check=False)
        self.assertEqual((2, "", f"soak: {sentence}\n"), (run.returncode, run.stdout, run.stderr))

    def test_what_is_unknown_is_named(self):
        self.assert_refused("unknown argument 'x' (--help lists those there are)", "x")
        self.assert_refused("unknown argument '--x' (--help lists those there are)", "--x")
        self.assert_refused("unknown argument '--scale' (--help lists those there are)", "service", "--scale",
                            "1")

    def test_options_need_their_values(self):
        for option in ("--seed", "--scale", "--plant"):
            self.assert_refused(f"{option} needs a value", option)

    def test_seed_is_a_number(self):
        for text in ("-1", "x", "2147483648", "\u0661", ""):
            self.assert_refused(f"'{text}' is no seed from 0 to 2147483647", "--seed", text)

    def test_scale_is_a_percentage(self):
        for text in ("0", "-1", "x", "1001", "nan", "\u0661", ""):
            self.assert_refused(f"'{text}' is no percentage above 0 and up to 1000", "--scale", text)

    def test_minutes_are_a_number_above_0(self):
        for text in ("0", "x", "1e3", "10081", "\u0661", ""):
            self.assert_refused(f"'{text}' is no number of minutes above 0 and up to 10080", "service", text)
        self.assert_refused("wanted is service [MINUTES] [--seed N] (--help tells more)", "service", "1", "2")

    def test_kind_of_leak_is_one_that_there_is(self):
        self.assert_refused("'x' is none of handle, graphics, window, internet, block", "--plant", "x")


class Report(unittest.TestCase):
    def run_with(self, ended):
        run = soak_library.Run(None, pathlib.Path(), [])
        run.ended = ended
        for number in range(0, 1000, 20):
            run.samples.add(number, {limit.name: 7 for limit in soak_library.LIMITS})
        return run

    def reported(self, ended, control_ended):
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            is_well = soak_library.report(self.run_with(ended), self.run_with(control_ended))
        return is_well, output.getvalue()

    def test_figures_are_told_of_a_program_that_does_not_end_well(self):
        is_well, figures = self.reported(0, 0)
        self.assertTrue(is_well)
        self.assertIn("\nhandles ", figures)
        self.assertEqual((False, figures + "soak: the program with the DLLs has ended with 139\n"),
                         self.reported(139, 0))
        self.assertEqual((False, figures + "soak: the program without the DLLs has ended with 5\n"),
                         self.reported(0, 5))


class Slope(unittest.TestCase):
    def test_is_that_of_the_line_through_the_points(self):
        self.assertAlmostEqual(2, soak_growth.slope_of([(0, 1), (1, 3), (2, 5)]))
        self.assertAlmostEqual(-0.5, soak_growth.slope_of([(0, 10), (10, 5)]))

    def test_is_least_in_squares_where_points_are_not_on_a_line(self):
        # By hand: means 1.5 and 2.5; (-1.5 * -1.5 + -0.5 * 0.5 + 0.5 * -0.5 + 1.5 * 1.5) / 5 = 0.8.
        self.assertAlmostEqual(0.8, soak_growth.slope_of([(0, 1), (1, 3), (2, 2), (3, 4)]))


class Judgement(unittest.TestCase):
    def test_flat_samples_with_noise_are_within(self):
        growth = judged([100, 104, 98, 101, 103, 99, 102, 100, 97, 101, 100] * 10)
        self.assertTrue(growth.is_within)
        self.assertLess(abs(growth.slope), 1)

    def test_one_for_each_operation_is_found(self):
        growth = judged([100 + number * 100 for number in range(100)])
        self.assertFalse(growth.is_within)
        self.assertAlmostEqual(1000, growth.slope)

    def test_one_for_each_operation_is_found_in_a_short_run(self):
        self.assertFalse(judged([100 + number * 5 for number in range(24)], every=5).is_within)

    def test_one_for_each_operation_of_the_rarest_kind_is_found(self):
        rarest = min(soak_plan.COUNTS.values()) / sum(soak_plan.COUNTS.values())
        for limit in soak_library.LIMITS:
            if limit.name == "private KB":
                continue  # it is for what none of the others can see
            leak = [round(number * 195 * rarest) for number in range(61)]
            self.assertFalse(judged(leak, every=195, limit=limit).is_within, limit.name)

    def test_a_small_block_for_each_request_of_the_service_is_found(self):
        # In an hour, which has about 180,000 requests.
        limit = soak_service.LIMITS[0]
        self.assertEqual("resident KB", limit.name)
        leak = [20000 + number * 3000 * 32 / 1024 for number in range(61)]
        self.assertFalse(judged(leak, every=3000, limit=limit).is_within)

    def test_a_descriptor_for_the_rarest_misdeed_is_found(self):
        leak = [100 + number * 3000 / 100 for number in range(61)]
        self.assertFalse(judged(leak, every=3000, limit=soak_service.LIMITS[1]).is_within)

    def test_warming_up_is_not_judged(self):
        growth = judged([0, 300, 600, 900] + [1000] * 16)
        self.assertTrue(growth.is_within)
        self.assertEqual((1000, 1000), (growth.first, growth.last))

    def test_what_is_not_warm_yet_is_not_judged(self):
        limit = soak_growth.Limit("handles", 5, 20, warm=5000)
        growth = judged(range(0, 10000, 200), limit=limit)
        self.assertIsNone(growth.slope)
        self.assertTrue(growth.is_within)
        self.assertIn("not judged", list(soak_growth.table([growth]))[1])
        self.assertFalse(judged(range(0, 20000, 200), limit=limit).is_within)

    def test_one_step_that_stays_within_the_noise_is_not_growth(self):
        self.assertTrue(judged([100] * 50 + [115] * 50).is_within)

    def test_what_shrinks_is_within(self):
        self.assertTrue(judged(range(10000, 0, -100)).is_within)

    def test_what_the_control_gathers_does_not_count(self):
        run, control = soak_growth.Samples(), soak_growth.Samples()
        for number in range(60):
            control.add(100 * number, {"handles": 40 + 100 * number})
            run.add(100 * number, {"handles": 50 + 101 * number})
        growth = run.less(control).growth(HANDLES)
        self.assertAlmostEqual(10, growth.slope)
        self.assertEqual(10 + 12, growth.first)

    def test_control_has_to_be_counted_after_as_many_operations(self):
        run, control = soak_growth.Samples(), soak_growth.Samples()
        run.add(100, {"handles": 1})
        control.add(99, {"handles": 1})
        with self.assertRaises(ValueError):
            run.less(control)

    def test_table_tells_what_grows(self):
        lines = list(soak_growth.table([judged([100 + number * 100 for number in range(100)])]))
        self.assertRegex(lines[1], r"^handles +2100 +10000 +1000\.00 +7\.\d\d   GROWS$")


class Expectations(unittest.TestCase):
    OPERATION = soak_plan.Operation("download /a 0", Fault(), {0}, {"1 3 3"}, None, (b"abc",))

    def test_right_answer_is_not_wrong(self):
        self.assertIsNone(self.OPERATION.wrong("0 1 3 3", b"abc"))

    def test_every_part_of_an_answer_counts(self):
        self.assertIn("cause 5", self.OPERATION.wrong("5 1 3 3", b"abc"))
        self.assertIn("'1 2 3'", self.OPERATION.wrong("0 1 2 3", b"abc"))
        self.assertIn("file", self.OPERATION.wrong("0 1 3 3", b"abd"))
        self.assertIn("file", self.OPERATION.wrong("0 1 3 3", None))
        self.assertIn("cause", self.OPERATION.wrong("", b"abc"))

    def test_reset_download_has_failed_or_ended_early(self):
        reset = soak_plan.ResetDownload("download /a 0", Fault("reset within", 3), soak_plan.RESET, set(),
                                        None, (b"abc",))
        ended = soak_plan.REPLY_ENDED
        self.assertIsNone(reset.wrong("10054 0 0 9", None))
        self.assertIsNone(reset.wrong(f"{ended} 1 2 9", b"ab"))
        self.assertIsNotNone(reset.wrong("0 1 9 9", b"abc"))
        self.assertIsNotNone(reset.wrong("10054 0 0 9", b"ab"))
        self.assertIsNotNone(reset.wrong(f"{ended} 1 2 9", b"xy"))

    def test_same_seed_makes_the_same_plan(self):
        class Shop:
            maps = [("a", 1, "/a", "b", -5, -5, 5, 5)]
            files = {"/empty.map": b"", "/two.map": b"ab"}

            def found(self, boxes):
                return self.maps if not boxes else []

            def answer(self, boxes):
                return bytes(12 + 50 * len(self.found(boxes)))

        plans = [soak_plan.Planner(Shop(), seed).operations(10) for seed in (1, 1, 2)]
        self.assertEqual(plans[0], plans[1])
        self.assertNotEqual(plans[0], plans[2])
        self.assertEqual(sum(soak_plan.COUNTS.values()) // 10, len(plans[0]))


if __name__ == "__main__":
    named_cases.main()
