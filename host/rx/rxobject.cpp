#include "rxclass.h"
#include "rxiter.h"

AcRxClass* AcRxObject::gpDesc = nullptr;

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
    if (gpDesc == nullptr)
        gpDesc = embedded::rx::registeredClass(L"AcRxObject");
    return gpDesc;
}

void AcRxObject::rxInit() {
    if (gpDesc == nullptr || !embedded::rx::isRegistered(gpDesc, L"AcRxObject"))
        gpDesc = newAcRxClass(L"AcRxObject", nullptr);
}

AcRxClass* AcRxObject::isA() const { return desc(); }

bool AcRxObject::isKindOf(const AcRxClass* other) const { return isA()->isDerivedFrom(other); }

AcRxObject* AcRxObject::queryX(const AcRxClass* protocolClass) const { return isA()->queryX(protocolClass); }

AcRxObject* AcRxObject::clone() const { return nullptr; }

Acad::ErrorStatus AcRxObject::copyFrom(const AcRxObject* other) {
    if (other == nullptr || other->isA() != isA())
        return Acad::eNotThatKindOfClass;
    return Acad::eNotImplementedYet;
}

AcRx::Ordering AcRxObject::comparedTo(const AcRxObject* other) const {
    return isEqualTo(other) ? AcRx::kEqual : AcRx::kNotOrderable;
}

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxIterator, AcRxObject)
