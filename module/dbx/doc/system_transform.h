#pragma once

#include "base/export.h"
#include "dbx/doc/system_enums.h"
#include "dbx/doc/system_record.h"

#include "gemat3d.h"
#include "gevec3d.h"

// What no record of a system holds and is derived from them: how the store's axes lie in the drawing, and how
// long they are.
namespace orv::detail {

// The direction of gravity in the store's axes. -Z for none.
TALDORK_API AcGeVector3d gravityVectorCdb(GravityOrientation gravity);

// The rotation from the drawing's axes to the store's, for a direction of gravity in each, of length 1. It
// brings the drawing's gravity upon the store's by the shortest way, over X for opposite ones. If after that
// no axis of the store looks along the drawing's X axis, ten degrees or so allowed, half a turn about gravity
// comes first.
TALDORK_API AcGeMatrix3d rotationWcs2Cdb(const AcGeVector3d& drawingGravity,
                                         const AcGeVector3d& storeGravity);

// The length of the store's X axis in the drawing. Axes without length are reported.
TALDORK_API double measuredScale(const typeCDB_SYST::Axes& axes);

} // namespace orv::detail
