// Selections: what the user answers at a selection prompt, and what programs select by themselves.
#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "acdbads.h"
#include "acedads.h"
#include "dbmain.h"
#include "host/drawing/spaces.h"
#include "host/editor/documents.h"
#include "host/editor/entityfilter.h"
#include "host/editor/entitynames.h"
#include "host/editor/hostselect.h"
#include "host/editor/picking.h"
#include "host/editor/points.h"
#include "host/editor/regions.h"
#include "host/editor/selecting.h"
#include "host/editor/session.h"
#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

enum class Word { Nothing, All, Last, Previous, Add, Remove, Undo, Single, Repeat, Region, Point };

struct WordRow {
    const wchar_t* name;
    std::size_t shortest;
    Word word;
    RegionKind region = RegionKind::Window;
};

constexpr WordRow kWords[] = {
    {L"ALL", 3, Word::All},
    {L"LAST", 1, Word::Last},
    {L"PREVIOUS", 1, Word::Previous},
    {L"ADD", 1, Word::Add},
    {L"REMOVE", 1, Word::Remove},
    {L"UNDO", 1, Word::Undo},
    {L"SINGLE", 2, Word::Single},
    // Picks one after the other are what the prompt takes anyway.
    {L"MULTIPLE", 1, Word::Repeat},
    {L"AUTO", 2, Word::Repeat},
    {L"WINDOW", 1, Word::Region, RegionKind::Window},
    {L"CROSSING", 1, Word::Region, RegionKind::Crossing},
    {L"BOX", 3, Word::Region, RegionKind::Box},
    {L"FENCE", 1, Word::Region, RegionKind::Fence},
    {L"WPOLYGON", 2, Word::Region, RegionKind::InPolygon},
    {L"CPOLYGON", 2, Word::Region, RegionKind::CrossingPolygon},
};

// An answer at a selection prompt, understood.
struct Understood {
    Word word = Word::Nothing;
    RegionKind region = RegionKind::Window;
    pick::Vec point;
};

Understood understand(const std::wstring& answer) {
    std::wstring typed = platform::foldCase(answer);
    if (!typed.empty() && typed.front() == L'_') typed.erase(0, 1);
    for (const WordRow& row : kWords)
        if (typed.size() >= row.shortest && std::wstring_view(row.name).substr(0, typed.size()) == typed)
            return {row.word, row.region, {}};
    double point[3];
    if (!parsePoint(answer, nullptr, point)) return {};
    return {Word::Point, RegionKind::Box, {point[0], point[1], point[2]}};
}

// Beside the flags that hostselect.h gives out.
constexpr unsigned kSelectAllMet = 0x100;

// One selection the user makes.
class Selecting {
  public:
    Selecting(Session& session, AcApDocument& document, const resbuf* filter, bool wildcards, unsigned flags)
        : session_(session),
          document_(document),
          database_(*document.database()),
          drawing_(DatabaseAccess::drawing(database_)),
          filter_(database_, filter, wildcards),
          flags_(flags) {}

    bool isUsable() const { return filter_.isUsable(); }

    // The prompts for adding and for removing.
    int ask(const std::wstring& addPrompt, const std::wstring& removePrompt) {
        if (takePickFirst()) return RTNORM;
        for (;;) {
            const Answer answer = session_.ask(removing_ ? removePrompt : addPrompt, Extent::Word);
            if (answer.reply != Reply::Line) return RTCAN;
            if (answer.text.empty()) break;
            session_.lastKeyword = keywords_.match(answer.text);
            if (!session_.lastKeyword.empty()) return RTKWORD;
            const bool chose = take(answer.text);
            if (cancelled_) return RTCAN;
            if (chose && (flags_ & kSelectOnce) && !removing_) break;
        }
        if (chosen_.ids().isEmpty()) return RTNONE;
        document_.state().previousSelection = chosen_.ids();
        return RTNORM;
    }

    const AcDbObjectIdArray& ids() const { return chosen_.ids(); }

    // Answers that end the selection with RTKWORD.
    void setKeywords(Keywords keywords) { keywords_ = std::move(keywords); }

    // The entities a user could reach now with ALL.
    AcDbObjectIdArray reachable() const { return idsOf(Picker(document_).reachable()); }

    AcDbObjectIdArray last() const {
        AcDbObjectIdArray ids;
        const dxf::RecordId last = Picker(document_).last();
        if (last != dxf::kNoRecord) ids.append(idOf(last));
        return ids;
    }

    // What the pick box around a point meets: one entity, or all.
    AcDbObjectIdArray at(const pick::Vec& point, bool all) const {
        std::vector<dxf::RecordId> found = Picker(document_).allAt(point);
        if (!all && found.size() > 1) found.erase(found.begin(), found.end() - 1);
        return idsOf(found);
    }

    AcDbObjectIdArray in(const Drawn& drawn) const { return idsOf(Picker(document_).find(drawn.region, drawn.mode)); }

    // Those that still exist and that the user could reach by name in the space that is current.
    AcDbObjectIdArray existing(const AcDbObjectIdArray& ids) const {
        AcDbObjectIdArray rest;
        const Picker picker(document_);
        for (const AcDbObjectId& id : ids) {
            const dxf::RecordId record = recordOf(id);
            if (record != dxf::kNoRecord && picker.isReachable(record)) rest.append(id);
        }
        return rest;
    }

    AcDbObjectIdArray filtered(const AcDbObjectIdArray& ids) const {
        if (filter_.passesAll()) return ids;
        AcDbObjectIdArray rest;
        for (const AcDbObjectId& id : ids)
            if (filter_.passes(recordOf(id))) rest.append(id);
        return rest;
    }

  private:
    AcDbObjectId idOf(dxf::RecordId record) const { return DatabaseAccess::idOf(database_, record); }

    dxf::RecordId recordOf(const AcDbObjectId& id) const {
        if (id.databaseNumber() != DatabaseAccess::number(database_) || id.isErased()) return dxf::kNoRecord;
        const dxf::RecordId record = DatabaseAccess::recordOf(id);
        return record != dxf::kNoRecord && drawing_.record(record).kind == dxf::RecordKind::Entity ? record
                                                                                                   : dxf::kNoRecord;
    }

    AcDbObjectIdArray idsOf(const std::vector<dxf::RecordId>& records) const {
        AcDbObjectIdArray ids(static_cast<int>(records.size()));
        for (const dxf::RecordId record : records)
            ids.append(idOf(record));
        return ids;
    }

    // The pick-first set answers the first selection of a command that may use it.
    bool takePickFirst() {
        if ((flags_ & kIgnorePickFirst) || session_.running.empty()) return false;
        Running& command = session_.running.front();
        if (!std::exchange(command.takesPickFirst, false)) return false;
        const AcDbObjectIdArray found = existing(document_.state().pickFirst);
        if (found.isEmpty()) return false;
        chosen_ = SelectionSet(filtered(found));
        report(found.length(), 0, found.length() - chosen_.ids().length());
        if (chosen_.ids().isEmpty()) return false;
        document_.state().previousSelection = chosen_.ids();
        return true;
    }

    // True when the answer chose entities.
    bool take(const std::wstring& answer) {
        const Understood understood = understand(answer);
        switch (understood.word) {
            case Word::All:
                return change(reachable());
            case Word::Last:
                return change(last());
            case Word::Previous:
                return changeByPrevious();
            case Word::Add:
            case Word::Remove:
                removing_ = understood.word == Word::Remove;
                return false;
            case Word::Undo:
                return undo();
            case Word::Single:
                flags_ |= kSelectOnce;
                return false;
            case Word::Repeat:
                return false;
            case Word::Region:
                return changeBy(askRegion(session_, understood.region, cancelled_));
            case Word::Point:
                return changeByPoint(understood.point);
            case Word::Nothing:
                break;
        }
        std::wstring fault;
        if (const std::optional<NamedEntities> named = namedEntities(session_, document_, answer, fault))
            return named->reachesAll ? changeByAll(named->ids) : change(existing(named->ids));
        if (!fault.empty()) return session_.refuse(L"\n" + fault + L"\n"), false;
        session_.refuse(translated(
            L"\n*Invalid selection*\nExpects a point or Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Add/"
            L"Remove/Multiple/Previous/Undo/AUto/SIngle or an expression: (ssget \"X\" '((8 . \"PIPE*\")))\n"));
        return false;
    }

    // A point that meets nothing is the first corner of a window.
    bool changeByPoint(const pick::Vec& point) {
        const AcDbObjectIdArray met = at(point, (flags_ & kSelectAllMet) != 0);
        if (!met.isEmpty() || session_.variables.integer(L"PICKAUTO") == 0) return change(met);
        return changeBy(askBox(session_, point, cancelled_));
    }

    bool changeBy(const std::optional<Drawn>& drawn) {
        if (drawn) return change(in(*drawn));
        if (!cancelled_) session_.refuse(translated(L"\nInvalid window specification.\n"));
        return false;
    }

    bool changeByPrevious() {
        const AcDbObjectIdArray& previous = document_.state().previousSelection;
        if (!previous.isEmpty()) return change(existing(previous));
        session_.refuse(translated(L"\nNo previous selection set.\n"));
        return false;
    }

    // Frozen layers and hidden entities are no hindrance, but the space is.
    bool changeByAll(const AcDbObjectIdArray& ids) {
        AcDbObjectIdArray inSpace;
        const Picker picker(document_);
        for (const AcDbObjectId& id : ids)
            if (picker.isInSpace(recordOf(id))) inSpace.append(id);
        const bool chose = change(inSpace);
        const int others = ids.length() - inSpace.length();
        if (others > 0)
            session_.output.print(others == 1 ? translated(L"\n1 was not in current space.\n")
                                              : translated(L"\n%1 were not in current space.\n", others));
        return chose;
    }

    bool change(const AcDbObjectIdArray& found) {
        const AcDbObjectIdArray passing = filtered(found);
        Change done{removing_, {}};
        if (!removing_ && chosen_.isEmpty()) {
            chosen_ = SelectionSet(passing);
            done.ids = passing;
        } else {
            for (const AcDbObjectId& id : passing)
                if (removing_ ? chosen_.remove(id) : chosen_.add(id)) done.ids.append(id);
        }
        const int changed = done.ids.length();
        changes_.push_back(std::move(done));
        report(found.length(), removing_ ? 0 : passing.length() - changed, found.length() - passing.length(),
               removing_ ? changed : 0);
        return !passing.isEmpty();
    }

    // Takes back what the last answer added or removed.
    bool undo() {
        if (changes_.empty()) {
            session_.output.print(translated(L"\nNothing to undo.\n"));
            return false;
        }
        for (const AcDbObjectId& id : changes_.back().ids)
            changes_.back().wasRemoving ? chosen_.add(id) : chosen_.remove(id);
        changes_.pop_back();
        return false;
    }

    void report(int found, int duplicates, int rejected, int removed = 0) {
        std::wstring text = translated(L"\n%1 found", found);
        if (duplicates > 0) text += translated(L" (%1 duplicate)", duplicates);
        if (rejected > 0)
            text +=
                rejected == 1 ? translated(L", 1 was filtered out") : translated(L", %1 were filtered out", rejected);
        if (removing_) text += translated(L", %1 removed", removed);
        const int total = chosen_.ids().length();
        if (removing_ || total != found - duplicates - rejected) text += translated(L", %1 total", total);
        session_.output.print(text + L"\n");
    }

    Session& session_;
    AcApDocument& document_;
    AcDbDatabase& database_;
    dxf::Drawing& drawing_;
    EntityFilter filter_;
    unsigned flags_;
    Keywords keywords_;
    bool removing_ = false;
    bool cancelled_ = false;
    SelectionSet chosen_;
    struct Change {
        bool wasRemoving;
        AcDbObjectIdArray ids;
    };
    std::vector<Change> changes_;
};

AcDbObjectIdArray wholeDrawing(AcDbDatabase& database, const EntityFilter& filter) {
    AcDbObjectIdArray ids;
    forEachEntity(DatabaseAccess::drawing(database), [&](dxf::RecordId id) {
        if (filter.passes(id)) ids.append(DatabaseAccess::idOf(database, id));
    });
    return ids;
}

// A selection mode taken apart: "_:S$X" is the letters X with the options S and $.
struct Mode {
    std::wstring letters;
    bool once = false;
    bool allMet = false;
    bool ownPrompts = false;
    bool usable = true;

    unsigned flags() const { return (once ? unsigned{kSelectOnce} : 0u) | (allMet ? kSelectAllMet : 0u); }
};

Mode parseMode(const ACHAR* text) {
    Mode mode;
    bool option = false;
    for (const wchar_t c : platform::foldCase(text ? text : L"")) {
        if (c == L'_' || c == L'+' || c == L'-' || c == L'.')
            option = false;
        else if (c == L':')
            option = true;
        else if (option && c == L'S')
            mode.once = true;
        else if (option && c == L'E')
            mode.allMet = true;
        else if (option && c == L'$')
            mode.ownPrompts = true;
        else if (option)
            mode.usable = false;
        else
            mode.letters += c;
    }
    return mode;
}

int selectByUser(Session& session, AcApDocument& document, const Mode& mode, const void* prompts, const resbuf* filter,
                 ads_name set) {
    Selecting selecting(session, document, filter, true, mode.flags());
    if (!selecting.isUsable()) return RTREJ;
    std::wstring add = translated(L"\nSelect objects: ");
    std::wstring remove = translated(L"\nRemove objects: ");
    if (mode.ownPrompts && prompts) {
        const ACHAR* const* const texts = static_cast<const ACHAR* const*>(prompts);
        if (texts[0]) add = texts[0];
        if (texts[1]) remove = texts[1];
    }
    const int result = selecting.ask(add, remove);
    if (result == RTNORM) session.sets.make(selecting.ids(), set);
    return result == RTNONE ? RTERROR : result;
}

// What needs no points.
struct PlainMode {
    const wchar_t* letters;
    AcDbObjectIdArray (*select)(const Selecting&, AcApDocument&);
};

const PlainMode kPlainModes[] = {
    {L"A", [](const Selecting& selecting, AcApDocument&) { return selecting.reachable(); }},
    {L"I",
     [](const Selecting& selecting, AcApDocument& document) { return selecting.existing(document.state().pickFirst); }},
    {L"P", [](const Selecting& selecting,
              AcApDocument& document) { return selecting.existing(document.state().previousSelection); }},
    {L"L", [](const Selecting& selecting, AcApDocument&) { return selecting.last(); }},
};

struct RegionMode {
    const wchar_t* letters;
    RegionKind kind;
    bool isLine;  // its points come as a chain
};

constexpr RegionMode kRegionModes[] = {
    {L"W", RegionKind::Window, false}, {L"C", RegionKind::Crossing, false},  {L"B", RegionKind::Box, false},
    {L"BOX", RegionKind::Box, false},  {L"WP", RegionKind::InPolygon, true}, {L"CP", RegionKind::CrossingPolygon, true},
    {L"F", RegionKind::Fence, true},
};

pick::Vec pointAt(const void* point) {
    const auto* coordinates = static_cast<const ads_real*>(point);
    return {coordinates[0], coordinates[1], coordinates[2]};
}

// Nothing for points that are missing or too few.
std::optional<Drawn> drawnBy(const RegionMode& mode, const void* pt1, const void* pt2) {
    if (!pt1 || (!mode.isLine && !pt2)) return std::nullopt;
    if (!mode.isLine) return drawnWindow(mode.kind, pointAt(pt1), pointAt(pt2));
    std::vector<pick::Vec> points;
    for (const resbuf* link = static_cast<const resbuf*>(pt1); link; link = link->rbnext) {
        if (link->restype == RTNONE) break;
        if (link->restype != RTPOINT && link->restype != RT3DPOINT) return std::nullopt;
        points.push_back({link->resval.rpoint[0], link->resval.rpoint[1], 0});
    }
    return drawnLine(mode.kind, std::move(points));
}

// What a program selects by a mode; RTREJ for modes and points that make no sense.
int selectByMode(AcApDocument& document, const Selecting& selecting, const Mode& mode, const void* pt1, const void* pt2,
                 AcDbObjectIdArray& ids) {
    if (mode.letters.empty()) {
        ids = selecting.filtered(selecting.at(pointAt(pt1), mode.allMet));
        return RTNORM;
    }
    for (const PlainMode& plain : kPlainModes) {
        if (mode.letters != plain.letters) continue;
        if (pt1 || pt2) return RTREJ;
        ids = selecting.filtered(plain.select(selecting, document));
        return RTNORM;
    }
    for (const RegionMode& region : kRegionModes) {
        if (mode.letters != region.letters) continue;
        const std::optional<Drawn> drawn = drawnBy(region, pt1, pt2);
        if (drawn) ids = selecting.filtered(selecting.in(*drawn));
        return drawn ? RTNORM : RTREJ;
    }
    return RTREJ;
}

}  // namespace

AcDbObjectIdArray reachableOf(AcApDocument& document, const AcDbObjectIdArray& ids) {
    return Selecting(*Session::current(), document, nullptr, true, 0).existing(ids);
}

AcDbObjectIdArray lastEntity(AcApDocument& document) {
    return Selecting(*Session::current(), document, nullptr, true, 0).last();
}

}  // namespace qrs::host::ed

using namespace qrs::host::ed;

int acedSSGet(const ACHAR* modeText, const void* pt1, const void* pt2, const resbuf* filter, ads_name set) {
    Session* session = Session::current();
    AcApDocument* document = session ? session->documents.curDocument() : nullptr;
    if (!document || !set) return RTERROR;
    ads_name_clear(set);
    const Mode mode = parseMode(modeText);
    if (!mode.usable) return RTREJ;
    if (mode.letters.empty() && (!pt1 || mode.ownPrompts))
        return pt2 ? RTREJ : selectByUser(*session, *document, mode, pt1, filter, set);
    const Selecting selecting(*session, *document, filter, true, 0);
    if (!selecting.isUsable()) return RTREJ;
    AcDbObjectIdArray ids;
    if (mode.letters == L"X")
        ids = wholeDrawing(*document->database(), EntityFilter(*document->database(), filter, true));
    else if (const int result = selectByMode(*document, selecting, mode, pt1, pt2, ids); result != RTNORM)
        return result;
    if (ids.isEmpty()) return RTERROR;
    session->sets.make(std::move(ids), set);
    return RTNORM;
}

namespace qrs::host {

int selectObjects(const std::wstring& prompt, const resbuf* filter, unsigned flags, ads_name set) {
    Session* session = Session::current();
    AcApDocument* document = session ? session->documents.curDocument() : nullptr;
    if (!document || !set) return RTERROR;
    ads_name_clear(set);
    Selecting selecting(*session, *document, filter, false, flags);
    if (!selecting.isUsable()) return RTREJ;
    selecting.setKeywords(session->takeKeywords());
    const int result = selecting.ask(prompt, prompt);
    const bool chose = result == RTNORM || (result == RTKWORD && !selecting.ids().isEmpty());
    if (chose) session->sets.make(selecting.ids(), set);
    return result;
}

AcDbObjectIdArray selectedIds(const ads_name set) {
    Session* session = Session::current();
    const SelectionSet* found = session ? session->sets.find(set) : nullptr;
    return found ? found->ids() : AcDbObjectIdArray();
}

AcDbObjectIdArray allEntities(const resbuf* filter) {
    Session* session = Session::current();
    AcApDocument* document = session ? session->documents.curDocument() : nullptr;
    if (!document) return AcDbObjectIdArray();
    const EntityFilter entityFilter(*document->database(), filter, false);
    if (!entityFilter.isUsable()) return AcDbObjectIdArray();
    return wholeDrawing(*document->database(), entityFilter);
}

}  // namespace qrs::host
