// What kind of value follows a group code or an RT type.
#pragma once

namespace qrs::host {

enum class ValueKind { Unknown, None, Text, Real, Point, Short, Long, Name, Binary };

ValueKind valueKind(int type);

}  // namespace qrs::host
