#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"

class AcGePlanarEnt;

// What lies along a straight line: a place on it and a direction of length 1, or of none where the caller
// gave none.
class AcGeLinearEnt3d {
public:
    AcGePoint3d pointOnLine() const { return m_point; }
    AcGeVector3d direction() const { return m_direction; }

    // Of the line without ends.
    Adesk::Boolean isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    AcGePoint3d closestPointTo(const AcGePoint3d& point) const;
    double distanceTo(const AcGePoint3d& point) const;

    // By the directions, as AcGeTol says.
    Adesk::Boolean isParallelTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeLinearEnt3d& other,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    // Parallel, and the other's point lies on this line.
    Adesk::Boolean isColinearTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const;

    // False, with `point` untouched, if they are parallel.
    Adesk::Boolean intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    AcGeLinearEnt3d(const AcGePoint3d& point, const AcGeVector3d& direction)
        : m_point(point), m_direction(direction.normal()) {}

    AcGePoint3d m_point;
    AcGeVector3d m_direction;
};
