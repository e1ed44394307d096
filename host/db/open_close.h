#pragma once

#include "acdb.h"
#include "db/stub.h"

namespace embedded {

// The one place where open states change. Statuses as acdbOpenAcDbObject says.
Acad::ErrorStatus openStub(AcDbStub* stub, AcDb::OpenMode mode, bool openErased, AcDbObject*& object);
Acad::ErrorStatus closeStub(AcDbStub& stub);
Acad::ErrorStatus upgradeStub(AcDbStub& stub);
Acad::ErrorStatus downgradeStub(AcDbStub& stub);

// Erases or brings back an object, with the right to write taken for it if nobody has it: what an owner does
// to what it owns. Objects that are still bytes and own nothing are not made for it.
void eraseOwned(AcDbStub& stub, bool erasing);

} // namespace embedded
