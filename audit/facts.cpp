// Gathers the facts: the tables, then every entity once, pipes opened, others not.
#include "facts.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <utility>

#include "acutads.h"
#include "dbhandle.h"
#include "dbobjptr.h"
#include "host/platform/text.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_looks.h"
#include "qrs_pipeentity.h"
#include "rules.h"

namespace qrs::audit {

namespace {

constexpr std::string_view kPipe = "QRS_PIPE";
constexpr std::string_view kNode = "QRS_PIPENODE";
constexpr std::string_view kAttachment = "QRS_PIPEATTACHMENT";
constexpr std::string_view kAttribute = "ATTRIB";
constexpr const ACHAR* kSerial = L"PIPE-SERIAL";
constexpr const ACHAR* kBuilding = L"BUILDING-SERIAL";
constexpr const ACHAR* kDiameter = L"PIPE-DN";
constexpr const ACHAR* kMaterial = L"PIPE-MATERIAL";

template <class Record>
std::wstring nameOf(const Record& record) {
    const ACHAR* name = nullptr;
    return record.getName(name) == Acad::eOk && name != nullptr ? std::wstring(name) : std::wstring();
}

template <class Record>
std::wstring nameOf(AcDbObjectId id) {
    const AcDbObjectPointer<Record> record(id, AcDb::kForRead);
    return record.openStatus() == Acad::eOk ? nameOf(*record.object()) : std::wstring();
}

// Every record of a table in its order.
template <class Table, class Record, class Visit>
void visitRecords(AcDbDatabase& database, const Visit& visit) {
    const AcDbSymbolTablePointer<Table> table(&database);
    AcDbTypedTableIterator<Record>* made = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(made) != Acad::eOk) return;
    const std::unique_ptr<AcDbTypedTableIterator<Record>> walk(made);
    for (; !walk->done(); walk->step()) {
        AcDbObjectId id;
        if (walk->getRecordId(id) != Acad::eOk) continue;
        const AcDbObjectPointer<Record> record(id, AcDb::kForRead);
        if (record.openStatus() == Acad::eOk) visit(*record.object(), id);
    }
}

LayerFacts factsOf(const AcDbLayerTableRecord& record) {
    LayerFacts facts;
    facts.color = record.color();
    facts.linetype = nameOf<AcDbLinetypeTableRecord>(record.linetypeObjectId());
    if (facts.linetype.empty()) facts.lostLinetype = LostLinetype(record.objectId());
    facts.lineWeight = record.lineWeight();
    facts.isPlottable = record.isPlottable();
    facts.isShown = !record.isOff() && !record.isFrozen();
    facts.isLocked = record.isLocked();
    return facts;
}

TextStyleFacts factsOf(const AcDbTextStyleTableRecord& record) {
    TextStyleFacts facts;
    ACHAR* text = nullptr;
    if (record.fileName(text) == Acad::eOk) facts.font = taken(text);
    text = nullptr;
    if (record.bigFontFileName(text) == Acad::eOk) facts.bigFont = taken(text);
    text = nullptr;
    int charset = 0;
    int pitchAndFamily = 0;
    if (record.font(text, facts.isBold, facts.isItalic, charset, pitchAndFamily) == Acad::eOk)
        facts.typeface = taken(text);
    facts.height = record.textSize();
    facts.widthFactor = record.xScale();
    return facts;
}

RecordFacts factsOf(const AcDbLinetypeTableRecord&) {
    return {};
}

DimStyleFacts factsOf(const AcDbDimStyleTableRecord& record) {
    DimStyleFacts facts;
    facts.textStyle = nameOf<AcDbTextStyleTableRecord>(record.dimtxsty());
    if (!facts.textStyle.empty()) return facts;
    facts.lostTextStyle = LostTextStyle(record.objectId());
    // Older drawings do not say.
    const bool mayName = record.database()->originalFileVersion() >= AcDb::kDHL_1015;
    if (facts.lostTextStyle.empty() && mayName) facts.textStyle = L"Standard";
    return facts;
}

template <class Table, class Record, class Facts>
void readTable(AcDbDatabase& database, std::vector<Facts>& out) {
    visitRecords<Table, Record>(database, [&out](const Record& record, AcDbObjectId id) {
        Facts facts = factsOf(record);
        facts.name = nameOf(record);
        facts.id = id;
        // Records of shape files have none.
        if (!facts.name.empty()) out.push_back(std::move(facts));
    });
}

// The records of a table by name. Very many entities ask for the same few names, in few spellings.
template <class Facts>
class Finder {
  public:
    explicit Finder(std::vector<Facts>& facts) {
        for (Facts& one : facts)
            byName_.emplace(one.name, &one);
    }
    // Null when the table lacks it.
    Facts* find(std::wstring_view name) const {
        const auto found = byName_.find(name);
        return found != byName_.end() ? found->second : nullptr;
    }

  private:
    ByName<Facts*> byName_;
};

void count(const TEntityLook& look, Tally& objects) {
    if (isCounted(look))
        objects.add(look.id);
    else
        objects.hasParts = true;
}

template <class Facts>
void tell(const Finder<Facts>& records, std::wstring_view name, const TEntityLook& look, ByName<Tally>& missing) {
    if (name.empty()) return;
    if (Facts* record = records.find(name))
        audit::count(look, record->objects);
    else if (!isDependentName(name))
        audit::count(look, missing[std::wstring(name)]);
}

// What nothing names that has been read, and the drawing may do without.
template <class Facts>
void addUnnamed(std::vector<Facts>& facts, bool (*isBuiltIn)(std::wstring_view), AcDbObjectIdArray& ids,
                std::vector<RecordFacts*>& records) {
    for (Facts& one : facts) {
        one.isUsed = one.isUsed || !one.objects.isEmpty() || isBuiltIn(one.name);
        if (one.isUsed) continue;
        ids.append(one.id);
        records.push_back(&one);
    }
}

void addAll(ByName<Tally>& to, const ByName<Tally>& from) {
    for (const auto& [name, tally] : from)
        to[name].add(tally);
}

template <class Facts>
void use(const Finder<Facts>& records, std::wstring_view name) {
    if (Facts* record = records.find(name)) record->isUsed = true;
}

}  // namespace

void Tally::add(const Tally& other) {
    count += other.count;
    hasParts = hasParts || other.hasParts;
    for (const AcDbObjectId& id : other.first)
        if (first.size() < kShown) first.push_back(id);
}

bool isCounted(const TEntityLook& look) {
    return !look.isPart || look.typeName == kAttribute;
}

bool NameLess::operator()(std::wstring_view a, std::wstring_view b) const {
    return platform::compareNoCase(a, b) < 0;
}

bool isSameName(std::wstring_view a, std::wstring_view b) {
    return platform::compareNoCase(a, b) == 0;
}

bool isDependentName(std::wstring_view name) {
    return name.find(L'|') != std::wstring_view::npos;
}

std::wstring taken(ACHAR* text) {
    const std::wstring copy(text != nullptr ? text : L"");
    acutDelString(text);
    return copy;
}

std::wstring handleOf(AcDbObjectId id) {
    ACHAR text[17] = L"";
    const AcDbHandle handle = id.handle();
    if (!handle.isNull()) handle.getIntoAsciiBuffer(text);
    return text;
}

void TableFacts::add(const TableFacts& other) {
    const auto addObjects = [](auto& to, const auto& from) {
        for (std::size_t i = 0; i < to.size(); ++i)
            to[i].objects.add(from[i].objects);
    };
    addObjects(layers, other.layers);
    addObjects(linetypes, other.linetypes);
    addObjects(textStyles, other.textStyles);
    addObjects(dimStyles, other.dimStyles);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        layers[i].ownColor.add(other.layers[i].ownColor);
        layers[i].ownLinetype.add(other.layers[i].ownLinetype);
        layers[i].ownLineWeight.add(other.layers[i].ownLineWeight);
    }
    for (std::size_t i = 0; i < dimStyles.size(); ++i)
        addAll(dimStyles[i].objectsByLayer, other.dimStyles[i].objectsByLayer);
    attachments.insert(attachments.end(), other.attachments.begin(), other.attachments.end());
    onLayerZero.add(other.onLayerZero);
    addAll(missingLayers, other.missingLayers);
    addAll(missingLinetypes, other.missingLinetypes);
    addAll(missingTextStyles, other.missingTextStyles);
    addAll(missingDimStyles, other.missingDimStyles);
    entities += other.entities;
}

DrawingFacts::DrawingFacts(AcDbDatabase& of) : database(of) {
    readTables();
    readEntities();
    findLost();
    findUsed();
}

std::wstring_view DrawingFacts::kept(std::wstring text) {
    return *texts_.insert(std::move(text)).first;
}

void DrawingFacts::readTables() {
    readTable<AcDbLayerTable, AcDbLayerTableRecord>(database, layers);
    readTable<AcDbLinetypeTable, AcDbLinetypeTableRecord>(database, linetypes);
    readTable<AcDbTextStyleTable, AcDbTextStyleTableRecord>(database, textStyles);
    readTable<AcDbDimStyleTable, AcDbDimStyleTableRecord>(database, dimStyles);
}

// Where a pipe lies; it is opened when all entities have been counted.
struct DrawingFacts::PipePlace {
    AcDbObjectId id;
    TEntityLook::Space space = TEntityLook::kBlock;
    std::wstring layer;
};

// What the entities of one part of the drawing say.
class DrawingFacts::EntityCounter {
  public:
    explicit EntityCounter(TableFacts& facts)
        : facts_(facts), linetypes_(facts.linetypes), textStyles_(facts.textStyles), dimStyles_(facts.dimStyles) {
        for (LayerFacts& layer : facts.layers)
            layers_.emplace(layer.id.recordNumber(), &layer);
    }

    void count(const TEntityLook& look) {
        ++facts_.entities;
        const LayerFacts* layer = countOnLayer(look);
        const std::wstring_view layerName = layer != nullptr ? std::wstring_view(layer->name) : look.layerName;
        if (look.hasOwnLinetype && !isSameName(look.linetype, L"ByBlock"))
            tell(linetypes_, look.linetype, look, facts_.missingLinetypes);
        tell(textStyles_, look.textStyle, look, facts_.missingTextStyles);
        for (const std::wstring_view style : look.furtherTextStyles)
            tell(textStyles_, style, look, facts_.missingTextStyles);
        tell(dimStyles_, look.dimStyle, look, facts_.missingDimStyles);
        if (!look.dimStyle.empty())
            if (DimStyleFacts* style = dimStyles_.find(look.dimStyle))
                style->objectsByLayer[std::wstring(layerName)].add(look.id);
        // Attributes on layer 0 stand for the layer of their block, as what lies in the block.
        if (look.space == TEntityLook::kModel && !look.isPart && layerName == L"0") facts_.onLayerZero.add(look.id);
        if (look.typeName == kPipe) pipes.push_back({look.id, look.space, std::wstring(layerName)});
        // What lies in a block is drawn as often as the block, or never.
        if (look.space != TEntityLook::kModel) return;
        if (look.typeName == kNode) nodes.push_back(look.id);
        if (look.typeName == kAttachment) facts_.attachments.push_back(look.id);
    }

    std::vector<PipePlace> pipes;
    std::vector<AcDbObjectId> nodes;

  private:
    // Null when the table lacks it.
    const LayerFacts* countOnLayer(const TEntityLook& look) {
        const auto found = look.layer.isNull() ? layers_.end() : layers_.find(look.layer.recordNumber());
        if (found == layers_.end()) {
            if (!look.layerName.empty() && !isDependentName(look.layerName))
                audit::count(look, facts_.missingLayers[std::wstring(look.layerName)]);
            return nullptr;
        }
        LayerFacts& layer = *found->second;
        audit::count(look, layer.objects);
        if (!isCounted(look)) return &layer;
        if (look.hasOwnColor) layer.ownColor.add(look.id);
        if (look.hasOwnLinetype) layer.ownLinetype.add(look.id);
        if (look.hasOwnLineWeight) layer.ownLineWeight.add(look.id);
        return &layer;
    }

    TableFacts& facts_;
    std::unordered_map<std::uint32_t, LayerFacts*> layers_;
    Finder<RecordFacts> linetypes_;
    Finder<TextStyleFacts> textStyles_;
    Finder<DimStyleFacts> dimStyles_;
};

void DrawingFacts::readEntities() {
    TableFacts following = *this;
    EntityCounter counters[] = {EntityCounter(*this), EntityCounter(following)};
    TEntityLooks::Tell(
        &database, [&](const TEntityLook& look) { counters[0].count(look); },
        [&](const TEntityLook& look) { counters[1].count(look); });
    add(following);
    for (const EntityCounter& counter : counters) {
        for (const PipePlace& pipe : counter.pipes)
            readPipe(pipe);
        std::copy_if(counter.nodes.begin(), counter.nodes.end(), std::back_inserter(wells), &IsWell);
    }
}

void DrawingFacts::readPipe(const PipePlace& place) {
    const AcDbObjectPointer<TDbPipe> pipe(place.id, AcDb::kForRead);
    if (pipe.openStatus() != Acad::eOk) return;
    PipeFacts facts;
    facts.id = place.id;
    facts.isInBlock = place.space == TEntityLook::kBlock;
    facts.system = kept(PipeSystemTool::GetPipeSystemName(pipe.object()).GetString());
    facts.drawnSystem = kept(pipe->GetDrawnSystemName());
    facts.layer = kept(place.layer);
    const auto mark = [&](const ACHAR* name) { return kept(PwxTool::ReadXdata(pipe.object(), name).GetString()); };
    facts.serial = mark(kSerial);
    facts.building = mark(kBuilding);
    facts.diameter = mark(kDiameter);
    facts.material = mark(kMaterial);
    facts.startNode = pipe->GetStartNode();
    facts.endNode = pipe->GetEndNode();
    const TPipeCurve curve = pipe->GetCurve();
    facts.length = curve.Length();
    facts.isMeasured = std::isfinite(facts.length);
    if (!facts.isMeasured) facts.length = 0.0;
    // A pipe of no length stands nowhere.
    facts.isRiser = facts.isMeasured && curve.IsVertical() && curve.start.z != curve.end.z;
    AcDbObjectIdArray following;
    pipe->GetAttachments(following);
    facts.attachments.assign(following.begin(), following.end());
    (place.space == TEntityLook::kModel ? pipes : pipesElsewhere).push_back(std::move(facts));
}

// Layers and dimension styles name them without being objects that are counted.
void DrawingFacts::findLost() {
    for (const LayerFacts& layer : layers)
        if (!layer.isDependent() && !layer.lostLinetype.empty()) missingLinetypes[layer.lostLinetype];
    for (const DimStyleFacts& style : dimStyles)
        if (!style.isDependent() && !style.lostTextStyle.empty()) missingTextStyles[style.lostTextStyle];
}

// What no entity names may be needed by layers, styles, dictionaries.
void DrawingFacts::findUsed() {
    const Finder<RecordFacts> linetypeFinder(linetypes);
    const Finder<TextStyleFacts> textStyleFinder(textStyles);
    for (const LayerFacts& layer : layers)
        use(linetypeFinder, layer.linetype);
    for (const DimStyleFacts& style : dimStyles)
        use(textStyleFinder, style.textStyle);
    const AcDbObjectId current = database.clayer();
    for (LayerFacts& layer : layers)
        if (layer.id == current) layer.isUsed = true;
    AcDbObjectIdArray ids;
    std::vector<RecordFacts*> records;
    addUnnamed(layers, &isBuiltInLayer, ids, records);
    addUnnamed(linetypes, &isBuiltInLinetype, ids, records);
    addUnnamed(textStyles, &isBuiltInTextStyle, ids, records);
    if (ids.isEmpty()) return;
    std::vector<Adesk::UInt32> counts(records.size());
    if (!CountOtherUses(&database, ids, counts.data())) return;
    for (std::size_t i = 0; i < records.size(); ++i)
        records[i]->isUsed = counts[i] > 0;
}

}  // namespace qrs::audit
