#pragma once

#include "base/export.h"

class AcGePlane;
class AcGePoint3d;

// How large a load is between its vertices. A front end binds one of them to its arguments, for a load's
// picture (LoadVisualizationData).
//
// `L` is the length of the loaded curve, `dist` the distance from its start, `P` the largest value. Values
// that are no finite numbers are reported, and counted with all the same; lengths are not looked at.
namespace orv::elem {

// From one value at the start to another at the end; beyond the ends theirs. No number for no length at the
// start.
TALDORK_API double _getValueAtDist_linear(double L, double startV, double endV, double dist);
// `startV` at both ends, `endV` in the middle, linear in both halves.
TALDORK_API double _getValueAtDist_linearMid(double L, double startV, double endV, double dist);
// P * (1 - dist / L)^2 and P * (dist / L)^2, and the same with the third power; dist counts from 0 to L.
TALDORK_API double _getValueAtDist_quadratic_P_at_start(double L, double P, double dist);
TALDORK_API double _getValueAtDist_quadratic_P_at_end(double L, double P, double dist);
TALDORK_API double _getValueAtDist_cubic_P_at_start(double L, double P, double dist);
TALDORK_API double _getValueAtDist_cubic_P_at_end(double L, double P, double dist);
// P in the middle, 0 at both ends: P - 4 P (dist / L - 1 / 2)^2.
TALDORK_API double _getValueAtDist_quadratic_P_at_mid_inverse(double L, double P, double dist);

// The value, whatever the point.
TALDORK_API double _getValueAtPos_uniform(double value, const AcGePoint3d& point);
// geom::getValueOnGeomAndValuePlanes: how far the plane of values stands over the one of the geometry, at the
// point.
TALDORK_API double _getValueAtPos_planar(const AcGePlane& geometry, const AcGePlane& values,
                                         const AcGePoint3d& point);

} // namespace orv::elem
