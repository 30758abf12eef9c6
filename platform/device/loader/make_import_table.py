#!/usr/bin/env python3
"""Writes the table of everything that images import.

    make_import_table.py OUTPUT EXPORTS IMAGE ...

A line for each function: IMPORT(LIBRARY, "name", name), or IMPORT(LIBRARY, "#ordinal", name) for what is
imported by ordinal; its name stands in EXPORTS, the folder with the lists of what the device exports. What is
imported from a library without a list is left out: another image has it.
"""
import csv
import pathlib
import sys

import pefile


def name_of(exports, library, ordinal):
    with open(exports / f"{library}.tsv", encoding="ascii") as file:
        return dict(csv.reader(file, delimiter="\t"))[str(ordinal)]


def imports(exports, image):
    for entry in image.DIRECTORY_ENTRY_IMPORT:
        library = entry.dll.decode().removesuffix(".dll")
        if not (exports / f"{library.lower()}.tsv").exists():
            continue
        for function in entry.imports:
            name = function.name.decode() if function.name else name_of(exports, library, function.ordinal)
            called = function.name.decode() if function.name else f"#{function.ordinal}"
            yield f'IMPORT({library.upper()}, "{called}", {name})\n'


def main():
    output, exports, images = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3:]
    table = "".join(sorted({line for image in images for line in imports(exports, pefile.PE(image))}))
    # What is compiled with it is compiled anew only when it is another.
    if not output.exists() or output.read_text(encoding="ascii") != table:
        output.write_text(table, encoding="ascii")


main()
