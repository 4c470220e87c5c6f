// New entities and objects of a drawing: their tags as its version writes them, and their places.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/drawing/contents.h"

namespace qrs::host {

class NewRecords {
  public:
    explicit NewRecords(Contents& contents) : contents_(contents), drawing_(contents.drawing()) {}

    enum class Spelling { Done, UnknownLayer, UnknownName };
    // An entity's own tags as the drawing writes them: those its version knows, names as its tables spell them. What
    // the tags name must be there.
    Spelling spell(const DetachedTags& own, std::string_view dxfName, std::vector<dxf::NewTag>& tags) const;

    // Puts an entity after the others of a block. own: spelled tags; fields: those of the class of an application.
    dxf::RecordId addEntity(const std::string& dxfName, const Block& block, const std::vector<dxf::NewTag>& own,
                            const std::vector<dxf::NewTag>& fields);
    // Puts an object that is no entity after the others. owner: a handle.
    dxf::RecordId addObject(const std::string& dxfName, std::uint64_t owner, const std::vector<dxf::NewTag>& content);
    // The dictionary all others lie under, made when the drawing has none; kNoRecord in one older than AC1012.
    dxf::RecordId ensureRootDictionary();

  private:
    void addCommonTags(const std::vector<dxf::NewTag>& own, const Block& block, std::vector<dxf::NewTag>& tags) const;
    void addOwnTags(const std::vector<dxf::NewTag>& own, const RecordFormat& format,
                    std::vector<dxf::NewTag>& tags) const;

    Contents& contents_;
    dxf::Drawing& drawing_;
};

// The dictionary all others lie under; kNoRecord when the drawing has none.
dxf::RecordId rootDictionary(const dxf::Drawing& drawing);

}  // namespace qrs::host
