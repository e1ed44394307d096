#pragma once

#include "dbplotsettings.h"
#include "gepnt3d.h"
#include "gevec3d.h"

// A sheet of the drawing: how model space, or a paper space block, is shown and plotted.
class AcDbLayout : public AcDbPlotSettings {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayout);
    AcDbLayout();

    AcDbObjectId getBlockTableRecordId() const;
    // Setters need write.
    virtual Acad::ErrorStatus setBlockTableRecordId(AcDbObjectId id);
    // The text is the layout's until it changes. The dictionary of layouts has the name too.
    Acad::ErrorStatus getLayoutName(const ACHAR*& name) const;
    virtual Acad::ErrorStatus setLayoutName(const ACHAR* name);
    int getTabOrder() const;
    virtual void setTabOrder(int order);
    // Whether it is the one of model space.
    bool modelType() const;
    void setModelType(bool model);
    void getLimits(AcGePoint2d& minimum, AcGePoint2d& maximum) const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Fields {
        AcString name;
        Adesk::UInt32 tabOrder = 0;
        Adesk::UInt16 flags = 1;
        AcGePoint3d ucsOrigin;
        AcGePoint2d limitsMin, limitsMax{12.0, 9.0};
        AcGePoint3d insertionBase;
        AcGeVector3d ucsXAxis{1.0, 0.0, 0.0}, ucsYAxis{0.0, 1.0, 0.0};
        double elevation = 0.0;
        Adesk::UInt16 orthographic = 0;
        AcGePoint3d extentsMin, extentsMax;
        AcDbObjectId block, activeViewport, baseUcs, namedUcs;
    };
    Fields m_fields;
};
