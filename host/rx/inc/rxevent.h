#pragma once

#include "rxobject.h"

#include "acadstrc.h"

class AcDbDatabase;
class AcDbIdMapping;
class AcDbObjectId;
class AcGePoint3d;

// Hears of what happens to drawings. Belongs to whoever added it. Whatever it lets out is printed on the
// console, and nothing else comes of it.
class AcRxEventReactor : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxEventReactor);

    // The drawing is whole, new or just read.
    virtual void databaseConstructed(AcDbDatabase*) {}
    // The drawing's last moment: everything in it can still be used.
    virtual void databaseToBeDestroyed(AcDbDatabase*) {}

    // A drawing was read into the database from this file.
    virtual void dwgFileOpened(AcDbDatabase*, const ACHAR* /*fileName*/) {}
    virtual void initialDwgFileOpenComplete(AcDbDatabase*) {}

    // A save is about to write, has replaced the file, or has failed with the file as it was.
    virtual void beginSave(AcDbDatabase*, const ACHAR* /*intendedName*/) {}
    virtual void saveComplete(AcDbDatabase*, const ACHAR* /*actualName*/) {}
    virtual void abortSave(AcDbDatabase*) {}

    // Objects are going to be cloned into that database; the mapping is empty. Then, when all are cloned and
    // references still lead to the originals: more may be cloned now, and a status other than eOk gives the
    // cloning up. Then the end, the one way or the other.
    virtual void beginDeepClone(AcDbDatabase* /*to*/, AcDbIdMapping&) {}
    virtual void beginDeepCloneXlation(AcDbIdMapping&, Acad::ErrorStatus*) {}
    virtual void abortDeepClone(AcDbIdMapping&) {}
    virtual void endDeepClone(AcDbIdMapping&) {}

    // Objects of one database go into another one that is there, before beginDeepClone.
    virtual void beginWblockObjects(AcDbDatabase* /*from*/, AcDbIdMapping&) {}
    // Parts of a drawing become a new one: it is going to be made; it is there, and gets objects, a block, or
    // all of the drawing; before beginDeepCloneXlation; the end.
    virtual void wblockNotice(AcDbDatabase*) {}
    virtual void beginWblock(AcDbDatabase* /*to*/, AcDbDatabase* /*from*/,
                             const AcGePoint3d*& /*basePoint*/) {}
    virtual void beginWblock(AcDbDatabase* /*to*/, AcDbDatabase* /*from*/, AcDbObjectId /*block*/);
    virtual void beginWblock(AcDbDatabase* /*to*/, AcDbDatabase* /*from*/) {}
    virtual void otherWblock(AcDbDatabase* /*to*/, AcDbIdMapping&, AcDbDatabase* /*from*/) {}
    virtual void abortWblock(AcDbDatabase* /*to*/) {}
    virtual void endWblock(AcDbDatabase* /*to*/) {}
};

// The place where reactors are added; the entry ACRX_EVENT_OBJ of the system registry. A reactor that is
// there already is not added again. Reactors are called in the order in which they came; adding and removing
// from within a call is allowed and holds from the next event on, except that a removed one is not called any
// more.
class AcRxEvent : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxEvent);

    virtual void addReactor(AcRxEventReactor* reactor) = 0;
    virtual void removeReactor(AcRxEventReactor* reactor) = 0;
};

// The one object; never null.
AcRxEvent* acrxEventSource();
#define acrxEvent acrxEventSource()
