"""What the benchmarks of the whole program share: the tests' operator, medians, a line for the report."""

import os
import pathlib
import statistics
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
BUILD = pathlib.Path(os.environ.get("VARLO_BUILD", ROOT / "build/release"))

sys.path.insert(0, str(ROOT / "tests/e2e"))
sys.dont_write_bytecode = True
os.environ.setdefault("VARLO_PROGRAM", str(BUILD / "varlo-pro"))
os.environ.setdefault("VARLO_UIDRIVER", str(BUILD / "tests/e2e/libuidriver.so"))


def report(names, rounds, digits=0, unit=""):
    """Prints every round and the medians; `rounds` are lists of one figure for each name. Returns the medians."""
    for number, figures in enumerate(rounds, 1):
        print(f"round {number}: " + _line(names, figures, digits, unit), flush=True)
    medians = [statistics.median(column) for column in zip(*rounds)]
    print("median:  " + _line(names, medians, digits, unit), flush=True)
    return medians


def _line(names, figures, digits, unit):
    return ", ".join(f"{name} {figure:.{digits}f}{unit}" for name, figure in zip(names, figures))


def memory(pid, key):
    """One of the figures of /proc/PID/status, such as VmHWM (peak) or VmRSS, in bytes."""
    for line in pathlib.Path(f"/proc/{pid}/status").read_text().splitlines():
        if line.startswith(key + ":"):
            return int(line.split()[1]) * 1024
    raise KeyError(key)
