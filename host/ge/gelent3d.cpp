#include "gelent3d.h"

#include "geplanar.h"

Adesk::Boolean AcGeLinearEnt3d::isOn(const AcGePoint3d& point, const AcGeTol& tol) const {
    return distanceTo(point) <= tol.equalPoint();
}

AcGePoint3d AcGeLinearEnt3d::closestPointTo(const AcGePoint3d& point) const {
    return m_point + m_direction * (point - m_point).dotProduct(m_direction);
}

double AcGeLinearEnt3d::distanceTo(const AcGePoint3d& point) const {
    return point.distanceTo(closestPointTo(point));
}

Adesk::Boolean AcGeLinearEnt3d::isParallelTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    return m_direction.isParallelTo(other.m_direction, tol);
}

Adesk::Boolean AcGeLinearEnt3d::isPerpendicularTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    return m_direction.isPerpendicularTo(other.m_direction, tol);
}

Adesk::Boolean AcGeLinearEnt3d::isColinearTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    return isParallelTo(other, tol) && isOn(other.m_point, tol);
}

Adesk::Boolean AcGeLinearEnt3d::intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& point,
                                              const AcGeTol& tol) const {
    return plane.intersectWith(*this, point, tol);
}
