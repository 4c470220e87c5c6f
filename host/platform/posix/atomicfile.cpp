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
#include "host/platform/tree.h"

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
    bool complete(Error& error);
    class SecondName;
    bool addSecondName(fs::path& second, Error& error) const;

    std::error_code move(const fs::path& from, const fs::path& to) const override;
    std::error_code setAside(const fs::path& from, const fs::path& to) const override;
    void drop(const fs::path& aside) const override;
};

bool PosixPartialFile::checkTarget(Error& error) {
    existed = stat(target.c_str(), &before) == 0;
    if (!existed) return errno == ENOENT || fail(error, shown, lastError());
    if (S_ISDIR(before.st_mode)) return fail(error, shown, translated(kIsFolder));
    if (!S_ISREG(before.st_mode)) return fail(error, shown, translated(kNoOrdinaryFile));
    // The bits count even for a user who may write everything: they say that the file is meant to stay as it is.
    if ((before.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return fail(error, shown, translated("is read-only"));
    if (access(target.c_str(), W_OK) != 0) return fail(error, shown, lastError());
    return true;
}

bool PosixPartialFile::create(Error& error) {
    for (int attempt = 0; attempt < 16; ++attempt) {
        fs::path path = besideTarget();
        const bool made = makeTemporary(path, [&] {
            // A new file gets what the user's mask leaves; one that replaces another stays closed to others until it
            // has the other's permissions.
            const mode_t mode = existed ? S_IRUSR | S_IWUSR : S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
            file = Descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
            return static_cast<bool>(file);
        });
        if (made) {
            partial.swap(path);
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

// Of the target's content. It goes in the end; when all was done it is gone already.
class PosixPartialFile::SecondName {
  public:
    explicit SecondName(const PosixPartialFile& file) : file_(file) {}
    ~SecondName() {
        if (name.empty()) return;
        file_.drop(name);
        forgetTemporary(name);
    }
    SecondName(const SecondName&) = delete;
    SecondName& operator=(const SecondName&) = delete;

    fs::path name;

  private:
    const PosixPartialFile& file_;
};

// Gives the target's content a second name, so that its own is never taken away. A file system without second names
// gets a copy.
bool PosixPartialFile::addSecondName(fs::path& second, Error& error) const {
    fs::path name = besideTarget();
    if (makeTemporary(name, [&] { return link(target.c_str(), name.c_str()) == 0; })) {
        second.swap(name);
        return true;
    }
    const std::unique_ptr<MappedFile> old = MappedFile::open(target, error);
    PosixPartialFile copy;
    if (!old || !copy.begin(target, error)) return false;
    copy.shown = backupName(1);
    copy.put(old->bytes());
    if (copy.complete(error)) second.swap(copy.partial);
    copy.discard();
    return !second.empty();
}

// The bytes and the attributes are on the disk.
bool PosixPartialFile::complete(Error& error) {
    if (!failure && !keepAttributes()) failure = lastError();
    if (!failure && fsync(file.number()) != 0) failure = lastError();
    if (!file.close() && !failure) failure = lastError();
    return !failure || fail(error, shown, failure);
}

bool PosixPartialFile::finish(int backups, Error& error) {
    if (!complete(error)) return false;
    const fs::path folder = target.parent_path();
    SecondName second(*this);
    const bool keeps = backups > 0 && kindOfName(target) != NameKind::Missing;  // it may have been removed meanwhile
    if (keeps && !addSecondName(second.name, error)) return false;
    const bool done = takePlace(second.name, backups, error);
    if (done) syncFolder(folder);
    return done;
}

std::error_code PosixPartialFile::move(const fs::path& from, const fs::path& to) const {
    struct stat one;
    struct stat other;
    // Renaming leaves two names of one file as they are.
    const bool isOneFile = lstat(from.c_str(), &one) == 0 && lstat(to.c_str(), &other) == 0 &&
                           one.st_dev == other.st_dev && one.st_ino == other.st_ino;
    const int failed = isOneFile ? unlink(from.c_str()) : rename(from.c_str(), to.c_str());
    return failed == 0 ? std::error_code() : lastError();
}

std::error_code PosixPartialFile::setAside(const fs::path& from, const fs::path& to) const {
    return link(from.c_str(), to.c_str()) == 0 ? std::error_code() : move(from, to);
}

void PosixPartialFile::drop(const fs::path& aside) const {
    unlink(aside.c_str());
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
