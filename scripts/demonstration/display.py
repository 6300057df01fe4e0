"""Brings a display that is reached over the network, as with "ssh -X", into the demonstration's own network.

A network namespace has no way to such a display, but sockets in the file system cross its border: a process outside
passes on what it gets through the socket that a display of this number would have on this machine. The number stays
the same, because the operator's permission to use the display is kept under it.
"""

import os
import pathlib
import re
import selectors
import socket
import threading

SOCKETS = pathlib.Path("/tmp/.X11-unix")
FIRST_PORT = 6000  # of display 0


def _is_served(path):
    with socket.socket(socket.AF_UNIX) as probe:
        return probe.connect_ex(str(path)) == 0


def _listen(number):
    SOCKETS.mkdir(mode=0o1777, exist_ok=True)
    path = SOCKETS / f"X{number}"
    if _is_served(path):
        raise OSError(f"another display has the number {number} on this machine")
    path.unlink(missing_ok=True)  # left by one that is gone
    listener = socket.socket(socket.AF_UNIX)
    listener.bind(str(path))
    path.chmod(0o666)  # as for every display: who may use it, the display itself decides
    listener.listen()
    return listener, path


def _pump(source, target):
    try:
        while data := source.recv(65536):
            target.sendall(data)
        target.shutdown(socket.SHUT_WR)
    except OSError:
        pass  # one side is gone: the other hears of it by the end of its own direction
    finally:
        source.close()


def _pass_on(near, host, port):
    try:
        far = socket.create_connection((host, port))
    except OSError:
        near.close()
        return
    for source, target in ((near, far), (far, near)):
        threading.Thread(target=_pump, args=(source, target), daemon=True).start()


def _relay(listener, host, port, alive):
    """Until nobody holds the other end of the pipe `alive` any more."""
    with selectors.DefaultSelector() as ready:
        ready.register(listener, selectors.EVENT_READ)
        ready.register(alive, selectors.EVENT_READ)
        while alive not in [key.fileobj for key, _ in ready.select()]:
            _pass_on(listener.accept()[0], host, port)


def bring_in(display):
    """Returns the DISPLAY to be used inside; `display` itself where that is on this machine. Raises OSError.

    The process that passes on ends with this one, and with those that this one turns into or starts.
    """
    remote = re.fullmatch(r"(?:tcp/|inet6?/)?([^:/]+|\[[^]]+\]):(\d+)(\.\d+)?", display)
    if not remote or remote.group(1) == "unix":
        return display
    host, number, screen = remote.group(1).strip("[]"), int(remote.group(2)), remote.group(3) or ""
    listener, path = _listen(number)
    alive, held = os.pipe()
    os.set_inheritable(held, True)
    if os.fork() == 0:
        os.close(held)
        os.setsid()  # Ctrl+C is not for this one
        _relay(listener, host, FIRST_PORT + number, alive)
        path.unlink(missing_ok=True)
        os._exit(0)
    os.close(alive)
    listener.close()
    return f":{number}{screen}"
