"""Signs finished files with osslsigncode. A signature holds its time, so signed files are not
reproducible."""
import os
import subprocess


class Unusable(Exception):
    """Certificate or key cannot be used: one sentence."""


def public_key(*command):
    run = subprocess.run(["openssl", *command], stdin=subprocess.DEVNULL, capture_output=True, check=False)
    return run.stdout if run.returncode == 0 else b""


class Signer:
    """Signs with a certificate and its private key, files in PEM. Unusable when they are none, or do not
    belong together."""

    def __init__(self, certificate, key):
        self.certificate, self.key = certificate, key
        for file in (certificate, key):
            if not os.path.isfile(file):
                raise Unusable(f"there is no file '{file}'")
        certified = public_key("x509", "-in", certificate, "-noout", "-pubkey")
        if not certified:
            raise Unusable(f"'{certificate}' is not a certificate in PEM")
        owned = public_key("pkey", "-in", key, "-pubout", "-passin", "pass:")
        if not owned:
            raise Unusable(f"'{key}' is not a private key in PEM that can be read without a password")
        if certified != owned:
            raise Unusable(f"'{key}' is not the key of the certificate '{certificate}'")

    def sign(self, file):
        """A DLL, program or cabinet, in place."""
        signed = file.with_name(f"{file.name}.signed")
        signed.unlink(missing_ok=True)
        run = subprocess.run(["osslsigncode", "sign", "-certs", self.certificate, "-key", self.key, "-h",
                              "sha256", "-n", "Orvande Online", "-in", file, "-out", signed],
                             stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        if run.returncode != 0:
            raise Unusable(f"'{file.name}' was not signed: {(run.stderr or run.stdout).strip()}")
        os.chmod(signed, file.stat().st_mode)
        os.replace(signed, file)
