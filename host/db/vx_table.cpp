#include "symbols/vx_table.h"

#include "db/field_stream.h"

using namespace embedded;

AcDbVXTable::AcDbVXTable() = default;
AcDbVXTableRecord::AcDbVXTableRecord() = default;

AcDbObjectId AcDbVXTableRecord::viewportId() const {
    assertReadEnabled();
    return m_viewport;
}

Acad::ErrorStatus AcDbVXTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer), [this](auto& out) {
        out.flag(m_on);
        out.softPointer(m_viewport);
        out.hardPointer(m_previous);
    });
}

Acad::ErrorStatus AcDbVXTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer), [this](auto& in) {
        in.flag(m_on);
        in.softPointer(m_viewport);
        in.hardPointer(m_previous);
    });
}
