#!/usr/bin/env python3
"""The languages that are shipped, as users of the account's finished DLL see them.

    translation_test.py FOLDER             FOLDER: where the DLL and account-session.exe lie
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(SOURCE / "tests/support"))
import named_cases  # noqa: E402

FOLDER = pathlib.Path(sys.argv[1])
EVERYTHING = ("sign-in ok type 4 5 6 menu "
              "create type ok retype nobody nothing 2 3 14 77 13 end").split()
# What only the other library shows.
ROAMING = "Your phone is roaming, and you may incur data charges."


def read_field(field):
    """As the manual tells it: in quotes that double those inside, or as it is; then with its line breaks."""
    if field.startswith('"'):
        field = field[1:-1].replace('""', '"')
    return field.replace("\\n", "\n").replace('\\"', '"')


def read_records(path, encoding="utf-16"):
    """The records of a language file, a harvest or a table, in their order."""
    lines = path.read_text(encoding=encoding).split("\n")
    fields = (line.rstrip("\r").split("\t") for line in lines if "\t" in line)
    return {read_field(text): read_field(translation) for text, translation in fields}


class Sessions(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        shutil.copy(FOLDER / "OrvandeAccount.dll", self.folder)
        self.harvest = self.folder / "Documents/ZRTranslation/OrvandeAccount.txt"
        self.harvest.parent.mkdir(parents=True)

    def session(self, language, *steps):
        """What is shown, in its order."""
        run = subprocess.run([SOURCE / "tools/wine", FOLDER / "account-session.exe", f"Z:{self.folder}",
                              language, *steps],
                             stdin=subprocess.DEVNULL, capture_output=True, check=False)
        shown = run.stdout.decode().replace("\r\n", "\n")
        self.assertEqual((0, b""), (run.returncode, run.stderr), shown)
        return [text.replace("\\n", "\n") for text in shown.splitlines()]


class ShippedLanguages(Sessions):
    def assert_shown(self, language):
        english = self.session("-", *EVERYTHING)
        harvested = set(read_records(self.harvest))
        self.harvest.unlink()
        file = SOURCE / f"languages/{language}.txt"
        records = read_records(file)
        self.assertEqual(harvested | {ROAMING}, set(records))
        shutil.copy(file, self.folder / f"OrvandeAccount.{language}.txt")
        expected = [records[text.replace("77", "%d")].replace("%d", "77") for text in english]
        self.assertEqual(expected, self.session(language, *EVERYTHING))
        self.assertFalse(self.harvest.exists(), "a text is harvested that has a translation")

    def test_french_is_shown_everywhere(self):
        self.assert_shown("French")

    def test_german_is_shown_everywhere(self):
        self.assert_shown("German")


if __name__ == "__main__":
    named_cases.main()
