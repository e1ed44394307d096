#pragma once

#include "symbols/abstract_view_table.h"

// A saved view.
class AcDbViewTableRecord : public AcDbAbstractViewTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewTableRecord);
    AcDbViewTableRecord();

    bool isPaperspaceView() const;
    // Setters need write. eOk.
    Acad::ErrorStatus setIsPaperspaceView(bool paper);
    // Whether a coordinate system comes back with the view.
    bool isUcsAssociatedToView() const;
    Acad::ErrorStatus associateUcs(bool associated);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    bool m_paperSpace = false;
    bool m_ucsAssociated = false;
};

EMBEDDED_DECLARE_SYMBOL_TABLE(AcDbViewTable, AcDbViewTableRecord);
