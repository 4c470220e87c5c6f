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

import residence_network  # noqa: E402
import residence_pipes  # noqa: E402
import residence_walls  # noqa: E402
from dxfwriter import Drawing  # noqa: E402
from residence_base import Pen, distance  # noqa: E402

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


def main():
    with tempfile.TemporaryDirectory() as folder:
        console = pathlib.Path(sys.argv[1]).resolve()
        check_scripts(console, folder)
        check_with(console, folder)
    check_design()
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
