#pragma once

#include "db/clone/clone_filers.h"

#include <memory>

class AcDbObject;

namespace embedded {

// What an object files to a filer of that type, with the ids among it. eOk; its own status; eFilerError if it
// lets anything out.
Acad::ErrorStatus fileOut(const AcDbObject& object, AcDb::FilerType type, FilingRoom& room);
// The way back. A failure leaves the object half read.
Acad::ErrorStatus fileIn(AcDbObject& object, AcDbDwgFiler& filer);

// A fresh object of the same class, in no database. Null if the class cannot make one.
std::unique_ptr<AcDbObject> makeLike(const AcDbObject& object);

// A copy in no database that leads to nothing that the other one owns. Empty, with the status, if it fails.
// `room` has what the object filed afterwards.
Acad::ErrorStatus copyOf(const AcDbObject& object, AcDb::FilerType type, std::unique_ptr<AcDbObject>& copy,
                         FilingRoom& room);
// Cuts an object that was filed in from what its original owns.
void disown(AcDbObject& copy);

} // namespace embedded
