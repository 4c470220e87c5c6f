// Cuts the text of a large XML file into a small frame and many pieces, so that the items of a piece are there one
// after another and never all at once.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qrs::standard {

// What stands in the frame for a piece: an item of the piece's own name with the piece's number in this attribute.
constexpr const char* kPieceNumber = "qrs-piece";

struct CutText {
    std::string frame;
    std::vector<std::string_view> pieces;  // of the text that was cut
};

// What is cut.
struct CutRule {
    std::vector<std::string_view> sections;  // names of the items right below the root
    std::vector<std::string_view> bulky;     // those of them whose items, two levels further down, are cut out
};

// False when a section bears its name at another level, or the text has what only a whole parser understands: it cannot
// be cut. Whether the text is well-formed shows when frame and pieces are parsed; a text that is not may be cut anyhow.
bool cutText(std::string_view text, const CutRule& rule, CutText& out);

}  // namespace qrs::standard
