#!/usr/bin/env python3
"""The cabinet for devices, opened by another tool."""
import pathlib
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as xml

from packages import TRANSLATIONS, package, unpacked

import named_cases

PROGRAMS = ["OrvandeOnline.dll", "OrvandeAccount.dll", "mapshop.exe", "signin.exe"]
TEXTS = ["LICENSE.txt", "THIRD-PARTY-NOTICES.txt"]


class Cabinet(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.contents = pathlib.Path(folder.name)
        self.cabinet = package("device.cab")
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

    def file(self, name):
        return (self.contents / self.installed()[name]).read_bytes()

    def test_the_cabinet_installs_exactly_the_programs_their_translations_and_conditions(self):
        self.assertEqual([*PROGRAMS, *TRANSLATIONS, *TEXTS], list(self.installed()))
        for name in PROGRAMS:
            self.assertEqual((unpacked("device") / "bin" / name).read_bytes(), self.file(name))
        for name, file in TRANSLATIONS.items():
            self.assertEqual(file.read_bytes(), self.file(name))
        for name in TEXTS:
            self.assertEqual((unpacked("device") / name).read_bytes(), self.file(name))
        self.assertEqual({"_setup.xml", *self.installed().values()},
                         {file.name for file in self.contents.iterdir()})

    def test_the_names_in_the_cabinet_are_short_and_numbered(self):
        for number, source in enumerate(self.installed().values(), 1):
            stem, extension = source.split(".")
            self.assertLessEqual(len(stem), 8)
            self.assertEqual(number, int(extension))

    def test_the_instructions_count_what_they_do(self):
        parameters = self.parameters()
        self.assertEqual(str(len([*PROGRAMS, *TRANSLATIONS, *TEXTS])), parameters["NumFiles"])
        self.assertEqual("1", parameters["NumDirs"])
        self.assertEqual(["0"] * 3,
                         [parameters[name] for name in ("NumRegKeys", "NumRegVals", "NumShortcuts")])
        self.assertEqual("%CE1%\\Orvande Online", parameters["InstallDir"])
        self.assertEqual("4.20", parameters["OSVersionMin"])

    def test_nothing_touches_the_registry(self):
        self.assertEqual({"Install", "FileOperation"}, {child.get("type") for child in self.setup})

    def test_nothing_tells_when_it_was_packed(self):
        listing = subprocess.run(["gcab", "--list-details", self.cabinet], check=True, capture_output=True,
                                 text=True, env={"TZ": "UTC", "PATH": "/usr/bin"}).stdout
        self.assertEqual(1 + len(self.installed()), listing.count("2020-01-01 00:00:00"), listing)


if __name__ == "__main__":
    named_cases.main()
