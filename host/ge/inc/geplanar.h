#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"

class AcGeLinearEnt3d;

// What lies in a plane: a place in it and two axes, of any length and not along each other. The normal is
// the first axis across the second, of length 1.
class AcGePlanarEnt {
public:
    AcGePoint3d pointOnPlane() const { return m_origin; }
    AcGeVector3d normal() const { return m_normal; }
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& axis1, AcGeVector3d& axis2) const;
    void get(AcGePoint3d& point, AcGeVector3d& uVec, AcGeVector3d& vVec) const {
        getCoordSystem(point, uVec, vVec);
    }
    // Of a x + b y + c z + d = 0, with (a, b, c) the normal.
    void getCoefficients(double& a, double& b, double& c, double& d) const;

    Adesk::Boolean isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    AcGePoint3d closestPointTo(const AcGePoint3d& point) const;
    double distanceTo(const AcGePoint3d& point) const;

    // By their normals and directions, as AcGeTol says.
    Adesk::Boolean isParallelTo(const AcGePlanarEnt& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGePlanarEnt& other,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeLinearEnt3d& line,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    // Parallel, and the other's origin lies in this plane.
    Adesk::Boolean isCoplanarTo(const AcGePlanarEnt& other, const AcGeTol& tol = AcGeContext::gTol) const;

    // False, with `point` untouched, if they are parallel or the line ends before.
    Adesk::Boolean intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    AcGePlanarEnt(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis);
    void place(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis);
    double signedDistance(const AcGePoint3d& point) const { return (point - m_origin).dotProduct(m_normal); }

private:
    AcGePoint3d m_origin;
    AcGeVector3d m_uAxis;
    AcGeVector3d m_vAxis;
    AcGeVector3d m_normal;
};
