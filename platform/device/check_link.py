#!/usr/bin/env python3
"""Stops the build when an image was linked with code that does not fit Windows CE.

    check_link.py MAP DEMANGLER

MAP is the linker's. The compiler's own C library and the wide text of its C++ library are made for wide
characters of 4 bytes; they link silently and then destroy memory.
"""
import re
import subprocess
import sys


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        linked = file.read().split("Linker script and memory map", 1)[1]
    # The lines of linked sections: name, address, size, file. A long name has its own line; a path may have
    # blanks.
    sections = re.findall(r"^ (\.\S+)\s+0x[0-9a-f]+ +(0x[0-9a-f]+) (.+)$", linked, re.MULTILINE)
    archived = {(name, file) for name, size, file in sections if file.endswith(")") and int(size, 16) > 0}
    wrong = {file for _, file in archived if re.search(r"/lib(c|g|m|nosys|rdimon)(_nano)?\.a\(", file)}
    wide = re.compile(r"/libstdc\+\+\S*\(\S*(wstring|locale|ios|ctype|codecvt)")
    wrong |= {file for _, file in archived if wide.search(file)}

    names = [(name, file) for name, file in sorted(archived) if "/libstdc++" in file]
    mangled = "\n".join(re.sub(r"^.*?\.(?=_Z)", "", name) for name, _ in names)
    plain = subprocess.run([sys.argv[2]], input=mangled, capture_output=True, text=True,
                           check=True).stdout.splitlines()
    wrong |= {f"{file}: {text}" for (_, file), text in zip(names, plain) if "wchar_t" in text}
    if not archived:
        sys.exit("check_link: the map shows no library at all")
    if wrong:
        sys.exit("check_link: linked, though made for other wide characters:\n  " +
                 "\n  ".join(sorted(wrong)))


main()
