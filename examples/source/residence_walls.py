"""The architect's plan: a flat and a stairwell as tables, walls joined to outlines with their openings, axes, dimensions."""

from dxfwriter import Entity
from residence_base import SCALE, STYLE, text_width

WALL, THIN = 200, 100  # thickness: structure, partition
FLAT, UNIT = 10500, 21000  # width of a flat with half of its stairwell, and of the two flats at it
FLOOR = "建筑-填充"

# Walls along the axes: direction, where, from, to, thickness, openings (from, to) that leave both faces cut.
FLAT_WALLS = [
    ("h", 0, 0, 10500, WALL, [(900, 2700), (4200, 5700), (6900, 9900)]),
    ("h", 4800, 0, 7500, WALL, [(1500, 2200), (2500, 3400), (3800, 4700), (6400, 7400)]),
    ("h", 6000, 5400, 7500, THIN, [(6550, 7350)]),
    ("h", 6600, 0, 3600, THIN, [(2500, 3400)]),
    ("h", 7200, 3600, 5400, THIN, [(4250, 4950)]),
    ("h", 9600, 0, 7500, WALL, [(900, 2700), (4200, 4800), (5850, 7050)]),
    ("v", 0, 0, 9600, WALL, [(5050, 5650)]),
    ("v", 2400, 4800, 6600, THIN, []),
    ("v", 3600, 0, 4800, WALL, []),
    ("v", 3600, 6000, 9600, WALL, []),
    ("v", 5400, 6000, 9600, WALL, []),
    ("v", 6300, 0, 4800, WALL, []),
    ("v", 7500, 4800, 9600, WALL, [(4950, 5950)]),
    ("v", 10500, 0, 4800, WALL, []),
]
# Of the stairwell, from the west wall's axis on: x counts from the unit's west end.
CORE_WALLS = [
    ("h", 4800, 7500, 13500, WALL, []),
    ("h", 6900, 7500, 13500, WALL, [(7900, 8900), (10850, 11750), (12930, 13380)]),
    ("h", 9100, 10200, 13500, WALL, []),
    ("h", 11700, 7500, 10200, WALL, [(8250, 9450)]),
    ("v", 7500, 9600, 11700, WALL, []),
    ("v", 10200, 6900, 11700, WALL, []),
    ("v", 12400, 6900, 9100, WALL, []),
]
# Shear walls: boxes that are filled.
FLAT_SHEAR = [
    (-100, -100, 900, 100), (-100, 100, 100, 1200), (2700, -100, 4200, 100), (3500, 100, 3700, 900), (5700, -100, 6900, 100),
    (6200, 100, 6400, 1500), (9900, -100, 10500, 100), (10400, 100, 10500, 2400), (-100, 3900, 100, 5050), (100, 4700, 900, 4900),
    (-100, 8500, 100, 9700), (100, 9500, 900, 9700), (2700, 9500, 4200, 9700), (3500, 8700, 3700, 9500), (4800, 9500, 5850, 9700),
    (7050, 9500, 7600, 9700), (7400, 5950, 7600, 9500), (3500, 3900, 3700, 4700), (5700, 4700, 6400, 4900), (6200, 4000, 6400, 4700),
]
CORE_SHEAR = [
    (7400, 9700, 7600, 11800), (7600, 11600, 8250, 11800), (9450, 11600, 10300, 11800), (10100, 6800, 10300, 11600),
    (10300, 9000, 13400, 9200), (12300, 6800, 12500, 9000), (10300, 6800, 10850, 7000), (11750, 6800, 12300, 7000),
    (8900, 6800, 10100, 7000), (7600, 4700, 8700, 4900), (12300, 4700, 13400, 4900), (9900, 4700, 11100, 4900),
]
# Windows: direction, where, from, to. Doors: hinge, where the leaf ends open, where it closes.
WINDOWS = [("h", 0, 900, 2700), ("h", 0, 4200, 5700), ("h", 9600, 900, 2700), ("h", 9600, 4200, 4800), ("h", 9600, 5850, 7050),
           ("v", 0, 5050, 5650)]
DOORS = [((2200, 4900), (2200, 5600), (1500, 4900)), ((2500, 4700), (2500, 3800), (3400, 4700)),
         ((3800, 4700), (3800, 3800), (4700, 4700)), ((2500, 6650), (2500, 7550), (3400, 6650)),
         ((4950, 7250), (4950, 7950), (4250, 7250)), ((7500, 4950), (6500, 4950), (7500, 5950))]
CORE_DOORS = [((7900, 7000), (7900, 8000), (8900, 7000)), ((13380, 6800), (13380, 6350), (12930, 6800))]
ROOMS = [("主卧室", 1800, 2300), ("卧室", 5000, 2300), ("客厅", 8400, 2600), ("餐厅", 8400, 4150), ("卧室", 1100, 8600),
         ("阳台", 9300, -950), ("厨房", 6450, 7650)]
WET_ROOMS = [(4780, 8150), (1300, 5250)]
TILES = [(100, 4900, 2350, 6550), (3700, 7250, 5300, 9500), (3700, 6000, 5300, 7150), (5500, 6050, 7400, 9500),
         (6400, -1400, 10400, -100)]

# Axes: where across, which ends have a number; the second unit follows the first one.
ACROSS = [(0, "ns"), (3600, "ns"), (5400, "n"), (6300, "s"), (7500, "n"), (10500, "s"), (13500, "n"), (14700, "s"), (15600, "n"),
          (17400, "ns")]
UP = [("A", 0, "we"), ("B", 4800, "we"), ("C", 6600, "w"), ("D", 6900, "e"), ("E", 9600, "we"), ("F", 11700, "we")]


def cut(walls):
    """Boxes of walls without their openings."""
    for direction, where, start, end, thick, openings in walls:
        half, pieces, begin = thick / 2, [], start - (thick / 2 if thick == WALL else 0)
        for low, high in openings:
            pieces.append((begin, low))
            begin = high
        pieces.append((begin, end + (half if thick == WALL else 0)))
        for low, high in pieces:
            yield (low, where - half, high, where + half) if direction == "h" else (where - half, low, where + half, high)


def outlines(boxes):
    """The closed outlines of boxes that touch or overlap, corners only."""
    xs = sorted({x for box in boxes for x in (box[0], box[2])})
    ys = sorted({y for box in boxes for y in (box[1], box[3])})
    column, row = {x: i for i, x in enumerate(xs)}, {y: i for i, y in enumerate(ys)}
    filled = {(i, j) for x0, y0, x1, y1 in boxes for i in range(column[x0], column[x1]) for j in range(row[y0], row[y1])}
    # Edges with the filled side on their left; by where they begin.
    following = {}
    for i, j in sorted(filled):
        for beside, start, end in (((i, j - 1), (i, j), (i + 1, j)), ((i + 1, j), (i + 1, j), (i + 1, j + 1)),
                                   ((i, j + 1), (i + 1, j + 1), (i, j + 1)), ((i - 1, j), (i, j + 1), (i, j))):
            if beside not in filled:
                following.setdefault(start, []).append(end)
    loops = []
    while following:
        first = at = min(following)
        loop = []
        while True:
            loop.append(at)
            ends = following[at]
            after = ends.pop(0)
            if not ends:
                del following[at]
            at = after
            if at == first:
                break
        corners = [point for before, point, after in zip(loop[-1:] + loop, loop, loop[1:] + loop[:1])
                   if (point[0] - before[0]) * (after[1] - point[1]) != (point[1] - before[1]) * (after[0] - point[0])]
        loops.append([(xs[i], ys[j]) for i, j in corners])
    return loops


def turned(boxes, x, mirrored):
    return [(x - x1, y0, x - x0, y1) if mirrored else (x + x0, y0, x + x1, y1) for x0, y0, x1, y1 in boxes]


def flats():
    """Where the flats begin, and whether they are mirrored: from west to east."""
    return [(0, False), (UNIT, True), (UNIT, False), (2 * UNIT, True)]


def add_walls(pen):
    walls, shear = [], []
    for x, mirrored in flats():
        walls += turned(list(cut(FLAT_WALLS)), x, mirrored)
        shear += turned(FLAT_SHEAR, x, mirrored)
    for x in (0, UNIT):
        walls += turned(list(cut(CORE_WALLS)), x, False)
        shear += turned(CORE_SHEAR, x, False)
    for loop in outlines(walls):
        pen.path("建筑-墙", loop, True)
    pen.hatch("建筑-柱", "SOLID", [], *outlines(shear))


def add_window(pen, direction, where, start, end):
    for side in (-WALL / 2, -35, 35, WALL / 2):
        points = ((start, where + side), (end, where + side)) if direction == "h" else ((where + side, start), (where + side, end))
        pen.lines("建筑-门窗", *points)


def add_door(pen, hinge, leaf, jamb):
    """A leaf 40 thick that stands open, and its swing."""
    (x, y), (x1, y1), (x2, _) = hinge, leaf, jamb
    if x == x1:
        side = 40 if x2 > x else -40
        pen.path("建筑-门窗", [(x, y), (x + side, y), (x + side, y1), (x, y1)], True)
        up, right = y1 > y, x2 > x
        start = (0 if right else 90) if up else (270 if right else 180)
        pen.arc("建筑-门窗", (x, y), abs(y1 - y), start, start + 90)
    else:
        # Hinged on an upright wall.
        pen.path("建筑-门窗", [(x, y), (x1, y), (x1, y + 40), (x, y + 40)], True)
        pen.arc("建筑-门窗", (x, y), abs(x1 - x), 90, 180)


def add_sliding(pen, y, x0, x1, leaves):
    step = (x1 - x0) / leaves
    for number in range(leaves):
        low = y - 40 if number % 2 else y
        pen.box("建筑-门窗", x0 + number * step - (40 if number else 0), low, x0 + (number + 1) * step, low + 40)


def add_flat(pen):
    for window in WINDOWS:
        add_window(pen, *window)
    for door in DOORS:
        add_door(pen, *door)
    add_sliding(pen, 0, 6900, 9900, 4)
    add_sliding(pen, 6000, 6550, 7350, 1)
    for x0, y0, x1, y1 in TILES:
        pen.hatch(FLOOR, "TILES", [(0, 600), (90, 600)], [(x0, y0), (x1, y0), (x1, y1), (x0, y1)])
    for name, x, y in ROOMS:
        pen.text("建筑-房间名", (x, y), name, 350, "CM")
    for at in WET_ROOMS:
        pen.text("建筑-房间名", at, "卫", 250, "CM")
    # Balcony: a parapet 100 thick; the kitchen's flue.
    pen.path("建筑-阳台", [(6300, -100), (6300, -1500), (10500, -1500)])
    pen.path("建筑-阳台", [(6400, -100), (6400, -1400), (10450, -1400)])
    pen.lines("建筑-阳台", (10450, -1400), (10450, -100))
    pen.box("建筑-墙", 7000, 8500, 7400, 8950)
    pen.path("建筑-墙", [(7000, 8950), (7300, 8850), (7400, 8500)])
    # Chases in front of the risers of both bathrooms.
    pen.path("建筑-墙", [(3700, 7960), (3970, 7960), (3970, 7250)])
    pen.path("建筑-墙", [(100, 5800), (370, 5800), (370, 6550)])


def add_core(pen):
    for door in CORE_DOORS:
        add_door(pen, *door)
    add_window(pen, "h", 11700, 8250, 9450)
    # Two flights of eight treads of 260 with a well between them, landings of 1.2 and 1.1 m.
    for number in range(9):
        y = 8300 + number * 260
        pen.lines("建筑-楼梯", (7600, y), (8800, y))
        pen.lines("建筑-楼梯", (8900, y), (10100, y))
    pen.box("建筑-楼梯", 8800, 8200, 8900, 10480)
    for x, text, points in ((8200, "上", [(8200, 8050), (8200, 9300)]), (9500, "下", [(9500, 8050), (9500, 10780), (8700, 10780)])):
        pen.path("建筑-楼梯", points)
        pen.text("建筑-楼梯", (x, 7850), text, 250, "CM")
    pen.lines("建筑-楼梯", (7600, 9380), (8350, 9150), (8300, 9480), (8800, 9250))
    # The lift: shaft, car, counterweight, door.
    pen.box("建筑-楼梯", 10500, 7250, 12100, 8650)
    pen.lines("建筑-楼梯", (10500, 7250), (12100, 8650))
    pen.lines("建筑-楼梯", (10500, 8650), (12100, 7250))
    pen.box("建筑-楼梯", 10700, 8750, 11900, 8900)
    add_sliding(pen, 6900, 10850, 11750, 2)
    for name, x, y in (("电梯", 11300, 7950), ("合用前室", 11400, 5300)):
        pen.text("建筑-房间名", (x, y), name, 300, "CM")


class Dimensions:
    """Dimension lines with architectural ticks, each with the block that shows it."""

    def __init__(self, pen, layer, style, scale, text=3.0):
        self.pen, self.layer, self.style, self.scale, self.text = pen, layer, style, scale, text

    def one(self, start, end, line, angle, aside=0):
        drawing, scale = self.pen.drawing, self.scale
        name = "*D%d" % (1 + sum(block.startswith("*D") for block in drawing.blocks))
        upright = angle == 90
        ends = [((line[0], point[1]) if upright else (point[0], line[1])) for point in (start, end)]
        block = drawing.block(name)
        for point, foot in zip((start, end), ends):
            along = (foot[0] - point[0], foot[1] - point[1])
            length = abs(along[0] + along[1]) or 1
            unit = along[0] / length, along[1] / length
            begin = tuple(p + u * min(2 * scale, length) for p, u in zip(point, unit))
            block.append(Entity("LINE", "0", (begin, tuple(f + u * 2 * scale for f, u in zip(foot, unit)))))
            tick = scale
            block.append(Entity("WIDE", "0", ([(foot[0] - tick / 1.4, foot[1] - tick / 1.4, 0),
                                               (foot[0] + tick / 1.4, foot[1] + tick / 1.4, 0)], 0.4 * scale, False)))
        block.append(Entity("LINE", "0", tuple(ends)))
        measure = abs(end[1] - start[1]) if upright else abs(end[0] - start[0])
        height = self.text * scale
        middle = [(a + b) / 2 for a, b in zip(*ends)]
        # One that is wider than what it measures stands above its neighbours, and beside the axis there.
        over = text_width("%g" % measure, height) - measure
        lift = (2.0 if over > 0 else 0.85) * height
        middle[0 if upright else 1] += -lift if upright else lift
        if over > 0:
            middle[1 if upright else 0] += aside * (over / 2 + 0.2 * height)
        if measure > 30000:  # the middle of the whole building is on an axis
            middle[0] += 2000
        block.append(Entity("LABEL", "0", (tuple(middle), height, "%g" % measure, angle, "CM", STYLE)))
        self.pen.add("DIMENSION", self.layer, name, start, end, ends[1], angle, tuple(middle), self.style)

    def chain(self, values, from_, line, angle=0, axes=()):
        for low, high in zip(values, values[1:]):
            aside = (low in axes) - (high in axes)
            if angle:
                self.one((from_, low), (from_, high), (line, high), 90, aside)
            else:
                self.one((low, from_), (high, from_), (high, line), 0, aside)


def add_axes(pen):
    east = 2 * UNIT
    across = [(x + unit, ends) for unit in (0, UNIT) for x, ends in ACROSS] + [(east, "ns")]
    south, north, west = -5600, 15300, -4400

    def bubble(x, y, text):
        pen.circle("建筑-轴线标注", (x, y), 400)
        pen.text("建筑-轴线标注", (x, y), text, 400, "CM")

    for number, (x, ends) in enumerate(across, 1):
        if "n" in ends:
            pen.lines("建筑-轴线", (x, 4200 if "s" not in ends else -200), (x, 12300))
            pen.lines("建筑-轴线标注", (x, 12300), (x, north - 400))
            bubble(x, north, str(number))
        if "s" in ends:
            pen.lines("建筑-轴线", (x, -2000), (x, 5400 if "n" not in ends else -200))
            pen.lines("建筑-轴线标注", (x, -2000), (x, south + 400))
            bubble(x, south, str(number))
    for letter, y, ends in UP:
        for side, x, inner in (("w", west, -900), ("e", east - west, east + 900)):
            if side in ends:
                pen.lines("建筑-轴线标注", (inner, y), (x - 400 if side == "e" else x + 400, y))
                bubble(x, y, letter)
        pen.lines("建筑-轴线", (-900, y), (east + 900, y))
    dimensions = Dimensions(pen, "建筑-尺寸", "给排-100", SCALE)
    south_axes, north_axes = ({x for x, ends in across if side in ends} for side in "sn")
    # Measured to the axes, so that none of these strikes a number.
    for chain, where, line in ((sorted(openings("h", 0) | south_axes), -2000, -2800), (sorted(south_axes), -2000, -3700),
                               ([-100, east + 100], -2000, -4600),
                               (sorted(openings("h", 9600) | north_axes), 12100, 12700), (sorted(north_axes), 12100, 13500),
                               ([-100, east + 100], 12100, 14300)):
        dimensions.chain(chain, where, line, 0, south_axes | north_axes)
    for where, line, side in ((-900, -1, "w"), (east + 900, 1, "e")):
        base = where + line * 600
        rows = [y for _, y, ends in UP if side in ends]
        dimensions.chain(sorted({5050, 5650, *rows}), where, base, 90, rows)
        dimensions.chain(rows, where, base + line * 800, 90)
        dimensions.chain([-100, 11800], where, base + line * 1600, 90)


def openings(direction, where):
    """The places along a face where openings begin and end, of all flats."""
    ends = {0, 2 * UNIT, UNIT}
    for wall in FLAT_WALLS:
        if wall[0] == direction and wall[1] == where:
            for low, high in wall[5]:
                for x, mirrored in flats():
                    ends |= {x - low, x - high} if mirrored else {x + low, x + high}
    return ends


def add_architecture(pen):
    add_walls(pen)
    for x, mirrored in flats():
        add_flat(pen.frame(x, 0, mirrored))
    for x in (0, UNIT):
        add_core(pen.frame(x))
    add_axes(pen)
