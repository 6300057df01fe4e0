"""Takes a picture of every window of the program: screenshots.py EXECUTABLE FOLDER. Needs no display."""

import pathlib
import shutil
import sys
import tempfile

from driver import Program

# A menu entry and the window that it opens.
WINDOWS = (("mnuMainConsole", "frmConsole"), ("mnuMainPreferences", "frmOptions"), ("mnuCompose", "frmCompose"),
           ("mnuHelpAbout", "frmAbout"))


def prepare(folder):
    """A program folder with one profile and something to see in it."""
    lists = folder / "profiles" / "Garden club" / "lists"
    lists.mkdir(parents=True)
    names = ("rosa", "viola", "aster", "iris", "dahlia", "erika", "jasmin", "linde", "malve", "salvia")
    for title, domain in (("Members", "club.example"), ("Newsletter", "garden.example")):
        (lists / f"{title}.vlo").write_bytes(b"".join(f"{name}@{domain}\r\n".encode() for name in names))


def take(executable, folder):
    with Program(executable) as ui:
        ui.wait_window("frmProfile")
        ui.grab("frmProfile", folder / "frmProfile.png")
        ui.click("cmdGo")
        ui.wait_window("frmMain")
        ui.grab("frmMain", folder / "frmMain.png")
        for entry, window in WINDOWS:
            ui.trigger(entry)
            ui.wait_window(window)
            ui.grab(window, folder / f"{window}.png")
            ui.close(window)
            ui.wait(lambda: window not in ui.window_names(), f"end of {window}")


def main(executable, pictures):
    pictures = pathlib.Path(pictures).resolve()
    pictures.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="varlo-pictures-") as folder:
        folder = pathlib.Path(folder)
        prepare(folder)
        copy = folder / "varlo-pro"  # the copy's folder is its program folder
        shutil.copy(executable, copy)
        take(copy, pictures)
    for picture in sorted(pictures.glob("frm*.png")):
        print(picture)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("Usage: screenshots.py EXECUTABLE FOLDER")
    main(*sys.argv[1:])
