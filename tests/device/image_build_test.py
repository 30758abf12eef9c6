#!/usr/bin/env python3
"""What the build of an image refuses, and that it makes the same file again.

    image_build_test.py FOLDER        FOLDER: where the device's files were built
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

import pefile

import named_cases
from relocated_places import places_that_move, relocated

SOURCE = pathlib.Path(__file__).resolve().parents[2]
DEVICE = SOURCE / "platform/device"
FOLDER = pathlib.Path(sys.argv[1])

COMPILE = ["arm-none-eabi-g++", "-march=armv4t", "-mfloat-abi=soft", "-fshort-wchar", "-Os", "-std=gnu++17",
           "-c"]
LINK = ["arm-none-eabi-g++", "-nostdlib", "-Wl,-e,Start", f"-Wl,-T,{DEVICE}/Image.ld",
        "-Wl,--orphan-handling=error", "-Wl,--emit-relocs", "-Wl,--gc-sections",
        "-Wl,--no-wchar-size-warning"]
LIBRARIES = ["-Wl,--start-group", "-lstdc++", "-lgcc", str(FOLDER / "platform/device/libdevice_imports.a")]


class ImageBuild(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_tool(self, *command):
        return subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False,
                              cwd=self.folder)

    def compiled(self, text, *options):
        (self.folder / "source.cpp").write_text(text, encoding="ascii")
        result = self.run_tool(*COMPILE, *options, "source.cpp", "-o", "object.o")
        self.assertEqual(0, result.returncode, result.stderr)

    def link(self, *libraries):
        return self.run_tool(*LINK, "-Wl,-Map=map", "object.o", "-o", "image.elf", *libraries)

    def linked(self, *libraries):
        result = self.link(*libraries)
        self.assertEqual(0, result.returncode, result.stderr)

    def make(self, *options):
        return self.run_tool(sys.executable, DEVICE / "make_image.py", "image.elf", "image.dll", *options)

    def make_refused(self, *options):
        """What make_image.py says to an ELF file that it refuses; an image from before is gone then."""
        (self.folder / "image.dll").write_bytes(b"an earlier image")
        result = self.make(*options)
        self.assertEqual(1, result.returncode)
        self.assertEqual([], list(self.folder.glob("image.dll*")))
        return result.stderr

    def check(self):
        return self.run_tool(sys.executable, DEVICE / "check_link.py", "map", "arm-none-eabi-c++filt")

    def test_a_program_with_imports_becomes_an_image(self):
        self.compiled('extern "C" void* malloc(unsigned); extern "C" void* Start() { return malloc(1); }',
                      "-marm")
        self.linked(*LIBRARIES, "-Wl,--end-group")
        self.assertEqual(0, self.check().returncode)
        result = self.make()
        self.assertEqual(0, result.returncode, result.stderr)
        self.assertIn(b"COREDLL.dll\0", (self.folder / "image.dll").read_bytes())

    def test_a_function_that_windows_ce_lacks_is_not_linked(self):
        self.compiled('extern "C" int GetMenuItemCount(void*);'
                      'extern "C" int Start() { return GetMenuItemCount(0); }', "-marm")
        result = self.link(*LIBRARIES, "-Wl,--end-group")
        self.assertNotEqual(0, result.returncode)
        self.assertIn("undefined reference to `GetMenuItemCount'", result.stderr)

    def test_the_compilers_c_library_is_refused(self):
        self.compiled('#include <cwchar>\n'
                      'extern "C" wchar_t* Start() { return std::wcsstr(L"ab", L"b"); }', "-marm")
        self.linked("-lc", "-lgcc")
        result = self.check()
        self.assertEqual(1, result.returncode)
        self.assertIn("libc.a(", result.stderr)

    def test_wide_text_of_the_compilers_cpp_library_is_refused(self):
        self.compiled('#include <string>\nextern "C" { void* __dso_handle; }'
                      'extern "C" void Start(std::wstring* text) { text->append(3, L\'a\'); }', "-marm")
        result = self.run_tool("arm-none-eabi-g++", "-nostdlib", "-Wl,-e,Start",
                               "-Wl,--no-wchar-size-warning", "-Wl,--unresolved-symbols=ignore-all",
                               "-Wl,-Map=map", "object.o", "-o", "image.elf", "-lstdc++", "-lgcc")
        self.assertEqual(0, result.returncode, result.stderr)
        result = self.check()
        self.assertEqual(1, result.returncode)
        self.assertIn("wstring-inst.o", result.stderr)
        self.assertIn("basic_string<wchar_t", result.stderr)

    def check_map(self, *sections):
        """What check_link.py says to a link of these sections: (name, file). Empty when nothing is wrong."""
        lines = "".join(f" {name}\n                0x00001000      0x1c0 {file}\n" for name, file in sections)
        (self.folder / "map").write_text(f"Linker script and memory map\n\n{lines}", encoding="ascii")
        result = self.check()
        self.assertEqual(bool(result.stderr), result.returncode == 1)
        return result.stderr

    def test_wide_text_is_found_in_sections_of_every_name(self):
        self.assertEqual("", self.check_map((".text._ZNSs5eraseEv", "/usr/lib/libstdc++.a(string-inst.o)")))
        for name in (".text._ZNSt5emptyIwE4growEv", ".text.unlikely._ZNSt5emptyIwE4growEv",
                     ".rodata._ZTVSt5emptyIwE", ".data.rel.ro._ZTVSt5emptyIwE",
                     ".text._ZNSt5emptyIwE4growEv.isra.0"):
            self.assertIn("std::empty<wchar_t>", self.check_map((name, "/usr/lib/libstdc++.a(any.o)")))

    def test_libraries_are_found_in_folders_with_gaps_in_their_names(self):
        self.assertIn("my compiler/libc.a(wcslen.o)", self.check_map(
            (".text.wcslen", "/my compiler/libc.a(wcslen.o)")))
        self.assertIn("std::empty<wchar_t>", self.check_map(
            (".text._ZNSt5emptyIwE4growEv", "/my compiler/libstdc++.a(any.o)")))

    def test_facets_of_wide_text_are_refused(self):
        for file in ("ctype.o", "ctype_members.o", "codecvt.o", "codecvt_members.o", "lt1-codecvt.o",
                     "c++locale.o", "cxx11-wlocale-inst.o", "locale_init.o", "ios_init.o", "wstring-inst.o"):
            self.assertIn(file, self.check_map((".text", f"/usr/lib/libstdc++.a({file})")))

    def test_a_relocation_of_an_unknown_kind_is_refused(self):
        self.compiled('extern "C" __attribute__((noinline)) int Other(int n) { asm(""); return n; }'
                      'extern "C" int Start() { return Other(1) + 1; }', "-mthumb", "-ffunction-sections")
        self.linked()
        self.assertIn("the relocation R_ARM_THM_CALL at 0x", self.make_refused())

    def refusal_of_word(self, expression, *options):
        """What make_image.py says when the assembler's expression is a word of the image."""
        self.compiled('extern "C" { extern const int word; int other; int Start() { return word + other; } }'
                      'asm(".pushsection .rodata.word,\\"a\\"\\n.weak missing\\n.global word\\n'
                      f'word: .word {expression}\\n.popsection");', "-marm")
        self.linked("-Wl,--target2=rel", *options)
        return self.make_refused()

    def test_a_distance_out_of_the_image_is_refused(self):
        self.assertRegex(self.refusal_of_word("missing(target2)"),
                         "the distance at 0x.* leads out of the image, to missing")

    def test_a_distance_in_data_is_refused(self):
        self.assertIn("the relocation R_ARM_REL32 at 0x", self.refusal_of_word("other - ."))

    def test_a_number_that_may_be_an_address_is_refused(self):
        self.assertRegex(self.refusal_of_word("place", "-Wl,--defsym=place=0x1004"),
                         "place, at 0x.*, may be a number or an address in the image")

    def test_a_function_for_the_end_of_the_program_is_not_linked(self):
        self.compiled('static void End() {} extern "C" void Start() {}'
                      '__attribute__((section(".fini_array"), used)) static void (*const end)() = End;',
                      "-marm")
        result = self.link()
        self.assertNotEqual(0, result.returncode)
        self.assertIn("nothing calls the functions in .preinit_array, .fini_array", result.stderr)

    def test_an_export_that_is_not_linked_is_named(self):
        self.compiled('extern "C" int Start() { return 1; }', "-marm")
        self.linked()
        exports = "LIBRARY Sample\nEXPORTS\n    Start\n    Missing\n"
        (self.folder / "exports.def").write_text(exports, encoding="ascii")
        self.assertIn("not linked: Missing", self.make_refused("--exports", "exports.def"))

    def test_more_writable_data_than_a_page_is_refused(self):
        self.compiled('char data[5000]; extern "C" char Start(int n) { return data[n]; }', "-marm")
        self.linked()
        self.assertIn("more than 4096 bytes of the image are writable", self.make_refused())

    def test_a_relocation_that_is_left_out_shows_in_a_link_for_another_address(self):
        self.compiled('int one; int* places[] = {&one, &one};'
                      'extern "C" int** Start(int n) { return places + n; }', "-marm")
        self.linked()
        made = self.make()
        self.assertEqual(0, made.returncode, made.stderr)
        moved = self.run_tool(LINK[0], "-Wl,--defsym=imageOrigin=0x20000000", *LINK[1:], "object.o",
                              "-o", "moved.elf")
        self.assertEqual(0, moved.returncode, moved.stderr)
        places = places_that_move(self.folder / "image.elf", self.folder / "moved.elf")
        self.assertEqual(3, len(places))
        image = pefile.PE(self.folder / "image.dll")
        self.assertEqual(places, set(relocated(image)))

        data = bytearray((self.folder / "image.dll").read_bytes())
        first = image.get_offset_from_rva(image.OPTIONAL_HEADER.DATA_DIRECTORY[5].VirtualAddress) + 8
        data[first:first + 2] = bytes(2)
        shorter = set(relocated(pefile.PE(data=bytes(data))))
        self.assertEqual(2, len(shorter))
        self.assertLess(shorter, places)

    def test_the_same_elf_file_gives_the_same_image(self):
        image = self.folder / "again.dll"
        result = self.run_tool(sys.executable, DEVICE / "make_image.py", FOLDER / "src/OrvandeOnline.elf",
                               image, "--exports", SOURCE / "src/frame/Exports.def",
                               "--resources", FOLDER / "src/orvande_online-resources.o")
        self.assertEqual(0, result.returncode, result.stderr)
        self.assertEqual((FOLDER / "OrvandeOnline.dll").read_bytes(), image.read_bytes())


if __name__ == "__main__":
    named_cases.main()
