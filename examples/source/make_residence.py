#!/usr/bin/env python3
"""Makes residence.dxf and residence-site.dxf: the standard storey of a residential building with the design of its water
supply and drainage, riser diagrams and two sheets; and the site with its drains, which the first one refers to. In mm.

    examples/source/make_residence.py [FOLDER [CONSOLE]]

writes into the folder, by default examples/. Only the standard library is needed; the pictures by which other programs show the
pipes are drawn by the console that is named (the one on the search path without it). The same input gives the same bytes.
"""

import os
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True

import residence_diagrams
import residence_fixtures
import residence_pipes
import residence_sheets
import residence_site
import residence_walls
from dxfwriter import Drawing, Layer, write
from residence_base import LINE_STYLE, STANDARD, STYLE, Pen
from residence_network import Network
from residence_walls import UNIT

BUILDING = "1#楼"
REFERENCE = "residence-site"


def follow_standard(drawing, foreign=()):
    """Gives the drawing the layers, linetypes and text styles of the standard that it uses; and those of a reference."""
    entities = drawing.entities + [one for block in drawing.blocks.values() for one in block]
    used = {entity.layer for entity in entities}
    hidden = [Layer("Defpoints", plots=False)] if "Defpoints" in used else []
    drawing.layers = [Layer("0")] + hidden + [layer for name, layer in STANDARD.layers.items() if name in used] + list(foreign)
    missing = used - {layer.name for layer in drawing.layers}
    if missing:
        raise SystemExit("not in the standard: " + ", ".join(sorted(missing)))
    linetypes = {layer.linetype for layer in drawing.layers}
    drawing.linetypes.update((name, row) for name, row in STANDARD.linetypes.items() if name in linetypes)
    styles = {entity.data[5] for entity in entities if entity.kind == "LABEL"} | {LINE_STYLE}
    drawing.styles.update((name, row) for name, row in STANDARD.styles.items() if name in styles)
    drawing.linetype_style, drawing.linetype_scale = LINE_STYLE, 50.0
    drawing.applications = ["PWX-ENT-TYPE", "PIPE-SERIAL", "BUILDING-SERIAL", "PIPE-DN", "PIPE-MATERIAL", "PIPE-SLOPE"]


def build_site():
    comments = ["Example drawing of qrs_pipeSystem: the site of a residential building, made by make_residence.py"]
    drawing = Drawing("0", ((-10000, -16000), (57000, 33000)), comments)
    drawing.scale = 500
    residence_site.add_site(Pen(drawing))
    follow_standard(drawing)
    return drawing


def build_residence(site):
    comments = ["Example drawing of qrs_pipeSystem: standard storey of a residential building, made by make_residence.py"]
    drawing = Drawing("0", ((-8000, -92000), (76000, 17000)), comments)
    drawing.scale = 100
    for scale in (100, 50):
        # 142: ticks in the place of arrows.
        drawing.dimension_styles["给排-%d" % scale] = (float(scale), 1.0, 3.0, STYLE, (142, 1.0))
    drawing.dimension_styles["Standard"] = drawing.dimension_styles["给排-100"]
    drawing.layouts = residence_sheets.SHEETS
    pen = Pen(drawing)
    residence_fixtures.add_blocks(drawing)
    residence_walls.add_architecture(pen)
    network = Network(pen, BUILDING)
    for number, (x, mirrored) in enumerate(residence_walls.flats()):
        residence_fixtures.add_flat(pen.frame(x, 0, mirrored))
        residence_pipes.add_flat(network, pen.frame(x, 0, mirrored), number == 0)
    for x in (0, UNIT):
        residence_fixtures.add_core(pen.frame(x))
        residence_pipes.add_core(network, pen.frame(x), x == 0)
    network.finish()
    residence_diagrams.add_title(pen, (UNIT, -8200), "1F–18F 标准层给排水平面图", "1:100")
    residence_diagrams.add_diagrams(pen.frame(*residence_sheets.DIAGRAMS))
    residence_diagrams.add_legend(pen.frame(*residence_sheets.LEGEND))
    residence_sheets.add_detail_marks(pen)
    residence_sheets.add_titles(pen)
    residence_sheets.add_first(drawing)
    residence_sheets.add_second(drawing)
    drawing.block(REFERENCE)
    drawing.references[REFERENCE] = REFERENCE + ".dxf"
    pen.add("INSERT", "给排-室外", REFERENCE, residence_sheets.SITE, 0)
    follow_standard(drawing, [Layer("%s|%s" % (REFERENCE, one.name), one.color, one.linetype, one.weight, plots=one.plots,
                                    foreign=True) for one in site.layers if one.name != "0"])
    return drawing


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(here)
    console = sys.argv[2] if len(sys.argv) > 2 else "qrsconsole"
    site = build_site()
    with tempfile.TemporaryDirectory() as bare:
        for name, drawing in ((REFERENCE, site), ("residence", build_residence(site))):
            file = name + ".dxf"
            write(drawing, "AC1024", os.path.join(bare, file))
            subprocess.run([console, "--settings", os.path.join(bare, "settings.ini"), "-e", "PICTURES",
                            "-o", os.path.join(folder, file), os.path.join(bare, file)], check=True, stdout=subprocess.DEVNULL)


if __name__ == "__main__":
    main()
