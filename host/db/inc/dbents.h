#pragma once

#include "AcString.h"
#include "dbmain.h"

// The two entities with which a drawing file frames a block's entities. They belong to the block's record and
// are not among its entities.
class AcDbBlockBegin : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockBegin);
    AcDbBlockBegin();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    // The block's name as the file has it here; that of the record may differ from it.
    const ACHAR* name() const;
    // Needs write.
    void setName(const ACHAR* name);

private:
    AcString m_name;
};

class AcDbBlockEnd : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockEnd);
    AcDbBlockEnd();
};
