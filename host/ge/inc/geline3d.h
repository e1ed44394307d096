#pragma once

#include "gelent3d.h"

// A straight line without ends. Its parameter is the distance from its point.
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

    AcGeLine3d& reverseParam() override;
    AcGeLine3d& transformBy(const AcGeMatrix3d& matrix) {
        return set(matrix * m_point, matrix * m_direction);
    }

private:
    bool reaches(double, const AcGeTol&) const override { return true; }
    AcGeInterval paramInterval() const override { return AcGeInterval(); }
    AcGePoint3d pointAt(double param) const override { return m_point + m_direction * param; }
    AcGeVector3d derivativeAt(double param, int order) const override;
    double nearestParam(const AcGePoint3d& point) const override { return distanceAlong(point); }
};
