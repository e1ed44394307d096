#pragma once

#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/export.h"
#include "dbx/elem/load_base.h"

#include "dbmain.h"

namespace orv::elem {
struct GenericLoad;
}

namespace orv::elem::legacy {

class LoadPE;

// The load as it stands in drawings of old: an entity with the data of LoadBase, and plugins that do all the
// visible work. It draws nothing itself, and new loads are elements of the front end's own; but what it files
// stays readable and is written again. docs/load-entity.md has the fields.
//
// What edits its geometry is for free loads: without a FreeLoadBase plugin such an operation answers
// eNotImplementedYet and does nothing. After an edit of the vertices that plugin is told
// (onGeometryModified, then onEdited). What it throws is printed, and takes nothing back.
class TALDORK_API ORV_Load : public AcDbEntity, public LoadBase {
public:
    ORV_DECLARE_CLASS(ORV_Load);

    static constexpr Adesk::UInt32 kVersion = 3;
    static constexpr Adesk::UInt32 kMagic = 0xaffe6325;

    // A new load: see LoadBase. In no drawing, without plugins.
    ORV_Load();
    ~ORV_Load() override;

    // What the front end adds; null until it does. Not owned.
    static LoadPE* getProtExt() { return s_protExt; }
    static void setProtExt(LoadPE* ext) { s_protExt = ext; }

    // The status of the first call that failed, or eOk; eNullPtr for null, which is reported. Status 2 for
    // what a plugin or an archive throws, which is printed.
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    // Status 301, by which the host keeps the entity as a proxy: for a newer version, with nothing but the
    // entity's part read; for a stream that the element refuses; for a curve of an unknown class, or of one
    // that is no segmented curve, both reported; for what a plugin or an archive throws, which is printed.
    // Otherwise the status of the first call that failed. A wrong end is only reported. eNullPtr for null,
    // which is reported.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;

    // The extension's answer, or eOk.
    Acad::ErrorStatus audit(AcDbAuditInfo* auditInfo) override;

    void acdb_assertWriteEnabled() override;
    void acdb_assertReadEnabled() const override;
    AcRxClass* acdb_isA() const override;
    int acdb_isNewObject() const override;
    AcDbObjectId acdb_id() override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    void subViewportDraw(AcGiViewportDraw* vd) override;
    Acad::ErrorStatus subGetClassID(CLSID* classId) const override;
    // Tells the plugins, also while an undo or redo runs.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;
    // The points of the vertices: to stretch, to snap to in any mode, and as grips.
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    using AcDbEntity::subGetGripPoints;
    Acad::ErrorStatus subGetGripPoints(AcDbGripDataPtrArray& grips, double curViewUnitSize, int gripSize,
                                       const AcGeVector3d& curViewDir, int bitflags) const override;
    using AcDbEntity::subMoveGripPointsAt;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData, const AcGeVector3d& offset,
                                          int bitflags) override;
    // std::out_of_range, with nothing changed, for an index that names no vertex.
    Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices,
                                             const AcGeVector3d& offset) override;
    // The vertices that have their position from their point. A load on an element stays where that is, and
    // is only drawn anew. eOk.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    // An element's load is not copied: eNotApplicable.
    Acad::ErrorStatus subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                   Adesk::Boolean isPrimary) const override;
    Acad::ErrorStatus subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                     Adesk::Boolean isPrimary) const override;

private:
    Acad::ErrorStatus appendVertexPoints(AcGePoint3dArray& points) const;
    void writeContent(AcDbDwgFiler& filer) const;
    Acad::ErrorStatus readContent(AcDbDwgFiler& filer);
    static void writeCurve(AcDbDwgFiler& filer, const GenericLoad& load);
    static void readCurve(AcDbDwgFiler& filer, GenericLoad& load);

    static LoadPE* s_protExt;
};

} // namespace orv::elem::legacy
