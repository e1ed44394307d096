#pragma once

#include "AcString.h"
#include "dbmain.h"
#include "entities/arc.h"
#include "entities/attribute.h"
#include "entities/block_reference.h"
#include "entities/circle.h"
#include "entities/line.h"
#include "entities/minsert_block.h"
#include "entities/point.h"
#include "entities/polyline_2d.h"
#include "entities/polyline_3d.h"
#include "entities/sequence_end.h"
#include "entities/solid.h"
#include "entities/text.h"
#include "entities/vertex.h"

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
