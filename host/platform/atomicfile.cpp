// AtomicFile: gathers small pieces and hands them to the system's temporary file.
#include <string>

#include "host/platform/files.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/partialfile.h"

namespace qrs::platform {

namespace {

// Small pieces are gathered to this size; a larger piece is written from where it lies.
constexpr std::size_t kGather = std::size_t{256} << 10;

}  // namespace

std::filesystem::path PartialFile::backupName(int number) const {
    std::filesystem::path name = target;
    name += ".bak";
    if (number > 1) name += std::to_string(number);
    return name;
}

bool PartialFile::makeRoomForBackup(int backups, Error& error) const {
    std::error_code failed;
    int last = 1;
    while (last < backups && std::filesystem::is_regular_file(backupName(last), failed))
        ++last;
    // From the oldest on: each takes the place of one that has moved already.
    for (; last > 1; --last) {
        std::filesystem::rename(backupName(last - 1), backupName(last), failed);
        if (failed) return fail(error, backupName(last - 1), failed);
    }
    return true;
}

struct AtomicFile::State {
    std::unique_ptr<PartialFile> file = PartialFile::make();
    std::string gathered;

    ~State() { file->discard(); }
    void putGathered() {
        file->put(gathered);
        gathered.clear();
    }
};

AtomicFile::AtomicFile() = default;
AtomicFile::~AtomicFile() = default;

bool AtomicFile::begin(const std::filesystem::path& target, Error& error) {
    state_ = std::make_unique<State>();
    if (state_->file->begin(target, error)) return true;
    state_.reset();
    return false;
}

void AtomicFile::write(std::string_view bytes) {
    if (!state_ || state_->file->hasFailed()) return;
    if (state_->gathered.size() + bytes.size() < kGather) {
        state_->gathered.append(bytes);
        return;
    }
    state_->putGathered();
    if (bytes.size() < kGather) {
        state_->gathered.assign(bytes);
    } else {
        state_->file->put(bytes);
    }
}

bool AtomicFile::commit(int backups, Error& error) {
    if (!state_) {
        error.message = "no file was begun";
        return false;
    }
    state_->putGathered();
    const bool done = state_->file->finish(backups, error);
    state_.reset();
    return done;
}

}  // namespace qrs::platform
