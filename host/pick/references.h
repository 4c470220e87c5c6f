// The drawings that a drawing shows as external references, read once and never written.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host::pick {

class References {
  public:
    struct File {
        std::unique_ptr<dxf::Drawing> drawing;
        std::wstring folder;  // inner form, with a backslash at its end
    };

    // Finds a file by a path as drawings hold it (inner form); empty when there is none.
    using Locate = std::function<std::wstring(const std::wstring&)>;

    // The drawing of a reference. Looked for as its path says, beside the drawing that names it (in folder), and by its
    // bare name; a path to a file of another kind finds the .dxf of that name. Null when none can be read; it is looked
    // for again next time.
    const File* find(const std::wstring& path, const std::wstring& folder, const Locate& locate);

    // The paths of those that were not found since the last call, as drawings hold them; each is told once.
    std::vector<std::wstring> takeMissing();

    // Whether one of them was read from this file.
    bool isOne(const std::filesystem::path& native) const;

  private:
    std::map<std::wstring, File> files_;  // by where they lie
    std::vector<std::wstring> missing_;   // still to be told
    std::set<std::wstring> told_;
};

}  // namespace qrs::host::pick
