"""Measures the library beside its peers on this computer, with the programs of the preset `benchmarks`."""
import datetime
import json
import os
import pathlib
import platform
import re
import statistics
import subprocess
import tempfile

FOLDER = pathlib.Path("build/benchmarks")
PROGRAM = str(FOLDER / "benchmarks/orvande-benchmarks")
HEAP_PROGRAM = str(FOLDER / "benchmarks/orvande-allocations")
# What is compared, and the package that it comes from.
PEERS = {"GLib": "libglib2.0-0", "gettext": "libc6", "msgfmt": "gettext", "inih": "libinih1",
         "SimpleIni": "libsimpleini-dev", "libcurl": "libcurl4", "uriparser": "liburiparser1",
         "Google Benchmark": "libbenchmark-dev", "valgrind": "valgrind"}
EFFORTS = {"quick": (5, 0.05), "full": (15, 0.2)}  # repetitions of a contender, and seconds of each


class Broken(Exception):
    """A measurement that did not come about, and why."""


def run(*command):
    process = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
    if process.returncode != 0:
        raise Broken(f"{' '.join(command)}\n{process.stdout}{process.stderr}")
    return process.stdout


def build():
    if subprocess.run(["tools/build", FOLDER.name], check=False).returncode != 0:
        raise Broken("the programs cannot be built")


def rows():
    """Triples of a row, a size, and whether it is only for a plot."""
    for line in run(PROGRAM, "list").splitlines():
        row, size, *growth = line.split()
        yield row, int(size), bool(growth)


def work_folder():
    # In memory if possible, so that no disk has a part in reading and writing files.
    memory = pathlib.Path("/dev/shm")
    return tempfile.TemporaryDirectory(dir=memory if memory.is_dir() else None)


def result(row, contender, size, unit, value, per, spread=None):
    low, high = spread or (value, value)
    return {"row": row, "contender": contender, "size": size, "unit": unit, "value": value,
            "low": low, "high": high, "per": per}


def items_of(output):
    """How many things the programs say that a contender does at a time, and what each is."""
    return (int(re.search(r"^items (\d+)$", output, re.MULTILINE)[1]),
            re.search(r"^per (.+)$", output, re.MULTILINE)[1])


def dumped(folder):
    """Contender and instructions of each of callgrind's dumps, in their order. The last has no name: it is
    made at the program's end."""
    for file in sorted(folder.glob("counts.*"), key=lambda path: int(path.suffix[1:])):
        text = file.read_text(encoding="utf-8", errors="replace")
        name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.MULTILINE)
        total = re.search(r"^(?:totals|summary): (\d+)", text, re.MULTILINE)
        if name and total:
            yield name[1], int(total[1])


def instructions(row, size):
    """Instructions for one thing, as valgrind counts them."""
    with work_folder() as folder:
        output = run("valgrind", "--tool=callgrind", "--instr-atstart=no",
                     f"--callgrind-out-file={folder}/counts", PROGRAM, "counts", row, str(size), folder)
        counted = list(dumped(pathlib.Path(folder)))
    if not counted:
        raise Broken(f"callgrind has counted nothing of {row}, {size}")
    items, per = items_of(output)
    for contender, count in counted:
        yield result(row, contender, size, "instructions", round(count / items, 2), per)


def times(row, size, effort):
    """Nanoseconds for one thing: the median of all repetitions, and as spread the middle half of them."""
    repetitions, seconds = EFFORTS[effort]
    with work_folder() as folder:
        output = run(PROGRAM, "times", row, str(size), folder, "--benchmark_format=json",
                     "--benchmark_enable_random_interleaving=true",
                     f"--benchmark_repetitions={repetitions}", f"--benchmark_min_time={seconds}")
    yield from timed(row, size, json.loads(output))


def timed(row, size, output):
    items, per = int(output["context"]["items"]), output["context"]["per"]
    found = {}
    for repetition in output["benchmarks"]:
        if repetition["run_type"] == "iteration":
            found.setdefault(repetition["run_name"], []).append(repetition["real_time"] / items)
    for contender, values in sorted(found.items()):
        low, median, high = (round(value, 3) for value in statistics.quantiles(values, method="inclusive"))
        yield result(row, contender, size, "ns", median, per, (low, high))


def heap_use(row, size):
    """Allocations for one thing, and the most bytes that were in use at a time: for one thing, too, where all
    of them are kept together."""
    with work_folder() as folder:
        output = run(HEAP_PROGRAM, row, str(size), folder)
    items, per = items_of(output)
    for line in output.splitlines()[2:]:
        calls, peak, contender = line.split(" ", 2)
        kept = items if items == size else 1
        yield result(row, contender, size, "calls", round(int(calls) / items, 2), per)
        yield result(row, contender, size, "bytes", round(int(peak) / kept, 1), per)


def version_of(package):
    # One line for each architecture.
    return run("dpkg-query", "-W", "-f", "${Version}\n", package).splitlines()[0]


def processor():
    text = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8")
    name = re.search(r"^model name\s*: (.*)$", text, re.MULTILINE)
    return f"{name[1] if name else platform.machine()}, {os.cpu_count()} cores"


def boost_version():
    archives = sorted((FOLDER / "benchmarks/boost").glob("libboost-url*.deb"))
    return archives[-1].name.split("_")[1].replace("%3a", ":")


def facts(effort):
    """What was measured, and on what."""
    changed = run("git", "status", "--porcelain", "--", "src", "include").strip()
    commit = run("git", "rev-parse", "--short=10", "HEAD").strip()
    release = re.search(r'^PRETTY_NAME="(.*)"$', pathlib.Path("/etc/os-release").read_text(encoding="utf-8"),
                        re.MULTILINE)[1]
    found = {"Date": datetime.date.today().isoformat(),
             "Library": commit + (", with changes" if changed else ""),
             "Command": "tools/bench native" + (" --quick" if effort == "quick" else ""),
             "Processor": processor(), "System": release,
             "Compiler": run("g++", "--version").splitlines()[0] + ", -O2"}
    found.update((peer, version_of(package)) for peer, package in PEERS.items())
    found["Boost.URL"] = boost_version()
    return found


def measure(effort, say):
    """All figures of this computer. `say` is told what is being measured."""
    build()
    found = []
    for row, size, is_growth in rows():
        if is_growth and effort == "quick":
            continue
        say(f"{row}, {size}")
        found += instructions(row, size)
        found += heap_use(row, size)
        found += times(row, size, effort)
    return found
