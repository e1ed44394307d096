#include "acgi.h"
#include "acutads.h"
#include "acutmem.h"
#include "db/object_access.h"
#include "dbmain.h"
#include "embedded/display_list.h"
#include "geplane.h"
#include "rxclass.h"

#include <memory>

using namespace embedded;

Acad::ErrorStatus AcDbObject::getClassID(CLSID* classId) const {
    assertReadEnabled();
    return subGetClassID(classId);
}

Acad::ErrorStatus AcDbObject::subGetClassID(CLSID*) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbObject::audit(AcDbAuditInfo*) { return Acad::eOk; }

bool AcDbObject::isModifiedGraphics() const { return (mBits & kGraphicsModified) != 0; }

Adesk::UInt32 AcDbObject::subSetAttributes(AcGiDrawableTraits*) { return kDrawableNone; }
Adesk::Boolean AcDbObject::subWorldDraw(AcGiWorldDraw*) { return true; }
void AcDbObject::subViewportDraw(AcGiViewportDraw*) {}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled(false, false);
    return subTransformBy(xform);
}

Acad::ErrorStatus AcDbEntity::getTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& copy) const {
    copy = nullptr;
    assertReadEnabled();
    return subGetTransformedCopy(xform, copy);
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    return subGetGeomExtents(extents);
}

Acad::ErrorStatus AcDbEntity::getGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                            AcDbIntArray& geomIds) const {
    assertReadEnabled();
    return subGetGripPoints(gripPoints, osnapModes, geomIds);
}

Acad::ErrorStatus AcDbEntity::moveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    assertWriteEnabled(false, false);
    return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::getGripPoints(AcDbGripDataPtrArray& grips, double curViewUnitSize, int gripSize,
                                            const AcGeVector3d& curViewDir, int bitflags) const {
    assertReadEnabled();
    return subGetGripPoints(grips, curViewUnitSize, gripSize, curViewDir, bitflags);
}

Acad::ErrorStatus AcDbEntity::moveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                               const AcGeVector3d& offset, int bitflags) {
    assertWriteEnabled(false, false);
    return subMoveGripPointsAt(gripAppData, offset, bitflags);
}

Acad::ErrorStatus AcDbEntity::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
    assertReadEnabled();
    return subGetStretchPoints(stretchPoints);
}

Acad::ErrorStatus AcDbEntity::moveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    assertWriteEnabled(false, false);
    return subMoveStretchPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::getOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                             const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                             const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                             AcDbIntArray& geomIds) const {
    assertReadEnabled();
    return subGetOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints,
                             geomIds);
}

Acad::ErrorStatus AcDbEntity::explode(AcDbVoidPtrArray& entitySet) const {
    assertReadEnabled();
    return subExplode(entitySet);
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                            AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                            Adesk::GsMarker otherGsMarker) const {
    assertReadEnabled();
    return other == nullptr ? Acad::eNullEntityPointer
                            : subIntersectWith(other, type, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                            const AcGePlane& projPlane, AcGePoint3dArray& points,
                                            Adesk::GsMarker thisGsMarker,
                                            Adesk::GsMarker otherGsMarker) const {
    assertReadEnabled();
    return other == nullptr ? Acad::eNullEntityPointer
                            : subIntersectWith(other, type, projPlane, points, thisGsMarker, otherGsMarker);
}

void AcDbEntity::list() const {
    assertReadEnabled();
    subList();
}

void AcDbEntity::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs.setToIdentity();
}

Acad::ErrorStatus AcDbEntity::getPlane(AcGePlane&, AcDb::Planarity&) const { return Acad::eNotApplicable; }

void AcDbEntity::recordGraphicsModified(Adesk::Boolean setModified) {
    assertWriteEnabled(false, false);
    std::uint32_t& bits = ObjectAccess::bits(*this);
    bits = setModified ? bits | kGraphicsModified : bits & ~static_cast<std::uint32_t>(kGraphicsModified);
}

Acad::ErrorStatus AcDbEntity::draw() {
    assertReadEnabled();
    if (objectId().isNull())
        return Acad::eNoDatabase;
    ObjectAccess::bits(*this) |= kGraphicsModified;
    return Acad::eOk;
}

bool AcDbEntity::bounds(AcDbExtents& extents) const { return getGeomExtents(extents) == Acad::eOk; }

Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d&) { return Acad::eNotImplementedYet; }

Acad::ErrorStatus AcDbEntity::subGetTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& copy) const {
    std::unique_ptr<AcRxObject> copied(clone());
    AcDbEntity* entity = AcDbEntity::cast(copied.get());
    if (entity == nullptr)
        return Acad::eNotImplementedYet;
    static_cast<void>(copied.release()); // the same object
    std::unique_ptr<AcDbEntity> made(entity);
    const Acad::ErrorStatus es = made->transformBy(xform);
    if (es == Acad::eOk)
        copy = made.release();
    return es;
}

Acad::ErrorStatus AcDbEntity::subGetGeomExtents(AcDbExtents& extents) const {
    return drawnExtents(*this, extents);
}

Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcGePoint3dArray&, AcDbIntArray&, AcDbIntArray&) const {
    return Acad::eNotImplementedYet;
}

Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    return indices.isEmpty() ? Acad::eOk : transformBy(AcGeMatrix3d::translation(offset));
}

Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcDbGripDataPtrArray&, double, int, const AcGeVector3d&,
                                               int) const {
    return Acad::eNotImplementedYet;
}

Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcDbVoidPtrArray&, const AcGeVector3d&, int) {
    return Acad::eNotImplementedYet;
}

Acad::ErrorStatus AcDbEntity::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    AcDbIntArray osnapModes;
    AcDbIntArray geomIds;
    return subGetGripPoints(stretchPoints, osnapModes, geomIds);
}

Acad::ErrorStatus AcDbEntity::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                     const AcGeVector3d& offset) {
    return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::subGetOsnapPoints(AcDb::OsnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                                const AcGePoint3d&, const AcGeMatrix3d&, AcGePoint3dArray&,
                                                AcDbIntArray&) const {
    return Acad::eNotImplementedYet;
}

Acad::ErrorStatus AcDbEntity::subExplode(AcDbVoidPtrArray&) const { return Acad::eNotImplementedYet; }

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity*, AcDb::Intersect, AcGePoint3dArray&,
                                               Adesk::GsMarker, Adesk::GsMarker) const {
    return Acad::eNotImplementedYet;
}

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity*, AcDb::Intersect, const AcGePlane&,
                                               AcGePoint3dArray&, Adesk::GsMarker, Adesk::GsMarker) const {
    return Acad::eNotImplementedYet;
}

void AcDbEntity::subList() const {
    AcDbHandle handle;
    getAcDbHandle(handle);
    ACHAR digits[17];
    handle.getIntoAsciiBuffer(digits);
    ACHAR* layerName = layer();
    acutPrintf(L"\n%ls  Layer: %ls  Handle: %ls", isA()->name(), layerName != nullptr ? layerName : L"?",
               digits);
    acutDelString(layerName);
}

Adesk::UInt32 AcDbEntity::subSetAttributes(AcGiDrawableTraits* traits) {
    const AcDbObjectId linetype = linetypeId();
    traits->setColor(colorIndex());
    traits->setLayer(layerId());
    traits->setLineType(linetype);
    traits->setLineTypeScale(linetypeScale());
    traits->setLineWeight(lineWeight());
    return kDrawableIsAnEntity | (visibility() == AcDb::kInvisible ? kDrawableIsInvisible : kDrawableNone);
}
