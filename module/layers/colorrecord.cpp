// The record "TuCengDanSe-YanSeHuiFu" in the dictionary of named objects: read, written, erased.
#include "layers/colorrecord.h"

#include "acutads.h"
#include "adscodes.h"
#include "dbdict.h"
#include "dbobjptr.h"
#include "dbxrecrd.h"
#include "tools/chain.h"

namespace qrs::layers {

using tools::Chain;

namespace {

// An entry of the named objects; its chain holds the name of a layer and its colour index in turn.
constexpr const wchar_t* kEntry = L"TuCengDanSe-YanSeHuiFu";
constexpr short kNameCode = AcDb::kDxfLayerName;
constexpr short kIndexCode = AcDb::kDxfColor;

using Dictionary = AcDbObjectPointer<AcDbDictionary>;
using Record = AcDbObjectPointer<AcDbXrecord>;

AcDbObjectId recordId(AcDbDatabase* database) {
    AcDbObjectId id;
    if (!database) return id;
    const Dictionary named(database->namedObjectsDictionaryId(), AcDb::kForRead);
    if (named.openStatus() != Acad::eOk || named->getAt(kEntry, id) != Acad::eOk) id.setNull();
    return id;
}

Chain chainOf(const std::vector<LayerColor>& colors) {
    Chain chain;
    resbuf* last = nullptr;
    for (const LayerColor& color : colors) {
        resbuf* pair = acutBuildList(kNameCode, color.layer.c_str(), kIndexCode, color.index, RTNONE);
        if (!pair) return nullptr;
        if (last)
            last->rbnext = pair;
        else
            chain.reset(pair);
        last = pair->rbnext;
    }
    return chain;
}

// The named objects, opened for writing; they are put into a drawing that lacks them, where it can hold them.
Acad::ErrorStatus openNamedObjects(AcDbDatabase* database, Dictionary& named) {
    AcDbDictionary* opened = nullptr;
    const Acad::ErrorStatus status = database->getNamedObjectsDictionary(opened, AcDb::kForWrite);
    return status == Acad::eOk ? named.acquire(opened) : status;
}

bool addRecord(AcDbDatabase* database, const resbuf& chain) {
    Dictionary named;
    Record record;
    record.create();
    AcDbObjectId id;
    return record->setFromRbChain(chain) == Acad::eOk && openNamedObjects(database, named) == Acad::eOk &&
           named->setAt(kEntry, record.object(), id) == Acad::eOk;
}

}  // namespace

std::optional<std::vector<LayerColor>> readColorRecord(AcDbDatabase* database) {
    const Record record(recordId(database), AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return std::nullopt;
    resbuf* links = nullptr;
    std::vector<LayerColor> colors;
    if (record->rbChain(&links) != Acad::eOk) return colors;
    const Chain chain(links);
    for (const resbuf* link = links; link && link->rbnext; link = link->rbnext) {
        const resbuf* index = link->rbnext;
        if (link->restype != kNameCode || index->restype != kIndexCode || !link->resval.rstring) continue;
        if (index->resval.rint >= 1 && index->resval.rint <= 255)
            colors.push_back({link->resval.rstring, index->resval.rint});
    }
    return colors;
}

bool writeColorRecord(AcDbDatabase* database, const std::vector<LayerColor>& colors) {
    const Chain chain = chainOf(colors);
    if (!database || !chain) return false;
    const AcDbObjectId id = recordId(database);
    if (id.isNull()) return addRecord(database, *chain);
    Record record(id, AcDb::kForWrite);
    return record.openStatus() == Acad::eOk && record->setFromRbChain(*chain) == Acad::eOk;
}

void eraseColorRecord(AcDbDatabase* database) {
    Dictionary named;
    if (database && openNamedObjects(database, named) == Acad::eOk) named->remove(kEntry);
}

}  // namespace qrs::layers
