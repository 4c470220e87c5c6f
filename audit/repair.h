// Mends what a check finds, where there is one answer or somebody has given one. Nothing is erased.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "accepted.h"
#include "facts.h"
#include "mapping.h"
#include "standardlists.h"

namespace qrs::audit {

// One thing to be changed.
struct Change {
    std::wstring text;
    std::uint64_t objects = 0;
    // Empty when it is done, or why it is not. Called once, in the order of the list.
    std::function<std::wstring()> apply;
    const std::wstring* given = nullptr;  // the name that these objects are given, after all changes
    bool isForMore = false;               // layers or styles are given it, too
};

// Changes of the working database, planned from its facts.
class Repair {
  public:
    Repair(const DrawingFacts& facts, const StandardLists& standard) : facts_(facts), standard_(standard) {}

    // What has one answer: properties of layers, linetypes and text styles of the standard, old names, capitals. What
    // was accepted stays.
    void planAll(AcceptedFindings& accepted);
    // File (in the inner form) is where the mappings come from.
    void plan(const std::vector<Mapping>& mappings, const std::wstring& file);

    const std::vector<Change>& changes() const { return changes_; }
    // What stays since it was accepted, with the reason.
    const std::vector<std::wstring>& kept() const { return kept_; }
    // What is not possible, with the reason: what the plan could see, and, after apply, what did not succeed.
    const std::vector<std::wstring>& refusals() const { return refusals_; }
    // Rows of mappings that decide on no name of the drawing, with file and line.
    const std::vector<std::wstring>& idle() const { return idle_; }
    // Carries the changes out, once; those that did not succeed are changes no more.
    void apply();
    // In place of it: tells of the objects that it could not change.
    void foresee();

  private:
    class Mover;

    // Takes a change up that mends what a rule finds of a subject. False when that was accepted, or an obstacle is
    // known.
    bool add(const wchar_t* rule, const std::wstring& subject, Change change, const std::wstring& obstacle = {});
    void planLayer(const LayerFacts& layer, const std::wstring& name);
    void planProperties(const LayerFacts& layer, const std::wstring& name);
    void planLinetype(const RecordFacts& linetype);
    void planTextStyles();
    void planOldSystems();
    void planSystems();
    void finish(bool isCarriedOut);
    void applyChanges();
    // Some objects keep what they have, by the names they were to be given. What is left without any is no change.
    void takeOff(const std::map<const std::wstring*, std::uint64_t>& refused);
    void planSystem(const std::wstring& from, const std::wstring& to, const std::vector<const PipeFacts*>& pipes);
    // Null when the drawing does not have it.
    const LayerFacts* layerOf(const PipeFacts& pipe) const;
    void planMissingLayers();
    // What lies on a layer that the drawing lacks: the layer is made, or another takes the objects.
    void planMissingLayer(const std::wstring& name, const Tally& objects, const std::wstring& to);
    void planLinetypes();
    void planLinetypeMove(const std::wstring& from, const Tally& objects);
    void planTexts();
    // Texts, and dimension styles.
    void planTextMove(const std::wstring& from, const Tally& objects);
    // Layers have a linetype, whatever objects may do without.
    void keepOnLayers(const std::wstring& linetype, const std::vector<const LayerFacts*>& layers,
                      const std::wstring& to);
    // The names of the drawing, each once, that rows of that kind can decide on.
    std::vector<std::wstring_view> namesOf(Mapping::Kind kind) const;
    // Finds what is decided on each name, and tells of the rows that decide on none.
    void decide(const std::vector<Mapping>& mappings, const std::wstring& file);
    // Null when no row fits the name.
    const Mapping* decisionOn(Mapping::Kind kind, std::wstring_view name) const;
    // As it is called once the changes are made. Null has none.
    std::wstring nameOf(const LayerFacts* layer) const;
    bool hasLayer(const std::wstring& name) const;
    // Whether what lies on a layer is seen, once the changes before are made.
    bool isShown(const std::wstring& name) const;
    // What was seen is not to vanish without a word.
    std::wstring textOfMove(const std::wstring& from, const std::wstring& to, bool isSeen) const;

    const DrawingFacts& facts_;
    const StandardLists& standard_;
    AcceptedFindings* accepted_ = nullptr;  // none where somebody says what is to be done
    std::vector<Change> changes_;
    std::vector<std::wstring> kept_;
    std::vector<std::wstring> refusals_;
    std::vector<std::wstring> idle_;
    // Rows of mappings, by the kind and name that they decide on.
    std::map<std::pair<Mapping::Kind, std::wstring_view>, const Mapping*> decisions_;
    ByName<bool> coming_;                     // layers that a change before has made or renamed; whether they are shown
    std::set<std::wstring, NameLess> goals_;  // layers that others are mapped to
    std::map<const LayerFacts*, std::wstring> renamed_;
    // What objects are to be given, by what they have: in one pass after all changes. Empty: it could not be made.
    ByName<std::wstring> layerMoves_, linetypeMoves_, textStyleMoves_;
};

// In blocks it stands for the layer of the block.
bool isLayerZero(std::wstring_view layer);
// "3 objects of layer TEMP (41, 42, 43)"
std::wstring textOf(const Tally& objects, const std::wstring& layer);

}  // namespace qrs::audit
