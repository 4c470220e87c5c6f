// The shapes of leaders that carry their text, and of meshes.
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "host/drawing/objecttags.h"
#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"
#include "host/pick/picture.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;

namespace {

// Fields in brackets, one in the other: what the leader shows, each leader's foot, and the lines that lead to it.
enum class Place { Outside, Context, Leader, Line };

struct Foot {
    Vec at;
    Vec direction;
    double length = 0.0;
    std::vector<std::vector<Vec>> lines;
};

struct Multileader {
    std::vector<Foot> feet;
    double arrow = 0.0;
    double textHeight = 0.0;
    double textWidth = 0.0;
    long column = 0;  // of the text: left, middle, right
    Vec textAt;
    Vec textDirection{1, 0, 0};
    std::string text;
    std::string style;  // handle
    bool hasFeet = true;
    bool hasText = false;
    bool hasBlock = false;
    std::string block;  // handle
    Vec blockAt;
    Vec blockNormal{0, 0, 1};
    Vec blockScale{1, 1, 1};
    double blockRotation = 0.0;
    std::vector<std::pair<std::string, std::string>> attributes;  // of the block: handles of definitions, texts
};

// The coordinate that a field of a row of three codes is.
void take(Vec& point, int first, const Entity::Field& field) {
    const double number = finiteOf(field.value).value_or(0.0);
    if (field.code == first) point.x = number;
    if (field.code == codes::yOf(first)) point.y = number;
    if (field.code == codes::zOf(first)) point.z = number;
}

void takeOfContext(Multileader& leader, const Entity::Field& field) {
    const double number = finiteOf(field.value).value_or(0.0);
    take(leader.textAt, codes::mleader::kTextPoint, field);
    take(leader.textDirection, codes::mleader::kTextDirection, field);
    if (field.code == codes::mleader::kTextHeight) leader.textHeight = number;
    if (field.code == codes::mleader::kTextWidth) leader.textWidth = number;
    if (field.code == codes::mleader::kArrowSize) leader.arrow = number;
    if (field.code == codes::mleader::kHasText) leader.hasText = number != 0.0;
    if (field.code == codes::mleader::kTextColumn) leader.column = static_cast<long>(number) - 1;
    if (field.code == codes::mleader::kTextStyle) leader.style = field.value;
    if (field.code == codes::mleader::kText) leader.text = field.value;
    take(leader.blockAt, codes::mleader::kBlockPoint, field);
    take(leader.blockNormal, codes::mleader::kBlockNormal, field);
    take(leader.blockScale, codes::mleader::kBlockScale, field);
    if (field.code == codes::mleader::kBlockRotation) leader.blockRotation = number;
    if (field.code == codes::mleader::kHasBlock) leader.hasBlock = number != 0.0;
    if (field.code == codes::mleader::kBlock) leader.block = field.value;
}

void takeOutside(Multileader& leader, const Entity::Field& field) {
    if (field.code == codes::mleader::kHasFeet) leader.hasFeet = dxf::toInteger(field.value, 1) != 0;
    if (field.code == codes::mleader::kAttribute) leader.attributes.emplace_back(field.value, std::string());
    if (field.code == codes::mleader::kAttributeText && !leader.attributes.empty())
        leader.attributes.back().second = field.value;
}

Transform placeOfBlock(const Multileader& leader) {
    const Vec x{std::cos(leader.blockRotation), std::sin(leader.blockRotation), 0};
    const Transform turned =
        planeOf(unit(leader.blockNormal, {0, 0, 1})).after(Transform{x, {-x.y, x.x, 0}, {0, 0, 1}, {}});
    Transform place = turned.after(
        Transform{{leader.blockScale.x, 0, 0}, {0, leader.blockScale.y, 0}, {0, 0, leader.blockScale.z}, {}});
    place.offset = leader.blockAt;
    return place;
}

void takeOfFoot(Foot& foot, const Entity::Field& field) {
    take(foot.at, codes::kPoint, field);
    take(foot.direction, codes::mleader::kFootDirection, field);
    if (field.code == codes::mleader::kFootLength) foot.length = finiteOf(field.value).value_or(0.0);
}

Multileader readMultileader(const Entity& entity) {
    Multileader leader;
    Place place = Place::Outside;
    for (const Entity::Field& field : entity.fields()) {
        const bool opens = !field.value.empty() && field.value.back() == '{';
        if (place == Place::Outside) {
            if (field.code == codes::mleader::kContext && opens) place = Place::Context;
            takeOutside(leader, field);
        } else if (place == Place::Context) {
            if (field.code == codes::mleader::kContextEnd) place = Place::Outside;
            if (field.code == codes::mleader::kLeader && opens) {
                place = Place::Leader;
                leader.feet.emplace_back();
            } else {
                takeOfContext(leader, field);
            }
        } else if (place == Place::Leader) {
            if (field.code == codes::mleader::kLeaderEnd) place = Place::Context;
            if (field.code == codes::mleader::kLine && opens) {
                place = Place::Line;
                leader.feet.back().lines.emplace_back();
            } else {
                takeOfFoot(leader.feet.back(), field);
            }
        } else {
            std::vector<Vec>& line = leader.feet.back().lines.back();
            if (field.code == codes::mleader::kLineEnd) place = Place::Leader;
            if (field.code == codes::kPoint) line.emplace_back();
            if (!line.empty()) take(line.back(), codes::kPoint, field);
        }
    }
    return leader;
}

void drawFoot(const Foot& foot, const Multileader& leader, const Pen& pen) {
    for (std::vector<Vec> line : foot.lines) {
        if (line.empty()) continue;
        line.push_back(foot.at);
        for (std::size_t i = 1; i < line.size(); ++i)
            pen.segment(line[i - 1], line[i]);
        const Vec back = unit(line[1] - line[0], {1, 0, 0}) * leader.arrow;
        const Vec side = Vec{-back.y, back.x, 0} * (1.0 / 6);
        if (leader.arrow > 0.0 && lengthOf(line[1] - line[0]) > leader.arrow)
            pen.filled({line[0], line[0] + back + side, line[0] + back - side});
    }
    if (leader.hasFeet) pen.segment(foot.at, foot.at + foot.direction * foot.length);
}

// The texts of the block's attributes, which the leader tells in place of references to them.
void drawAttributes(const Multileader& leader, const Entity& entity, const Pen& pen) {
    const dxf::Drawing& drawing = entity.drawing();
    Entity definition;
    Entity head;
    for (const auto& [handle, text] : leader.attributes) {
        const dxf::RecordId id = drawing.findHandle(dxf::toHandle(handle));
        if (id == dxf::kNoRecord || drawing.typeNameOf(id) != "ATTDEF" || drawing.record(id).owner == dxf::kNoRecord)
            continue;
        definition.read(drawing, id);
        head.read(drawing, drawing.record(id).owner);
        const Vec base = head.point(codes::kPoint).value_or(Vec{});
        const Transform back{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, base * -1.0};
        drawAttributeText(definition, readText(drawing, text), pen.in(placeOfBlock(leader).after(back)));
    }
}

}  // namespace

bool placeMultileader(const Entity& entity, Placement& placement) {
    const Multileader leader = readMultileader(entity);
    const dxf::Drawing& drawing = entity.drawing();
    const dxf::RecordId block = leader.hasBlock ? drawing.findHandle(dxf::toHandle(leader.block)) : dxf::kNoRecord;
    dxf::Tag tag;
    if (block == dxf::kNoRecord || !drawing.findTag(block, codes::kName, tag)) return false;
    placement.block = readText(drawing, tag.value);
    placement.first = placeOfBlock(leader);
    return true;
}

void drawMultileader(const Entity& entity, const Pen& pen) {
    const Multileader leader = readMultileader(entity);
    for (const Foot& foot : leader.feet)
        drawFoot(foot, leader, pen);
    if (leader.hasBlock) drawAttributes(leader, entity, pen);
    if (!leader.hasText || leader.text.empty() || !(leader.textHeight > 0.0)) return;
    const dxf::Drawing& drawing = entity.drawing();
    const Vec x = unit(leader.textDirection, {1, 0, 0});
    const Transform place{x, {-x.y, x.x, 0}, {0, 0, 1}, leader.textAt};
    const std::wstring text = readText(drawing, leader.text);
    const auto column = static_cast<int>(std::clamp(leader.column, 0L, 2L));
    if (Picture* const picture = pen.picture()) {
        Paragraphs paragraphs;
        paragraphs.text = text;
        const dxf::RecordId style = drawing.findHandle(dxf::toHandle(leader.style));
        dxf::Tag tag;
        if (style != dxf::kNoRecord && drawing.findTag(style, codes::kName, tag))
            paragraphs.style = readText(drawing, tag.value);
        paragraphs.height = leader.textHeight;
        paragraphs.width = std::max(leader.textWidth, 0.0);
        paragraphs.column = column;
        return picture->paragraphs(paragraphs, pen.in(place).toWorld());
    }
    const double width = leader.textWidth > 0.0 ? leader.textWidth : textWidth(text) * leader.textHeight;
    const double left = -width * column / 2;
    pen.in(place).filled(
        {{left, 0, 0}, {left + width, 0, 0}, {left + width, -leader.textHeight, 0}, {left, -leader.textHeight, 0}});
}

// The edges of its faces as they were drawn, however smooth they are to be shown.
void drawMesh(const Entity& entity, const Pen& pen) {
    std::vector<Vec> corners;
    std::vector<std::size_t> faces;  // how many corners each has, then their numbers
    bool isFaces = false;
    for (const Entity::Field& field : entity.fields()) {
        if (field.code == codes::kPoint) corners.emplace_back();
        if (!corners.empty()) take(corners.back(), codes::kPoint, field);
        if (field.code == codes::mesh::kFaceListSize) isFaces = true;
        if (field.code == codes::mesh::kEdgeCount) isFaces = false;
        if (isFaces && field.code == codes::mesh::kListItem)
            faces.push_back(static_cast<std::size_t>(std::max<std::int64_t>(dxf::toInteger(field.value), 0)));
    }
    for (std::size_t at = 0; at < faces.size();) {
        const std::size_t count = faces[at++];
        if (count > faces.size() - at) return;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t from = faces[at + i];
            const std::size_t to = faces[at + (i + 1) % count];
            if (from < corners.size() && to < corners.size()) pen.segment(corners[from], corners[to]);
        }
        at += count;
    }
}

}  // namespace qrs::host::pick
