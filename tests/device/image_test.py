#!/usr/bin/env python3
"""What the device's files look like to tools that did not make them.

    image_test.py FOLDER        FOLDER: where the device's files were built
"""
import csv
import pathlib
import re
import struct
import subprocess
import sys
import unittest

import pefile

import expected_imports
import named_cases
from relocated_places import places_that_move, relocated

SOURCE = pathlib.Path(__file__).resolve().parents[2]
FOLDER = pathlib.Path(sys.argv[1])

MENU, DIALOG, STRING, RCDATA, VERSION = 4, 5, 6, 10, 16


def readobj(option, file):
    return subprocess.run(["llvm-readobj", option, file], capture_output=True, text=True, check=True).stdout


def exported_by_device(library):
    """The ordinal of each name."""
    with open(SOURCE / f"platform/device/exports/{library}.tsv", encoding="ascii") as file:
        return {name: ordinal for ordinal, name in csv.reader(file, delimiter="\t")}


class RelocationTest:
    """For every file; `name` is the file's, `links` are the linked file that it was made of and its moved
    twin."""
    name = ""
    links = ("", "")

    def setUp(self):
        self.file = FOLDER / self.name
        self.image = pefile.PE(self.file)

    def test_what_differs_in_a_link_for_another_address_is_relocated_and_nothing_else(self):
        places = places_that_move(*(FOLDER / link for link in self.links))
        self.assertLess(100, len(places))
        self.assertEqual(sorted(places), sorted(relocated(self.image)))


class ImageTest(RelocationTest):
    """For every file that devices get; `expected_imports` names the functions of each of the device's
    libraries."""
    expected_imports = {}

    def test_its_version_tells_its_name(self):
        strings = {key: value for info in self.image.FileInfo[0] if info.Key == b"StringFileInfo"
                   for table in info.StringTable for key, value in table.entries.items()}
        self.assertEqual(self.name.encode(), strings[b"OriginalFilename"])
        self.assertRegex(strings[b"FileVersion"], rb"^\d+\.\d+\.\d+$")

    def imports(self):
        return {entry.dll.decode().lower(): entry.imports for entry in self.image.DIRECTORY_ENTRY_IMPORT}

    def section(self, name):
        return next(s for s in self.image.sections if s.Name.rstrip(b"\0") == name.encode())

    def test_headers_are_those_of_windows_ce_on_arm(self):
        header, optional = self.image.FILE_HEADER, self.image.OPTIONAL_HEADER
        self.assertEqual([], self.image.get_warnings())
        self.assertEqual(0x10B, optional.Magic)
        self.assertEqual(0x1C0, header.Machine)
        self.assertEqual(9, optional.Subsystem)
        self.assertEqual((4, 20), (optional.MajorSubsystemVersion, optional.MinorSubsystemVersion))
        self.assertEqual((4, 20), (optional.MajorOperatingSystemVersion,
                                   optional.MinorOperatingSystemVersion))
        self.assertEqual((0x1000, 0x200), (optional.SectionAlignment, optional.FileAlignment))
        self.assertEqual(0, header.Characteristics & 1, "relocations must be there")

    def test_the_second_reader_finds_the_same_headers(self):
        text = readobj("--file-headers", self.file)
        self.assertIn("IMAGE_FILE_MACHINE_ARM (0x1C0)", text)
        self.assertIn("IMAGE_SUBSYSTEM_WINDOWS_CE_GUI", text)
        self.assertIn("MinorSubsystemVersion: 20", text)

    def test_nothing_tells_when_it_was_built(self):
        self.assertEqual(0, self.image.FILE_HEADER.TimeDateStamp)
        self.assertNotIn(str(SOURCE).encode(), self.file.read_bytes())

    def test_sections_are_in_order_and_none_is_writable_code(self):
        end = 0
        for section in self.image.sections:
            self.assertGreaterEqual(section.VirtualAddress, end)
            self.assertEqual(0, section.VirtualAddress % 0x1000)
            self.assertFalse(section.IMAGE_SCN_MEM_WRITE and section.IMAGE_SCN_MEM_EXECUTE)
            end = section.VirtualAddress + section.Misc_VirtualSize
        self.assertLessEqual(end, self.image.OPTIONAL_HEADER.SizeOfImage)

    def test_the_entry_point_is_code(self):
        text = self.section(".text")
        self.assertIn(self.image.OPTIONAL_HEADER.AddressOfEntryPoint,
                      range(text.VirtualAddress, text.VirtualAddress + text.Misc_VirtualSize))

    def test_a_page_holds_all_writable_data(self):
        writable = [section for section in self.image.sections if section.IMAGE_SCN_MEM_WRITE]
        self.assertLessEqual(sum(section.Misc_VirtualSize for section in writable), 4096)

    def test_it_imports_exactly_what_was_decided(self):
        imports = {
            library.dll.decode(): {i.name.decode() if i.name else f"#{i.ordinal}" for i in library.imports}
            for library in self.image.DIRECTORY_ENTRY_IMPORT}
        self.assertEqual(self.expected_imports, imports)

    def test_windows_ce_exports_every_import(self):
        for library, imports in self.imports().items():
            if library == "aygshell.dll":
                self.assertTrue(all(i.import_by_ordinal for i in imports))
                continue
            self.assertFalse(any(i.import_by_ordinal for i in imports))
            known = exported_by_device(library.removesuffix(".dll"))
            self.assertEqual(set(), {i.name.decode() for i in imports} - set(known))

    def test_lookup_tables_stand_beside_the_slots(self):
        for entry in self.image.DIRECTORY_ENTRY_IMPORT:
            lookup, slots = entry.struct.OriginalFirstThunk, entry.struct.FirstThunk
            size = 4 * (len(entry.imports) + 1)
            self.assertNotIn(lookup, (0, slots))
            self.assertEqual(self.image.get_data(lookup, size), self.image.get_data(slots, size))
            self.assertTrue(self.image.get_section_by_rva(slots).IMAGE_SCN_MEM_WRITE)

    def test_the_second_reader_finds_the_same_imports(self):
        names = {i.name.decode() for imports in self.imports().values() for i in imports if i.name}
        self.assertEqual(names, set(re.findall(r"Symbol: (\w+) \(", readobj("--coff-imports", self.file))))

    def test_relocated_words_are_addresses_in_the_image(self):
        base = self.image.OPTIONAL_HEADER.ImageBase
        places = relocated(self.image)
        self.assertEqual(len(places), len(set(places)))
        for place in places:
            self.assertEqual(0, place % 4)
            # One past the end is where an array may end.
            self.assertIn(self.image.get_dword_at_rva(place) - base,
                          range(0x1000, self.image.OPTIONAL_HEADER.SizeOfImage + 1))

    def test_every_relocation_is_of_the_one_kind(self):
        kinds = {e.type for block in self.image.DIRECTORY_ENTRY_BASERELOC for e in block.entries}
        self.assertLessEqual(kinds, {0, 3})
        self.assertEqual(len(relocated(self.image)), readobj("--coff-basereloc", self.file).count("HIGHLOW"))


class LibraryTest(ImageTest):
    """For both DLLs; `definitions` names the file of the names that they have to export."""
    definitions = ""

    def exports(self):
        return {e.name.decode(): e.address for e in self.image.DIRECTORY_ENTRY_EXPORT.symbols}

    def test_it_is_a_library(self):
        self.assertTrue(self.image.is_dll())

    def test_it_exports_exactly_the_names_of_the_definitions(self):
        definitions = (SOURCE / self.definitions).read_text(encoding="ascii")
        names = set(definitions.split("EXPORTS")[1].split())
        self.assertEqual(names, set(self.exports()))
        self.assertEqual(len(names), self.image.DIRECTORY_ENTRY_EXPORT.struct.NumberOfFunctions)
        self.assertEqual(self.name.encode(), self.image.DIRECTORY_ENTRY_EXPORT.name)

    def test_the_names_are_sorted_for_the_loaders_search(self):
        names = [e.name for e in self.image.DIRECTORY_ENTRY_EXPORT.symbols]
        self.assertEqual(sorted(names), names)

    def test_the_second_reader_finds_the_same_exports(self):
        names = re.findall(r"Name: (\w+)\n", readobj("--coff-exports", self.file))
        self.assertEqual(set(self.exports()), set(names))

    def test_exports_are_arm_code(self):
        text = self.section(".text")
        for address in self.exports().values():
            self.assertEqual(0, address % 4)
            self.assertIn(address, range(text.VirtualAddress, text.VirtualAddress + text.Misc_VirtualSize))

    def resources(self):
        """The bytes of each resource by type and number."""
        return {(kind.id, name.id): self.image.get_data(language.data.struct.OffsetToData,
                                                        language.data.struct.Size)
                for kind in self.image.DIRECTORY_ENTRY_RESOURCE.entries for name in kind.directory.entries
                for language in name.directory.entries}

    def test_it_has_the_dialogs_menus_and_texts(self):
        texts_from_2000 = 2000 // 16 + 1
        self.assertEqual({(MENU, 107), (MENU, 115), (DIALOG, 107), (DIALOG, 108), (STRING, texts_from_2000),
                          (RCDATA, 107), (RCDATA, 115), (VERSION, 1)}, set(self.resources()))
        for number, text in ((107, "Sign in to Your Account"), (108, "Create Account")):
            self.assertIn(text.encode("utf-16-le"), self.resources()[DIALOG, number])
        self.assertIn("Sign in".encode("utf-16-le"), self.resources()[STRING, texts_from_2000])
        self.assertEqual((107, 2), struct.unpack_from("<HH", self.resources()[RCDATA, 107]))

    def test_the_second_reader_finds_as_many_resources(self):
        self.assertIn(f"Total Number of Resources: {len(self.resources())}\n",
                      readobj("--coff-resources", self.file))

    def test_the_file_has_64_kb_or_less(self):
        self.assertLessEqual(self.file.stat().st_size, 65536)


class Library(LibraryTest, unittest.TestCase):
    name = "OrvandeOnline.dll"
    links = ("src/OrvandeOnline.elf", "src/orvande_online_moved.elf")
    definitions = "src/frame/Exports.def"
    expected_imports = expected_imports.LIBRARY


class AccountLibrary(LibraryTest, unittest.TestCase):
    name = "OrvandeAccount.dll"
    links = ("companion/OrvandeAccount.elf", "companion/orvande_account_moved.elf")
    definitions = "companion/Exports.def"
    expected_imports = expected_imports.ACCOUNT


class ProgramTest(ImageTest):
    def test_it_is_a_program(self):
        self.assertFalse(self.image.is_dll())
        self.assertFalse(hasattr(self.image, "DIRECTORY_ENTRY_EXPORT"))

    def test_its_stack_has_256_kb(self):
        self.assertEqual(256 * 1024, self.image.OPTIONAL_HEADER.SizeOfStackReserve)


class Mapshop(ProgramTest, unittest.TestCase):
    name = "mapshop.exe"
    links = ("examples/mapshop.elf", "examples/mapshop_moved.elf")
    expected_imports = expected_imports.MAPSHOP


class Signin(ProgramTest, unittest.TestCase):
    name = "signin.exe"
    links = ("examples/signin.elf", "examples/signin_moved.elf")
    expected_imports = expected_imports.SIGNIN


class RuntimeSample(RelocationTest, unittest.TestCase):
    name = "RuntimeSample.dll"
    links = ("tests/runtime/runtime_sample.elf", "tests/runtime/runtime_sample_moved.elf")


class Resume(RelocationTest, unittest.TestCase):
    name = "resume.exe"
    links = ("examples/resume.elf", "examples/resume_moved.elf")

    def test_it_is_bound_to_the_functions_that_it_calls(self):
        imports = {entry.dll.decode(): {function.name.decode() for function in entry.imports}
                   for entry in self.image.DIRECTORY_ENTRY_IMPORT}
        self.assertEqual({"COREDLL.dll", "OrvandeOnline.dll"}, set(imports))
        self.assertEqual({"LMDownloadWebFileProgress", "xfa704a3f"}, imports["OrvandeOnline.dll"])


class StandIns(unittest.TestCase):
    def test_their_ordinals_are_the_devices(self):
        definitions = (SOURCE / "platform/windows/aygshell.def").read_text(encoding="ascii")
        numbered = dict(re.findall(r"^ +(\w+)@\d+ @(\d+) NONAME$", definitions, re.MULTILINE))
        self.assertLess(3, len(numbered))
        self.assertLessEqual(numbered.items(), exported_by_device("aygshell").items())


if __name__ == "__main__":
    named_cases.main()
