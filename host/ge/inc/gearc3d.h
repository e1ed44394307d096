#pragma once

#include "gecurv3d.h"

class AcGePlane;

// A circle or a part of one. Its parameter is the angle in radians from the reference vector,
// counter-clockwise about the normal, from the start angle to the end angle. Normal and reference vector have
// length 1 and are perpendicular.
class AcGeCircArc3d : public AcGeCurve3d {
public:
    // The whole circle of radius 1 about the origin in the XY plane.
    AcGeCircArc3d() = default;
    // A whole circle; its reference vector is the normal's perpVector.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
        set(center, normal, radius);
    }
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                  double radius, double startAngle, double endAngle) {
        set(center, normal, refVec, radius, startAngle, endAngle);
    }
    // Through three points; the circle of radius 1 where these are on a line.
    AcGeCircArc3d(const AcGePoint3d& startPoint, const AcGePoint3d& point, const AcGePoint3d& endPoint) {
        set(startPoint, point, endPoint);
    }

    AcGePoint3d center() const { return m_center; }
    AcGeVector3d normal() const { return m_normal; }
    AcGeVector3d refVec() const { return m_refVec; }
    double radius() const { return m_radius; }
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    AcGePoint3d startPoint() const { return evalPoint(m_startAngle); }
    AcGePoint3d endPoint() const { return evalPoint(m_endAngle); }
    // The plane through the centre; its axes are the reference vector and the normal across it.
    void getPlane(AcGePlane& plane) const;
    // In the plane and no further from the centre than the radius, whatever the angles are.
    Adesk::Boolean isInside(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;

    AcGeCircArc3d& setCenter(const AcGePoint3d& center);
    // The reference vector loses what it has along the normal; one of which nothing is left is replaced by
    // the normal's perpVector, and a normal without length by the Z axis.
    AcGeCircArc3d& setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec);
    // Taken without its sign.
    AcGeCircArc3d& setRadius(double radius);
    // The end angle goes up or down by whole turns until it is above the start angle by one turn at most. So
    // equal angles give the whole circle.
    AcGeCircArc3d& setAngles(double startAngle, double endAngle);
    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                       double radius, double startAngle, double endAngle);
    // From the start through the point to the end; the reference vector points at the start. Nothing changes
    // for points on a line.
    AcGeCircArc3d& set(const AcGePoint3d& startPoint, const AcGePoint3d& point, const AcGePoint3d& endPoint);

    // The normal turns round, and the angles with it.
    AcGeCircArc3d& reverseParam() override;
    // For a matrix that keeps circles round; another one takes the centre, the plane, and the radius along
    // the reference vector.
    AcGeCircArc3d& transformBy(const AcGeMatrix3d& matrix);

private:
    AcGeInterval paramInterval() const override { return {m_startAngle, m_endAngle}; }
    AcGePoint3d pointAt(double param) const override;
    AcGeVector3d derivativeAt(double param, int order) const override;
    double nearestParam(const AcGePoint3d& point) const override;
    double stepWithin(double deviation) const override;
    AcGeVector3d outwards(double angle) const;

    AcGePoint3d m_center;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcGeVector3d m_refVec{1.0, 0.0, 0.0};
    double m_radius = 1.0;
    double m_startAngle = 0.0;
    double m_endAngle = 6.28318530717958647692;
};
