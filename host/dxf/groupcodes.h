// Group codes: what they are called, what kind of value stands under each, and which of them name another record.
//
// Whoever follows references (the damage check, erasing, copying, comparing) asks the table here, so that none of them
// can overlook a code that another one knows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace qrs::dxf {

namespace codes {

// --- with the same meaning in every record
constexpr int kType = 0;      // begins a record
constexpr int kVariable = 9;  // begins a record of the HEADER section
constexpr int kComment = 999;

constexpr int kText = 1;
constexpr int kName = 2;
constexpr int kOtherText = 3;
constexpr int kEntryName = 3;  // in a dictionary, before the handle of the entry
constexpr int kHandle = 5;     // the record's own; a value like any other in the header
constexpr int kLinetype = 6;
constexpr int kTextStyle = 7;
constexpr int kLayer = 8;
constexpr int kPoint = 10;  // its other coordinates stand kCoordinateStep and twice that further on
constexpr int kSecondPoint = 11;
constexpr int kCoordinateStep = 10;
// The further coordinates of the point that begins with a code.
constexpr int yOf(int pointCode) {
    return pointCode + kCoordinateStep;
}
constexpr int zOf(int pointCode) {
    return pointCode + 2 * kCoordinateStep;
}
constexpr int kElevation = 38;
constexpr int kThickness = 39;
constexpr int kLinetypeScale = 48;
constexpr int kVisibility = 60;  // other than 0: invisible
constexpr int kColor = 62;       // of a layer, negative: the layer is off
constexpr int kPaperSpace = 67;
constexpr int kFlags = 70;
constexpr int kTableCount = 70;   // in a table's head: records in the table
constexpr int kVertexCount = 90;  // of a polyline in one record
constexpr int kNormal = 210;
constexpr int kPlottable = 290;
constexpr int kLineWeight = 370;
constexpr int kPlotStyle = 390;
constexpr int kLayout = 410;
constexpr int kTrueColor = 420;
constexpr int kColorName = 430;
constexpr int kTransparency = 440;

// --- marks between the parts of a record
constexpr int kSubclass = 100;
constexpr int kEmbedded = 101;  // begins an object that the record carries in itself
constexpr int kGroup = 102;     // {NAME begins a group, } ends it

// Code 5 of a dimension style is the name of an arrow block, so its handle moved here.
constexpr int kDimStyleHandle = 105;

// --- references: each kind has a range, these are the codes most records use of it
constexpr int kUnresolved = 320;
constexpr int kLastUnresolved = 329;
constexpr int kOwner = 330;  // before the first subclass mark; below it, a soft pointer like any other
constexpr int kReactor = 330;
constexpr int kSoftPointer = 330;
constexpr int kLastSoftPointer = 339;
constexpr int kHardPointer = 340;
constexpr int kSoftOwned = 350;
constexpr int kHardOwned = 360;
constexpr int kFirstReference = kSoftPointer;  // all kinds from here on, with other values among them
constexpr int kLastReference = 399;
constexpr int kFarHardPointer = 480;
constexpr int kLastFarHardPointer = 481;

// --- extended data
constexpr int kFirstXdata = 1000;
constexpr int kXdataText = 1000;
constexpr int kXdataApplication = 1001;
constexpr int kXdataBracket = 1002;
constexpr int kXdataLayer = 1003;
constexpr int kXdataChunk = 1004;
constexpr int kXdataHandle = 1005;
constexpr int kXdataPoint = 1010;
constexpr int kXdataReal = 1040;
constexpr int kXdataDistance = 1041;
constexpr int kXdataScale = 1042;
constexpr int kXdataShort = 1070;
constexpr int kXdataLong = 1071;

}  // namespace codes

// Kinds of values. Textual ones are text in both forms of drawings, the others bytes of a number in the binary one.
enum class ValueKind : std::uint8_t {
    None,  // no such code; read as text
    Text,
    Handle,  // hexadecimal
    Chunk,   // bytes, hexadecimal in text drawings
    Integer8,
    Integer16,
    Integer32,
    Integer64,
    Real,
    Point,       // the first coordinate of a point
    Coordinate,  // a further one
};

// What the handle under a group code means to the record it stands in.
enum class Reference : std::uint8_t {
    None,
    Own,          // the record's own handle
    Unresolved,   // a handle that is kept as it is, whether or not a record has it
    SoftPointer,  // the record can do without the other one
    HardPointer,  // it cannot
    SoftOwner,    // the other record belongs to this one, which can do without it
    HardOwner,    // the other record belongs to this one, which cannot
    Xdata,        // a handle in extended data: a soft pointer of an application
};

namespace detail {

struct CodeRange {
    int first;
    int last;
    ValueKind kind;
    Reference reference = Reference::None;
};
constexpr CodeRange kCodeRanges[] = {
    {0, 4, ValueKind::Text},
    {5, 5, ValueKind::Handle, Reference::Own},
    {6, 9, ValueKind::Text},
    {10, 18, ValueKind::Point},
    {19, 19, ValueKind::Real},
    {20, 28, ValueKind::Coordinate},
    {29, 29, ValueKind::Real},
    {30, 37, ValueKind::Coordinate},
    {38, 59, ValueKind::Real},
    {60, 79, ValueKind::Integer16},
    {90, 99, ValueKind::Integer32},
    {100, 104, ValueKind::Text},
    {105, 105, ValueKind::Handle, Reference::Own},
    {106, 109, ValueKind::Text},
    {110, 112, ValueKind::Point},
    {113, 119, ValueKind::Real},
    {120, 122, ValueKind::Coordinate},
    {123, 129, ValueKind::Real},
    {130, 132, ValueKind::Coordinate},
    {133, 149, ValueKind::Real},
    {160, 169, ValueKind::Integer64},
    {170, 179, ValueKind::Integer16},
    {210, 210, ValueKind::Point},
    {211, 219, ValueKind::Real},
    {220, 220, ValueKind::Coordinate},
    {221, 229, ValueKind::Real},
    {230, 230, ValueKind::Coordinate},
    {231, 239, ValueKind::Real},
    {270, 289, ValueKind::Integer16},
    {290, 299, ValueKind::Integer8},
    {300, 309, ValueKind::Text},
    {310, 319, ValueKind::Chunk},
    {320, 329, ValueKind::Handle, Reference::Unresolved},
    {330, 339, ValueKind::Handle, Reference::SoftPointer},
    {340, 349, ValueKind::Handle, Reference::HardPointer},
    {350, 359, ValueKind::Handle, Reference::SoftOwner},
    {360, 369, ValueKind::Handle, Reference::HardOwner},
    {370, 389, ValueKind::Integer16},
    {390, 399, ValueKind::Handle, Reference::HardPointer},
    {400, 409, ValueKind::Integer16},
    {410, 419, ValueKind::Text},
    {420, 429, ValueKind::Integer32},
    {430, 439, ValueKind::Text},
    {440, 459, ValueKind::Integer32},
    {460, 469, ValueKind::Real},
    {470, 479, ValueKind::Text},
    {480, 481, ValueKind::Handle, Reference::HardPointer},
    {482, 489, ValueKind::Text},
    {999, 1003, ValueKind::Text},
    {1004, 1004, ValueKind::Chunk},
    {1005, 1005, ValueKind::Handle, Reference::Xdata},
    {1006, 1009, ValueKind::Text},
    {1010, 1013, ValueKind::Point},
    {1014, 1019, ValueKind::Real},
    {1020, 1023, ValueKind::Coordinate},
    {1024, 1029, ValueKind::Real},
    {1030, 1033, ValueKind::Coordinate},
    {1034, 1059, ValueKind::Real},
    {1060, 1070, ValueKind::Integer16},
    {1071, 1071, ValueKind::Integer32},
};
constexpr int kTableSize = codes::kXdataLong + 1;

struct CodeMeaning {
    ValueKind kind = ValueKind::None;
    Reference reference = Reference::None;
};
constexpr std::array<CodeMeaning, kTableSize> codeTable() {
    std::array<CodeMeaning, kTableSize> table{};
    for (const CodeRange& range : kCodeRanges) {
        for (int code = range.first; code <= range.last; ++code)
            table[static_cast<std::size_t>(code)] = {range.kind, range.reference};
    }
    return table;
}
// Asked about every tag of a large drawing, so a look into it must be all that a question costs.
inline constexpr std::array<CodeMeaning, kTableSize> kCodeTable = codeTable();

constexpr CodeMeaning meaningOf(int code) {
    return code >= 0 && code < kTableSize ? kCodeTable[static_cast<std::size_t>(code)] : CodeMeaning{};
}

}  // namespace detail

constexpr ValueKind valueKindOf(int code) {
    return detail::meaningOf(code).kind;
}
constexpr Reference referenceOf(int code) {
    return detail::meaningOf(code).reference;
}

constexpr bool isTextual(ValueKind kind) {
    return kind <= ValueKind::Handle;
}
constexpr bool isReal(ValueKind kind) {
    return kind >= ValueKind::Real;
}
constexpr bool isXdataCode(int code) {
    return code >= codes::kFirstXdata;
}

// The other record must stay as long as this one does.
constexpr bool isHard(Reference reference) {
    return reference == Reference::HardPointer || reference == Reference::HardOwner;
}
// The other record goes with this one.
constexpr bool isOwning(Reference reference) {
    return reference == Reference::SoftOwner || reference == Reference::HardOwner;
}
// Names a record that must be there: pointers and owners of the record itself.
constexpr bool isResolved(Reference reference) {
    return reference >= Reference::SoftPointer && reference <= Reference::HardOwner;
}
// Names another record, in whatever way: what copies of several records must take along.
constexpr bool isToOther(Reference reference) {
    return reference > Reference::Own;
}

}  // namespace qrs::dxf
