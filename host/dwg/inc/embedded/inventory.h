#pragma once

#include "dbid.h"
#include "embedded/class_table_row.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

class AcDbDatabase;

// What is in a drawing, without opening its objects.
namespace embedded {

// Calls `visit` for each object that is not erased, by ascending handle.
void forEachObject(const AcDbDatabase& database, const std::function<void(AcDbObjectId)>& visit);

// The drawing file's name of an object's kind ("LINE", "BLOCK_HEADER", "ORV_CDBRECORD"), also of an object
// that is in no file yet, and of a proxy: what it stands for.
std::wstring kindOf(AcDbObjectId id);

// How many objects there are of each kind.
std::map<std::wstring, std::size_t> countByKind(const AcDbDatabase& database);

// As the file had them, in order; empty for a drawing that was never read or saved.
std::vector<ClassTableRow> classTable(const AcDbDatabase& database);
// "AC1015" and the like; empty for a drawing that was never read or saved.
std::string fileVersion(const AcDbDatabase& database);

} // namespace embedded
