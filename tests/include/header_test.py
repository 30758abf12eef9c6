#!/usr/bin/env python3
"""What applications include, before their compilers: each header of include/ by itself, in a source that uses
every name of it (NAMEUse.c)."""
import concurrent.futures
import itertools
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
sys.path.append(str(ROOT / "tests/support"))
import named_cases

# The version header has numbers only, and the resource compiler reads it too.
HEADERS = sorted(file for file in (ROOT / "include").glob("*.h") if not file.stem.endswith("Version"))
STRICT = ["-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Wconversion", "-Werror"]
LANGUAGES = {
    "c": [*STRICT, "-x", "c", "-Wstrict-prototypes", "-Wmissing-prototypes"],
    "c++": [*STRICT, "-x", "c++"],
}
STANDARDS = ["c89", "c99", "c11", "c17", "c++98", "c++11", "c++14", "c++17", "c++20"]
COMPILERS = {
    "gcc": ["gcc"],
    "gcc with short wide characters": ["gcc", "-fshort-wchar"],
    "clang": ["clang"],
    "mingw": ["i686-w64-mingw32-gcc"],
    "the device's gcc": ["arm-none-eabi-gcc", "-fshort-wchar"],
    "gcc with packed records": ["gcc", "-fpack-struct=1"],
}
# As clang calls the versions, and as _MSC_VER does.
MICROSOFT = {"12.00": 1200, "13.10": 1310, "14.00": 1400, "15.00": 1500, "16.00": 1600, "17.00": 1700,
             "18.00": 1800, "19.00": 1900}


def language_of(standard):
    return LANGUAGES["c++" if "++" in standard else "c"] + [f"-std={standard}"]


def microsoft(version, target, *options):
    """Clang as one of Microsoft's compilers. The words that they have for integers are no extension there."""
    return ["clang", f"--target={target}-pc-windows-msvc", f"-fms-compatibility-version={version}",
            "-fms-extensions", "-nostdinc", "-isystem", "old_headers", *options,
            "-Wno-language-extension-token", "-Wno-long-long", "-Wno-c++11-long-long"]


def compiled(command, source, *options):
    """What the compiler says, or nothing."""
    run = subprocess.run([*command, "-I", str(ROOT / "include"), *options, str(source)], check=False,
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, cwd=HERE)
    return run.stdout or "no reason given" if run.returncode else ""


def complaints(commands):
    """What the first compiler says that does not take a source, and how many do not; `commands`: by what they
    are called."""
    def judge(case):
        (name, command), header = case
        said = compiled(command, f"{header.stem}Use.c", "-fsyntax-only")
        return f"{header.name}, {name}:\n{said}" if said else ""
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        said = list(filter(None, pool.map(judge, itertools.product(commands.items(), HEADERS))))
    return f"{len(said)} of {len(commands) * len(HEADERS)}; {said[0]}" if said else ""


def declarations(node, header, place=None):
    """Kind and name of all that a header declares, from clang's tree. There a place names its file only where
    that is another than before."""
    place = place or {"file": ""}

    def follow(where):
        for part in (where, where.get("spellingLoc", {}), where.get("expansionLoc", {})):
            place["file"] = part.get("file", place["file"])

    follow(node.get("loc", {}))
    is_here = place["file"] == str(header)
    for end in ("begin", "end"):
        follow(node.get("range", {}).get(end, {}))
    if is_here and "name" in node and node["kind"] != "ParmVarDecl":
        yield node["kind"], node["name"]
    for inner in node.get("inner", []):
        yield from declarations(inner, header, place)


def names_of(header):
    """All names of a header that an application can use, and those of its functions."""
    tree = subprocess.run(["clang", "-x", "c", "-fsyntax-only", "-Xclang", "-ast-dump=json", "-include",
                           str(header), os.devnull], stdout=subprocess.PIPE, check=True).stdout
    declared = list(declarations(json.loads(tree), header))
    functions = {name for kind, name in declared if kind == "FunctionDecl"}
    macros = set(re.findall(r"^#define (?!\w+_H$)(\w+)", header.read_text(), re.MULTILINE))
    asserted = re.compile(r"\w*Assert\w*")
    return {name for _, name in declared if not asserted.fullmatch(name)} | macros, functions


class Compilers(unittest.TestCase):
    def assert_silent(self, said):
        if said:
            self.fail(said)


class Header(Compilers):
    def test_sources_use_every_name(self):
        self.assertTrue(HEADERS)
        for header in HEADERS:
            names, functions = names_of(header)
            self.assertTrue(functions, header)
            used = re.sub(r"/\*.*?\*/", "", (HERE / f"{header.stem}Use.c").read_text(), flags=re.DOTALL)
            self.assertEqual(set(), names - set(re.findall(r"\w+", used)), header)

    def test_exports_are_what_is_declared(self):
        lists = "".join((ROOT / folder / "Exports.def").read_text() for folder in ("src/frame", "companion"))
        exports = re.findall(r"^    (\w+)", lists, re.MULTILINE)
        self.assertEqual(set().union(*(names_of(header)[1] for header in HEADERS)), set(exports))

    def test_compilers_of_today_take_it_in_every_standard(self):
        self.assert_silent(complaints({
            f"{name}, {standard}": command + language_of(standard)
            for (name, command), standard in itertools.product(COMPILERS.items(), STANDARDS)}))

    def test_functions_have_plain_names(self):
        for header in HEADERS:
            functions = names_of(header)[1]
            for command in COMPILERS.values():
                for language in ("c", "c++"):
                    with tempfile.NamedTemporaryFile(suffix=".o") as file:
                        self.assert_silent(compiled([*command, "-x", language], f"{header.stem}Use.c", "-c",
                                                    "-o", file.name))
                        listed = subprocess.run(["llvm-nm", "--undefined-only", "--just-symbol-name",
                                                 file.name], stdout=subprocess.PIPE, text=True, check=True)
                    symbols = {name.removeprefix("_") for name in listed.stdout.split()}
                    self.assertEqual(set(), functions - symbols, command)


class Microsoft(Compilers):
    def assert_taken(self, standard, *options):
        self.assert_silent(complaints({
            f"version {number} for {target}":
                microsoft(version, target, *language_of(standard), f"-DEXPECTED_MSC_VER={number}",
                          "-include", "expected.h", *options)
            for (version, number), target in itertools.product(MICROSOFT.items(), ("i686", "thumbv7"))}))

    def test_headers_are_as_old_as_meant(self):
        with tempfile.NamedTemporaryFile("w", suffix=".c") as file:
            file.write("#include <stdint.h>\n")
            file.flush()
            said = compiled(microsoft("12.00", "i686"), file.name, "-fsyntax-only")
        self.assertIn("'stdint.h' file not found", said)

    def test_as_c(self):
        self.assert_taken("c89")

    def test_with_wide_characters_of_a_type_of_their_own(self):
        self.assert_taken("c++98", "-DEXPECTED_NATIVE")

    def test_with_wide_characters_that_are_numbers(self):
        self.assert_taken("c++98", "-Xclang", "-fno-wchar")

    def test_in_later_standards(self):
        self.assert_taken("c++14", "-DEXPECTED_NATIVE")


if __name__ == "__main__":
    named_cases.main()
