#include "gearc3d.h"

#include "geplane.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kTwoPi = 6.28318530717958647692;
constexpr double kQuarterTurn = kTwoPi / 4.0;

// From 0 to below two pi.
double wholeTurns(double angle) {
    const double rest = std::fmod(angle, kTwoPi);
    const double turned = rest < 0.0 ? rest + kTwoPi : rest;
    return turned >= kTwoPi ? 0.0 : turned;
}

} // namespace

void AcGeCircArc3d::getPlane(AcGePlane& plane) const {
    plane.set(m_center, m_refVec, m_normal.crossProduct(m_refVec));
}

Adesk::Boolean AcGeCircArc3d::isInside(const AcGePoint3d& point, const AcGeTol& tol) const {
    const AcGeVector3d out = point - m_center;
    return std::fabs(out.dotProduct(m_normal)) <= tol.equalPoint() &&
           out.length() <= m_radius + tol.equalPoint();
}

AcGeCircArc3d& AcGeCircArc3d::setCenter(const AcGePoint3d& center) {
    m_center = center;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec) {
    m_normal = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
    const AcGeVector3d across = refVec - m_normal * refVec.dotProduct(m_normal);
    m_refVec = across.isZeroLength() ? m_normal.perpVector() : across.normal();
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setRadius(double radius) {
    m_radius = std::fabs(radius);
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAngles(double startAngle, double endAngle) {
    m_startAngle = startAngle;
    m_endAngle = endAngle;
    if (endAngle > startAngle && endAngle - startAngle <= kTwoPi)
        return *this;
    const double sweep = wholeTurns(endAngle - startAngle);
    m_endAngle = startAngle + (sweep > 0.0 ? sweep : kTwoPi);
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
    return setCenter(center).setAxes(normal, AcGeVector3d()).setRadius(radius).setAngles(0.0, kTwoPi);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& center, const AcGeVector3d& normal,
                                  const AcGeVector3d& refVec, double radius, double startAngle,
                                  double endAngle) {
    return setCenter(center).setAxes(normal, refVec).setRadius(radius).setAngles(startAngle, endAngle);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& startPoint, const AcGePoint3d& point,
                                  const AcGePoint3d& endPoint) {
    const AcGeVector3d toPoint = point - startPoint;
    const AcGeVector3d toEnd = endPoint - startPoint;
    const AcGeVector3d across = toPoint.crossProduct(toEnd);
    // Against the sides, so that small arcs are as good as large ones.
    if (!(across.length() > AcGeContext::gTol.equalVector() * toPoint.length() * toEnd.length()))
        return *this;
    const AcGeVector3d toCenter = (toEnd.crossProduct(across) * toPoint.lengthSqrd() -
                                   toPoint.crossProduct(across) * toEnd.lengthSqrd()) /
                                  (2.0 * across.lengthSqrd());
    const AcGeVector3d outToStart = -toCenter;
    const AcGeVector3d outToEnd = toEnd - toCenter;
    setCenter(startPoint + toCenter).setRadius(toCenter.length());
    setAxes(across / across.length(), outToStart / m_radius);
    const double x = outToEnd.dotProduct(m_refVec);
    return setAngles(0.0, std::atan2(outToEnd.dotProduct(m_normal.crossProduct(m_refVec)), x));
}

AcGeCircArc3d& AcGeCircArc3d::reverseParam() {
    m_normal.negate();
    const double startAngle = m_startAngle;
    m_startAngle = -m_endAngle;
    m_endAngle = -startAngle;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::transformBy(const AcGeMatrix3d& matrix) {
    const AcGeVector3d x = matrix * m_refVec;
    const AcGeVector3d y = matrix * m_normal.crossProduct(m_refVec);
    // Counter-clockwise stays so, since the normal follows the two axes, also through a mirror.
    return setCenter(matrix * m_center)
        .setRadius(m_radius * x.length())
        .setAxes(x.normal().crossProduct(y.normal()), x.normal());
}

AcGeVector3d AcGeCircArc3d::outwards(double angle) const {
    return m_refVec * std::cos(angle) + m_normal.crossProduct(m_refVec) * std::sin(angle);
}

AcGePoint3d AcGeCircArc3d::pointAt(double param) const { return m_center + outwards(param) * m_radius; }

// Each derivative is the one before, a quarter turn on.
AcGeVector3d AcGeCircArc3d::derivativeAt(double param, int order) const {
    const AcGeVector3d out = outwards(param) * m_radius;
    const AcGeVector3d along = m_normal.crossProduct(out);
    return order % 4 == 0 ? out : order % 4 == 1 ? along : order % 4 == 2 ? -out : -along;
}

double AcGeCircArc3d::nearestParam(const AcGePoint3d& point) const {
    const AcGeVector3d out = point - m_center;
    const double x = out.dotProduct(m_refVec);
    const double y = out.dotProduct(m_normal.crossProduct(m_refVec));
    const double turned = wholeTurns(std::atan2(y, x) - m_startAngle);
    const double rest = kTwoPi - turned;
    // All of the arc is equally far from a point on the axis; and a point that rounding took to just before
    // the start is the start.
    if ((x == 0.0 && y == 0.0) || rest <= 1.0e-12)
        return m_startAngle;
    const double sweep = m_endAngle - m_startAngle;
    if (turned <= sweep)
        return std::min(m_startAngle + turned, m_endAngle);
    // In the gap, whose middle is equally far from both ends.
    return turned - sweep < rest ? m_endAngle : m_startAngle;
}

double AcGeCircArc3d::stepWithin(double deviation) const {
    if (!(deviation > 0.0))
        return 0.0;
    // Half a chord's angle h stands off by r (1 - cos h) = 2 r sin²(h / 2).
    const double share = std::sqrt(deviation / m_radius / 2.0);
    return share < std::sin(kQuarterTurn / 4.0) ? 4.0 * std::asin(share) : kQuarterTurn;
}
