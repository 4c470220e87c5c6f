// The bytes a drawing was read from: those of a mapped file, or bytes that it keeps itself.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/platform/error.h"
#include "host/platform/files.h"

namespace qrs::dxf {

class Source {
  public:
    explicit Source(std::string bytes) : ownBytes_(std::move(bytes)), bytes_(ownBytes_) {}
    explicit Source(std::unique_ptr<platform::MappedFile> file) : file_(std::move(file)), bytes_(file_->bytes()) {}
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    std::string_view bytes() const { return bytes_; }
    // Null when the bytes are none of a file.
    const platform::MappedFile* file() const { return file_.get(); }
    // False, with the reason in error, when somebody writes into the mapped file: what is read from it is then neither
    // its old content nor the new one.
    bool isUnchanged(platform::Error& error) const { return file_ == nullptr || file_->isUnchanged(error); }

  private:
    std::unique_ptr<platform::MappedFile> file_;
    std::string ownBytes_;
    std::string_view bytes_;
};

// Gives the file's memory back while its bytes are handed out in order, so that copying a large drawing, or changing
// much of it, does not fill the memory with it.
class SourceRelease {
  public:
    explicit SourceRelease(const Source& source) : source_(source) {}
    // What lies before this piece stays with those who read it.
    void beginAt(std::string_view piece);
    // Tells it that a piece is not needed any more; one that does not lie in the file is passed over.
    void done(std::string_view piece);

  private:
    bool liesInFile(std::string_view piece) const;

    const Source& source_;
    std::size_t released_ = 0;
};

}  // namespace qrs::dxf
