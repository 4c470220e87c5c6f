// Saving a drawing.
#include <algorithm>

#include "host/dxf/drawing.h"
#include "host/dxf/sizes.h"
#include "host/platform/fileturn.h"

namespace qrs::dxf {

template <typename Sink>
void Drawing::emit(Sink&& sink) const {
    const std::string_view file = source_->bytes();
    std::uint64_t begin = 0;  // of the stretch of the file not yet handed out
    std::uint64_t end = 0;
    const auto flush = [&] {
        if (end != begin) sink(file.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)));
        begin = end;
    };
    for (RecordId id = first(); id != kNoRecord; id = next(id)) {
        const Record& one = record(id);
        if ((one.flags & kEdited) != 0) {
            flush();
            sink(contents_.of(id));
        } else {
            if (one.offset != end) {
                flush();
                begin = one.offset;
            }
            end = one.offset + one.stored;
        }
    }
    flush();
}

bool Drawing::save(const std::filesystem::path& native, int backups, platform::Error& error) {
    if (!unwritable_.empty()) {
        error.message = native.u8string() + ": " + unwritable_;
        return false;
    }
    platform::AtomicFile file;
    if (!guard_.allows(native, error) || !source_->isUnchanged(error) || !file.begin(native, error)) return false;
    SourceRelease release(*source_);
    emit([&](std::string_view piece) {
        // Steps of a size, each given back when it is written: memory does not grow to that of the file.
        for (; !piece.empty(); piece.remove_prefix(std::min(piece.size(), kReleaseStep))) {
            const std::string_view step = piece.substr(0, kReleaseStep);
            file.write(step);
            release.done(step);
        }
    });
    // Looked at again after the last byte, with nobody else between that and the new file's taking its place: somebody
    // may have saved, or changed the mapped file, while it was copied.
    const platform::FileTurn turn(native);
    if (!guard_.allows(native, error) || !source_->isUnchanged(error) || !file.commit(backups, error)) return false;
    contents_.noteSaved();
    guard_.noteSaved(native);
    return true;
}

std::string Drawing::toBytes() const {
    std::string all;
    all.reserve(source_->bytes().size());
    emit([&](std::string_view piece) { all += piece; });
    return all;
}

}  // namespace qrs::dxf
