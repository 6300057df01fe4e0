"""Runs a test script in a network and a process world of its own.

The mail servers of these tests need the ports 25 and 110 and must not meet the machine's own. A network namespace
gives each script both ports on a loopback of its own; a process namespace ends every server with the script, even
when ctest kills it for taking too long.
"""

import os
import shutil
import signal
import subprocess
import sys
import traceback

SKIPPED = 77  # what ctest takes for "skipped", see SKIP_RETURN_CODE
INSIDE = "VARLO_E2E_INSIDE"


class Skip(Exception):
    """The test cannot run here; the text says why."""


def skip(reason):
    print("SKIPPED:", reason, flush=True)
    sys.exit(SKIPPED)


def _namespaces():
    return ["unshare", "--net", "--pid", "--fork", "--kill-child", "--mount-proc"]


def why_not():
    """What is missing for the namespaces; None when nothing is."""
    if not sys.platform.startswith("linux"):
        return "network namespaces are a thing of Linux"
    if os.geteuid() != 0:
        return "only root can make a network namespace and listen on the ports 25 and 110"
    for command in ("unshare", "ip"):
        if not shutil.which(command):
            return f"the command {command} is missing"
    probe = subprocess.run(_namespaces() + ["true"], capture_output=True, text=True, check=False)
    if probe.returncode != 0:
        return f"no namespace can be made here: {probe.stderr.strip()}"
    return None


def _as_init(test):
    """Runs `test` in a child and collects the orphans of the servers, which are ours as process 1."""
    child = os.fork()
    if child == 0:
        os._exit(_outcome(test))
    signal.signal(signal.SIGINT, signal.SIG_IGN)  # Ctrl+C is for the child, which then ends in order
    while True:
        pid, status = os.wait()
        if pid == child:
            sys.stdout.flush()
            os._exit(os.waitstatus_to_exitcode(status) & 0xFF)


def _outcome(test):
    try:
        test()
        code = 0
    except Skip as reason:
        print("SKIPPED:", reason)
        code = SKIPPED
    except SystemExit as end:  # unittest.main() ends this way
        code = end.code if isinstance(end.code, int) else int(end.code is not None)
    except BaseException:  # the outcome is told by the exit code, whatever went wrong
        traceback.print_exc()
        code = 1
    sys.stdout.flush()
    sys.stderr.flush()
    return code


def run(test):
    """Calls `test` inside the namespaces and ends the script with its outcome. Skipped where they cannot be made."""
    if os.environ.get(INSIDE):
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        _as_init(test)
    reason = why_not()
    if reason:
        skip(reason)
    os.environ[INSIDE] = "1"
    os.execvp("unshare", _namespaces() + [sys.executable, *sys.argv])
