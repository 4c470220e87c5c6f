// AtomicFile: gathers small pieces and hands them to the system's temporary file; the names that change in the end.
#include <string>

#include "host/platform/files.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/partialfile.h"
#include "host/platform/lostfile.h"
#include "host/platform/tree.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

// Small pieces are gathered to this size; a larger piece is written from where it lies.
constexpr std::size_t kGather = std::size_t{256} << 10;

}  // namespace

fs::path PartialFile::backupName(int number) const {
    fs::path name = target;
    name += ".bak";
    if (number > 1) name += std::to_string(number);
    return name;
}

// The states kept so far are moved from the oldest on, so that each finds its new name free. The oldest one, which goes
// when all is done, is set aside until then.
bool PartialFile::planBackups(const fs::path& previous, int backups, const fs::path& aside, std::vector<Move>& moves,
                              Error& error) const {
    const auto isKept = [this](int number) {
        const NameKind kind = kindOfName(backupName(number));
        return kind == NameKind::Link || kind == NameKind::Other;
    };
    int last = 1;
    while (last < backups && isKept(last))
        ++last;
    if (isKept(last)) {
        moves.push_back({backupName(last), aside, backupName(last)});
    } else if (kindOfName(backupName(last)) == NameKind::Folder) {
        return fail(error, backupName(last), translated(kIsFolder));
    }
    for (int number = last; number > 1; --number)
        moves.push_back({backupName(number - 1), backupName(number), backupName(number - 1)});
    moves.push_back({previous, backupName(1), previous == target ? shown : backupName(1)});
    return true;
}

// From the last on. Where one cannot be taken back, those before it stay as well: nothing is overwritten.
void PartialFile::takeBack(const std::vector<Move>& moves, std::size_t count, Error& error) const {
    while (count > 0) {
        const Move& done = moves[--count];
        const std::error_code failed = move(done.to, done.from);
        if (!failed) continue;
        error.message += translated("; %1 did not get its name back: %2", shownPath(done.to), textOf(failed));
        return;
    }
}

bool PartialFile::takePlace(const fs::path& previous, int backups, Error& error) {
    const fs::path aside = besideTarget();
    std::vector<Move> moves;
    if (!previous.empty() && !planBackups(previous, backups, aside, moves, error)) return false;
    moves.push_back({partial, target, shown});
    const bool done = settleTemporary(partial, [&] {
        for (std::size_t i = 0; i < moves.size(); ++i) {
            const Move& next = moves[i];
            const std::error_code failed = next.to == aside ? setAside(next.from, next.to) : move(next.from, next.to);
            if (!failed) continue;
            fail(error, next.named, failed);
            takeBack(moves, i, error);
            return false;
        }
        if (moves.front().to == aside) drop(aside);
        return true;
    });
    if (done) partial.clear();
    return done;
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

bool AtomicFile::begin(const fs::path& target, Error& error) {
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
        error.message = translated("no file was begun");
        return false;
    }
    state_->putGathered();
    const fs::path lost = lostFile();
    const bool done =
        lost.empty() ? state_->file->finish(backups, error)
                     : fail(error, lost, translated("was cut short by another program while it was read; not saved"));
    state_.reset();
    return done;
}

}  // namespace qrs::platform
