// -LAYER: makes, lists and changes layers, one option after the other until Enter, with the editor's own questions.
#include <functional>

#include "acedads.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/commands/layerlist.h"
#include "host/commands/layerstates.h"
#include "host/editor/hostapp.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;
using platform::untranslated;

namespace {

bool isCurrent(const NamedLayer& layer, AcDbDatabase* database) {
    return database->clayer() == layer.id;
}

using Change = Acad::ErrorStatus (*)(AcDbLayerTableRecord& record);

void change(const NamedLayer& layer, const std::function<Acad::ErrorStatus(AcDbLayerTableRecord&)>& apply) {
    AcDbLayerTableRecordPointer record(layer.id, AcDb::kForWrite);
    if (record.openStatus() != Acad::eOk || apply(*record.object()) != Acad::eOk)
        refuse(translated(L"Cannot change layer %1.", inQuotes(layer.name)));
}

// --- options that set one state of the layers of a list

struct StateOption {
    const wchar_t* keyword;
    const wchar_t* prompt;
    bool selects;  // Enter at the list asks for objects
    // False when the current layer is to stay as it is.
    bool (*spares)(const NamedLayer& current);
    Change apply;
};

bool refusesToFreeze(const NamedLayer& current) {
    refuse(translated(L"Cannot freeze layer %1.  It is the CURRENT layer.", inQuotes(current.name)));
    return true;
}

// Asked in scripts as well: a script written for the editor carries the answer.
bool keepsOn(const NamedLayer& current) {
    return !askYesNo(
                translated(L"\nReally want layer %1 (the CURRENT layer) off? [Yes/No] <N>: ", inQuotes(current.name)),
                false)
                .value_or(false);
}

constexpr StateOption kStateOptions[] = {
    {L"ON", untranslated(L"\nEnter name list of layer(s) to turn on: "), false, nullptr,
     [](AcDbLayerTableRecord& record) { return record.setIsOff(false); }},
    {L"OFF", untranslated(L"\nEnter name list of layer(s) to turn off or <select objects>: "), true, &keepsOn,
     [](AcDbLayerTableRecord& record) { return record.setIsOff(true); }},
    {L"Freeze", untranslated(L"\nEnter name list of layer(s) to freeze or <select objects>: "), true, &refusesToFreeze,
     [](AcDbLayerTableRecord& record) { return record.setIsFrozen(true); }},
    {L"Thaw", untranslated(L"\nEnter name list of layer(s) to thaw: "), false, nullptr,
     [](AcDbLayerTableRecord& record) { return record.setIsFrozen(false); }},
    {L"LOck", untranslated(L"\nEnter name list of layer(s) to lock or <select objects>: "), true, nullptr,
     [](AcDbLayerTableRecord& record) { return record.setIsLocked(true); }},
    {L"Unlock", untranslated(L"\nEnter name list of layer(s) to unlock or <select objects>: "), true, nullptr,
     [](AcDbLayerTableRecord& record) { return record.setIsLocked(false); }},
};

bool setState(AcDbDatabase* database, const StateOption& option) {
    const std::optional<std::wstring> list = askText(translated(option.prompt), Blanks::Kept, Wanted::Layers);
    if (!list) return false;
    std::vector<NamedLayer> layers;
    if (!list->empty())
        layers = findLayers(database, *list);
    else if (option.selects)
        layers = layersOfSelection();
    for (const NamedLayer& layer : layers)
        if (option.spares == nullptr || !isCurrent(layer, database) || !option.spares(layer))
            change(layer, option.apply);
    return true;
}

// --- the other options; false when the user cancelled

bool list(AcDbDatabase* database) {
    const std::optional<std::wstring> names =
        askText(translated(L"\nEnter layer name(s) to list <*>: "), Blanks::Kept, Wanted::Layers);
    if (!names) return false;
    printLayers(names->empty() ? allLayers(database) : findLayers(database, *names));
    return true;
}

bool makeAndSet(AcDbDatabase* database) {
    const std::wstring current = layerName(database->clayer());
    std::optional<std::wstring> name =
        askText(translated(L"\nEnter name for new layer (becomes the current layer) <%1>: ", current), Blanks::Kept);
    if (!name) return false;
    if (!name->empty() && (hasLayer(database, *name) || !makeLayer(database, *name).isNull()))
        makeLayerCurrent(database, *name);
    return true;
}

bool set(AcDbDatabase* database) {
    std::optional<std::wstring> name =
        askText(translated(L"\nEnter layer name to make current or <select object>: "), Blanks::Kept, Wanted::Layer);
    if (!name) return false;
    if (name->empty()) {
        const std::vector<NamedLayer> picked = layersOfSelection();
        if (picked.empty()) return true;
        name = picked.front().name;
    }
    makeLayerCurrent(database, *name);
    return true;
}

bool addNew(AcDbDatabase* database) {
    const std::optional<std::wstring> names =
        askText(translated(L"\nEnter name list for new layer(s): "), Blanks::Kept);
    if (!names) return false;
    for (const std::wstring& name : splitNames(*names)) {
        if (hasLayer(database, name))
            tell(translated(L"Layer %1 already exists.", inQuotes(name)));
        else
            makeLayer(database, name);
    }
    return true;
}

bool rename(AcDbDatabase* database) {
    const std::optional<std::wstring> oldName =
        askText(translated(L"\nEnter old layer name: "), Blanks::Kept, Wanted::Layer);
    if (!oldName || oldName->empty()) return oldName.has_value();
    const std::optional<std::wstring> newName = askText(translated(L"\nEnter new layer name: "), Blanks::Kept);
    if (!newName || newName->empty()) return newName.has_value();
    AcDbLayerTableRecordPointer record(oldName->c_str(), database, AcDb::kForWrite);
    if (record.openStatus() != Acad::eOk)
        refuse(translated(L"Cannot find layer %1.", inQuotes(*oldName)));
    else if (record->setName(newName->c_str()) != Acad::eOk)
        refuse(translated(L"Cannot rename layer %1 to %2.", inQuotes(*oldName), inQuotes(*newName)));
    return true;
}

bool setColor(AcDbDatabase* database) {
    std::optional<AcCmColor> color;
    const std::optional<std::wstring> typed = askColor(translated(L"\nNew color [Truecolor]: "), color);
    if (!typed || typed->empty()) return typed.has_value();
    if (!color) return refuse(translated(L"Invalid color: %1.", inQuotes(*typed))), true;
    const std::wstring current = layerName(database->clayer());
    const std::optional<std::wstring> names =
        askText(translated(L"\nEnter name list of layer(s) for color %1 <%2>: ", colorText(*color), current),
                Blanks::Kept, Wanted::Layers);
    if (!names) return false;
    for (const NamedLayer& layer : findLayers(database, names->empty() ? current : *names))
        change(layer, [&color](AcDbLayerTableRecord& record) { return record.setColor(*color); });
    return true;
}

struct OtherOption {
    const wchar_t* keyword;
    bool (*run)(AcDbDatabase* database);
};

constexpr OtherOption kOtherOptions[] = {
    {L"?", &list},         {L"Make", &makeAndSet},         {L"Set", &set}, {L"New", &addNew}, {L"Rename", &rename},
    {L"Color", &setColor}, {L"stAte", &changeLayerStates},
};

bool runOption(AcDbDatabase* database, const std::wstring& keyword) {
    for (const OtherOption& option : kOtherOptions)
        if (keyword == option.keyword) return option.run(database);
    for (const StateOption& option : kStateOptions)
        if (keyword == option.keyword) return setState(database, option);
    return true;
}

}  // namespace

void changeLayers() {
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr) return failCommand(translated(L"There is no drawing."));
    tell(translated(L"Current layer:  %1", inQuotes(layerName(database->clayer()))));
    for (;;) {
        const std::optional<std::wstring> option = askKeyword(
            L"? Make Set New Rename ON OFF Color Freeze Thaw LOck Unlock stAte",
            translated(L"\nEnter an option [?/Make/Set/New/Rename/ON/OFF/Color/Freeze/Thaw/LOck/Unlock/stAte]: "));
        if (!option || option->empty() || !runOption(database, *option)) return;
    }
}

}  // namespace qrs::host::commands
