// The table of the host's own commands.
#include "accmd.h"
#include "host/commands/commands.h"
#include "host/commands/hostcommands.h"
#include "host/editor/hostapp.h"

namespace qrs::host {

namespace {

struct CommandRow {
    const ACHAR* name;
    Adesk::Int32 flags;
    AcRxFunctionPtr function;
    Wanted first = Wanted::Text;  // what its first prompt takes
};

// Commands that open and close drawings run outside any drawing's own context. Short names stand in the table like the
// long ones: they are known without an alias file.
constexpr CommandRow kCommands[] = {
    {L"OPEN", ACRX_CMD_SESSION, &commands::openDrawing, Wanted::Drawing},
    {L"NEW", ACRX_CMD_SESSION, &commands::newDrawing},
    {L"QSAVE", ACRX_CMD_MODAL, &commands::saveDrawing},
    {L"SAVEAS", ACRX_CMD_MODAL, &commands::saveDrawingAs, Wanted::Drawing},
    {L"CLOSE", ACRX_CMD_SESSION, &commands::closeDrawing},
    {L"QUIT", ACRX_CMD_SESSION, &commands::quit},
    {L"EXIT", ACRX_CMD_SESSION, &commands::quit},
    {L"ARX", ACRX_CMD_SESSION, &commands::managePlugins},
    {L"LIST", ACRX_CMD_USEPICKSET, &commands::listEntities},
    {L"LI", ACRX_CMD_USEPICKSET, &commands::listEntities},
    {L"SELECT", ACRX_CMD_USEPICKSET, &commands::selectEntities},
    {L"CHPROP", ACRX_CMD_USEPICKSET, &commands::changeProperties},
    {L"-LAYER", ACRX_CMD_TRANSPARENT, &commands::changeLayers},
    {L"-LA", ACRX_CMD_TRANSPARENT, &commands::changeLayers},
    // The names of the dialog mean the questions where none can be shown.
    {L"LAYER", ACRX_CMD_TRANSPARENT, &commands::changeLayers},
    {L"LA", ACRX_CMD_TRANSPARENT, &commands::changeLayers},
    {L"VPLAYER", ACRX_CMD_MODAL, &commands::changeViewportLayers},
    {L"-VPLAYER", ACRX_CMD_MODAL, &commands::changeViewportLayers},
    {L"LAYOUT", ACRX_CMD_MODAL, &commands::manageLayouts},
    {L"-LAYOUT", ACRX_CMD_MODAL, &commands::manageLayouts},
    {L"LO", ACRX_CMD_MODAL, &commands::manageLayouts},
    {L"-LINETYPE", ACRX_CMD_TRANSPARENT, &commands::listLinetypes},
    {L"-LT", ACRX_CMD_TRANSPARENT, &commands::listLinetypes},
    {L"-STYLE", ACRX_CMD_MODAL, &commands::listTextStyles},
    {L"-ST", ACRX_CMD_MODAL, &commands::listTextStyles},
    {L"PICTURES", ACRX_CMD_MODAL, &commands::givePictures},
    {L"U", ACRX_CMD_NOUNDOMARKER, &commands::undo},
    {L"REGEN", ACRX_CMD_MODAL, &commands::regenerate},
    {L"RE", ACRX_CMD_MODAL, &commands::regenerate},
    {L"REGENALL", ACRX_CMD_MODAL, &commands::regenerate},
    {L"ZOOM", ACRX_CMD_TRANSPARENT, &commands::zoom},
    {L"Z", ACRX_CMD_TRANSPARENT, &commands::zoom},
    {L"MSPACE", ACRX_CMD_MODAL, &commands::enterModelSpace},
    {L"MS", ACRX_CMD_MODAL, &commands::enterModelSpace},
    {L"PSPACE", ACRX_CMD_MODAL, &commands::enterPaperSpace},
    {L"PS", ACRX_CMD_MODAL, &commands::enterPaperSpace},
    {L"PLOTFILE", ACRX_CMD_MODAL, &commands::plotFile, Wanted::Picture},
    {L"SETVAR", ACRX_CMD_TRANSPARENT, &commands::setVariable, Wanted::Variable},
};

}  // namespace

void registerHostCommands() {
    AcEdCommandStack* const stack = acedRegCmds;
    Application* const application = Application::current();
    if (stack == nullptr || application == nullptr) return;
    for (const CommandRow& row : kCommands) {
        stack->addCommand(L"HOST_COMMANDS", row.name, row.name, row.flags, row.function);
        if (row.first != Wanted::Text) application->setFirstAnswer(row.name, row.first);
    }
}

}  // namespace qrs::host
