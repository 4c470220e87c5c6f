// Names, reading and mapping of files on POSIX systems.
#include "host/platform/files.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <limits>

#include "host/platform/codepage.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/lastchange.h"
#include "host/platform/inside/temporary.h"
#include "host/platform/posix/handle.h"
#include "host/platform/posix/lostbytes.h"
#include "host/platform/posix/signalhold.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

// A byte of a file name that is no UTF-8, and a backslash in one (which would read as a separator), become the lone
// surrogate this far above the byte; no other name decodes to those.
constexpr char32_t kEscapedByte = 0xDC00;

bool isEscapedByte(char32_t codePoint) {
    return (codePoint >= kEscapedByte + 0x80 && codePoint <= kEscapedByte + 0xFF) || codePoint == kEscapedByte + U'\\';
}

std::wstring decodeName(std::string_view bytes) {
    std::wstring text;
    if (bytes.find('\\') == std::string_view::npos && decodeStrict(kUtf8, bytes, text)) {
        std::replace(text.begin(), text.end(), L'/', L'\\');
        return text;
    }
    text.clear();
    std::wstring piece;
    for (std::size_t i = 0; i < bytes.size();) {
        std::size_t length = 1;
        while (length <= 4 && !decodeStrict(kUtf8, bytes.substr(i, length), piece))
            ++length;
        if (length <= 4 && bytes[i] != '\\') {
            text += bytes[i] == '/' ? std::wstring(1, L'\\') : piece;
            i += std::min(length, bytes.size() - i);
        } else {
            appendCodePoint(text, kEscapedByte + static_cast<unsigned char>(bytes[i]));
            ++i;
        }
    }
    return text;
}

std::string encodeName(std::wstring_view inner) {
    std::string bytes;
    std::size_t plain = 0;  // start of what toUtf8 can take in one piece
    const auto flush = [&](std::size_t end) { bytes += toUtf8(inner.substr(plain, end - plain)); };
    for (std::size_t i = 0; i < inner.size();) {
        const std::size_t at = i;
        const char32_t codePoint = nextCodePoint(inner, i);
        if (codePoint == U'\\') {
            flush(at);
            bytes += '/';
        } else if (isEscapedByte(codePoint)) {
            flush(at);
            bytes += static_cast<char>(codePoint - kEscapedByte);
        } else {
            continue;
        }
        plain = i;
    }
    flush(inner.size());
    return bytes;
}

bool nameExists(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

// The name in the folder that equals the wanted one but for case; of several the first in byte order, which is the
// order of the code points too. Empty when there is none.
std::string nameNoCase(const std::string& folder, const std::string& wanted) {
    const std::wstring wide = decodeName(wanted);
    std::string found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const std::string name = entry->path().filename().native();
        if ((found.empty() || name < found) && compareNoCase(decodeName(name), wide) == 0) found = name;
    }
    return found;
}

// Opens for reading. A folder opens too, but cannot be read; it is told apart here.
Descriptor openForReading(const fs::path& native, int flags, struct stat& status, Error& error) {
    Descriptor file(open(native.c_str(), O_RDONLY | O_CLOEXEC | flags));
    if (!file || fstat(file.number(), &status) != 0) {
        fail(error, native, lastError());
        return Descriptor();
    }
    if (S_ISDIR(status.st_mode)) {
        fail(error, native, translated(kIsFolder));
        return Descriptor();
    }
    return file;
}

// An ordinary file only. Opening does not block: a pipe would wait for a writer, only to be refused.
Descriptor openOrdinary(const fs::path& native, struct stat& status, Error& error) {
    Descriptor file = openForReading(native, O_NONBLOCK, status, error);
    if (file && !S_ISREG(status.st_mode)) {
        fail(error, native, translated(kNoOrdinaryFile));
        return Descriptor();
    }
    return file;
}

// Everything until the end, which comes after expected bytes unless the file tells no size or grows.
bool readToEnd(const Descriptor& file, const fs::path& native, std::uint64_t expected, std::uint64_t most,
               std::string& content, Error& error) {
    if (expected > most) return fail(error, native, largerThan(most));
    // One byte more than expected, so that the end is met at once and nothing has to grow.
    content.resize(static_cast<std::size_t>(expected) + 1);
    for (std::size_t at = 0;;) {
        if (at == content.size()) content.resize(std::max<std::size_t>(at * 2, 4096));
        const ssize_t count = read(file.number(), content.data() + at, content.size() - at);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            const std::error_code reason = lastError();
            content.clear();
            return fail(error, native, reason);
        }
        at += static_cast<std::size_t>(count);
        if (at > most) {
            content.clear();
            return fail(error, native, largerThan(most));
        }
        if (count == 0) {
            content.resize(at);
            return true;
        }
    }
}

class PosixMappedFile : public MappedFile {
  public:
    PosixMappedFile(const fs::path& native, Descriptor file, const struct stat& status, std::string_view bytes)
        : native_(native), file_(std::move(file)), opened_(status), watch_(bytes.data(), bytes.size(), native_) {
        bytes_ = bytes;
    }
    ~PosixMappedFile() override {
        if (!bytes_.empty()) munmap(const_cast<char*>(bytes_.data()), bytes_.size());
    }

    bool isSameFile(const fs::path& native) const override {
        struct stat mine;
        struct stat other;
        return fstat(file_.number(), &mine) == 0 && stat(native.c_str(), &other) == 0 && mine.st_dev == other.st_dev &&
               mine.st_ino == other.st_ino;
    }

    bool isUnchanged(Error& error) const override {
        struct stat now;
        if (fstat(file_.number(), &now) != 0) return fail(error, native_, lastError());
        if (!watch_.hasLost() && now.st_size == opened_.st_size && now.st_mtim.tv_sec == opened_.st_mtim.tv_sec &&
            now.st_mtim.tv_nsec == opened_.st_mtim.tv_nsec)
            return true;
        return fail(error, native_, translated(kChangedSinceOpened));
    }

    // Whole pages within the bytes only; the system keeps the content for the next reader.
    void release(std::size_t begin, std::size_t end) const override {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        begin = (begin + page - 1) / page * page;
        end = end == bytes_.size() ? end : end / page * page;
        if (begin < end) madvise(const_cast<char*>(bytes_.data()) + begin, end - begin, MADV_DONTNEED);
    }

  private:
    fs::path native_;
    Descriptor file_;
    struct stat opened_;
    WatchedMapping watch_;
};

}  // namespace

fs::path nativePath(std::wstring_view inner) {
    const std::string wanted = encodeName(inner);
    if (wanted.empty() || nameExists(wanted)) return wanted;
    std::string path;
    for (std::size_t at = 0; at < wanted.size();) {
        const std::size_t separators = std::min(wanted.find_first_not_of('/', at), wanted.size());
        path.append(wanted, at, separators - at);
        const std::size_t end = std::min(wanted.find('/', separators), wanted.size());
        std::string name = wanted.substr(separators, end - separators);
        at = end;
        if (name.empty()) break;
        if (!nameExists(path + name)) {
            const std::string other = nameNoCase(path.empty() ? "." : path, name);
            // Nothing of that name: the rest stays as it is written.
            if (other.empty()) return path + wanted.substr(separators);
            name = other;
        }
        path += name;
    }
    return path;
}

fs::path nativeFromTyped(const std::string& typed) {
    if (typed.find('\\') == std::string::npos || nameExists(typed)) return typed;
    std::string slashed = typed;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    return nativePath(innerPath(slashed));
}

std::wstring innerPath(const fs::path& native) {
    return decodeName(native.native());
}

bool readFile(const fs::path& native, std::string& content, Error& error) {
    content.clear();
    struct stat status;
    const Descriptor file = openForReading(native, 0, status, error);
    constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();
    return file && readToEnd(file, native, static_cast<std::uint64_t>(status.st_size), kUnlimited, content, error);
}

bool readOrdinaryFile(const fs::path& native, std::uint64_t most, std::string& content, Error& error) {
    content.clear();
    struct stat status;
    const Descriptor file = openOrdinary(native, status, error);
    return file && readToEnd(file, native, static_cast<std::uint64_t>(status.st_size), most, content, error);
}

std::unique_ptr<MappedFile> MappedFile::open(const fs::path& native, Error& error) {
    struct stat status;
    Descriptor file = openOrdinary(native, status, error);
    if (!file) return nullptr;
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size == 0) return std::make_unique<PosixMappedFile>(native, std::move(file), status, std::string_view());
    void* address = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.number(), 0);
    if (address == MAP_FAILED) {
        fail(error, native, lastError());
        return nullptr;
    }
    madvise(address, size, MADV_SEQUENTIAL);
    return std::make_unique<PosixMappedFile>(native, std::move(file), status,
                                             std::string_view(static_cast<const char*>(address), size));
}

std::int64_t lastChange(const fs::path& native) {
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(native, error);
    return error ? 0 : static_cast<std::int64_t>(time.time_since_epoch().count());
}

fs::path lastTemporaryFolder() {
    return "/tmp";  // every POSIX system has it
}

fs::path programFile() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

fs::path programFolder() {
    const fs::path program = programFile();
    std::error_code error;
    // Without /proc the current folder is all there is to start from.
    return program.empty() ? fs::current_path(error) : program.parent_path();
}

bool appendToFile(const fs::path& native, std::string_view bytes, Error& error) {
    const SignalHold hold;
    Descriptor file(open(native.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666));
    if (!file) return fail(error, native, lastError());
    while (!bytes.empty()) {
        const ssize_t count = write(file.number(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return fail(error, native, lastError());
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return file.close() || fail(error, native, lastError());
}

}  // namespace qrs::platform
