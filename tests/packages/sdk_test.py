#!/usr/bin/env python3
"""The SDKs, unpacked and used as their README says."""
import re
import subprocess
import unittest
import zipfile

import pefile

import packages
from packages import ROOT, TRANSLATIONS, VERSION, documented_lines, package, run, run_windows, unpacked

import named_cases


# Objects may come from another folder, by a cache of the compiler's results or with a copied build.
ADVICE = "Compile it here: CCACHE_RECACHE=1 ./test packages, after build/windows and build/device are removed"


class Sdk:
    """For both; `ring` is for what, `addr2line` and `objdump` are the compiler's."""
    ring = addr2line = objdump = ""

    def setUp(self):
        self.folder = unpacked(self.ring)

    def images(self):
        return sorted([*self.folder.glob("bin/*.dll"), *self.folder.glob("bin/*.exe")])

    def test_it_has_the_files_as_they_were_built(self):
        names = {file.name for file in self.images()}
        self.assertLessEqual({"OrvandeOnline.dll", "OrvandeAccount.dll", "mapshop.exe", "signin.exe"}, names)
        for file in self.images():
            self.assertEqual((ROOT / f"build/{self.ring}" / file.name).read_bytes(), file.read_bytes())

    def test_each_module_with_texts_has_every_language_beside_it(self):
        self.assertEqual({name: file.read_bytes() for name, file in TRANSLATIONS.items()},
                         {file.name: file.read_bytes() for file in self.folder.glob("bin/*.txt")})

    def test_every_image_has_the_version_and_its_name(self):
        for file in self.images():
            image = pefile.PE(file)
            strings = {key: value for info in image.FileInfo[0] if info.Key == b"StringFileInfo"
                       for table in info.StringTable for key, value in table.entries.items()}
            self.assertEqual(VERSION.encode(), strings[b"FileVersion"])
            self.assertEqual(file.name.encode(), strings[b"OriginalFilename"])
            self.assertEqual(file.stem.encode(), strings[b"InternalName"])

    def test_symbols_lead_from_an_address_to_the_line(self):
        for dll, name, source in (("OrvandeOnline", "LMMapShopSearch", "src/mapshop/MapShopSearch.cpp"),
                                  ("OrvandeAccount", "LMAccountSignIn", "companion/LMAccount.cpp")):
            image = pefile.PE(self.folder / f"bin/{dll}.dll")
            address, = (symbol.address for symbol in image.DIRECTORY_ENTRY_EXPORT.symbols
                        if symbol.name == name.encode())
            base = image.OPTIONAL_HEADER.ImageBase if self.ring == "windows" else 0
            lines = run(self.addr2line, "-fe", self.folder / f"bin/{dll}.dll.debug", hex(base + address))
            self.assertRegex(lines, rf"^_?{name}\n/orvande-online/{source}:\d+")

    def test_no_file_tells_where_it_was_built(self):
        for file in self.folder.rglob("*"):
            if file.is_file():
                # assertNotIn would print all of the file.
                is_named = str(ROOT).encode() in file.read_bytes()
                self.assertFalse(is_named, f"{file.name} names {ROOT}. {ADVICE}")

    def test_debug_information_names_no_folder_but_the_projects(self):
        for file in self.folder.glob("bin/*.debug"):
            units = run(self.objdump, "--dwarf=info", "--dwarf-depth=1", file)
            names = re.findall(r"DW_AT_(?:name|comp_dir) .*?([^\s:]+)$", units, re.MULTILINE)
            own = re.compile("/orvande-online/(?!\\.\\.)")
            self.assertTrue(any(own.match(name) for name in names), units)
            # Those of the compiler's libraries are relative.
            others = {name for name in names if name.startswith("/") and not own.match(name)}
            self.assertEqual(set(), others, f"{file.name} names them. {ADVICE}")

    def test_the_definitions_are_those_of_the_dlls(self):
        for dll in packages.DLLS:
            image = pefile.PE(self.folder / f"bin/{dll}.dll")
            self.assertEqual(packages.exports(dll),
                             sorted(s.name.decode() for s in image.DIRECTORY_ENTRY_EXPORT.symbols))
            self.assertEqual(packages.DLLS[dll].read_bytes(), (self.folder / f"lib/{dll}.def").read_bytes())

    def test_the_readme_is_a_page_and_names_what_is_there(self):
        text = (self.folder / "README.md").read_text(encoding="utf-8")
        self.assertLess(text.count("\n"), 80)
        self.assertIn(VERSION, text.split("\n")[0])
        for name in re.findall(r"[(\s](?:@|\./)?((?:bin|lib|include|examples)/[\w./+-]+)", text):
            self.assertTrue((self.folder / name).exists(), name)
        text += (self.folder / "SECURITY.md").read_text(encoding="utf-8")
        for name in re.findall(r"\]\(([^#].*?)\)", text):
            self.assertTrue((self.folder / name).is_file(), name)

    def test_notices_name_what_is_linked_in(self):
        text = (self.folder / "THIRD-PARTY-NOTICES.txt").read_text(encoding="utf-8")
        self.assertRegex(text, r"\nlibstdc\+\+ .*, in .*OrvandeOnline\.dll")
        self.assertIn("GCC RUNTIME LIBRARY EXCEPTION", text)
        self.assertEqual((ROOT / "LICENSE").read_bytes(), (self.folder / "LICENSE.txt").read_bytes())


class WindowsSdk(Sdk, unittest.TestCase):
    ring = "windows"
    addr2line = "i686-w64-mingw32-addr2line"
    objdump = "i686-w64-mingw32-objdump"

    def search(self, program):
        """What the sample says that lies beside the DLLs then."""
        run("cp", self.folder / program, self.folder / "bin")
        return run_windows(self.folder / "bin" / program)

    def test_the_sample_is_built_and_runs_as_the_readme_says(self):
        line, = documented_lines(self.folder / "README.md", "i686-w64-mingw32-gcc")
        run("sh", "-c", line, cwd=self.folder)
        self.assertRegex(self.search("search.exe"), r"\n[1-9]\d* maps in the shop")

    def test_pkg_config_tells_the_same(self):
        line, = documented_lines(self.folder / "README.md", "PKG_CONFIG_LIBDIR")
        options = run("sh", "-c", line, cwd=self.folder)
        run("sh", "-c", f"i686-w64-mingw32-gcc -municode -o by-pkg-config.exe examples/c/search.c {options}",
            cwd=self.folder)
        self.assertRegex(self.search("by-pkg-config.exe"), r"\n[1-9]\d* maps in the shop")

    def test_the_runtime_of_the_compiler_has_its_notice(self):
        text = (self.folder / "THIRD-PARTY-NOTICES.txt").read_text(encoding="utf-8")
        self.assertRegex(text, r"\nmingw-w64 runtime, in .*mapshop\.exe")
        self.assertIn("2009-2016 the mingw-w64 project", text)

    def test_mapshop_runs(self):
        self.assertEqual(f"mapshop {VERSION}\n", run_windows(self.folder / "bin/mapshop.exe", "--version"))


class DeviceSdk(Sdk, unittest.TestCase):
    ring = "device"
    addr2line = "arm-none-eabi-addr2line"
    objdump = "arm-none-eabi-objdump"

    def test_the_sample_is_built_as_the_readme_says(self):
        for beginning in ("arm-none-eabi-gcc", "arm-none-eabi-g++", "/usr/bin/python3"):
            line, = documented_lines(self.folder / "README.md", beginning)
            run("sh", "-c", line, cwd=self.folder)
        image = pefile.PE(self.folder / "search.exe")
        self.assertEqual(0x1C0, image.FILE_HEADER.Machine)
        imported = {entry.dll: {function.name for function in entry.imports}
                    for entry in image.DIRECTORY_ENTRY_IMPORT}
        self.assertEqual({b"COREDLL.dll", b"OrvandeOnline.dll"}, set(imported))
        self.assertEqual({b"LMMapShopSearch", b"LMMapShopGetNext", b"LMMapShopClose"},
                         imported[b"OrvandeOnline.dll"])

    def test_nothing_of_a_c_library_is_linked_in(self):
        text = (self.folder / "THIRD-PARTY-NOTICES.txt").read_text(encoding="utf-8")
        self.assertNotRegex(text, "(?i)newlib|mingw")


class Archives(unittest.TestCase):
    def test_nothing_tells_when_they_were_packed(self):
        for kind in ("device-sdk.zip", "windows-sdk.zip"):
            with zipfile.ZipFile(package(kind)) as archive:
                self.assertIsNone(archive.testzip())
                self.assertEqual({(2020, 1, 1, 0, 0, 0)}, {entry.date_time for entry in archive.infolist()})
                self.assertEqual(sorted(archive.namelist()), archive.namelist())
                self.assertEqual({package(kind).stem}, {name.split("/")[0] for name in archive.namelist()})


class Sums(unittest.TestCase):
    def test_there_are_these_packages_and_a_bill_for_each(self):
        kinds = ["device-sdk.zip", "device.cab", "source.tar.gz", "windows-sdk.zip"]
        names = {package(kind).name for kind in kinds}
        self.assertEqual(names | {f"{name}.spdx.json" for name in names} | {"SHA256SUMS"},
                         {file.name for file in packages.OUTPUT.iterdir()})

    def test_the_sums_are_those_of_all_files(self):
        said = subprocess.run(["sha256sum", "--check", "--strict", "SHA256SUMS"], cwd=packages.OUTPUT,
                              capture_output=True, text=True, check=False)
        self.assertEqual((0, ""), (said.returncode, said.stderr))
        self.assertEqual(len(list(packages.OUTPUT.iterdir())) - 1, said.stdout.count(": OK\n"))


if __name__ == "__main__":
    named_cases.main()
