#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"
#include "symbols/symbol_table.h"

// A named coordinate system.
class AcDbUCSTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbUCSTableRecord);
    AcDbUCSTableRecord();

    AcGePoint3d origin() const;
    // Setters need write.
    void setOrigin(const AcGePoint3d& origin);
    AcGeVector3d xAxis() const;
    void setXAxis(const AcGeVector3d& axis);
    AcGeVector3d yAxis() const;
    void setYAxis(const AcGeVector3d& axis);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Fields {
        AcGePoint3d origin;
        AcGeVector3d xAxis{1.0, 0.0, 0.0};
        AcGeVector3d yAxis{0.0, 1.0, 0.0};
        double elevation = 0.0;
        Adesk::UInt16 orthographicView = 0;
        Adesk::UInt16 orthographicType = 0;
        AcDbObjectId base, named;
    };
    Fields m_fields;
};

EMBEDDED_DECLARE_SYMBOL_TABLE(AcDbUCSTable, AcDbUCSTableRecord);
