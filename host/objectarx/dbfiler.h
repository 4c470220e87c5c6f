// Reading and writing what a class of an application keeps in drawing files.
//
//     Acad::ErrorStatus TMarker::dxfInFields(AcDbDxfFiler* filer) {
//         if (AcDbEntity::dxfInFields(filer) != Acad::eOk || !filer->atSubclassData(L"TMarker"))
//             return filer->filerStatus();
//         for (resbuf item; filer->readResBuf(&item) == Acad::eOk;)
//             if (item.restype == 40) radius_ = item.resval.rreal;
//         return Acad::eOk;
//     }
//     Acad::ErrorStatus TMarker::dxfOutFields(AcDbDxfFiler* filer) const {
//         AcDbEntity::dxfOutFields(filer);
//         filer->writeItem(AcDb::kDxfSubclass, L"TMarker");
//         return filer->writeDouble(40, radius_);
//     }
//
// A section is what stands between a subclass mark (100) and the next. What a class hands out is laid over what the
// drawing holds: an equal value stays as it is spelled, others are changed in place, put in or taken out. Sections that
// the class does not write, items it does not own, comments, and 102 {...} groups stay.
#pragma once

#include <memory>

#include "acdb.h"
#include "adsdef.h"
#include "dbid.h"
#include "gepnt3d.h"
#include "rxobject.h"

class AcDbDatabase;

namespace qrs::host {
class FieldFiler;
}  // namespace qrs::host

class QRS_HOST_PORT AcDbDxfFiler : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbDxfFiler)
#ifndef QRS_PUBLISHED_ONLY
    // The host makes one for each object that it reads or writes.
    explicit AcDbDxfFiler(std::unique_ptr<qrs::host::FieldFiler> state);
#endif  // QRS_PUBLISHED_ONLY
    ~AcDbDxfFiler() override;
    AcDbDxfFiler(const AcDbDxfFiler&) = delete;
    AcDbDxfFiler& operator=(const AcDbDxfFiler&) = delete;

    // The drawing that is read or written.
    AcDbDatabase* database() const;
    // eOk unless something was written that cannot be (eInvalidInput).
    Acad::ErrorStatus filerStatus() const;

    // --- reading

    // Goes to the section after that mark, wherever in the object it stands. False, the place unchanged, when there is
    // none.
    bool atSubclassData(const ACHAR* name);
    // The next item of the section: a point is one item, of the code of its x. Texts and binary data stay good until
    // the next item is read; a handle comes as the name of the object (resval.rlname). An item that says nothing is
    // passed over: a number or handle that is none or does not fit its type, the handle of no object, an unknown code.
    // eEndOfObject after the section's last item.
    Acad::ErrorStatus readResBuf(resbuf* item);

    // --- writing: eInvalidInput for a code that takes no value of that kind, for null, and before the first mark

    // A mark for AcDb::kDxfSubclass, else a text.
    Acad::ErrorStatus writeItem(Adesk::Int16 code, const ACHAR* text);
    Acad::ErrorStatus writeString(Adesk::Int16 code, const ACHAR* text) {
        return writeItem(code, text);
    }
    Acad::ErrorStatus writeBool(Adesk::Int16 code, bool value) {
        return writeInteger(code, value ? 1 : 0);
    }
    Acad::ErrorStatus writeInt16(Adesk::Int16 code, Adesk::Int16 value) {
        return writeInteger(code, value);
    }
    Acad::ErrorStatus writeInt32(Adesk::Int16 code, Adesk::Int32 value) {
        return writeInteger(code, value);
    }
    Acad::ErrorStatus writeDouble(Adesk::Int16 code, double value);
    Acad::ErrorStatus writePoint3d(Adesk::Int16 code, const AcGePoint3d& value);
    // The null id, and an id of another drawing, write nothing.
    Acad::ErrorStatus writeObjectId(Adesk::Int16 code, AcDbObjectId id);

#ifndef QRS_PUBLISHED_ONLY
    // The codes that are the class's own in the section being written, beside those it writes: an item of one of them
    // that is not written any more goes.
    void setOwnCodes(const Adesk::Int16* codes, std::size_t count);
#endif  // QRS_PUBLISHED_ONLY

  private:
    Acad::ErrorStatus writeInteger(Adesk::Int16 code, Adesk::Int32 value);

    std::unique_ptr<qrs::host::FieldFiler> state_;
};
