"""Tells a picture with something in it from a blank one, with Python's own means."""

import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
CHANNELS = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}  # by the colour type


def _chunks(data):
    place = len(SIGNATURE)
    while place < len(data):
        length, kind = struct.unpack_from(">I4s", data, place)
        yield kind, data[place + 8:place + 8 + length]
        place += length + 12


def rows(data):
    """Width, height and the rows of a PNG file (8 bits a channel, not interlaced), still filtered."""
    if not data.startswith(SIGNATURE):
        raise ValueError("not a PNG file")
    chunks = list(_chunks(data))
    width, height, depth, colour, _, _, interlaced = struct.unpack(">IIBBBBB", dict(chunks)[b"IHDR"])
    if depth != 8 or interlaced:
        raise ValueError("a kind of PNG that the program's pictures are not")
    pixels = zlib.decompress(b"".join(part for kind, part in chunks if kind == b"IDAT"))
    length = 1 + width * CHANNELS[colour]
    if len(pixels) != length * height:
        raise ValueError("half a PNG file")
    return width, height, [pixels[at:at + length] for at in range(0, len(pixels), length)]


def is_blank(data):
    """Whether the picture shows nothing: rows of one colour are all alike, filtered or not, but for the first ones;
    windows with text have dozens of different ones."""
    _, _, found = rows(data)
    return len(set(found)) < 20
