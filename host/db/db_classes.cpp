#include "db/db_classes.h"

#include "dbapserv.h"
#include "dbdict.h"
#include "dbidmap.h"
#include "dbmain.h"
#include "dbproxy.h"
#include "dbtrans.h"
#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDatabase, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObject, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbEntity, AcDbObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcTransaction, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbTransactionManager, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDictionaryIterator, AcRxObject)
ACRX_DXF_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, AcDb::kDHL_1012, 0, 0, DICTIONARY, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbDictionaryWithDefault, AcDbDictionary, AcDb::kDHL_1500, 0, 0, ACDBDICTIONARYWDFLT,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbProxyObject, AcDbObject, AcDb::kDHL_1012, 0, 0, ACAD_PROXY_OBJECT,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbProxyEntity, AcDbEntity, AcDb::kDHL_1012, 0, 0, ACAD_PROXY_ENTITY,
                        ObjectDBX Classes)

namespace embedded {

void initDbClasses() {
    AcDbDwgFiler::rxInit();
    AcDbDxfFiler::rxInit();
    AcDbHostApplicationServices::rxInit();
    AcDbDatabase::rxInit();
    AcTransaction::rxInit();
    AcDbTransactionManager::rxInit();
    AcDbDictionaryIterator::rxInit();
    AcDbObject::rxInit();
    AcDbEntity::rxInit();
    AcDbDictionary::rxInit();
    AcDbDictionaryWithDefault::rxInit();
    AcDbProxyObject::rxInit();
    AcDbProxyEntity::rxInit();
    AcDbIdMapping::rxInit();
    AcDbIdMappingIter::rxInit();
    AcDbObjectReactor::rxInit();
    AcDbDatabaseReactor::rxInit();
    initSymbolTableClasses();
}

} // namespace embedded
