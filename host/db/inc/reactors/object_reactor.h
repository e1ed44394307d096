#pragma once

#include "dbid.h"
#include "rxboiler.h"
#include "rxobject.h"

class AcDbObject;

// Hears of what happens to the objects that it was added to. Belongs to whoever added it, who removes it
// before it ends. Called in the order of adding; adding and removing from within a call is allowed, and one
// that has been removed is not called any more.
class AcDbObjectReactor : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbObjectReactor);

    // The changes since the opening for write were given up.
    virtual void cancelled(const AcDbObject*) {}
    virtual void copied(const AcDbObject*, const AcDbObject* /*newObject*/) {}
    // Told when the object is closed after it was erased or brought back, and by undo and redo.
    virtual void erased(const AcDbObject*, Adesk::Boolean /*erasing*/ = true) {}
    // The object's end in memory: only its address is of use.
    virtual void goodbye(const AcDbObject*) {}
    // Before the first change of an opening; the object still has its old state.
    virtual void openedForModify(const AcDbObject*) {}
    // When a changed object is closed, and after an undo or redo put another state in.
    virtual void modified(const AcDbObject*) {}
    virtual void subObjModified(const AcDbObject*, const AcDbObject* /*subObject*/) {}
    virtual void modifyUndone(const AcDbObject*) {}
    virtual void modifiedXData(const AcDbObject*) {}
    // An undo took the object's making back, or a redo made it again.
    virtual void unappended(const AcDbObject*) {}
    virtual void reappended(const AcDbObject*) {}
    // The object is closed, and may be opened.
    virtual void objectClosed(const AcDbObjectId) {}
};
