"""The finished DLLs under Wine, asked thousands of times in one process; tools/soak says how it is called."""
import contextlib
import dataclasses
import fcntl
import os
import pathlib
import queue
import subprocess
import sys
import tempfile
import threading
import time

from soak_faults import FaultyProxy
from soak_growth import Limit, Samples, table
from soak_plan import PASSWORD, USER, Planner
from soak_shop import Broken, Shop, creation

SAMPLES = 60
FEWEST_BETWEEN_SAMPLES = 5
LONGEST_ANSWER = 180  # seconds
MOST_WRONG_SHOWN = 10
SERVICE_LOG = "build/log/soak-library"
KINDS_OF_LEAKS = ("handle", "graphics", "window", "internet", "block")
# One left behind by each operation of the rarest kind, of which there are 8 in a thousand, is above the line.
# What comes and goes: sockets that WinINet keeps for a minute, and what the system keeps of windows and fonts
# that are gone. A block is 16 bytes at least. Private memory grows by pages, of which threads and windows
# that are gone leave some, and others, for a while; it is there for what none of the others can see.
LIMITS = [Limit("handles", 3, 20), Limit("graphics", 2, 15, warm=500), Limit("windows", 2, 8),
          Limit("internet", 2, 3), Limit("blocks", 1, 60), Limit("private KB", 16, 12288, warm=2000)]


def say(line):
    print(f"soak: {line}", flush=True)


class WineSession:
    """While it lasts, no other script ends the Wine server that this one uses (see tools/common)."""

    def __enter__(self):
        os.makedirs("build/wine", exist_ok=True)
        self.users = open("build/wine/users", "a", encoding="ascii")
        fcntl.flock(self.users, fcntl.LOCK_SH)
        if subprocess.run(["tools/wine", "--start"], check=False).returncode != 0:
            sys.exit(1)

    def __exit__(self, *_):
        self.users.close()
        subprocess.run(["tools/wine", "--stop"], check=False)


class Worker:
    """The program under Wine that calls the DLLs, or, `bare`, does the same without them."""

    def __init__(self, folder, mode, port, scratch):
        program = folder / "orvande-soak.exe"
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("http_proxy", "no_proxy", "NO_PROXY")}
        environment["ORVANDE_WINE_SECONDS"] = "0"
        self.process = subprocess.Popen(
            ["tools/wine", program, mode, str(port), f"Z:{scratch}"], stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment, start_new_session=True)
        self.lines = queue.Queue()
        self.reading = threading.Thread(target=self.read, daemon=True)
        self.reading.start()

    def read(self):
        for line in self.process.stdout:
            self.lines.put(line.decode("latin-1").rstrip("\r\n"))
        self.lines.put(None)

    def ask(self, line):
        try:
            self.process.stdin.write(f"{line}\n".encode("ascii"))
            self.process.stdin.flush()
            answer = self.lines.get(timeout=LONGEST_ANSWER)
        except queue.Empty:
            raise Broken(f"no answer within {LONGEST_ANSWER} s to '{line}'") from None
        except OSError:
            answer = None
        if answer is None or answer.startswith("failed: "):
            raise Broken(f"'{line}' has ended the program: {answer or 'it said nothing'}")
        return answer

    def sample(self):
        words = self.ask("sample").split(" ")
        figures = {name: int(value) for name, value in zip(words[::2], words[1::2])}
        figures["private KB"] = figures.pop("privatebytes") / 1024
        return figures

    def close(self):
        """The program's exit code; it ends by itself where nothing has failed."""
        self.process.stdin.close()
        try:
            return self.process.wait(60)
        except subprocess.TimeoutExpired:
            self.process.terminate()  # tools/wine ends what it has started
            return self.process.wait()
        finally:
            self.reading.join(10)  # Wine's own processes may hold its other end
            if not self.reading.is_alive():
                self.process.stdout.close()


class Run:
    """All operations, one after the other."""

    def __init__(self, shop, scratch, operations):
        self.shop = shop
        self.target = scratch / "file.map"
        self.temporary = scratch / "file.map.TMP"
        self.operations = operations
        self.samples = Samples()
        self.wrong = []
        self.ended = 0  # the program's exit code

    def put_file(self, contents):
        if contents is None:
            self.target.unlink(missing_ok=True)
        else:
            self.target.write_bytes(contents)

    def file(self):
        return self.target.read_bytes() if self.target.exists() else None

    def request(self, worker, proxy, operation):
        """The same without the DLLs, where there is no right or wrong."""
        if operation.request:
            with proxy.meanwhile(operation.fault):
                worker.ask(operation.request)

    def do(self, worker, proxy, operation):
        if operation.kind == "download":
            self.put_file(operation.before)
        with proxy.meanwhile(operation.fault):
            answer = worker.ask(operation.line)
        wrong = operation.wrong(answer, self.file() if operation.kind == "download" else None)
        if wrong is None and self.temporary.exists():
            wrong = "a temporary file is left"
        if wrong:
            self.wrong.append(f"{operation.line} ({operation.fault}): {wrong}")

    def work(self, worker, proxy, first, do):
        """`do` is one of the two above."""
        for operation in first:
            do(worker, proxy, operation)
        every = max(FEWEST_BETWEEN_SAMPLES, len(self.operations) // SAMPLES)
        self.samples.add(0, worker.sample())
        for number, operation in enumerate(self.operations, 1):
            do(worker, proxy, operation)
            if number % every == 0:
                self.samples.add(number, worker.sample())
            if number % max(every, len(self.operations) // 6) == 0:
                say(f"{number} of {len(self.operations)} operations, {len(self.wrong)} wrong")


def tell_counts(operations):
    kinds, faults = {}, {}
    for operation in operations:
        kinds[operation.kind] = kinds.get(operation.kind, 0) + 1
        faults[operation.fault.kind] = faults.get(operation.fault.kind, 0) + 1
    for counts in (kinds, faults):
        say(", ".join(f"{count} {name}" for name, count in sorted(counts.items())))


def soak(shop, folder, operations, first, mode, planted=None):
    """One process; what it was like. `first` is done before anything is counted."""
    with tempfile.TemporaryDirectory() as scratch:
        run = Run(shop, pathlib.Path(scratch), operations)
        proxy = FaultyProxy(shop.port)
        worker = Worker(folder, mode, proxy.port, scratch)
        try:
            if planted:
                worker.ask(f"plant {planted}")
            run.work(worker, proxy, first, run.do if mode == "library" else run.request)
        finally:
            run.ended = worker.close()
            proxy.close()
        return run


def judged(run, control):
    """For each limit what the run has gathered, what the control has, and what is judged: the difference, in
    which what WinINet gathers by itself falls out."""
    beyond = run.samples.less(control.samples)
    return [[samples.growth(limit) for samples in (run.samples, control.samples, beyond)]
            for limit in LIMITS]


def report(run, control):
    for what in run.wrong[:MOST_WRONG_SHOWN]:
        say(f"wrong: {what}")
    growths = judged(run, control)
    for own, bare, beyond in growths:
        if beyond.slope is not None:
            say(f"{own.limit.name}: {own.slope:.2f} per 1,000 operations, {bare.slope:.2f} without the DLLs")
    for line in table([dataclasses.replace(beyond, first=own.first, last=own.last)
                       for own, _, beyond in growths]):
        print(line, flush=True)
    say(f"{len(run.operations)} operations, {len(run.wrong)} wrong")
    for one, name in ((control, "without the DLLs"), (run, "with the DLLs")):
        if one.ended != 0:
            say(f"the program {name} has ended with {one.ended}")
    is_ended = control.ended == run.ended == 0
    return is_ended and not run.wrong and all(beyond.is_within for *_, beyond in growths)


def main(service, folder, seed, percent, planted=None):
    """The exit code. `folder`: where the program and the DLLs lie."""
    os.makedirs(os.path.dirname(SERVICE_LOG), exist_ok=True)
    try:
        with contextlib.closing(Shop(service, SERVICE_LOG)) as shop:
            return 0 if compare(shop, folder, seed, percent, planted) else 1
    except Broken as problem:
        say(str(problem))
        return 1


def compare(shop, folder, seed, percent, planted):
    """Whether the DLLs do what they have to and gather nothing that the requests alone do not."""
    shop.post("/cgi-bin/licapp.cgi", creation(USER, PASSWORD, "soak@example.org"))
    planner = Planner(shop, seed)
    operations = planner.operations(percent)
    say(f"seed {seed}, {percent:g} % of all: {len(operations)} operations")
    tell_counts(operations)
    began = time.monotonic()
    say("the requests without the DLLs")
    control = soak(shop, folder, operations, planner.first(), "bare")
    say("the DLLs")
    run = soak(shop, folder, operations, planner.first(), "library", planted)
    say(f"{time.monotonic() - began:.0f} s")
    return report(run, control)
