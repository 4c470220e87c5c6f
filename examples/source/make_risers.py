#!/usr/bin/env python3
"""Makes risers.dxf: two houses with their risers, and the drain between them, as entities of pipes and nodes, in mm.

    examples/source/make_risers.py [FOLDER]

writes into the folder, by default examples/. Some risers bear serials already, the others wait for theirs; no node of
the drain is numbered. Only the standard library is needed. The same input gives the same bytes.
"""

import os
import sys

sys.dont_write_bytecode = True

from dxfwriter import Drawing, Entity, Layer, write

STOREY = 3000
HOUSES = (("1#楼", 0), ("2#楼", 20000))

# Of each house, by pipe system: the serials of its risers from west to east; None waits for one.
RISERS = {
    "1#楼": [("生活给水", ["JL-1", "JL-2", None]), ("污水", ["WL-09", None, None]), ("热水给水", [None, None])],
    "2#楼": [("生活给水", ["1", "3", None]), ("污水", [None, "WL-A"]), ("雨水", ["YL-1", None])],
}
# What stands between the houses belongs to neither.
GARDEN = [("消火栓", ["XHL-99", None])]

# The drain: wells along the houses, a joint where a branch comes in, the septic tank as equipment.
DRAIN = [("W1", 1500, 1), ("W2", 9500, 1), ("J1", 14000, 0), ("W3", 21500, 1), ("tank", 30000, 2)]
DRAIN_Y = -6000


def serials(pipe, building):
    items = []
    if pipe:
        items += [(1001, "PIPE-SERIAL"), (1000, pipe)]
    if building:
        items += [(1001, "BUILDING-SERIAL"), (1000, building)]
    return items


def add_risers(drawing, groups, building, x, y):
    for system, names in groups:
        for name in names:
            layer = "给排-%s-立管" % system
            drawing.entities.append(Entity("PIPE", layer, ((x, y, 0), (x, y, 6 * STOREY), system, (None, None)),
                                           xdata=serials(name, building)))
            x += 600
        x += 900


def add_drain(drawing):
    layer = "给排-污水-管线"
    for name, x, kind in DRAIN:
        drawing.entities.append(Entity("NODE", layer, ((x, DRAIN_Y, -1200), kind), name=name))
    for (start, x0, _), (end, x1, _) in zip(DRAIN, DRAIN[1:]):
        drawing.entities.append(Entity("PIPE", layer, ((x0, DRAIN_Y, -1200), (x1, DRAIN_Y, -1200), "污水", (start, end))))
    # A branch from a yard drain, a run of its own.
    drawing.entities.append(Entity("NODE", layer, ((14000, -3000, -1000), 1), name="yard"))
    branch = (14000, -3000, -1000), (14000, DRAIN_Y, -1200)
    drawing.entities.append(Entity("PIPE", layer, (*branch, "污水", ("yard", "J1"))))


def build():
    comments = ["Example drawing of qrs_pipeSystem: risers of two houses and their drain, made by make_risers.py"]
    drawing = Drawing("0", ((-2000, -8000), (34000, 12000)), comments)
    drawing.scale = 100
    systems = sorted({system for groups in list(RISERS.values()) + [GARDEN] for system, _ in groups})
    drawing.layers = [Layer("0"), Layer("建筑-墙", 9, weight=25)] + [Layer("给排-%s-立管" % name, 3) for name in systems]
    drawing.layers.append(Layer("给排-污水-管线", 2, weight=70))
    drawing.applications = ["PIPE-SERIAL", "BUILDING-SERIAL"]
    for building, x in HOUSES:
        drawing.entities.append(Entity("PATH", "建筑-墙", ([(x, 0), (x + 12000, 0), (x + 12000, 9000), (x, 9000)], True)))
        add_risers(drawing, RISERS[building], building, x + 600, 8400)
    add_risers(drawing, GARDEN, None, 15000, 4000)
    add_drain(drawing)
    return drawing


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(here)
    write(build(), "AC1024", os.path.join(folder, "risers.dxf"))


if __name__ == "__main__":
    main()
