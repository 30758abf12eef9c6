#!/usr/bin/env python3
"""The texts of compiled resources, and what cannot be read."""
import pathlib
import struct
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests/support"), str(ROOT / "translation/texts")]
import named_cases
from resource_texts import BadResources, ResourceTexts

MENU, DIALOG, STRINGS, RCDATA = 4, 5, 6, 10
STATIC, BUTTON, EDIT = 0x82, 0x80, 0x81
FONT_STYLE, AUTO_CHECK_BOX, PUSH_BUTTON = 0x40, 3, 0


def wide(text):
    return text.encode("utf-16-le") + b"\0\0"


def padded(data):
    return data + bytes(-len(data) % 4)


def resource(kind, number, data):
    header = struct.pack("<HHHHIHHII", 0xFFFF, kind, 0xFFFF, number, 0, 0, 0, 0, 0)
    return struct.pack("<II", len(data), 8 + len(header)) + header + padded(data)


def control(kind, text, style=0, more=b""):
    head = struct.pack("<IIhhhhHHH", style, 0, 1, 2, 60, 8, 7, 0xFFFF, kind)
    return padded(head + wide(text) + struct.pack("<H", len(more)) + more)


def dialog(*controls, style=FONT_STYLE, font="Tahoma", size=8):
    head = struct.pack("<IIHhhhhHH", style, 0, len(controls), 0, 0, 100, 90, 0, 0) + wide("Caption")
    if style & FONT_STYLE:
        head += struct.pack("<H", size) + wide(font)
    return padded(head) + b"".join(controls)


def item(text, last=False):
    return struct.pack("<HH", 0x80 if last else 0, 9) + wide(text)


def popup(text, *items, last=False):
    return struct.pack("<H", 0x90 if last else 0x10) + wide(text) + b"".join(items)


def menu(*items):
    return struct.pack("<HH", 0, 0) + b"".join(items)


def strings(**texts):
    """The block of strings 32 to 47, by _NUMBER."""
    return b"".join(struct.pack("<H", len(text)) + text.encode("utf-16-le")
                    for text in (texts.get(f"_{number}", "") for number in range(32, 48)))


def menu_bar(*numbers):
    buttons = b"".join(struct.pack("<HHHHHHH", 0xFFFE, 1, 4, 16, number, 0, 0xFFFF) for number in numbers)
    return struct.pack("<HH", 7, len(numbers)) + buttons


BAR = (resource(MENU, 7, menu(item("Done", last=True))) + resource(STRINGS, 3, strings(_35="Done"))
       + resource(RCDATA, 7, menu_bar(35)))


class Resources(unittest.TestCase):
    def test_a_dialog_has_a_caption_and_controls_with_sizes(self):
        texts = ResourceTexts(resource(0, 0, b"") + resource(DIALOG, 5, dialog(
            control(STATIC, "Name:"), control(EDIT, ""), control(BUTTON, "Keep", AUTO_CHECK_BOX))))
        read = texts.dialogs[5]
        self.assertEqual("Caption", read.caption)
        self.assertEqual([("Label", "Name:", 60, 8), ("CheckBox", "Keep", 60, 8)],
                         [(each.kind, each.text, each.width, each.height) for each in read.controls])

    def test_data_of_controls_are_passed_over(self):
        texts = ResourceTexts(resource(DIALOG, 5, dialog(control(STATIC, "a", more=b"xyz"),
                                                         control(STATIC, "b"))))
        self.assertEqual(["a", "b"], [each.text for each in texts.dialogs[5].controls])

    def test_a_menu_has_items_and_those_of_its_popups_but_no_separators(self):
        texts = ResourceTexts(resource(MENU, 7, menu(
            item("a"), popup("b", item("c"), item(""), popup("d", item("e", last=True), last=True)),
            item("f", last=True))))
        self.assertEqual(["a", "b", "c", "d", "e", "f"], texts.menus[7])

    def test_a_menu_bar_has_the_strings_of_its_buttons(self):
        texts = ResourceTexts(BAR)
        self.assertEqual({7: [35]}, texts.menu_bars)
        self.assertEqual({35: "Done"}, texts.strings)


class BadFiles(unittest.TestCase):
    def refusal(self, data):
        with self.assertRaises(BadResources) as raised:
            ResourceTexts(data)
        return str(raised.exception)

    def test_every_file_that_is_cut_is_refused(self):
        whole = resource(DIALOG, 5, dialog(control(STATIC, "Name")))
        for length in range(1, len(whole)):
            with self.subTest(length):
                self.assertIn("ends too early", self.refusal(whole[:length]))

    def test_a_dialog_that_is_cut_within_is_refused(self):
        self.assertEqual("resource 5 of type 5 ends too early",
                         self.refusal(resource(DIALOG, 5, dialog(control(STATIC, "Name"))[:-4])))

    def test_other_forms_of_dialogs_and_menus_are_refused(self):
        self.assertEqual("dialog 5 is a DIALOGEX; write DIALOG",
                         self.refusal(resource(DIALOG, 5, struct.pack("<I", 0xFFFF0001) + bytes(60))))
        self.assertEqual("menu 7 is a MENUEX; write MENU",
                         self.refusal(resource(MENU, 7, struct.pack("<HH", 1, 4) + bytes(4))))

    def test_another_font_is_refused(self):
        for made in (dialog(font="Arial"), dialog(size=9), dialog(style=0)):
            self.assertEqual("dialog 5 is not in Tahoma of 8 points, whose widths are known",
                             self.refusal(resource(DIALOG, 5, made)))

    def test_a_text_in_an_unknown_control_is_refused(self):
        for made in (control(BUTTON, "Go", PUSH_BUTTON), control(EDIT, "Go")):
            self.assertEqual("dialog 5: what room has 'Go'? Only labels and check boxes are known",
                             self.refusal(resource(DIALOG, 5, dialog(made))))

    def test_a_string_that_is_on_no_button_is_refused(self):
        self.assertEqual("string 36 is in no menu bar", self.refusal(
            BAR.replace(strings(_35="Done"), strings(_35="Done", _36="Go")).replace(
                struct.pack("<II", len(strings(_35="Done")), 32),
                struct.pack("<II", len(strings(_35="Done", _36="Go")), 32))))

    def test_a_button_needs_its_string_and_a_menu_bar_its_menu(self):
        self.assertEqual("a menu bar has the string 35, which does not exist",
                         self.refusal(resource(MENU, 7, menu(item("a", last=True)))
                                      + resource(RCDATA, 7, menu_bar(35))))
        self.assertEqual("menu bar 7 has no menu", self.refusal(resource(RCDATA, 7, menu_bar())))

    def test_resources_of_other_types_may_hold_texts(self):
        self.assertEqual("resources of type 11 may hold texts and cannot be read here",
                         self.refusal(resource(11, 1, b"1234")))


if __name__ == "__main__":
    named_cases.main()
