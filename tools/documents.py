"""Finds what is wrong in Markdown documents: links that lead nowhere, code that does not compile, and
commands, files and presets that are not there.

Blocks with a fence are of the language that it names; without one they are data, and not looked into.
Indented blocks are for a shell.

C is compiled as C89 and C++ as C++20, for Windows and with all warnings. The blocks of one language on a page
follow each other in one file; a block that begins with an #include begins a new one. Statements stand in a
function that a comment of HTML before the fence names:

    <!-- inside: void Show(MapShopSearch* search) -->
"""
import functools
import itertools
import json
import pathlib
import re
import shlex
import subprocess
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror", "-Wno-unused-function", "-fsyntax-only"]
C = ["i686-w64-mingw32-gcc", "-x", "c", *WARNINGS, "-Wno-cast-function-type", "-I", ROOT / "include"]
CPP = ["i686-w64-mingw32-g++", "-x", "c++", *WARNINGS,
       *(f"-I{ROOT / folder}" for folder in ("include", "src", "platform/include"))]
# C89 has no %ls, which all runtimes have that are meant here; so C99 judges the formats.
COMPILERS = {"c": [[*C, "-std=c89", "-Wno-format"], [*C, "-std=c99"]], "cpp": [[*CPP, "-std=c++20"]]}
# Programs of others that commands call; the project's own have a path.
PROGRAMS = {"arm-none-eabi-addr2line", "callgrind_annotate", "cmake", "cp", "ctest", "gdb", "git",
            "i686-w64-mingw32-addr2line", "i686-w64-mingw32-gcc", "mkdir", "mv", "ninja",
            "orvande-service", "qemu-arm", "sqlite3", "valgrind"}
# Where files are that a document names without all of their path.
BASES = ["", "src", "platform", "platform/simulator", "platform/device", "tests", "docs"]
INSIDE = re.compile(r"<!-- inside: (.*) -->$")
LINK = re.compile(r"\]\(([^()\s]+)\)")
CODE = re.compile(r"`+[^`]*`+")
PATH = re.compile(r"`((?:[\w.*-]+/)*[\w.*-]+\.(?:h|c|cpp|py|md|cmake|rc|def|ld|tsv|in)|"
                  r"(?:tools|src|docs|include|service|tests|platform|examples|cmake|benchmarks)/[\w./*-]*)`")
PLACEHOLDER = re.compile(r"(?:^|/)[A-Z]{3,}|[A-Z]{4,}(?:\.|$)")


class Block(NamedTuple):
    row: int  # of its first line of code, from 0
    language: str
    lines: list[str]
    inside: str  # the function whose statements it has


class Problem(NamedTuple):
    row: int
    what: str


def blocks(lines):
    """The code of a document."""
    rows = iter(range(len(lines)))
    for row in rows:
        text = lines[row].lstrip(" ")
        if text.startswith("```"):
            end = next((n for n in rows if lines[n].strip() == "```"), len(lines))
            inside = INSIDE.match(lines[row - 1].strip()) if row else None
            yield Block(row + 1, text[3:], lines[row + 1:end], inside[1] if inside else "")
        elif lines[row].startswith("    ") and row and not lines[row - 1]:
            end = next((n for n in rows if lines[n] and not lines[n].startswith("    ")), len(lines))
            while not lines[end - 1]:
                end -= 1
            yield Block(row, "sh", [line[4:] for line in lines[row:end]], "")


def prose(lines):
    """The lines outside of code, with their rows."""
    taken = set()
    for block in blocks(lines):
        taken.update(range(block.row, block.row + len(block.lines)))
    return [(row, line) for row, line in enumerate(lines) if row not in taken]


# ---- Links ----

def anchors(lines):
    """What can follow a # in a link to the document."""
    found, counts = set(), {}
    for _, line in prose(lines):
        if re.match(r"#+ ", line):
            title = re.sub(r"\]\([^)]*\)", "]", line.lstrip("#").strip()).lower()
            name = re.sub(r"[^\w\- ]", "", title).replace(" ", "-")
            found.add(name + (f"-{counts[name]}" if name in counts else ""))
            counts[name] = counts.get(name, 0) + 1
    return found


def link_problems(path, lines):
    for row, line in prose(lines):
        for target in LINK.findall(CODE.sub("", line)):
            if re.match(r"\w+:", target):
                continue
            name, _, anchor = target.partition("#")
            file = (path.parent / name).resolve() if name else path
            if not file.exists():
                yield Problem(row, f"there is no '{name}'")
            elif anchor and anchor not in anchors(file.read_text().split("\n")):
                yield Problem(row, f"'{name or path.name}' has no heading '#{anchor}'")


def path_problems(lines):
    """Of the files that are named in the prose."""
    for row, line in prose(lines):
        for name in PATH.findall(line):
            is_file = any(any((ROOT / base).glob(pattern)) for base in BASES
                          for pattern in (name.rstrip("/"), name.rstrip("/") + ".*"))
            if not is_file and not PLACEHOLDER.search(name) and not any(ROOT.glob(f"*/**/{name}")):
                yield Problem(row, f"there is no '{name}'")


# ---- Code ----

def files(code):
    """The blocks of one language by the files that they make."""
    made = []
    for block in code:
        if not made or block.lines[0].startswith("#include"):
            made.append([])
        made[-1].append(block)
    return made


def source_of(file):
    text = ""
    for block in file:
        text += f"{block.inside} {{\n" if block.inside else ""
        text += f'#line {block.row + 1} "document"\n' + "\n".join(block.lines) + "\n"
        text += "}\n" if block.inside else ""
    return text


def compiler_problems(language, code):
    for file, command in itertools.product(files(code), COMPILERS[language]):
        run = subprocess.run([*command, "-"], input=source_of(file), text=True, check=False,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if run.returncode == 0:
            continue
        said = re.findall(r"^document:(\d+):\d+: (?:fatal )?error: (.*)", run.stdout, re.MULTILINE)
        for line, what in said or [(file[0].row + 1, f"the compiler says: {run.stdout.strip()}")]:
            yield Problem(int(line) - 1, what)


def python_problems(code):
    for block in code:
        try:
            compile("\n".join(block.lines), "document", "exec")
        except SyntaxError as error:
            yield Problem(block.row + error.lineno - 1, error.msg)


def other_problems(language, code):
    for block in code:
        yield Problem(block.row - 1, f"nobody knows how to check '{language}'")


# ---- Commands ----

@functools.cache
def presets(kind):
    return {preset["name"] for preset in json.loads((ROOT / "CMakePresets.json").read_text())[kind]}


@functools.cache
def build_files():
    """What tells what is built, and where: the build's files, and the scripts."""
    listed = [*ROOT.glob("*"), *ROOT.glob("tools/*"), *ROOT.glob("cmake/*"), ROOT / "tests/CMakeLists.txt"]
    listed += [file for folder in ("src", "service", "examples", "benchmarks", "platform", "tests")
               for file in (ROOT / folder).glob("**/CMakeLists.txt")]
    return "\n".join(file.read_text() for file in listed if file.is_file())


def is_known(word):
    return re.search(rf"(?<![\w-]){re.escape(word)}(?![\w-])", build_files()) is not None


def is_there(word):
    """Whether a file is there, or is built, or lies beside what is built: a program's language file."""
    if not word.startswith("build/"):
        return (ROOT / word).exists()
    folder, *rest = re.sub(r"\.[A-Z][a-z]+\.txt$", ".exe", word).split("/")[1:]
    if folder.startswith("wine-"):
        return is_known(f"begin_wine_session {folder.removeprefix('wine-')}")
    if folder not in presets("configurePresets"):
        return is_known(f"build/{folder}")
    return not rest or is_known(re.sub(r"(\.[a-z]+)*$", "", rest[-1]))


def chosen(script):
    """The words that a script of the project can be told, where they are a closed set."""
    if script == "./test":
        text = (ROOT / "tools/test_rings.py").read_text().partition("RINGS = {")[2].partition("\n}")[0]
        return set(re.findall(r'^    "([\w-]+)"', text, re.MULTILINE))
    if script == "tools/setup":
        return set(re.findall(r"^  \[([\w-]+)\]=", (ROOT / script).read_text(), re.MULTILINE))
    return set()


def script_problems(words):
    """Of a command that calls a script of the project."""
    script, *rest = words
    text = (ROOT / script).read_text()
    for name in re.findall(r"tools/([\w]+\.py)", text):
        text += (ROOT / "tools" / name).read_text()
    if script == "./run":
        # It passes on what mapshop is told.
        text += "".join(file.read_text() for file in ROOT.glob("examples/mapshop/*.cpp"))
    if script == "tools/translation":
        # It passes on what its program is told.
        text += (ROOT / "translation/Main.cpp").read_text()
    for word in rest:
        if word.startswith("--") and word.partition("=")[0] not in text and not word.startswith("--gtest_"):
            yield f"{script} knows no option '{word}'"
        elif chosen(script) and re.fullmatch(r"[a-z-]+", word) and word not in chosen(script):
            yield f"{script} knows no '{word}'"


def preset_problems(words):
    kind = ("testPresets" if words[0] == "ctest" else "buildPresets" if "--build" in words
            else "configurePresets")
    for option, name in zip(words, words[1:]):
        if option == "--preset" and name not in presets(kind):
            yield f"there is no preset '{name}' of {kind}"
        if option == "--target" and not is_known(name):
            yield f"there is no target '{name}'"


def command_problems(words):
    program = words[0]
    if "/" in program and not is_there(program) or "/" not in program and program not in PROGRAMS:
        yield f"there is no program '{program}'"
        return
    if (ROOT / program).is_file() and not program.startswith("build/"):
        yield from script_problems(words)
    if program in ("cmake", "ctest"):
        yield from preset_problems(words)
    if program == "ninja":
        for word in words[3:]:
            if not is_known(word):
                yield f"there is no target '{word}'"
    for word in words[1:]:
        is_path = re.match(r"(?:tools|src|tests|examples|docs|benchmarks|build)/[\w./-]+$", word)
        if is_path and not is_there(word) and not re.match("build/[a-z]+$", word):
            yield f"there is no file '{word}'"


def commands(line):
    """The words of each command of a line, without what is set in its environment."""
    lexer = shlex.shlex(line, posix=True, punctuation_chars=True)
    lexer.whitespace_split = True
    for is_joint, words in itertools.groupby(lexer, lambda word: set(word) <= set("();<>|&")):
        command = list(itertools.dropwhile(lambda word: re.match(r"\w+=", word), words))
        if command and not is_joint:
            yield command


def shell_problems(code):
    for block in code:
        lines = [line if not line.startswith("(gdb)") else "" for line in block.lines]
        run = subprocess.run(["bash", "-n"], input="\n".join(lines), text=True, check=False,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if run.returncode != 0:
            yield Problem(block.row, f"bash says: {run.stdout.strip()}")
            continue
        row = block.row
        for logical in re.split(r"(?<!\\)\n", "\n".join(lines)):
            for command in commands(logical.replace("\\\n", " ")):
                for what in command_problems(command):
                    yield Problem(row, what)
            row += logical.count("\n") + 1


# ---- All ----

def problems(path):
    """All that is wrong in the document `path`, in its order."""
    lines = path.read_text().split("\n")
    found = [*link_problems(path, lines), *path_problems(lines)]
    by_language = {}
    for block in blocks(lines):
        by_language.setdefault(block.language, []).append(block)
    for language, code in by_language.items():
        if language in COMPILERS:
            found += compiler_problems(language, code)
        elif language == "python":
            found += python_problems(code)
        elif language == "sh":
            found += shell_problems(code)
        elif language:
            found += other_problems(language, code)
    return sorted(found)
