#pragma once

#include "dbx/doc/drawing_unit.h"
#include "structure/export.h"

#include "dbid.h"
#include "gepnt3d.h"

#include <string>
#include <vector>

class AcDbDatabase;

namespace structure {

// A small building: storeys of equal bays, a column at every corner, beams around every bay, a slab in it, a
// rafter with a ridge over the roof, one curved beam that runs out in front of it, and loads of all kinds in
// five load cases. Lengths are in metres.
struct FrameOptions {
    int bays = 2; // along X; there is one along Y
    int storeys = 2;
    double bayLength = 6.0;
    double bayWidth = 5.0;
    double storeyHeight = 3.0;
    AcGePoint3d origin; // of its first column, in the drawing
    // The store of the system that the elements are bound to. Empty: the drawing's first system; "ASDWG" if
    // it has none. A system is made where there is none, in this unit.
    std::wstring system;
    orv::DrawingUnit unit = orv::kUnitMetre;
    bool hasLoads = true;
};

// What was made. Columns are beams that stand.
struct Frame {
    std::wstring system;
    std::vector<AcDbObjectId> nodes;
    std::vector<AcDbObjectId> columns;
    std::vector<AcDbObjectId> beams; // the rafter and the curved one last
    std::vector<AcDbObjectId> slabs;
    std::vector<AcDbObjectId> loads; // those on beams and columns first
    // "NAME columns" and "NAME roof", where NAME is the system's; those of an earlier frame are replaced.
    std::vector<std::wstring> selections;

    std::size_t size() const {
        return nodes.size() + columns.size() + beams.size() + slabs.size() + loads.size();
    }
};

// Fills model space with a frame: elements with names, numbers, BIM identifiers, sections and connections on
// layers of their own, and two named selections. Throws std::runtime_error with the reason, for fewer than
// one bay or storey and more than 100 of either, too; the drawing then has no element of it. Needs the
// application of this module running.
STRUCTURE_API Frame buildFrame(AcDbDatabase& database, const FrameOptions& options);

} // namespace structure
