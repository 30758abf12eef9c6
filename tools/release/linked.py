"""What of other projects is linked into a file, by the linker's map of it."""
import dataclasses
import pathlib
import re
import subprocess

NOTICES = pathlib.Path(__file__).resolve().parent / "notices"


@dataclasses.dataclass(frozen=True)
class Component:
    name: str
    license: str  # as SPDX writes it
    copyright: str
    notice: str  # the file with its conditions
    packages: tuple  # Debian's that it may come from, of which one is installed


GCC_LICENSE = "GPL-3.0-or-later WITH GCC-exception-3.1"
GCC_COPYRIGHT = "Copyright Free Software Foundation, Inc."
MINGW_LICENSE = "LicenseRef-mingw-w64-runtime"
LIBSTDCXX = {
    "windows": Component("libstdc++ (mingw-w64)", GCC_LICENSE, GCC_COPYRIGHT, "gcc.txt",
                         ("g++-mingw-w64-i686-win32",)),
    "device": Component("libstdc++ (arm-none-eabi)", GCC_LICENSE, GCC_COPYRIGHT, "gcc.txt",
                        ("libstdc++-arm-none-eabi-newlib",)),
}
LIBGCC = {
    "windows": Component("libgcc (mingw-w64)", GCC_LICENSE, GCC_COPYRIGHT, "gcc.txt",
                         ("gcc-mingw-w64-i686-win32-runtime",)),
    "device": Component("libgcc (arm-none-eabi)", GCC_LICENSE, GCC_COPYRIGHT, "gcc.txt",
                        ("gcc-arm-none-eabi",)),
}
MINGW = Component("mingw-w64 runtime", MINGW_LICENSE, "Copyright 2009-2016 the mingw-w64 project",
                  "mingw-w64.txt", ("mingw-w64-i686-dev",))

SECTION = re.compile(r"^ (\.\S+)\s+0x[0-9a-f]+ +0x([0-9a-f]+) (/\S.*)$", re.MULTILINE)


class Unknown(Exception):
    """Something is linked in of which nobody knows the conditions: one sentence."""


def linked_files(text):
    """The files of the compiler's and the system's folders, with members of archives in brackets, of which
    something is in the image: name, sections."""
    linked = {}
    for section, size, file in SECTION.findall(text.split("Linker script and memory map", 1)[1]):
        if int(size, 16) > 0 and not section.startswith(".debug"):
            linked.setdefault(file, set()).add(section)
    # What has a slot to be filled by the loader is a jump to a function of the system.
    return {file for file, sections in linked.items()
            if not any(section.startswith(".idata") for section in sections)}


def component_of(file, ring):
    name = file.rpartition("/")[2]
    if re.match(r"lib(stdc|supc)\+\+\.a\(", name):
        return LIBSTDCXX[ring]
    if re.match(r"libgcc(_eh)?\.a\(|crt(begin|end)\.o$", name):
        return LIBGCC[ring]
    # These parts of mingw-w64 are under conditions that its notice here does not have.
    others = re.search(r"\((lib\w*-)?(getopt|gcrt0|gmon|mcount|profil|strtok_r)\.o\)", file)
    if ring == "windows" and not others and re.search(r"/i686-w64-mingw32/lib/", file):
        return MINGW
    raise Unknown(f"the conditions of {file} are not known")


def components(map_file, ring, own_folder):
    """What is linked into the file of this map, sorted by name."""
    text = pathlib.Path(map_file).read_text(encoding="utf-8")
    foreign = {file for file in linked_files(text) if not file.startswith(f"{own_folder}/")}
    return sorted({component_of(file, ring) for file in foreign}, key=lambda component: component.name)


def version_of(component):
    """Debian's package that it comes from, and the version of that."""
    for package in component.packages:
        run = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], stdout=subprocess.PIPE,
                             stderr=subprocess.DEVNULL, text=True, check=False)
        if run.returncode == 0 and run.stdout:
            return package, run.stdout
    raise Unknown(f"the version of {component.name} is not known")


def notice_of(component):
    return (NOTICES / component.notice).read_text(encoding="utf-8")
