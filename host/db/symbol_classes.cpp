#include "db/db_classes.h"

#include "dbents.h"
#include "dblayout.h"
#include "dbmstyle.h"
#include "dbplhldr.h"
#include "dbplotsettings.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTableIterator, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbAbstractViewTableRecord, AcDbSymbolTableRecord)

ACRX_DXF_DEFINE_MEMBERS(AcDbBlockTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_1012, 0, 0, BLOCK_RECORD,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbBlockTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbLayerTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_1012, 0, 0, LAYER,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbLayerTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbTextStyleTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_1012, 0, 0, STYLE,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbTextStyleTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbLinetypeTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_1012, 0, 0, LTYPE,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbLinetypeTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbViewTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbViewTableRecord, AcDbAbstractViewTableRecord, AcDb::kDHL_1012, 0, 0, VIEW,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbViewTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbUCSTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbUCSTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_1012, 0, 0, UCS,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbUCSTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbViewportTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbViewportTableRecord, AcDbAbstractViewTableRecord, AcDb::kDHL_1012, 0, 0, VPORT,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbViewportTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbRegAppTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_1012, 0, 0, APPID,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbRegAppTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbDimStyleTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_1012, 0, 0, DIMSTYLE,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDimStyleTableIterator, AcDbSymbolTableIterator)

ACRX_DXF_DEFINE_MEMBERS(AcDbVXTable, AcDbSymbolTable, AcDb::kDHL_1012, 0, 0, TABLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbVXTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_1012, 0, 0, VX_TABLE_RECORD,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbVXTableIterator, AcDbSymbolTableIterator)

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbBlockTableRecordIterator, AcRxObject)
ACRX_DXF_DEFINE_MEMBERS(AcDbBlockBegin, AcDbEntity, AcDb::kDHL_1012, 0, 0, BLOCK, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbBlockEnd, AcDbEntity, AcDb::kDHL_1012, 0, 0, ENDBLK, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbPlaceHolder, AcDbObject, AcDb::kDHL_1500, 0, 0, ACDBPLACEHOLDER,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbXrecord, AcDbObject, AcDb::kDHL_1012, 0, 0, XRECORD, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbPlotSettings, AcDbObject, AcDb::kDHL_1500, 0, 0, PLOTSETTINGS, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbLayout, AcDbPlotSettings, AcDb::kDHL_1500, 0, 0, LAYOUT, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbMlineStyle, AcDbObject, AcDb::kDHL_1012, 0, 0, MLINESTYLE, ObjectDBX Classes)

namespace embedded {

void initSymbolTableClasses() {
    AcDbSymbolTable::rxInit();
    AcDbSymbolTableRecord::rxInit();
    AcDbSymbolTableIterator::rxInit();
    AcDbAbstractViewTableRecord::rxInit();
    AcDbBlockTable::rxInit();
    AcDbBlockTableRecord::rxInit();
    AcDbBlockTableIterator::rxInit();
    AcDbLayerTable::rxInit();
    AcDbLayerTableRecord::rxInit();
    AcDbLayerTableIterator::rxInit();
    AcDbTextStyleTable::rxInit();
    AcDbTextStyleTableRecord::rxInit();
    AcDbTextStyleTableIterator::rxInit();
    AcDbLinetypeTable::rxInit();
    AcDbLinetypeTableRecord::rxInit();
    AcDbLinetypeTableIterator::rxInit();
    AcDbViewTable::rxInit();
    AcDbViewTableRecord::rxInit();
    AcDbViewTableIterator::rxInit();
    AcDbUCSTable::rxInit();
    AcDbUCSTableRecord::rxInit();
    AcDbUCSTableIterator::rxInit();
    AcDbViewportTable::rxInit();
    AcDbViewportTableRecord::rxInit();
    AcDbViewportTableIterator::rxInit();
    AcDbRegAppTable::rxInit();
    AcDbRegAppTableRecord::rxInit();
    AcDbRegAppTableIterator::rxInit();
    AcDbDimStyleTable::rxInit();
    AcDbDimStyleTableRecord::rxInit();
    AcDbDimStyleTableIterator::rxInit();
    AcDbVXTable::rxInit();
    AcDbVXTableRecord::rxInit();
    AcDbVXTableIterator::rxInit();
    AcDbBlockTableRecordIterator::rxInit();
    AcDbBlockBegin::rxInit();
    AcDbBlockEnd::rxInit();
    AcDbPlaceHolder::rxInit();
    AcDbXrecord::rxInit();
    AcDbPlotSettings::rxInit();
    AcDbLayout::rxInit();
    AcDbMlineStyle::rxInit();
}

} // namespace embedded
