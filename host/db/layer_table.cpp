#include "symbols/layer_table.h"

#include "db/field_stream.h"
#include "db/line_weight.h"
#include "db/symbol_index.h"
#include "rxclass.h"
#include "symbols/linetype_table.h"

using namespace embedded;

namespace {

// The bits of the one number in which the file has a layer's settings.
enum LayerBits : Adesk::UInt16 {
    kFrozen = 1,
    kOff = 2,
    kFrozenInNew = 4,
    kLocked = 8,
    kPlottable = 16,
    kWeightMask = 0x3E0,
    kWeightShift = 5
};

template <class Fields, class Stream>
void fileFields(Fields& f, Stream& s) {
    s.int16(f.values);
    s.colour(f.colour);
    s.hardPointer(f.plotStyle);
    s.hardPointer(f.linetype);
}

} // namespace

AcDbLayerTable::AcDbLayerTable() = default;
AcDbLayerTableRecord::AcDbLayerTableRecord()
    : m_fields{static_cast<Adesk::UInt16>(kPlottable | kWeightDefault << kWeightShift), 7, {}, {}} {}

bool AcDbLayerTableRecord::bit(Adesk::UInt16 mask) const {
    assertReadEnabled();
    return (m_fields.values & mask) != 0;
}

void AcDbLayerTableRecord::setBit(Adesk::UInt16 mask, bool on) {
    assertWriteEnabled();
    const unsigned values = on ? m_fields.values | mask : m_fields.values & ~static_cast<unsigned>(mask);
    m_fields.values = static_cast<Adesk::UInt16>(values);
}

bool AcDbLayerTableRecord::isFrozen() const { return bit(kFrozen); }
bool AcDbLayerTableRecord::isOff() const { return bit(kOff); }
bool AcDbLayerTableRecord::VPDFLT() const { return bit(kFrozenInNew); }
bool AcDbLayerTableRecord::isLocked() const { return bit(kLocked); }
bool AcDbLayerTableRecord::isPlottable() const { return bit(kPlottable); }
void AcDbLayerTableRecord::setIsOff(bool off) { setBit(kOff, off); }
void AcDbLayerTableRecord::setVPDFLT(bool frozen) { setBit(kFrozenInNew, frozen); }
void AcDbLayerTableRecord::setIsLocked(bool locked) { setBit(kLocked, locked); }

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    setBit(kFrozen, frozen);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
    if (plottable && SymbolAccess::name(*this).equalsNoCase(L"DEFPOINTS"))
        return Acad::eInvalidInput;
    setBit(kPlottable, plottable);
    return Acad::eOk;
}

bool AcDbLayerTableRecord::isInUse() const {
    assertReadEnabled();
    return SymbolAccess::isReferenced(*this);
}

Adesk::UInt16 AcDbLayerTableRecord::colorIndex() const {
    assertReadEnabled();
    return m_fields.colour;
}

Acad::ErrorStatus AcDbLayerTableRecord::setColorIndex(Adesk::UInt16 index) {
    if (index < 1 || index > 255)
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.colour = index;
    return Acad::eOk;
}

AcDbObjectId AcDbLayerTableRecord::linetypeObjectId() const {
    assertReadEnabled();
    return m_fields.linetype;
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId id) {
    const AcRxClass* kind = id.objectClass();
    if (kind == nullptr || !kind->isDerivedFrom(AcDbLinetypeTableRecord::desc()) ||
        (database() != nullptr && id.database() != database()))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.linetype = id;
    return Acad::eOk;
}

AcDb::LineWeight AcDbLayerTableRecord::lineWeight() const {
    assertReadEnabled();
    return lineWeightOfCode(static_cast<Adesk::UInt8>((m_fields.values & kWeightMask) >> kWeightShift));
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
    Adesk::UInt8 code = 0;
    if (!codeOfLineWeight(weight, code))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    const unsigned values =
        (m_fields.values & ~static_cast<unsigned>(kWeightMask)) | static_cast<unsigned>(code << kWeightShift);
    m_fields.values = static_cast<Adesk::UInt16>(values);
    return Acad::eOk;
}

AcDbObjectId AcDbLayerTableRecord::plotStyleNameId() const {
    assertReadEnabled();
    return m_fields.plotStyle;
}

Acad::ErrorStatus AcDbLayerTableRecord::setPlotStyleName(const AcDbObjectId& id) {
    assertWriteEnabled();
    m_fields.plotStyle = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer),
                       [this](auto& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer),
                      [this](auto& in) { fileFields(m_fields, in); });
}
