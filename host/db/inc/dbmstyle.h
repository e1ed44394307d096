#pragma once

#include "AcString.h"
#include "dbmain.h"

#include <vector>

// A style of multiple lines.
class AcDbMlineStyle : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbMlineStyle);
    AcDbMlineStyle();

    // Getters of texts give the object's own, until it changes. Setters need write.
    Acad::ErrorStatus getName(const ACHAR*& name) const;
    Acad::ErrorStatus set(const ACHAR* name);
    Acad::ErrorStatus getDescription(const ACHAR*& text) const;
    Acad::ErrorStatus setDescription(const ACHAR* text);
    int numElements() const;
    // eInvalidIndex for an element that is not there.
    Acad::ErrorStatus getElementAt(int index, double& offset, Adesk::UInt16& colour) const;
    // Behind the others, by layer in its line type. eOutOfRange for more than 16.
    Acad::ErrorStatus addElement(int& index, double offset, Adesk::UInt16 colour = 256);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Element {
        double offset = 0.0;
        Adesk::UInt16 colour = 256;
        // The place of the line type in its table; by layer.
        Adesk::UInt16 linetype = 32767;
    };
    struct Fields {
        AcString name;
        AcString description;
        Adesk::UInt16 flags = 0;
        Adesk::UInt16 fillColour = 256;
        double startAngle = 1.5707963267948966;
        double endAngle = 1.5707963267948966;
        std::vector<Element> elements;
    };
    Fields m_fields;
};
