#!/usr/bin/env python3
"""The first program of README.md: what stands there is compiled, run with the service, and prints what stands
there. What the tests have built and started already is not built again.

    first_program_test.py
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "tests/support"))
import named_cases
from windows_programs import run_program

FOLDER = "/tmp/first"
SERVICE = "127.0.0.1:8080"


def section():
    readme = (SOURCE / "README.md").read_text(encoding="utf-8")
    return readme.partition("\n## Your first program\n")[2].partition("\n## ")[0]


class FirstProgram(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = scratch.name

    def commands(self):
        """The lines from the compiler's on, for this folder and the running service."""
        shell = "\n".join(re.findall(r"^    (.*)", re.sub(r"```.*?```", "", section(), flags=re.DOTALL),
                                     re.MULTILINE))
        self.assertIn(f"mkdir {FOLDER}\n", shell)
        service, mark, compiler = shell.partition("i686-w64-mingw32-gcc ")
        self.assertIn("orvande-service --port 8080", service)
        self.assertIn(f"http_proxy=http://{SERVICE} tools/wine", compiler)
        port = os.environ["ORVANDE_TEST_MAPS_PORT"]
        return (mark + compiler).replace(FOLDER, self.folder).replace(SERVICE, f"127.0.0.1:{port}")

    def test_it_prints_what_the_document_says(self):
        program, = re.findall(r"```c\n(.*?)```", section(), re.DOTALL)
        printed, = re.findall(r"```\n(.*?)```", section().replace(f"```c\n{program}```", ""), re.DOTALL)
        (pathlib.Path(self.folder) / "first.c").write_text(program, encoding="utf-8")
        run = run_program(["bash", "-e", "-c", self.commands()], cwd=SOURCE, stdin=subprocess.DEVNULL,
                          capture_output=True)
        self.assertEqual((0, ""), (run.returncode, run.stderr.decode()))
        self.assertEqual(printed, run.stdout.decode().replace("\r\n", "\n"))


if __name__ == "__main__":
    named_cases.main()
