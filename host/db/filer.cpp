#include "dbfiler.h"

#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDwgFiler, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDxfFiler, AcRxObject)

Acad::ErrorStatus AcDbDwgFiler::dwgVersion(AcDb::AcDbDwgVersion& version,
                                           AcDb::MaintenanceReleaseVersion& maintenance) const {
    version = AcDb::kDHL_CURRENT;
    maintenance = AcDb::kMReleaseCurrent;
    return Acad::eOk;
}

Adesk::Boolean AcDbDwgFiler::usesReferences() const { return false; }
void AcDbDwgFiler::addReference(AcDbObjectId) {}

Acad::ErrorStatus AcDbDxfFiler::dwgVersion(AcDb::AcDbDwgVersion& version,
                                           AcDb::MaintenanceReleaseVersion& maintenance) const {
    version = AcDb::kDHL_CURRENT;
    maintenance = AcDb::kMReleaseCurrent;
    return Acad::eOk;
}

void AcDbDxfFiler::haltAtClassName(const AcRxClass*) {}
bool AcDbDxfFiler::includesDefaultValues() const { return false; }
double AcDbDxfFiler::elevation() const { return 0.0; }
double AcDbDxfFiler::thickness() const { return 0.0; }
Adesk::Boolean AcDbDxfFiler::isModifyingExistingObject() const { return false; }
