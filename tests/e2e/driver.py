"""Starts the real program and plays its operator: finds controls by object name, clicks, types, reads, answers boxes."""

import json
import os
import pathlib
import re
import socket
import subprocess
import tempfile
import time

SECONDS = 20  # how long anything the program does at once may take


class Refused(Exception):
    """The operator could not do that: no such control, disabled, behind a box."""


class Ended(Exception):
    """The program is not running."""


def _library():
    path = os.environ.get("VARLO_UIDRIVER")
    if not path:
        path = pathlib.Path(__file__).resolve().parents[2] / "build/release/tests/e2e/libuidriver.so"
    return str(path)


def _preload(executable, library):
    """The sanitizers' run-time library must be the first of all."""
    linked = subprocess.run(["ldd", executable], capture_output=True, text=True, check=False).stdout
    asan = re.search(r"=> (\S*libasan\S*)", linked)
    return f"{asan.group(1)}:{library}" if asan else library


def is_windows(executable):
    return str(executable).endswith(".exe")


def runner(executable):
    """What a program has to be started with: Wine for one of Windows."""
    return ["wine"] if is_windows(executable) else []


class Program:
    """The running program. Use it in a `with`: it is killed at the end if it still runs then."""

    def __init__(self, executable, *arguments, platform="offscreen", environment=None, cwd=None):
        self.executable = str(executable)
        self.arguments = [str(argument) for argument in arguments]
        if is_windows(executable) and platform == "offscreen":
            platform = "windows"  # on the display of the environment
        self.environment = {"QT_QPA_PLATFORM": platform, **(environment or {})}
        self.cwd = cwd
        self._folder = tempfile.TemporaryDirectory(prefix="varlo-ui-")
        self._output = open(os.path.join(self._folder.name, "output"), "w+b")
        self._socket = None
        self._lines = None
        self._process = None
        self._id = 0

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.stop()
            raise
        return self

    def __exit__(self, *_):
        self.stop()

    def start(self):
        with socket.create_server(("127.0.0.1", 0)) as listener:
            environment = {**os.environ, **self.environment, "VARLO_UIDRIVER_PORT": str(listener.getsockname()[1])}
            if not is_windows(self.executable):  # there the driver is linked in
                environment["LD_PRELOAD"] = _preload(self.executable, _library())
            command = [*runner(self.executable), self.executable, *self.arguments]
            self._process = subprocess.Popen(command, env=environment, cwd=self.cwd, stdin=subprocess.DEVNULL,
                                             stdout=self._output, stderr=subprocess.STDOUT)
            self._connect(listener)

    def _connect(self, listener):
        """Waits until the program calls back, which it does once its event loop runs."""
        deadline = time.monotonic() + 3 * SECONDS
        listener.settimeout(0.1)
        while True:
            try:
                self._socket = listener.accept()[0]
                break
            except TimeoutError:
                pass
            if self._process.poll() is not None:
                raise Ended(f"{self.executable} ended with {self._process.returncode}:\n{self.output()}")
            if time.monotonic() > deadline:
                raise AssertionError(f"{self.executable} cannot be driven:\n{self.output()}")
        self._socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self._lines = self._socket.makefile("r", encoding="utf-8")

    def stop(self):
        if self._socket:
            self._socket.close()
        if self._lines:
            self._lines.close()
        if self._process and self._process.poll() is None:
            self._process.kill()
        if self._process:
            self._process.wait()
        self._output.close()
        self._folder.cleanup()

    def output(self):
        """What the program wrote to its standard outputs."""
        self._output.seek(0)
        return self._output.read().decode("utf-8", "replace")

    @property
    def pid(self):
        return self._process.pid

    def kill(self):
        """The end without warning: a crash, a power failure."""
        self._process.kill()
        self._process.wait()

    def wait_end(self, seconds=SECONDS):
        """The exit code, once the program ended by itself."""
        try:
            return self._process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"still running after {seconds} s; windows: {self.windows()}") from None

    def ask(self, what, seconds=SECONDS, **arguments):
        """Sends one command and returns its reply."""
        self._id += 1
        command = {"id": self._id, "do": what, **{key: value for key, value in arguments.items() if value is not None}}
        try:
            self._socket.settimeout(seconds)
            self._socket.sendall(json.dumps(command).encode() + b"\n")
            line = self._lines.readline()
        except TimeoutError:
            raise AssertionError(f"no answer to {command} within {seconds} s") from None
        except OSError:
            line = ""
        if not line:
            raise Ended(f"the program ended at {command}:\n{self.output()}")
        reply = json.loads(line)
        if reply["id"] != self._id:
            raise AssertionError(f"{reply} is not the answer to {command}")
        if not reply["ok"]:
            raise Refused(reply["error"])
        return reply["value"]

    def _last(self, what, **arguments):
        """A command that may be the program's last one."""
        try:
            self.ask(what, **arguments)
        except Ended:
            pass

    # Looking

    def windows(self):
        """All visible windows: dictionaries with name, class, title, active, modal."""
        return self.ask("windows")

    def window_names(self):
        return sorted(window["name"] for window in self.windows())

    def text(self, name, window=None):
        return self.ask("text", name=name, window=window)

    def get(self, name, prop, window=None):
        return self.ask("get", name=name, property=prop, window=window)

    def items(self, name, first=None, count=None, window=None):
        return self.ask("items", name=name, first=first, count=count, window=window)

    def selected(self, name, window=None):
        return self.ask("selected", name=name, window=window)

    def box(self):
        """The open box: title, text, buttons, input."""
        return self.ask("box")

    def clipboard(self):
        return self.ask("clipboard")

    def grab(self, name, file, window=None):
        """A picture of a window or control."""
        self.ask("grab", name=name, window=window, file=str(file))

    def grab_box(self, file):
        """A picture of the open box."""
        self.ask("grab", file=str(file))

    # Doing

    def click(self, name, button=None, double=None, window=None):
        self.ask("click", name=name, button=button, double=double, window=window)

    def click_row(self, name, row, button=None, double=None, add=None, window=None):
        self.ask("clickRow", name=name, row=row, button=button, double=double, add=add, window=window)

    def select_rows(self, name, rows, window=None):
        for number, row in enumerate(rows):
            self.click_row(name, row, add=number > 0, window=window)

    def type(self, name, text, window=None):
        self.ask("type", name=name, text=text, window=window)

    def set_text(self, name, text, window=None):
        self.ask("setText", name=name, text=text, window=window)

    def keys(self, name, keys, window=None):
        self.ask("keys", name=name, keys=keys, window=window)

    def select(self, name, text=None, index=None, window=None):
        self.ask("select", name=name, text=text, index=index, window=window)

    def check(self, name, on=True, window=None):
        if self.get(name, "checked", window) != on:
            self.click(name, window=window)

    def drop(self, name, files, window=None):
        self.ask("drop", name=name, files=[str(file) for file in files], window=window)

    def copy(self, text):
        """Puts a text into the clipboard, as another program would."""
        self.ask("copy", text=text)

    def trigger(self, action):
        self._last("trigger", name=action)

    def close(self, window):
        self._last("close", name=window)

    def answer(self, button, text=None, title=None, seconds=SECONDS):
        """Waits for a box (with that text or title), answers it and returns what it said."""
        seen = self.wait_box(text, title, seconds)
        self._last("answer", button=button)
        return seen

    def answer_input(self, value, button="OK", seconds=SECONDS):
        """Waits for an input box or file chooser, fills its line, answers it and returns what it said."""
        seen = self.wait_box(seconds=seconds)
        self._last("answer", button=button, input=str(value))
        return seen

    # Waiting

    def wait(self, condition, what, seconds=SECONDS):
        """The first true value of `condition()`; a refusal counts as not yet."""
        deadline = time.monotonic() + seconds
        last = None
        while True:
            try:
                last = condition()
                if last:
                    return last
            except Refused as refusal:
                last = refusal
            if time.monotonic() > deadline:
                raise AssertionError(f"after {seconds} s still no {what}; last seen: {last!r}; "
                                     f"windows: {self.windows()}")
            time.sleep(0.02)

    def wait_text(self, name, text, seconds=SECONDS, window=None):
        """Waits until the control shows `text` (or `text(shown)` is true); returns what it shows."""
        fits = text if callable(text) else lambda shown: shown == text
        seen = []

        def shown():
            seen[:] = [self.text(name, window)]
            return fits(seen[0])

        try:
            self.wait(shown, f"{text!r} in {name}", seconds)
        except AssertionError as failure:
            raise AssertionError(f"{failure}; {name} shows {seen!r}") from None
        return seen[0]

    def wait_window(self, name, seconds=SECONDS):
        self.wait(lambda: name in self.window_names(), f"window {name}", seconds)

    def wait_box(self, text=None, title=None, seconds=SECONDS):
        """Waits until a box is open whose text holds `text` and whose title is `title`; returns it."""

        def fitting():
            seen = self.box()
            fits = (text is None or text in seen.get("text", "")) and (title is None or title == seen["title"])
            return seen if fits else None

        return self.wait(fitting, f"box {title or ''} {text or ''}", seconds)
