#!/usr/bin/env python3
"""Which letters and accents are one character."""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests/support")]
import named_cases

SCRIPT = ROOT / "translation/texts/find_compositions.py"


def made():
    """(letter, accent, both) as they are written down."""
    with tempfile.TemporaryDirectory() as folder:
        output = pathlib.Path(folder) / "Compositions.cpp"
        subprocess.run([sys.executable, "-B", SCRIPT, output], check=True)
        rows = re.findall(r"\{0x(\w{4}), 0x(\w{4}), 0x(\w{4})\}", output.read_text(encoding="ascii"))
    return [tuple(int(number, 16) for number in row) for row in rows]


class Compositions(unittest.TestCase):
    def test_letters_of_europe_have_theirs(self):
        rows = {(letter, accent): both for letter, accent, both in made()}
        for letter, accent, both in (("e", 0x301, "é"), ("U", 0x308, "Ü"), ("c", 0x327, "ç"),
                                     ("n", 0x303, "ñ"), ("A", 0x30A, "Å"), ("ο", 0x301, "ό"),
                                     ("и", 0x306, "й")):
            self.assertEqual(ord(both), rows[ord(letter), accent])

    def test_two_accents_are_put_on_one_after_the_other(self):
        rows = {(letter, accent): both for letter, accent, both in made()}
        self.assertEqual(ord("ế"), rows[ord("ê"), 0x301])

    def test_they_are_ordered_and_each_is_told_once(self):
        pairs = [(letter, accent) for letter, accent, _ in made()]
        self.assertEqual(sorted(set(pairs)), pairs)

    def test_what_is_written_otherwise_today_is_none(self):
        characters = {both for _, _, both in made()}
        for other in ("\u212B", "\u0340", "\u0958"):
            self.assertNotIn(ord(other), characters)

    def test_a_missing_argument_is_told(self):
        run = subprocess.run([sys.executable, "-B", SCRIPT], capture_output=True, text=True, check=False)
        self.assertEqual((2, "", "find_compositions.py: called as OUTPUT\n"),
                         (run.returncode, run.stdout, run.stderr))


if __name__ == "__main__":
    named_cases.main()
