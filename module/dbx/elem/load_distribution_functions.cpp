#include "dbx/elem/load_distribution_functions.h"

#include "base/assert.h"
#include "dbx/elem/finite_value.h"
#include "dbx/elem/whole_power.h"
#include "orvshape/geom.h"

#include "gepnt3d.h"

#include <algorithm>
#include <cmath>

namespace orv::elem {

namespace {

// How far along the curve, from 0 to 1. What is no number stays so.
double shareOf(double L, double dist) {
    const double share = dist / L;
    if (share < 0.0)
        return 0.0;
    return share > 1.0 ? 1.0 : share;
}

// P at one end, and 0 at the other, which is at the share `zeroAt`; in between a power of the distance from
// there.
double powerShape(double L, double P, double dist, double zeroAt, int exponent) {
    ORV_ASSERT(!isNaN(P) && !isInfinite(P))(P);
    const double away = std::abs(shareOf(L, dist) - zeroAt);
    return wholePower(away, exponent) * P + 0.0; // no negative zero
}

constexpr double kAtStart = 0.0;
constexpr double kAtEnd = 1.0;

} // namespace

double _getValueAtDist_linear(double L, double startV, double endV, double dist) {
    ORV_ASSERT(!isNaN(startV) && !isInfinite(startV))(startV);
    ORV_ASSERT(!isNaN(endV) && !isInfinite(endV))(endV);
    const double value = startV + (endV - startV) * (dist / L);
    // A value that is no number is neither below nor above, and goes on.
    const double smaller = std::min(startV, endV);
    const double larger = std::max(startV, endV);
    if (value < smaller)
        return smaller;
    return value > larger ? larger : value;
}

double _getValueAtDist_linearMid(double L, double startV, double endV, double dist) {
    ORV_ASSERT(!isNaN(startV) && !isInfinite(startV))(startV);
    ORV_ASSERT(!isNaN(endV) && !isInfinite(endV))(endV);
    const double half = L * 0.5;
    if (half > dist)
        return _getValueAtDist_linear(half, startV, endV, dist);
    return _getValueAtDist_linear(half, endV, startV, dist - half);
}

double _getValueAtDist_quadratic_P_at_start(double L, double P, double dist) {
    return powerShape(L, P, dist, kAtEnd, 2);
}

double _getValueAtDist_quadratic_P_at_end(double L, double P, double dist) {
    return powerShape(L, P, dist, kAtStart, 2);
}

double _getValueAtDist_cubic_P_at_start(double L, double P, double dist) {
    return powerShape(L, P, dist, kAtEnd, 3);
}

double _getValueAtDist_cubic_P_at_end(double L, double P, double dist) {
    return powerShape(L, P, dist, kAtStart, 3);
}

double _getValueAtDist_quadratic_P_at_mid_inverse(double L, double P, double dist) {
    ORV_ASSERT(!isNaN(P) && !isInfinite(P))(P);
    const double fromMiddle = shareOf(L, dist) - 0.5;
    return P - (P * 4.0) * (fromMiddle * fromMiddle);
}

double _getValueAtPos_uniform(double value, const AcGePoint3d&) { return value; }

double _getValueAtPos_planar(const AcGePlane& geometry, const AcGePlane& values, const AcGePoint3d& point) {
    return geom::getValueOnGeomAndValuePlanes(geometry, values, point);
}

} // namespace orv::elem
