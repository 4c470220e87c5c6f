#!/usr/bin/python3
"""Runs every command that changes layers or what lies on them over real drawings, in each of their layouts, and the repair
by the standard: nothing in a drawing may point to what is gone, the auditor must find nothing in it, corrected or not, that
it did not find before, and U must give the file back byte for byte.

    soundness.py CONSOLE CORPUS EXAMPLES [--all | --few]   ends with 77 when the corpus or the auditor is not there

Commands that change what is there are run one after the other on one drawing, and large drawings without KINDS are left
out; with --all every command is run on its own, over all drawings. --few takes small drawings and no auditor: enough for
a program that watches its own memory.
"""
import collections
import concurrent.futures
import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "standard"))
SKIPPED = 77
UNREADABLE = 3  # exit code of the console
PLUGIN = "qrs_audit.so"  # beside the console
LARGEST = 300_000  # bytes
SMALL = 60_000
KINDS = (  # larger ones, with kinds of references that no smaller one has
    "sample.dxf",  # groups, images with reactors, layer states, body data
    "sample_AC1009_ascii.dxf",  # handles in extended data, names of layers in that of viewports
    "uncommon.dxf",  # histories of solids, sun, light, sections, arc dimensions
)
STATES = ["LockSelLayer", "ALL", "", "UnLockSelLayer", "", "OpenSelLayer", "ALL", "", "SetAllPipeLayOpen", "tbds", "3",
          "tbds", "4", "Y", "yshf", "UnFrozenAllLayer", "gxgd", "ALL", "", "gxfz"]


class Unreadable(Exception):
    pass


def run(folder, *arguments):
    ran = subprocess.run([str(argument) for argument in arguments], cwd=folder, capture_output=True, timeout=600,
                         env={"PATH": "/usr/bin:/bin", "TMPDIR": str(folder), "HOME": str(folder)})
    return ran.returncode, ran.stdout.decode(errors="replace"), ran.stderr.decode(errors="replace")


def run_script(console, system, folder, lines):
    (folder / "script.scr").write_text("\n".join(lines) + "\n", encoding="utf-8")
    code, printed, errors = run(folder, console, "--settings", "settings.ini", "--system", system, "--keep-going",
                                "-p", PLUGIN, "-s", "script.scr", "drawing.dxf")
    if code == UNREADABLE:
        raise Unreadable
    if code not in (0, 1):
        raise RuntimeError(f"exit code {code}: {errors}{printed[-300:]}")
    return printed


def damage(console, folder, drawing):
    """What the reader finds wrong, without the lines and counts, which move."""
    _, printed, _ = run(folder, console, "--info", drawing)
    found = printed.partition("\nwarnings\n")[2].splitlines()
    found = (re.sub(r"says [0-9]+ (\w+) and (\w+) [0-9]+", r"\1: \2", line) for line in found)
    return collections.Counter(re.sub(r"^ *(line|byte) [0-9]+(, |: )", "", line) for line in found)


def picks(printed):
    """Of what LIST prints: one entity of each layer, that of the fullest first, and all viewports."""
    listed = re.findall(r"^([0-9A-F]+) +(\S+) +Layer: \"(.*)\"  Space", printed, re.MULTILINE)
    counts = collections.Counter(layer for _, _, layer in listed)
    one = {layer: handle for handle, _, layer in reversed(listed)}
    return ([f'(handent "{one[layer]}")' for layer, _ in counts.most_common()],
            [f'(handent "{handle}")' for handle, kind, _ in listed if kind == "VIEWPORT"])


def commands(layers, viewports):
    """Each with its answers, by a name."""
    if len(layers) > 1:
        yield "merge", ["hbtc", layers[1], layers[0], "Y"]
        yield "merge back", ["hbtc", layers[0], layers[1], "Y"]
        yield "convert", ["ConvertLayer", layers[-1], layers[0]]
    yield "states", STATES
    for layer in layers[:2]:
        yield "freeze", ["FrozenLayer", layer, "", "CloseSelLayer", layer, ""]
    if viewports:
        yield "freeze everywhere", ["VPLAYER", "Freeze", "*", "All", "", "UnFrozenViewAllLayer", viewports[-1], "*", "OK"]
        yield "freeze here", ["FrozenViewLayer", viewports[-1], "*", "OK", "", "VPLAYER", "Reset", "*", "All", ""]


def scripts(layers, viewports, alone):
    frozen = ["VPLAYER", "Freeze", "*", "All", "", "^C"] if viewports else []
    for layer in layers[:2 if alone else 1]:
        yield "erase layer", frozen + ["EraseSelLayer", layer, ""]
    yield "erase all", ["EraseSelLayer", "ALL", ""]
    if alone:
        yield from commands(layers, viewports)
    else:
        yield "change", [line for _, lines in commands(layers, viewports) for line in lines + ["^C", "^C"]]


def layouts(console, system, folder):
    """The entities that can be picked, by layout."""
    printed = run_script(console, system, folder, ["LAYOUT", "?"])
    names = re.findall(r'^"(.*)"(?: \(current\))? +\d+  ', printed, re.MULTILINE)
    shown = run_script(console, system, folder,
                       [line for name in names for line in ("LAYOUT", "Set", name, "LIST", "ALL", "", "^C")])
    return dict(zip(names, map(picks, shown.split("Command: LAYOUT\n")[1:]), strict=True))


def new_troubles(folder, after, known):
    """What the auditor says of a drawing of which it did not say it before."""
    import drawings

    before = folder / "drawing.dxf"
    is_binary = before.read_bytes().startswith(b"AutoCAD Binary")
    find = drawings.new_findings if is_binary else drawings.troubles
    yield from find(before, after) if drawings.is_readable(before) else ()


def check(console, system, drawing, folder, alone, few):
    folder.mkdir()
    shutil.copy(drawing, folder / "drawing.dxf")
    before = (folder / "drawing.dxf").read_bytes()
    try:
        tabs = layouts(console, system, folder)
    except Unreadable:
        return
    steps = [(f"{layout}: {name}", ["LAYOUT", "Set", layout] + answers) for layout, (layers, viewports) in tabs.items()
             for name, answers in scripts(layers, viewports, alone)]
    steps.append(("repair", ["REPAIRSTANDARD", "Auto", "No", ""]))
    lines, names = [], [name for name, _ in steps]
    for number, (_, answers) in enumerate(steps, 1):
        lines += answers + ["^C", "^C", "SAVEAS", f"{number:02}.after.dxf"] + 60 * ["U"]
        lines += ["SAVEAS", f"{number:02}.undone.dxf"]
    printed = run_script(console, system, folder, lines)
    if not re.search("^[0-9]+ changes?$", printed, re.MULTILINE):
        yield "repair: does not come to its end"
    known = damage(console, folder, "drawing.dxf")
    seen = {hashlib.sha256(before).digest()}
    for number, name in enumerate(names, 1):
        after = folder / f"{number:02}.after.dxf"
        if (folder / f"{number:02}.undone.dxf").read_bytes() != before:
            yield f"{name}: U does not give the file back"
        key = hashlib.sha256(after.read_bytes()).digest()
        if key in seen:
            continue
        seen.add(key)
        # Of a drawing that is damaged all over only the first faults are told.
        if not any("further errors" in fault for fault in known):
            yield from (f"{name}: {new}" for new in damage(console, folder, after.name) - known)
        # The auditor reads no line ends of old.
        if b"\n" in before and not few:
            yield from (f"{name}: {new}" for new in new_troubles(folder, after, known))
    shutil.rmtree(folder)


def checked(*given):
    try:
        return list(check(*given))
    except (RuntimeError, subprocess.SubprocessError, ValueError) as error:
        return [f"{type(error).__name__}: {error}"]


def main():
    alone, few = "--all" in sys.argv, "--few" in sys.argv
    console, corpus, examples = Path(sys.argv[1]).resolve(), Path(sys.argv[2]), Path(sys.argv[3])
    try:
        import drawings
    except ImportError:
        drawings = None
    if not corpus.is_dir() or drawings is None:
        print("no corpus, or no auditor")
        return SKIPPED
    drawings.logging.disable()
    files = [path for path in corpus.rglob("*") if path.suffix.lower() == ".dxf"] + list(examples.glob("*.dxf"))
    if few:
        files = [path for path in files if path.stat().st_size < SMALL]
    elif not alone:
        files = [path for path in files if path.name in KINDS or path.stat().st_size < LARGEST]
    files.sort(key=lambda path: (-path.stat().st_size, path))
    faults = []
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ProcessPoolExecutor(2) as pool:
        work = {path: pool.submit(checked, console, HERE.parents[1] / "data", path, Path(folder) / str(number), alone, few)
                for number, path in enumerate(files)}
        for path, found in work.items():
            faults += [f"{path.name}: {fault}" for fault in found.result()]
    print("\n".join(faults) if faults else f"{len(files)} drawings: all sound")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
