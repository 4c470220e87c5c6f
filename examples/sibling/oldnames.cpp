// A plug-in that knows pipe systems by the names they had before: it draws risers as older programs left them in
// drawings, and shows that the module counts them under the names of today.
//
//     DRAWOLDRISER   asks for a system's old name, a serial and a point, and draws a riser under that name
//     DRAWTYPERISER  the same, but the riser bears no name, only the system's type code
//     TELLRISERS     tells every riser's system of today, then the next serial of each system
#include <map>
#include <memory>
#include <string>

#include <accmd.h>
#include <acedads.h>
#include <acutads.h>
#include <dbapserv.h>
#include <dbobjptr.h>
#include <PipeSystemTool.h>
#include <PwxTool.h>
#include <qrs_pipeentity.h>
#include <qrs_pipewire.h>
#include <rxdict.h>
#include <rxregsvc.h>

namespace {

const ACHAR* const kGroup = L"OLDNAMES";
const double kRiserHeight = 3000.0;

AcEdCommandStack* commands() {
    return AcEdCommandStack::cast(acrxSysRegistry()->at(L"ACAD_REGISTERED_COMMANDS"));
}

AcDbDatabase* drawing() {
    return acdbHostApplicationServices()->workingDatabase();
}

bool ask(const ACHAR* prompt, CString& answer) {
    ACHAR text[133];
    if (acedGetString(1, prompt, text) != RTNORM) return false;
    answer = text;
    return true;
}

// The standard is not asked: the programs that drew so knew none.
void drawRiser(bool hasName) {
    CString system, serial;
    ads_point foot;
    if (!ask(L"\nOld name of the system: ", system) || !ask(L"\nSerial: ", serial)) return;
    if (acedGetPoint(nullptr, L"\nAt point: ", foot) != RTNORM) return;
    AcDbObjectPointer<TDbPipe> pipe;
    pipe.create();
    pipe->SetCurve(TPipeCurve::Line({foot[0], foot[1], 0}, {foot[0], foot[1], kRiserHeight}));
    if (hasName)
        pipe->SetPipeSystemName(system.GetString());
    else
        pipe->SetPipeSysType(GetSysType(system.GetString()));
    AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, drawing(), AcDb::kForWrite);
    if (space.openStatus() != Acad::eOk || space->appendAcDbEntity(pipe.object()) != Acad::eOk) {
        acutPrintf(L"\nThis drawing cannot hold pipes.\n");
        return;
    }
    PwxTool::WriteXdata(pipe.object(), L"PIPE-SERIAL", serial);
}

void drawOldRiser() {
    drawRiser(true);
}

void drawTypeRiser() {
    drawRiser(false);
}

void tellRiser(const TDbPipe& pipe) {
    const std::wstring drawn = pipe.GetDrawnSystemName();
    const CString system = PipeSystemTool::GetPipeSystemName(&pipe);
    acutPrintf(L"\n%s, drawn as %s, serial %s, texts on layer %s", static_cast<const ACHAR*>(system),
               drawn.empty() ? L"a type code" : drawn.c_str(),
               static_cast<const ACHAR*>(PwxTool::ReadXdata(&pipe, L"PIPE-SERIAL")),
               static_cast<const ACHAR*>(PipeSystemTool::GetLayerName(system, L"管径文字", false)));
}

void tellRisers() {
    const AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, drawing(), AcDb::kForRead);
    AcDbBlockTableRecordIterator* walk = nullptr;
    if (space.openStatus() != Acad::eOk || space->newIterator(walk) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> owner(walk);
    for (AcDbObjectId id; !walk->done(); walk->step()) {
        if (walk->getEntityId(id) != Acad::eOk) continue;
        const AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForRead);
        if (pipe.openStatus() == Acad::eOk && pipe->GetCurve().IsVertical()) tellRiser(*pipe.object());
    }
    std::map<CString, int> numbers;
    std::map<CString, CString> texts;
    PwxTool::InitVPipeSerials(numbers, texts, L"", 0);
    for (const auto& next : texts)
        acutPrintf(L"\nNext of %s: %s", static_cast<const ACHAR*>(next.first), static_cast<const ACHAR*>(next.second));
    acutPrintf(L"\n");
}

struct Command {
    const ACHAR* name;
    void (*run)();
};

const Command kCommands[] = {
    {L"DRAWOLDRISER", drawOldRiser}, {L"DRAWTYPERISER", drawTypeRiser}, {L"TELLRISERS", tellRisers}};

}  // namespace

#if defined(_WIN32)
#define OLDNAMES_PORT __declspec(dllexport)
#else
#define OLDNAMES_PORT __attribute__((visibility("default")))
#endif

// The editor calls it when the plug-in is loaded, and again before it is unloaded.
extern "C" OLDNAMES_PORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application) {
    if (message == AcRx::kInitAppMsg) {
        acrxUnlockApplication(application);
        for (const Command& command : kCommands)
            commands()->addCommand(kGroup, command.name, command.name, ACRX_CMD_MODAL, command.run);
    } else if (message == AcRx::kUnloadAppMsg) {
        commands()->removeGroup(kGroup);
    }
    return AcRx::kRetOK;
}
