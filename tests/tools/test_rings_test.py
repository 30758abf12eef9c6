#!/usr/bin/env python3
"""What tools/test_rings.py makes of rings whose builds and tests do only what is said here."""
import contextlib
import io
import os
import pathlib
import re
import sys
import tempfile
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools"), str(ROOT / "tests/support")]
import named_cases
import test_rings

WELL = """echo 'cases: 2'
echo '[==========] Running 2 tests from'
for name in A.a A.b; do echo "[ RUN      ] $name"; echo "[       OK ] $name (0 ms)"; done
"""
BADLY = """echo '[==========] Running 2 tests from'
echo '[ RUN      ] A.a'; echo '[       OK ] A.a (0 ms)'
echo '[ RUN      ] A.b'; echo 'wrong, and why'; echo '[  FAILED  ] A.b (0 ms)'
exit 1
"""


class Rings(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="rings.")
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        self.tool("tools/setup", 'echo "$*" >parts')
        self.tool("tools/run-ring", WELL)
        self.tool("tools/lint", WELL)
        self.tool("tools/build", "echo '[3/7]' $*")
        rings = {"native": (["native"], [("native", "all")]),
                 "device": (["device", "native"], [("native", "one"), ("device", "all")]),
                 "lint": (["lint"], [])}
        for patch in (mock.patch.object(test_rings, "RINGS", rings),
                      mock.patch.object(test_rings.signal, "signal")):
            patch.start()
            self.addCleanup(patch.stop)

    @staticmethod
    def tool(name, text):
        path = pathlib.Path(name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(f"#!/bin/sh\n{text}\n", encoding="ascii")
        path.chmod(0o755)

    def run_rings(self, *arguments):
        """Exit code, output and errors."""
        with contextlib.redirect_stdout(io.StringIO()) as output, \
                contextlib.redirect_stderr(io.StringIO()) as errors:
            code = test_rings.main(list(arguments))
        return code, output.getvalue(), errors.getvalue()

    def test_all_are_built_and_tested_in_their_order(self):
        code, output, errors = self.run_rings()
        self.assertEqual((0, ""), (code, errors))
        self.assertTrue(output.endswith("\n6 passed, 0 failed\n"), output)
        self.assertEqual(["native", "device", "lint"], re.findall(r"(?m)^(\w+) +2 +0 ", output))
        self.assertEqual("device lint native\n", pathlib.Path("parts").read_text())
        self.assertEqual("[3/7] device all --log -\n", pathlib.Path("build/log/build-device").read_text())

    def test_named_ones_alone_are_run(self):
        _, output, _ = self.run_rings("native")
        self.assertIn("test: native: 2 passed, 0 failed\n", output)
        self.assertNotIn("lint", output)

    def test_failed_cases_and_what_was_measured_are_shown(self):
        self.tool("tools/run-ring", f"echo 'figure: 7 of 9'\n{BADLY}")
        code, output, _ = self.run_rings("native")
        self.assertEqual(1, code)
        for line in ("wrong, and why", "test: native: 7 of 9", "test: native: 1 passed, 1 failed",
                     "test: native: the whole output is in build/log/test-native", "1 passed, 1 failed"):
            self.assertIn(f"{line}\n", output)

    def test_build_that_fails_is_one_failure_and_its_log_is_shown(self):
        self.tool("tools/build", "echo 'no such header'; exit 1")
        code, output, errors = self.run_rings("device", "lint")
        self.assertEqual(1, code)
        self.assertIn("no such header\n\n"
                      "test: device: not built (the whole output: build/log/build-native)\n", errors)
        self.assertTrue(output.endswith("\n2 passed, 1 failed\n"), output)

    def test_tests_that_end_badly_or_are_none_have_failed(self):
        self.tool("tools/run-ring", "echo '[==========] Running 0 tests from'; exit 0")
        code, _, errors = self.run_rings("native")
        self.assertEqual(1, code)
        self.assertIn("native: no test was run", errors)
        self.tool("tools/run-ring", f"{WELL}\nexit 9")
        code, output, _ = self.run_rings("native")
        self.assertEqual(1, code)
        self.assertRegex(output, r"\d passed, [1-9]\d* failed\n$")

    def test_filter_reaches_the_tests_and_has_to_match(self):
        self.tool("tools/run-ring", f'[ "$GTEST_FILTER" = "A.*" ] || exit 1\n{WELL}')
        self.assertEqual(0, self.run_rings("native", "A.*")[0])
        self.tool("tools/run-ring", "echo '[==========] Running 0 tests from'")
        code, _, errors = self.run_rings("native", "B.*")
        self.assertEqual((1, "test: no case matches 'B.*'\n"), (code, errors))

    def test_a_filter_of_the_environment_is_not_taken(self):
        self.tool("tools/run-ring", f'[ -z "${{GTEST_FILTER:-}}" ] || exit 1\n{WELL}')
        with mock.patch.dict(os.environ, {"GTEST_FILTER": "none"}):
            self.assertEqual(0, self.run_rings("native")[0])

    def test_wrong_arguments_are_told(self):
        for arguments, sentence in ((["natve"], "there is no ring 'natve' (native, device, lint)"),
                                    (["native", "--all"], "there is no ring '--all' (native, device, lint)"),
                                    (["lint", "A.*"], "lint has no cases to choose from")):
            self.assertEqual((2, "", f"test: {sentence}\n"), self.run_rings(*arguments))

    def test_packages_that_are_missing_end_it(self):
        self.tool("tools/setup", "exit 1")
        self.assertEqual((1, "", "test: packages are missing\n"), self.run_rings("native"))

    def test_interrupt_ends_what_runs(self):
        self.tool("tools/run-ring",
                  "trap 'echo ended >end; exit 1' TERM; : >begun; while :; do sleep 0.01; done")

        sleep, interrupts = test_rings.time.sleep, [KeyboardInterrupt]

        def interrupt(seconds):
            if interrupts and pathlib.Path("begun").exists():
                raise interrupts.pop()
            sleep(seconds)

        with mock.patch.object(test_rings.time, "sleep", interrupt):
            self.assertEqual(130, self.run_rings("native")[0])
        self.assertEqual("ended\n", pathlib.Path("end").read_text())

    def test_build_that_waits_for_another_one_says_so(self):
        self.tool("tools/build", f"echo '{test_rings.WAITING} it has ended'; sleep 0.3")
        with mock.patch.object(test_rings, "SECONDS_BETWEEN_REPORTS", 0):
            self.assertIn("test: native: waiting for another build\n", self.run_rings("native")[1])

    def test_progress_is_one_line_on_a_terminal_and_a_line_now_and_then_elsewhere(self):
        ring = mock.Mock(progress="3 of 7 cases")
        ring.name = "native"
        display = test_rings.Display()
        with contextlib.redirect_stdout(io.StringIO()) as output:
            display.show([ring])
            display.last -= test_rings.SECONDS_BETWEEN_REPORTS
            display.show([ring])
            display.show([ring])
            display.is_terminal, display.shown = True, ""
            display.show([ring])
            display.show([ring])
            display.clear()
        self.assertEqual("test: native: 3 of 7 cases\n\r\033[Knative: 3 of 7 cases\r\033[K",
                         output.getvalue())


if __name__ == "__main__":
    named_cases.main()
