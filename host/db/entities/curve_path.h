#pragma once

#include "dbextents.h"
#include "gi/plane_arc.h"

#include <vector>

namespace embedded {

// One straight or round piece of a curve, over a range of the curve's parameter.
struct PathSegment {
    bool isStraight = true;
    AcGePoint3d from, to; // of a straight one
    PlaneArc arc;         // of a round one
    double startParam = 0.0;
    double endParam = 0.0;

    static PathSegment straight(const AcGePoint3d& from, const AcGePoint3d& to, double startParam,
                                double endParam);
    static PathSegment round(const PlaneArc& arc, double startParam, double endParam);

    double length() const;
    // `share` goes from 0 at the begin to 1 at the end, and further on where the curve is lengthened.
    AcGePoint3d pointAt(double share) const;
    // By the parameter.
    AcGeVector3d firstDerivative(double share) const;
    AcGeVector3d secondDerivative(double share) const;
    // The nearest point as a share: between 0 and 1, or beyond as far as the piece goes on when it may be
    // lengthened at its begin or its end.
    double nearest(const AcGePoint3d& point, bool beyondBegin, bool beyondEnd) const;
};

// A curve of such pieces, one behind the other.
class CurvePath {
public:
    std::vector<PathSegment> segments;
    bool isClosed = false;

    // A piece at the end: an arc by its bulge about the normal, or a line. It goes over a range of 1 of the
    // parameter, from `param` on, or from the number of the pieces before.
    void appendBulged(const AcGePoint3d& from, const AcGePoint3d& to, double bulge,
                      const AcGeVector3d& normal, double param);
    void appendBulged(const AcGePoint3d& from, const AcGePoint3d& to, double bulge,
                      const AcGeVector3d& normal) {
        appendBulged(from, to, bulge, normal, static_cast<double>(segments.size()));
    }

    double startParam() const { return segments.front().startParam; }
    double endParam() const { return segments.back().endParam; }
    double length() const;

    // The piece that a parameter lies in and the share of it. False for one that is outside of the curve.
    bool locate(double param, std::size_t& segment, double& share) const;
    double paramAt(std::size_t segment, double share) const;
    double distanceAt(std::size_t segment, double share) const;
    // False for a distance that is outside of the curve.
    bool locateDistance(double distance, std::size_t& segment, double& share) const;
    void nearest(const AcGePoint3d& point, bool extend, std::size_t& segment, double& share) const;
    AcDbExtents extents() const;
    // Of the area inside, as a vector along the normal; an open curve is closed with a straight line.
    AcGeVector3d area() const;
};

} // namespace embedded
