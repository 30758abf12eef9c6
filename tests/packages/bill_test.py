#!/usr/bin/env python3
"""The bills of materials: SPDX 2.3, complete, and true of their packages."""
import hashlib
import json
import pathlib
import re
import subprocess
import tarfile
import tempfile
import unittest
import zipfile

from packages import VERSION, package, run

import named_cases

# What the format demands of each element.
OF_DOCUMENT = {"spdxVersion", "dataLicense", "SPDXID", "name", "documentNamespace", "creationInfo"}
OF_PACKAGE = {"SPDXID", "name", "downloadLocation", "copyrightText", "licenseConcluded", "licenseDeclared"}
OF_FILE = {"SPDXID", "fileName", "checksums", "copyrightText", "licenseConcluded", "licenseInfoInFiles"}


class Bill:
    kind = ""

    def setUp(self):
        text = package(f"{self.kind}.spdx.json").read_text(encoding="utf-8")
        self.bill = json.loads(text)
        self.own, *self.others = self.bill["packages"]

    def packed(self):
        """The bytes of each file in the package."""
        with zipfile.ZipFile(package(self.kind)) as archive:
            return {name.partition("/")[2]: archive.read(name) for name in archive.namelist()}

    def test_every_element_has_what_the_format_demands(self):
        self.assertEqual("SPDX-2.3", self.bill["spdxVersion"])
        self.assertEqual("CC0-1.0", self.bill["dataLicense"])
        self.assertEqual("SPDXRef-DOCUMENT", self.bill["SPDXID"])
        self.assertLessEqual(OF_DOCUMENT, set(self.bill))
        self.assertRegex(self.bill["documentNamespace"], r"^https?://[^#]+$")
        self.assertRegex(self.bill["creationInfo"]["created"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$")
        self.assertRegex(self.bill["creationInfo"]["creators"][0], r"^Tool: \S+-\S+$")
        for element in self.bill["packages"]:
            self.assertLessEqual(OF_PACKAGE, set(element))
        for element in self.bill["files"]:
            self.assertLessEqual(OF_FILE, set(element))
            self.assertTrue(element["fileName"].startswith("./"))

    def test_names_of_elements_are_valid_and_their_own(self):
        names = [element["SPDXID"] for element in [*self.bill["packages"], *self.bill["files"]]]
        self.assertEqual(len(set(names)), len(names))
        for name in names:
            self.assertRegex(name, r"^SPDXRef-[A-Za-z0-9.-]+$")
        known = {*names, "SPDXRef-DOCUMENT"}
        for relation in self.bill["relationships"]:
            self.assertIn(relation["spdxElementId"], known)
            self.assertIn(relation["relatedSpdxElement"], known)

    def test_it_describes_the_package(self):
        self.assertIn({"spdxElementId": "SPDXRef-DOCUMENT", "relationshipType": "DESCRIBES",
                       "relatedSpdxElement": self.own["SPDXID"]}, self.bill["relationships"])
        self.assertEqual((package(self.kind).name, VERSION), (self.own["name"], self.own["versionInfo"]))
        self.assertEqual(hashlib.sha256(package(self.kind).read_bytes()).hexdigest(),
                         self.own["checksums"][0]["checksumValue"])

    def test_it_lists_every_file_with_its_sums(self):
        sums = {}
        for element in self.bill["files"]:
            checksums = {sum_["algorithm"]: sum_["checksumValue"] for sum_ in element["checksums"]}
            sums[element["fileName"]] = checksums["SHA1"], checksums["SHA256"]
        self.assertEqual({f"./{name}": (hashlib.sha1(data).hexdigest(), hashlib.sha256(data).hexdigest())
                          for name, data in self.packed().items()}, sums)
        code = hashlib.sha1("".join(sorted(one for one, _ in sums.values())).encode()).hexdigest()
        self.assertEqual({"packageVerificationCodeValue": code}, self.own["packageVerificationCode"])
        contained = {relation["relatedSpdxElement"] for relation in self.bill["relationships"]
                     if relation["relationshipType"] == "CONTAINS"
                     and relation["spdxElementId"] == self.own["SPDXID"]}
        self.assertEqual({element["SPDXID"] for element in self.bill["files"]}, contained)

    def test_every_license_is_known_or_explained(self):
        explained = {info["licenseId"] for info in self.bill.get("hasExtractedLicensingInfos", [])}
        known = {"MIT", "GPL-3.0-or-later", "GCC-exception-3.1", *explained}
        for element in [*self.bill["packages"], *self.bill["files"]]:
            words = re.findall(r"[A-Za-z][\w.-]*", element["licenseConcluded"])
            self.assertLessEqual({word for word in words if word not in ("AND", "WITH")}, known)

    def linked(self, file):
        """The components that are linked into a file."""
        identifier, = (e["SPDXID"] for e in self.bill["files"] if e["fileName"] == f"./{file}")
        names = {other["SPDXID"]: other["name"] for other in self.others}
        return {names[relation["relatedSpdxElement"]] for relation in self.bill["relationships"]
                if (relation["spdxElementId"], relation["relationshipType"]) == (identifier, "STATIC_LINK")}


class WithComponents(Bill):
    def test_components_have_the_version_of_the_package_that_they_come_from(self):
        self.assertTrue(self.others)
        for other in self.others:
            locator = other["externalRefs"][0]["referenceLocator"]
            name, version = re.fullmatch(r"pkg:deb/debian/(.+)@(.+)", locator).groups()
            self.assertEqual(run("dpkg-query", "-W", "-f", "${Version}", name), version)
            self.assertEqual(version, other["versionInfo"])


class WindowsBill(WithComponents, unittest.TestCase):
    kind = "windows-sdk.zip"

    def test_the_dll_needs_the_compilers_libraries_and_a_program_the_runtime_too(self):
        self.assertEqual({"libgcc (mingw-w64)", "libstdc++ (mingw-w64)"},
                         self.linked("bin/OrvandeOnline.dll"))
        self.assertIn("mingw-w64 runtime", self.linked("bin/mapshop.exe"))
        self.assertEqual(set(), self.linked("include/LMOnline.h"))


class DeviceBill(WithComponents, unittest.TestCase):
    kind = "device-sdk.zip"

    def test_the_dll_needs_the_compilers_libraries_only(self):
        self.assertEqual({"libstdc++ (arm-none-eabi)"}, self.linked("bin/OrvandeOnline.dll"))


class CabinetBill(WithComponents, unittest.TestCase):
    kind = "device.cab"

    def packed(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["gcab", "--extract", "-C", folder, package(self.kind)], check=True,
                           capture_output=True)
            setup = (pathlib.Path(folder) / "_setup.xml").read_text(encoding="ascii")
            names = re.findall(r'type="([^"]+)" translation="install">\s+<characteristic type="Extract">\s+'
                               r'<parm name="Source" value="([^"]+)"', setup)
            return {name: (pathlib.Path(folder) / source).read_bytes() for name, source in names}


class SourceBill(Bill, unittest.TestCase):
    kind = "source.tar.gz"

    def packed(self):
        with tarfile.open(package(self.kind)) as archive:
            return {entry.name.partition("/")[2]: archive.extractfile(entry).read()
                    for entry in archive.getmembers()}


if __name__ == "__main__":
    named_cases.main()
