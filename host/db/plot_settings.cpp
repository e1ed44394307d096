#include "dbplotsettings.h"

#include "db/field_stream.h"

using namespace embedded;

namespace {

template <class Plot, class Stream>
void filePlot(Plot& p, Stream& s) {
    s.text(p.name);
    s.text(p.device);
    s.int16(p.flags);
    s.real(p.leftMargin);
    s.real(p.bottomMargin);
    s.real(p.rightMargin);
    s.real(p.topMargin);
    s.real(p.paperWidth);
    s.real(p.paperHeight);
    s.text(p.paperName);
    s.point(p.origin);
    s.int16(p.paperUnits);
    s.int16(p.rotation);
    s.int16(p.type);
    s.point(p.windowMin);
    s.point(p.windowMax);
    s.text(p.viewName);
    s.real(p.realUnits);
    s.real(p.drawingUnits);
    s.text(p.styleSheet);
    s.int16(p.scaleType);
    s.real(p.scale);
    s.point(p.imageOrigin);
}

} // namespace

AcDbPlotSettings::AcDbPlotSettings() = default;

Acad::ErrorStatus AcDbPlotSettings::getPlotSettingsName(const ACHAR*& name) const {
    assertReadEnabled();
    name = m_plot.name.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::setPlotSettingsName(const ACHAR* name) {
    assertWriteEnabled();
    m_plot.name = name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotCfgName(const ACHAR*& name) const {
    assertReadEnabled();
    name = m_plot.device.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotPaperSize(double& width, double& height) const {
    assertReadEnabled();
    width = m_plot.paperWidth;
    height = m_plot.paperHeight;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbObject::dwgOutFields(filer), [this](auto& out) { filePlot(m_plot, out); });
}

Acad::ErrorStatus AcDbPlotSettings::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbObject::dwgInFields(filer), [this](auto& in) { filePlot(m_plot, in); });
}
