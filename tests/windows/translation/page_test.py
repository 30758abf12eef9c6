#!/usr/bin/env python3
"""docs/translation-files.md as a translator follows it: every command of the page is run as it stands there,
in the page's order, and what the page promises is looked at. The place is like a clone, but what is made in
it is gone afterwards.

    page_test.py
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path += [str(SOURCE / "tests/support"), str(SOURCE / "tools")]
import named_cases
import page_steps

PAGE = SOURCE / "docs/translation-files.md"
STEPS = page_steps.steps_of(PAGE.read_text(encoding="utf-8"))
SECTIONS = list(dict.fromkeys(step.section for step in STEPS))
SECONDS = 300  # for one command, which may have to wait for a build of somebody else's
CAPTION = "Sign in to Your Account"


def make_place(folder):
    """A clone of which everything is there but what commands of the page write."""
    build = folder / "build"
    (build / "windows").mkdir(parents=True)
    for name in os.listdir(SOURCE):
        if name not in ("build", ".git"):
            (folder / name).symlink_to(SOURCE / name)
    # Whoever builds here has to take turns with those who build there.
    (SOURCE / "build/windows/turn").touch()
    # Language files are laid beside the programs.
    shipped = {f"signin.{file.name}" for file in (SOURCE / "languages").glob("*.txt")}
    for name in os.listdir(SOURCE / "build/windows"):
        if name.startswith("signin.") and name.endswith(".txt") and name not in shipped:
            continue  # somebody's own
        (build / "windows" / name).symlink_to(SOURCE / "build/windows" / name)
    for name in ("native", "windows-tests"):
        (build / name).symlink_to(SOURCE / "build" / name)
    # To make this takes some seconds.
    if (SOURCE / "build/wine/made").exists():
        shutil.copytree(SOURCE / "build/wine", build / "wine", symlinks=True)


class Screen:
    """An X display that nobody sees."""

    def __init__(self):
        read, write = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "400x440x24", "-nolisten", "tcp"],
            pass_fds=[write], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            self.name = ":" + numbers.readline().strip()

    def shows(self, caption):
        """Whether there is a window with that caption."""
        run = subprocess.run(["xwininfo", "-display", self.name, "-name", caption], stdin=subprocess.DEVNULL,
                             capture_output=True, timeout=10, check=False)
        return run.returncode == 0

    def close(self):
        self.process.kill()
        self.process.wait()


class Reader:
    """Does what the page says, step by step."""

    def __init__(self, folder):
        self.folder = folder
        self.output = ""
        self.screen = Screen()
        self.environment = {**os.environ, "DISPLAY": self.screen.name}
        self.doer = {"command": self.run, "prints": self.compare, "in": self.find, "files in": self.list,
                     "edit": self.edit}
        self.done = 0

    def do_section(self, name):
        """The steps up to the end of a section that have not been done."""
        end = max(at for at, step in enumerate(STEPS) if step.section == name) + 1
        while self.done < end:
            step = STEPS[self.done]
            self.done += 1
            try:
                self.doer[step.kind](step)
            except AssertionError as error:
                raise AssertionError(f"{PAGE.name}:{step.row}: {error}") from error

    def run(self, step):
        command = step.lines[0]
        code = step.code
        # What Wine starts beside a program may hold its output open, so this is no pipe.
        with tempfile.TemporaryFile("w+", encoding="utf-8", errors="replace") as output:
            process = subprocess.Popen(["bash", "-c", command], cwd=self.folder, env=self.environment,
                                       stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT)
            try:
                if command.startswith("./run signin ") and code == 0:
                    self.close_dialog(command.split()[2], process)
                    code = 1
                process.wait(SECONDS)
            except subprocess.TimeoutExpired:
                process.terminate()
                raise AssertionError(f"'{command}' does not end") from None
            output.seek(0)
            self.output = output.read().replace("\r\n", "\n")
        same(code, process.returncode, f"exit code of '{command}', which printed:\n{self.output}")

    def close_dialog(self, language, process):
        """As a user does who has seen that it is in his language."""
        path = self.folder / f"build/windows/signin.{language}.txt"
        records = dict(line.split("\t") for line in text_of(path).split("\n") if "\t" in line) \
            if path.exists() else {}
        caption = records.get(CAPTION, CAPTION)
        environment = {**self.environment, "ORVANDE_WINE_SCREEN": "signin", "ORVANDE_WINE_SIZE": "360x400"}
        until = time.monotonic() + SECONDS
        while not self.screen.shows(caption):
            if time.monotonic() > until or process.poll() is not None:
                process.terminate()
                raise AssertionError(f"no dialog is shown that is called '{caption}'")
            time.sleep(0.2)
        subprocess.run(["tools/wine", "taskkill", "/im", "signin.exe"], cwd=self.folder, env=environment,
                       timeout=SECONDS, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, check=False)

    def compare(self, step):
        printed = self.output.splitlines()
        if step.is_part:
            missing = [line for line in step.lines if line not in printed]
            same([], missing, f"what is not printed; this is:\n{self.output}")
        else:
            same(step.lines, printed, "what is printed")

    def path(self, step):
        path = self.folder / step.file
        if not path.exists():
            raise AssertionError(f"there is no file '{step.file}'")
        return path

    def find(self, step):
        lines = text_of(self.path(step)).splitlines()
        count = len(step.lines)
        if not any(lines[at:at + count] == step.lines for at in range(len(lines))):
            raise AssertionError(f"these lines are not in {step.file}:\n" + "\n".join(lines))

    def list(self, step):
        same(step.lines, sorted(os.listdir(self.path(step))), f"files in {step.file}")

    def edit(self, step):
        lines = self.path(step).read_text(encoding="utf-8").split("\n")
        for edited in step.lines:
            text = edited.partition("\t")[0] + "\t"
            places = [at for at, line in enumerate(lines) if line.startswith(text)]
            same(1, len(places), f"lines of the text '{text}'")
            lines[places[0]] = edited
        self.path(step).write_text("\n".join(lines), encoding="utf-8")

    def close(self):
        self.screen.close()


def text_of(path):
    data = path.read_bytes()
    return data.decode("utf-16" if data.startswith(b"\xff\xfe") else "utf-8").replace("\r\n", "\n")


def same(expected, actual, what):
    unittest.TestCase().assertEqual(expected, actual, what)


class ShortWay(unittest.TestCase):
    def test_its_commands_are_those_of_the_steps(self):
        table = PAGE.read_text(encoding="utf-8").partition("\n## The short way\n")[2].partition("\n## ")[0]
        shown = re.findall(r"`((?:tools/|\./|cp ).*?)`", table)
        steps = [line for step in STEPS if step.kind == "command" for line in step.lines]
        self.assertEqual([line for line in steps if line in shown], shown)


class TranslationPage(unittest.TestCase):
    """One case for each section, which stands upon those above it."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp()
        make_place(pathlib.Path(cls.folder))
        cls.reader = Reader(pathlib.Path(cls.folder))

    @classmethod
    def tearDownClass(cls):
        cls.reader.close()
        shutil.rmtree(cls.folder)


def add_cases():
    for number, section in enumerate(SECTIONS, 1):
        words = "".join(letter if letter.isalnum() else "_" for letter in section.lower())
        setattr(TranslationPage, f"test_{number:02}_{words}",
                lambda case, name=section: case.reader.do_section(name))


add_cases()

if __name__ == "__main__":
    named_cases.main()
