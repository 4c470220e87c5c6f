#!/usr/bin/python3
"""What another program's reader makes of the pictures that pipes carry: it reads each kind, and finds it where it is picked here.

    proxies.py CONSOLE    ends with 77 where the reader, ezdxf, is not there
"""
import logging
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    import ezdxf
    from ezdxf import bbox
except ImportError:
    print("no ezdxf")
    sys.exit(77)

logging.disable(logging.WARNING)  # of fonts that it does not find
FAR = 100000.0  # of two points, with which the extents of an entity are asked for corner by corner
HEIGHT = 10.0  # of texts
TEXT_WIDTHS = 2.5  # how far the estimated width of a text may be off, in heights
KINDS = 18  # of attachments
POINTS = {"F1": -FAR, "F2": FAR}


def tags(text):
    return "".join("%3s\n%s\n" % tuple(tag.split("=", 1)) for tag in text.split(";") if tag)


def entities():
    """By handle whether it shows a text, and the tags."""
    rows = ["TDbPipe;70=0;10=1;20=2;11=31;21=42;43=0.7", "TDbPipe;70=1;10=0;20=0;11=20;21=0;42=0.5",
            "TDbPipe;70=1;10=0;20=0;11=20;21=0;42=-1.5", "TDbPipe;10=5;20=6;30=0;11=5;21=6;31=3000"]
    rows += ["TDbPipeNode;10=7;20=8;70=%d;40=6" % kind for kind in range(3)]
    rows += ["TDbPipeAttachment;%s10=3;20=4;70=%d;40=%s;50=%d" % ("1=DN50;" if kind in (1, 15, 16) else "", kind, HEIGHT, angle)
             for kind in range(KINDS) for angle in (0, 90)]
    for number, row in enumerate(rows):
        kind, own = row.split(";", 1)
        marks = "100=TDbPipePrototype;1=J;100=TDbPipe;" if kind == "TDbPipe" else "100=%s;" % kind
        name = "QRS_PIPE" + kind[len("TDbPipe"):].upper()
        handle = "%X" % (0x100 + number)
        yield handle, "=DN50" in row, "0=%s;5=%s;330=1F;100=AcDbEntity;8=PIPE;%s%s;" % (name, handle, marks, own)


def drawing():
    points = "".join("0=POINT;5=%s;330=1F;100=AcDbEntity;8=0;100=AcDbPoint;10=%s;20=%s;" % (handle, at, at)
                     for handle, at in POINTS.items())
    layers = "".join("0=LAYER;5=%s;330=2;100=AcDbSymbolTableRecord;100=AcDbLayerTableRecord;2=%s;70=0;62=3;6=Continuous;370=25;" % layer
                     for layer in (("10", "0"), ("11", "PIPE")))
    return tags("0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;9=$HANDSEED;5=FFF;0=ENDSEC;0=SECTION;2=TABLES;"
                "0=TABLE;2=LAYER;5=2;330=0;100=AcDbSymbolTable;70=2;" + layers + "0=ENDTAB;0=ENDSEC;0=SECTION;2=ENTITIES;" +
                "".join(entity for _, _, entity in entities()) + points + "0=ENDSEC;0=EOF")


def corners_here(console, folder):
    """Low and high corners of the entities: the middle between each and a far point is asked for."""
    ask = "ZOOM\nObject\n(handent \"%s\")\n(handent \"%s\")\n\nVIEWCTR\n"
    script = "".join(ask % (handle, point) for handle, _, _ in entities() for point in ("F2", "F1"))
    (folder / "ask.scr").write_text("PICTURES\n" + script, encoding="utf-8")
    ran = subprocess.run([console, "--settings", "settings.ini", "--language", "en", "-s", "ask.scr", "-o", "drawn.dxf", "plain.dxf"],
                         cwd=folder, capture_output=True, timeout=60)
    told = [line.split()[2].split(",") for line in ran.stdout.decode().splitlines() if line.startswith("VIEWCTR = ")]
    middles = [(float(x), float(y)) for x, y, _ in told]
    if ran.returncode != 0 or len(middles) != 2 * len(list(entities())):
        raise RuntimeError(ran.stderr.decode() + ran.stdout.decode()[:2000])
    return {handle: [2 * low[0] - FAR, 2 * low[1] - FAR, 2 * high[0] + FAR, 2 * high[1] + FAR]
            for (handle, _, _), low, high in zip(entities(), middles[::2], middles[1::2])}


def main():
    faults = []
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        (folder / "plain.dxf").write_text(drawing(), encoding="utf-8")
        here = corners_here(str(Path(sys.argv[1]).resolve()), folder)
        read = ezdxf.readfile(folder / "drawn.dxf")
        for handle, has_text, text in entities():
            shapes = list(read.entitydb[handle].virtual_entities())
            box = bbox.extents(shapes)
            there = [box.extmin.x, box.extmin.y, box.extmax.x, box.extmax.y] if box.has_data else []
            within = HEIGHT * TEXT_WIDTHS if has_text else 1e-3
            if len(there) != 4 or any(abs(a - b) > within for a, b in zip(here[handle], there)):
                faults.append("%s: here %s, there %s: %s" % (text, here[handle], there, [shape.dxftype() for shape in shapes]))
            if has_text and not any(shape.dxftype() == "TEXT" and shape.dxf.text == "DN50" for shape in shapes):
                faults.append("%s: no text" % text)
    print("\n".join(faults) if faults else "%d pictures are read" % len(here))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
