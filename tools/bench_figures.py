"""Figures of the benchmarks: how they are read, what they say of the library, and which aims they reach.

A figure is a line of JSON: {"row", "contender", "size", "unit", "value", "low", "high", "per"}; `value` is a
median, `low` and `high` are its spread. Contenders that were measured in turn have ratios of the pairs, too:
{"peer", "ratio", "ratio_low", "ratio_high"}, and what else a line has is not looked at. A line {"part",
"facts": {...}} tells what was measured and on what.

An aim is an object in a file aims.json: {"row", "at_most"}, for all sizes of the row and for instructions
unless it has "sizes" and "unit". It limits the library's figure itself or, with "peer", its ratio to that
contender's figure; the peer "best" is the one with the smallest. "not_worse_than" in place of "at_most" names
a kept result, whose ratio is the limit; one more hundredth of it is no worse, for counts vary by less.
"""
import json
import pathlib
from typing import NamedTuple

OWN = "library"
JUDGED = "instructions"
TOLERANCE = 1.01
UNITS = {"instructions": "instructions", "ns": "time, ns", "calls": "allocations", "bytes": "bytes"}


class Unreadable(Exception):
    """A file of figures or a text that makes no sense, and where."""


class Figure(NamedTuple):
    row: str
    contender: str
    size: int
    unit: str
    value: float
    low: float
    high: float
    per: str
    peer: str = ""
    ratio: float = 0
    ratio_low: float = 0
    ratio_high: float = 0

    @classmethod
    def of(cls, line):
        return cls(**{name: value for name, value in line.items() if name in cls._fields})


class Figures:
    """What was measured at one time."""

    def __init__(self, figures=(), facts=None):
        self.facts = facts or {}
        self.all = {(one.row, one.contender, one.size, one.unit): one for one in figures}

    @classmethod
    def of(cls, files):
        figures, facts = [], {}
        for file in files:
            for number, line in enumerate(pathlib.Path(file).read_text(encoding="utf-8").splitlines(), 1):
                try:
                    read = json.loads(line)
                    if "facts" in read:
                        facts[read["part"]] = read["facts"]
                    else:
                        figures.append(Figure.of(read))
                except (ValueError, TypeError, KeyError) as problem:
                    raise Unreadable(f"{file}:{number}: {problem}") from problem
        return cls(figures, facts)

    def get(self, row, contender, size, unit):
        return self.all.get((row, contender, size, unit))

    def sizes(self, row, unit=None):
        return sorted({one.size for one in self.all.values() if one.row == row and unit in (None, one.unit)})

    def units(self, row):
        found = {one.unit for one in self.all.values() if one.row == row}
        return [unit for unit in UNITS if unit in found] + sorted(found - UNITS.keys())

    def rows(self):
        return sorted({one.row for one in self.all.values()})

    def contenders(self, row):
        """Those of a row, the library first."""
        found = {one.contender for one in self.all.values() if one.row == row}
        return sorted(found, key=lambda name: (name != OWN, name.lower()))

    def per(self, row):
        return next(one.per for one in self.all.values() if one.row == row)

    def best_peer(self, row, size, unit):
        found = [self.get(row, name, size, unit) for name in self.contenders(row) if name != OWN]
        return min((one for one in found if one), key=lambda one: one.value, default=None)

    def peer(self, row, name, size, unit):
        return self.best_peer(row, size, unit) if name == "best" else self.get(row, name, size, unit)

    def ratio(self, row, name, size, unit):
        return ratio(self.get(row, OWN, size, unit), self.peer(row, name, size, unit))


def ratio(own, peer):
    """The library's figure in terms of the peer's; None when there is none."""
    if own is None or peer is None:
        return None
    if own.peer == peer.contender:
        return own.ratio
    return own.value / peer.value if peer.value else None


def comparison(own, peer):
    """What the figures say of the library: figures whose spreads overlap are equal."""
    if own.peer == peer.contender:
        return "less" if own.ratio_high < 1 else "more" if own.ratio_low > 1 else "equal"
    if own.low <= peer.high and peer.low <= own.high:
        return "equal"
    return "less" if own.value < peer.value else "more"


class Verdict(NamedTuple):
    """What became of one aim at one size."""
    row: str
    size: int
    unit: str
    peer: str  # "" when the aim is about the library's figure alone
    own: Figure
    other: Figure
    figure: float  # what the aim limits
    limit: float
    reached: str


def verdicts(aims, now, kept):
    """One for every aim and size; an aim whose row was not measured has one without a size."""
    for aim in aims:
        unit, peer, row = aim.get("unit", JUDGED), aim.get("peer", ""), aim["row"]
        for size in aim.get("sizes") or now.sizes(row, unit) or [None]:
            own = now.get(row, OWN, size, unit)
            other = now.peer(row, peer, size, unit) if peer else None
            figure = ratio(own, other) if peer else own and own.value
            limit = limit_of(aim, size, unit, peer, kept)
            yield Verdict(row, size, unit, other.contender if other else peer, own, other, figure, limit,
                          reached(figure, limit))


def reached(figure, limit):
    if figure is None or limit is None:
        return "not measured"
    return "yes" if figure <= limit else "**no**"


def limit_of(aim, size, unit, peer, kept):
    if "not_worse_than" not in aim:
        return aim["at_most"]
    earlier = kept.get(aim["not_worse_than"])
    if earlier is None:
        return None
    if peer:
        found = earlier.ratio(aim["row"], peer, size, unit)
    else:
        own = earlier.get(aim["row"], OWN, size, unit)
        found = own and own.value
    return found and found * TOLERANCE


def aims_of(folder):
    aims = []
    for file in sorted([*folder.glob("aims.json"), *folder.glob("*/aims.json")]):
        try:
            aims += json.loads(file.read_text(encoding="utf-8"))
        except ValueError as problem:
            raise Unreadable(f"{file}: {problem}") from problem
    return aims
