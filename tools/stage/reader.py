"""Reading text off a picture of the game, by comparing shapes with the game's own typeface."""

import dataclasses
import difflib
import functools
import pathlib
import re

from PIL import Image, ImageChops, ImageDraw, ImageFont

FACE = pathlib.Path(__file__).resolve().parents[2] / "data" / "Fonts" / "Vera.ttf"
CHARACTERS = "".join(chr(code) for code in range(33, 127))
# Shapes that hardly differ in this face; readings are compared in lower case with these replaced.
LOOKALIKES = str.maketrans({"i": "l", "|": "l", "0": "o", "'": ",", "`": ","})

CELLS = (10, 14)  # what a glyph is scaled to for comparing
TEMPLATE_SIZE = 40  # pixels
TEXT_LEVEL = 128  # of 255: what stands out more than that is text
SMALLEST_CAPITAL = 6  # pixels; less is illegible
LARGEST_GLYPH = 60  # pixels; more is no text
WIDEST_GAP = 2.5  # between two letters of a line, in heights of the taller one
LEAST_LIKENESS = 0.7  # of a reading to the text that is looked for
WORST_MATCH = 0.4  # difference between a shape and the character it is taken for


@dataclasses.dataclass
class Box:
    left: int
    top: int
    right: int
    bottom: int

    @property
    def width(self):
        return self.right - self.left

    @property
    def height(self):
        return self.bottom - self.top

    @property
    def centre(self):
        return (self.left + self.right) / 2, (self.top + self.bottom) / 2

    def joined(self, other):
        return Box(min(self.left, other.left), min(self.top, other.top), max(self.right, other.right),
                   max(self.bottom, other.bottom))


@dataclasses.dataclass
class Line:
    """A line of text and the box that it fills in the picture."""
    text: str
    box: Box


def plain(text):
    """The text without blanks, with what looks alike made equal: what readings are compared by."""
    return "".join(text.split()).lower().translate(LOOKALIKES)


def find_text(picture, text, region=None):
    """The line that reads most like `text`, lighter or darker than what it stands on; None when none does.
    `region` is the (left, top, right, bottom) of the part to look at; the line's box is in the whole picture."""
    best = None
    most = LEAST_LIKENESS
    for ink in (light_ink, dark_ink):
        for line in read_lines(picture, ink, region):
            likeness = likeness_of(line.text, text)
            if likeness >= most:
                most, best = likeness, line
        if most == 1:
            break
    return best


def likeness_of(reading, text):
    """How much of the text a reading got right, 0 to 1."""
    return difflib.SequenceMatcher(None, plain(reading), plain(text), autojunk=False).ratio()


def read_number_after(picture, label, region=None):
    """The whole number that follows `label` in bright letters, as in "Score:  120"; None without one."""
    for line in read_lines(picture, bright_ink, region):
        match = re.fullmatch(re.escape(plain(label)) + r"(-?)([0-9ol]+)", plain(line.text))
        if match:
            return int(match.group(1) + match.group(2).replace("o", "0").replace("l", "1"))
    return None


def read_lines(picture, ink, region=None):
    """All lines of text in the picture that are written with that ink, from the top down."""
    left, top = region[:2] if region else (0, 0)
    level = ink(picture.crop(region) if region else picture)
    lines = []
    for glyphs in _lines_of(_glyph_boxes(level)):
        box = functools.reduce(Box.joined, glyphs)
        lines.append(Line(_read(level, glyphs), Box(box.left + left, box.top + top, box.right + left, box.bottom + top)))
    return sorted(lines, key=lambda line: (line.box.top, line.box.left))


def bright_ink(picture):
    """Ink of any colour on black."""
    red, green, blue = picture.split()
    return ImageChops.lighter(ImageChops.lighter(red, green), blue)


def light_ink(picture):
    """White on a colour."""
    return picture.convert("L")


def dark_ink(picture):
    """Black on a colour."""
    return ImageChops.invert(picture.convert("L"))


def _glyph_boxes(level):
    """The boxes of all connected shapes that could be letters, dots and accents joined to what they belong to."""
    width, height = level.size
    data = level.tobytes()
    runs = []  # (row, first column, column past the last) with the box that they belong to
    parent = []

    def root(index):
        while parent[index] != index:
            parent[index] = parent[parent[index]]
            index = parent[index]
        return index

    is_text = bytes(1 if value >= TEXT_LEVEL else 0 for value in range(256))
    above = []
    for row in range(height):
        marks = data[row * width:(row + 1) * width].translate(is_text)
        current = []
        start = marks.find(1)
        while start >= 0:
            end = marks.find(0, start)
            end = width if end < 0 else end
            index = len(runs)
            runs.append((row, start, end))
            parent.append(index)
            for other, (_, other_start, other_end) in above:
                if other_start <= end and start <= other_end:
                    parent[root(other)] = root(index)
            current.append((index, runs[index]))
            start = marks.find(1, end)
        above = current
    boxes = {}
    for index, (row, start, end) in enumerate(runs):
        box = Box(start, row, end, row + 1)
        key = root(index)
        boxes[key] = boxes[key].joined(box) if key in boxes else box
    return [box for box in boxes.values() if box.width <= LARGEST_GLYPH and box.height <= LARGEST_GLYPH]


def _lines_of(boxes):
    """Groups boxes into lines, each from left to right, and joins the parts of i, j, : and the like."""
    boxes = sorted(boxes, key=lambda box: box.left)
    lines = []  # of boxes from left to right
    for box in boxes:
        mine = [line for line in lines if any(_neighbours(other, box) for other in line)]
        lines = [line for line in lines if not any(line is other for other in mine)]
        lines.append(sum(mine, []) + [box])
    lines = [line for line in lines if max(box.height for box in line) >= SMALLEST_CAPITAL]
    return [_joined_parts(sorted(line, key=lambda box: box.left)) for line in lines]


def _neighbours(left, right):
    """Whether two shapes may stand on one line: about as high, and no more than a few blanks apart."""
    tallest = max(left.height, right.height)
    slack = 0.15 * tallest
    return (right.left - left.right < WIDEST_GAP * tallest and
            right.top - slack < left.bottom and left.top < right.bottom + slack)


def _joined_parts(line):
    joined = []
    for box in line:
        if joined:
            last = joined[-1]
            overlap = min(box.right, last.right) - max(box.left, last.left)
            if overlap > 0.5 * min(box.width, last.width) and (box.top >= last.bottom or last.top >= box.bottom):
                joined[-1] = last.joined(box)
                continue
        joined.append(box)
    return joined


@dataclasses.dataclass
class Glyph:
    """What characters are told apart by: the shape scaled to CELLS, and how it sits in its line, in heights of
    a capital."""
    cells: bytes
    width: float
    height: float
    above_baseline: float  # of its lower edge

    def difference(self, other):
        shape = sum(abs(mine - theirs) for mine, theirs in zip(self.cells, other.cells)) / (255 * len(self.cells))
        return (shape + 0.4 * abs(self.width - other.width) + 0.4 * abs(self.height - other.height)
                + 0.4 * abs(self.above_baseline - other.above_baseline))


def _glyph(level, box, baseline, capital_height):
    cells = level.crop((box.left, box.top, box.right, box.bottom)).resize(CELLS, Image.BOX)
    return Glyph(cells.tobytes(), box.width / capital_height, box.height / capital_height,
                 (baseline - box.bottom) / capital_height)


@functools.lru_cache(maxsize=None)
def _templates():
    """(character, Glyph) of all characters that are drawn."""
    font = ImageFont.truetype(str(FACE), TEMPLATE_SIZE)
    baseline = 2 * TEMPLATE_SIZE
    pictures = {}
    for character in CHARACTERS:
        level = Image.new("L", (3 * TEMPLATE_SIZE, 3 * TEMPLATE_SIZE))
        ImageDraw.Draw(level).text((TEMPLATE_SIZE, baseline), character, fill=255, font=font, anchor="ls")
        pictures[character] = level, Box(*level.point(lambda value: 255 * (value >= TEXT_LEVEL)).getbbox())
    capital_height = pictures["H"][1].height
    return [(character, _glyph(level, box, baseline, capital_height))
            for character, (level, box) in pictures.items()]


def _read(level, line):
    """The text of one line of boxes; a shape that is no character reads as U+FFFD."""
    bottoms = sorted(box.bottom for box in line)
    baseline = bottoms[len(bottoms) // 2]  # most letters stand on it
    capital_height = max(1, baseline - min(box.top for box in line))
    text = ""
    for box in line:
        glyph = _glyph(level, box, baseline, capital_height)
        difference, character = min((glyph.difference(template), name) for name, template in _templates())
        text += character if difference <= WORST_MATCH else "\ufffd"
    return text
