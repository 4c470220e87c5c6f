// Saves and restores the layers as a whole, under names, in the records where the editor keeps layer states.
//
// They lie in the dictionary ACAD_LAYERSTATES of the layer table's extension dictionary. A record tells which
// properties are to be restored (91), a description (301) and the current layer (302); then, for each layer, its handle
// (330), its flags (90), colour (62, a true one in 92 as well), lineweight (370), linetype (331) and plot style (1).
#include "host/commands/layerstates.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "acdbads.h"
#include "acutads.h"
#include "dbdict.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "host/commands/asking.h"
#include "host/commands/layerlist.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;
using platform::untranslated;

namespace {

using Dictionary = AcDbObjectPointer<AcDbDictionary>;
using XRecord = AcDbObjectPointer<AcDbXrecord>;

struct ChainRelease {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ChainRelease>;

constexpr const wchar_t* kStates = L"ACAD_LAYERSTATES";

enum Code : short {
    kPlotStyle = 1,
    kColorIndex = 62,
    kFlags = 90,
    kProperties = 91,
    kTrueColor = 92,
    kOfSheet = 290,
    kDescription = 301,
    kCurrentLayer = 302,
    kLayer = 330,
    kLinetype = 331,
    kLineWeight = 370,
};

// Bits of the properties to be restored. The first five are those of the flags as well.
enum Property : int {
    kOff = 1,
    kFrozen = 2,
    kLocked = 4,
    kPlotted = 8,
    kFrozenInNew = 16,
    kColor = 32,
    kLinetypeToo = 64,
    kWeight = 128,
    kAllSaved = 255,
    kOfView = 0x8000,  // belongs to a named view, and is not listed
};

struct FlagRow {
    int bit;
    bool (AcDbLayerTableRecord::*get)() const;
    Acad::ErrorStatus (AcDbLayerTableRecord::*set)(bool);
};

const FlagRow kFlagRows[] = {
    {kOff, &AcDbLayerTableRecord::isOff, &AcDbLayerTableRecord::setIsOff},
    {kFrozen, &AcDbLayerTableRecord::isFrozen, &AcDbLayerTableRecord::setIsFrozen},
    {kLocked, &AcDbLayerTableRecord::isLocked, &AcDbLayerTableRecord::setIsLocked},
    {kPlotted, &AcDbLayerTableRecord::isPlottable, &AcDbLayerTableRecord::setIsPlottable},
    {kFrozenInNew, &AcDbLayerTableRecord::VPDFLT, &AcDbLayerTableRecord::setVPDFLT},
};

constexpr Adesk::UInt32 kTrueColorMark = 0xC2000000;

struct LayerRow {
    AcDbObjectId layer;  // null when it is no more
    int flags = 0;
    AcCmColor color;
    int weight = AcDb::kLnWtByLwDefault;
    AcDbObjectId linetype;
};

struct LayerState {
    int properties = 0;
    std::wstring description;
    std::wstring current;
    std::vector<LayerRow> layers;
};

// --- between records and states

AcDbObjectId idOf(const resbuf& link) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, link.resval.rlname) != Acad::eOk) id.setNull();
    return id;
}

void readLayerValue(const resbuf& link, LayerRow& row) {
    switch (link.restype) {
        case kFlags:
            row.flags = link.resval.rlong;
            break;
        case kColorIndex:
            row.color.setColorIndex(static_cast<Adesk::UInt16>(std::clamp<int>(link.resval.rint, 1, 255)));
            break;
        case kTrueColor: {
            const auto rgb = static_cast<Adesk::UInt32>(link.resval.rlong);
            if ((rgb & 0xFF000000) == kTrueColorMark)
                row.color.setRGB(static_cast<Adesk::UInt8>(rgb >> 16 & 0xFF),
                                 static_cast<Adesk::UInt8>(rgb >> 8 & 0xFF), static_cast<Adesk::UInt8>(rgb & 0xFF));
            break;
        }
        case kLineWeight:
            row.weight = link.resval.rint;
            break;
        case kLinetype:
            row.linetype = idOf(link);
            break;
        default:
            break;
    }
}

LayerState readState(const AcDbXrecord& record) {
    LayerState state;
    resbuf* links = nullptr;
    if (record.rbChain(&links) != Acad::eOk) return state;
    const Chain chain(links);
    for (const resbuf* link = links; link; link = link->rbnext) {
        if (link->restype == kLayer) {
            state.layers.emplace_back().layer = idOf(*link);
        } else if (!state.layers.empty()) {
            readLayerValue(*link, state.layers.back());
        } else if (link->restype == kProperties) {
            state.properties = link->resval.rlong;
        } else if (link->restype == kDescription && link->resval.rstring) {
            state.description = link->resval.rstring;
        } else if (link->restype == kCurrentLayer && link->resval.rstring) {
            state.current = link->resval.rstring;
        }
    }
    return state;
}

Chain chainOf(const LayerRow& row) {
    ads_name layer = {};
    ads_name linetype = {};
    if (acdbGetAdsName(layer, row.layer) != Acad::eOk) return nullptr;
    if (!row.linetype.isNull() && acdbGetAdsName(linetype, row.linetype) != Acad::eOk) return nullptr;
    const std::wstring plotStyle = L"Color_" + std::to_wstring(row.color.colorIndex());
    Chain chain(acutBuildList(kLayer, layer, kFlags, row.flags, kColorIndex, int{row.color.colorIndex()}, kLineWeight,
                              row.weight, kLinetype, linetype, kPlotStyle, plotStyle.c_str(), RTNONE));
    if (!chain || !row.color.isByColor()) return chain;
    const Adesk::UInt32 rgb = kTrueColorMark | Adesk::UInt32{row.color.red()} << 16 |
                              Adesk::UInt32{row.color.green()} << 8 | Adesk::UInt32{row.color.blue()};
    resbuf* last = chain.get();
    while (last->rbnext)
        last = last->rbnext;
    last->rbnext = acutBuildList(kTrueColor, static_cast<int>(rgb), RTNONE);
    return chain;
}

// Null when memory runs out or a layer cannot be named.
Chain chainOf(const LayerState& state) {
    Chain chain(acutBuildList(kProperties, state.properties, kDescription, state.description.c_str(), kOfSheet, 0,
                              kCurrentLayer, state.current.c_str(), RTNONE));
    resbuf* last = chain.get();
    for (const LayerRow& row : state.layers) {
        Chain part = chainOf(row);
        if (!part || !last) return nullptr;
        while (last->rbnext)
            last = last->rbnext;
        last->rbnext = part.release();
    }
    return chain;
}

// --- between states and layers

LayerState stateOf(AcDbDatabase* database) {
    LayerState state;
    state.properties = kAllSaved;
    state.current = layerName(database->clayer());
    for (const NamedLayer& named : allLayers(database)) {
        const AcDbLayerTableRecordPointer layer(named.id, AcDb::kForRead);
        if (layer.openStatus() != Acad::eOk) continue;
        LayerRow& row = state.layers.emplace_back();
        row.layer = named.id;
        for (const FlagRow& flag : kFlagRows)
            if ((layer.object()->*flag.get)()) row.flags |= flag.bit;
        row.color = layer->color();
        row.weight = layer->lineWeight();
        row.linetype = layer->linetypeObjectId();
    }
    return state;
}

bool isOk(Acad::ErrorStatus status) {
    return status == Acad::eOk;
}

// What is as it was is not touched. False when something cannot be changed.
bool apply(const LayerRow& row, int properties, AcDbLayerTableRecord& layer) {
    bool done = true;
    for (const FlagRow& flag : kFlagRows) {
        const bool wanted = (row.flags & flag.bit) != 0;
        if ((properties & flag.bit) != 0 && (layer.*flag.get)() != wanted) done &= isOk((layer.*flag.set)(wanted));
    }
    if ((properties & kColor) != 0 && layer.color() != row.color) done &= isOk(layer.setColor(row.color));
    if ((properties & kLinetypeToo) != 0 && !row.linetype.isNull() && layer.linetypeObjectId() != row.linetype)
        done &= isOk(layer.setLinetypeObjectId(row.linetype));
    if ((properties & kWeight) != 0 && layer.lineWeight() != row.weight)
        done &= isOk(layer.setLineWeight(static_cast<AcDb::LineWeight>(row.weight)));
    return done;
}

void restore(const LayerRow& row, int properties) {
    const std::wstring name = layerName(row.layer);
    AcDbLayerTableRecordPointer layer(row.layer, AcDb::kForWrite);
    if (layer.openStatus() != Acad::eOk || !apply(row, properties, *layer.object()))
        refuse(translated(L"Cannot restore all of layer %1.", inQuotes(name)));
}

void restore(AcDbDatabase* database, const LayerState& state) {
    std::vector<LayerRow> rows = state.layers;
    const auto gone = std::remove_if(rows.begin(), rows.end(), [](const LayerRow& row) {
        return AcDbLayerTableRecordPointer(row.layer, AcDb::kForRead).openStatus() != Acad::eOk;
    });
    const std::ptrdiff_t missing = std::distance(gone, rows.end());
    rows.erase(gone, rows.end());
    // The layer that is to be current comes first: it can be so once it is thawed, and the one that is now can be
    // frozen after that.
    if (!state.current.empty() && hasLayer(database, state.current)) {
        const auto current = std::find_if(rows.begin(), rows.end(), [&](const LayerRow& row) {
            return platform::compareNoCase(layerName(row.layer), state.current) == 0;
        });
        if (current != rows.end()) {
            restore(*current, state.properties);
            rows.erase(current);
        }
        if (platform::compareNoCase(layerName(database->clayer()), state.current) != 0)
            makeLayerCurrent(database, state.current);
    }
    for (const LayerRow& row : rows)
        restore(row, state.properties);
    if (missing > 0)
        tell(missing == 1 ? translated(L"1 of its layers is not in the drawing any more.")
                          : translated(L"%1 of its layers are not in the drawing any more.", missing));
}

// --- where the drawing keeps them

// Null when the drawing has none.
AcDbObjectId statesId(AcDbDatabase* database) {
    AcDbObjectId id;
    const AcDbLayerTablePointer table(database, AcDb::kForRead);
    if (table.openStatus() != Acad::eOk) return id;
    const Dictionary extension(table->extensionDictionary(), AcDb::kForRead);
    if (extension.openStatus() != Acad::eOk || extension->getAt(kStates, id) != Acad::eOk) id.setNull();
    return id;
}

// The same; it is made when it is missing. Null where a drawing cannot hold it.
AcDbObjectId madeStatesId(AcDbDatabase* database) {
    AcDbObjectId id = statesId(database);
    if (!id.isNull()) return id;
    AcDbLayerTablePointer table(database, AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk || table->createExtensionDictionary() != Acad::eOk) return id;
    Dictionary extension(table->extensionDictionary(), AcDb::kForWrite);
    Dictionary states;
    states.create();
    if (extension.openStatus() != Acad::eOk || extension->setAt(kStates, states.object(), id) != Acad::eOk)
        id.setNull();
    return id;
}

std::vector<NamedRecord> allStates(AcDbDatabase* database) {
    std::vector<NamedRecord> states;
    const Dictionary dictionary(statesId(database), AcDb::kForRead);
    if (dictionary.openStatus() != Acad::eOk) return states;
    const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
    for (; entry && !entry->done(); entry->next()) {
        const XRecord record(entry->objectId(), AcDb::kForRead);
        if (record.openStatus() == Acad::eOk && !(readState(*record.object()).properties & kOfView))
            states.push_back({entry->objectId(), entry->name()});
    }
    return states;
}

// The dictionaries go with the last state, as far as nothing else is in them, so that a drawing can be as it was
// before.
void releaseStates(AcDbDatabase* database) {
    const auto isEmpty = [](const Dictionary& dictionary) {
        const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
        return entry && entry->done();
    };
    {
        const Dictionary states(statesId(database), AcDb::kForRead);
        if (states.openStatus() != Acad::eOk || !isEmpty(states)) return;
    }
    AcDbLayerTablePointer table(database, AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk) return;
    {
        Dictionary extension(table->extensionDictionary(), AcDb::kForWrite);
        if (extension.openStatus() != Acad::eOk || extension->remove(kStates) != Acad::eOk) return;
    }
    // One that holds something else stays.
    table->releaseExtensionDictionary();
}

// Null, with a message, when there is none of that name.
AcDbObjectId findState(AcDbDatabase* database, const std::wstring& name) {
    AcDbObjectId id;
    const Dictionary states(statesId(database), AcDb::kForRead);
    if (states.openStatus() == Acad::eOk && states->getAt(name.c_str(), id) == Acad::eOk) return id;
    refuse(translated(L"Cannot find layer state %1.", inQuotes(name)));
    return AcDbObjectId();
}

// --- the options; false when the user cancelled

bool list(AcDbDatabase* database) {
    const std::optional<std::wstring> names =
        askText(translated(L"\nEnter name(s) of layer states to list <*>: "), Blanks::Kept);
    if (!names) return false;
    std::vector<NamedRecord> states = allStates(database);
    if (states.empty()) return tell(translated(L"The drawing keeps no layer states.")), true;
    if (!names->empty()) states = findRecords(states, *names, untranslated(L"layer state"));
    std::vector<Row> rows = {
        {translated(L"Layer state"), translated(L"Layers"), translated(L"Current layer"), translated(L"Description")}};
    for (const NamedRecord& named : states) {
        const XRecord record(named.id, AcDb::kForRead);
        if (record.openStatus() != Acad::eOk) continue;
        const LayerState state = readState(*record.object());
        rows.push_back(
            {inQuotes(named.name), std::to_wstring(state.layers.size()), inQuotes(state.current), state.description});
    }
    if (rows.size() > 1) printTable(std::move(rows));
    return true;
}

// One of that name is replaced: a job that runs again must not restore what an earlier run left.
bool save(AcDbDatabase* database) {
    const std::optional<std::wstring> name = askText(translated(L"\nEnter name for layer state: "), Blanks::Kept);
    if (!name || name->empty()) return name.has_value();
    const Chain chain = chainOf(stateOf(database));
    Dictionary states(madeStatesId(database), AcDb::kForWrite);
    if (states.openStatus() != Acad::eOk)
        return refuse(translated(L"A drawing of this version cannot keep layer states.")), true;
    AcDbObjectId id;
    const bool replaces = states->getAt(name->c_str(), id) == Acad::eOk;
    XRecord record;
    record.create();
    const bool saved = chain && record->setFromRbChain(*chain) == Acad::eOk &&
                       states->setAt(name->c_str(), record.object(), id) == Acad::eOk;
    if (!saved)
        refuse(translated(L"Cannot save layer state %1.", inQuotes(*name)));
    else
        tell(replaces ? translated(L"Layer state %1 replaced.", inQuotes(*name))
                      : translated(L"Layer state %1 saved.", inQuotes(*name)));
    return true;
}

bool restoreNamed(AcDbDatabase* database) {
    const std::optional<std::wstring> name =
        askText(translated(L"\nEnter name of layer state to restore: "), Blanks::Kept);
    if (!name || name->empty()) return name.has_value();
    LayerState state;
    {
        const AcDbObjectId id = findState(database, *name);
        if (id.isNull()) return true;
        const XRecord record(id, AcDb::kForRead);
        if (record.openStatus() != Acad::eOk)
            return refuse(translated(L"Cannot read layer state %1.", inQuotes(*name))), true;
        state = readState(*record.object());
    }
    restore(database, state);
    tell(translated(L"Layer state %1 restored.", inQuotes(*name)));
    return true;
}

bool remove(AcDbDatabase* database) {
    const std::optional<std::wstring> name =
        askText(translated(L"\nEnter name of layer state to delete: "), Blanks::Kept);
    if (!name || name->empty()) return name.has_value();
    if (findState(database, *name).isNull()) return true;
    {
        Dictionary states(statesId(database), AcDb::kForWrite);
        if (states.openStatus() != Acad::eOk || states->remove(name->c_str()) != Acad::eOk)
            return refuse(translated(L"Cannot delete layer state %1.", inQuotes(*name))), true;
    }
    releaseStates(database);
    tell(translated(L"Layer state %1 deleted.", inQuotes(*name)));
    return true;
}

struct Option {
    const wchar_t* keyword;
    bool (*run)(AcDbDatabase* database);
};

constexpr Option kOptions[] = {{L"?", &list}, {L"Save", &save}, {L"Restore", &restoreNamed}, {L"Delete", &remove}};

}  // namespace

bool changeLayerStates(AcDbDatabase* database) {
    const std::optional<std::wstring> keyword =
        askKeyword(L"? Save Restore Delete", translated(L"\nEnter an option [?/Save/Restore/Delete]: "));
    if (!keyword) return false;
    for (const Option& option : kOptions)
        if (*keyword == option.keyword) return option.run(database);
    return true;
}

}  // namespace qrs::host::commands
