#!/usr/bin/env python3
"""Stops the build when a call passes 64 bits otherwise than the device does.

    check_calls.py COMMANDS TARGET ... [--lists FILE ...]

COMMANDS is the build's compile_commands.json; the sources of the targets are looked at. The lists name
functions on the image's border: definition files (*.def), and exports of the device's libraries (*.tsv).

The compiler lets a 64-bit argument begin at an even one of the words that arguments are, and leaves a word
out before it where need be. The device leaves out none. So arguments of 64 bits must stand at even words by
themselves in every call with "...", whose list may go on to the device's runtime, in calls through pointers,
and in the parameters of functions on the border. A hidden first word counts, too: where a class is returned,
and `this`.

clang has the compiler's calling convention, and writes down every call word by word.
"""
import argparse
import concurrent.futures
import functools
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

# What of a compiler's command concerns the calls. The rest is about optimisation, warnings and files.
KEPT = re.compile(r"-D|-I|-U|-std=|-m|-fshort-wchar|-fsigned-char|-fno-(short-enums|rtti|threadsafe-statics)")
# The same of the system's headers: with the path as the next word.
KEPT_PAIRS = ("-isystem", "-include")

CALL = re.compile(r"\b(?:call|invoke) (.*)")
CALLEE = re.compile(r'(@"[^"]*"|@[\w.$]+|%[\w.]+)\(')
SCALAR = re.compile(r"(i\d+|float|double)(?= (?!\())|(i\d+|float|double)$")
POINTER = re.compile(r"(ptr|.*?\*+)(?= |$)")
ARRAY = re.compile(r"\[(\d+) x (i32|i64)\]")


@functools.lru_cache
def system_folders(compiler, language):
    """Where the compiler finds the system's headers."""
    said = subprocess.run([compiler, "-E", "-v", "-x", language, "/dev/null"], capture_output=True, text=True,
                          check=True, env={**os.environ, "LC_ALL": "C"}).stderr
    return re.findall(r"^ (\S+)$", said.partition("#include <...>")[2].partition("End of search")[0],
                      re.MULTILINE)


def calls_in(command):
    """What clang makes of a source, as text, by the compiler's own command."""
    words = shlex.split(command["command"])
    words = words[next(n for n, word in enumerate(words) if re.search(r"-(gcc|g\+\+)$", word)):]
    compiler, options = words[0], []
    for word, following in zip(words[1:], words[2:] + [""]):
        if word in KEPT_PAIRS:
            options += [word, following]
        elif KEPT.match(word):
            options.append(word)
    is_cpp = compiler.endswith("g++")
    folders = system_folders(compiler, "c++" if is_cpp else "c")
    run = subprocess.run(
        ["clang++" if is_cpp else "clang", "--target=arm-none-eabi", "-nostdinc", *options,
         *(part for folder in folders for part in ("-isystem", folder)), "-O0", "-gline-tables-only", "-w",
         "-S", "-emit-llvm", "-o", "-", command["file"]],
        capture_output=True, text=True, check=False, cwd=command["directory"])
    if run.returncode != 0:
        refuse(f"clang cannot read {command['file']}:\n{run.stderr}")
    return run.stdout


class Places:
    """Where in the sources a line of clang's text comes from."""

    def __init__(self, text):
        self.nodes = dict(re.findall(r"^(!\d+) = (?:distinct )?(.*)$", text, re.MULTILINE))

    def field(self, node, name):
        found = re.search(rf'\b{name}: ("([^"]*)"|[^,)]*)', self.nodes.get(node, ""))
        return (found[2] or found[1]) if found else ""

    def of(self, line):
        found = re.search(r"!dbg (!\d+)", line)
        if not found:
            return "somewhere"
        file = self.field(found[1], "file") or self.field(self.field(found[1], "scope"), "file")
        return f"{self.field(file, 'filename')}:{self.field(found[1], 'line')}"


def parts(text):
    """The parameters or arguments between a bracket, which `text` follows, and the one that closes it."""
    found, depth, is_quoted, begin = [], 0, False, 0
    for n, letter in enumerate(text):
        if letter == '"':
            is_quoted = not is_quoted
        elif is_quoted:
            continue
        elif letter in "([{<":
            depth += 1
        elif letter in ")]}>" and depth > 0:
            depth -= 1
        elif letter == ")" or letter == "," and depth == 0:
            found.append(text[begin:n].strip())
            begin = n + 1
            if letter == ")":
                return [part for part in found if part]
    raise ValueError(text)


def words_of(argument):
    """How many words an argument is, and whether they begin at an even one; 0 when that is not known."""
    array = ARRAY.match(argument)
    if array:
        return int(array[1]) * (2 if array[2] == "i64" else 1), array[2] == "i64"
    scalar = SCALAR.match(argument)
    if scalar:
        is_wide = (scalar[1] or scalar[2]) in ("i64", "double")
        return 2 if is_wide else 1, is_wide
    if " byval(" not in argument and POINTER.match(argument):
        return 1, False
    return 0, False


def wrong_argument(arguments):
    """What is wrong with a list of arguments; empty when nothing is."""
    words = 0
    for number, argument in enumerate(arguments, 1):
        if argument == "...":
            break
        size, is_even = words_of(argument)
        if size == 0:
            return f"argument {number}, {argument.split(' ')[0]}, cannot be judged: pass a pointer"
        if is_even and words % 2 == 1:
            return f"64 bits begin at the odd word {words}, which the device passes in another way"
        words += size
    return ""


def complaints_of(text, border):
    """What is wrong in clang's text, each with its place."""
    places = Places(text)
    # A call that may throw goes on in the next line.
    for line in re.sub(r"\n +to label", " to label", text).split("\n"):
        definition = line.startswith("define ")
        call = None if definition else CALL.search(line)
        if not definition and (call is None or " asm " in line):
            continue
        callee = CALLEE.search(line if definition else call[1])
        if callee is None:
            yield f"{places.of(line)}: this call cannot be judged: {line.strip()[:60]}"
            continue
        name = callee[1].strip('@"')
        on_border = name in border or not definition and (
            name.startswith("%") or "...)" in call[1][:callee.start()])
        if on_border:
            wrong = wrong_argument(parts(callee.string[callee.end():]))
            if wrong:
                yield f"{places.of(line)}: {name}: {wrong}"


def names_in(file):
    text = pathlib.Path(file).read_text(encoding="ascii")
    pattern = r"^ +(\w+)" if file.endswith(".def") else r"^\d+\t(\w+)"
    return re.findall(pattern, text, re.MULTILINE)


def commands_of(file, targets):
    """The commands that compile the targets' sources."""
    try:
        commands = json.loads(file.read_text(encoding="utf-8"))
    except (OSError, ValueError) as error:
        refuse(f"{file} cannot be read: {error}")
    found = [command for command in commands
             if any(f"/{target}.dir/" in command["command"] for target in targets)
             and not command["file"].endswith(".S")]
    return found or refuse(f"{file} has no source of {', '.join(targets)}")


def refuse(why):
    print(f"check_calls: {why}", file=sys.stderr)
    sys.exit(2)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("commands", type=pathlib.Path)
    parser.add_argument("targets", nargs="+")
    parser.add_argument("--lists", nargs="*", action="extend", default=[])
    options = parser.parse_args()
    border = {name for file in options.lists for name in names_in(file)}
    commands = commands_of(options.commands, options.targets)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        texts = pool.map(calls_in, commands)
    wrong = sorted({complaint for text in texts for complaint in complaints_of(text, border)})
    if wrong:
        plain = subprocess.run(["arm-none-eabi-c++filt"], input="\n  ".join(wrong), capture_output=True,
                               text=True, check=True).stdout
        sys.exit(f"check_calls: 64-bit arguments need even places:\n  {plain}")


main()
