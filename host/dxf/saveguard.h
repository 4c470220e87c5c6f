// Keeps a save from writing over what somebody else has saved meanwhile.
#pragma once

#include <filesystem>
#include <vector>

#include "host/platform/error.h"
#include "host/platform/files.h"

namespace qrs::dxf {

class SaveGuard {
  public:
    // The file the drawing was opened from, with its mark from before it was mapped.
    void noteOpened(const platform::FileMark& mark, const platform::MappedFile& file);
    // False, with the reason in error, when the target is a file this drawing was opened from or saved to and somebody
    // else, another drawing of this program for one, has saved to it since: that save would be lost.
    bool allows(const std::filesystem::path& native, platform::Error& error) const;
    // The drawing was saved there.
    void noteSaved(const std::filesystem::path& native);

  private:
    bool isAsKnown(std::size_t mark, const std::filesystem::path& native, const platform::FileMark& now) const;

    std::vector<platform::FileMark> marks_;  // of the files opened and saved, as this drawing knows them
    // The file of the first mark, as long as this drawing has not replaced it by saving to it.
    const platform::MappedFile* opened_ = nullptr;
};

}  // namespace qrs::dxf
