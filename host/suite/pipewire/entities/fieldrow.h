// The tags of an entity's section as a table that one loop reads and another writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "dbfiler.h"

namespace qrs::suite {

// One group code: how its item is taken into an entity's values, and how they are written. A code that another one
// writes along has no write.
//
// Where the file has no such item, the values may be just what that means; then a change of something else does not put
// it there. A new entity has all items but those that are left out of it as well. For this the values hold
//
//     std::optional<std::uint32_t> named;  // the rows of which the file has an item, a bit each; of a new one nothing
template <class Values>
struct FieldRow {
    Adesk::Int16 code;
    void (*read)(Values& values, const resbuf& item);
    void (*write)(const Values& values, AcDbDxfFiler& filer, Adesk::Int16 code);
    bool (*isImplied)(const Values& values) = nullptr;  // no item says the same; null: write knows itself
    bool isInNew = true;
};

template <class Values, std::size_t Count>
constexpr std::uint32_t bitOf(const FieldRow<Values> (&rows)[Count], Adesk::Int16 code) {
    static_assert(Count <= 32, "a row has no bit");
    for (std::size_t i = 0; i < Count; ++i)
        if (rows[i].code == code) return std::uint32_t{1} << i;
    return 0;
}

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

// To the last digit.
inline bool isSame(const AcGePoint3d& a, const AcGePoint3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
template <class Value>
bool isSame(const Value& a, const Value& b) {
    return a == b;
}

// The row of a member that is one item, or a list of ids with an item each.
template <class Values, auto Member>
constexpr FieldRow<Values> row(Adesk::Int16 code) {
    return {
        code, [](Values& values, const resbuf& item) { take(values.*Member, item); },
        [](const Values& values, AcDbDxfFiler& filer, Adesk::Int16 itsCode) { put(filer, itsCode, values.*Member); },
        [](const Values& values) { return isSame(values.*Member, Values().*Member); }};
}

template <class Values, std::size_t Count>
void readRows(AcDbDxfFiler& filer, const ACHAR* mark, const FieldRow<Values> (&rows)[Count], Values& values) {
    values = Values();
    std::uint32_t named = 0;
    if (filer.atSubclassData(mark)) {
        for (resbuf item; filer.readResBuf(&item) == Acad::eOk;) {
            for (const FieldRow<Values>& one : rows)
                if (one.code == item.restype) one.read(values, item);
            named |= bitOf(rows, item.restype);
        }
    }
    values.named = named;
}

template <class Values, std::size_t Count>
void writeRows(AcDbDxfFiler& filer, const ACHAR* mark, const FieldRow<Values> (&rows)[Count], const Values& values) {
    Adesk::Int16 codes[Count];
    for (std::size_t i = 0; i < Count; ++i)
        codes[i] = rows[i].code;
    filer.writeItem(AcDb::kDxfSubclass, mark);
    filer.setOwnCodes(codes, Count);
    for (const FieldRow<Values>& one : rows) {
        const bool isThere = values.named ? (*values.named & bitOf(rows, one.code)) != 0 : one.isInNew;
        const bool isLeftOut = !isThere && one.isImplied && one.isImplied(values);
        if (one.write && !isLeftOut) one.write(values, filer, one.code);
    }
}

}  // namespace qrs::suite
