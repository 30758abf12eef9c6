"""The list of mutants that nothing can see, each with its reason.

An entry is the file and the line of the source on one line, then each change of it that lives, indented, then
the reason behind "because". An empty line ends it:

    src/text/Sample.cpp: if (size < most) Grow();
      size < most -> size <= most
      because growing to the same size changes nothing
"""


class KnownError(Exception):
    """What is wrong with the list: one sentence."""


class Known:
    """The entries, and which of them have been met with."""

    def __init__(self, path):
        self.path = path
        self.reasons = {}
        self.met = set()
        text = path.read_text(encoding="utf-8") if path.exists() else ""
        for at, block in self.blocks(text):
            self.take(at, block)

    @staticmethod
    def blocks(text):
        block, begin = [], 0
        for at, line in enumerate([*text.split("\n"), ""], 1):
            if line.startswith("#"):
                continue
            if line.strip():
                begin = begin if block else at
                block.append(line)
            elif block:
                yield begin, block
                block = []

    def take(self, at, block):
        head, *changes = block
        file, colon, context = head.partition(": ")
        reason = " ".join(line.strip() for line in changes
                          if not self.is_change(line))
        changes = [line.strip() for line in changes if self.is_change(line)]
        if not colon or not changes or not reason.startswith("because "):
            raise KnownError(f"{self.path}:{at}: wanted is 'file: line', changes and 'because ...'")
        for what in changes:
            key = (file, " ".join(context.split()), what)
            if key in self.reasons:
                raise KnownError(f"{self.path}:{at}: '{what}' is there twice")
            self.reasons[key] = reason.removeprefix("because ")

    @staticmethod
    def is_change(line):
        return " -> " in line and not line.strip().startswith("because ")

    def reason_of(self, mutant):
        if mutant.key in self.reasons:
            self.met.add(mutant.key)
        return self.reasons.get(mutant.key)

    def unmet(self, files):
        return [key for key in self.reasons if key[0] in files and key not in self.met]
