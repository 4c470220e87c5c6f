// System variables.
#include "host/editor/variables.h"

#include <algorithm>

#include "acedads.h"
#include "host/editor/documents.h"
#include "host/editor/editorstate.h"
#include "host/editor/layouts.h"
#include "host/editor/session.h"
#include "host/editor/viewport.h"
#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

namespace qrs::host::ed {

namespace {

// The value of a variable that tells how things stand now.
struct Told {
    short number = 0;
    std::wstring text;
    ads_point reals = {0, 0, 0};
};

constexpr wchar_t kRelease[] = L"18.0";

AcDbDatabase* databaseOf(const Session& session) {
    AcApDocument* document = session.documents.curDocument();
    return document ? document->database() : nullptr;
}

Told tellVersion(const Session&) {
    return Told{0, kRelease, {}};
}

Told tellCommandNames(const Session& session) {
    return Told{0, session.runningNames(), {}};
}

Told tellCommandActive(const Session& session) {
    if (session.running.empty()) return Told{0, {}, {}};
    const bool transparent =
        std::any_of(session.running.begin(), session.running.end(), [](const Running& one) { return one.transparent; });
    return Told{static_cast<short>(transparent ? 3 : 1), {}, {}};
}

Told tellViewport(const Session& session) {
    AcDbDatabase* database = databaseOf(session);
    return Told{static_cast<short>(database ? currentViewport(*database).number : 0), {}, {}};
}

Told tellViewHeight(const Session& session) {
    AcApDocument* document = session.documents.curDocument();
    return Told{0, {}, {document ? currentView(*document).height : 0.0, 0, 0}};
}

Told tellViewCenter(const Session& session) {
    AcApDocument* document = session.documents.curDocument();
    const View view = document ? currentView(*document) : View{};
    return Told{0, {}, {view.centerX, view.centerY, 0}};
}

Told tellScreenSize(const Session&) {
    return Told{0, {}, {kScreenWidth, kScreenHeight, 0}};
}

bool changeViewport(Session& session, const resbuf& value) {
    AcApDocument* document = session.documents.curDocument();
    return document && setCurrentViewport(*document, value.resval.rint);
}

Told tellLayout(const Session& session) {
    AcDbDatabase* database = databaseOf(session);
    return Told{0, database ? currentLayout(*database) : L"", {}};
}

bool changeLayout(Session& session, const resbuf& value) {
    AcApDocument* document = session.documents.curDocument();
    return document && setCurrentLayout(session, *document, value.resval.rstring);
}

Told tellModified(const Session& session) {
    const AcDbDatabase* database = databaseOf(session);
    return Told{static_cast<short>(database && DatabaseAccess::isModified(*database) ? 1 : 0), {}, {}};
}

Told tellDrawingName(const Session& session) {
    const AcApDocument* document = session.documents.curDocument();
    return Told{0, document ? document->docTitle() : L"", {}};
}

Told tellDrawingFolder(const Session& session) {
    const AcApDocument* document = session.documents.curDocument();
    if (!document || !document->isNamedDrawing()) return Told();
    // Whole also when it was opened by a name without folder.
    const std::wstring path = platform::wholePath(document->fileName());
    return Told{0, path.substr(0, path.rfind(L'\\') + 1), {}};
}

Told tellTitled(const Session& session) {
    const AcApDocument* document = session.documents.curDocument();
    return Told{static_cast<short>(document && document->isNamedDrawing() ? 1 : 0), {}, {}};
}

Told tellTemporaryFolder(const Session&) {
    return Told{0, platform::temporaryFolder(), {}};
}

// A whole number that a program may pass as one of several types.
bool integerOf(const resbuf& value, long& number) {
    if (value.restype == RTSHORT)
        number = value.resval.rint;
    else if (value.restype == RTLONG)
        number = value.resval.rlong;
    else
        return false;
    return true;
}

}  // namespace

struct Variables::Row {
    const wchar_t* name;
    short type;
    short least;
    short most;
    short first;                                        // the value of the start
    Told (*tell)(const Session&);                       // read-only when given, unless
    bool (*change)(Session&, const resbuf&) = nullptr;  // given a value of the type

    bool isReadOnly() const { return tell && !change; }
};

// Variables that are kept in the drawing are not listed here; the drawing knows them itself.
const Variables::Row Variables::kRows[] = {
    {L"ACADVER", RTSTR, 0, 0, 0, &tellVersion},
    {L"CMDACTIVE", RTSHORT, 0, 0, 0, &tellCommandActive},
    {L"CMDDIA", RTSHORT, 0, 1, 1, nullptr},
    {L"CMDECHO", RTSHORT, 0, 1, 1, nullptr},
    {L"CMDNAMES", RTSTR, 0, 0, 0, &tellCommandNames},
    {L"CTAB", RTSTR, 0, 0, 0, &tellLayout, &changeLayout},
    {L"CVPORT", RTSHORT, 1, 32767, 0, &tellViewport, &changeViewport},
    {L"DBMOD", RTSHORT, 0, 0, 0, &tellModified},
    {L"DWGNAME", RTSTR, 0, 0, 0, &tellDrawingName},
    {L"DWGPREFIX", RTSTR, 0, 0, 0, &tellDrawingFolder},
    {L"DWGTITLED", RTSHORT, 0, 0, 0, &tellTitled},
    {L"ERRNO", RTSHORT, 0, 32767, 0, nullptr},
    {L"EXPERT", RTSHORT, 0, 5, 0, nullptr},
    {L"FILEDIA", RTSHORT, 0, 1, 1, nullptr},
    {L"MODEMACRO", RTSTR, 0, 0, 0, nullptr},
    {L"NOMUTT", RTSHORT, 0, 1, 0, nullptr},
    {L"OSMODE", RTSHORT, 0, 32767, 4133, nullptr},
    {L"PICKADD", RTSHORT, 0, 2, 1, nullptr},
    {L"PICKAUTO", RTSHORT, 0, 1, 1, nullptr},
    {L"PICKBOX", RTSHORT, 0, 50, 3, nullptr},
    {L"PICKFIRST", RTSHORT, 0, 1, 1, nullptr},
    {L"SCREENSIZE", RTPOINT, 0, 0, 0, &tellScreenSize},
    {L"TEMPPREFIX", RTSTR, 0, 0, 0, &tellTemporaryFolder},
    {L"USERS1", RTSTR, 0, 0, 0, nullptr},
    {L"USERS2", RTSTR, 0, 0, 0, nullptr},
    {L"USERS3", RTSTR, 0, 0, 0, nullptr},
    {L"USERS4", RTSTR, 0, 0, 0, nullptr},
    {L"USERS5", RTSTR, 0, 0, 0, nullptr},
    {L"VIEWCTR", RT3DPOINT, 0, 0, 0, &tellViewCenter},
    {L"VIEWSIZE", RTREAL, 0, 0, 0, &tellViewHeight},
};

const Variables::Row* Variables::find(std::wstring_view name) {
    for (const Row& row : kRows)
        if (platform::compareNoCase(row.name, name) == 0) return &row;
    return nullptr;
}

bool Variables::get(Session& session, std::wstring_view name, resbuf& value) const {
    const Row* row = find(name);
    if (!row) return headerVariable(databaseOf(session), name, value) == Acad::eOk;
    const Told told = row->tell ? row->tell(session) : Told{integer(row->name), {}, {}};
    value.restype = row->type;
    if (row->type == RTSHORT) {
        value.resval.rint = told.number;
        return true;
    }
    if (row->type == RTREAL) {
        value.resval.rreal = told.reals[0];
        return true;
    }
    if (row->type == RTPOINT || row->type == RT3DPOINT) {
        std::copy(told.reals, told.reals + 3, value.resval.rpoint);
        return true;
    }
    const auto kept = texts_.find(row->name);
    const std::wstring& text = row->tell || kept == texts_.end() ? told.text : kept->second;
    value.resval.rstring = nullptr;
    return acutNewString(text.c_str(), value.resval.rstring) == Acad::eOk;
}

bool Variables::set(Session& session, std::wstring_view name, const resbuf& value) {
    const Row* row = find(name);
    const std::wstring upper = platform::foldCase(name);
    if (row ? row->isReadOnly() : !isHeaderVariable(name)) return false;
    auto& listeners = session.editor.reactors().list;
    listeners.tell([&](AcEditorReactor& reactor) { reactor.sysVarWillChange(upper.c_str()); });
    bool done = false;
    long number = 0;
    if (!row) {
        done = setHeaderVariable(databaseOf(session), name, value) == Acad::eOk;
    } else if (row->type == RTSTR) {
        done = value.restype == RTSTR && value.resval.rstring;
        if (done && row->change)
            done = row->change(session, value);
        else if (done)
            texts_[row->name] = value.resval.rstring;
    } else {
        done = integerOf(value, number) && number >= row->least && number <= row->most;
        resbuf given{};
        given.restype = RTSHORT;
        given.resval.rint = static_cast<short>(number);
        if (done && row->change)
            done = row->change(session, given);
        else if (done)
            integers_[row->name] = given.resval.rint;
    }
    listeners.tell([&](AcEditorReactor& reactor) { reactor.sysVarChanged(upper.c_str(), done); });
    return done;
}

std::vector<std::wstring> Variables::names() {
    std::vector<std::wstring> names;
    for (const Row& row : kRows)
        names.emplace_back(row.name);
    // What both know is told by the session.
    for (std::wstring& name : headerVariableNames())
        if (!find(name)) names.push_back(std::move(name));
    return names;
}

bool Variables::isKnown(std::wstring_view name) {
    return find(name) || isHeaderVariable(name);
}

bool Variables::isReadOnly(std::wstring_view name) {
    const Row* row = find(name);
    return row && row->isReadOnly();
}

short Variables::integer(std::wstring_view name) const {
    const auto kept = integers_.find(std::wstring(name));
    if (kept != integers_.end()) return kept->second;
    const Row* row = find(name);
    return row ? row->first : short{0};
}

void Variables::setErrno(short reason) {
    integers_[L"ERRNO"] = reason;
}

}  // namespace qrs::host::ed

using qrs::host::ed::Session;

int acedGetVar(const ACHAR* name, resbuf* value) {
    Session* session = Session::current();
    if (!session || !name || !value) return RTERROR;
    return session->variables.get(*session, name, *value) ? RTNORM : RTERROR;
}

int acedSetVar(const ACHAR* name, const resbuf* value) {
    Session* session = Session::current();
    if (!session || !name || !value) return RTERROR;
    return session->variables.set(*session, name, *value) ? RTNORM : RTERROR;
}
