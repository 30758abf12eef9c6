#!/usr/bin/env python3
"""The samples before clang as Microsoft's compilers for handhelds, with Wine's headers of the system. C++
samples that use the C++ library are not among them: that of those compilers is not to be had here.

    compilers_test.py
"""
import itertools
import pathlib
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "tests/support"))
import named_cases

WINE = "/usr/include/wine/wine"
# As clang calls Embedded Visual C++ 4 and Visual Studio 2005.
VERSIONS = ["12.00", "14.00"]
# Wine defines functions that clang has of its own; by another name they disturb nobody.
OF_CLANG = ["And64", "CompareExchangePointer", "Decrement64", "Exchange64", "ExchangeAdd64",
            "ExchangePointer", "Increment64", "Or64", "Xor64"]
C = ["clang", "-std=c89"]
CPP = ["clang++", "-std=c++98", "-fexceptions", "-fcxx-exceptions"]


def said(compiler, version, file):
    """What the compiler says of a sample."""
    run = subprocess.run([*compiler, "--target=i686-pc-windows-msvc", f"-fms-compatibility-version={version}",
                          "-fms-extensions", "-Wall", "-Wextra", "-Wdeclaration-after-statement", "-Werror",
                          "-DUNICODE", "-DWINE_UNICODE_NATIVE",
                          *(f"-D_Interlocked{name}=WineInterlocked{name}" for name in OF_CLANG),
                          "-I", SOURCE / "include", "-isystem", f"{WINE}/msvcrt",
                          "-isystem", f"{WINE}/windows", "-fsyntax-only", file],
                         stderr=subprocess.PIPE, text=True, check=False)
    return run.stderr


class OldCompilers(unittest.TestCase):
    def assert_taken(self, compiler, files):
        self.assertTrue(files)
        for version, file in itertools.product(VERSIONS, files):
            self.assertEqual("", said(compiler, version, file), f"{file} by version {version}")

    def test_samples_in_c(self):
        self.assert_taken(C, sorted((SOURCE / "examples/c").glob("*.c")))

    def test_samples_in_cpp(self):
        self.assert_taken(CPP, [SOURCE / "examples/cpp" / name for name in ("search.cpp", "download.cpp")])

    def assert_refused(self, compiler, ending, code):
        with tempfile.NamedTemporaryFile("w", suffix=ending) as file:
            file.write(code)
            file.flush()
            self.assertIn("error:", said(compiler, "14.00", file.name))

    def test_what_they_do_not_know_is_refused(self):
        self.assert_refused(C, ".c", "int F(void)\n{\n    int a = 1;\n    ++a;\n    int b = a;\n"
                                     "    return b;\n}\n")
        self.assert_refused(C, ".c", "#include <nosuch.h>\n")
        self.assert_refused(CPP, ".cpp", "const char* const none = nullptr;\n")


if __name__ == "__main__":
    named_cases.main()
