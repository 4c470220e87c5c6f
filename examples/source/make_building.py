#!/usr/bin/env python3
"""Makes the example drawings: the ground floor of a small guest house with its water supply and drainage, in mm.

    examples/source/make_building.py [FOLDER]

writes building.dxf (R2010 form) and building-r12.dxf (R12 form, code page 936) into the folder, by default examples/.
Only the standard library is needed. The same input gives the same bytes.
"""

import os
import sys

sys.dont_write_bytecode = True

from dxfwriter import PAPER, Drawing, Entity, Layer, write

WALL = 240
AXES_X = (0, 4200, 7800, 12000)
AXES_Y = (0, 4800, 8400)

# Layers as a designer left them after a day of work: hot water frozen, rain off, fire mains off and locked, the
# architect's layers locked.
LAYERS = [
    Layer("0"),
    Layer("建筑-轴线", 1, "CENTER", 13, locked=True),
    Layer("建筑-墙", 9, weight=25, locked=True),
    Layer("建筑-门窗", 4, weight=13),
    Layer("建筑-房间名", 7, weight=13, frozen=True),
    Layer("建筑-尺寸", 3, weight=13, frozen=True),
    Layer("给排-洁具", 6, weight=18),
    Layer("给排-地漏", 6, weight=25),
    Layer("给排-生活给水-管线", 3, weight=50),
    Layer("给排-生活给水-立管", 3, weight=50),
    Layer("给排-生活给水-立管编号", 7),
    Layer("给排-生活给水-阀门", 3),
    Layer("给排-生活给水-管径文字", 7),
    Layer("给排-热水给水-管线", 30, weight=50, frozen=True),
    Layer("给排-热水给水-立管", 30, weight=50, frozen=True),
    Layer("给排-热水给水-立管编号", 7, frozen=True),
    Layer("给排-热水给水-管径文字", 7, frozen=True),
    Layer("给排-污水-管线", 2, "DASHED", 70),
    Layer("给排-污水-立管", 2, weight=70),
    Layer("给排-污水-立管编号", 7),
    Layer("给排-污水-管径文字", 7, off=True),
    Layer("给排-废水-管线", 40, "DASHED", 70, frozen=True, locked=True),
    Layer("给排-雨水-立管", 5, weight=70, off=True),
    Layer("给排-雨水-立管编号", 7, off=True),
    Layer("给排-消火栓-管线", 1, weight=50, off=True, locked=True),
    Layer("给排-消火栓", 1, weight=35, locked=True),
    Layer("公用-图框", 7, weight=50),
    Layer("公用-视口", 8, plots=False),
]


class Plan:
    """Adds entities to a drawing."""

    def __init__(self, drawing):
        self.drawing = drawing

    def add(self, kind, layer, *data, **options):
        self.drawing.entities.append(Entity(kind, layer, data, **options))

    def lines(self, layer, *points, **options):
        for start, end in zip(points, points[1:]):
            self.add("LINE", layer, start, end, **options)

    def path(self, layer, points, closed=False, **options):
        self.add("PATH", layer, points, closed, **options)

    def text(self, layer, at, text, height=300, rotation=0, **options):
        self.add("TEXT", layer, at, height, text, rotation, **options)

    def insert(self, layer, block, at, rotation=0, **options):
        self.add("INSERT", layer, block, at, rotation, **options)


def entity_type(name):
    """The mark that tells what an ordinary entity stands for."""
    return [(1001, "PWX-ENT-TYPE"), (1000, name)]


def serial(pipe, building="1#楼"):
    return [(1001, "PIPE-SERIAL"), (1000, pipe), (1001, "BUILDING-SERIAL"), (1000, building)]


def foreign():
    """What another program keeps on an entity: every kind of item, none of it ours to touch."""
    return [(1001, "SURVEY_NOTES"), (1000, "复核 2019-04-11"), (1002, "{"), (1070, 3), (1071, 100000), (1040, 1.25),
            (1010, 1200.0), (1020, 3400.0), (1030, 0.0), (1005, "0"), (1002, "}")]


def add_blocks(drawing):
    basin = drawing.block("洗脸盆")
    basin += [Entity("PATH", "0", ([(-280, 0), (280, 0), (280, -420), (-280, -420)], True)),
              Entity("CIRCLE", "0", ((0, -220), 150)), Entity("CIRCLE", "0", ((0, -60), 25))]
    toilet = drawing.block("坐便器")
    toilet += [Entity("PATH", "0", ([(-200, 0), (200, 0), (200, -180), (-200, -180)], True)),
               Entity("ARC", "0", ((0, -380), 200, 180, 360)), Entity("LINE", "0", ((-200, -380), (-200, -180))),
               Entity("LINE", "0", ((200, -380), (200, -180)))]
    sink = drawing.block("洗涤盆")
    sink += [Entity("PATH", "0", ([(-450, 0), (450, 0), (450, -500), (-450, -500)], True)),
             Entity("PATH", "0", ([(-400, -80), (-30, -80), (-30, -450), (-400, -450)], True)),
             Entity("CIRCLE", "0", ((-215, -265), 40))]
    drain = drawing.block("地漏")
    drain += [Entity("CIRCLE", "0", ((0, 0), 75)), Entity("LINE", "0", ((-53, -53), (53, 53))),
              Entity("LINE", "0", ((-53, 53), (53, -53)))]
    valve = drawing.block("闸阀")
    valve += [Entity("PATH", "0", ([(-120, 60), (-120, -60), (120, 60), (120, -60)], True)),
              Entity("LINE", "0", ((0, -60), (0, 60)))]
    meter = drawing.block("水表")
    meter += [Entity("PATH", "0", ([(-150, 75), (150, 75), (150, -75), (-150, -75)], True)),
              Entity("PATH", "0", ([(-150, -75), (150, 0), (-150, 75)], False))]
    hydrant = drawing.block("消火栓箱")
    hydrant += [Entity("PATH", "0", ([(-350, 0), (350, 0), (350, -240), (-350, -240)], True)),
                Entity("LINE", "0", ((-350, 0), (350, -240)))]


def add_building(plan):
    for number, x in enumerate(AXES_X):
        plan.lines("建筑-轴线", (x, -1500), (x, AXES_Y[-1] + 1500))
        plan.add("CIRCLE", "建筑-轴线", (x, -1900), 400)
        plan.text("建筑-轴线", (x - 100, -2050), str(number + 1))
    for letter, y in zip("ABC", AXES_Y):
        plan.lines("建筑-轴线", (-1500, y), (AXES_X[-1] + 1500, y))
        plan.add("CIRCLE", "建筑-轴线", (-1900, y), 400)
        plan.text("建筑-轴线", (-2000, y - 150), letter)
    half = WALL // 2
    x2, y2 = AXES_X[-1], AXES_Y[-1]
    plan.path("建筑-墙", [(-half, -half), (x2 + half, -half), (x2 + half, y2 + half), (-half, y2 + half)], True,
              comment="outer walls")
    for x0, x1 in ((half, 4200 - half), (4200 + half, 7800 - half), (7800 + half, x2 - half)):
        for y0, y1 in ((half, 4800 - half), (4800 + half, y2 - half)):
            plan.path("建筑-墙", [(x0, y0), (x1, y0), (x1, y1), (x0, y1)], True)
    for x, y, angle in ((5600, 0, 0), (2600, 4800, 180), (9000, 4800, 180), (4200, 1500, 90), (7800, 1500, 90)):
        plan.lines("建筑-门窗", (x, y), (x, y + 900))
        plan.add("ARC", "建筑-门窗", (x, y), 900, angle % 360, angle + 90)
    for x in (1200, 9600):
        plan.path("建筑-门窗", [(x, -half), (x + 1500, -half), (x + 1500, half), (x, half)], True)
    rooms = ("客房", (1500, 2400)), ("门厅", (5500, 2400)), ("厨房", (9300, 2400)), ("卫生间一", (1300, 6600)), \
        ("走道", (5500, 6600)), ("卫生间二", (9000, 6600))
    for name, at in rooms:
        plan.text("建筑-房间名", at, name, 350)
    for x0, x1 in zip(AXES_X, AXES_X[1:]):
        plan.lines("建筑-尺寸", (x0, -1200), (x1, -1200))
        plan.text("建筑-尺寸", ((x0 + x1) / 2 - 300, -1100), str(x1 - x0), 250)


def add_fixtures(plan):
    top = AXES_Y[-1] - WALL // 2
    for x, block, mark in ((1000, "洗脸盆", "洗脸盆"), (2400, "坐便器", "坐便器"), (9200, "洗脸盆", "洗脸盆"),
                           (10600, "坐便器", "坐便器")):
        plan.insert("给排-洁具", block, (x, top), xdata=entity_type(mark))
    plan.insert("给排-洁具", "洗涤盆", (AXES_X[-1] - WALL // 2, 3600), 270, xdata=entity_type("洗涤盆"))
    plan.insert("给排-地漏", "地漏", (1700, 6000), xdata=entity_type("地漏"))
    plan.insert("给排-地漏", "地漏", (10000, 6000), xdata=entity_type("地漏"))
    # A bath the client struck out; hidden, not erased.
    plan.path("给排-洁具", [(3000, 5200), (3700, 5200), (3700, 6800), (3000, 6800)], True, hidden=True,
              comment="bath, struck out")


def add_supply(plan):
    plan.lines("给排-生活给水-管线", (6000, -3000), (6000, 5000), (6000, 7900), (11500, 7900), xdata=serial("J-1"),
               comment="cold water: entry, riser, branch to the east")
    plan.lines("给排-生活给水-管线", (6000, 7900), (800, 7900), xdata=serial("J-2"))
    plan.lines("给排-生活给水-管线", (11500, 7900), (11500, 3600), xdata=serial("J-3"))
    for x in (1000, 2400, 9200, 10600):
        plan.lines("给排-生活给水-管线", (x, 7900), (x, 8200))
    plan.add("CIRCLE", "给排-生活给水-立管", (6000, 5000), 60, xdata=entity_type("立管") + serial("JL-1"))
    plan.text("给排-生活给水-立管编号", (6100, 5100), "JL-1")
    plan.insert("给排-生活给水-阀门", "水表", (6000, -2200), 90, xdata=entity_type("水表"))
    plan.insert("给排-生活给水-阀门", "闸阀", (6000, -1600), 90, xdata=entity_type("阀门"))
    plan.insert("给排-生活给水-阀门", "闸阀", (5400, 7900), xdata=entity_type("阀门"))
    for at, size in (((6100, -800), "DN50"), ((7000, 7950), "DN32"), ((3400, 7950), "DN25"), ((11550, 5000), "DN20")):
        plan.text("给排-生活给水-管径文字", at, size, 250)
    plan.lines("给排-热水给水-管线", (6300, 5000), (6300, 7700), (11300, 7700), (11300, 3800), xdata=serial("RJ-1"))
    plan.lines("给排-热水给水-管线", (6300, 7700), (900, 7700), xdata=serial("RJ-2"))
    plan.add("CIRCLE", "给排-热水给水-立管", (6300, 5000), 60, xdata=entity_type("立管") + serial("RJL-1"))
    plan.text("给排-热水给水-立管编号", (6400, 4700), "RJL-1")
    for at, size in (((7000, 7450), "DN25"), ((3400, 7450), "DN20")):
        plan.text("给排-热水给水-管径文字", at, size, 250)


def add_drainage(plan):
    plan.lines("给排-污水-管线", (2400, 8000), (2400, 7000), (400, 7000), (400, 9900), xdata=serial("W-1"),
               comment="foul drain to the yard")
    plan.lines("给排-污水-管线", (10600, 8000), (10600, 7000), (11800, 7000), (11800, 9900), xdata=serial("W-2"))
    plan.add("CIRCLE", "给排-污水-立管", (400, 7000), 100, xdata=entity_type("立管") + serial("WL-1"))
    plan.text("给排-污水-立管编号", (-500, 7200), "WL-1")
    plan.add("CIRCLE", "给排-污水-立管", (11800, 7000), 100, xdata=entity_type("立管") + serial("WL-2"))
    plan.text("给排-污水-立管编号", (12200, 7200), "WL-2")
    for at, size in (((500, 8900), "dn110"), ((11000, 8900), "dn110")):
        plan.text("给排-污水-管径文字", at, size, 250)
    plan.lines("给排-废水-管线", (1000, 8000), (1000, 6000), (1700, 6000), xdata=serial("F-1"))
    plan.lines("给排-废水-管线", (9200, 8000), (9200, 6000), (10000, 6000), xdata=serial("F-2"))
    plan.lines("给排-废水-管线", (11400, 3385), (12600, 3385), xdata=serial("F-3"))
    for x, y in ((-300, -300), (12300, -300), (-300, 8700), (12300, 8700)):
        plan.add("CIRCLE", "给排-雨水-立管", (x, y), 80, xdata=entity_type("立管"))
    plan.text("给排-雨水-立管编号", (12450, -600), "YL-2")


def add_fire(plan):
    plan.lines("给排-消火栓-管线", (4500, -3000), (4500, 1200), (4800, 1200), xdata=serial("XH-1"))
    plan.insert("给排-消火栓", "消火栓箱", (4900, 1400), xdata=entity_type("消火栓"))
    # Kept for the record: the place of the hydrant before the revision.
    plan.insert("给排-消火栓", "消火栓箱", (7300, 1400), hidden=True, xdata=entity_type("消火栓"))


def add_sheet(plan):
    plan.add("VIEWPORT", "公用-视口", 1, (210, 148.5), (480, 330), (210, 148.5), 330, (), space=PAPER)
    plan.add("VIEWPORT", "公用-视口", 2, (200, 160), (360, 240), (6000, 3600), 16000, ("建筑-尺寸", "建筑-房间名"), space=PAPER)
    plan.path("公用-图框", [(25, 5), (415, 5), (415, 292), (25, 292)], True, space=PAPER)
    plan.path("公用-图框", [(235, 5), (415, 5), (415, 45), (235, 45)], True, space=PAPER)
    plan.text("公用-图框", (240, 32), "一层给排水平面图", 7, space=PAPER)
    plan.text("公用-图框", (240, 20), "比例 1:100", 5, space=PAPER)
    plan.text("公用-图框", (240, 9), "客栈 𠮷宅 水施-02", 5, space=PAPER)


def build(modern):
    comments = ["Example drawing of qrs_pipeSystem: ground floor of a small guest house, made by make_building.py"]
    drawing = Drawing("给排-生活给水-管线", ((-2500, -3200), (14000, 10200)), comments)
    drawing.layers = LAYERS
    drawing.linetypes["CENTER"] = ("Center ____ _ ____ _ ____", [31.75, -6.35, 6.35, -6.35])
    drawing.linetypes["DASHED"] = ("Dashed __ __ __ __ __", [12.7, -6.35])
    drawing.applications = ["PWX-ENT-TYPE", "PIPE-SERIAL", "BUILDING-SERIAL", "SURVEY_NOTES"]
    add_blocks(drawing)
    plan = Plan(drawing)
    for add in (add_building, add_fixtures, add_supply, add_drainage, add_fire, add_sheet):
        add(plan)
    drawing.entities[0].xdata += foreign()
    if not modern:
        # The one character that code page 936 does not have.
        for entity in drawing.entities:
            if entity.kind == "TEXT":
                at, height, text, rotation = entity.data
                entity.data = at, height, text.replace("𠮷", "\\U+D842\\U+DFB7"), rotation
    return drawing


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(here)
    write(build(True), "AC1024", os.path.join(folder, "building.dxf"))
    write(build(False), "AC1009", os.path.join(folder, "building-r12.dxf"))


if __name__ == "__main__":
    main()
