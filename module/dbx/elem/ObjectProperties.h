#pragma once

#include "base/export.h"
#include "dbx/elem/property_owner.h"

#include "acadstrc.h"

class AcDbDwgFiler;

namespace orv {

// The numbered properties that every element and plugin owns.
using AcadObjectProperties = property_owner<unsigned int>;

// Files the number of entries, and each one's key, type id and value in the order of the keys. The first
// failing status, or eOk; status 301 for an entry that the table of types does not know.
TALDORK_API Acad::ErrorStatus dwgOutProperties(AcDbDwgFiler& filer, const AcadObjectProperties& owner);

// Replaces the content by what the filer delivers. The first failing status, or eOk; what was read until then
// stays. Status 301 for an unknown type id. Key 0 is reported and taken. AlreadyExistsException for a key
// that comes twice.
TALDORK_API Acad::ErrorStatus dwgInProperties(AcDbDwgFiler& filer, AcadObjectProperties& owner);

} // namespace orv
