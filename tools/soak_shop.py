"""The reference service with contents that are known, and what it has to answer."""
import pathlib
import random
import re
import sqlite3
import struct
import subprocess
import tempfile
import urllib.request

SEARCH_CODE = 101
MAP_ENTRY = 4
SIGN_IN_CODE = 8
CREATE_CODE = 10
MAPS_IN_SHOP = 25
# Around what the library reads at once (4096 bytes) and what the service sends at once (65536).
FILE_SIZES = {"empty": 0, "one": 1, "chunk": 4096, "odd": 20001, "piece": 65536, "large": 300007}


class Broken(Exception):
    """The work cannot be done; the text is a sentence."""


def text(words):
    units = words.encode("utf-16-le")
    return struct.pack("<i", len(units) // 2) + units


def search(boxes):
    """The body of a request for these boxes: south, west, north, east."""
    return struct.pack("<ii", SEARCH_CODE, len(boxes)) + b"".join(struct.pack("<4i", *box) for box in boxes)


def sign_in(user, password):
    return struct.pack("<i", SIGN_IN_CODE) + text(user) + text(password) + struct.pack("<i", 1)


def creation(user, password, address):
    return (struct.pack("<i", CREATE_CODE) + text(user) + text(password) + text("Somebody") + text("") +
            text(address) + b"\0" + struct.pack("<i", 0) + text("English"))


def meet(map_box, box):
    """Whether two boxes meet, of which none reaches the antimeridian."""
    south, west, north, east = box
    return map_box[0] <= north and map_box[2] >= south and map_box[1] <= east and map_box[3] >= west


class Shop:
    """A service of its own with a catalogue of made-up maps and some files, for as long as it is open."""

    def __init__(self, program, log):
        self.scratch = tempfile.TemporaryDirectory()
        data = pathlib.Path(self.scratch.name)
        (data / "maps").mkdir()
        self.files = {}
        for name, size in FILE_SIZES.items():
            self.files[f"/maps/{name}.map"] = random.Random(name).randbytes(size)
            (data / "maps" / f"{name}.map").write_bytes(self.files[f"/maps/{name}.map"])
        command = [program, "--port", "0", "--made-up", str(MAPS_IN_SHOP), "--data", str(data)]
        with open(log, "wb") as errors:
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                            stderr=errors, text=True)
        listening = re.fullmatch(r"listening on port (\d+)\n", self.process.stdout.readline())
        if not listening:
            self.close()
            raise Broken(f"the service does not start (see {log})")
        self.port = int(listening[1])
        with sqlite3.connect(data / "catalogue.db") as catalogue:
            self.maps = catalogue.execute("SELECT name, kilobytes, path, description, south, west, north,"
                                          " east FROM map ORDER BY name").fetchall()

    def found(self, boxes):
        """The maps that a search for these boxes has to bring. None of them may reach the antimeridian."""
        return [one for one in self.maps if not boxes or any(meet(one[4:], box) for box in boxes)]

    def answer(self, boxes):
        """The body of the reply to a search."""
        found = self.found(boxes)
        entries = [struct.pack("<i", MAP_ENTRY) + text(name) + struct.pack("<i", kilobytes) + text(path) +
                   text(description) for name, kilobytes, path, description, *_ in found]
        return struct.pack("<ii", 0, len(found)) + b"".join(entries) + struct.pack("<i", len(self.maps))

    def post(self, path, body):
        """The reply's body."""
        url = f"http://127.0.0.1:{self.port}{path}"
        with urllib.request.build_opener(urllib.request.ProxyHandler({})).open(url, body, 60) as reply:
            return reply.read()

    def figures(self):
        """What the service's process holds."""
        about = pathlib.Path(f"/proc/{self.process.pid}")
        status = dict(line.split(":", 1) for line in (about / "status").read_text("ascii").splitlines())
        return {"resident KB": int(status["VmRSS"].split()[0]), "threads": int(status["Threads"]),
                "descriptors": sum(1 for _ in (about / "fd").iterdir())}

    def is_alive(self):
        return self.process.poll() is None

    def close(self):
        """The service's exit code."""
        self.process.terminate()
        try:
            return self.process.wait(20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            return self.process.wait()
        finally:
            self.process.stdout.close()
            self.scratch.cleanup()
