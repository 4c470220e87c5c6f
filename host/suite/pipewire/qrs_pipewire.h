// Stand-in for the suite's closed pipe library: system names and types, object colours, what a drawing shows.
//
//     SetPipeSystemName(L"给水", L"生活给水");
//     int type = GetSysType(L"生活给水");     // the type of "给水"
//     pipe->GetPipeSystemName();             // "生活给水" for one that was drawn as "给水"
//     GetDwgPsGlobal(database)->ShowSystem(type, 1);
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "dbmain.h"
#include "host/platform/port.h"
#include "qrs_fitting.h"

// --- Names and types of pipe systems ---

// Tells the library that pipes drawn under the old name belong to the system now called current. A second call for the
// same old name replaces the first.
QRS_HOST_PORT void SetPipeSystemName(const std::wstring& oldName, const std::wstring& currentName);
// The current name of an old one; the name itself when the table does not hold it.
QRS_HOST_PORT std::wstring CurrentPipeSystemName(const std::wstring& oldName);
// Empties the table: every pipe is known by the name it bears again.
QRS_HOST_PORT void ClearPipeSystemNames();

// The type code of systems the library does not know: those a user defined.
constexpr int kCustomSysType = 0;
// The type of a system: of a built-in one (1 and up) by its own name or by the current name it was given with
// SetPipeSystemName; kCustomSysType for any other name.
QRS_HOST_PORT int GetSysType(const std::wstring& systemName);
// The current name of a built-in type's system; "未知系统" for any other number.
QRS_HOST_PORT std::wstring GetSystypeName(int sysType);

// --- Colours of the suite's objects ---

struct TObjectColor {
    std::wstring name;
    AcCmColor color;
};

namespace ObjectUtility {
// The object kinds with the colours they are drawn in now. Callers change colours in place and leave the names.
QRS_HOST_PORT std::vector<TObjectColor>& AllObjectColors();
// Gives every kind its built-in colour again.
QRS_HOST_PORT void ResetObjectColors();
}  // namespace ObjectUtility

// --- What a drawing shows ---

// Which pipe systems of one drawing are hidden; all are shown at first. It is kept in memory as long as the drawing is
// open: nothing is written into the drawing, so showing everything leaves an untouched drawing untouched.
class QRS_HOST_PORT TDbPsConfig {
  public:
    // A user-defined system, by name (exactly compared). What was hidden under an old name is hidden, and shown, as the
    // system that has it now.
    void ShowCustomPipeSystem(const std::wstring& name);
    void HideCustomPipeSystem(const std::wstring& name);
    bool IsCustomPipeSystemShown(const std::wstring& name) const;
    // A built-in system, by type: shown for a show other than 0, else hidden.
    void ShowSystem(int sysType, int show);
    bool IsSystemShown(int sysType) const;

  private:
    std::set<std::wstring> hiddenNames_;
    std::set<int> hiddenTypes_;
};

// The configuration of an open drawing, made when first asked for; null for a null database. It stays valid until the
// drawing is closed.
QRS_HOST_PORT TDbPsConfig* GetDwgPsGlobal(AcDbDatabase* database);

// True for an object of the suite (its name in drawing files begins with "QRS_") that draws nothing at the moment. The
// host has no screen on which such an object could have been drawn, so every object of the suite counts.
QRS_HOST_PORT bool IsNoDrawingObject(const AcDbEntity* entity);

// Redraws the objects.
QRS_HOST_PORT void UpdateGraphic(const AcDbObjectIdArray& ids);
