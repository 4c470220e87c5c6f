// Reading piece by piece on POSIX systems.
#include "host/platform/inputfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/platform/inside/fileerror.h"
#include "host/platform/posix/handle.h"

namespace qrs::platform {

namespace {

class PosixInputFile : public InputFile {
  public:
    PosixInputFile(Descriptor file, std::uint64_t size) : file_(std::move(file)), size_(size) {}

    std::uint64_t size() const override { return size_; }

    std::size_t readAt(std::uint64_t offset, char* target, std::size_t count) override {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t got = pread(file_.number(), target + done, count - done, static_cast<off_t>(offset + done));
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

  private:
    Descriptor file_;
    std::uint64_t size_;
};

}  // namespace

std::unique_ptr<InputFile> InputFile::open(const std::filesystem::path& native, Error& error) {
    // Not blocking, since opening a pipe nobody writes to would wait forever.
    Descriptor file(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!file || fstat(file.number(), &status) != 0) {
        fail(error, native, lastError());
        return nullptr;
    }
    if (!S_ISREG(status.st_mode)) {
        fail(error, native, translated(kNoOrdinaryFile));
        return nullptr;
    }
    const auto size = static_cast<std::uint64_t>(status.st_size);
    return std::make_unique<PosixInputFile>(std::move(file), size);
}

}  // namespace qrs::platform
