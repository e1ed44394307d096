#pragma once

#include "AcString.h"
#include "dbmain.h"
#include "gepnt2d.h"

// How something is plotted: device, paper, margins, scale. Lengths on paper in millimetres.
class AcDbPlotSettings : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbPlotSettings);
    AcDbPlotSettings();

    // The text is the object's until it changes. Setters need write and answer eOk.
    Acad::ErrorStatus getPlotSettingsName(const ACHAR*& name) const;
    Acad::ErrorStatus setPlotSettingsName(const ACHAR* name);
    Acad::ErrorStatus getPlotCfgName(const ACHAR*& name) const;
    Acad::ErrorStatus getPlotPaperSize(double& width, double& height) const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Plot {
        AcString name;
        AcString device{ACRX_T("none_device")};
        Adesk::UInt16 flags = 688;
        double leftMargin = 0.0, bottomMargin = 0.0, rightMargin = 0.0, topMargin = 0.0;
        double paperWidth = 0.0, paperHeight = 0.0;
        AcString paperName;
        AcGePoint2d origin;
        Adesk::UInt16 paperUnits = 0;
        Adesk::UInt16 rotation = 0;
        Adesk::UInt16 type = 5;
        AcGePoint2d windowMin, windowMax;
        AcString viewName;
        double realUnits = 1.0, drawingUnits = 1.0;
        AcString styleSheet;
        Adesk::UInt16 scaleType = 16;
        double scale = 1.0;
        AcGePoint2d imageOrigin;
    };

protected:
    Plot m_plot;
};
