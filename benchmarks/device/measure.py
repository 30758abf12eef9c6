"""Counts the instructions that the image for handhelds executes; the script `run` beside this builds what it
needs and calls it from the project's root.

Each work is done twice, once twice as often: what both have in common, such as loading the image, is no part
of the difference. Only the image's own instructions count, not those of the simulated handheld, to which the
runtime's functions (memcpy, fgetc, malloc) belong here as they belong to the system on a handheld.
"""
import pathlib
import struct
import subprocess
import sys

from measurements import Measurements, facts

FOLDER = pathlib.Path("build/benchmarks-loader")
IMAGES = pathlib.Path("build/benchmarks-device")
# Where the loader puts images (platform/device/loader/LoadedImage.cpp); its own program lies elsewhere.
BEGIN, END = 0x10000000, 0x22000000
TEXTS, SHORT, LONG = 2000, 24, 4080


class Failure(Exception):
    """Why nothing can be counted, in one sentence."""


def count(work, times):
    """The instructions of a whole run."""
    output = FOLDER / "count"
    output.unlink(missing_ok=True)
    run = subprocess.run(
        ["qemu-arm", "-cpu", "arm926",
         "-plugin", f"{FOLDER}/libcount.so,begin={BEGIN:#x},end={END:#x},output={output}",
         FOLDER / "benchmarks/device/device-benchmark", work, str(times)],
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=False)
    if run.returncode != 0 or not output.exists():
        raise Failure(run.stderr.strip().split("\n")[-1] or f"the emulator ended with {run.returncode}")
    return int(output.read_text(encoding="utf-8"))


def count_each(work, times):
    """The instructions that one more of it takes."""
    more = count(work, 2 * times) - count(work, times)
    if more <= 0:
        raise Failure(f"{work} takes no instructions, so the loader puts images elsewhere")
    return round(more / times, 1)


def measure_transfers_and_files(rows):
    for times in (1000, 10000):
        def add(row, contender, value, per, size=times):
            rows.add(row, contender, size, "instructions", [value], per)
        add("device-search", "library", count_each("search", times), "entry")
        add("device-search", "hand-decoder", count_each("search-by-hand", times), "entry")
        load = count_each("load-dictionary", times)
        add("device-load-dictionary", "library", load, "line")
        load_and_save = count_each("save-dictionary", times)
        add("device-save-dictionary", "library", round(load_and_save - load, 1), "line")
        add("device-load-catalogue", "library", count_each("load-catalogue", times), "text")


def measure_texts(rows):
    for work, size, per in (
            ("look-up-exact", TEXTS, "look-up"), ("look-up-exact-by-pointer", TEXTS, "look-up"),
            ("look-up-stripped", TEXTS, "look-up"), ("look-up-missing", TEXTS, "look-up"),
            ("encode-short", SHORT, "text"), ("decode-short", SHORT, "text"),
            ("encode-long", LONG, "text"), ("decode-long", LONG, "text")):
        rows.add(f"device-{work}", "library", size, "instructions", [count_each(work, 1000)], per)


def writable_size(image):
    """The bytes of an image's sections that may be written to."""
    data = image.read_bytes()
    headers = struct.unpack_from("<I", data, 60)[0]
    sections, optional_size = struct.unpack_from("<H12xH", data, headers + 6)
    begin = headers + 24 + optional_size
    size = 0
    for section in range(begin, begin + 40 * sections, 40):
        if struct.unpack_from("<I", data, section + 36)[0] & 0x80000000:
            size += struct.unpack_from("<I", data, section + 8)[0]
    return size


def measure_sizes(rows):
    rows.add("device-size", "library", 1, "bytes", [(IMAGES / "OrvandeOnline.dll").stat().st_size], "file")
    rows.add("device-writable", "library", 1, "bytes", [writable_size(IMAGES / "OrvandeOnline.dll")], "file")


def main():
    rows = Measurements("device", facts("benchmarks/device/run", Compiler="gcc-arm-none-eabi",
                                        Emulator="qemu-user"))
    measure_sizes(rows)
    measure_transfers_and_files(rows)
    measure_texts(rows)
    rows.write("build/bench/device-image.jsonl")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"benchmarks/device: {failure}")
