// Which entities of a drawing a selection takes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "adsdef.h"
#include "dbmain.h"
#include "host/dxf/drawing.h"

namespace qrs::host::ed {

// The conditions of a filter chain; all must hold.
class EntityFilter {
  public:
    // wildcards: in layer names, too (types and linetypes always take them). False from isUsable for a chain with
    // conditions that are not known.
    EntityFilter(AcDbDatabase& database, const resbuf* chain, bool wildcards);

    bool isUsable() const { return usable_; }
    bool passesAll() const { return passesAll_; }
    bool passes(dxf::RecordId id) const;

  private:
    struct Condition {
        short code;
        std::wstring text;
        int number;
    };
    bool holds(const Condition& condition, dxf::RecordId id) const;
    bool layerHolds(const Condition& condition, dxf::NameId layer) const;
    bool hasXdataOf(dxf::RecordId id, const std::wstring& applications) const;
    bool textMatches(dxf::RecordId id, int code, const wchar_t* fallback, const std::wstring& pattern) const;
    void addCondition(const resbuf& link, bool inXdata);

    dxf::Drawing& drawing_;
    std::vector<Condition> conditions_;
    bool wildcards_;
    bool usable_ = true;
    bool passesAll_ = true;
    // Answers by layer name and by type: a drawing has few of them and many entities.
    mutable std::unordered_map<std::uint64_t, bool> known_;
};

// True for an entity that lies in a layout, not in a block definition.
bool liesInLayout(const dxf::Drawing& drawing, dxf::RecordId id);
// True when the entity lies in model space, or in the paper space that is current.
bool liesInSpace(const dxf::Drawing& drawing, bool modelSpace, dxf::RecordId id);

// The main entities of model space, or of the paper space that is current, in drawing order.
template <typename Take>
void forEachEntityOfSpace(const dxf::Drawing& drawing, bool modelSpace, Take&& take) {
    const dxf::RecordId head = drawing.findSection("ENTITIES");
    if (head == dxf::kNoRecord) return;
    for (dxf::RecordId id = drawing.next(head); id != dxf::kNoRecord; id = drawing.next(id)) {
        const dxf::Record& record = drawing.record(id);
        if (record.kind == dxf::RecordKind::EndSection) break;
        const bool onPaper = (record.flags & dxf::kPaperSpace) != 0;
        if (record.kind == dxf::RecordKind::Entity && !(record.flags & dxf::kSubEntity) && onPaper != modelSpace)
            take(id);
    }
}

// The main entities of the layouts (no vertices, no attributes): those of the current layout and of model space in
// drawing order, then those of the other layouts.
template <typename Take>
void forEachEntity(const dxf::Drawing& drawing, Take&& take) {
    for (const char* section : {"ENTITIES", "BLOCKS"}) {
        const dxf::RecordId head = drawing.findSection(section);
        if (head == dxf::kNoRecord) continue;
        for (dxf::RecordId id = drawing.next(head); id != dxf::kNoRecord; id = drawing.next(id)) {
            const dxf::Record& record = drawing.record(id);
            if (record.kind == dxf::RecordKind::EndSection) break;
            if (record.kind == dxf::RecordKind::Entity && !(record.flags & dxf::kSubEntity) &&
                liesInLayout(drawing, id))
                take(id);
        }
    }
}

}  // namespace qrs::host::ed
