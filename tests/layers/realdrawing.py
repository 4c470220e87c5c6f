#!/usr/bin/env python3
"""Runs every layer command over a real drawing: what it prints and which tags it changes must be as realdrawing.txt tells,
the auditor must find nothing new in the file, and U must give the file back byte for byte.

    realdrawing.py CONSOLE CORPUS            checks; ends with 77 when the drawing or the auditor is not there
    realdrawing.py CONSOLE CORPUS --update   writes what the commands print and change

A block of realdrawing.txt is a script, after "--- prints" its transcript, and after "--- changes" what `--compare` tells,
without handles and counted. A script that ends with "U" again and again takes back what it did.
"""
import collections
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
BLOCKS = HERE / "realdrawing.txt"
DRAWING = "api-cw750-details.dxf"
SKIPPED = 77


def run(folder, *arguments):
    return subprocess.run([str(argument) for argument in arguments], cwd=folder, capture_output=True, timeout=300,
                          env={"PATH": "/usr/bin:/bin", "TMPDIR": str(folder), "HOME": str(folder)})


def run_script(console, folder, script, output):
    (folder / "script.scr").write_text(script, encoding="utf-8")
    ran = run(folder, console, "--settings", "settings.ini", "--system", "system", "-s", "script.scr", "-o", output,
              "drawing.dxf")
    # What a command refuses stands there, too.
    unexpected = [line for line in ran.stderr.decode().splitlines() if not line.startswith("qrsconsole: script.scr:")]
    if ran.returncode != 0 or unexpected:
        raise RuntimeError(f"exit code {ran.returncode}: {ran.stderr.decode()}{ran.stdout.decode()}")
    (folder / "settings.ini").unlink(missing_ok=True)
    return ran.stdout.decode()


def changes(console, folder, after):
    told = run(folder, console, "--compare", "drawing.dxf", after).stdout.decode()
    counted = collections.Counter(re.sub(r"^(\S+) [0-9A-F]+(?=[ :])", r"\1", line) for line in told.splitlines())
    return "".join(f"{number} x {line}\n" for line, number in sorted(counted.items()))


def run_block(console, folder, number, script):
    """The transcript and the changes; the drawing before and after are left for the auditor."""
    after = f"{number:02}.after.dxf"
    prints = run_script(console, folder, script, after)
    told = changes(console, folder, after)
    # States of layers leave nothing for the auditor to find.
    if any(" x LAYER " not in line for line in told.splitlines()):
        os.link(folder / "drawing.dxf", folder / f"{number:02}.before.dxf")  # the auditor reads it once
    else:
        (folder / after).unlink()
    if told:
        steps = sum(line.startswith("Command: ") for line in prints.splitlines())
        run_script(console, folder, script + "U\n" * steps, "undone.dxf")
        if (folder / "undone.dxf").read_bytes() != (folder / "drawing.dxf").read_bytes():
            raise RuntimeError("U does not give the file back:\n" + changes(console, folder, "undone.dxf"))
    prints = prints.replace(str(folder).replace("/", "\\"), "FOLDER")
    return script + "--- prints\n" + prints + ("" if prints.endswith("\n") else "\n") + "--- changes\n" + told


def main():
    console, corpus = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    drawing = next(corpus.rglob(DRAWING), None) if corpus.is_dir() else None
    if drawing is None or run(HERE, "/usr/bin/python3", "-c", "import ezdxf").returncode != 0:
        print("no corpus, or no auditor")
        return SKIPPED
    faults, made = [], []
    blocks = BLOCKS.read_text(encoding="utf-8").split("=====\n")
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        shutil.copy(drawing, folder / "drawing.dxf")
        shutil.copytree(HERE.parents[1] / "data", folder / "system")
        for number, block in enumerate(blocks):
            try:
                made.append(run_block(console, folder, number, block.split("--- prints\n")[0]))
            except RuntimeError as error:
                faults.append(f"{block.splitlines()[0]}: {error}")
                made.append(block)
        audited = run(folder, "/usr/bin/python3", HERE.parent / "standard/drawings.py", "compare", folder)
        faults += audited.stdout.decode().splitlines() + audited.stderr.decode().splitlines()
    if "--update" in sys.argv[3:]:
        BLOCKS.write_text("=====\n".join(made), encoding="utf-8")
    for block, is_now in zip(blocks, made):
        if block != is_now and "--update" not in sys.argv[3:]:
            old, new = block.split("\n"), is_now.split("\n")
            line = next((i for i, pair in enumerate(zip(old, new)) if pair[0] != pair[1]), min(len(old), len(new)))
            faults.append(f"{old[0]}: expected {old[line:line + 1]}, is {new[line:line + 1]}")
    print("\n".join(faults) if faults else f"{len(blocks)} scripts: all as expected")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
