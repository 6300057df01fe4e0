"""The real program in a program folder of the test's own."""

import os
import pathlib
import re
import shutil
import tempfile

from driver import Program, is_windows

PROFILE = "Test"


def executable():
    built = pathlib.Path(__file__).resolve().parents[2] / "build/release/varlo-pro"
    return pathlib.Path(os.environ.get("VARLO_PROGRAM", built))


class Application:
    """A program folder with one profile that opens by itself. `lists` is a dictionary from list name to addresses,
    `prefs` one from section to a dictionary of keys. Use it in a `with`: the folder goes at the end.
    """

    def __init__(self, lists=None, prefs=None):
        self._folder = tempfile.TemporaryDirectory(prefix="varlo-app-")
        self.folder = pathlib.Path(self._folder.name)
        self.profile = self.folder / "profiles" / PROFILE
        (self.profile / "lists").mkdir(parents=True)
        shutil.copy(executable(), self.folder / self._program_name())
        self._write_ini(self.folder / "global.ini", {"Profiles": {"AutoStart": 1, "ProfileCurrent": 0}})
        self._write_ini(self.profile / "prefs.ini", prefs or {})
        for name, addresses in (lists or {}).items():
            self.write_list(name, addresses)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._folder.cleanup()

    @staticmethod
    def _program_name():
        return "varlo-pro.exe" if is_windows(executable()) else "varlo-pro"

    @staticmethod
    def _write_ini(path, sections):
        lines = []
        for section, keys in sections.items():
            lines.append(f"[{section}]")
            lines += [f"{key}={value}" for key, value in keys.items()]
        path.write_bytes("".join(line + "\r\n" for line in lines).encode())

    def program(self, *arguments, environment=None):
        """The program, to be started by a `with`."""
        return Program(self.folder / self._program_name(), *arguments, environment=environment, cwd=self.folder)

    def list_file(self, name):
        return self.profile / "lists" / f"{name}.vlo"

    def write_list(self, name, addresses):
        self.list_file(name).write_bytes("".join(address + "\r\n" for address in addresses).encode())

    def read_list(self, name):
        return self.list_file(name).read_bytes().decode().split("\r\n")[:-1]

    def log(self, name):
        """The lines of a log without the session markers and time stamps' own lines."""
        path = self.profile / "logs" / name
        lines = path.read_bytes().decode().split("\r\n")[:-1] if path.exists() else []
        return [line for line in lines if " SESSION " not in line and line != "-" * 70]

    def status_log(self):
        """The status messages without their time stamps; of one that holds line breaks, the first line."""
        stamped = (re.match(r"[\d:]+( [AP]M)? \| (.*)", line) for line in self.log("StatusLog.txt"))
        return [found.group(2) for found in stamped if found]


SMTP = {"SMTP": {"SMTPServer": "127.0.0.1", "SMTPPort": 25, "SMTPFrom": "The Editor",
                 "SMTPEmail": "editor@sender.test", "SMTPWrap": 72}}


def compose(ui, subject, text, source=None, to_name=None):
    """Opens the compose window and fills it in, as far as the click on "Send Message"."""
    ui.trigger("mnuCompose")
    ui.wait_window("frmCompose")
    if source is not None:
        ui.select("cmbTo", text=source, window="frmCompose")
    if to_name is not None:
        ui.set_text("txtTo", to_name)
    ui.set_text("txtSubject", subject)
    ui.set_text("txtMessage", text)


def send(ui, seconds=120):
    """Chooses "Send Message" and returns the summary's lines, once it is there; the compose window then closes."""
    ui.trigger("mnuMessageSend")
    summary = ui.answer("OK", text="Message sending complete.", seconds=seconds)["text"]
    ui.wait(lambda: "frmCompose" not in ui.window_names(), "closed compose window")
    return [line for line in summary.replace("\r\n", "\n").split("\n") if line]
