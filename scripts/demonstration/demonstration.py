"""The demonstration, behind "./run --demo": demonstration.py EXECUTABLE FOLDER, as root.

With a display the program is the newcomer's; without one it is driven, which needs the driver of the tests.
"""

import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests" / "e2e"))

import isolation  # noqa: E402  (found by the line above)
from display import bring_in  # noqa: E402
from guided import guide  # noqa: E402
from place import Place, fail  # noqa: E402
from tour import drive  # noqa: E402


def has_display():
    return bool(os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY"))


def reach_display():
    display = os.environ.get("DISPLAY")
    try:
        if display:
            os.environ["DISPLAY"] = bring_in(display)
    except OSError as failure:
        fail(f"The display {display} cannot be brought into the demonstration: {failure}")


def show(program, folder):
    try:
        sys.exit((guide if has_display() else drive)(Place(program, folder)))
    except isolation.Skip as missing:
        fail(f"The demonstration cannot run here: {missing}")
    except KeyboardInterrupt:
        fail("The demonstration was stopped.")


def main(program, folder):
    sys.stdout.reconfigure(errors="backslashreplace")  # a terminal that knows no such letters is no reason to end
    if not os.environ.get(isolation.INSIDE):
        missing = isolation.why_not()
        if missing:
            fail(f"The demonstration cannot run here: {missing}")
        reach_display()
    isolation.run(lambda: show(program, folder))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("Usage: demonstration.py EXECUTABLE FOLDER")
    main(*sys.argv[1:])
