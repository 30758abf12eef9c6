#!/usr/bin/env python3
"""The declarations and samples for C#, with Mono: layouts as the header has them, and calls of a library for
this computer that is made with the header. The DLL itself is not called: no runtime of .NET is to be had here
that runs on Wine.

    csharp_test.py
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "tests/support"))
import named_cases

SAMPLES = SOURCE / "examples/csharp"
# The language of the compilers for handhelds.
COMPILE = ["mcs", "-langversion:ISO-2", "-warn:4", "-warnaserror"]


def run(*command):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False)


class CSharp(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(scratch.cleanup)
        cls.folder = pathlib.Path(scratch.name)
        cls.made = {}
        for source in (SAMPLES / "Search.cs", SAMPLES / "Download.cs", SAMPLES / "Range.cs",
                       SOURCE / "tests/samples/Declarations.cs"):
            cls.made[source.stem] = cls.compile(source)
        library = cls.folder / "libStandIn.so"
        command = ["gcc", "-shared", "-fPIC", "-Wall", "-Wextra", "-Werror", "-I", SOURCE / "include",
                   "-o", library, SOURCE / "tests/samples/StandIn.c"]
        made = run(*command)
        if made.returncode != 0:
            raise RuntimeError(made.stderr)
        for name in cls.made:
            (cls.folder / f"{name}.exe.config").write_text(
                f'<configuration><dllmap dll="OrvandeOnline.dll" target="{library}"/></configuration>\n')

    @classmethod
    def compile(cls, source):
        return run(*COMPILE, f"-out:{cls.folder / source.stem}.exe", source, SAMPLES / "LMOnline.cs")

    def call(self, name, *arguments):
        made = self.made[name]
        self.assertEqual((0, ""), (made.returncode, made.stderr))
        result = run("mono", self.folder / f"{name}.exe", *arguments)
        self.assertEqual("", result.stderr)
        return result.returncode, result.stdout

    def test_samples_are_compiled_for_handhelds_too(self):
        for name in ("Search", "Download", "Range"):
            made = run(*COMPILE, "-define:PocketPC", f"-out:{self.folder}/{name}Handheld.exe",
                       SAMPLES / f"{name}.cs", SAMPLES / "LMOnline.cs")
            self.assertEqual((0, ""), (made.returncode, made.stderr))

    def test_records_have_the_layout_of_the_header(self):
        _, output = self.call("Declarations")
        self.assertEqual(["MapShopResult 2604: Number 0 Text1 4 Text2 404 Text3 604",
                          "DownloadProgress 16: BytesReceived 0 TotalBytes 8"], output.splitlines()[:2])

    def test_functions_are_those_that_the_library_exports(self):
        _, output = self.call("Declarations")
        exported = (SOURCE / "src/frame/Exports.def").read_text(encoding="ascii").split("EXPORTS")[1].split()
        self.assertEqual([f"OrvandeOnline.dll {name} Cdecl True" for name in sorted(exported)],
                         sorted(output.splitlines()[2:]))

    def test_constants_are_those_of_the_header(self):
        header = (SOURCE / "include/LMOnline.h").read_text(encoding="ascii")
        source = (SAMPLES / "LMOnline.cs").read_text(encoding="ascii")
        values = re.findall(r"#define LM_ERROR_(\w+) (0x2\w+)U", header)
        self.assertLess(4, len(values))
        for name, value in values:
            self.assertIn(f"const int {name.title().replace('_', '')} = {value};", source)

    def test_search_passes_a_box_and_reads_whole_texts(self):
        code, output = self.call("Search", "45.8", "-5.9", "47.9", "179.99999")
        self.assertEqual(0, code)
        self.assertEqual(["Hokkaido, 4580000 KB, /maps/a.map", "Hokkaid\u014D, -590000 KB, /maps/a.map",
                          f"{199 * 'x'}, 4790000 KB, {99 * 'y'}", "Hokkaido, 17999999 KB, /maps/a.map",
                          "-4 maps in the shop"], output.splitlines())

    def test_search_tells_that_the_answer_is_not_whole(self):
        code, output = self.call("Search")
        self.assertEqual((1, "this is not all: error 0x22000006"), (code, output.splitlines()[-1]))

    def test_download_shows_its_progress(self):
        self.assertEqual((0, "20%\n40%\n60%\n80%\n100%\n5000000000 bytes\n"),
                         self.call("Download", "host.example", "/a.map", "a file"))

    def test_download_is_cancelled_when_the_file_is_too_large(self):
        self.assertEqual((1, "cancelled: the file is too large\n"),
                         self.call("Download", "host.example", "/a.map", "a file", "4999999999"))

    def test_download_tells_the_status_of_a_refusal(self):
        self.assertEqual((1, "the server refused: HTTP status 404\n"),
                         self.call("Download", "host.example", "/none", "a file"))

    def test_range_passes_an_offset_of_64_bits(self):
        self.assertEqual((0, "05 06 07 08\n"),
                         self.call("Range", "host.example", "/a.map", str(2 ** 33 + 5), "4"))

    def test_range_tells_that_the_file_has_ended(self):
        self.assertEqual((1, "the file ends before the part does\n"),
                         self.call("Range", "host.example", "/a.map", str(2 ** 40 - 3), "4"))

    def test_wrong_arguments_are_told(self):
        self.assertEqual(2, self.call("Search", "1")[0])
        self.assertEqual(2, self.call("Download", "host.example")[0])
        self.assertEqual(2, self.call("Range", "host.example", "/a.map", "0", "4097")[0])


if __name__ == "__main__":
    named_cases.main()
