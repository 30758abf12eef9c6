"""Builds and tests rings of the project; ./test says how it is called."""
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time

from test_log import TestLog

LOGS = pathlib.Path("build/log")
SERVICE = ("native", "orvande-service")
# What of tools/setup a ring needs, and what is built for it: presets and their targets.
RINGS = {
    "native": (["native", "service", "samples"], [("native", "all")]),
    # docs/translation-files.md is followed there, which leads to tools/translation and tools/screenshots.
    "windows": (["native", "windows", "service", "screen", "pictures", "coverage"],
                [("native", "orvande-service orvande-translation"), ("windows", "all"),
                 ("windows-tests", "windows-tests orvande-pictures")]),
    "device": (["device", "service", "coverage"],
               [SERVICE, ("device", "all"), ("device-checked", "images"), ("device-tests", "all")]),
    "pages": (["native", "service", "browser"], [SERVICE]),
    # Among its cases are those of the tools, which make documents and read sources.
    "packages": (["native", "windows", "device", "service", "documents", "mutation", "coverage", "packages"],
                 [("native", "installed"), ("windows", "installed"), ("device", "installed")]),
    "asan": (["native", "service"], [("asan", "all")]),
    "coverage": (["native", "service", "documents", "lint", "mutation", "coverage"], [("coverage", "all")]),
    # What measures is compiled, and never run here.
    "lint": (["native", "windows", "device", "service", "documents", "lint", "mutation", "coverage",
              "benchmarks"],
             [("benchmarks", "all"),
              ("benchmarks-windows", "benchmark-transfers benchmark-loading benchmark_peer"),
              ("benchmarks-device", "all"),
              ("benchmarks-loader", "device_benchmark_runner")]),
}
WHOLE_RINGS = ("lint", "coverage")
SECONDS_BETWEEN_REPORTS = 20  # where there is no terminal to show it all the time
BUILT = re.compile(r"\[(\d+)/(\d+)\]")
WAITING = "build: waiting until"


def say(text, stream=None):
    print(f"test: {text}", file=stream, flush=True)


class Process:
    """One command that writes a log, in a process group of its own so that all of it can be ended."""

    def __init__(self, command, log, environment=None):
        self.log = log
        self.began = time.monotonic()
        log.unlink(missing_ok=True)  # another build may write to the one that there is
        with open(log, "wb") as output:
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output,
                                            stderr=subprocess.STDOUT, env=environment, start_new_session=True)
        self.reading = open(log, encoding="utf-8", errors="replace", newline="\n")
        self.code = None
        self.seconds = 0.0
        self.processor = 0.0

    def read(self):
        return self.reading.read()

    def has_ended(self):
        if self.code is not None:
            return True
        ended, status, usage = os.wait4(self.process.pid, os.WNOHANG)
        if ended == 0:
            return False
        self.code = os.waitstatus_to_exitcode(status)
        self.process.returncode = self.code
        self.seconds = time.monotonic() - self.began
        self.processor = usage.ru_utime + usage.ru_stime
        return True

    def stop(self):
        """Lets it clean up after itself, and then ends what is left."""
        if self.code is not None:
            return
        os.killpg(self.process.pid, signal.SIGTERM)
        until = time.monotonic() + 20
        while not self.has_ended() and time.monotonic() < until:
            time.sleep(0.05)
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass


class Ring:
    """One ring on its way from sources to counts."""

    def __init__(self, name, environment):
        self.name = name
        self.environment = environment
        self.builds = list(RINGS[name][1])
        self.process = None
        self.is_testing = False
        self.is_over = False
        self.progress = ""
        self.counts = TestLog()
        self.passed = self.failed = 0
        self.seconds = self.processor = 0.0

    def is_running(self):
        return self.process is not None and not self.is_over

    def begin(self):
        """The next build, or the tests when all is built."""
        if self.builds:
            self.start_build(*self.builds.pop(0))
        else:
            self.start_tests()

    def start_build(self, preset, targets):
        command = ["tools/build", preset, *targets.split(), "--log", "-"]
        self.start(command, LOGS / f"build-{preset}")

    def start_tests(self):
        self.is_testing = True
        command = ["tools/lint"] if self.name == "lint" else ["tools/run-ring", self.name]
        self.start(command, LOGS / f"test-{self.name}")

    def start(self, command, log):
        self.progress = ""
        self.process = Process(command, log, self.environment)

    def take_progress(self):
        text = self.process.read()
        if self.is_testing:
            self.counts.take(text)
            done, known = self.counts.passed + self.counts.failed, max(self.counts.total, self.counts.begun)
            self.progress = f"{done} of {known} cases" if known else ""
            return
        steps = BUILT.findall(text)
        if steps:
            self.progress = "built {} of {}".format(*steps[-1])
        elif WAITING in text:
            self.progress = "waiting for another build"

    def end_step(self):
        self.seconds += self.process.seconds
        self.processor += self.process.processor
        self.take_progress()
        if self.is_testing:
            self.end_tests()
        elif self.process.code == 0:
            self.begin()
        else:
            self.fail("not built")

    def end_tests(self):
        self.is_over = True
        self.counts.end(self.process.code == 0)
        self.passed, self.failed = self.counts.passed, self.counts.failed
        if self.counts.failures:
            print("\n".join(self.counts.failures), flush=True)
        if self.process.code != 0 and self.failed == 0:
            self.fail("the tests did not come to their end")
        elif self.passed + self.failed == 0 and "GTEST_FILTER" not in self.environment:
            self.fail("no test was run")
        elif self.failed:
            say(f"{self.name}: the whole output is in {self.process.log}")
        for figure in self.counts.figures:
            say(f"{self.name}: {figure}")
        say(f"{self.name}: {self.passed} passed, {self.failed} failed")

    def fail(self, why):
        """A ring whose tests cannot be run has failed once."""
        end = self.process.log.read_text(encoding="utf-8", errors="replace").split("\n")[-40:]
        print("\n".join(end), file=sys.stderr)
        say(f"{self.name}: {why} (the whole output: {self.process.log})", sys.stderr)
        self.is_over = True
        self.failed += 1


class Display:
    """What is going on: one line that changes on a terminal, and a line now and then elsewhere."""

    def __init__(self):
        self.is_terminal = sys.stdout.isatty()
        self.shown = ""
        self.last = time.monotonic()

    def show(self, rings):
        text = ", ".join(f"{ring.name}: {ring.progress}" for ring in rings if ring.progress)
        if self.is_terminal:
            text = text[: shutil.get_terminal_size().columns - 1]
            if text != self.shown:
                print(f"\r\033[K{text}", end="", flush=True)
        elif text and text != self.shown and time.monotonic() - self.last >= SECONDS_BETWEEN_REPORTS:
            say(text)
            self.last = time.monotonic()
        else:
            return
        self.shown = text

    def clear(self):
        if self.is_terminal and self.shown:
            print("\r\033[K", end="", flush=True)
            self.shown = ""


def run(rings):
    """Builds one ring after the other, and runs the tests of each as soon as it is built."""
    display = Display()
    waiting = list(rings)
    building = None
    while not all(ring.is_over for ring in rings):
        if building is None and waiting:
            building = waiting.pop(0)
            display.clear()
            say(building.name)
            building.begin()
        for ring in rings:
            if not ring.is_running():
                continue
            ring.take_progress()
            if ring.process.has_ended():
                display.clear()
                ring.end_step()
        if building and (building.is_testing or building.is_over):
            building = None
        display.show([ring for ring in rings if ring.is_running()])
        time.sleep(0.1)
    display.clear()


def table(rings):
    print(f"{'ring':10}{'passed':>8}{'failed':>8}{'seconds':>9}{'processor':>11}")
    for ring in rings:
        print(f"{ring.name:10}{ring.passed:8}{ring.failed:8}{ring.seconds:9.0f}{ring.processor:11.0f}")


def main(arguments):
    names = [argument for argument in arguments if argument in RINGS]
    filters = [argument for argument in arguments if argument not in RINGS]
    if len(filters) > 1 or (filters and not names) or (filters and filters[0].startswith("--")):
        say(f"there is no ring '{filters[0]}' ({', '.join(RINGS)})", sys.stderr)
        return 2
    for name in WHOLE_RINGS:
        if filters and name in names:
            say(f"{name} has no cases to choose from", sys.stderr)
            return 2
    names = [name for name in RINGS if name in names] or list(RINGS)
    environment = {name: value for name, value in os.environ.items() if not name.startswith("GTEST_")}
    if filters:
        environment["GTEST_FILTER"] = filters[0]
    LOGS.mkdir(parents=True, exist_ok=True)
    parts = sorted({part for name in names for part in RINGS[name][0]})
    if subprocess.run(["tools/setup", *parts], check=False).returncode != 0:
        say("packages are missing", sys.stderr)
        return 1
    rings = [Ring(name, environment) for name in names]
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    try:
        run(rings)
    except KeyboardInterrupt:
        return 130
    finally:
        for ring in rings:
            if ring.process:
                ring.process.stop()
    table(rings)
    passed, failed = sum(ring.passed for ring in rings), sum(ring.failed for ring in rings)
    if filters and passed + failed == 0:
        say(f"no case matches '{filters[0]}'", sys.stderr)
        return 1
    print(f"{passed} passed, {failed} failed", flush=True)
    return 0 if failed == 0 else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
