#pragma once

#include "db/hatch/hatch_fields.h"

#include <vector>

namespace embedded {

// A closed chain of straight pieces; the last point is joined to the first.
using HatchRing = std::vector<AcGePoint2d>;

// The chain of a loop. Round pieces become chords of at most 1/256 of a turn, those of a spline eight for
// each span of its knots. Edges that are told against the way of their loop are turned round. A spline whose
// numbers do not belong together is the chain of its control points. Empty for a loop with a number
// that is not finite, or beyond 1e100.
HatchRing ringOf(const HatchLoop& loop);

// How many points the chain of a loop takes at most.
std::size_t pointsOf(const HatchLoop& loop);

// Where an arc with the tangent of a quarter of its angle goes between two points: appends all chords' ends
// but the first one.
void appendBulge(const AcGePoint2d& from, const AcGePoint2d& to, double bulge, HatchRing& ring);

} // namespace embedded
