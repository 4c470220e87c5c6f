// The layer control panel.
#include "panel/layercontrolbar.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "acutads.h"
#include "axlock.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "qrs_kernal.h"
#include "rxmfcapi.h"
#include "standard/holder.h"
#include "standard/text.h"
#include "tools/drawing.h"
#include "tools/guard.h"
#include "tools/layertag.h"

using namespace qrs::layers;
using namespace qrs::platform;
using qrs::standard::view;
using qrs::standard::wide;

struct CLayerControlBar::StateButton {
    const wchar_t* caption;
    bool (AcDbLayerTableRecord::*has)() const;
    // Not a pointer to the setter: releases of the editor's interface differ in what setters answer.
    void (*set)(AcDbLayerTableRecord& layer, bool value);
    bool value;
};

namespace {

constexpr const wchar_t* kTitle = L"图层控制";
constexpr const wchar_t* kAllSystems = L"全部";
constexpr LONG kFromFrame = 80;  // dots from the corner of the editor's frame to the panel's

// The commands that the panel's buttons run; each asks at the command line.
struct CommandButton {
    const wchar_t* caption;
    const wchar_t* command;
    void (CLayerToolBar::*operation)();
};
constexpr CommandButton kCommandButtons[] = {
    {L"全部显示", L"SetAllPipeLayOpen", &CLayerToolBar::SetAllPipeLayOpen},
    {L"关选中层<", L"CloseSelLayer", &CLayerToolBar::CloseSelLayer},
    {L"只开选中层<", L"OpenSelLayer", &CLayerToolBar::OpenSelLayer},
    {L"锁选中层<", L"LockSelLayer", &CLayerToolBar::LockSelLayer},
    {L"解锁选中层<", L"UnLockSelLayer", &CLayerToolBar::UnLockSelLayer},
    {L"冻结选中层<", L"FrozenLayer", &CLayerToolBar::FrozenLayer},
    {L"全部解冻", L"UnFrozenAllLayer", &CLayerToolBar::UnFrozenAllLayer},
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

std::unique_ptr<CLayerControlBar> thePanel;

// The discipline that a tag button wants to be given, until the command that gives it runs.
const wchar_t* wantedTag = nullptr;

void tag(const wchar_t* discipline) {
    qrs::tools::tagPicked(CString(discipline));
}

// Waits until the running command has ended.
void post(const wchar_t* command) {
    QrsExport::PostCommand(command + std::wstring(L"\n"));
}

}  // namespace

BOOL CLayerControlBar::passMessage(MSG* message) {
    return thePanel && thePanel->pane_ && thePanel->pane_->takeMessage(message) ? TRUE : FALSE;
}

void CLayerControlBar::Toggle() {
    if (!hasPanes()) return ask();
    if (thePanel && thePanel->isOnScreen()) {
        thePanel->ShowWindow(SW_HIDE);
        return;
    }
    // A window that the user closed is gone.
    if (thePanel && !IsWindow(thePanel->GetSafeHwnd())) Close();
    if (!thePanel && !open()) return;
    thePanel->refresh();
    thePanel->ShowWindow(SW_SHOWNOACTIVATE);
}

void CLayerControlBar::ask() {
    if (thePanel) return;  // a button of the panel runs a command that asks for the panel
    thePanel = std::make_unique<CLayerControlBar>();
    const std::unique_ptr<CLayerControlBar, void (*)(CLayerControlBar*)> whileShown(
        thePanel.get(), [](CLayerControlBar*) { thePanel.reset(); });
    thePanel->describe();
    showDialog(*thePanel->dialog_);
    // Once for all that was changed: it is typed when the command has ended.
    if (thePanel->changed_) refreshLayerState();
}

bool CLayerControlBar::open() {
    auto panel = std::make_unique<CLayerControlBar>();
    panel->describe();
    if (!panel->createWindow()) {
        QrsExport::PrintRefusal(L"\n图层控制窗口无法建立。\n");
        panel->print();
        return false;
    }
    thePanel = std::move(panel);
    acedRegisterFilterWinMsg(passMessage);
    return true;
}

// Floats over the editor's frame; the pane gives it its size.
bool CLayerControlBar::createWindow() {
    CWnd* const frame = acedGetAcadFrame();
    RECT place{kFromFrame, kFromFrame, 0, 0};
    if (frame) {
        frame->GetWindowRect(&place);
        place.left += kFromFrame;
        place.top += kFromFrame;
    }
    place.right = place.left;
    place.bottom = place.top;
    const auto background = reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(COLOR_BTNFACE + 1));
    if (!CreateEx(WS_EX_TOOLWINDOW, AfxRegisterWndClass(0, nullptr, background), kTitle,
                  WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, place, frame, 0))
        return false;
    pane_ = showPane(*dialog_, GetSafeHwnd());
    return pane_ != nullptr;
}

void CLayerControlBar::Close() {
    wantedTag = nullptr;
    if (!thePanel) return;
    acedRemoveFilterWinMsg(passMessage);
    thePanel->pane_.reset();
    if (IsWindow(thePanel->GetSafeHwnd())) thePanel->DestroyWindow();
    thePanel.reset();
}

void CLayerControlBar::Refresh() {
    if (thePanel && (!thePanel->pane_ || thePanel->isOnScreen())) thePanel->refresh();
}

bool CLayerControlBar::RunTagging() {
    if (!wantedTag) return false;
    tag(std::exchange(wantedTag, nullptr));
    return true;
}

bool CLayerControlBar::isOnScreen() const {
    return IsWindow(GetSafeHwnd()) && IsWindowVisible();
}

void CLayerControlBar::refresh() {
    readStandard();
    fill();
    if (pane_) pane_->update();
}

void CLayerControlBar::describe() {
    dialog_ = std::make_unique<Dialog>(kTitle);
    readStandard();
    std::vector<std::wstring> systems = {kAllSystems};
    for (const Row& row : standardLayers_)
        if (std::find(systems.begin(), systems.end(), wide(row.system)) == systems.end())
            systems.push_back(wide(row.system));
    systems_ = &dialog_->addCombo(L"系统", std::move(systems), kAllSystems);
    systems_->changed = [this] { fill(); };
    list_ = &dialog_->addList(L"图中的标准图层", {L"图层名", L"状态", L"颜色", L"系统", L"类型"}, ListKind::Many);
    addButtons();
    fill();
}

// What the list would show.
void CLayerControlBar::print() const {
    for (const ListRow& row : list_->rows) {
        std::wstring line;
        for (const std::wstring& cell : row.cells)
            line += (line.empty() ? L"" : L"  ") + cell;
        acutPrintf(L"%s\n", line.c_str());
    }
}

void CLayerControlBar::addButtons() {
    using Record = AcDbLayerTableRecord;
    static constexpr auto turnOff = [](Record& layer, bool value) { layer.setIsOff(value); };
    static constexpr auto freeze = [](Record& layer, bool value) { layer.setIsFrozen(value); };
    static constexpr auto lock = [](Record& layer, bool value) { layer.setIsLocked(value); };
    static constexpr StateButton kStateButtons[] = {
        {L"开", &Record::isOff, turnOff, false},    {L"关", &Record::isOff, turnOff, true},
        {L"冻结", &Record::isFrozen, freeze, true}, {L"解冻", &Record::isFrozen, freeze, false},
        {L"锁定", &Record::isLocked, lock, true},   {L"解锁", &Record::isLocked, lock, false},
    };
    for (const StateButton& button : kStateButtons)
        dialog_->addButton(button.caption, [this, &button] { press(button); });
    for (const CommandButton& button : kCommandButtons)
        dialog_->addButton(
            button.caption,
            [this, &button] {
                if (pane_) return post(button.command);
                (CLayerToolBar::Instance().*button.operation)();
                fill();
            },
            true);
    for (const TagButton& button : kTagButtons)
        dialog_->addButton(
            button.caption,
            [this, &button] {
                if (!pane_) return tag(button.discipline);
                wantedTag = button.discipline;
                post(L"gpsbs");
            },
            true);
}

// Where it stays beside the commands, the panel acts outside of any.
void CLayerControlBar::press(const StateButton& button) {
    if (!pane_) return change(button);
    qrs::tools::guarded([&] {
        const AcAxDocLock lock;
        if (lock.lockStatus() == Acad::eOk) change(button);
        if (std::exchange(changed_, false)) refreshLayerState();
    });
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
        AcDbObjectPointer<AcDbLayerTableRecord> opened(listed_[i].id, AcDb::kForRead);
        if (opened.openStatus() != Acad::eOk) continue;
        AcDbLayerTableRecord& layer = *opened.object();
        if ((layer.*button.has)() == button.value) continue;
        if (layer.upgradeOpen() == Acad::eOk) button.set(layer, button.value);
        if ((layer.*button.has)() == button.value)
            changed_ = true;
        else
            QrsExport::PrintRefusal(L"\n图层 %s 不能改变。\n", listed_[i].name.c_str());
    }
    fill();
}
