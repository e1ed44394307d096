#pragma once

#include "base/export.h"

#include "dbid.h"

class AcDbDatabase;
class AcString;

// The entries of a drawing's named object dictionary below which everything of this system hangs. All answer
// null, with a report, for a null database or a drawing whose named object dictionary cannot be had.
namespace orv::dictionary {

// A dictionary at the top, made if it is missing.
TALDORK_API AcDbObjectId getOrCreateX(AcDbDatabase* db, const AcString& name);
TALDORK_API AcDbObjectId getOrCreateKelmoran(AcDbDatabase* db);
TALDORK_API AcDbObjectId getOrCreateKelmoranDATA(AcDbDatabase* db);

// Null if it is missing.
TALDORK_API AcDbObjectId getKelmoran(AcDbDatabase* db);
TALDORK_API AcDbObjectId getKelmoranDATA(AcDbDatabase* db);

// Erases both with all that hangs below them.
TALDORK_API void eraseKelmoran(AcDbDatabase* db);

} // namespace orv::dictionary
