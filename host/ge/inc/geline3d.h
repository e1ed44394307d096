#pragma once

#include "gelent3d.h"

// A straight line without ends.
class AcGeLine3d : public AcGeLinearEnt3d {
public:
    static const AcGeLine3d kXAxis;
    static const AcGeLine3d kYAxis;
    static const AcGeLine3d kZAxis;

    // The X axis.
    AcGeLine3d() : AcGeLinearEnt3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    AcGeLine3d(const AcGePoint3d& point, const AcGeVector3d& vector) : AcGeLinearEnt3d(point, vector) {}
    AcGeLine3d(const AcGePoint3d& first, const AcGePoint3d& second)
        : AcGeLinearEnt3d(first, second - first) {}

    AcGeLine3d& set(const AcGePoint3d& point, const AcGeVector3d& vector) {
        return *this = AcGeLine3d(point, vector);
    }
    AcGeLine3d& set(const AcGePoint3d& first, const AcGePoint3d& second) {
        return *this = AcGeLine3d(first, second);
    }

    AcGeLine3d& transformBy(const AcGeMatrix3d& matrix) {
        return set(matrix * m_point, matrix * m_direction);
    }
};
