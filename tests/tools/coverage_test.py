#!/usr/bin/env python3
"""What tools/coverage says of a made-up project with one source and one script, and of wrong arguments."""
import contextlib
import fcntl
import importlib.machinery
import importlib.util
import io
import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
SUPPORT = ROOT / "tests/support"
sys.path[:0] = [str(ROOT / "tools"), str(SUPPORT)]
import named_cases
from coverage_figures import Build, House, Scripts

LOADER = importlib.machinery.SourceFileLoader("coverage_tool", str(ROOT / "tools/coverage"))
tool = importlib.util.module_from_spec(importlib.util.spec_from_loader("coverage_tool", LOADER))
LOADER.exec_module(tool)

SOURCE = "int main(int count, char**) {\n    if (count > 1)\n        return 0;\n    return 0;\n}\n"
SCRIPT = "#!/usr/bin/python3\nimport sys\nif len(sys.argv) > 1:\n    print()\n"
WHOLE = Build((House("src", 100, 100), Scripts("tools", 100)), "gcov")


class Project(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="coverage.")
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        for name, text in {"src/a.cpp": SOURCE, "tools/a": SCRIPT, "tools/b": "#!/bin/sh\n"}.items():
            pathlib.Path(name).parent.mkdir(exist_ok=True)
            pathlib.Path(name).write_text(text, encoding="ascii")
        for patch in (mock.patch.object(tool.os, "chdir"),
                      mock.patch.object(tool, "listed", lambda *_: ["src/a.cpp", "tools/a", "tools/b"])):
            patch.start()
            self.addCleanup(patch.stop)

    def call(self, *arguments, build=WHOLE):
        """Exit code, output and errors."""
        with contextlib.redirect_stdout(io.StringIO()) as output, \
                contextlib.redirect_stderr(io.StringIO()) as errors, \
                mock.patch.dict(tool.coverage_figures.BUILDS, {"made-up": build}):
            try:
                code = tool.main(list(arguments))
            except SystemExit as end:
                code = end.code
        return code, output.getvalue(), errors.getvalue()

    def compile(self):
        place = pathlib.Path("build/made-up/src/CMakeFiles/a.dir")
        place.mkdir(parents=True)
        subprocess.run(["g++", "--coverage", "-c", "src/a.cpp", "-o", place / "a.cpp.o"], check=True)
        subprocess.run(["g++", "--coverage", place / "a.cpp.o", "-o", "build/a"], check=True)

    def run_both(self, *arguments):
        environment = os.environ | {"PYTHONPATH": str(SUPPORT),
                                    "COVERAGE_PROCESS_START": "build/counts/made-up/settings"}
        subprocess.run(["build/a", *arguments], check=True)
        subprocess.run(["/usr/bin/python3", "tools/a", *arguments], check=True, env=environment,
                       stdout=subprocess.DEVNULL)

    def test_all_that_runs_is_well_and_what_does_not_is_named(self):
        self.compile()
        self.assertEqual((0, "", ""), self.call("made-up", "--clear"))
        self.run_both()
        code, output, errors = self.call("made-up")
        self.assertEqual((1, ""), (code, errors))
        self.assertIn("[ RUN      ] Coverage.src\nsrc/a.cpp:2: 1 of 2 branches not taken\n"
                      "src/a.cpp:3: this line is not run\n", output)
        self.assertIn("tools/a:4: this line is not run\n", output)
        self.assertIn("[  FAILED  ] Coverage.scripts-of-tools (0 ms)\n", output)
        self.assertEqual(3, pathlib.Path("build/counts/made-up/not-run").read_text().count("\n"))
        pathlib.Path("tools/a").write_text(f"{SCRIPT}if False:  # GCOVR_EXCL_LINE: never\n    print()\n")
        self.run_both("more")
        code, output, _ = self.call("made-up")
        self.assertEqual(0, code, output)
        self.assertIn("figure: src: 4 of 4 (100.0 %) lines, 2 of 2 (100.0 %) branches; "
                      "wanted: 100 % and 100 %\nfigure: scripts of tools: 3 of 3 (100.0 %) lines;", output)

    def test_cleared_counts_are_gone(self):
        self.compile()
        self.call("made-up", "--clear")
        self.run_both()
        self.call("made-up", "--clear")
        self.assertEqual((2, "", "coverage: build/made-up has no counts: configure it anew (cmake --preset "
                          "made-up), build it, and run its tests\n"), self.call("made-up"))
        only_scripts = Build((Scripts("tools", 100),))
        self.assertEqual((2, "", "coverage: build/counts/made-up has no counts: run the tests of the ring\n"),
                         self.call("made-up", build=only_scripts))

    def test_counter_that_fails_is_told(self):
        self.compile()
        self.call("made-up", "--clear")
        self.run_both()
        code, _, errors = self.call("made-up", build=Build(WHOLE.houses, "none"))
        self.assertEqual(2, code)
        self.assertRegex(errors, "\ncoverage: gcovr ended with \\d+\n$")

    def test_report_that_nobody_can_read_is_told(self):
        self.compile()
        self.call("made-up", "--clear")
        self.run_both()
        with mock.patch.object(tool, "run_counter"):
            pathlib.Path("build/counts/made-up/compiled.json").write_text("{}", encoding="ascii")
            self.assertEqual((2, "", "coverage: this is no report of gcovr (KeyError: 'files')\n"),
                             self.call("made-up"))

    def test_second_one_waits_for_the_first(self):
        pathlib.Path("build/counts").mkdir(parents=True)
        with open("build/counts/lock", "wb") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            second = threading.Thread(target=lambda: said.append(self.call("made-up", "--clear")))
            said = []
            second.start()
            second.join(0.2)
            self.assertEqual([], said)
        second.join()
        self.assertEqual([(0, "", "coverage: another tools/coverage is at work here; waiting for its end\n")],
                         said)


class Arguments(unittest.TestCase):
    def assert_refused(self, sentence, *arguments):
        run = subprocess.run([ROOT / "tools/coverage", *arguments], capture_output=True, text=True,
                             check=False)
        self.assertEqual((2, "", f"coverage: {sentence}\n"), (run.returncode, run.stdout, run.stderr))

    def test_build_that_is_not_counted_is_told_with_those_that_are(self):
        builds = ", ".join(tool.coverage_figures.BUILDS)
        for name in ("native", "--clear", ""):
            self.assert_refused(f"'{name}' is no build that is counted ({builds})", name)

    def test_only_counts_can_be_cleared(self):
        for others in (["x"], ["--clear", "x"], ["--clear", "--clear"]):
            self.assert_refused("wanted is [BUILD [--clear]] (--help tells more)", "coverage", *others)

    def test_help_tells_how_it_is_called(self):
        run = subprocess.run([ROOT / "tools/coverage", "--help"], capture_output=True, text=True, check=False)
        self.assertEqual((0, tool.__doc__), (run.returncode, run.stdout))


if __name__ == "__main__":
    named_cases.main()
