// LIST and SELECT.
#include <string>

#include "acdocman.h"
#include "acedads.h"
#include "dbobjptr.h"
#include "dbsymutl.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/editor/hostselect.h"
#include "host/editor/layouts.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;

namespace {

// Printed in pieces: a selection may hold the whole drawing.
constexpr std::size_t kPieceSize = 65536;

std::wstring taken(ACHAR* text) {
    const std::wstring copy = text == nullptr ? L"" : text;
    acutDelString(text);
    return copy;
}

std::wstring padded(std::wstring text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), L' ');
    return text;
}

// One line: handle, type, layer, space. Off the model, what is selected lies on the sheet that is current.
std::wstring describe(const AcDbEntity& entity, const std::wstring& layout) {
    ACHAR handle[17] = {};
    AcDbHandle number;
    entity.getAcDbHandle(number);
    if (!number.isNull()) number.getIntoAsciiBuffer(handle);
    const AcDbObjectId modelSpace = acdbSymUtil()->blockModelSpaceId(entity.database());
    const std::wstring begin = padded(handle, 6) + L"  " + padded(entity.isA()->dxfName(), 12);
    const std::wstring layer = taken(entity.layer());
    return entity.ownerId() == modelSpace
               ? translated(L"%1  Layer: \"%2\"  Space: Model space", begin, layer)
               : translated(L"%1  Layer: \"%2\"  Space: Paper space  Layout: %3", begin, layer, inQuotes(layout));
}

// A selection the user makes, released with the object.
class Selection {
  public:
    Selection() : made_(acedSSGet(nullptr, nullptr, nullptr, nullptr, set_) == RTNORM) {}
    ~Selection() {
        if (made_) acedSSFree(set_);
    }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    bool isMade() const { return made_; }
    const ads_name& set() const { return set_; }

  private:
    ads_name set_ = {};
    bool made_;
};

}  // namespace

void listEntities() {
    const Selection selection;
    if (!selection.isMade()) return;
    const std::wstring layout = ed::currentLayout(*acDocManager->curDocument()->database());
    std::wstring text;
    for (const AcDbObjectId id : selectedIds(selection.set())) {
        const AcDbEntityPointer entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        text += L"\n" + describe(*entity.object(), layout);
        if (text.size() < kPieceSize) continue;
        acedPrompt(text.c_str());
        text.clear();
    }
    acedPrompt(text.c_str());
}

void selectEntities() {
    // The selection itself becomes the previous one; the next command finds it selected, too.
    const Selection selection;
    if (selection.isMade()) acedSSSetFirst(selection.set(), nullptr);
}

}  // namespace qrs::host::commands
