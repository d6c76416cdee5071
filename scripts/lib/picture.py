#!/usr/bin/env python3
"""Looks at screenshots for the end-to-end cases: picture.py COMMAND PNG ARGUMENTS...

Colours are "#RRGGBB"; a tolerance is the largest difference allowed in any one channel.
Rectangles are "left top width height" in the picture's pixels.

  boxes PNG COLOUR TOLERANCE [REACH]  areas of that colour whose pixels lie within REACH (default 1)
                                      of each other, one a line: "left top width height pixels", top
                                      to bottom, left to right
  share PNG COLOUR TOLERANCE          percent of the picture in that colour
  count PNG COLOUR TOLERANCE L T W H  pixels of that colour inside the rectangle
  bands PNG BACKGROUND TOLERANCE L W  runs of lines that hold something other than the background
                                      between the columns L and L+W: "top height", one a line
  rows PNG BACKGROUND TOLERANCE L W   the bands (as above) of about the common height: rows of
                                      text, without a scroll bar or other strip
  pitch PNG BACKGROUND TOLERANCE L W  the distance from one of those rows to the next, from the
                                      first and the last; fails with fewer than two
  ink PNG BACKGROUND TOLERANCE L T W H  pixels inside the rectangle that are not background
  colours PNG L T W H                 the colours inside the rectangle, most frequent first
  differ PNG OTHER L T W H [OL OT]    pixels that differ between the rectangle of PNG and the
                                      rectangle of the same size at OL OT (default L T) of OTHER
  watch PPM L T W H COLOUR PERCENT SECONDS
                                      photographs the screen's rectangle (on $DISPLAY) as often as
                                      it can for SECONDS, and prints "MILLISECONDS 1" each time the
                                      colour comes to cover at least PERCENT of it and
                                      "MILLISECONDS 0" each time it stops, in milliseconds since the
                                      epoch; the first picture with the colour goes to PPM
"""
import subprocess
import sys
import time


class Picture:
    def __init__(self, path=None, data=None):
        if data is None:
            data = subprocess.run(["convert", path, "-depth", "8", "ppm:-"], check=True,
                                  stdout=subprocess.PIPE).stdout
        self.data = data
        # P6 header: magic, width, height, maximum, each followed by one blank.
        fields = []
        position = 0
        while len(fields) < 4:
            while data[position:position + 1].isspace():
                position += 1
            start = position
            while not data[position:position + 1].isspace():
                position += 1
            fields.append(data[start:position])
        self.width = int(fields[1])
        self.height = int(fields[2])
        self.pixels = data[position + 1:]

    def rgb(self, x, y):
        i = (y * self.width + x) * 3
        return self.pixels[i], self.pixels[i + 1], self.pixels[i + 2]

    def clip(self, left, top, width, height):
        x0 = max(left, 0)
        y0 = max(top, 0)
        x1 = min(left + width, self.width)
        y1 = min(top + height, self.height)
        return x0, y0, x1, y1


def parse_colour(text):
    text = text.lstrip("#")
    return int(text[0:2], 16), int(text[2:4], 16), int(text[4:6], 16)


def near(pixel, colour, tolerance):
    return (abs(pixel[0] - colour[0]) <= tolerance and abs(pixel[1] - colour[1]) <= tolerance
            and abs(pixel[2] - colour[2]) <= tolerance)


def matching(picture, colour, tolerance, rectangle=None):
    x0, y0, x1, y1 = picture.clip(*rectangle) if rectangle else (0, 0, picture.width, picture.height)
    for y in range(y0, y1):
        for x in range(x0, x1):
            if near(picture.rgb(x, y), colour, tolerance):
                yield x, y


def boxes(picture, colour, tolerance, reach):
    points = set(matching(picture, colour, tolerance))
    found = []
    while points:
        seed = points.pop()
        stack = [seed]
        left = right = seed[0]
        top = bottom = seed[1]
        count = 1
        while stack:
            x, y = stack.pop()
            for dx in range(-reach, reach + 1):
                for dy in range(-reach, reach + 1):
                    neighbour = (x + dx, y + dy)
                    if neighbour in points:
                        points.remove(neighbour)
                        stack.append(neighbour)
                        count += 1
                        left = min(left, neighbour[0])
                        right = max(right, neighbour[0])
                        top = min(top, neighbour[1])
                        bottom = max(bottom, neighbour[1])
        found.append((top, left, right - left + 1, bottom - top + 1, count))
    for top, left, width, height, count in sorted(found):
        print(left, top, width, height, count)


def bands(picture, background, tolerance, left, width):
    x0, _, x1, _ = picture.clip(left, 0, width, picture.height)
    found = []
    start = None
    for y in range(picture.height + 1):
        inked = y < picture.height and any(
            not near(picture.rgb(x, y), background, tolerance) for x in range(x0, x1))
        if inked and start is None:
            start = y
        elif not inked and start is not None:
            found.append((start, y - start))
            start = None
    return found


def text_rows(found):
    if not found:
        return []
    heights = sorted(height for _, height in found)
    median = heights[(len(heights) - 1) // 2]
    # A scroll bar or a strip of something else is no row of text.
    return [(top, height) for top, height in found if abs(height - median) <= 0.4 * median]


def pitch(found):
    rows = text_rows(found)
    if len(rows) < 2:
        return None
    return (rows[-1][0] - rows[0][0]) / (len(rows) - 1)


def ink(picture, background, tolerance, rectangle):
    x0, y0, x1, y1 = picture.clip(*rectangle)
    return sum(1 for y in range(y0, y1) for x in range(x0, x1)
               if not near(picture.rgb(x, y), background, tolerance))


def colours(picture, rectangle):
    x0, y0, x1, y1 = picture.clip(*rectangle)
    counts = {}
    for y in range(y0, y1):
        for x in range(x0, x1):
            pixel = picture.rgb(x, y)
            counts[pixel] = counts.get(pixel, 0) + 1
    for pixel, count in sorted(counts.items(), key=lambda item: -item[1]):
        print("#%02X%02X%02X %d" % (pixel[0], pixel[1], pixel[2], count))


def differ(picture, other, rectangle, other_left, other_top):
    left, top, width, height = rectangle
    changed = 0
    for y in range(height):
        for x in range(width):
            inside = 0 <= left + x < picture.width and 0 <= top + y < picture.height
            inside_other = 0 <= other_left + x < other.width and 0 <= other_top + y < other.height
            if not (inside and inside_other):
                changed += 1
            elif picture.rgb(left + x, top + y) != other.rgb(other_left + x, other_top + y):
                changed += 1
    return changed


def watch(path, rectangle, colour, percent, seconds):
    left, top, width, height = rectangle
    end = time.time() + seconds
    state = None
    saved = False
    while time.time() < end:
        data = subprocess.run(["import", "-window", "root", "-crop", "%dx%d+%d+%d" % (width, height, left, top),
                               "+repage", "-depth", "8", "ppm:-"], check=True, stdout=subprocess.PIPE).stdout
        taken = int(time.time() * 1000)
        picture = Picture(data=data)
        hits = sum(1 for _ in matching(picture, colour, 0))
        now = 1 if 100.0 * hits / max(picture.width * picture.height, 1) >= percent else 0
        if now != state:
            print(taken, now, flush=True)
            state = now
        if now and not saved:
            with open(path, "wb") as out:
                out.write(data)
            saved = True


def main(arguments):
    if len(arguments) < 2:
        print(__doc__, file=sys.stderr)
        return 2
    command, path = arguments[0], arguments[1]
    rest = arguments[2:]
    if command == "watch" and len(rest) == 7:
        watch(path, tuple(int(value) for value in rest[0:4]), parse_colour(rest[4]), float(rest[5]), float(rest[6]))
        return 0
    picture = Picture(path)
    if command == "boxes" and len(rest) in (2, 3):
        boxes(picture, parse_colour(rest[0]), int(rest[1]), int(rest[2]) if len(rest) == 3 else 1)
    elif command == "share" and len(rest) == 2:
        hits = sum(1 for _ in matching(picture, parse_colour(rest[0]), int(rest[1])))
        print("%.2f" % (100.0 * hits / max(picture.width * picture.height, 1)))
    elif command == "count" and len(rest) == 6:
        rectangle = tuple(int(value) for value in rest[2:6])
        print(sum(1 for _ in matching(picture, parse_colour(rest[0]), int(rest[1]), rectangle)))
    elif command == "bands" and len(rest) == 4:
        for top, height in bands(picture, parse_colour(rest[0]), int(rest[1]), int(rest[2]), int(rest[3])):
            print(top, height)
    elif command == "rows" and len(rest) == 4:
        for top, height in text_rows(bands(picture, parse_colour(rest[0]), int(rest[1]), int(rest[2]),
                                           int(rest[3]))):
            print(top, height)
    elif command == "pitch" and len(rest) == 4:
        distance = pitch(bands(picture, parse_colour(rest[0]), int(rest[1]), int(rest[2]), int(rest[3])))
        if distance is None:
            return 1
        print("%.3f" % distance)
    elif command == "ink" and len(rest) == 6:
        print(ink(picture, parse_colour(rest[0]), int(rest[1]), tuple(int(value) for value in rest[2:6])))
    elif command == "colours" and len(rest) == 4:
        colours(picture, tuple(int(value) for value in rest))
    elif command == "differ" and len(rest) in (5, 7):
        other = Picture(rest[0])
        rectangle = tuple(int(value) for value in rest[1:5])
        other_left, other_top = (int(rest[5]), int(rest[6])) if len(rest) == 7 else rectangle[:2]
        print(differ(picture, other, rectangle, other_left, other_top))
    else:
        print(__doc__, file=sys.stderr)
        return 2
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except BrokenPipeError:
        # A reader that took the first lines and left is no failure.
        sys.exit(0)
