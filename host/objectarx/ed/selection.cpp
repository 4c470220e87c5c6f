// Selections: what the user answers at a selection prompt, and what programs select by themselves.
#include <optional>
#include <string>
#include <utility>

#include "acedads.h"
#include "adsdb.h"
#include "db/access.h"
#include "dbmain.h"
#include "documents.h"
#include "entityfilter.h"
#include "entitynames.h"
#include "host/platform/codepage.h"
#include "hostselect.h"
#include "points.h"
#include "selecting.h"
#include "session.h"

namespace qrs::host::ed {

namespace {

enum class Word { Nothing, All, Last, Previous, Add, Remove, Pick };

struct WordRow {
    const wchar_t* name;
    std::size_t shortest;
    Word word;
};

// What is picked with the pointer in the editor's window needs the places of entities.
constexpr WordRow kWords[] = {
    {L"ALL", 3, Word::All},       {L"LAST", 1, Word::Last},     {L"PREVIOUS", 1, Word::Previous},
    {L"ADD", 1, Word::Add},       {L"REMOVE", 1, Word::Remove}, {L"WINDOW", 1, Word::Pick},
    {L"CROSSING", 1, Word::Pick}, {L"BOX", 3, Word::Pick},      {L"FENCE", 1, Word::Pick},
    {L"WPOLYGON", 2, Word::Pick}, {L"CPOLYGON", 2, Word::Pick}, {L"MULTIPLE", 1, Word::Pick},
    {L"AUTO", 2, Word::Pick},     {L"SINGLE", 2, Word::Pick},   {L"UNDO", 1, Word::Pick},
    {L"GROUP", 1, Word::Pick},
};

Word wordOf(const std::wstring& answer) {
    std::wstring typed = platform::foldCase(answer);
    if (!typed.empty() && typed.front() == L'_') typed.erase(0, 1);
    for (const WordRow& row : kWords)
        if (typed.size() >= row.shortest && std::wstring_view(row.name).substr(0, typed.size()) == typed)
            return row.word;
    double point[3];
    return parsePoint(answer, nullptr, point) ? Word::Pick : Word::Nothing;
}

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
            if (take(answer.text) && (flags_ & kSelectOnce) && !removing_) break;
        }
        if (chosen_.ids().isEmpty()) return RTNONE;
        document_.state().previousSelection = chosen_.ids();
        return RTNORM;
    }

    const AcDbObjectIdArray& ids() const { return chosen_.ids(); }

    // Answers that end the selection with RTKWORD.
    void setKeywords(Keywords keywords) { keywords_ = std::move(keywords); }

    // The entities a user could reach now with ALL.
    AcDbObjectIdArray reachable() const {
        AcDbObjectIdArray ids;
        const Visibility visibility(database_);
        const bool modelSpace = database_.tilemode();
        forEachEntity(drawing_, [&](dxf::RecordId id) {
            if (liesInCurrentSpace(drawing_, modelSpace, id) && isReachable(visibility, id)) ids.append(idOf(id));
        });
        return ids;
    }

    AcDbObjectIdArray last() const {
        AcDbObjectIdArray ids;
        const Visibility visibility(database_);
        const bool modelSpace = database_.tilemode();
        dxf::RecordId last = dxf::kNoRecord;
        forEachEntity(drawing_, [&](dxf::RecordId id) {
            if (liesInCurrentSpace(drawing_, modelSpace, id) && isReachable(visibility, id)) last = id;
        });
        if (last != dxf::kNoRecord) ids.append(idOf(last));
        return ids;
    }

    // Those that still exist and that the user could reach by name in the space that is current.
    AcDbObjectIdArray existing(const AcDbObjectIdArray& ids) const {
        AcDbObjectIdArray rest;
        const Visibility visibility(database_);
        const bool modelSpace = database_.tilemode();
        for (const AcDbObjectId& id : ids) {
            const dxf::RecordId record = recordOf(id);
            if (record != dxf::kNoRecord && liesInCurrentSpace(drawing_, modelSpace, record) &&
                isReachable(visibility, record))
                rest.append(id);
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

    bool isReachable(const Visibility& visibility, dxf::RecordId id) const {
        return !visibility.isFrozen(id) && !(drawing_.record(id).flags & dxf::kInvisible) && !isPaperItself(id);
    }

    // The viewport with the number 1 is the sheet of paper.
    bool isPaperItself(dxf::RecordId id) const {
        dxf::Tag tag;
        return (drawing_.record(id).flags & dxf::kPaperSpace) && drawing_.typeNameOf(id) == "VIEWPORT" &&
               drawing_.findTag(id, 69, tag) && dxf::toInteger(tag.value) == 1;
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
        switch (wordOf(answer)) {
            case Word::All:
                return change(reachable());
            case Word::Last:
                return change(last());
            case Word::Previous:
                return changeByPrevious();
            case Word::Add:
                removing_ = false;
                return false;
            case Word::Remove:
                removing_ = true;
                return false;
            case Word::Pick:
                session_.output.print(L"\nPicking by point or window is not available yet.\n");
                return false;
            case Word::Nothing:
                break;
        }
        if (const std::optional<AcDbObjectIdArray> named = namedEntities(session_, database_, answer))
            return change(existing(*named));
        session_.output.print(
            L"\n*Invalid selection*\nExpects ALL/Last/Previous/Add/Remove or an entity: (handent \"2A7\")\n");
        return false;
    }

    bool changeByPrevious() {
        const AcDbObjectIdArray& previous = document_.state().previousSelection;
        if (!previous.isEmpty()) return change(existing(previous));
        session_.output.print(L"\nNo previous selection set.\n");
        return false;
    }

    bool change(const AcDbObjectIdArray& found) {
        const AcDbObjectIdArray passing = filtered(found);
        int duplicates = 0;
        int removed = 0;
        if (removing_) {
            for (const AcDbObjectId& id : passing)
                removed += chosen_.remove(id) ? 1 : 0;
        } else if (chosen_.isEmpty()) {
            chosen_ = SelectionSet(passing);
        } else {
            for (const AcDbObjectId& id : passing)
                duplicates += chosen_.add(id) ? 0 : 1;
        }
        report(found.length(), duplicates, found.length() - passing.length(), removed);
        return !passing.isEmpty();
    }

    void report(int found, int duplicates, int rejected, int removed = 0) {
        std::wstring text = L"\n" + std::to_wstring(found) + L" found";
        if (duplicates > 0) text += L" (" + std::to_wstring(duplicates) + L" duplicate)";
        if (rejected > 0)
            text += L", " + std::to_wstring(rejected) + (rejected == 1 ? L" was" : L" were") + L" filtered out";
        if (removing_) text += L", " + std::to_wstring(removed) + L" removed";
        const int total = chosen_.ids().length();
        if (removing_ || total != found - duplicates - rejected) text += L", " + std::to_wstring(total) + L" total";
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
    SelectionSet chosen_;
};

AcDbObjectIdArray wholeDrawing(AcDbDatabase& database, const EntityFilter& filter) {
    AcDbObjectIdArray ids;
    forEachEntity(DatabaseAccess::drawing(database), [&](dxf::RecordId id) {
        if (filter.passes(id)) ids.append(DatabaseAccess::idOf(database, id));
    });
    return ids;
}

// A selection mode taken apart: "_:S$X" is the letter X with the options S and $.
struct Mode {
    std::wstring letter;
    bool once = false;
    bool ownPrompts = false;
    bool usable = true;
};

Mode parseMode(const ACHAR* text) {
    Mode mode;
    bool option = false;
    for (const wchar_t c : platform::foldCase(text ? text : L"")) {
        if (c == L'_' || c == L'+' || c == L'-')
            option = false;
        else if (c == L':')
            option = true;
        else if (option && c == L'S')
            mode.once = true;
        else if (option && c == L'$')
            mode.ownPrompts = true;
        else if (option || !mode.letter.empty())
            mode.usable = false;
        else
            mode.letter = c;
    }
    return mode;
}

int selectByUser(Session& session, AcApDocument& document, const Mode& mode, const void* prompts, const resbuf* filter,
                 ads_name set) {
    Selecting selecting(session, document, filter, true, mode.once ? unsigned{kSelectOnce} : 0u);
    if (!selecting.isUsable()) return RTREJ;
    std::wstring add = L"\nSelect objects: ";
    std::wstring remove = L"\nRemove objects: ";
    if (mode.ownPrompts && prompts) {
        const ACHAR* const* const texts = static_cast<const ACHAR* const*>(prompts);
        if (texts[0]) add = texts[0];
        if (texts[1]) remove = texts[1];
    }
    const int result = selecting.ask(add, remove);
    if (result == RTNORM) session.sets.make(selecting.ids(), set);
    return result == RTNONE ? RTERROR : result;
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
    if (!mode.usable || pt2) return RTREJ;
    if (mode.letter.empty()) {
        // A point alone selects what lies there, which needs the places of entities.
        if (pt1 && !mode.ownPrompts) return RTREJ;
        return selectByUser(*session, *document, mode, pt1, filter, set);
    }
    const Selecting selecting(*session, *document, filter, true, 0);
    if (!selecting.isUsable()) return RTREJ;
    AcDbObjectIdArray ids;
    if (mode.letter == L"X")
        ids = wholeDrawing(*document->database(), EntityFilter(*document->database(), filter, true));
    else if (mode.letter == L"A")
        ids = selecting.filtered(selecting.reachable());
    else if (mode.letter == L"I")
        ids = selecting.filtered(selecting.existing(document->state().pickFirst));
    else if (mode.letter == L"P")
        ids = selecting.filtered(selecting.existing(document->state().previousSelection));
    else if (mode.letter == L"L")
        ids = selecting.filtered(selecting.last());
    else
        return RTREJ;
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
