"""The rows in which benchmarks write down what they have measured: JSON, one a line. The first line says what
was measured, and on what."""
import datetime
import json
import os
import pathlib
import platform
import re
import statistics
import subprocess


def output_of(*command):
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=True)
    return run.stdout.strip()


def version_of(package):
    # One line for each architecture.
    return output_of("dpkg-query", "-W", "-f", "${Version}\n", package).split("\n")[0]


def state_of_library():
    """Its commit; sources may also have come without a history, or without a git to read it."""
    try:
        commit = output_of("git", "rev-parse", "--short=10", "HEAD")
        changed = output_of("git", "status", "--porcelain", "--", "src", "include", "platform")
        return commit + (", with changes" if changed else "")
    except (OSError, subprocess.CalledProcessError):
        return "not known"


def facts(command, **packages):
    """About this run. `packages` are those whose versions matter, by the names under which they are told."""
    processor = re.search(r"^model name\s*: (.*)$", pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8"),
                          re.MULTILINE)
    release = platform.freedesktop_os_release()["PRETTY_NAME"]
    return {"Date": datetime.date.today().isoformat(),
            "Library": state_of_library(), "Command": command,
            "Processor": f"{processor[1] if processor else platform.machine()}, {os.cpu_count()} cores",
            "System": release,
            **{name: version_of(package) for name, package in packages.items()}}


class Measurements:
    """Rows of one file of results."""

    def __init__(self, part, about):
        self.part = part
        self.facts = about
        self.rows = []

    def add(self, row, contender, size, unit, samples, per, **more):
        """The median of the samples, and the quartiles between which half of them lie."""
        low, value, high = quartiles(samples)
        self.rows.append({"row": row, "contender": contender, "size": size, "unit": unit, "value": value,
                          "low": low, "high": high, "per": per, **more})

    def add_pairs(self, row, size, samples, per, peer):
        """The nanoseconds of all contenders, measured in turn. Those of the others than `peer` are also
        compared with its own, pair by pair: a machine that is slower for a while slows both of a pair
        down."""
        for contender, times in samples.items():
            more = {}
            if contender != peer:
                low, value, high = quartiles([mine / its for mine, its in zip(times, samples[peer])], 3)
                more = {"peer": peer, "pairs": len(times),
                        "ratio": value, "ratio_low": low, "ratio_high": high}
            self.add(row, contender, size, "ns", times, per, **more)

    def write(self, file):
        path = pathlib.Path(file)
        path.parent.mkdir(parents=True, exist_ok=True)
        lines = [{"part": self.part, "facts": self.facts}, *self.rows]
        path.write_text("".join(json.dumps(line) + "\n" for line in lines), encoding="utf-8")
        print(path)
        for row in self.rows:
            line = f"  {row['row']:31} {row['contender']:12} {row['size']:8} {row['value']:12} {row['unit']}"
            if row["low"] != row["high"]:
                line += f" ({row['low']} to {row['high']})"
            if "ratio" in row:
                line += f"   {row['ratio']} of {row['peer']} ({row['ratio_low']} to {row['ratio_high']})"
            print(line.rstrip())


def quartiles(samples, digits=None):
    """The lower quartile, the median and the upper one, rounded; one sample is all three of them."""
    if len(samples) == 1:
        return samples * 3
    return [round(value, digits) for value in statistics.quantiles(samples, n=4, method="inclusive")]
