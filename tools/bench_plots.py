"""Draws plots with gnuplot, one SVG file each. The same points make the same bytes."""
import pathlib
import subprocess

HEAD = """\
set terminal svg size 720,360 font 'sans-serif,13' background '#ffffff'
set key outside right top
set logscale x
set format x '%.0f'
set yrange [0:*]
set grid
set border 3
set tics nomirror
"""


def quoted(text):
    return "'" + text.replace("'", "''") + "'"


def commands(plot, file):
    """What gnuplot is told: the data first, then one line for all series."""
    told = [HEAD + f"set output {quoted(str(file))}\nset title {quoted(plot.title)}",
            f"set xlabel 'size'\nset ylabel {quoted(plot.value)}"]
    curves = []
    for index, (name, points) in enumerate(plot.series.items()):
        told += [f"$data{index} << EOD", *(f"{size} {value}" for size, value in points), "EOD"]
        curves.append(f"$data{index} with linespoints linewidth 2 title {quoted(name)} noenhanced")
    return "\n".join([*told, "plot " + ", ".join(curves)]) + "\n"


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
