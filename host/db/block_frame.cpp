#include "dbents.h"

#include "db/field_stream.h"

using namespace embedded;

AcDbBlockBegin::AcDbBlockBegin() = default;
AcDbBlockEnd::AcDbBlockEnd() = default;

const ACHAR* AcDbBlockBegin::name() const {
    assertReadEnabled();
    return m_name.kACharPtr();
}

void AcDbBlockBegin::setName(const ACHAR* name) {
    assertWriteEnabled();
    m_name = name;
}

Acad::ErrorStatus AcDbBlockBegin::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer), [this](auto& out) { out.text(m_name); });
}

Acad::ErrorStatus AcDbBlockBegin::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbEntity::dwgInFields(filer), [this](auto& in) { in.text(m_name); });
}
