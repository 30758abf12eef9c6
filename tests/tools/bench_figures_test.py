#!/usr/bin/env python3
"""What tools/bench_figures.py says of figures."""
import json
import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import bench_figures
import named_cases
from bench_figures import Figure, Figures


def figure(contender, value, spread=0.0, row="walk", size=10, unit="instructions", **more):
    return Figure(row, contender, size, unit, value, value - spread, value + spread, "step", **more)


def verdict_of(aim, now, kept=None):
    [verdict] = bench_figures.verdicts([{"row": "walk", **aim}], Figures(now), kept or {})
    return verdict


class Ratios(unittest.TestCase):
    def test_the_librarys_figure_is_divided_by_the_peers(self):
        self.assertEqual(1.5, bench_figures.ratio(figure("library", 30), figure("peer", 20)))

    def test_there_is_none_without_both_figures(self):
        self.assertIsNone(bench_figures.ratio(None, figure("peer", 20)))
        self.assertIsNone(bench_figures.ratio(figure("library", 30), None))

    def test_there_is_none_to_a_peer_that_needs_nothing(self):
        self.assertIsNone(bench_figures.ratio(figure("library", 30), figure("peer", 0)))

    def test_pairs_that_were_measured_in_turn_have_their_own(self):
        own = figure("library", 30, peer="peer", ratio=1.2, ratio_low=1.1, ratio_high=1.3)
        self.assertEqual(1.2, bench_figures.ratio(own, figure("peer", 20)))
        self.assertEqual(3, bench_figures.ratio(own, figure("another", 10)))


class Comparisons(unittest.TestCase):
    def test_spreads_that_overlap_are_equal(self):
        self.assertEqual("equal", bench_figures.comparison(figure("library", 30, 6), figure("peer", 20, 5)))

    def test_spreads_that_touch_are_equal(self):
        self.assertEqual("equal", bench_figures.comparison(figure("library", 30, 5), figure("peer", 20, 5)))

    def test_spreads_apart_are_less_or_more(self):
        self.assertEqual("more", bench_figures.comparison(figure("library", 30, 4), figure("peer", 20, 5)))
        self.assertEqual("less", bench_figures.comparison(figure("library", 10, 4), figure("peer", 20, 5)))

    def test_pairs_are_equal_when_the_spread_of_their_ratio_holds_one(self):
        own = figure("library", 30, peer="peer", ratio=1.05, ratio_low=0.95, ratio_high=1.1)
        self.assertEqual("equal", bench_figures.comparison(own, figure("peer", 20)))
        self.assertEqual("more", bench_figures.comparison(own._replace(ratio_low=1.01), figure("peer", 20)))


class Verdicts(unittest.TestCase):
    def test_an_aim_is_reached_at_its_limit_and_not_above(self):
        now = [figure("library", 20), figure("peer", 10)]
        self.assertEqual("yes", verdict_of({"peer": "peer", "at_most": 2.0}, now).reached)
        self.assertEqual("**no**", verdict_of({"peer": "peer", "at_most": 1.99}, now).reached)

    def test_the_best_peer_is_the_one_with_the_smallest_figure(self):
        now = [figure("library", 20), figure("one", 40), figure("two", 25), figure("three", 30)]
        verdict = verdict_of({"peer": "best", "at_most": 1}, now)
        self.assertEqual(("two", 0.8), (verdict.peer, verdict.figure))

    def test_an_aim_without_a_peer_limits_the_figure(self):
        now = [figure("library", 3, unit="calls"), figure("peer", 9, unit="calls")]
        verdict = verdict_of({"unit": "calls", "at_most": 0}, now)
        self.assertEqual((3, "**no**"), (verdict.figure, verdict.reached))

    def test_a_figure_of_zero_reaches_an_aim_of_zero(self):
        verdict = verdict_of({"unit": "calls", "at_most": 0}, [figure("library", 0, unit="calls")])
        self.assertEqual("yes", verdict.reached)

    def test_a_missing_row_is_told(self):
        self.assertEqual("not measured", verdict_of({"peer": "peer", "at_most": 1}, []).reached)
        self.assertEqual("not measured", verdict_of({"peer": "peer", "at_most": 1},
                                                    [figure("library", 1)]).reached)

    def test_each_size_has_one_unless_the_aim_names_sizes(self):
        now = Figures([figure("library", 1, size=size) for size in (10, 20, 30)])
        sizes = [one.size for one in bench_figures.verdicts([{"row": "walk", "at_most": 1}], now, {})]
        self.assertEqual([10, 20, 30], sizes)
        aim = {"row": "walk", "sizes": [20], "at_most": 1}
        self.assertEqual([20], [one.size for one in bench_figures.verdicts([aim], now, {})])

    def test_an_earlier_ratio_may_be_the_limit_but_for_a_hundredth(self):
        kept = {"before": Figures([figure("library", 40), figure("peer", 20)])}
        aim = {"peer": "peer", "not_worse_than": "before"}
        for figures, reached in (((20, 10), "yes"), ((20.1, 10), "yes"), ((20.3, 10), "**no**")):
            now = [figure(name, value) for name, value in zip(("library", "peer"), figures)]
            self.assertEqual(reached, verdict_of(aim, now, kept).reached)
        self.assertEqual("not measured", verdict_of(aim, [figure("library", 1), figure("peer", 1)]).reached)


class Files(unittest.TestCase):
    def read(self, *lines):
        with tempfile.NamedTemporaryFile("w", suffix=".jsonl") as file:
            file.write("\n".join(lines) + "\n")
            file.flush()
            return Figures.of([file.name])

    def test_figures_and_facts_are_read(self):
        line = {"row": "walk", "contender": "library", "size": 10, "unit": "ns", "value": 2, "low": 1,
                "high": 3, "per": "step"}
        read = self.read(json.dumps({"part": "native", "facts": {"Date": "today"}}),
                         json.dumps({**line, "pairs": 7}))
        self.assertEqual({"native": {"Date": "today"}}, read.facts)
        self.assertEqual(figure("library", 2, 1, unit="ns"), read.get("walk", "library", 10, "ns"))

    def test_a_line_that_is_none_is_named(self):
        with self.assertRaisesRegex(bench_figures.Unreadable, ".jsonl:2: "):
            self.read('{"part": "native", "facts": {}}', "walk, 10")
        with self.assertRaises(bench_figures.Unreadable):
            self.read('{"row": "walk"}')


if __name__ == "__main__":
    named_cases.main()
