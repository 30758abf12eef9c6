#!/usr/bin/env python3
"""tools/build in a little project of its own: who waits for whom, and what it says."""
import json
import os
import pathlib
import select
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests/support"))
import named_cases

# The target `slow` notes that it has begun, waits for the file `go` (or the end of all), and notes its end.
PROJECT = """cmake_minimum_required(VERSION 3.25)
project(Sample LANGUAGES NONE)
file(APPEND ${PROJECT_SOURCE_DIR}/record "configured ${WORD}\\n")
add_custom_target(slow VERBATIM COMMAND sh -c
  "echo begin >>record; until [ -e go -o ! -e record ]; do sleep 0.05; done; echo end >>record"
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
add_custom_target(quick VERBATIM COMMAND sh -c "echo quick >>record" WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
add_custom_target(broken COMMAND false)
"""
PRESETS = ("one", "one-tests", "two")
CONFIGURED = "configured "
WAITING = "build: waiting until another build in build/one has ended\n"
SECONDS = 60  # for what would hang if it were wrong


class LittleProject(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        (self.folder / "tools").mkdir()
        # A link, so that what runs is counted as the project's own.
        (self.folder / "tools/build").symlink_to(ROOT / "tools/build")
        (self.folder / "CMakeLists.txt").write_text(PROJECT, encoding="ascii")
        presets = [{"name": name, "generator": "Ninja", "binaryDir": f"${{sourceDir}}/build/{name}"}
                   for name in PRESETS] + [{"name": "base", "hidden": True}]
        (self.folder / "CMakePresets.json").write_text(
            json.dumps({"version": 6, "configurePresets": presets}), encoding="ascii")

    def record(self):
        file = self.folder / "record"
        return file.read_text(encoding="ascii").split("\n")[:-1] if file.exists() else []

    def start(self, *words, folder=None):
        process = subprocess.Popen(["tools/build", *words], cwd=folder or self.folder, text=True,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   start_new_session=True)
        self.addCleanup(self.end, process)
        return process

    @staticmethod
    def end(process):
        process.terminate()
        process.communicate(timeout=SECONDS)

    def build(self, *words):
        """Exit code and both outputs."""
        process = self.start(*words)
        output, errors = process.communicate(timeout=SECONDS)
        return process.returncode, output, errors

    def go(self):
        (self.folder / "go").touch()

    def wait_until(self, line):
        until = time.monotonic() + SECONDS
        while line not in self.record():
            self.assertLess(time.monotonic(), until)
            time.sleep(0.02)


class Turns(LittleProject):
    def begin(self, preset="one"):
        process = self.start(preset, "slow")
        self.wait_until("begin")
        return process

    def assert_waits(self, second):
        """Until the file is there that lets the first one go."""
        until = time.monotonic() + SECONDS
        # Were there no turns, it would begin beside the other, or have ended.
        while not select.select([second.stderr], [], [], 0.02)[0] and self.record().count("begin") < 2:
            self.assertLess(time.monotonic(), until)
        self.assertIsNone(second.poll())
        self.go()
        self.assertEqual(("", WAITING), second.communicate(timeout=SECONDS))
        self.assertEqual(0, second.returncode)

    def test_two_builds_of_a_folder_come_one_after_the_other(self):
        first = self.begin()
        self.assert_waits(self.start("one", "slow"))
        self.assertEqual(0, first.wait(SECONDS))
        self.assertEqual([CONFIGURED, "begin", "end", "begin", "end"], self.record())

    def test_so_do_those_of_folders_with_the_same_first_word(self):
        self.begin()
        self.assert_waits(self.start("one-tests", "quick"))
        self.assertEqual([CONFIGURED, "begin", "end", CONFIGURED, "quick"], self.record())

    def test_other_folders_wait_for_nobody(self):
        self.begin()
        self.assertEqual((0, "", ""), self.build("two", "quick"))
        self.assertEqual([CONFIGURED, "begin", CONFIGURED, "quick"], self.record())

    def test_only_the_first_of_two_configures(self):
        self.begin("two")
        both = [self.start("one", "quick") for _ in range(2)]
        self.assertEqual([0, 0], [process.wait(SECONDS) for process in both])
        self.assertEqual(["begin", CONFIGURED, CONFIGURED, "quick", "quick"], sorted(self.record()))

    def test_turn_ends_with_the_build_that_is_ended(self):
        first = self.begin()
        first.terminate()
        self.assertEqual((0, "", ""), self.build("one", "quick"))
        self.assertEqual(143, first.wait(SECONDS))

    def test_end_that_comes_as_ninja_starts_reaches_it(self):
        self.build("one")
        programs = self.folder / "programs"
        programs.mkdir()
        ninja = programs / "ninja"
        ninja.write_text("#!/bin/sh\nkill -TERM $PPID\nuntil [ -e go ]; do sleep 0.02; done\n",
                         encoding="ascii")
        ninja.chmod(0o755)
        with mock.patch.dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}"):
            for _ in range(20):
                self.assertEqual((143, "", ""), self.build("one"))

    def test_turn_goes_on_while_a_command_of_it_outlives_the_build(self):
        first = self.begin()
        os.killpg(first.pid, signal.SIGKILL)  # ninja's commands are in groups of their own
        first.wait()
        self.assert_waits(self.start("one", "quick"))
        self.assertEqual([CONFIGURED, "begin", "end", "quick"], self.record())

    def test_turn_has_room_for_what_follows_the_build(self):
        first = self.start("one", "quick", "--then", "tools/build", "one", "slow")
        self.wait_until("begin")
        self.assert_waits(self.start("one", "quick"))
        self.assertEqual(0, first.wait(SECONDS))
        self.assertEqual([CONFIGURED, "quick", "begin", "end", "quick"], self.record())

    def test_place_that_links_to_a_build_shares_its_turns(self):
        place = self.folder / "place"
        (place / "build").mkdir(parents=True)
        self.begin()
        for name in ("tools", "CMakePresets.json", "build/one"):
            (place / name).symlink_to(self.folder / name)
        self.assert_waits(self.start("one", "quick", folder=place))

    def test_linked_build_is_built_where_it_is(self):
        self.build("one", "quick")
        place = self.folder / "place"
        (place / "build/one").mkdir(parents=True)
        for name in ("tools", "CMakePresets.json", "build/one/build.ninja", "build/one/CMakeFiles"):
            (place / name).symlink_to(self.folder / name)
        process = self.start("one", "quick", "--log", "-", folder=place)
        output, _ = process.communicate(timeout=SECONDS)
        self.assertIn(f"Entering directory `{self.folder.resolve()}/build/one'", output)
        self.assertEqual(0, process.returncode)


class Outputs(LittleProject):
    def test_it_goes_to_a_log(self):
        self.assertEqual((0, "", ""), self.build("one", "quick"))
        log = (self.folder / "build/log/build-one").read_text(encoding="utf-8")
        self.assertIn("Configuring done", log)
        self.assertIn("[1/1]", log)
        self.assertEqual((0, "", ""), self.build("one", "quick", "--log", "other"))
        self.assertIn("[1/1]", (self.folder / "other").read_text(encoding="utf-8"))

    def test_or_is_shown(self):
        code, output, errors = self.build("one", "quick", "--log", "-")
        self.assertEqual((0, ""), (code, errors))
        self.assertIn("[1/1]", output)

    def test_end_of_the_log_is_shown_when_it_fails(self):
        code, output, errors = self.build("one", "broken")
        self.assertEqual((1, ""), (code, output))
        self.assertIn("FAILED: CMakeFiles/broken", errors)
        self.assertTrue(errors.endswith("\nbuild: the build 'one' failed (its whole output: "
                                        "build/log/build-one)\n"), errors)

    def test_nothing_follows_what_has_failed(self):
        self.assertEqual(1, self.build("one", "broken", "--then", "touch", "after")[0])
        self.assertFalse((self.folder / "after").exists())
        self.assertEqual(1, self.build("one", "quick", "--then", "false")[0])

    def test_other_folder_is_configured_as_it_is_told(self):
        self.assertEqual((0, "", ""), self.build("one", "quick", "--in", "build/other", "-DWORD=told"))
        self.assertEqual(["configured told", "quick"], self.record())
        self.assertTrue((self.folder / "build/log/build-other").exists())
        self.assertFalse((self.folder / "build/one").exists())


    def test_changed_presets_are_configured_anew(self):
        self.build("one", "quick")
        self.build("one", "quick")
        file = self.folder / "CMakePresets.json"
        presets = json.loads(file.read_text(encoding="ascii"))
        presets["configurePresets"][0]["cacheVariables"] = {"WORD": "changed"}
        file.write_text(json.dumps(presets), encoding="ascii")
        self.assertEqual((0, "", ""), self.build("one", "quick"))
        self.build("one", "quick")
        self.assertEqual([CONFIGURED, "quick", "quick", "configured changed", "quick", "quick"],
                         self.record())


class WrongArguments(LittleProject):
    def assert_refused(self, sentence, *words):
        self.assertEqual((2, "", f"build: {sentence}\n"), self.build(*words))
        self.assertFalse((self.folder / "build").exists())

    def test_preset_is_one_that_there_is(self):
        self.assert_refused("no preset is named (--help tells more)")
        self.assert_refused("there is no preset 'base' (one, one-tests, two)", "base")

    def test_options_are_those_that_there_are_and_have_their_values(self):
        self.assert_refused("there is no option '--x' (--help tells them)", "one", "--x")
        self.assert_refused("--in needs a value", "one", "--in")
        self.assert_refused("--log needs a value", "one", "--log")
        self.assert_refused("--then needs a command", "one", "--then")

    def test_log_is_a_file_that_can_be_written(self):
        code, _, errors = self.build("one", "--log", "tools")
        self.assertEqual((2, "build: tools: Is a directory\n"), (code, errors))


if __name__ == "__main__":
    named_cases.main()
