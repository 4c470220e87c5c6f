"""Writes a small drawing as ASCII DXF, in the form of R2010 (AC1024, UTF-8) or R12 (AC1009, code page 936).

A drawing is described once, without regard to the form: layers, linetypes, blocks, entities. CRLF line ends and group
codes right-aligned in three columns, as the editor writes them.
"""

from dxfdrafting import Drafting

MODEL, PAPER = "*Model_Space", "*Paper_Space"
FORMS = {"AC1024": "utf-8", "AC1009": "gbk"}


class Layer:
    def __init__(self, name, color=7, linetype="Continuous", weight=-3, off=False, frozen=False, locked=False,
                 plots=True, foreign=False):
        self.name, self.color, self.linetype, self.weight = name, color, linetype, weight
        self.off, self.frozen, self.locked, self.plots = off, frozen, locked, plots
        self.foreign = foreign  # of an external reference


class Entity:
    """kind: LINE, CIRCLE, ARC, TEXT, INSERT, PATH, VIEWPORT, PIPE, NODE, ATTACHMENT or one of dxfdrafting.py; data: what
    that kind needs (see Writer.<kind>). Pipes name the nodes at their ends, and what is attached to them, by the names
    those were given."""

    def __init__(self, kind, layer, data, space=MODEL, color=None, hidden=False, xdata=(), comment=None, name=None,
                 linetype_scale=None):
        self.kind, self.layer, self.data, self.space = kind, layer, data, space
        self.color, self.hidden, self.xdata, self.comment = color, hidden, list(xdata), comment
        self.name, self.linetype_scale = name, linetype_scale


class Drawing:
    def __init__(self, current_layer, extents, comments=()):
        self.layers, self.blocks, self.entities, self.applications = [], {}, [], []
        self.linetypes = {"Continuous": ("Solid line", [])}  # dashes: lengths, or (length, text, height, x, y)
        self.current_layer, self.extents, self.comments = current_layer, extents, list(comments)
        self.scale = None  # drawing units per millimetre on paper
        self.references = {}  # blocks that show other drawings: the paths of these
        self.styles = {"Standard": ("txt", "gbcbig", 0.0, 0.7)}  # of texts: fonts, height, width factor
        self.linetype_style, self.linetype_scale = "Standard", 100.0
        self.dimension_styles = {"Standard": (100.0, 2.5, 3.5, "Standard")}  # scale, size of arrows, height and style of texts
        self.layouts = [("布局1", PAPER, (420, 297), "ISO_A3_(420.00_x_297.00_MM)")]

    def block(self, name):
        return self.blocks.setdefault(name, [])


class Writer(Drafting):
    def __init__(self, drawing, version):
        self.drawing, self.version, self.modern = drawing, version, version != "AC1009"
        self.lines, self.next_handle, self.handles = [], 0x10, {}

    # --- tags

    def tag(self, code, value):
        if isinstance(value, float):
            value = format(value, ".6f").rstrip("0")
            value += "0" if value.endswith(".") else ""
        self.lines.append("%3d\r\n%s\r\n" % (code, value))

    def tags(self, *pairs):
        for code, value in pairs:
            self.tag(code, value)

    def handle(self, key):
        """The handle of a thing, the same at every asking."""
        if key not in self.handles:
            self.handles[key] = "%X" % self.next_handle
            self.next_handle += 1
        return self.handles[key]

    def point(self, at, code=10):
        self.tags((code, float(at[0])), (code + 10, float(at[1])), (code + 20, 0.0))

    def subclass(self, *names):
        if self.modern:
            for name in names:
                self.tag(100, name)

    def identify(self, key, owner, code=5):
        self.tag(code, self.handle(key))
        if self.modern:
            self.tag(330, self.handle(owner) if owner else "0")

    # --- the whole file

    def whole_text(self):
        for comment in self.drawing.comments:
            self.tag(999, comment)
        body = self.lines
        self.lines = []
        self.classes()
        self.section("TABLES", self.tables)
        self.section("BLOCKS", self.block_definitions)
        self.section("ENTITIES", lambda: [self.entity(e, i) for i, e in enumerate(self.drawing.entities)
                                          if e.space in (MODEL, PAPER)])
        if self.modern:
            self.section("OBJECTS", self.objects)
        self.tag(0, "EOF")
        rest, self.lines = self.lines, body
        # The header comes last: it holds the next free handle.
        self.section("HEADER", self.header)
        return "".join(self.lines + rest)

    def section(self, name, content):
        self.tags((0, "SECTION"), (2, name))
        content()
        self.tag(0, "ENDSEC")

    def header(self):
        low, high = self.drawing.extents
        variables = [("$ACADVER", [(1, self.version)]),
                     ("$DWGCODEPAGE", [(3, "ANSI_936")]),
                     ("$INSBASE", [(10, 0.0), (20, 0.0), (30, 0.0)]),
                     ("$EXTMIN", [(10, float(low[0])), (20, float(low[1])), (30, 0.0)]),
                     ("$EXTMAX", [(10, float(high[0])), (20, float(high[1])), (30, 0.0)]),
                     ("$LIMMIN", [(10, float(low[0])), (20, float(low[1]))]),
                     ("$LIMMAX", [(10, float(high[0])), (20, float(high[1]))]),
                     ("$LTSCALE", [(40, self.drawing.linetype_scale)]),
                     ("$CLAYER", [(8, self.drawing.current_layer)]),
                     ("$CELTYPE", [(6, "ByLayer" if self.modern else "BYLAYER")]),
                     ("$CECOLOR", [(62, 256)]),
                     ("$TILEMODE", [(70, 1)])]
        if self.drawing.scale:
            variables.append(("$DIMSCALE", [(40, float(self.drawing.scale))]))
        if self.modern:
            variables += [("$MEASUREMENT", [(70, 1)]), ("$INSUNITS", [(70, 4)])]
        else:
            variables += [("$HANDLING", [(70, 1)])]
        variables.append(("$HANDSEED", [(5, "%X" % self.next_handle)]))
        for name, tags in variables:
            self.tags((9, name), *tags)

    def classes(self):
        if not self.modern:
            return
        rows = [("ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", "ObjectDBX Classes", 1, 0),
                ("ACDBPLACEHOLDER", "AcDbPlaceHolder", "ObjectDBX Classes", 1, 0),
                ("LAYOUT", "AcDbLayout", "ObjectDBX Classes", 1, 0)]
        for kind, dxf, cpp in (("PIPE", "QRS_PIPE", "TDbPipe"), ("NODE", "QRS_PIPENODE", "TDbPipeNode"),
                               ("ATTACHMENT", "QRS_PIPEATTACHMENT", "TDbPipeAttachment")):
            count = sum(entity.kind == kind for entity in self.drawing.entities)
            if count:
                rows.append((dxf, cpp, "qrs_pipewire", count, 1))
        self.section("CLASSES", lambda: [
            self.tags((0, "CLASS"), (1, dxf), (2, cpp), (3, app), (90, 0), (91, count), (280, 0), (281, entity))
            for dxf, cpp, app, count, entity in rows])

    # --- tables

    def table(self, name, records):
        self.tags((0, "TABLE"), (2, name))
        if self.modern:
            self.identify(name, None)
            self.subclass("AcDbSymbolTable")
        self.tag(70, len(records))
        if name == "DIMSTYLE":
            self.subclass("AcDbDimStyleTable")
        for key, write in records:
            self.tag(0, name)
            if self.modern:
                self.identify((name, key), name, 105 if name == "DIMSTYLE" else 5)
                self.subclass("AcDbSymbolTableRecord")
            write(key)
        self.tag(0, "ENDTAB")

    def tables(self):
        drawing = self.drawing
        self.table("VPORT", [("*Active", self.viewport_record)])
        linetypes = list(drawing.linetypes)
        if self.modern:
            linetypes = ["ByBlock", "ByLayer"] + linetypes
        self.table("LTYPE", [(name, self.linetype) for name in linetypes])
        self.table("LAYER", [(layer, self.layer) for layer in drawing.layers])
        self.table("STYLE", [(name, self.style) for name in drawing.styles])
        self.table("VIEW", [])
        self.table("UCS", [])
        self.table("APPID", [(name, self.application) for name in ["ACAD"] + drawing.applications])
        if not self.modern:
            return
        self.table("DIMSTYLE", [(name, self.dimension_style) for name in drawing.dimension_styles])
        spaces = [MODEL] + [space for _, space, *_ in drawing.layouts]
        self.table("BLOCK_RECORD", [(name, self.block_record) for name in spaces + list(drawing.blocks)])

    def viewport_record(self, name):
        low, high = self.drawing.extents
        self.subclass("AcDbViewportTableRecord")
        self.tags((2, name.upper() if not self.modern else name), (70, 0), (10, 0.0), (20, 0.0), (11, 1.0), (21, 1.0),
                  (12, (low[0] + high[0]) / 2.0), (22, (low[1] + high[1]) / 2.0), (13, 0.0), (23, 0.0), (14, 10.0),
                  (24, 10.0), (15, 10.0), (25, 10.0), (16, 0.0), (26, 0.0), (36, 1.0), (17, 0.0), (27, 0.0), (37, 0.0),
                  (40, float(high[1] - low[1])), (41, 1.6), (42, 50.0), (43, 0.0), (44, 0.0), (50, 0.0), (51, 0.0),
                  (71, 0), (72, 100), (73, 1), (74, 3), (75, 0), (76, 0), (77, 0), (78, 0))

    def linetype(self, name):
        self.subclass("AcDbLinetypeTableRecord")
        description, dashes = self.drawing.linetypes.get(name, ("", []))
        lengths = [dash[0] if isinstance(dash, tuple) else dash for dash in dashes]
        self.tags((2, name if self.modern else name.upper()), (70, 0), (3, description), (72, 65), (73, len(dashes)),
                  (40, float(sum(abs(length) for length in lengths))))
        for dash, length in zip(dashes, lengths):
            self.tag(49, float(length))
            if not self.modern:
                continue
            if dash is length:
                self.tag(74, 0)
                continue
            # A text in the line: its height, and where it begins beside the end of the dash before.
            _, text, height, x, y = dash
            self.tags((74, 2), (75, 0), (340, self.handle(("STYLE", self.drawing.linetype_style))), (46, float(height)), (50, 0.0),
                      (44, float(x)), (45, float(y)), (9, text))

    def layer(self, layer):
        self.subclass("AcDbLayerTableRecord")
        flags = (1 if layer.frozen else 0) | (4 if layer.locked else 0) | (48 if layer.foreign else 0)
        self.tags((2, layer.name), (70, flags),
                  (62, -layer.color if layer.off else layer.color),
                  (6, layer.linetype if self.modern else layer.linetype.upper()))
        if self.modern:
            if not layer.plots:
                self.tag(290, 0)
            self.tags((370, layer.weight), (390, self.handle("placeholder")))

    def style(self, name):
        self.subclass("AcDbTextStyleTableRecord")
        font, big_font, height, width = self.drawing.styles[name]
        self.tags((2, name), (70, 0), (40, height), (41, width), (50, 0.0), (71, 0), (42, 350.0), (3, font), (4, big_font))

    def application(self, name):
        self.subclass("AcDbRegAppTableRecord")
        self.tags((2, name), (70, 0))

    def dimension_style(self, name):
        self.subclass("AcDbDimStyleTableRecord")
        scale, arrow, height, style, *more = self.drawing.dimension_styles[name]
        self.tags((2, name), (70, 0), (40, scale), (41, arrow), *more, (140, height), (340, self.handle(("STYLE", style))))

    def block_record(self, name):
        self.subclass("AcDbBlockTableRecord")
        layouts = {space: layout for layout, space, *_ in [("Model", MODEL)] + self.drawing.layouts}
        self.tags((2, name), (340, self.handle(layouts[name]) if name in layouts else "0"), (70, 0), (280, 1),
                  (281, 0))

    # --- blocks and entities

    def block_definitions(self):
        # Entities of model space and of the first layout stand in their section, those of other layouts here.
        spaces = [(MODEL, []), (PAPER, [])] if self.modern else []
        others = [space for _, space, *_ in self.drawing.layouts if space != PAPER] if self.modern else []
        spaces += [(name, [one for one in self.drawing.entities if one.space == name]) for name in others]
        for name, entities in spaces + list(self.drawing.blocks.items()):
            self.tag(0, "BLOCK")
            self.identify(("block", name), ("BLOCK_RECORD", name))
            self.subclass("AcDbEntity")
            if self.modern and name.startswith(PAPER):
                self.tag(67, 1)
            self.tag(8, "0")
            self.subclass("AcDbBlockBegin")
            path = self.drawing.references.get(name)
            self.tags((2, name), (70, 36 if path else 1 if name.startswith("*D") else 0))
            self.point((0, 0))
            self.tags((3, name), *([(1, path or "")] if self.modern else []))
            for number, entity in enumerate(entities):
                entity.space = name
                self.entity(entity, (name, number))
            self.tag(0, "ENDBLK")
            self.identify(("endblk", name), ("BLOCK_RECORD", name))
            self.subclass("AcDbEntity")
            if self.modern and name.startswith(PAPER):
                self.tag(67, 1)
            self.tag(8, "0")
            self.subclass("AcDbBlockEnd")

    def entity(self, entity, key):
        getattr(self, entity.kind.lower())(entity, key)
        for code, value in entity.xdata:
            self.tag(code, value)

    def begin(self, entity, key, kind):
        if entity.comment:
            self.tag(999, entity.comment)
        self.tag(0, kind)
        self.identify(("named", entity.name) if entity.name else ("entity", key), ("BLOCK_RECORD", entity.space))
        self.subclass("AcDbEntity")
        if entity.space.startswith(PAPER):
            self.tag(67, 1)
        self.tag(8, entity.layer)
        if entity.color is not None:
            self.tag(62, entity.color)
        if entity.linetype_scale is not None:
            self.tag(48, float(entity.linetype_scale))
        if entity.hidden:
            self.tag(60, 1)

    def line(self, entity, key):
        start, end = entity.data
        self.begin(entity, key, "LINE")
        self.subclass("AcDbLine")
        self.point(start)
        self.point(end, 11)

    def circle(self, entity, key):
        center, radius = entity.data
        self.begin(entity, key, "CIRCLE")
        self.subclass("AcDbCircle")
        self.point(center)
        self.tag(40, float(radius))

    def arc(self, entity, key):
        center, radius, start, end = entity.data
        self.begin(entity, key, "ARC")
        self.subclass("AcDbCircle")
        self.point(center)
        self.tag(40, float(radius))
        self.subclass("AcDbArc")
        self.tags((50, float(start)), (51, float(end)))

    def text(self, entity, key):
        at, height, text, rotation = entity.data
        self.begin(entity, key, "TEXT")
        self.subclass("AcDbText")
        self.point(at)
        self.tags((40, float(height)), (1, text), (50, float(rotation)), (41, 0.7), (7, "Standard"))
        self.subclass("AcDbText")

    def insert(self, entity, key):
        name, at, rotation = entity.data
        self.begin(entity, key, "INSERT")
        self.subclass("AcDbBlockReference")
        self.tag(2, name)
        self.point(at)
        self.tag(50, float(rotation))

    def path(self, entity, key):
        points, closed = entity.data
        if self.modern:
            self.begin(entity, key, "LWPOLYLINE")
            self.subclass("AcDbPolyline")
            self.tags((90, len(points)), (70, 1 if closed else 0), (43, 0.0))
            for x, y in points:
                self.tags((10, float(x)), (20, float(y)))
            return
        if entity.space not in (MODEL, PAPER):
            # In blocks plain lines: a polyline's end there is what auditors stumble over most.
            for number, (start, end) in enumerate(zip(points, points[1:] + (points[:1] if closed else []))):
                self.line(Entity("LINE", entity.layer, (start, end), entity.space), (key, number))
            return
        self.begin(entity, key, "POLYLINE")
        self.tag(66, 1)
        self.point((0, 0))
        self.tag(70, 1 if closed else 0)
        for number, at in enumerate(points):
            self.tag(0, "VERTEX")
            self.identify(("vertex", key, number), None)
            self.tag(8, entity.layer)
            self.point(at)
        self.tag(0, "SEQEND")
        self.identify(("seqend", key), None)
        self.tag(8, entity.layer)

    def pipe(self, entity, key):
        """Start, end (with heights), system, the names of the nodes at its ends or None, and of its attachments; a number
        among these is the drawn width, in millimetres on paper."""
        start, end, system, nodes, *attached = entity.data
        width = [one for one in attached if isinstance(one, float)]
        attached = [one for one in attached if not isinstance(one, float)]
        self.begin(entity, key, "QRS_PIPE")
        self.subclass("TDbPipePrototype")
        self.tags((1, system), (90, 0), *[(330, self.handle(("named", name))) for name in attached])
        self.subclass("TDbPipe")
        self.tag(70, 0)
        for code, at in ((10, start), (11, end)):
            self.tags(*[(code + 10 * axis, float(at[axis])) for axis in range(3)])
        self.tags(*[(43, one) for one in width])
        for code, node in zip((331, 332), nodes):
            if node:
                self.tag(code, self.handle(("named", node)))

    def node(self, entity, key):
        """Position (with a height), kind (0 joint, 1 well, 2 equipment), and its size in the drawing, if it has one."""
        at, kind, *size = entity.data
        self.begin(entity, key, "QRS_PIPENODE")
        self.subclass("TDbPipeNode")
        self.tags(*[(10 + 10 * axis, float(at[axis])) for axis in range(3)], (70, kind), *[(40, float(one)) for one in size])

    def attachment(self, entity, key):
        """Position and kind (0 other, 1 diameter text, 2 flow arrow, ...); then its tags of text, size and rotation."""
        at, kind, *tags = entity.data
        self.begin(entity, key, "QRS_PIPEATTACHMENT")
        self.subclass("TDbPipeAttachment")
        self.point(at)
        self.tags((70, kind), *tags)

    def viewport(self, entity, key):
        number, center, size, view_center, view_height, frozen = entity.data
        self.begin(entity, key, "VIEWPORT")
        self.subclass("AcDbViewport")
        self.point(center)
        self.tags((40, float(size[0])), (41, float(size[1])), (68, number), (69, number))
        if not self.modern:
            self.old_view(view_center, view_height, frozen)
            return
        self.tags((12, float(view_center[0])), (22, float(view_center[1])), (13, 0.0), (23, 0.0), (14, 10.0), (24, 10.0),
                  (15, 10.0), (25, 10.0), (16, 0.0), (26, 0.0), (36, 1.0), (17, 0.0), (27, 0.0), (37, 0.0), (42, 50.0),
                  (43, 0.0), (44, 0.0), (45, float(view_height)), (50, 0.0), (51, 0.0), (72, 100))
        for layer in self.drawing.layers:
            if layer.name in frozen:
                self.tag(331, self.handle(("LAYER", layer)))
        self.tags((90, 32864), (281, 0), (71, 1), (74, 0), (110, 0.0), (120, 0.0), (130, 0.0), (111, 1.0), (121, 0.0),
                  (131, 0.0), (112, 0.0), (122, 1.0), (132, 0.0), (79, 0), (146, 0.0))

    def old_view(self, center, height, frozen):
        """The view of a viewport in the R12 form: extended data, its frozen layers included."""
        self.tags((1001, "ACAD"), (1000, "MVIEW"), (1002, "{"), (1070, 16))
        for x, y, z in ((0.0, 0.0, 0.0), (0.0, 0.0, 1.0)):
            self.tags((1010, x), (1020, y), (1030, z))
        self.tags(*[(1040, float(value)) for value in (0, height, center[0], center[1], 50, 0, 0)])
        self.tags(*[(1070, value) for value in (0, 100, 1, 0, 0, 0, 0, 0)])
        self.tags(*[(1040, float(value)) for value in (0, 0, 0, 10, 10, 10, 10)])
        self.tags((1070, 0), (1002, "{"), *[(1003, name) for name in frozen], (1002, "}"), (1002, "}"))

    # --- objects

    def dictionary(self, key, owner, entries):
        self.tag(0, "DICTIONARY")
        self.identify(key, owner)
        self.subclass("AcDbDictionary")
        self.tag(281, 1)
        for name, entry in entries:
            self.tags((3, name), (350, self.handle(entry)))

    def objects(self):
        self.dictionary("root", None, [("ACAD_GROUP", "groups"), ("ACAD_LAYOUT", "layouts"),
                                       ("ACAD_PLOTSTYLENAME", "plotstyles")])
        self.dictionary("groups", "root", [])
        layouts = [(name, name) for name, *_ in self.drawing.layouts]
        self.dictionary("layouts", "root", [("Model", "Model")] + layouts)
        self.tag(0, "ACDBDICTIONARYWDFLT")
        self.identify("plotstyles", "root")
        self.subclass("AcDbDictionary")
        self.tags((281, 1), (3, "Normal"), (350, self.handle("placeholder")))
        self.subclass("AcDbDictionaryWithDefault")
        self.tag(340, self.handle("placeholder"))
        self.tag(0, "ACDBPLACEHOLDER")
        self.identify("placeholder", "plotstyles")
        _, _, size, paper = self.drawing.layouts[0]
        self.layout("Model", 0, MODEL, 1024 + 1, size, paper)
        for order, (name, space, size, paper) in enumerate(self.drawing.layouts):
            self.layout(name, order + 1, space, 1, size, paper)

    def layout(self, name, order, space, flags, size, paper):
        low, high = self.drawing.extents if space == MODEL else ((0, 0), size)
        self.tag(0, "LAYOUT")
        self.identify(name, "layouts")
        self.subclass("AcDbPlotSettings")
        self.tags((1, ""), (2, "none_device"), (4, paper), (6, ""), (40, 0.0), (41, 0.0),
                  (42, 0.0), (43, 0.0), (44, float(size[0])), (45, float(size[1])), (46, 0.0), (47, 0.0), (48, 0.0), (49, 0.0),
                  (140, 0.0), (141, 0.0), (142, 1.0), (143, 1.0), (70, flags - 1 + 688), (72, 1), (73, 0), (74, 5),
                  (7, ""), (75, 16), (76, 0), (77, 2), (78, 300), (147, 1.0), (148, 0.0), (149, 0.0))
        self.subclass("AcDbLayout")
        self.tags((1, name), (70, 1), (71, order), (10, float(low[0])), (20, float(low[1])), (11, float(high[0])),
                  (21, float(high[1])), (12, 0.0), (22, 0.0), (32, 0.0), (14, float(low[0])), (24, float(low[1])),
                  (34, 0.0), (15, float(high[0])), (25, float(high[1])), (35, 0.0), (146, 0.0), (13, 0.0), (23, 0.0),
                  (33, 0.0), (16, 1.0), (26, 0.0), (36, 0.0), (17, 0.0), (27, 1.0), (37, 0.0), (76, 0),
                  (330, self.handle(("BLOCK_RECORD", space))))


def write(drawing, version, path):
    writer = Writer(drawing, version)
    with open(path, "wb") as file:
        file.write(writer.whole_text().encode(FORMS[version]))
