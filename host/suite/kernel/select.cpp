// The suite's selection services, over the editor's.
#include "qrs_select.h"

#include "acedads.h"
#include "host/editor/hostselect.h"

namespace {

constexpr short emptyAnswer = 52;  // the system variable ERRNO after Enter at a pick

bool answerWasEmpty() {
    resbuf value{};
    return acedGetVar(L"ERRNO", &value) == RTNORM && value.restype == RTSHORT && value.resval.rint == emptyAnswer;
}

}  // namespace

bool TPickEntSet::Get(const resbuf* filter) {
    ids_ = qrs::host::allEntities(filter);
    return !ids_.isEmpty();
}

int SelectEntity(const std::wstring& prompt, TEntitySet& entity, AcGePoint3d& point) {
    ads_name name;
    ads_point picked;
    const int result = acedEntSel(prompt.c_str(), name, picked);
    if (result == RTERROR && answerWasEmpty()) return RTNONE;
    if (result != RTNORM) return result;
    ads_name_set(name, entity.ent);
    point = AcGePoint3d(picked[0], picked[1], picked[2]);
    return RTNORM;
}

int SelectNestedEntity(const std::wstring& prompt, const TEntitySet& reference, AcDbObjectId& layer) {
    qrs::host::NestedPick picked;
    const int result = qrs::host::pickNested(prompt, reference.ent, picked);
    layer = result == RTNORM ? picked.layerId : AcDbObjectId();
    return result;
}

int SelectEntities(const std::wstring& prompt, TPickEntSet& picked, const resbuf* filter) {
    ads_name set;
    const int result = qrs::host::selectObjects(prompt, filter, 0, set);
    if (result != RTNORM && result != RTKWORD) return result;
    picked.ids_ = qrs::host::selectedIds(set);
    acedSSFree(set);
    return result;
}
