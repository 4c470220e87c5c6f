// Drawing files beside the current one, and files that became drawings only when the program had converted them.
//
//     QrsExport::TReadDrawing drawing;
//     std::wstring reason;
//     if (QrsExport::ReadDrawing(L"\\\\srv\\plans\\house.dwg", drawing, reason)) check(*drawing.database);
//
// Paths are in the inner form.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "dbmain.h"
#include "host/platform/port.h"

namespace QrsExport {

// The drawing that a file became. What it needs is kept as long as this lives.
class QRS_HOST_PORT TConvertedFile {
  public:
    virtual ~TConvertedFile();
    virtual std::wstring File() const = 0;
};

// Converts a file where it is none that drawings are read from; one that is leaves converted null. False, with the
// reason, when it cannot.
using TConverter =
    std::function<bool(const std::wstring& file, std::unique_ptr<TConvertedFile>& converted, std::wstring& reason)>;
// That of the program; null takes it away. Without one files are read as they are.
QRS_HOST_PORT void SetConverter(TConverter converter);

// Called with each drawing that was read, to tell what is wrong with it. That of the program; null takes it away.
using TReadWatcher = std::function<void(AcDbDatabase& database)>;
QRS_HOST_PORT void SetReadWatcher(TReadWatcher watcher);

struct TReadDrawing {
    std::unique_ptr<TConvertedFile> converted;
    std::unique_ptr<AcDbDatabase> database;  // goes before the file it was read from
};
// Reads a drawing to be looked at. False, with the reason, when it cannot be read.
QRS_HOST_PORT bool ReadDrawing(const std::wstring& file, TReadDrawing& drawing, std::wstring& reason);

// The current drawing was converted: the file it was read from, and the one that the user has named.
QRS_HOST_PORT void SetConvertedFile(const std::wstring& readFrom, const std::wstring& named);
// What the user calls a drawing that is open: the file it was converted from, or that itself.
QRS_HOST_PORT std::wstring NamedFile(const std::wstring& file);

}  // namespace QrsExport
