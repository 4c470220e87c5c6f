// Colours, lineweights and linetypes as texts, back from texts, and the settings of a layer in the drawing.
#include "layers/layerfields.h"

#include <algorithm>

#include "dbcolor.h"
#include "dbobjptr.h"
#include "PwxTool.h"
#include "standard/text.h"
#include "standard/values.h"

namespace qrs::layers {

using standard::wide;

namespace {

constexpr const wchar_t* kByLayer = L"随层";
constexpr const wchar_t* kByBlock = L"随块";
constexpr std::size_t kLongestName = 255;

// Lineweights of the editor, hundredths of a millimetre, after its three special ones.
constexpr Adesk::Int32 kLineWeights[] = {-3, -1, -2, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                                         50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

std::wstring linetypeName(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbLinetypeTableRecord> linetype(id, AcDb::kForRead);
    const ACHAR* name = nullptr;
    const bool isKnown = linetype.openStatus() == Acad::eOk && linetype->getName(name) == Acad::eOk;
    // What the editor draws where the drawing does not define the linetype.
    return isKnown ? name : L"Continuous";
}

}  // namespace

std::wstring colorText(const AcCmColor& color) {
    if (color.isByLayer()) return kByLayer;
    if (color.isByBlock()) return kByBlock;
    return wide(standard::formatColor(color));
}

bool parseColorText(const std::wstring& text, AcCmColor& color) {
    AcCmColor parsed;
    if (text == kByLayer)
        parsed.setColorMethod(AcCmEntityColor::kByLayer);
    else if (text != kByBlock)
        parsed = standard::parseColor(CString(text.c_str()));
    // What is read back differently was no colour: the reader of standard files is lenient.
    if (colorText(parsed) != text) return false;
    color = parsed;
    return true;
}

std::wstring lineWeightText(Adesk::Int32 code) {
    return wide(standard::formatLineWeight(code));
}

bool parseLineWeightText(const std::wstring& text, Adesk::Int32& code) {
    const auto found = std::find_if(std::begin(kLineWeights), std::end(kLineWeights),
                                    [&](Adesk::Int32 weight) { return lineWeightText(weight) == text; });
    if (found == std::end(kLineWeights)) return false;
    code = *found;
    return true;
}

std::vector<std::wstring> lineWeightTexts() {
    std::vector<std::wstring> texts;
    for (const Adesk::Int32 weight : kLineWeights)
        texts.push_back(lineWeightText(weight));
    return texts;
}

std::wstring refuseLayerName(const std::wstring& name) {
    if (name.empty()) return L"图层名不能为空。";
    if (name.size() > kLongestName) return L"图层名太长。";
    const bool hasForbidden = name.find_first_of(L"<>/\\\":;?*|,=`") != std::wstring::npos ||
                              std::any_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; });
    if (hasForbidden) return L"图层名不能含有 < > / \\ \" : ; ? * | , = `。";
    return {};
}

std::wstring refuseColor(const std::wstring& text) {
    AcCmColor ignored;
    return parseColorText(text, ignored) ? L"" : L"颜色应为 1 到 255、\"红,绿,蓝\"、随层或随块。";
}

std::vector<std::wstring> linetypeNames() {
    std::vector<std::wstring> names = {L"Continuous"};
    std::vector<LinetypeNode> linetypes;
    PwxTool::GetAllLinetype(linetypes);
    for (const LinetypeNode& linetype : linetypes)
        names.push_back(wide(linetype.Name));
    return names;
}

bool readLayer(AcDbObjectId layer, DrawnLayer& out) {
    const AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForRead);
    const ACHAR* name = nullptr;
    if (record.openStatus() != Acad::eOk || record->getName(name) != Acad::eOk) return false;
    out = {layer,
           name,
           record->color(),
           linetypeName(record->linetypeObjectId()),
           record->lineWeight(),
           record->isOff(),
           record->isFrozen(),
           record->isLocked()};
    return true;
}

const std::vector<std::wstring>& layerColumns() {
    static const std::vector<std::wstring> columns = {L"图层名", L"状态", L"颜色", L"线型"};
    return columns;
}

std::vector<std::wstring> layerCells(const DrawnLayer& layer) {
    std::wstring state = layer.isOff ? L"关" : L"开";
    if (layer.isFrozen) state += L" 冻结";
    if (layer.isLocked) state += L" 锁定";
    return {layer.name, state, colorText(layer.color), layer.linetype};
}

}  // namespace qrs::layers
