#!/usr/bin/env python3
"""Writes Tests/data/png: pictures of kinds that this project reads and does not write."""
import pathlib
import struct
import zlib


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def write(name, width, height, depth, color_type, rows, *more):
    header = struct.pack(">IIBBBBB", width, height, depth, color_type, 0, 0, 0)
    pixels = zlib.compress(b"".join(b"\0" + row for row in rows), 9)
    chunks = [chunk(b"IHDR", header), *more, chunk(b"IDAT", pixels), chunk(b"IEND", b"")]
    (folder / name).write_bytes(b"\x89PNG\r\n\x1a\n" + b"".join(chunks))


folder = pathlib.Path(__file__).parent / "png"
write("grey.png", 2, 1, 8, 0, [b"\x00\x80"])
# (200, 100, 50), then (10, 20, 30) with an alpha of 64.
write("palette.png", 2, 1, 8, 3, [b"\x01\x00"],
      chunk(b"PLTE", bytes([10, 20, 30, 200, 100, 50])), chunk(b"tRNS", b"\x40"))
write("wide.png", 70000, 2, 8, 2, [])
write("many.png", 30000, 30000, 8, 2, [])
