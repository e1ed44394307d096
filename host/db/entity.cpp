#include "dbmain.h"

#include "db/database_core.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "rxclass.h"

#include <algorithm>
#include <array>

using namespace embedded;

AcDbEntity::AcDbEntity() = default;
AcDbEntity::~AcDbEntity() = default;

namespace {

// The weights in the order of their codes in the drawing file; codes from 29 on are the three that are no width.
constexpr std::array<AcDb::LineWeight, 24> kWeights = {
    AcDb::kLnWt000, AcDb::kLnWt005, AcDb::kLnWt009, AcDb::kLnWt013, AcDb::kLnWt015, AcDb::kLnWt018,
    AcDb::kLnWt020, AcDb::kLnWt025, AcDb::kLnWt030, AcDb::kLnWt035, AcDb::kLnWt040, AcDb::kLnWt050,
    AcDb::kLnWt053, AcDb::kLnWt060, AcDb::kLnWt070, AcDb::kLnWt080, AcDb::kLnWt090, AcDb::kLnWt100,
    AcDb::kLnWt106, AcDb::kLnWt120, AcDb::kLnWt140, AcDb::kLnWt158, AcDb::kLnWt200, AcDb::kLnWt211};
constexpr Adesk::UInt8 kCodeByLayer = 29;
constexpr Adesk::UInt8 kCodeByBlock = 30;
constexpr Adesk::UInt8 kCodeDefault = 31;

} // namespace

AcDb::LineWeight AcDbEntity::lineWeight() const {
    assertReadEnabled();
    if (mLineWeightCode < kWeights.size())
        return kWeights[mLineWeightCode];
    if (mLineWeightCode == kCodeByBlock)
        return AcDb::kLnWtByBlock;
    return mLineWeightCode == kCodeDefault ? AcDb::kLnWtByLwDefault : AcDb::kLnWtByLayer;
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, Adesk::Boolean) {
    Adesk::UInt8 code = kCodeByLayer;
    if (weight == AcDb::kLnWtByBlock) {
        code = kCodeByBlock;
    } else if (weight == AcDb::kLnWtByLwDefault) {
        code = kCodeDefault;
    } else if (weight != AcDb::kLnWtByLayer) {
        auto it = std::find(kWeights.begin(), kWeights.end(), weight);
        if (it == kWeights.end())
            return Acad::eInvalidInput;
        code = static_cast<Adesk::UInt8>(it - kWeights.begin());
    }
    assertWriteEnabled();
    mLineWeightCode = code;
    return Acad::eOk;
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
    mLinetypeBits = linetype == roots.byLayerLinetype       ? 0
                    : linetype == roots.byBlockLinetype     ? 1
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
    mLineWeightCode = kCodeByLayer;
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
