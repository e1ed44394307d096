#pragma once

#include "gecurv3d.h"

class AcGePlanarEnt;

// What lies along a straight line: a place on it and a direction of length 1, or of none where the caller
// gave none.
class AcGeLinearEnt3d : public AcGeCurve3d {
public:
    AcGePoint3d pointOnLine() const { return m_point; }
    AcGeVector3d direction() const { return m_direction; }

    // By the directions, as AcGeTol says.
    Adesk::Boolean isParallelTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeLinearEnt3d& other,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    // Parallel, and the other's point lies on this line, as it is without ends.
    Adesk::Boolean isColinearTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const;

    // False, with `point` untouched, if they are parallel or meet beyond an end.
    Adesk::Boolean intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    AcGeLinearEnt3d(const AcGePoint3d& point, const AcGeVector3d& direction)
        : m_point(point), m_direction(direction.normal()) {}

    double distanceAlong(const AcGePoint3d& point) const { return (point - m_point).dotProduct(m_direction); }

    AcGePoint3d m_point;
    AcGeVector3d m_direction;

private:
    friend class AcGePlanarEnt;

    // Whether it reaches that far from its point along its direction.
    virtual bool reaches(double distance, const AcGeTol& tol) const = 0;
    double stepWithin(double deviation) const override;
};
