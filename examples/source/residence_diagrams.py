"""Riser diagrams: the same design along its height, not to scale across; and the legend of signs and lines.

Storeys that are all alike are left out between break lines. The signs are those of the plan.
"""

from residence_base import PIPE_STYLE, RISER_STYLE, STANDARD, STYLE, TABLE_STYLE, text_width

# Storeys that are shown: name, level, where it is drawn; breaks lie between.
STOREYS = [("1F", "±0.000", 0), ("2F", "2.900", 2600), ("9F", "23.200", 5800), ("10F", "26.100", 8400), ("18F", "49.300", 11600),
           ("屋面", "52.200", 14200)]
FLOORS = {name: y for name, _, y in STOREYS}
BREAKS = (4250, 10050)
ACCESS_STOREYS = ("1F", "6F", "12F", "18F")  # where stacks of soil and waste have an opening
BELOW = -1400  # where mains and outlets lie, below the ground floor
SMALL = 250  # height of the texts


class Diagram:
    """Lines and signs of one system at a time; x counts from the diagram's west end."""

    def __init__(self, pen):
        self.pen, self.system = pen, None

    def of(self, system):
        self.system = system
        return self

    def layer(self, kind):
        return STANDARD.layer(self.system, kind)

    def pipe(self, *points):
        self.pen.lines(self.layer("管线"), *points)

    def text(self, at, text, align="LM", rotation=0):
        self.pen.text(self.layer("标注"), at, text, SMALL, align, rotation, STYLE)

    def size(self, at, text, rotation=0):
        self.pen.text(self.layer("管径文字"), at, text, SMALL, "CM", rotation, PIPE_STYLE)

    def riser(self, x, low, high, name, at):
        """An upright pipe, interrupted where storeys are left out; its label stands in a shelf to the west."""
        stops = [low] + [stop for y in BREAKS if low < y < high for stop in (y - 150, y + 150)] + [high]
        for start, end in zip(stops[::2], stops[1::2]):
            self.pipe((x, start), (x, end))
        for y in BREAKS:
            if low < y < high:
                for edge in (y - 150, y + 150):
                    self.pen.path(self.layer("标注"), [(x - 220, edge - 60), (x - 70, edge + 60), (x + 70, edge - 60), (x + 220, edge + 60)])
        width = text_width(name, SMALL) + 80
        layer = self.layer("立管编号")
        self.pen.lines(layer, (x, at - 200), (x - 250, at), (x - 250 - width, at))
        self.pen.text(layer, (x - 250 - width / 2, at + 50), name, SMALL, "CB", style=RISER_STYLE)

    # --- signs

    def valve(self, x, y, upright=False, size=140):
        points = [(-size, size / 2), (-size, -size / 2), (size, size / 2), (size, -size / 2)]
        self.pen.path(self.layer("阀门"), [(x + b, y + a) if upright else (x + a, y + b) for a, b in points], True)

    def meter(self, x, y):
        layer = self.layer("给水附件")
        self.pen.box(layer, x - 170, y - 90, x + 170, y + 90)
        self.pen.path(layer, [(x - 170, y + 90), (x + 170, y), (x - 170, y - 90)])

    def vent(self, x, y):
        """The air release valve at the top of a riser."""
        layer = self.layer("给水附件")
        self.pen.circle(layer, (x, y + 110), 110)
        self.pen.lines(layer, (x, y + 220), (x, y + 330), (x + 90, y + 330))

    def access(self, x, y):
        """The opening for inspection: a branch with a closed end."""
        layer = self.layer("排水附件")
        self.pen.lines(layer, (x, y - 90), (x + 150, y), (x, y + 90))
        self.pen.lines(layer, (x + 150, y - 110), (x + 150, y + 110))

    def cap(self, x, y):
        layer = self.layer("排水附件")
        self.pen.arc(layer, (x, y), 160, 0, 180)
        self.pen.lines(layer, (x - 160, y), (x + 160, y))

    def trap(self, x, y):
        """Down from the fixture, with its trap."""
        self.pipe((x, y), (x, y + 120))
        self.pen.arc(self.layer("管线"), (x - 80, y + 120), 80, 0, 180)
        self.pen.arc(self.layer("管线"), (x - 240, y + 120), 80, 180, 0)
        self.pipe((x - 320, y + 120), (x - 320, y + 420))

    def floor_drain(self, x, y):
        """A funnel at the floor's level, and the drop below it."""
        self.pipe((x, y), (x, y + 350))
        layer = self.layer("排水附件")
        self.pen.lines(layer, (x - 130, y + 350), (x + 130, y + 350))
        self.pen.arc(layer, (x, y + 350), 130, 180, 0)

    def hydrant(self, x, y):
        self.pen.box("给排-消火栓", x, y - 200, x + 200, y + 200)
        self.pen.hatch("给排-消火栓", "SOLID", [], [(x, y - 200), (x + 200, y - 200), (x + 200, y + 200)])

    def head(self, x, y):
        layer = self.layer("喷头")
        self.pipe((x, y), (x, y - 200))
        self.pen.path(layer, [(x - 90, y - 330), (x + 90, y - 330), (x, y - 200)], True)

    def cleanout(self, x, y):
        layer = self.layer("排水附件")
        self.pen.circle(layer, (x, y), 150)
        self.pen.lines(layer, (x - 150, y), (x + 150, y))
        self.pen.lines(layer, (x, y - 150), (x, y + 150))

    def roof_outlet(self, x, y):
        self.pen.box("给排-雨水斗", x - 160, y, x + 160, y + 110)
        self.pen.arc("给排-雨水斗", (x, y + 110), 160, 0, 180)

    # --- the drawing's frame

    def storeys(self, width, title):
        for name, level, y in STOREYS:
            self.pen.lines("公用-标高", (-600, y), (width, y))
            self.pen.path("公用-标高", [(-450, y), (-300, y + 150), (-600, y + 150)], True)
            self.pen.text("公用-标高", (-650, y + 190), level, SMALL, "LB")
            self.pen.text("公用-标高", (-700, y), name, SMALL, "RM")
        add_title(self.pen, (width / 2, -3100), title, "")


def add_title(pen, at, title, scale):
    """A drawing's name over a thick and a thin line, its scale beside it."""
    x, y = at
    half = text_width(title, 500) / 2 + 250
    pen.text("公用-图名标注", (x, y), title, 500, "CB")
    pen.wide("公用-图名标注", [(x - half, y - 150), (x + half, y - 150)], 60)
    pen.lines("公用-图名标注", (x - half, y - 250), (x + half, y - 250))
    if scale:
        pen.text("公用-图名标注", (x + half + 150, y), scale, 350, "LB")


def cold_water(pen):
    diagram = Diagram(pen).of("J")
    diagram.storeys(8300, "给水系统图")
    for x, low, high, name, served, source in ((2000, BELOW, FLOORS["9F"] + 1900, "JL-1", ("1F", "2F", "9F"), "接市政给水管 DN65"),
                                               (5600, BELOW - 500, FLOORS["18F"] + 1900, "JL-2", ("10F", "18F"), "接加压给水管 DN65")):
        diagram.riser(x, low, high, name, FLOORS["2F"] + 700)
        diagram.pipe((-500, low), (x, low))
        diagram.text((-500, low + 200), source)
        diagram.valve(x, -500, True)
        diagram.size((x - 220, 1700), "DN65", 90)
        diagram.vent(x, high)
        for storey in served:
            y = FLOORS[storey] + 1000
            diagram.pipe((x, y), (x + 1800, y))
            diagram.valve(x + 450, y)
            diagram.meter(x + 1050, y)
            diagram.size((x + 1300, y + 280), "DN25")
            diagram.text((x + 650, y - 330), "接户内 2路")
    diagram.size((1780, FLOORS["9F"] + 450), "DN50", 90)
    diagram.size((5380, FLOORS["18F"] + 450), "DN50", 90)


def hot_water(pen):
    diagram = Diagram(pen).of("RJ")
    diagram.storeys(6400, "热水系统图")
    top = FLOORS["屋面"] - 500
    diagram.riser(3600, BELOW, top, "RJL-1", FLOORS["9F"] + 1900)
    diagram.pipe((-500, BELOW), (3600, BELOW))
    diagram.text((-500, BELOW + 200), "热水供水 DN50")
    diagram.valve(3600, -500, True)
    diagram.size((3820, 1700), "DN50", 90)
    diagram.size((3820, FLOORS["18F"] + 700), "DN40", 90)
    for storey in ("1F", "2F", "9F", "10F", "18F"):
        y = FLOORS[storey] + 1000
        diagram.pipe((3600, y), (1600, y))
        diagram.valve(3150, y)
        diagram.meter(2500, y)
        diagram.size((2350, y + 280), "DN20")
        diagram.text((1600, y - 330), "接户内 2路")
    diagram.vent(3600, top)
    diagram.of("RH")
    diagram.riser(5400, BELOW - 500, top, "RHL-1", FLOORS["9F"] + 1300)
    diagram.pipe((3600, top), (5400, top))
    diagram.pipe((-500, BELOW - 500), (5400, BELOW - 500))
    diagram.text((-500, BELOW - 300), "热水回水 DN32")
    diagram.valve(5400, -500, True)
    diagram.size((5620, 1700), "DN32", 90)


def drainage(pen):
    diagram = Diagram(pen).of("W")
    diagram.storeys(8600, "排水系统图")
    roof, served = FLOORS["屋面"], ("2F", "9F", "10F", "18F")
    soil, vent, waste = 2300, 3900, 5500
    diagram.riser(soil, BELOW, roof + 1000, "WL-2", FLOORS["2F"] + 700)
    diagram.cap(soil, roof + 1000)
    diagram.pipe((-500, BELOW), (soil, BELOW))
    diagram.text((-500, BELOW + 250), "dn160 i=0.010")
    diagram.size((soil - 220, 650), "dn110", 90)
    for storey in served:
        y = FLOORS[storey] - 400
        diagram.pipe((soil, y - 150), (soil - 150, y), (soil - 900, y))
        diagram.trap(soil - 900, y)
        diagram.size((soil - 550, y - 220), "dn110")
    for storey in [one for one in ACCESS_STOREYS if one in FLOORS]:
        diagram.access(soil, FLOORS[storey] + 1000)
    diagram.of("T")
    diagram.riser(vent, -500, roof - 700, "TL-2", FLOORS["9F"] + 1300)
    diagram.pipe((vent, -500), (soil, -900))
    diagram.pipe((vent, roof - 700), (soil, roof - 350))
    diagram.size((vent - 220, 1700), "dn110", 90)
    for storey in ("2F", "10F", "18F"):
        y = FLOORS[storey] + 1150
        diagram.pipe((soil, y - 200), (vent, y + 200))
    diagram.of("F")
    diagram.riser(waste, BELOW - 600, roof + 1000, "FL-2", FLOORS["2F"] + 700)
    diagram.cap(waste, roof + 1000)
    diagram.pipe((-500, BELOW - 600), (waste, BELOW - 600))
    diagram.text((-500, BELOW - 350), "dn110 i=0.012")
    diagram.size((waste - 220, 1700), "dn110", 90)
    for storey in served:
        y = FLOORS[storey] - 400
        diagram.pipe((waste, y - 150), (waste + 150, y), (waste + 2200, y))
        diagram.floor_drain(waste + 1100, y)
        diagram.trap(waste + 2200, y)
        diagram.size((waste + 700, y - 220), "dn75")
        diagram.size((waste + 1750, y - 220), "dn50")
    for storey in [one for one in ACCESS_STOREYS if one in FLOORS]:
        diagram.access(waste, FLOORS[storey] + 1000)


def rain(pen):
    diagram = Diagram(pen).of("Y")
    diagram.storeys(3200, "雨水系统图")
    x, roof = 2000, FLOORS["屋面"]
    diagram.riser(x, BELOW, roof, "YL-1", FLOORS["2F"] + 700)
    diagram.pipe((-500, BELOW), (x, BELOW))
    diagram.text((-500, BELOW + 250), "dn160 i=0.010")
    diagram.size((x + 230, 1700), "dn110", 90)
    diagram.access(x, 1000)
    diagram.roof_outlet(x, roof)
    diagram.text((x - 200, roof + 520), "87型雨水斗 dn110", "CM")


def hydrants(pen):
    diagram = Diagram(pen).of("XH")
    diagram.storeys(4600, "消火栓系统图")
    x, roof = 2000, FLOORS["屋面"]
    diagram.riser(x, BELOW, roof + 1100, "XHL-1", FLOORS["2F"] + 700)
    diagram.pipe((-500, BELOW), (4600, BELOW))
    diagram.text((-500, BELOW + 250), "引入管 DN100")
    # Both risers are joined at the foot and below the roof.
    diagram.pipe((x, roof - 300), (4600, roof - 300))
    for y in (BELOW, roof - 300):
        diagram.text((x + 350, y + 250), "DN100 接 XHL-2")
    diagram.valve(x, -500, True)
    diagram.size((x - 220, 1700), "DN100", 90)
    for storey in ("1F", "2F", "9F", "10F", "18F", "屋面"):
        y = FLOORS[storey] + 1100
        diagram.pipe((x, y), (x + 900, y))
        diagram.hydrant(x + 900, y)
        diagram.size((x + 500, y + 220), "DN65")
    diagram.vent(x, roof + 1100)
    diagram.valve(x, FLOORS["18F"] + 2100, True)
    diagram.text((x + 1200, roof + 1100), "试验消火栓")


def sprinklers(pen):
    diagram = Diagram(pen).of("ZP")
    diagram.storeys(7000, "自动喷水灭火系统图")
    x = 1800
    diagram.riser(x, BELOW, FLOORS["18F"] + 2300, "ZPL-1", FLOORS["2F"] + 700)
    diagram.pipe((-500, BELOW), (x, BELOW))
    diagram.text((-500, BELOW + 250), "接湿式报警阀组 DN100")
    diagram.valve(x, -500, True)
    diagram.size((x - 220, 1300), "DN100", 90)
    diagram.vent(x, FLOORS["18F"] + 2300)
    for storey in ("1F", "2F", "9F", "10F", "18F"):
        y = FLOORS[storey] + 2150
        diagram.pipe((x, y), (6300, y))
        diagram.valve(x + 450, y)
        add_flow_switch(diagram.pen, (x + 950, y), 150)
        for head in (3700, 4500, 5300):
            diagram.head(head, y)
        diagram.size((3300, y + 180), "DN50")
        diagram.pipe((6300, y), (6300, y - 600))
        diagram.valve(6300, y - 750, True, 110)
        diagram.size((4950, y + 180), "DN25")
    diagram.text((5650, FLOORS["18F"] + 950), "末端试水")


# Diagrams from west to east: where each begins.
ROW = [(cold_water, 0), (hot_water, 11000), (drainage, 20000), (rain, 31300), (hydrants, 37100), (sprinklers, 44400)]


def add_diagrams(pen):
    for add, x in ROW:
        add(pen.frame(pen.x + x, pen.y))


# --- the legend

LINES = [("J", "生活给水管"), ("RJ", "热水给水管"), ("RH", "热水回水管"), ("W", "污水管"), ("F", "废水管"), ("T", "通气管"), ("Y", "雨水管"),
         ("XH", "消火栓给水管"), ("ZP", "自动喷水给水管")]


def add_legend(pen):
    """Two columns of a sign and what it means: lines, and fittings to the east of them."""
    diagram = Diagram(pen)
    line = lambda x, y: pen.lines(diagram.layer("管线"), (x - 1500, y), (x + 1500, y))
    lines = [(system, line, name) for system, name in LINES] + [
        ("J", lambda x, y: pen.circle(diagram.layer("立管"), (x, y), 150), "立管"), ("F", diagram.cleanout, "清扫口"),
        ("J", lambda x, y: pen.insert("给排-洁具", "淋浴器", (x, y + 80)), "淋浴器")]
    fittings = [("J", diagram.valve, "闸阀、截止阀"), ("J", diagram.meter, "水表"),
                ("J", lambda x, y: diagram.vent(x, y - 160), "自动排气阀"), ("F", lambda x, y: drain_sign(diagram, x, y), "地漏"),
                ("F", lambda x, y: diagram.access(x - 70, y), "检查口"), ("F", lambda x, y: diagram.cap(x, y - 80), "通气帽"),
                ("Y", lambda x, y: diagram.roof_outlet(x, y - 130), "雨水斗"),
                ("XH", lambda x, y: diagram.hydrant(x - 100, y), "消火栓"),
                ("ZP", diagram.valve, "信号闸阀"), ("ZP", lambda x, y: add_flow_switch(pen, (x, y), 150), "水流指示器"),
                ("ZP", lambda x, y: head_sign(diagram, x, y), "喷头（平面）"), ("ZP", lambda x, y: diagram.head(x, y + 170), "喷头（系统）")]
    top, high = 500, 700
    pen.text("公用-表格", (6300, top + 450), "图例", 500, "CM", style=TABLE_STYLE)
    for number in range(len(lines) + 1):
        pen.lines("公用-表格", (0, top - number * high), (12600, top - number * high))
    for x in (0, 3600, 7800, 10000, 12600):
        pen.lines("公用-表格", (x, top), (x, top - len(lines) * high))
    for column, middle, start in ((lines, 1800, 3800), (fittings, 8900, 10150)):
        for number, (system, sign, meaning) in enumerate(column):
            y = top - (number + 0.5) * high
            diagram.of(system)
            sign(middle, y)
            pen.text("公用-表格", (start, y), meaning, 350, "LM", style=TABLE_STYLE)


def add_flow_switch(pen, at, radius):
    layer = STANDARD.layer("ZP", "给水附件")
    pen.circle(layer, at, radius)
    pen.text(layer, at, "L", 1.2 * radius, "CM")


def drain_sign(diagram, x, y):
    diagram.pen.circle(diagram.layer("排水附件"), (x, y), 150)
    for side in (-60, 0, 60):
        half = (150 ** 2 - side ** 2) ** 0.5
        diagram.pen.lines(diagram.layer("排水附件"), (x + side, y - half), (x + side, y + half))


def head_sign(diagram, x, y):
    diagram.pen.circle(diagram.layer("喷头"), (x, y), 150)
    diagram.pen.dot(diagram.layer("喷头"), (x, y), 50)
