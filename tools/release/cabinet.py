"""The cabinet that Windows Mobile installs. The same files give the same cabinet."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import xml.etree.ElementTree as xml

from release.archives import MOMENT

APPLICATION = "Orvande Online"
FOLDER = f"%CE1%\\{APPLICATION}"  # below \Program Files


def characteristic(parent, kind, **attributes):
    return xml.SubElement(parent, "characteristic", type=kind, **attributes)


def parameter(parent, name, value, **attributes):
    xml.SubElement(parent, "parm", name=name, value=str(value), **attributes)


def stored_name(file, number):
    """Files in the cabinet have short names, which end with their number."""
    return f"{file.name.partition('.')[0].upper()[:8]}.{number:03}"


def instructions(files):
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
    parameter(install, "NumFiles", len(files))
    for counted in ("NumRegKeys", "NumRegVals", "NumShortcuts"):
        parameter(install, counted, 0)
    operations = characteristic(document, "FileOperation")
    folder = characteristic(operations, FOLDER, translation="install")
    characteristic(folder, "MakeDir")
    for number, file in enumerate(files, 1):
        entry = characteristic(folder, file.name, translation="install")
        parameter(characteristic(entry, "Extract"), "Source", stored_name(file, number))
    xml.indent(document)
    return xml.tostring(document, encoding="unicode") + "\n"


def make_cabinet(path, files):
    """`files`: what is installed, in this order; their names on the device are their own."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "_setup.xml").write_text(instructions(files), encoding="ascii", newline="\r\n")
        for number, file in enumerate(files, 1):
            shutil.copyfile(file, folder / stored_name(file, number))
        # The instructions come first, so that an installer finds them without reading all of the cabinet.
        names = ["_setup.xml", *(stored_name(file, number) for number, file in enumerate(files, 1))]
        for file in names:
            os.chmod(folder / file, 0o644)
            os.utime(folder / file, (MOMENT, MOMENT))
        subprocess.run(["gcab", "--create", "--nopath", path, *names], cwd=folder, check=True,
                       env={**os.environ, "TZ": "UTC"})
