"""Packs PNG files of one drawing into a Windows icon: make_ico.py ICON.ico 16.png 32.png..."""

import pathlib
import struct
import sys


def size_of(png):
    return struct.unpack(">II", png[16:24])


def icon(pngs):
    """A header, a table of the pictures, the pictures; a side of 256 pixels is written as 0."""
    table = struct.pack("<HHH", 0, 1, len(pngs))
    place = len(table) + 16 * len(pngs)
    for png in pngs:
        width, height = size_of(png)
        table += struct.pack("<BBBBHHII", width % 256, height % 256, 0, 0, 1, 32, len(png), place)
        place += len(png)
    return table + b"".join(pngs)


if __name__ == "__main__":
    pathlib.Path(sys.argv[1]).write_bytes(icon([pathlib.Path(name).read_bytes() for name in sys.argv[2:]]))
