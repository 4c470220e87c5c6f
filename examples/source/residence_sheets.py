"""The two sheets: frames, title blocks, notes, viewports; and what stands beside the plan for them."""

import residence_fixtures
import residence_pipes
from dxfwriter import PAPER
from residence_base import TABLE_STYLE, Pen
from residence_diagrams import add_title
from residence_network import CLEANOUT, DRAIN, HEAD, METER, STOP, VALVE
from residence_walls import UNIT, Dimensions

SECOND = PAPER + "0"
SIZE, FORM = (594, 420), "ISO_full_bleed_A2_(594.00_x_420.00_MM)"
SHEETS = [("水施-03 标准层平面", PAPER, SIZE, FORM), ("水施-04 系统与大样", SECOND, SIZE, FORM)]
DIAGRAMS, LEGEND, SITE = (0, -27000), (62000, 9000), (0, -72000)  # where they lie beside the plan

# Annotation of the enlarged part, and of the plan: each is frozen in the other's viewport.
OF_DETAIL = ["给排-%s-标注" % name for name in ("生活给水", "热水给水", "污水", "废水", "自动喷淋")] + ["公用-标注"]
OF_PLAN = ["给排-%s-管径文字" % name for name in ("生活给水", "热水给水", "废水", "自动喷淋")] + ["建筑-轴线标注", "建筑-尺寸", "给排-虚线", "公用-索引符号"]

NOTES = ["设计说明", "1. 本图尺寸以毫米计，标高以米计；±0.000 为首层室内地面。",
         "2. 给水管、热水管为公称直径 DN；排水塑料管为外径 dn。", "3. 生活给水采用 PPR 管，热水采用薄壁不锈钢管，吊顶内敷设；",
         "    热水管保温厚 30；排水采用 UPVC 管，立管设伸缩节。", "4. 污水、废水横支管坡度 i=0.026；地漏水封不小于 50。",
         "5. 消火栓栓口距地 1.10，箱内配 DN65 栓、25m 水带；两立管在底部和屋面下连成环。", "6. 喷头为下垂型 K80，68℃；每层设水流指示器、信号阀与试水阀。",
         "7. 1F–9F 由 JL-1、JL-3 市政管网直接供水，10F–18F 由 JL-2、JL-4 加压供水；",
         "    本图按 1F–9F 绘制，10F–18F 由 JL-2、JL-4 接出，其余相同。",
         "8. 加压给水、热水、喷淋引自地下室泵房、热水机房、报警阀间，消火栓接小区消防环网，不在本套图内。",
         "9. 污水、废水立管检查口设于 " + "、".join("%dF" % storey for storey in residence_pipes.ACCESS["W"]) + "，雨水立管设于 1F。"]
HEIGHTS = ["给水点安装高度（H 为楼面标高）：洗脸盆 H+0.45，坐便器 H+0.15，", "淋浴器 H+1.15，洗涤盆 H+1.00，洗衣机 H+1.20。"]
STOREYS, FLATS, UNITS = 18, 4, 2


def in_flats(rows, column, wanted):
    """How many of them the building's flats hold, when one does as the table of a flat's says."""
    return STOREYS * FLATS * sum(row[column] == wanted for row in rows)


def fittings(rows, times, system, kind):
    return STOREYS * times * sum(row[:2] == (system, kind) for row in rows)


def on_risers(holds):
    """The sum of what a riser of a system has, over all risers of the building."""
    return (FLATS * sum(holds(row[0]) for row in residence_pipes.RISERS) +
            UNITS * sum(holds(row[0]) for row in residence_pipes.CORE_RISERS))


def materials():
    """The rows of the table; what can be counted is, from the design of a storey."""
    fixture = lambda name: in_flats(residence_fixtures.FLAT, 0, name)
    flat = lambda system, kind: fittings(residence_pipes.FITTINGS, FLATS, system, kind)
    core = lambda system, kind: fittings(residence_pipes.CORE_FITTINGS, UNITS, system, kind)
    top = lambda name: on_risers(lambda system: residence_pipes.TOPS.get(system) == name)
    access = on_risers(lambda system: len(residence_pipes.ACCESS.get(system, [])))
    rows = [("旋翼式水表（冷水）", "DN20", "只", core("J", METER)), ("旋翼式水表（热水）", "DN20", "只", core("RJ", METER)),
            ("闸阀（冷水）", "DN25", "个", core("J", VALVE)), ("闸阀（热水）", "DN20", "个", core("RJ", VALVE)),
            ("截止阀（冷水）", "DN25", "个", flat("J", STOP)), ("截止阀（热水）", "DN20", "个", flat("RJ", STOP)),
            ("坐便器", "节水型 3/6L", "套", fixture("坐便器")), ("洗脸盆", "台上盆", "套", fixture("洗脸盆")),
            ("洗涤盆", "双槽不锈钢", "套", fixture("洗涤盆")), ("带水封地漏", "dn75 水封 50", "个", flat("F", DRAIN)),
            ("淋浴器", "混合式", "套", fixture("淋浴器")), ("清扫口", "dn50", "个", flat("F", CLEANOUT)),
            ("立管检查口", "dn75–dn110", "个", access), ("通气帽", "dn75–dn110", "个", top(residence_pipes.VENT_CAP)),
            ("雨水斗", "87型 dn110", "个", top(residence_pipes.ROOF_OUTLET)),
            ("自动排气阀", "DN20", "个", top(residence_pipes.AIR_VALVE)),
            ("闸阀（立管）", "DN32–DN100", "个", on_risers(lambda system: residence_pipes.RISER_VALVES.get(system, 0))),
            # One more on the roof, for tests.
            ("室内消火栓", "SN65 单栓", "套", STOREYS * UNITS + 1),
            ("信号闸阀（喷淋）", "DN50", "个", core("ZP", VALVE)),
            ("水流指示器", "DN50", "个", STOREYS * UNITS * len(residence_pipes.FLOW_SWITCHES)),
            ("试水阀（喷淋）", "DN25", "个", core("ZP", STOP)), ("喷头", "K80 下垂型", "个", core("ZP", HEAD))]
    return [("序号", "名称", "规格", "单位", "数量")] + [(str(i + 1), *row[:3], str(row[3])) for i, row in enumerate(rows)]


def add_detail_marks(pen):
    """Around the enlarged part in the plan: a broken line and the sign that tells the sheet; within: dimensions, heights."""
    pen.box("给排-虚线", -350, 4450, 7750, 9950)
    # Clear of the axes; the second one has no room for its name.
    for number, text, x, y, foot in (("1", "卫生间、厨房大样", 800, 10900, 9950), ("2", "", 10900, 10650, 9200)):
        pen.lines("公用-索引符号", (x, foot), (x, y - 450))
        pen.circle("公用-索引符号", (x, y), 450)
        pen.lines("公用-索引符号", (x - 450, y), (x + (2650 if text else 450), y))
        for sign, up in ((number, 225), ("04", -225)):
            pen.text("公用-索引符号", (x, y + up), sign, 300, "CM")
        if text:
            pen.text("公用-索引符号", (x + 550, y + 70), text, 300)
    dimensions = Dimensions(pen, "公用-标注", "给排-50", 50)
    dimensions.chain([0, 3600, 5400, 7500], 9750, 10650)


def frame(pen, name, number, scale):
    """Cut edge, frame, title block."""
    pen.box("公用-图签", 0, 0, *SIZE)
    pen.wide("公用-图框", [(25, 10), (584, 10), (584, 410), (25, 410)], 1, True)
    x, y, wide, high = 404, 10, 180, 56
    pen.wide("公用-图框", [(x, y), (x, y + high), (x + wide, y + high)], 0.7)
    rows = [y + 8 * step for step in range(1, 7)]
    for row in rows:
        pen.lines("公用-图签", (x, row), (x + 70, row))
    for at in (x + 20, x + 45, x + 70):
        pen.lines("公用-图签", (at, y), (at, y + high))
    for row in (y + 16, y + 32, y + 44):
        pen.lines("公用-图签", (x + 70, row), (x + wide, row))
    for at, low, top in ((x + 92, y, y + 44), (x + 130, y, y + 16), (x + 150, y, y + 16)):
        pen.lines("公用-图签", (at, low), (at, top))

    def cell(x0, y0, text, size=3.5, align="CM"):
        pen.text("公用-图签", (x0, y0), text, size, align)

    for row, (role, who) in enumerate((("审定", ""), ("审核", ""), ("专业负责", ""), ("校对", ""), ("设计", ""), ("制图", ""), ("专业", "给排水"))):
        at = y + high - 4 - 8 * row
        cell(x + 10, at, role)
        cell(x + 32.5, at, who)
    cell(x + 125, y + 50, "示例设计院", 5)
    for at, head, text in ((y + 38, "工程名称", "清河苑住宅小区 1#住宅楼"), (y + 24, "图名", name)):
        cell(x + 81, at, head)
        cell(x + 136, at, text, 5 if head == "图名" else 4)
    for at, text in ((x + 81, "比例"), (x + 111, scale), (x + 140, "图号"), (x + 165, number)):
        cell(at, y + 8, text, 4)


def view(pen, number, low, size, scale, center, frozen=()):
    """A viewport with its lower left corner; it shows model space around the centre at 1:scale."""
    middle = low[0] + size[0] / 2, low[1] + size[1] / 2
    pen.add("VIEWPORT", "Defpoints", number, middle, size, center, size[1] * scale, tuple(frozen))


def caption(pen, at, title, scale):
    """As in the plan, at the size of paper."""
    pen.text("公用-图名标注", at, title, 6, "CB")
    half = len(title) * 6 * 0.42 + 2
    pen.wide("公用-图名标注", [(at[0] - half, at[1] - 1.5), (at[0] + half, at[1] - 1.5)], 0.6)
    pen.lines("公用-图名标注", (at[0] - half, at[1] - 2.7), (at[0] + half, at[1] - 2.7))
    pen.text("公用-图名标注", (at[0] + half + 2, at[1]), scale, 4, "LB")


def add_first(drawing):
    pen = Pen(drawing, space=PAPER)
    view(pen, 1, (-40, -30), (674, 480), 1, (297, 210))
    frame(pen, "标准层给排水平面图", "水施-03", "见图")
    view(pen, 2, (38, 188), (532, 220), 100, (UNIT, 4950), OF_DETAIL)
    caption(pen, (300, 178), "1F–18F 标准层给排水平面图", "1:100")
    view(pen, 3, (30, 46), (136, 106), 500, (SITE[0] + 23500, SITE[1] + 9000))
    caption(pen, (92, 28), "室外给排水总平面图", "1:500")
    view(pen, 4, (192, 48), (170, 114), 100, (LEGEND[0] + 8100, LEGEND[1] - 4100))
    for row, text in enumerate(NOTES):
        pen.text("公用-文字", (380, 162 - row * 8), text, 5 if row == 0 else 3.5, "LB")


def add_second(drawing):
    pen = Pen(drawing, space=SECOND)
    view(pen, 1, (-40, -30), (674, 480), 1, (297, 210))
    frame(pen, "给排水系统图、卫生间大样图", "水施-04", "见图")
    view(pen, 2, (30, 206), (550, 200), 100, (DIAGRAMS[0] + 25200, DIAGRAMS[1] + 6400))
    view(pen, 3, (32, 64), (170, 128), 50, (3700, 7750), OF_PLAN + ["建筑-房间名"])
    for row, text in enumerate(HEIGHTS):
        pen.text("公用-文字", (32, 32 - row * 7), text, 3.5, "LB")
    caption(pen, (110, 46), "1  户型卫生间、厨房大样图", "1:50")
    view(pen, 4, (222, 52), (136, 140), 50, (10500, 8000), OF_PLAN + ["公用-标注"])
    caption(pen, (285, 30), "2  合用前室、水井大样图", "1:50")
    x, y, high, columns = 384, 193, 5.4, (0, 14, 70, 122, 146, 186)
    pen.text("公用-表格", (x + 93, y + 4), "主要设备材料表", 5, "CB", style=TABLE_STYLE)
    rows = materials()
    for row in range(len(rows) + 1):
        pen.lines("公用-表格", (x, y - row * high), (x + columns[-1], y - row * high))
    for at in columns:
        pen.lines("公用-表格", (x + at, y), (x + at, y - len(rows) * high))
    for row, cells in enumerate(rows):
        for (left, right), text in zip(zip(columns, columns[1:]), cells):
            pen.text("公用-表格", (x + (left + right) / 2, y - (row + 0.5) * high), text, 3.5, "CM", style=TABLE_STYLE)


def add_titles(pen):
    """In model space, for those who never look at a sheet."""
    add_title(pen.frame(0), (SITE[0] + 21000, SITE[1] - 19500), "室外给排水总平面图", "1:500")
