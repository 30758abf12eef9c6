"""Measures the library beside its peers on this computer, with the programs of the preset `benchmarks`."""
import json
import pathlib
import re
import statistics
import subprocess
import tempfile

PROGRAM = "build/benchmarks/benchmarks/orvande-benchmarks"
SECONDS_A_REPETITION = {"quick": 0.05, "full": 0.2}
REPETITIONS = {"quick": 5, "full": 15}


class Broken(Exception):
    """A measurement that did not come about, and why."""


def run(command):
    process = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
    if process.returncode != 0:
        raise Broken(f"{' '.join(command)}\n{process.stdout}{process.stderr}")
    return process.stdout


def rows():
    """Triples of a row, a size, and whether it is only for a plot."""
    for line in run([PROGRAM, "list"]).splitlines():
        row, size, *growth = line.split()
        yield row, int(size), bool(growth)


def work_folder():
    # In memory if possible, so that no disk has a part in reading and writing files.
    memory = pathlib.Path("/dev/shm")
    return tempfile.TemporaryDirectory(dir=memory if memory.is_dir() else None)


def result(row, contender, size, unit, value, spread, per):
    return {"row": row, "contender": contender, "size": size, "unit": unit, "value": value,
            "low": spread[0], "high": spread[1], "per": per}


def dumped(folder):
    """Contender and instructions of each of callgrind's dumps, in their order."""
    # The first file has what was counted after the last dump.
    for file in sorted(folder.glob("counts.*"), key=lambda path: int(path.suffix[1:])):
        text = file.read_text(encoding="utf-8", errors="replace")
        name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.MULTILINE)
        total = re.search(r"^(?:totals|summary): (\d+)", text, re.MULTILINE)
        if name and total:
            yield name[1], int(total[1])


def instructions(row, size):
    """Instructions for one thing that the contenders do, as valgrind counts them."""
    with work_folder() as folder:
        output = run(["valgrind", "--tool=callgrind", "--instr-atstart=no",
                      f"--callgrind-out-file={folder}/counts", PROGRAM, "counts", row, str(size), folder])
        items = int(re.search(r"^items (\d+)", output, re.MULTILINE)[1])
        per = re.search(r"^per (.*)", output, re.MULTILINE)[1]
        counted = list(dumped(pathlib.Path(folder)))
    if not counted:
        raise Broken(f"callgrind has counted nothing of {row}, {size}")
    for contender, count in counted:
        value = round(count / items, 2)
        yield result(row, contender, size, "instructions", value, (value, value), per)


def times(row, size, effort):
    """Nanoseconds for one thing: the median of all repetitions, and as spread the middle half of them."""
    with work_folder() as folder:
        output = run([PROGRAM, "times", row, str(size), folder, "--benchmark_format=json",
                      "--benchmark_enable_random_interleaving=true",
                      f"--benchmark_repetitions={REPETITIONS[effort]}",
                      f"--benchmark_min_time={SECONDS_A_REPETITION[effort]}"])
    return timed(row, size, json.loads(output))


def timed(row, size, output):
    items, per = int(output["context"]["items"]), output["context"]["per"]
    repetitions = {}
    for run_ in output["benchmarks"]:
        if run_["run_type"] == "iteration":
            repetitions.setdefault(run_["run_name"], []).append(run_["cpu_time"] / items)
    for contender, found in sorted(repetitions.items()):
        low, median, high = statistics.quantiles(found, n=4, method="inclusive")
        yield result(row, contender, size, "ns", round(median, 3), (round(low, 3), round(high, 3)), per)
