// What a drawing knows of the files it was opened from and saved to.
#include "host/dxf/saveguard.h"

#include "host/platform/language.h"

namespace qrs::dxf {

using platform::translated;

void SaveGuard::noteOpened(const platform::FileMark& mark, const platform::MappedFile& file) {
    marks_.push_back(mark);
    opened_ = &file;
}

bool SaveGuard::isAsKnown(std::size_t mark, const std::filesystem::path& native, const platform::FileMark& now) const {
    // Of the mapped file its identity tells; whether it was written into is looked at apart.
    if (mark == 0 && opened_ != nullptr) return opened_->isSameFile(native);
    return platform::isSameState(marks_[mark], now);
}

bool SaveGuard::allows(const std::filesystem::path& native, platform::Error& error) const {
    const platform::FileMark target = platform::fileMark(native);
    for (std::size_t i = 0; i < marks_.size() && target.exists; ++i) {
        if (marks_[i].place != target.place || isAsKnown(i, native, target)) continue;
        error.message = native.u8string() + ": " +
                        translated("was saved by somebody else since this drawing was opened; not saved");
        return false;
    }
    return true;
}

void SaveGuard::noteSaved(const std::filesystem::path& native) {
    const platform::FileMark saved = platform::fileMark(native);
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        if (marks_[i].place != saved.place) continue;
        marks_[i] = saved;
        if (i == 0) opened_ = nullptr;
        return;
    }
    marks_.push_back(saved);
}

}  // namespace qrs::dxf
