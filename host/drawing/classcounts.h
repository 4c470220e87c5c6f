// What the section CLASSES tells of the classes that applications bring: that they exist, and how many objects of each
// the drawing has. Other programs keep the objects of a class they lack as long as the drawing tells of it.
#pragma once

#include <string>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host {

struct ClassDescription {
    std::wstring dxfName;
    std::wstring name;
    std::wstring application;
    int proxyFlags = 0;
    bool isEntity = false;
};

class ClassCounts {
  public:
    explicit ClassCounts(dxf::Drawing& drawing) : drawing_(drawing) {}

    // There is one more object of the class, which the drawing tells of from now on if it did not before.
    void add(const ClassDescription& one);
    // An object came (1) or went (-1); of no effect unless the drawing counts those of its class.
    void count(dxf::RecordId object, int by);

  private:
    dxf::RecordId find(std::wstring_view dxfName) const;
    dxf::RecordId recordOf(std::uint16_t type, std::string_view dxfName);
    void write(dxf::RecordId told, int by);

    dxf::Drawing& drawing_;
    std::vector<dxf::RecordId> byType_;  // the CLASS record of each type of records
};

}  // namespace qrs::host
