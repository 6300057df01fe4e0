"""The demonstration on a display: the newcomer has the program to himself, the mail world around it is private."""

import itertools
import os
import subprocess
import time

import sample_requests
from mailworld import GONE, MailWorld

BEFORE = """\
This is a trial copy of Varlo Pro. Press whatever you like: it has a network of its own, no message leaves this
machine, and your own profiles are not touched.

  The requests     {letters} letters lie in the mailbox {requests}.
                   "E-mail Account" fetches them, "<<< Process Pending List" applies them and notifies the senders.
                   Whenever the mailbox is empty, new ones come.
  Messages         "Compose..." in the first menu. There is a file to attach: {attachment}
  What is sent     arrives in {mail}, one folder for each address; any address will do.
                   One subscriber is gone, as happens in life: {gone}.
  The servers      want a name and a password on an encrypted connection, as a provider's do: "Test" in the
                   preferences shows how that goes.
  The trial copy   {program} (lists, settings and logs below "profiles")

Close the main window to end the demonstration.
"""
PAUSE = 0.5  # seconds between two looks into the mailboxes


def _environment(place):
    user = place.operator
    return {**os.environ, "HOME": user.pw_dir, "USER": user.pw_name, "LOGNAME": user.pw_name}


def _start(place):
    """The ordinary program, as the operator himself."""
    as_operator = {}
    if place.operator.pw_uid != os.getuid():
        user = place.operator
        as_operator = {"user": user.pw_uid, "group": user.pw_gid,
                       "extra_groups": os.getgrouplist(user.pw_name, user.pw_gid)}
    return subprocess.Popen([str(place.program)], cwd=place.program_folder, env=_environment(place), **as_operator)


def _tell_arrivals(place, world):
    for arrival in world.collect():
        print(f"  arrived: {arrival}  ({place.shown(arrival.file)})", flush=True)
        place.hand_over()


def _refill(world, turns):
    """New requests in place of those that were fetched, so that the button never becomes dull."""
    if world.requests.files():
        return
    letters = sample_requests.more_letters(next(turns))
    for letter in letters:
        world.requests.put(letter)
    print(f"  {len(letters)} new letters lie in the mailbox of the requests.", flush=True)


def _watch(place, world, program):
    """Until the program ends; its exit code."""
    turns = itertools.count(1)
    try:
        while program.poll() is None:
            _tell_arrivals(place, world)
            _refill(world, turns)
            time.sleep(PAUSE)
    except KeyboardInterrupt:  # Ctrl+C is the program's end, too, and a good one
        program.terminate()
        program.wait()
        return 0
    return program.returncode


def _tell_end(place, world):
    time.sleep(2 * PAUSE)  # what was sent last may be on its way
    _tell_arrivals(place, world)
    arrivals = world.arrivals()
    print(f"\nThe demonstration has ended. Messages that arrived: {len(arrivals)}")
    for arrival in arrivals:
        print(f"  {arrival}")
    if arrivals:
        print(f"They lie in {place.shown(place.mail)}.")


def guide(place):
    """Runs until the main window is closed; returns the exit code."""
    with MailWorld(place.mail) as world:
        place.trust(world.certificate.fingerprint())
        print(BEFORE.format(letters=len(sample_requests.letters()), requests=sample_requests.MAILBOX,
                            attachment=place.shown(place.attachment), mail=place.shown(place.mail),
                            gone=GONE, program=place.shown(place.program_folder)), flush=True)
        code = _watch(place, world, _start(place))
        _tell_end(place, world)
    place.hand_over()
    if code != 0:
        print(f"The program ended with the code {code}. If it found no display: with DISPLAY and WAYLAND_DISPLAY empty "
              "the demonstration runs by itself.")
    return 0 if code == 0 else 1
