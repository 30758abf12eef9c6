#!/usr/bin/env python3
"""Translators at work: sessions with the account's finished DLL, what these harvest, and what the program for
translators makes of it. And the languages that are shipped, as users see them.

    translation_test.py FOLDER PROGRAM     FOLDER: where the DLL and account-session.exe lie
                                           PROGRAM: orvande-translation
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(SOURCE / "tests/support"))
import named_cases

FOLDER, PROGRAM = (pathlib.Path(argument) for argument in sys.argv[1:3])
EVERYTHING = ("sign-in ok type 4 5 6 menu "
              "create type ok retype nobody nothing 2 3 14 77 13 end").split()
# What only the other library shows.
ROAMING = "Your phone is roaming, and you may incur data charges."
UNKNOWN_USER = ('The User ID is not correct. If you have lost your ID, click the "I Forgot" button. Do not '
                "create more than one account.")


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

    def program(self, *arguments):
        """Runs the translators' program in the session's folder, without a complaint."""
        run = subprocess.run([PROGRAM, *arguments], cwd=self.folder, stdin=subprocess.DEVNULL,
                             capture_output=True, text=True, check=False)
        self.assertEqual((0, "", ""), (run.returncode, run.stdout, run.stderr))


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


class Harvests(Sessions):
    def save_harvest(self, name):
        """As a translator who does not want the next session to overwrite it."""
        self.harvest.rename(self.folder / name)

    def translate(self, name):
        """Puts a translation with quotes and an accent behind every text of a table, as spreadsheets do."""
        table = self.folder / name
        lines = []
        for line in table.read_text(encoding="utf-8").splitlines():
            if "\t" in line:
                field, _, old = line.partition("\t")
                self.assertEqual("XXXX", old)
                new = self.french(read_field(field)).replace('"', '""').replace("\n", "\\n")
                line = f'{field}\t"{new}"'
            lines.append(line + "\n")
        table.write_text("".join(lines), encoding="utf-8")

    @staticmethod
    def french(text):
        return f'É "{text}"'

    def assert_translated(self, english, *steps):
        self.assertEqual([self.french(text.replace("77", "%d")).replace("%d", "77") for text in english],
                         self.session("French", *steps))
        self.assertFalse(self.harvest.exists(), "a text is harvested that was translated")

    def test_texts_of_a_session_are_shown_translated_and_not_harvested_again(self):
        english = self.session("-", *EVERYTHING)
        self.assertIn(f"\n{UNKNOWN_USER}\tXXXX\r\n", self.harvest.read_bytes().decode("utf-16"))
        self.save_harvest("harvest.txt")
        self.program("convert", "harvest.txt", "French.tsv")
        self.translate("French.tsv")
        self.program("convert", "French.tsv", "OrvandeAccount.French.txt")
        self.assert_translated(english, *EVERYTHING)

    def test_harvests_of_two_sessions_are_joined(self):
        steps = "sign-in type 4 menu".split(), "create 2 cancel".split()
        english = []
        harvested = []
        for number, each in enumerate(steps):
            english += self.session("-", *each)
            harvested.append(set(read_records(self.harvest)))
            self.save_harvest(f"{number}.txt")
        self.assertTrue(harvested[0] - harvested[1] and harvested[1] - harvested[0], "they differ")
        self.program("merge", "0.txt", "1.txt", "--output", "French.tsv")
        self.assertEqual(harvested[0] | harvested[1], set(read_records(self.folder / "French.tsv", "utf-8")))
        self.translate("French.tsv")
        # As of an editor for gettext's files.
        self.program("convert", "French.tsv", "French.po")
        self.program("convert", "French.po", "OrvandeAccount.French.txt")
        self.assert_translated(english, *steps[0], *steps[1])


if __name__ == "__main__":
    named_cases.main()
