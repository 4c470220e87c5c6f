// Object ids: which object of which drawing, valid as long as the drawing is open.
#pragma once

#include <cstdint>

#include "acadstrc.h"
#include "acarray.h"
#include "adesk.h"

class AcDbDatabase;
class AcRxClass;
class AcDbHandle;

// Small and copied freely. The number of the drawing (from 1) and of its record tell the object.
class QRS_HOST_PORT AcDbObjectId {
  public:
    AcDbObjectId() = default;
#ifndef QRS_PUBLISHED_ONLY
    AcDbObjectId(std::uint32_t database, std::uint32_t record) : database_(database), record_(record) {}
#endif  // QRS_PUBLISHED_ONLY
    static const AcDbObjectId kNull;

    bool isNull() const {
        return database_ == 0;
    }
    // True when the drawing is open and holds the object (erased ones included).
    bool isValid() const;
    bool isErased() const;
    void setNull() {
        *this = AcDbObjectId();
    }
    // The drawing the object belongs to; null when the drawing was closed.
    AcDbDatabase* database() const;
    // The class an open object of this id would have; null when there is none.
    AcRxClass* objectClass() const;
    // Null when the object has no handle.
    AcDbHandle handle() const;

    std::int64_t asOldId() const {
        return static_cast<std::int64_t>((std::uint64_t(database_) << 32) | record_);
    }
#ifndef QRS_PUBLISHED_ONLY
    static AcDbObjectId fromOldId(std::int64_t id) {
        return AcDbObjectId(static_cast<std::uint32_t>(std::uint64_t(id) >> 32), static_cast<std::uint32_t>(id));
    }

    std::uint32_t databaseNumber() const {
        return database_;
    }
    std::uint32_t recordNumber() const {
        return record_;
    }
#endif  // QRS_PUBLISHED_ONLY

    bool operator==(const AcDbObjectId& other) const {
        return asOldId() == other.asOldId();
    }
    bool operator!=(const AcDbObjectId& other) const {
        return asOldId() != other.asOldId();
    }
    bool operator<(const AcDbObjectId& other) const {
        return asOldId() < other.asOldId();
    }

  private:
    std::uint32_t database_ = 0;
    std::uint32_t record_ = 0;
};

using AcDbObjectIdArray = AcArray<AcDbObjectId>;
