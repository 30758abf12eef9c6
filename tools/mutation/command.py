"""What tools/mutate does, from its arguments to its exit code."""
import collections
import concurrent.futures
import hashlib
import json
import os
import pathlib
import pickle
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1]))
import build
import files
import known
import runs
import unchanged

KNOWN = pathlib.Path("tests/mutation-survivors.txt")
RESULTS = build.FOLDER / "results.json"
SECONDS_BETWEEN_REPORTS = 20
COLUMNS = ["made", "killed", "endless", "unreached", "changes nothing", "living"]


def say(text):
    print(f"mutate: {text}", flush=True)


class Arguments:
    """FILE ..., or what stands before them."""

    def __init__(self, words, fail):
        self.lists = self.again = False
        self.only = None
        while words and words[0].startswith("-"):
            word = words.pop(0)
            if word == "--list":
                self.lists = True
            elif word == "--again":
                self.again = True
            elif word == "--only" and len(words) == 1:
                self.only = words.pop(0)
            elif word == "--only":
                fail("--only wants one ID (--list tells them)")
            else:
                fail(f"there is no option '{word}' (--help tells them)")
        sources = files.listed("src/*.cpp", "src/*.h")
        self.names = [os.path.normpath(word) for word in words] or sources
        for name in self.names:
            if name not in sources:
                fail(f"'{name}' is no source in src/")


class Results:
    """What is known of each mutant while its file is the same: who noticed it, or of what programs nobody."""

    def __init__(self, mutation, recording, again):
        self.programs = recording.stamp
        self.cases = {case.key for case in recording.cases}
        self.stamps = {name: hashlib.sha256(data).hexdigest()[:16] for name, data in mutation.sources.items()}
        self.kept = json.loads(RESULTS.read_text()) if RESULTS.exists() else {}
        if again:
            self.kept = {}

    def of(self, mutant):
        """The result that is still good, or None. What lives may be noticed by a new case."""
        stamp, result, by = self.kept.get(mutant.id, ("", "", ""))
        if stamp != self.stamps[mutant.file]:
            return None
        if result in ("living", "unreached"):
            return result if by == self.programs else None
        if result not in COLUMNS:
            return None
        return result if not by or by in self.cases else None

    def keep(self, mutant, result, noticed):
        by = self.programs if result in ("living", "unreached") else noticed
        self.kept[mutant.id] = (self.stamps[mutant.file], result, by)

    def save(self):
        fresh = RESULTS.with_suffix(".new")
        fresh.write_text(json.dumps(self.kept, indent=0))
        fresh.replace(RESULTS)


class Progress:
    """A line now and then."""

    def __init__(self, total):
        self.total, self.done, self.last = total, 0, time.monotonic()

    def step(self):
        self.done += 1
        if time.monotonic() - self.last > SECONDS_BETWEEN_REPORTS:
            say(f"{self.done} of {self.total}")
            self.last = time.monotonic()


def recording_of(programs, jobs):
    """From the last time while the programs are the same."""
    parts = [program.read_bytes() for program in programs]
    library = build.NATIVE / "src"
    parts += [file.read_bytes() for file in sorted(library.glob("*.so"))]
    stamp = hashlib.sha256(b"\0".join(hashlib.sha256(part).digest() for part in parts)).hexdigest()
    kept = build.FOLDER / "recording"
    if kept.exists():
        last, cases = pickle.loads(kept.read_bytes())
        if last == stamp:
            return runs.Recording(cases, stamp)
    say("looking which case comes by which mutant")
    recording = runs.Recording.make([str(program.resolve()) for program in programs], stamp, jobs, say)
    kept.write_bytes(pickle.dumps((stamp, recording.cases)))
    return recording


def try_all(mutation, recording, results, listed, jobs):
    """The result of each mutant that is behind a switch."""
    hunter = runs.Hunter(recording, mutation.numbers)
    todo, found = [], {}
    for number, mutant in mutation.by_number.items():
        if mutant.id in mutation.unfit:
            continue
        found[number] = results.of(mutant)
        if found[number] is None:
            todo.append(number)
    say(f"{len(todo)} of {len(found)} mutants to be tried with {len(recording.cases)} cases")
    progress = Progress(len(todo))

    def one(number):
        mutant = mutation.by_number[number]
        return number, mutant, hunter.hunt(number, mutant.file, mutant.key in listed.reasons)

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for future in concurrent.futures.as_completed([pool.submit(one, number) for number in todo]):
            number, mutant, (result, noticed) = future.result()
            found[number] = result
            results.keep(mutant, result, noticed)
            progress.step()
            if progress.done % 25 == 0:
                results.save()
    results.save()
    return found


def find_unchanged(made, mutation, found, results, listed, jobs):
    """Of what lives without a reason: that which the compiler makes the same code of."""
    todo = [number for number, result in found.items() if result in ("living", "unreached")
            and mutation.by_number[number].key not in listed.reasons]
    if todo:
        say(f"{len(todo)} live; looking whether they change what the compiler makes")
    judge = unchanged.Judge(made.commands(), mutation.sources)
    progress = Progress(len(todo))

    def one(number):
        return number, judge.changes_nothing(mutation.by_number[number])

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for future in concurrent.futures.as_completed([pool.submit(one, number) for number in todo]):
            number, is_same = future.result()
            if is_same:
                found[number] = "changes nothing"
                results.keep(mutation.by_number[number], "changes nothing", "")
            progress.step()
    results.save()


def table(mutation, found):
    counts = collections.defaultdict(collections.Counter)
    for number, result in found.items():
        name = mutation.by_number[number].file
        for row in (name, "all"):
            counts[row][result] += 1
            counts[row]["made"] += 1
    width = max(len(name) for name in counts)
    print(f"{'':{width}}" + "".join(f"{column:>{len(column) + 2}}" for column in COLUMNS))
    for name in [*sorted(set(counts) - {"all"}), "all"]:
        print(f"{name:{width}}" + "".join(f"{counts[name][column]:{len(column) + 2}}" for column in COLUMNS))
    return counts["all"]


def summary(mutation, total, with_reason, without):
    """The last line. Of those without a reason the share in all that change anything."""
    reached = total["made"] - total["unreached"]
    changing = total["made"] - total["changes nothing"] - with_reason
    fixed = sum(mutation.unfit.get(mutant.id) == "fixed" for mutant in mutation.by_number.values())
    return (f"{total['made']} mutants made, {reached} reached: {total['killed']} killed, "
            f"{total['endless']} endless, {total['changes nothing']} of the same code, "
            f"{with_reason} living with a reason; {without} living without, "
            f"{100 * without / max(changing, 1):.2f} % of the {changing} that change anything "
            f"({fixed} more take effect while compiling and were not tried)")


def report(mutation, found, listed, names):
    """Prints all that is to be told; whether there is anything."""
    total = table(mutation, found)
    alive = [mutation.by_number[number] for number, result in sorted(found.items())
             if result in ("living", "unreached")]
    unknown = [mutant for mutant in alive if listed.reason_of(mutant) is None]
    for mutant in unknown:
        print(f"{mutant.file}:{mutant.line}:{mutant.column}: {mutant.what}  [{mutant.id}]")
    # Where a change only costs time, it depends on the machine whether that is too much.
    for number, result in found.items():
        if result == "endless":
            listed.reason_of(mutation.by_number[number])
    unmet = listed.unmet(names)
    for file, context, what in unmet:
        print(f"{KNOWN}: nothing lives any more as '{what}' of {file}: {context}")
    print(summary(mutation, total, len(alive) - len(unknown), len(unknown)))
    return bool(unknown or unmet)


def number_of(mutation, identity, fail):
    chosen = [number for number, mutant in mutation.by_number.items() if mutant.id == identity]
    return chosen[0] if chosen else fail(f"there is no mutant '{identity}' (--list tells them)")


def show_one(mutation, recording, number):
    mutant = mutation.by_number[number]
    say(f"{mutant.file}:{mutant.line}:{mutant.column}: {mutant.what}")
    cases = recording.by_mutant.get(number, [])
    say(f"{len(cases)} cases come by it")
    for case in cases[:20]:
        say(f"  {case.key}")
    result, noticed = runs.Hunter(recording, mutation.numbers).hunt(number, mutant.file)
    say(f"{result} {noticed}")
    return 0 if result in ("killed", "endless") else 1


def work(arguments, jobs, fail):
    sources = files.listed("src/*.cpp", "src/*.h")
    listed = known.Known(KNOWN)
    made = build.Build(sources, say, jobs)
    mutation = made.read(files.listed())
    if arguments.lists:
        for name in arguments.names:
            for _, mutant in mutation.by_file[name]:
                print(f"{mutant.id}  {mutant.file}:{mutant.line}:{mutant.column}: {mutant.what}")
        return 0
    only = number_of(mutation, arguments.only, fail) if arguments.only else None
    say("building all mutants at once")
    made.make()
    # Trying takes long, and others have work, too.
    os.nice(5)
    recording = recording_of([build.NATIVE / "tests" / program for program in build.PROGRAMS], jobs)
    if only is not None:
        return show_one(mutation, recording, only)
    for number, mutant in list(mutation.by_number.items()):
        if mutant.file not in arguments.names:
            del mutation.by_number[number]
    results = Results(mutation, recording, arguments.again)
    found = try_all(mutation, recording, results, listed, jobs)
    find_unchanged(made, mutation, found, results, listed, jobs)
    return 1 if report(mutation, found, listed, arguments.names) else 0


def main(words, fail):
    arguments = Arguments(list(words), fail)
    try:
        return work(arguments, min(os.cpu_count(), 2), fail)
    except (build.BuildError, runs.RunError, known.KnownError, files.Unlisted) as error:
        return fail(str(error))
    except KeyboardInterrupt:
        return 130
