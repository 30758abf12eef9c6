#!/usr/bin/env python3
"""What tools/soak makes of its words: what is built, and what is soaked with which numbers."""
import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import sys
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools"), str(ROOT / "tests/support")]
import named_cases

LOADER = importlib.machinery.SourceFileLoader("soak", str(ROOT / "tools/soak"))
soak = importlib.util.module_from_spec(importlib.util.spec_from_loader("soak", LOADER))
LOADER.exec_module(soak)


class Words(unittest.TestCase):
    def setUp(self):
        self.failing = None  # the tool that fails
        self.called = []
        for patch in (mock.patch.object(soak.subprocess, "run", self.run_tool),
                      mock.patch.object(soak.signal, "signal"),
                      mock.patch.object(soak.soak_library, "WineSession", contextlib.nullcontext),
                      mock.patch.object(soak.soak_library, "main", mock.Mock(return_value=1)),
                      mock.patch.object(soak.soak_service, "main", mock.Mock(return_value=0))):
            patch.start()
            self.addCleanup(patch.stop)

    def run_tool(self, words, **_):
        self.called.append(" ".join(words))
        return mock.Mock(returncode=int(words[0] == self.failing))

    def soak(self, *arguments):
        """Exit code and both outputs."""
        with contextlib.redirect_stdout(io.StringIO()) as output, \
                contextlib.redirect_stderr(io.StringIO()) as errors:
            try:
                code = soak.main(list(arguments))
            except SystemExit as end:
                code = end.code
        return code, output.getvalue(), errors.getvalue()

    def test_service_is_soaked_for_so_many_minutes(self):
        self.assertEqual((0, "", ""), self.soak("service", "1.5", "--seed", "7"))
        soak.soak_service.main.assert_called_once_with(soak.SERVICE, 90, 7)
        self.assertEqual(["tools/setup native service", "tools/build native orvande-service"], self.called)

    def test_service_is_soaked_for_an_hour_with_any_seed(self):
        self.soak("service")
        self.assertEqual(3600, soak.soak_service.main.call_args[0][1])
        self.assertIn(soak.soak_service.main.call_args[0][2], range(soak.LARGEST_SEED))

    def test_dlls_are_soaked_by_a_scale(self):
        self.assertEqual(1, self.soak("--scale", "2.5", "--plant", "handle", "--seed", "7")[0])
        soak.soak_library.main.assert_called_once_with(soak.SERVICE, soak.PROGRAMS, 7, 2.5, "handle")
        self.assertEqual(["tools/build native orvande-service", "tools/build windows",
                          "tools/build windows-tests orvande-soak"], self.called[1:])

    def test_what_cannot_be_had_ends_it(self):
        self.failing = "tools/build"
        self.assertEqual((1, "", ""), self.soak("service"))
        self.failing = "tools/setup"
        self.assertEqual((2, "", "soak: packages are missing\n"), self.soak())
        soak.soak_service.main.assert_not_called()

    def test_interrupt_ends_it(self):
        soak.soak_service.main.side_effect = KeyboardInterrupt
        self.assertEqual(130, self.soak("service")[0])

    def test_help_tells_how_it_is_called(self):
        self.assertEqual((0, soak.__doc__, ""), self.soak("--help"))


if __name__ == "__main__":
    named_cases.main()
