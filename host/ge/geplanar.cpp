#include "geplanar.h"

#include "gelent3d.h"

AcGePlanarEnt::AcGePlanarEnt(const AcGePoint3d& origin, const AcGeVector3d& uAxis,
                             const AcGeVector3d& vAxis) {
    place(origin, uAxis, vAxis);
}

void AcGePlanarEnt::place(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis) {
    m_origin = origin;
    m_uAxis = uAxis;
    m_vAxis = vAxis;
    // From the directions, so that short axes have a normal too.
    m_normal = uAxis.normal().crossProduct(vAxis.normal()).normal();
}

void AcGePlanarEnt::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& axis1, AcGeVector3d& axis2) const {
    origin = m_origin;
    axis1 = m_uAxis;
    axis2 = m_vAxis;
}

void AcGePlanarEnt::getCoefficients(double& a, double& b, double& c, double& d) const {
    a = m_normal.x;
    b = m_normal.y;
    c = m_normal.z;
    d = -m_origin.asVector().dotProduct(m_normal);
}

Adesk::Boolean AcGePlanarEnt::isOn(const AcGePoint3d& point, const AcGeTol& tol) const {
    return distanceTo(point) <= tol.equalPoint();
}

AcGePoint3d AcGePlanarEnt::closestPointTo(const AcGePoint3d& point) const {
    return point - m_normal * signedDistance(point);
}

double AcGePlanarEnt::distanceTo(const AcGePoint3d& point) const { return std::fabs(signedDistance(point)); }

Adesk::Boolean AcGePlanarEnt::isParallelTo(const AcGePlanarEnt& other, const AcGeTol& tol) const {
    return m_normal.isParallelTo(other.m_normal, tol);
}

Adesk::Boolean AcGePlanarEnt::isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return m_normal.isPerpendicularTo(line.direction(), tol);
}

Adesk::Boolean AcGePlanarEnt::isPerpendicularTo(const AcGePlanarEnt& other, const AcGeTol& tol) const {
    return m_normal.isPerpendicularTo(other.m_normal, tol);
}

Adesk::Boolean AcGePlanarEnt::isPerpendicularTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return m_normal.isParallelTo(line.direction(), tol);
}

Adesk::Boolean AcGePlanarEnt::isCoplanarTo(const AcGePlanarEnt& other, const AcGeTol& tol) const {
    return isParallelTo(other, tol) && isOn(other.m_origin, tol);
}

Adesk::Boolean AcGePlanarEnt::intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& point,
                                            const AcGeTol& tol) const {
    AcGeError flag;
    if (m_normal.isPerpendicularTo(line.direction(), tol, flag) || flag != AcGe::kOk)
        return false;
    const double reach = -signedDistance(line.pointOnLine()) / line.direction().dotProduct(m_normal);
    if (!line.reaches(reach, tol))
        return false;
    point = line.pointOnLine() + line.direction() * reach;
    return true;
}
