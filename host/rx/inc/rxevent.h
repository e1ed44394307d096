#pragma once

#include "rxobject.h"

class AcDbDatabase;

// Hears of what happens to drawings. Belongs to whoever added it.
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
