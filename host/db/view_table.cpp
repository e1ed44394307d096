#include "symbols/view_table.h"

#include "db/view_fields.h"

using namespace embedded;

namespace {

template <class View, class Ucs, class Flag, class Stream>
void fileFields(View& view, Flag& paperSpace, Flag& ucsAssociated, Ucs& ucs, Stream& s) {
    fileView(view, s);
    s.flag(paperSpace);
    s.flag(ucsAssociated);
    if (!ucsAssociated)
        return;
    fileUcs(ucs, s);
    s.hardPointer(ucs.base);
    s.hardPointer(ucs.named);
}

} // namespace

AcDbViewTable::AcDbViewTable() = default;
AcDbViewTableRecord::AcDbViewTableRecord() = default;

bool AcDbViewTableRecord::isPaperspaceView() const {
    assertReadEnabled();
    return m_paperSpace;
}

Acad::ErrorStatus AcDbViewTableRecord::setIsPaperspaceView(bool paper) {
    assertWriteEnabled();
    m_paperSpace = paper;
    return Acad::eOk;
}

bool AcDbViewTableRecord::isUcsAssociatedToView() const {
    assertReadEnabled();
    return m_ucsAssociated;
}

Acad::ErrorStatus AcDbViewTableRecord::associateUcs(bool associated) {
    assertWriteEnabled();
    m_ucsAssociated = associated;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer),
                       [this](auto& out) { fileFields(m_view, m_paperSpace, m_ucsAssociated, m_ucs, out); });
}

Acad::ErrorStatus AcDbViewTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer), [this](auto& in) {
        m_ucs = Ucs();
        fileFields(m_view, m_paperSpace, m_ucsAssociated, m_ucs, in);
    });
}
