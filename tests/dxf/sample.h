// A small drawing with everything a reader can trip over, in any line style.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::dxf::test {

using Tags = std::vector<NewTag>;

// Lays out tags with codes of a width and a line end.
inline std::string lay(const Tags& tags, int width = 3, std::string_view lineEnd = "\n") {
    std::string text;
    for (const NewTag& tag : tags) {
        char code[24];
        std::snprintf(code, sizeof code, "%*d", width, tag.code);
        text.append(code).append(lineEnd).append(tag.value).append(lineEnd);
    }
    return text;
}

// The same as a binary drawing: group codes in one byte (255 before longer ones) or in two.
inline std::string layBinary(const Tags& tags, bool twoByteCodes) {
    std::string bytes("AutoCAD Binary DXF\r\n\x1A\0", 22);
    const auto append = [&](std::int64_t number, int size) {
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(number >> 8 * i & 0xFF);
    };
    for (const NewTag& tag : tags) {
        if (!twoByteCodes && tag.code >= 255) bytes += '\xFF';
        append(tag.code, twoByteCodes || tag.code >= 255 ? 2 : 1);
        const double real = std::atof(tag.value.c_str());
        std::int64_t bits = 0;
        std::memcpy(&bits, &real, sizeof bits);
        switch (tag.code) {
            case 10:
            case 40:
            case 1040:
                append(bits, 8);
                break;
            case 60:
            case 66:
            case 67:
            case 62:
            case 70:
            case 1070:
                append(std::atoi(tag.value.c_str()), 2);
                break;
            case 90:
            case 420:
            case 1071:
                append(std::atoll(tag.value.c_str()), 4);
                break;
            case 160:
                append(std::atoll(tag.value.c_str()), 8);
                break;
            case 290:
                append(std::atoi(tag.value.c_str()), 1);
                break;
            case 310:
            case 1004:
                append(static_cast<std::int64_t>(tag.value.size() / 2), 1);
                for (std::size_t i = 0; i < tag.value.size(); i += 2)
                    append(std::stoi(tag.value.substr(i, 2), nullptr, 16), 1);
                break;
            default:
                bytes += tag.value + '\0';
                break;
        }
    }
    return bytes;
}

inline Tags sampleTags() {
    return {
        {999, "made by hand"},
        {0, "SECTION"},
        {2, "HEADER"},
        {9, "$ACADVER"},
        {1, "AC1015"},
        {9, "$DWGCODEPAGE"},
        {3, "ANSI_936"},
        {9, "$HANDSEED"},
        {5, "30"},
        {0, "ENDSEC"},
        {0, "SECTION"},
        {2, "TABLES"},
        {0, "TABLE"},
        {2, "LAYER"},
        {5, "2"},
        {70, "     2"},
        {0, "LAYER"},
        {5, "10"},
        {102, "{ACAD_REACTORS"},
        {330, "77"},
        {5, "66"},
        {102, "}"},
        {2, "0"},
        {70, "0"},
        {0, "LAYER"},
        {5, "11"},
        {2, "PIPE"},
        {70, "1"},
        {999, "frozen"},
        {0, "ENDTAB"},
        // Code 5 of a dimension style is no handle.
        {0, "TABLE"},
        {2, "DIMSTYLE"},
        {5, "A"},
        {70, "1"},
        {0, "DIMSTYLE"},
        {5, "11"},
        {105, "27"},
        {2, "S"},
        {0, "ENDTAB"},
        {0, "ENDSEC"},
        {0, "SECTION"},
        {2, "BLOCKS"},
        {0, "BLOCK"},
        {5, "12"},
        {8, "0"},
        {2, "VALVE"},
        {0, "LINE"},
        {5, "13"},
        {8, "PIPE"},
        {0, "ENDBLK"},
        {5, "14"},
        {8, "0"},
        {0, "ENDSEC"},
        {0, "SECTION"},
        {2, "ENTITIES"},
        {0, "INSERT"},
        {5, "15"},
        {8, "PIPE"},
        {66, "1"},
        {2, "VALVE"},
        {0, "ATTRIB"},
        {5, "16"},
        {8, "0"},
        {0, "SEQEND"},
        {5, "17"},
        {8, "0"},
        {0, "LINE"},
        {5, "18"},
        {100, "AcDbEntity"},
        {67, "1"},
        {8, "PIPE"},
        {60, "1"},
        {100, "AcDbLine"},
        {10, "1.50"},
        {1001, "QRS"},
        {1000, "0"},
        {1003, "PIPE"},
        {1005, "15"},
        // After its own subclass 60 means something else; its xdata looks like an entity's head.
        {0, "WIDGET"},
        {5, "1a"},
        {100, "AcDbEntity"},
        {8, "  padded "},
        {100, "Widget"},
        {60, "1"},
        {67, "1"},
        {1001, "QRS"},
        {1070, "8"},
        {5, "99"},
        {8, "none"},
        {0, "ENDSEC"},
        {0, "SECTION"},
        {2, "WORLD"},
        {0, "THING"},
        {5, "1B"},
        {310, "00FF"},
        {0, "ENDSEC"},
        {0, "SECTION"},
        {2, "OBJECTS"},
        {0, "XRECORD"},
        {5, "1C"},
        {8, "PIPE"},
        {0, "ENDSEC"},
        {0, "EOF"},
    };
}

// The tags with others in the place of the first that has a value.
inline Tags replaced(Tags tags, std::string_view value, const Tags& by) {
    const auto found = std::find_if(tags.begin(), tags.end(), [&](const NewTag& tag) { return tag.value == value; });
    EXPECT_NE(found, tags.end());
    tags.insert(tags.erase(found), by.begin(), by.end());
    return tags;
}

inline std::unique_ptr<Drawing> parse(std::string bytes) {
    platform::Error error;
    auto drawing = Drawing::fromBytes(std::move(bytes), "sample.dxf", error);
    EXPECT_NE(drawing, nullptr) << error.message;
    return drawing;
}

// Every tag of the drawing as it would be written, one text each; also where it is stored.
inline std::vector<std::string> allTags(const Drawing& drawing) {
    std::vector<std::string> all;
    Tag tag;
    for (RecordId id = drawing.first(); id != kNoRecord; id = drawing.next(id)) {
        StoredTags stored = drawing.storedTags(id);
        for (TagCursor cursor = drawing.tags(id); cursor.next(tag);) {
            all.push_back(std::to_string(tag.code) + "=" + std::string(tag.value));
            EXPECT_TRUE(stored.next() && stored.code() == tag.code && stored.value() == tag.value) << all.back();
        }
        EXPECT_FALSE(stored.next());
    }
    return all;
}

}  // namespace qrs::dxf::test
