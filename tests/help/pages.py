#!/usr/bin/env python3
"""Checks the command pages of docs/commands: each example is run, and must print and change what its page shows.

    pages.py CONSOLE            checks
    pages.py CONSOLE --update   writes what the examples print and change into the pages

An example is a line with a link to its drawing, [examples/NAME](../../examples/NAME) or "a new drawing", and after it a block
```script; a block ```transcript shows what it prints, a block ```changes what `qrsconsole --compare` tells of the drawing
before and after, and a block ```settings what it leaves in the user's settings beyond what every run leaves there. The
examples work on a copy of the suite's system folder. The pages in both languages show the same.
"""
import functools
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PAGES = ROOT / "docs" / "commands"
# Where the console makes windows.
SCREEN = {name: os.environ[name] for name in ("DISPLAY", "XAUTHORITY") if name in os.environ}
BLOCK = re.compile(r"^```(script|transcript|changes|settings)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
DRAWING = re.compile(r"\]\(\.\./\.\./(examples/[^)]+\.dxf)\)")


def command_names():
    table = (ROOT / "module/frame/cmdtable.cpp").read_text(encoding="utf-8")
    return re.findall(r'^    \{L"(\w+)", &command<', table, re.MULTILINE)


@functools.lru_cache(maxsize=None)
def run_example(console, drawing, script):
    """What the script prints, changes in the drawing, and leaves in the settings."""
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        (folder / "example.scr").write_text(script, encoding="utf-8")
        name = folder / "drawing.dxf"
        system = folder / "system"
        shutil.copytree(Path(console).parent.parent / "share" / "qrs_pipeSystem", system)
        arguments = [console, "--settings", "settings.ini", "--system", str(system), "-s", "example.scr"]
        if drawing:
            name.write_bytes((ROOT / drawing).read_bytes())
            # Beside it the others, to which it may refer.
            for other in (ROOT / drawing).parent.glob("*.dxf"):
                shutil.copy(other, folder)
            arguments += ["-o", "after.dxf", "drawing.dxf"]
        ran = subprocess.run(arguments, cwd=folder, capture_output=True, timeout=120,
                             env={"PATH": "/usr/bin:/bin", "TMPDIR": str(folder), "HOME": str(folder), **SCREEN})
        # What a command refuses stands there, too.
        unexpected = [line for line in ran.stderr.decode().splitlines() if not line.startswith("qrsconsole: example.scr:")]
        if ran.returncode != 0 or unexpected:
            raise RuntimeError(f"exit code {ran.returncode}: {ran.stderr.decode()}{ran.stdout.decode()}")
        changes = ""
        if drawing:
            compared = subprocess.run([console, "--compare", "drawing.dxf", "after.dxf"], cwd=folder, capture_output=True)
            changes = compared.stdout.decode()
        settings = folder / "settings.ini"
        return {"transcript": ran.stdout.decode(), "changes": changes,
                "settings": settings_by_section(settings.read_text(encoding="utf-8")) if settings.exists() else {}}


def settings_by_section(text):
    sections, section = {}, None
    for line in text.splitlines():
        if line.startswith("["):
            section = sections.setdefault(line, [])
        elif line:
            section.append(line)
    return sections


def settings_beyond(settings, usual):
    """The text of settings without what is usual. The standard's path stands among it: it differs from run to run."""
    text = ""
    for section, lines in settings.items():
        own = [line for line in lines if line not in usual.get(section, []) and not line.startswith("StandardFile=")]
        if own:
            text += ("\n" if text else "") + "\n".join([section] + own) + "\n"
    return text


def checked_page(console, usual, text):
    """The page with its examples' results as they are."""
    parts, at, drawing, result = [], 0, None, None
    for block in BLOCK.finditer(text):
        kind, shown = block.groups()
        links = DRAWING.findall(text, at, block.start())
        drawing = links[-1] if links else drawing
        if kind == "script":
            result = dict(run_example(console, drawing, shown))
            result["settings"] = settings_beyond(result["settings"], usual)
        elif result is None:
            raise RuntimeError(f"```{kind} without a ```script before it")
        else:
            result[kind] += "" if result[kind].endswith("\n") or not result[kind] else "\n"
            shown = result[kind]
        parts += [text[at:block.start()], f"```{kind}\n{shown}```"]
        at = block.end()
    if result is None:
        raise RuntimeError("no example")
    return "".join(parts) + text[at:]


def main():
    console, update = str(Path(sys.argv[1]).resolve()), "--update" in sys.argv[2:]
    faults = []
    names = command_names()
    usual = run_example(console, None, "")["settings"]
    if len(names) != 30:
        faults.append(f"{len(names)} commands found in the table")
    for name in names:
        blocks = []
        for page in (PAGES / f"{name}.md", PAGES / f"{name}.zh-CN.md"):
            if not page.exists():
                faults.append(f"{page.name} is missing")
                continue
            text = page.read_text(encoding="utf-8")
            blocks.append(BLOCK.findall(text))
            try:
                made = checked_page(console, usual, text)
            except (RuntimeError, subprocess.TimeoutExpired) as error:
                faults.append(f"{page.name}: {error}")
                continue
            if made != text and update:
                page.write_text(made, encoding="utf-8")
            elif made != text:
                old, new = text.split("\n"), made.split("\n")
                line = next((i for i, (a, b) in enumerate(zip(old, new)) if a != b), min(len(old), len(new)))
                faults.append(f"{page.name}:{line + 1}: shown {old[line:line + 1]}, is {new[line:line + 1]}")
        if len(blocks) == 2 and blocks[0] != blocks[1] and not update:
            faults.append(f"{name}: the two languages show different examples")
        for readme in (PAGES / "README.md", PAGES / "README.zh-CN.md"):
            if not readme.exists() or f"({name}" not in readme.read_text(encoding="utf-8"):
                faults.append(f"{readme.name} does not lead to {name}")
    print("\n".join(faults) if faults else f"{len(names)} commands: the pages show what they do")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
