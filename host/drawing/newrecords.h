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
    // A new block, empty: its record, where drawings have a table of them, and its definition. own: its base point.
    // "*U" becomes "*U7", with a number nobody has. The block's id: its record's, else its definition's.
    std::uint32_t addBlock(const DetachedTags& own, std::wstring_view wantedName);
    // Puts an object that is no entity after the others. owner: a handle.
    dxf::RecordId addObject(const std::string& dxfName, std::uint64_t owner, const std::vector<dxf::NewTag>& content);
    // The dictionary all others lie under, made when the drawing has none; kNoRecord in one older than AC1012.
    dxf::RecordId ensureRootDictionary();

  private:
    std::wstring freeName(std::wstring_view wanted) const;
    bool blocksHaveHandles() const;
    // The tags that the head and the end of a block's definition begin with.
    std::vector<dxf::NewTag> blockTags(const char* type, std::uint64_t owner, const char* mark, bool hasHandle) const;
    void addCommonTags(const std::vector<dxf::NewTag>& own, const Block& block, std::vector<dxf::NewTag>& tags) const;
    void addOwnTags(const std::vector<dxf::NewTag>& own, const RecordFormat& format,
                    std::vector<dxf::NewTag>& tags) const;

    Contents& contents_;
    dxf::Drawing& drawing_;
};

// The dictionary all others lie under; kNoRecord when the drawing has none.
dxf::RecordId rootDictionary(const dxf::Drawing& drawing);

}  // namespace qrs::host
