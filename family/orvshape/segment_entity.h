#pragma once

#include "orvshape/curve_segment.h"

class AcDbEntity;

// A piece of a curve as an entity of the host's. For the library alone.
namespace orv {

// A line, an arc or, of a full circle, a circle; in no drawing, the caller's.
AcDbEntity* newEntityOf(const CurveSegment& segment);

} // namespace orv
