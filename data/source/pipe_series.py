"""Series of pipes: what the product standards state of their sizes, by formula or by table.

pipe.csv names a series in its column "standard"; make_tables.py refuses a size that its series does not state so. A series
answers a size's number (the column DN) with what the standard gives for it: (outer diameter, wall, lining), several
where the standard leaves the wall to the buyer, none where it has no such size. All in millimetres.
"""

import collections
from decimal import ROUND_CEILING, ROUND_HALF_UP, Decimal

HUNDREDTH, TENTH, UNIT = Decimal("0.01"), Decimal("0.1"), Decimal(1)
NONE = Decimal(0)

Series = collections.namedtuple("Series", "source sizes")


def numbers(text):
    """Lines of numbers, by the first of each: "15 21.3 2.8, 20 26.9 2.8"."""
    lines = [[Decimal(number) for number in line.split()] for line in text.split(",")]
    return {line[0]: line[1:] for line in lines}


def tabulated(text):
    """Number, outer diameter, wall."""
    table = numbers(text)
    return lambda number: [(*table[number], NONE)] if number in table else []


def by_outer_diameter(text):
    """Outer diameter, wall; the number is the diameter in whole millimetres."""
    table = {whole(diameter): (diameter, wall) for diameter, (wall,) in numbers(text).items()}
    return lambda number: [(*table[number], NONE)] if number in table else []


def whole(diameter):
    return diameter.quantize(UNIT, ROUND_HALF_UP)


def catalogue(diameters, walls):
    """Every wall is made for every outer diameter. 325=323.9: called 325 by custom."""
    table = {}
    for entry in diameters.split():
        called, _, diameter = entry.partition("=")
        table[whole(Decimal(called))] = Decimal(diameter or called)
    return lambda number: [(table[number], Decimal(wall), NONE) for wall in walls.split()] if number in table else []


def plastic(series, least="0", otherwise=""):
    """The walls of ISO 4065: the outer diameter over twice the series number and one, to the next tenth above. The series
    number is a power of the tenth root of ten (4 is 10 to 0.6, 12.5 is 10 to 1.1); the quotient counts to two decimals.
    otherwise: diameters and walls for which the product standard says another."""
    ratio = 2 * Decimal(10) ** (Decimal(series) / 10) + 1
    exceptions = numbers(otherwise) if otherwise else {}

    def sizes(number):
        wall = (number / ratio).quantize(HUNDREDTH, ROUND_HALF_UP).quantize(TENTH, ROUND_CEILING)
        return [(number, exceptions.get(number, [max(wall, Decimal(least))])[0], NONE)]

    return sizes


def iron(diameters, wall, least):
    """Outer diameters by a table, walls by a formula of the nominal diameter, rounded to a tenth."""
    table = numbers(diameters)

    def sizes(number):
        if number not in table:
            return []
        return [(table[number][0], max(wall(number).quantize(TENTH, ROUND_HALF_UP), Decimal(least)), NONE)]

    return sizes


def lined(steel, linings):
    """A steel pipe with a lining; linings: up to which number, how thick."""
    table = numbers(linings)

    def sizes(number):
        reached = [up_to for up_to in table if number <= up_to]
        return [(d, wall, table[min(reached)][0]) for d, wall, _ in steel(number)] if reached else []

    return sizes


def bored(text):
    """The number is the inner diameter: number, wall."""
    table = numbers(text)
    return lambda number: [(number + 2 * table[number][0], table[number][0], NONE)] if number in table else []


def between(text):
    """Number, outer diameter, inner diameter."""
    table = numbers(text)
    return lambda number: [(table[number][0], (table[number][0] - table[number][1]) / 2, NONE)] if number in table else []


# Threaded and grooved pipes of ordinary wall.
STEEL = ("6 10.2 2, 8 13.5 2.5, 10 17.2 2.5, 15 21.3 2.8, 20 26.9 2.8, 25 33.7 3.2, 32 42.4 3.5, 40 48.3 3.5, 50 60.3 3.8,"
         "65 76.1 4, 80 88.9 4, 100 114.3 4, 125 139.7 4, 150 168.3 4.5, 200 219.1 6")
STEEL_BY_OUTER_DIAMETER = ",".join(line.split(maxsplit=1)[1] for line in STEEL.split(","))

SERIES = {
    "GB/T 3091-2015 普通钢管": Series(
        "outer diameters and walls of pipes with threaded or grooved ends, by nominal diameter", tabulated(STEEL)),
    "GB/T 3091-2015 普通钢管(外径)": Series(
        "outer diameters and walls of pipes with threaded or grooved ends", by_outer_diameter(STEEL_BY_OUTER_DIAMETER)),
    "GB/T 17395-2008": Series(
        "table 1, ordinary steel pipes; made for water as of GB/T 8163", catalogue(
            "13.5 14 16 17 18 19 20 21 22 25 27 28 30 32 34 35 38 42 45 48 51 54 57 60 63.5 68 70 73 76 83 89 95 102 108 114"
            " 121 127 133 140 146 152 159 168 180 194 203 219 245 273 299 325 340 351 356 377 402 406 426",
            "2 2.2 2.5 2.8 3 3.2 3.5 4 4.5 5 5.5 6 6.5 7 7.5 8 8.5 9 9.5 10")),
    "SY/T 5037-2018": Series(
        "outer diameters and walls in common use", catalogue(
            "219.1 273 325=323.9 377 406.4 426 457 508 529 559 610 630 660 711 720 762 813 820 914 920 1016 1020",
            "5 6 7 8 9 10 11 12")),
    "GB/T 19228.2-2011 I系列": Series(
        "basic sizes of the pipes, series I", by_outer_diameter(
            "18 1, 22 1.2, 28 1.2, 35 1.5, 42 1.5, 54 1.5, 76.1 2, 88.9 2, 108 2")),
    "CJ/T 151-2016": Series("sizes of the pipes", by_outer_diameter("133 2.5, 159 3")),
    "GB/T 18033-2017 B型": Series(
        "table of sizes, wall B", by_outer_diameter(
            "6 0.8, 8 0.8, 10 0.8, 12 0.8, 15 1, 18 1, 22 1.2, 28 1.2, 35 1.5, 42 1.5, 54 2, 67 2, 76 2, 89 2, 108 2.5,"
            "133 2.5, 159 3.5, 219 5, 267 5.5, 273 5.8, 325 6.5")),
    "GB/T 28897-2012 内衬塑": Series(
        "thickness of the lining; steel as of GB/T 3091, ordinary wall", lined(
            tabulated(STEEL), "65 1.5, 125 2, 200 2.5")),
    "CJ/T 120-2016 内涂聚乙烯": Series(
        "thickness of the inner polyethylene coat; steel as of GB/T 3091, ordinary wall", lined(
            tabulated(STEEL), "65 0.4, 150 0.5, 300 0.6")),
    "GB/T 18997.1-2003": Series(
        "table of sizes, reference inner diameters", between(
            "12 12 8.3, 16 16 12.1, 20 20 15.7, 25 25 19.9, 32 32 25.7, 40 40 31.6, 50 50 40.5, 63 63 50.5, 75 75 59.3")),
    "GB/T 18742.2-2017 S4": Series("walls of series S4, by ISO 4065", plastic(6)),
    "GB/T 18742.2-2017 S3.2": Series("walls of series S3.2, by ISO 4065", plastic(5)),
    "GB/T 13663.2-2018 SDR11": Series("table 3, walls of SDR11, by ISO 4065 (S5)", plastic(7, "2.3", "32 3.0")),
    "GB/T 13663.2-2018 SDR17": Series("table 3, walls of SDR17, by ISO 4065 (S8)", plastic(9, "2.3")),
    "GB/T 5836.1-2018": Series(
        "table of outer diameters and walls", tabulated(
            "32 32 2, 40 40 2, 50 50 2, 75 75 2.3, 90 90 3, 110 110 3.2, 125 125 3.2, 160 160 4, 200 200 4.9, 250 250 6.2,"
            "315 315 7.8")),
    # Up to 90 the pressure is reckoned with 2.5 as safety, above with 2.0, so the series changes there.
    "GB/T 10002.1-2006 PN2.0": Series("walls up to 90, S5, by ISO 4065", plastic(7, "2")),
    "GB/T 10002.1-2006 PN1.6": Series("walls up to 90, S6.3, by ISO 4065", plastic(8, "2")),
    "GB/T 10002.1-2006 PN1.25": Series("walls up to 90, S8, by ISO 4065", plastic(9, "2")),
    "GB/T 10002.1-2006 PN1.0(≤90)": Series("walls up to 90, S10, by ISO 4065", plastic(10, "2")),
    "GB/T 10002.1-2006 PN1.0(≥110)": Series("walls from 110, S12.5, by ISO 4065", plastic(11, "2")),
    "CJ/T 250-2018 S12.5": Series("walls of series S12.5, by ISO 4065", plastic(11, "3")),
    "GB/T 18993.2-2003 S5": Series("walls of series S5, by ISO 4065", plastic(7, "2")),
    "GB/T 12772-2016 W型": Series(
        "sizes of straight pipes without sockets, type W", tabulated(
            "50 61 4.3, 75 86 4.4, 100 111 4.8, 125 137 4.8, 150 162 4.8, 200 214 5.8, 250 268 6.4, 300 320 7")),
    "GB/T 12772-2016 A型A级": Series(
        "sizes of straight pipes with flange glands, type A, class A", tabulated(
            "50 61 4.5, 75 86 5, 100 111 5, 125 137 5.5, 150 162 5.5, 200 214 6")),
    "GB/T 13295-2019 K9": Series(
        "outer diameters by the table of sockets and spigots, walls K (0.5 + 0.001 DN), 6 at least", iron(
            "80 98, 100 118, 125 144, 150 170, 200 222, 250 274, 300 326, 350 378, 400 429, 450 480, 500 532, 600 635,"
            "700 738, 800 842, 900 945, 1000 1048, 1100 1152, 1200 1255, 1400 1462, 1500 1565, 1600 1668, 1800 1875,"
            "2000 2082, 2200 2288, 2400 2495, 2600 2702",
            lambda dn: 9 * (Decimal("0.5") + Decimal("0.001") * dn), "6")),
    "GB/T 3422-2008 LA级": Series(
        "outer diameters by the table of continuously cast pipes, walls K (7 + 0.02 DN) / 12 with K 11, 9 at least", iron(
            "75 93, 100 118, 150 169, 200 220, 250 271.6, 300 322.8, 350 374, 400 425.6, 450 476.8, 500 528, 600 630.8,"
            "700 733, 800 836, 900 939, 1000 1041",
            lambda dn: 11 * (7 + Decimal("0.02") * dn) / 12, "9")),
    "GB/T 11836-2009 钢筋混凝土管I级": Series(
        "table of reinforced concrete pipes, class I", bored(
            "200 30, 300 30, 400 40, 500 50, 600 55, 700 60, 800 70, 900 75, 1000 85, 1100 95, 1200 100, 1350 115, 1400 117,"
            "1500 125, 1600 135, 1650 140, 1800 150, 2000 170, 2200 185, 2400 200")),
    "GB/T 11836-2009 混凝土管I级": Series(
        "table of concrete pipes, class I", bored(
            "100 19, 150 19, 200 22, 250 25, 300 30, 350 35, 400 40, 450 45, 500 50, 600 60")),
    # The wall follows the stiffness ordered; the inner diameter counts as the nominal one.
    "GB/T 21238-2016 外径系列": Series(
        "table 1, outer diameters", between(
            "300 310 300, 400 412 400, 500 514 500, 600 616 600, 700 718 700, 800 820 800, 900 924 900, 1000 1026 1000,"
            "1200 1229 1200, 1400 1434 1400, 1600 1638 1600, 1800 1842 1800, 2000 2046 2000")),
    "GB/T 19472.1-2004 外径系列": Series(
        "table of sizes by outer diameter, least mean inner diameters", between(
            "110 110 90, 125 125 105, 160 160 134, 200 200 167, 250 250 209, 315 315 263, 400 400 335, 500 500 418,"
            "630 630 527, 800 800 669, 1000 1000 837, 1200 1200 1005")),
}


def faults(rows):
    """What pipe.csv says otherwise than the standards it names."""
    for line, row in enumerate(rows, start=2):
        series = SERIES.get(row["standard"])
        size = tuple(Decimal(row[column] or 0) for column in ("D", "wall", "lining"))
        if series is None:
            yield f"pipe.csv line {line}: no series {row['standard']}"
        elif size not in series.sizes(Decimal(row["DN"])):
            stated = " or ".join(shown(each) for each in series.sizes(Decimal(row["DN"]))) or "no such size"
            yield (f"pipe.csv line {line}: {row['GC']} {row['DN']} is {shown(size)}; {row['standard']}, {series.source}: "
                   f"{stated}")


def shown(size):
    return " x ".join(f"{value.normalize():f}" for value in size if value)
