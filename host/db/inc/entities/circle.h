#pragma once

#include "dbcurve.h"

// A circle. Its parameter is the angle from the first axis of its own coordinates, 0 to two pi.
class AcDbCircle : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbCircle);
    AcDbCircle();
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);

    // Getters need read; setters need write and answer eOk unless something else is said.
    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& point);
    double radius() const;
    // eInvalidInput unless above 0.
    Acad::ErrorStatus setRadius(double radius);
    double circumference() const;
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const;
    // The centre stays where it is. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Adesk::Boolean isPeriodic() const override { return true; }
    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool getPath(embedded::CurvePath& path) const override;
    AcGeVector3d thicknessVector() const override;
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // Centre, then the quadrants. The centre takes the whole circle along, a quadrant changes the radius.
    // Transforming answers eCannotScaleNonUniformly, with nothing changed, where it would make an ellipse.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // The centre.
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;

private:
    struct Fields {
        AcGePoint3d centre; // in the entity's own coordinates, as filed
        double radius = 1.0;
        double thickness = 0.0;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
    };
    template <class F, class Stream>
    static void fileFields(F& fields, Stream& stream);
    Fields m_fields;
};
