// The text styles of the current standard, and their making in the drawing.
//
//     double height = PipeSystemTool::GetTextStyleHeight(kPipeDnTextStyle, 3.0);
//     AcDbObjectId style = PipeSystemTool::InitTextStyle(kPipeDnTextStyle);   // made when the drawing lacks it
//
// A setting is found by the name of its text style or by the kind of text it is for, as an enumerator or its number;
// names and keys are exact, and of several settings the first one counts. Without a standard every question gets the
// answer of a miss. Changes stay in memory: the standard file is not written.
#pragma once

#include <vector>

#include "dbid.h"
#include "PipeNodes.h"
#include "pipeport.h"

// The kinds of text the suite writes, each with its key in the standard.
enum TextStyleEnum : int {
    kPipeDnTextStyle = 0,     // "管径标注"
    kVPipeTextStyle = 1,      // "立管标注"
    kPipeTextStyle = 2,       // "管线文字"
    kCircleTextStyle = 3,     // "圆中文字"
    kSanitaryTextStyle = 4,   // "洁具标注"
    kElevationTextStyle = 5,  // "标高文字"
    kWellTextStyle = 6,       // "井标注"
    kTableTextStyle = 7,      // "表格文字"
    kOtherTextStyle = 8,      // "其他标注"
    kLinetypeTextStyle = 9,   // "文字线形"
};

namespace PipeSystemTool {

// The name of the text style for that kind of text. Empty for an unknown kind and when the standard has no such
// setting.
QRS_PIPE_PORT CString GetTextStyleName(TextStyleEnum kind);

// Text height in millimetres on paper, to be multiplied by the plot scale; the default when there is no such setting.
QRS_PIPE_PORT double GetTextStyleHeight(const CString& styleName, double defaultHeight);
QRS_PIPE_PORT double GetTextStyleHeight(TextStyleEnum kind, double defaultHeight);

// Width divided by height; the default when there is no such setting.
QRS_PIPE_PORT double GetTextStyleScale(const CString& styleName, double defaultScale);
QRS_PIPE_PORT double GetTextStyleScale(TextStyleEnum kind, double defaultScale);

// Change one value of a setting. False when there is no such setting.
QRS_PIPE_PORT bool SetTextStyleHeight(const CString& styleName, double height);
QRS_PIPE_PORT bool SetTextStyleHeight(TextStyleEnum kind, double height);
QRS_PIPE_PORT bool SetTextStyleScale(const CString& styleName, double scale);
QRS_PIPE_PORT bool SetTextStyleScale(TextStyleEnum kind, double scale);

// Copies the whole setting. False, info untouched, when there is none.
QRS_PIPE_PORT bool GetTextStyleInfo(const CString& styleName, TextStyleNode& info);
QRS_PIPE_PORT bool GetTextStyleInfo(TextStyleEnum kind, TextStyleNode& info);

// Replaces the whole setting, its key included: with another key in info the setting is one for that other kind of text
// from then on. False when there is no such setting.
QRS_PIPE_PORT bool SetTextStyleInfo(const CString& styleName, const TextStyleNode& info);
QRS_PIPE_PORT bool SetTextStyleInfo(TextStyleEnum kind, const TextStyleNode& info);

// All settings in the standard's order; out is replaced. False, out untouched, without a standard.
QRS_PIPE_PORT bool GetAllTextStyleInfo(std::vector<TextStyleNode>& out);

// Whether the standard's setting with the key of info differs from info in any field; height and width scale differ
// when they are more than 0.000001 apart. False when no setting has that key.
QRS_PIPE_PORT bool IsModified(const TextStyleNode& info);

// The text style of the working database. One that the drawing has already is taken as it is, whatever its settings; a
// missing one is made from the standard. A setting whose typeface and script are in the list of Windows fonts
// (FontTool::IsWinFont) makes a style with that typeface, any other one a style with font files; a width scale of 0 is
// written as 1. The null id when the standard has no such setting (asked by name: nor the drawing such a style), and
// when the style cannot be made.
QRS_PIPE_PORT AcDbObjectId InitTextStyle(const CString& styleName);
QRS_PIPE_PORT AcDbObjectId InitTextStyle(TextStyleEnum kind);

// Rewrite a text style of the working database from the standard; none is made. By name: true whenever the drawing has
// the style, also when the standard does not know it and nothing is changed. By kind: true whenever the standard has
// the setting, also when the drawing lacks the style and nothing is written.
QRS_PIPE_PORT bool UpdateTextStyle(const CString& styleName);
QRS_PIPE_PORT bool UpdateTextStyle(TextStyleEnum kind);

// The kinds by their numbers. Without these a 0 would be taken for a null pointer, and so for an empty name.
inline CString GetTextStyleName(int kind) {
    return GetTextStyleName(static_cast<TextStyleEnum>(kind));
}
inline double GetTextStyleHeight(int kind, double defaultHeight) {
    return GetTextStyleHeight(static_cast<TextStyleEnum>(kind), defaultHeight);
}
inline double GetTextStyleScale(int kind, double defaultScale) {
    return GetTextStyleScale(static_cast<TextStyleEnum>(kind), defaultScale);
}
inline bool SetTextStyleHeight(int kind, double height) {
    return SetTextStyleHeight(static_cast<TextStyleEnum>(kind), height);
}
inline bool SetTextStyleScale(int kind, double scale) {
    return SetTextStyleScale(static_cast<TextStyleEnum>(kind), scale);
}
inline bool GetTextStyleInfo(int kind, TextStyleNode& info) {
    return GetTextStyleInfo(static_cast<TextStyleEnum>(kind), info);
}
inline bool SetTextStyleInfo(int kind, const TextStyleNode& info) {
    return SetTextStyleInfo(static_cast<TextStyleEnum>(kind), info);
}
inline AcDbObjectId InitTextStyle(int kind) {
    return InitTextStyle(static_cast<TextStyleEnum>(kind));
}
inline bool UpdateTextStyle(int kind) {
    return UpdateTextStyle(static_cast<TextStyleEnum>(kind));
}

}  // namespace PipeSystemTool
