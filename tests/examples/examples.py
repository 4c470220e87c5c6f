"""What the example drawings promise: made by their scripts, without a finding, saved as they are, every pipe led somewhere.

    examples.py CONSOLE
"""

import pathlib
import subprocess
import sys
import tempfile

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"
SOURCE = EXAMPLES / "source"
sys.dont_write_bytecode = True
sys.path.insert(0, str(SOURCE))

import make_residence  # noqa: E402
import residence_network  # noqa: E402
import residence_pipes  # noqa: E402
import residence_walls  # noqa: E402
from dxfwriter import Drawing  # noqa: E402
from residence_base import STANDARD, Pen, distance  # noqa: E402

faults = []


def check(holds, fault):
    if not holds:
        faults.append(fault)


def run(folder, *command):
    done = subprocess.run([str(word) for word in command], cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return done.returncode, done.stdout.decode("utf-8", "replace")


def check_scripts(console, folder):
    """Each script makes the drawings that lie beside it, to the byte."""
    for script in sorted(SOURCE.glob("make_*.py")):
        code, told = run(folder, sys.executable, script, folder, console)
        check(code == 0, "%s: %s" % (script.name, told))
    made = sorted(pathlib.Path(folder).glob("*.dxf"))
    check(len(made) == 7, "drawings made: %s" % [one.name for one in made])
    for one in made:
        check(one.read_bytes() == (EXAMPLES / one.name).read_bytes(), "%s is not what its script makes" % one.name)


def check_with(console, folder):
    quiet = (console, "--settings", "settings.ini", "--language", "en")
    code, told = run(folder, *quiet, "--check", "--references", "residence.dxf")
    sums = [line for line in told.splitlines() if line.endswith(" notes")]
    check(code == 0 and len(sums) == 4 and all("0 errors, 0 warnings, 0 notes" in line for line in sums), told)
    code, told = run(folder, *quiet, "-o", "saved.dxf", "residence.dxf")
    check(code == 0 and (pathlib.Path(folder) / "saved.dxf").read_bytes() == (EXAMPLES / "residence.dxf").read_bytes(),
          "saved without a change, residence.dxf differs. " + told)


def design(add):
    pen = Pen(Drawing("0", ((0, 0), (1, 1))))
    network = residence_network.Network(pen, "")
    add(network, pen)
    return network


def check_design():
    """Within a storey every run ends at a riser, however many runs it goes through; and keeps clear of the doors."""
    network = design(lambda network, pen: (residence_pipes.add_flat(network, pen, False), residence_pipes.add_core(network, pen, False)))
    reached = {(system, at) for system, _, at, _, _ in network.risers}
    left = network.segments()
    while left:
        joined = [one for one in left if {(one[0].system, one[1]), (one[0].system, one[2])} & reached]
        if not joined:
            break
        reached |= {(run.system, point) for run, *ends in joined for point in ends}
        left = [one for one in left if one not in joined]
    check(not left, "these lead to no riser: %s" % [(run.system, start, end) for run, start, end in left])
    for hinge, leaf, jamb in residence_walls.DOORS + residence_walls.CORE_DOORS:
        radius = distance(hinge, leaf)
        # The middle of the swing, and half-way to its edges: no drawn pipe goes there.
        toward = ((leaf[0] + jamb[0]) / 2 - hinge[0], (leaf[1] + jamb[1]) / 2 - hinge[1])
        middle = hinge[0] + toward[0] * 0.8, hinge[1] + toward[1] * 0.8
        for pipe, start, end in network.segments():
            check(residence_network.gap(middle, start, end) > radius * 0.3, "%s %s %s crosses the door at %s"
                  % (pipe.system, start, end, hinge))


class Outdoor:
    """A pipe of the site: its system, ends, outer diameter in mm, and the slope that it is marked with."""

    def __init__(self, entity):
        start, end, self.system, *_ = entity.data
        marks = {name: value for (_, name), (_, value) in zip(entity.xdata[::2], entity.xdata[1::2])}
        self.start, self.end, self.slope = start, end, float(marks.get("PIPE-SLOPE", 0))
        self.radius = float(marks["PIPE-DN"].lstrip("dnDN")) / 2
        self.length = distance(start, end)

    def height(self, part):
        return self.start[2] + part * (self.end[2] - self.start[2])


def crossing(one, other):
    """How far along each, as parts of their lengths, two pipes cross in the plan."""
    (ax, ay, _), (bx, by, _), (cx, cy, _), (dx, dy, _) = one.start, one.end, other.start, other.end
    across = (bx - ax) * (dy - cy) - (by - ay) * (dx - cx)
    if across == 0:
        return None
    parts = (((cx - ax) * (dy - cy) - (cy - ay) * (dx - cx)) / across, ((cx - ax) * (by - ay) - (cy - ay) * (bx - ax)) / across)
    return parts if all(0 <= part <= 1 for part in parts) else None


def check_site():
    """Every drain's riser leads outdoors; heights agree with slopes, and water runs down; pipes that cross keep apart."""
    pipes = [Outdoor(entity) for entity in make_residence.build_site().entities if entity.kind == "PIPE"]
    started = {(pipe.system, pipe.start[:2]) for pipe in pipes}
    plan = design(lambda network, pen: [residence_pipes.add_flat(network, pen.frame(x, 0, mirrored), False)
                                        for x, mirrored in residence_walls.flats()])
    for system, _, at, _, _ in plan.risers:
        check(system == "T" or (STANDARD.letters[system], at) in started, "%s at %s has no outlet" % (system, at))
    for pipe in pipes:
        fall = pipe.start[2] - pipe.end[2]
        check(abs(fall - pipe.slope * pipe.length) < 1, "the pipe from %s falls by %g, not by its slope" % (pipe.start, fall))
        for other in pipes:
            if pipe.slope and pipe.end[:2] == other.start[:2]:
                check(pipe.end[2] - pipe.radius >= other.start[2] - other.radius, "water runs up at %s" % (pipe.end[:2],))
    for number, pipe in enumerate(pipes):
        for other in pipes[:number]:
            parts = crossing(pipe, other)
            if parts and not {pipe.start[:2], pipe.end[:2]} & {other.start[:2], other.end[:2]}:
                apart = abs(pipe.height(parts[0]) - other.height(parts[1])) - pipe.radius - other.radius
                check(apart >= 150, "%s from %s and %s from %s come within %g mm"
                      % (pipe.system, pipe.start, other.system, other.start, apart))


def main():
    with tempfile.TemporaryDirectory() as folder:
        console = pathlib.Path(sys.argv[1]).resolve()
        check_scripts(console, folder)
        check_with(console, folder)
    check_design()
    check_site()
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
