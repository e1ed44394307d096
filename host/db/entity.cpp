#include "dbmain.h"

#include "acutmem.h"
#include "db/database_core.h"
#include "db/line_weight.h"
#include "db/symbol_index.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "rxclass.h"

using namespace embedded;

AcDbEntity::AcDbEntity() = default;
AcDbEntity::~AcDbEntity() = default;

AcDb::LineWeight AcDbEntity::lineWeight() const {
    assertReadEnabled();
    return lineWeightOfCode(mLineWeightCode);
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, Adesk::Boolean) {
    Adesk::UInt8 code = kWeightByLayer;
    if (!codeOfLineWeight(weight, code))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    mLineWeightCode = code;
    return Acad::eOk;
}

ACHAR* AcDbEntity::layer() const {
    assertReadEnabled();
    if (mLayer.isNull())
        return acutNewString(L"0");
    // Not through an open: the name is there to be read whoever is at the layer's record meanwhile.
    const AcDbSymbolTableRecord* record = mLayer.isValid() ? SymbolAccess::record(mLayer) : nullptr;
    return record != nullptr ? acutNewString(SymbolAccess::name(*record).kACharPtr()) : nullptr;
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* layer, Adesk::Boolean doSubents) {
    if (layer == nullptr)
        return Acad::eInvalidInput;
    AcDbDatabase* db = database() != nullptr ? database() : acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr)
        return Acad::eNoDatabase;
    AcDbLayerTable* table = nullptr;
    Acad::ErrorStatus es = db->getLayerTable(table, AcDb::kForRead);
    if (es != Acad::eOk)
        return es;
    AcDbObjectId id;
    es = table->getAt(layer, id);
    table->close();
    return es == Acad::eOk ? setLayer(id, doSubents) : es;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer, Adesk::Boolean) {
    AcRxClass* kind = layer.objectClass();
    if (kind == nullptr || !kind->isDerivedFrom(AcDbLayerTableRecord::desc()) ||
        (database() != nullptr && layer.database() != database()))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    mLayer = layer;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId linetype, Adesk::Boolean) {
    AcRxClass* kind = linetype.objectClass();
    if (kind == nullptr || !kind->isDerivedFrom(AcDbLinetypeTableRecord::desc()) ||
        (database() != nullptr && linetype.database() != database()))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    const RootIds& roots = coreOf(linetype)->roots;
    mLinetypeBits = linetype == roots.byLayerLinetype      ? 0
                    : linetype == roots.byBlockLinetype    ? 1
                    : linetype == roots.continuousLinetype ? 2
                                                           : 3;
    mLinetype = mLinetypeBits == 3 ? linetype : AcDbObjectId();
    return Acad::eOk;
}

AcDbObjectId AcDbEntity::linetypeId() const {
    assertReadEnabled();
    if (mLinetypeBits == 3 || objectId().isNull())
        return mLinetype;
    const RootIds& roots = coreOf(objectId())->roots;
    return mLinetypeBits == 0   ? roots.byLayerLinetype
           : mLinetypeBits == 1 ? roots.byBlockLinetype
                                : roots.continuousLinetype;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 colour, Adesk::Boolean) {
    if (colour > 256)
        return Acad::eInvalidInput;
    assertWriteEnabled();
    mColour = colour;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale, Adesk::Boolean) {
    if (!(scale > 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    mLinetypeScale = scale;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility, Adesk::Boolean) {
    assertWriteEnabled();
    mInvisible = visibility == AcDb::kInvisible ? 1 : 0;
    return Acad::eOk;
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* db) {
    if (db == nullptr)
        db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr)
        return;
    assertWriteEnabled();
    mLayer = db->clayer();
    mLinetype.setNull();
    mLinetypeBits = 0;
    mColour = 256;
    mLineWeightCode = kWeightByLayer;
    mLinetypeScale = 1.0;
    mInvisible = 0;
}

Acad::ErrorStatus AcDbEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es != Acad::eOk || filer->filerType() == AcDb::kFileFiler)
        return es;
    filer->writeHardPointerId(mLayer);
    filer->writeHardPointerId(mLinetype);
    filer->writeHardPointerId(mPlotStyle);
    filer->writeDouble(mLinetypeScale);
    filer->writeUInt16(mColour);
    filer->writeUInt16(mInvisible);
    filer->writeUInt8(mLineWeightCode);
    filer->writeUInt8(mLinetypeBits);
    filer->writeUInt8(mPlotStyleBits);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk || filer->filerType() == AcDb::kFileFiler)
        return es;
    AcDbHardPointerId id;
    filer->readHardPointerId(&id);
    mLayer = id;
    filer->readHardPointerId(&id);
    mLinetype = id;
    filer->readHardPointerId(&id);
    mPlotStyle = id;
    filer->readDouble(&mLinetypeScale);
    filer->readUInt16(&mColour);
    filer->readUInt16(&mInvisible);
    filer->readUInt8(&mLineWeightCode);
    filer->readUInt8(&mLinetypeBits);
    filer->readUInt8(&mPlotStyleBits);
    return filer->filerStatus();
}
