#!/usr/bin/env python3
"""What tools/soak says to wrong arguments, and how it judges samples."""
import pathlib
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools"), str(ROOT / "tests/support")]
import named_cases  # noqa: E402
import soak_growth  # noqa: E402
import soak_service  # noqa: E402

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

    def test_service_is_named(self):
        for words in ([], ["x"], ["--seed", "1"]):
            self.assert_refused("wanted is service [MINUTES] [--seed N] (--help tells more)", *words)

    def test_what_is_unknown_is_named(self):
        self.assert_refused("unknown argument '--x' (--help lists those there are)", "service", "--x", "1")

    def test_seed_is_a_number(self):
        self.assert_refused("--seed needs a value", "service", "--seed")
        for text in ("-1", "x", "2147483648", ""):
            self.assert_refused(f"'{text}' is no seed from 0 to 2147483647", "service", "--seed", text)

    def test_minutes_are_a_number_above_0(self):
        for text in ("0", "x", "1e3", "10081", ""):
            self.assert_refused(f"'{text}' is no number of minutes above 0 and up to 10080", "service", text)
        self.assert_refused("wanted is service [MINUTES] [--seed N] (--help tells more)", "service", "1", "2")


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

    def test_table_tells_what_grows(self):
        lines = list(soak_growth.table([judged([100 + number * 100 for number in range(100)])]))
        self.assertRegex(lines[1], r"^handles +2100 +10000 +1000\.00 +7\.\d\d   GROWS$")


if __name__ == "__main__":
    named_cases.main()
