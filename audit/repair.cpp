// Plans the changes from the facts, and carries them out.
#include "repair.h"

#include <algorithm>
#include <map>
#include <utility>

#include "csv.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "rules.h"

namespace qrs::audit {

namespace {

std::wstring wide(const CString& text) {
    return std::wstring(text.view());
}

// "colour 1 -> 3, linetype Continuous -> J"
std::wstring textOf(const std::vector<Difference>& differences) {
    std::wstring text;
    for (const Difference& difference : differences)
        text += (text.empty() ? L"" : L", ") + difference.property + L" " + difference.drawing + L" -> " +
                difference.standard;
    return text;
}

std::wstring doneUnless(bool isDone, const wchar_t* reason) {
    return isDone ? std::wstring() : platform::translated(reason);
}

template <class Record>
std::wstring rename(AcDbObjectId id, const std::wstring& name) {
    AcDbObjectPointer<Record> record(id, AcDb::kForWrite);
    if (record.openStatus() != Acad::eOk) return platform::translated(L"it cannot be opened");
    return doneUnless(record->setName(name.c_str()) == Acad::eOk,
                      platform::untranslated(L"the drawing does not take the name"));
}

std::wstring update(AcDbObjectId style, const TextStyleNode& node) {
    if (canHaveFontOf(node))
        return doneUnless(PipeSystemTool::UpdateTextStyle(node.Name), platform::untranslated(L"it cannot be opened"));
    // The font stays.
    AcDbTextStyleTableRecordPointer record(style, AcDb::kForWrite);
    return doneUnless(record.openStatus() == Acad::eOk && record->setTextSize(node.FontHeigth) == Acad::eOk &&
                          record->setXScale(widthFactorOf(node)) == Acad::eOk,
                      platform::untranslated(L"it cannot be opened"));
}

// Of several layers that become one, a shown one gives it its name: what hides a layer stays with it.
std::vector<const LayerFacts*> shownFirst(const std::vector<LayerFacts>& layers) {
    std::vector<const LayerFacts*> all;
    for (const LayerFacts& layer : layers)
        all.push_back(&layer);
    std::stable_partition(all.begin(), all.end(), [](const LayerFacts* layer) { return layer->isShown; });
    return all;
}

bool isLayerName(const std::wstring& name) {
    AcDbLayerTableRecordPointer record;
    record.create();
    return record->setName(name.c_str()) == Acad::eOk;
}

template <class Facts>
bool isIn(const std::vector<Facts>& records, std::wstring_view name) {
    return std::any_of(records.begin(), records.end(), [&](const Facts& one) { return isSameName(one.name, name); });
}

}  // namespace

bool isLayerZero(std::wstring_view layer) {
    return layer == L"0";
}

std::wstring textOf(const Tally& objects, const std::wstring& layer) {
    std::wstring handles;
    for (const AcDbObjectId& id : objects.first)
        handles += (handles.empty() ? L"" : L", ") + handleOf(id);
    if (objects.count > objects.first.size()) handles += L", ...";
    return platform::translated(objects.count == 1 ? platform::untranslated(L"%1 object of layer %2 (%3)")
                                                   : platform::untranslated(L"%1 objects of layer %2 (%3)"),
                                objects.count, layer, handles);
}

bool Repair::add(const wchar_t* rule, const std::wstring& subject, Change change, const std::wstring& obstacle) {
    const std::wstring reason = accepted_ != nullptr ? accepted_->reasonOf(*ruleNamed(rule), subject) : std::wstring();
    if (!reason.empty())
        kept_.push_back(platform::translated(L"%1; accepted: %2", change.text, reason));
    else if (!obstacle.empty())
        refusals_.push_back(change.text + L": " + obstacle);
    else
        changes_.push_back(std::move(change));
    return reason.empty() && obstacle.empty();
}

// --- layers

bool Repair::hasLayer(const std::wstring& name) const {
    return coming_.count(name) > 0 || isIn(facts_.layers, name);
}

bool Repair::isShown(const std::wstring& name) const {
    if (const auto found = coming_.find(name); found != coming_.end()) return found->second;
    return std::all_of(facts_.layers.begin(), facts_.layers.end(),
                       [&](const LayerFacts& layer) { return layer.isShown || !isSameName(layer.name, name); });
}

std::wstring Repair::textOfMove(const std::wstring& from, const std::wstring& to, bool isSeen) const {
    const bool vanishes = isSeen && !isShown(to);
    return platform::translated(L"objects of layer %1 moved to %2", from,
                                vanishes ? platform::translated(L"%1, which is frozen or off", to) : to);
}

void Repair::planLayer(const LayerFacts& layer, const std::wstring& name) {
    const bool isNew = !hasLayer(name);
    const bool isSame = isSameName(layer.name, name);
    const wchar_t* const rule = isSame ? L"layer-case" : L"layer-old-name";
    const std::wstring obstacle =
        doneUnless(isLayerName(name), platform::untranslated(L"the drawing does not take the name"));
    // One that others are moved to keeps its name.
    if (isSame || (isNew && !isBuiltInLayer(layer.name) && goals_.count(layer.name) == 0)) {
        const bool isRenamed = add(rule, layer.name,
                                   {platform::translated(L"layer %1 renamed %2", layer.name, name), layer.objects.count,
                                    [this, &layer, name] {
                                        std::wstring reason = rename<AcDbLayerTableRecord>(layer.id, name);
                                        if (!reason.empty()) renamed_.erase(&layer);
                                        return reason;
                                    }},
                                   obstacle);
        if (isRenamed) {
            coming_[name] = layer.isShown;
            renamed_[&layer] = name;
        }
        if (isRenamed || isSame) planProperties(layer, isRenamed ? name : layer.name);
        return;
    }
    // In blocks layer 0 stands for the layer of the block.
    const Tally& objects = isLayerZero(layer.name) ? facts_.onLayerZero : layer.objects;
    if (objects.isEmpty()) return;
    const auto makeRoom = [this, from = layer.name, name, isNew] {
        if (!isNew || !PipeSystemTool::InitLayer(CString(name)).isNull()) return std::wstring();
        layerMoves_[from].clear();
        return platform::translated(L"neither the drawing nor the standard has it");
    };
    std::wstring hindrance = obstacle;
    if (layer.isLocked)
        hindrance = platform::translated(L"the layer is locked");
    else if (hindrance.empty() && isNew && standard_.layer(name) == nullptr)
        hindrance = platform::translated(L"neither the drawing nor the standard has it");
    const std::wstring text = textOfMove(layer.name, name, layer.isShown);
    if (!add(rule, layer.name, {text, objects.count, makeRoom}, hindrance)) return;
    changes_.back().given = &(layerMoves_[layer.name] = name);
    coming_.emplace(name, isShown(name));
}

void Repair::planProperties(const LayerFacts& layer, const std::wstring& name) {
    const LayerNode* definition = standard_.layer(name);
    if (definition == nullptr) return;
    const std::vector<Difference> differences = differencesOf({facts_, standard_}, layer, *definition);
    if (differences.empty()) return;
    add(L"layer-different", layer.name,
        {platform::translated(L"layer %1: %2", name, textOf(differences)), layer.objects.count, [name] {
             return doneUnless(PipeSystemTool::UpdateLayer(CString(name)),
                               platform::untranslated(L"it cannot be opened"));
         }});
}

void Repair::planAll(AcceptedFindings& accepted) {
    accepted_ = &accepted;
    std::vector<std::pair<const LayerFacts*, std::wstring>> hidden;
    for (const LayerFacts& layer : facts_.layers) {
        if (layer.isDependent() || isBuiltInLayer(layer.name)) continue;
        std::wstring name = layer.name;
        if (const LayerNode* definition = standard_.layer(layer.name)) name = wide(definition->LayerName);
        const std::vector<const LayerNode*> today = newLayersOf(standard_, layer);
        if (today.size() == 1) name = wide(today.front()->LayerName);
        if (name == layer.name)
            planProperties(layer, name);
        else if (layer.isShown || isSameName(layer.name, name))
            planLayer(layer, name);
        else
            hidden.emplace_back(&layer, name);
    }
    for (const auto& [layer, name] : hidden)
        planLayer(*layer, name);
    for (const auto& [name, objects] : facts_.missingLayers) {
        const std::vector<const LayerNode*> today = layersOfToday(standard_, name);
        if (today.size() == 1 && !isBuiltInLayer(name)) planMissingLayer(name, objects, wide(today.front()->LayerName));
    }
    for (const RecordFacts& linetype : facts_.linetypes) {
        if (!linetype.isDependent() && !isBuiltInLinetype(linetype.name)) planLinetype(linetype);
    }
    planTextStyles();
    planOldSystems();
    accepted_ = nullptr;
}

void Repair::planLinetype(const RecordFacts& linetype) {
    const std::wstring* name = standard_.linetype(linetype.name);
    if (name == nullptr) return;
    if (*name != linetype.name)
        add(L"linetype-case", linetype.name,
            {platform::translated(L"linetype %1 renamed %2", linetype.name, *name), linetype.objects.count,
             [id = linetype.id, name = *name] { return rename<AcDbLinetypeTableRecord>(id, name); }});
    const std::vector<Difference> differences = differencesOf({facts_, standard_}, linetype);
    if (differences.empty()) return;
    add(L"linetype-different", linetype.name,
        {platform::translated(L"linetype %1: %2", *name, textOf(differences)), linetype.objects.count, [name = *name] {
             return doneUnless(PwxTool::UpdateLinetype(CString(name)),
                               platform::untranslated(L"the drawing cannot hold its texts"));
         }});
}

// --- styles and pipes

void Repair::planTextStyles() {
    for (const TextStyleFacts& style : facts_.textStyles) {
        const TextStyleNode* node = style.isDependent() ? nullptr : standard_.textStyle(style.name);
        if (node == nullptr) continue;
        const std::wstring name = wide(node->Name);
        if (name != style.name)
            add(L"textstyle-case", style.name,
                {platform::translated(L"text style %1 renamed %2", style.name, name), style.objects.count,
                 [id = style.id, name] { return rename<AcDbTextStyleTableRecord>(id, name); }});
        const std::vector<Difference> differences = differencesOf(style, *node);
        if (differences.empty()) continue;
        add(L"textstyle-different", style.name,
            {platform::translated(L"text style %1: %2", name, textOf(differences)), style.objects.count,
             [id = style.id, node] { return update(id, *node); }});
    }
}

void Repair::planSystem(const std::wstring& from, const std::wstring& to, const std::vector<const PipeFacts*>& pipes) {
    const wchar_t* const rule = L"pipe-system-old";
    const std::wstring text = platform::translated(L"pipes of %1 given the system %2", from, to);
    std::vector<AcDbObjectId> ids;
    std::map<const LayerFacts*, Tally> locked;
    for (const PipeFacts* pipe : pipes) {
        const LayerFacts* layer = layerOf(*pipe);
        if (layer != nullptr && layer->isLocked)
            locked[layer].add(pipe->id);
        else
            ids.push_back(pipe->id);
    }
    for (const auto& [layer, objects] : locked)
        add(rule, from, {text + L", " + textOf(objects, nameOf(layer)), objects.count, {}},
            platform::translated(L"the layer is locked"));
    if (ids.empty()) return;
    const std::uint64_t count = ids.size();
    add(rule, from, {text, count, [to, ids = std::move(ids)] {
                         bool isDone = true;
                         for (const AcDbObjectId& pipe : ids)
                             isDone = PipeSystemTool::SetPipeSystemName(pipe, CString(to)) && isDone;
                         return doneUnless(isDone, platform::untranslated(L"some cannot be opened"));
                     }});
}

const LayerFacts* Repair::layerOf(const PipeFacts& pipe) const {
    const auto found = std::find_if(facts_.layers.begin(), facts_.layers.end(),
                                    [&](const LayerFacts& layer) { return layer.name == pipe.layer; });
    return found != facts_.layers.end() ? &*found : nullptr;
}

void Repair::planOldSystems() {
    std::map<std::pair<std::wstring_view, std::wstring_view>, std::vector<const PipeFacts*>> pipes;
    for (const auto* place : {&facts_.pipes, &facts_.pipesElsewhere})
        for (const PipeFacts& pipe : *place)
            if (!pipe.drawnSystem.empty() && pipe.drawnSystem != pipe.system)
                pipes[{pipe.drawnSystem, pipe.system}].push_back(&pipe);
    for (const auto& [names, found] : pipes)
        planSystem(std::wstring(names.first), std::wstring(names.second), found);
}

// --- mappings

void Repair::plan(const std::vector<Mapping>& mappings, const std::wstring& file) {
    decide(mappings, file);
    std::vector<std::pair<const LayerFacts*, const Mapping*>> mapped;
    for (const LayerFacts* layer : shownFirst(facts_.layers)) {
        const Mapping* mapping = decisionOn(Mapping::Kind::Layer, layer->name);
        if (mapping == nullptr || layer->isDependent() || layer->name == mapping->to) continue;
        mapped.emplace_back(layer, mapping);
        if (!isSameName(layer->name, mapping->to)) goals_.insert(mapping->to);
    }
    for (const auto& missing : facts_.missingLayers)
        if (const Mapping* mapping = decisionOn(Mapping::Kind::Layer, missing.first)) goals_.insert(mapping->to);
    for (const auto& [layer, mapping] : mapped)
        planLayer(*layer, mapping->to);
    planMissingLayers();
    planLinetypes();
    planTexts();
    planSystems();
}

void Repair::decide(const std::vector<Mapping>& mappings, const std::wstring& file) {
    std::map<Mapping::Kind, std::vector<std::wstring_view>> names;
    for (const Mapping& mapping : mappings) {
        if (names.count(mapping.kind) == 0) names[mapping.kind] = namesOf(mapping.kind);
        bool isIdle = true, isLate = false;
        for (const std::wstring_view name : names[mapping.kind]) {
            if (!fits(mapping, name)) continue;
            if (decisions_.emplace(std::pair(mapping.kind, name), &mapping).second)
                isIdle = false;
            else
                isLate = true;
        }
        if (!isIdle) continue;
        const std::wstring fault =
            platform::translated(isLate ? platform::untranslated(L"earlier rows decide on all that fits \"%1\"")
                                        : platform::untranslated(L"nothing in the drawing fits \"%1\""),
                                 mapping.from);
        idle_.push_back(platform::fromUtf8(faultAt(file, mapping.line, fault)));
    }
}

const Mapping* Repair::decisionOn(Mapping::Kind kind, std::wstring_view name) const {
    const auto found = decisions_.find({kind, name});
    return found != decisions_.end() ? found->second : nullptr;
}

std::vector<std::wstring_view> Repair::namesOf(Mapping::Kind kind) const {
    std::set<std::wstring_view> names;
    const auto take = [&](const auto& records, const ByName<Tally>& missing) {
        for (const auto& one : records)
            if (!one.isDependent()) names.insert(one.name);
        for (const auto& one : missing)
            names.insert(one.first);
    };
    switch (kind) {
        case Mapping::Kind::Layer:
            take(facts_.layers, facts_.missingLayers);
            break;
        case Mapping::Kind::Linetype:
            take(facts_.linetypes, facts_.missingLinetypes);
            break;
        case Mapping::Kind::TextStyle:
            take(facts_.textStyles, facts_.missingTextStyles);
            break;
        case Mapping::Kind::PipeSystem:
            for (const auto* place : {&facts_.pipes, &facts_.pipesElsewhere})
                for (const PipeFacts& pipe : *place)
                    names.insert(pipe.system);
    }
    return {names.begin(), names.end()};
}

void Repair::planSystems() {
    std::map<const Mapping*, std::vector<const PipeFacts*>> pipes;
    for (const auto* place : {&facts_.pipes, &facts_.pipesElsewhere})
        for (const PipeFacts& pipe : *place) {
            const Mapping* mapping = decisionOn(Mapping::Kind::PipeSystem, pipe.system);
            if (mapping != nullptr && pipe.system != mapping->to) pipes[mapping].push_back(&pipe);
        }
    for (const auto& [mapping, found] : pipes)
        planSystem(mapping->from, mapping->to, found);
}

// Layers that objects name although the drawing does not have them.
void Repair::planMissingLayers() {
    for (const auto& [name, objects] : facts_.missingLayers) {
        const Mapping* mapping = decisionOn(Mapping::Kind::Layer, name);
        if (mapping == nullptr || (isBuiltInLayer(name) && isSameName(name, mapping->to))) continue;
        planMissingLayer(name, objects, mapping->to);
    }
}

void Repair::planMissingLayer(const std::wstring& name, const Tally& objects, const std::wstring& to) {
    const bool isSame = isSameName(name, to);
    if (isSame && hasLayer(to)) return;
    const bool canBe = hasLayer(to) || standard_.layer(to) != nullptr;
    // One that the drawing has is taken as it is.
    const auto make = [this, name, to] {
        if (!PipeSystemTool::InitLayer(CString(to)).isNull()) return std::wstring();
        layerMoves_[name].clear();
        return platform::translated(L"neither the drawing nor the standard has it");
    };
    if (!add(L"layer-missing", name,
             {isSame ? platform::translated(L"layer %1 made", to) : textOfMove(name, to, true), objects.count, make},
             doneUnless(canBe, platform::untranslated(L"neither the drawing nor the standard has it"))))
        return;
    if (!isSame) changes_.back().given = &(layerMoves_[name] = to);
    coming_.emplace(to, isShown(to));
}

// Layers and objects alike.
void Repair::planLinetypes() {
    for (const RecordFacts& linetype : facts_.linetypes)
        if (!linetype.isDependent()) planLinetypeMove(linetype.name, linetype.objects);
    for (const auto& [name, objects] : facts_.missingLinetypes)
        planLinetypeMove(name, objects);
}

void Repair::planLinetypeMove(const std::wstring& from, const Tally& objects) {
    const Mapping* mapping = decisionOn(Mapping::Kind::Linetype, from);
    if (mapping == nullptr || isSameName(from, mapping->to)) return;
    const bool isForObjects = isSameName(mapping->to, L"ByLayer") || isSameName(mapping->to, L"ByBlock");
    std::vector<const LayerFacts*> layers;
    for (const LayerFacts& layer : facts_.layers)
        if (!layer.isDependent() && (isSameName(layer.linetype, from) || isSameName(layer.lostLinetype, from)))
            layers.push_back(&layer);
    if (isForObjects) {
        keepOnLayers(from, layers, mapping->to);
        layers.clear();
    }
    if (layers.empty() && objects.isEmpty()) return;
    const std::wstring text = platform::translated(L"linetype %1 replaced by %2", from, mapping->to);
    std::wstring pattern;
    if (!isForObjects && !isIn(facts_.linetypes, mapping->to) && !standard_.pattern(mapping->to, pattern)) {
        refusals_.push_back(text + L": " + platform::translated(L"neither the drawing nor linetype.dbf has it"));
        return;
    }
    const std::wstring* const given = &(linetypeMoves_[from] = mapping->to);
    // Old drawings have no record of what objects may do without.
    if (isForObjects) {
        changes_.push_back({text, objects.count, [] { return std::wstring(); }, given});
        return;
    }
    changes_.push_back({text, objects.count,
                        [this, layers, from, to = mapping->to] {
                            const AcDbObjectId id = PwxTool::LoadQdLineType(CString(to));
                            if (id.isNull()) {
                                linetypeMoves_[from].clear();
                                return platform::translated(L"neither the drawing nor linetype.dbf has it");
                            }
                            bool isDone = true;
                            for (const LayerFacts* layer : layers) {
                                AcDbLayerTableRecordPointer record(layer->id, AcDb::kForWrite);
                                isDone = record.openStatus() == Acad::eOk &&
                                         record->setLinetypeObjectId(id) == Acad::eOk && isDone;
                            }
                            return doneUnless(isDone, platform::untranslated(L"some layers cannot be opened"));
                        },
                        given, !layers.empty()});
}

void Repair::keepOnLayers(const std::wstring& linetype, const std::vector<const LayerFacts*>& layers,
                          const std::wstring& to) {
    if (layers.empty()) return;
    std::wstring names;
    for (std::size_t i = 0; i < layers.size() && i < Tally::kShown; ++i)
        names += (i > 0 ? L", " : L"") + layers[i]->name;
    if (layers.size() > Tally::kShown) names += L", ...";
    kept_.push_back(platform::translated(L"linetype %1 of layer %2; %3 is for objects alone", linetype, names, to));
}

// Texts that name no style are written in "Standard", also where the drawing lacks it.
void Repair::planTexts() {
    for (const TextStyleFacts& style : facts_.textStyles)
        if (!style.isDependent()) planTextMove(style.name, style.objects);
    for (const auto& [name, objects] : facts_.missingTextStyles)
        planTextMove(name, objects);
}

void Repair::planTextMove(const std::wstring& from, const Tally& objects) {
    const Mapping* mapping = decisionOn(Mapping::Kind::TextStyle, from);
    if (mapping == nullptr || isSameName(from, mapping->to)) return;
    std::vector<AcDbObjectId> dimStyles;
    for (const DimStyleFacts& style : facts_.dimStyles)
        if (!style.isDependent() && (isSameName(style.textStyle, from) || isSameName(style.lostTextStyle, from)))
            dimStyles.push_back(style.id);
    if (dimStyles.empty() && objects.count == 0) return;
    const std::wstring text = platform::translated(L"texts in %1 written in %2", from, mapping->to);
    if (!isIn(facts_.textStyles, mapping->to) && standard_.textStyle(mapping->to) == nullptr) {
        refusals_.push_back(text + L": " + platform::translated(L"neither the drawing nor the standard has it"));
        return;
    }
    const std::wstring* const given = &(textStyleMoves_[from] = mapping->to);
    changes_.push_back(
        {text, objects.count,
         [this, dimStyles, from, to = mapping->to] {
             const AcDbObjectId id = PipeSystemTool::InitTextStyle(CString(to));
             if (id.isNull()) {
                 textStyleMoves_[from].clear();
                 return platform::translated(L"neither the drawing nor the standard has it");
             }
             bool isDone = true;
             for (const AcDbObjectId& style : dimStyles) {
                 AcDbObjectPointer<AcDbDimStyleTableRecord> record(style, AcDb::kForWrite);
                 isDone = record.openStatus() == Acad::eOk && record->setDimtxsty(id) == Acad::eOk && isDone;
             }
             return doneUnless(isDone, platform::untranslated(L"some dimension styles cannot be opened"));
         },
         given, !dimStyles.empty()});
}

// --- all of it

void Repair::apply() {
    finish(true);
}

void Repair::foresee() {
    finish(false);
}

std::wstring Repair::nameOf(const LayerFacts* layer) const {
    if (layer == nullptr) return {};
    const auto found = renamed_.find(layer);
    return found != renamed_.end() ? found->second : layer->name;
}

void Repair::takeOff(const std::map<const std::wstring*, std::uint64_t>& refused) {
    const auto isLeftWithout = [&](Change& change) {
        const auto found = refused.find(change.given);
        if (found == refused.end()) return false;
        change.objects -= std::min(change.objects, found->second);
        return change.objects == 0 && !change.isForMore;
    };
    changes_.erase(std::remove_if(changes_.begin(), changes_.end(), isLeftWithout), changes_.end());
}

void Repair::applyChanges() {
    std::vector<Change> done;
    for (Change& change : changes_) {
        if (const std::wstring reason = change.apply(); !reason.empty())
            refusals_.push_back(change.text + L": " + reason);
        else
            done.push_back(std::move(change));
    }
    changes_ = std::move(done);
}

}  // namespace qrs::audit
