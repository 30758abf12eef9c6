"""Counts the cases in what tests print.

GoogleTest's form counts case by case, also behind the number that ctest puts before each line. A program of
another form counts for one, by ctest's own line. A case that was begun and did not end well has failed,
whatever stopped it; so has a program that ends badly after its last case. A skipped case has failed: nothing
is known of what it is about.
"""
import re

LINE = re.compile(r"(?:(\d+): )?(.*)")
BEGUN = re.compile(r"\[==========\] Running (\d+) test")
# What another process writes to the same log may stand before these in the line.
RUN = re.compile(r"\[ RUN      \] (\S+)$")
ENDED_WELL = re.compile(r"\[       OK \] (\S+) \(\d+ ms\)$")
ENDED_BADLY = re.compile(r"\[  (?:FAILED |SKIPPED) \] .*\(\d+ ms\)$")
PROGRAM = re.compile(r" *\d+/\d+ Test +#(\d+): ")
PASSED = re.compile(r"   Passed +[0-9.]+ sec")
TOTAL = re.compile(r"cases: (\d+)$")
FIGURE = re.compile(r"figure: (.+)")


class Program:
    """What is known of one program of tests."""

    def __init__(self):
        self.begun = None  # cases; None: it has none of its own
        self.passed = 0
        self.failed = 0
        self.running = set()  # names of cases
        self.shown = []  # the output of the case that runs
        self.has_ended = False

    def count_end(self, well):
        """Makes the counts agree with how the program has ended."""
        self.has_ended = True
        if self.begun is None:
            self.passed, self.failed = (1, 0) if well else (0, 1)
        else:
            self.failed = self.begun - self.passed
        if not well and self.failed == 0:
            self.failed = 1


class TestLog:
    """Takes a log in, line by line, in as many portions as it comes."""

    def __init__(self):
        self.programs = {}
        self.failures = []  # lines: what each failed case or program has printed
        self.figures = []  # what tests have measured and want to be seen, failed or not: `figure: TEXT`
        self.total = 0  # cases that are going to run, where the log says so
        self.rest = ""

    def take(self, text):
        *lines, self.rest = (self.rest + text).split("\n")
        for line in lines:
            self.take_line(line.rstrip("\r"))

    def take_line(self, line):
        total = TOTAL.match(line)
        if total:
            self.total = int(total[1])
            return
        ended = PROGRAM.match(line)
        if ended:
            program = self.programs.setdefault(int(ended[1]), Program())
            self.end_program(program, bool(PASSED.search(line)), line)
            return
        number, line = LINE.match(line).groups()
        figure = FIGURE.match(line)
        if figure:
            self.figures.append(figure[1])
            return
        program = self.programs.setdefault(int(number or 0), Program())
        begun = BEGUN.search(line)
        if begun:
            program.begun = (program.begun or 0) + int(begun[1])
        run = RUN.search(line)
        if run:
            program.running.add(run[1])
            program.shown = []
        program.shown.append(line)
        well = ENDED_WELL.search(line)
        # What a case lets others print may look like the end of one.
        if well and well[1] in program.running:
            program.running.remove(well[1])
            program.passed += 1
            program.shown = []
        elif ENDED_BADLY.search(line):
            program.failed += 1
            self.failures += program.shown
            program.shown = []

    def end_program(self, program, well, line=""):
        program.count_end(well)
        if not well:
            self.failures += [*program.shown, line]

    def end(self, well):
        """The log is whole; `well`: what wrote it ended well. Whatever ctest has said nothing about ended
        with it."""
        if self.rest:
            self.take_line(self.rest)
        for program in self.programs.values():
            if program.begun is not None and not program.has_ended:
                self.end_program(program, well)

    @property
    def passed(self):
        return sum(program.passed for program in self.programs.values())

    @property
    def failed(self):
        return sum(program.failed for program in self.programs.values())

    @property
    def begun(self):
        return sum(program.begun or 0 for program in self.programs.values())
