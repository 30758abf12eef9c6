#!/usr/bin/env python3
"""The stack that the libraries' own functions take on a handheld, as docs/host-guide.md states it: the
longest chain of calls in what the compiler tells of its frames.

    stack_test.py FOLDER        FOLDER: where the device's files were built
"""
import json
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

import named_cases

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDER = pathlib.Path(sys.argv[1])
RUNTIME = ("platform/runtime/", "platform/device/Unwinder")
NODE = re.compile(r'^node: \{ title: "((?:[^"\\]|\\.)*)" label: "[^"]*\\n(\d+) bytes \((\w+)\)', re.MULTILINE)
EDGE = re.compile(r'^edge: \{ sourcename: "((?:[^"\\]|\\.)*)" targetname: "((?:[^"\\]|\\.)*)"', re.MULTILINE)
# What the streams of a request call through their table, the only calls of the libraries' own whose target
# the compiler does not know.
VIRTUAL = re.compile(r"CgiRequest(4Read|5Write)|CgiRequestD[0-2]")
DOWNLOADS = ("LMDownloadWebFileProgress", "x77fc64c7")
# What the unwinder's entries in assembly go on to.
ASSEMBLY = {"_Unwind_RaiseException": {"RaiseFrom"}, "_Unwind_Resume": {"GoOnFrom"}}


class Frames:
    """Of one library: the bytes of each function's frame, and whom it calls."""

    def __init__(self, library):
        self.bytes, self.calls, self.found = {}, dict(ASSEMBLY), {}
        commands = json.loads((FOLDER / "compile_commands.json").read_text())
        with tempfile.TemporaryDirectory() as folder:
            for number, command in enumerate(commands):
                file = command["file"]
                is_runtime = file.endswith(".cpp") and any(part in file for part in RUNTIME)
                if is_runtime or file.endswith(f"/{library}.cpp"):
                    self.take(command, pathlib.Path(folder) / f"{number}.o")
        self.virtual = [name for name in self.bytes if VIRTUAL.search(name)]

    def take(self, command, output):
        words = shlex.split(command["command"])
        words = words[next(n for n, word in enumerate(words) if word.endswith("-g++")):]
        words[words.index("-o") + 1] = str(output)
        subprocess.run([*words, "-fcallgraph-info=su"], cwd=command["directory"], check=True)
        graph = output.with_suffix(".ci").read_text()
        for name, size, kind in NODE.findall(graph):
            assert kind in ("static", "dynamic,bounded"), f"the frame of {name} is {kind}"
            self.bytes[name] = int(size)
        for caller, called in EDGE.findall(graph):
            self.calls.setdefault(caller, set()).add(called)

    def most_below(self, name, above=frozenset()):
        """The bytes of the longest chain of calls from a function on. One that calls itself counts once."""
        if name in above:
            return 0
        if name not in self.found:
            called = set()
            for target in self.calls.get(name, ()):
                called.update(self.virtual if target == "__indirect_call" else [target])
            self.found[name] = self.bytes.get(name, 0) + max(
                (self.most_below(target, above | {name}) for target in called), default=0)
        return self.found[name]

    def uncalled(self):
        """The functions that are called by address only, as by the system."""
        called = set().union(*self.calls.values())
        return [name for name in self.bytes if name not in called]


def stated():
    """The figures of the guide, in bytes, by the names of the functions; "loading" for the load. A download
    whose buffer has another size takes as much more."""
    sizes = (FOLDER / "src/transport/BufferSizes.h").read_text()
    chunk = int(re.search(r"downloadChunkSize = (\d+)", sizes)[1])
    guide = (ROOT / "docs/host-guide.md").read_text()
    table = guide.partition("\n## Stack\n")[2].partition("\n\nThese are")[0]
    figures = {}
    for what, kilobytes in re.findall(r"^\| (.+) \| (\d+) \|$", table, re.MULTILINE):
        for name in re.findall(r"`(\w+)`", what) or ["loading"]:
            figures[name] = int(kilobytes) * 1024 + (chunk - 4096 if name in DOWNLOADS else 0)
    return figures


class Stack(unittest.TestCase):
    def assert_stated(self, what, used):
        """The figure is no less than what was counted, and less than a kilobyte more than need be."""
        self.assertLessEqual(used, stated()[what], what)
        self.assertGreater(used + 1024, stated()[what], what)

    def exports(self, definitions):
        return re.findall(r"^    (\w+)", (ROOT / definitions).read_text(), re.MULTILINE)

    def test_online_takes_what_the_guide_states(self):
        frames, exports = Frames("OrvandeOnline"), self.exports("src/frame/Exports.def")
        for name in exports:
            self.assert_stated(name, frames.most_below(name))
        others = [name for name in frames.uncalled() if name not in exports]
        self.assertTrue(any("TranslationCatalogueD" in name for name in others), "nothing is destroyed")
        self.assert_stated("loading", max(map(frames.most_below, others)))

    def test_the_account_takes_what_the_guide_states(self):
        frames, exports = Frames("OrvandeAccount"), self.exports("companion/Exports.def")
        for name in exports:
            if "Show" not in name:
                self.assert_stated(name, frames.most_below(name))
        # A dialog's procedure runs above the function that shows it, and one dialog opens the other.
        procedure = max(frames.most_below(name) for name in frames.uncalled() if name not in exports)
        command, = [name for name in frames.bytes if "SignInDialog15OnDialogCommand" in name]
        create = frames.most_below("LMAccountShowCreate") + procedure
        self.assert_stated("LMAccountShowCreate", create)
        self.assert_stated("LMAccountShowSignIn", frames.most_below("LMAccountShowSignIn")
                           + frames.most_below(command) + procedure)


if __name__ == "__main__":
    named_cases.main()
