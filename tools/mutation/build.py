"""One build in which all changes are, each behind its switch: a copy of the project in build/mutate/tree,
built in build/mutate/native."""
import concurrent.futures
import fcntl
import hashlib
import json
import os
import pathlib
import pickle
import re
import shlex
import subprocess

import instrument
import places

FOLDER = pathlib.Path("build/mutate")
TREE = FOLDER / "tree"
NATIVE = FOLDER / "native"
LOG = FOLDER / "log"
PROGRAMS = ["orvande-tests", "orvande-story-tests", "orvande-trace-tests", "orvande-load-tests"]
MOST_ATTEMPTS = 20
NUMBERS_APART = 64  # so that a change of one file leaves the numbers of most others
QUOTED = re.compile(r"['‘]([^'’]*)['’]")


class BuildError(Exception):
    """Why nothing can be tried: one sentence."""


def write_if_new(path, data):
    if not path.exists() or path.read_bytes() != data:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)


def run_logged(command, cwd=None):
    LOG.parent.mkdir(parents=True, exist_ok=True)
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                         errors="replace", check=False, cwd=cwd,
                         env=os.environ | {"LC_ALL": "C"})
    with open(LOG, "a", encoding="utf-8") as log:
        log.write(run.stdout)
    return run


def reading_arguments(command):
    """What of a compiler's command tells clang how to read a source."""
    words = shlex.split(command)
    kept = ["-x", "c++", "-std=c++20", "-w"]
    for at, word in enumerate(words):
        if word.startswith(("-I", "-D")):
            kept.append(word)
        elif word == "-isystem":
            kept += [word, words[at + 1]]
    return kept


def read_places(name, path, arguments, cache):
    """The mutants of a file; from the last time when it has not changed."""
    reader = pathlib.Path(places.__file__).read_bytes()
    stamp = hashlib.sha256(b"\0".join([pathlib.Path(path).read_bytes(), reader, name.encode()])).hexdigest()
    kept = cache / stamp[:32]
    if kept.exists():
        return pickle.loads(kept.read_bytes())
    mutants = list(places.Reading(name, path, arguments).found())
    cache.mkdir(parents=True, exist_ok=True)
    kept.write_bytes(pickle.dumps(mutants))
    return mutants


class Mutation:
    """All mutants with their numbers, and which of them a build can have behind a switch."""

    def __init__(self, sources, mutants):
        self.sources = sources  # the bytes of each file
        self.by_number = {}
        self.by_file = {}
        self.unfit_path = FOLDER / "unfit.json"
        # By identity: "fixed" when it takes effect while compiling, "wrong" when it does not compile.
        self.unfit = json.loads(self.unfit_path.read_text()) if self.unfit_path.exists() else {}
        number = 0
        for name in sorted(mutants):
            self.by_file[name] = []
            for mutant in mutants[name]:
                if mutant.form == "fixed":
                    self.unfit[mutant.id] = "fixed"
                self.by_number[number] = mutant
                self.by_file[name].append((number, mutant))
                number += 1
            number = (number // NUMBERS_APART + 1) * NUMBERS_APART
        if number > 65536:
            raise BuildError("there are more mutants than switches")

    @property
    def numbers(self):
        return {name: {number for number, _ in numbered} for name, numbered in self.by_file.items()}

    def switched(self, name):
        return [(number, mutant) for number, mutant in self.by_file[name] if mutant.id not in self.unfit]

    def writer(self, name):
        return instrument.Writer(self.sources[name], self.switched(name))

    def take_out(self, numbers, kind):
        for number in numbers:
            self.unfit[self.by_number[number].id] = kind
        self.unfit_path.write_text(json.dumps(self.unfit, indent=0))

    def relaxed(self, names):
        """The numbers of those that stand in the constants of these names."""
        return [number for number, mutant in self.by_number.items()
                if mutant.id not in self.unfit and mutant.relaxed.partition("@")[0] in names]


def take_turn(say):
    """A lock, to be kept: while this process has it, no other changes the copy or what is known of it."""
    FOLDER.mkdir(parents=True, exist_ok=True)
    lock = open(FOLDER / "turn", "ab")
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        say("waiting until another run has ended")
        fcntl.flock(lock, fcntl.LOCK_EX)
    return lock


class Build:
    """The copy and its build."""

    def __init__(self, names, say, jobs):
        self.turn = take_turn(say)
        self.names = names
        self.say = say
        self.jobs = jobs
        self.mutation = None

    def copy_project(self, listed, mutated):
        for name in listed:
            if name not in mutated:
                write_if_new(TREE / name, pathlib.Path(name).read_bytes())
                os.chmod(TREE / name, os.stat(name).st_mode)
        known = set(listed)
        for path in [path for path in TREE.rglob("*") if path.is_file()]:
            if str(path.relative_to(TREE)) not in known and path.name != "MutantSwitch.h":
                path.unlink()
        write_if_new(TREE / "src" / instrument.SWITCH, instrument.HEADER.encode())

    def configure(self):
        if (NATIVE / "build.ninja").exists():
            return
        run = run_logged(["cmake", "-S", str(TREE), "-B", str(NATIVE), "-G", "Ninja", "-DORVANDE_RING=native",
                          "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_C_COMPILER=gcc", "-DCMAKE_CXX_COMPILER=g++",
                          "-DCMAKE_CXX_FLAGS=-w", "-DCMAKE_CXX_FLAGS_DEBUG=-g0"])
        if run.returncode != 0:
            raise BuildError(f"the copy cannot be configured (see {LOG})")

    def commands(self):
        """The compiler's commands, by file of the project."""
        entries = json.loads((NATIVE / "compile_commands.json").read_text())
        found = {}
        for entry in entries:
            name = os.path.relpath(entry["file"], TREE.resolve())
            if name not in found or "orvande_objects" in entry["command"]:
                found[name] = entry["command"]
        return found

    def read(self, listed):
        """Finds the mutants. What is read lies where it belongs, so that it finds what it includes."""
        LOG.parent.mkdir(parents=True, exist_ok=True)
        LOG.write_text("")
        if not TREE.exists():
            self.copy_project(listed, set())
        self.copy_project(listed, set(self.names))
        for name in self.names:
            if not (TREE / name).exists():
                write_if_new(TREE / name, pathlib.Path(name).read_bytes())
        self.configure()
        commands = self.commands()
        like = commands["src/transport/ByteStream.cpp"].replace(str((TREE / "src").resolve()),
                                                                str(pathlib.Path("src").resolve()))
        arguments = reading_arguments(like)
        with concurrent.futures.ProcessPoolExecutor(self.jobs) as pool:
            read = pool.map(read_places, self.names, [os.path.abspath(name) for name in self.names],
                            [arguments] * len(self.names), [FOLDER / "places"] * len(self.names))
            mutants = dict(zip(self.names, read))
        sources = {name: pathlib.Path(name).read_bytes() for name in self.names}
        self.mutation = Mutation(sources, mutants)
        return self.mutation

    def make(self):
        """Builds; what the compiler does not take is taken out, until it takes all."""
        self.settle()
        for _ in range(MOST_ATTEMPTS):
            writers = self.write()
            run = run_logged([*self.ninja, "-k", "0", *PROGRAMS])
            if run.returncode == 0:
                return
            self.take_out([run.stdout], writers)
        raise BuildError(f"the build does not come to its end (see {LOG})")

    def write(self):
        writers = {name: self.mutation.writer(name) for name in self.names}
        for name, writer in writers.items():
            write_if_new(TREE / name, writer.text.encode())
        return writers

    def settle(self):
        """As make, for the library alone and without code, which is sooner done."""
        run_logged([*self.ninja, "src/CMakeFiles/orvande_objects.dir/cmake_pch.hxx.gch"])
        commands = {name: command for name, command in self.commands().items() if name in self.names}
        waiting = set(commands)
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            while waiting:
                writers = self.write()
                ordered = sorted(waiting)
                said = [run.stdout for run in pool.map(check, [commands[name] for name in ordered])]
                waiting = {name for name, text in zip(ordered, said) if ": error: " in text}
                if waiting and self.take_out(said, writers):
                    waiting = set(commands)

    @property
    def ninja(self):
        return ["ninja", "-C", str(NATIVE), f"-j{self.jobs}"]

    def take_out(self, said, writers):
        """What the compiler complains about; of headers alone when there is anything, since other complaints
        may follow from that. Whether there was."""
        complaints = [Complaint(text, writers) for output in said
                      for text in re.split(r"(?m)^(?=\S+:\d+:\d+: (?:fatal )?error: )", output)[1:]]
        of_headers = [complaint for complaint in complaints if complaint.file.endswith(".h")]
        before = len(self.mutation.unfit)
        for width in ("change", "texts", "place", "line"):
            for complaint in of_headers or complaints:
                self.mutation.take_out(*complaint.meant(self.mutation, width))
            if len(self.mutation.unfit) > before:
                break
        else:
            raise BuildError(f"the copy cannot be built (see {LOG})")
        self.say(f"{len(self.mutation.unfit) - before} mutants cannot stand behind a switch")
        return bool(of_headers)


def check(command):
    """What the compiler says of a source."""
    words = [word for word in shlex.split(command) if word != "ccache"]
    output = words.index("-o")
    del words[output:output + 2]
    return run_logged([*words, "-fsyntax-only"], cwd=NATIVE)


class Complaint:
    """One error, and what is said about it."""

    def __init__(self, text, writers):
        self.text = text
        self.spots = []
        for match in re.finditer(r"(?m)^(\S+?):(\d+):(\d+): ", text):
            name = os.path.relpath(os.path.join(NATIVE, match[1]), TREE)
            if name in writers:
                self.spots.append((writers[name], int(match[2]), int(match[3])))
        self.file = text.partition(":")[0]

    def meant(self, mutation, width):
        """Numbers of mutants, and what is the matter with them."""
        if "constant" in self.text or "constexpr" in self.text:
            names = {quoted.rpartition("::")[2].split(" ")[-1].split("[")[0]
                     for quoted in QUOTED.findall(self.text)}
            numbers = mutation.relaxed(names - {""})
            if numbers:
                return numbers, "fixed"
        for writer, line, column in self.spots:
            numbers = instrument.mutants_at(writer, line, column, width)
            if numbers:
                is_fixed = "non-constant" in self.text or "call to non" in self.text
                return numbers, "fixed" if is_fixed else "wrong"
        if width == "line":
            for writer, line, _ in self.spots:
                return mutation.relaxed(instrument.words_at(writer, line)), "fixed"
        return [], ""
