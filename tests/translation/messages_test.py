#!/usr/bin/env python3
"""What `check` says of mistakes stands in the tables of docs/translation-files.md, word for word, with what
to do about it; and what stands there is said.

    messages_test.py PROGRAM               PROGRAM: orvande-translation
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "tests/support"))
import named_cases

PROGRAM = pathlib.Path(sys.argv[1]).resolve()
PAGE = (SOURCE / "docs/translation-files.md").read_text(encoding="utf-8")
CHECKING = PAGE.partition("\n## What check says\n")[2].partition("\n## ")[0]
MESSAGE = re.compile(r"^\| `(.*?)` \| ", re.MULTILINE)
VARIABLE = re.compile(r"FILE|LETTER|TEXT|OTHER|NUMBER|PLACE|PROGRAM|LIST|TRANSLATION|NAME|FIELD|GARBAGE|WORD")
SAID = re.compile(r"^[^:]+:(?:\d+:)? error: (.*)$", re.MULTILINE)
# No text of this version has an access key, so nothing can be wrong with one.
NOT_SAID_TODAY = {"the access key is lost: write & before a letter, as in 'TEXT'",
                  "more than one & underlines a letter; 'TEXT' has one"}
# Literals of three words and more that are no messages: what stands for PLACE and FIELD, faults of this
# computer, and the head of a new .po file.
NO_MESSAGES = re.compile(r"(a|the) (soft key|menu|caption|message) on a screen|for each quote in it|"
                         r"in memory|MIME-Version|texts, complete|convert IN OUT|merge OLD NEW")
# What holds quotes and is no string; a string, and whether one follows that continues it.
CODE = re.compile(r"""/\*.*?\*/|//[^\n]*|#include[^\n]*|u?'(?:[^'\\\n]|\\.)'|"""
                  r'''"((?:[^"\\\n]|\\.)*)"(?=(\s*\n\s*")?)''', re.DOTALL)
ENGLISH_QUOTES = 'The Password is not correct. If you have lost your password, click the "I Forgot" button.'
PO_HEAD = 'msgid ""\nmsgstr "Content-Type: text/plain; charset=UTF-8\\n"\n\n'


def language_file(text):
    return b"\xff\xfe" + text.encode("utf-16-le")


# A file for each message, or several.
MISTAKES = {
    "not-translated.tsv": b"# Head\n\nMenu\tXXXX\n",
    "empty.tsv": b"Menu\t\n",
    "similar.tsv": b"User Id\tUtente\n",
    "unknown.tsv": b"Lighthouse of Alexandria\tFaro\n",
    "twice.tsv": b"Menu\tMenu\nMenu\tElenco\n",
    "guess.tsv": b"# Head\n\n#, fuzzy\nMenu\tMenu\n",
    "placeholder.tsv": b"The server returned error code %d\tErrore %s\n",
    "ampersand.tsv": b"Menu\tA & B\n",
    "two-ampersands.tsv": b"Internal server error\tA && B\n",
    "never-used.tsv": b"New Users:\tA\nNew Users\tB\n",
    "accent.tsv": "Menu\tMenu\u0301\n".encode(),
    "accent-alone.tsv": "Menu\tMex\u0301nu\n".encode(),
    "made-of-bytes.tsv": "Menu\tMenÃ¼\n".encode(),
    "unreadable.tsv": "Menu\tMe\u00ADnu\n".encode(),
    "narrow-blank.tsv": "Menu\tMe\u202Fnu\n".encode(),
    "backslash.tsv": b"Internal server error\tA\\\\nB\n",
    "name.tsv": b"Menu\tElenco\nSelect Menu / New Account\tAltro\n",
    "line-break.tsv": b"Menu\tMe\\nnu\n",
    "too-wide.tsv": b"Menu\t" + 40 * b"W" + b"\n",
    "word-too-wide.tsv": b"Internal server error\t" + 60 * b"W" + b"\n",
    "too-many-lines.tsv": b"Internal server error\t" + 90 * b"WWWW WWWW " + b"\n",
    "no-tab.tsv": b"Menu Menu\n",
    "no-text.tsv": b'"\tMenu\n',
    "quotes-in-text.tsv": f"{ENGLISH_QUOTES}\tPassword\n".encode(),
    "quotes-in-translation.tsv": b'Menu\tIl "menu"\n',
    "left-open.tsv": b'Menu\t"Me\nnu"\n',
    "carriage-return.tsv": b"Menu\tMe\rnu\n",
    "second-tab.tsv": b"Menu\tMenu\t\n",
    "lines-of-cr.tsv": b"Menu\tMenu\rForgot\tForgot\r",
    "code-page.tsv": b"Menu\tMen\xf9\n",
    "nul.tsv": b"Menu\tMe\0nu\n",
    "obsolete-empty.tsv": b'# Head\n\n#~ "\n#~ Menu\n',
    "obsolete-alone.tsv": b"# Head\n\n#~ Log in\n\nMenu\tMenu\n",
    "utf-8.txt": "Menu\tMenù\n".encode(),
    "utf-8-mark.txt": b"\xef\xbb\xbfMenu\tMenu\n",
    "not-latin.txt": "Menu\tМеню\n".encode("cp1251"),
    "no-mark.txt": language_file("Menu\tMenu\r\n")[2:],
    "big-endian.txt": b"\xfe\xff" + "Menu\tMenu\r\n".encode("utf-16-be"),
    "odd.txt": language_file("Menu\tMenu\r\n") + b"x",
    "unknown-bytes.txt": b"Menu\tMen\x80\n",
    "harvest.txt": language_file("Menu\tXXXX\r\n"),
    "po.txt": PO_HEAD.encode() + b'msgid "Menu"\nmsgstr "Menu"\n',
    "utf-16.po": language_file("Menu\tMenu\r\n"),
    "table.po": b"Menu\tMenu\n",
    "bytes.po": PO_HEAD.encode() + b'msgid "Menu"\nmsgstr "Men\xf9"\n',
    "charset.po": PO_HEAD.replace("UTF-8", "ISO-8859-1").encode() + b'msgid "Menu"\nmsgstr "Menu"\n',
    "mislabelled.po": (PO_HEAD.replace("UTF-8", "ISO-8859-1") + 'msgid "Menu"\nmsgstr "Menù"\n').encode(),
    "carriage-return.po": PO_HEAD.encode() + b'msgid "Menu"\nmsgstr "Me\\rnu"\n',
    "two.po": PO_HEAD.encode() + b'msgctxt "A"\nmsgid "Menu"\nmsgstr "Menu"\n\n'
                                 b'msgctxt "B"\nmsgid "Menu"\nmsgstr "Elenco"\n',
    "plural.po": PO_HEAD.encode() + b'msgid "Menu"\nmsgid_plural "Menus"\nmsgstr[0] "A"\nmsgstr[1] "B"\n',
    "domain.po": PO_HEAD.encode() + b'domain "other"\nmsgid ""\nmsgstr ""\n"Content-Type: text/plain; '
                                    b'charset=UTF-8\\n"\n\nmsgid "Menu"\nmsgstr "Menu"\n',
    "no-text.po": PO_HEAD.encode() + b'msgctxt "A"\nmsgid ""\nmsgstr "B"\n',
    "escape.po": PO_HEAD.encode() + b'msgid "Menu"\nmsgstr "Men\\371"\n',
}


def pattern_of(message):
    """What the message of the page may be in the program's output."""
    fixed = VARIABLE.split(message)
    return re.compile(".+".join(map(re.escape, fixed)))


def literals_of(source):
    """The strings of a source in C++, each with those in the lines below that continue it."""
    literals = [""]
    for match in CODE.finditer(source):
        if match[1] is not None:
            literals[-1] += re.sub(r"\\([\\\"])", r"\1", match[1])
            if not match[2]:
                literals.append("")
    return literals


def words_of_messages():
    """What stands between the variables of all messages about files, by the source that it is from."""
    folder = SOURCE / "translation"
    for pattern in ("check/*.cpp", "files/Po*.cpp", "files/Table*.cpp", "files/CatalogueBuilder.cpp",
                    "CheckCommand.cpp", "ConvertCommand.cpp", "MergeCommand.cpp"):
        for file in sorted(folder.glob(pattern)):
            for literal in literals_of(file.read_text(encoding="utf-8")):
                for words in re.split(r"%[a-z]+|\\n$|: note: ", literal):
                    if len(words.split()) >= 3 and not NO_MESSAGES.search(words):
                        yield file.name, words.strip()


class Messages(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.on_page = MESSAGE.findall(CHECKING)
        cls.said = {}
        with tempfile.TemporaryDirectory() as folder:
            for name, data in MISTAKES.items():
                (pathlib.Path(folder) / name).write_bytes(data)
                run = subprocess.run([PROGRAM, "check", name], cwd=folder, stdin=subprocess.DEVNULL,
                                     capture_output=True, check=False)
                cls.said[name] = (run.returncode, SAID.findall(run.stderr.decode()))

    def test_mistakes_end_with_1(self):
        self.assertEqual([], [name for name, (code, said) in self.said.items() if code != 1 or not said])

    def test_what_is_said_is_on_the_page(self):
        patterns = [pattern_of(message) for message in self.on_page]
        self.assertEqual([], [(name, sentence) for name, (_, said) in self.said.items() for sentence in said
                              if not any(pattern.fullmatch(sentence) for pattern in patterns)])

    def test_the_page_has_the_words_of_every_message(self):
        everything = list(words_of_messages())
        self.assertLess(50, len(everything))
        self.assertEqual([], [(name, words) for name, words in everything if words not in PAGE])

    def test_what_is_on_the_page_is_said(self):
        everything = [sentence for _, said in self.said.values() for sentence in said]
        self.assertEqual([], [message for message in self.on_page if message not in NOT_SAID_TODAY
                              and not any(map(pattern_of(message).fullmatch, everything))])

    def test_what_no_text_of_today_can_cause_is_in_the_program(self):
        self.assertEqual(set(), NOT_SAID_TODAY - set(self.on_page))
        code = PROGRAM.read_bytes()
        for message in NOT_SAID_TODAY:
            for words in re.split(VARIABLE.pattern + "|'", message):
                self.assertIn(words.encode(), code)

    def test_all_messages_are_different(self):
        self.assertEqual(sorted(set(self.on_page)), sorted(self.on_page))


class Mending(unittest.TestCase):
    """The commands that the tables name."""

    def mend(self, program, old, data):
        """What `check` says of the file that the command makes of an old one."""
        command, = re.findall(f"`({program} [^`]*)`", CHECKING)
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / old).write_bytes(data)
            words = [PROGRAM if word == "tools/translation" else word for word in command.split()]
            subprocess.run(words, cwd=folder, stdin=subprocess.DEVNULL, check=True,
                           env={**os.environ, "LC_ALL": "C"})
            run = subprocess.run([PROGRAM, "check", old.replace("Old", "New")], cwd=folder,
                                 stdin=subprocess.DEVNULL, capture_output=True, check=False)
        said = SAID.findall(run.stderr.decode())
        return [sentence for sentence in said if "is missing" not in sentence]

    def test_accents_become_letters(self):
        table = "Menu\tMenu\u0300\n".encode()
        self.assertEqual([], self.mend("uconv", "Old.tsv", table))

    def test_quotes_are_doubled(self):
        table = f'{ENGLISH_QUOTES}\tScegli "Dati".\n'.encode()
        self.assertEqual([], self.mend("tools/translation", "Old.tsv", table))

    def test_another_charset_becomes_utf_8(self):
        messages = PO_HEAD.replace("UTF-8", "ISO-8859-1") + 'msgid "Menu"\nmsgstr "Menù"\n'
        self.assertEqual([], self.mend("msgconv", "Old.po", messages.encode("latin-1")))


if __name__ == "__main__":
    named_cases.main()
