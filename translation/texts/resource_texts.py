"""Reads the texts of a compiled resource file (.res, what `windres -O res` writes): dialogs, menus, and the
buttons of menu bars."""
import dataclasses
import struct

MENU, DIALOG, STRINGS, RCDATA, VERSION = 4, 5, 6, 10, 16
BUTTON, EDIT, STATIC = 0x80, 0x81, 0x82
CHECK_BOX_STYLES = {2, 3, 5, 6}  # BS_CHECKBOX, BS_AUTOCHECKBOX, BS_3STATE, BS_AUTO3STATE
HAS_FONT, IS_POPUP, IS_LAST = 0x40, 0x10, 0x80
FONT = (8, "Tahoma")  # of which the widths are known


class BadResources(Exception):
    """What the sentence says; the caller knows the file."""


@dataclasses.dataclass
class Control:
    kind: str  # a TextKind
    text: str
    width: int
    height: int


@dataclasses.dataclass
class Dialog:
    caption: str
    controls: list


class Reader:
    def __init__(self, data, what):
        self.data = data
        self.at = 0
        self.what = what

    def numbers(self, form):
        """As struct.unpack; little-endian, nothing skipped."""
        size = struct.calcsize("<" + form)
        if self.at + size > len(self.data):
            raise BadResources(f"{self.what} ends too early")
        self.at += size
        return struct.unpack_from("<" + form, self.data, self.at - size)

    def word(self):
        return self.numbers("H")[0]

    def text(self):
        begin = self.at
        while self.word() != 0:
            pass
        return self.data[begin:self.at - 2].decode("utf-16-le")

    def number_or_text(self):
        """A number after FFFF, or a text."""
        if self.word() == 0xFFFF:
            return self.word()
        self.at -= 2
        return self.text()

    def align(self):
        self.at = (self.at + 3) & ~3


class ResourceTexts:
    """All by number: `dialogs`, `menus` (texts of their items), `menu_bars` (numbers of the strings of their
    buttons) and `strings`."""

    def __init__(self, data):
        self.dialogs, self.menus, self.menu_bars, self.strings = {}, {}, {}, {}
        reader = Reader(data, "the file")
        while reader.at < len(data):
            self.read_resource(reader)
        for number in self.menu_bars:
            if number not in self.menus:
                raise BadResources(f"menu bar {number} has no menu")
        used = {string for strings in self.menu_bars.values() for string in strings}
        for string in sorted(used ^ set(self.strings)):
            raise BadResources(f"string {string} is in no menu bar" if string in self.strings else
                               f"a menu bar has the string {string}, which does not exist")

    def read_resource(self, reader):
        size, _ = reader.numbers("II")
        kind, number = reader.number_or_text(), reader.number_or_text()
        reader.align()
        reader.numbers("IHHII")
        body = Reader(bytes(reader.numbers(f"{size}s")[0]), f"resource {number} of type {kind}")
        reader.align()
        if kind == DIALOG:
            self.dialogs[number] = read_dialog(body, number)
        elif kind == MENU:
            self.menus[number] = read_menu(body, number)
        elif kind == STRINGS:
            for index in range(16):
                text = body.numbers(f"{2 * body.word()}s")[0].decode("utf-16-le")
                if text:
                    self.strings[16 * (number - 1) + index] = text
        elif kind == RCDATA:
            self.menu_bars[number] = read_menu_bar(body)
        elif kind not in (VERSION, 0):
            raise BadResources(f"resources of type {kind} may hold texts and cannot be read here")


def read_dialog(reader, number):
    style, _, count, *_ = reader.numbers("IIHhhhh")
    if style == 0xFFFF0001:
        raise BadResources(f"dialog {number} is a DIALOGEX; write DIALOG")
    reader.number_or_text()
    reader.number_or_text()
    dialog = Dialog(reader.text(), [])
    if not style & HAS_FONT or (reader.word(), reader.text()) != FONT:
        raise BadResources(f"dialog {number} is not in {FONT[1]} of {FONT[0]} points, whose widths are known")
    for _ in range(count):
        control = read_control(reader, number)
        if control.text:
            dialog.controls.append(control)
    return dialog


def read_control(reader, dialog):
    reader.align()
    style, _, _, _, width, height, _ = reader.numbers("IIhhhhH")
    kind, text = reader.number_or_text(), reader.number_or_text()
    reader.numbers(f"{reader.word()}s")
    if isinstance(text, int):
        return Control("", "", width, height)
    if kind == STATIC:
        return Control("Label", text, width, height)
    if kind == BUTTON and style & 0xF in CHECK_BOX_STYLES:
        return Control("CheckBox", text, width, height)
    if text:
        raise BadResources(f"dialog {dialog}: what room has '{text}'? Only labels and check boxes are known")
    return Control("", "", width, height)


def read_menu(reader, number):
    version, size = reader.numbers("HH")
    if version != 0:
        raise BadResources(f"menu {number} is a MENUEX; write MENU")
    reader.numbers(f"{size}s")
    return [text for text in read_items(reader) if text]


def read_items(reader):
    while True:
        flags = reader.word()
        if not flags & IS_POPUP:
            reader.word()
        yield reader.text()
        if flags & IS_POPUP:
            yield from read_items(reader)
        if flags & IS_LAST:
            return


def read_menu_bar(reader):
    _, count = reader.numbers("HH")
    return [reader.numbers("HHHHHHH")[4] for _ in range(count)]
