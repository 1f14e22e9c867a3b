#!/usr/bin/env python3
"""Draws the applet's icon: a lens lit from the upper left, with the two links of a camera running into it.

    DrawIcon.py [--output Orbelline.png]
    DrawIcon.py --check Orbelline.png      compares a file with what would be drawn

Needs nothing beside Python's standard library. The file is always 3164 bytes long, the size that the applet
reports; a comment chunk fills what the pixels leave.
"""

import argparse
import math
import struct
import zlib

SIDE = 48
SAMPLES = 4
FILE_SIZE = 3164
COLOUR_STEP = 3

LENS_CENTRE = (29.5, 24.0)
LENS_RADIUS = 18.0
RIM_WIDTH = 2.2
LINKS = (((4.5, 9.5), (11.0, 9.5), (19.5, 18.0)), ((4.5, 38.5), (11.0, 38.5), (19.5, 30.0)))
LINK_COLOURS = ((242, 153, 44), (38, 178, 158))
LINK_HALF_WIDTH = 1.7
PLUG_RADIUS = 4.0


def mix(first, second, share):
    share = min(1.0, max(0.0, share))
    return tuple(a + (b - a) * share for a, b in zip(first, second))


def distanceToSegment(point, start, end):
    along = (end[0] - start[0], end[1] - start[1])
    length = along[0] ** 2 + along[1] ** 2
    share = ((point[0] - start[0]) * along[0] + (point[1] - start[1]) * along[1]) / length
    share = min(1.0, max(0.0, share))
    return math.hypot(point[0] - start[0] - share * along[0], point[1] - start[1] - share * along[1])


def distanceToLink(point, link):
    return min(distanceToSegment(point, start, end) for start, end in zip(link, link[1:]))


def glassColour(x, y):
    """Colour of the glass at a point given in lens radii from its centre."""
    radius = math.hypot(x, y)
    colour = mix((96, 176, 236), (14, 38, 96), math.hypot(x + 0.35, y + 0.42) / 1.35)
    colour = mix(colour, (120, 205, 245), (radius - 0.45) * 0.9 * max(0.0, x * 0.6 + y * 0.8))
    iris = abs(radius - 0.46)
    if iris < 0.035:
        colour = mix(colour, (10, 26, 70), 0.55)
    if radius < 0.24:
        colour = mix((8, 20, 54), (26, 66, 134), (y - x + 0.3) / 0.7)
    if math.hypot((x + 0.36) / 1.25, y + 0.46) < 0.19:
        colour = mix(colour, (255, 255, 255), 0.88)
    if math.hypot(x - 0.40, y - 0.42) < 0.08:
        colour = mix(colour, (255, 255, 255), 0.45)
    return colour


def rimColour(x, y):
    return mix((196, 206, 222), (48, 58, 80), 0.5 + 0.5 * (x * 0.6 + y * 0.8))


def colourAt(point):
    """Colour of one sample, or None where the icon is transparent."""
    x = (point[0] - LENS_CENTRE[0]) / LENS_RADIUS
    y = (point[1] - LENS_CENTRE[1]) / LENS_RADIUS
    radius = math.hypot(x, y) * LENS_RADIUS
    if radius < LENS_RADIUS - RIM_WIDTH:
        scale = LENS_RADIUS / (LENS_RADIUS - RIM_WIDTH)
        return glassColour(x * scale, y * scale)
    if radius < LENS_RADIUS:
        return rimColour(x, y)
    for link, colour in zip(LINKS, LINK_COLOURS):
        plug = math.hypot(point[0] - link[0][0], point[1] - link[0][1])
        if plug < PLUG_RADIUS:
            return (255, 255, 255) if plug < PLUG_RADIUS * 0.45 else colour
        if distanceToLink(point, link) < LINK_HALF_WIDTH:
            return colour
    return None


def rounded(value):
    """Few colours compress well; the eye does not see the difference at this size."""
    return min(255, int(value / COLOUR_STEP + 0.5) * COLOUR_STEP)


def pixelAt(column, row):
    samples = [colourAt((column + (i + 0.5) / SAMPLES, row + (j + 0.5) / SAMPLES))
               for j in range(SAMPLES) for i in range(SAMPLES)]
    seen = [sample for sample in samples if sample is not None]
    if not seen:
        return (0, 0, 0, 0)
    colour = [rounded(sum(sample[channel] for sample in seen) / len(seen)) for channel in range(3)]
    return (*colour, rounded(255 * len(seen) / len(samples)))


def chunk(kind, content):
    checksum = zlib.crc32(kind + content)
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", checksum)


def filtered(line, above):
    """The line under the PNG filter that leaves the smallest differences."""
    left = bytes(4) + line[:-4]
    corner = bytes(4) + above[:-4]
    candidates = [bytes([0]) + line,
                  bytes([1]) + bytes((a - b) & 255 for a, b in zip(line, left)),
                  bytes([2]) + bytes((a - b) & 255 for a, b in zip(line, above)),
                  bytes([4]) + bytes((a - paeth(b, c, d)) & 255
                                     for a, b, c, d in zip(line, left, above, corner))]
    return min(candidates, key=lambda candidate: sum(min(value, 256 - value) for value in candidate[1:]))


def paeth(left, above, corner):
    guess = left + above - corner
    return min((left, above, corner), key=lambda value: abs(guess - value))


def pixelStream():
    """The filtered lines, as they stand in a PNG file before compression."""
    above = bytes(4 * SIDE)
    stream = b""
    for row in range(SIDE):
        line = b"".join(bytes(pixelAt(column, row)) for column in range(SIDE))
        stream += filtered(line, above)
        above = line
    return stream


def pngFile(pixels):
    start = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", SIDE, SIDE, 8, 6, 0, 0, 0))
    start += chunk(b"tEXt", b"Title\0Orbelline")
    end = chunk(b"IDAT", zlib.compress(pixels, 9)) + chunk(b"IEND", b"")
    room = FILE_SIZE - len(start) - len(end) - len(chunk(b"tEXt", b"Comment\0"))
    if room < 0:
        raise SystemExit(f"The icon is {-room} bytes too large; draw with fewer colours.")
    words = b"Drawn by DrawIcon.py: a lens and the two links of a camera. "
    return start + chunk(b"tEXt", b"Comment\0" + (words * (room // len(words) + 1))[:room]) + end


def pixelsOfFile(content):
    """Compressors differ between machines, so files are compared by what they hold."""
    position = 8
    while position < len(content):
        length, kind = struct.unpack_from(">I4s", content, position)
        if kind == b"IDAT":
            return zlib.decompress(content[position + 8:position + 8 + length])
        position += 12 + length
    raise SystemExit("No picture in the file.")


def main():
    parser = argparse.ArgumentParser(description="Draws the applet's icon.")
    parser.add_argument("--output", default="Orbelline.png")
    parser.add_argument("--check", metavar="FILE")
    arguments = parser.parse_args()
    if arguments.check:
        with open(arguments.check, "rb") as file:
            if pixelsOfFile(file.read()) != pixelStream():
                raise SystemExit(f"{arguments.check} is not what this script draws.")
        return
    with open(arguments.output, "wb") as file:
        file.write(pngFile(pixelStream()))


if __name__ == "__main__":
    main()
