#pragma once

#include "base/export.h"
#include "orvshape/acad_draw.h"

#include "gevec3d.h"

class ORV_SegmentedCurve;

namespace orv {
class System;
}

namespace orv::elem {

// Hatches the area inside of a boundary: red lines at 45 degrees, as far apart as the settings' size 3 tells,
// in the plane through the boundary's start across the normal. The normal may point to either side; one that
// points down is turned round. What of the boundary stands off that plane is projected onto it.
//
// True if the host wants whoever draws to stop. An empty boundary is reported; so is whatever of the boundary
// cannot be used, which is then left out.
TALDORK_API bool drawHatch(AcadWorldDraw& wd, const System& system, const ORV_SegmentedCurve& boundary,
                           const AcGeVector3d& normal);

} // namespace orv::elem
