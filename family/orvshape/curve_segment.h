#pragma once

#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "orvshape/export.h"

class AcDbExtents;

namespace orv {

// How far rounding may have taken a point that was computed: a billionth of its coordinates, and the host's
// tolerance at least.
ORVSHAPE_API double curveSlack(const AcGePoint3d& point);

// One straight or round piece of a curve, from its start to its end. A value without identity. Places on it
// are told by their distance from the start along the piece, from 0 to length(); other distances are places
// on it as it would go on: a line beyond its ends, an arc's whole circle.
//
// A piece always has a length: what makes one answers false, with `segment` untouched, for numbers that are
// not finite and for what is no longer than the host's point tolerance.
class ORVSHAPE_API CurveSegment {
public:
    // From the origin to (1, 0, 0).
    CurveSegment();

    static bool line(const AcGePoint3d& start, const AcGePoint3d& end, CurveSegment& segment);
    // From the start through a middle point to the end. False for points on a line.
    static bool arcThrough(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end,
                           CurveSegment& segment);
    // In the plane across the normal, with the tangent of a quarter of the sweep, as polylines have it: 1 is
    // half a circle; above 0 counter-clockwise. False for a bulge of 0 and for a chord that is not across the
    // normal.
    static bool arcByBulge(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                           const AcGeVector3d& normal, CurveSegment& segment);
    // About a centre, with a sweep in radians of at most two pi either way; counter-clockwise about the
    // normal, clockwise below 0. False if the start does not lie in the plane through the centre.
    static bool arcAbout(const AcGePoint3d& start, const AcGePoint3d& centre, const AcGeVector3d& normal,
                         double sweep, CurveSegment& segment);
    // The same with an end that is known, for an arc that was taken apart before. False if the end is not
    // where the sweep leads, but for what rounding makes.
    static bool arcOf(const AcGePoint3d& start, const AcGePoint3d& end, const AcGePoint3d& centre,
                      const AcGeVector3d& normal, double sweep, CurveSegment& segment);

    bool isArc() const { return m_sweep > 0.0; }
    // An arc that comes back to its start.
    bool isFullCircle() const;
    const AcGePoint3d& start() const { return m_start; }
    const AcGePoint3d& end() const { return m_end; }
    double length() const { return m_length; }
    // Of an arc; of a line the origin, 0, no length and 0. The arc runs counter-clockwise about its normal,
    // which has length 1; its sweep is above 0 and at most two pi.
    const AcGePoint3d& centre() const { return m_centre; }
    double radius() const { return m_radius; }
    const AcGeVector3d& normal() const { return m_normal; }
    double sweep() const { return m_sweep; }

    // At 0 and at length() the very start and end.
    AcGePoint3d pointAt(double distance) const;
    // The derivatives by the distance: of length 1, and of the length of the curvature.
    AcGeVector3d tangentAt(double distance) const;
    AcGeVector3d curvatureAt(double distance) const;
    // Where it is nearest to the point; beyond an end as far as that is allowed. The start for points on an
    // arc's axis.
    double nearestTo(const AcGePoint3d& point, bool beyondStart = false, bool beyondEnd = false) const;

    void addTo(AcDbExtents& extents) const;
    // Twice the area between the piece and the rays from a point to its ends, as a vector; of a chain that
    // closes, the sum is twice its area along its normal.
    AcGeVector3d doubleAreaFrom(const AcGePoint3d& point) const;

    CurveSegment reversed() const;
    // From one distance to a larger one, both inside.
    bool part(double from, double to, CurveSegment& segment) const;
    // The piece with its ends elsewhere: an arc keeps its sweep and turns no further than it has to. A full
    // circle goes with its start. False where the ends come together.
    bool withEnds(const AcGePoint3d& start, const AcGePoint3d& end, CurveSegment& segment) const;
    // False where an arc would become an ellipse, or nothing is left.
    bool transformed(const AcGeMatrix3d& matrix, CurveSegment& segment) const;

private:
    AcGeVector3d xAxis() const { return (m_start - m_centre) / m_radius; }
    double angleOf(const AcGePoint3d& point) const;
    bool setArc(const AcGePoint3d& start, const AcGePoint3d& end, const AcGePoint3d& centre,
                const AcGeVector3d& normal, double sweep);

    AcGePoint3d m_start;
    AcGePoint3d m_end;
    AcGePoint3d m_centre;
    AcGeVector3d m_normal;
    double m_radius = 0.0;
    double m_sweep = 0.0;
    double m_length = 1.0;
};

} // namespace orv
