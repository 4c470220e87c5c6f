// The table of references.
#include "host/dxf/references.h"

#include "host/dxf/classcodes.h"

namespace qrs::dxf {

namespace {

using namespace codes;

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
constexpr Row everywhere(int code, Loss loss) {
    return everywhere(code, code, loss);
}
constexpr Row in(std::string_view section, int first, int last, Loss loss) {
    return {{"", section, "", "", first, last, loss}};
}
constexpr Row in(std::string_view section, int code, Loss loss) {
    return in(section, code, code, loss);
}
constexpr Row allIn(std::string_view section, Loss loss) {
    return in(section, codes::kFirstReference, codes::kLastReference, loss);
}
constexpr Row inGroup(std::string_view group, int code, Loss loss) {
    return {{"", "", group, "", code, code, loss}};
}

// The first rule that holds counts, so those of single classes come first. Lists lose the entry and optional fields go;
// what else stands somewhere becomes 0, since its place may tell what it is.
constexpr Row kRules[] = {
    // --- groups that any record may have
    inGroup("ACAD_REACTORS", codes::kReactor, Loss::Entry).emptying(Emptied::Group),
    inGroup("ACAD_XDICTIONARY", codes::kHardOwned, Loss::Entry).emptying(Emptied::Group),
    inGroup("BLKREFS", blockrecord::kBlockReference, Loss::Entry).emptying(Emptied::Group),
    inGroup("ADSK_LYR_", layer::kOverriddenIn, Loss::Group),

    // --- entities
    allIn("AcDbEntity", Loss::Entry),  // material, visual style, plot style: by layer when not given
    in("AcDbViewport", viewport::kOutline, Loss::Entry).clearing(viewport::kStatus, viewport::kIsClipped),
    in("AcDbViewport", viewport::kHardFrozenLayer, Loss::Entry).doneWithout(),
    allIn("AcDbViewport", Loss::Entry),
    in("AcDbHatch", hatch::kBoundary, Loss::Entry)
        .countedBy(hatch::kBoundaryCount)
        .asWhole()
        .setting(hatch::kIsAssociative, 0),
    in("AcDbLeader", leader::kAnnotation, Loss::Entry).setting(leader::kAnnotationKind, leader::kNoAnnotation),
    in("AcDbMLeader", mleader::kAttribute, Loss::Entry)
        .with(mleader::kAttributeNumber, mleader::kAttributeWidth, mleader::kAttributeText),
    allIn("TDbPipePrototype", Loss::Entry),
    allIn("TDbPipe", Loss::Entry),
    everywhere(codes::kXdataLayer, Loss::Entry).ofRecord("VIEWPORT").named(),  // frozen, up to R14

    // --- tables
    allIn("AcDbViewportTableRecord", Loss::Entry),
    allIn("AcDbViewTableRecord", Loss::Entry),
    in("AcDbDimStyleTable", dimstyles::kStyle, Loss::Entry).countedBy(dimstyles::kStyleCount),

    // --- objects
    in("AcDbDictionary", codes::kSoftOwned, Loss::Entry).after(codes::kEntryName),
    in("AcDbDictionary", codes::kHardOwned, Loss::Entry).after(codes::kEntryName),
    in("AcDbGroup", codes::kHardPointer, Loss::Entry).emptying(Emptied::Record),
    in("AcDbSortentsTable", sortents::kSpace, Loss::Record),
    in("AcDbSortentsTable", sortents::kEntity, Loss::Entry).with(sortents::kSortHandle),
    in("AcDbLayout", layout::kLastViewport, codes::kLastReference, Loss::Entry),     // and coordinate systems
    in("AcDbDimAssoc", codes::kSoftPointer, codes::kLastSoftPointer, Loss::Record),  // the dimension, what it measures
    in("AcDbRasterImageDefReactor", codes::kSoftPointer, Loss::Record),
    in("AcDbIdSet", idset::kEntity, Loss::Entry).countedBy(idset::kCount),
    in("AcDbField", field::kChild, Loss::Entry).countedBy(field::kChildCount),
    in("AcDbIdBuffer", codes::kSoftPointer, Loss::Entry),
    in("AcDbLayerIndex", codes::kLayer, Loss::Entry).named().with(layerindex::kEntities, layerindex::kEntityCount),
    in("AcDbLayerFilter", codes::kLayer, Loss::Entry).named(),
    in("AcDbXrecord", codes::kSoftPointer, Loss::Entry).underText("AcLyLayerGroup"),
    in("AcDbBlockAction", blockaction::kEntity, Loss::Entry).countedBy(blockaction::kEntityCount),
    in("AcDbBlockVisibilityParameter", blockvisibility::kEntity, Loss::Entry).countedBy(blockvisibility::kEntityCount),
    in("AcDbBlockVisibilityParameter", blockvisibility::kStateEntity, Loss::Entry)
        .countedBy(blockvisibility::kStateEntityCount),
    in("AcDbBlockVisibilityParameter", blockvisibility::kStateParameter, Loss::Entry)
        .countedBy(blockvisibility::kStateParameterCount),
    everywhere(codes::kUnresolved, Loss::Record).ofRecord("ACDSRECORD"),  // the body of a solid

    // --- all others
    everywhere(codes::kUnresolved, codes::kLastUnresolved, Loss::Stays),
    everywhere(codes::kFirstReference, codes::kLastReference, Loss::Zero),
    everywhere(codes::kFarHardPointer, codes::kLastFarHardPointer, Loss::Zero),
    everywhere(codes::kXdataLayer, Loss::Zero).named(),
    everywhere(codes::kXdataHandle, Loss::Zero),
};

constexpr ReferenceRule kOwnerRule = everywhere(codes::kOwner, Loss::Record).rule;

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
