#!/usr/bin/env python3
"""On which screens texts are, and what has no place."""
import pathlib
import subprocess
import sys
import tempfile
import types
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests/support"), str(ROOT / "translation/texts")]
import named_cases
from cpp_source import Mistake
from find_texts import EVERYWHERE, Finder, Place, generated, literal
from resource_texts import Control, Dialog

FILES = {
    "src/ui/Lookup.cpp": """
const WideString& TranslationCatalogue::Translate(const WideString& text) { return Find(text); }
bool ReadsArgumentsOf(const WCHAR* original, const WCHAR* format) { return original == format; }
int Show(const WideString& text) { return Box(catalogue.Translate(text)); }
""",
    "src/ui/Dialog.h": "class Dialog { uint32_t menuBarId = PLAIN_BAR; };",
    "src/Entry.cpp": 'void Begin() {\n    SetMessageBoxCaption(catalogue.Translate(L"Sample"));\n}\n',
    "src/Log.cpp": "LogDialog::LogDialog() : Dialog(LOG_DIALOG) { menuBarId = LOG_BAR; }\n"
                   'void f() { Show(L"Full"); }\n',
    "src/Ask.cpp": "AskDialog::AskDialog() : Dialog(ASK_DIALOG) {}\n"
                   'void g() { Show(L"No"); Show(L"Full"); }\n',
    "src/Ids.h": "#define LOG_DIALOG 1\n#define ASK_DIALOG 2\n#define LOG_BAR 3\n#define PLAIN_BAR 4\n",
    "src/Ui.rc": """
STRINGTABLE
BEGIN
    9 "OK"
    10 "Log \"\"it\"\""
END
LOG_BAR MENU
BEGIN
    MENUITEM "OK", 1
END
PLAIN_BAR MENU
BEGIN
    MENUITEM "OK", 1
END
LOG_DIALOG DIALOG 0, 0, 100, 90
CAPTION "Log"
BEGIN
    LTEXT "File", -1, 1, 2, 67, 8
END
ASK_DIALOG DIALOG 0, 0, 100, 90
CAPTION "Ask"
BEGIN
    LTEXT "File", -1, 1, 2, 50, 8
END
""".replace('\\"', '"'),
}
SCREENS = {"LOG_DIALOG": "The log", "ASK_DIALOG": "A question"}
SOURCES = {"src/Entry.cpp": EVERYWHERE}


def resources():
    return types.SimpleNamespace(
        dialogs={1: Dialog("Log", [Control("Label", "File", 67, 8)]),
                 2: Dialog("Ask", [Control("Label", "File", 50, 8)])},
        menus={3: ["OK"], 4: ["OK"]}, menu_bars={3: [9, 10], 4: [9]}, strings={9: "OK", 10: 'Log "it"'})


def find(files=None, made=None, screens=None, sources=None):
    return Finder(FILES | (files or {}), made or resources(), screens or SCREENS,
                  SOURCES if sources is None else sources, set()).run()


class Places(unittest.TestCase):
    def setUp(self):
        self.found = {text.text: text for text in find()}

    def test_texts_come_in_the_order_of_the_screens(self):
        self.assertEqual(["Sample", "Log", "File", "OK", 'Log "it"', "Full", "Ask", "No"], list(self.found))

    def test_messages_are_on_the_screen_of_their_source(self):
        self.assertEqual([Place("Title", EVERYWHERE, "src/Entry.cpp:2")], self.found["Sample"].places)
        self.assertEqual([Place("Message", "The log", "src/Log.cpp:2"),
                          Place("Message", "A question", "src/Ask.cpp:2")], self.found["Full"].places)

    def test_controls_have_their_size_and_the_line_of_their_own_dialog(self):
        self.assertEqual([Place("Label", "The log", "src/Ui.rc:18", 67, 8),
                          Place("Label", "A question", "src/Ui.rc:23", 50, 8)], self.found["File"].places)

    def test_a_dialog_has_its_own_menu_bar_or_that_of_all(self):
        self.assertEqual([Place("SoftKey", "The log", "src/Ui.rc:4"),
                          Place("MenuItem", "The log", "src/Ui.rc:9"),
                          Place("SoftKey", "A question", "src/Ui.rc:4"),
                          Place("MenuItem", "A question", "src/Ui.rc:13")], self.found["OK"].places)
        self.assertEqual([Place("SoftKey", "The log", "src/Ui.rc:5")], self.found['Log "it"'].places)


    def test_a_dialog_may_have_no_caption(self):
        made = resources()
        made.dialogs[1].caption = ""
        self.assertEqual(["Sample", "File", "OK", 'Log "it"', "Full", "Ask", "No"],
                         [text.text for text in find(made=made)])


class WithoutPlace(unittest.TestCase):
    def refusal(self, *arguments, **named):
        with self.assertRaises(Mistake) as raised:
            find(*arguments, **named)
        return str(raised.exception)

    def test_a_source_of_no_screen(self):
        self.assertEqual("src/New.cpp:1: error: a text is shown, but "
                         "translation/texts/find_texts.py does not say "
                         "on which screen (SOURCES)",
                         self.refusal({"src/New.cpp": 'void h() { Show(L"New"); }'}))

    def test_an_empty_text(self):
        self.assertEqual("src/Ask.cpp:1: error: an empty text is shown",
                         self.refusal({"src/Ask.cpp": 'A::A() : Dialog(ASK_DIALOG) { Show(L""); }'}))

    def test_a_source_that_shows_nothing_any_more(self):
        self.assertIn("src/ui/Dialog.h, among the SOURCES, shows no text",
                      self.refusal(sources=SOURCES | {"src/ui/Dialog.h": EVERYWHERE}))

    def test_a_dialog_of_no_screen(self):
        made = resources()
        made.dialogs[5] = made.dialogs[1]
        self.assertIn("dialog 5 has no screen (SCREENS)", self.refusal(made=made))

    def test_a_screen_without_a_dialog_or_a_source(self):
        made = resources()
        del made.dialogs[2]
        self.assertIn("the resources have no dialog 2", self.refusal(made=made))
        self.assertIn("no source makes a Dialog(ASK_DIALOG)",
                      self.refusal({"src/Ask.cpp": "", "src/Log.cpp": FILES["src/Log.cpp"]}))
        self.assertIn("no header gives NEW_DIALOG a number", self.refusal(
            {"src/New.cpp": "A::A() : Dialog(NEW_DIALOG) {}"}, screens=SCREENS | {"NEW_DIALOG": "New"}))

    def test_a_menu_bar_of_no_dialog_or_that_is_none(self):
        made = resources()
        made.menu_bars[8] = [9]
        self.assertIn("menu bar 8 is in no dialog", self.refusal(made=made))
        made = resources()
        del made.menu_bars[3]
        self.assertIn("src/Log.cpp: error: the resources have no menu bar LOG_BAR", self.refusal(made=made))

    def test_a_text_that_no_script_has(self):
        made = resources()
        made.dialogs[1].caption = "Other"
        self.assertIn('no resource script has the text "Other" in a DIALOG', self.refusal(made=made))


class Generated(unittest.TestCase):
    def test_literals_hold_every_character(self):
        self.assertEqual(r'"a\"\\\012b\U000000EB1\U0001F600"', literal('a"\\\nb\u00eb1\U0001F600'))

    def test_the_source_has_every_text_with_its_places(self):
        made = generated(find())
        self.assertIn("constexpr TextPlace places0[] = {\n"
                      '    {TextKind::Title, "Everywhere", "src/Entry.cpp:2", 0, 0},\n};\n', made)
        self.assertIn('    {TEXT("Sample"), false, places0},\n', made)
        self.assertEqual(8, made.count("{TEXT("))


class Called(unittest.TestCase):
    def run_tool(self, *arguments):
        run = subprocess.run([sys.executable, "-B", ROOT / "translation/texts/find_texts.py", *arguments],
                             capture_output=True, text=True, check=False)
        self.assertEqual("", run.stdout)
        return run.returncode, run.stderr

    def test_too_few_arguments_are_told(self):
        self.assertEqual((2, "find_texts.py: called as OUTPUT RESOURCES ROOT FILE...\n"), self.run_tool("a"))

    def test_a_file_that_cannot_be_read_is_told(self):
        code, told = self.run_tool("/nowhere/out", "/nowhere/res", "/nowhere", "a.cpp")
        self.assertEqual(2, code)
        self.assertIn("/nowhere/a.cpp", told)
        self.assertEqual(1, told.count("\n"))

    def test_resources_that_cannot_be_read_are_a_mistake(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, data in (("a.cpp", b""), ("a.res", b"no resources")):
                (pathlib.Path(folder) / name).write_bytes(data)
            self.assertEqual((1, f"{folder}/a.res: error: the file ends too early\n"),
                             self.run_tool(f"{folder}/out", f"{folder}/a.res", folder, "a.cpp"))
            self.assertFalse((pathlib.Path(folder) / "out").exists())


if __name__ == "__main__":
    named_cases.main()
