"""For gdb in the device's tests: brings the symbols of each image that is mapped. tools/debug loads it."""
import pathlib

import gdb

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "build/device"
FIRST_PAGE = 0x1000  # of an image's code
known = {}  # where each linked file was last


def bring_symbols():
    """To be called where the loader tells what it has mapped."""
    file, base = pathlib.Path(gdb.parse_and_eval("file").string()), int(gdb.parse_and_eval("base"))
    for linked in FOLDER.rglob(f"{file.stem}.elf"):
        if linked in known:
            gdb.execute(f"remove-symbol-file -a {known[linked] + FIRST_PAGE}", to_string=True)
        # It was linked for address 0.
        gdb.execute(f"add-symbol-file {linked} -o {base}", to_string=True)
        known[linked] = base
        print(f"{file} at 0x{base:x}, symbols of {linked}")


gdb.execute("set confirm off")
gdb.Breakpoint("ImageIsMapped", internal=True).commands = "silent\npython bring_symbols()\ncontinue"
