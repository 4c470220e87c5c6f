#!/usr/bin/env python3
"""Makes data/pwx.qdsl, the shipped pipe-system standard, from the tables beside this file.

    python3 make_standard.py           writes ../pwx.qdsl
    python3 make_standard.py --check   exits with 1 when ../pwx.qdsl is not what the tables make

Tables that contradict themselves or each other are refused: every fault is told in a line, and nothing is written.

The tables are UTF-8, one row a line, with a head line:

    groups.csv        groups of pipe systems
    systems.csv       pipe systems; "kind" selects the layers of layers.csv, "lineweight" is in hundredths of a millimetre
    layers.csv        layers of every system of the given kinds; "system" takes the system's own value
    otherlayers.csv   groups of layers that belong to no pipe system, and othermaps.csv their mappings
    createrules.csv   which kind of layers a new system of a group gets
    textstyles.csv    text styles
    objectcolors.csv  colours of the suite's objects

Layer names of pipe systems are made of the system's name by the same rule that stands in the file for new systems.
"""

import csv
import pathlib
import sys
from xml.sax.saxutils import escape, quoteattr

SOURCE = pathlib.Path(__file__).resolve().parent
TARGET = SOURCE.parent / "pwx.qdsl"
PREFIX = "给排-"
CONTINUOUS = "Continuous"
OWN_GROUP = "默认"  # of otherlayers.csv: the water supply's own layers


def table(name):
    with open(SOURCE / name, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


class Item:
    """One element: attributes in order, and text or children."""

    def __init__(self, name, comment=None, text="", **attributes):
        self.name = name
        self.attributes = ([("Comment", comment)] if comment is not None else []) + list(attributes.items())
        self.text = text
        self.children = []

    def add(self, *args, **kwargs):
        self.children.append(Item(*args, **kwargs))
        return self.children[-1]

    def lines(self, depth=0):
        head = "\t" * depth + "<" + self.name + "".join(f" {n}={quoteattr(v)}" for n, v in self.attributes)
        if self.children:
            yield head + ">"
            for child in self.children:
                yield from child.lines(depth + 1)
            yield "\t" * depth + f"</{self.name}>"
        elif self.text:
            yield f"{head}>{escape(self.text)}</{self.name}>"
        else:
            yield head + " />"


def real(text):
    return f"{float(text):.2f}"


def layer_name(system, layer):
    return PREFIX + system["name"] + "-" + layer["type"]


def weight(hundredths):
    return f"{int(hundredths) / 100:.2f}"


def add_layer(parent, key, old_key, row, color, linetype, lineweight, attach=""):
    """The children of one layer; key is None for layers of pipe systems."""
    parent.add("OldKey", "旧版关键字", old_key)
    if key is not None:
        parent.add("LayerKey", "图层关键字", key)
    parent.add("LayerName", "图层名", row["name"])
    parent.add("LayerColor", "图层颜色", color)
    parent.add("LineStyle", "线型", linetype)
    parent.add("LineWeight", "线宽", lineweight)
    parent.add("Remark", "备注", row["remark"])
    parent.add("CanDel", "是否可以删除图层", "0")
    parent.add("CanPlot", "是否可打印图层", row["plot"])
    attachments = parent.add("LayerAttachSet", "图层归属集合")
    for name in attach.split():
        attachments.add("LayerAttach", "图层归属", name)


def add_system(group, row, layers, can_name):
    pipe = group.add("Pipe", "系统")
    info = pipe.add("BaseInfo", "基本信息")
    info.add("PipeOriginalName", "原始名称", row["original"])
    info.add("PipeName", "名称", row["name"])
    info.add("LineWidth", "线宽", real(row["width"]))
    info.add("Dim", "标注", row["dim"])
    info.add("Material", "管材", row["material"])
    info.add("OutdoorMaterial", "室外管材", row["outdoor"])
    info.add("VPipeType", "立管样式", row["vtype"])
    info.add("VPipeRaidus", "立管半径", real(row["radius"]))
    info.add("VPipeRaidus1", "立管大圆半径", real(row["radius1"]))
    info.add("VPipeRaidus2", "立管小圆半径", real(row["radius2"]))
    info.add("WaterFlowStatus", "水流状态", row["flow"])
    info.add("Remark", "备注", row["remark"])
    info.add("CanName", "是否可以更改管线关键字", can_name)
    # The suite's own systems stay; only what a user adds may go.
    info.add("CanDel", "是否可以删除管线", "0" if row["original"] else "1")
    info.add("Status", "状态标识", "0")
    for layer in layers:
        if row["kind"] not in layer["kinds"].split():
            continue
        own = dict(layer, name=layer_name(row, layer))
        old_key = row["original"] + layer["type"] if row["original"] else ""
        add_layer(
            pipe.add("Layer", LayerType=layer["type"]), None, old_key, own,
            row["color"] if layer["color"] == "system" else layer["color"],
            row["linetype"] if layer["linetype"] == "system" else layer["linetype"],
            weight(row["lineweight"]) if layer["lineweight"] == "system" else layer["lineweight"],
            layer["attach"])


def add_other_layers(section):
    maps = table("othermaps.csv")
    groups = {}
    for row in table("otherlayers.csv"):
        if row["group"] not in groups:
            group = groups[row["group"]] = section.add("LayerGroup", LayerType=row["group"])
            # The writer goes through a map ordered by code units, so sources stand in that order.
            entries = sorted((m["source"], m["target"]) for m in maps if m["group"] == row["group"])
            if entries:
                mapping = group.add("OtherMap", "图层映射规则")
            for source, target in entries:
                entry = mapping.add("MapItem", "映射项")
                entry.add("SrcItem", "映射源", source)
                entry.add("DesItem", "映射目标", target)
        add_layer(groups[row["group"]].add("Layer"), row["key"], "", row, row["color"], row["linetype"],
                  row["lineweight"])


def standard():
    layers = table("layers.csv")
    systems = table("systems.csv")
    root = Item("Morvel", "Morvel管线系统配置文件")
    section = root.add("PipeSystem", "管线系统")
    for row in table("groups.csv"):
        group = section.add("PipeGroup", "系统组", Name=row["name"], CanName=row["can_name"])
        for system in systems:
            if system["group"] == row["name"]:
                add_system(group, system, layers, row["can_name"])
    add_other_layers(root.add("OtherLayer", "管线无关图层"))
    section = root.add("LayerNameRule", "图层名命名规则")
    for layer in layers:
        rule = section.add("NameRule", "命名规则", LayerType=layer["type"])
        rule.add("LayerPrefix", "图层前缀", PREFIX)
        rule.add("LayerSuffix", "图层后缀", "-" + layer["type"])
    links = root.add("CreatePipeSystemRule", "创建管道系统规则").add("LinkLayerType", "关联图层分类")
    for row in table("createrules.csv"):
        rule = links.add("CreateRule", "管道系统组", Name=row["group"])
        for layer in layers:
            if row["kind"] in layer["kinds"].split():
                rule.add("LayerType", "图层分类", layer["type"])
    styles = root.add("TextStyleSetting", "文字样式设置").add("TextStyleSet", "文字样式集合")
    for row in table("textstyles.csv"):
        style = styles.add("TextStyle", "文字样式", Key=row["key"])
        style.add("Name", "文字样式名", row["name"])
        style.add("ChineseFont", "中文字体名", row["chinese"])
        style.add("EnglishFont", "英文字体名", row["english"])
        style.add("WinFont", "win字体", row["winfont"])
        style.add("FontHeigth", "字高", real(row["height"]))
        style.add("WHScale", "宽高比", real(row["scale"]))
        style.add("Bold", "粗体", row["bold"])
        style.add("Italic", "斜体", row["italic"])
        style.add("Encoded", "编码", row["encoded"])
    colors = root.add("ObjectColorSetting", "对象颜色设置")
    for row in table("objectcolors.csv"):
        color = colors.add("ObjectColor", "对象颜色")
        color.add("Name", "对象名", row["name"])
        color.add("Color", "颜色", row["color"])
    declaration = '<?xml version="1.0" encoding="utf-8" standalone="yes"?>\r\n'
    return (declaration + "".join(line + "\n" for line in root.lines())).encode("utf-8")


# Colours that look the same: the full hues and the first seven.
SAME_COLORS = {"10": "1", "50": "2", "90": "3", "130": "4", "170": "5", "210": "6"}
# GB/T 50106 itself marks both fire hydrants and returning cooling water so. Nothing else shares its letters.
SHARED_CODE = "XH"
# A layer has no layer and no block to take its weight from.
NO_LAYER_WEIGHTS = ("随层", "随块")


def duplicates(named):
    """Of (key, owner) pairs: "key" and both owners wherever a key comes again; keys differ in more than case."""
    seen = {}
    for key, owner in named:
        if key.casefold() in seen:
            yield key, seen[key.casefold()], owner
        else:
            seen[key.casefold()] = owner


def system_faults(systems):
    for name, _, _ in duplicates((s["name"], s["name"]) for s in systems):
        yield f"systems.csv: {name} stands there twice"
    # A pipe is known by its name, its old name, or the type code, which is found by either: all lead to one system.
    names = [(s["name"], s["name"]) for s in systems]
    old_names = [(s["original"], s["name"]) for s in systems if s["original"] not in ("", s["name"])]
    for name, one, other in duplicates(names + old_names):
        if one != other:
            yield f"systems.csv: pipes of {name} would be of {one} and of {other}"
    for code, one, other in duplicates((s["dim"], s["name"]) for s in systems if s["dim"] != SHARED_CODE):
        yield f"systems.csv: {one} and {other} bear the same letters {code}"
    for color, one, other in duplicates((SAME_COLORS.get(s["color"], s["color"]), s["name"]) for s in systems):
        yield f"systems.csv: {one} and {other} are drawn in the same colour {color}"
    for linetype, one, other in duplicates((s["linetype"], s["name"]) for s in systems if s["linetype"] != CONTINUOUS):
        yield f"systems.csv: {one} and {other} are drawn in the same linetype {linetype}"


def reference_faults(systems, layers, others):
    """What one table says of another."""
    known = {
        "group": ("groups.csv", {row["name"] for row in table("groups.csv")}),
        "kind": ("layers.csv", {kind for layer in layers for kind in layer["kinds"].split()}),
        "material": ("pipe.csv", {row["GC"] for row in table("pipe.csv")}),
        "linetype": ("linetype.csv", {row["Name"] for row in table("linetype.csv")} | {"system"}),
    }
    known["outdoor"] = known["material"]
    for file, rows, columns in (("systems.csv", systems, ("group", "kind", "material", "outdoor", "linetype")),
                                ("layers.csv", layers, ("linetype",)), ("otherlayers.csv", others, ("linetype",)),
                                ("createrules.csv", table("createrules.csv"), ("group", "kind"))):
        for row in rows:
            for column in columns:
                where, values = known[column]
                if row[column] not in values:
                    yield f"{file}: {row[column]} of {next(iter(row.values()))} is not in {where}"


def layer_faults(systems, layers, others):
    named = [(layer_name(s, l), f"{l['type']} of {s['name']}") for s in systems for l in layers
             if s["kind"] in l["kinds"].split()]
    named += [(row["name"], f"{row['key']} of {row['group']}") for row in others]
    for name, one, other in duplicates(named):
        if one != other:
            yield f"layers.csv, otherlayers.csv: {one} and {other} are one layer {name}"
    for row in layers + others:
        if row["lineweight"] in NO_LAYER_WEIGHTS:
            yield f"layers.csv, otherlayers.csv: no layer can have the lineweight {row['lineweight']}"
    # Keys are looked for group by group: what the water supply has of its own must not be hidden by what others have.
    groups = list(dict.fromkeys(row["group"] for row in others))
    keys = [(row["group"], row["key"]) for row in others] + [(m["group"], m["source"]) for m in table("othermaps.csv")]
    for group, key in keys:
        for before in groups[:groups.index(OWN_GROUP)]:
            if group == OWN_GROUP and (before, key) in keys:
                yield f"otherlayers.csv: {key} of {before} comes before that of {OWN_GROUP}"
    for key, _, group in duplicates((f"{group} {key}", group) for group, key in keys):
        yield f"otherlayers.csv, othermaps.csv: {key} stands there twice"


def faults():
    systems, layers, others = table("systems.csv"), table("layers.csv"), table("otherlayers.csv")
    yield from system_faults(systems)
    yield from reference_faults(systems, layers, others)
    yield from layer_faults(systems, layers, others)


def main():
    found = list(dict.fromkeys(faults()))
    if found:
        print("\n".join(found), file=sys.stderr)
        return 1
    made = standard()
    if sys.argv[1:] == ["--check"]:
        if not TARGET.exists() or TARGET.read_bytes() != made:
            print(f"{TARGET.name} is not what the tables make; run {pathlib.Path(__file__).name}", file=sys.stderr)
            return 1
        return 0
    if sys.argv[1:]:
        print(__doc__, file=sys.stderr)
        return 2
    TARGET.write_bytes(made)
    return 0


if __name__ == "__main__":
    sys.exit(main())
