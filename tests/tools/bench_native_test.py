#!/usr/bin/env python3
"""How tools/bench_native.py calls its programs and reads what they print."""
import os
import pathlib
import sys
import tempfile
import unittest
from unittest import mock

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


BENCHMARKS = """case $1 in
list) echo "walk 10"; echo "walk 90 growth" ;;
counts) echo "items 10"; echo "per step" ;;
times) echo '{"context": {"items": "10", "per": "step"}, "benchmarks": [
  {"run_name": "library", "run_type": "iteration", "real_time": 40},
  {"run_name": "library", "run_type": "iteration", "real_time": 40}]}' ;;
esac"""
VALGRIND = """for word; do case $word in --callgrind-out-file=*) counts=${word#*=};; esac; done
echo "desc: Trigger: Client Request: library" >"$counts.1"
echo "summary: 1234" >>"$counts.1"
shift 3
exec "$@\""""
PROGRAMS = {"benchmarks": BENCHMARKS, "allocations": 'printf "items 10\\nper step\\n20 500 library\\n"',
            "valgrind": VALGRIND, "tools/build": "", "dpkg-query": "echo 1.2", "g++": "echo g++ 12",
            "git": '[ "$1" = status ] || echo 0123456789'}


class Measured(unittest.TestCase):
    """With programs that print what is said here."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="bench.")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        for name, text in PROGRAMS.items():
            self.program(name, text)
        for patch in (mock.patch.multiple(bench_native, FOLDER=self.folder,
                                          PROGRAM=str(self.folder / "benchmarks"),
                                          HEAP_PROGRAM=str(self.folder / "allocations")),
                      mock.patch.dict(os.environ, {"PATH": f"{folder.name}:{os.environ['PATH']}"})):
            patch.start()
            self.addCleanup(patch.stop)

    def program(self, name, text):
        (self.folder / name).parent.mkdir(exist_ok=True)
        (self.folder / name).write_text(f"#!/bin/sh\n{text}\n", encoding="ascii")
        (self.folder / name).chmod(0o755)

    def measured(self, effort):
        said = []
        found = bench_native.measure(effort, said.append)
        return said, [(one["size"], one["unit"], one["value"], one["per"]) for one in found]

    def test_instructions_allocations_bytes_and_times_are_those_of_one_thing(self):
        said, found = self.measured("quick")
        self.assertEqual(["walk, 10"], said)
        self.assertEqual([(10, "instructions", 123.4, "step"), (10, "calls", 2, "step"),
                          (10, "bytes", 50, "step"), (10, "ns", 4, "step")], found)

    def test_sizes_for_plots_are_measured_when_there_is_time(self):
        said, found = self.measured("full")
        self.assertEqual(["walk, 10", "walk, 90"], said)
        # Of 90 things 10 are done at a time, and none of them is kept.
        self.assertIn((90, "bytes", 500, "step"), found)

    def test_program_that_fails_is_told_with_what_it_said(self):
        self.program("allocations", "echo no memory; exit 1")
        with self.assertRaisesRegex(bench_native.Broken, "^/.*/allocations walk 10 .*\nno memory\n$"):
            self.measured("quick")
        self.program("tools/build", "exit 1")
        with self.assertRaisesRegex(bench_native.Broken, "^the programs cannot be built$"):
            self.measured("quick")

    def test_count_that_is_missing_is_told(self):
        self.program("valgrind", "shift 3; exec \"$@\"")
        with self.assertRaisesRegex(bench_native.Broken, "callgrind has counted nothing of walk, 10"):
            self.measured("quick")

    def test_facts_tell_what_was_measured(self):
        (self.folder / "benchmarks").unlink()
        boost = self.folder / "benchmarks/boost"
        boost.mkdir(parents=True)
        (boost / "libboost-url1_1.81%3a2_all.deb").touch()
        facts = bench_native.facts("quick")
        self.assertEqual(("0123456789", "tools/bench native --quick", "g++ 12, -O2", "1.2", "1.81:2"),
                         tuple(facts[name] for name in
                               ("Library", "Command", "Compiler", "valgrind", "Boost.URL")))
        self.program("git", '[ "$1" = status ] && echo " M src/a.cpp" || echo 0123456789')
        self.assertEqual("0123456789, with changes", bench_native.facts("full")["Library"])


if __name__ == "__main__":
    named_cases.main()
