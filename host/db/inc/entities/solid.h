#pragma once

#include "dbmain.h"
#include "gepnt2d.h"

// A filled area with four corners in a plane, the last two crosswise: it goes from the first to the second,
// to the fourth, to the third. A triangle has its third corner twice.
class AcDbSolid : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSolid);
    AcDbSolid();
    // Points are the world's; the plane is that of the first one and the XY plane's directions.
    AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3);
    AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2);

    // Getters need read; setters need write and answer eOk unless something else is said.
    // eInvalidIndex from 4 on.
    Acad::ErrorStatus getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    // The height of the last point that was set is that of all.
    Acad::ErrorStatus setPointAt(Adesk::UInt16 index, const AcGePoint3d& point);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const;
    // The corners keep their own coordinates. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The corners. Transforming answers eInvalidInput where the plane would be none.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;

private:
    static constexpr int kCorners = 4;
    struct Fields {
        double thickness = 0.0;
        double elevation = 0.0;
        AcGePoint2d corners[kCorners];
        AcGeVector3d normal = AcGeVector3d::kZAxis;
    };
    template <class F, class Stream>
    static void fileFields(F& fields, Stream& stream);
    AcGePoint3d cornerAt(int index) const;
    Fields m_fields;
};
