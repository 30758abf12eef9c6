"""Prints how many cases the tests of a build have, as `cases: N`: those that match GTEST_FILTER when it is
set.

    count_cases.py BUILD
"""
import json
import subprocess
import sys
import tempfile


def listed(command):
    """How many cases a program of tests lists."""
    # Into a file, not a pipe: what Wine starts beside the program may hold its output open.
    with tempfile.TemporaryFile("w+", encoding="latin-1") as output:
        subprocess.run([*command, "--gtest_list_tests"], stdin=subprocess.DEVNULL, stdout=output,
                       stderr=subprocess.DEVNULL, timeout=120, check=False)
        output.seek(0)
        return sum(line.startswith("  ") for line in output)


def main():
    run = subprocess.run(["ctest", "--test-dir", sys.argv[1], "--show-only=json-v1"],
                         stdout=subprocess.PIPE, text=True, check=True)
    # A program whose cases are run in several portions stands there several times.
    commands = {tuple(test["command"]) for test in json.loads(run.stdout)["tests"] if "command" in test}
    print(f"cases: {sum(listed(command) for command in commands)}", flush=True)


main()
