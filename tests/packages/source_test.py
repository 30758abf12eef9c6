#!/usr/bin/env python3
"""The source archive, unpacked in another folder where there is no git; the packages are made there again."""
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import tarfile
import tempfile
import unittest

from packages import OUTPUT, SCRATCH, VERSION, package, run

import named_cases
from files import listed

MOMENT = 1577836800


class SourceArchive(unittest.TestCase):
    def setUp(self):
        with tarfile.open(package("source.tar.gz")) as archive:
            self.entries = archive.getmembers()

    def test_it_has_all_files_of_the_project_and_the_list_of_them(self):
        top = f"orvande-online-{VERSION}/"
        self.assertEqual(sorted(f"{top}{name}" for name in [*listed(), "MANIFEST"]),
                         [entry.name for entry in self.entries])

    def test_scripts_can_be_run(self):
        modes = {entry.name.partition("/")[2]: entry.mode for entry in self.entries}
        self.assertEqual(0o755, modes["test"])
        self.assertEqual(0o755, modes["tools/package"])
        self.assertEqual(0o644, modes["README.md"])

    def test_nothing_tells_who_packed_it_and_when(self):
        self.assertEqual({(MOMENT, 0, 0, "root", "root")},
                         {(e.mtime, e.uid, e.gid, e.uname, e.gname) for e in self.entries})
        self.assertEqual(bytes(4), package("source.tar.gz").read_bytes()[4:8])


class UnpackedSource(unittest.TestCase):
    """What is built there must be as it is here, though the folder's name has another length."""

    @classmethod
    def setUpClass(cls):
        folder = pathlib.Path(tempfile.mkdtemp(dir=SCRATCH, prefix="a-folder-with-a-rather-long-name-"))
        run("tar", "-xzf", package("source.tar.gz"), "-C", folder)
        cls.root = folder / f"orvande-online-{VERSION}"
        # git lies where all else does, so something that fails stands before it.
        (folder / "git").write_text("#!/bin/sh\nexit 127\n", encoding="ascii")
        (folder / "git").chmod(0o755)
        cls.environment = os.environ | {
            "PATH": f"{folder}:{os.environ['PATH']}",
            # If there is a cache of the compiler's results, it must not answer.
            "CCACHE_RECACHE": "1"}
        cls.made = subprocess.run(["tools/package"], cwd=cls.root, env=cls.environment, capture_output=True,
                                  text=True, check=False)
        cls.packages = cls.root / "build/unsigned"
        if cls.made.returncode == 0:
            (cls.root / "build/packages").rename(cls.packages)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.root.parent)

    def run_there(self, *command):
        return run(*command, cwd=self.root, env=self.environment)

    def test_the_packages_are_the_same_byte_for_byte(self):
        self.assertEqual(0, self.made.returncode, self.made.stdout + self.made.stderr)
        for file in sorted(OUTPUT.iterdir()):
            again = self.packages / file.name
            self.assertTrue(file.read_bytes() == again.read_bytes(), f"{file} and {again} differ")

    def test_signed_ones_have_signed_files(self):
        folder = self.root / "build/signed"
        folder.mkdir()
        run("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Test",
            "-addext", "extendedKeyUsage=codeSigning", "-keyout", folder / "key", "-out", folder / "own")
        self.run_there("tools/package", "--sign", folder / "own", folder / "key")
        cabinet = self.root / "build/packages" / package("device.cab").name
        run("gcab", "--extract", "-C", folder, cabinet)
        for ring in ("windows", "device"):
            name = package(f"{ring}-sdk.zip").name
            run("python3", "-m", "zipfile", "-e", self.root / "build/packages" / name, folder)
        # In the cabinet their names have no endings.
        stored = [file for file in folder.glob("*.???") if file.read_bytes().startswith(b"MZ")]
        signed = [cabinet, *folder.glob("*/bin/*.dll"), *folder.glob("*/bin/*.exe"), *stored]
        self.assertEqual(1 + 4 + 2 + 4 + 4, len(signed))
        for file in signed:
            run("osslsigncode", "verify", "-CAfile", folder / "own", "-in", file)
        bill = json.loads(cabinet.with_name(f"{cabinet.name}.spdx.json").read_text(encoding="utf-8"))
        self.assertEqual(hashlib.sha256(cabinet.read_bytes()).hexdigest(),
                         bill["packages"][0]["checksums"][0]["checksumValue"])

    def test_every_preset_is_configured(self):
        for preset in ("native", "asan", "windows-tests", "device-tests"):
            self.run_there("cmake", "--preset", preset)

    def test_what_lists_files_finds_them(self):
        self.assertEqual("", self.run_there("tools/format", "--check", "README.md"))
        names = self.run_there("python3", "-B", "-c",
                               "import sys; sys.path.append('tools'); import files; print(*files.listed())")
        self.assertEqual(listed(), names.split())

    def test_its_own_tests_pass(self):
        """Those of the tools; all of them would take as long as here."""
        for test in sorted(self.root.glob("tests/tools/*_test.py")):
            if test.name != "format_test.py":  # has clones made
                self.run_there("python3", "-B", test)


if __name__ == "__main__":
    named_cases.main()
