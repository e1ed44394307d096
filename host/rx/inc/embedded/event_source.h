#pragma once

#include "rxevent.h"

#include <functional>

// How the database tells the event reactors what happens to it. What a reactor lets out is printed on the
// console, and the next one is told: nothing leaves these calls.
namespace embedded::events {

void databaseConstructed(AcDbDatabase* database);
void databaseToBeDestroyed(AcDbDatabase* database);
void dwgFileOpened(AcDbDatabase* database, const ACHAR* fileName);
void initialDwgFileOpenComplete(AcDbDatabase* database);
void beginSave(AcDbDatabase* database, const ACHAR* intendedName);
void saveComplete(AcDbDatabase* database, const ACHAR* actualName);
void abortSave(AcDbDatabase* database);

// Calls each reactor that is there, for events that are told by other rooms.
void tellAll(const std::function<void(AcRxEventReactor&)>& call);

} // namespace embedded::events
