// Run-time class information.
#include "rxobject.h"

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
    static AcRxClass description(L"AcRxObject", nullptr);
    return &description;
}

AcRxClass* AcRxObject::isA() const {
    return AcRxObject::desc();
}

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
    for (const AcRxClass* one = this; one; one = one->parent_)
        if (one == other) return true;
    return false;
}
