#!/usr/bin/env python3
"""What tools/screenshots says to wrong arguments, before it builds anything."""
import pathlib
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests/support"))
import named_cases


class WrongArguments(unittest.TestCase):
    def assert_refused(self, sentence, *arguments):
        run = subprocess.run([ROOT / "tools/screenshots", *arguments], capture_output=True, text=True,
                             check=False)
        self.assertEqual((2, "", f"screenshots: {sentence}\n"), (run.returncode, run.stdout, run.stderr))

    def test_a_language_needs_a_file_and_a_folder(self):
        self.assert_refused("--language takes a file and a folder", "--language", "languages/French.txt")
        self.assert_refused("there is no file 'none.txt'", "--language", "none.txt", "pictures")

    def test_other_options_and_a_second_folder_are_told(self):
        usage = "usage: tools/screenshots [FOLDER], or --language FILE FOLDER"
        self.assert_refused(usage, "--size")
        self.assert_refused(usage, "one", "two")


if __name__ == "__main__":
    named_cases.main()
