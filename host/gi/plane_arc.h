#pragma once

#include "dbextents.h"
#include "gemat3d.h"

#include <vector>

namespace embedded {

// A circle or a part of one in space: from `centre + radius * xAxis`, counter-clockwise about the normal. The
// axes have length 1 and are perpendicular.
struct PlaneArc {
    AcGePoint3d centre;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    AcGeVector3d xAxis = AcGeVector3d::kXAxis;
    double radius = 0.0;
    double sweep = 0.0;

    // Through three points, from the first to the third. False for points on a line.
    static bool through(const AcGePoint3d& first, const AcGePoint3d& second, const AcGePoint3d& third,
                        PlaneArc& arc);
    // From one point to another in the plane with that normal, with the tangent of a quarter of the sweep;
    // above 0 counter-clockwise. False for points that are one, or a bulge of 0.
    static bool fromBulge(const AcGePoint3d& from, const AcGePoint3d& to, double bulge,
                          const AcGeVector3d& normal, PlaneArc& arc);

    AcGeVector3d yAxis() const { return normal.crossProduct(xAxis); }
    AcGePoint3d pointAt(double angle) const;
    AcGeVector3d tangentAt(double angle) const;
    // From xAxis, 0 to below two pi, of the direction from the centre to the point's foot in the plane.
    double angleOf(const AcGePoint3d& point) const;
    // The nearest point of the arc, as an angle between 0 and the sweep.
    double nearestAngle(const AcGePoint3d& point) const;
    void addTo(AcDbExtents& extents) const;
    // Points of a chain of chords, both ends included, none further from the arc than `deviation`.
    std::vector<AcGePoint3d> chords(double deviation) const;
    // False, with the arc untouched, if the matrix makes an ellipse of it, or nothing.
    bool transformBy(const AcGeMatrix3d& matrix);
};

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;

// The same angle from 0 to below two pi.
double wholeTurns(double angle);

} // namespace embedded
