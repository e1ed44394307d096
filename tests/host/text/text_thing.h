#pragma once

#include "dbmain.h"

#include <string>

// An object that files a number, a text and a reference as group codes, in any order, and a class that
// derives from it.
class TextThing : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(TextThing);

    int number = 0;
    std::wstring text;
    AcDbObjectId reference;
    Acad::ErrorStatus refusal = Acad::eOk; // what writing answers

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
};

class DerivedTextThing : public TextThing {
public:
    ACRX_DECLARE_MEMBERS(DerivedTextThing);

    double real = 0.0;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
};

// Two classes with one DXF name.
class FirstTwin : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(FirstTwin);
};
class SecondTwin : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(SecondTwin);
};

// A class without a DXF name.
class NamelessThing : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(NamelessThing);
};

void registerTextThings();
