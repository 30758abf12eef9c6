"""Judges what gcovr has counted, house by house."""
import dataclasses
import json
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

    def has(self, file):
        return file.startswith(f"{self.folder}/") and file.endswith(self.endings)


@dataclasses.dataclass(frozen=True)
class Build:
    """A preset, the houses that are counted in it, and what reads the counts of its compiler."""
    houses: tuple
    gcov: str


BUILDS = {
    "coverage": Build((House("src", 100, 100),
                       # The DLL has its objects from there, the tests the whole library's.
                       House("companion", 95, elsewhere=("companion/ProcessObjects.cpp",)),
                       House("service", 95),
                       House("translation", 95, elsewhere=("translation/sanitizer/LeaksOfGettext.cpp",)),
                       House("platform/simulator", 95)), "gcov"),
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
        return f"{self.house.folder}: {self.lines} lines, {self.branches} branches; wanted: {wanted}"

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


def marks_without_reason(text):
    """The numbers of the lines that take something out of the count and do not say why."""
    for number, line in enumerate(text.split("\n"), 1):
        mark = MARK.search(line)
        if mark and "_STOP" not in mark[0] and not (mark[1].startswith(":") and mark[2]):
            yield number


def judge(house, report, sources, compiled):
    """The judgement of a house. `report`: the text of gcovr's JSON; `sources`: the texts of files by their
    paths. A source of the house that is not among the `compiled` ones counts as a mistake."""
    counted = counted_files(report)
    judgement = Judgement(house)
    for file, lines in sorted(counted.items()):
        if house.has(file):
            judgement.take(file, lines)
    for file, text in sorted(sources.items()):
        if not house.has(file):
            continue
        judgement.mistakes += [f"{file}:{number}: the mark has no reason (MARK: REASON)"
                               for number in marks_without_reason(text)]
        if not file.endswith(".h") and file not in compiled and file not in house.elsewhere:
            judgement.mistakes.append(f"{file}: this is in no program that is counted")
    return judgement
