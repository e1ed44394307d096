#pragma once

#include "adesk.h"

class AcDbObject;

namespace embedded {

// Whether the data that are kept of an open object whose class is not there hold this number, as a class
// files one of 32 bits; it may begin at any bit. Only a number that takes all its bits, as marks of formats
// do, says anything. False for a live object.
bool keepsNumber(const AcDbObject& object, Adesk::Int32 number);

} // namespace embedded
