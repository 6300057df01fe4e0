#!/usr/bin/env python3
"""Compares a mail check by the whole program (window, status log, console) with two clients that ask for one message
after the other: a bare one of blocking calls, and mpop without pipelining. All empty the same mailbox of a real
Dovecot, freshly filled each time, taking turns. Needs root and the packages dovecot-pop3d and mpop.

    bench/mail_check.py [MESSAGES] [ROUNDS]
"""

import subprocess
import sys
import tempfile
import time

from whole_program import BUILD, report

import isolation
from application import Application
from mailhost import Dovecot, need, wait_until

USER, PASSWORD = "requests", "secret"
SIZE = 1400  # bytes of a message, headers and body

PREFERENCES = {"POP3": {"POPServer": "127.0.0.1", "POPUsername": USER, "POPPassword": PASSWORD, "POPDeleteAll": 1}}


def request(number):
    head = (f"Received: from relay.somewhere.test by mail.test; Sat, 21 Nov 2026 10:00:00 +0000\r\n"
            f"Message-ID: <{number}@mail.test>\r\nFrom: friend{number}@list.test\r\n"
            f"To: requests@list.test\r\nSubject: {'un' if number % 2 else ''}subscribe\r\n"
            f"Date: Sat, 21 Nov 2026 10:00:00 +0000\r\n\r\n").encode()
    line = b"Please do what the subject says, and thank you very much for it.\r\n"
    return head + (line * (SIZE // len(line)))[:SIZE - len(head) - 2] + b"\r\n"


def fill(box, count):
    box.empty()
    for number in range(count):
        box.put(request(number))


def end_of(path):
    with open(path, "rb") as file:
        file.seek(max(0, path.stat().st_size - 200))
        return file.read()


def by_program(count):
    """Seconds from the click to the last line of the status log, whose time the file itself keeps: nobody asks the
    program anything meanwhile."""
    with Application({"News": []}, PREFERENCES) as app, app.program() as ui:
        ui.wait_text("lblStatus", "Loaded [News]")
        log = app.profile / "logs" / "StatusLog.txt"
        start = time.time()
        ui.click("cmdAutoAdd")
        wait_until(lambda: b"POP3 check complete" in end_of(log), 300, "complete check")
        seconds = log.stat().st_mtime - start
        expected = f"POP3 check complete (+{count - count // 2}, -{count // 2})"
        assert app.status_log()[-1] == expected, app.status_log()[-1]
        ui.wait_text("lblStatusPending", f"{count} Pending")
    return seconds


def by_bare_client(count):
    output = subprocess.run([BUILD / "bench/bare_pop3", "110", USER, PASSWORD], capture_output=True, check=True).stdout
    messages, seconds = output.split()
    assert int(messages) == count, output
    return float(seconds)


def by_mpop(_):
    """mpop at its fastest, thrown away at once; the time that its start takes is not counted."""
    with tempfile.TemporaryDirectory(prefix="varlo-mpop-") as folder:
        command = ["mpop", "--host=127.0.0.1", "--port=110", f"--user={USER}", f"--passwordeval=echo {PASSWORD}",
                   "--auth=user", "--tls=off", "--keep=off", "--pipelining=off", "--received-header=off", "--quiet",
                   "--delivery=mbox,/dev/null", f"--uidls-file={folder}/uidls"]
        return _timed(command) - _timed(["mpop", "--version"])


def _timed(command):
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - start


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 2000
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    need("mpop")
    contestants = (by_program, by_bare_client, by_mpop)
    rates = []
    with Dovecot({USER: PASSWORD}) as dovecot:
        box = dovecot.mailboxes[USER]
        for _ in range(rounds):
            rates.append([])
            for empty in contestants:
                fill(box, count)
                rates[-1].append(count / empty(count))
                assert not box.files(), "the mailbox was not emptied"
    program, bare, mpop = report(("whole program", "bare client", "mpop --pipelining=off"), rates, unit="/s")
    print(f"whole program: {program / bare:.2f} of the bare client's rate, {program / mpop:.2f} of mpop's")


if __name__ == "__main__":
    isolation.run(main)
