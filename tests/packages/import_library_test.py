#!/usr/bin/env python3
"""Microsoft's import libraries of the SDKs, read by other tools and by the public description of the format.
"""
import pathlib
import re
import struct
import tempfile
import unittest

import packages
from packages import exports, run, run_windows, unpacked

import named_cases

PREFIX = {"windows": "_", "device": ""}
MACHINE = {"windows": 0x14C, "device": 0x1C0}


def members(data):
    """The archive's members as (name, offset of the header, contents)."""
    assert data[:8] == b"!<arch>\n"
    position, found = 8, []
    while position < len(data):
        header = data[position:position + 60]
        assert header[58:] == b"`\n", header
        size = int(header[48:58])
        found.append((header[:16].rstrip().decode(), position, data[position + 60:position + 60 + size]))
        position += 60 + size + size % 2
    return found


def first_index(contents):
    """The first linker member: the offset of the member that defines each symbol."""
    count, = struct.unpack_from(">I", contents)
    names = contents[4 + 4 * count:].split(b"\0")[:count]
    return list(zip((name.decode() for name in names), struct.unpack_from(f">{count}I", contents, 4)))


def second_index(contents):
    """The second one, the same in another form."""
    count, = struct.unpack_from("<I", contents)
    offsets = struct.unpack_from(f"<{count}I", contents, 4)
    symbols, = struct.unpack_from("<I", contents, 4 + 4 * count)
    indices = struct.unpack_from(f"<{symbols}H", contents, 8 + 4 * count)
    names = contents[8 + 4 * count + 2 * symbols:].split(b"\0")[:symbols]
    return [(name.decode(), offsets[index - 1]) for name, index in zip(names, indices)]


def is_short(contents):
    """Whether a member is the short form of an import, and no object."""
    return contents[:4] == b"\0\0\xff\xff"


def for_later_arm(data):
    """The same for the machine that other tools know: it stands where each object begins."""
    changed = bytearray(data)
    for name, position, contents in members(data)[2:]:
        if name != "//":
            place = position + 60 + (6 if is_short(contents) else 0)
            struct.pack_into("<H", changed, place, 0x1C4)
    return bytes(changed)


class ImportLibrary:
    ring = ""

    def libraries(self):
        for dll in packages.DLLS:
            yield dll, (unpacked(self.ring) / f"lib/{dll}.lib").read_bytes()

    def test_both_indexes_lead_to_every_symbol(self):
        for dll, data in self.libraries():
            first, second, *others = members(data)
            self.assertEqual(("/", "/"), (first[0], second[0]))
            symbols = [f"{start}{PREFIX[self.ring]}{name}" for name in exports(dll)
                       for start in ("__imp_", "")]
            symbols += [f"__IMPORT_DESCRIPTOR_{dll}", "__NULL_IMPORT_DESCRIPTOR",
                        f"\x7f{dll}_NULL_THUNK_DATA"]
            index = first_index(first[2])
            self.assertEqual(sorted(symbols), sorted(name for name, _ in index))
            self.assertEqual(sorted(offset for _, offset in index), [offset for _, offset in index])
            self.assertEqual(sorted(index), second_index(second[2]))
            self.assertLessEqual({offset for _, offset in index}, {offset for _, offset, _ in others})

    def test_each_function_is_imported_by_the_name_that_the_dll_exports(self):
        for dll, data in self.libraries():
            found = {}
            for _, _, contents in members(data)[2:]:
                if not is_short(contents):
                    continue
                version, machine, _, size, _, kind = struct.unpack_from("<HHIIHH", contents, 4)
                symbol, library, rest = contents[20:].split(b"\0")
                self.assertEqual((0, MACHINE[self.ring], len(contents) - 20, b""),
                                 (version, machine, size, rest))
                self.assertEqual(f"{dll}.dll", library.decode())
                self.assertEqual(0, kind & 3, "it is code")
                # 1: the symbol's name; 2: without the first of "?", "@" or "_"
                name_kind = kind >> 2 & 7
                self.assertIn(name_kind, (1, 2))
                name = symbol.decode()
                found[name] = re.sub("^[?@_]", "", name) if name_kind == 2 else name
            self.assertEqual({PREFIX[self.ring] + name: name for name in exports(dll)}, found)

    def test_another_tool_makes_the_same_objects(self):
        """But for the machine, which it does not know, the hint of each name, and the value of a section's
        symbol, which it leaves 0 where Microsoft's tools put the section's flags."""
        known = {"windows": "i386", "device": "arm"}[self.ring]
        for dll, data in self.libraries():
            with tempfile.TemporaryDirectory() as folder:
                definitions = pathlib.Path(folder, "definitions.def")
                definitions.write_text(f"LIBRARY {dll}.dll\nEXPORTS\n" + "\n".join(exports(dll)) + "\n")
                run("llvm-dlltool", "-m", known, "-d", definitions, "-l", pathlib.Path(folder, "other.lib"))
                other = pathlib.Path(folder, "other.lib").read_bytes()
            own = for_later_arm(data) if self.ring == "device" else data
            self.assertEqual(self.contents(other), self.contents(own))

    def contents(self, data):
        objects = []
        for name, _, contents in members(data):
            if name in ("/", "//"):
                continue
            if is_short(contents):
                contents = contents[:16] + b"\0\0" + contents[18:]
            objects.append(re.sub(rb"(\.idata\$[245])@\0\0\xc0(..\0\0h\0)", rb"\1\0\0\0\0\2", contents))
        return sorted(objects)


class WindowsImportLibrary(ImportLibrary, unittest.TestCase):
    ring = "windows"

    def test_another_linker_links_it_and_the_program_runs(self):
        folder = unpacked("windows")
        (folder / "other.c").write_text(
            '#include "LMOnline.h"\n'
            "__declspec(dllimport) void __stdcall ExitProcess(unsigned code);\n"
            "void Start(void) {\n"
            "    static MapShopResult map;\n"
            "    MapShopSearch* const search = LMMapShopSearch(0, 0);\n"
            "    int count = 0;\n"
            "    while (LMMapShopGetNext(search, &map)) ++count;\n"
            "    ExitProcess(count > 0 && LMMapShopClose(search) == count ? 0 : 1);\n"
            "}\n")
        (folder / "kernel32.def").write_text("LIBRARY kernel32.dll\nEXPORTS\nExitProcess@4\n")
        run("llvm-dlltool", "-k", "-m", "i386", "-d", "kernel32.def", "-l", "kernel32.lib", cwd=folder)
        run("clang", "--target=i686-pc-windows-msvc", "-isystem", "/usr/share/mingw-w64/include", "-Iinclude",
            "-c", "other.c", "-o", "other.obj", cwd=folder)
        run("lld-link", "/nologo", "/nodefaultlib", "/subsystem:console", "/entry:Start", "/safeseh:no",
            "/out:bin/other.exe", "other.obj", "lib/OrvandeOnline.lib", "kernel32.lib", cwd=folder)
        run_windows(folder / "bin/other.exe")


class DeviceImportLibrary(ImportLibrary, unittest.TestCase):
    ring = "device"

    def test_another_reader_finds_the_symbols(self):
        for dll, data in self.libraries():
            with tempfile.NamedTemporaryFile(suffix=".lib") as file:
                file.write(for_later_arm(data))
                file.flush()
                names = re.findall(r" T (\S+)", run("llvm-nm", file.name))
                headers = run("llvm-readobj", "--file-headers", file.name)
            self.assertEqual(sorted([*exports(dll), *(f"__imp_{name}" for name in exports(dll))]),
                             sorted(names))
            self.assertEqual(3, headers.count("Machine: IMAGE_FILE_MACHINE_ARMNT (0x1C4)"))


if __name__ == "__main__":
    named_cases.main()
