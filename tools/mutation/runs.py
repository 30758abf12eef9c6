"""Runs cases of test programs on mutants: which case comes by which mutant, and which notices it."""
import collections
import concurrent.futures
import os
import pathlib
import re
import resource
import signal
import subprocess
import tempfile
import time

ASKED_TOO_OFTEN = 86
NO_MUTANT = 0xFFFFFFFF
MOST_MUTANTS = 65536
MOST_MEMORY = 1 << 30  # bytes
# A chunk of cases, and the next ones: most mutants die of the first.
CHUNKS = [8, 40, 400]
SECONDS_BETWEEN_LOOKS = 0.25
TICKS = os.sysconf("SC_CLK_TCK")
# What takes longer than its cases by this factor may be slow; what does so by the second one is endless.
PATIENCE = [10, 40]
LONG_CASE = 1  # seconds
# What was freed is overwritten, so that nothing lives on what is left there. Small blocks are only where they
# are not kept for the next that asks.
PLAIN = {"MALLOC_PERTURB_": "165", "GLIBC_TUNABLES": "glibc.malloc.tcache_count=0"}
LEAKING = {"LSAN_OPTIONS": "hard_rss_limit_mb=1024:print_summary=0"}


class RunError(Exception):
    """Why nothing can be tried: one sentence."""


class Seen:
    """What the switches of one process leave behind."""

    def __init__(self, folder):
        self.path = pathlib.Path(folder, "seen")
        self.path.write_bytes(bytes(8 + MOST_MUTANTS))

    def take(self):
        """How often one was asked about, and those that were."""
        data = self.path.read_bytes()
        return int.from_bytes(data[:8], "little"), [at for at, one in enumerate(data[8:]) if one]


class Case:
    """One case of a program, alone in a process."""

    def __init__(self, program, name, seconds, asked, seen):
        self.program, self.name = program, name
        self.seconds, self.asked, self.seen = seconds, asked, frozenset(seen)

    @property
    def is_long(self):
        return self.seconds > LONG_CASE

    @property
    def key(self):
        return f"{pathlib.Path(self.program).name}:{self.name}"


def list_cases(program):
    run = subprocess.run([program, "--gtest_list_tests"], capture_output=True, text=True, check=False)
    suite, names = "", []
    for line in run.stdout.split("\n"):
        name = line.partition("#")[0].rstrip()
        if re.fullmatch(r"\S+\.", name):
            suite = name
        elif suite and re.fullmatch(r"  \S+", name) and "DISABLED_" not in suite + name:
            names.append(suite + name.strip())
    if not names:
        raise RunError(f"{program} lists no cases")
    return names


class OwnTime:
    """Seconds that a process has run or slept. Those in which it waited for a processor are not its own: a
    loaded machine does not make a case endless."""

    def __init__(self, process):
        self.folder = pathlib.Path(f"/proc/{process.pid}")
        self.asleep = 0.0
        self.last = time.monotonic()

    def look(self):
        now = time.monotonic()
        try:
            threads = [self.fields(thread) for thread in (self.folder / "task").iterdir()]
            whole = self.fields(self.folder)
        except OSError:  # It has ended meanwhile.
            return 0.0
        if all(thread[0] == "S" for thread in threads):
            self.asleep += now - self.last
        self.last = now
        return (int(whole[11]) + int(whole[12])) / TICKS + self.asleep

    @staticmethod
    def fields(folder):
        """Of what the system tells about it those behind the name."""
        return (folder / "stat").read_text().rpartition(")")[2].split()


def wait(process, seconds):
    """The exit code, or None when it took more seconds of its own."""
    own = OwnTime(process)
    while True:
        try:
            return process.wait(SECONDS_BETWEEN_LOOKS)
        except subprocess.TimeoutExpired:
            if own.look() > seconds:
                return None


def leak_sanitizer():
    """What is loaded in front of a program that was built without it."""
    run = subprocess.run(["gcc", "-print-file-name=liblsan.so"], capture_output=True, text=True, check=False)
    path = pathlib.Path(run.stdout.strip())
    if not path.is_absolute():
        raise RunError("gcc's leak sanitizer is missing (tools/setup native)")
    return LEAKING | {"LD_PRELOAD": str(path)}


def limit_process(memory):
    resource.setrlimit(resource.RLIMIT_AS, (memory, memory))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 28, 1 << 28))


def run_cases(program, names, folder, seconds, environment):
    """"passed", "failed" or "endless"."""
    flags = pathlib.Path(folder, "flags")
    flags.write_text(f"--gtest_filter={':'.join(names)}\n--gtest_fail_fast=1\n--gtest_brief=1\n"
                     "--gtest_catch_exceptions=1\n")
    # The sanitizer takes more addresses, and has a limit of its own.
    memory = resource.RLIM_INFINITY if "LD_PRELOAD" in environment else MOST_MEMORY
    said = open(pathlib.Path(folder, "output"), "wb")
    with said:
        process = subprocess.Popen([program, f"--gtest_flagfile={flags}"], cwd=folder, env=environment,
                                   stdin=subprocess.DEVNULL, stdout=said, stderr=subprocess.STDOUT,
                                   start_new_session=True, preexec_fn=lambda: limit_process(memory))
        code = wait(process, seconds)
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()
    if code is None or code == ASKED_TOO_OFTEN:
        return "endless"
    if code == 0 and b"[  PASSED  ]" in pathlib.Path(folder, "output").read_bytes():
        return "passed"
    return "failed"


def clean_environment():
    return {name: value for name, value in os.environ.items()
            if not name.startswith(("GTEST_", "MUTANT", "ORVANDE_", "LD_PRELOAD", "LSAN_"))}


def record(program, name):
    """The case without a mutant; None when it fails by itself."""
    with tempfile.TemporaryDirectory(prefix="mutate.") as folder:
        seen = Seen(folder)
        began = time.monotonic()
        result = run_cases(program, [name], folder, 300,
                           clean_environment() | {"MUTANTS_SEEN": str(seen.path)})
        if result != "passed":
            return None
        return Case(program, name, time.monotonic() - began, *seen.take())


class Recording:
    """All cases of some programs, and which of them come by a mutant."""

    def __init__(self, cases, stamp):
        self.stamp = stamp  # of the programs
        self.cases = sorted(cases, key=lambda case: case.seconds)
        self.by_mutant = collections.defaultdict(list)
        for case in self.cases:
            for number in case.seen:
                self.by_mutant[number].append(case)

    @staticmethod
    def make(programs, stamp, jobs, say):
        wanted = [(program, name) for program in programs for name in list_cases(program)]
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            cases = list(pool.map(lambda one: record(*one), wanted))
        failed = [name for (_, name), case in zip(wanted, cases) if case is None]
        if failed:
            say(f"without a mutant these fail, and are left out: {' '.join(failed)}")
        return Recording([case for case in cases if case is not None], stamp)


class Hunter:
    """Looks for the case that notices a mutant."""

    def __init__(self, recording, numbers):
        self.recording = recording
        self.numbers = numbers  # of the mutants of each file
        self.shares = {}
        self.kills = collections.defaultdict(collections.Counter)  # by file: how many each case has noticed

    def ordered(self, file, cases):
        """Those first that have noticed most of what is near, then the fastest of those that come by most of
        the file."""
        kills, shares = self.kills[file], self.shares_of(file)
        likely = [case for case in sorted(cases, key=lambda case: -kills[case.key])[:4] if kills[case.key]]
        names = {case.key for case in likely}
        others = [case for case in cases if case.key not in names]
        return likely + sorted(others, key=lambda case: case.seconds / shares[case.key])

    def shares_of(self, file):
        """How many mutants of the file each case comes by."""
        if file not in self.shares:
            numbers = self.numbers[file]
            self.shares[file] = {case.key: len(case.seen & numbers) for case in self.recording.cases}
        return self.shares[file]

    def chunks(self, file, cases):
        """Long ones come last, each alone: what is endless would have their time, too."""
        ordered = self.ordered(file, [case for case in cases if not case.is_long])
        at = 0
        for size in [*CHUNKS, len(ordered)]:
            if ordered[at:at + size]:
                yield ordered[at:at + size]
            at += size
        for case in cases:
            if case.is_long:
                yield [case]

    def hunt(self, number, file, is_explained=False):
        """(result, case or program that noticed). What lives is tried again for what it leaks. When there is
        a reason why it lives, neither that nor what takes long is tried."""
        cases = self.recording.by_mutant.get(number, [])
        if not cases:
            return "unreached", ""
        if is_explained:
            cases = [case for case in cases if not case.is_long]
        for settings in (PLAIN,) if is_explained else (PLAIN, leak_sanitizer()):
            for chunk in self.chunks(file, cases):
                by_program = collections.defaultdict(list)
                for case in chunk:
                    by_program[case.program].append(case)
                for program, some in by_program.items():
                    result, noticed = self.run(number, program, some, settings)
                    if result != "living":
                        if noticed:
                            self.kills[file][noticed] += 1
                        return result, noticed
        return "living", ""

    def run(self, number, program, cases, settings):
        for patience in PATIENCE:
            result, noticed = self.run_patiently(number, program, cases, settings, patience)
            if result != "endless":
                break
        if result != "living" and settings is not PLAIN:
            # Noticed is only what does not fail in the same way without the mutant.
            if self.run_patiently(NO_MUTANT, program, cases, settings, PATIENCE[-1])[0] != "living":
                return "living", ""
        return result, noticed

    def run_patiently(self, number, program, cases, settings, patience):
        with tempfile.TemporaryDirectory(prefix="mutate.") as folder:
            most_asked = patience * (sum(case.asked for case in cases) + 5000)
            seconds = patience * (sum(case.seconds for case in cases) + 0.5)
            environment = clean_environment() | settings | {"MUTANT": str(number),
                                                            "MUTANTS_MOST": str(most_asked)}
            result = run_cases(program, [case.name for case in cases], folder, seconds, environment)
            if result == "passed":
                return "living", ""
            said = pathlib.Path(folder, "output").read_text(errors="replace")
            return "killed" if result == "failed" else result, self.noticed_by(said, program, cases)

    @staticmethod
    def noticed_by(said, program, cases):
        failed = re.findall(r"^\[  FAILED  \] ([^\s,(]+)", said, re.MULTILINE)
        name = failed[0] if failed else cases[0].name if len(cases) == 1 else ""
        return f"{pathlib.Path(program).name}:{name}" if name else ""
