// Copying files into folders, as far as every system does it alike.
#include "host/platform/tree.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

#include "host/platform/files.h"
#include "host/platform/inputfile.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/inprogress.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;

// Writes through AtomicFile what fill writes into it. Where a link shall give way, the file is made under another name
// and renamed over the link, since AtomicFile would follow it.
template <typename Fill>
bool writeAtomically(const fs::path& target, LinkedTarget linked, const Fill& fill, Error& error) {
    const bool replaces = linked == LinkedTarget::Replace && kindOfName(target) == NameKind::Link;
    const fs::path written = replaces ? target.parent_path() / (".qrs-" + unpredictableName() + ".tmp") : target;
    AtomicFile file;
    if (!file.begin(written, error) || !fill(file) || !file.commit(false, error)) return false;
    if (!replaces) return true;
    std::error_code problem;
    fs::rename(written, target, problem);
    if (!problem) return true;
    std::error_code ignored;
    fs::remove(written, ignored);
    return fail(error, target, problem);
}

}  // namespace

bool liesInFolder(const fs::path& native, const fs::path& folder) {
    std::error_code error;
    const fs::path outer = fs::weakly_canonical(folder, error) / "";
    if (error) return false;
    const fs::path inner = fs::weakly_canonical(native, error) / "";
    if (error) return false;
    // Both end in an empty component, which the inner one need not have there.
    const auto end = std::prev(outer.end());
    if (std::mismatch(outer.begin(), end, inner.begin(), inner.end()).first == end) return true;
    // A folder may have other names as well: in other letters, shortened.
    for (fs::path above = inner; above.has_relative_path(); above = above.parent_path())
        if (fs::equivalent(above, outer.parent_path(), error)) return true;
    return false;
}

bool copyFileAtomically(const fs::path& source, const fs::path& target, LinkedTarget linked, Error& error) {
    const std::unique_ptr<InputFile> input = InputFile::open(source, error);
    if (!input) return false;
    std::error_code missing;
    if (fs::equivalent(source, target, missing))
        return fail(error, target, translated("is the file to be copied itself"));
    const auto copy = [&](AtomicFile& file) {
        std::string piece(kPiece, '\0');
        std::uint64_t at = 0;
        while (at < input->size()) {
            const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, input->size() - at));
            if (input->readAt(at, piece.data(), wanted) != wanted)
                return fail(error, source, translated("cannot be read"));
            file.write(std::string_view(piece.data(), wanted));
            at += wanted;
        }
        return true;
    };
    return writeAtomically(target, linked, copy, error);
}

bool replaceFileAtomically(const fs::path& target, std::string_view content, LinkedTarget linked, Error& error) {
    const auto put = [content](AtomicFile& file) {
        file.write(content);
        return true;
    };
    return writeAtomically(target, linked, put, error);
}

bool makeFolders(const fs::path& native, Error& error) {
    std::error_code failed;
    fs::create_directories(native, failed);
    return !failed || fail(error, native, failed);
}

std::unique_ptr<PrivateFolder> PrivateFolder::make(Error& error) {
    fs::path path = nativePath(temporaryFolder()) / ("qrs-" + unpredictableName());
    std::unique_ptr<PrivateFolder> folder(new PrivateFolder());
    if (!makeTemporary(path, [&] { return makePrivateFolder(path, error); })) return nullptr;
    folder->path_.swap(path);
    return folder;
}

PrivateFolder::~PrivateFolder() {
    if (path_.empty()) return;
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    forgetTemporary(path_);
}

}  // namespace qrs::platform
