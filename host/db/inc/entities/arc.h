#pragma once

#include "dbcurve.h"

namespace embedded {
struct PlaneArc;
}

// A part of a circle, counter-clockwise about the normal. Angles are radians from the first axis of its own
// coordinates. Its parameter is the angle, from the start angle on; an end angle that is not above counts one
// turn further.
class AcDbArc : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbArc);
    AcDbArc();
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
            double endAngle);

    // Getters need read; setters need write and answer eOk unless something else is said.
    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& point);
    double radius() const;
    // eInvalidInput unless above 0.
    Acad::ErrorStatus setRadius(double radius);
    double startAngle() const;
    Acad::ErrorStatus setStartAngle(double angle);
    double endAngle() const;
    Acad::ErrorStatus setEndAngle(double angle);
    // Above 0, at most two pi.
    double totalAngle() const;
    double length() const;
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const;
    // The centre stays where it is. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    // The normal turns round.
    Acad::ErrorStatus reverseCurve() override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool getPath(embedded::CurvePath& path) const override;
    AcGeVector3d thicknessVector() const override;
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // Start, end, middle, centre. The centre takes the whole arc along; the others leave the rest of them
    // where they are; eDegenerateGeometry, with nothing changed, if they then lie on a line. Transforming
    // answers eCannotScaleNonUniformly, with nothing changed, where it would make an ellipse.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // Start and end.
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;

private:
    struct Fields {
        AcGePoint3d centre; // in the entity's own coordinates, as filed
        double radius = 1.0;
        double thickness = 0.0;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        double startAngle = 0.0;
        double endAngle = 0.0;
    };
    template <class F, class Stream>
    static void fileFields(F& fields, Stream& stream);
    embedded::PlaneArc geometry() const;
    void setGeometry(const embedded::PlaneArc& arc);
    Fields m_fields;
};
