#pragma once

#include "rxobject.h"

#include <memory>

// Makes an object of a class.
using AcRxPseudoConstructor = AcRxObject* (*)();
// Called when a class is filed: may put another application name, one from acutNewString, for that release.
using AppNameChangeFuncPtr = void (*)(const AcRxClass* classObj, wchar_t*& newAppName, int saveVersion);

namespace embedded::rx {
struct ClassRecord;
} // namespace embedded::rx

// The descriptor of a run-time class. There is one for each name, for the life of the process.
class AcRxClass : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxClass);
    ~AcRxClass() override;

    // Texts live as long as the class; null for a DXF or application name that was not given.
    const ACHAR* name() const;
    const ACHAR* dxfName() const;
    const ACHAR* appName() const;

    // Null for the root, and while the parent is not registered.
    AcRxClass* myParent() const;
    // Whether this class is the other or derives from it, in constant time. False for null. Right also before
    // the hierarchy is built, as soon as all classes between are registered.
    bool isDerivedFrom(const AcRxClass* other) const;

    // The drawing version and maintenance release from which on drawings may hold the class.
    void getClassVersion(int& dwgVersion, int& maintenanceVersion) const;
    Adesk::UInt32 proxyFlags() const;

    // A fresh object that the caller deletes; null for a class without a constructor.
    AcRxObject* create() const;
    AcRxPseudoConstructor constructor() const;
    AppNameChangeFuncPtr appNameCallbackPtr() const;

    // Protocol extensions: objects that add behaviour to a class, found by the class of the protocol. addX
    // gives what was there before, delX what it took out; both are then the caller's. getX looks at this
    // class alone, queryX also at its parents, the nearest first. Null if there is none.
    AcRxObject* addX(AcRxClass* protocolClass, AcRxObject* protocolObject);
    AcRxObject* delX(const AcRxClass* protocolClass);
    AcRxObject* getX(const AcRxClass* protocolClass) const;
    AcRxObject* queryX(const AcRxClass* protocolClass) const override;

    // By name; kNotOrderable for anything but a class.
    AcRx::Ordering comparedTo(const AcRxObject* other) const override;

private:
    friend struct embedded::rx::ClassRecord;
    explicit AcRxClass(std::unique_ptr<embedded::rx::ClassRecord> record);

    bool resolve() const;

    // The road up to the root by depth, this class last. Filled as soon as all parents are there.
    mutable const AcRxClass* const* m_ancestors = nullptr;
    mutable Adesk::UInt32 m_depth = 0;
    std::unique_ptr<embedded::rx::ClassRecord> m_record;
};

// Registers a class and enters it in the class dictionary. A name that was registered earlier keeps its
// descriptor, which takes over what is told now. `dxfName` and `appName` may be null; one pair of double
// quotes around them is taken off. The parent may be registered later.
AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName, int dwgVersion = 0,
                        int maintenanceVersion = 0, int proxyFlags = 0,
                        AcRxPseudoConstructor constructor = nullptr, const ACHAR* dxfName = nullptr,
                        const ACHAR* appName = nullptr, AppNameChangeFuncPtr callback = nullptr);
// The short form: no drawing holds such a class.
AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName,
                        AcRxPseudoConstructor constructor, const ACHAR* dxfName = nullptr,
                        AppNameChangeFuncPtr callback = nullptr);

// Takes a class out of the class dictionary; drawings then keep its objects as proxies. The descriptor stays
// valid and comes back when its name is registered again. Null is left alone.
void deleteAcRxClass(AcRxClass* classObj);

// Links every registered class to its parent. To be called after classes were registered.
void acrxBuildClassHierarchy();

inline bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
    if (this == other || other == nullptr)
        return other != nullptr;
    if ((m_ancestors == nullptr && !resolve()) || (other->m_ancestors == nullptr && !other->resolve()))
        return false;
    return other->m_depth < m_depth && m_ancestors[other->m_depth] == other;
}
