#!/usr/bin/env python3
"""Makes the tables (*.dbf) of the system folder from the CSV files beside this file.

    python3 make_tables.py           writes ../*.dbf
    python3 make_tables.py --check   exits with 1 when some ../*.dbf is not what the sources make

Sizes of pipes that are not as the standards state which they name (pipe_series.py) are refused: each is told in a line, and
nothing is written.

The sources are UTF-8, the tables dBASE III in code page 936. README.md tells what the columns mean.
"""

import csv
import pathlib
import re
import struct
import sys
from decimal import Decimal

sys.dont_write_bytecode = True

import pipe_series

SOURCE = pathlib.Path(__file__).resolve().parent
TARGET = SOURCE.parent

# Date of the last update in every header: fixed, so that the same sources make the same bytes.
UPDATED = (126, 1, 1)
CODE_PAGE_936 = 0x4D


def as_it_is(row):
    return row


def with_inner_diameter(row):
    """Standards give the outer diameter and the thickness of wall and lining; the table holds both diameters."""
    thickness = Decimal(row["wall"]) + Decimal(row["lining"] or 0)
    return {**row, "DJ": Decimal(row["D"]) - 2 * thickness}


def with_pattern_length(row):
    """Num is the count of dashes, gaps and dots, Length their sum."""
    pattern = [abs(Decimal(number)) for number in re.sub(r"\[[^]]*\]", "", row["Content"]).split(",") if number]
    return {**row, "Num": len(pattern), "Length": sum(pattern)}


# Table: its source, what is computed, and its fields as (name, type, length, decimals).
TABLES = {
    "pipe.dbf": ("pipe.csv", with_inner_diameter,
                 [("GC", "C", 24, 0), ("DN", "N", 8, 2), ("DJ", "N", 10, 3), ("D", "N", 10, 3)]),
    "DataStore.dbf": ("datastore.csv", as_it_is,
                      [("TypeNumber", "N", 6, 0), ("TypeValue", "C", 40, 0), ("Remark", "C", 40, 0)]),
    "linetype.dbf": ("linetype.csv", with_pattern_length,
                     [("Name", "C", 32, 0), ("Comment", "C", 64, 0), ("Num", "N", 4, 0), ("Scale", "N", 10, 3),
                      ("Length", "N", 10, 3), ("Content", "C", 200, 0)]),
    "userlayer.dbf": ("userlayer.csv", as_it_is, [("product", "N", 4, 0), ("name", "C", 64, 0)]),
    "qrsdata.dbf": ("qrsdata.csv", as_it_is,
                    [("bar", "C", 16, 0), ("title", "C", 32, 0), ("place", "C", 8, 0), ("number", "N", 4, 0),
                     ("command", "C", 32, 0), ("tip", "C", 40, 0)]),
}


def field_bytes(value, kind, length, decimals):
    if kind == "N":
        data = f"{Decimal(value):.{decimals}f}".rjust(length).encode("ascii")
    else:
        data = value.encode("gbk").ljust(length)
    if len(data) > length:
        raise ValueError(f"{value!r} is longer than {length} bytes")
    return data


def table_bytes(fields, rows):
    record_length = 1 + sum(length for _, _, length, _ in fields)
    data = struct.pack("<B3BIHH17xB2x", 0x03, *UPDATED, len(rows), 33 + 32 * len(fields), record_length, CODE_PAGE_936)
    for name, kind, length, decimals in fields:
        data += struct.pack("<11sc4xBB14x", name.encode("ascii"), kind.encode("ascii"), length, decimals)
    data += b"\x0D"
    for row in rows:
        data += b" " + b"".join(field_bytes(row[name], *rest) for name, *rest in fields)
    return data + b"\x1A"


def rows_of(source):
    with open(SOURCE / source, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


def main(arguments):
    faults = list(pipe_series.faults(rows_of("pipe.csv")))
    if faults:
        sys.exit("\n".join(faults))
    differing = []
    for name, (source, compute, fields) in TABLES.items():
        data = table_bytes(fields, [compute(row) for row in rows_of(source)])
        target = TARGET / name
        if arguments != ["--check"]:
            target.write_bytes(data)
        elif not target.exists() or target.read_bytes() != data:
            differing.append(name)
    if differing:
        sys.exit(f"not what the sources make: {', '.join(differing)}")


if __name__ == "__main__":
    main(sys.argv[1:])
