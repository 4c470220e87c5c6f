// Files: names in the inner form, reading, mapping, and writing that never leaves half a file.
//
// The inner form of a path uses backslashes on every system, as the editor gives them; it becomes a native path only at
// the moment of opening. On POSIX separators are swapped and names are matched without regard to case, so that
// "\srv\std\PWX.QDSL" opens /srv/std/pwx.qdsl. Bytes of a POSIX name that are no UTF-8 survive the round trip.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/error.h"
#include "host/platform/port.h"

namespace qrs::platform {

// The native path of an inner one. Of several names that differ only in case the exact one wins, then the first in
// code-unit order; a component that does not exist stays as it is written.
QRS_HOST_PORT std::filesystem::path nativePath(std::wstring_view inner);

// The inner form of a native path. On POSIX '/' becomes '\'.
QRS_HOST_PORT std::wstring innerPath(const std::filesystem::path& native);

// An inner path as people see it: the form of the system they sit at.
QRS_HOST_PORT std::wstring shownPath(std::wstring_view inner);

// A path typed by a person: '/' is accepted as a separator on every system and turned into '\'.
QRS_HOST_PORT std::wstring innerFromTyped(std::wstring_view typed);

// The native path of one typed in a shell, in UTF-8 (on POSIX: any bytes). One with backslashes is read as an inner
// path on POSIX, unless a file or folder has just that name.
QRS_HOST_PORT std::filesystem::path nativeFromTyped(const std::string& typed);

// Folder joined with a name: exactly one backslash between them.
QRS_HOST_PORT std::wstring joinPath(std::wstring_view folder, std::wstring_view name);

// The inner path from the root on: a relative one begins in the working folder.
QRS_HOST_PORT std::wstring wholePath(std::wstring_view inner);

// True when the inner path names an existing file (not a folder).
QRS_HOST_PORT bool fileExists(std::wstring_view inner);
QRS_HOST_PORT bool folderExists(std::wstring_view inner);

// Whether something is at a place, of whatever kind: that it is not there, and that nobody can tell, are two answers.
enum class Presence {
    Missing,      // nothing of that name, or no such folder
    Unreachable,  // a folder on the way may not be looked into, links lead in a circle, a drive does not answer
    Present,
};
// Where the place is unreachable, error says why; else it stays as it is.
QRS_HOST_PORT Presence presenceOf(std::wstring_view inner, Error& error);

// Everything in a folder, in the order in which the file system enumerates it. An unreadable folder gives an empty
// list.
struct FolderEntry {
    std::wstring name;  // without folder
    bool isFolder;
};
QRS_HOST_PORT std::vector<FolderEntry> listFolder(std::wstring_view folder);

// Names (without folder) of the files in a folder that match a pattern of '*' and '?', without regard to case, in the
// order in which the file system enumerates them. Folders are not listed. An unreadable folder gives an empty list.
QRS_HOST_PORT std::vector<std::wstring> listFiles(std::wstring_view folder, std::wstring_view pattern);

// The whole content of a file; a pipe is read until its writers have closed it. False, with the reason in error, when
// it cannot be read.
QRS_HOST_PORT bool readFile(const std::filesystem::path& native, std::string& content, Error& error);

// The whole content of an ordinary file of at most that many bytes. False, with the reason in error, when it is larger,
// is a folder, pipe or device (which are not waited for), or cannot be read.
QRS_HOST_PORT bool readOrdinaryFile(const std::filesystem::path& native, std::uint64_t most, std::string& content,
                                    Error& error);

// The first bytes of an ordinary file, length of them at most; a shorter file gives what it has. False, with the reason
// in error, when it cannot be read.
QRS_HOST_PORT bool readFileStart(const std::filesystem::path& native, std::size_t length, std::string& content,
                                 Error& error);

// What tells the states of a file apart: size and time of the last change.
struct FileMark {
    std::filesystem::path place;  // absolute, links followed
    bool exists = false;
    std::uintmax_t size = 0;
    std::int64_t changed = 0;  // in a unit of the system's own
};
// The mark of a path; exists is false when no file is there.
QRS_HOST_PORT FileMark fileMark(const std::filesystem::path& native);
// True when both name one place and nothing has happened there between the two.
QRS_HOST_PORT bool isSameState(const FileMark& a, const FileMark& b);

// A file mapped for reading; on Windows, where a mapped file cannot be replaced, a copy of it. Empty files map to
// empty bytes.
class MappedFile {
  public:
    // Null, with the reason in error, when the file cannot be opened or is no ordinary file.
    static std::unique_ptr<MappedFile> open(const std::filesystem::path& native, Error& error);

    virtual ~MappedFile() = default;
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view bytes() const { return bytes_; }

    // True when the native path names the very file that is mapped (by identity, not by name).
    virtual bool isSameFile(const std::filesystem::path& native) const = 0;

    // False, with the reason in error, when the size of the mapped file or the time of its last change are not those of
    // its opening: another program has cut it short or writes into it, and bytes may be neither the old content nor the
    // new one. A file that was renamed, removed or replaced is unchanged.
    virtual bool isUnchanged(Error& error) const = 0;

    // A hint that the bytes [begin, end) will not be read for a while: they need not stay in this program's memory.
    // They can be read again at any time.
    virtual void release(std::size_t /*begin*/, std::size_t /*end*/) const {}

  protected:
    MappedFile() = default;
    std::string_view bytes_;
};

// A file that appears whole or not at all: written under a temporary name in the target's folder, flushed to the disk,
// then renamed over the target. Destroyed without commit it leaves the target as it was and removes the temporary file.
// A target that is a symbolic link is followed: the file it names is replaced, the link stays. The permissions of an
// existing target are kept; a read-only target is refused.
class QRS_HOST_PORT AtomicFile {
  public:
    AtomicFile();
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // False, with the reason in error, when the temporary file cannot be made.
    bool begin(const std::filesystem::path& target, Error& error);
    // Appends; small pieces are gathered. A failure is remembered and told by commit.
    void write(std::string_view bytes);
    // Flushes, keeps the previous file as "<target>.bak", and renames. Of so many previous files each stays: an older
    // .bak becomes .bak2, that one .bak3, and so on; 0 keeps none.
    // False, with the reason in error, when any write, the flush or a rename failed; the folder is then as it was.
    bool commit(int backups, Error& error);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// The whole of a small file through AtomicFile.
QRS_HOST_PORT bool writeFileAtomically(const std::filesystem::path& native, std::string_view content, int backups,
                                       Error& error);

// Adds bytes to the end of a file, which is made when it is missing, by one write, so that what several programs add
// does not mix. False, with the reason in error, when it cannot.
QRS_HOST_PORT bool appendToFile(const std::filesystem::path& native, std::string_view bytes, Error& error);

// The file of the running program, and the folder it lies in; the user's temporary folder (inner form, ending in a
// backslash).
QRS_HOST_PORT std::filesystem::path programFile();
QRS_HOST_PORT std::filesystem::path programFolder();
QRS_HOST_PORT std::wstring temporaryFolder();

}  // namespace qrs::platform
