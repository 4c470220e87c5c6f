#!/usr/bin/env python3
"""Draws drawings with the console and compares pictures; checks those of README and of the pages of tasks.

    pictures.py CONSOLE            compares these pictures with what is drawn now
    ... --update                   remakes them (scripts/pictures remakes all)

A machine's own fonts must not matter: only the two that scripts/setup installs are seen. What another version of them, or of
what draws, changes at the edges of letters passes; a pipe or a text that is missing, or has another colour, does not.
"""
import os
import re
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FOLDER = ROOT / "docs" / "pictures"
CHANNELS = 3
# What the leak checker is told, where it is built in.
CHECKER = {name: os.environ[name] for name in ("LSAN_OPTIONS",) if name in os.environ}
# Pictures are compared in squares of so many dots: how far the mean of a colour may be off in one, of 255.
SQUARE, TOLERANCE = 12, 10
FONTS = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <cachedir>{folder}</cachedir>
  <selectfont>
    <acceptfont>
      <pattern><patelt name="fullname"><string>DejaVu Sans</string></patelt></pattern>
      <pattern><patelt name="fullname"><string>WenQuanYi Micro Hei</string></patelt></pattern>
    </acceptfont>
    <rejectfont>
      <pattern><patelt name="scalable"><bool>true</bool></patelt></pattern>
      <pattern><patelt name="scalable"><bool>false</bool></patelt></pattern>
    </rejectfont>
  </selectfont>
</fontconfig>
"""

# The sheet of README, and what is cut out of it: left, bottom, right, top in millimetres.
RESIDENCE = "examples/residence.dxf"
SHEET = "水施-04 系统与大样"
DETAIL = (28, 57, 206, 198)
DIAGRAMS = (38, 205, 352, 404)
GREY = "examples/scripts/architecture-on-one-layer.scr"
# Of the pages of tasks: by name the lines that building.dxf is drawn after, and whether what they changed is shown.
TASKS = {
    "job-architecture-on-one-layer": (["-s", "examples/scripts/architecture-on-one-layer.scr"], False),
    "job-show-everything": (["-s", "examples/scripts/show-everything.scr"], False),
    "compared": (["-e", "EraseSelLayer", "-e", "1775,6000", "-e", "720,8000", "-e", "", "-e", "UnFrozenAllLayer"], True),
}
# How large the pictures of examples are.
PICTURE_SIZE = ("--paper", "297x210", "--dpi", "40")
# Of README: by name the script, what is cut out and the dots per inch.
README = {
    "residence-diagrams": (None, DIAGRAMS, 84),
    "residence-detail": (None, DETAIL, 64),
    "residence-detail-grey": (GREY, DETAIL, 64),
}


def only_fonts(folder):
    """What the environment needs so that a machine's own fonts do not matter."""
    file = Path(folder) / "fonts.conf"
    file.write_text(FONTS.format(folder=folder), encoding="utf-8")
    return {"FONTCONFIG_FILE": str(file)}


def plotted(console, drawing, *options, before=None):
    """The bytes of the PNG file that the console draws of a drawing, or of what changed since another state of it; beside it lies
    what it refers to."""
    with tempfile.TemporaryDirectory() as folder:
        picture = Path(folder) / "picture.png"
        what = ["--plot-compare", str(before), str(drawing), "-o", str(picture)] if before else ["--plot", str(picture), str(drawing)]
        ran = subprocess.run([console, "--settings", f"{folder}/settings.ini", *options, *what], capture_output=True, timeout=120,
                             env={"PATH": "/usr/bin:/bin", "HOME": folder, "TMPDIR": folder, **only_fonts(folder), **CHECKER})
        # Pipes that nobody knows are meant where none can be drawn; one name has a character that the fonts here lack.
        meant = (" cannot be drawn: ", " boxes: 1 (𠮷).")
        if ran.returncode != 0 or any(not any(text in line for text in meant) for line in ran.stderr.decode().splitlines()):
            raise RuntimeError(f"no picture of {drawing}: {ran.stderr.decode()}")
        return picture.read_bytes()


def unfiltered(kind, line, above):
    """A line of dots, whose bytes stand there as differences to what is left and above of them."""
    if kind == 0:
        return line
    if kind == 2:
        return bytearray((a + b) & 255 for a, b in zip(line, above))
    for i, value in enumerate(line):
        left = line[i - CHANNELS] if i >= CHANNELS else 0
        if kind == 1:
            line[i] = (value + left) & 255
        elif kind == 3:
            line[i] = (value + (left + above[i]) // 2) & 255
        else:
            up, corner = above[i], above[i - CHANNELS] if i >= CHANNELS else 0
            far = abs(up - corner), abs(left - corner), abs(left + up - 2 * corner)
            nearest = left if far[0] <= far[1] and far[0] <= far[2] else up if far[1] <= far[2] else corner
            line[i] = (value + nearest) & 255
    return line


def dots(png):
    """The lines of a PNG file of 24-bit colour, and how many dots each has."""
    size, data, at = None, b"", 8
    while at < len(png):
        length, kind = int.from_bytes(png[at:at + 4], "big"), png[at + 4:at + 8]
        body = png[at + 8:at + 8 + length]
        at += 12 + length
        if kind == b"IHDR":
            size = int.from_bytes(body[:4], "big"), int.from_bytes(body[4:8], "big")
            if body[8:] != bytes([8, 2, 0, 0, 0]):
                raise RuntimeError("not a PNG file of 24-bit colour")
        elif kind == b"IDAT":
            data += body
    data, step = zlib.decompress(data), size[0] * CHANNELS
    lines, above = [], bytearray(step)
    for start in range(0, len(data), step + 1):
        above = unfiltered(data[start], bytearray(data[start + 1:start + 1 + step]), above)
        lines.append(above)
    return size[0], lines


def squares(width, lines):
    """The mean of each colour in each square, in rows of squares."""
    step = SQUARE * CHANNELS
    for top in range(0, len(lines), SQUARE):
        part = lines[top:top + SQUARE]
        columns = [sum(column) for column in zip(*part)]
        yield [sum(columns[left + c:left + step:CHANNELS]) / len(part) / min(SQUARE, width - left // CHANNELS)
               for left in range(0, len(columns), step) for c in range(CHANNELS)]


def difference(shown, made):
    """What tells two pictures (PNG) apart; empty where nothing does that matters."""
    if shown == made:
        return ""
    (width, lines), (made_width, made_lines) = dots(shown), dots(made)
    if (width, len(lines)) != (made_width, len(made_lines)):
        return f"{width}x{len(lines)} dots, is {made_width}x{len(made_lines)}"
    far, x, y = max((abs(a - b), i // CHANNELS, j) for j, (old, new) in enumerate(
        zip(squares(width, lines), squares(width, made_lines))) for i, (a, b) in enumerate(zip(old, new)))
    return f"off by {far:.0f} of 255 at {x * SQUARE},{y * SQUARE}" if far > TOLERANCE else ""


def check_picture(name, made, update):
    """The faults of a committed picture; with update it is written instead."""
    file = FOLDER / f"{name}.png"
    shown = file.read_bytes() if file.exists() else b""
    if update:
        # One that differs only at the edges of letters stays.
        if not shown or difference(shown, made):
            file.parent.mkdir(exist_ok=True)
            file.write_bytes(made)
        return []
    fault = difference(shown, made) if shown else "is missing"
    return [f"{file.name}: {fault} (scripts/pictures remakes it)"] if fault else []


def cut_out(text, layout, area):
    """A drawing whose sheet is a part of it."""
    left, bottom, right, top = area
    setup = {44: right - left, 45: top - bottom, 48: left, 49: bottom, 140: right, 141: top}
    end = text.index(f"\r\n  1\r\n{layout}\r\n")
    start = text.rindex("AcDbPlotSettings", 0, end)
    values = text[start:end]
    for code, value in setup.items():
        values = re.sub(rf"(\r\n *{code}\r\n)[^\r]*", rf"\g<1>{value:.1f}", values, count=1)
    values = re.sub(r"(\r\n *74\r\n)[^\r]*", r"\g<1>4", values, count=1)
    return text[:start] + values + text[end:]


def drawn(console, name, change=lambda text: text):
    """A picture of README, of a changed drawing when wanted."""
    script, area, dots_per_inch = README[name]
    with tempfile.TemporaryDirectory() as folder:
        for file in (ROOT / "examples").glob("residence*.dxf"):
            text = file.read_bytes().decode("utf-8")
            if file.name == Path(RESIDENCE).name:
                text = change(cut_out(text, SHEET, area) if area else text)
            (Path(folder) / file.name).write_bytes(text.encode("utf-8"))
        return plotted(console, Path(folder) / Path(RESIDENCE).name, "--layout", SHEET, "--dpi", str(dots_per_inch),
                       *(["-s", str(ROOT / script)] if script else []))


def drawn_task(console, name):
    """A picture of a page of tasks."""
    lines, is_compared = TASKS[name]
    building = ROOT / "examples/building.dxf"
    with tempfile.TemporaryDirectory() as folder:
        after = Path(folder) / building.name
        subprocess.run([console, "--settings", f"{folder}/settings.ini", *lines, "-o", str(after), str(building)], cwd=ROOT, check=True,
                       capture_output=True, timeout=120)
        return plotted(console, after, *PICTURE_SIZE, before=building if is_compared else None)


def without_first(kind, value=""):
    """Takes the first entity of a kind with a value out of a drawing."""
    tag = r"(?!  0\r\n)[^\r]*\r\n[^\r]*\r\n"
    entity = re.compile(rf"  0\r\n{kind}\r\n(?:{tag})*?" + (rf"  1\r\n{value}\r\n(?:{tag})*" if value else rf"(?:{tag})*(?=  0\r\n)"))
    return lambda text: entity.sub("", text, count=1)


def check_comparison(console):
    """Whether a pipe and a text are missed."""
    whole = drawn(console, "residence-detail")
    return [f"a {kind} less is not seen" for kind, change in
            (("pipe", without_first("QRS_PIPE")), ("text", without_first("TEXT", "YL-1")))
            if not difference(whole, drawn(console, "residence-detail", change))]


def main():
    console, update = str(Path(sys.argv[1]).resolve()), "--update" in sys.argv[2:]
    faults = check_comparison(console)
    for name in [*README, *TASKS]:
        faults += check_picture(name, (drawn if name in README else drawn_task)(console, name), update)
    print("\n".join(faults) if faults else f"{len(README)} pictures of README and {len(TASKS)} of tasks show what is drawn")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
