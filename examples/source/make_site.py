#!/usr/bin/env python3
"""Makes site.dxf: a water main and a drain in front of a house, as drawn with an older standard, in mm.

    examples/source/make_site.py [FOLDER]

writes into the folder, by default examples/. The pipes bear old system names, layers and no width; objects of the
architect and of the plumber are tagged; fences and cables are lines with texts in them. Only the standard library is
needed. The same input gives the same bytes.
"""

import os
import sys

sys.dont_write_bytecode = True

from dxfwriter import Drawing, Entity, Layer, write

LAYERS = [
    Layer("0"),
    Layer("总图-房屋", 9, weight=35),
    Layer("总图-道路", 8, locked=True),
    Layer("总图-围墙", 3, "WALL"),
    Layer("电-电缆", 1, "CABLE"),
    Layer("旧-给水", 4),
    Layer("旧-给水文字", 4),
    Layer("旧-污水", 6),
    Layer("旧-消防", 1, locked=True),
    Layer("总图-阀门", 2),
    Layer("BIM-导入", 7),
]


def tag(discipline):
    """What tells which discipline an object belongs to."""
    return [(1001, "LAYER-TAG"), (1000, discipline)]


def add_ground(add):
    add("PATH", "总图-房屋", [(0, 0), (24000, 0), (24000, 10000), (0, 10000)], True, xdata=tag("建筑"))
    add("PATH", "总图-房屋", [(9000, -1500), (15000, -1500), (15000, 0), (9000, 0)], True, xdata=tag("建筑"))
    add("TEXT", "总图-房屋", (10000, 4500), 700, "综合楼", 0, xdata=tag("建筑"))
    add("LINE", "总图-道路", (-4000, -9000), (30000, -9000), xdata=tag("建筑"))
    add("LINE", "总图-道路", (-4000, -13000), (30000, -13000))
    add("PATH", "总图-围墙", [(-3000, -8000), (-3000, 12000), (29000, 12000)], False)
    add("LINE", "电-电缆", (-3000, -7500), (29000, -7500))
    add("CIRCLE", "总图-房屋", (27000, 6000), 800, xdata=tag("给排水"))


def add_pipes(add):
    main = "旧-给水"
    add("ATTACHMENT", "旧-给水文字", (4000, -4700), 1, name="DN100")
    add("ATTACHMENT", "旧-给水文字", (8000, -5000), 2, name="arrow")
    add("PIPE", main, (-2000, -5000, -900), (12000, -5000, -900), "给水", (None, None), "DN100", "arrow")
    add("PIPE", main, (12000, -5000, -900), (27000, -5000, -900), "给水", (None, None))
    add("PIPE", main, (3000, -5000, -900), (3000, 0, -900), "给水", (None, None))
    add("PIPE", main, (3000, 0, -900), (3000, 0, 3000), "给水", (None, None))
    add("NODE", "旧-污水", (6000, -3000, -1500), 1, name="W1")
    add("NODE", "旧-污水", (20000, -3000, -1700), 1, name="W2")
    add("PIPE", "旧-污水", (6000, -3000, -1500), (20000, -3000, -1700), "污水", ("W1", "W2"))
    add("PIPE", "旧-污水", (6000, 0, -1400), (6000, -3000, -1500), "污水", (None, "W1"))
    add("PIPE", "旧-消防", (-2000, -6500, -900), (27000, -6500, -900), "消火栓", (None, None))
    # Brought over from a building model.
    add("PIPE", "BIM-导入", (16000, 2000, 3000), (22000, 2000, 3000), "BIM", (None, None))
    add("PIPE", "BIM-导入", (22000, 2000, 3000), (22000, 8000, 3000), "BIM", (None, None))


def add_valves(drawing, add):
    valve = drawing.block("阀门")
    valve.append(Entity("LINE", "0", ((-600, 0), (600, 0))))
    add("INSERT", "总图-阀门", "阀门", (1000, -5000), 0)
    add("INSERT", "总图-阀门", "阀门", (3000, -2500), 90)
    # A better drawing of a valve, lying where the second reference shows the old one.
    add("PATH", "总图-阀门", [(2850, -2800), (3150, -2800), (2850, -2200), (3150, -2200)], True)
    add("CIRCLE", "总图-阀门", (3000, -2500), 60)


def build():
    comments = ["Example drawing of qrs_pipeSystem: pipes in front of a house, made by make_site.py"]
    drawing = Drawing("0", ((-5000, -14000), (31000, 13000)), comments)
    drawing.scale = 100
    drawing.linetypes["WALL"] = ("Wall ----X----X----", [9.0, (-4.0, "X", 2.0, -2.6, -1.0)])
    drawing.linetypes["CABLE"] = ("Cable ----10kV----10kV----", [12.0, (-9.0, "10kV", 2.5, -7.5, -1.25)])
    drawing.layers = LAYERS
    drawing.applications = ["LAYER-TAG"]

    def add(kind, layer, *data, **options):
        drawing.entities.append(Entity(kind, layer, data, **options))

    add_ground(add)
    add_pipes(add)
    add_valves(drawing, add)
    return drawing


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(here)
    write(build(), "AC1024", os.path.join(folder, "site.dxf"))


if __name__ == "__main__":
    main()
