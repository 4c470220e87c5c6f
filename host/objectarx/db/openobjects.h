// The C++ objects that stand for objects of one drawing while these are open.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "dbmain.h"

namespace qrs::host {

class OpenObjects {
  public:
    explicit OpenObjects(DatabaseState& state) : state_(state) {}
    OpenObjects(const OpenObjects&) = delete;
    OpenObjects& operator=(const OpenObjects&) = delete;

    bool areNone() const { return objects_.empty(); }
    Acad::ErrorStatus open(AcDbObject*& object, std::uint32_t id, AcDb::OpenMode mode, bool openErased);
    // True while a C++ object is made for one of a drawing.
    static bool isOpening() { return isOpening_; }
    static Acad::ErrorStatus close(AcDbObject& object);
    // A new object becomes that of an id, open for writing.
    void adopt(AcDbObject& object, std::uint32_t id);
    static void forget(AcDbObject& object);

    // The values of classes that applications bring, from the object's tags, and into them when it was modified.
    void readFields(AcDbObject& object);
    static void writeFields(AcDbObject& object);
    // Comes before a first change: what the object looks like until then.
    void willChange(const AcDbObject& object);
    void writeAll();
    // The drawing was changed underneath: values are read once more.
    void readAgain();
    // The drawing is closed: what is still open stays without one.
    void abandon();

    // The tags of an object outside any drawing; null for others.
    static DetachedTags* ownTags(const AcDbObject& object) { return object.own_.get(); }

  private:
    static Acad::ErrorStatus addOpening(AcDbObject& object, AcDb::OpenMode mode);

    struct Opening;  // as long as it lives, isOpening

    static bool isOpening_;
    DatabaseState& state_;
    std::unordered_map<std::uint32_t, AcDbObject*> objects_;
    std::unordered_map<std::uint32_t, std::string> drawn_;  // of those that are changed: the picture before
};

}  // namespace qrs::host
