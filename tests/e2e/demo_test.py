"""The demonstration without a display: what it prints, the mail that arrives, the pictures it takes."""

import contextlib
import os
import pathlib
import re
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

import isolation
import picture
from application import executable
from mailhost import need, wait_until

TOP = pathlib.Path(__file__).resolve().parents[2]
DEMONSTRATION = TOP / "scripts" / "demonstration" / "demonstration.py"
PICTURES = ["01-started.png", "02-requests-fetched.png", "03-console.png", "04-requests-processed.png", "05-saved.png",
            "06-message.png", "07-attachments.png", "08-message-with-file.png", "09-summary.png",
            "10-refused-address.png", "11-end.png"]
NOT_PASSED_ON = (isolation.INSIDE, "DISPLAY", "WAYLAND_DISPLAY", "VARLO_DEMO_OPERATOR")


def start(folder, **environment):
    """Starts the demonstration, which makes namespaces of its own."""
    kept = {name: value for name, value in os.environ.items() if name not in NOT_PASSED_ON}
    return subprocess.Popen([sys.executable, str(DEMONSTRATION), str(executable()), str(folder)],
                            env={**kept, **environment}, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            start_new_session=True, text=True, encoding="utf-8")


def demonstrate(folder):
    """Runs the demonstration without a display; its outcome."""
    process = start(folder)
    output, errors = process.communicate()
    return subprocess.CompletedProcess(process.args, process.returncode, output, errors)


@contextlib.contextmanager
def ended_after(process):
    """A process that is left running by a test that failed is ended, with all that it started."""
    try:
        yield
    finally:
        if process.poll() is None:
            os.killpg(process.pid, signal.SIGTERM)


def running(program):
    """The folder below /proc of the process that runs this file; None when there is none."""
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if (process / "exe").resolve(strict=True) == program:
                return process
        except OSError:
            pass  # it ended meanwhile
    return None


class GuidedTest(unittest.TestCase):
    def test_with_a_display_the_ordinary_program_runs_until_it_is_stopped(self):
        signal.signal(signal.SIGINT, signal.default_int_handler)  # a background job ignores it
        with tempfile.TemporaryDirectory() as temporary:
            folder = pathlib.Path(temporary).resolve() / "demo"
            with start(folder, DISPLAY=":0", QT_QPA_PLATFORM="offscreen") as process, ended_after(process):
                found = wait_until(lambda: running(folder / "program" / "varlo-pro"), 60, "running program")
                log = folder / "program/profiles/Garden club/logs/StatusLog.txt"
                wait_until(lambda: log.exists() and "Loaded [Newsletter]" in log.read_text(), 60, "opened list")
                self.assertNotIn(b"LD_PRELOAD", (found / "environ").read_bytes())
                os.killpg(process.pid, signal.SIGINT)  # Ctrl+C
                output, errors = process.communicate(timeout=60)
            self.assertEqual((process.returncode, "Traceback" in errors), (0, False), output + errors)
        self.assertIn("9 letters lie in the mailbox requests@garden.example", output)
        self.assertIn("The demonstration has ended. Messages that arrived: 0", output)


class DisplayTest(unittest.TestCase):
    BRING_IN = ("import sys; sys.path.insert(0, sys.argv[1]); import display; "
                "print(display.bring_in(sys.argv[2]), flush=True); sys.stdin.read()")

    def bring_in(self, name):
        """A process that brings in the display of that name and ends with its input; what it says is the DISPLAY."""
        return subprocess.Popen([sys.executable, "-c", self.BRING_IN, str(DEMONSTRATION.parent), name],
                                stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def test_a_display_of_this_machine_stays_as_it_is(self):
        for name in (":0", ":10.1", "unix:0", "/tmp/launch/display:0"):
            with self.bring_in(name) as process:
                self.assertEqual(process.communicate()[0].strip(), name)

    def test_a_display_on_the_network_is_reached_through_the_file_system(self):
        with socket.create_server(("127.0.0.1", 0)) as server:
            number = server.getsockname()[1] - 6000
            path = pathlib.Path(f"/tmp/.X11-unix/X{number}")
            with self.bring_in(f"127.0.0.1:{number}.2") as process:
                self.assertEqual(process.stdout.readline().strip(), f":{number}.2")
                with socket.socket(socket.AF_UNIX) as client:
                    client.connect(str(path))
                    display, _ = server.accept()
                    with display:
                        client.sendall(b"a request")
                        self.assertEqual(display.recv(100), b"a request")
                        display.sendall(b"a reply")
                        self.assertEqual(client.recv(100), b"a reply")
                    self.assertEqual(client.recv(100), b"", "the display's end is passed on")
                process.stdin.close()
            wait_until(lambda: not path.exists(), 20, "end of the socket with the demonstration")


class DemonstrationTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory(prefix="varlo-demo-")
        cls.addClassCleanup(temporary.cleanup)
        cls.folder = pathlib.Path(temporary.name) / "demo"
        earlier = cls.folder / "program" / "profiles" / "Mine"
        earlier.mkdir(parents=True)  # what an earlier demonstration left
        cls.outcome = demonstrate(cls.folder)
        cls.lines = [line.strip() for line in cls.outcome.stdout.splitlines() if line.strip()]

    def test_it_ends_well(self):
        self.assertEqual((self.outcome.returncode, self.outcome.stderr), (0, ""), self.outcome.stdout)

    def test_it_tells_every_step(self):
        steps = [int(found.group(1)) for line in self.lines if (found := re.match(r"(\d+)\. ", line))]
        self.assertEqual(steps, list(range(1, 10)))

    def test_it_tells_what_the_program_said(self):
        said = [line.split(": ", 1)[1] for line in self.lines if line.startswith("the program says: ")]
        self.assertEqual(said, ["POP3 check complete (+4, -2)", "Pending list processing complete (+4, -2)",
                                "Saved [Newsletter]", "Pending list processing complete (-1)", "Saved [Newsletter]"])
        self.assertIn("- The message was sent to 17 recipients", self.lines)
        self.assertIn("- 4 duplicate recipients were ignored", self.lines)
        self.assertIn("- The message could not be delivered to 1 recipients*", self.lines)

    def test_it_tells_what_arrived(self):
        arrived = [line for line in self.lines if line.startswith("arrived: ")]
        self.assertEqual(len(arrived), 6 + 17)
        self.assertIn('arrived: zofia.zolc@weiden.example: "Welcome to the Garden Club newsletter"', arrived)
        self.assertIn('arrived: erika@garden.example: "You have left the Garden Club newsletter"', arrived)
        self.assertIn('arrived: basil.reed@posy.test: "Open garden on Sunday – everybody welcome", '
                      'with Sowing calendar.csv', arrived)
        files = list((self.folder / "mail").glob("*/*.eml"))
        self.assertEqual(len(files), len(arrived))

    def test_the_list_is_saved(self):
        saved = (self.folder / "program/profiles/Garden club/lists/Newsletter.vlo").read_text().splitlines()
        self.assertIn("hana.sato@posy.test", saved)
        self.assertNotIn("erika@garden.example", saved)
        self.assertNotIn("moved.away@garden.example", saved)

    def test_every_picture_shows_something(self):
        self.assertEqual(sorted(path.name for path in self.folder.glob("*.png")), PICTURES)
        for name in PICTURES:
            data = (self.folder / name).read_bytes()
            width, height, _ = picture.rows(data)
            self.assertGreater(min(width, height), 100, name)
            self.assertFalse(picture.is_blank(data), name)

    def test_it_starts_afresh(self):
        self.assertEqual([path.name for path in (self.folder / "program/profiles").iterdir() if path.is_dir()],
                         ["Garden club"])

    def test_a_folder_that_is_no_demonstration_stays(self):
        with tempfile.TemporaryDirectory() as folder:
            kept = pathlib.Path(folder) / "precious" / "diary.txt"
            kept.parent.mkdir()
            kept.write_text("Dear diary")
            outcome = demonstrate(kept.parent)
            self.assertEqual(outcome.returncode, 1)
            self.assertIn("nothing was changed there", outcome.stderr)
            self.assertEqual([path.name for path in kept.parent.iterdir()], ["diary.txt"])


class PictureTest(unittest.TestCase):
    @staticmethod
    def png(pixel_rows):
        """A PNG file of grey pixels."""
        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        header = struct.pack(">IIBBBBB", len(pixel_rows[0]), len(pixel_rows), 8, 0, 0, 0, 0)
        pixels = zlib.compress(b"".join(b"\0" + row for row in pixel_rows))
        return picture.SIGNATURE + chunk(b"IHDR", header) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")

    def test_one_colour_is_blank(self):
        self.assertTrue(picture.is_blank(self.png([b"\xee" * 300] * 200)))

    def test_many_different_rows_are_not(self):
        self.assertFalse(picture.is_blank(self.png([bytes([row]) * 300 for row in range(200)])))

    def test_half_a_file_is_refused(self):
        with self.assertRaises((ValueError, zlib.error, struct.error, KeyError)):
            picture.rows(self.png([b"\xee" * 300] * 200)[:-40])


def main():
    need("master")
    need("dovecot")
    unittest.main()


if __name__ == "__main__":
    isolation.run(main)
