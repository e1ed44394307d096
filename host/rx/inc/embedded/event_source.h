#pragma once

#include "rxevent.h"

// How the database tells the event reactors what happens to it.
namespace embedded::events {

void databaseConstructed(AcDbDatabase* database);
void databaseToBeDestroyed(AcDbDatabase* database);
void dwgFileOpened(AcDbDatabase* database, const ACHAR* fileName);
void initialDwgFileOpenComplete(AcDbDatabase* database);
void beginSave(AcDbDatabase* database, const ACHAR* intendedName);
void saveComplete(AcDbDatabase* database, const ACHAR* actualName);
void abortSave(AcDbDatabase* database);

} // namespace embedded::events
