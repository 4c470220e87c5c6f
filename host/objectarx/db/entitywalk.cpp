// A walk through the records of a drawing that are entities.
#include "host/objectarx/db/entitywalk.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/drawing/entityformat.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"
#include "host/platform/beside.h"
#include "host/platform/text.h"

namespace qrs::host {

namespace {

namespace codes = dxf::codes;

constexpr int kHeight = 40;  // of a text
constexpr std::string_view kCommonMark = "AcDbEntity";

// Of multileaders, which some programs call by the other name: what one has instead of its style's.
constexpr std::string_view kLeaders[] = {"MULTILEADER", "MLEADER"};
constexpr int kLeaderOverrides = 90;  // after the context
constexpr std::int64_t kOwnTextStyle = 0x800;

bool isLeader(std::string_view type) {
    return type == kLeaders[0] || type == kLeaders[1];
}

constexpr std::string_view kTable = "ACAD_TABLE";  // cells may name text styles
constexpr std::string_view kEditorsData = "ACAD";  // the application

// Drawings of fewer records are walked through before a thread has begun.
constexpr std::size_t kWorthSharing = 20000;

// Names of records stand under codes below this one alone.
constexpr std::size_t kFirstCoordinate = 10;

bool isLook(int code) {
    return code == codes::kColor || code == codes::kLineWeight || code == codes::kTrueColor;
}

NamedRecord recordOf(TableKind table) {
    switch (table) {
        case TableKind::Layer:
            return NamedRecord::Layer;
        case TableKind::Linetype:
            return NamedRecord::Linetype;
        case TableKind::TextStyle:
            return NamedRecord::TextStyle;
        case TableKind::DimStyle:
            return NamedRecord::DimStyle;
        default:
            return NamedRecord::None;
    }
}

// What the tags of a type of entities name.
struct TypeNames {
    bool isKnown = false;
    bool isLeader = false;
    bool isTable = false;
    NamedRecord style = NamedRecord::None;
    bool hasStyles() const { return isLeader || isTable || style != NamedRecord::None; }
    std::array<NamedRecord, kFirstCoordinate> byCode{};
};

TypeNames namesOf(std::string_view type) {
    TypeNames names;
    names.isKnown = true;
    names.isLeader = isLeader(type);
    for (std::size_t code = 1; code < names.byCode.size(); ++code) {
        const NamingTag* naming = namingTag(type, static_cast<int>(code));
        if (naming == nullptr) continue;
        names.byCode[code] = recordOf(naming->table);
        if (*naming->dxfName != '\0' && naming->table != TableKind::Block) names.style = names.byCode[code];
    }
    names.isTable = type == kTable;
    if (names.isTable) names.byCode[codes::kTextStyle] = NamedRecord::TextStyle;
    return names;
}

// No name has brackets: a style may well be called "99".
std::wstring lostHandle(std::uint64_t handle) {
    const std::string text = dxf::handleText(handle);
    return L"<" + std::wstring(text.begin(), text.end()) + L">";
}

void addEdit(std::vector<dxf::TagEdit>& edits, const dxf::Tag& tag, std::string value) {
    dxf::TagEdit& edit = edits.emplace_back();
    edit.tag = tag;
    edit.hasValue = true;
    edit.value = std::move(value);
}

bool setLeaderStyle(dxf::Drawing& drawing, dxf::RecordId record, std::uint64_t style) {
    std::vector<dxf::TagEdit> edits;
    bool isOfText = true;
    bool isAfterContext = false;
    bool isNamed = false;
    dxf::TagCursor cursor = drawing.tags(record);
    for (dxf::Tag tag; cursor.next(tag) && tag.code < codes::kFirstXdata;) {
        isAfterContext = isAfterContext || tag.code == codes::mleader::kContextEnd;
        if (tag.code == codes::mleader::kLeader || isAfterContext) isOfText = false;
        isNamed = isNamed || tag.code == codes::mleader::kStyle;
        if (tag.code == codes::mleader::kStyle || (isOfText && tag.code == codes::mleader::kTextStyle)) {
            addEdit(edits, tag, dxf::handleText(style));
        } else if (isAfterContext && tag.code == kLeaderOverrides) {
            // Without the mark the editor takes the text style of the leader's style.
            const std::int64_t overrides = dxf::toInteger(tag.value, 0);
            if ((overrides & kOwnTextStyle) == 0) addEdit(edits, tag, std::to_string(overrides | kOwnTextStyle));
        }
    }
    if (isNamed) drawing.editTags(record, edits);
    return isNamed;
}

// The further lines of an attribute name it once more.
bool renameStyles(dxf::Drawing& drawing, dxf::RecordId record, int code, const std::string& name) {
    std::vector<dxf::TagEdit> edits;
    std::wstring own;
    dxf::TagCursor cursor = drawing.tags(record);
    for (dxf::Tag tag; cursor.next(tag) && tag.code < codes::kFirstXdata;) {
        if (tag.code != code) continue;
        const std::wstring style = readText(drawing, tag.value);
        if (edits.empty()) own = style;
        if (platform::compareNoCase(style, own) == 0) addEdit(edits, tag, name);
    }
    if (!edits.empty()) drawing.editTags(record, edits);
    return !edits.empty();
}

}  // namespace

struct EntityWalk::Place {
    Place(DatabaseState& of, dxf::RecordId from, dxf::RecordId to)
        : state(of),
          drawing(of.drawing()),
          record(from),
          end(to),
          passed(drawing.beginRelease(from)),
          sweep(drawing.beginSweep()) {}

    DatabaseState& state;
    const dxf::Drawing& drawing;
    dxf::RecordId record;
    dxf::RecordId end;  // the first one that is another walk's
    dxf::SourceRelease passed;
    bool hasBegun = false;
    dxf::TagSweep sweep;                         // of a text drawing
    std::optional<dxf::StoredTags> stored = {};  // of a binary one
    dxf::RawTag tag = {};
    const TypeNames* names = nullptr;
    bool isCommon = true;  // before the second subclass
    bool hasSeenLayer = false;
    bool hasSeenStyle = false;
    bool isEditorsData = false;  // extended data
    bool isOverride = false;
    bool isTextStyle = false;                 // what is overridden
    std::int64_t content = 0;                 // of a multileader
    std::vector<TypeNames> namesByType = {};  // by the drawing's number of the type
    TypeNames namesOfUncounted = {};
    std::map<std::uint64_t, std::wstring> textStyles = {};  // by handle

    // The tags of the record.
    void beginTags() {
        if (drawing.isBinary())
            stored.emplace(drawing.storedTags(record));
        else
            sweep.begin(drawing.bytes(record));
    }
    bool nextTag() {
        if (stored) {
            if (!stored->next()) return false;
            tag.code = stored->code();
            return true;
        }
        while (sweep.next(tag))
            if (tag.code != codes::kComment) return true;
        return false;
    }
    std::string_view value() { return stored ? stored->value() : dxf::textOf(tag); }

    const TypeNames& namesOf(std::uint16_t type, std::string_view typeName) {
        if (type == dxf::kTypeUncounted) return namesOfUncounted = host::namesOf(typeName);
        if (type >= namesByType.size()) namesByType.resize(std::size_t{type} + 1);
        TypeNames& known = namesByType[type];
        if (!known.isKnown) known = host::namesOf(typeName);
        return known;
    }

    // Whether the tag names the style of a text that the leader holds.
    bool isStyleOfLeader(int code) {
        if (!names->isLeader) return false;
        if (code == codes::mleader::kContent) content = EntityWalk::integer(value(), 0);
        return code == codes::mleader::kStyle && content == codes::mleader::kIsText;
    }

    // In extended data: to the handle of a text style that a dimension has instead of its style's.
    bool findOverride() {
        if (names->style != NamedRecord::DimStyle) return false;
        do {
            const bool isValue = std::exchange(isTextStyle, false);
            if (tag.code == codes::kXdataApplication) {
                isEditorsData = dxf::trimmed(value()) == kEditorsData;
                isOverride = false;
            } else if (tag.code == codes::kXdataText) {
                isOverride = isEditorsData && dxf::trimmed(value()) == codes::dimension::kOverrides;
            } else if (tag.code == codes::kXdataShort) {
                isTextStyle = isOverride && !isValue && EntityWalk::integer(value(), 0) == codes::dimension::kTextStyle;
            } else if (tag.code == codes::kXdataHandle && isValue) {
                return true;
            }
        } while (nextTag());
        return false;
    }
};

// What several walks read together is looked up before the first step.
EntityWalk::EntityWalk(AcDbDatabase& database, WalkedPart part) {
    DatabaseState* state = DatabaseState::of(&database);
    state->objects().writeAll();
    const dxf::Drawing& drawing = state->drawing();
    dxf::RecordId from = drawing.first();
    dxf::RecordId to = dxf::kNoRecord;
    if (part != WalkedPart::All) {
        auto middle = static_cast<dxf::RecordId>(drawing.recordCount() / 2);
        if (drawing.isErased(middle)) middle = drawing.next(middle);
        (part == WalkedPart::First ? to : from) = middle;
        state->contents().layers().findAll();
    }
    place_ = std::make_unique<Place>(*state, from, to);
    for (const dxf::RecordId style : state->tables().records(TableKind::TextStyle))
        if (const std::uint64_t handle = drawing.record(style).handle; handle != 0)
            place_->textStyles.emplace(handle, state->tables().nameOf(style));
}

bool EntityWalk::isWorthSharing(const AcDbDatabase& database) {
    return DatabaseState::of(&database)->drawing().recordCount() >= kWorthSharing && platform::processorCount() > 1;
}

EntityWalk::~EntityWalk() = default;

bool EntityWalk::next(WalkedEntity& entity) {
    const dxf::Drawing& drawing = place_->drawing;
    dxf::RecordId& record = place_->record;
    if (record == place_->end) return false;
    if (place_->hasBegun) {
        drawing.release(place_->passed, record);
        record = drawing.next(record);
    }
    place_->hasBegun = true;
    while (record != place_->end && drawing.record(record).kind != dxf::RecordKind::Entity)
        record = drawing.next(record);
    if (record == place_->end) return false;
    const dxf::Record& entry = drawing.record(record);
    const bool isPart = (entry.flags & dxf::kSubEntity) != 0;
    const dxf::Record& whole = isPart && entry.owner != dxf::kNoRecord ? drawing.record(entry.owner) : entry;
    const bool isInBlock = whole.owner != dxf::kNoRecord && drawing.record(whole.owner).kind == dxf::RecordKind::Block;
    entity.id = AcDbObjectId(place_->state.number, record);
    entity.layer = place_->state.idOf(place_->state.contents().layers().of(record));
    entity.typeName = drawing.typeNameOf(record);
    entity.isPaper = !isInBlock && (whole.flags & dxf::kPaperSpace) != 0;
    entity.isModel = !isInBlock && !entity.isPaper;
    entity.isPart = isPart;
    place_->names = &place_->namesOf(entry.type, entity.typeName);
    entity.style = place_->names->style;
    place_->beginTags();
    place_->isCommon = true;
    place_->hasSeenLayer = place_->hasSeenStyle = false;
    place_->isEditorsData = place_->isOverride = place_->isTextStyle = false;
    place_->content = 0;
    return true;
}

bool EntityWalk::nextTag(EntityTag& tag) {
    Place& place = *place_;
    const auto tell = [&](NamedRecord names) {
        tag.names = names;
        tag.code = place.tag.code;
        tag.value = place.value();
        return true;
    };
    while (place.nextTag()) {
        const int code = place.tag.code;
        // Extended data stands at the end.
        if (code >= codes::kFirstXdata) {
            tag.isHandle = tag.isFurther = true;
            return place.findOverride() && tell(NamedRecord::TextStyle);
        }
        if (code == codes::kSubclass) {
            // Some programs write what entities share after the second mark: where the layer stands, the rest does.
            // Others write the layer before the first one.
            place.isCommon = !place.hasSeenLayer || dxf::trimmed(place.value()) == kCommonMark;
            if (!place.isCommon && !place.names->hasStyles()) return false;
            continue;
        }
        tag.isHandle = place.isStyleOfLeader(code);
        tag.isFurther = false;
        if (tag.isHandle) return tell(NamedRecord::TextStyle);
        if (code == codes::kLayer) place.hasSeenLayer = true;
        const bool mayName = code >= 0 && code < static_cast<int>(kFirstCoordinate);
        const NamedRecord names = mayName ? place.names->byCode[static_cast<std::size_t>(code)] : NamedRecord::None;
        if (names == NamedRecord::None && !(place.isCommon && isLook(code))) continue;
        if (names == NamedRecord::TextStyle)
            tag.isFurther = std::exchange(place.hasSeenStyle, true) || place.names->isTable;
        return tell(names);
    }
    return false;
}

std::wstring EntityWalk::text(std::string_view value) const {
    return readText(place_->drawing, value);
}

std::wstring EntityWalk::textStyle(std::string_view handle) const {
    const std::uint64_t number = dxf::toHandle(handle);
    if (number == 0) return {};
    const auto style = place_->textStyles.find(number);
    return style != place_->textStyles.end() ? style->second : lostHandle(number);
}

std::int64_t EntityWalk::integer(std::string_view value, std::int64_t fallback) {
    return dxf::toInteger(value, fallback);
}

bool setTextStyle(AcDbEntity& entity, AcDbObjectId style) {
    DatabaseState* state = DatabaseState::of(entity.database());
    if (!state || style.database() != entity.database() || !DatabaseState::isRecordOf(style, TableKind::TextStyle))
        return false;
    dxf::Drawing& drawing = state->drawing();
    const dxf::RecordId record = state->ids().recordOf(entity.objectId().recordNumber());
    if (isLeader(drawing.typeNameOf(record))) {
        const std::uint64_t handle = state->ids().handleOf(style.recordNumber());
        return handle != 0 && setLeaderStyle(drawing, record, handle);
    }
    const NamingTag* naming = namingTag(drawing.typeNameOf(record), codes::kTextStyle);
    if (!naming || naming->table != TableKind::TextStyle) return false;
    const std::string name = writeText(drawing, state->tables().nameOf(style.recordNumber()));
    if (renameStyles(drawing, record, naming->code, name)) return true;
    dxf::Tag tag;
    // It stands among the tags of the text itself, as the text and its height do.
    if (!drawing.findTag(record, codes::kText, tag) && !drawing.findTag(record, kHeight, tag)) return false;
    drawing.insertTags(record, tag.end, {{naming->code, name}});
    return true;
}

std::wstring lostTextStyle(AcDbObjectId dimStyle) {
    DatabaseState* state = DatabaseState::of(dimStyle.database());
    if (!state || !DatabaseState::isRecordOf(dimStyle, TableKind::DimStyle)) return {};
    state->objects().writeAll();
    const dxf::Drawing& drawing = state->drawing();
    dxf::Tag tag;
    if (!drawing.findTag(state->ids().recordOf(dimStyle.recordNumber()), codes::kHardPointer, tag)) return {};
    const std::uint64_t handle = dxf::toHandle(tag.value);
    if (handle == 0) return {};
    const AcDbObjectId named = state->idOf(drawing.findHandle(handle));
    return DatabaseState::isRecordOf(named, TableKind::TextStyle) ? std::wstring() : lostHandle(handle);
}

}  // namespace qrs::host
