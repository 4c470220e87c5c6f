// The temporary file of AtomicFile on POSIX.
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>

#include "host/platform/files.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/inprogress.h"
#include "host/platform/inside/partialfile.h"
#include "host/platform/posix/handle.h"
#include "host/platform/posix/signalhold.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

// So much is written by one call. Between the calls the disk is set to work, so that the flush at the end finds little
// left to do: 150 MB in these steps take half the time of one call and one flush.
constexpr std::size_t kStep = std::size_t{8} << 20;
constexpr std::size_t kWorthAStart = std::size_t{256} << 10;

// The file that the target names in the end, links followed; a link may point to a file that is still to be made.
bool followLinks(const fs::path& target, fs::path& resolved, Error& error) {
    resolved = target;
    for (int links = 0; links < 40; ++links) {
        std::error_code none;
        if (!fs::is_symlink(fs::symlink_status(resolved, none))) return true;
        const fs::path next = fs::read_symlink(resolved, none);
        if (none) return fail(error, target, none);
        resolved = next.is_absolute() ? next : resolved.parent_path() / next;
    }
    return fail(error, target, std::make_error_code(std::errc::too_many_symbolic_link_levels));
}

void syncFolder(const fs::path& folder) {
    // The file is in place by now; a file system that cannot flush a folder leaves nothing to undo.
    const Descriptor handle(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle) fsync(handle.number());
}

}  // namespace

class PosixPartialFile final : public PartialFile {
  public:
    bool begin(const fs::path& named, Error& error) override;
    void put(std::string_view bytes) override;
    bool finish(int backups, Error& error) override;
    void discard() override;

  private:
    Descriptor file;
    struct stat before {};  // of the target, when it existed
    bool existed = false;
    std::size_t flushed = 0;  // bytes handed to the system

    bool checkTarget(Error& error);
    bool create(Error& error);
    bool keepAttributes();
    bool backUp(Error& error);
    bool copyTo(const fs::path& copy, Error& error) const;
};

bool PosixPartialFile::checkTarget(Error& error) {
    existed = stat(target.c_str(), &before) == 0;
    if (!existed) return errno == ENOENT || fail(error, shown, lastError());
    if (S_ISDIR(before.st_mode)) return fail(error, shown, kIsFolder);
    if (!S_ISREG(before.st_mode)) return fail(error, shown, kNoOrdinaryFile);
    // The bits count even for a user who may write everything: they say that the file is meant to stay as it is.
    if ((before.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return fail(error, shown, "is read-only");
    if (access(target.c_str(), W_OK) != 0) return fail(error, shown, lastError());
    return true;
}

bool PosixPartialFile::create(Error& error) {
    for (int attempt = 0; attempt < 16; ++attempt) {
        const fs::path path = besideTarget();
        const bool made = makeTemporary(path, [&] {
            // A new file gets what the user's mask leaves; one that replaces another stays closed to others until it
            // has the other's permissions.
            const mode_t mode = existed ? S_IRUSR | S_IWUSR : S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
            file = Descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
            return static_cast<bool>(file);
        });
        if (made) {
            partial = path;
            return true;
        }
        if (errno != EEXIST) break;
    }
    return fail(error, shown, lastError());
}

void PosixPartialFile::put(std::string_view bytes) {
    const SignalHold hold;
    while (!bytes.empty() && !failure) {
        const ssize_t count = ::write(file.number(), bytes.data(), std::min(bytes.size(), kStep));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            failure = count == 0 ? std::make_error_code(std::errc::no_space_on_device) : lastError();
            return;
        }
        const auto written = static_cast<std::size_t>(count);
        bytes.remove_prefix(written);
#if defined(SYNC_FILE_RANGE_WRITE)
        // Only a head start: what it does not do, the flush does.
        if (written >= kWorthAStart) {
            sync_file_range(file.number(), static_cast<off_t>(flushed), count, SYNC_FILE_RANGE_WRITE);
        }
#endif
        flushed += written;
    }
}

bool PosixPartialFile::keepAttributes() {
    if (!existed) return true;
    // Giving a file away is allowed to few; where it is not, it belongs to who wrote it, as any newly made one does.
    constexpr uid_t kSameUser = static_cast<uid_t>(-1);
    constexpr gid_t kSameGroup = static_cast<gid_t>(-1);
    mode_t mode = before.st_mode & 07777;
    // Running with the rights of another than before would be more than was granted.
    if (fchown(file.number(), before.st_uid, kSameGroup) != 0) mode &= ~static_cast<mode_t>(S_ISUID);
    if (fchown(file.number(), kSameUser, before.st_gid) != 0) mode &= ~static_cast<mode_t>(S_ISGID);
    return fchmod(file.number(), mode) == 0;
}

// Keeps the target's content under another name without ever taking its own name away.
bool PosixPartialFile::backUp(Error& error) {
    const fs::path backup = backupName(1);
    const fs::path second = besideTarget();
    const bool linked = makeTemporary(second, [&] { return link(target.c_str(), second.c_str()) == 0; });
    if (!linked && errno == ENOENT) return true;  // removed meanwhile: nothing to keep
    if (!linked) return copyTo(backup, error);    // a file system without second names
    bool renamed = rename(second.c_str(), backup.c_str()) == 0;
    if (!renamed) fail(error, backup, lastError());
    unlink(second.c_str());  // still there when the rename failed, or when both were names of one file already
    forgetTemporary(second);
    return renamed;
}

bool PosixPartialFile::copyTo(const fs::path& copy, Error& error) const {
    const std::unique_ptr<MappedFile> old = MappedFile::open(target, error);
    return old && writeFileAtomically(copy, old->bytes(), 0, error);
}

bool PosixPartialFile::finish(int backups, Error& error) {
    if (!failure && !keepAttributes()) failure = lastError();
    if (!failure && fsync(file.number()) != 0) failure = lastError();
    if (!file.close() && !failure) failure = lastError();
    if (failure) return fail(error, shown, failure);
    if (backups > 0 && existed && !(makeRoomForBackup(backups, error) && backUp(error))) return false;
    if (rename(partial.c_str(), target.c_str()) != 0) return fail(error, shown, lastError());
    forgetTemporary(partial);
    partial.clear();
    syncFolder(target.parent_path());
    return true;
}

void PosixPartialFile::discard() {
    if (partial.empty()) return;
    file.close();
    unlink(partial.c_str());
    forgetTemporary(partial);
    partial.clear();
}

bool PosixPartialFile::begin(const fs::path& named, Error& error) {
    shown = named;
    return followLinks(shown, target, error) && checkTarget(error) && create(error);
}

std::unique_ptr<PartialFile> PartialFile::make() {
    return std::make_unique<PosixPartialFile>();
}

}  // namespace qrs::platform
