#!/usr/bin/python3
"""Empty drawings of every version, and an auditor's word on drawings before and after a change.

    drawings.py make FOLDER      writes FOLDER/<version>.dxf
    drawings.py compare FOLDER   prints what is wrong in every FOLDER/*.after.dxf and not in the *.before.dxf beside it
    drawings.py audit FOLDER     the same, but only what the auditor says; binary drawings, too
"""

import collections
import functools
import logging
import pathlib
import re
import sys

import ezdxf
import ezdxf.recover

VERSIONS = ("R12", "R2000", "R2004", "R2007", "R2010", "R2013", "R2018")


def make(folder):
    for version in VERSIONS:
        ezdxf.new(version, setup=version in ("R12", "R2010")).saveas(folder / f"{version}.dxf")


def records_of(path):
    """All records, header variables among them, as lists of (code, value)."""
    lines = [line.strip().decode("latin1") for line in path.read_bytes().splitlines()]
    records = [[(0, "")]]
    for code, value in zip(map(int, lines[::2]), lines[1::2]):
        if (code, value) == (0, "EOF"):
            break
        if code in (0, 9):
            records.append([])
        if code != 999:
            records[-1].append((code, value))
    return records


def first(record, code, default=None):
    return next((value for tag, value in record if tag == code), default)


class Drawing:
    """What the auditor does not look at."""

    def __init__(self, path):
        self.tables = {}
        self.handles = collections.Counter()
        self.seed = None
        head = None
        for record in records_of(path):
            kind = record[0][1]
            self.seed = first(record, 5) if kind == "$HANDSEED" else self.seed
            if record[0][0] != 0:
                continue
            self.handles[first(record, 105 if kind == "DIMSTYLE" else 5)] += 1
            if kind in ("TABLE", "ENDTAB"):
                head = record if kind == "TABLE" else None
                if head:
                    self.tables[first(head, 2)] = (head, [])
            elif head:
                self.tables[first(head, 2)][1].append(record)
        self.handles.pop(None, None)

    def excess(self, table):
        """How many more records the table's head tells of than there are."""
        head, records = self.tables.get(table, ([], []))
        return int(first(head, 70, len(records))) - len(records)


def audited(path):
    # Old drawings that do not tell their code page are written in that of the system.
    old = re.search(rb"\sAC10(0.|1[0-8])\s", path.read_bytes())
    encoding = "gbk" if old and b"$DWGCODEPAGE" not in path.read_bytes() else None
    try:
        document = ezdxf.readfile(path, encoding=encoding)
        return document, document.audit()
    except ezdxf.DXFError:
        return ezdxf.recover.readfile(path)


def is_readable(path):
    try:
        findings(path)
    except Exception:
        return False
    return True


def form_of(record, handles):
    """The tags that all records of a table share, without those that point to nothing."""
    return [(code, value) for code, value in record if code == 100 or code in (347, 348, 390) and value in handles]


@functools.lru_cache(maxsize=4)  # of a drawing that is compared with several others
def findings(path):
    """What the auditor says, counted, and what it has read."""
    document, auditor = audited(path)
    # Where a drawing has no handles, the reader deals some out; lines move when a record comes before them.
    texts = (entry.message for entry in auditor.errors + auditor.fixes)
    return collections.Counter(re.sub("#[0-9A-F]+|line [0-9]+", "#", text) for text in texts), document


def troubles(before, after):
    old, new = Drawing(before), Drawing(after)
    audits = [findings(before)[0].copy()]
    more, document = findings(after)
    audits.append(more)
    if not any(first(record, 5) for record in old.tables.get("LAYER", (None, []))[1]):
        # Those that the reader dealt out may meet the ones it gave to tables that are not there.
        audits[1].pop("Fixed invalid table entry handle in LAYER(#)", None)
        audits[1].pop("Fixed invalid table entry handle in LTYPE(#)", None)
    yield from (f"audit: {message}" for message in audits[1] - audits[0])
    for linetype in document.linetypes:
        styles = [tag.value for tag in linetype.pattern_tags.tags if tag.code == 340]
        for handle in styles:
            if handle != "0" and document.entitydb.get(handle) is None:
                yield f"linetype {linetype.dxf.name}: no style {handle}"
    yield from (f"handle {handle} twice" for handle in new.handles if new.handles[handle] > max(1, old.handles[handle]))
    if new.seed and any(int(handle, 16) >= int(new.seed, 16) for handle in new.handles - old.handles):
        yield "a new handle behind $HANDSEED"
    for name, (head, records) in new.tables.items():
        known = {first(record, 2).upper() for record in old.tables.get(name, ([], []))[1]}
        fresh = [record for record in records if first(record, 2).upper() not in known]
        if name in old.tables and new.excess(name) != old.excess(name):
            yield f"{name}: wrong count"
        sample = old.tables.get(name, ([], []))[1]
        sample = next((record for record in sample if first(record, 2) == "0"), sample[0] if sample else None)
        for record in fresh if sample else ():
            form = (first(sample, 5) is not None, first(sample, 330) and first(head, 5), form_of(sample, old.handles))
            if (first(record, 5) is not None, first(record, 330), form_of(record, new.handles)) != form:
                yield f"{name}: {first(record, 2)} is not as {first(sample, 2)}"


def new_findings(before, after):
    yield from findings(after)[0] - findings(before)[0]


def compare(folder, find=troubles):
    files = {}  # links to one file are one drawing
    for after in sorted(folder.glob("*.after.dxf")):
        before = after.with_name(after.name.replace(".after.", ".before."))
        same = files.setdefault(before.stat().st_ino, before)
        for trouble in find(same, after) if is_readable(same) else ():
            print(f"{before.name}: {trouble}")


def audit(folder):
    compare(folder, new_findings)


if __name__ == "__main__":
    logging.disable()
    {"make": make, "compare": compare, "audit": audit}[sys.argv[1]](pathlib.Path(sys.argv[2]))
