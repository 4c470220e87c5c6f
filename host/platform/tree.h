// Folders that files are put into and taken from: made, emptied, and files copied, never through a link out of them.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <utility>

#include "host/platform/error.h"
#include "host/platform/port.h"

namespace qrs::platform {

// What lies at a name itself: a link, or a junction of Windows, is a link, whatever it points to.
enum class NameKind { Missing, Folder, Link, Other };
QRS_HOST_PORT NameKind kindOfName(const std::filesystem::path& native);

// True when the folder at the name is this user's own, so that what lies in it was put there by nobody else. Windows
// keeps the temporary folders of users apart, so every folder answers true there.
QRS_HOST_PORT bool isOwnFolder(const std::filesystem::path& native);

// Makes one folder, on POSIX closed to other users. False, with the reason in error, when something of that name is
// there already or it cannot be made.
QRS_HOST_PORT bool makePrivateFolder(const std::filesystem::path& native, Error& error);

// Makes the folder and those it lies in, as far as they are missing. False, with the reason in error, when it cannot.
QRS_HOST_PORT bool makeFolders(const std::filesystem::path& native, Error& error);

// A folder of this program's own in the user's temporary folder, which goes with the object, and when a signal or a
// deadline ends the program, with all that is in it.
class QRS_HOST_PORT PrivateFolder {
  public:
    // Null, with the reason in error, when it cannot be made.
    static std::unique_ptr<PrivateFolder> make(Error& error);
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    PrivateFolder() = default;
    std::filesystem::path path_;  // empty until it is made
};

// Deletes everything in a folder, read-only files and folders too; the folder stays. Links are deleted as links, what
// they point to is left alone, and so are other file systems mounted inside. What cannot be deleted stays, with the
// reason of the first of these in error, and the rest is deleted all the same. False then, and when the name is no
// folder or is a link.
QRS_HOST_PORT bool emptyFolder(const std::filesystem::path& native, Error& error);

// True when the path lies in the folder or is the folder, links of both followed.
QRS_HOST_PORT bool liesInFolder(const std::filesystem::path& native, const std::filesystem::path& folder);

// What happens to a link that has the target's name: the file it points to is written, or the link gives way to a file.
enum class LinkedTarget { Follow, Replace };

// Copies a file over another, which appears whole or stays as it was. False, with the reason in error, when the source
// is no ordinary file, cannot be read to its end or is the target itself, when the target is a folder or read-only, and
// when it cannot be written.
QRS_HOST_PORT bool copyFileAtomically(const std::filesystem::path& source, const std::filesystem::path& target,
                                      LinkedTarget linked, Error& error);

// Writes a small file as AtomicFile does, or in place of a link of that name.
QRS_HOST_PORT bool replaceFileAtomically(const std::filesystem::path& target, std::string_view content,
                                         LinkedTarget linked, Error& error);

}  // namespace qrs::platform
