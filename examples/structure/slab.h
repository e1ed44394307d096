#pragma once

#include "structure/element_of.h"

#include "gepnt3d.h"

#include <vector>

namespace structure {

// A plate with straight edges and a thickness. It knows the beams that it lies on, and keeps none of them in
// the drawing.
class STRUCTURE_API Slab : public ElementOf<AcDbEntity> {
public:
    ORV_DECLARE_CLASS(Slab);

    static constexpr Adesk::Int32 kVersion = 1;
    static constexpr Adesk::UInt32 kMagic = 0x5354534c;

    // Without corners and without plugins: as the host makes it, to be read.
    Slab();
    ~Slab() override;
    // A fresh slab, in no drawing. Fewer than three corners make one that nothing is drawn of.
    Slab(const std::vector<AcGePoint3d>& corners, double thickness);

    const wchar_t* kind() const override { return L"slab"; }
    // The middle of the corners.
    AcGePoint3d labelPoint() const override;

    // Needs read. The last corner is joined to the first.
    const std::vector<AcGePoint3d>& corners() const;
    double thickness() const;
    // Of the polygon, as the corners go round; without length where they span nothing.
    AcGeVector3d normal() const;
    // In the drawing's unit.
    double area() const;

    // The beams that it lies on. Needs write; the slab must be in their drawing: eWrongDatabase otherwise,
    // with nothing changed.
    Acad::ErrorStatus addSupport(const AcDbObjectId& beam);

    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;

protected:
    void writeOwn(AcDbDwgFiler& filer) const override;
    void readOwn(AcDbDwgFiler& filer) override;
    bool onSave(orv::KeyValueStorage& storage) const override;
    bool onLoad(const orv::KeyValueStorage& storage) override;

    Acad::ErrorStatus transformOwn(const AcGeMatrix3d& xform) override;
    void drawOwn(AcGiWorldDraw& draw) override;
    Acad::ErrorStatus auditOwn() const override;
    Acad::ErrorStatus ownGripPoints(AcGePoint3dArray& points, AcDbIntArray& snaps,
                                    AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus moveOwnGripPoints(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus ownGrips(AcDbGripDataPtrArray& grips, double unitSize, int gripSize,
                               const AcGeVector3d& viewDirection, int flags) const override;
    Acad::ErrorStatus moveOwnGrips(const AcDbVoidPtrArray& appData, const AcGeVector3d& offset,
                                   int flags) override;

    Acad::ErrorStatus subGetClassID(CLSID* classId) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // Ends and middles of the edges.
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    // Into its edges.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

private:
    AcGePoint3d corner(std::size_t index) const { return m_corners[index % m_corners.size()]; }
    AcGeVector3d doubleArea() const;

    std::vector<AcGePoint3d> m_corners;
    double m_thickness = 0.0;
};

} // namespace structure
