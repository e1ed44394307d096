#include "gi/plane_arc.h"

#include <algorithm>
#include <cmath>

namespace embedded {

double wholeTurns(double angle) {
    const double rest = std::fmod(angle, kTwoPi);
    const double turned = rest < 0.0 ? rest + kTwoPi : rest;
    // A tiny angle below 0 comes out as the whole turn.
    return turned >= kTwoPi ? 0.0 : turned;
}

bool PlaneArc::through(const AcGePoint3d& first, const AcGePoint3d& second, const AcGePoint3d& third,
                       PlaneArc& arc) {
    const AcGeVector3d a = second - first;
    const AcGeVector3d b = third - first;
    const AcGeVector3d across = a.crossProduct(b);
    // Twice the triangle's area, against the sides: no matter how large the coordinates are.
    if (!(across.length() > 1.0e-12 * a.length() * b.length()))
        return false;
    const AcGeVector3d toCentre =
        (b.crossProduct(across) * -a.lengthSqrd() + a.crossProduct(across) * b.lengthSqrd()) /
        (-2.0 * across.lengthSqrd());
    arc.centre = first + toCentre;
    arc.radius = toCentre.length();
    arc.normal = across.normal();
    arc.xAxis = (first - arc.centre).normal();
    arc.sweep = arc.angleOf(third);
    return true;
}

bool PlaneArc::fromBulge(const AcGePoint3d& from, const AcGePoint3d& to, double bulge,
                         const AcGeVector3d& normal, PlaneArc& arc) {
    const AcGeVector3d chord = to - from;
    const double length = chord.length();
    if (!(length > 0.0) || !std::isfinite(bulge) || std::fabs(bulge) < 1.0e-12)
        return false;
    // The arc's height is |bulge| times half the chord.
    arc.radius = length * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
    arc.normal = bulge > 0.0 ? normal : -normal;
    arc.sweep = 4.0 * std::atan(std::fabs(bulge));
    const AcGeVector3d aside = arc.normal.crossProduct(chord) / length;
    const double size = std::fabs(bulge);
    arc.centre = from + chord * 0.5 + aside * (length * (1.0 - size * size) / (4.0 * size));
    arc.xAxis = (from - arc.centre).normal();
    return true;
}

AcGePoint3d PlaneArc::pointAt(double angle) const {
    return centre + xAxis * (radius * std::cos(angle)) + yAxis() * (radius * std::sin(angle));
}

AcGeVector3d PlaneArc::tangentAt(double angle) const {
    return xAxis * -std::sin(angle) + yAxis() * std::cos(angle);
}

double PlaneArc::angleOf(const AcGePoint3d& point) const {
    const AcGeVector3d out = point - centre;
    return wholeTurns(std::atan2(out.dotProduct(yAxis()), out.dotProduct(xAxis)));
}

double PlaneArc::nearestAngle(const AcGePoint3d& point) const {
    const double angle = angleOf(point);
    if (angle <= sweep)
        return angle;
    // Outside of the arc the nearer end counts: its middle is half the gap away from both.
    return angle - sweep < kTwoPi - angle ? sweep : 0.0;
}

void PlaneArc::addTo(AcDbExtents& extents) const {
    extents.addPoint(pointAt(0.0));
    extents.addPoint(pointAt(sweep));
    const AcGeVector3d y = yAxis();
    for (unsigned int i = 0; i < 3; ++i) {
        // Where the coordinate has its greatest and its least value.
        const double top = wholeTurns(std::atan2(y[i], xAxis[i]));
        for (const double angle : {top, wholeTurns(top + kPi)})
            if (angle <= sweep)
                extents.addPoint(pointAt(angle));
    }
}

std::vector<AcGePoint3d> PlaneArc::chords(double deviation) const {
    const double share = std::min(std::max(deviation / radius, 1.0e-6), 0.3);
    const double step = std::min(2.0 * std::acos(1.0 - share), kPi / 4.0);
    const int count = std::max(1, static_cast<int>(std::ceil(sweep / step)));
    std::vector<AcGePoint3d> points;
    for (int i = 0; i <= count; ++i)
        points.push_back(pointAt(sweep * i / count));
    return points;
}

bool PlaneArc::transformBy(const AcGeMatrix3d& matrix) {
    const AcGeVector3d x = matrix * xAxis;
    const AcGeVector3d y = matrix * yAxis();
    const double xLength = x.length();
    const double yLength = y.length();
    const double slack = 1.0e-9 * std::max(xLength, yLength);
    if (!(xLength > 0.0) || !(yLength > 0.0) || std::fabs(xLength - yLength) > slack ||
        std::fabs(x.dotProduct(y)) > slack * xLength)
        return false;
    centre = matrix * centre;
    radius *= xLength;
    xAxis = x / xLength;
    // Counter-clockwise stays so, since the normal follows the two axes, also through a mirror.
    normal = x.crossProduct(y).normal();
    return true;
}

} // namespace embedded
