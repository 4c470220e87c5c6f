#!/usr/bin/env python3
"""Runs examples/batch/over-drawings over 200 drawings, one of them damaged and one whose run is killed; then goes on.

    parallel_test.py CONSOLE
"""
import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
COUNT, DAMAGED, KILLED = 200, 57, 113
DRAWING = "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\nrun {}\n10\n1.0\n20\n2.0\n0\nENDSEC\n0\nEOF\n"
# Counts the runs; kills the one of that drawing while "heal" is not there.
PROGRAM = """#!/bin/sh
for last; do :; done
echo "$last" >>runs.txt
case $last in
    */{killed}.dxf) [ -e heal ] || {{ "{console}" "$@" & kill -9 $!; wait $!; kill -9 $$; }} ;;
esac
exec "{console}" "$@"
"""


def run(folder, *options):
    return subprocess.run([ROOT / "examples/batch/over-drawings", "-j", "4", *options, "list.txt", "out", "--no-module",
                           "-e", "-LAYER", "-e", "N", "-e", "it's new", "-e", ""], cwd=folder, capture_output=True,
                          env=dict(os.environ, QRSCONSOLE=str(folder / "program"), HOME=str(folder), LC_ALL="C.UTF-8"), timeout=300)


def check(console, folder):
    program = folder / "program"
    program.write_text(PROGRAM.format(killed=KILLED, console=console))
    program.chmod(0o755)
    names = [f"{'楼 A' if number % 2 else 'b'}/{number}.dxf" for number in range(COUNT)]
    for number, name in enumerate(names):
        (folder / name).parent.mkdir(exist_ok=True)
        (folder / name).write_text(DRAWING.format(number)[:30 if number == DAMAGED else None])
    (folder / "list.txt").write_text("\n".join(names) + "\n", encoding="utf-8")
    results = folder / "out/drawings"

    first = run(folder)
    assert first.returncode == 1 and b"2 failed" in first.stderr, first
    assert not (results / names[DAMAGED]).exists()
    assert sum(1 for name in names if (results / name).exists()) in (COUNT - 2, COUNT - 1)
    again = run(folder)
    assert len((folder / "runs.txt").read_text().splitlines()) == COUNT, "what is in the job log was run again"
    (folder / "heal").touch()
    healed = run(folder, "-r")
    assert healed.returncode == 1 and b"1 failed" in healed.stderr, healed
    runs = (folder / "runs.txt").read_text(encoding="utf-8").splitlines()
    assert sorted(runs[COUNT:]) == sorted([names[DAMAGED], names[KILLED]]), runs[COUNT:]
    assert "it's new" in (results / names[KILLED]).read_text(encoding="utf-8")
    codes = {}
    for line in (folder / "out/report.jsonl").read_text(encoding="utf-8").splitlines():
        entry = json.loads(line)
        codes[entry["drawing"]] = entry["exitCode"]
    assert codes == {name: 3 if number == DAMAGED else 0 for number, name in enumerate(names)}, codes
    return again.returncode


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as place:
        check(Path(sys.argv[1]).resolve(), Path(place))
