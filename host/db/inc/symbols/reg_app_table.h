#pragma once

#include "symbols/symbol_table.h"

// An application that has put extended data into the drawing.
class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);
    AcDbRegAppTableRecord();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    // A byte of the file whose use is not known.
    Adesk::UInt8 m_mark = 0;
};

EMBEDDED_DECLARE_SYMBOL_TABLE(AcDbRegAppTable, AcDbRegAppTableRecord);
