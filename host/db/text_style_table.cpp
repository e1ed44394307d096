#include "symbols/text_style_table.h"

#include "acutmem.h"
#include "db/field_stream.h"

using namespace embedded;

namespace {

template <class Fields, class Stream>
void fileFields(Fields& f, Stream& s) {
    s.flag(f.shapeFile);
    s.flag(f.vertical);
    s.real(f.size);
    s.real(f.xScale);
    s.real(f.obliquing);
    s.byte(f.flags);
    s.real(f.priorSize);
    s.text(f.file);
    s.text(f.bigFontFile);
}

constexpr double kSteepest = 1.4835298641951802; // 85 degrees

} // namespace

AcDbTextStyleTable::AcDbTextStyleTable() = default;
AcDbTextStyleTableRecord::AcDbTextStyleTableRecord() = default;

bool AcDbTextStyleTableRecord::isShapeFile() const {
    assertReadEnabled();
    return m_fields.shapeFile;
}

void AcDbTextStyleTableRecord::setIsShapeFile(bool shape) {
    assertWriteEnabled();
    m_fields.shapeFile = shape;
}

bool AcDbTextStyleTableRecord::isVertical() const {
    assertReadEnabled();
    return m_fields.vertical;
}

void AcDbTextStyleTableRecord::setIsVertical(bool vertical) {
    assertWriteEnabled();
    m_fields.vertical = vertical;
}

double AcDbTextStyleTableRecord::textSize() const {
    assertReadEnabled();
    return m_fields.size;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
    if (!(size >= 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.size = size;
    return Acad::eOk;
}

double AcDbTextStyleTableRecord::xScale() const {
    assertReadEnabled();
    return m_fields.xScale;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
    if (!(scale > 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.xScale = scale;
    return Acad::eOk;
}

double AcDbTextStyleTableRecord::obliquingAngle() const {
    assertReadEnabled();
    return m_fields.obliquing;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
    if (!(angle >= -kSteepest && angle <= kSteepest))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.obliquing = angle;
    return Acad::eOk;
}

double AcDbTextStyleTableRecord::priorSize() const {
    assertReadEnabled();
    return m_fields.priorSize;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setPriorSize(double size) {
    if (!(size > 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.priorSize = size;
    return Acad::eOk;
}

Adesk::UInt8 AcDbTextStyleTableRecord::flagBits() const {
    assertReadEnabled();
    return m_fields.flags;
}

void AcDbTextStyleTableRecord::setFlagBits(Adesk::UInt8 flags) {
    assertWriteEnabled();
    m_fields.flags = flags;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(ACHAR*& name) const {
    assertReadEnabled();
    name = acutNewString(m_fields.file.kACharPtr());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(const ACHAR*& name) const {
    assertReadEnabled();
    name = m_fields.file.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) {
    assertWriteEnabled();
    m_fields.file = name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(ACHAR*& name) const {
    assertReadEnabled();
    name = acutNewString(m_fields.bigFontFile.kACharPtr());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(const ACHAR*& name) const {
    assertReadEnabled();
    name = m_fields.bigFontFile.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* name) {
    assertWriteEnabled();
    m_fields.bigFontFile = name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer),
                       [this](auto& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer),
                      [this](auto& in) { fileFields(m_fields, in); });
}
