"""Pipes as entities: runs are cut where others join them, joints get nodes, and texts and fittings hang on their pipe."""

import math

from residence_base import RISER_STYLE, STANDARD, distance, mark, text_width

DIAMETER, ARROW, VALVE, CHECK, STOP, METER, DRAIN, CLEANOUT, HEAD, SLOPE = 1, 2, 3, 4, 5, 6, 7, 8, 13, 15
LAYERS = {DIAMETER: "管径文字", ARROW: "管线流向", VALVE: "阀门", CHECK: "阀门", STOP: "阀门", METER: "给水附件",
          DRAIN: "排水附件", CLEANOUT: "排水附件", HEAD: "喷头", SLOPE: "管道坡度"}
STOREY = 2900
HEIGHTS = {"J": 2600, "RJ": 2600, "RH": 2600, "W": -350, "F": -350, "T": 2400, "Y": -350, "XH": 1100, "ZP": 2550}
MATERIALS = {"J": "PPR管", "RJ": "不锈钢管", "RH": "不锈钢管", "W": "UPVC管", "F": "UPVC管", "T": "UPVC管", "Y": "UPVC管",
             "XH": "镀锌钢管", "ZP": "镀锌钢管"}


class Run:
    def __init__(self, system, size, points, slope):
        self.system, self.size, self.points, self.slope = system, size, points, slope


class Network:
    """Collects what a storey has of pipes, in the drawing's own coordinates, and makes the entities at the end."""

    def __init__(self, pen, building):
        self.pen, self.building = pen, building
        self.runs, self.risers, self.hung = [], [], []

    def run(self, pen, system, size, points, slope=None):
        self.runs.append(Run(system, size, [pen.at(point) for point in points], slope))

    def riser(self, pen, system, size, at, elbow, shelf):
        """The label's line goes to the elbow, its shelf from there to the left (-1) or right (1)."""
        self.risers.append((system, size, pen.at(at), pen.at(elbow), -shelf if pen.mirrored else shelf))

    def hang(self, pen, system, kind, at, text=None, size=None, rotation=0, detail=False):
        turned = pen.turned(rotation) % 180 if kind == DIAMETER else pen.turned(rotation)
        self.hung.append((system, kind, pen.at(at), text, size, turned, detail))

    # --- the entities

    def finish(self):
        self.add_risers()
        segments = self.segments()
        nodes = self.add_nodes(segments)
        hung = self.add_hung(segments)
        for number, (run, start, end) in enumerate(segments):
            height = HEIGHTS[run.system]
            marks = mark("PIPE-DN", run.size) + mark("PIPE-MATERIAL", MATERIALS[run.system])
            if run.slope:
                marks += mark("PIPE-SLOPE", run.slope)
            names = [nodes.get((run.system, point)) for point in (start, end)]
            self.pen.add("PIPE", STANDARD.layer(run.system, "管线"), (*start, height), (*end, height),
                         STANDARD.letters[run.system], names, STANDARD.width(run.system), *hung.get(number, []), xdata=marks)

    def segments(self):
        """Straight pieces between bends and joints."""
        ends = {(run.system, point) for run in self.runs for point in run.points}
        result = []
        for run in self.runs:
            for start, end in zip(run.points, run.points[1:]):
                along = [point for system, point in ends if system == run.system and point not in (start, end)
                         and distance(start, point) + distance(point, end) - distance(start, end) < 0.01]
                if not run.slope:  # letters in the line are not to stand on their head
                    start, end = sorted((start, end))
                stops = [start] + sorted(along, key=lambda point: distance(start, point)) + [end]
                result += [(run, low, high) for low, high in zip(stops, stops[1:])]
        return result

    def add_nodes(self, segments):
        meeting = {}
        for run, start, end in segments:
            for point in (start, end):
                meeting[run.system, point] = meeting.get((run.system, point), 0) + 1
        # A riser is one more that meets there.
        for system, _, at, _, _ in self.risers:
            if (system, at) in meeting:
                meeting[system, at] += 1
        names = {}
        for system, point in sorted(key for key, count in meeting.items() if count > 1):
            names[system, point] = "node %s %g %g" % (system, *point)
            self.pen.add("NODE", STANDARD.layer(system, "管线"), (*point, HEIGHTS[system]), 0, name=names[system, point])
        return names

    def add_hung(self, segments):
        result = {}
        for number, (system, kind, at, text, size, rotation, detail) in enumerate(self.hung):
            nearest = min((i for i, (run, _, _) in enumerate(segments) if run.system == system),
                          key=lambda i: gap(at, segments[i][1], segments[i][2]))
            name = "hung %d" % number
            layer = STANDARD.layer(system, "标注" if detail and text else LAYERS[kind])
            tags = [(1, text)] if text else []
            tags += [(40, float(size))] if size else []
            if text:
                at = placed(at, text, size, rotation)
            self.pen.add("ATTACHMENT", layer, at, kind, *tags, (50, float(rotation)), name=name)
            result.setdefault(nearest, []).append(name)
        return result

    def add_risers(self):
        numbers = {}
        for system, size, at, elbow, shelf in sorted(self.risers, key=lambda one: (one[0], one[2])):
            numbers[system] = numbers.get(system, 0) + 1
            serial = "%sL-%d" % (system, numbers[system])
            marks = mark("PIPE-SERIAL", serial) + mark("BUILDING-SERIAL", self.building)
            marks += mark("PIPE-DN", size) + mark("PIPE-MATERIAL", MATERIALS[system])
            self.pen.add("PIPE", STANDARD.layer(system, "立管"), (*at, 0), (*at, STOREY), STANDARD.letters[system], (None, None),
                         STANDARD.width(system), xdata=marks)
            layer, width = STANDARD.layer(system, "立管编号"), text_width(serial, 250) + 60
            end = elbow[0] + shelf * width, elbow[1]
            self.pen.lines(layer, at, elbow, end)
            self.pen.text(layer, ((elbow[0] + end[0]) / 2, elbow[1] + 50), serial, 250, "CB", style=RISER_STYLE)


def gap(at, start, end):
    """How far a point is from a straight piece."""
    length = distance(start, end)
    part = ((at[0] - start[0]) * (end[0] - start[0]) + (at[1] - start[1]) * (end[1] - start[1])) / length ** 2
    part = min(1, max(0, part))
    return distance(at, (start[0] + part * (end[0] - start[0]), start[1] + part * (end[1] - start[1])))


def placed(middle, text, size, rotation):
    """Where a text begins whose middle is given; what would stand on its head is written from the other end."""
    along, across = 0.31 * len(text) * size, (0.5 if 90 < rotation <= 270 else -0.5) * size
    cos, sin = math.cos(math.radians(rotation)), math.sin(math.radians(rotation))
    return (round(middle[0] - along * cos - across * sin, 1), round(middle[1] - along * sin + across * cos, 1))
