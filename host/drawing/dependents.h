// Objects that cannot be without others: those they own, and those that speak of another one alone.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host {

class GoneRecords;

class Dependents {
  public:
    // Goes through all objects of the drawing once.
    explicit Dependents(const dxf::Drawing& drawing);

    struct Dependent {
        std::uint64_t on;
        dxf::RecordId record;
        bool isList;  // goes with the last of several
    };
    // Those of records that are gone already.
    std::vector<Dependent> of(const GoneRecords& gone) const;
    // Those of a record that goes now.
    std::vector<Dependent> of(std::uint64_t handle) const;
    // True when the record has lost all that it depends on. To be asked once for each loss.
    bool loses(const Dependent& dependent);

  private:
    void add(const dxf::Drawing& drawing, dxf::RecordId record);

    std::vector<Dependent> all_;                           // in order of on
    std::unordered_map<dxf::RecordId, std::size_t> left_;  // entries of lists
};

}  // namespace qrs::host
