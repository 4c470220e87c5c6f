// The tags of an open object as its drawing holds them, for those who ask the same of very many objects: nothing is
// copied, and what they do not ask for is not read.
//
//     ObjectTagWalk walk(*pipe.object());
//     for (ObjectTag tag; walk.next(tag);)
//         if (tag.code == 1) walk.text(tag.value, name);
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "dbmain.h"
#include "host/platform/port.h"

namespace qrs::host {

struct ObjectTag {
    int code = 0;
    std::string_view value;    // the bytes of the drawing; good until an object of the drawing is changed or asked
    bool followsLast = false;  // stands right after the one before, without a comment between them
};

class QRS_HOST_PORT ObjectTagWalk {
  public:
    // The object must stay open. One outside any drawing has no tags here.
    explicit ObjectTagWalk(const AcDbObject& object);
    ~ObjectTagWalk();
    ObjectTagWalk(const ObjectTagWalk&) = delete;
    ObjectTagWalk& operator=(const ObjectTagWalk&) = delete;

    // The next tag, comments passed over, groups (102) and extended data not. False at the end.
    bool next(ObjectTag& tag);
    // Replaces out by the text of a value.
    void text(std::string_view value, std::wstring& out) const;
    // False, number untouched, when the value is no finite number, or no whole one.
    static bool real(std::string_view value, double& number);
    static bool integer(std::string_view value, std::int64_t& number);

  private:
    struct Place;
    std::unique_ptr<Place> place_;
};

}  // namespace qrs::host
