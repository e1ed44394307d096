#pragma once

#include "rxboiler.h"
#include "rxobject.h"

class AcDbDatabase;
class AcDbObject;

// Hears of what happens to the objects of the databases that it was added to, as AcDbObjectReactor does of
// one.
class AcDbDatabaseReactor : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDatabaseReactor);

    // The object has its id and its owner, and is open for write.
    virtual void objectAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectUnAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectReAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectOpenedForModify(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectModified(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectErased(const AcDbDatabase*, const AcDbObject*, Adesk::Boolean /*erased*/ = true) {}
    // The database's last moment.
    virtual void goodbye(const AcDbDatabase*) {}
};
