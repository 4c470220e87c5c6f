// How many objects of a drawing need a record.
#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "dbmain.h"
#include "host/drawing/entityformat.h"
#include "host/dxf/references.h"
#include "host/objectarx/db/entitywalk.h"
#include "host/objectarx/db/state.h"
#include "host/platform/codepage.h"

namespace qrs::host {

namespace {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;
namespace codes = dxf::codes;

bool isEntityKind(RecordKind kind) {
    return kind == RecordKind::Entity || kind == RecordKind::Block || kind == RecordKind::EndBlock;
}

// What is named by a text besides what kinds of entities name that can be made and changed.
constexpr NamingTag kRecordNames[] = {
    {"$CELTYPE", codes::kLinetype, TableKind::Linetype},     {"$DIMTXSTY", codes::kTextStyle, TableKind::TextStyle},
    {"$TEXTSTYLE", codes::kTextStyle, TableKind::TextStyle}, {"ACAD_TABLE", codes::kTextStyle, TableKind::TextStyle},
    {"LAYER", codes::kLinetype, TableKind::Linetype},        {"MLINESTYLE", codes::kLinetype, TableKind::Linetype},
    {"TABLESTYLE", codes::kTextStyle, TableKind::TextStyle}};

class ReferenceCounter {
  public:
    ReferenceCounter(DatabaseState& state, const AcDbObjectIdArray& ids, Adesk::UInt32* counts)
        : state_(state), drawing_(state.drawing()), counts_(counts) {
        for (int i = 0; i < ids.length(); ++i)
            add(ids[i].recordNumber(), static_cast<std::size_t>(i));
    }

    // withNames: what entities name by a text or lie on counts; without, what the header says is current counts
    // instead.
    void count(bool withNames) {
        for (current_ = drawing_.first(); current_ != kNoRecord; current_ = drawing_.next(current_)) {
            const RecordKind kind = drawing_.record(current_).kind;
            if (kind == RecordKind::Entity && !withNames) {
                if (drawing_.mayRefer(current_)) countTags(&ReferenceCounter::recordName);
            } else if (isEntityKind(kind)) {
                if (const RecordId layer = state_.contents().layers().of(current_); layer != kNoRecord)
                    tell(layers_.find(layer), layers_);
                // Of the texts of an entity only names of what is counted matter; of its handles, those of others.
                if (kind != RecordKind::Entity || hasNames_ || drawing_.mayRefer(current_))
                    countTags(&ReferenceCounter::entityName);
            } else if (kind == RecordKind::TableRecord || kind == RecordKind::Object ||
                       (kind == RecordKind::HeaderVariable && !withNames)) {
                countTags(&ReferenceCounter::recordName);
            }
        }
    }

  private:
    using Indices = std::vector<std::size_t>;
    template <typename Key>
    using ByKey = std::unordered_map<Key, Indices>;
    // The table whose record a tag names; null when it names none.
    using NamedTable = const TableKind* (ReferenceCounter::*)(int code);

    void add(std::uint32_t object, std::size_t index) {
        counts_[index] = 0;
        lastBy_.push_back(kNoRecord);
        TableKind kind;
        if (const Block* block = state_.blocks().byId(object)) {
            namesOf(TableKind::Block)[platform::foldCase(block->name)].push_back(index);
        } else if (!qrs::host::isTableId(object) && state_.tables().kindOf(object, kind)) {
            if (kind == TableKind::Layer)
                layers_[object].push_back(index);
            else
                namesOf(kind)[platform::foldCase(state_.tables().nameOf(object))].push_back(index);
        }
        hasNames_ = std::any_of(std::begin(names_), std::end(names_), [](const auto& names) { return !names.empty(); });
        if (const std::uint64_t handle = state_.ids().handleOf(object); handle != 0) handles_[handle].push_back(index);
    }

    ByKey<std::wstring>& namesOf(TableKind kind) { return names_[static_cast<std::size_t>(kind)]; }

    template <typename Key>
    void tell(typename ByKey<Key>::const_iterator found, const ByKey<Key>& all) {
        if (found == all.end()) return;
        for (const std::size_t index : found->second) {
            if (lastBy_[index] == current_) continue;
            lastBy_[index] = current_;
            ++counts_[index];
        }
    }

    const TableKind* entityName(int code) {
        if (code == codes::kLayer || code >= 10) return nullptr;
        const NamingTag* naming = namingTag(type_, code);
        return naming ? &naming->table : recordName(code);
    }

    const TableKind* recordName(int code) {
        for (const NamingTag& naming : kRecordNames)
            if (naming.code == code && type_ == naming.dxfName) return &naming.table;
        return nullptr;
    }

    void countTags(NamedTable namedTable) {
        type_ = drawing_.typeNameOf(current_);
        dxf::ReferencePlace place(type_);
        dxf::TagCursor cursor = drawing_.tags(current_);
        for (dxf::Tag tag; cursor.next(tag);) {
            const dxf::ReferenceRule* rule = place.pass(tag.code, tag.value);
            if (place.place().part() == dxf::Part::Xdata) return;
            if (dxf::isHard(dxf::referenceOf(tag.code))) {
                if (rule && !rule->isDoneWithout && !handles_.empty())
                    tell(handles_.find(dxf::toHandle(tag.value)), handles_);
                continue;
            }
            const TableKind* table = (this->*namedTable)(tag.code);
            if (!table || namesOf(*table).empty()) continue;
            tell(namesOf(*table).find(platform::foldCase(readText(drawing_, tag.value))), namesOf(*table));
        }
    }

    DatabaseState& state_;
    const dxf::Drawing& drawing_;
    Adesk::UInt32* counts_;
    std::vector<RecordId> lastBy_;  // the object that was counted last for each id
    ByKey<RecordId> layers_;
    ByKey<std::uint64_t> handles_;
    ByKey<std::wstring> names_[kTableCount];
    bool hasNames_ = false;
    RecordId current_ = kNoRecord;
    std::string_view type_;
};

Acad::ErrorStatus count(AcDbDatabase& database, const AcDbObjectIdArray& ids, Adesk::UInt32* counts, bool withNames) {
    if (!counts) return Acad::eNullObjectPointer;
    for (const AcDbObjectId& id : ids) {
        if (id.database() != &database) return Acad::eWrongDatabase;
        if (!id.isValid() || id.isErased()) return Acad::eInvalidInput;
    }
    DatabaseState& state = *DatabaseState::of(&database);
    state.objects().writeAll();
    ReferenceCounter(state, ids, counts).count(withNames);
    return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus countOtherReferences(AcDbDatabase& database, const AcDbObjectIdArray& ids, Adesk::UInt32* counts) {
    return count(database, ids, counts, false);
}

}  // namespace qrs::host

Acad::ErrorStatus AcDbDatabase::countHardReferences(const AcDbObjectIdArray& ids, Adesk::UInt32* counts) {
    return qrs::host::count(*this, ids, counts, true);
}
