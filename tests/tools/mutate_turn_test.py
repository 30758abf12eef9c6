#!/usr/bin/env python3
"""Two runs of tools/mutate at once: they share the copy of the project."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools/mutation"), str(ROOT / "tests/support")]
import build
import named_cases

OTHER = """
import sys
sys.path.append(sys.argv[1])
import build
build.Build([], lambda text: print(text, flush=True), 1)
print("its turn")
"""


class Turns(unittest.TestCase):
    def test_second_run_waits_for_the_first(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(scratch.name)
        first = build.Build([], self.fail, 1)
        with subprocess.Popen([sys.executable, "-B", "-c", OTHER, ROOT / "tools/mutation"],
                              stdout=subprocess.PIPE, text=True) as second:
            self.assertEqual("waiting until another run has ended\n", second.stdout.readline())
            first.turn.close()
            self.assertEqual("its turn\n", second.stdout.readline())


if __name__ == "__main__":
    named_cases.main()
