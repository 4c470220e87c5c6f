#!/usr/bin/env python3
"""Makes estate.dxf: a plan that shows building.dxf, beside it, twice as an external reference, in mm.

    examples/source/make_estate.py [FOLDER]

writes into the folder, by default examples/. Only the standard library is needed. The same input gives the same bytes.
"""

import os
import sys

sys.dont_write_bytecode = True

from dxfwriter import Drawing, Entity, Layer, write
from make_building import LAYERS

REFERENCE = "building"


def build():
    comments = ["Example drawing of qrs_pipeSystem: an estate of two guest houses, made by make_estate.py"]
    drawing = Drawing("0", ((-10000, -12000), (50000, 16000)), comments)
    drawing.linetypes["CENTER"] = ("Center ____ _ ____ _ ____", [31.75, -6.35, 6.35, -6.35])
    drawing.linetypes["DASHED"] = ("Dashed __ __ __ __ __", [12.7, -6.35])
    drawing.layers = [Layer("0"), Layer("总图-道路", 8), Layer("总图-参照", 7), Layer("给排-生活给水-管线", 3, weight=50),
                      Layer("给排-生活给水-管径文字", 7)]
    # As the editor brings them: each of the referenced drawing's layers but "0", as it is there.
    drawing.layers += [Layer(f"{REFERENCE}|{layer.name}", layer.color, layer.linetype, layer.weight, layer.off,
                             layer.frozen, layer.locked, layer.plots, foreign=True) for layer in LAYERS if layer.name != "0"]
    drawing.block(REFERENCE)
    drawing.references[REFERENCE] = "building.dxf"

    def add(kind, layer, *data):
        drawing.entities.append(Entity(kind, layer, data))

    for x in (0, 24000):
        add("INSERT", "总图-参照", REFERENCE, (x, 0), 0)
        add("LINE", "给排-生活给水-管线", (x + 6000, -3000), (x + 6000, -6000))
    add("LINE", "给排-生活给水-管线", (-8000, -6000), (48000, -6000))
    add("TEXT", "给排-生活给水-管径文字", (14000, -5800), 500, "DN80", 0)
    add("LINE", "总图-道路", (-10000, -8000), (50000, -8000))
    add("LINE", "总图-道路", (-10000, -12000), (50000, -12000))
    return drawing


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(here)
    write(build(), "AC1024", os.path.join(folder, "estate.dxf"))


if __name__ == "__main__":
    main()
