#!/usr/bin/env python3
"""What `cmake --install` puts into a prefix, used by a project of its own (tests/consumer)."""
import os
import pathlib
import subprocess
import tempfile
import unittest

import pefile

from packages import ROOT, SCRATCH, VERSION, run, run_windows

import named_cases


class Installed:
    """For each ring; `options` are what its compiler needs."""
    ring = ""
    options = ()

    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(dir=SCRATCH))
        cls.prefix = cls.folder / "installed"
        cls.build = cls.folder / "build"
        run(ROOT / "tools/build", cls.ring, "installed", "--then",
            "cmake", "--install", f"build/{cls.ring}", "--prefix", cls.prefix)
        run("cmake", "-G", "Ninja", "-S", ROOT / "tests/consumer", "-B", cls.build,
            "-DCMAKE_BUILD_TYPE=Release", f"-DCMAKE_PREFIX_PATH={cls.prefix}",
            f"-DCONSUMER_VERSION={VERSION}",
            *(option.format(prefix=cls.prefix) for option in cls.options))
        run("ninja", "-C", cls.build)

    def test_another_major_version_is_not_found(self):
        wanted = f"{int(VERSION.partition('.')[0]) + 1}.0.0"
        result = subprocess.run(
            ["cmake", "-G", "Ninja", "-S", ROOT / "tests/consumer", "-B", self.folder / "other",
             f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DCONSUMER_VERSION={wanted}",
             *(option.format(prefix=self.prefix) for option in self.options)],
            capture_output=True, text=True, check=False)
        self.assertNotEqual(0, result.returncode)
        self.assertIn("compatible with requested version", result.stderr)

    def test_the_package_names_no_folder_of_the_build(self):
        for file in [*self.prefix.rglob("*.cmake"), *self.prefix.rglob("*.pc"), *self.prefix.rglob("*.rsp")]:
            self.assertNotIn(str(ROOT / "build" / self.ring), file.read_text(encoding="utf-8"), file)


class WindowsInstalled(Installed, unittest.TestCase):
    ring = "windows"
    options = ("-DCMAKE_SYSTEM_NAME=Windows", "-DCMAKE_C_COMPILER=i686-w64-mingw32-gcc",
               "-DCMAKE_CXX_COMPILER=i686-w64-mingw32-g++", "-DCMAKE_RC_COMPILER=i686-w64-mingw32-windres")

    def test_a_program_with_the_dll_searches(self):
        self.assertRegex(run_windows(self.build / "search.exe"), r"^([1-9]\d*) of \1 maps\r?\n$")

    def test_a_program_with_the_library_in_itself_has_its_dialogs(self):
        run_windows(self.build / "account.exe", cwd=self.build)


class DeviceInstalled(Installed, unittest.TestCase):
    ring = "device"
    options = ("-DCMAKE_TOOLCHAIN_FILE={prefix}/lib/cmake/OrvandeOnline/arm-none-eabi.cmake",)

    def test_a_program_with_the_dll_is_an_image_that_imports_it(self):
        image = pefile.PE(self.build / "search.exe")
        self.assertEqual((0x1C0, 9), (image.FILE_HEADER.Machine, image.OPTIONAL_HEADER.Subsystem))
        self.assertIn(b"OrvandeOnline.dll", {entry.dll for entry in image.DIRECTORY_ENTRY_IMPORT})

    def test_a_program_with_the_library_in_itself_has_its_dialogs(self):
        image = pefile.PE(self.build / "account.exe")
        kinds = {entry.id: entry for entry in image.DIRECTORY_ENTRY_RESOURCE.entries}
        self.assertEqual({107, 108}, {entry.id for entry in kinds[5].directory.entries})
        self.assertIn(b"aygshell.dll", {entry.dll for entry in image.DIRECTORY_ENTRY_IMPORT})


class NativeInstalled(Installed, unittest.TestCase):
    ring = "native"

    def test_an_application_is_tested_on_the_simulated_handheld(self):
        self.assertEqual("0 of 38 maps\n", run(self.build / "search"))
        run(self.build / "account")

    def test_it_reaches_the_installed_service(self):
        service = self.prefix / "bin/orvande-service"
        self.assertEqual(f"orvande-service {VERSION}\n", run(service, "--version"))
        with subprocess.Popen([service, "--port", "0", "--data", self.folder / "data", "--made-up", "7"],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as process:
            try:
                port = process.stdout.readline().split()[-1]
                self.assertEqual("7 of 7 maps\n", run(self.build / "search", port))
            finally:
                process.terminate()

    def test_translators_have_their_program(self):
        program = self.prefix / "bin/orvande-translation"
        self.assertEqual(f"orvande-translation {VERSION}\n", run(program, "--version"))
        table = self.folder / "French.tsv"
        run(program, "convert", ROOT / "languages/French.txt", table)
        self.assertIn("Cancel\tAnnuler\n", table.read_text(encoding="utf-8"))

    def test_pkg_config_tells_the_same(self):
        folder, = self.prefix.rglob("pkgconfig")
        environment = os.environ | {"PKG_CONFIG_PATH": str(folder)}
        version = run("pkg-config", "--modversion", "orvande-online", env=environment)
        self.assertEqual(f"{VERSION}\n", version)
        flags = run("pkg-config", "--cflags", "--libs", "orvande-online", env=environment).split()
        program = self.folder / "by-pkg-config"
        run("g++", "-std=c++20", "-o", program, ROOT / "tests/consumer/Account.cpp",
            ROOT / "tests/consumer/AccountTest.cpp",
            f'-DRESOURCE_FILE="{self.prefix}/share/orvande-online/OrvandeOnline.res"', *flags)
        run(program)


if __name__ == "__main__":
    named_cases.main()
