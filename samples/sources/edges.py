#!/usr/bin/env python3
"""Draws samples/edges.png: filled edges, rings and strokes of the slopes that smoothing is about."""

import struct
import sys
import zlib

WIDTH, HEIGHT = 170, 62
INK, PAPER = b"\x1a\x23\x5b", b"\xff\xff\xff"
pixels = [[PAPER] * WIDTH for _ in range(HEIGHT)]


def wedge(left, top, width, height):
    """A triangle with its right angle at the lower left."""
    for y in range(height):
        for x in range(width):
            if (2 * x + 1) * height < (2 * y + 1) * width:
                pixels[top + y][left + x] = INK


def ring(x0, y0, outer, inner):
    for y in range(HEIGHT):
        for x in range(WIDTH):
            if inner**2 <= (x + 0.5 - x0) ** 2 + (y + 0.5 - y0) ** 2 < outer**2:
                pixels[y][x] = INK


def stroke(left, top, columns, run, thickness):
    """A line down to the right that takes a step after every `run` columns (or rows, when negative)."""
    for i in range(columns):
        for t in range(thickness):
            x, y = (i, i // run + t) if run > 0 else (i // -run + t, i)
            pixels[top + y][left + x] = INK


wedge(4, 4, 22, 22)
wedge(30, 4, 36, 18)
wedge(70, 4, 12, 24)
ring(100, 16, 12, 0)
ring(128, 16, 12, 8)
ring(154, 16, 9, 7)
stroke(4, 36, 44, 2, 1)
stroke(4, 42, 30, 2, 3)
stroke(52, 32, 26, -2, 1)
stroke(66, 32, 26, -2, 3)
stroke(86, 34, 22, 1, 1)
stroke(112, 36, 48, 3, 1)
for edge in range(20):
    for x, y in ((112 + edge, 42), (112 + edge, 58), (112, 42 + edge * 16 // 19), (131, 42 + edge * 16 // 19)):
        pixels[y][x] = INK


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


rows = b"".join(b"\0" + b"".join(row) for row in pixels)
with open(sys.argv[1], "wb") as png:
    png.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0))
              + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))
