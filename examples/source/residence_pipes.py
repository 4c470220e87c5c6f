"""The design of a storey: what lies in a flat, what in the stairwell, and the texts of both."""

from residence_base import STANDARD
from residence_network import ARROW, CLEANOUT, DIAMETER, DRAIN, HEAD, METER, SLOPE, STOP, VALVE

FALL = "0.026"

# System, diameter, points; slopes for what runs by gravity. Hot water runs 150 south of cold water, below the ceiling;
# drains run below the slab.
FLAT = [
    ("J", "DN25", [(7200, 6400), (5220, 6400)]),
    ("J", "DN20", [(5220, 6400), (2030, 6400)]),
    ("J", "DN15", [(2030, 6400), (420, 6400), (420, 5750), (310, 5750)]),
    ("J", "DN15", [(5800, 6400), (5800, 9270), (6600, 9270), (6600, 9420)]),
    ("J", "DN20", [(6450, 6400), (6450, -140), (6650, -140)]),
    ("J", "DN20", [(5220, 6400), (5220, 8900), (5290, 8900)]),
    ("J", "DN15", [(5220, 8530), (3760, 8530), (3760, 8470)]),
    ("J", "DN15", [(3860, 6400), (3860, 6850), (3740, 6850)]),
    ("J", "DN15", [(2030, 6400), (2030, 6490)]),
    ("J", "DN15", [(1420, 6400), (1420, 6490)]),
    ("RJ", "DN20", [(7350, 6250), (1870, 6250)]),
    ("RJ", "DN15", [(1870, 6250), (1700, 6250), (1700, 5650), (160, 5650), (160, 5750)]),
    ("RJ", "DN15", [(5580, 6250), (5580, 9420), (6400, 9420)]),
    ("RJ", "DN20", [(4980, 6250), (4980, 9050), (5290, 9050)]),
    ("RJ", "DN15", [(3760, 6250), (3760, 6650), (3730, 6650)]),
    ("RJ", "DN15", [(1870, 6250), (1870, 6490)]),
    ("W", "dn110", [(4005, 8250), (4005, 7995), (3830, 7820)], FALL),
    ("W", "dn110", [(1150, 6245), (355, 6245), (230, 6370)], FALL),
    ("F", "dn75", [(4500, 9050), (4500, 8050), (3830, 7380)], FALL),
    ("F", "dn50", [(4000, 6750), (4000, 7210), (3830, 7380)], FALL),
    ("F", "dn75", [(600, 5350), (600, 5560), (230, 5930)], FALL),
    ("F", "dn50", [(2130, 5830), (1950, 5650), (1800, 5500), (600, 5500)], FALL),
    ("F", "dn50", [(1950, 6250), (1950, 5650)], FALL),
    ("F", "dn75", [(6330, 9250), (7150, 9250), (7270, 9370)], FALL),
    ("F", "dn75", [(6850, -850), (6520, -850)], FALL),
    ("F", "dn75", [(7700, -1250), (6920, -1250), (6520, -850)], FALL),
    ("T", "dn110", [(3830, 7600), (3830, 7820)]),
    ("T", "dn110", [(3830, 7600), (3830, 7380)]),
    ("T", "dn110", [(230, 6150), (230, 6370)]),
    ("T", "dn110", [(230, 6150), (230, 5930)]),
]
# System, diameter, place; where the label's line bends, and the side its shelf goes to.
RISERS = [
    ("F", "dn110", (3830, 7380), (3350, 7750), -1), ("T", "dn110", (3830, 7600), (3350, 8100), -1),
    ("W", "dn110", (3830, 7820), (3350, 8450), -1),
    ("F", "dn110", (230, 5930), (230, 7000), 1), ("T", "dn110", (230, 6150), (230, 7350), 1),
    ("W", "dn110", (230, 6370), (230, 7700), 1),
    ("F", "dn75", (7270, 9370), (6900, 10150), -1), ("F", "dn75", (6520, -850), (6000, -600), -1),
    ("Y", "dn110", (6520, -1120), (6000, -1250), -1), ("Y", "dn110", (3600, 9830), (3900, 10250), 1),
]
# System, kind, place, size, rotation.
FITTINGS = [
    ("F", DRAIN, (4500, 9050), 150, 0), ("F", DRAIN, (600, 5350), 150, 0), ("F", DRAIN, (6850, -850), 150, 0),
    ("F", DRAIN, (7700, -1250), 150, 0), ("F", CLEANOUT, (2130, 5830), 120, 45),
    ("F", ARROW, (7250, -1250), 200, 180), ("F", ARROW, (4500, 8350), 180, 270),
    ("J", STOP, (6900, 6400), 200, 0), ("RJ", STOP, (6900, 6250), 200, 0),
]
# Texts of the plan: system, kind, middle, rotation, text.
PLAN_TEXTS = [
    ("J", DIAMETER, (6130, 6580), 0, "DN25"), ("J", DIAMETER, (4590, 6580), 0, "DN20"), ("RJ", DIAMETER, (4620, 6060), 0, "DN20"),
    ("J", DIAMETER, (6620, 1500), 90, "DN20"), ("F", DIAMETER, (6400, 8780), 0, "dn75"), ("F", DIAMETER, (7350, -1080), 0, "dn75"),
    ("RJ", DIAMETER, (3000, 6060), 0, "DN20"),
]
# Of the enlarged part: half as high, and with the slopes.
DETAIL_TEXTS = [
    ("J", DIAMETER, (6150, 6490), 0, "DN25"), ("RJ", DIAMETER, (6150, 6150), 0, "DN20"), ("J", DIAMETER, (4550, 6490), 0, "DN20"),
    ("RJ", DIAMETER, (4550, 6150), 0, "DN20"), ("J", DIAMETER, (3000, 6490), 0, "DN20"), ("RJ", DIAMETER, (3000, 6150), 0, "DN20"),
    ("J", DIAMETER, (5885, 8450), 90, "DN15"), ("RJ", DIAMETER, (5690, 7500), 90, "DN15"), ("J", DIAMETER, (5960, 9180), 0, "DN15"),
    ("J", DIAMETER, (5100, 7900), 90, "DN20"), ("RJ", DIAMETER, (4890, 8300), 90, "DN20"), ("J", DIAMETER, (3980, 8620), 0, "DN15"),
    ("J", DIAMETER, (640, 6480), 0, "DN15"), ("RJ", DIAMETER, (1250, 5730), 0, "DN15"),
    ("W", DIAMETER, (760, 6140), 0, "dn110"), ("F", DIAMETER, (1350, 5420), 0, "dn50"), ("F", DIAMETER, (4400, 8770), 90, "dn75"),
    ("W", DIAMETER, (4180, 7975), 0, "dn110"), ("F", DIAMETER, (4290, 6950), 90, "dn50"), ("F", DIAMETER, (6480, 8870), 0, "dn75"),
    ("F", DIAMETER, (410, 5300), 90, "dn75"),
]
DETAIL_SLOPES = [("F", (4680, 9090), 270), ("F", (1350, 5270), 180), ("W", (800, 5980), 180), ("F", (6480, 8700), 0)]
# The stairwell; x from the west end of the unit.
CORE = [
    ("J", "DN50", [(12730, 7850), (12730, 7650)]),
    ("J", "DN25", [(12730, 7650), (12730, 6400), (7200, 6400)]),
    ("J", "DN25", [(12730, 7650), (13800, 7650), (13800, 6400)]),
    ("RJ", "DN40", [(13030, 7850), (13030, 7500)]),
    ("RJ", "DN20", [(13030, 7500), (12860, 7500), (12860, 6250), (7350, 6250)]),
    ("RJ", "DN20", [(13030, 7500), (13650, 7500), (13650, 6250)]),
    ("XH", "DN65", [(9330, 6660), (9450, 6660)]),
    ("ZP", "DN50", [(12600, 8200), (12600, 5850)]),
    ("ZP", "DN32", [(12600, 5850), (10800, 5850)]),
    ("ZP", "DN25", [(10800, 5850), (8500, 5850), (8000, 5850), (8000, 5350)]),
    ("ZP", "DN25", [(12600, 5850), (13000, 5850)]),
]
CORE_RISERS = [
    ("ZP", "DN100", (12600, 8200), (12600, 9690), -1), ("J", "DN65", (12730, 7850), (12730, 10020), -1),
    ("J", "DN65", (12880, 8200), (12880, 10350), -1), ("RJ", "DN50", (13030, 7850), (13030, 10680), -1),
    ("RH", "DN32", (13180, 8200), (13180, 11010), -1), ("XH", "DN100", (9330, 6660), (9100, 5200), -1),
]
CORE_FITTINGS = [
    ("J", VALVE, (12730, 7380), 150, 270), ("J", METER, (12730, 7130), 180, 270), ("J", VALVE, (12960, 7650), 150, 0),
    ("J", METER, (13220, 7650), 180, 0), ("RJ", VALVE, (12860, 7330), 130, 270), ("RJ", METER, (12860, 7080), 160, 270),
    ("RJ", VALVE, (13170, 7500), 150, 0), ("RJ", METER, (13330, 7500), 140, 0), ("ZP", VALVE, (12600, 7700), 130, 270),
    ("ZP", HEAD, (8500, 5850), 160, 0), ("ZP", HEAD, (10800, 5850), 160, 0), ("ZP", HEAD, (13000, 5850), 160, 0),
    ("ZP", STOP, (8000, 5500), 130, 270),
]
# After the signal valve: where they are on the pipe, and the way to the sign.
FLOW_SWITCHES = [("ZP", (12600, 6640), (-1, 0))]
# How many valves each riser has: one below the ground floor, and perhaps one below the roof.
RISER_VALVES = {"J": 1, "RJ": 1, "RH": 1, "XH": 2, "ZP": 1}
# What stands at the top of each riser, and on which storeys it has an opening for inspection.
AIR_VALVE, VENT_CAP, ROOF_OUTLET = "自动排气阀", "通气帽", "雨水斗"
TOPS = {"J": AIR_VALVE, "RJ": AIR_VALVE, "XH": AIR_VALVE, "ZP": AIR_VALVE, "W": VENT_CAP, "F": VENT_CAP, "Y": ROOF_OUTLET}
# Plastic stacks: at the foot, at the top, and on every sixth storey (GB 50015).
ACCESS = {"W": (1, 6, 12, 18), "F": (1, 6, 12, 18), "Y": (1,)}
CORE_TEXTS = [("J", DIAMETER, (10500, 6570), 0, "DN25"), ("RJ", DIAMETER, (11500, 6070), 0, "DN20"),
              ("ZP", DIAMETER, (11600, 5670), 0, "DN32"), ("ZP", DIAMETER, (9700, 5680), 0, "DN25")]
CORE_DETAIL = [("J", DIAMETER, (11100, 6490), 0, "DN25"), ("RJ", DIAMETER, (10700, 6160), 0, "DN20"),
               ("ZP", DIAMETER, (12200, 5940), 0, "DN32"), ("ZP", DIAMETER, (10260, 5940), 0, "DN25"),
               ("ZP", DIAMETER, (12510, 6050), 90, "DN50")]


def add_flat(network, pen, detailed):
    for system, size, points, *slope in FLAT:
        network.run(pen, system, size, points, *slope)
    for row in RISERS:
        network.riser(pen, *row)
    for system, kind, at, size, rotation in FITTINGS:
        network.hang(pen, system, kind, at, None, size, rotation)
    for system, kind, at, rotation, text in PLAN_TEXTS:
        network.hang(pen, system, kind, at, text, 250, rotation)
    for system, kind, at, rotation, text in DETAIL_TEXTS if detailed else []:
        network.hang(pen, system, kind, at, text, 125, rotation, True)
    for system, at, rotation in DETAIL_SLOPES if detailed else []:
        network.hang(pen, system, SLOPE, at, "i=" + FALL, 125, rotation, True)


def add_flow_switch(pen, layer, at, way, radius):
    """A circle with a letter, beside the pipe."""
    stem, middle = (tuple(a + b * radius * far for a, b in zip(at, way)) for far in (0.5, 1.5))
    pen.lines(layer, at, stem)
    pen.circle(layer, middle, radius)
    pen.text(layer, middle, "L", radius * 1.2, "CM")


def add_core(network, pen, detailed):
    for system, size, points in CORE:
        network.run(pen, system, size, points)
    for row in CORE_RISERS:
        network.riser(pen, *row)
    for system, kind, at, size, rotation in CORE_FITTINGS:
        network.hang(pen, system, kind, at, None, size, rotation)
    for system, at, way in FLOW_SWITCHES:
        add_flow_switch(pen, STANDARD.layer(system, "给水附件"), at, way, 110)
    for system, kind, at, rotation, text in CORE_TEXTS:
        network.hang(pen, system, kind, at, text, 250, rotation)
    for system, kind, at, rotation, text in CORE_DETAIL if detailed else []:
        network.hang(pen, system, kind, at, text, 125, rotation, True)
