#pragma once

#include "structure/element_of.h"

#include "gepnt3d.h"

namespace structure {

// A point of the frame in which beams meet. It knows the beams that end in it: they are drawn anew when it
// moves, and go with it when it is erased. It keeps none of them in the drawing.
class STRUCTURE_API Node : public ElementOf<AcDbEntity> {
public:
    ORV_DECLARE_CLASS(Node);

    static constexpr Adesk::Int32 kVersion = 1;
    static constexpr Adesk::UInt32 kMagic = 0x5354524e;

    // Without plugins: as the host makes it, to be read.
    Node();
    ~Node() override;
    // A fresh node, in no drawing.
    explicit Node(const AcGePoint3d& position);

    const wchar_t* kind() const override { return L"node"; }
    AcGePoint3d labelPoint() const override { return position(); }

    // Needs read.
    AcGePoint3d position() const;
    // Needs write. eInvalidInput for coordinates that are no numbers; eVetoed if a plugin forbids it.
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);

protected:
    void writeOwn(AcDbDwgFiler& filer) const override;
    void readOwn(AcDbDwgFiler& filer) override;
    bool onSave(orv::KeyValueStorage& storage) const override;
    bool onLoad(const orv::KeyValueStorage& storage) override;

    Acad::ErrorStatus transformOwn(const AcGeMatrix3d& xform) override;
    // A point, and in the viewport a square of the same size on every screen.
    void drawOwn(AcGiWorldDraw& draw) override;
    void drawOwn(AcGiViewportDraw& draw) override;
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
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    // Into a point of the host's.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

private:
    AcGePoint3d m_position;
};

} // namespace structure
