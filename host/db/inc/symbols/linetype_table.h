#pragma once

#include "gevec2d.h"
#include "symbols/symbol_table.h"

#include <vector>

// A line type: a pattern of dashes, gaps and dots, with shapes or texts between them.
class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);
    AcDbLinetypeTableRecord();

    // The description: in a buffer of the caller's (acutDelBuffer), or in the record until it changes.
    Acad::ErrorStatus comments(ACHAR*& text) const;
    Acad::ErrorStatus comments(const ACHAR*& text) const;
    // Setters need write.
    Acad::ErrorStatus setComments(const ACHAR* text);
    double patternLength() const;
    Acad::ErrorStatus setPatternLength(double length);
    int numDashes() const;
    // eInvalidInput for more than 12.
    Acad::ErrorStatus setNumDashes(int count);
    // Positive a dash, negative a gap, 0 a dot. 0 for an index that is not there; the setter answers
    // eInvalidIndex.
    double dashLengthAt(int index) const;
    Acad::ErrorStatus setDashLengthAt(int index, double length);
    // The text style or shape file of the shape or text at that dash; null if there is none.
    AcDbObjectId shapeStyleAt(int index) const;
    int shapeNumberAt(int index) const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Dash {
        double length = 0.0;
        Adesk::UInt16 shapeNumber = 0; // or the text's place in the texts
        Adesk::UInt16 shapeFlags = 0;
        double xOffset = 0.0, yOffset = 0.0;
        double scale = 1.0;
        double rotation = 0.0;
        AcDbObjectId style;
    };
    struct Fields {
        AcString comments;
        double patternLength = 0.0;
        Adesk::UInt8 alignment = 'A';
        std::vector<Dash> dashes;
        // Texts that dashes name, each with its zero, in the 256 bytes that the drawing file has for them;
        // none stands for zeros alone.
        std::vector<Adesk::UInt8> texts;
    };
    Fields m_fields;
};

class AcDbLinetypeTableIterator : public embedded::TypedSymbolIterator<AcDbLinetypeTableRecord> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableIterator);
    using TypedSymbolIterator::TypedSymbolIterator;
};

class AcDbLinetypeTable
    : public embedded::TypedSymbolTable<AcDbLinetypeTableRecord, AcDbLinetypeTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTable);
    AcDbLinetypeTable();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
};
