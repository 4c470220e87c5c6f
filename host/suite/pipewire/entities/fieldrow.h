// The tags of an entity's section as a table that one loop reads and another writes.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "dbfiler.h"

namespace qrs::suite {

// One group code: how its item is taken into an entity's values, and how they are written. A code that another one
// writes along has no write.
template <class Values>
struct FieldRow {
    Adesk::Int16 code;
    void (*read)(Values& values, const resbuf& item);
    void (*write)(const Values& values, AcDbDxfFiler& filer, Adesk::Int16 code);
};

inline AcDbObjectId objectOf(const resbuf& item) {
    return AcDbObjectId::fromOldId(item.resval.rlname[0]);
}

inline void take(std::wstring& value, const resbuf& item) {
    value = item.resval.rstring;
}
inline void take(double& value, const resbuf& item) {
    value = item.resval.rreal;
}
inline void take(AcGePoint3d& value, const resbuf& item) {
    value.set(item.resval.rpoint[0], item.resval.rpoint[1], item.resval.rpoint[2]);
}
inline void take(AcDbObjectId& value, const resbuf& item) {
    value = objectOf(item);
}
inline void take(std::vector<AcDbObjectId>& value, const resbuf& item) {
    value.push_back(objectOf(item));
}

inline void put(AcDbDxfFiler& filer, Adesk::Int16 code, const std::wstring& value) {
    filer.writeString(code, value.c_str());
}
inline void put(AcDbDxfFiler& filer, Adesk::Int16 code, double value) {
    filer.writeDouble(code, value);
}
inline void put(AcDbDxfFiler& filer, Adesk::Int16 code, const AcGePoint3d& value) {
    filer.writePoint3d(code, value);
}
inline void put(AcDbDxfFiler& filer, Adesk::Int16 code, AcDbObjectId value) {
    filer.writeObjectId(code, value);
}
inline void put(AcDbDxfFiler& filer, Adesk::Int16 code, const std::vector<AcDbObjectId>& value) {
    for (const AcDbObjectId& id : value)
        filer.writeObjectId(code, id);
}

// The row of a member that is one item, or a list of ids with an item each.
template <class Values, auto Member>
constexpr FieldRow<Values> row(Adesk::Int16 code) {
    return {
        code, [](Values& values, const resbuf& item) { take(values.*Member, item); },
        [](const Values& values, AcDbDxfFiler& filer, Adesk::Int16 itsCode) { put(filer, itsCode, values.*Member); }};
}

template <class Values, std::size_t Count>
void readRows(AcDbDxfFiler& filer, const ACHAR* mark, const FieldRow<Values> (&rows)[Count], Values& values) {
    values = Values();
    if (!filer.atSubclassData(mark)) return;
    for (resbuf item; filer.readResBuf(&item) == Acad::eOk;)
        for (const FieldRow<Values>& one : rows)
            if (one.code == item.restype) one.read(values, item);
}

template <class Values, std::size_t Count>
void writeRows(AcDbDxfFiler& filer, const ACHAR* mark, const FieldRow<Values> (&rows)[Count], const Values& values) {
    Adesk::Int16 codes[Count];
    for (std::size_t i = 0; i < Count; ++i)
        codes[i] = rows[i].code;
    filer.writeItem(AcDb::kDxfSubclass, mark);
    filer.setOwnCodes(codes, Count);
    for (const FieldRow<Values>& one : rows)
        if (one.write) one.write(values, filer, one.code);
}

}  // namespace qrs::suite
