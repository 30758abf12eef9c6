"""Writes a C file that refers to every function that a DLL imports, so that another DLL imports the same.

    make_peer_imports.py DLL OUTPUT COMPILER LIBRARY ...    LIBRARY: -lNAME or the file of an import library

How the names are decorated in C is looked up in the import libraries.
"""
import pathlib
import re
import subprocess
import sys


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


def imports_of(dll, objdump):
    """Pairs of a DLL and a function's name, or its ordinal where it is imported by that."""
    library = ""
    for line in output_of(objdump, "-p", dll).split("\n"):
        if found := re.fullmatch(r"\s*DLL Name: (.+)", line):
            library = found[1].lower()
        elif found := re.fullmatch(r"\t[0-9a-f]+\t +(\d+)  (\S+)", line):
            yield library, f"#{found[1]}" if found[2] == "<none>" else found[2]


def symbols_of(file, nm):
    """The symbols of an import library, by the names in C without their decoration."""
    symbols = {}
    for symbol in re.findall(r" I (__imp__\S+)$", output_of(nm, file), re.MULTILINE):
        symbols[re.sub(r"@\d+$", "", symbol.removeprefix("__imp__"))] = symbol
    return symbols


def main(dll, output, compiler, *libraries):
    prefix = compiler.rpartition("-gcc")[0]
    symbols = {}
    for library in libraries:
        file = library
        if library.startswith("-l"):
            file = output_of(compiler, f"-print-file-name=lib{library[2:]}.a").strip()
        name = pathlib.Path(file).name.removeprefix("lib").partition(".")[0]
        symbols[f"{name}.dll"] = symbols_of(file, prefix + "-nm")
    declarations, references = [], []
    for number, (library, function) in enumerate(imports_of(dll, prefix + "-objdump")):
        name = {"aygshell.dll#9": "SHInitExtraControls"}.get(library + function, function)
        symbol = symbols.get(library, {}).get(name)
        if symbol is None:
            sys.exit(f"make_peer_imports.py: no import library has {library}!{function}")
        declarations.append(f'extern void* import{number} __asm__("{symbol}");\n')
        references.append(f"    &import{number},\n")
    pathlib.Path(output).write_text(
        "/* Made by make_peer_imports.py. */\n" + "".join(declarations) +
        "\n__declspec(dllexport) void** const peerImports[] = {\n" + "".join(references) + "};\n",
        encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
