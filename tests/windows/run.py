"""Runs what was built for Windows under Wine: run.py BUILD [rooms|packages|whole]...; all three without a name.

    rooms     the test programs of the rooms, but for the cases that left-out.txt names with their reasons
    packages  the portable archive and the installer, beside data that must not be touched
    whole     the scripts of tests/e2e with the real program and the real mail servers
"""

import os
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

import packages
from wine import Wine, windows_path

HERE = pathlib.Path(__file__).resolve().parent
TESTS = HERE.parent
WANTED = 0.95  # of the cases that Linux runs
SCRIPTS = ("operator", "ending", "send", "compose", "mailcheck")


def left_out():
    """The cases that are not for Windows: {"Suite.Case": reason}."""
    lines = (line.strip() for line in (HERE / "left-out.txt").read_text().splitlines())
    return dict(line.split(": ", 1) for line in lines if line and not line.startswith("#"))


def cases_in_sources():
    found = set()
    for source in TESTS.glob("*/*.cpp"):
        for suite, name in re.findall(r"\bTEST(?:_F|_P)?\((\w+),\s*(\w+)\)", source.read_text()):
            found.add(f"{suite}.{name}")
    return found


def run_room(wine, program, names):
    """Runs one test program; gives the numbers of cases run and failed, and what is to be said."""
    results = program.with_suffix(".xml")
    results.unlink(missing_ok=True)
    code, said = wine.run(program, f"--gtest_filter=-{':'.join(names)}", "--gtest_brief=1",
                          f"--gtest_output=xml:{windows_path(program.parent)}\\{results.name}", seconds=1200,
                          environment={"QT_QPA_PLATFORM": "offscreen"})
    if not results.exists():
        return 0, 1, f"{program.name} ended with {code}:\n{said[-3000:]}"
    top = ElementTree.parse(results).getroot()
    run, failed = int(top.get("tests")) - int(top.get("disabled")), int(top.get("failures"))
    return run, failed, said if failed or code else ""


def rooms(build):
    omitted = left_out()
    unknown = set(omitted) - cases_in_sources()
    failures = len(unknown)
    for name in sorted(unknown):
        print(f"left-out.txt names {name}, which no source has")
    total = 0
    with Wine(build / "wine") as wine:
        for program in sorted((build / "tests").glob("*_tests.exe")):
            run, failed, said = run_room(wine, program, omitted)
            print(f"{program.stem}: {run} run, {failed} failed\n{said}", end="", flush=True)
            total += run
            failures += failed
    share = total / (total + len(omitted)) if total else 0
    print(f"{total} cases run under Wine, {len(omitted)} left out ({share:.1%} of all), {failures} failures")
    return failures == 0 and share >= WANTED


def whole(build):
    """Each script starts a Wine of its own inside its namespaces, and a Wine outside must not be running."""
    fine = True
    with Wine(build / "wine") as wine:
        environment = {**wine.environment, "PYTHONDONTWRITEBYTECODE": "1",
                       "VARLO_PROGRAM": str(build / "tests" / "varlo-pro-driven.exe")}
        for name in SCRIPTS:
            subprocess.run(["wineserver", "-k", "-w"], env=environment, check=False)
            script = TESTS / "e2e" / f"{name}_test.py"
            code = subprocess.run([sys.executable, script], env=environment, check=False).returncode
            print(f"e2e {name}: {'fine' if code == 0 else 'skipped' if code == 77 else f'failed ({code})'}", flush=True)
            fine = fine and code in (0, 77)
    return fine


def main(build, *names):
    build = pathlib.Path(build).resolve()
    os.environ.pop("WINEPREFIX", None)
    parts = {"rooms": rooms, "packages": packages.check, "whole": whole}
    results = {name: parts[name](build) for name in names or parts}
    print(", ".join(f"{name}: {'fine' if fine else 'FAILED'}" for name, fine in results.items()))
    return 0 if all(results.values()) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
