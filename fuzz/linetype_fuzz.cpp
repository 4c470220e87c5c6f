// Any texts as a row of linetype.dbf: name, comment and content, parted by zeros. A pattern that is taken is drawable,
// and what is told of it is read as the same pattern.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/check.h"
#include "host/platform/codepage.h"
#include "standard/linetypepattern.h"
#include "standard/text.h"
#include "tests/config/support.h"

namespace {

using namespace qrs;
using fuzz::check;

constexpr std::size_t kWidths[] = {40, 40, 200, 4, 12, 24};

struct Row {
    std::string name, comment, content, count, scale, length;
};

bool read(const Row& row, standard::LinetypePattern& pattern) {
    const std::string* texts[] = {&row.name, &row.comment, &row.content, &row.count, &row.scale, &row.length};
    std::string record = " ";
    for (std::size_t i = 0; i < std::size(kWidths); ++i) {
        record += texts[i]->substr(0, kWidths[i]);
        record.resize(record.size() + kWidths[i] - std::min(kWidths[i], texts[i]->size()), ' ');
    }
    CDBFRecordset table;
    check(openBytes(table, tableBytes(3,
                                      {{"NAME", 'C', 40},
                                       {"COMMENT", 'C', 40},
                                       {"CONTENT", 'C', 200},
                                       {"NUM", 'N', 4},
                                       {"SCALE", 'N', 12, 3},
                                       {"LENGTH", 'N', 24, 6}},
                                      {record})),
          "the table is none");
    table.MoveFirst();
    return standard::readPattern(table, pattern);
}

std::string takeText(std::string& rest) {
    const std::size_t end = std::min(rest.find('\0'), rest.size());
    const std::string text = rest.substr(0, end);
    rest.erase(0, end + 1);
    return text;
}

// What Num and Length should say, so that not every change makes them wrong.
void mendCounts(Row& row) {
    double sum = 0.0;
    int elements = 0;
    for (std::size_t at = 0; at <= row.content.size() && !row.content.empty(); ++elements) {
        std::size_t end = row.content.find_first_of(",[", at);
        if (end != std::string::npos && row.content[end] == '[')
            end = row.content.find(',', row.content.find(']', end));
        sum += std::fabs(std::strtod(row.content.c_str() + at, nullptr));
        at = end == std::string::npos ? row.content.size() + 1 : end + 1;
    }
    row.count = std::to_string(elements);
    char text[400];
    std::snprintf(text, sizeof text, "%.6f", sum);
    row.length = text;
}

}  // namespace

// The first byte: 1, mend the counts.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    Row row;
    for (std::string* text : {&row.name, &row.comment, &row.content, &row.scale, &row.count, &row.length})
        *text = takeText(rest);
    if ((data[0] & 1) != 0) mendCounts(row);
    standard::LinetypePattern pattern;
    if (!read(row, pattern)) return 0;
    check(pattern.elements.size() <= 12 && std::isfinite(pattern.length()), "no linetype may be so");
    check(pattern.elements.empty() || (pattern.elements.front().length >= 0.0 && pattern.length() > 0.0),
          "begins with a gap, or has no length");

    // What has more than four decimals, or more digits than the field, is told shorter than it is.
    Row told = row;
    platform::encode(platform::ansiCodePage(), standard::view(pattern.content()), told.content = {});
    told.scale = "1";
    mendCounts(told);
    standard::LinetypePattern again;
    if (told.content.size() > kWidths[2] || told.length.size() > kWidths[5] || !read(told, again)) return 0;
    check(again.content() == pattern.content(), "what is told is another pattern");
    return 0;
}
