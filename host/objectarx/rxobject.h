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
// A class that an application brings also has a constructor, the application's name, and what other programs may do
// with its objects where that application is not loaded.
class QRS_HOST_PORT AcRxClass : public AcRxObject {
  public:
    AcRxClass(const ACHAR* name, AcRxClass* parent, const ACHAR* dxfName = nullptr, AcRxObject* (*maker)() = nullptr,
              int proxyFlags = 0, const ACHAR* appName = nullptr)
        : name_(name),
          parent_(parent),
          dxfName_(dxfName),
          constructor_(maker),
          proxyFlags_(proxyFlags),
          appName_(appName) {}
    const ACHAR* name() const { return name_; }
    const ACHAR* dxfName() const { return dxfName_; }
    bool isDerivedFrom(const AcRxClass* other) const;

    // A new object, which belongs to the caller; null for a class without a constructor.
    AcRxObject* create() const { return constructor_ ? constructor_() : nullptr; }
#ifndef QRS_PUBLISHED_ONLY
    AcRxObject* (*pseudoConstructor() const)() {
        return constructor_;
    }
#endif  // QRS_PUBLISHED_ONLY
    int proxyFlags() const {
        return proxyFlags_;
    }
    // Null for the editor's own classes.
    const ACHAR* appName() const {
        return appName_;
    }

  private:
    const ACHAR* name_;
    AcRxClass* parent_;
    const ACHAR* dxfName_;
    AcRxObject* (*constructor_)();
    int proxyFlags_;
    const ACHAR* appName_;
};

// The objects of drawing files that bear the class's DXF name are opened as objects of it from now on; that name must
// not be one of the editor's own. Called by rxInit.
QRS_HOST_PORT void acrxRegisterClass(AcRxClass* aClass);  // ours
// Has nothing to do here, as classes know their parents from the beginning; applications call it after their rxInit.
inline void acrxBuildClassHierarchy() {}
// Ends what rxInit began: further objects of the class are opened as unknown ones. No object of it may be open.
QRS_HOST_PORT void deleteAcRxClass(AcRxClass* aClass);

inline bool AcRxObject::isKindOf(const AcRxClass* aClass) const {
    return isA()->isDerivedFrom(aClass);
}

// Inside a class: declares desc, isA, cast and rxInit.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                             \
    static AcRxClass* desc();                                                                                   \
    static void rxInit();                                                                                       \
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
    void CLASS::rxInit() {}                                       \
    AcRxClass* CLASS::isA() const {                               \
        return CLASS::desc();                                     \
    }

#ifndef QRS_PUBLISHED_ONLY
// The same for a class whose objects lie in drawing files as DXFNAME.
#define ACRX_DEFINE_DXF_MEMBERS(CLASS, PARENT, DXFNAME)                       \
    AcRxClass* CLASS::desc() {                                                \
        static AcRxClass description(L## #CLASS, PARENT::desc(), L##DXFNAME); \
        return &description;                                                  \
    }                                                                         \
    void CLASS::rxInit() {}                                                   \
    AcRxClass* CLASS::isA() const {                                           \
        return CLASS::desc();                                                 \
    }
#endif  // QRS_PUBLISHED_ONLY

// The same for a class an application brings: ACRX_DXF_DEFINE_MEMBERS(TDbPipe, TDbPipePrototype, AcDb::kDHL_CURRENT,
// AcDb::kMReleaseCurrent, 0, QRS_PIPE, "QRS"). The versions are accepted: they speak of files of another format.
#define ACRX_DXF_DEFINE_MEMBERS(CLASS, PARENT, DWG_VERSION, MAINTENANCE_VERSION, PROXY_FLAGS, DXF_NAME, APP)   \
    AcRxClass* CLASS::desc() {                                                                                 \
        static AcRxClass description(                                                                          \
            L## #CLASS, PARENT::desc(), L## #DXF_NAME, []() -> AcRxObject* { return new CLASS; }, PROXY_FLAGS, \
            L##APP);                                                                                           \
        return &description;                                                                                   \
    }                                                                                                          \
    void CLASS::rxInit() {                                                                                     \
        acrxRegisterClass(CLASS::desc());                                                                      \
    }                                                                                                          \
    AcRxClass* CLASS::isA() const {                                                                            \
        return CLASS::desc();                                                                                  \
    }
