// The temporary file behind an AtomicFile: what each system does its own way.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <vector>

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
    // Gives the temporary file the target's name. Before that the states kept so far get the names after their own, and
    // the file of the name previous becomes the newest of them; with an empty name nothing is kept. False, with the
    // reason in error, when a name cannot be given; all files then have the names they had.
    bool takePlace(const std::filesystem::path& previous, int backups, Error& error);

    std::filesystem::path target;   // links followed
    std::filesystem::path shown;    // as the caller named it
    std::filesystem::path partial;  // the temporary file; empty when there is none
    std::error_code failure;

  private:
    // A file gets another name.
    struct Move {
        std::filesystem::path from;
        std::filesystem::path to;
        std::filesystem::path named;  // in the message when it fails
    };

    bool planBackups(const std::filesystem::path& previous, int backups, const std::filesystem::path& aside,
                     std::vector<Move>& moves, Error& error) const;
    void takeBack(const std::vector<Move>& moves, std::size_t count, Error& error) const;

    // Gives a file another name, in place of a file that has it.
    virtual std::error_code move(const std::filesystem::path& from, const std::filesystem::path& to) const = 0;
    // As move, to a new name; where the system can, the old one stays until another file gets it.
    virtual std::error_code setAside(const std::filesystem::path& from, const std::filesystem::path& to) const = 0;
    // Removes what was set aside.
    virtual void drop(const std::filesystem::path& aside) const = 0;
};

}  // namespace qrs::platform
