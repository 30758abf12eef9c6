#!/usr/bin/env python3
"""What tools/fuzz says to wrong arguments and of what its programs do, and whether all that is kept for
targets belongs to one."""
import contextlib
import importlib.machinery
import importlib.util
import io
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDER = ROOT / "tests/fuzz"
TARGETS = {file.name.removesuffix("Fuzz.cpp") for file in FOLDER.glob("*Fuzz.cpp")}
sys.path.append(str(ROOT / "tests/support"))
import named_cases

LOADER = importlib.machinery.SourceFileLoader("fuzz", str(ROOT / "tools/fuzz"))
fuzz = importlib.util.module_from_spec(importlib.util.spec_from_loader("fuzz", LOADER))
LOADER.exec_module(fuzz)


class WrongArguments(unittest.TestCase):
    def assert_refused(self, sentence, *arguments):
        run = subprocess.run([ROOT / "tools/fuzz", *arguments], capture_output=True, text=True, check=False)
        self.assertEqual((2, "", f"fuzz: {sentence}\n"), (run.returncode, run.stdout, run.stderr))

    def test_minutes_are_needed_and_at_most_a_target(self):
        wanted = "wanted is [--far] MINUTES [TARGET] (--help tells more)"
        self.assert_refused(wanted)
        self.assert_refused(wanted, "1", "SearchReply", "FormText")
        self.assert_refused(wanted, "--far")
        self.assert_refused(wanted, "1", "SearchReply", "--far")

    def test_minutes_are_a_number_above_0(self):
        for text in ["0", "-1", "one", "1e3", "10081", "nan", "\u0661", ""]:
            self.assert_refused(f"'{text}' is no number of minutes above 0 and up to 10080", text)

    def test_target_that_does_not_exist_is_told_with_those_that_do(self):
        self.assert_refused(f"there is no target 'Search' ({', '.join(sorted(TARGETS))})", "1", "Search")


class KeptInputs(unittest.TestCase):
    def test_every_target_has_inputs_to_begin_with(self):
        self.assertEqual(TARGETS, {folder.name for folder in (FOLDER / "corpus").iterdir()})

    def test_all_that_is_kept_belongs_to_a_target(self):
        self.assertLessEqual({folder.name for folder in FOLDER.glob("cases/*")}, TARGETS)
        self.assertLessEqual({file.stem for file in FOLDER.glob("dictionaries/*.dict")}, TARGETS)

    def test_inputs_are_small_and_have_names_for_people(self):
        for file in [*FOLDER.glob("corpus/*/*"), *FOLDER.glob("cases/*/*")]:
            self.assertLessEqual(file.stat().st_size, 4096, file)
            self.assertRegex(file.name, r"^[a-z0-9-]+\.[a-z]+$")

    def test_help_is_no_work(self):
        run = subprocess.run([ROOT / "tools/fuzz", "--help"], capture_output=True, text=True, check=False)
        self.assertEqual((0, fuzz.__doc__), (run.returncode, run.stdout))


# A target that tells what it was called with and what libFuzzer would.
PROGRAM = """#!/bin/sh
echo "called with $*"
echo "#1 NEW cov: 120 ft: 3"
echo "#9 NEW cov: 125 ft: 4"
echo "stat::number_of_executed_units: 1000"
echo "stat::average_exec_per_sec:     50"
"""
CRASHES = """for word; do case $word in -artifact_prefix=*) : >"${word#*=}crash-1"; exit 77;; esac; done
"""


class Work(unittest.TestCase):
    """In a project that has two targets, and tools that do nothing but what is said here."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="fuzz.")
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        self.script("tools/setup", "")
        self.script("tools/build", 'echo "$*" >>built')
        for target in ("Bytes", "Words"):
            self.file(f"tests/fuzz/{target}Fuzz.cpp", "")
            for preset in ("fuzz", "fuzz-far"):
                self.script(f"build/{preset}/tests/fuzz/{target}Fuzz", PROGRAM)
        self.file("tests/fuzz/corpus/Words/one.txt", "1")
        self.file("tests/fuzz/dictionaries/Words.dict", "")

    def file(self, name, text):
        path = pathlib.Path(name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def script(self, name, text):
        self.file(name, text if text.startswith("#!") else f"#!/bin/sh\n{text}\n").chmod(0o755)

    def run_fuzz(self, *arguments):
        """Exit code, and what it says."""
        output = io.StringIO()
        with contextlib.redirect_stdout(output), contextlib.redirect_stderr(output), \
                mock.patch.object(fuzz.os, "chdir"), mock.patch.object(fuzz.os, "cpu_count", lambda: 2), \
                mock.patch.object(fuzz.signal, "signal"):
            try:
                code = fuzz.main(list(arguments))
            except SystemExit as end:
                code = end.code
        return code, output.getvalue()

    def test_targets_follow_each_other_and_the_figures_of_all_processes_are_told(self):
        code, said = self.run_fuzz("0.5")
        line = "fuzz: {}: 2000 inputs, 100 a second, under all sanitizers; 125 places reached; 0 too much\n"
        self.assertEqual((0, line.format("Bytes") + line.format("Words")), (code, said))

    def test_target_gets_its_time_its_words_and_what_is_kept(self):
        self.run_fuzz("0.5", "Words")
        called = pathlib.Path("build/fuzz/log/Words-fuzz-0").read_text(encoding="utf-8")
        here = pathlib.Path.cwd().resolve()
        for word in ("-max_total_time=30 ", "-dict=tests/fuzz/dictionaries/Words.dict ",
                     f"{here}/build/fuzz/corpus/Words {here}/tests/fuzz/corpus/Words\n",
                     f"-artifact_prefix={here}/build/fuzz/crashes/Words/ "):
            self.assertIn(word, called)
        self.assertFalse(pathlib.Path("build/fuzz/log/Bytes-fuzz-0").exists())

    def test_far_ones_are_run_once_more_under_all_sanitizers(self):
        code, said = self.run_fuzz("--far", "1", "Words")
        self.assertEqual(0, code)
        self.assertEqual("fuzz-far WordsFuzz\nfuzz WordsFuzz\n", pathlib.Path("built").read_text())
        self.assertRegex(said, "2000 inputs.* one sanitizer.*\n.*1000 inputs.* all sanitizers")
        self.assertIn(" -runs=0 ", pathlib.Path("build/fuzz/log/Words-fuzz-0").read_text(encoding="utf-8"))

    def test_input_that_is_too_much_is_told_with_how_it_is_repeated(self):
        self.script("build/fuzz/tests/fuzz/WordsFuzz", PROGRAM + CRASHES)
        code, said = self.run_fuzz("1", "Words")
        crash = "build/fuzz/crashes/Words/crash-1"
        self.assertEqual(1, code)
        self.assertIn("; 1 too much\n", said)
        self.assertIn(f"fuzz: {crash} is too much; see it once more with: "
                      f"build/fuzz/tests/fuzz/WordsFuzz {crash}\n", said)
        # It is known the next time, and the target fails all the same.
        code, said = self.run_fuzz("1", "Words")
        self.assertEqual(1, code)
        self.assertIn("Words did not come to its end (see build/fuzz/log/Words-fuzz-0)\n", said)

    def test_what_cannot_be_had_is_told(self):
        self.script("tools/build", "exit 1")
        self.assertEqual((2, "fuzz: the targets cannot be built\n"), self.run_fuzz("1"))
        self.script("tools/setup", "exit 1")
        self.assertEqual((2, "fuzz: packages are missing\n"), self.run_fuzz("1"))

    def test_interrupt_ends_the_processes(self):
        self.script("build/fuzz/tests/fuzz/WordsFuzz", "#!/bin/sh\nexec sleep 600\n")
        with mock.patch.object(fuzz.Workers, "wait", side_effect=[KeyboardInterrupt, None]):
            code, _ = self.run_fuzz("1", "Words")
        self.assertEqual(130, code)


if __name__ == "__main__":
    named_cases.main()
