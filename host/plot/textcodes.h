// What the codes in texts mean: %%c and the like, and those of texts of several lines.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qrs::host::plot {

enum class Lift { None, Over, Under };  // of a fraction's parts

struct TextRun {
    std::wstring text;
    double height = 1.0;  // against the text's own
    double widthFactor = 1.0;
    double oblique = 0.0;  // radians
    bool isUnderlined = false;
    bool isOverlined = false;
    bool isStruck = false;
    bool isBold = false;
    bool isItalic = false;
    Lift lift = Lift::None;
    std::optional<long> color;      // palette
    std::optional<long> trueColor;  // 0xRRGGBB
    std::wstring font;              // file or family; empty: the style's
};

struct TextParagraph {
    std::vector<TextRun> runs;
    int column = -1;  // 0 left, 1 middle, 2 right; -1: as the text is anchored
    bool startsColumn = false;
    double firstIndent = 0.0;  // heights
    double indent = 0.0;
};

// Of a text of one line.
std::vector<TextRun> lineRuns(std::wstring_view text);
// Of a text of several lines; height: its own, drawing units, as \H names heights.
std::vector<TextParagraph> paragraphRuns(std::wstring_view text, double height);

}  // namespace qrs::host::plot
