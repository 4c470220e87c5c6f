// Lists systems and layers of the chosen group, and edits them on a copy until OK.
#include "dialogs/pipesettingdlg.h"

#include <utility>

#include "afxwin.h"
#include "axlock.h"
#include "dialogs/layerdefdlg.h"
#include "dialogs/pipesystemdlg.h"
#include "layers/layerfields.h"
#include "PipeSystemTool.h"
#include "standard/layerlookup.h"
#include "standard/text.h"
#include "standard/values.h"

using namespace qrs::dialogs;
using namespace qrs::platform;
using qrs::standard::makeText;
using qrs::standard::StandardEdit;
using qrs::standard::wide;

namespace {

void tell(const std::wstring& message) {
    AfxMessageBox(message.c_str(), MB_OK | MB_ICONEXCLAMATION);
}

template <class Node>
std::vector<std::wstring> namesOf(const std::vector<std::unique_ptr<Node>>& nodes) {
    std::vector<std::wstring> names;
    for (const auto& node : nodes)
        names.push_back(wide(node->GroupName()));
    return names;
}

std::wstring firstOf(const std::vector<std::wstring>& names) {
    return names.empty() ? std::wstring() : names.front();
}

CString layerNameBy(const qrs::standard::Standard& standard, const CString& type, const CString& system) {
    for (const qrs::standard::NameRule& rule : standard.nameRules)
        if (rule.LayerType == type) return rule.LayerPrefix + system + rule.LayerSuffix;
    return system + L"-" + type;
}

// Why a new system cannot have its layers, which are named after it; empty when it can.
std::wstring refuseLayers(const qrs::standard::Standard& standard, const PipeNode& system) {
    for (int i = 0; i < system.GetLayerNum(); ++i) {
        const CString name = system.FindLayerNode(i)->LayerName;
        const std::wstring refusal = qrs::layers::refuseLayerName(wide(name));
        if (!refusal.empty()) return refusal;
        if (qrs::standard::isLayerOfAnother(standard, system.PipeName, name))
            return L"图层 " + wide(name) + L" 已属于另一个管线系统。";
    }
    return {};
}

}  // namespace

std::unique_ptr<PipeNode> qrs::dialogs::makeSystem(const standard::Standard& standard, const PipeGroupNode& group,
                                                   const CString& name, const PipeNode* pattern) {
    std::unique_ptr<PipeNode> system(pattern ? pattern->Clone() : new PipeNode);
    while (LayerNode* layer = system->FindLayerNode(0))
        system->DelLayerNode(layer);
    system->PipeOriginalName = L"";
    system->PipeName = name;
    system->CanDel = system->CanName = true;
    for (const standard::CreateRule& rule : standard.createRules) {
        if (rule.GroupName != group.GroupName()) continue;
        for (const CString& type : rule.LayerTypes) {
            const LayerNode* like = pattern ? pattern->FindLayerNode(type) : nullptr;
            auto layer = like ? std::make_unique<LayerNode>(*like) : std::make_unique<LayerNode>();
            if (!like) {
                layer->LayerColor.setColorIndex(7);
                layer->LineStyle = L"Continuous";
            }
            layer->OldKey = L"";
            layer->SystemName = name;
            layer->LayerType = type;
            layer->LayerName = layerNameBy(standard, type, name);
            system->AddLayerNode(layer.release());
        }
    }
    return system;
}

CPipeSettingDlg::CPipeSettingDlg(std::unique_ptr<StandardEdit> edit, bool editable, bool updatesDrawing)
    : Form(L"管线系统设置"), edit_(std::move(edit)), editable_(editable), updatesDrawing_(updatesDrawing) {}

PipeGroupNode* CPipeSettingDlg::group() const {
    return edit_->group(groups_->text);
}

PipeNode* CPipeSettingDlg::chosenSystem() const {
    const std::optional<std::size_t> row = systems_->chosenRow();
    return row && group() ? group()->FindPipeSystem(static_cast<int>(*row)) : nullptr;
}

void CPipeSettingDlg::describe() {
    form().addLabel(L"标准: " + wide(PipeSystemTool::GetCurrentStandardName()));
    addSystemControls();
    addOtherControls();
    list(0);
}

void CPipeSettingDlg::addSystemControls() {
    const std::vector<std::wstring> names = namesOf(edit_->standard().groups);
    groups_ = &form().addCombo(L"系统组", names, firstOf(names));
    groups_->changed = [this] { list(0); };
    systems_ = &form().addList(L"管线系统", {L"系统名", L"标注", L"管线宽度", L"室内管材", L"室外管材", L"图层数"},
                               ListKind::One);
    if (!editable_) return;
    form().addButton(L"系统属性...", [this] { editSystem(); });
    form().addButton(L"系统图层...", [this] { editLayers(); });
    form().addButton(L"新建系统...", [this] { addSystem(); });
    form().addButton(L"删除系统", [this] { removeSystem(); });
    form().addButton(L"上移", [this] { moveSystem(true); });
    form().addButton(L"下移", [this] { moveSystem(false); });
}

void CPipeSettingDlg::addOtherControls() {
    const std::vector<std::wstring> names = namesOf(edit_->standard().otherLayers);
    others_ = &form().addCombo(L"其他图层组", names, firstOf(names));
    if (editable_) form().addButton(L"其他图层...", [this] { editOtherLayers(); });
}

void CPipeSettingDlg::list(std::size_t chosen) {
    systems_->rows.clear();
    const PipeGroupNode* shown = group();
    for (int i = 0; shown && i < shown->GetSystemNum(); ++i) {
        const PipeNode& system = *shown->FindPipeSystem(i);
        systems_->addRow({wide(system.PipeName), wide(system.Dim), wide(qrs::standard::formatReal(system.LineWidth)),
                          wide(system.Material), wide(system.OutdoorMaterial), std::to_wstring(system.GetLayerNum())});
    }
    systems_->chooseRow(chosen);
}

void CPipeSettingDlg::editSystem() {
    PipeNode* system = chosenSystem();
    if (!system) return;
    CPipeSystemDlg dialog(edit_->standard(), *group(), *system);
    if (dialog.show() != qrs::platform::kDialogOk) return;
    changed_ = true;
    list(*systems_->chosenRow());
}

// The list of layers changes what it is given at once, so it gets a copy.
void CPipeSettingDlg::editLayers() {
    PipeNode* system = chosenSystem();
    if (!system) return;
    const std::unique_ptr<PipeNode> copy(system->Clone());
    CLayerDefListDlg dialog(edit_->standard(), *copy);
    if (dialog.show() != qrs::platform::kDialogOk) return;
    system->CopyFrom(copy.get());
    changed_ = true;
    list(*systems_->chosenRow());
}

void CPipeSettingDlg::addSystem() {
    PipeGroupNode* into = group();
    if (!into) return;
    std::wstring name;
    const auto made = [&](const std::wstring& typed) {
        return makeSystem(edit_->standard(), *into, makeText(typed), chosenSystem());
    };
    const auto refuse = [&](const std::wstring& typed) {
        const std::wstring refusal = CPipeSystemDlg::RefuseName(edit_->standard(), nullptr, typed);
        return refusal.empty() ? refuseLayers(edit_->standard(), *made(typed)) : refusal;
    };
    if (!AskText(L"新建管线系统", L"系统名", name, refuse)) return;
    into->AddPipeSystem(made(name).release());
    changed_ = true;
    list(static_cast<std::size_t>(into->GetSystemNum() - 1));
}

void CPipeSettingDlg::removeSystem() {
    PipeNode* system = chosenSystem();
    if (!system) return;
    if (!system->CanDel) return tell(L"系统 " + wide(system->PipeName) + L" 不能删除。");
    // Of two systems of one name, which a damaged file may hold, only one can be found by it.
    if (group()->FindPipeSystem(system->PipeName) != system)
        return tell(L"系统 " + wide(system->PipeName) + L" 重名。");
    group()->DeletePipeSystem(CString(system->PipeName));
    delete system;
    changed_ = true;
    list(0);
}

void CPipeSettingDlg::moveSystem(bool up) {
    PipeNode* system = chosenSystem();
    bool found = false;
    if (!system || !group()->MovePipeSystem(system->PipeName, up, found)) return;
    changed_ = true;
    const std::size_t row = *systems_->chosenRow();
    list(up ? row - 1 : row + 1);
}

void CPipeSettingDlg::editOtherLayers() {
    OtherLayerNode* layers = edit_->otherLayers(others_->text);
    if (!layers) return;
    OtherLayerNode copy;
    copy.CopyFrom(layers);
    CLayerDefListDlg dialog(copy);
    if (dialog.show() != qrs::platform::kDialogOk) return;
    layers->CopyFrom(&copy);
    changed_ = true;
}

void CPipeSettingDlg::pressOk() {
    if (changed_ && editable_) {
        if (!edit_->save()) return;
        if (updatesDrawing_) qrs::standard::updateDrawingLayers();
    }
    Form::pressOk();
}

bool PipeSystemTool::ShowPipeSettingDlg(int page, bool editable, bool updatesDrawing) {
    (void)page;
    std::unique_ptr<StandardEdit> edit = StandardEdit::begin();
    if (!edit) return false;
    const AcAxDocLock lock;
    CPipeSettingDlg dialog(std::move(edit), editable, updatesDrawing && lock.lockStatus() == Acad::eOk);
    return dialog.show() == qrs::platform::kDialogOk;
}

void qrs::dialogs::gxsz() {
    PipeSystemTool::ShowPipeSettingDlg(0, true, false);
}
