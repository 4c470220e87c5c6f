// The table of references.
#include "host/dxf/references.h"

namespace qrs::dxf {

namespace {

// A rule with what sets it apart from a plain one.
struct Row {
    ReferenceRule rule;

    // Its entry begins with the tag before, or goes on with tags after.
    constexpr Row after(int code) const {
        Row row = *this;
        row.rule.before = code;
        return row;
    }
    constexpr Row with(int first, int second = kNoCode, int third = kNoCode) const {
        Row row = *this;
        row.rule.after[0] = first;
        row.rule.after[1] = second;
        row.rule.after[2] = third;
        return row;
    }
    constexpr Row countedBy(int code) const {
        Row row = *this;
        row.rule.count = code;
        return row;
    }
    constexpr Row emptying(Emptied what) const {
        Row row = *this;
        row.rule.emptied = what;
        return row;
    }
    constexpr Row asWhole() const {
        Row row = *this;
        row.rule.isWhole = true;
        return row;
    }
    constexpr Row doneWithout() const {
        Row row = *this;
        row.rule.isDoneWithout = true;
        return row;
    }
    // The integer loses bits, or becomes a value.
    constexpr Row clearing(int code, std::int64_t bits) const {
        Row row = *this;
        row.rule.statement = {code, ~bits, 0};
        return row;
    }
    constexpr Row setting(int code, std::int64_t value) const {
        Row row = *this;
        row.rule.statement = {code, 0, value};
        return row;
    }
    constexpr Row named() const {
        Row row = *this;
        row.rule.isLayerName = true;
        return row;
    }
    constexpr Row ofRecord(std::string_view type) const {
        Row row = *this;
        row.rule.record = type;
        return row;
    }
    constexpr Row underText(std::string_view text) const {
        Row row = *this;
        row.rule.text = text;
        return row;
    }
};

constexpr Row everywhere(int first, int last, Loss loss) {
    return {{"", "", "", "", first, last, loss}};
}
constexpr Row in(std::string_view section, int first, int last, Loss loss) {
    return {{"", section, "", "", first, last, loss}};
}
constexpr Row in(std::string_view section, int code, Loss loss) {
    return in(section, code, code, loss);
}
constexpr Row inGroup(std::string_view group, int code, Loss loss) {
    return {{"", "", group, "", code, code, loss}};
}

// The first rule that holds counts, so those of single classes come first. Lists lose the entry and optional fields go;
// what else stands somewhere becomes 0, since its place may tell what it is.
constexpr Row kRules[] = {
    // --- groups that any record may have
    inGroup("ACAD_REACTORS", 330, Loss::Entry).emptying(Emptied::Group),
    inGroup("ACAD_XDICTIONARY", 360, Loss::Entry).emptying(Emptied::Group),
    inGroup("BLKREFS", 331, Loss::Entry).emptying(Emptied::Group),
    inGroup("ADSK_LYR_", 335, Loss::Group),  // a property of a layer in one viewport

    // --- entities
    in("AcDbEntity", 330, 399, Loss::Entry),  // material, visual style, plot style: by layer when not given
    in("AcDbViewport", 340, Loss::Entry).clearing(90, 0x10000),  // outline; status bit: clipped
    in("AcDbViewport", 341, Loss::Entry).doneWithout(),          // frozen layers, as 331
    in("AcDbViewport", 330, 399, Loss::Entry),
    in("AcDbHatch", 330, Loss::Entry).countedBy(97).asWhole().setting(71, 0),  // boundary; associative
    in("AcDbLeader", 340, Loss::Entry).setting(73, 3),                         // annotation; 3: without
    in("AcDbMLeader", 330, Loss::Entry).with(177, 44, 302),                    // attribute definition, its text
    in("TDbPipePrototype", 330, 399, Loss::Entry),
    in("TDbPipe", 330, 399, Loss::Entry),
    everywhere(codes::kXdataLayer, codes::kXdataLayer, Loss::Entry).ofRecord("VIEWPORT").named(),  // frozen, up to R14

    // --- tables
    in("AcDbViewportTableRecord", 330, 399, Loss::Entry),
    in("AcDbViewTableRecord", 330, 399, Loss::Entry),
    in("AcDbDimStyleTable", 340, Loss::Entry).countedBy(71),

    // --- objects
    in("AcDbDictionary", 350, Loss::Entry).after(codes::kEntryName),
    in("AcDbDictionary", 360, Loss::Entry).after(codes::kEntryName),
    in("AcDbGroup", 340, Loss::Entry).emptying(Emptied::Record),
    in("AcDbSortentsTable", 330, Loss::Record),
    in("AcDbSortentsTable", 331, Loss::Entry).with(codes::kHandle),  // the handle by whose rank the entity is drawn
    in("AcDbLayout", 331, 399, Loss::Entry),                         // viewport last at work, coordinate systems
    in("AcDbDimAssoc", 330, 339, Loss::Record),                      // the dimension, what it measures
    in("AcDbRasterImageDefReactor", 330, Loss::Record),
    in("AcDbIdSet", 330, Loss::Entry).countedBy(90),
    in("AcDbField", 360, Loss::Entry).countedBy(90),
    in("AcDbIdBuffer", 330, Loss::Entry),
    in("AcDbLayerIndex", codes::kLayer, Loss::Entry).named().with(360, 90),
    in("AcDbLayerFilter", codes::kLayer, Loss::Entry).named(),
    in("AcDbXrecord", 330, Loss::Entry).underText("AcLyLayerGroup"),
    in("AcDbBlockAction", 330, Loss::Entry).countedBy(71),
    in("AcDbBlockVisibilityParameter", 331, Loss::Entry).countedBy(93),
    in("AcDbBlockVisibilityParameter", 332, Loss::Entry).countedBy(94),
    in("AcDbBlockVisibilityParameter", 333, Loss::Entry).countedBy(95),
    everywhere(320, 320, Loss::Record).ofRecord("ACDSRECORD"),  // the body of a solid

    // --- all others
    everywhere(320, 329, Loss::Stays),
    everywhere(330, 369, Loss::Zero),
    everywhere(390, 399, Loss::Zero),
    everywhere(480, 481, Loss::Zero),
    everywhere(codes::kXdataLayer, codes::kXdataLayer, Loss::Zero).named(),
    everywhere(codes::kXdataHandle, codes::kXdataHandle, Loss::Zero),
};

constexpr ReferenceRule kOwnerRule = everywhere(codes::kOwner, codes::kOwner, Loss::Record).rule;

bool mayRefer(int code) {
    return isToOther(referenceOf(code)) || code == codes::kLayer || code == codes::kXdataLayer;
}

bool isSameOrAny(std::string_view wanted, std::string_view name) {
    return wanted.empty() || wanted == name;
}

}  // namespace

bool ReferencePlace::holds(const ReferenceRule& rule) const {
    const bool isInGroup = place_.part() == Part::Group;
    if (!rule.group.empty()) return isInGroup && place_.group().substr(0, rule.group.size()) == rule.group;
    // What stands in groups of applications is none of the class's.
    if (isInGroup && !rule.section.empty()) return false;
    return isSameOrAny(rule.record, type_) && isSameOrAny(rule.section, place_.section()) &&
           isSameOrAny(rule.text, text_);
}

const ReferenceRule* ReferencePlace::pass(int code, std::string_view value) {
    const int sections = place_.sections();
    const Part part = place_.pass(code, value);
    isOwner_ = false;
    if (place_.sections() != sections) hasText_ = false;
    if (!hasText_) text_ = {};
    if (code == codes::kText && part == Part::Own && !hasText_) {
        text_ = trimmed(value);
        hasText_ = true;
    }
    if (!mayRefer(code)) return nullptr;
    if (code == codes::kOwner && part == Part::Own && place_.sections() == 0 && !hasOwner_) {
        isOwner_ = hasOwner_ = true;
        return &kOwnerRule;
    }
    for (const Row& row : kRules) {
        if (code >= row.rule.first && code <= row.rule.last && holds(row.rule)) return &row.rule;
    }
    return nullptr;
}

}  // namespace qrs::dxf
