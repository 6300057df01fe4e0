#!/usr/bin/env python3
"""Messages a second to a server that is far away: a real Postfix behind a proxy that makes every piece 25 ms late in each
direction, so that a round trip takes 50 ms. The component takes turns with "smtp-source -d", which waits for every
answer. On the server's own port the same once more, without delay. Needs root and the package postfix.

    bench/far_server.py [MESSAGES] [ROUNDS]
"""

import subprocess
import sys
import time

from delay_proxy import DelayProxy
from whole_program import BUILD, report

import isolation
from mailhost import Postfix, need

PROXY = 2525
NAMES = ("smtp-source -d", "component")


def by_peer(port, count):
    start = time.monotonic()
    subprocess.run([need("smtp-source"), "-d", "-m", str(count), "-l", "1024", "-f", "sender@example.org", "-t",
                    "member@example.org", f"127.0.0.1:{port}"], check=True)
    return count / (time.monotonic() - start)


def by_component(port, count):
    output = subprocess.run([str(BUILD / "bench/smtp_wire_bench"), str(port), str(count)], check=True, text=True,
                            stdout=subprocess.PIPE).stdout
    return float(output)


def compare(title, port, count, rounds):
    print(title)
    peer, component = report(NAMES, [[by_peer(port, count), by_component(port, count)] for _ in range(rounds)], 1, "/s")
    print(f"to smtp-source -d: component {component / peer:.2f}", flush=True)


def main():
    count, rounds = (int(argument) for argument in (sys.argv[1:] + ["100", "3"][len(sys.argv) - 1:]))
    with Postfix(domains=("example.org",)) as server, DelayProxy(PROXY, server.port):
        compare("Postfix, 50 ms away", PROXY, count, rounds)
        compare("Postfix on loopback", server.port, count * 10, rounds)


if __name__ == "__main__":
    isolation.run(main)
