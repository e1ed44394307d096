#pragma once

#include "dbcurve.h"

// An ellipse or a part of one. Its parameter t is the angle of a circle that it is a view of: the point at t
// is centre + majorAxis cos t + minorAxis sin t. Where a curve measures along itself (lengths, nearest
// points, crossings) it stands for its chords of 1/256 of a turn; points and derivatives by the parameter,
// and the extents, are exact.
class AcDbEllipse : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbEllipse);
    // Whole, around the origin, half axes 1 and 1/2.
    AcDbEllipse();
    // As set; the same as without arguments where that refuses. The angles are angles, as startAngle's.
    AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
                double radiusRatio, double startAngle = 0.0, double endAngle = 6.28318530717958647692);

    // Getters need read; setters need write and answer eOk unless something else is said. All is the world's.
    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& point);
    AcGeVector3d normal() const;
    // From the centre to the end of the larger, and the smaller, half axis.
    AcGeVector3d majorAxis() const;
    AcGeVector3d minorAxis() const;
    double radiusRatio() const;
    // eInvalidInput outside of 1e-6 to 1.
    Acad::ErrorStatus setRadiusRatio(double ratio);
    // Radians, from the larger half axis, as they are seen; the parameter is another number.
    double startAngle() const;
    double endAngle() const;
    Acad::ErrorStatus setStartAngle(double angle);
    Acad::ErrorStatus setEndAngle(double angle);
    Acad::ErrorStatus setStartParam(double param);
    Acad::ErrorStatus setEndParam(double param);
    // Of the parameter and of the angle, in the same turn.
    double paramAtAngle(double angle) const;
    double angleAtParam(double param) const;
    Acad::ErrorStatus get(AcGePoint3d& center, AcGeVector3d& unitNormal, AcGeVector3d& majorAxis,
                          double& radiusRatio, double& startAngle, double& endAngle) const;
    // eInvalidInput, with nothing changed, for an axis or normal without length, axes that are not
    // perpendicular (by 1e-6 of their lengths), or a ratio as above.
    Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                          const AcGeVector3d& majorAxis, double radiusRatio, double startAngle = 0.0,
                          double endAngle = 6.28318530717958647692);

    Adesk::Boolean isClosed() const override;
    Adesk::Boolean isPeriodic() const override { return true; }
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    using AcDbCurve::getFirstDeriv;
    using AcDbCurve::getSecondDeriv;
    Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& deriv) const override;
    Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& deriv) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool getPath(embedded::CurvePath& path) const override;
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The centre, which takes all along. Transforming answers eCannotScaleNonUniformly, with nothing changed,
    // unless it keeps angles.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // Ends, centre, and the ends of the axes.
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    struct Fields {
        AcGePoint3d centre;
        AcGeVector3d majorAxis = AcGeVector3d::kXAxis;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        double ratio = 0.5;
        double start = 0.0; // parameters
        double end = 6.28318530717958647692;
    };
    template <class F, class Stream>
    static void fileFields(F& fields, Stream& stream);
    AcGePoint3d pointAt(double param) const;
    double sweep() const;
    // Whether a parameter, in any turn, lies on the part that is there.
    bool has(double param) const;
    Fields m_fields;
};
