"""A Windows of the test's own: Wine with a prefix and a display that nobody else uses."""

import os
import pathlib
import subprocess
import tempfile

FONTS = "/usr/share/fonts/truetype/dejavu"


def windows_path(path):
    """The file of Linux as a program under Wine names it."""
    return "Z:" + str(pathlib.Path(path).resolve()).replace("/", "\\")


class Wine:
    """Use it in a `with`: display and Wine end with it. `prefix` stays, for making one takes half a minute."""

    def __init__(self, prefix, size="1600x1200", dpi=96):
        self.prefix = pathlib.Path(prefix).resolve()
        self.size = size
        self.dpi = dpi
        self._display = None

    def __enter__(self):
        read, write = os.pipe()
        self._display = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", f"{self.size}x24", "-nolisten", "tcp"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            name = ":" + number.readline().strip()
        self.environment = {**os.environ, "DISPLAY": name, "WINEPREFIX": str(self.prefix), "WINEARCH": "win64",
                            "WINEDLLOVERRIDES": "mscoree=;mshtml=;winemenubuilder.exe=", "WINEDEBUG": "-all",
                            "LC_ALL": "C.UTF-8", "QT_QPA_FONTDIR": windows_path(FONTS)}
        if not (self.prefix / "system.reg").exists():
            self.prefix.mkdir(parents=True, exist_ok=True)
            self.run("wineboot", "--init", seconds=300)
        return self

    def __exit__(self, *_):
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False)
        self._display.terminate()
        self._display.wait()

    def run(self, *command, seconds=120, environment=None, **options):
        """Runs a program of Windows to its end; gives its exit code and what it printed."""
        with tempfile.TemporaryFile() as said:
            try:
                code = subprocess.run(["wine", *map(str, command)], env={**self.environment, **(environment or {})},
                                      stdin=subprocess.DEVNULL, stdout=said, stderr=subprocess.STDOUT,
                                      timeout=seconds, check=False, **options).returncode
            except subprocess.TimeoutExpired:
                code = f"no end within {seconds} s"
            said.seek(0)
            return code, said.read().decode("utf-8", "replace").replace("\r\n", "\n")

    def drive_c(self):
        return self.prefix / "drive_c"
