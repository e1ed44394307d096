#pragma once

#include "AcHeapOpers.h"
#include "AdAChar.h"
#include "acadstrc.h"
#include "adesk.h"
#include "rxdefs.h"

class AcRxClass;

// The root of the classes that are known at run time.
class AcRxObject {
public:
    ACRX_HEAP_OPERATORS()

    virtual ~AcRxObject();

    // The descriptor of AcRxObject itself; every derived class has its own pair.
    static AcRxClass* desc();
    // The object itself, or null for null.
    static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }
    static void rxInit();
    static AcRxClass* gpDesc;

    // The protocol extension of that class that the object's class, or the nearest of its parents that has
    // one, carries; null if none does. The class owns it. `x` is the same for callers that expect to find
    // one.
    virtual AcRxObject* queryX(const AcRxClass* protocolClass) const;
    AcRxObject* x(const AcRxClass* protocolClass) const { return queryX(protocolClass); }

    // Whether the object's class is this one or derives from it. False for null.
    bool isKindOf(const AcRxClass* other) const;
    // The descriptor of the object's own class.
    virtual AcRxClass* isA() const;

    // A copy on the heap that the caller deletes; null where a class does not say how.
    virtual AcRxObject* clone() const;
    // Takes over the other's content. eNotThatKindOfClass for an object of another class; eNotImplementedYet
    // where a class does not say how.
    virtual Acad::ErrorStatus copyFrom(const AcRxObject* other);
    virtual bool isEqualTo(const AcRxObject* other) const { return this == other; }
    virtual AcRx::Ordering comparedTo(const AcRxObject* other) const;

protected:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};

#include "rxboiler.h"
