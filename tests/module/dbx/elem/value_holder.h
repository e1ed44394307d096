#pragma once

#include "dbx/elem/ObjectProperties.h"
#include "property_tree/property_tree.h"

#include "dbmain.h"

namespace testing_support {

// An object of a drawing that files a value tree and a set of properties.
class ValueHolder : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(ValueHolder);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    orv::PropertyTree tree;
    orv::AcadObjectProperties properties;
};

// Registers the class once.
void registerValueHolder();

} // namespace testing_support
