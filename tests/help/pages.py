#!/usr/bin/env python3
"""Checks the pages: each example is run, and must print and change what its page shows.

    pages.py CONSOLE                    the command pages of docs/commands
    pages.py CONSOLE --tasks            all other pages, but those for programmers
    pages.py CONSOLE --package PREFIX   the pages for programmers, with the package installed at PREFIX
    ... --update                        writes what the examples print and change into the pages
    pages.py CONSOLE --pictures         remakes the pictures of the command pages
    pages.py CONSOLE --no-pictures      leaves them out, where the console cannot draw

An example of a command is a line with a link to its drawing, [examples/NAME](../../examples/NAME) or "a new drawing", and after
it a block ```script; a block ```transcript shows what it prints, a block ```changes what `qrsconsole --compare` tells of the
drawing before and after (pictures cut short), and a block ```settings what it leaves in the user's settings beyond what every
run leaves there. The examples work on a copy of the suite's system folder. An example that leaves files says "a copy of" before
its drawing. Pictures after an example, ![...](../pictures/NAME.png), show the layout that is current after it: the drawing
before, where NAME is that of the drawing, alone or with -MORE, and else the drawing after.

An example of a task is a block ```sh, run in a folder with a copy of examples/ in which the blocks before it were run; a block
```output shows what it prints on both outputs, with a line "..." for any lines. A block after a line that ends in "`NAME`:" is
that file. Where a page has no block ```output, only the blocks that name examples/ are run. None may leave anything in examples/.

The pages in both languages show the same examples.
"""
import functools
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True  # nothing is left beside the sources
import pictures

ROOT = Path(__file__).resolve().parents[2]
DOCS = ROOT / "docs"
PAGES = DOCS / "commands"
PROGRAMMERS = ("sibling",)
# Where the console makes windows.
SCREEN = {name: os.environ[name] for name in ("DISPLAY", "XAUTHORITY") if name in os.environ}
BLOCK = re.compile(r"^```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
DRAWING = re.compile(r"((?:a copy of |的副本)?)\[[^]]*\]\((?:\.\./)+(examples/[^)]+\.dxf)\)((?: 的副本)?)")
FILE = re.compile(r"`([\w/-]+\.\w+)`[:：]\n\n\Z")
LINK = re.compile(r"\]\(([^):#]*)(?:#([^)]*))?\)")
# The bytes of an entity's picture, more than a page should show.
PICTURE = re.compile(r"(: 310: .*?> [0-9A-F]{32})[0-9A-F]+")
NAMED_PICTURE = re.compile(r"!\[[^]]+\]\((?:\.\./|docs/)?pictures/([\w-]+)\.png\)")
# What only machines of one's own can run.
ELSEWHERE = re.compile(r"server2|slurm")


def command_names(table):
    return re.findall(r'^    \{L"(\w+)", &command<', (ROOT / table).read_text(encoding="utf-8"), re.MULTILINE)


MODULE, AUDIT = command_names("module/frame/cmdtable.cpp"), command_names("audit/entry.cpp")


@functools.lru_cache(maxsize=None)
def run_example(console, drawing, script):
    """What the script prints, changes in the drawing, and leaves in the settings; and whether it leaves files beside it."""
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        (folder / "example.scr").write_text(script, encoding="utf-8")
        name = folder / "drawing.dxf"
        system = folder / "system"
        shutil.copytree(Path(console).parent.parent / "share" / "qrs_pipeSystem", system)
        arguments = [console, "--settings", "tmp/settings.ini", "--system", str(system), "-s", "example.scr"]
        if drawing:
            name.write_bytes((ROOT / drawing).read_bytes())
            # Beside it the others, to which it may refer.
            for other in (ROOT / drawing).parent.glob("*.dxf"):
                shutil.copy(other, folder)
            arguments += ["-o", "after.dxf", "drawing.dxf"]
        if any(name in script.split() for name in AUDIT):
            arguments += ["-p", next(Path(console).parent.glob("qrs_audit.*")).name]
        (folder / "tmp").mkdir()
        fonts = pictures.only_fonts(folder / "tmp")
        there = {*os.listdir(folder), "drawing.dxf", "after.dxf"}
        ran = subprocess.run(arguments, cwd=folder, capture_output=True, timeout=120,
                             env={"PATH": "/usr/bin:/bin", "TMPDIR": str(folder / "tmp"), "HOME": str(folder / "tmp"), **fonts, **SCREEN,
                                  **pictures.CHECKER})
        # What a command refuses stands there, too.
        unexpected = [line for line in ran.stderr.decode().splitlines() if not line.startswith("qrsconsole: example.scr:")]
        if ran.returncode != 0 or unexpected:
            raise RuntimeError(f"exit code {ran.returncode}: {ran.stderr.decode()}{ran.stdout.decode()}")
        changes, left, after = "", sorted(set(os.listdir(folder)) - there), b""
        drawn = b"".join((folder / name).read_bytes() for name in left if name.endswith(".png"))
        if drawing:
            after = (folder / "after.dxf").read_bytes()
            compared = subprocess.run([console, "--compare", "drawing.dxf", "after.dxf"], cwd=folder, capture_output=True)
            changes = PICTURE.sub(r"\1...", compared.stdout.decode())
        settings = folder / "tmp" / "settings.ini"
        printed = ran.stdout.decode().replace(str(system), "/usr/local/share/qrs_pipeSystem")
        return {"transcript": printed, "changes": changes, "left": left, "after": after, "drawn": drawn,
                "settings": settings_by_section(settings.read_text(encoding="utf-8")) if settings.exists() else {}}


@functools.lru_cache(maxsize=None)
def picture(console, drawing, script, is_before):
    """The drawing before or after an example, as a PNG file; of PLOTFILE what it drew; of PICTURES what others see, who do not
    know pipes."""
    ran = run_example(console, drawing, script)
    if "PLOTFILE" in script.split():
        return ran["drawn"]
    on_sheet = ("-e", "TILEMODE", "-e", "0") if is_before and "$TILEMODE: 70: 1 > 0\n" in ran["changes"] else ()
    with tempfile.TemporaryDirectory() as folder:
        for other in (ROOT / drawing).parent.glob("*.dxf"):
            shutil.copy(other, folder)
        file = Path(folder) / Path(drawing).name
        if not is_before:
            file.write_bytes(ran["after"])
        if "PICTURES" in script.split():
            file.write_bytes(file.read_bytes().replace(b"QRS_PIPE", b"ANY_PIPE"))
        return pictures.plotted(console, file, *pictures.PICTURE_SIZE, *on_sheet)


def check_pictures(console, page, update):
    """The faults of the pictures that stand after the examples of a page."""
    text, faults, drawing, at = page.read_text(encoding="utf-8"), [], None, 0
    examples = [block for block in BLOCK.finditer(text) if block.group(1) == "script"]
    for block, following in zip(examples, examples[1:] + [None]):
        drawing = found_drawing(text[at:block.start()]) or drawing
        at = block.end()
        for name in NAMED_PICTURE.findall(text[at:following.start() if following else len(text)]):
            is_before = (name + "-").startswith(Path(drawing[0]).stem + "-")
            made = picture(console, drawing[0], block.group(2), is_before)
            faults += [f"{page.name}: {fault}" for fault in pictures.check_picture(name, made, update)]
    return faults


def unused_pictures():
    pages = [*ROOT.glob("*.md"), *DOCS.rglob("*.md")]
    named = {name for page in pages for name in NAMED_PICTURE.findall(page.read_text(encoding="utf-8"))}
    return [f"{file.name} stands on no page" for file in sorted(pictures.FOLDER.iterdir()) if file.stem not in named]


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


def found_drawing(text):
    """The drawing that the text names last, and whether a copy of it is meant; None when it names none."""
    links = DRAWING.findall(text)
    return (links[-1][1], bool(links[-1][0] or links[-1][2])) if links else None


class Desk:
    """The folder of one who follows a page: the examples, drawings by the names of pages, and an installed program."""

    def __init__(self, folder, console, package):
        self.work, self.prefix, self.home = folder / "work", folder / "prefix", folder / "home"
        shutil.copytree(ROOT / "examples", self.work / "examples", ignore=shutil.ignore_patterns("__pycache__"))
        self.examples = self.listing()
        shutil.copy(ROOT / "examples/building.dxf", self.work / "house.dxf")
        for name in ("plans", "delivered", "sheets"):
            (self.work / name).mkdir()
            for drawing in ("building", "site"):
                shutil.copy(ROOT / "examples" / f"{drawing}.dxf", self.work / name)
        self.home.mkdir()
        if package:
            self.prefix = Path(package).resolve()
            return
        # The program knows its place by its file; what it changes there must not be changed for others.
        built = Path(console).parent
        shutil.copytree(built.parent / "share" / "qrs_pipeSystem", self.prefix / "share" / "qrs_pipeSystem")
        (self.prefix / "bin").mkdir()
        for file in built.glob("*.so"):
            (self.prefix / "bin" / file.name).symlink_to(file)
        shutil.copy(console, self.prefix / "bin")

    def listing(self):
        return {path: path.read_bytes() for path in (self.work / "examples").rglob("*") if path.is_file()}

    def write(self, name, text):
        (self.work / name).parent.mkdir(parents=True, exist_ok=True)
        (self.work / name).write_text(text, encoding="utf-8")

    def run(self, commands):
        """What the commands print. Each must succeed, unless the page shows its exit code."""
        ran = subprocess.run(["bash", "-c" if "$?" in commands else "-ec", commands], cwd=self.work, stdin=subprocess.DEVNULL, timeout=300,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                             env={"PATH": f"{self.prefix}/bin:/usr/bin:/bin", "HOME": str(self.home), "LC_ALL": "C.UTF-8",
                                  "TMPDIR": str(self.home), "PREFIX": str(self.prefix), "CMAKE_GENERATOR": "Ninja",
                                  "CXX": os.environ.get("CXX", "c++"),
                                  "CXXFLAGS": os.environ.get("SIBLING_FLAGS", ""), **pictures.CHECKER})
        printed = ran.stdout.decode().replace(str(self.prefix), "/usr/local").replace(str(self.work), "/home/me")
        if ran.returncode != 0:
            raise RuntimeError(f"exit code {ran.returncode} of\n{commands}{printed}")
        if self.listing() != self.examples:
            raise RuntimeError(f"changes what lies in examples/:\n{commands}")
        return printed


def shows(shown, printed):
    """Whether the page shows what was printed; a line "..." stands for any lines."""
    pieces = re.split(r"^\.\.\.\n", shown, flags=re.MULTILINE)
    return re.fullmatch("(?:.*\n)*?".join(map(re.escape, pieces)), printed) is not None


def checked_page(console, usual, desk, text):
    """The page with its examples' results as they are."""
    parts, at, drawing, result, printed = [], 0, None, None, ""
    is_followed = "```output\n" in text
    for block in BLOCK.finditer(text):
        kind, shown = block.groups()
        before = text[at:block.start()]
        drawing = found_drawing(before) or drawing
        file = FILE.search(before)
        if kind != "output" and is_followed and printed:
            raise RuntimeError(f"not shown: {printed}")
        if desk and file:
            desk.write(file.group(1), shown)
        elif kind == "script":
            result = dict(run_example(console, drawing and drawing[0], shown))
            result["settings"] = settings_beyond(result["settings"], usual)
            if result["left"] and drawing and not drawing[1]:
                raise RuntimeError(f"leaves {result['left']} beside what is not called a copy of {drawing[0]}")
        elif kind in ("transcript", "changes", "settings"):
            if result is None:
                raise RuntimeError(f"```{kind} without a ```script before it")
            result[kind] += "" if result[kind].endswith("\n") or not result[kind] else "\n"
            shown = result[kind]
        elif desk and kind == "sh":
            code = re.sub(r"(^|\s)#.*", "", shown)
            if is_followed or ("examples/" in code and not ELSEWHERE.search(code)):
                printed = desk.run(shown)
        elif desk and kind == "output":
            shown, printed = shown if shows(shown, printed) else printed, ""
        parts += [before, f"```{kind}\n{shown}```"]
        at = block.end()
    if is_followed and printed:
        raise RuntimeError(f"not shown: {printed}")
    return "".join(parts) + text[at:]


def check_page(console, usual, desk, page, update):
    """The page's faults; with update the page is written instead."""
    text = page.read_text(encoding="utf-8")
    try:
        made = checked_page(console, usual, desk, text)
    except (RuntimeError, subprocess.TimeoutExpired) as error:
        return [f"{page.name}: {error}"]
    if made == text:
        return []
    if update:
        page.write_text(made, encoding="utf-8")
        return []
    old, new = text.split("\n"), made.split("\n")
    line = next((i for i, (a, b) in enumerate(zip(old, new)) if a != b), min(len(old), len(new)))
    return [f"{page.name}:{line + 1}: shown {old[line:line + 1]}, is {new[line:line + 1]}"]


def check_command(console, usual, name, options):
    faults, blocks = [], []
    for page in (PAGES / f"{name}.md", PAGES / f"{name}.zh-CN.md"):
        if not page.exists():
            faults.append(f"{page.name} is missing")
            continue
        blocks.append(BLOCK.findall(page.read_text(encoding="utf-8")))
        if not any(kind == "script" for kind, _ in blocks[-1]):
            faults.append(f"{page.name}: no example")
        faults += check_page(console, usual, None, page, "--update" in options)
        if "--no-pictures" not in options:
            faults += check_pictures(console, page, "--pictures" in options)
    if len(blocks) == 2 and blocks[0] != blocks[1] and "--update" not in options:
        faults.append(f"{name}: the two languages show different examples")
    for readme in (PAGES / "README.md", PAGES / "README.zh-CN.md"):
        if not readme.exists() or f"({name}" not in readme.read_text(encoding="utf-8"):
            faults.append(f"{readme.name} does not lead to {name}")
    return faults


def leads_somewhere(page, link, heading):
    target = page.parent / link if link else page
    if not heading:
        return target.exists()
    headings = re.findall(r"^#+ (.*)$", target.read_text(encoding="utf-8") if target.is_file() else "", re.MULTILINE)
    return heading in (re.sub(r"[^\w\- ]", "", each.lower()).replace(" ", "-") for each in headings)


def check_links(page):
    return [f"{page.name} leads to {link}#{heading}, which is not there"
            for link, heading in LINK.findall(page.read_text(encoding="utf-8")) if not leads_somewhere(page, link, heading)]


def check_tasks(console, usual, page, package, update):
    """A page and its Chinese twin."""
    twin, faults = page.with_suffix(".zh-CN.md"), []
    if not twin.exists():
        return [f"{page.name} has no page in Chinese"]
    for each in (page, twin):
        faults += check_links(each)
        with tempfile.TemporaryDirectory() as folder:
            faults += check_page(console, usual, Desk(Path(folder), console, package), each, update)
    texts = [each.read_text(encoding="utf-8") for each in (page, twin)]
    blocks = [BLOCK.findall(text) for text in texts]
    if blocks[0] != blocks[1] and "```output\n" in texts[0] and not update:
        faults.append(f"{page.name}: the two languages show different examples")
    return faults


def main():
    console, options = str(Path(sys.argv[1]).resolve()), sys.argv[2:]
    update = "--update" in options
    package = options[options.index("--package") + 1] if "--package" in options else None
    usual = run_example(console, None, "")["settings"]
    if package or "--tasks" in options:
        pages = [page for folder in (ROOT, DOCS) for page in sorted(folder.glob("*.md")) if ".zh-CN" not in page.name]
        pages = [page for page in pages if (page.stem in PROGRAMMERS) == bool(package)]
        faults = [fault for page in pages for fault in check_tasks(console, usual, page, package, update)]
    else:
        pages = MODULE + AUDIT + ["host"]
        faults = [] if (len(MODULE), len(AUDIT)) == (30, 3) else [f"{len(MODULE)} and {len(AUDIT)} commands found in the tables"]
        faults += [fault for name in pages for fault in check_command(console, usual, name, options)]
        faults += [fault for page in sorted(PAGES.glob("*.md")) for fault in check_links(page)]
        faults += unused_pictures()
    print("\n".join(faults) if faults else f"{len(pages)} pages show what their examples do")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
