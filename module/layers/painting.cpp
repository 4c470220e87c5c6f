// Paints layers one colour, and gives them their own colours back.
#include <set>
#include <string>
#include <vector>

#include "aced.h"
#include "acedads.h"
#include "adscodes.h"
#include "dbobjptr.h"
#include "layers/colorrecord.h"
#include "layers/layerlistdlg.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "PipeNodes.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "tools/arrayloop.h"
#include "tools/drawing.h"

using namespace qrs::layers;
using namespace qrs::tools;

namespace {

constexpr const wchar_t* kColorValue = L"LayerOnlyColor";
constexpr int kFirstChoice = 7;    // white, for who never chose
constexpr int kGreatestTyped = 7;  // others come from the colour dialog
constexpr int kGreatestIndex = 255;

TRegKey pwxConfig() {
    return TRegKey(GetRegLocation(L"PWXConfig"));
}

int lastColor() {
    const int index = pwxConfig().GetInteger(kColorValue, kFirstChoice);
    return index >= 1 && index <= kGreatestIndex ? index : kFirstChoice;
}

void keepColor(int index) {
    if (!pwxConfig().WriteInteger(kColorValue, index)) QrsExport::PrintRefusal(L"\n不能保存设置 %s。\n", kColorValue);
}

AcCmColor indexColor(int index) {
    AcCmColor color;
    color.setColorIndex(static_cast<Adesk::UInt16>(index));
    return color;
}

void chooseColor(int& index) {
    AcCmColor color = indexColor(index);
    if (!acedSetColorDialogTrueColor(color, Adesk::kFalse, color)) return;
    if (const int chosen = color.colorIndex(); chosen >= 1 && chosen <= kGreatestIndex) index = chosen;
}

void chooseLayers(AcDbObjectIdArray& chosen) {
    AcDbObjectIdArray all;
    PwxTool::GetAllLayerIds(workingDatabase(), all);
    CSelectLayerDlg dialog(all, chosen);
    if (dialog.show() == qrs::platform::kDialogOk) chosen = dialog.ChosenLayers();
}

// False when the user ends the command.
bool ask(int& index, AcDbObjectIdArray& layers) {
    for (;;) {
        CString prompt;
        prompt.Format(
            L"\n请输入平面图要变成的颜色(1-红/2-黄/3-绿/4-青/5-蓝/6-粉/7-白)[选择图层(E)/选择颜色(C)]"
            L"<当前颜色值(%d)>:",
            index);
        acedInitGet(0, L"E C");
        int typed = 0;
        const int answer = acedGetInt(prompt, &typed);
        if (answer == RTNONE) return true;
        if (answer == RTKWORD) {
            ACHAR keyword[133];
            if (acedGetInput(keyword) != RTNORM) return false;
            if (std::wstring(keyword) == L"E")
                chooseLayers(layers);
            else
                chooseColor(index);
        } else if (answer != RTNORM) {
            return false;
        } else if (typed >= 1 && typed <= kGreatestTyped) {
            index = typed;
            return true;
        } else {
            QrsExport::PrintRefusal(L"\n颜色值应为 1 到 %d 的整数！", kGreatestTyped);
        }
    }
}

std::vector<LayerColor> colorsOf(const AcDbObjectIdArray& layers) {
    std::vector<LayerColor> colors;
    for (const AcDbObjectId& id : layers) {
        const AcDbLayerTableRecordPointer layer(id, AcDb::kForRead);
        const ACHAR* name = nullptr;
        if (layer.openStatus() == Acad::eOk && layer->getName(name) == Acad::eOk)
            colors.push_back({name, layer->color().colorIndex()});
    }
    return colors;
}

std::set<CString, LayerNameLess> namesOf(const std::vector<LayerColor>& colors) {
    std::set<CString, LayerNameLess> names;
    for (const LayerColor& color : colors)
        names.insert(color.layer.c_str());
    return names;
}

// A second run over the same layers would put the one colour in place of the colours that the first one kept.
bool mayReplaceRecord(const std::vector<LayerColor>& colors) {
    const auto kept = readColorRecord(workingDatabase());
    if (!kept || namesOf(*kept) != namesOf(colors)) return true;
    acedInitGet(0, L"Y N");
    ACHAR answer[133];
    return acedGetKword(L"\n警告:本次操作的图层与上次一致，是否继续<N>:", answer) == RTNORM &&
           std::wstring(answer) == L"Y";
}

// What is off stays off.
void paint(const AcDbObjectIdArray& layers, int index) {
    const AcCmColor color = indexColor(index);
    changeLayers(
        layers, [&](const AcDbLayerTableRecord& layer) { return layer.color() == color; },
        [&](AcDbLayerTableRecord& layer) { layer.setColor(color); });
}

void regenerate() {
    acedCommandS(RTSTR, L"REGEN", RTNONE);
}

}  // namespace

void CLayerToolBar::SetOneColor() {
    int index = lastColor();
    AcDbObjectIdArray layers;
    if (!ask(index, layers)) return;
    if (layers.isEmpty()) PwxTool::GetAllLayerIds(workingDatabase(), layers);
    const std::vector<LayerColor> colors = colorsOf(layers);
    if (!mayReplaceRecord(colors)) return;
    if (!writeColorRecord(workingDatabase(), colors)) {
        // Nobody could restore the colours.
        QrsExport::PrintRefusal(L"\n此图形文件的格式不能保存图层原来的颜色，图层颜色没有改变！");
        return;
    }
    paint(layers, index);
    regenerate();
    keepColor(index);
}

void CLayerToolBar::RestoreColor() {
    const auto kept = readColorRecord(workingDatabase());
    if (!kept) {
        QrsExport::PrintRefusal(L"\n没有找到相关信息，图层颜色恢复失败！");
        return;
    }
    for (const LayerColor& color : *kept) {
        AcDbObjectIdArray layer;
        layer.append(QrsExport::GetLayerIdFromString(color.layer));
        paint(layer, color.index);
    }
    eraseColorRecord(workingDatabase());
    regenerate();
}
