// The pictures that drawing files carry of entities whose classes applications bring: drawn by the entities themselves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "dbmain.h"

namespace qrs::host {

// What the entity, open in a drawing, draws of itself; empty when that is nothing, or the drawing cannot hold it.
std::string drawnPicture(const AcDbEntity& entity);

// Gives an entity that was changed the picture it has now. before: what it drew earlier. A picture in the file stays
// as it is when the entity looks as it did.
void renewPicture(const AcDbEntity& entity, const std::string& before);

// Before an entity changes in colour, layer or the like: whether its picture follows. One that was drawn here does, in
// whatever colour and weight, and one that is missing; what others drew stays.
class OwnPicture {
  public:
    explicit OwnPicture(const AcDbEntity& entity);
    // After the change.
    void renew() const;

  private:
    const AcDbEntity& entity_;
    bool isOwn_ = false;
};

// Pictures that were drawn here follow the colour and weight of layers that have changed.
void renewPicturesOn(DatabaseState& state, const std::set<std::uint32_t>& layers);

// Before a change of what all pictures depend on, such as the scale of symbols: those that were drawn here follow it.
class OwnPictures {
  public:
    explicit OwnPictures(DatabaseState& state);
    // After the change.
    void renew() const;

  private:
    DatabaseState& state_;
    std::vector<AcDbObjectId> own_;
};

struct PictureCounts {
    std::size_t given = 0;  // entities that had none, or another one
    std::size_t kept = 0;
};
// Gives every entity of the drawing that draws itself its picture. No such entity may be open for writing.
QRS_HOST_PORT PictureCounts renewAllPictures(AcDbDatabase& database);

}  // namespace qrs::host
