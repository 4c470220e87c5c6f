// Start-up and tear-down, step by step.
#include "frame/startup.h"

#include <memory>
#include <optional>
#include <utility>

#include "frame/cmdconfig.h"
#include "frame/cmdreactor.h"
#include "frame/cmdtable.h"
#include "frame/docglobals.h"
#include "frame/specdata.h"
#include "host/platform/callrecord.h"
#include "host/platform/window.h"
#include "layers/layertoolbar.h"
#include "panel/layercontrolbar.h"
#include "PipeSystemTool.h"
#include "qrs_kernal.h"
#include "qrs_public.h"
#include "rxmfcapi.h"
#include "standard/startup.h"
#include "tools/guard.h"

namespace qrs::frame {

namespace {

// Steps that make no call to the host are recorded here, so that their place in the order can be seen too.
using platform::recordCall;

std::unique_ptr<TPipeAppDocGlobals> docGlobals;
std::unique_ptr<TCmdReactor> cmdReactor;
// Between the two steps of the start-up that look into it.
std::optional<CmdConfig> cmdConfig;

constexpr const wchar_t* kAlignTypeValue = L"nAlignTypeForVPipeDim4";
constexpr double kSamePoint = 0.001;  // drawing units

// Commands that an older sibling of this module registers. All but "tcgj" are registered again by this one.
constexpr const wchar_t* kStaleGroup = L"TAPI_CMD";
const wchar_t* const staleCommands[] = {L"tcgj",          L"hbtc",          L"OpenLayer",    L"OpenSelLayer",
                                        L"CloseSelLayer", L"EraseSelLayer", L"ConvertLayer", L"UnLockSelLayer",
                                        L"LockSelLayer",  L"sfxc",          L"dcsz",         L"drsz"};

// Items of the command configuration that set flags of the standard.
struct FlagItem {
    const wchar_t* function;
    const wchar_t* item;
    Adesk::Int32* flag;
};
const FlagItem flagItems[] = {
    {L"图层功能", L"图层自动分组", &g_bLayerAutoGrouping},
    {L"给水功能", L"重置法兰间距", &g_bResetFlangeSpace},
    {L"给水功能", L"法兰样式", &g_nFlangeStyle},
};

TRegKey pwxConfig() {
    return TRegKey(GetRegLocation(L"PWXConfig"));
}

void removeStaleCommands() {
    for (const wchar_t* name : staleCommands)
        if (AcEdCommandStack* commands = acedRegCmds) commands->removeCmd(kStaleGroup, name);
}

void registerCommands() {
    for (const CommandRow& row : commandTable)
        if (AcEdCommandStack* commands = acedRegCmds)
            commands->addCommand(kCommandGroup, row.name, row.name, row.flags, row.handler, nullptr, -1, nullptr,
                                 nullptr);
}

void createDocGlobals() {
    docGlobals = std::make_unique<TPipeAppDocGlobals>();
}

void readAlignType() {
    std::int32_t value = 0;
    if (pwxConfig().ReadInteger(kAlignTypeValue, value)) g_nAlignTypeForVPipeDim4 = value;
}

void readCmdConfig() {
    cmdConfig = CmdConfig::read();
    if (!cmdConfig) return;
    cmdConfig->setDefaults();
    for (const FlagItem& item : flagItems) {
        int value = 0;
        if (TDwgSettingDefaults::Current().GetInteger(item.function, item.item, value)) *item.flag = value;
    }
}

// A missing file or item leaves the fittings unread, although nothing disables them then: installations without the
// item have no such file.
void readFittings() {
    const std::optional<CmdConfig> config = std::exchange(cmdConfig, std::nullopt);
    if (config && config->usesDoublePipeFittings()) readDoublePipeFittings(kSamePoint);
}

// Dialogs are shown over the editor's frame.
void setDialogOwner() {
    CWnd* const frame = acedGetAcadFrame();
    platform::setWindowOwner(frame ? frame->GetSafeHwnd() : nullptr);
}

void addCmdReactor() {
    if (cmdReactor) return;
    cmdReactor = std::make_unique<TCmdReactor>();
    if (AcEditor* editor = acedEditor) editor->addReactor(cmdReactor.get());
}

void removeCmdReactor() {
    if (!cmdReactor) return;
    if (AcEditor* editor = acedEditor) editor->removeReactor(cmdReactor.get());
    cmdReactor.reset();
}

void buildLayerMaps() {
    recordCall("standard::initLayerMaps");
    standard::initLayerMaps();
}

void readOldLayerDefinitions() {
    recordCall("standard::readOldLayerDefinitions");
    standard::readOldLayerDefinitions();
}

void removeCommands() {
    if (AcEdCommandStack* commands = acedRegCmds) commands->removeGroup(kCommandGroup);
}

void deleteToolBar() {
    recordCall("CLayerToolBar::Release");
    CLayerToolBar::Release();
}

void releaseStandard() {
    recordCall("standard::releaseStandard");
    standard::releaseStandard();
}

void deleteDocGlobals() {
    docGlobals.reset();
}

// Told only when the next start would find another value than the one set now.
void writeAlignType() {
    const TRegKey config = pwxConfig();
    if (config.WriteInteger(kAlignTypeValue, g_nAlignTypeForVPipeDim4)) return;
    if (config.GetInteger(kAlignTypeValue, 0) != g_nAlignTypeForVPipeDim4)
        QrsExport::PrintRefusal(L"\n不能保存设置 %s。\n", kAlignTypeValue);
}

using Step = void (*)();

const Step startSteps[] = {
    removeStaleCommands,  // before the registering: eleven of the names are registered again
    registerCommands,
    setDialogOwner,
    // What needs the tree finds none when no standard was loaded; the rest is done all the same.
    [] { standard::loadCurrentStandard(); },
    readOldLayerDefinitions,
    standard::convertOldSystemNames,
    standard::applyObjectColors,
    standard::readLinetypeTextSettings,
    standard::offerPipeMaterials,
    createDocGlobals,
    buildLayerMaps,
    readAlignType,
    readCmdConfig,
    readFittings,
    addCmdReactor,
};

// Not the start-up backwards: the documents' entries outlive the standard, and the command reactor goes last, so that
// it hears of everything until the module is gone.
const Step endSteps[] = {
    removeCommands,   deleteToolBar,  CLayerControlBar::Close, releaseStandard, standard::withdrawPipeMaterials,
    deleteDocGlobals, writeAlignType, removeCmdReactor,
};

AcApDocument* currentDocument() {
    AcApDocManager* manager = acDocManager;
    return manager ? manager->curDocument() : nullptr;
}

}  // namespace

void startUp() {
    for (const Step step : startSteps)
        tools::guarded(step);
}

void tearDown() {
    for (const Step step : endSteps)
        tools::guarded(step);
}

void drawingLoaded() {
    TPipeDocEntry* entry = docGlobals ? docGlobals->find(currentDocument()) : nullptr;
    if (entry) entry->attach();
}

void drawingUnloads() {
    if (docGlobals) docGlobals->release(currentDocument());
}

}  // namespace qrs::frame
