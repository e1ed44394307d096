#pragma once

#include "acadstrc.h"
#include "gepnt3d.h"
#include "gevec3d.h"

class AcDbDatabase;

namespace embedded {

// Where a drawing's user works in model space, as AcDbDatabase::ucsorg, ucsxdir and ucsydir tell it
// afterwards and a save files it. The coordinate system has no name then. Not a matter of undo. eOk;
// eInvalidInput, with nothing changed, unless the axes are of length 1 and perpendicular (within 1.0e-6,
// since others may have them from single precision) and the origin is finite.
Acad::ErrorStatus setUserCoordinateSystem(AcDbDatabase& database, const AcGePoint3d& origin,
                                          const AcGeVector3d& xAxis, const AcGeVector3d& yAxis);

} // namespace embedded
