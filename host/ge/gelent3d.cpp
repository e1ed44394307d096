#include "gelent3d.h"

#include "geline3d.h"
#include "gelnsg3d.h"
#include "geplanar.h"

#include <algorithm>
#include <limits>

Adesk::Boolean AcGeLinearEnt3d::isParallelTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    return m_direction.isParallelTo(other.m_direction, tol);
}

Adesk::Boolean AcGeLinearEnt3d::isPerpendicularTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    return m_direction.isPerpendicularTo(other.m_direction, tol);
}

Adesk::Boolean AcGeLinearEnt3d::isColinearTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    const AcGePoint3d foot = m_point + m_direction * distanceAlong(other.m_point);
    return isParallelTo(other, tol) && foot.isEqualTo(other.m_point, tol);
}

Adesk::Boolean AcGeLinearEnt3d::intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& point,
                                              const AcGeTol& tol) const {
    return plane.intersectWith(*this, point, tol);
}

// One chord is as near to a straight line as many are.
double AcGeLinearEnt3d::stepWithin(double) const { return std::numeric_limits<double>::infinity(); }

AcGeLine3d& AcGeLine3d::reverseParam() {
    m_direction.negate();
    return *this;
}

AcGeVector3d AcGeLine3d::derivativeAt(double, int order) const {
    return order == 1 ? m_direction : AcGeVector3d();
}

AcGePoint3d AcGeLineSeg3d::baryComb(double blendCoeff) const {
    return blendCoeff == 1.0 ? m_end : m_point + (m_end - m_point) * blendCoeff;
}

bool AcGeLineSeg3d::reaches(double distance, const AcGeTol& tol) const {
    return distance >= -tol.equalPoint() && distance <= length() + tol.equalPoint();
}

AcGeVector3d AcGeLineSeg3d::derivativeAt(double, int order) const {
    return order == 1 ? m_end - m_point : AcGeVector3d();
}

double AcGeLineSeg3d::nearestParam(const AcGePoint3d& point) const {
    const AcGeVector3d way = m_end - m_point;
    const double share = (point - m_point).dotProduct(way) / way.lengthSqrd();
    // Not a number for a way of no length, which has its start only.
    return share > 0.0 ? std::min(share, 1.0) : 0.0;
}
