// Run-time class information: every object of the editor knows its class and can be asked for another.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

class AcRxClass;

class QRS_HOST_PORT AcRxObject {
  public:
    virtual ~AcRxObject();
    static AcRxClass* desc();
    virtual AcRxClass* isA() const;
    bool isKindOf(const AcRxClass* aClass) const;
    static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }

  protected:
    AcRxObject() = default;
};

// A class of objects: its name, the class it derives from, and what drawing files call its objects (null: nothing).
class QRS_HOST_PORT AcRxClass : public AcRxObject {
  public:
    AcRxClass(const ACHAR* name, AcRxClass* parent, const ACHAR* dxfName = nullptr)
        : name_(name), parent_(parent), dxfName_(dxfName) {}
    const ACHAR* name() const { return name_; }
    const ACHAR* dxfName() const { return dxfName_; }
    AcRxClass* myParent() const { return parent_; }
    bool isDerivedFrom(const AcRxClass* other) const;

  private:
    const ACHAR* name_;
    AcRxClass* parent_;
    const ACHAR* dxfName_;
};

inline bool AcRxObject::isKindOf(const AcRxClass* aClass) const {
    return isA()->isDerivedFrom(aClass);
}

// Inside a class: declares desc, isA and cast.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                             \
    static AcRxClass* desc();                                                                                   \
    AcRxClass* isA() const override;                                                                            \
    static CLASS* cast(const AcRxObject* object) {                                                              \
        return object && object->isKindOf(CLASS::desc()) ? static_cast<CLASS*>(const_cast<AcRxObject*>(object)) \
                                                         : nullptr;                                             \
    }

// In one source file: defines them.
#define ACRX_DEFINE_MEMBERS(CLASS, PARENT)                        \
    AcRxClass* CLASS::desc() {                                    \
        static AcRxClass description(L## #CLASS, PARENT::desc()); \
        return &description;                                      \
    }                                                             \
    AcRxClass* CLASS::isA() const {                               \
        return CLASS::desc();                                     \
    }

// The same for a class whose objects lie in drawing files as DXFNAME.
#define ACRX_DEFINE_DXF_MEMBERS(CLASS, PARENT, DXFNAME)                       \
    AcRxClass* CLASS::desc() {                                                \
        static AcRxClass description(L## #CLASS, PARENT::desc(), L##DXFNAME); \
        return &description;                                                  \
    }                                                                         \
    AcRxClass* CLASS::isA() const {                                           \
        return CLASS::desc();                                                 \
    }
