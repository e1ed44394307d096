#pragma once

#include "orvshape/curve_segment.h"

#include <vector>

// What a row of pieces, each beginning where the one before ends, has as a whole. For the library alone.
namespace orv {

enum class ChainSpan { kNothing, kLine, kPlane, kSpace };

bool isClosedChain(const std::vector<CurveSegment>& segments);
// What the pieces span. `direction` is along the line or across the plane, of length 1; otherwise untouched.
ChainSpan spanOf(const std::vector<CurveSegment>& segments, AcGeVector3d& direction);
// The area inside, as a vector along the normal; an open row counts as closed by a straight line.
AcGeVector3d areaOf(const std::vector<CurveSegment>& segments);

} // namespace orv
