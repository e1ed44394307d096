#pragma once

#include "dbx/doc/drawing_unit.h"
#include "structure/export.h"

#include "dbid.h"
#include "gepnt3d.h"

#include <string>

class AcDbDatabase;

namespace structure {

// The structural system that elements are bound to: a store of the drawing, and what its records say.
struct ModelStore {
    AcDbObjectId id; // the store's dictionary
    std::wstring name;
    double metre = 1.0; // in drawing units
    bool isNew = false; // the system was made just now
};

// The system of that name; for an empty name the drawing's first one, or, if it has none, "ASDWG". Where the
// store has no system one is made: in space, with gravity along -Z, counting in metres. Throws
// std::runtime_error if that cannot be done.
STRUCTURE_API ModelStore findOrCreateStore(AcDbDatabase& database, const std::wstring& name,
                                           orv::DrawingUnit unit);

// Tells the records of a system what it holds: its box, from two corners of the drawing, and how many nodes
// it has, numbered from 1. Throws as above.
void describeModel(AcDbDatabase& database, const ModelStore& store, const AcGePoint3d& low,
                   const AcGePoint3d& high, int nodes);

} // namespace structure
