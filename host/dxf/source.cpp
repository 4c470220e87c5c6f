// Giving a mapped file's memory back.
#include "host/dxf/source.h"

#include "host/dxf/sizes.h"

namespace qrs::dxf {

void SourceRelease::done(std::string_view piece) {
    const std::string_view bytes = source_.bytes();
    if (source_.file() == nullptr || piece.data() < bytes.data() || piece.data() >= bytes.data() + bytes.size()) return;
    const auto end = static_cast<std::size_t>(piece.data() + piece.size() - bytes.data());
    if (end - released_ < kReleaseStep) return;
    source_.file()->release(released_, end);
    released_ = end;
}

}  // namespace qrs::dxf
