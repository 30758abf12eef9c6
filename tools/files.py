"""The project's files: those that git lists, or, where there is no clone, those that the source archive
lists."""
import fnmatch
import os
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
LIST = "MANIFEST"  # of the source archive: a name a line, its own not among them


class Unlisted(Exception):
    """Nobody can tell which files are the project's: one sentence."""


def listed_by_git():
    try:
        names = subprocess.run(["git", "ls-files", "-z"], cwd=ROOT, check=True, capture_output=True).stdout
    except (FileNotFoundError, subprocess.CalledProcessError):
        raise Unlisted("git cannot list the files") from None
    return os.fsdecode(names).split("\0")


def listed(*patterns):
    """The names of the files that are there, from the project's folder; with patterns, those that match one.
    In a pattern * stands for slashes, too."""
    archived = ROOT / LIST
    if archived.exists() and not (ROOT / ".git").exists():
        names = archived.read_text(encoding="utf-8").split("\n")
    else:
        names = listed_by_git()
    return sorted(name for name in names if (ROOT / name).is_file()
                  and (not patterns or any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns)))
