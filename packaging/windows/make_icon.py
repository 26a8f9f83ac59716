"""Puts pictures into one icon for Windows, from the smallest. Usage: make_icon.py ICON PICTURE..."""

import struct
import sys

from PIL import Image

LARGEST = 256  # pixels


def main(icon, *names):
    pictures = {}
    for name in names:
        with Image.open(name) as picture:
            pictures[picture.width] = name
    sizes = [size for size in sorted(pictures) if size <= LARGEST]
    files = []
    for size in sizes:
        with open(pictures[size], "rb") as file:
            files.append(file.read())
    offset = 6 + 16 * len(sizes)
    with open(icon, "wb") as out:
        out.write(struct.pack("<HHH", 0, 1, len(sizes)))
        for size, file in zip(sizes, files):
            side = size % LARGEST  # 0 is 256
            out.write(struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(file), offset))
            offset += len(file)
        out.write(b"".join(files))


if __name__ == "__main__":
    main(*sys.argv[1:])
