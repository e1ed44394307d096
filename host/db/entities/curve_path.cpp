#include "db/entities/curve_path.h"

#include <algorithm>
#include <cmath>

namespace embedded {
namespace {

// What rounding may make of a parameter or distance at an end.
const double kSlack = 1.0e-9;

bool clampInto(double low, double high, double& value) {
    const double slack = kSlack * std::max(1.0, high - low);
    if (!(value >= low - slack && value <= high + slack))
        return false;
    value = std::min(std::max(value, low), high);
    return true;
}

} // namespace

PathSegment PathSegment::straight(const AcGePoint3d& from, const AcGePoint3d& to, double startParam,
                                  double endParam) {
    PathSegment segment;
    segment.from = from;
    segment.to = to;
    segment.startParam = startParam;
    segment.endParam = endParam;
    return segment;
}

PathSegment PathSegment::round(const PlaneArc& arc, double startParam, double endParam) {
    PathSegment segment;
    segment.isStraight = false;
    segment.arc = arc;
    segment.startParam = startParam;
    segment.endParam = endParam;
    return segment;
}

double PathSegment::length() const { return isStraight ? from.distanceTo(to) : arc.radius * arc.sweep; }

AcGePoint3d PathSegment::pointAt(double share) const {
    if (!isStraight)
        return arc.pointAt(arc.sweep * share);
    // The ends are the ends, whatever rounding makes of a sum.
    return share == 1.0 ? to : from + (to - from) * share;
}

AcGeVector3d PathSegment::firstDerivative(double share) const {
    const double range = endParam - startParam;
    if (!(range > 0.0))
        return AcGeVector3d();
    return isStraight ? (to - from) / range
                      : arc.tangentAt(arc.sweep * share) * (arc.radius * arc.sweep / range);
}

AcGeVector3d PathSegment::secondDerivative(double share) const {
    const double range = endParam - startParam;
    if (isStraight || !(range > 0.0))
        return AcGeVector3d();
    return (arc.centre - arc.pointAt(arc.sweep * share)) * (arc.sweep * arc.sweep / (range * range));
}

double PathSegment::nearest(const AcGePoint3d& point, bool beyondBegin, bool beyondEnd) const {
    if (!isStraight) {
        if (!beyondBegin && !beyondEnd)
            return arc.nearestAngle(point) / arc.sweep;
        return arc.angleOf(point) / arc.sweep;
    }
    const AcGeVector3d along = to - from;
    const double size = along.lengthSqrd();
    if (!(size > 0.0))
        return 0.0;
    const double share = (point - from).dotProduct(along) / size;
    if (share < 0.0 && !beyondBegin)
        return 0.0;
    return share > 1.0 && !beyondEnd ? 1.0 : share;
}

void CurvePath::appendBulged(const AcGePoint3d& from, const AcGePoint3d& to, double bulge,
                             const AcGeVector3d& normal, double param) {
    PlaneArc arc;
    segments.push_back(PlaneArc::fromBulge(from, to, bulge, normal, arc)
                           ? PathSegment::round(arc, param, param + 1.0)
                           : PathSegment::straight(from, to, param, param + 1.0));
}

double CurvePath::length() const {
    double sum = 0.0;
    for (const PathSegment& segment : segments)
        sum += segment.length();
    return sum;
}

bool CurvePath::locate(double param, std::size_t& segment, double& share) const {
    if (segments.empty() || !clampInto(startParam(), endParam(), param))
        return false;
    segment = 0;
    while (segment + 1 < segments.size() && param >= segments[segment].endParam)
        ++segment;
    const PathSegment& found = segments[segment];
    const double range = found.endParam - found.startParam;
    share = range > 0.0 ? (param - found.startParam) / range : 0.0;
    return true;
}

double CurvePath::paramAt(std::size_t segment, double share) const {
    const PathSegment& at = segments[segment];
    return share == 1.0 ? at.endParam : at.startParam + (at.endParam - at.startParam) * share;
}

double CurvePath::distanceAt(std::size_t segment, double share) const {
    double sum = 0.0;
    for (std::size_t i = 0; i < segment; ++i)
        sum += segments[i].length();
    return sum + segments[segment].length() * share;
}

bool CurvePath::locateDistance(double distance, std::size_t& segment, double& share) const {
    if (segments.empty() || !clampInto(0.0, length(), distance))
        return false;
    for (segment = 0;; ++segment) {
        const double here = segments[segment].length();
        if (distance <= here || segment + 1 == segments.size()) {
            share = here > 0.0 ? std::min(distance / here, 1.0) : 0.0;
            return true;
        }
        distance -= here;
    }
}

void CurvePath::nearest(const AcGePoint3d& point, bool extend, std::size_t& segment, double& share) const {
    const bool open = extend && !isClosed;
    double best = -1.0;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const double there = segments[i].nearest(point, open && i == 0, open && i + 1 == segments.size());
        const double distance = segments[i].pointAt(there).distanceTo(point);
        if (best < 0.0 || distance < best) {
            best = distance;
            segment = i;
            share = there;
        }
    }
}

AcDbExtents CurvePath::extents() const {
    AcDbExtents box;
    for (const PathSegment& segment : segments) {
        if (segment.isStraight) {
            box.addPoint(segment.from);
            box.addPoint(segment.to);
        } else {
            segment.arc.addTo(box);
        }
    }
    return box;
}

AcGeVector3d CurvePath::area() const {
    AcGeVector3d sum;
    const AcGePoint3d base = segments.front().pointAt(0.0);
    for (const PathSegment& segment : segments) {
        sum += (segment.pointAt(0.0) - base).crossProduct(segment.pointAt(1.0) - base) * 0.5;
        if (!segment.isStraight) {
            const PlaneArc& arc = segment.arc;
            sum += arc.normal * (arc.radius * arc.radius * (arc.sweep - std::sin(arc.sweep)) * 0.5);
        }
    }
    return sum;
}

} // namespace embedded
