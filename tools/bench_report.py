"""Makes the report of the benchmarks from figures alone: ratios, verdicts, tables, and what is to be plotted.

A figure is a line of JSON: {"row", "contender", "size", "unit", "value", "low", "high", "per"}; `value` is a
median, `low` and `high` are its spread. Contenders that were measured in turn have ratios of the pairs, too:
{"peer", "ratio", "ratio_low", "ratio_high"}, and what else a line has is not looked at. A line {"part",
"facts": {...}} tells what was measured and on what.

An aim is an object in a file aims.json: {"row", "at_most"}, for all sizes of the row and for instructions
unless it has "sizes" and "unit". It limits the library's figure itself or, with "peer", its ratio to that
contender's figure; the peer "best" is the one with the smallest. "not_worse_than" in place of "at_most" names
a kept result, whose ratio is the limit.

The text comes from the files report.md, in which these lines are replaced:
    {{facts}}  {{aims}}  {{slower}}      tables about all rows
    {{ratios}}                           a plot of all ratios that have an aim
    {{scenario FOLDER}}                  the report.md of that folder, if it has one
    {{rows ROW ...}}                     a table for each row
    {{plot ROW UNIT}}                    a plot of the row's figures in that unit against the size
"""
import json
import pathlib
import re
from typing import NamedTuple

OWN = "library"
JUDGED = "instructions"
UNITS = {"instructions": "instructions", "ns": "time, ns", "calls": "allocations", "bytes": "bytes"}
FIGURE = re.compile(r"[\d,.]+(, equal| to [\d,.]+| \([^)]*\))?$")
PLACE = re.compile(r"^\{\{(\w+) *([^}]*)\}\}$", re.MULTILINE)


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
        return earlier.ratio(aim["row"], peer, size, unit)
    own = earlier.get(aim["row"], OWN, size, unit)
    return own and own.value


def number(value):
    if value is None:
        return ""
    if value == int(value) or abs(value) >= 1000:
        return f"{value:,.0f}"
    return f"{value:,.0f}" if abs(value) >= 100 else f"{value:,.1f}"


def ratio_text(value):
    return "" if value is None else f"{value:.2f}"


def spread_text(figure):
    if figure is None:
        return ""
    if figure.low == figure.high:
        return number(figure.value)
    return f"{number(figure.value)} ({number(figure.low)} to {number(figure.high)})"


def table(head, lines):
    """Columns of figures are to the right, the first column never is."""
    def rule(index):
        cells = [line[index] for line in lines if line[index]]
        return "--:" if index > 0 and cells and all(FIGURE.match(cell) for cell in cells) else ":--"

    return "\n".join("| " + " | ".join(line) + " |"
                     for line in [head, [rule(index) for index in range(len(head))], *lines])


def facts_table(now, kept):
    """What the figures are of: a table for each part, with earlier results in columns of their own."""
    texts = []
    for part in sorted(now.facts):
        earlier = {name: figures.facts[part] for name, figures in kept.items() if part in figures.facts}
        lines = [[fact, now.facts[part][fact], *(facts.get(fact, "") for facts in earlier.values())]
                 for fact in now.facts[part]]
        texts.append(table([part, "now", *earlier], lines))
    return "\n\n".join(texts) or "Nothing has been measured."


def figure_text(verdict, value):
    return ratio_text(value) if verdict.peer else number(value)


def aims_table(aims, now, kept):
    lines = []
    for one in verdicts(aims, now, kept):
        earlier = [figures.ratio(one.row, one.peer, one.size, one.unit) if one.peer else
                   getattr(figures.get(one.row, OWN, one.size, one.unit), "value", None)
                   for figures in kept.values()]
        lines.append([one.row, number(one.size), one.unit, one.peer or "-", number(one.own and one.own.value),
                      number(one.other and one.other.value), *(figure_text(one, value) for value in earlier),
                      figure_text(one, one.figure), "at most " + figure_text(one, one.limit), one.reached])
    return table(["row", "size", "unit", "beside", OWN, "peer", *kept, "now", "aim", "reached"], lines)


def slower_list(now):
    """Every row and peer that is quicker at some size, by instructions or by the clock, the worst first."""
    found = []
    for row in now.rows():
        for name in now.contenders(row):
            instructions, time = (slower_ratios(row, name, unit, now) for unit in (JUDGED, "ns"))
            if instructions or time:
                line = [row, name, range_text(instructions), range_text(time)]
                found.append((-max(instructions + time), line))
    if not found:
        return "Nowhere, in these rows."
    return table(["row", "peer", "instructions", "time"], [line for _, line in sorted(found)])


def slower_ratios(row, name, unit, now):
    """The ratios to a peer at those sizes at which it needs less than the library."""
    pairs = [(now.get(row, OWN, size, unit), now.get(row, name, size, unit)) for size in now.sizes(row, unit)]
    return [ratio(own, peer) for own, peer in pairs
            if name != OWN and own and peer and comparison(own, peer) == "more" and ratio(own, peer)]


def range_text(ratios):
    if not ratios:
        return ""
    low, high = ratio_text(min(ratios)), ratio_text(max(ratios))
    return low if low == high else f"{low} to {high}"


def row_table(row, now, kept):
    """All figures of a row; for each unit the library's ratio to every peer, too."""
    if row not in now.rows():
        return f"**{row}** was not measured."
    units = now.units(row)
    head = ["size", "contender"]
    for unit in units:
        head += [UNITS.get(unit, unit)] + ([f"{OWN} / this"] if unit in (JUDGED, "ns") else [])
    lines = []
    for size in now.sizes(row):
        for name in now.contenders(row):
            lines.append(contender_line(row, size, name, name, now, now, units))
        lines += [contender_line(row, size, OWN, f"{OWN}, {time}", figures, now, units)
                  for time, figures in kept.items() if figures.get(row, OWN, size, units[0])]
    return f"**{row}**, per {now.per(row)}:\n\n{table(head, lines)}"


def contender_line(row, size, name, shown, figures, now, units):
    line = [number(size), shown]
    for unit in units:
        one, own = figures.get(row, name, size, unit), now.get(row, OWN, size, unit)
        line.append(spread_text(one))
        if unit in (JUDGED, "ns"):
            line.append(versus(own, one) if one is not own else "")
    return line


def versus(own, other):
    text = ratio_text(ratio(own, other))
    return f"{text}, equal" if text and own.low < own.high and comparison(own, other) == "equal" else text


class Plot(NamedTuple):
    """Lines to be drawn: for each name the points of size and value. Of `earlier` are those names that were
    not measured now."""
    name: str
    title: str
    value: str
    series: dict
    earlier: tuple


class Dots(NamedTuple):
    """Dots to be drawn above labels: for each name a value (or None) for each label."""
    name: str
    title: str
    value: str
    labels: list
    series: dict


def plot_of(row, unit, now, kept):
    """The library's earlier results are lines, too."""
    series = {name: points(now, row, name, unit) for name in now.contenders(row)}
    earlier = {f"{OWN}, {time}": points(figures, row, OWN, unit) for time, figures in kept.items()}
    series = {name: found for name, found in (series | earlier).items() if found}
    per = now.per(row) if row in now.rows() else ""
    value = f"{'ns' if unit == 'ns' else UNITS.get(unit, unit)} per {per}"
    return Plot(f"{row}-{unit}", row, value, series, tuple(earlier))


def ratio_dots(aims, now, kept):
    """The ratios that aims limit, and what they were earlier."""
    found = [one for one in verdicts(aims, now, kept) if one.peer and one.figure is not None]
    labels = [f"{one.row} {number(one.size)} / {one.peer}" for one in found]
    series = {time: [figures.ratio(one.row, one.peer, one.size, one.unit) for one in found]
              for time, figures in kept.items()}
    series |= {"now": [one.figure for one in found], "aim": [one.limit for one in found]}
    return Dots("ratios", "The library's figure divided by the peer's", "ratio", labels, series)


def points(figures, row, name, unit):
    found = [figures.get(row, name, size, unit) for size in figures.sizes(row, unit)]
    return [(one.size, one.value) for one in found if one]


def filled(folder, text, now, kept, aims, plots):
    """`text` with its places filled. Adds the plots that it shows to `plots`."""
    def fill(place):
        kind, words = place[1], place[2].split()
        if kind == "facts":
            return facts_table(now, kept)
        if kind == "aims":
            return aims_table(aims, now, kept)
        if kind == "slower":
            return slower_list(now)
        if kind == "rows":
            return "\n\n".join(row_table(row, now, kept) for row in words)
        if kind == "scenario":
            file = folder / words[0] / "report.md"
            return filled(folder, file.read_text(encoding="utf-8").rstrip("\n"), now, kept, aims,
                          plots) if file.exists() else ""
        if kind in ("plot", "ratios"):
            plot = plot_of(*words, now, kept) if kind == "plot" else ratio_dots(aims, now, kept)
            if not any(plot.series.values()):
                return f"({plot.name} was not measured.)"
            plots.append(plot)
            return f"![{plot.title}: {plot.value}](benchmarks/{plot.name}.svg)"
        raise Unreadable(f"{folder}: what is {place[0]}?")

    return PLACE.sub(fill, text)


def write(folder, document, now, kept):
    """Writes the document; the plots that it shows are the result."""
    folder, plots, aims = pathlib.Path(folder), [], []
    for file in sorted([*folder.glob("aims.json"), *folder.glob("*/aims.json")]):
        try:
            aims += json.loads(file.read_text(encoding="utf-8"))
        except ValueError as problem:
            raise Unreadable(f"{file}: {problem}") from problem
    text = filled(folder, (folder / "report.md").read_text(encoding="utf-8"), now, kept, aims, plots)
    pathlib.Path(document).write_text(re.sub(r"\n{3,}", "\n\n", text), encoding="utf-8")
    return plots
