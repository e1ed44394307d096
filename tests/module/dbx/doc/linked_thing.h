#pragma once

#include "dbmain.h"
#include "dbx/doc/database_element_base.h"

#include <string>

// An object of a drawing that is nothing but a link to a store.
class LinkedThing : public AcDbObject, public orv::doc::DatabaseElementBase {
public:
    ACRX_DECLARE_MEMBERS(LinkedThing);

    void setNodDatabaseId(const AcDbObjectId& id, const std::wstring& name) override;
    AcDbObjectId getNodDatabaseId() override { return m_id; }
    const std::wstring& getNodDatabaseName() const override { return m_name; }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    AcDbObjectId m_id;
    std::wstring m_name;
};

// Registers the class once.
void registerLinkedThing();
