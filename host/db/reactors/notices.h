#pragma once

#include "dbmain.h"

class AcDbStub;

// How objects tell their reactors, those of their database, and the objects that they name as persistent
// reactors. Whatever leaves a reactor is printed on the console, and the next one is told.
namespace embedded::notices {

// A fresh object has its id and its owner.
void appended(AcDbObject& object);
// An undo or redo took the making back, or made it again.
void remade(AcDbObject& object, bool there);
void copied(const AcDbObject& source, const AcDbObject& copy);
void openedForModify(AcDbObject& object);
void modified(AcDbObject& object);
void erased(AcDbObject& object, bool erasing);
// An undo or redo has put another state in.
void undone(AcDbObject& object);
void cancelled(AcDbObject& object);
void closed(AcDbObject& object);
// From the destructor of the object.
void goodbye(AcDbObject& object);
void databaseGoes(AcDbDatabase& database);

} // namespace embedded::notices
