"""Judges what gcovr and coverage.py have counted, house by house."""
import dataclasses
import fnmatch
import json
import os
import re


class Unreadable(Exception):
    """A report or a source that cannot be judged; the message is one sentence."""


@dataclasses.dataclass(frozen=True)
class House:
    """A folder, what of its lines and branches has to run, in per cent (no branches are asked for with 0),
    how the names of those of its files end that are counted, and which of them only other builds have."""
    folder: str
    lines: int
    branches: int = 0
    endings: tuple = (".cpp", ".h")
    elsewhere: tuple = ()

    @property
    def name(self):
        return self.folder

    def has(self, file):
        return file.startswith(f"{self.folder}/") and file.endswith(self.endings)

    def wants_run(self, file):
        """Whether a source has to be in a program that is counted."""
        return not file.endswith(".h") and file not in self.elsewhere


@dataclasses.dataclass(frozen=True)
class Scripts(House):
    """The scripts in Python of a folder, or those that match the patterns of `only`. Those that match the
    patterns of `elsewhere` do not belong to it."""
    only: tuple = ("*",)

    @property
    def name(self):
        return f"scripts of {self.folder}"

    def has(self, file):
        def matches(patterns):
            return any(fnmatch.fnmatchcase(file, pattern) for pattern in patterns)
        is_script = file.endswith(".py") or "." not in os.path.basename(file)
        return (is_script and file.startswith(f"{self.folder}/") and matches(self.only) and
                not matches(self.elsewhere))


@dataclasses.dataclass(frozen=True)
class Build:
    """A preset, the houses that are counted in it, and what reads the counts of its compiler."""
    houses: tuple
    gcov: str = ""

    @property
    def compiled(self):
        return [house for house in self.houses if not isinstance(house, Scripts)]


# What tools/soak has for the DLLs under Wine.
SOAK_OF_DLLS = ("tools/soak_library.py", "tools/soak_faults.py")
PACKAGING = ("tools/package", "tools/release/*")
# The first two measure, which no test does; the last runs within gdb.
NOT_TESTED = ("tools/bench", "tools/bench_plots.py", "tools/gdb_images.py")
BUILDS = {
    "coverage": Build((House("src", 100, 100),
                       # The DLL has its objects from there, the tests the whole library's.
                       House("companion", 95, elsewhere=("companion/ProcessObjects.cpp",)),
                       House("service", 95),
                       House("translation", 95, elsewhere=("translation/sanitizer/LeaksOfGettext.cpp",)),
                       House("platform/simulator", 95),
                       Scripts("tools", 95, elsewhere=(*SOAK_OF_DLLS, *PACKAGING, *NOT_TESTED)),
                       # Made a header once, of a font.
                       Scripts("translation", 95, elsewhere=("translation/texts/tahoma_widths.py",))),
                      "gcov"),
    # What runs on no other system.
    "device-tests": Build((House("platform/device/loader", 95), Scripts("platform/device", 95)),
                          "arm-linux-gnueabi-gcov"),
    "windows-tests": Build((House("platform/windows", 95, endings=(".c",)),
                            House("examples", 95, endings=(".c", ".cpp", ".h"),
                                  elsewhere=tuple(f"examples/mapshop/device/{name}.cpp" for name in
                                                  ("Console", "Interruption", "SystemTexts"))),
                            Scripts("tools", 95, only=SOAK_OF_DLLS)), "i686-w64-mingw32-gcov-posix"),
    "packages": Build((Scripts("tools", 95, only=PACKAGING),
                       Scripts("platform", 95, only=("platform/import_library.py",)))),
}
MARK = re.compile(r"GCOVR?_EXCL_\w+(:? *)(.*)")


@dataclasses.dataclass
class Share:
    """How many of how many run."""
    run: int = 0
    all: int = 0

    def add(self, count):
        self.all += 1
        self.run += count > 0

    def reaches(self, per_cent):
        return 100 * self.run >= per_cent * self.all

    def __str__(self):
        # Cut, not rounded: only all of them are 100 %.
        tenths = 1000 * self.run // self.all if self.all else 1000
        return f"{self.run} of {self.all} ({tenths // 10}.{tenths % 10} %)"


class Judgement:
    """What a report says of one house: figures, what does not run, and what is wrong."""

    def __init__(self, house):
        self.house = house
        self.lines = Share()
        self.branches = Share()
        self.not_run = []
        self.mistakes = []

    def take(self, file, lines):
        for line in lines:
            if line.get("gcovr/noncode") or line.get("gcovr/excluded"):
                continue
            place = f"{file}:{line['line_number']}"
            self.lines.add(line["count"])
            if line["count"] == 0:
                self.not_run.append(f"{place}: this line is not run")
                continue
            # An exception leaves a call by a branch of its own. Where no file has run the line gcov does not
            # know which it is, so gcovr must not leave them out before it has put the files together.
            counts = [branch["count"] for branch in line["branches"] if not branch["throw"]]
            for branch_count in counts:
                self.branches.add(branch_count)
            if 0 in counts:
                self.not_run.append(f"{place}: {counts.count(0)} of {len(counts)} branches not taken")

    @property
    def is_reached(self):
        return (self.lines.all > 0 and self.lines.reaches(self.house.lines) and
                self.branches.reaches(self.house.branches))

    @property
    def figure(self):
        wanted = f"{self.house.lines} % and {self.house.branches} %" if self.house.branches else \
            f"{self.house.lines} % of lines"
        branches = f", {self.branches} branches" if self.branches.all else ""
        return f"{self.house.name}: {self.lines} lines{branches}; wanted: {wanted}"

    @property
    def complaints(self):
        """Lines; none when all is well."""
        if self.is_reached:
            return self.mistakes
        return [*self.mistakes, *self.not_run, f"{self.figure}"]


def counted_files(report):
    """The files of a report of gcovr, each with its lines in order."""
    try:
        return {entry["file"]: sorted(entry["lines"], key=lambda line: line["line_number"])
                for entry in json.loads(report)["files"]}
    except (ValueError, KeyError, TypeError) as error:
        raise Unreadable(f"this is no report of gcovr ({type(error).__name__}: {error})") from error


def counted_scripts(report, root):
    """The same of a report of coverage.py, whose files may be named from another folder than `root`."""
    def lines_of(entry):
        # What is taken out may have run, too.
        executed = set(entry["executed_lines"]) - set(entry["excluded_lines"])
        lines = dict.fromkeys(executed, 1) | dict.fromkeys(entry["missing_lines"], 0)
        return [{"line_number": number, "count": count, "branches": []}
                for number, count in sorted(lines.items())]

    try:
        return {os.path.relpath(file, root): lines_of(entry)
                for file, entry in json.loads(report)["files"].items()}
    except (ValueError, KeyError, TypeError, AttributeError) as error:
        raise Unreadable(f"this is no report of coverage.py ({type(error).__name__}: {error})") from error


def marks_without_reason(text):
    """The numbers of the lines that take something out of the count and do not say why."""
    for number, line in enumerate(text.split("\n"), 1):
        mark = MARK.search(line)
        if mark and "_STOP" not in mark[0] and not (mark[1].startswith(":") and mark[2]):
            yield number


def judge(house, counted, sources, compiled):
    """The judgement of a house. `counted`: lines by files; `sources`: the texts of files by their paths. A
    source of the house that is not among the `compiled` ones counts as a mistake."""
    judgement = Judgement(house)
    for file, lines in sorted(counted.items()):
        if house.has(file):
            judgement.take(file, lines)
    for file, text in sorted(sources.items()):
        if not house.has(file):
            continue
        judgement.mistakes += [f"{file}:{number}: the mark has no reason (MARK: REASON)"
                               for number in marks_without_reason(text)]
        if house.wants_run(file) and file not in compiled:
            judgement.mistakes.append(f"{file}: this is in no program that is counted")
    return judgement
