#include "symbols/viewport_table.h"

#include "db/view_fields.h"

using namespace embedded;

namespace {

template <class Fields, class Stream>
void fileTile(Fields& f, Stream& s) {
    s.rawPoint(f.lowerLeft);
    s.rawPoint(f.upperRight);
    s.flag(f.ucsFollow);
    s.int16(f.circleSides);
    s.flag(f.fastZoom);
    s.flag(f.iconEnabled);
    s.flag(f.iconAtOrigin);
    s.flag(f.gridEnabled);
    s.rawPoint(f.gridIncrements);
    s.flag(f.snapEnabled);
    s.flag(f.snapIsometric);
    s.int16(f.snapPair);
    s.real(f.snapAngle);
    s.rawPoint(f.snapBase);
    s.rawPoint(f.snapIncrements);
    s.flag(f.ucsAtOrigin);
    s.flag(f.ucsPerViewport);
}

template <class View, class Fields, class Ucs, class Stream>
void fileFields(View& view, Fields& fields, Ucs& ucs, Stream& s) {
    fileView(view, s);
    fileTile(fields, s);
    fileUcs(ucs, s);
    s.hardPointer(ucs.named);
    s.hardPointer(ucs.base);
}

} // namespace

AcDbViewportTable::AcDbViewportTable() = default;
AcDbViewportTableRecord::AcDbViewportTableRecord() = default;

AcGePoint2d AcDbViewportTableRecord::lowerLeftCorner() const {
    assertReadEnabled();
    return m_fields.lowerLeft;
}

void AcDbViewportTableRecord::setLowerLeftCorner(const AcGePoint2d& value) {
    assertWriteEnabled();
    m_fields.lowerLeft = value;
}

AcGePoint2d AcDbViewportTableRecord::upperRightCorner() const {
    assertReadEnabled();
    return m_fields.upperRight;
}

void AcDbViewportTableRecord::setUpperRightCorner(const AcGePoint2d& value) {
    assertWriteEnabled();
    m_fields.upperRight = value;
}

bool AcDbViewportTableRecord::ucsFollowMode() const {
    assertReadEnabled();
    return m_fields.ucsFollow;
}

void AcDbViewportTableRecord::setUcsFollowMode(bool value) {
    assertWriteEnabled();
    m_fields.ucsFollow = value;
}

bool AcDbViewportTableRecord::iconEnabled() const {
    assertReadEnabled();
    return m_fields.iconEnabled;
}

void AcDbViewportTableRecord::setIconEnabled(bool value) {
    assertWriteEnabled();
    m_fields.iconEnabled = value;
}

bool AcDbViewportTableRecord::iconAtOrigin() const {
    assertReadEnabled();
    return m_fields.iconAtOrigin;
}

void AcDbViewportTableRecord::setIconAtOrigin(bool value) {
    assertWriteEnabled();
    m_fields.iconAtOrigin = value;
}

bool AcDbViewportTableRecord::gridEnabled() const {
    assertReadEnabled();
    return m_fields.gridEnabled;
}

void AcDbViewportTableRecord::setGridEnabled(bool value) {
    assertWriteEnabled();
    m_fields.gridEnabled = value;
}

AcGePoint2d AcDbViewportTableRecord::gridIncrements() const {
    assertReadEnabled();
    return m_fields.gridIncrements;
}

void AcDbViewportTableRecord::setGridIncrements(const AcGePoint2d& value) {
    assertWriteEnabled();
    m_fields.gridIncrements = value;
}

bool AcDbViewportTableRecord::snapEnabled() const {
    assertReadEnabled();
    return m_fields.snapEnabled;
}

void AcDbViewportTableRecord::setSnapEnabled(bool value) {
    assertWriteEnabled();
    m_fields.snapEnabled = value;
}

AcGePoint2d AcDbViewportTableRecord::snapBase() const {
    assertReadEnabled();
    return m_fields.snapBase;
}

void AcDbViewportTableRecord::setSnapBase(const AcGePoint2d& value) {
    assertWriteEnabled();
    m_fields.snapBase = value;
}

AcGePoint2d AcDbViewportTableRecord::snapIncrements() const {
    assertReadEnabled();
    return m_fields.snapIncrements;
}

void AcDbViewportTableRecord::setSnapIncrements(const AcGePoint2d& value) {
    assertWriteEnabled();
    m_fields.snapIncrements = value;
}

double AcDbViewportTableRecord::snapAngle() const {
    assertReadEnabled();
    return m_fields.snapAngle;
}

void AcDbViewportTableRecord::setSnapAngle(double value) {
    assertWriteEnabled();
    m_fields.snapAngle = value;
}

Adesk::UInt16 AcDbViewportTableRecord::circleSides() const {
    assertReadEnabled();
    return m_fields.circleSides;
}

Acad::ErrorStatus AcDbViewportTableRecord::setCircleSides(Adesk::UInt16 sides) {
    if (sides < 1 || sides > 20000)
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.circleSides = sides;
    return Acad::eOk;
}

bool AcDbViewportTableRecord::isUcsSavedWithViewport() const {
    assertReadEnabled();
    return m_fields.ucsPerViewport;
}

void AcDbViewportTableRecord::setUcsPerViewport(bool saved) {
    assertWriteEnabled();
    m_fields.ucsPerViewport = saved;
}

Acad::ErrorStatus AcDbViewportTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer),
                       [this](auto& out) { fileFields(m_view, m_fields, m_ucs, out); });
}

Acad::ErrorStatus AcDbViewportTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer),
                      [this](auto& in) { fileFields(m_view, m_fields, m_ucs, in); });
}
