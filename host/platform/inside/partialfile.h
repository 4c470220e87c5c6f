// The temporary file behind an AtomicFile: what each system does its own way.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "host/platform/error.h"
#include "host/platform/inside/inprogress.h"

namespace qrs::platform {

class PartialFile {
  public:
    static std::unique_ptr<PartialFile> make();
    virtual ~PartialFile() = default;
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    // Looks at the target and makes the temporary file beside it. False, with the reason in error, when it cannot.
    virtual bool begin(const std::filesystem::path& target, Error& error) = 0;
    // Writes; a failure is remembered, and nothing is written after it.
    virtual void put(std::string_view bytes) = 0;
    bool hasFailed() const { return static_cast<bool>(failure); }
    // As AtomicFile::commit.
    virtual bool finish(int backups, Error& error) = 0;
    // Removes the temporary file, if there is one still.
    virtual void discard() = 0;

  protected:
    PartialFile() = default;
    std::filesystem::path besideTarget() const {
        return target.parent_path() / (".qrs-" + unpredictableName() + ".tmp");
    }

    // The name of a kept state of the target, 1 the newest.
    std::filesystem::path backupName(int number) const;
    // Gives the states kept so far the names after their own, so that the newest name is free. False, with the reason
    // in error, when one cannot be renamed.
    bool makeRoomForBackup(int backups, Error& error) const;

    std::filesystem::path target;   // links followed
    std::filesystem::path shown;    // as the caller named it
    std::filesystem::path partial;  // the temporary file; empty when there is none
    std::error_code failure;
};

}  // namespace qrs::platform
