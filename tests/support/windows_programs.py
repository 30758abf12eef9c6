"""Runs programs of Windows with tools/wine, for tests that want their output and exit code."""
import shlex
import subprocess

# A process of Wine's that a signal has ended (see tools/wine). A program's own crash ends otherwise.
WINE_CRASHED = 139
RUNS = 4


def run_program(command, **options):
    """As subprocess.run, of a command whose output is captured and that may be run again. Where a program
    ends just as a thread of WinINet begins, as on a busy machine, Wine may crash behind all that the program
    has done. It is run once more then, up to RUNS times in all, and a line is printed each time. It has to
    have printed the same each time: a crash that cuts the output off is an AssertionError."""
    said = None
    for left in reversed(range(RUNS)):
        run = subprocess.run(command, check=False, **options)
        if said is not None and run.stdout != said:
            raise AssertionError("Wine has crashed before the program's end, or this prints something else "
                                 f"each time: {said!r}, then {run.stdout!r}")
        if run.returncode != WINE_CRASHED or left == 0:
            return run
        said = run.stdout
        print(f"Wine has crashed at the end of {shlex.join(map(str, command))}; once more", flush=True)
