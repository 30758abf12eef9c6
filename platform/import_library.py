#!/usr/bin/env python3
"""Makes the import library of a DLL as Microsoft's linker reads it.

    import_library.py OUTPUT DEFINITIONS MACHINE     MACHINE: i386, or arm (0x1C0, Windows CE's)

DEFINITIONS is the module-definition file of the DLL, whose functions are plain C functions that it exports
under their own names. The format is that of "PE Format", Microsoft's public document: an archive of one short
import object a function, behind three objects that bring the DLL's name and the ends of its tables.

No other tool here makes one for 0x1C0, the machine of Windows CE; today's linkers know only later ARM.
"""
import dataclasses
import pathlib
import re
import struct
import sys


@dataclasses.dataclass
class Machine:
    number: int
    offset_from_base: int  # the kind of relocation that is an address less that of the image
    prefix: str  # what the compiler puts before the name of a C function


MACHINES = {"i386": Machine(0x14C, 7, "_"), "arm": Machine(0x1C0, 2, "")}

EXTERNAL, STATIC, SECTION = 2, 3, 104  # classes of symbols
DATA, ALIGNED_2, ALIGNED_4 = 0xC0000040, 0x00200000, 0x00300000
CODE, BY_NAME, BY_NAME_WITHOUT_PREFIX = 0, 1 << 2, 2 << 2

NULL_DESCRIPTOR = "__NULL_IMPORT_DESCRIPTOR"


def object_file(machine, sections, symbols):
    """A COFF object. `sections`: (name, flags, data, [(offset, index of the symbol)]); `symbols`: (name,
    number of the section or 0, class)."""
    position = 20 + 40 * len(sections)
    headers, contents = b"", b""
    for name, flags, data, relocations in sections:
        place = position + len(contents)
        headers += struct.pack("<8sIIIIIIHHI", name.encode(), 0, 0, len(data), place,
                               place + len(data) if relocations else 0, 0, len(relocations), 0, flags)
        contents += data
        for offset, symbol in relocations:
            contents += struct.pack("<IIH", offset, symbol, machine.offset_from_base)
    table, strings = b"", b""
    for name, section, kind in symbols:
        field = name.encode()
        if len(field) > 8:
            field = struct.pack("<II", 0, 4 + len(strings))
            strings += name.encode() + b"\0"
        value = DATA if kind == SECTION else 0
        table += struct.pack("<8sIhHBB", field, value, section, 0, kind, 0)
    header = struct.pack("<HHIIIHH", machine.number, len(sections), 0, position + len(contents), len(symbols),
                         0, 0x0100)
    return header + headers + contents + table + struct.pack("<I", 4 + len(strings)) + strings


def descriptor(machine, library, null_thunk):
    """The DLL's entry in the table of imports: where its names, its slots and its own name are."""
    name = f"{library}.dll".encode() + b"\0"
    symbols = [(f"__IMPORT_DESCRIPTOR_{library}", 1, EXTERNAL), (".idata$2", 1, SECTION),
               (".idata$6", 2, STATIC), (".idata$4", 0, SECTION), (".idata$5", 0, SECTION),
               (NULL_DESCRIPTOR, 0, EXTERNAL), (null_thunk, 0, EXTERNAL)]
    sections = [(".idata$2", DATA | ALIGNED_4, bytes(20), [(12, 2), (0, 3), (16, 4)]),
                (".idata$6", DATA | ALIGNED_2, name, [])]
    return object_file(machine, sections, symbols)


def end_of_descriptors(machine):
    return object_file(machine, [(".idata$3", DATA | ALIGNED_4, bytes(20), [])],
                       [(NULL_DESCRIPTOR, 1, EXTERNAL)])


def end_of_slots(machine, null_thunk):
    sections = [(name, DATA | ALIGNED_4, bytes(4), []) for name in (".idata$5", ".idata$4")]
    return object_file(machine, sections, [(null_thunk, 1, EXTERNAL)])


def short_import(machine, library, name, hint):
    kind = CODE | (BY_NAME_WITHOUT_PREFIX if machine.prefix else BY_NAME)
    data = f"{machine.prefix}{name}\0{library}.dll\0".encode()
    return struct.pack("<HHHHIIHH", 0, 0xFFFF, 0, machine.number, 0, len(data), hint, kind) + data


def member(name, data):
    """With the time 0, so that the same definitions give the same file."""
    header = f"{name:16}{0:<12}{'':6}{'':6}{'0':8}{len(data):<10}`\n".encode()
    return header + data + b"\n" * (len(data) % 2)


def archive(library, members):
    """`members`: (data, the symbols that it defines). Before them lie two indexes of the symbols: in the
    order of the members, and sorted by name."""
    # A name with more than 15 letters stands in a table of its own, to which members point.
    name = f"{library}.dll/"
    names = b"" if len(name) <= 16 else member("//", f"{library}.dll\0".encode())
    if names:
        name = "/0"
    symbols = [(symbol, number) for number, (_, defined) in enumerate(members) for symbol in defined]
    texts = sum(len(symbol) + 1 for symbol, _ in symbols)
    first_size = 4 + 4 * len(symbols) + texts
    second_size = 4 + 4 * len(members) + 4 + 2 * len(symbols) + texts
    position = 8 + 60 + first_size + first_size % 2 + 60 + second_size + second_size % 2 + len(names)
    offsets, contents = [], b""
    for data, _ in members:
        offsets.append(position + len(contents))
        contents += member(name, data)
    first = struct.pack(f">{1 + len(symbols)}I", len(symbols), *(offsets[number] for _, number in symbols))
    first += b"".join(symbol.encode() + b"\0" for symbol, _ in symbols)
    by_name = sorted(symbols, key=lambda symbol: symbol[0].encode())
    second = struct.pack(f"<{1 + len(members)}I", len(members), *offsets)
    second += struct.pack(f"<I{len(symbols)}H", len(symbols), *(number + 1 for _, number in by_name))
    second += b"".join(symbol.encode() + b"\0" for symbol, _ in by_name)
    return b"!<arch>\n" + member("/", first) + member("/", second) + names + contents


def import_library(definitions, machine):
    library, names = re.fullmatch(r"LIBRARY (\w+)\s+EXPORTS\s+(.*)", definitions, re.DOTALL).groups()
    null_thunk = f"\x7f{library}_NULL_THUNK_DATA"
    members = [(descriptor(machine, library, null_thunk), [f"__IMPORT_DESCRIPTOR_{library}"]),
               (end_of_descriptors(machine), [NULL_DESCRIPTOR]),
               (end_of_slots(machine, null_thunk), [null_thunk])]
    for hint, name in enumerate(sorted(names.split())):
        symbol = machine.prefix + name
        members.append((short_import(machine, library, name, hint), [f"__imp_{symbol}", symbol]))
    return archive(library, members)


def main(arguments):
    if len(arguments) != 3 or arguments[2] not in MACHINES:
        print("import_library: call it as import_library.py OUTPUT DEFINITIONS i386|arm", file=sys.stderr)
        return 2
    output, definitions, machine = arguments
    text = pathlib.Path(definitions).read_text(encoding="ascii")
    pathlib.Path(output).write_bytes(import_library(text, MACHINES[machine]))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
