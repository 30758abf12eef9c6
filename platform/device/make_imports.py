#!/usr/bin/env python3
"""Writes the assembly of everything that an image may import.

    make_imports.py OUTPUT LIBRARY[#]=LIST ...

LIST has the lines "ordinal<TAB>name" of what LIBRARY exports; with # it is imported by ordinal, else by name.
Each function becomes a piece of code that callers reach by its name, and a slot, which the device's loader
fills with the function's address. A slot's symbol says what belongs there: LIBRARY!name or LIBRARY!#ordinal;
behind a library's slots comes the 0 that ends them, LIBRARY!, which every function of the library keeps.
make_image.py makes the import table of the slots that are left when the linker has dropped what nobody calls.
"""
import re
import sys

# The device has these functions, but not with the parameters of standard C.
DIFFERENT = {"swprintf", "vswprintf"}

MACRO = """\
    .macro import library, function, slot
    .pushsection .text.import.\\function, "ax", %progbits
    .arm
    .global \\function
    .type \\function, %function
\\function:
    ldr ip, 1f
    ldr ip, [ip]
    bx ip
1:  .word "\\slot"
    .size \\function, . - \\function
    .reloc 0, R_ARM_NONE, "\\library!"
    .popsection
    .pushsection .imports.\\library\\().0.\\function, "aw", %progbits
"\\slot":
    .word 0
    .popsection
    .endm

    .macro end_of_imports library
    .pushsection .imports.\\library\\().1, "aw", %progbits
"\\library!":
    .word 0
    .popsection
    .endm

"""


def imports(library, path):
    by_ordinal = library.endswith("#")
    library = library.rstrip("#")
    with open(path, encoding="ascii") as lines:
        for line in lines:
            ordinal, name = line.rstrip("\n").split("\t")
            # The names of another compiler's C++ functions are of no use here.
            if re.fullmatch(r"[A-Za-z_]\w*", name) and name not in DIFFERENT:
                slot = f"#{ordinal}" if by_ordinal else name
                yield f'    import {library}, {name}, "{library}!{slot}"\n'


def main():
    output, *lists = sys.argv[1:]
    lines = [MACRO]
    named = set()
    for library_list in lists:
        for line in imports(*library_list.split("=", 1)):
            name = line.split(",")[1]
            if name not in named:  # some names are listed under two ordinals
                lines.append(line)
            named.add(name)
        library = library_list.partition("=")[0].rstrip("#")
        lines.append(f"    end_of_imports {library}\n")
    with open(output, "w", encoding="ascii") as file:
        file.writelines(lines)


main()
