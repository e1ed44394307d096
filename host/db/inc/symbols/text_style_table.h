#pragma once

#include "symbols/symbol_table.h"

// A text style, or a shape file that the drawing uses; those have no name.
class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);
    AcDbTextStyleTableRecord();

    // Setters need write; eInvalidInput for a value that no text can have.
    bool isShapeFile() const;
    void setIsShapeFile(bool shape);
    bool isVertical() const;
    void setIsVertical(bool vertical);
    // 0: each text its own.
    double textSize() const;
    Acad::ErrorStatus setTextSize(double size);
    double xScale() const;
    Acad::ErrorStatus setXScale(double scale);
    // Radians.
    double obliquingAngle() const;
    Acad::ErrorStatus setObliquingAngle(double angle);
    // The size of the last text that was made in this style.
    double priorSize() const;
    Acad::ErrorStatus setPriorSize(double size);
    // 2 backwards, 4 upside down.
    Adesk::UInt8 flagBits() const;
    void setFlagBits(Adesk::UInt8 flags);
    // The text in a buffer of the caller's (acutDelBuffer), or in the record until it changes.
    Acad::ErrorStatus fileName(ACHAR*& name) const;
    Acad::ErrorStatus fileName(const ACHAR*& name) const;
    Acad::ErrorStatus setFileName(const ACHAR* name);
    Acad::ErrorStatus bigFontFileName(ACHAR*& name) const;
    Acad::ErrorStatus bigFontFileName(const ACHAR*& name) const;
    Acad::ErrorStatus setBigFontFileName(const ACHAR* name);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Fields {
        bool shapeFile = false;
        bool vertical = false;
        Adesk::UInt8 flags = 0;
        double size = 0.0;
        double xScale = 1.0;
        double obliquing = 0.0;
        double priorSize = 2.5;
        AcString file;
        AcString bigFontFile;
    };
    Fields m_fields;
};

EMBEDDED_DECLARE_SYMBOL_TABLE(AcDbTextStyleTable, AcDbTextStyleTableRecord);
