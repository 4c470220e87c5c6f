// Files and names, as far as every system does it alike.
#include "host/platform/files.h"

#include <fstream>

#include "host/platform/codepage.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/lastchange.h"
#include "host/platform/inside/temporary.h"
#include "host/platform/wildcard.h"

namespace qrs::platform {

namespace fs = std::filesystem;

std::string shownPath(const fs::path& native) {
#if defined(_WIN32)
    std::string shown = toUtf8(native.native());
#else
    // Through wide text, so that bytes which are no UTF-8 do not reach the message.
    std::string shown = toUtf8(fromUtf8(native.native()));
#endif
    for (char& character : shown) {
        if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F) character = '?';
    }
    return shown;
}

bool fail(Error& error, const fs::path& native, std::string_view reason) {
    error.message = shownPath(native) + ": " + std::string(reason);
    return false;
}

bool fail(Error& error, const fs::path& native, const std::error_code& reason) {
    return fail(error, native, textOf(reason));
}

std::string largerThan(std::uint64_t most) {
    constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20;
    const bool isWhole = most != 0 && most % kMegabyte == 0;
    return isWhole ? translated("is larger than %1 MB", most / kMegabyte) : translated("is larger than %1 bytes", most);
}

std::wstring innerFromTyped(std::wstring_view typed) {
    std::wstring inner(typed);
    for (wchar_t& unit : inner) {
        if (unit == L'/') unit = L'\\';
    }
    return inner;
}

std::wstring joinPath(std::wstring_view folder, std::wstring_view name) {
    while (!name.empty() && name.front() == L'\\')
        name.remove_prefix(1);
    std::wstring joined(folder);
    if (joined.empty()) return std::wstring(name);
    while (joined.size() > 1 && joined.back() == L'\\')
        joined.pop_back();
    if (joined.back() != L'\\') joined += L'\\';
    return joined.append(name);
}

bool readFileStart(const fs::path& native, std::size_t length, std::string& content, Error& error) {
    content.clear();
    std::error_code problem;
    // Opening a pipe would wait for whoever writes into it.
    if (!fs::is_regular_file(native, problem))
        return problem ? fail(error, native, problem) : fail(error, native, translated(kNoOrdinaryFile));
    std::ifstream file(native, std::ios::binary);
    content.resize(length);
    if (file) file.read(content.data(), static_cast<std::streamsize>(length));
    content.resize(file.is_open() ? static_cast<std::size_t>(file.gcount()) : 0);
    if (!file.is_open() || file.bad()) return fail(error, native, translated("cannot be read"));
    return true;
}

namespace {

// True, with the system's word for it, when the name may lie in its folder in another case, which only a list of the
// folder's names could tell.
bool mayHide(const fs::path& native, std::error_code& problem) {
    fs::path folder = native;
    do {
        folder = folder.parent_path();
        fs::directory_iterator names(folder.empty() ? fs::path(".") : folder, problem);
    } while (problem == std::errc::no_such_file_or_directory && folder.has_relative_path());
    return problem == std::errc::permission_denied;
}

}  // namespace

Presence presenceOf(std::wstring_view inner, Error& error) {
    const fs::path native = nativePath(inner);
    std::error_code problem;
    const fs::file_status status = fs::status(native, problem);
    if (fs::exists(status)) return Presence::Present;
    if (status.type() == fs::file_type::not_found && !mayHide(native, problem)) return Presence::Missing;
    fail(error, native, problem);
    return Presence::Unreachable;
}

std::wstring shownPath(std::wstring_view inner) {
    return fromUtf8(nativePath(inner).u8string());
}

bool fileExists(std::wstring_view inner) {
    std::error_code error;
    const fs::file_status status = fs::status(nativePath(inner), error);
    return fs::exists(status) && !fs::is_directory(status);
}

std::wstring wholePath(std::wstring_view inner) {
    std::error_code error;
    const fs::path whole = fs::absolute(nativePath(inner), error);
    return error ? std::wstring(inner) : innerPath(whole.lexically_normal());
}

bool folderExists(std::wstring_view inner) {
    std::error_code error;
    return fs::is_directory(nativePath(inner), error);
}

std::vector<FolderEntry> listFolder(std::wstring_view folder) {
    std::vector<FolderEntry> entries;
    std::error_code error;
    const fs::path native = folder.empty() ? fs::path(".") : nativePath(folder);
    for (fs::directory_iterator entry(native, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        std::error_code unknown;
        entries.push_back({innerPath(entry->path().filename()), entry->is_directory(unknown)});
    }
    return entries;
}

std::vector<std::wstring> listFiles(std::wstring_view folder, std::wstring_view pattern) {
    std::vector<std::wstring> names;
    for (FolderEntry& entry : listFolder(folder))
        if (!entry.isFolder && matchesWildcard(entry.name, pattern)) names.push_back(std::move(entry.name));
    return names;
}

FileMark fileMark(const fs::path& native) {
    FileMark mark;
    std::error_code error;
    mark.place = fs::weakly_canonical(native, error);
    if (error) mark.place = native;
    mark.size = fs::file_size(native, error);
    mark.exists = !error;
    if (!mark.exists) mark.size = 0;
    if (mark.exists) mark.changed = lastChange(native);
    return mark;
}

bool isSameState(const FileMark& a, const FileMark& b) {
    return a.place == b.place && a.exists == b.exists && a.size == b.size && a.changed == b.changed;
}

bool writeFileAtomically(const fs::path& native, std::string_view content, int backups, Error& error) {
    AtomicFile file;
    if (!file.begin(native, error)) return false;
    file.write(content);
    return file.commit(backups, error);
}

std::wstring temporaryFolder() {
    std::error_code error;
    fs::path folder = fs::temp_directory_path(error);
    // The variables name no folder.
    if (error) folder = lastTemporaryFolder();
    std::wstring inner = innerPath(folder);
    if (inner.empty() || inner.back() != L'\\') inner += L'\\';
    return inner;
}

}  // namespace qrs::platform
