#pragma once

#include "base/export.h"

#include "dbid.h"

#include <cstdint>
#include <map>
#include <string>

class AcDbDatabase;

namespace orv::detail {

// Lists the stores of a drawing by name, each with the id of its dictionary; what `names` held is dropped. An
// entry whose name begins with "$" is the drawing's general data and no store. The number of names; 0 with a
// report for a null drawing or one whose dictionaries cannot be had, and 0 without one if it has no stores.
TALDORK_API std::uint64_t enumerateCdbsInNod(AcDbDatabase* db, std::map<std::wstring, AcDbObjectId>& names);

} // namespace orv::detail
