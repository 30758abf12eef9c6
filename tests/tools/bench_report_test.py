#!/usr/bin/env python3
"""What tools/bench_report.py makes of figures."""
import json
import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import bench_report  # noqa: E402
import named_cases  # noqa: E402
from bench_report import Figure, Figures  # noqa: E402


def figure(contender, value, spread=0.0, row="walk", size=10, unit="instructions", **more):
    return Figure(row, contender, size, unit, value, value - spread, value + spread, "step", **more)


def verdict_of(aim, now, kept=None):
    [verdict] = bench_report.verdicts([{"row": "walk", **aim}], Figures(now), kept or {})
    return verdict


class Ratios(unittest.TestCase):
    def test_the_librarys_figure_is_divided_by_the_peers(self):
        self.assertEqual(1.5, bench_report.ratio(figure("library", 30), figure("peer", 20)))

    def test_there_is_none_without_both_figures(self):
        self.assertIsNone(bench_report.ratio(None, figure("peer", 20)))
        self.assertIsNone(bench_report.ratio(figure("library", 30), None))

    def test_there_is_none_to_a_peer_that_needs_nothing(self):
        self.assertIsNone(bench_report.ratio(figure("library", 30), figure("peer", 0)))

    def test_pairs_that_were_measured_in_turn_have_their_own(self):
        own = figure("library", 30, peer="peer", ratio=1.2, ratio_low=1.1, ratio_high=1.3)
        self.assertEqual(1.2, bench_report.ratio(own, figure("peer", 20)))
        self.assertEqual(3, bench_report.ratio(own, figure("another", 10)))


class Comparisons(unittest.TestCase):
    def test_spreads_that_overlap_are_equal(self):
        self.assertEqual("equal", bench_report.comparison(figure("library", 30, 6), figure("peer", 20, 5)))

    def test_spreads_that_touch_are_equal(self):
        self.assertEqual("equal", bench_report.comparison(figure("library", 30, 5), figure("peer", 20, 5)))

    def test_spreads_apart_are_less_or_more(self):
        self.assertEqual("more", bench_report.comparison(figure("library", 30, 4), figure("peer", 20, 5)))
        self.assertEqual("less", bench_report.comparison(figure("library", 10, 4), figure("peer", 20, 5)))

    def test_pairs_are_equal_when_the_spread_of_their_ratio_holds_one(self):
        own = figure("library", 30, peer="peer", ratio=1.05, ratio_low=0.95, ratio_high=1.1)
        self.assertEqual("equal", bench_report.comparison(own, figure("peer", 20)))
        self.assertEqual("more", bench_report.comparison(own._replace(ratio_low=1.01), figure("peer", 20)))


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
        sizes = [one.size for one in bench_report.verdicts([{"row": "walk", "at_most": 1}], now, {})]
        self.assertEqual([10, 20, 30], sizes)
        aim = {"row": "walk", "sizes": [20], "at_most": 1}
        self.assertEqual([20], [one.size for one in bench_report.verdicts([aim], now, {})])

    def test_an_earlier_ratio_may_be_the_limit(self):
        kept = {"before": Figures([figure("library", 40), figure("peer", 20)])}
        aim = {"peer": "peer", "not_worse_than": "before"}
        self.assertEqual("yes", verdict_of(aim, [figure("library", 20), figure("peer", 10)], kept).reached)
        self.assertEqual("**no**", verdict_of(aim, [figure("library", 21), figure("peer", 10)], kept).reached)
        self.assertEqual("not measured", verdict_of(aim, [figure("library", 1), figure("peer", 1)]).reached)


class Tables(unittest.TestCase):
    def test_peers_that_need_less_are_listed_with_the_worst_first(self):
        now = Figures([figure("library", 20), figure("peer", 10), figure("another", 30),
                       figure("library", 60, row="run"), figure("peer", 20, row="run"),
                       figure("library", 50, row="run", size=20), figure("peer", 10, row="run", size=20),
                       figure("library", 10, row="run", size=30), figure("peer", 20, row="run", size=30),
                       figure("library", 60, row="run", unit="ns"), figure("peer", 10, row="run", unit="ns")])
        self.assertEqual(["| run | peer | 3.00 to 5.00 | 6.00 |", "| walk | peer | 2.00 |  |"],
                         bench_report.slower_list(now).split("\n")[2:])

    def test_times_whose_spreads_overlap_are_not_slower(self):
        now = Figures([figure("library", 20, 5, unit="ns"), figure("peer", 15, 5, unit="ns")])
        self.assertEqual("Nowhere, in these rows.", bench_report.slower_list(now))
        self.assertIn("1.33, equal", bench_report.row_table("walk", now, {}))

    def test_a_row_shows_the_library_first_and_then_earlier_times(self):
        now = Figures([figure("library", 20), figure("a peer", 10)])
        kept = {"before": Figures([figure("library", 40)])}
        lines = bench_report.row_table("walk", now, kept).split("\n")[4:]
        self.assertEqual(["| 10 | library | 20 |  |", "| 10 | a peer | 10 | 2.00 |",
                          "| 10 | library, before | 40 | 0.50 |"], lines)

    def test_columns_of_figures_are_to_the_right(self):
        lines = [["10", "12.2.0-14", "1,234.5", "1.07, equal"], ["x", "7", "", "5 (4 to 6)"]]
        self.assertEqual("| :-- | :-- | --: | --: |",
                         bench_report.table(["a", "b", "c", "d"], lines).split("\n")[1])

    def test_a_missing_row_says_so(self):
        self.assertEqual("**walk** was not measured.", bench_report.row_table("walk", Figures(), {}))


class Documents(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def write(self, text, now, kept=None):
        (self.folder / "report.md").write_text(text)
        plots = bench_report.write(self.folder, self.folder / "made.md", now, kept or {})
        return (self.folder / "made.md").read_text(), plots

    def test_the_same_figures_make_the_same_bytes(self):
        text = "{{facts}}\n\n{{aims}}\n\n{{slower}}\n\n{{rows walk}}\n"
        figures = [figure("library", 20), figure("peer", 10), figure("another", 5)]
        (self.folder / "aims.json").write_text('[{"row": "walk", "peer": "best", "at_most": 1}]')
        made = self.write(text, Figures(figures, {"native": {"Date": "today"}}))
        self.assertEqual(made, self.write(text, Figures(figures[::-1], {"native": {"Date": "today"}})))

    def test_a_scenario_has_its_own_text_or_none(self):
        (self.folder / "stroll").mkdir()
        (self.folder / "stroll/report.md").write_text("## Stroll\n\n{{rows walk}}\n")
        made, _ = self.write("Top\n\n{{scenario stroll}}\n\n{{scenario swim}}\n\nEnd\n", Figures())
        self.assertEqual("Top\n\n## Stroll\n\n**walk** was not measured.\n\nEnd\n", made)

    def test_a_plot_has_the_points_of_every_contender_in_order(self):
        now = Figures([figure("peer", 1, size=20), figure("library", 2, size=20), figure("library", 3)])
        kept = {"before": Figures([figure("library", 4)])}
        made, [plot] = self.write("{{plot walk instructions}}\n", now, kept)
        self.assertEqual("![walk: instructions per step](benchmarks/walk-instructions.svg)\n", made)
        self.assertEqual({"library": [(10, 3), (20, 2)], "peer": [(20, 1)], "library, before": [(10, 4)]},
                         plot.series)

    def test_a_place_that_nothing_fills_is_a_mistake(self):
        with self.assertRaises(bench_report.Unreadable):
            self.write("{{wishes}}\n", Figures())


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
        with self.assertRaisesRegex(bench_report.Unreadable, ".jsonl:2: "):
            self.read('{"part": "native", "facts": {}}', "walk, 10")
        with self.assertRaises(bench_report.Unreadable):
            self.read('{"row": "walk"}')


if __name__ == "__main__":
    named_cases.main()
