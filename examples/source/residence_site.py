"""The site around the residence: outlets, wells, mains, the septic tank. In mm, in the coordinates of the building's plan."""

from residence_base import PIPE_STYLE, STANDARD, distance, mark
from residence_pipes import RISERS
from residence_walls import CORE_WALLS, FLAT_WALLS, UNIT, cut, flats, outlines, turned

WELL_STYLE = "给排-井"
TEXT, WELL = 1250, 1000  # height of texts for 1:500, diameter of wells as drawn
# Scales of linetypes: letters that can be read at 1:500; smaller ones where a pipe has no room for that pattern.
LETTERS, SMALL_LETTERS, ROOM = 6.0, 4.0, 10500
PLASTIC = "UPVC管"
EAST, CITY = 45500, 57300  # the last wells beside the building, and where the city's pipes are met
# Where the drains lie, and their wells: what they take, y, diameter, slope, height of the first well; where the names stand.
DRAINS = {
    "sewage": ("W", 14800, "dn300", 0.005, -1700, ["above"] * 9 + ["above left"] + ["above"] * 2),
    "roof": ("Y", 19500, "d400", 0.003, -1750, ["right"]),
    "waste": ("F", -4500, "dn200", 0.005, -1450, ["right below", "left below"]),
    "balconies": ("Y", -7500, "d400", 0.003, -1500, ["below"]),
}
# How the risers of a flat lead outdoors: system and place of the riser; diameter, slope, height at the riser, the drain, and
# the way there in the flat's coordinates. A well is where it ends.
OUTLETS = {
    ("W", (230, 6370)): ("dn160", 0.010, -1200, "sewage", [(230, 14570), (0, 14800)]),
    ("F", (230, 5930)): ("dn110", 0.012, -1200, "sewage", [(830, 6530), (830, 14200), (0, 14800)]),
    ("W", (3830, 7820)): ("dn160", 0.010, -1200, "sewage", [(3830, 14800)]),
    ("F", (3830, 7380)): ("dn110", 0.012, -1200, "sewage", [(4430, 7980), (4430, 14200), (3830, 14800)]),
    ("F", (7270, 9370)): ("dn110", 0.012, -1200, "sewage", [(6870, 9770), (6870, 14800)]),
    ("Y", (3600, 9830)): ("dn160", 0.010, -1000, "roof", [(2500, 10930), (2500, 19500)]),
    ("F", (6520, -850)): ("dn110", 0.012, -1000, "waste", [(7120, -1450), (7120, -4500)]),
    ("Y", (6520, -1120)): ("dn160", 0.010, -1000, "balconies", [(5320, -2320), (5320, -7500)]),
}
# Where the diameters of outlets stand, in some flats only; the others are alike. Flats, outlet, middle, rotation.
OUTLET_TEXTS = [((0, 3), ("W", (230, 6370)), (-750, 12300), 90), ((0, 3), ("F", (3830, 7380)), (5250, 12300), 90),
                ((1, 2), ("Y", (3600, 9830)), (1700, 17000), 90), ((0, 3), ("F", (6520, -850)), (9400, -2500), 0),
                ((0,), ("Y", (6520, -1120)), (4500, -5300), 90)]
# And of drains, with their slopes where there is room in one line: drain, what is told, middle, rotation.
DRAIN_TEXTS = [("sewage", "{size}", (49300, 16000), 0), ("sewage", "{fall}", (49000, 13500), 0),
               ("roof", "{size} {fall}", (53000, 20700), 0), ("waste", "{size} {fall}", (21000, -3300), 0),
               ("waste", "{size} {fall}", (EAST - 1300, 5000), 90), ("balconies", "{size} {fall}", (21000, -6300), 0)]
# System, middle, rotation, text, height.
PRESSURE_TEXTS = [("J", (4500, 23050), 0, "DN150", TEXT), ("XH", (4500, 25150), 0, "DN150", TEXT),
                  ("J", (11750, 12200), 90, "DN100", TEXT), ("XH", (10560, 16950), 90, "DN100", 1000)]
# Inverts: drain, x of the well, where the text stands beside it.
LEVELS = [("sewage", 0, -800, 250, "RM"), ("sewage", EAST, 700, -3200, "LM"), ("roof", 2500, -800, 0, "RM"),
          ("roof", EAST, 700, -1000, "LM"), ("waste", EAST, 700, 450, "LB"), ("balconies", 5320, -1500, -1300, "RM"),
          ("balconies", EAST, 2000, -1450, "LM")]
PLACE_TEXTS = [("井旁数字为管内底标高（m），±0.000 为首层室内地面", (21000, -10400)), ("化粪池", (53500, 12300)), ("接市政污水", (54200, 10500)),
               ("接市政雨水", (54300, 17900)), ("接市政给水", (54000, 23050)), ("接小区消防环网", (53950, 25150)), ("接市政雨水", (54000, -8900))]
# Along the road: system, y, height, where pipes branch off to the stairwells, and how far those lead. Fire water passes below
# the water that is drunk, and above the drains.
PRESSURE = [("J", 22000, -900, [12680, UNIT + 12680], 9200), ("XH", 24100, -1250, [9330, UNIT + 9330], 11900)]


class Site:
    """Collects pipes and nodes, and makes the entities when it is known how deep the wells are."""

    def __init__(self, pen):
        self.pen, self.pipes, self.nodes = pen, [], {}

    def node(self, system, name, at, kind=1):
        self.nodes[at] = system, name, kind

    def run(self, system, size, points, height, slope=0.0, material=None):
        """Along the points, from a height downwards; the height of its end."""
        for start, end in zip(points, points[1:]):
            low = round(height - slope * distance(start, end), 1)
            self.pipes.append((system, size, (*start, height), (*end, low), slope, material))
            height = low
        return height

    def drain(self, name, points, height):
        system, _, size, slope, *_ = DRAINS[name]
        return self.run(system, size, points, height, slope)

    def finish(self):
        for at, (system, name, kind) in self.nodes.items():
            depth = min(end[2] for pipe in self.pipes for end in pipe[2:4] if end[:2] == at)
            self.pen.add("NODE", STANDARD.layer(system, "井" if kind == 1 else "设备"), (*at, depth), kind,
                         WELL if kind == 1 else 3000, name=name)
        for system, size, start, end, slope, material in self.pipes:
            names = [self.nodes[place[:2]][1] if place[:2] in self.nodes else None for place in (start, end)]
            marks = mark("PIPE-DN", size) + mark("PIPE-MATERIAL", material or STANDARD.systems[STANDARD.letters[system]]["outdoor"])
            marks += mark("PIPE-SLOPE", "%.3f" % slope) if slope else []
            letters = LETTERS if distance(start, end) > ROOM else SMALL_LETTERS
            self.pen.add("PIPE", STANDARD.layer(system, "管线"), start, end, STANDARD.letters[system], names,
                         STANDARD.width(system), xdata=marks, linetype_scale=letters)

    def name(self, at, text, place):
        dx, dy, align = {"above": (0, 800, "CB"), "above left": (900, 800, "RB"), "below": (0, -800, "CT"), "right": (700, 350, "LB"),
                         "right below": (700, -350, "LT"), "left below": (-700, -350, "RT")}[place]
        self.pen.text("给排-井标注", (at[0] + dx, at[1] + dy), text, TEXT, align, style=WELL_STYLE)

    def size(self, system, at, rotation, text, height=TEXT):
        self.pen.text(STANDARD.layer(system, "管径文字"), at, text, height, "CM", rotation, PIPE_STYLE)

    def level(self, drain, x, dx, dy, align):
        """The invert of a drain at a well, in metres."""
        system, y, size, slope, *_ = drain
        ends = [end[2] - float(size.lstrip("dn")) / 2 for pipe in self.pipes if pipe[0] == system and pipe[1] == size
                for end in pipe[2:4] if end[:2] == (x, y)]
        self.pen.text("给排-井标注", (x + dx, y + dy), "%.2f" % (min(ends) / 1000), TEXT, align, style=WELL_STYLE)


def add_site(pen):
    site = Site(pen)
    add_ground(pen)
    wells = add_outlets(site)
    ends = add_drains(site, wells)
    # The waste of the balconies meets the sewage before the septic tank.
    corner, last, tank = (EAST, DRAINS["waste"][1]), (EAST, DRAINS["sewage"][1]), (53500, DRAINS["sewage"][1])
    site.drain("waste", [corner, last], ends["waste"])
    site.node("W", "化粪池", tank, 2)
    low = site.drain("sewage", [last, tank], ends["sewage"])
    site.drain("sewage", [tank, (CITY, tank[1])], round(low - 50, 1))
    for drain in ("roof", "balconies"):
        y = DRAINS[drain][1]
        site.drain(drain, [(EAST, y), (CITY, y)], ends[drain])
    add_mains(site)
    site.finish()
    add_texts(site)


def add_texts(site):
    for some, outlet, at, rotation in OUTLET_TEXTS:
        for x, mirrored in [flats()[flat] for flat in some]:
            site.size(outlet[0], site.pen.frame(x, 0, mirrored).at(at), rotation, OUTLETS[outlet][0])
    for drain, text, at, rotation in DRAIN_TEXTS:
        system, _, size, slope, *_ = DRAINS[drain]
        site.size(system, at, rotation, text.format(size=size, fall="i=%.3f" % slope))
    for row in PRESSURE_TEXTS:
        site.size(*row)
    for drain, x, dx, dy, align in LEVELS:
        site.level(DRAINS[drain], x, dx, dy, align)
    for text, at in PLACE_TEXTS:
        site.pen.text("给排-井标注", at, text, TEXT, "CM", style=WELL_STYLE)


def add_outlets(site):
    """What leaves the building; the places of the wells it leads to, by drain."""
    wells = {drain: set() for drain in DRAINS}
    for x, mirrored in flats():
        flat = site.pen.frame(x, 0, mirrored)
        for system, _, riser, *_ in RISERS:
            if system not in ("W", "F", "Y"):
                continue
            size, slope, height, drain, way = OUTLETS[system, riser]
            points = [flat.at(point) for point in [riser] + way]
            site.run(system, size, points, height, slope, PLASTIC)
            wells[drain].add(points[-1])
    return wells


def add_drains(site, wells):
    """Wells in a row from west to east; the height at which each drain ends."""
    ends, numbers = {}, {}
    for drain, (system, y, _, _, height, places) in DRAINS.items():
        row = sorted(wells[drain]) + [(EAST, y)]
        for number, at in enumerate(row):
            numbers[system] = numbers.get(system, 0) + 1
            name = "%s%d" % (system, numbers[system])
            site.node(system, name, at)
            site.name(at, name, places[number % len(places)])
        ends[drain] = site.drain(drain, row, height)
    return ends


def add_mains(site):
    """Cold water and the fire main along the road, and what leads from them to the stairwells."""
    for system, y, height, entries, inner in PRESSURE:
        site.run(system, "DN150", [(-9000, y)] + [(x, y) for x in entries] + [(CITY, y)], height)
        for number, x in enumerate(entries, 1):
            site.node(system, "%s井%d" % (system, number), (x, y))
            site.run(system, "DN100", [(x, inner), (x, y)], height)  # northwards, which turns letters to the right


def add_ground(pen):
    walls = []
    for x, mirrored in flats():
        walls += turned(list(cut([wall[:5] + ([],) for wall in FLAT_WALLS])), x, mirrored)
    for x in (0, UNIT):
        walls += turned(list(cut([wall[:5] + ([],) for wall in CORE_WALLS])), x, False)
    around = max(outlines(walls), key=lambda loop: max(x for x, _ in loop) - min(x for x, _ in loop) + len(loop) / 1e3)
    pen.wide("建筑-墙", [(x, y, 0) for x, y in around], 200, True)
    for unit in (0, UNIT):
        pen.path("建筑-阳台", [(unit + 6300, -100), (unit + 6300, -1500), (unit + 14700, -1500), (unit + 14700, -100)])
    pen.text("建筑-房间名", (UNIT, 4800), "1#住宅楼 18F", 2200, "CM")
    for y in (26300, 31900):
        pen.lines("总图-道路", (-9000, y), (CITY, y))
    pen.text("总图-道路", (21000, 29100), "小区道路", TEXT, "CM")
    for number in range(12):
        x, y = -3500 + number * 4600, -13500 if number % 2 else -12500
        pen.circle("总图-树", (x, y), 1300)
        for angle in range(3):
            dx, dy = ((900, 0), (450, 780), (-450, 780))[angle]
            pen.lines("总图-树", (x - dx, y - dy), (x + dx, y + dy))
    # The north arrow.
    pen.circle("公用-符号", (-6500, 14000), 1800)
    pen.path("公用-符号", [(-7000, 12300), (-6500, 15800), (-6000, 12300)], True)
    pen.hatch("公用-符号", "SOLID", [], [(-6500, 12700), (-6500, 15800), (-6000, 12300)])
    pen.text("公用-符号", (-6500, 16300), "北", TEXT, "CB")
