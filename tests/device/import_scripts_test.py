#!/usr/bin/env python3
"""The scripts that write what images import, and what the loader finds for them.

    import_scripts_test.py FOLDER        FOLDER: where the device's files were built
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import named_cases

DEVICE = pathlib.Path(__file__).resolve().parents[2] / "platform/device"
FOLDER = pathlib.Path(sys.argv[1])


class Scripts(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.output = self.folder / "output"

    def run_script(self, name, *arguments):
        subprocess.run([sys.executable, "-B", DEVICE / name, self.output, *arguments], check=True)
        return self.output.read_text(encoding="ascii")

    def list_of(self, name, *lines):
        (self.folder / name).write_text("".join(f"{line}\n" for line in lines), encoding="ascii")
        return self.folder / name

    def test_functions_are_imported_by_name_or_by_ordinal(self):
        names = self.list_of("a.tsv", "2\tOpen", "5\tClose")
        ordinals = self.list_of("b.tsv", "9\tShow")
        text = self.run_script("make_imports.py", f"one={names}", f"two#={ordinals}")
        self.assertEqual(['import one, Open, "one!Open"', 'import one, Close, "one!Close"',
                          "end_of_imports one", 'import two, Show, "two!#9"', "end_of_imports two"],
                         re.findall(r"(?m)^    ((?:import|end_of_imports) .*)", text))

    def test_what_cannot_be_called_or_is_there_already_is_left_out(self):
        first = self.list_of("a.tsv", "2\tOpen", "3\t??0Class@@QAA@XZ", "4\tOpen", "5\tswprintf")
        second = self.list_of("b.tsv", "2\tOpen")
        text = self.run_script("make_imports.py", f"one={first}", f"two={second}")
        self.assertEqual(["one, Open"], re.findall(r"(?m)^    import (\w+, \w+)", text))

    def test_table_has_all_that_images_import_from_the_system_once(self):
        images = [FOLDER / name for name in ("OrvandeAccount.dll", "OrvandeOnline.dll", "c-search.exe")]
        table = self.run_script("loader/make_import_table.py", DEVICE / "exports", *images).splitlines()
        self.assertEqual(sorted(set(table)), table)
        self.assertIn('IMPORT(COREDLL, "CloseHandle", CloseHandle)', table)
        self.assertIn('IMPORT(AYGSHELL, "#56", SHInitDialog)', table)
        # The sample's other library is an image itself.
        self.assertEqual({"AYGSHELL", "CELLCORE", "COREDLL", "WININET"},
                         {re.match(r"IMPORT\((\w+), ", line)[1] for line in table})

    def test_table_that_is_the_same_is_not_written(self):
        arguments = ("loader/make_import_table.py", DEVICE / "exports", FOLDER / "OrvandeOnline.dll")
        self.run_script(*arguments)
        os.utime(self.output, (1, 1))
        self.run_script(*arguments)
        self.assertEqual(1, self.output.stat().st_mtime)


if __name__ == "__main__":
    named_cases.main()
