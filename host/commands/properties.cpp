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
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;
using platform::untranslated;

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
    std::optional<std::wstring> name = askText(translated(L"\nEnter new layer name <%1>: ", current), Blanks::Kept);
    if (!name) return std::nullopt;
    if (name->empty()) name = current;
    const AcDbLayerTableRecordPointer layer(name->c_str(), database, AcDb::kForRead);
    if (layer.openStatus() != Acad::eOk) return refuse(translated(L"Cannot find layer %1.", inQuotes(*name))), Change();
    if (name->find(L'|') != std::wstring::npos)
        return refuse(translated(L"Layer %1 belongs to an external reference.", inQuotes(*name))), Change();
    return [id = layer->objectId()](AcDbEntity& entity) { return entity.setLayer(id); };
}

std::optional<Change> askLinetype(AcDbDatabase* database) {
    const std::optional<std::wstring> name =
        askText(translated(L"\nEnter new linetype name <ByLayer>: "), Blanks::Kept);
    if (!name) return std::nullopt;
    const std::wstring linetype = name->empty() ? L"ByLayer" : *name;
    const AcDbLinetypeTablePointer table(database, AcDb::kForRead);
    // Old drawings have no records for these two.
    const bool isLogical = isNamed(linetype, L"BYLAYER") || isNamed(linetype, L"BYBLOCK");
    if (!isLogical && (table.openStatus() != Acad::eOk || !table->has(linetype.c_str())))
        return refuse(translated(L"Cannot find linetype %1.", inQuotes(linetype))), Change();
    return [linetype](AcDbEntity& entity) { return entity.setLinetype(linetype.c_str()); };
}

std::optional<Change> askObjectColor(AcDbDatabase*) {
    std::optional<AcCmColor> color;
    const std::optional<std::wstring> typed = askColor(translated(L"\nNew color [Truecolor] <ByLayer>: "), color);
    if (!typed) return std::nullopt;
    const bool isByLayer = typed->empty() || isNamed(*typed, L"BYLAYER");
    if (isByLayer || isNamed(*typed, L"BYBLOCK")) color.emplace().setColorIndex(isByLayer ? kByLayer : kByBlock);
    if (!color) return refuse(translated(L"Invalid color: %1.", inQuotes(*typed))), Change();
    return [color](AcDbEntity& entity) { return entity.setColor(*color); };
}

struct Option {
    const wchar_t* keyword;
    std::optional<Change> (*ask)(AcDbDatabase* database);
};

constexpr Option kOptions[] = {{L"Color", &askObjectColor}, {L"LAyer", &askLayer}, {L"LType", &askLinetype}};

void tellLeft(int count, const wchar_t* one, const wchar_t* many) {
    if (count > 0) refuse(translated(count == 1 ? one : many, count));
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
    tellLeft(locked, untranslated(L"1 was on a locked layer."), untranslated(L"%1 were on a locked layer."));
    tellLeft(failed, untranslated(L"1 was not changed."), untranslated(L"%1 were not changed."));
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
            askKeyword(L"Color LAyer LType", translated(L"\nEnter property to change [Color/LAyer/LType]: "));
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
