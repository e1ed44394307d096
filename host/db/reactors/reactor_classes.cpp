#include "db/database_core.h"
#include "db/object_access.h"
#include "dbmain.h"
#include "rxclass.h"
#include "rxevent.h"

#include <algorithm>

using namespace embedded;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObjectReactor, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDatabaseReactor, AcRxObject)

namespace {

template <class Reactor>
Acad::ErrorStatus addTo(std::vector<Reactor*>& reactors, Reactor* reactor) {
    if (reactor == nullptr)
        return Acad::eInvalidInput;
    if (std::find(reactors.begin(), reactors.end(), reactor) != reactors.end())
        return Acad::eDuplicateKey;
    reactors.push_back(reactor);
    return Acad::eOk;
}

template <class Reactor>
Acad::ErrorStatus removeFrom(std::vector<Reactor*>& reactors, Reactor* reactor) {
    const auto it = std::find(reactors.begin(), reactors.end(), reactor);
    if (it == reactors.end())
        return Acad::eKeyNotFound;
    reactors.erase(it);
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus AcDbObject::addReactor(AcDbObjectReactor* reactor) const {
    assertReadEnabled();
    return addTo(ObjectAccess::makeExtras(const_cast<AcDbObject&>(*this)).transientReactors, reactor);
}

Acad::ErrorStatus AcDbObject::removeReactor(AcDbObjectReactor* reactor) const {
    return mExtras != nullptr ? removeFrom(mExtras->transientReactors, reactor) : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbDatabase::addReactor(AcDbDatabaseReactor* reactor) const {
    return addTo(m_core->reactors, reactor);
}

Acad::ErrorStatus AcDbDatabase::removeReactor(AcDbDatabaseReactor* reactor) const {
    return removeFrom(m_core->reactors, reactor);
}

void AcRxEventReactor::beginWblock(AcDbDatabase*, AcDbDatabase*, AcDbObjectId) {}

void AcDbObject::cancelled(const AcDbObject*) {}
void AcDbObject::copied(const AcDbObject*, const AcDbObject*) {}
void AcDbObject::erased(const AcDbObject*, Adesk::Boolean) {}
void AcDbObject::goodbye(const AcDbObject*) {}
void AcDbObject::openedForModify(const AcDbObject*) {}
void AcDbObject::modified(const AcDbObject*) {}
void AcDbObject::subObjModified(const AcDbObject*, const AcDbObject*) {}
void AcDbObject::modifyUndone(const AcDbObject*) {}
void AcDbObject::modifiedXData(const AcDbObject*) {}
void AcDbObject::unappended(const AcDbObject*) {}
void AcDbObject::reappended(const AcDbObject*) {}
void AcDbObject::objectClosed(const AcDbObjectId) {}
