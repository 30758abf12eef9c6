#!/usr/bin/env python3
"""How tools/bench_native.py reads what its programs print."""
import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools"), str(ROOT / "tests/support")]
import bench_native
import named_cases


def repetition(contender, time, kind="iteration"):
    return {"run_name": contender, "run_type": kind, "real_time": time}


class Dumps(unittest.TestCase):
    def dumped(self, texts):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in texts.items():
                pathlib.Path(folder, name).write_text(text)
            return list(bench_native.dumped(pathlib.Path(folder)))

    def test_each_contender_has_one_in_the_order_of_their_numbers(self):
        texts = {f"counts.{number}": f"desc: Trigger: Client Request: peer {number}\nsummary: {number}00\n"
                 for number in (10, 9, 1)}
        self.assertEqual([("peer 1", 100), ("peer 9", 900), ("peer 10", 1000)], self.dumped(texts))

    def test_what_was_counted_at_the_programs_end_is_nobodys(self):
        self.assertEqual([], self.dumped({"counts.1": "desc: Trigger: Program termination\nsummary: 5\n"}))


class Times(unittest.TestCase):
    def timed(self, *repetitions):
        context = {"items": "10", "per": "step"}
        return list(bench_native.timed("walk", 7, {"context": context, "benchmarks": repetitions}))

    def test_the_median_and_the_middle_half_of_the_repetitions_count(self):
        [found] = self.timed(*(repetition("peer", time) for time in (50, 10, 40, 30, 1000)))
        self.assertEqual((3.0, 5.0, 4.0), (found["low"], found["high"], found["value"]))
        self.assertEqual(("walk", "peer", 7, "ns", "step"),
                         tuple(found[name] for name in ("row", "contender", "size", "unit", "per")))

    def test_contenders_are_kept_apart_and_aggregates_left_out(self):
        found = self.timed(repetition("b", 20), repetition("a", 10), repetition("b", 20), repetition("a", 10),
                           repetition("a", 990, "aggregate"))
        self.assertEqual([("a", 1.0), ("b", 2.0)], [(one["contender"], one["value"]) for one in found])


class Rows(unittest.TestCase):
    def test_the_programs_tell_how_many_things_a_contender_does(self):
        self.assertEqual((100, "map entry"), bench_native.items_of("items 100\nper map entry\n3 5 library\n"))


if __name__ == "__main__":
    named_cases.main()
