#include "symbols/ucs_table.h"

#include "db/field_stream.h"

using namespace embedded;

namespace {

template <class Fields, class Stream>
void fileFields(Fields& f, Stream& s) {
    s.point(f.origin);
    s.vector(f.xAxis);
    s.vector(f.yAxis);
    s.real(f.elevation);
    s.int16(f.orthographicView);
    s.int16(f.orthographicType);
    s.hardPointer(f.base);
    s.hardPointer(f.named);
}

} // namespace

AcDbUCSTable::AcDbUCSTable() = default;
AcDbUCSTableRecord::AcDbUCSTableRecord() = default;

AcGePoint3d AcDbUCSTableRecord::origin() const {
    assertReadEnabled();
    return m_fields.origin;
}

void AcDbUCSTableRecord::setOrigin(const AcGePoint3d& value) {
    assertWriteEnabled();
    m_fields.origin = value;
}

AcGeVector3d AcDbUCSTableRecord::xAxis() const {
    assertReadEnabled();
    return m_fields.xAxis;
}

void AcDbUCSTableRecord::setXAxis(const AcGeVector3d& value) {
    assertWriteEnabled();
    m_fields.xAxis = value;
}

AcGeVector3d AcDbUCSTableRecord::yAxis() const {
    assertReadEnabled();
    return m_fields.yAxis;
}

void AcDbUCSTableRecord::setYAxis(const AcGeVector3d& value) {
    assertWriteEnabled();
    m_fields.yAxis = value;
}

Acad::ErrorStatus AcDbUCSTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer),
                       [this](auto& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbUCSTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer),
                      [this](auto& in) { fileFields(m_fields, in); });
}
