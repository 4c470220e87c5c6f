// The layer control panel.
#include "panel/layercontrolbar.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "acedads.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "host/platform/dialog.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "qrs_kernal.h"
#include "rxmfcapi.h"
#include "standard/holder.h"
#include "standard/text.h"
#include "tools/drawing.h"
#include "tools/layertag.h"

using namespace qrs::layers;
using namespace qrs::platform;
using qrs::standard::view;
using qrs::standard::wide;

struct CLayerControlBar::StateButton {
    const wchar_t* caption;
    bool (AcDbLayerTableRecord::*has)() const;
    Acad::ErrorStatus (AcDbLayerTableRecord::*set)(bool);
    bool value;
};

namespace {

constexpr const wchar_t* kTitle = L"图层控制";
constexpr const wchar_t* kAllSystems = L"全部";

// The commands that the panel's buttons run; each asks at the command line.
struct CommandButton {
    const wchar_t* caption;
    void (CLayerToolBar::*operation)();
};
constexpr CommandButton kCommandButtons[] = {
    {L"全部显示", &CLayerToolBar::SetAllPipeLayOpen}, {L"关选中层<", &CLayerToolBar::CloseSelLayer},
    {L"只开选中层<", &CLayerToolBar::OpenSelLayer},   {L"锁选中层<", &CLayerToolBar::LockSelLayer},
    {L"解锁选中层<", &CLayerToolBar::UnLockSelLayer}, {L"冻结选中层<", &CLayerToolBar::FrozenLayer},
    {L"全部解冻", &CLayerToolBar::UnFrozenAllLayer},
};

// The buttons that tag objects with the discipline they belong to.
struct TagButton {
    const wchar_t* caption;
    const wchar_t* discipline;
};
constexpr TagButton kTagButtons[] = {
    {L"给排水标识<", qrs::tools::kPlumbingTag},
    {L"建筑标识<", qrs::tools::kArchitectureTag},
};

// The panel stays in the editor's message loop while it is shown; it keeps no message from the editor.
BOOL passMessage(MSG*) {
    return FALSE;
}

std::unique_ptr<CLayerControlBar> thePanel;

}  // namespace

void CLayerControlBar::Toggle() {
    if (thePanel) return Close();
    auto panel = std::make_unique<CLayerControlBar>();
    if (!panel->Create(nullptr, kTitle, 0, RECT{0, 0, 0, 0}, nullptr, 0)) {
        QrsExport::PrintRefusal(L"\n图层控制窗口无法建立。\n");
        return panel->print();
    }
    thePanel = std::move(panel);
    acedRegisterFilterWinMsg(passMessage);
    thePanel->run();
}

void CLayerControlBar::Close() {
    if (!thePanel) return;
    acedRemoveFilterWinMsg(passMessage);
    if (IsWindow(thePanel->GetSafeHwnd())) thePanel->DestroyWindow();
    thePanel.reset();
}

void CLayerControlBar::Refresh() {
    if (!thePanel || !thePanel->list_) return;
    thePanel->readStandard();
    thePanel->fill();
}

void CLayerControlBar::run() {
    Dialog dialog(kTitle);
    describe(dialog);
    showDialog(dialog);
    systems_ = list_ = nullptr;
    // Once for all that was changed: it is typed when the command has ended.
    if (std::exchange(changed_, false)) refreshLayerState();
}

void CLayerControlBar::describe(Dialog& dialog) {
    readStandard();
    std::vector<std::wstring> systems = {kAllSystems};
    for (const Row& row : standardLayers_)
        if (std::find(systems.begin(), systems.end(), wide(row.system)) == systems.end())
            systems.push_back(wide(row.system));
    systems_ = &dialog.addCombo(L"系统", std::move(systems), kAllSystems);
    systems_->changed = [this] { fill(); };
    list_ = &dialog.addList(L"图中的标准图层", {L"图层名", L"状态", L"颜色", L"系统", L"类型"}, ListKind::Many);
    addButtons(dialog);
    fill();
}

// What the list would show.
void CLayerControlBar::print() {
    Dialog dialog(kTitle);
    describe(dialog);
    for (const ListRow& row : list_->rows) {
        std::wstring line;
        for (const std::wstring& cell : row.cells)
            line += (line.empty() ? L"" : L"  ") + cell;
        acutPrintf(L"%s\n", line.c_str());
    }
    systems_ = list_ = nullptr;
}

void CLayerControlBar::addButtons(Dialog& dialog) {
    using Record = AcDbLayerTableRecord;
    static constexpr StateButton kStateButtons[] = {
        {L"开", &Record::isOff, &Record::setIsOff, false},
        {L"关", &Record::isOff, &Record::setIsOff, true},
        {L"冻结", &Record::isFrozen, &Record::setIsFrozen, true},
        {L"解冻", &Record::isFrozen, &Record::setIsFrozen, false},
        {L"锁定", &Record::isLocked, &Record::setIsLocked, true},
        {L"解锁", &Record::isLocked, &Record::setIsLocked, false},
    };
    for (const StateButton& button : kStateButtons)
        dialog.addButton(button.caption, [this, &button] { change(button); });
    for (const CommandButton& button : kCommandButtons)
        dialog.addButton(
            button.caption,
            [this, &button] {
                (CLayerToolBar::Instance().*button.operation)();
                fill();
            },
            true);
    for (const TagButton& button : kTagButtons)
        dialog.addButton(
            button.caption, [&button] { qrs::tools::tagPicked(CString(button.discipline)); }, true);
}

void CLayerControlBar::readStandard() {
    standardLayers_.clear();
    const qrs::standard::Standard* standard = qrs::standard::currentStandard();
    if (!standard) return;
    for (const auto& group : standard->groups)
        for (int i = 0; i < group->GetSystemNum(); ++i) {
            const PipeNode& system = *group->FindPipeSystem(i);
            for (int j = 0; j < system.GetLayerNum(); ++j) {
                const LayerNode& layer = *system.FindLayerNode(j);
                standardLayers_.push_back({system.PipeName, layer.LayerType, layer.LayerName});
            }
        }
    for (const auto& group : standard->otherLayers)
        for (int i = 0; i < group->GetLayerNum(); ++i) {
            const LayerNode& layer = *group->FindLayerNode(i);
            standardLayers_.push_back({group->GroupName(), layer.LayerType, layer.LayerName});
        }
}

// The layers that the drawing has, each once, under the system that names it first. Chosen ones stay chosen.
void CLayerControlBar::fill() {
    AcDbObjectIdArray chosenBefore;
    for (std::size_t i = 0; i < list_->rows.size(); ++i)
        if (list_->rows[i].chosen) chosenBefore.append(listed_[i].id);
    list_->rows.clear();
    listed_.clear();
    const AcDbLayerTablePointer table(qrs::tools::workingDatabase(), AcDb::kForRead);
    if (table.openStatus() != Acad::eOk) return;
    AcDbObjectIdArray met;
    for (const Row& row : standardLayers_) {
        AcDbObjectId id;
        DrawnLayer layer;
        const bool isShown = systems_->text == kAllSystems || systems_->text == view(row.system);
        if (!isShown || table->getAt(row.layer, id) != Acad::eOk || met.contains(id) || !readLayer(id, layer)) continue;
        met.append(id);
        std::vector<std::wstring> cells = layerCells(layer);
        cells.resize(3);
        cells.push_back(wide(row.system));
        cells.push_back(wide(row.type));
        list_->addRow(std::move(cells), chosenBefore.contains(id));
        listed_.push_back(std::move(layer));
    }
}

void CLayerControlBar::change(const StateButton& button) {
    for (std::size_t i = 0; i < listed_.size(); ++i) {
        if (!list_->rows[i].chosen) continue;
        const AcDbObjectPointer<AcDbLayerTableRecord> layer(listed_[i].id, AcDb::kForRead);
        if (layer.openStatus() != Acad::eOk || ((*layer).*button.has)() == button.value) continue;
        if (layer->upgradeOpen() == Acad::eOk && ((*layer).*button.set)(button.value) == Acad::eOk)
            changed_ = true;
        else
            QrsExport::PrintRefusal(L"\n图层 %s 不能改变。\n", listed_[i].name.c_str());
    }
    fill();
}
