// What reports call records: "LAYER 1F \"PIPE\"", "LINE 2A7", "LINE number 12 of SECTION \"ENTITIES\"".
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host {

// The text of the first of a record's own tags with a code, without blanks around it; empty when there is none. Several
// threads may ask.
std::wstring ownText(const dxf::Drawing& drawing, dxf::RecordId id, int code);
// Bytes after the end of the file that are no record.
bool isLoose(const dxf::Drawing& drawing, dxf::RecordId id);

// The places of records among their like: from 1, of those of one type under one owner. Counted once somebody asks;
// several threads may.
class Places {
  public:
    explicit Places(const dxf::Drawing& drawing) : drawing_(drawing) {}
    std::size_t of(dxf::RecordId id) const;

  private:
    void count() const;

    const dxf::Drawing& drawing_;
    mutable std::once_flag isCounted_;
    mutable std::vector<std::uint32_t> places_;  // by record
};

// Each thread has its own.
class Labels {
  public:
    Labels(const dxf::Drawing& drawing, const Places& places) : drawing_(drawing), places_(places) {}
    void append(dxf::RecordId id, std::wstring& out);

  private:
    // Labels of records that only their place tells apart are alike but for the place: what stands around it.
    struct AroundPlace {
        dxf::RecordId owner = dxf::kNoRecord;
        std::wstring before;
        std::wstring after;
    };
    void appendByPlace(dxf::RecordId id, std::wstring& out);

    const dxf::Drawing& drawing_;
    const Places& places_;
    std::unordered_map<std::uint16_t, AroundPlace> around_;  // by type; of the last owner asked for
};

}  // namespace qrs::host
