#!/usr/bin/env python3
"""The check of the calls that pass 64 bits otherwise than the device does.

    call_check_test.py FOLDER        FOLDER: where the device's files were built
"""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

import named_cases

SOURCE = pathlib.Path(__file__).resolve().parents[2]
CHECK = SOURCE / "platform/device/check_calls.py"
FOLDER = pathlib.Path(sys.argv[1])
COMPILE = "arm-none-eabi-g++ -march=armv4t -mfloat-abi=soft -fshort-wchar -Os -Wall -std=gnu++20"
WRONG = "64 bits begin at the odd word "


class CallCheck(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_check(self, *options):
        return subprocess.run([sys.executable, "-B", CHECK, *options], capture_output=True, text=True,
                              check=False)

    def check(self, text, target="sample"):
        """What the check says of a source whose border is `Border`."""
        source, commands, list_ = (self.folder / name for name in ("source.cpp", "commands.json", "list.tsv"))
        source.write_text(text, encoding="ascii")
        list_.write_text("7\tBorder\n", encoding="ascii")
        command = f"/usr/bin/{COMPILE} -o files/sample.dir/source.o -c {source}"
        commands.write_text(json.dumps([{"directory": str(self.folder), "file": str(source),
                                         "command": command}]), encoding="utf-8")
        return self.run_check(commands, target, "--lists", list_)

    def assert_refused(self, what, text):
        result = self.check(text)
        self.assertEqual(1, result.returncode, result.stderr)
        self.assertIn(what, result.stderr)

    def assert_fine(self, text):
        result = self.check(text)
        self.assertEqual(("", 0), (result.stderr, result.returncode))

    def test_arguments_behind_dots_stand_at_even_words(self):
        print_ = 'extern "C" int Print(const char* format, ...);\n'
        self.assert_refused(f"source.cpp:2: Print: {WRONG}1",
                            print_ + 'int Start(long long n) { return Print("%lld", n); }')
        self.assert_refused(f"Print: {WRONG}3", print_ + 'int Start(double n) { return Print("", 1, 2, n); }')
        self.assert_refused(f"Print: {WRONG}5",
                            print_ + 'int Start(double n) { return Print("", 1, n, 2, n); }')
        self.assert_fine(print_ + 'int Start(double n) { return Print("", 1, n, n, 2, 3, n); }')
        self.assert_refused(f"Print: {WRONG}1", print_ + 'int Start(float n) { return Print("%f", n); }')
        self.assert_fine(print_ + 'int Start(long n, short m) { return Print("%ld %hd", n, m); }')

    def test_hidden_first_words_count(self):
        text = "struct Text { ~Text(); char* units; };\n"
        self.assert_fine(text + "Text Format(const char* format, ...);\n"
                         'void Start(long long n) { Format("%lld", n); }')
        self.assert_refused(f"Format(char const*, ...): {WRONG}1",
                            text + "void Format(const char* format, ...);\n"
                            'void Start(long long n) { Text text; Format("%lld", n); }')
        self.assert_refused(f"Object::Add(char const*, ...): {WRONG}3",
                            text + "struct Object { Text Add(const char* format, ...); };\n"
                            'void Start(Object& object, long long n) { object.Add("%lld", n); }')

    def test_functions_on_the_border_take_64_bits_at_even_words(self):
        self.assert_refused(f"Border: {WRONG}1", 'extern "C" int Border(int a, long long b);\n'
                            "int Start() { return Border(1, 2); }")
        self.assert_refused(f"source.cpp:1: Border: {WRONG}3",
                            'extern "C" int Border(int*, int*, int* c, long long d) { return *c + int(d); }')
        self.assert_fine('extern "C" int Border(int*, int, long long c) { return int(c); }')
        self.assert_fine("__attribute__((noinline)) int Own(int a, long long b) { return a + int(b); }\n"
                         "int Start() { return Own(1, 2); }")

    def test_calls_through_pointers_do_so_too(self):
        self.assert_refused(f"{WRONG}1", "int Start(int (*call)(int, double)) { return call(1, 2); }")
        self.assert_fine("int Start(int (*call)(int, int, double)) { return call(1, 1, 2); }")

    def test_structures_count_by_their_words(self):
        pair = "struct Pair { int a, b; }; struct Wide { long long a; }; struct Large { int a[40]; };\n"
        print_ = pair + 'extern "C" int Print(const char* format, ...);\n'
        self.assert_refused(f"Print: {WRONG}3",
                            print_ + 'int Start(Pair p) { return Print("", p, 1.0); }')
        self.assert_refused(f"Print: {WRONG}1", print_ + 'int Start(Wide w) { return Print("", w); }')
        self.assert_refused("Print: argument 2, %struct.Large*, cannot be judged: pass a pointer",
                            print_ + 'int Start(Large l) { return Print("", l); }')

    def test_calls_that_may_throw_are_judged(self):
        self.assert_refused(f"source.cpp:2: Print(char const*, ...): {WRONG}1",
                            "int Print(const char*, ...);\n"
                            'int Start(double n) { try { return Print("", n); } catch (...) { return 0; } }')

    def test_what_cannot_be_read_is_named(self):
        for result, what in ((self.check("int Start( {"), "clang cannot read"),
                             (self.check("", "other"), "has no source of other"),
                             (self.run_check("missing.json", "sample"), "missing.json cannot be read")):
            self.assertEqual(2, result.returncode, result.stderr)
            self.assertIn(what, result.stderr)

    def test_every_image_was_judged(self):
        """The build runs the check before it makes an image."""
        rules = (FOLDER / "build.ninja").read_text(encoding="utf-8")
        images = [line for line in rules.split("\n") if "make_image.py" in line and "POST_BUILD = " in line]
        self.assertLess(10, len(images))
        for line in images:
            self.assertIn("check_calls.py", line.partition("make_image.py")[0])


if __name__ == "__main__":
    named_cases.main()
