#!/usr/bin/env python3
"""The packages for devices, opened by other tools.

    package_test.py FOLDER        FOLDER: where the device's files were built
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
import zipfile

import named_cases

SOURCE = pathlib.Path(__file__).resolve().parents[2]
FOLDER = pathlib.Path(sys.argv[1])
VERSION = ".".join(re.findall(r"VERSION_[A-Z]+ (\d+)", (SOURCE / "include/LMOnlineVersion.h").read_text()))
PROGRAMS = ["OrvandeOnline.dll", "mapshop.exe", "signin.exe"]


class Package(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.contents = pathlib.Path(folder.name)
        self.cabinet = FOLDER / f"OrvandeOnline-{VERSION}-arm.cab"
        self.archive = FOLDER / f"OrvandeOnline-{VERSION}-arm.zip"
        subprocess.run(["gcab", "--extract", "-C", self.contents, self.cabinet], check=True,
                       capture_output=True)
        self.setup = xml.parse(self.contents / "_setup.xml").getroot()

    def parameters(self):
        install = self.setup.find("characteristic[@type='Install']")
        return {parm.get("name"): parm.get("value") for parm in install.iter("parm")}

    def installed(self):
        """The names on the device and the files of the cabinet that they are made of."""
        folder = self.setup.find("characteristic[@type='FileOperation']/characteristic")
        sources = {file.get("type"): file.find("characteristic[@type='Extract']/parm[@name='Source']")
                   for file in folder.iter("characteristic")}
        return {name: source.get("value") for name, source in sources.items() if source is not None}

    def test_the_cabinet_installs_exactly_the_three_files(self):
        self.assertEqual(PROGRAMS, list(self.installed()))
        for name, source in self.installed().items():
            self.assertEqual((FOLDER / name).read_bytes(), (self.contents / source).read_bytes())
        self.assertEqual({"_setup.xml", *self.installed().values()},
                         {file.name for file in self.contents.iterdir()})

    def test_the_names_in_the_cabinet_are_short_and_numbered(self):
        for number, source in enumerate(self.installed().values(), 1):
            stem, extension = source.split(".")
            self.assertLessEqual(len(stem), 8)
            self.assertEqual(number, int(extension))

    def test_the_instructions_count_what_they_do(self):
        parameters = self.parameters()
        self.assertEqual("3", parameters["NumFiles"])
        self.assertEqual("1", parameters["NumDirs"])
        self.assertEqual(["0"] * 3,
                         [parameters[name] for name in ("NumRegKeys", "NumRegVals", "NumShortcuts")])
        self.assertEqual("%CE1%\\Orvande Online", parameters["InstallDir"])
        self.assertEqual("4.20", parameters["OSVersionMin"])

    def test_nothing_touches_the_registry(self):
        self.assertEqual({"Install", "FileOperation"}, {child.get("type") for child in self.setup})

    def test_the_archive_has_the_same_files_and_the_header(self):
        with zipfile.ZipFile(self.archive) as archive:
            self.assertIsNone(archive.testzip())
            self.assertEqual([*PROGRAMS, "LICENSE", "LMOnline.h", "LMOnlineVersion.h"], archive.namelist())
            for name in PROGRAMS:
                self.assertEqual((FOLDER / name).read_bytes(), archive.read(name))

    def test_nothing_tells_when_it_was_packed(self):
        with zipfile.ZipFile(self.archive) as archive:
            self.assertEqual({(2020, 1, 1, 0, 0, 0)}, {entry.date_time for entry in archive.infolist()})
        listing = subprocess.run(["gcab", "--list-details", self.cabinet], check=True, capture_output=True,
                                 text=True, env={"TZ": "UTC", "PATH": "/usr/bin"}).stdout
        self.assertEqual(4, listing.count("2020-01-01 00:00:00"), listing)


if __name__ == "__main__":
    named_cases.main()
