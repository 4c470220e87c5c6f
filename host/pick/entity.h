// The tags of one entity, read once for all that its shape needs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/drawing.h"
#include "host/pick/geometry.h"
#include "host/pick/outline.h"

namespace qrs::host::pick {

class Entity final : public EntityTags {
  public:
    struct Field {
        int code;
        std::string_view value;
    };

    // The drawing must not change while the entity is looked at. Reading another one reuses the memory.
    void read(const dxf::Drawing& drawing, dxf::RecordId id);

    const dxf::Drawing& drawing() const { return *drawing_; }
    dxf::RecordId id() const { return id_; }
    const std::vector<Field>& fields() const { return fields_; }

    bool has(int code) const { return find(code) != nullptr; }
    double real(int code, double fallback) const override;
    long integer(int code, long fallback) const override;
    // Nothing unless both coordinates of the plane are there.
    std::optional<Vec> point(int code) const override;
    std::wstring text(int code) const override;
    double paperScale() const override;
    // The extrusion direction: upwards when it is missing.
    Vec normal() const;
    // The main entity's own parts (VERTEX, ATTRIB), in order.
    std::vector<dxf::RecordId> parts() const;

  private:
    const Field* find(int code) const;

    const dxf::Drawing* drawing_ = nullptr;
    dxf::RecordId id_ = dxf::kNoRecord;
    std::vector<Field> fields_;
    mutable const dxf::Drawing* scaled_ = nullptr;  // whose scale is known
    mutable double scale_ = 1.0;
};

// A finite number, or nothing.
std::optional<double> finiteOf(std::string_view value);

}  // namespace qrs::host::pick
