#!/usr/bin/env python3
"""What tools/bench_report.py makes of figures."""
import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import bench_report
import named_cases
from bench_figures import Figure, Figures, Unreadable


def figure(contender, value, spread=0.0, row="walk", size=10, unit="instructions", **more):
    return Figure(row, contender, size, unit, value, value - spread, value + spread, "step", **more)


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
        self.assertEqual("Top\n\n## Stroll\n\nNot measured: walk.\n\nEnd\n", made)

    def test_rows_that_no_text_knows_come_last(self):
        now = Figures([figure("library", 2, row=row) for row in ("walk", "run", "swim")])
        made, _ = self.write("{{rows run}}\n\nOthers:\n\n{{others}}\n", now)
        self.assertEqual(["**run**, per step:", "Others:", "**swim**, per step:", "**walk**, per step:"],
                         [line for line in made.split("\n") if line.endswith(":") and line[0] != "|"])

    def test_rows_that_are_missing_are_named_together(self):
        now = Figures([figure("library", 2)])
        made, plots = self.write("{{rows swim walk run}}\n\n{{plot run ns}}\n", now)
        self.assertTrue(made.startswith("**walk**"), made)
        self.assertTrue(made.endswith("|\n\nNot measured: swim, run.\n"), made)
        self.assertEqual([], plots)

    def test_a_plot_has_the_points_of_every_contender_in_order(self):
        now = Figures([figure("peer", 1, size=20), figure("library", 2, size=20), figure("library", 3)])
        kept = {"before": Figures([figure("library", 4)])}
        made, [plot] = self.write("{{plot walk instructions}}\n", now, kept)
        self.assertEqual("![walk: instructions per step](benchmarks/walk-instructions.svg)\n", made)
        self.assertEqual({"library": [(10, 3), (20, 2)], "peer": [(20, 1)], "library, before": [(10, 4)]},
                         plot.series)

    def test_a_place_that_nothing_fills_is_a_mistake(self):
        with self.assertRaises(Unreadable):
            self.write("{{wishes}}\n", Figures())


if __name__ == "__main__":
    named_cases.main()
