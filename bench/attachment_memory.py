#!/usr/bin/env python3
"""How much the program grows while it sends one large attachment to many recipients, beside the size of one encoded
copy of it. The receiver is smtp-sink on loopback, in a network namespace of its own. Needs root and the package postfix.

    bench/attachment_memory.py [RECIPIENTS] [MEGABYTES]
"""

import pathlib
import subprocess
import sys
import time

from whole_program import memory

import isolation
from application import SMTP, Application, compose, send
from mailhost import is_listening, need, wait_until

PORT = 2525
MEGABYTE = 1 << 20


def encoded_size(size):
    """Base64 in lines of 76 characters and a line end."""
    text = (size + 2) // 3 * 4
    return text + (text + 75) // 76 * 2


def attach(ui, file):
    ui.trigger("mnuMessageAttach")
    ui.wait_window("frmAttach")
    ui.drop("lstAttachments", [file])
    ui.click("cmdOK", window="frmAttach")
    ui.wait(lambda: ui.get("picAttachments", "visible"), "attachment indicator")


def growth(app, ui, file, recipients):
    """Bytes by which the peak during the send exceeds what was resident before it; and the seconds of the send."""
    compose(ui, "The yearbook", "Here it is.")
    attach(ui, file)
    before = memory(ui.pid, "VmRSS")
    pathlib.Path(f"/proc/{ui.pid}/clear_refs").write_text("5")  # the peak is counted anew from here
    start = time.perf_counter()
    summary = send(ui, 900)
    seconds = time.perf_counter() - start
    assert f"{recipients}" in " ".join(summary) and app.status_log()[-1], summary
    return memory(ui.pid, "VmHWM") - before, seconds, summary


def main():
    recipients = int(sys.argv[1]) if len(sys.argv) > 1 else 200
    size = (int(sys.argv[2]) if len(sys.argv) > 2 else 20) * MEGABYTE
    sink = subprocess.Popen([need("smtp-sink"), "-u", "nobody", f"127.0.0.1:{PORT}", "100"])
    try:
        wait_until(lambda: is_listening(PORT), 10, "smtp-sink")
        prefs = {"SMTP": {**SMTP["SMTP"], "SMTPPort": PORT}}
        with Application({"News": [f"member{i}@example.org" for i in range(recipients)]}, prefs) as app:
            file = app.folder / "yearbook.bin"
            file.write_bytes(bytes(range(256)) * (size // 256))
            with app.program() as ui:
                ui.wait_text("lblStatus", "Loaded [News]")
                grown, seconds, summary = growth(app, ui, file, recipients)
    finally:
        sink.terminate()
        sink.wait()
    copy = encoded_size(size)
    print("; ".join(summary))
    print(f"{recipients} recipients in {seconds:.1f} s: peak grew by {grown / MEGABYTE:.1f} MB, "
          f"one encoded copy is {copy / MEGABYTE:.1f} MB, ratio {grown / copy:.2f}")


if __name__ == "__main__":
    isolation.run(main)
