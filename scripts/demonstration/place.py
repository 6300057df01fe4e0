"""The folder of the demonstration: a program folder of its own, the pictures, the mail that arrived."""

import fcntl
import os
import pathlib
import pwd
import shutil
import sys

SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "demo"
OPERATOR = "VARLO_DEMO_OPERATOR"  # the number of the user who asked, when the servers need another one


def fail(text):
    print(text, file=sys.stderr, flush=True)
    sys.exit(1)


def _operator():
    number = int(os.environ.get(OPERATOR) or os.getuid())
    return pwd.getpwuid(number)


class Place:
    """`folder` (build/demo) made afresh: what an earlier demonstration left there goes."""

    def __init__(self, program, folder):
        self.folder = pathlib.Path(folder).resolve()
        self.program_folder = self.folder / "program"
        self.program = self.program_folder / "varlo-pro"
        self.profile = self.program_folder / "profiles" / "Garden club"
        self.mail = self.folder / "mail"
        self.attachment = self.folder / "Sowing calendar.csv"
        self.operator = _operator()
        self._lock = self._alone()
        self._clear()
        self._fill(pathlib.Path(program).resolve())

    def _alone(self):
        """Held while the demonstration runs: a second one would pull the folder from under the first."""
        lock = open(f"{self.folder}.lock", "w")
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except OSError:
            fail("A demonstration is running already: close its main window first.")
        return lock

    def _clear(self):
        if self.folder.exists() and any(self.folder.iterdir()) and not self.program_folder.exists():
            fail(f"{self.folder} holds something else than a demonstration: nothing was changed there.")
        shutil.rmtree(self.folder, ignore_errors=True)
        if self.folder.exists():
            fail(f"The earlier demonstration in {self.folder} could not be removed.")

    def _fill(self, program):
        shutil.copytree(SAMPLES / "profile", self.profile)
        shutil.copy(program, self.program)
        shutil.copy(SAMPLES / self.attachment.name, self.attachment)
        self.mail.mkdir()
        (self.profile / "prefs.ini").chmod(0o600)  # it holds a password
        (self.program_folder / "global.ini").write_text("[Profiles]\nAutoStart=1\nProfileCurrent=0\n")
        self.hand_over()

    def trust(self, fingerprint):
        """The operator trusts the certificate of both servers, which was made a moment ago."""
        prefs = self.profile / "prefs.ini"
        text = prefs.read_text(encoding="utf-8")
        for section, key in (("SMTP", "SMTPTrusted"), ("POP3", "POPTrusted")):
            text = text.replace(f"[{section}]\n", f"[{section}]\n{key}={fingerprint} 127.0.0.1\n")
        prefs.write_text(text, encoding="utf-8")
        self.hand_over()

    def hand_over(self):
        """Gives all to the operator: root made it, but it is his to read, change and delete."""
        if os.geteuid() != 0:
            return
        user, group = self.operator.pw_uid, self.operator.pw_gid
        for path in [self.folder, *self.folder.rglob("*"), pathlib.Path(self._lock.name)]:
            os.chown(path, user, group, follow_symlinks=False)

    def read_list(self, name):
        lines = (self.profile / "lists" / f"{name}.vlo").read_text(encoding="utf-8").splitlines()
        return [line for line in lines if line]

    def shown(self, path):
        """A path as the operator would type it at the top of the project."""
        top = SAMPLES.parents[1]
        return str(path.relative_to(top) if path.is_relative_to(top) else path)
