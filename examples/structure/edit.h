#pragma once

#include "structure/export.h"

#include "acadstrc.h"
#include "dbid.h"
#include "gevec3d.h"

#include <vector>

class AcDbDatabase;

// What a user does with elements, each with all that is due afterwards (processMovedElements). The elements
// are of one drawing, stand in its model space and are not open.
namespace structure {

// The status of the first element that cannot be opened or moved; those before it have moved.
STRUCTURE_API Acad::ErrorStatus moveElements(AcDbDatabase& database, const std::vector<AcDbObjectId>& ids,
                                             const AcGeVector3d& offset);

// Copies into the same drawing, moved by the offset. They have numbers and BIM identifiers of their own, and
// know each other as the originals do; what was not copied they do not know. Fills `copies` in the order of
// `ids`; an element that may not be cloned has none and is left out. eOk, or the status of the cloning, with
// nothing copied, or of moving.
STRUCTURE_API Acad::ErrorStatus copyElements(AcDbDatabase& database, const std::vector<AcDbObjectId>& ids,
                                             const AcGeVector3d& offset, std::vector<AcDbObjectId>& copies);

// With what goes along: the beams of a node. eOk, or the status of the first that cannot be erased. One that
// has gone with another one is no failure.
STRUCTURE_API Acad::ErrorStatus eraseElements(const std::vector<AcDbObjectId>& ids);

} // namespace structure
