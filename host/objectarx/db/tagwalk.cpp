// The tags of an open object, one after the other.
#include <algorithm>
#include <cmath>
#include <limits>

#include "host/objectarx/db/state.h"
#include "host/objectarx/db/tagwalk.h"

namespace qrs::host {

namespace {

// What every code page spells the same, and no escape begins with.
bool isPlain(char c) {
    return c >= ' ' && c <= '}' && c != '\\' && c != '^';
}

}  // namespace

struct ObjectTagWalk::Place {
    const dxf::Drawing& drawing;
    dxf::TagCursor cursor;
    std::uint32_t end = 0;  // of the last tag
};

ObjectTagWalk::ObjectTagWalk(const AcDbObject& object) {
    const DatabaseState* state = DatabaseState::of(object.database());
    const dxf::RecordId record =
        state ? state->ids().recordOf(object.objectId().recordNumber()) : static_cast<dxf::RecordId>(dxf::kNoRecord);
    if (record != dxf::kNoRecord) place_.reset(new Place{state->drawing(), state->drawing().tags(record)});
}

ObjectTagWalk::~ObjectTagWalk() = default;

bool ObjectTagWalk::next(ObjectTag& tag) {
    dxf::Tag read;
    if (!place_ || !place_->cursor.next(read)) return false;
    tag.code = read.code;
    tag.value = read.value;
    tag.followsLast = read.begin == place_->end;
    place_->end = read.end;
    return true;
}

void ObjectTagWalk::text(std::string_view value, std::wstring& out) const {
    if (std::all_of(value.begin(), value.end(), isPlain))
        out.assign(value.begin(), value.end());
    else if (place_)
        out = readText(place_->drawing, value);
}

bool ObjectTagWalk::real(std::string_view value, double& number) {
    const double read = dxf::toReal(value, std::numeric_limits<double>::quiet_NaN());
    if (!std::isfinite(read)) return false;
    number = read;
    return true;
}

bool ObjectTagWalk::integer(std::string_view value, std::int64_t& number) {
    constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::max();
    const std::int64_t read = dxf::toInteger(value, kNone);
    if (read == kNone) return false;
    number = read;
    return true;
}

}  // namespace qrs::host
