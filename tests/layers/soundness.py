#!/usr/bin/env python3
"""Runs every command that changes layers or what lies on them over real drawings: nothing in a drawing may point to what is
gone, the auditor must find nothing in it, corrected or not, that it did not find before, and U must give the file back
byte for byte.

    soundness.py CONSOLE CORPUS EXAMPLES   ends with 77 when the corpus or the auditor is not there

Of the corpus the drawings in KINDS are run, which hold one of every kind of reference; all of them when the environment
has QRS_ALL_DRAWINGS.
"""
import collections
import concurrent.futures
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
SKIPPED = 77
KINDS = (
    "acad_table_with_blk_ref.dxf",  # table with its block, its content below an extension dictionary
    "dimension_in_block.dxf",  # association of dimensions, in blocks
    "hatch_issues.dxf",  # boundaries of hatches, draw orders
    "mtext_framed_columns.dxf",  # frames and columns of texts by handles in extended data
    "mtext_complex_inline_codes.dxf",  # fields
    "sample binary.dxf",
    "sample.dxf",  # groups, images with reactors, layer states, body data
    "sample_AC1009_ascii.dxf",  # handles in extended data, names of layers in that of viewports
    "small_r14.dxf",
    "text_in_viewports.dxf",  # outlines and suns of viewports
    "uncommon.dxf",  # histories of solids, sun, light, sections, arc dimensions
    "viewport_frozen_layers.dxf",
    "wipeout.dxf",
    "xclip.dxf",  # clipped block references
)


def run(folder, *arguments):
    ran = subprocess.run([str(argument) for argument in arguments], cwd=folder, capture_output=True, timeout=600,
                         env={"PATH": "/usr/bin:/bin", "TMPDIR": str(folder), "HOME": str(folder)})
    return ran.returncode, ran.stdout.decode(), ran.stderr.decode()


def run_script(console, folder, lines, *arguments):
    (folder / "script.scr").write_text("\n".join(lines) + "\n", encoding="utf-8")
    code, printed, errors = run(folder, console, "--settings", "settings.ini", "--system", "system", "--keep-going",
                                "-s", "script.scr", *arguments)
    if code not in (0, 1):
        raise RuntimeError(f"exit code {code}: {errors}{printed[-300:]}")
    return printed


def damage(console, folder, drawing):
    """What the reader finds wrong, without the lines and counts, which move."""
    _, printed, _ = run(folder, console, "--info", drawing)
    found = printed.partition("\nwarnings\n")[2].splitlines()
    found = (re.sub(r"says [0-9]+ (\w+) and (\w+) [0-9]+", r"\1: \2", line) for line in found)
    return collections.Counter(re.sub(r"^ *(line|byte) [0-9]+(, |: )", "", line) for line in found)


def handles_by_layer(printed):
    """Of what LIST prints: one handle of each layer, fullest first."""
    listed = re.findall(r"^([0-9A-F]+) +\S+ +Layer: \"(.*)\"  Space", printed, re.MULTILINE)
    counts = collections.Counter(layer for _, layer in listed)
    one = {layer: handle for handle, layer in reversed(listed)}
    return [f'(handent "{one[layer]}")' for layer, _ in counts.most_common()]


def scripts(layers):
    """The answers of each command line, by a name."""
    yield "erase all", ["EraseSelLayer", "ALL", ""]
    yield "states", ["LockSelLayer", "ALL", "", "UnLockSelLayer", "", "OpenSelLayer", "ALL", "", "SetAllPipeLayOpen", "tbds",
                     "3", "tbds", "4", "Y", "yshf", "UnFrozenAllLayer", "gxgd", "ALL", "", "gxfz"]
    for number, layer in enumerate(layers[:2]):
        yield f"erase {number}", ["EraseSelLayer", layer, ""]
        yield f"freeze {number}", ["FrozenLayer", layer, "", "CloseSelLayer", layer, ""]
    if len(layers) > 1:
        yield "convert", ["ConvertLayer", layers[0], layers[1]]
        yield "merge", ["hbtc", layers[1], layers[0], "Y"]
        yield "merge back", ["hbtc", layers[0], layers[1], "Y"]


def spaces(console, folder):
    return ["1", "0"]


def check(console, system, drawing, folder):
    """Leaves pairs for the auditor; gives the faults."""
    folder.mkdir()
    shutil.copytree(system, folder / "system")
    shutil.copy(drawing, folder / "drawing.dxf")
    before = (folder / "drawing.dxf").read_bytes()
    known = damage(console, folder, "drawing.dxf")
    lines, names = [], []
    for space in spaces(console, folder):
        enter = ["SETVAR", "TILEMODE", space]
        try:
            listed = run_script(console, folder, enter + ["LIST", "ALL", ""], "drawing.dxf")
        except RuntimeError:
            return  # no drawing that can be read
        for name, answers in scripts(handles_by_layer(listed)):
            names.append(f"{space}: {name}")
            lines += enter + answers + ["^C", "^C", "SAVEAS", f"{len(names):02}.after.dxf"] + 25 * ["U"]
            lines += ["SAVEAS", f"{len(names):02}.undone.dxf"]
    run_script(console, folder, lines, "drawing.dxf")
    for number, name in enumerate(names, 1):
        after = folder / f"{number:02}.after.dxf"
        # Of a drawing that is damaged all over only the first faults are told.
        if not any("further errors" in fault for fault in known):
            for new in damage(console, folder, after.name) - known:
                yield f"{name}: {new}"
        if (folder / f"{number:02}.undone.dxf").read_bytes() != before:
            yield f"{name}: U does not give the file back"
        # The auditor reads no line ends of old.
        if after.read_bytes() == before or b"\n" not in before:
            after.unlink()
        else:
            os.link(folder / "drawing.dxf", folder / f"{number:02}.before.dxf")
    _, printed, errors = run(folder, "/usr/bin/python3", HERE.parent / "standard/drawings.py",
                             "audit" if before.startswith(b"AutoCAD Binary") else "compare", folder)
    for line in (printed + errors).splitlines():
        yield re.sub(r"^(\d+)\.before\.dxf", lambda match: names[int(match[1]) - 1], line)


def main():
    console, corpus, examples = Path(sys.argv[1]).resolve(), Path(sys.argv[2]), Path(sys.argv[3])
    if not corpus.is_dir() or run(HERE, "/usr/bin/python3", "-c", "import ezdxf")[0] != 0:
        print("no corpus, or no auditor")
        return SKIPPED
    drawings = [path for path in sorted(corpus.rglob("*")) if path.suffix.lower() == ".dxf"]
    if "QRS_ALL_DRAWINGS" not in os.environ:
        drawings = [path for path in drawings if path.name in KINDS]
    drawings += sorted(examples.glob("*.dxf"))
    faults = []
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(2) as pool:
        work = {path: pool.submit(lambda *given: list(check(*given)), console, HERE.parents[1] / "data", path,
                                  Path(folder) / str(number)) for number, path in enumerate(drawings)}
        for path, found in work.items():
            faults += [f"{path.name}: {fault}" for fault in found.result()]
    print("\n".join(faults) if faults else f"{len(drawings)} drawings: all sound")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
