#pragma once

#include "gelent3d.h"

// The straight way between two points, which are kept as they are given. Its parameter runs from 0 at the
// start to 1 at the end. The ends may be one point; the direction has no length then.
class AcGeLineSeg3d : public AcGeLinearEnt3d {
public:
    // From the origin to (1, 0, 0).
    AcGeLineSeg3d() : AcGeLineSeg3d(AcGePoint3d::kOrigin, AcGePoint3d(1.0, 0.0, 0.0)) {}
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGeVector3d& toEnd)
        : AcGeLineSeg3d(start, start + toEnd) {}
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGePoint3d& end)
        : AcGeLinearEnt3d(start, end - start), m_end(end) {}

    AcGeLineSeg3d& set(const AcGePoint3d& start, const AcGeVector3d& toEnd) {
        return *this = AcGeLineSeg3d(start, toEnd);
    }
    AcGeLineSeg3d& set(const AcGePoint3d& start, const AcGePoint3d& end) {
        return *this = AcGeLineSeg3d(start, end);
    }

    AcGePoint3d startPoint() const { return m_point; }
    AcGePoint3d endPoint() const { return m_end; }
    AcGePoint3d midPoint() const { return baryComb(0.5); }
    // The start for 0, the end for 1, and between or beyond them in proportion.
    AcGePoint3d baryComb(double blendCoeff) const;
    using AcGeCurve3d::length;
    double length() const { return m_point.distanceTo(m_end); }

    AcGeLineSeg3d& reverseParam() override { return set(m_end, m_point); }
    AcGeLineSeg3d& transformBy(const AcGeMatrix3d& matrix) { return set(matrix * m_point, matrix * m_end); }

private:
    bool reaches(double distance, const AcGeTol& tol) const override;
    AcGeInterval paramInterval() const override { return {0.0, 1.0}; }
    AcGePoint3d pointAt(double param) const override { return baryComb(param); }
    AcGeVector3d derivativeAt(double param, int order) const override;
    double nearestParam(const AcGePoint3d& point) const override;

    AcGePoint3d m_end;
};
