// Reads a file's bytes once and makes the index of its records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/dxf/codeform.h"
#include "host/dxf/fault.h"
#include "host/dxf/interner.h"
#include "host/dxf/record.h"
#include "host/dxf/recordwalk.h"
#include "host/dxf/tags.h"
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
// Stands for every type name after the first 65534; such a name is read from the record.
constexpr std::uint16_t kTypeUncounted = 0xFFFF;

// Handles above this, which no program gives, do not count when a new one is looked for: adding to them would overflow.
constexpr std::uint64_t kGreatestHandle = 0x0FFFFFFFFFFFFFFF;

struct Index {
    Index();
    // The record that closes a section, table or block.
    RecordId endOf(RecordId head) const;
    // Takes a new record up, once its place is known.
    void noteNew(RecordId id);
    // Whether a record names others, besides its owner. Most entities do not, so that those who look for references
    // need not read them.
    bool refers(RecordId id) const { return id < referring.size() && referring[id]; }
    void noteReference(RecordId id) {
        if (id >= referring.size()) referring.resize(id + std::size_t{1}, false);
        referring[id] = true;
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
    // Head and end of each section, table and block of the file, in order of the heads.
    std::vector<std::pair<RecordId, RecordId>> ends;
    std::unordered_map<RecordId, RecordId> newEnds;  // of new heads
    std::vector<bool> referring;                     // by record; those after its end do not
    std::uint64_t greatestHandle = 0;
    Faults faults;
    char lineEnd = '\n';                 // kBinaryLineEnd for a binary drawing
    CodeForm codeForm = CodeForm::Long;  // of a binary drawing
    bool hasUtf8Mark = false;
};

// False, with the reason and its place in fault, when the bytes are no drawing, are cut off or cannot be cut into tags.
// The bytes must outlive the index: names stay in them.
//
// What is wrong but can be passed over is one of the index's faults: a missing ENDSEC, ENDTAB or ENDBLK stands in the
// index as an end without bytes; EOF may be missing where the last section is closed (otherwise the file is cut off);
// ends without a beginning and records outside of sections are kept as Other.
//
// file is the one whose bytes these are, null when they are none of a file: what has been read is given back to the
// system, so that a large drawing needs little more memory than its index.
//
// second is a place from which on another thread reads the rest of the file at the same time; the answer does not
// depend on it.
constexpr std::size_t kAlone = static_cast<std::size_t>(-1);
bool buildIndex(std::string_view bytes, const platform::MappedFile* file, Index& index, Fault& fault,
                std::size_t second = kAlone);
// The place that suits a file of a size; kAlone when it is not worth a thread.
std::size_t sharedPlace(std::size_t size);

// The type number of a type name: known ones keep theirs, after 65534 of them kTypeUncounted.
std::uint16_t typeNumber(std::uint32_t interned);

// True when a tag of this code can matter to a record's entry in the index.
constexpr bool isFieldCode(int code) {
    return code == codes::kHandle || code == codes::kLayer || code == codes::kVisibility ||
           code == codes::kPaperSpace || (code >= codes::kSubclass && code <= codes::kGroup) ||
           code == codes::kDimStyleHandle || isXdataCode(code);
}
// The same, or it is a reference.
constexpr bool mattersToRecord(int code) {
    return isFieldCode(code) || isResolved(referenceOf(code));
}

// Takes handle, layer and flags of one record from its tags, met one after the other.
class FieldReader {
  public:
    // Forgets what the record's fields held; its kind and type must be set.
    void begin(Record& record);
    // A tag after the record's first one; of those whose code is no field's (isFieldCode) none need be told.
    // copyNames: the value goes away, so a new layer name is kept as a copy.
    void take(int code, std::string_view value, Interner& layers, bool copyNames);
    // A tag that stands here names another record than the owner.
    bool isReference(int code) const {
        const Reference reference = referenceOf(code);
        if (!isResolved(reference)) return reference == Reference::Xdata;
        return code != codes::kOwner || place_.sections() != 0 || place_.part() != Part::Own;
    }

  private:
    Record* record_ = nullptr;
    RecordPlace place_;
    int handleCode_ = 0;
    bool isEntity_ = false;
    bool hasLayer_ = false;
    bool hasHandle_ = false;
};

// Asked several times for every record of a large drawing.
inline void FieldReader::take(int code, std::string_view value, Interner& layers, bool copyNames) {
    Record& record = *record_;
    const Part part = place_.pass(code, value);
    if (isXdataCode(code)) record.flags |= kHasXdata;
    if (part != Part::Own) return;
    if (code == handleCode_) {
        if (!hasHandle_) record.handle = toHandle(value);
        hasHandle_ = true;
        return;
    }
    if (!isEntity_) return;
    switch (code) {
        case codes::kLayer:
            if (!hasLayer_) record.layer = copyNames ? layers.internCopy(value) : layers.intern(value);
            hasLayer_ = true;
            break;
        // Space and visibility stand in the part all entities share; after it the codes may mean something else.
        case codes::kVisibility:
            if (place_.sections() <= 1 && toInteger(value) != 0) record.flags |= kInvisible;
            break;
        case codes::kPaperSpace:
            if (place_.sections() <= 1 && toInteger(value) == 1) record.flags |= kPaperSpace;
            break;
        default:
            break;
    }
}

// Makes the index entry of a record anew from its tags, after it was changed.
class RecordFields {
  public:
    RecordFields(Index& index, RecordId id) : index_(index), id_(id), record_(index.records[id]) {}
    // The record's tags in order; those that are no fields may be left out.
    void take(int code, std::string_view value) {
        if (isFirst_) return begin(value);
        if (fields_.isReference(code)) index_.noteReference(id_);
        if (isFieldCode(code)) fields_.take(code, value, index_.layers, true);
    }

  private:
    void begin(std::string_view type);

    Index& index_;
    RecordId id_;
    Record& record_;
    FieldReader fields_;
    bool isFirst_ = true;
};

}  // namespace qrs::dxf
