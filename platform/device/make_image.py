#!/usr/bin/env python3
"""Makes a Windows CE image (PE32 for ARM) of an ELF file that was linked with Image.ld and --emit-relocs.

    make_image.py ELF IMAGE [--exports DEF] [--resources COFF]

With --exports the image is a DLL that exports the names of the .def file; without, a program. --resources
takes the resources as windres makes them (-O coff).
"""
import argparse
import os
import pathlib
import re
import struct
import sys

from elftools.elf.elffile import ELFFile
from elftools.elf.enums import ENUM_RELOC_TYPE_ARM
from elftools.elf.relocation import RelocationSection

PAGE = 0x1000
FILE_ALIGNMENT = 0x200
MOST_WRITABLE = 4096
STACK = 0x40000  # of a program; the system's own 64 KB are little for dialogs that open dialogs

CODE, CONSTANTS, WRITABLE, DISCARDABLE = 0x60000020, 0x40000040, 0xC0000040, 0x42000040
ABSOLUTE = ("R_ARM_ABS32", "R_ARM_TARGET1")
# These need no relocation: branches and a mark on them, and distances within the image.
BRANCHES = ("R_ARM_NONE", "R_ARM_CALL", "R_ARM_JUMP24", "R_ARM_PC24", "R_ARM_V4BX")
DISTANCES = ("R_ARM_PREL31", "R_ARM_TARGET2")
NOWHERE = ("SHN_UNDEF", "SHN_ABS")  # a weak symbol that is not defined; a number


def aligned(value, step):
    return (value + step - 1) // step * step


def fail(what):
    sys.exit(f"make_image: {what}")


class Section:
    def __init__(self, name, address, flags, data, size=0):
        self.name, self.address, self.flags, self.data = name, address, flags, bytearray(data)
        self.size = max(size, len(data))

    def end(self):
        return self.address + self.size


class Image:
    """The memory of the linked ELF file as sections of the image, and its symbols."""

    def __init__(self, elf):
        self.elf = elf
        symbols = elf.get_section_by_name(".symtab").iter_symbols()
        self.symbols = {symbol.name: symbol["st_value"] for symbol in symbols if symbol.name}
        flags = {5: (".text", CODE), 6: (".data", WRITABLE), 4: (".rdata", CONSTANTS)}
        self.sections = []
        for segment in elf.iter_segments("PT_LOAD"):
            if segment["p_memsz"] == 0:
                continue
            name, kind = flags[segment["p_flags"]]
            self.sections.append(Section(name, segment["p_vaddr"], kind, segment.data(), segment["p_memsz"]))
        self.constants = self.sections[-1]

    def word_at(self, address):
        for section in self.sections:
            if section.address <= address < section.address + len(section.data):
                return section.data, address - section.address
        fail(f"there is nothing at 0x{address:X} that could be relocated")

    def append_table(self, size):
        """Makes room for a table behind the constants and returns its address."""
        data = self.constants.data
        data.extend(bytes(aligned(len(data), 4) - len(data) + size))
        self.constants.size = len(data)
        return self.constants.end() - size

    def append(self, data):
        address = self.append_table(len(data))
        self.write(address, data)
        return address

    def write(self, address, data):
        memory, offset = self.word_at(address)
        memory[offset:offset + len(data)] = data

    def append_section(self, name, flags, data):
        address = aligned(self.sections[-1].end(), PAGE)
        self.sections.append(Section(name, address, flags, data))
        return address


def moves(image, kind, symbol, place):
    """Whether the word at a place changes when the image is moved."""
    name, section, value = symbol.name, symbol["st_shndx"], symbol["st_value"]
    if kind in BRANCHES:
        return False
    if kind in DISTANCES:
        if section in NOWHERE:
            fail(f"the distance at 0x{place:X} leads out of the image, to {name}")
        return False
    if kind not in ABSOLUTE:
        fail(f"the relocation {kind} at 0x{place:X} is not known")
    if section == "SHN_ABS" and PAGE <= value < image.sections[-1].end():
        fail(f"{name}, at 0x{place:X}, may be a number or an address in the image")
    return section not in NOWHERE


def relocate(image, base):
    """Adds the base to every absolute address and returns their places."""
    kinds = {number: name for name, number in ENUM_RELOC_TYPE_ARM.items()}
    places = set()
    for section in image.elf.iter_sections():
        if not isinstance(section, RelocationSection):
            continue
        if not image.elf.get_section(section["sh_info"])["sh_flags"] & 2:
            continue  # the section is not loaded into memory
        symbols = image.elf.get_section(section["sh_link"])
        for relocation in section.iter_relocations():
            kind = kinds.get(relocation["r_info_type"], relocation["r_info_type"])
            if moves(image, kind, symbols.get_symbol(relocation["r_info_sym"]), relocation["r_offset"]):
                places.add(relocation["r_offset"])
    for place in places:
        memory, offset = image.word_at(place)
        value, = struct.unpack_from("<I", memory, offset)
        struct.pack_into("<I", memory, offset, value + base)
    return sorted(places)


def base_relocations(places):
    table = bytearray()
    pages = {}
    for place in places:
        pages.setdefault(place & ~(PAGE - 1), []).append(3 << 12 | place & (PAGE - 1))
    for page, entries in sorted(pages.items()):
        entries += [0] * (len(entries) % 2)
        table += struct.pack(f"<II{len(entries)}H", page, 8 + 2 * len(entries), *entries)
    return table


def slots_by_library(image):
    libraries = {}
    for name, address in image.symbols.items():
        library, _, function = name.partition("!")
        if function:
            libraries.setdefault(library, []).append((address, function))
    return {library: sorted(slots) for library, slots in sorted(libraries.items())}


def lookup_entry(image, function):
    if function.startswith("#"):
        return 0x80000000 | int(function[1:])
    return image.append(struct.pack("<H", 0) + function.encode() + b"\0")


def import_table(image):
    libraries = slots_by_library(image)
    table = bytearray()
    for library, slots in libraries.items():
        if [address for address, _ in slots] != list(range(slots[0][0], slots[-1][0] + 4, 4)):
            fail(f"the slots of {library} do not follow each other")
        entries = [lookup_entry(image, function) for _, function in slots]
        words = struct.pack(f"<{len(entries) + 1}I", *entries, 0)
        image.write(slots[0][0], words)
        name = image.append(f"{library}.dll".encode() + b"\0")
        table += struct.pack("<IIIII", image.append(words), 0, 0, name, slots[0][0])
    table += bytes(20)
    return image.append(table), len(table)


def export_table(image, path):
    with open(path, encoding="ascii") as file:
        library, names = re.fullmatch(r"LIBRARY (\w+)\s+EXPORTS\s+(.*)", file.read(), re.DOTALL).groups()
    names = sorted(names.split())
    missing = [name for name in names if name not in image.symbols]
    if missing:
        fail(f"{path} has names that are not linked: {', '.join(missing)}")
    start = image.append_table(40)
    functions = image.append(struct.pack(f"<{len(names)}I", *(image.symbols[name] for name in names)))
    texts = [image.append(name.encode() + b"\0") for name in names]
    pointers = image.append(struct.pack(f"<{len(names)}I", *texts))
    ordinals = image.append(struct.pack(f"<{len(names)}H", *range(len(names))))
    name = image.append(f"{library}.dll".encode() + b"\0")
    image.write(start, struct.pack("<IIHHIIIIIII", 0, 0, 0, 0, name, 1, len(names), len(names), functions,
                                   pointers, ordinals))
    return start, image.constants.end() - start


def resource_table(image, path):
    """Moves the tree of resources, which windres makes for address 0, to its place."""
    with open(path, "rb") as file:
        coff = file.read()
    count, = struct.unpack_from("<H", coff, 2)
    for i in range(count):
        header = struct.unpack_from("<8sIIIIIIHHI", coff, 20 + 40 * i)
        if header[0].rstrip(b"\0") == b".rsrc":
            size, data, relocations, relocation_count = header[3], header[4], header[5], header[7]
            break
    else:
        fail(f"{path} has no resources")
    tree = bytearray(coff[data:data + size])
    address = image.append_section(".rsrc", CONSTANTS, tree)
    tree = image.sections[-1].data
    for i in range(relocation_count):
        place, _, kind = struct.unpack_from("<IIH", coff, relocations + 10 * i)
        if kind != 7:  # an offset from the image's base
            fail(f"{path} has a relocation of the unknown kind {kind}")
        offset, = struct.unpack_from("<I", tree, place)
        struct.pack_into("<I", tree, place, offset + address)
    return address, size


def headers(image, base, is_library, directories):
    header_size = aligned(64 + 24 + 96 + 16 * 8 + 40 * len(image.sections), FILE_ALIGNMENT)
    raw_sizes = [aligned(len(section.data), FILE_ALIGNMENT) for section in image.sections]
    characteristics = 0x0102 | (0x2000 if is_library else 0)
    dos = b"MZ" + bytes(58) + struct.pack("<I", 64)
    coff = struct.pack("<4sHHIIIHH", b"PE\0\0", 0x1C0, len(image.sections), 0, 0, 0, 224, characteristics)
    sizes = {flags: sum(r for s, r in zip(image.sections, raw_sizes) if (s.flags == CODE) == flags)
             for flags in (True, False)}
    optional = struct.pack("<HBBIIIIIIIIIHHHHHHIIIIHHIIIIII", 0x10B, 2, 0, sizes[True], sizes[False], 0,
                           image.elf["e_entry"], image.sections[0].address, image.sections[1].address, base,
                           PAGE, FILE_ALIGNMENT, 4, 20, 0, 0, 4, 20, 0,
                           aligned(image.sections[-1].end(), PAGE), header_size, 0, 9, 0, STACK, 0x1000,
                           0x100000, 0x1000, 0, 16)
    result = dos + coff + optional
    for number in range(16):
        result += struct.pack("<II", *directories.get(number, (0, 0)))
    position = header_size
    for section, raw_size in zip(image.sections, raw_sizes):
        result += struct.pack("<8sIIIIIIHHI", section.name.encode(), section.size, section.address, raw_size,
                              position, 0, 0, 0, 0, section.flags)
        position += raw_size
    return result + bytes(header_size - len(result))


def save(path, contents):
    """Writes the file so that it is there as a whole or not at all."""
    unfinished = f"{path}.unfinished"
    with open(unfinished, "wb") as output:
        output.write(contents)
    os.replace(unfinished, path)


def check_writable(image):
    if sum(section.size for section in image.sections if section.flags == WRITABLE) > MOST_WRITABLE:
        fail(f"more than {MOST_WRITABLE} bytes of the image are writable")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("elf")
    parser.add_argument("image")
    parser.add_argument("--exports")
    parser.add_argument("--resources")
    arguments = parser.parse_args()
    base = 0x10000000 if arguments.exports else 0x10000
    # If this fails, nobody shall take an earlier image for one of this ELF file.
    pathlib.Path(arguments.image).unlink(missing_ok=True)
    with open(arguments.elf, "rb") as file:
        image = Image(ELFFile(file))
        check_writable(image)
        directories = {1: import_table(image)}
        if arguments.exports:
            directories[0] = export_table(image, arguments.exports)
        places = relocate(image, base)
        if arguments.resources:
            directories[2] = resource_table(image, arguments.resources)
        table = base_relocations(places)
        directories[5] = image.append_section(".reloc", DISCARDABLE, table), len(table)
        contents = headers(image, base, bool(arguments.exports), directories)
        for section in image.sections:
            contents += section.data + bytes(-len(section.data) % FILE_ALIGNMENT)
        save(arguments.image, contents)


main()
