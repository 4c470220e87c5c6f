// The sections and items of one object's own tags: taking them apart, and laying others over them.
#pragma once

#include <string>
#include <vector>

#include "adsdef.h"
#include "dbid.h"
#include "gepnt3d.h"
#include "host/dxf/drawing.h"
#include "host/objectarx/db/valuekind.h"

namespace qrs::host {

class DatabaseState;

// One item of the record: a tag, or the tags of a point's coordinates.
struct PresentItem {
    int code = 0;
    std::vector<dxf::NewTag> tags;
    std::uint32_t begin = 0;  // bounds in the record
    std::uint32_t end = 0;
    bool isReadable = true;  // says something that the editor's interface can hold
    bool isOwn = false;      // of the class that writes the section
};

struct PresentSection {
    std::wstring mark;
    std::vector<PresentItem> items;
    std::uint32_t end = 0;  // after its last item
};

struct WrittenItem {
    int code = 0;
    std::vector<dxf::NewTag> tags;
};

struct WrittenSection {
    std::wstring mark;
    std::vector<WrittenItem> items;
    std::vector<Adesk::Int16> ownCodes;
};

// What lies underneath AcDbDxfFiler.
class FieldFiler {
  public:
    // Reads and writes a record; kNoRecord when there is none yet: nothing is read then, and sections() is the result.
    FieldFiler(DatabaseState& state, dxf::RecordId record);

    DatabaseState& state() const { return state_; }
    Acad::ErrorStatus status() const { return status_; }

    bool enter(std::wstring_view mark);
    Acad::ErrorStatus read(resbuf& item);

    Acad::ErrorStatus beginSection(std::wstring_view mark);
    Acad::ErrorStatus write(int code, ValueKind kind, std::vector<dxf::NewTag> tags);
    void setOwnCodes(const Adesk::Int16* codes, std::size_t count);
    // Lays what was written over the record. False when nothing changed: it was equal, or something could not be
    // written.
    bool merge();
    // What was written, marks included, in order.
    std::vector<dxf::NewTag> tags() const;

  private:
    void decode(const PresentItem& present, resbuf& item);

    DatabaseState& state_;
    dxf::RecordId record_;
    std::vector<PresentSection> present_;
    std::vector<WrittenSection> written_;
    std::size_t section_ = 0;  // being read; present_.size() when none
    std::size_t item_ = 0;     // to be read next
    std::wstring text_;        // of the item read last
    std::string binary_;
    Acad::ErrorStatus status_ = Acad::eOk;
};

}  // namespace qrs::host
