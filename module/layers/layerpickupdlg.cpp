// Follows the choice of group, system and type, and takes the picked layer's settings over.
#include "layers/layerpickupdlg.h"

#include <utility>

#include "adscodes.h"
#include "afxwin.h"
#include "standard/layerlookup.h"
#include "standard/text.h"
#include "tools/picking.h"

using namespace qrs::layers;
using namespace qrs::platform;
using qrs::standard::makeText;
using qrs::standard::wide;

namespace {

enum Taken { kName, kColor, kLinetype, kLineWeight };
const wchar_t* const takenCaptions[] = {L"取图层名", L"取颜色", L"取线型", L"取线宽"};

std::wstring settingsText(const std::wstring& name, const AcCmColor& color, const std::wstring& linetype,
                          Adesk::Int32 weight) {
    return name + L", 颜色 " + colorText(color) + L", 线型 " + linetype + L", 线宽 " + lineWeightText(weight);
}

void offer(Control& combo, std::vector<std::wstring> choices) {
    combo.text = choices.empty() ? std::wstring() : choices.front();
    combo.choices = std::move(choices);
}

}  // namespace

CLayerPickUpDlg::CLayerPickUpDlg() : Form(L"图层提取") {}

int CLayerPickUpDlg::show() {
    edit_ = qrs::standard::StandardEdit::begin();
    return edit_ ? Form::show() : kDialogCancel;
}

void CLayerPickUpDlg::describe() {
    pending_ = changed_ = false;
    form().addButton(
        L"拾取<", [this] { pick(); }, true);
    pickedLabel_ = &form().addLabel(L"拾取的图层: ");
    showPicked();
    for (int i = 0; i < 4; ++i)
        takes_[i] = &form().addCheckBox(takenCaptions[i], true);
    std::vector<std::wstring> groups;
    for (const auto& group : edit_->standard().groups)
        groups.push_back(wide(group->GroupName()));
    for (const auto& group : edit_->standard().otherLayers)
        groups.push_back(wide(group->GroupName()));
    groups_ = &form().addCombo(L"系统组", groups, groups.empty() ? std::wstring() : groups.front());
    groups_->changed = [this] { listSystems(); };
    systems_ = &form().addCombo(L"管线系统", {}, {});
    systems_->changed = [this] { listTypes(); };
    types_ = &form().addCombo(L"图层类型", {}, {});
    types_->changed = [this] { showTarget(); };
    targetLabel_ = &form().addLabel(L"标准图层: ");
    form().addButton(L"应用", [this] { apply(); });
    listSystems();
}

PipeGroupNode* CLayerPickUpDlg::group() const {
    return edit_->group(groups_->text);
}

OtherLayerNode* CLayerPickUpDlg::otherGroup() const {
    return group() ? nullptr : edit_->otherLayers(groups_->text);
}

PipeNode* CLayerPickUpDlg::system() const {
    return group() ? group()->FindPipeSystem(makeText(systems_->text)) : nullptr;
}

LayerNode* CLayerPickUpDlg::target() const {
    const CString type = makeText(types_->text);
    if (PipeNode* chosen = system()) return chosen->FindLayerNode(type);
    return otherGroup() ? otherGroup()->FindLayerNode(type) : nullptr;
}

void CLayerPickUpDlg::pick() {
    AcDbObjectId layer;
    if (qrs::tools::pickLayer(L"\n请选择要提取图层的图元<退出>:", layer) != RTNORM) return;
    pending_ = readLayer(layer, picked_);
    showPicked();
}

void CLayerPickUpDlg::showPicked() {
    pickedLabel_->text =
        picked_.id.isNull() ? L"-" : settingsText(picked_.name, picked_.color, picked_.linetype, picked_.lineWeight);
}

void CLayerPickUpDlg::listSystems() {
    std::vector<std::wstring> names;
    for (int i = 0; group() && i < group()->GetSystemNum(); ++i)
        names.push_back(wide(group()->FindPipeSystem(i)->PipeName));
    // Groups of other layers have no systems.
    systems_->enabled = !names.empty();
    offer(*systems_, std::move(names));
    listTypes();
}

void CLayerPickUpDlg::listTypes() {
    listTypesOf(system(), otherGroup());
    showTarget();
}

void CLayerPickUpDlg::listTypesOf(const PipeNode* chosen, const OtherLayerNode* others) {
    std::vector<std::wstring> types;
    const int count = chosen ? chosen->GetLayerNum() : others ? others->GetLayerNum() : 0;
    for (int i = 0; i < count; ++i)
        types.push_back(wide((chosen ? chosen->FindLayerNode(i) : others->FindLayerNode(i))->LayerType));
    offer(*types_, std::move(types));
}

void CLayerPickUpDlg::showTarget() {
    const LayerNode* layer = target();
    targetLabel_->text =
        layer ? settingsText(wide(layer->LayerName), layer->LayerColor, wide(layer->LineStyle), layer->LineWeight)
              : std::wstring(L"-");
}

std::wstring CLayerPickUpDlg::refuseName() const {
    const CString name = makeText(picked_.name);
    if (qrs::tools::isOfReference(picked_.name)) return L"外部参照的图层不能作为标准图层。";
    if (group() && qrs::standard::isLayerOfAnother(edit_->standard(), makeText(systems_->text), name))
        return L"图层 " + picked_.name + L" 已属于另一个管线系统。";
    const LayerNode* same = otherGroup() ? otherGroup()->FindLayerNodeByLayerName(name) : nullptr;
    if (same && same != target()) return L"图层 " + picked_.name + L" 已经存在。";
    return {};
}

bool CLayerPickUpDlg::apply() {
    LayerNode* layer = target();
    const std::wstring refusal = !layer                   ? L"请选择标准图层。"
                                 : picked_.id.isNull()    ? L"请先拾取图元。"
                                 : takes_[kName]->checked ? refuseName()
                                                          : std::wstring();
    if (!refusal.empty()) {
        AfxMessageBox(refusal.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    if (takes_[kName]->checked) layer->LayerName = makeText(picked_.name);
    if (takes_[kColor]->checked) layer->LayerColor = picked_.color;
    if (takes_[kLinetype]->checked) layer->LineStyle = makeText(picked_.linetype);
    if (takes_[kLineWeight]->checked) layer->LineWeight = picked_.lineWeight;
    pending_ = false;
    changed_ = true;
    showTarget();
    return true;
}

void CLayerPickUpDlg::pressOk() {
    if (pending_ && !apply()) return;
    if (changed_ && !edit_->save()) return;
    Form::pressOk();
}
