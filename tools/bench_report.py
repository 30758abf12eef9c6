"""Makes the report of the benchmarks from figures (bench_figures.py) alone: tables, and what is to be
plotted.

The text comes from the files report.md, in which these lines are replaced:
    {{facts}}  {{aims}}  {{slower}}      tables about all rows
    {{ratios}}                           a plot of all ratios that have an aim
    {{scenario FOLDER}}                  the report.md of that folder, if it has one
    {{rows ROW ...}}                     a table for each row
    {{others}}                           a table for each row that has not been shown above
    {{plot ROW UNIT}}                    a plot of the row's figures in that unit against the size
"""
import pathlib
import re
import textwrap
from typing import NamedTuple

from bench_figures import JUDGED, OWN, UNITS, Unreadable, aims_of, comparison, ratio, verdicts

FIGURE = re.compile(r"[\d,.]+(, equal| to [\d,.]+| \([^)]*\))?$")
PLACE = re.compile(r"^\{\{(\w+) *([^}]*)\}\}$", re.MULTILINE)


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


class Document:
    """A text whose places are filled with what was measured."""

    def __init__(self, folder, now, kept, aims):
        self.folder = folder
        self.now, self.kept, self.aims = now, kept, aims
        self.plots = []
        self.shown = set()

    def filled(self, file):
        return PLACE.sub(self.fill, file.read_text(encoding="utf-8").rstrip("\n"))

    def fill(self, place):
        kind, words = place[1], place[2].split()
        if kind == "facts":
            return facts_table(self.now, self.kept)
        if kind == "aims":
            return aims_table(self.aims, self.now, self.kept)
        if kind == "slower":
            return slower_list(self.now)
        if kind == "ratios":
            return self.draw(ratio_dots(self.aims, self.now, self.kept))
        if kind == "plot":
            return self.draw(plot_of(*words, self.now, self.kept))
        if kind == "rows":
            return self.tables(words)
        if kind == "others":
            return self.tables([row for row in self.now.rows() if row not in self.shown])
        if kind == "scenario":
            file = self.folder / words[0] / "report.md"
            return self.filled(file) if file.exists() else ""
        raise Unreadable(f"{self.folder}: what is {place[0]}?")

    def tables(self, rows):
        self.shown.update(rows)
        measured = [row for row in rows if row in self.now.rows()]
        missing = [row for row in rows if row not in measured]
        texts = [row_table(row, self.now, self.kept) for row in measured]
        if missing:
            texts.append("\n".join(textwrap.wrap(f"Not measured: {', '.join(missing)}.", 110,
                                                 break_on_hyphens=False)))
        return "\n\n".join(texts)

    def draw(self, plot):
        if not any(plot.series.values()):
            return ""
        self.plots.append(plot)
        return f"![{plot.title}: {plot.value}](benchmarks/{plot.name}.svg)"


def write(folder, file, now, kept):
    """Writes the document; the plots that it shows are the result."""
    folder = pathlib.Path(folder)
    document = Document(folder, now, kept, aims_of(folder))
    text = document.filled(folder / "report.md")
    pathlib.Path(file).write_text(re.sub(r"\n{3,}", "\n\n", text).rstrip("\n") + "\n", encoding="utf-8")
    return document.plots
