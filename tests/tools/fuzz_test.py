#!/usr/bin/env python3
"""What tools/fuzz says to wrong arguments, and whether all that is kept for targets belongs to one."""
import pathlib
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDER = ROOT / "tests/fuzz"
TARGETS = {file.name.removesuffix("Fuzz.cpp") for file in FOLDER.glob("*Fuzz.cpp")}
sys.path.append(str(ROOT / "tests/support"))
import named_cases


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


if __name__ == "__main__":
    named_cases.main()
