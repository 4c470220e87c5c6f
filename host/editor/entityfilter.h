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

}  // namespace qrs::host::ed
