"""The standard as the residence is drawn in it, and a pen that draws parts of it once and places them mirrored.

Layers, linetypes and text styles come from the tables in data/source, so that the drawing follows the shipped standard;
what nothing lies on is left out.
"""

import csv
import math
import os

from dxfwriter import MODEL, Entity, Layer

TABLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "data", "source")
SCALE = 100  # of the plan: a millimetre on paper is that many in the building
STYLE, PIPE_STYLE, RISER_STYLE, TABLE_STYLE, LINE_STYLE = "给排-标注", "给排-管径", "给排-立管", "给排-表格", "文字线形"
LINE_FONT = ("gbenor.shx", "gbcbig.shx", 0.0, 0.75)  # of letters in linetypes; the linetype tells their height


def table(name):
    with open(os.path.join(TABLES, name + ".csv"), encoding="utf-8-sig", newline="") as file:
        return list(csv.DictReader(file))


def weight(text):
    return -3 if text == "默认" else round(float(text) * 100)


class Standard:
    def __init__(self):
        self.systems = {row["name"]: row for row in table("systems")}
        self.letters = {"J": "生活给水", "RJ": "热水给水", "RH": "热水回水", "W": "污水", "F": "废水", "T": "通气", "Y": "雨水",
                        "XH": "消火栓", "ZP": "自动喷淋"}
        kinds, others = table("layers"), table("otherlayers")
        self.layers = {row["name"]: Layer(row["name"], int(row["color"]), row["linetype"], weight(row["lineweight"]),
                                          plots=row["plot"] == "1") for row in others}
        for system in self.systems.values():
            for row in kinds:
                if system["kind"] in row["kinds"].split():
                    value = {key: system[key] if row[key] == "system" else row[key] for key in ("color", "linetype", "lineweight")}
                    heavy = int(value["lineweight"]) if row["lineweight"] == "system" else weight(value["lineweight"])
                    name = "给排-%s-%s" % (system["name"], row["type"])
                    self.layers[name] = Layer(name, int(value["color"]), value["linetype"], heavy)
        for name in ("公用-视口", "公用-图例"):
            self.layers.pop(name, None)
        self.linetypes = {row["Name"]: (row["Comment"], dashes(row["Content"])) for row in table("linetype")}
        self.styles = {row["name"]: (row["english"], row["chinese"], float(row["height"]), float(row["scale"]))
                       for row in table("textstyles")}
        self.styles[LINE_STYLE] = LINE_FONT

    def layer(self, system, kind):
        """The layer of the kind that a system's letters have."""
        return "给排-%s-%s" % (self.letters[system], kind)

    def width(self, system):
        return float(self.systems[self.letters[system]]["width"])


def dashes(content):
    """The pattern of a linetype; a gap with a text in it holds that in its middle."""
    result = []
    for part in content.split(",") if content else []:
        length, bracket, text = part.partition("[")
        if not bracket:
            result.append(float(part))
            continue
        # The text stands where its dash ends, so the gap is cut there; letters are two thirds as wide as they stand apart.
        text, half = text.rstrip("]"), float(length) / 2
        result += [(half, text, 3.0, -(len(text) - 1 / 3) * 3.0 * LINE_FONT[3] / 2, -1.5), half]
    return result


STANDARD = Standard()


def text_width(text, height):
    """About what a text takes in the styles of the standard."""
    return sum(0.95 if ord(sign) > 0x2000 else 0.6 for sign in text) * height


class Pen:
    """Adds entities to a drawing. A frame moves, and mirrors where it says so, all that is drawn in it."""

    def __init__(self, drawing, x=0, y=0, mirrored=False, space=MODEL):
        self.drawing, self.x, self.y, self.mirrored, self.space = drawing, x, y, mirrored, space

    def frame(self, x, y=0, mirrored=False):
        return Pen(self.drawing, x, y, mirrored, self.space)

    def at(self, point):
        return (self.x + (-point[0] if self.mirrored else point[0]), self.y + point[1], *point[2:])

    def turned(self, angle):
        return (180 - angle) % 360 if self.mirrored else angle % 360

    def add(self, kind, layer, *data, **options):
        entity = Entity(kind, layer, data, self.space, **options)
        self.drawing.entities.append(entity)
        return entity

    def lines(self, layer, *points):
        for start, end in zip(points, points[1:]):
            self.add("LINE", layer, self.at(start), self.at(end))

    def path(self, layer, points, closed=False):
        self.add("PATH", layer, [self.at(point) for point in points], closed)

    def box(self, layer, x0, y0, x1, y1):
        self.path(layer, [(x0, y0), (x1, y0), (x1, y1), (x0, y1)], True)

    def wide(self, layer, points, width, closed=False):
        self.add("WIDE", layer, [(*self.at(point[:2]), *(point[2:] or (0,))) for point in points], width, closed)

    def dot(self, layer, at, radius):
        """A filled circle: two half circles as wide as its radius."""
        x, y = at
        self.wide(layer, [(x - radius / 2, y, 1), (x + radius / 2, y, 1)], radius, True)

    def circle(self, layer, center, radius):
        self.add("CIRCLE", layer, self.at(center), radius)

    def arc(self, layer, center, radius, start, end):
        if self.mirrored:
            start, end = 180 - end, 180 - start
        self.add("ARC", layer, self.at(center), radius, start % 360, end % 360)

    def text(self, layer, at, text, height=300, align="LB", rotation=0, style=STYLE):
        """Texts are never mirrored; what stood to the left of its place then stands to the right."""
        if self.mirrored and rotation == 0:
            align = {"L": "R", "R": "L", "C": "C"}[align[0]] + align[1]
        self.add("LABEL", layer, self.at(at), height, text, rotation, align, style)

    def insert(self, layer, block, at, rotation=0, xdata=()):
        self.add("SCALED", layer, block, self.at(at), -rotation % 360 if self.mirrored else rotation, -1 if self.mirrored else 1,
                 1, xdata=xdata)

    def hatch(self, layer, name, families, *loops):
        self.add("HATCH", layer, name, families, [[self.at(point) for point in loop] for loop in loops])


def mark(name, value):
    return [(1001, name), (1000, value)]


def entity_type(name):
    """The mark that tells what an ordinary entity stands for."""
    return mark("PWX-ENT-TYPE", name)


def distance(a, b):
    return math.hypot(a[0] - b[0], a[1] - b[1])
