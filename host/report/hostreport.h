// What a drawing file holds, and where two of them differ, without opening them in the editor.
//
//     qrs::host::DrawingInfo info;
//     platform::Error error;
//     if (qrs::host::describeDrawing("house.dxf", info, error)) ...
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/platform/error.h"
#include "host/platform/port.h"

namespace qrs::host {

// Main entities: a polyline with its vertices, and a block reference with its attributes, count once.
struct EntityCount {
    std::size_t inLayouts = 0;  // of model space and all layouts
    std::size_t inBlocks = 0;   // of block definitions
};

struct TypeInfo {
    std::wstring name;  // "LINE"
    EntityCount entities;
};

struct LayerInfo {
    std::wstring name;
    bool isDefined = false;  // false: entities name it, the layer table does not
    bool isOff = false;
    bool isFrozen = false;
    bool isLocked = false;
    EntityCount entities;
};

struct LayoutInfo {
    std::wstring name;   // "Model", "布局1"
    std::wstring block;  // "*Model_Space"; empty when the file does not name it
    std::size_t entities = 0;
};

struct ExternalReferenceInfo {
    std::wstring name;
    std::wstring path;  // as the drawing writes it
};

// A class that an application has brought.
struct ClassInfo {
    std::wstring dxfName;
    std::wstring className;
    std::wstring application;
    std::size_t instances = 0;  // entities and objects of that name that are there
};

struct DrawingInfo {
    std::uint64_t bytes = 0;
    std::string version;   // "AC1024"; "AC1009" when the header does not say
    std::wstring release;  // "2010"; empty for a version that is not known
    bool isBinary = false;
    bool hasHandles = false;
    std::wstring codePageName;        // as the header writes it; empty when it does not
    unsigned codePage = 0;            // that texts are read with; 65001 from AC1021 on
    std::size_t blocks = 0;           // definitions, those of the layouts not counted
    std::vector<TypeInfo> types;      // by name
    std::vector<LayerInfo> layers;    // in the order of the table, then those it lacks
    std::vector<LayoutInfo> layouts;  // model space first
    std::vector<ExternalReferenceInfo> externalReferences;
    std::vector<ClassInfo> classes;
    std::vector<std::string> faults;  // what is damaged and was taken as well as it goes, UTF-8
};

// False, with the reason in error, when the file cannot be read.
QRS_HOST_PORT bool describeDrawing(const std::filesystem::path& native, DrawingInfo& info, platform::Error& error);

// "2018", "R12" when the file is a DWG drawing, "AC1099" when its version has no name here; empty for other files, and
// for those that cannot be read.
QRS_HOST_PORT std::string dwgReleaseOf(const std::filesystem::path& native);

// One tag, or one whole record, that is not the same in two drawings.
struct Difference {
    enum class Kind { OnlyInFirst, OnlyInSecond, TagRemoved, TagAdded, TagChanged };
    Kind kind = Kind::TagChanged;
    // What it concerns: "LAYER 1F \"PIPE\"", "LINE 2A7", "$CLAYER", and for an entity without a handle
    // "LINE number 12 of ENTITIES".
    std::wstring object;
    int code = 0;         // group code of the tag
    std::wstring before;  // its value in the first drawing
    std::wstring after;   // and in the second
};

// Tells take of every difference, in the order of the first drawing; what only the second one has follows where it
// stands. Records are compared by handle, without one by name, and the entities of drawings without handles by their
// order. Values are compared by what they say: spellings of numbers, blanks, line ends, comments, the code page and the
// form of the file (text or binary) make no difference. False, with the reason in error, when a file cannot be read.
QRS_HOST_PORT bool compareDrawings(const std::filesystem::path& first, const std::filesystem::path& second,
                                   const std::function<void(const Difference&)>& take, platform::Error& error);

}  // namespace qrs::host
