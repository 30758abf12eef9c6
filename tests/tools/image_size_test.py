#!/usr/bin/env python3
"""Where the bytes of an image come from, and what happens when there are too many."""
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests/support"))
import named_cases

CODE, CONSTANTS, DATA = 0x60000020, 0x40000040, 0xC0000040
BASE = 0x61000000

MAP = """Archive member included to satisfy reference by file (symbol)

Discarded input sections

 .text          0x00000000       0x77 src/dir/Library.cpp.obj

Linker script and memory map

 .text          0x61001000       0x80 src/dir/Library.cpp.obj
 .text.longer_than_a_line_has_room_for
                0x61001080       0x20 src/dir/Library.cpp.obj
 .text          0x610010a0       0x10 /usr/lib/gcc/libstdc++.a(tree.o)
 *fill*         0x610010b0        0x8
 .text          0x610010b8       0x18 /usr/lib/gcc/libgcc_eh.a(unwind-dw2.o)
 .text          0x610010d0        0x8 /usr/lib/libuser32.a(one.o)
 .text          0x610010d8       0x20 platform/CMakeFiles/windows_runtime.dir/Throw.cpp.obj
 .text          0x610010f8        0x8 src/liborvande_static.a(Paths.cpp.obj)
 .data          0x61002000        0x4 src/dir/Library.cpp.obj
 .idata$5       0x61002004       0x3c /usr/lib/libuser32.a(one.o)
 .bss           0x61002040       0x60 src/dir/Library.cpp.obj
 .eh_frame      0x61003000       0x30 src/dir/Library.cpp.obj
 .gcc_except_table
                0x61003030        0x8 /usr/lib/gcc/libstdc++.a(tree.o)
 .rsrc          0x61004000       0x50 src/resources.o
 .reloc         0x61005000       0x14 dll stuff
 .debug_info    0x61006000      0x999 src/dir/Library.cpp.obj
"""


def section(name, address, size, raw_size, position, flags):
    return struct.pack("<8sIIIIIIHHI", name, size, address, raw_size, position, 0, 0, 0, 0, flags)


def image():
    """A DLL of 0x1000 bytes that imports two functions of one library and one of another."""
    optional = struct.pack("<H26xI", 0x10B, BASE) + bytes(72) + struct.pack("<I", 0x2004) + bytes(116)
    sections = [(b".text", 0x1000, 0x100, 0x200, 0x400, CODE), (b".data", 0x2000, 0xA0, 0x200, 0x600, DATA),
                (b".rdata", 0x3000, 0x60, 0x200, 0x800, CONSTANTS),
                (b".rsrc", 0x4000, 0x50, 0x200, 0xA00, CONSTANTS),
                (b".reloc", 0x5000, 0x14, 0x200, 0xC00, CONSTANTS)]
    header = b"MZ" + bytes(58) + struct.pack("<I", 64)
    header += struct.pack("<4sHH12xHH", b"PE\0\0", 0x14C, len(sections), len(optional), 0x2102)
    header += optional + b"".join(section(*fields) for fields in sections)
    data = bytearray(header + bytes(0x1000 - len(header)))
    struct.pack_into("<IIIII20x", data, 0x604, 0, 0, 0, 0, 0x2040)
    struct.pack_into("<IIIII20x", data, 0x618, 0, 0, 0, 0, 0x2050)
    struct.pack_into("<III", data, 0x640, 0x1234, 0x1238, 0)
    struct.pack_into("<II", data, 0x650, 0x80000009, 0)
    return bytes(data)


class ImageSize(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "Sample.dll").write_bytes(image())
        (self.folder / "map").write_text(MAP, encoding="ascii")

    def run_tool(self, *limits):
        command = [sys.executable, "-B", ROOT / "tools/image_size.py", "Sample.dll", "map", *limits]
        return subprocess.run(command, capture_output=True, text=True, check=False, cwd=self.folder)

    def sizes(self):
        run = self.run_tool()
        self.assertEqual((0, ""), (run.returncode, run.stderr))
        return {name: int(size) for size, name in re.findall(r"^ +(\d+) (.+)$", run.stdout, re.MULTILINE)}

    def refusal(self, *limits):
        run = self.run_tool(*limits)
        self.assertEqual(1, run.returncode)
        return run.stderr.splitlines()

    def test_each_origin_has_what_the_linker_took_of_it(self):
        self.assertEqual({"code and constants of its own": 0x80 + 0x20 + 8 + 4,
                          "standard library": 0x10,
                          "compiler's runtime": 0x18,
                          "runtime of its own": 0x20,
                          "tables for exceptions": 0x38,
                          # what the jump, the slots and the table of relocations take, and what is appended
                          # to the constants
                          "import, export and relocation tables": 8 + 0x3C + 0x14 + 0x28,
                          "resources": 0x50},
                         {name: size for name, size in self.sizes().items() if name != "headers and filling"})

    def test_the_origins_make_up_the_whole_file(self):
        self.assertEqual(0x1000, sum(self.sizes().values()))

    def test_an_image_that_was_linked_at_0_has_the_same_origins(self):
        expected = self.sizes()
        (self.folder / "map").write_text(MAP.replace("0x6100", "0x0000"), encoding="ascii")
        self.assertEqual(expected, self.sizes())

    def test_the_numbers_that_have_limits_are_printed(self):
        self.assertIn("Sample.dll: 4096 bytes, 3 imported functions, 160 writable bytes\n",
                      self.run_tool().stdout)

    def test_a_file_at_its_limits_passes(self):
        run = self.run_tool("--most-bytes", "4096", "--most-imports", "3", "--most-writable", "160")
        self.assertEqual((0, ""), (run.returncode, run.stderr))

    def test_a_file_above_a_limit_fails_and_says_by_how_much(self):
        self.assertEqual(["Sample.dll has 4096 bytes, 2 more than it may have"],
                         self.refusal("--most-bytes", "4094"))
        self.assertEqual(["Sample.dll has 3 imported functions, 1 more than it may have"],
                         self.refusal("--most-imports", "2"))
        self.assertEqual(["Sample.dll has 160 writable bytes, 60 more than it may have"],
                         self.refusal("--most-writable", "100"))

    def test_every_limit_that_is_broken_is_named(self):
        self.assertEqual(3, len(self.refusal("--most-bytes", "1", "--most-imports", "1",
                                             "--most-writable", "1")))


if __name__ == "__main__":
    named_cases.main()
