#pragma once

#include "dbmain.h"

// Ends the attributes of a block reference, or the vertices of a polyline. Nothing is seen of it.
class AcDbSequenceEnd : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSequenceEnd);
    AcDbSequenceEnd();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
};
