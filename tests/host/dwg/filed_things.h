#pragma once

#include "dbmain.h"
#include "gepnt3d.h"

#include <string>
#include <vector>

// Objects of several classes, to stand in drawings. All of them file a text, a number of bytes and an id;
// what a test sets here makes their reader or writer fail.
struct FilingFaults {
    Acad::ErrorStatus read = Acad::eOk;
    Acad::ErrorStatus write = Acad::eOk;
    bool readsTooMuch = false;
    bool throws = false;
};
FilingFaults& filingFaults();

struct ThingFields {
    std::wstring text;
    std::vector<unsigned char> bytes;
    AcDbObjectId id;
    AcGePoint3d point;

    Acad::ErrorStatus in(AcDbDwgFiler* filer);
    Acad::ErrorStatus out(AcDbDwgFiler* filer) const;
};

class FiledThing : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(FiledThing);
    ThingFields fields;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
};

// Has the DXF name of the one above.
class FiledTwin : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(FiledTwin);
    ThingFields fields;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
};

class FiledEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(FiledEntity);
    ThingFields fields;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
};

// Has no DXF name, so no drawing can hold it.
class UnfiledThing : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(UnfiledThing);
};

// A module that is there, and one that is not.
void registerThings();
void unregisterThings();
