#pragma once

#include "symbols/symbol_table.h"

// The old table that links viewports in paper space, by handle, to the names they have in the file. Drawings
// must have it; nothing uses it.
class AcDbVXTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbVXTableRecord);
    AcDbVXTableRecord();

    // The viewport entity, or null.
    AcDbObjectId viewportId() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    bool m_on = false;
    AcDbObjectId m_viewport;
    AcDbObjectId m_previous;
};

EMBEDDED_DECLARE_SYMBOL_TABLE(AcDbVXTable, AcDbVXTableRecord);
