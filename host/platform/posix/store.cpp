// The settings file of a user, and sharing it with other programs.
#include "host/platform/inside/store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cstdlib>

#include "host/platform/files.h"
#include "host/platform/fileturn.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/posix/handle.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

constexpr const char* kFolder = "qrs_pipeSystem";
constexpr const char* kFile = "settings.ini";

// A variable counts only when it is set to an absolute path.
bool folderFrom(const char* variable, fs::path& folder) {
    const char* value = std::getenv(variable);
    if (!value || *value != '/') return false;
    folder = value;
    return true;
}

class PosixFileVersion : public FileVersion {
  public:
    explicit PosixFileVersion(Descriptor file) : file_(std::move(file)) {
        if (file_) fstat(file_.number(), &status_);
    }

    bool isCurrent(const fs::path& native) const override {
        struct stat now;
        if (stat(native.c_str(), &now) != 0) return errno == ENOENT && !file_;
        // The file stays open, so that the system cannot give its number to the next one.
        return file_ && now.st_ino == status_.st_ino && now.st_dev == status_.st_dev &&
               now.st_size == status_.st_size && now.st_mtim.tv_sec == status_.st_mtim.tv_sec &&
               now.st_mtim.tv_nsec == status_.st_mtim.tv_nsec;
    }

    // A pipe or device has no versions, and reading it would take its content away.
    bool isFileOrFolder() const { return S_ISREG(status_.st_mode) || S_ISDIR(status_.st_mode); }

  private:
    Descriptor file_;
    struct stat status_ {};
};

}  // namespace

std::unique_ptr<SettingsStore> openUserStore() {
    fs::path folder;
    if (!folderFrom("XDG_CONFIG_HOME", folder)) {
        if (!folderFrom("HOME", folder)) folder = "/";
        folder /= ".config";
    }
    return openFileStore(folder / kFolder / kFile);
}

struct FileLock::State {
    Descriptor file;
};

FileLock::FileLock() : state_(std::make_unique<State>()) {}

// Closing lets go of the lock. The lock file stays: removing it would take it away from one who waits for it.
FileLock::~FileLock() = default;

bool FileLock::take(const fs::path& lockFile, Error& error) {
    state_->file = Descriptor(open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!state_->file) return fail(error, lockFile, lastError());
    while (flock(state_->file.number(), LOCK_EX) != 0) {
        if (errno != EINTR) return fail(error, lockFile, lastError());
    }
    return true;
}

struct FileTurn::State {
    Descriptor file;
};

// The lock is the file's own, not its name's: whoever waited finds another file there, and sees it.
FileTurn::FileTurn(const fs::path& native) : state_(std::make_unique<State>()) {
    state_->file = Descriptor(open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    while (state_->file && flock(state_->file.number(), LOCK_EX) != 0 && errno == EINTR) {
    }
}

FileTurn::~FileTurn() = default;

std::unique_ptr<FileVersion> FileVersion::read(const fs::path& native, std::string& content, Error& error) {
    content.clear();
    // The version is taken before the content: a change in between makes the next look read again.
    Descriptor file(open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file && errno == ENOENT) return std::make_unique<PosixFileVersion>(Descriptor());
    if (!file) {
        fail(error, native, lastError());
        return nullptr;
    }
    auto version = std::make_unique<PosixFileVersion>(std::move(file));
    if (!version->isFileOrFolder()) {
        fail(error, native, translated(kNoOrdinaryFile));
        return nullptr;
    }
    if (!readFile(native, content, error)) return nullptr;
    return version;
}

}  // namespace qrs::platform
