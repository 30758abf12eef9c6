"""Measures the Windows DLL beside bare loops over WinINet and a DLL in C; the script `run` beside this builds
what it needs and calls it from the project's root, in a session of Wine.

    measure.py [ROUNDS]    how often contenders take turns (default 21)
"""
import os
import pathlib
import re
import subprocess
import sys

from measurements import Measurements, facts, output_of
from reply_server import FILE_SIZE, ReplyServer

# Wine's processes take turns on the processor that the script has put them on; the server may use any.
PROCESSOR = str(min(os.sched_getaffinity(0)))
WINE = pathlib.Path("tools/wine").resolve()
BUILD = pathlib.Path("build/benchmarks-windows").resolve()
LIBRARY, PEER = "OrvandeOnline.dll", "Peer.dll"
# Builds with other sizes of their buffers: of a search's reads, and of a download's.
LARGER = {"OrvandeOnline-4096-16384.dll": (4096, 16384), "OrvandeOnline-16384-65536.dll": (16384, 65536)}
SIZES = [1000, 3000, 10000, 30000]
CYCLES = 20


class Failure(Exception):
    """Why nothing can be measured, in one sentence."""


def run_program(program, *arguments, server=None):
    environment = {name: value for name, value in os.environ.items() if not name.lower().endswith("_proxy")}
    if server is not None:
        environment["http_proxy"] = server.address
    run = subprocess.run(["taskset", "-c", PROCESSOR, WINE, str(BUILD / program), *map(str, arguments)],
                         cwd=BUILD, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                         stderr=subprocess.PIPE, text=True, check=False)
    if run.returncode != 0:
        raise Failure(run.stderr.strip().split("\n")[-1] or f"{program} ended with {run.returncode}")
    return run.stdout


def numbers(output, word):
    """The numbers of each line that begins with that word; without one, of the lines of numbers alone."""
    lines = (line.split() for line in output.split("\n"))
    if not word:
        return [list(map(int, line)) for line in lines if line and line[0].isdigit()]
    return [list(map(int, line[1:])) for line in lines if line and line[0] == word]


def timed(output, names):
    """The samples of each contender, from lines with one of each."""
    return dict(zip(names, map(list, zip(*numbers(output, "")))))


def measure_searches(rows, server, rounds):
    for size in SIZES:
        server.offer(size)
        output = run_program("benchmark-transfers.exe", "search", rounds, LIBRARY, server=server)
        if numbers(output, "check")[0][0] != size:
            raise Failure("a search has not found the maps that the server has")
        samples = timed(output, ["bare-loop", "bare-loop-that-keeps", "library"])
        rows.add_pairs("windows-search", size, samples, "search", "bare-loop")


def measure_downloads(rows, server, rounds):
    output = run_program("benchmark-transfers.exe", "download", rounds, LIBRARY, server=server)
    if numbers(output, "check")[0][1] != FILE_SIZE:
        raise Failure("the bare loop has not downloaded the file that the server has")
    samples = timed(output, ["bare-loop", "library"])
    rows.add_pairs("windows-download", FILE_SIZE, samples, "download", "bare-loop")


def measure_buffers(rows, server, rounds):
    """What larger buffers would give, beside those that the library has."""
    builds = {LIBRARY: (256, 4096), **LARGER}
    server.offer(10000)
    output = run_program("benchmark-transfers.exe", "search", rounds, *builds, server=server)
    size = numbers(output, "check")[0][1]
    for name, samples in timed(output, ["bare", "keeping", *builds]).items():
        if name in builds:
            rows.add("windows-receive-buffer", "library", builds[name][0], "ns", samples, "search",
                     bytes=size)
    output = run_program("benchmark-transfers.exe", "download", rounds, *builds, server=server)
    calls = numbers(output, "calls")
    for name, samples in timed(output, ["bare", *builds]).items():
        if name in builds:
            rows.add("windows-download-chunk", "library", builds[name][1], "ns", samples, "download")
            rows.add("windows-download-chunk", "library", builds[name][1], "callbacks", calls.pop(0),
                     "download")


def measure_loads(rows, rounds):
    output = run_program("benchmark-loading.exe", "time", rounds, CYCLES, PEER, LIBRARY)
    rows.add_pairs("windows-load", 1, timed(output, ["c-library", "library"]), "load", "c-library")
    for contender, file in (("library", LIBRARY), ("c-library", PEER)):
        output = run_program("benchmark-loading.exe", "memory", 100, file)
        [loaded], [left] = numbers(output, "loaded"), numbers(output, "left")
        rows.add("windows-heap-at-rest", contender, 1, "bytes", loaded[:1], "load")
        rows.add("windows-heap-at-rest", contender, 1, "blocks", loaded[1:], "load")
        for unit, value in zip(("bytes", "blocks", "handles"), left):
            rows.add("windows-left", contender, 100, unit, [value], "100 loads")


def measure_sizes(rows, server):
    for contender, file in (("library", LIBRARY), ("c-library", PEER)):
        rows.add("windows-size", contender, 1, "bytes", [(BUILD / file).stat().st_size], "file")
        dump = output_of("i686-w64-mingw32-objdump", "-p", str(BUILD / file))
        functions = len(re.findall(r"^\t[0-9a-f]+\t +\d+  \S+$", dump, re.MULTILINE))
        rows.add("windows-imports", contender, 1, "functions", [functions], "file")
    server.offer(10000)
    [[count, size, blocks]] = numbers(
        run_program("benchmark-transfers.exe", "results", LIBRARY, server=server), "results")
    rows.add("windows-result", "library", count, "bytes", [round(size / count, 1)], "result")
    rows.add("windows-result", "library", count, "blocks", [round(blocks / count, 2)], "result")


def main(rounds=21):
    about = facts(f"benchmarks/windows/run {rounds}", Wine="wine32:i386", Compiler="g++-mingw-w64-i686-win32")
    rows = Measurements("windows", about)
    os.sched_setaffinity(0, range(os.cpu_count()))
    with ReplyServer() as server:
        measure_sizes(rows, server)
        measure_loads(rows, rounds)
        measure_searches(rows, server, rounds)
        measure_downloads(rows, server, rounds)
        measure_buffers(rows, server, rounds)
        server.shutdown()
    rows.write("build/bench/windows-dll.jsonl")


if __name__ == "__main__":
    try:
        main(*map(int, sys.argv[1:]))
    except Failure as failure:
        sys.exit(f"benchmarks/windows: {failure}")
