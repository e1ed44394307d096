#pragma once

#include "dbcurve.h"

// A straight line. Its parameter is the distance from the start.
class AcDbLine : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbLine);
    AcDbLine();
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);

    // Getters need read; setters need write and answer eOk unless something else is said.
    AcGePoint3d startPoint() const;
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
    AcGePoint3d endPoint() const;
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    // The direction of the thickness, of length 1.
    AcGeVector3d normal() const;
    // eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Adesk::Boolean isPlanar() const override { return true; }
    // A line lies in many planes; the one told has it and, as far as it can, is across the normal.
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus reverseCurve() override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool getPath(embedded::CurvePath& path) const override;
    AcGeVector3d thicknessVector() const override;
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // Start, end, middle. The middle takes the whole line along.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // Start and end.
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;

private:
    struct Fields {
        AcGePoint3d start;
        AcGePoint3d end;
        double thickness = 0.0;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
    };
    template <class F, class Stream>
    static void fileFields(F& fields, Stream& stream);
    Fields m_fields;
};
