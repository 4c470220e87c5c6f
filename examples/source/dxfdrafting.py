"""What drafting needs beyond plain lines: aligned texts, hatches, dimensions with their blocks, wide lines, mirrored blocks."""

ALIGNMENTS = {"L": 0, "C": 1, "R": 2}  # across; down: B(aseline) 0, M(iddle) 2, T(op) 3
LEVELS = {"B": 0, "M": 2, "T": 3}


class Drafting:
    """The half of a writer that knows these kinds of entities; R2000 and newer."""

    def label(self, entity, key):
        """Position, height, text, rotation, alignment as "LB" (left, baseline) or "CM", text style."""
        at, height, text, rotation, alignment, style = entity.data
        across, level = ALIGNMENTS[alignment[0]], LEVELS[alignment[1]]
        self.begin(entity, key, "TEXT")
        self.subclass("AcDbText")
        self.point(at)
        self.tags((40, float(height)), (1, text), (50, float(rotation)), (41, self.drawing.styles[style][3]), (7, style))
        if across or level:
            self.tag(72, across)
            self.point(at, 11)
        self.subclass("AcDbText")
        if level:
            self.tag(73, level)

    def wide(self, entity, key):
        """Points, each with the bulge to the next one, width, whether closed."""
        points, width, closed = entity.data
        self.begin(entity, key, "LWPOLYLINE")
        self.subclass("AcDbPolyline")
        self.tags((90, len(points)), (70, 1 if closed else 0), (43, float(width)))
        for x, y, bulge in points:
            self.tags((10, float(x)), (20, float(y)))
            if bulge:
                self.tag(42, float(bulge))

    def scaled(self, entity, key):
        """Block, position, rotation, scales in X and Y."""
        name, at, rotation, across, up = entity.data
        self.begin(entity, key, "INSERT")
        self.subclass("AcDbBlockReference")
        self.tag(2, name)
        self.point(at)
        self.tags((41, float(across)), (42, float(up)), (43, 1.0), (50, float(rotation)))

    def hatch(self, entity, key):
        """Name of the pattern, its families of lines (angle, distance; none: solid), the closed loops of points."""
        name, families, loops = entity.data
        self.begin(entity, key, "HATCH")
        self.subclass("AcDbHatch")
        self.point((0, 0))
        self.tags((210, 0.0), (220, 0.0), (230, 1.0), (2, name), (70, 0 if families else 1), (71, 0), (91, len(loops)))
        for loop in loops:
            self.tags((92, 3), (72, 0), (73, 1), (93, len(loop)))
            for x, y in loop:
                self.tags((10, float(x)), (20, float(y)))
            self.tag(97, 0)
        self.tags((75, 0), (76, 0 if families else 1))
        if families:
            self.tags((52, 0.0), (41, 1.0), (77, 0), (78, len(families)))
            for angle, distance in families:
                upright = angle == 90
                self.tags((53, float(angle)), (43, float(loops[0][0][0])), (44, float(loops[0][0][1])),
                          (45, -float(distance) if upright else 0.0), (46, 0.0 if upright else float(distance)), (79, 0))
        self.tags((98, 1), (10, float(loops[0][0][0])), (20, float(loops[0][0][1])))

    def dimension(self, entity, key):
        """Block that shows it, the measured points, a point of the dimension line, its angle, middle of the text, style."""
        block, start, end, line, angle, middle, style = entity.data
        self.begin(entity, key, "DIMENSION")
        self.subclass("AcDbDimension")
        self.tag(2, block)
        self.point(line)
        self.point(middle, 11)
        length = abs(end[1] - start[1]) if angle == 90 else abs(end[0] - start[0])
        self.tags((70, 32), (1, ""), (71, 5), (42, float(length)), (3, style))
        self.subclass("AcDbAlignedDimension")
        self.point(start, 13)
        self.point(end, 14)
        self.tag(50, float(angle))
        self.subclass("AcDbRotatedDimension")
