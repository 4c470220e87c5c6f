"""The site around the residence: outlets, wells, mains, the septic tank. In mm, in the coordinates of the building's plan."""

from residence_base import PIPE_STYLE, STANDARD, STYLE, mark
from residence_walls import CORE_WALLS, FLAT_WALLS, UNIT, cut, flats, outlines, turned

WELL_STYLE = "给排-井"
TEXT, WELL = 1250, 1000  # height of texts for 1:500, diameter of wells as drawn
NORTH, SOUTH, WASTE = 15500, -7500, -4500  # where the drains lie: soil, rain, waste of the balconies
EAST = 46500

SOIL = [("W1", 3830), ("W2", 7270), ("W3", 13730), ("W4", 17170), ("W5", 24830), ("W6", 28270), ("W7", 34730), ("W8", 38170)]
BALCONY = [("F1", 6500), ("F2", 14500), ("F3", 27500), ("F4", 35500)]
RAIN = [("Y1", 5800), ("Y2", 15200), ("Y3", 26800), ("Y4", 36200)]


class Site:
    def __init__(self, pen):
        self.pen, self.nodes = pen, {}

    def node(self, system, name, x, y, depth, kind=1, place="above"):
        self.nodes[name] = (x, y, -depth)
        layer = STANDARD.layer(system, "井" if kind == 1 else "设备")
        self.pen.add("NODE", layer, (x, y, -depth), kind, WELL if kind == 1 else 3000, name=name)
        if place:
            at, align = {"above": ((x, y + 800), "CB"), "below": ((x, y - 800), "CT"), "east": ((x + 700, y + 300), "LB"),
                         "west": ((x - 700, y + 300), "RB")}[place]
            self.pen.text("给排-井标注", at, name, TEXT, align, style=WELL_STYLE)

    def pipe(self, system, size, start, end, slope=None, material=None):
        """Between nodes, by name, or places."""
        ends = [self.nodes.get(one, one) for one in (start, end)]
        names = [one if one in self.nodes else None for one in (start, end)]
        marks = mark("PIPE-DN", size) + mark("PIPE-MATERIAL", material or STANDARD.systems[STANDARD.letters[system]]["outdoor"])
        marks += mark("PIPE-SLOPE", slope) if slope else []
        self.pen.add("PIPE", STANDARD.layer(system, "管线"), *ends, STANDARD.letters[system], names, STANDARD.width(system), xdata=marks)

    def size(self, system, at, text, rotation=0):
        self.pen.text(STANDARD.layer(system, "管径文字"), at, text, TEXT, "CM", rotation, PIPE_STYLE)

    def drain(self, system, wells, y, size, slope, depth, *places):
        """Wells in a row, each a little deeper than the one before; where their names stand, in turn."""
        first = wells[0][1]
        for number, (name, x) in enumerate(wells):
            self.node(system, name, x, y, depth + (x - first) * float(slope), place=places[number % len(places)])
        for (start, _), (end, _) in zip(wells, wells[1:]):
            self.pipe(system, size, start, end, slope)


def add_site(pen):
    site = Site(pen)
    add_ground(pen)
    site.drain("W", SOIL + [("W9", 44000)], NORTH, "dn300", "0.005", 1100, "above", "above", "east", "east")
    for name, x in SOIL:
        site.pipe("W", "dn160", (x, 9700, -900), name, "0.010", "UPVC管")
    site.drain("F", BALCONY + [("F5", 44000)], WASTE, "dn200", "0.005", 900, "east", "west")
    for name, x in BALCONY:
        site.pipe("F", "dn110", (x, -850, -800), name, "0.012", "UPVC管")
    site.pipe("F", "dn200", "F5", "W9", "0.005")
    site.node("W", "化粪池", 49000, NORTH, 1900, 2, place=None)
    pen.text("给排-井标注", (49000, NORTH + 2100), "化粪池", TEXT, "CB", style=WELL_STYLE)
    site.pipe("W", "dn300", "W9", "化粪池", "0.005")
    site.pipe("W", "dn300", "化粪池", (56000, NORTH, -1950), "0.005")
    site.drain("Y", RAIN + [("Y5", 44000)], SOUTH, "d400", "0.003", 1300, "below")
    for name, x in RAIN:
        site.pipe("Y", "dn160", (x, -1300, -900), name, "0.010", "UPVC管")
    site.pipe("Y", "d400", "Y5", (56000, SOUTH, -1600), "0.003")
    add_mains(site)
    for system, at, text in (("W", (20800, NORTH + 2900), "dn300 i=0.005"), ("F", (21000, WASTE + 1200), "dn200 i=0.005"),
                             ("Y", (21000, SOUTH + 1200), "d400 i=0.003"), ("J", (2000, 20700), "DN150"),
                             ("XH", (2000, 23200), "DN150")):
        site.size(system, at, text)
    for text, at in (("接市政污水", (52600, NORTH - 2700)), ("接市政雨水", (51000, SOUTH - 1700)), ("市政给水", (48500, 20700))):
        pen.text("给排-井标注", at, text, TEXT, "CM", style=WELL_STYLE)


def add_mains(site):
    """Cold water and the fire main along the road, and what leads from them to the stairwells."""
    for system, y, size, entries in (("J", 19500, "DN150", [12680, UNIT + 12680]), ("XH", 22000, "DN150", [9330, UNIT + 9330])):
        stops = [(-9000, y, -900)] + [(x, y, -900) for x in entries] + [(56000, y, -900)]
        names = [stops[0]]
        for number, stop in enumerate(stops[1:-1], 1):
            name = "%s井%d" % (system, number)
            site.node(system, name, *stop[:2], 900, place=None)
            names.append(name)
            inner = 9200 if system == "J" else 11900
            site.pipe(system, "DN100", name, (stop[0], inner, -900))
        names.append(stops[-1])
        for start, end in zip(names, names[1:]):
            site.pipe(system, size, start, end)


def add_ground(pen):
    walls = []
    for x, mirrored in flats():
        walls += turned(list(cut([wall[:5] + ([],) for wall in FLAT_WALLS])), x, mirrored)
    for x in (0, UNIT):
        walls += turned(list(cut([wall[:5] + ([],) for wall in CORE_WALLS])), x, False)
    around = max(outlines(walls), key=lambda loop: max(x for x, _ in loop) - min(x for x, _ in loop) + len(loop) / 1e3)
    pen.wide("建筑-墙", [(x, y, 0) for x, y in around], 200, True)
    for unit in (0, UNIT):
        pen.path("建筑-阳台", [(unit + 6300, -100), (unit + 6300, -1500), (unit + 14700, -1500), (unit + 14700, -100)])
    pen.text("建筑-房间名", (UNIT, 4800), "1#住宅楼 18F", 2200, "CM")
    for y in (25500, 31500):
        pen.lines("总图-道路", (-9000, y), (56000, y))
    pen.text("总图-道路", (21000, 28500), "小区道路", TEXT, "CM")
    for number in range(12):
        x, y = -3500 + number * 4600, -13500 if number % 2 else -12500
        pen.circle("总图-树", (x, y), 1300)
        for angle in range(3):
            dx, dy = ((900, 0), (450, 780), (-450, 780))[angle]
            pen.lines("总图-树", (x - dx, y - dy), (x + dx, y + dy))
    # The north arrow.
    pen.circle("公用-符号", (-5500, 14000), 1800)
    pen.path("公用-符号", [(-6000, 12300), (-5500, 15800), (-5000, 12300)], True)
    pen.hatch("公用-符号", "SOLID", [], [(-5500, 12700), (-5500, 15800), (-5000, 12300)])
    pen.text("公用-符号", (-5500, 16300), "北", TEXT, "CB")
