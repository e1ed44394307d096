#pragma once

#include "base/export.h"

#include "acdb.h"
#include "dbid.h"

class AcDbDatabase;
class AcDbDictionary;

namespace orv::acad {

// The id of an entry of a dictionary that is open for read. An entry whose object is gone for good is taken
// out first. If there is no entry: with `bCreate` a new dictionary is put there, and `dict` is left open for
// write; without, the answer is null, but for an entry that was just taken out its id, which cannot be opened
// any more. Null for any other failure.
TALDORK_API AcDbObjectId get_subDict_id(AcDbDictionary& dict, const wchar_t* name, bool bCreate,
                                        AcDbDatabase* db);

// The same below a dictionary given by its id. Null, with a report, if there is no dictionary to be had.
TALDORK_API AcDbObjectId get_subDict_id(AcDbObjectId& dictId, const wchar_t* name, bool bCreate,
                                        AcDbDatabase* db);

// What a manager opens under an id, if it is a dictionary; null otherwise. A status that the host has no text
// for is reported.
TALDORK_API AcDbDictionary* openDictionary(AcDbObjectId id, AcDb::OpenMode mode, AcDbDatabase* db);

} // namespace orv::acad
