"""What the tests of the packages have in common."""
import functools
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
OUTPUT = ROOT / "build/packages"
VERSION = ".".join(re.findall(r"VERSION_[A-Z]+ (\d+)", (ROOT / "include/LMOnlineVersion.h").read_text()))
DLLS = {"OrvandeOnline": ROOT / "src/frame/Exports.def", "OrvandeAccount": ROOT / "companion/Exports.def"}
# The project's file of each translation that lies beside the modules.
TRANSLATIONS = {f"{module}.{file.name}": file for module in ("OrvandeOnline", "OrvandeAccount", "signin")
                for file in sorted((ROOT / "languages").glob("*.txt"))}
SCRATCH = pathlib.Path(os.environ.get("ORVANDE_TEST_SCRATCH", tempfile.gettempdir())).resolve()

sys.path += [str(ROOT / "tests/support"), str(ROOT / "tools")]
from windows_programs import run_program


def package(kind):
    return OUTPUT / f"orvande-online-{VERSION}-{kind}"


def exports(dll):
    return sorted(DLLS[dll].read_text(encoding="ascii").split("EXPORTS")[1].split())


@functools.cache
def unpacked(ring):
    """The folder of an SDK, as somebody has unpacked it."""
    folder = pathlib.Path(tempfile.mkdtemp(dir=SCRATCH))
    with zipfile.ZipFile(package(f"{ring}-sdk.zip")) as archive:
        archive.extractall(folder)
    return folder / f"orvande-online-{VERSION}-{ring}-sdk"


def run(*command, by=functools.partial(subprocess.run, check=False), **options):
    """Runs it, and fails with all that it has said when it does; its output."""
    options = {"stdin": subprocess.DEVNULL, "capture_output": True, "text": True} | options
    result = by([str(word) for word in command], **options)
    if result.returncode != 0:
        raise AssertionError(f"{shlex.join(map(str, command))}\n{result.stdout}{result.stderr}")
    return result.stdout


def run_windows(program, *arguments, **options):
    """Runs a program of Windows with the service of the tests behind its network; its output."""
    environment = {name: value for name, value in os.environ.items() if name.lower() != "no_proxy"}
    environment["http_proxy"] = f"http://127.0.0.1:{os.environ['ORVANDE_TEST_MAPS_PORT']}"
    return run(ROOT / "tools/wine", program, *arguments, by=run_program, env=environment, **options)


def documented_lines(document, beginning):
    """The commands in a document that begin so, each with the lines that it goes on in."""
    text = document.read_text(encoding="utf-8").replace("\\\n", " ")
    return [line.strip() for line in text.split("\n") if line.startswith(f"    {beginning}")]
