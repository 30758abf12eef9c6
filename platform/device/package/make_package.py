#!/usr/bin/env python3
"""Makes the packages of the device's files: a .cab that Windows Mobile installs, and a .zip.

    make_package.py NAME PROGRAM... -- DOCUMENT...

Writes NAME.cab with the programs, and NAME.zip with programs and documents. The same files give the same
packages.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml
import zipfile

APPLICATION = "Orvande Online"
FOLDER = f"%CE1%\\{APPLICATION}"  # below \Program Files
# The time of every file in an archive: with the time of the build, no two packages would be the same.
MOMENT = 1577836800  # 2020-01-01, 0:00


def characteristic(parent, kind, **attributes):
    return xml.SubElement(parent, "characteristic", type=kind, **attributes)


def parameter(parent, name, value, **attributes):
    xml.SubElement(parent, "parm", name=name, value=str(value), **attributes)


def stored_name(program, number):
    """Files in the cabinet have short names, which end with their number."""
    return f"{program.stem.upper()[:8]}.{number:03}"


def instructions(programs):
    """What the device's installer is to do."""
    document = xml.Element("wap-provisioningdoc")
    install = characteristic(document, "Install")
    parameter(install, "InstallPhase", "install")
    parameter(install, "OSVersionMin", "4.20")
    parameter(install, "OSVersionMax", "99.99")
    parameter(install, "BuildNumberMin", 0)
    parameter(install, "BuildNumberMax", -536870912)
    parameter(install, "AppName", APPLICATION)
    parameter(install, "InstallDir", FOLDER, translation="install")
    parameter(install, "NumDirs", 1)
    parameter(install, "NumFiles", len(programs))
    for counted in ("NumRegKeys", "NumRegVals", "NumShortcuts"):
        parameter(install, counted, 0)
    operations = characteristic(document, "FileOperation")
    folder = characteristic(operations, FOLDER, translation="install")
    characteristic(folder, "MakeDir")
    for number, program in enumerate(programs, 1):
        file = characteristic(folder, program.name, translation="install")
        parameter(characteristic(file, "Extract"), "Source", stored_name(program, number))
    xml.indent(document)
    return xml.tostring(document, encoding="unicode") + "\n"


def make_cabinet(path, programs):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "_setup.xml").write_text(instructions(programs), encoding="ascii", newline="\r\n")
        for number, program in enumerate(programs, 1):
            shutil.copyfile(program, folder / stored_name(program, number))
        # The instructions come first, so that an installer finds them without reading all of the cabinet.
        names = ["_setup.xml", *(stored_name(program, number) for number, program in enumerate(programs, 1))]
        for file in names:
            os.chmod(folder / file, 0o644)
            os.utime(folder / file, (MOMENT, MOMENT))
        subprocess.run(["gcab", "--create", "--nopath", path, *names], cwd=folder, check=True,
                       env={**os.environ, "TZ": "UTC"})


def make_zip(path, files):
    with zipfile.ZipFile(path, "w") as archive:
        for file in files:
            entry = zipfile.ZipInfo(file.name, (2020, 1, 1, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            archive.writestr(entry, file.read_bytes())


def main():
    name = pathlib.Path(sys.argv[1]).absolute()
    files = [pathlib.Path(argument) for argument in sys.argv[2:]]
    separator = files.index(pathlib.Path("--"))
    programs, documents = files[:separator], files[separator + 1:]
    make_cabinet(f"{name}.cab", programs)
    make_zip(f"{name}.zip", programs + documents)


main()
