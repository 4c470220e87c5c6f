// CHPROP: changes layer, colour and linetype of objects, with the editor's own questions.
#include <functional>
#include <optional>
#include <string>

#include "acedads.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/commands/layerlist.h"
#include "host/editor/hostapp.h"
#include "host/platform/codepage.h"

namespace qrs::host::commands {

namespace {

constexpr Adesk::UInt16 kByBlock = 0;
constexpr Adesk::UInt16 kByLayer = 256;

// What the user has chosen; empty when it cannot be used, which was told.
using Change = std::function<Acad::ErrorStatus(AcDbEntity& entity)>;

bool liesOnLockedLayer(const AcDbEntity& entity) {
    const AcDbLayerTableRecordPointer layer(entity.layerId(), AcDb::kForRead);
    return layer.openStatus() == Acad::eOk && layer->isLocked();
}

bool isNamed(const std::wstring& text, const wchar_t* name) {
    return platform::compareNoCase(text, name) == 0;
}

// --- the options; nothing when the user cancelled

std::optional<Change> askLayer(AcDbDatabase* database) {
    const std::wstring current = layerName(database->clayer());
    std::optional<std::wstring> name = askText(L"\nEnter new layer name <" + current + L">: ", Blanks::Kept);
    if (!name) return std::nullopt;
    if (name->empty()) name = current;
    const AcDbLayerTableRecordPointer layer(name->c_str(), database, AcDb::kForRead);
    if (layer.openStatus() != Acad::eOk) return refuse(L"Cannot find layer " + inQuotes(*name) + L"."), Change();
    if (name->find(L'|') != std::wstring::npos)
        return refuse(L"Layer " + inQuotes(*name) + L" belongs to an external reference."), Change();
    return [id = layer->objectId()](AcDbEntity& entity) { return entity.setLayer(id); };
}

std::optional<Change> askLinetype(AcDbDatabase* database) {
    const std::optional<std::wstring> name = askText(L"\nEnter new linetype name <ByLayer>: ", Blanks::Kept);
    if (!name) return std::nullopt;
    const std::wstring linetype = name->empty() ? L"ByLayer" : *name;
    const AcDbLinetypeTablePointer table(database, AcDb::kForRead);
    // Old drawings have no records for these two.
    const bool isLogical = isNamed(linetype, L"BYLAYER") || isNamed(linetype, L"BYBLOCK");
    if (!isLogical && (table.openStatus() != Acad::eOk || !table->has(linetype.c_str())))
        return refuse(L"Cannot find linetype " + inQuotes(linetype) + L"."), Change();
    return [linetype](AcDbEntity& entity) { return entity.setLinetype(linetype.c_str()); };
}

std::optional<Change> askObjectColor(AcDbDatabase*) {
    std::optional<AcCmColor> color;
    const std::optional<std::wstring> typed = askColor(L"\nNew color [Truecolor] <ByLayer>: ", color);
    if (!typed) return std::nullopt;
    const bool isByLayer = typed->empty() || isNamed(*typed, L"BYLAYER");
    if (isByLayer || isNamed(*typed, L"BYBLOCK")) color.emplace().setColorIndex(isByLayer ? kByLayer : kByBlock);
    if (!color) return refuse(L"Invalid color: " + inQuotes(*typed) + L"."), Change();
    return [color](AcDbEntity& entity) { return entity.setColor(*color); };
}

struct Option {
    const wchar_t* keyword;
    std::optional<Change> (*ask)(AcDbDatabase* database);
};

constexpr Option kOptions[] = {{L"Color", &askObjectColor}, {L"LAyer", &askLayer}, {L"LType", &askLinetype}};

void tellLeft(int count, const wchar_t* why) {
    if (count > 0) refuse(std::to_wstring(count) + (count == 1 ? L" was " : L" were ") + why);
}

void apply(const AcDbObjectIdArray& objects, const Change& change) {
    int locked = 0;
    int failed = 0;
    for (const AcDbObjectId& id : objects) {
        AcDbEntityPointer entity(id, AcDb::kForWrite);
        const bool isLocked = entity.openStatus() == Acad::eOk && liesOnLockedLayer(*entity.object());
        if (isLocked)
            ++locked;
        else if (entity.openStatus() != Acad::eOk || change(*entity.object()) != Acad::eOk)
            ++failed;
    }
    tellLeft(locked, L"on a locked layer.");
    tellLeft(failed, L"not changed.");
}

}  // namespace

void changeProperties() {
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    const std::optional<AcDbObjectIdArray> objects = askObjects();
    if (database == nullptr || !objects) return;
    // A script that selects nothing in one drawing of many has the answers to what follows all the same; they shall not
    // be taken for commands.
    if (objects->isEmpty() && Application::current()->terminal().isInteractive()) return;
    for (;;) {
        const std::optional<std::wstring> keyword =
            askKeyword(L"Color LAyer LType", L"\nEnter property to change [Color/LAyer/LType]: ");
        if (!keyword || keyword->empty()) return;
        for (const Option& option : kOptions) {
            if (*keyword != option.keyword) continue;
            const std::optional<Change> change = option.ask(database);
            if (!change) return;
            if (*change) apply(*objects, *change);
        }
    }
}

}  // namespace qrs::host::commands
