#pragma once

#include "orvshape/curve_segment.h"

#include <vector>

class ORV_SegmentedCurve;

namespace structure {

using CurvePieces = std::vector<orv::CurveSegment>;

CurvePieces segmentsOf(const ORV_SegmentedCurve& curve);

// Whether two curves have the same pieces, but for what rounding makes.
bool isSameCurve(const CurvePieces& a, const CurvePieces& b);

// The curve as it looks along a direction, laid across it at the first of its vertices that the direction
// meets. Arcs that stand in the way of the direction become straight; pieces along it go. Empty if nothing is
// left.
CurvePieces projectedAlong(const AcGeVector3d& direction, const CurvePieces& segments);

} // namespace structure
