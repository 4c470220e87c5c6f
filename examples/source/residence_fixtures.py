"""Fixtures of the residence: blocks that stand with their back to a wall and look south, and where they stand in a flat."""

from dxfwriter import Entity
from residence_base import entity_type

LAYER = "给排-洁具"


def box(x0, y0, x1, y1):
    return Entity("PATH", "0", ([(x0, y0), (x1, y0), (x1, y1), (x0, y1)], True))


def circle(x, y, radius):
    return Entity("CIRCLE", "0", ((x, y), radius))


def line(*points):
    return Entity("PATH", "0", (list(points), False))


def oval(x, y, wide, deep):
    """Two straight sides and two half circles across."""
    half = wide / 2
    return Entity("WIDE", "0", ([(x - half, y + deep / 2 - half, 0), (x - half, y - deep / 2 + half, 1),
                                 (x + half, y - deep / 2 + half, 0), (x + half, y + deep / 2 - half, 1)], 0, True))


BLOCKS = {
    "坐便器": [box(-200, -180, 200, 0), oval(0, -440, 360, 500), oval(0, -440, 260, 380), circle(0, -90, 25)],
    "洗脸盆": [box(-300, -500, 300, 0), oval(0, -265, 300, 300), circle(0, -300, 22), circle(-80, -70, 20), circle(80, -70, 20)],
    "洗涤盆": [box(-400, -450, 400, 0), box(-360, -410, 20, -110), box(50, -410, 360, -110), circle(-170, -250, 40),
               circle(205, -250, 40), circle(0, -60, 25)],
    "淋浴器": [circle(0, -90, 60), line((0, 0), (0, -30)), line((-60, -90), (60, -90)), line((0, -150), (0, -30))],
    "洗衣机": [box(-300, -600, 300, 0), circle(0, -320, 210), line((-300, -90), (300, -90)), circle(200, -45, 22)],
    "燃气灶": [box(-375, -450, 375, 0), circle(-180, -225, 110), circle(-180, -225, 50), circle(180, -225, 110),
               circle(180, -225, 50)],
    "消火栓箱": [box(-350, -240, 350, 0), Entity("HATCH", "0", ("SOLID", [], [[(-350, 0), (-350, -240), (350, -240)]]))],
}

# Block, place at the wall, rotation.
FLAT = [("坐便器", (3700, 8250), 90), ("洗脸盆", (3700, 6750), 90), ("淋浴器", (5300, 8975), 270), ("坐便器", (1150, 6550), 0),
        ("洗脸盆", (1950, 6550), 0), ("淋浴器", (235, 5800), 0), ("洗涤盆", (6500, 9500), 0), ("洗衣机", (6750, -100), 0),
        ("燃气灶", (7400, 8050), 270)]
# Edges of shower trays and of the kitchen's counter.
EDGES = [[(3700, 8600), (5300, 8600)], [(1000, 4900), (1000, 5800), (370, 5800)],
         [(5500, 8950), (6850, 8950), (6850, 7150), (7400, 7150)]]


def add_blocks(drawing):
    for name, content in BLOCKS.items():
        drawing.block(name).extend(content)


def add_flat(pen):
    for name, at, rotation in FLAT:
        pen.insert(LAYER, name, at, rotation, xdata=entity_type(name))
    for edge in EDGES:
        pen.lines(LAYER, *edge)


def add_core(pen):
    pen.insert("给排-消火栓", "消火栓箱", (9800, 6800), xdata=entity_type("消火栓"))
