#!/usr/bin/env python3
"""Signatures, by a certificate that is made for the test."""
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import pefile

from packages import OUTPUT, ROOT, package, run, unpacked

import named_cases
from release import signing


class Signing(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp())
        cls.certificate, cls.key = cls.made("own")
        cls.signer = signing.Signer(cls.certificate, cls.key)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    @classmethod
    def made(cls, name):
        certificate, key = cls.folder / f"{name}.pem", cls.folder / f"{name}.key"
        run("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", f"/CN={name}",
            "-addext", "extendedKeyUsage=codeSigning", "-keyout", key, "-out", certificate)
        return str(certificate), str(key)

    def signed(self, file):
        copy = self.folder / file.name
        shutil.copy(file, copy)
        self.signer.sign(copy)
        return copy

    def verify(self, file):
        """Whether the signature is whole and made with the test's certificate."""
        return subprocess.run(["osslsigncode", "verify", "-CAfile", self.certificate, "-in", file],
                              capture_output=True, text=True, check=False)

    def check(self, file):
        copy = self.signed(file)
        said = self.verify(copy)
        self.assertEqual(0, said.returncode, said.stdout + said.stderr)
        self.assertIn("CN=own", said.stdout)
        # A signature is of these bytes and of no others.
        data = bytearray(copy.read_bytes())
        data[len(file.read_bytes()) // 2] ^= 1
        copy.write_bytes(data)
        self.assertNotEqual(0, self.verify(copy).returncode)

    def test_images_and_the_cabinet_are_signed(self):
        self.check(unpacked("device") / "bin/OrvandeOnline.dll")
        self.check(unpacked("windows") / "bin/OrvandeOnline.dll")
        self.check(unpacked("device") / "bin/mapshop.exe")
        self.check(package("device.cab"))

    def test_nothing_but_the_signature_changes(self):
        file = unpacked("device") / "bin/OrvandeOnline.dll"
        before, after = pefile.PE(file), pefile.PE(self.signed(file))
        self.assertEqual([section.get_data() for section in before.sections],
                         [section.get_data() for section in after.sections])
        for image in (before, after):
            image.OPTIONAL_HEADER.CheckSum = 0
            image.OPTIONAL_HEADER.DATA_DIRECTORY[4].VirtualAddress = 0
            image.OPTIONAL_HEADER.DATA_DIRECTORY[4].Size = 0
        end = before.OPTIONAL_HEADER.SizeOfHeaders
        self.assertEqual(bytes(before.write())[:end], bytes(after.write())[:end])

    def refusal(self, *arguments):
        """What tools/package says of its arguments; the packages stay as they are."""
        before = (OUTPUT / "SHA256SUMS").read_bytes()
        result = subprocess.run([ROOT / "tools/package", *arguments], capture_output=True, text=True,
                                check=False)
        self.assertEqual((2, ""), (result.returncode, result.stdout))
        self.assertEqual(before, (OUTPUT / "SHA256SUMS").read_bytes())
        return result.stderr

    def test_what_cannot_be_used_is_refused_in_one_sentence(self):
        other = self.made("other")[1]
        self.assertEqual("package: there is no file 'missing.pem'\n",
                         self.refusal("--sign", "missing.pem", self.key))
        self.assertEqual("package: there is no file 'missing.key'\n",
                         self.refusal("--sign", self.certificate, "missing.key"))
        self.assertEqual(f"package: '{self.key}' is not a certificate in PEM\n",
                         self.refusal("--sign", self.key, self.key))
        self.assertEqual(f"package: '{self.certificate}' is not a private key in PEM that can be read "
                         "without a password\n", self.refusal("--sign", self.certificate, self.certificate))
        self.assertEqual(f"package: '{other}' is not the key of the certificate '{self.certificate}'\n",
                         self.refusal("--sign", self.certificate, other))

    def test_wrong_arguments_are_refused_in_one_sentence(self):
        self.assertEqual("package: there is no option '--seal' (tools/package --help)\n",
                         self.refusal("--seal"))
        self.assertEqual("package: --sign takes a certificate and a key\n", self.refusal("--sign"))
        self.assertEqual("package: --sign takes a certificate and a key\n",
                         self.refusal("--sign", self.certificate))


if __name__ == "__main__":
    named_cases.main()
