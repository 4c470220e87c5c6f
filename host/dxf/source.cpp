// Giving a mapped file's memory back.
#include "host/dxf/source.h"

#include "host/dxf/sizes.h"

namespace qrs::dxf {

bool SourceRelease::liesInFile(std::string_view piece) const {
    const std::string_view bytes = source_.bytes();
    return source_.file() != nullptr && piece.data() >= bytes.data() && piece.data() < bytes.data() + bytes.size();
}

void SourceRelease::beginAt(std::string_view piece) {
    if (liesInFile(piece)) released_ = static_cast<std::size_t>(piece.data() - source_.bytes().data());
}

void SourceRelease::done(std::string_view piece) {
    if (!liesInFile(piece)) return;
    const auto end = static_cast<std::size_t>(piece.data() + piece.size() - source_.bytes().data());
    if (end - released_ < kReleaseStep) return;
    source_.file()->release(released_, end);
    released_ = end;
}

}  // namespace qrs::dxf
