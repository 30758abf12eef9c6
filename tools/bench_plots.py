"""Draws plots with gnuplot, one SVG file each. The same points make the same bytes."""
import pathlib
import subprocess

HEAD = """\
set terminal svg size 720,{height} font 'sans-serif,13' background '#ffffff'
set grid
set border 3
set tics nomirror
"""
LINES = """\
set key outside right top
set logscale x
set autoscale xfix
set format x '%.0f'
set yrange [0:*]
set xlabel 'size'
"""
DOTS = """\
set key outside top right horizontal
set logscale y 2
set yrange [*:*]
set xrange [-1:{count}]
set rmargin 3
set bmargin 18
set xtics rotate by 90 right noenhanced font ',10'
set datafile missing '?'
"""


def quoted(text):
    return "'" + text.replace("'", "''") + "'"


def head_of(plot, file, height):
    return (HEAD.format(height=height) + f"set output {quoted(str(file))}\n"
            f"set title {quoted(plot.title)} noenhanced\nset ylabel {quoted(plot.value)}\n")


def line_commands(plot, file):
    """What gnuplot is told of lines: the points first, then one command for all. Earlier results are
    dashed."""
    told, curves = head_of(plot, file, 360) + LINES, []
    for index, (name, points) in enumerate(plot.series.items()):
        told += "\n".join([f"$data{index} << EOD", *(f"{size} {value}" for size, value in points), "EOD", ""])
        curves.append(f"$data{index} with linespoints linewidth 2 dashtype {2 if name in plot.earlier else 1}"
                      f" title {quoted(name)} noenhanced")
    return told + "plot " + ", ".join(curves) + "\n"


def dot_commands(dots, file):
    """What gnuplot is told of dots: a line for each label, a column for each name."""
    lines = [" ".join([f'"{label}"', *("?" if values[index] is None else str(values[index])
                                       for values in dots.series.values())])
             for index, label in enumerate(dots.labels)]
    told = "\n".join(["$data << EOD", *lines, "EOD", ""])
    curves = [f"$data using 0:{column}:xtic(1) with points pointsize 1.2 title {quoted(name)} noenhanced"
              for column, name in enumerate(dots.series, 2)]
    return (head_of(dots, file, 560) + DOTS.format(count=len(lines)) + told
            + "plot 1 linecolor 'black' notitle, " + ", ".join(curves) + "\n")


def commands(plot, file):
    return line_commands(plot, file) if hasattr(plot, "earlier") else dot_commands(plot, file)


def draw(folder, plots):
    """Also removes what an earlier report has shown and this one does not."""
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    files = {folder / f"{plot.name}.svg": plot for plot in plots}
    for file in folder.glob("*.svg"):
        if file not in files:
            file.unlink()
    for file, plot in files.items():
        subprocess.run(["gnuplot"], input=commands(plot, file), text=True, check=True)
