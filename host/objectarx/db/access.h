// What the application underneath the editor's interface does with databases. Not part of the interface.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dbmain.h"
#include "host/platform/error.h"

namespace qrs::dxf {
class Drawing;
}

namespace qrs::host {

class SymbolTables;

class QRS_HOST_PORT DatabaseAccess {
  public:
    // Reads a drawing. Null, with the reason in error, when it cannot.
    static std::unique_ptr<AcDbDatabase> open(const std::filesystem::path& native, platform::Error& error);
    // The same from bytes; name stands in for the path in messages.
    static std::unique_ptr<AcDbDatabase> openBytes(std::string bytes, const std::string& name, platform::Error& error);
    // Writes a drawing, see dxf::Drawing::save. A drawing that is saved takes the file's name.
    static bool save(AcDbDatabase& database, const std::filesystem::path& native, int backups, platform::Error& error);
    // The whole text of the drawing as it would be saved.
    static std::string bytes(const AcDbDatabase& database);

    static dxf::Drawing& drawing(AcDbDatabase& database);
    static const SymbolTables& tables(AcDbDatabase& database);
    static bool isModified(const AcDbDatabase& database);
    // Everything that changes from now on can be taken back in one step.
    static void beginStep(AcDbDatabase& database, const std::wstring& name);
    // The step at work counts although nothing of the drawing changes in it; its number, 0 when there is no step.
    static std::uint64_t keepStep(AcDbDatabase& database);
    // Takes the last step in which something has changed back, and tells its name and number; false when there is none.
    // Nothing of the drawing may be open for writing.
    static bool takeBack(AcDbDatabase& database, std::wstring& name, std::uint64_t* number = nullptr);
    // Numbers count from 1 and are not given twice.
    static std::uint32_t number(const AcDbDatabase& database);
    static AcDbDatabase* byNumber(std::uint32_t number);
    // File name without folder ("Drawing1.dxf" for a new one), and the native path (empty for a new one).
    static std::wstring displayName(const AcDbDatabase& database);
    static void setDisplayName(AcDbDatabase& database, std::wstring_view name);
    static const std::filesystem::path& nativePath(const AcDbDatabase& database);

    // The record an id stands for in the drawing file; dxf::kNoRecord for tables, and blocks the file does not name.
    static std::uint32_t recordOf(AcDbObjectId id);
    static AcDbObjectId idOf(const AcDbDatabase& database, std::uint32_t record);
    // What drawing files call the object ("LINE", "LAYER"); empty when there is none. Works without opening it.
    static std::wstring dxfName(AcDbObjectId id);
};

// --- header variables of a drawing, without '$', as system variables of the editor

// True when the name is a header variable that is kept as data here, without regard to case.
QRS_HOST_PORT bool isHeaderVariable(std::wstring_view name);
// The names of all of them.
QRS_HOST_PORT std::vector<std::wstring> headerVariableNames();
// The value, with restype RTSHORT, RTREAL, RTSTR (text made by acutNewString) or RT3DPOINT / RTPOINT. A variable the
// file lacks gives the value of a new drawing. eKeyNotFound for an unknown name, eNoDatabase for null.
QRS_HOST_PORT Acad::ErrorStatus headerVariable(const AcDbDatabase* database, std::wstring_view name, resbuf& value);
// Integers are taken for reals. A variable the file lacks is put into it; a value equal to the present one touches
// nothing. eKeyNotFound; eInvalidInput for a value of another type or a name (CLAYER, CELTYPE, TEXTSTYLE) the drawing
// does not have; eOutOfRange; eInvalidLayer when CLAYER is to be a frozen layer; eIsWriteProtected.
QRS_HOST_PORT Acad::ErrorStatus setHeaderVariable(AcDbDatabase* database, std::wstring_view name, const resbuf& value);

}  // namespace qrs::host
