// Reads drawings beside the current one.
#include "qrs_drawings.h"

#include <utility>

#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

namespace platform = qrs::platform;

namespace {

struct Conversions {
    QrsExport::TConverter converter;
    QrsExport::TReadWatcher watcher;
    std::wstring readFrom, named;  // of the current drawing
};

Conversions& conversions() {
    static Conversions one;
    return one;
}

}  // namespace

QrsExport::TConvertedFile::~TConvertedFile() = default;

void QrsExport::SetConverter(TConverter converter) {
    conversions().converter = std::move(converter);
}

void QrsExport::SetReadWatcher(TReadWatcher watcher) {
    conversions().watcher = std::move(watcher);
}

bool QrsExport::ReadDrawing(const std::wstring& file, TReadDrawing& drawing, std::wstring& reason) {
    drawing = {};
    const TConverter& converter = conversions().converter;
    if (converter && !converter(file, drawing.converted, reason)) return false;
    platform::Error error;
    drawing.database = qrs::host::DatabaseAccess::open(
        platform::nativePath(drawing.converted ? drawing.converted->File() : file), error);
    if (!drawing.database) {
        reason = platform::fromUtf8(error.message);
        return false;
    }
    if (conversions().watcher) conversions().watcher(*drawing.database);
    return true;
}

void QrsExport::SetConvertedFile(const std::wstring& readFrom, const std::wstring& named) {
    conversions().readFrom = readFrom;
    conversions().named = named;
}

std::wstring QrsExport::NamedFile(const std::wstring& file) {
    const Conversions& known = conversions();
    return !known.readFrom.empty() && platform::foldCase(file) == platform::foldCase(known.readFrom) ? known.named
                                                                                                     : file;
}
