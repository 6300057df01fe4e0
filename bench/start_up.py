#!/usr/bin/env python3
"""Compares the start of the program, with the longest list there can be, with that of a bare Qt window that holds an
empty list box, and of the same window with one menu: a window without any text spares itself the fonts. Figures are
the time from the start of the process until the window is on the screen, until the event loop has nothing left to do
(the program shows its window first and the list in it then), and the memory resident then. All are watched by the
same small library, taking turns. Needs no root.

    bench/start_up.py [ROUNDS] [PLATFORM]    the platform is "offscreen"; "xcb" needs a display: xvfb-run -a
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

from whole_program import BUILD, report

from application import Application
from mailhost import wait_until

ENTRIES = 32767
MEGABYTE = 1 << 20


def start(command, platform, cwd):
    """Milliseconds until its window is shown and until it stands ready, peak and resident megabytes then."""
    with tempfile.NamedTemporaryFile(prefix="varlo-shown-") as told:
        path = pathlib.Path(told.name)
        environment = {**os.environ, "QT_QPA_PLATFORM": platform, "LD_PRELOAD": str(BUILD / "bench/libshown_probe.so"),
                       "SHOWN_PROBE": told.name}
        begun = time.monotonic_ns()
        process = subprocess.Popen(command, env=environment, cwd=cwd, stderr=subprocess.DEVNULL)
        try:
            wait_until(lambda: path.read_text().endswith("\n"), 60, f"window of {command}")
        finally:
            process.kill()
            process.wait()
        shown, ready, peak, resident = map(int, path.read_text().split())
    return (shown - begun) / 1e6, (ready - begun) / 1e6, peak * 1024 / MEGABYTE, resident * 1024 / MEGABYTE


def start_program(app, platform):
    figures = start([app.folder / "varlo-pro"], platform, app.folder)
    assert app.status_log()[-1] == "Loaded [News]", app.status_log()[-1]
    return figures


def main():
    rounds = int(sys.argv[1]) if len(sys.argv) > 1 else 9
    platform = sys.argv[2] if len(sys.argv) > 2 else "offscreen"
    seen = []
    window = BUILD / "bench/bare_window"
    with Application({"News": [f"subscriber{i}@example.org" for i in range(ENTRIES)]}) as app:
        for _ in range(rounds + 1):
            seen.append([*start_program(app, platform), *start([window], platform, app.folder),
                         *start([window, "&Varlo"], platform, app.folder)])
    seen.pop(0)  # the first one read the libraries from the disk
    whats = ("shown ms", "ready ms", "peak MB", "resident MB")
    names = [f"{who} {what}" for who in ("program", "bare", "with text") for what in whats]
    medians = report(names, seen, digits=1)
    ours, bare, with_text = (medians[at:at + len(whats)] for at in range(0, len(names), len(whats)))
    for who, theirs in (("a bare window", bare), ("a window with a text", with_text)):
        ratios = ", ".join(f"{what.split()[0]} {mine / other:.2f}" for what, mine, other in zip(whats, ours, theirs))
        print(f"program to {who} ({platform}): {ratios}")


if __name__ == "__main__":
    main()
