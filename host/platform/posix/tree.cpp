// Folders on POSIX systems: what a name is, making and emptying.
#include "host/platform/tree.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>
#include <string>
#include <vector>

#include "host/platform/inside/fileerror.h"
#include "host/platform/posix/handle.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using FolderStream = std::unique_ptr<DIR, CloseFolder>;

// Opens a folder by its name in another one, never through a link. One that its owner may not read or search is opened
// to him first: that is how a folder is read-only here.
Descriptor openFolder(int parent, const char* name) {
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    Descriptor folder(openat(parent, name, kFlags));
    struct stat status;
    if (!folder && errno == EACCES && fstatat(parent, name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISDIR(status.st_mode) && fchmodat(parent, name, S_IRWXU, 0) == 0)
        folder = Descriptor(openat(parent, name, kFlags));
    return folder;
}

// Goes by descriptors, not by paths, so that a name exchanged for a link meanwhile leads nowhere else.
class Emptying {
  public:
    explicit Emptying(dev_t device) : device_(device) {}

    void empty(const Descriptor& folder, const fs::path& shown) {
        // The user's own bits are what keeps him from deleting in it.
        struct stat status;
        if (fstat(folder.number(), &status) == 0 && (status.st_mode & S_IRWXU) != S_IRWXU)
            fchmod(folder.number(), (status.st_mode & 07777) | S_IRWXU);
        for (const std::string& name : namesIn(folder, shown))
            remove(folder, name, shown / name);
    }
    // Of the first thing that stayed; empty when all is gone.
    Error error;

  private:
    dev_t device_;

    void keep(const fs::path& shown, const std::error_code& reason) {
        if (!error) fail(error, shown, reason);
    }

    // All names are read before the first is deleted, as deleting while reading may skip some.
    std::vector<std::string> namesIn(const Descriptor& folder, const fs::path& shown) {
        std::vector<std::string> names;
        Descriptor own(openat(folder.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        FolderStream stream(own ? fdopendir(own.number()) : nullptr);
        if (!stream) {
            keep(shown, lastError());
            return names;
        }
        own.release();
        errno = 0;
        while (const dirent* entry = readdir(stream.get())) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..") names.push_back(name);
            errno = 0;
        }
        if (errno != 0) keep(shown, lastError());
        return names;
    }

    void remove(const Descriptor& parent, const std::string& name, const fs::path& shown) {
        struct stat status;
        if (fstatat(parent.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno != ENOENT) keep(shown, lastError());
            return;
        }
        const bool isFolder = S_ISDIR(status.st_mode);
        if (isFolder && status.st_dev != device_) {
            keep(shown, std::make_error_code(std::errc::cross_device_link));
            return;
        }
        if (isFolder) {
            const Descriptor folder = openFolder(parent.number(), name.c_str());
            if (!folder) {
                keep(shown, lastError());
                return;
            }
            empty(folder, shown);
        }
        if (unlinkat(parent.number(), name.c_str(), isFolder ? AT_REMOVEDIR : 0) != 0 && errno != ENOENT)
            keep(shown, lastError());
    }
};

// As the name of a link, "folder/" would be the folder it points to.
fs::path withoutSlash(const fs::path& native) {
    return native.has_filename() || !native.has_relative_path() ? native : native.parent_path();
}

}  // namespace

NameKind kindOfName(const fs::path& native) {
    struct stat status;
    if (lstat(withoutSlash(native).c_str(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? NameKind::Missing : NameKind::Other;
    if (S_ISLNK(status.st_mode)) return NameKind::Link;
    return S_ISDIR(status.st_mode) ? NameKind::Folder : NameKind::Other;
}

bool isOwnFolder(const fs::path& native) {
    struct stat status;
    return lstat(withoutSlash(native).c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

bool makePrivateFolder(const fs::path& native, Error& error) {
    return mkdir(withoutSlash(native).c_str(), S_IRWXU) == 0 || fail(error, native, lastError());
}

bool emptyFolder(const fs::path& native, Error& error) {
    const fs::path named = withoutSlash(native);
    const Descriptor folder = openFolder(AT_FDCWD, named.c_str());
    struct stat status;
    if (!folder || fstat(folder.number(), &status) != 0) return fail(error, native, lastError());
    Emptying emptying(status.st_dev);
    emptying.empty(folder, named);
    if (!emptying.error) return true;
    error = emptying.error;
    return false;
}

}  // namespace qrs::platform
