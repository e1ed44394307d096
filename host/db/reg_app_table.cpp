#include "symbols/reg_app_table.h"

#include "db/field_stream.h"

using namespace embedded;

AcDbRegAppTable::AcDbRegAppTable() = default;
AcDbRegAppTableRecord::AcDbRegAppTableRecord() = default;

Acad::ErrorStatus AcDbRegAppTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer),
                       [this](auto& out) { out.byte(m_mark); });
}

Acad::ErrorStatus AcDbRegAppTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer),
                      [this](auto& in) { in.byte(m_mark); });
}
