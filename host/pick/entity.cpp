// Reading the tags of an entity.
#include "host/pick/entity.h"

#include <limits>

#include "host/drawing/headervariables.h"
#include "host/drawing/objecttags.h"
#include "host/dxf/recordwalk.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;

std::optional<double> finiteOf(std::string_view value) {
    const double number = dxf::toReal(value, std::numeric_limits<double>::quiet_NaN());
    return std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

void Entity::read(const dxf::Drawing& drawing, dxf::RecordId id) {
    drawing_ = &drawing;
    id_ = id;
    fields_.clear();
    dxf::RecordWalk walk(drawing.tags(id));
    for (dxf::Tag tag; walk.next(tag) && walk.part() != dxf::Part::Xdata;)
        if (walk.isOwn()) fields_.push_back({tag.code, tag.value});
}

const Entity::Field* Entity::find(int code) const {
    for (const Field& field : fields_)
        if (field.code == code) return &field;
    return nullptr;
}

double Entity::real(int code, double fallback) const {
    const Field* field = find(code);
    return field ? finiteOf(field->value).value_or(fallback) : fallback;
}

long Entity::integer(int code, long fallback) const {
    const Field* field = find(code);
    if (!field) return fallback;
    const std::int64_t number = dxf::toInteger(field->value, fallback);
    return number < std::numeric_limits<std::int32_t>::min() || number > std::numeric_limits<std::int32_t>::max()
               ? fallback
               : static_cast<long>(number);
}

std::optional<Vec> Entity::point(int code) const {
    // A point's coordinates stand together; those after the first are looked for there.
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (fields_[i].code != code) continue;
        const std::optional<double> x = finiteOf(fields_[i].value);
        std::optional<double> y;
        double z = 0.0;
        for (std::size_t k = i + 1; k < fields_.size() && k < i + 3; ++k) {
            const std::optional<double> number = finiteOf(fields_[k].value);
            if (fields_[k].code == codes::yOf(code)) y = number;
            if (fields_[k].code == codes::zOf(code) && number) z = *number;
        }
        if (!x || !y) return std::nullopt;
        return Vec{*x, *y, z};
    }
    return std::nullopt;
}

std::wstring Entity::text(int code) const {
    const Field* field = find(code);
    return field ? readText(*drawing_, field->value) : std::wstring();
}

double Entity::paperScale() const {
    if (scaled_ == drawing_) return scale_;
    scaled_ = drawing_;
    const double scale = headerReal(*drawing_, *headerFormat(L"DIMSCALE"));
    scale_ = scale > 0.0 ? scale : 1.0;
    return scale_;
}

Vec Entity::normal() const {
    return point(codes::kNormal).value_or(Vec{0, 0, 1});
}

std::vector<dxf::RecordId> Entity::parts() const {
    std::vector<dxf::RecordId> parts;
    for (dxf::RecordId id = drawing_->next(id_); id != dxf::kNoRecord; id = drawing_->next(id)) {
        const dxf::Record& record = drawing_->record(id);
        if (!(record.flags & dxf::kSubEntity) || record.owner != id_) break;
        parts.push_back(id);
    }
    return parts;
}

}  // namespace qrs::host::pick
