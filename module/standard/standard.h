// A pipe-system standard in memory, and reading and writing its file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/error.h"
#include "PipeNodes.h"

namespace qrs::standard {

// How the layers of one type are named.
struct NameRule {
    CString LayerType;
    CString LayerPrefix;
    CString LayerSuffix;
};

// Which layers a new pipe system of a group gets.
struct CreateRule {
    CString GroupName;
    std::vector<CString> LayerTypes;
};

// The colour of one kind of object of the suite.
struct ObjectColor {
    CString Name;
    AcCmColor Color;
};

class SystemIndex;

// Every list is in file order.
struct Standard {
    // The look-up of systems by their names and their layers' names. Groups may come and go before and after the first
    // call, but not change places.
    SystemIndex& systems() const;

    std::vector<std::unique_ptr<PipeGroupNode>> groups;
    std::vector<std::unique_ptr<OtherLayerNode>> otherLayers;
    std::vector<NameRule> nameRules;
    std::vector<CreateRule> createRules;
    std::vector<TextStyleNode> textStyles;
    std::vector<ObjectColor> objectColors;
    mutable std::shared_ptr<SystemIndex> index;  // made by systems()
};

// What the root of a standard file says of it.
constexpr const char* kRootName = "Morvel";
constexpr const char* kRootComment = "Morvel管线系统配置文件";

// Reads a standard file (path in the inner form). False, with the file, the line and the reason in error, when it
// cannot be read, is no well-formed XML or is XML of another kind; out is then untouched.
bool readStandard(std::wstring_view path, Standard& out, platform::Error& error);

// Whether the file can be read and its root says in its Comment that it is a standard file.
bool isStandardFile(std::wstring_view path);

// Reads a standard from bytes; name stands for the file in messages.
bool parseStandard(std::string_view bytes, const std::string& name, Standard& out, platform::Error& error);

// The bytes of the file. False, with the reason in error, when a text holds a character that XML cannot carry.
bool formatStandard(const Standard& standard, std::string& bytes, platform::Error& error);

// Writes a standard file: the whole new content, or nothing and the reason in error.
bool writeStandard(const Standard& standard, std::wstring_view path, platform::Error& error);

// The bytes of the standard that serves when there is no file at all.
std::string_view builtinStandard();

}  // namespace qrs::standard
