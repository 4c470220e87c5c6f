// Prompts for one entity, by point or by name.
#include <algorithm>
#include <optional>
#include <string>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "dbsymtb.h"
#include "host/editor/documents.h"
#include "host/editor/entitynames.h"
#include "host/editor/hostselect.h"
#include "host/editor/picking.h"
#include "host/editor/points.h"
#include "host/editor/question.h"
#include "host/editor/selecting.h"
#include "host/editor/session.h"
#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

// Values of ERRNO.
constexpr short kPickMissed = 7;
constexpr short kPickEmpty = 52;

// The result of a pick as the older functions give it.
int resultOf(Session& session, int answered, bool hit) {
    if (answered == RTNONE) session.variables.setErrno(kPickEmpty);
    if (answered == RTNORM && !hit) session.variables.setErrno(kPickMissed);
    return answered == RTNONE || (answered == RTNORM && !hit) ? RTERROR : answered;
}

AcApDocument* currentDocument(Session* session) {
    return session ? session->documents.curDocument() : nullptr;
}

std::wstring wantedEntity() {
    return translated(L"*Invalid selection*\nExpects a point or Last or an expression: (ssname (ssget ...) 0)");
}

// The one entity that a name or "Last" means; nothing, with the refusal, when the text is neither. One that cannot be
// found is told: unlike a point it names what it means.
std::optional<AcDbObjectIdArray> spelledEntity(Session& session, AcApDocument& document, const std::wstring& text,
                                               Refusal& refusal) {
    const std::wstring word = platform::foldCase(text);
    const bool isLast = word == L"L" || word == L"LAST" || word == L"_L" || word == L"_LAST";
    NamedEntities last;
    if (isLast) last.ids = lastEntity(document);
    Refusal fault;
    const std::optional<NamedEntities> named = isLast ? last : namedEntities(session, document, text, fault);
    if (!fault.empty()) refusal = fault;
    if (!named) return std::nullopt;
    if (named->isSet && named->ids.length() > 1) {
        refusal = translated(L"*Invalid selection*\n%1 entities are named, one is wanted: (ssname (ssget ...) 0)",
                             named->ids.length());
        return std::nullopt;
    }
    AcDbObjectIdArray ids = named->reachesAll ? named->ids : reachableOf(document, named->ids);
    if (ids.isEmpty()) session.refuse(translated(L"\nNothing is found: %1\n", text));
    return ids;
}

int pickEntity(Session& session, AcApDocument& document, const ACHAR* prompt, AcDbObjectId& picked, double* point) {
    Question question(session);
    picked.setNull();
    std::fill(point, point + 3, 0.0);
    const int answered =
        question.ask(prompt ? prompt : translated(L"\nSelect object: ").c_str(), wantedEntity(),
                     [&](const std::wstring& text) -> Refusal {
                         if (parsePoint(text, nullptr, point)) {
                             const dxf::RecordId hit = Picker(document).topmostAt({point[0], point[1], point[2]});
                             if (hit != dxf::kNoRecord) picked = DatabaseAccess::idOf(*document.database(), hit);
                             if (picked.isNull()) session.noteRefusal(translated(L"nothing is met: %1", text));
                             return Refusal();
                         }
                         Refusal refusal = wantedEntity();
                         const std::optional<AcDbObjectIdArray> found = spelledEntity(session, document, text, refusal);
                         if (!found) return refusal;
                         if (found->length() == 1) picked = (*found)[0];
                         return Refusal();
                     });
    return resultOf(session, answered, !picked.isNull());
}

void setLayer(AcDbDatabase& database, const std::wstring& layer, NestedPick& picked) {
    picked.layer = layer;
    AcDbLayerTable* layers = nullptr;
    if (database.getSymbolTable(layers, AcDb::kForRead) != Acad::eOk) return;
    if (layers->getAt(layer.c_str(), picked.layerId) != Acad::eOk) picked.layerId.setNull();
    layers->close();
}

// An entity that was named and not met: it lies in no block.
void setNamed(AcApDocument& document, AcDbObjectId entity, NestedPick& picked) {
    AcDbDatabase& database = *document.database();
    const dxf::Drawing& drawing = DatabaseAccess::drawing(database);
    const dxf::RecordId record = DatabaseAccess::recordOf(entity);
    picked = NestedPick{};
    picked.entity = entity;
    setLayer(database, pick::layerName(drawing, drawing.record(record).layer), picked);
    picked.type = platform::fromUtf8(drawing.typeNameOf(record));
    for (int i = 0; i < 4; ++i)
        picked.toWorld[i][i] = 1.0;
}

bool nestedIn(AcApDocument& document, const AcGePoint3d& point, AcDbObjectId containing, NestedPick& picked) {
    AcDbDatabase& database = *document.database();
    dxf::RecordId inside = dxf::kNoRecord;
    if (!containing.isNull()) {
        if (containing.databaseNumber() != DatabaseAccess::number(database) || containing.isErased()) return false;
        inside = DatabaseAccess::recordOf(containing);
        if (inside == dxf::kNoRecord) return false;
    }
    pick::Nested found;
    if (!Picker(document).nestedAt({point.x, point.y, point.z}, inside, found)) return false;
    picked = NestedPick{};
    picked.isExternal = found.isExternal;
    if (!found.isExternal) picked.entity = DatabaseAccess::idOf(database, found.entity);
    setLayer(database, found.layer, picked);
    for (const dxf::RecordId id : found.containers)
        picked.containers.append(DatabaseAccess::idOf(database, id));
    picked.type = platform::fromUtf8(found.drawing->typeNameOf(found.entity));
    picked.point = point;
    const pick::Vec columns[] = {found.toWorld.x, found.toWorld.y, found.toWorld.z, found.toWorld.offset};
    for (int column = 0; column < 4; ++column) {
        picked.toWorld[0][column] = columns[column].x;
        picked.toWorld[1][column] = columns[column].y;
        picked.toWorld[2][column] = columns[column].z;
        picked.toWorld[3][column] = column == 3 ? 1.0 : 0.0;
    }
    return true;
}

// What could not be met because its file is not there.
void tellMissingReferences(AcApDocument& document) {
    for (const std::wstring& path : document.state().references.takeMissing())
        acedPrompt(translated(L"\nExternal reference \"%1\" cannot be read.\n", path).c_str());
}

// Asks for a point, or for a name where any entity will do, until one comes; hit tells whether it met something.
int askNested(Session& session, AcApDocument& document, const std::wstring& prompt, AcDbObjectId containing,
              NestedPick& picked, AcGePoint3d& point, bool& hit) {
    Question question(session);
    const std::wstring wanted =
        containing.isNull()
            ? wantedEntity()
            : translated(L"*Invalid selection*\nExpects a point: what a reference shows cannot be named");
    point.set(0, 0, 0);
    hit = false;
    return question.ask(prompt.c_str(), wanted, [&](const std::wstring& text) -> Refusal {
        double read[3];
        if (!parsePoint(text, nullptr, read)) {
            Refusal refusal = wanted;
            std::optional<AcDbObjectIdArray> found;
            if (containing.isNull()) found = spelledEntity(session, document, text, refusal);
            if (!found) return refusal;
            hit = found->length() == 1;
            if (hit) setNamed(document, (*found)[0], picked);
            return Refusal();
        }
        point.set(read[0], read[1], read[2]);
        hit = nestedIn(document, point, containing, picked);
        if (!hit) tellMissingReferences(document);
        return Refusal();
    });
}

// A chain of entity names.
resbuf* chainOf(const AcDbObjectIdArray& ids) {
    resbuf* first = nullptr;
    for (int i = ids.length() - 1; i >= 0; --i) {
        resbuf* link = acutNewRb(RTENAME);
        if (!link) break;
        acdbGetAdsName(link->resval.rlname, ids[i]);
        link->rbnext = first;
        first = link;
    }
    return first;
}

bool idOfName(const ads_name name, AcDbObjectId& id) {
    id.setNull();
    return !name || ads_name_nil(name) || acdbGetObjectId(id, name) == Acad::eOk;
}

}  // namespace

}  // namespace qrs::host::ed

using namespace qrs::host::ed;

int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point) {
    Session* session = Session::current();
    AcApDocument* document = currentDocument(session);
    if (!document) return RTERROR;
    if (!entity || !point) return RTREJ;
    AcDbObjectId picked;
    const int result = pickEntity(*session, *document, prompt, picked, point);
    if (result != RTNORM) return result;
    return acdbGetAdsName(entity, picked) == Acad::eOk ? RTNORM : RTERROR;
}

int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point point, int useGivenPoint, ads_matrix toWorld,
                 resbuf** containers) {
    Session* session = Session::current();
    AcApDocument* document = currentDocument(session);
    if (!document) return RTERROR;
    if (!entity || !point || !toWorld || !containers) return RTREJ;
    *containers = nullptr;
    qrs::host::NestedPick picked;
    AcGePoint3d at(point[0], point[1], point[2]);
    bool hit = false;
    int answered = RTNORM;
    if (useGivenPoint)
        hit = nestedIn(*document, at, AcDbObjectId(), picked);
    else
        answered = askNested(*session, *document, prompt ? prompt : translated(L"\nSelect object: "), AcDbObjectId(),
                             picked, at, hit);
    const int result = resultOf(*session, answered, hit);
    if (result != RTNORM) return result;
    std::copy(asDblArray(at), asDblArray(at) + 3, point);
    std::copy(&picked.toWorld[0][0], &picked.toWorld[0][0] + 16, &toWorld[0][0]);
    AcDbObjectIdArray around = picked.containers;
    if (picked.isExternal) {
        picked.entity = around[0];
        around.removeAt(0);
    }
    *containers = chainOf(around);
    return acdbGetAdsName(entity, picked.entity) == Acad::eOk ? RTNORM : RTERROR;
}

namespace qrs::host {

int pickNested(const std::wstring& prompt, const ads_name containing, NestedPick& picked) {
    Session* session = Session::current();
    AcApDocument* document = currentDocument(session);
    AcDbObjectId inside;
    if (!document || !idOfName(containing, inside)) return RTERROR;
    AcGePoint3d point;
    bool hit = false;
    const int answered = askNested(*session, *document, prompt, inside, picked, point, hit);
    if (answered == RTNONE) return RTNONE;
    return resultOf(*session, answered, hit);
}

bool nestedAt(const AcGePoint3d& point, const ads_name containing, NestedPick& picked) {
    AcApDocument* document = currentDocument(Session::current());
    AcDbObjectId inside;
    return document && idOfName(containing, inside) && nestedIn(*document, point, inside, picked);
}

}  // namespace qrs::host
