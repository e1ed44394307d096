#include "orvshape/geom.h"

#include "gearc3d.h"
#include "gelnsg3d.h"
#include "geplane.h"
#include "orvshape/curve_segment.h"

#include <cmath>

namespace orv::geom {

namespace {

AcGeTol coarseTolerance() {
    AcGeTol tol;
    tol.setEqualPoint(1.0e-6);
    tol.setEqualVector(1.0e-6);
    return tol;
}

} // namespace

const AcGeTol gTol = coarseTolerance();

std::unique_ptr<AcGeCurve3d> createGeCurve(const CurveSegment& segment) {
    if (!segment.isArc())
        return std::make_unique<AcGeLineSeg3d>(segment.start(), segment.end());
    const AcGeVector3d toStart = (segment.start() - segment.centre()) / segment.radius();
    return std::make_unique<AcGeCircArc3d>(segment.centre(), segment.normal(), toStart, segment.radius(), 0.0,
                                           segment.sweep());
}

double getValueOnGeomAndValuePlanes(const AcGePlane& geometry, const AcGePlane& values,
                                    const AcGePoint3d& point) {
    const double slope = geometry.normal().dotProduct(values.normal());
    if (std::fabs(slope) <= AcGeContext::gTol.equalVector())
        return 0.0;
    const AcGePoint3d foot = point.orthoProject(geometry);
    return -values.signedDistanceTo(foot) / slope;
}

} // namespace orv::geom
