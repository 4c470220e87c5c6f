"""Riser diagrams: the same design along its height, not to scale across; and the legend of signs and lines.

Storeys that are all alike are left out between break lines. The signs are those of the plan.
"""

import residence_pipes
from residence_base import PIPE_STYLE, RISER_STYLE, STANDARD, STYLE, TABLE_STYLE, text_width
from residence_pipes import add_flow_switch

# Storeys that are shown: name, level, where it is drawn; breaks lie between.
STOREYS = [("1F", "±0.000", 0), ("2F", "2.900", 2600), ("9F", "23.200", 5800), ("10F", "26.100", 8400), ("18F", "49.300", 11600),
           ("屋面", "52.200", 14200)]
FLOORS = {name: y for name, _, y in STOREYS}
BREAKS = (4250, 10050)
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

    def top(self, x, y):
        """What stands on the system's risers."""
        {residence_pipes.AIR_VALVE: self.vent, residence_pipes.VENT_CAP: self.cap,
         residence_pipes.ROOF_OUTLET: self.roof_outlet}[residence_pipes.TOPS[self.system]](x, y)

    def accesses(self, x, side=1):
        for storey, y in FLOORS.items():
            if storey[:-1].isdigit() and int(storey[:-1]) in residence_pipes.ACCESS[self.system]:
                self.access(x, y + 1000, side)

    def valves(self, x, *below_roof):
        """Of a riser, as many as its system's have."""
        heights = (-500, *below_roof)
        assert len(heights) == residence_pipes.RISER_VALVES[self.system]
        for y in heights:
            self.valve(x, y, True)

    # --- signs

    def end_cleanout(self, x, y):
        """A closed end that can be opened."""
        layer = self.layer("排水附件")
        self.pen.lines(layer, (x, y - 130), (x, y + 130))
        self.pen.lines(layer, (x + 70, y - 90), (x + 70, y + 90))
        self.pen.lines(layer, (x, y), (x + 70, y))

    def roof_outlet(self, x, y):
        self.pen.box("给排-雨水斗", x - 160, y, x + 160, y + 110)
        self.pen.arc("给排-雨水斗", (x, y + 110), 160, 0, 180)

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

    def access(self, x, y, side=1):
        """The opening for inspection: a branch with a closed end, to the east (1) or west (-1)."""
        layer, end = self.layer("排水附件"), x + 150 * side
        self.pen.lines(layer, (x, y - 90), (end, y), (x, y + 90))
        self.pen.lines(layer, (end, y - 110), (end, y + 110))

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

    def flow_switch(self, x, y):
        add_flow_switch(self.pen, self.layer("给水附件"), (x, y), (0, 1), 150)

    # --- the drawing's frame

    def storeys(self, width, title, alike):
        for name, level, y in STOREYS:
            self.pen.lines("公用-标高", (-600, y), (width, y))
            self.pen.path("公用-标高", [(-450, y), (-300, y + 150), (-600, y + 150)], True)
            self.pen.text("公用-标高", (-650, y + 190), level, SMALL, "LB")
            self.pen.text("公用-标高", (-700, y), name, SMALL, "RM")
        add_title(self.pen, (width / 2, -3100), title, "")
        self.text((width / 2 + text_width(title, 500) / 2 + 350, -3000), alike)


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
    diagram.storeys(8300, "给水系统图", "JL-3、JL-4 与此相同")
    for x, low, high, name, served, source in ((2000, BELOW, FLOORS["9F"] + 1900, "JL-1", ("1F", "2F", "9F"), "DN65 接引入管 DN100"),
                                               (5600, BELOW - 500, FLOORS["18F"] + 1900, "JL-2", ("10F", "18F"), "DN65 接加压给水管")):
        diagram.riser(x, low, high, name, FLOORS["2F"] + 700)
        diagram.pipe((-500, low), (x, low))
        diagram.text((-500, low + 200), source)
        diagram.valves(x)
        diagram.size((x - 220, 1700), "DN65", 90)
        diagram.top(x, high)
        for storey in served:
            y = FLOORS[storey] + 750
            diagram.pipe((x, y), (x + 200, y))
            diagram.pipe((x + 200, y), (x + 200, y + 450))
            for way in (y, y + 450):
                diagram.pipe((x + 200, way), (x + 1800, way))
                diagram.valve(x + 600, way)
                diagram.meter(x + 1150, way)
            diagram.size((x + 1500, y + 650), "DN25")
            diagram.text((x + 650, y - 300), "接户内")
    diagram.text((3900, FLOORS["屋面"] + 1150), "JL-1：1F–9F 市政管网直接供水", "CM")
    diagram.text((3900, FLOORS["屋面"] + 700), "JL-2：10F–18F 加压供水", "CM")
    diagram.size((1780, FLOORS["9F"] + 450), "DN50", 90)
    diagram.size((5380, FLOORS["18F"] + 450), "DN50", 90)


def hot_water(pen):
    diagram = Diagram(pen).of("RJ")
    diagram.storeys(6400, "热水系统图", "RJL-2、RHL-2 同")
    top = FLOORS["屋面"] - 500
    diagram.riser(3600, BELOW, top, "RJL-1", FLOORS["9F"] + 1900)
    diagram.pipe((-500, BELOW), (3600, BELOW))
    diagram.text((-500, BELOW + 200), "热水供水 DN50")
    diagram.valves(3600)
    diagram.size((3820, 1700), "DN50", 90)
    diagram.size((3820, FLOORS["18F"] + 700), "DN40", 90)
    for storey in ("1F", "2F", "9F", "10F", "18F"):
        y = FLOORS[storey] + 750
        diagram.pipe((3600, y), (3400, y))
        diagram.pipe((3400, y), (3400, y + 450))
        for way in (y, y + 450):
            diagram.pipe((3400, way), (1600, way))
            diagram.valve(3000, way)
            diagram.meter(2400, way)
        diagram.size((1900, y + 650), "DN20")
        diagram.text((1600, y - 300), "接户内")
    diagram.top(3600, top)
    diagram.of("RH")
    diagram.riser(5400, BELOW - 500, top, "RHL-1", FLOORS["9F"] + 1300)
    diagram.pipe((3600, top), (5400, top))
    diagram.pipe((-500, BELOW - 500), (5400, BELOW - 500))
    diagram.text((-500, BELOW - 300), "热水回水 DN32")
    diagram.valves(5400)
    diagram.size((5620, 1700), "DN32", 90)


def drainage(pen):
    diagram = Diagram(pen).of("W")
    diagram.storeys(8600, "排水系统图", "其余同；厨房、阳台 FL 为 dn75")
    roof, served = FLOORS["屋面"], ("1F", "2F", "9F", "10F", "18F")
    soil, vent, waste = 2300, 3900, 5500
    diagram.riser(soil, BELOW, roof + 1000, "WL-1", FLOORS["2F"] + 700)
    diagram.top(soil, roof + 1000)
    diagram.pipe((-500, BELOW), (soil, BELOW))
    diagram.text((-500, BELOW + 250), "dn160 i=0.010")
    diagram.size((soil - 220, 650), "dn110", 90)
    for storey in served:
        y = FLOORS[storey] - 400
        diagram.pipe((soil, y - 150), (soil - 150, y), (soil - 900, y))
        diagram.trap(soil - 900, y)
        diagram.size((soil - 550, y - 220), "dn110")
    diagram.accesses(soil, -1)
    diagram.of("T")
    diagram.riser(vent, -500, roof - 700, "TL-1", FLOORS["9F"] + 1300)
    diagram.pipe((vent, -500), (soil, -900))
    for stack in (soil, waste):
        diagram.pipe((vent, roof - 700), (stack, roof - 350))
    diagram.size((vent - 220, 1700), "dn110", 90)
    for storey in ("2F", "10F", "18F"):
        y = FLOORS[storey] + 1150
        for stack in (soil, waste):
            diagram.pipe((stack, y - 200), (vent, y + 200))
    diagram.of("F")
    diagram.riser(waste, BELOW - 600, roof + 1000, "FL-1", FLOORS["2F"] + 700)
    diagram.top(waste, roof + 1000)
    diagram.pipe((-500, BELOW - 600), (waste, BELOW - 600))
    diagram.text((-500, BELOW - 350), "dn110 i=0.012")
    diagram.size((waste - 220, 1700), "dn110", 90)
    for storey in served:
        y = FLOORS[storey] - 400
        diagram.pipe((waste, y - 150), (waste + 150, y), (waste + 2600, y))
        diagram.end_cleanout(waste + 2600, y)
        diagram.floor_drain(waste + 1100, y)
        diagram.trap(waste + 2200, y)
        diagram.size((waste + 700, y - 220), "dn75")
        diagram.size((waste + 1850, y - 220), "dn50")
    diagram.accesses(waste)


def rain(pen):
    diagram = Diagram(pen).of("Y")
    diagram.storeys(3200, "雨水系统图", "YL-2 至 8 同")
    x, roof = 2000, FLOORS["屋面"]
    diagram.riser(x, BELOW, roof, "YL-1", FLOORS["2F"] + 700)
    diagram.pipe((-500, BELOW), (x, BELOW))
    diagram.text((-500, BELOW + 250), "dn160 i=0.010")
    diagram.size((x + 230, 1700), "dn110", 90)
    diagram.accesses(x)
    diagram.top(x, roof)
    diagram.text((x - 200, roof + 520), "87型雨水斗 dn110", "CM")


def hydrants(pen):
    diagram = Diagram(pen).of("XH")
    diagram.storeys(4600, "消火栓系统图", "XHL-2 同")
    x, roof = 2000, FLOORS["屋面"]
    diagram.riser(x, BELOW, roof + 1100, "XHL-1", FLOORS["2F"] + 700)
    diagram.pipe((-500, BELOW), (4600, BELOW))
    diagram.text((-500, BELOW + 250), "接室外环管 DN150")
    # Both risers are joined at the foot and below the roof.
    diagram.pipe((x, roof - 300), (4600, roof - 300))
    for y in (BELOW + 250, roof - 550):
        diagram.text((x + 350, y), "DN100 接 XHL-2")
    diagram.size((600, BELOW - 280), "DN100")
    diagram.valves(x, FLOORS["18F"] + 2000)
    diagram.size((x - 220, 1700), "DN100", 90)
    for storey in ("1F", "2F", "9F", "10F", "18F", "屋面"):
        y = FLOORS[storey] + 1100
        diagram.pipe((x, y), (x + 900, y))
        diagram.hydrant(x + 900, y)
        diagram.size((x + 500, y + 220), "DN65")
    diagram.top(x, roof + 1100)
    diagram.text((x + 1200, roof + 1100), "试验消火栓")


def sprinklers(pen):
    diagram = Diagram(pen).of("ZP")
    diagram.storeys(7000, "自动喷水灭火系统图", "ZPL-2 同")
    x = 1800
    diagram.riser(x, BELOW, FLOORS["18F"] + 2300, "ZPL-1", FLOORS["2F"] + 700)
    diagram.pipe((-500, BELOW), (x, BELOW))
    diagram.text((-500, BELOW + 250), "接湿式报警阀组 DN100")
    diagram.valves(x)
    diagram.size((x - 220, 1300), "DN100", 90)
    diagram.top(x, FLOORS["18F"] + 2300)
    for storey in ("1F", "2F", "9F", "10F", "18F"):
        y = FLOORS[storey] + 2150
        diagram.pipe((x, y), (6300, y))
        diagram.valve(x + 450, y)
        diagram.flow_switch(x + 950, y)
        for head in (3700, 4700, 5700):
            diagram.head(head, y)
        diagram.size((3300, y + 260), "DN50")
        diagram.size((4200, y + 260), "DN32")
        diagram.pipe((6300, y), (6300, y - 600))
        diagram.valve(6300, y - 750, True, 110)
        diagram.size((5200, y + 260), "DN25")
    diagram.text((5650, FLOORS["18F"] + 950), "末端试水")


# Diagrams from west to east: where each begins.
ROW = [(cold_water, 0), (hot_water, 11000), (drainage, 20000), (rain, 31300), (hydrants, 37100), (sprinklers, 44400)]


def add_diagrams(pen):
    for add, x in ROW:
        add(pen.frame(pen.x + x, pen.y))


# --- the legend

LINES = [("J", "生活给水管"), ("RJ", "热水给水管"), ("RH", "热水回水管"), ("W", "污水管"), ("F", "废水管"), ("T", "通气管"), ("Y", "雨水管"),
         ("XH", "消火栓给水管"), ("ZP", "自动喷水给水管")]


# Cells of the table: width of the sign's and of the text's, of each pair of columns.
COLUMNS, ROW_HEIGHT = [(3000, 3400), (2200, 2700), (2200, 2700)], 900


def signs(pen, diagram):
    """System, what draws it around a place, meaning; where plan and diagram differ, the plan's comes first."""
    fixture = lambda name, up: lambda x, y: pen.insert("给排-洁具", name, (x, y + up))
    pair = lambda first, second, down: lambda x, y: (first(diagram, x - 450, y), second(x + 450, y + down))
    return [
        [("W", lambda x, y: pen.circle(diagram.layer("井"), (x, y), 250), "检查井、阀门井"),
         ("W", lambda x, y: (pen.box(diagram.layer("设备"), x - 300, y - 300, x + 300, y + 300),
                             pen.lines(diagram.layer("设备"), (x - 300, y - 300), (x + 300, y + 300))), "化粪池")],
        [("J", diagram.valve, "闸阀"), ("J", lambda x, y: stop_sign(diagram, x, y), "截止阀"), ("ZP", diagram.valve, "信号阀"),
         ("J", diagram.meter, "水表"), ("J", lambda x, y: diagram.vent(x, y - 160), "自动排气阀"),
         ("ZP", lambda x, y: diagram.flow_switch(x, y - 200), "水流指示器"), ("ZP", pair(head_sign, diagram.head, 160), "喷头"),
         ("XH", lambda x, y: (pen.insert("给排-消火栓", "消火栓箱", (x - 400, y + 120)), diagram.hydrant(x + 350, y)), "消火栓"),
         ("F", pair(drain_sign, diagram.floor_drain, -280), "地漏"), ("F", pair(cleanout_sign, diagram.end_cleanout, 0), "清扫口"),
         ("F", lambda x, y: diagram.access(x - 70, y), "检查口")],
        [("F", lambda x, y: diagram.cap(x, y - 80), "通气帽"), ("Y", lambda x, y: diagram.roof_outlet(x, y - 120), "雨水斗"),
         ("F", lambda x, y: diagram.trap(x + 160, y - 230), "存水弯"),
         ("F", lambda x, y: pen.circle(diagram.layer("立管"), (x, y), 150), "立管"),
         ("F", lambda x, y: fall_sign(diagram, x, y), "坡度及坡向"),
         ("F", lambda x, y: pen.insert("给排-洁具", "坐便器", (x - 340, y), 90), "坐便器"),
         ("F", fixture("洗脸盆", 250), "洗脸盆"), ("F", fixture("洗涤盆", 225), "洗涤盆"), ("F", fixture("淋浴器", 90), "淋浴器"),
         ("F", fixture("洗衣机", 300), "洗衣机"), ("ZP", lambda x, y: diagram.valve(x, y, True, 110), "试水阀（系统）")]]


def add_legend(pen):
    """Pairs of columns, a sign and what it means: lines and the site's signs, then fittings and fixtures."""
    diagram = Diagram(pen)
    run = lambda system: lambda x, y: pen.lines(STANDARD.layer(system, "管线"), (x - 1250, y), (x + 1250, y))
    columns = signs(pen, diagram)
    columns[0] = [(system, run(system), name) for system, name in LINES] + columns[0]
    rows, width = max(map(len, columns)), sum(map(sum, COLUMNS))
    pen.text("公用-表格", (width / 2, 950), "图例", 500, "CM", style=TABLE_STYLE)
    for number in range(rows + 1):
        pen.lines("公用-表格", (0, 500 - number * ROW_HEIGHT), (width, 500 - number * ROW_HEIGHT))
    west = 0
    for cells, (sign_width, text_wide) in zip(columns, COLUMNS):
        for x in (west, west + sign_width):
            pen.lines("公用-表格", (x, 500), (x, 500 - rows * ROW_HEIGHT))
        for number, (system, sign, meaning) in enumerate(cells):
            y = 50 - number * ROW_HEIGHT
            diagram.of(system)
            sign(west + sign_width / 2, y)
            pen.text("公用-表格", (west + sign_width + 150, y), meaning, 350, "LM", style=TABLE_STYLE)
        west += sign_width + text_wide
    pen.lines("公用-表格", (west, 500), (west, 500 - rows * ROW_HEIGHT))


def stop_sign(diagram, x, y):
    diagram.valve(x, y)
    diagram.pen.dot(diagram.layer("阀门"), (x, y), 50)


def cleanout_sign(diagram, x, y):
    layer = diagram.layer("排水附件")
    diagram.pen.circle(layer, (x, y), 150)
    for side in (-106, 106):
        diagram.pen.lines(layer, (x - 106, y - side), (x + 106, y + side))


def fall_sign(diagram, x, y):
    layer = diagram.layer("管道坡度")
    diagram.pen.text(layer, (x, y + 40), "i=0.026", SMALL, "CB", style=STYLE)
    diagram.pen.lines(layer, (x - 600, y - 60), (x + 600, y - 60))
    diagram.pen.lines(layer, (x + 420, y - 10), (x + 600, y - 60), (x + 420, y - 110))


def drain_sign(diagram, x, y):
    diagram.pen.circle(diagram.layer("排水附件"), (x, y), 150)
    for side in (-60, 0, 60):
        half = (150 ** 2 - side ** 2) ** 0.5
        diagram.pen.lines(diagram.layer("排水附件"), (x + side, y - half), (x + side, y + half))


def head_sign(diagram, x, y):
    diagram.pen.circle(diagram.layer("喷头"), (x, y), 150)
    diagram.pen.dot(diagram.layer("喷头"), (x, y), 50)
