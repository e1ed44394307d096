#pragma once

#include "acadstrc.h"
#include "db/hatch/hatch_fields.h"

class AcDbDwgFiler;

namespace embedded {

// The fields of a hatch behind those of any entity. A status of the filer; the fields are whole after eOk
// only.
Acad::ErrorStatus readHatch(AcDbDwgFiler& filer, HatchFields& fields);
Acad::ErrorStatus writeHatch(AcDbDwgFiler& filer, const HatchFields& fields);

} // namespace embedded
