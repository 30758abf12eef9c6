#!/usr/bin/env python3
"""Says where the bytes of a DLL or program come from, and fails when there are more than there may be.

    image_size.py IMAGE MAP [--most-bytes N] [--most-imports N] [--most-writable N]

IMAGE is the file, for Windows or Windows CE, and MAP the linker's map of it. The limits are those of the
file's bytes, of the functions that it imports, and of the bytes of memory that it can write.
"""
import argparse
import collections
import pathlib
import re
import struct
import sys

REST = "code and constants of its own"
EXCEPTIONS = "tables for exceptions"
TABLES = "import, export and relocation tables"
RESOURCES = "resources"
FILLING = "headers and filling"
BY_SECTION = [(r"\.eh_frame|\.gcc_except_table|\.ARM\.ex", EXCEPTIONS),
              (r"\.idata|\.edata|\.reloc|\.imports|\.text\.import\.", TABLES),
              (r"\.rsrc", RESOURCES)]
BY_FILE = [(r"libstdc\+\+\.a\(", "standard library"),
           (r"lib(gcc|gcc_eh|mingw32|mingwex|msvcrt)\.a\(", "compiler's runtime"),
           (r"\w+_(runtime|start)\.dir/", "runtime of its own"),
           (r"liborvande_\w+\.a\(", REST),
           (r"\.a\(", TABLES)]  # the jumps of import libraries
NOT_IN_FILE = r"\.bss|COMMON|\.debug_"

WRITABLE = 0x80000000


class Image:
    """What of the file's headers is needed here."""

    def __init__(self, data):
        self.data = data
        header, = struct.unpack_from("<I", data, 60)
        if data[header:header + 4] != b"PE\0\0":
            raise ValueError("it is no image")
        count, optional_size = struct.unpack_from("<H12xH", data, header + 6)
        optional = header + 24
        self.base, = struct.unpack_from("<I", data, optional + 28)
        self.imports, = struct.unpack_from("<I", data, optional + 104)
        table = optional + optional_size
        self.sections = [struct.unpack_from("<8sIIIIIIHHI", data, table + 40 * i) for i in range(count)]

    def parts(self):
        """Of every section its name, address, size in the file without filling, and whether it is
        writable."""
        for name, size, address, raw_size, *_, flags in self.sections:
            yield name.rstrip(b"\0").decode(), address, min(size, raw_size), bool(flags & WRITABLE)

    def writable(self):
        return sum(section[1] for section in self.sections if section[9] & WRITABLE)

    def offset(self, address):
        for _, size, start, _, position, *_ in self.sections:
            if start <= address < start + size:
                return address - start + position
        raise ValueError(f"there is nothing at 0x{address:X}")

    def imported_functions(self):
        count = 0
        library = self.offset(self.imports)
        while any(self.data[library:library + 20]):
            slots, = struct.unpack_from("<I", self.data, library + 16)
            place = self.offset(slots)
            while self.data[place:place + 4] != bytes(4):
                count += 1
                place += 4
            library += 20
        return count


def origin(section, file):
    for pattern, name in BY_SECTION:
        if re.match(pattern, section):
            return name
    for pattern, name in BY_FILE:
        if re.search(pattern, file):
            return name
    return REST


def linked_parts(text):
    """Name, address, size and file of what the linker put together, as far as it is in the image's file."""
    memory = text.split("Linker script and memory map", 1)[1]
    line = re.compile(r"^ (\.\S+|COMMON)\s+0x([0-9a-f]+) +0x([0-9a-f]+) (.+)$", re.MULTILINE)
    for name, address, size, file in line.findall(memory):
        if int(size, 16) > 0 and not re.match(NOT_IN_FILE, name):
            yield name, int(address, 16), int(size, 16), file


def sizes(image, text):
    """The bytes of each origin, and the file's size altogether."""
    result = collections.Counter()
    linked = list(linked_parts(text))
    # The map of a Windows CE image counts from 0, to which the image was linked at first.
    base = image.base if all(address >= image.base for _, address, _, _ in linked if address > 0) else 0
    for section, address, size, is_writable in image.parts():
        end = address
        for name, place, part_size, file in linked:
            if address <= place - base < address + size:
                result[origin(name, file)] += part_size
                end = max(end, place - base + part_size)
        # What is not the linker's is appended to the constants, or a section of its own.
        if not is_writable:
            result[RESOURCES if section == ".rsrc" else TABLES] += address + size - end
    result[FILLING] = len(image.data) - sum(result.values())
    return result


def excesses(image, arguments):
    for what, number, most in (("bytes", len(image.data), arguments.most_bytes),
                               ("imported functions", image.imported_functions(), arguments.most_imports),
                               ("writable bytes", image.writable(), arguments.most_writable)):
        if most is not None and number > most:
            yield f"{number} {what}, {number - most} more than it may have"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("image", type=pathlib.Path)
    parser.add_argument("map", type=pathlib.Path)
    for limit in ("bytes", "imports", "writable"):
        parser.add_argument(f"--most-{limit}", type=int)
    arguments = parser.parse_args()
    image = Image(arguments.image.read_bytes())
    name = arguments.image.name
    print(f"{name}: {len(image.data)} bytes, {image.imported_functions()} imported functions, "
          f"{image.writable()} writable bytes")
    for part, size in sizes(image, arguments.map.read_text(encoding="utf-8")).most_common():
        print(f"{size:9} {part}")
    if found := list(excesses(image, arguments)):
        sys.exit("\n".join(f"{name} has {excess}" for excess in found))


main()
