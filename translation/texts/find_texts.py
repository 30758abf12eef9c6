#!/usr/bin/env python3
"""Writes down all texts that the library may show, in the sources and in the compiled resources, as C++ that
ShownTexts.h declares.

    find_texts.py OUTPUT RESOURCES ROOT FILE...     FILE: every source, header and resource script below ROOT

What it cannot place stops the build, so that no text is forgotten: a text in a source that belongs to no
screen, a dialog without a screen, an argument that cannot be followed to a literal.
"""
import dataclasses
import json
import pathlib
import re
import sys

from cpp_source import Mistake, Source
from resource_texts import BadResources, ResourceTexts
from source_texts import Search

OWN_NAME = "translation/texts/find_texts.py"
EVERYWHERE = "Everywhere"
# The dialogs in the order in which a user meets them. Texts of a source that makes a dialog are of its
# screen.
SCREENS = {"SIGN_IN_DIALOG": "Sign in", "CREATE_ACCOUNT_DIALOG": "Create account"}
# The other sources that show texts.
SOURCES = {
    "src/frame/LibraryEntry.cpp": EVERYWHERE,
    "src/transport/WebConnection.cpp": EVERYWHERE,
    "src/account/SignIn.cpp": "Sign in",
}
# Functions that look up what they find on the screen, which comes from the resources, and the lookup itself.
HANDING_ON = {"TranslateWindowText", "TranslateItem", "TranslateButton", "TranslationCatalogue::Translate",
              "TranslationCatalogue::TranslateCopy"}


@dataclasses.dataclass
class Place:
    kind: str
    screen: str
    source: str
    width: int = 0
    height: int = 0


@dataclasses.dataclass
class Text:
    text: str
    is_format: bool
    places: list


class Texts:
    """In the order in which they are added first."""

    def __init__(self):
        self.by_text = {}

    def add(self, text, place, is_format=False):
        if not text:
            raise Mistake(place.source, "an empty text is shown")
        entry = self.by_text.setdefault(text, Text(text, False, []))
        entry.is_format |= is_format
        if place not in entry.places:
            entry.places.append(place)


class Scripts:
    """The resource scripts: names and places of what they define."""

    def __init__(self, files):
        self.files = files
        self.numbers = {}
        for text in files.values():
            self.numbers |= {name: int(number)
                             for name, number in re.findall(r"^#define (\w+) (\d+)$", text, re.MULTILINE)}

    def number(self, name):
        if name not in self.numbers:
            raise Mistake(OWN_NAME, f"no header gives {name} a number")
        return self.numbers[name]

    def place(self, kind, number, text):
        """FILE:LINE of a text in the definition of a MENU, a DIALOG or the STRINGTABLE (number 0)."""
        names = "|".join(name for name, each in self.numbers.items() if each == number)
        head = re.compile(rf"(?:{names}) {kind}\b" if number else rf"{kind}\b")
        quoted = '"' + text.replace('"', '""').replace("\n", "\\n") + '"'
        for file, script in self.files.items():
            is_inside = False
            for line, content in enumerate(script.split("\n"), 1):
                is_inside = bool(head.match(content)) or (is_inside and not content.startswith("END"))
                if is_inside and quoted in content:
                    return f"{file}:{line}"
        raise Mistake(OWN_NAME, f"no resource script has the text {quoted} in a {kind}")


class Finder:
    """`files`: path to content; the screens are those above, but in tests."""

    def __init__(self, files, resources, screens, sources, handing_on):
        code = {path: text for path, text in files.items() if path.endswith((".cpp", ".h"))}
        self.sources = [Source(path, text) for path, text in sorted(code.items())]
        self.scripts = Scripts({path: text for path, text in files.items() if path not in code}
                               | {path: text for path, text in code.items() if path.endswith("Ids.h")})
        self.resources = resources
        self.screens = screens
        self.screen_of_source = dict(sources)
        self.handing_on = handing_on
        self.texts = Texts()

    def run(self):
        found = Search(self.sources, self.handing_on).run()
        makers = {name: self.maker(name) for name in self.screens}
        listed = list(self.screen_of_source)
        self.screen_of_source |= {makers[name].path: screen for name, screen in self.screens.items()}
        for text in found:
            if text.file not in self.screen_of_source:
                raise Mistake(f"{text.file}:{text.line}",
                              f"a text is shown, but {OWN_NAME} does not say on which screen (SOURCES)")
        for file in listed:
            if not any(text.file == file for text in found):
                raise Mistake(OWN_NAME, f"{file}, among the SOURCES, shows no text")
        known = {self.scripts.number(name) for name in self.screens}
        for number in self.resources.dialogs:
            if number not in known:
                raise Mistake(OWN_NAME, f"dialog {number} has no screen (SCREENS)")
        self.add_messages(found, EVERYWHERE)
        bars = {name: self.menu_bar(makers[name]) for name in self.screens}
        for number in self.resources.menu_bars:
            if number not in bars.values():
                raise Mistake(OWN_NAME, f"menu bar {number} is in no dialog")
        for name, screen in self.screens.items():
            self.add_dialog(self.scripts.number(name), screen)
            self.add_menu_bar(bars[name], screen)
            self.add_messages(found, screen)
        return list(self.texts.by_text.values())

    def maker(self, dialog):
        """The source whose class shows the dialog."""
        for source in self.sources:
            values = [token.value for token in source.tokens]
            if any(values[at:at + 4] == ["Dialog", "(", dialog, ")"] for at in range(len(values))):
                return source
        raise Mistake(OWN_NAME, f"no source makes a Dialog({dialog})")

    def menu_bar(self, source):
        """Number of the menu bar that the source gives its dialog, or of all dialogs'."""
        headers = [other for other in self.sources if other.path.endswith(".h")]
        for each in [source, *headers]:
            values = [token.value for token in each.tokens]
            names = [values[at + 2] for at in range(len(values) - 2)
                     if values[at:at + 2] == ["menuBarId", "="] and values[at + 2] in self.scripts.numbers]
            if names:
                number = self.scripts.number(names[0])
                if number in self.resources.menu_bars:
                    return number
                raise Mistake(each.path, f"the resources have no menu bar {names[0]}")
        raise Mistake(OWN_NAME, f"the menu bar of {source.path} cannot be found")

    def add_messages(self, found, screen):
        for text in found:
            if self.screen_of_source[text.file] == screen:
                kind = "Title" if text.is_title else "Message"
                self.texts.add(text.text, Place(kind, screen, f"{text.file}:{text.line}"), text.is_format)

    def add_dialog(self, number, screen):
        if number not in self.resources.dialogs:
            raise Mistake(OWN_NAME, f"the resources have no dialog {number}")
        dialog = self.resources.dialogs[number]
        if dialog.caption:
            place = self.scripts.place("DIALOG", number, dialog.caption)
            self.texts.add(dialog.caption, Place("Caption", screen, place))
        for control in dialog.controls:
            place = self.scripts.place("DIALOG", number, control.text)
            self.texts.add(control.text, Place(control.kind, screen, place, control.width, control.height))

    def add_menu_bar(self, number, screen):
        for string in self.resources.menu_bars[number]:
            text = self.resources.strings[string]
            self.texts.add(text, Place("SoftKey", screen, self.scripts.place("STRINGTABLE", 0, text)))
        for text in self.resources.menus[number]:
            self.texts.add(text, Place("MenuItem", screen, self.scripts.place("MENU", number, text)))


def literal(text):
    """A literal of C++, in ASCII."""
    # A hexadecimal escape would take the letters behind it, an octal one has three digits at most.
    return '"' + "".join(
        f"\\{unit}" if unit in '"\\' else
        unit if " " <= unit <= "~" else
        f"\\{ord(unit):03o}" if ord(unit) < 0x80 else f"\\U{ord(unit):08X}" for unit in text) + '"'


def generated(texts):
    lines = ["/* All texts that the library may show; made by find_texts.py. */",
             '#include "texts/ShownTexts.h"', "", "namespace {", ""]
    for number, text in enumerate(texts):
        lines.append(f"constexpr TextPlace places{number}[] = {{")
        for place in text.places:
            names = f"{json.dumps(place.screen)}, {json.dumps(place.source)}"
            lines.append(f"    {{TextKind::{place.kind}, {names}, {place.width}, {place.height}}},")
        lines.append("};")
    lines += ["", "constexpr ShownText texts[] = {"]
    for number, text in enumerate(texts):
        is_format = "true" if text.is_format else "false"
        lines.append(f"    {{TEXT({literal(text.text)}), {is_format}, places{number}}},")
    lines += ["};", "", "}  // namespace", "", "std::span<const ShownText> AllShownTexts() {",
              "    return texts;", "}", ""]
    return "\n".join(lines)


def refuse(sentence):
    print(f"find_texts.py: {sentence}", file=sys.stderr)
    sys.exit(2)


def main(arguments):
    if len(arguments) < 4:
        refuse("called as OUTPUT RESOURCES ROOT FILE...")
    try:
        make(*arguments)
    except (OSError, UnicodeError) as error:
        refuse(error)


def make(output, resource_file, root, *paths):
    files = {path: (pathlib.Path(root) / path).read_text(encoding="utf-8") for path in paths}
    try:
        resources = ResourceTexts(pathlib.Path(resource_file).read_bytes())
        texts = Finder(files, resources, SCREENS, SOURCES, HANDING_ON).run()
    except BadResources as bad:
        sys.exit(f"{resource_file}: error: {bad}")
    except Mistake as mistake:
        sys.exit(str(mistake))
    pathlib.Path(output).write_text(generated(texts), encoding="ascii")


if __name__ == "__main__":
    main(sys.argv[1:])
