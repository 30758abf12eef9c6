#!/usr/bin/env python3
"""Writes down which characters Unicode has for a letter and an accent, as C++ that Compositions.h declares.

    find_compositions.py OUTPUT
"""
import pathlib
import sys
import unicodedata

BEGINNING = """\
/* Letters with accents; made by find_compositions.py. */
#include "texts/Compositions.h"

namespace {

constexpr Composition compositions[] = {
"""
END = """\
};

}  // namespace

std::span<const Composition> AllCompositions() {
    return compositions;
}
"""


def compositions():
    """(letter, accent, both) of all whose composed form is the normal one."""
    for both in range(0x10000):
        parts = unicodedata.decomposition(chr(both)).split()
        is_normal = unicodedata.normalize("NFC", chr(both)) == chr(both)
        if len(parts) != 2 or parts[0].startswith("<") or not is_normal:
            continue
        letter, accent = (int(part, 16) for part in parts)
        if 0x300 <= accent <= 0x36F:
            yield letter, accent, both


def main(arguments):
    if len(arguments) != 1:
        sys.stderr.write("find_compositions.py: called as OUTPUT\n")
        sys.exit(2)
    lines = [f"    {{0x{letter:04X}, 0x{accent:04X}, 0x{both:04X}}},\n"
             for letter, accent, both in sorted(compositions())]
    pathlib.Path(arguments[0]).write_text(BEGINNING + "".join(lines) + END, encoding="ascii")


if __name__ == "__main__":
    main(sys.argv[1:])
