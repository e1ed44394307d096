#include "dblayout.h"

#include "db/field_stream.h"

using namespace embedded;

namespace {

template <class Fields, class Stream>
void fileFields(Fields& f, Stream& s) {
    s.text(f.name);
    s.int32(f.tabOrder);
    s.int16(f.flags);
    s.point(f.ucsOrigin);
    s.rawPoint(f.limitsMin);
    s.rawPoint(f.limitsMax);
    s.point(f.insertionBase);
    s.vector(f.ucsXAxis);
    s.vector(f.ucsYAxis);
    s.real(f.elevation);
    s.int16(f.orthographic);
    s.point(f.extentsMin);
    s.point(f.extentsMax);
    s.softPointer(f.block);
    s.softPointer(f.activeViewport);
    s.hardPointer(f.baseUcs);
    s.hardPointer(f.namedUcs);
}

// Of the plot's flags the one that says that model space is plotted.
constexpr Adesk::UInt16 kModelType = 1024;

} // namespace

AcDbLayout::AcDbLayout() = default;

AcDbObjectId AcDbLayout::getBlockTableRecordId() const {
    assertReadEnabled();
    return m_fields.block;
}

Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(AcDbObjectId id) {
    assertWriteEnabled();
    m_fields.block = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::getLayoutName(const ACHAR*& name) const {
    assertReadEnabled();
    name = m_fields.name.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::setLayoutName(const ACHAR* name) {
    if (name == nullptr || name[0] == 0)
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.name = name;
    return Acad::eOk;
}

int AcDbLayout::getTabOrder() const {
    assertReadEnabled();
    return static_cast<int>(m_fields.tabOrder);
}

void AcDbLayout::setTabOrder(int order) {
    assertWriteEnabled();
    m_fields.tabOrder = static_cast<Adesk::UInt32>(order);
}

bool AcDbLayout::modelType() const {
    assertReadEnabled();
    return (m_plot.flags & kModelType) != 0;
}

void AcDbLayout::setModelType(bool model) {
    assertWriteEnabled();
    const unsigned flags =
        model ? m_plot.flags | kModelType : m_plot.flags & ~static_cast<unsigned>(kModelType);
    m_plot.flags = static_cast<Adesk::UInt16>(flags);
}

void AcDbLayout::getLimits(AcGePoint2d& minimum, AcGePoint2d& maximum) const {
    assertReadEnabled();
    minimum = m_fields.limitsMin;
    maximum = m_fields.limitsMax;
}

Acad::ErrorStatus AcDbLayout::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbPlotSettings::dwgOutFields(filer),
                       [this](auto& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbLayout::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbPlotSettings::dwgInFields(filer),
                      [this](auto& in) { fileFields(m_fields, in); });
}
