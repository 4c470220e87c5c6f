// Reads a file's bytes once and makes the index of its records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/dxf/codeform.h"
#include "host/dxf/interner.h"
#include "host/dxf/record.h"
#include "host/dxf/recordwalk.h"
#include "host/platform/files.h"

namespace qrs::dxf {

// Type names the reader itself knows; they have these numbers in every index.
enum KnownType : std::uint16_t {
    kTypeSection = 1,
    kTypeEndSection,
    kTypeEndOfFile,
    kTypeTable,
    kTypeEndTable,
    kTypeBlock,
    kTypeEndBlock,
    kTypeClass,
    kTypePolyline,
    kTypeInsert,
    kTypeVertex,
    kTypeAttrib,
    kTypeSeqend,
    kTypeDimStyle,
    kTypeLwPolyline,
};
// Stands for every type name behind the first 65534; such a name is read from the record.
constexpr std::uint16_t kTypeUncounted = 0xFFFF;

// Handles above this, which no program gives, do not count when a new one is looked for: adding to them would overflow.
constexpr std::uint64_t kGreatestHandle = 0x0FFFFFFFFFFFFFFF;

// What is wrong in a drawing that can be worked on all the same.
struct Doubt {
    std::size_t offset = 0;       // a byte of the line to be named
    RecordId record = kNoRecord;  // whose handle is to be named
    std::string text;
};
// A drawing damaged all over shall not fill the memory with what is wrong in it.
constexpr std::size_t kMostDoubts = 100;

struct Index {
    Index();
    void doubt(std::size_t offset, RecordId record, std::string text) {
        if (doubts.size() < kMostDoubts) {
            doubts.push_back({offset, record, std::move(text)});
        } else {
            ++furtherDoubts;
        }
    }
    void countHandle(std::uint64_t handle) {
        if (handle > greatestHandle && handle <= kGreatestHandle) greatestHandle = handle;
    }

    RecordStore records;
    Interner types;
    Interner layers;
    std::vector<RecordId> sections;
    std::vector<RecordId> tables;
    std::vector<RecordId> headerVariables;
    // Head and end of each section, table and block, in order of the heads.
    std::vector<std::pair<RecordId, RecordId>> ends;
    std::uint64_t greatestHandle = 0;
    std::vector<Doubt> doubts;  // the first of them, in no order
    std::uint64_t furtherDoubts = 0;
    char lineEnd = '\n';                 // kBinaryLineEnd for a binary drawing
    CodeForm codeForm = CodeForm::Long;  // of a binary drawing
    bool hasUtf8Mark = false;
};

// So much of a mapped file is read or written before it is given back.
constexpr std::size_t kReleaseStep = std::size_t{8} << 20;

// Where and why a file is no whole drawing.
struct Damage {
    std::size_t offset = 0;  // a byte of the line to be named
    std::string reason;
};

// False, with the damage told, when the bytes are no drawing, are cut off or cannot be cut into tags. The bytes must
// outlive the index: names stay in them.
//
// What is wrong but can be passed over becomes a doubt: a missing ENDSEC, ENDTAB or ENDBLK stands in the index as an
// end without bytes; EOF may be missing where the last section is closed (otherwise the file is cut off); ends without
// a beginning and records outside of sections are kept as Other.
//
// file is the one whose bytes these are, null when they are none of a file: what has been read is given back to the
// system, so that a large drawing needs little more memory than its index.
bool buildIndex(std::string_view bytes, const platform::MappedFile* file, Index& index, Damage& damage);

// The number of the line that holds a byte, from 1.
std::uint64_t lineNumber(std::string_view bytes, std::size_t offset, char lineEnd);

// The type number of a type name: known ones keep theirs, behind 65534 of them kTypeUncounted.
std::uint16_t typeNumber(std::uint32_t interned);

// Takes handle, layer and flags of one record from its tags, met one after the other.
class FieldReader {
  public:
    // Forgets what the record's fields held; its kind and type must be set.
    void begin(Record& record);
    // A tag behind the record's first one; of those whose code is no field's (isFieldCode) none need be told.
    // copyNames: the value goes away, so a new layer name is kept as a copy.
    void take(int code, std::string_view value, Interner& layers, bool copyNames);

  private:
    Record* record_ = nullptr;
    RecordPlace place_;
    int handleCode_ = 0;
    bool isEntity_ = false;
    bool hasLayer_ = false;
    bool hasHandle_ = false;
};

// True when a tag of this code can matter to a FieldReader.
constexpr bool isFieldCode(int code) {
    return code == codes::kHandle || code == codes::kLayer || code == codes::kVisibility ||
           code == codes::kPaperSpace || (code >= codes::kSubclass && code <= codes::kGroup) ||
           code == codes::kDimStyleHandle || isXdataCode(code);
}

}  // namespace qrs::dxf
