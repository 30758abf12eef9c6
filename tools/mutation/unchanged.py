"""Whether a mutant changes what the compiler makes at all: the optimised code of the file is the same."""
import collections
import hashlib
import os
import pathlib
import re
import shlex
import subprocess
import tempfile
import threading

import build
import instrument


class Judge:
    """Compares code. A header is judged by every source that includes it."""

    def __init__(self, commands, sources):
        self.commands = commands
        self.sources = sources
        self.originals = {}
        self.locks = collections.defaultdict(threading.Lock)
        self.users = collections.defaultdict(list)

    def users_of(self, name):
        """The sources whose code is made of this file."""
        if name.endswith(".cpp"):
            return [name]
        if not self.users:
            run = subprocess.run(["ninja", "-C", str(build.NATIVE), "-t", "deps"], capture_output=True,
                                 text=True, check=False)
            for block in run.stdout.split("\n\n"):
                match = re.match(r"\S*orvande_objects\.dir/(\S+\.cpp)\.o: ", block)
                for line in block.split("\n")[1:] if match else []:
                    included = os.path.relpath(os.path.join(build.NATIVE, line.strip()), build.TREE)
                    self.users[included].append(f"src/{match[1]}")
        return self.users[name]

    def code_of(self, source, overlay):
        """Of a source of the project, with the files of `overlay` in the place of its own."""
        words = shlex.split(self.commands[source])
        tree, root = str((build.TREE / "src").resolve()), str(pathlib.Path("src").resolve())
        kept = []
        while words:
            word = words.pop(0)
            if word in ("-o", "-c"):
                words.pop(0)
            elif word == f"-I{tree}":
                kept += [f"-I{overlay}/src", f"-I{root}"]
            else:
                kept.append(word)
        path = pathlib.Path(overlay, source)
        if not path.exists():
            path = pathlib.Path(source).resolve()
        compiler = [word for word in kept if word != "ccache"]
        run = subprocess.run([*compiler, "-O2", "-S", "-o", "-", str(path)], cwd=build.NATIVE,
                             capture_output=True, check=False)
        if run.returncode != 0:
            return None
        lines = [line for line in run.stdout.split(b"\n") if not line.startswith((b"\t.file", b"\t.ident"))]
        return hashlib.sha256(b"\n".join(lines)).digest()

    def original(self, source):
        with self.locks[source]:
            if source not in self.originals:
                with tempfile.TemporaryDirectory(prefix="mutate.") as empty:
                    self.originals[source] = self.code_of(source, empty)
            return self.originals[source]

    def changes_nothing(self, mutant):
        users = self.users_of(mutant.file)
        if not users or "Trace" in mutant.file:
            return False
        with tempfile.TemporaryDirectory(prefix="mutate.") as overlay:
            path = pathlib.Path(overlay, mutant.file)
            path.parent.mkdir(parents=True)
            path.write_bytes(instrument.mutated(self.sources[mutant.file], mutant))
            for user in users:
                code = self.code_of(user, overlay)
                if code is None or code != self.original(user):
                    return False
        return True
