#include "dbmain.h"

#include "db/database_core.h"
#include "db/db_classes.h"
#include "db/object_access.h"
#include "db/open_close.h"
#include "db/reactors/notices.h"
#include "db/transactions.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbsymtb.h"
#include "embedded/event_source.h"
#include "embedded/host_start.h"

using namespace embedded;

namespace {

const RoomInitialiser roomInitialiser(30, initDbClasses);

AcDbVoidPtrArray& activeDatabases() {
    static AcDbVoidPtrArray* databases = new AcDbVoidPtrArray;
    return *databases;
}

} // namespace

const AcDbVoidPtrArray* acdbActiveDatabaseArray() { return &activeDatabases(); }

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) {
    startHost();
    m_core = new DatabaseCore(*this);
    if (buildDefaultDrawing) {
        embedded::buildDefaultDrawing(*this);
        m_core->modified = false;
    }
    m_core->undo().setRecording(true);
    activeDatabases().append(this);
    events::databaseConstructed(this);
}

AcDbDatabase::~AcDbDatabase() {
    events::databaseToBeDestroyed(this);
    notices::databaseGoes(*this);
    AcDbHostApplicationServices* services = acdbHostApplicationServices();
    if (services->workingDatabase() == this)
        services->setWorkingDatabase(nullptr);
    activeDatabases().remove(this);
    delete m_core;
}

Acad::ErrorStatus AcDbDatabase::save() {
    if (m_core->fileName.empty())
        return Acad::eFileNotFound;
    const std::wstring name = m_core->fileName;
    return saveAs(name.c_str());
}

Acad::ErrorStatus AcDbDatabase::getFilename(const ACHAR*& fileName) const {
    fileName = m_core->fileName.empty() ? nullptr : m_core->fileName.c_str();
    return fileName != nullptr ? Acad::eOk : Acad::eFileNotFound;
}

const ACHAR* AcDbDatabase::originalFileName() const {
    return m_core->originalFileName.empty() ? nullptr : m_core->originalFileName.c_str();
}

AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const { return m_core->roots.namedObjects; }
AcDbObjectId AcDbDatabase::blockTableId() const { return m_core->roots.blockTable; }
AcDbObjectId AcDbDatabase::layerTableId() const { return m_core->roots.layerTable; }
AcDbObjectId AcDbDatabase::textStyleTableId() const { return m_core->roots.textStyleTable; }
AcDbObjectId AcDbDatabase::linetypeTableId() const { return m_core->roots.linetypeTable; }
AcDbObjectId AcDbDatabase::viewTableId() const { return m_core->roots.viewTable; }
AcDbObjectId AcDbDatabase::UCSTableId() const { return m_core->roots.ucsTable; }
AcDbObjectId AcDbDatabase::viewportTableId() const { return m_core->roots.viewportTable; }
AcDbObjectId AcDbDatabase::regAppTableId() const { return m_core->roots.regAppTable; }
AcDbObjectId AcDbDatabase::dimStyleTableId() const { return m_core->roots.dimStyleTable; }
AcDbObjectId AcDbDatabase::groupDictionaryId() const { return m_core->roots.groups; }
AcDbObjectId AcDbDatabase::mLineStyleDictionaryId() const { return m_core->roots.mlineStyles; }
AcDbObjectId AcDbDatabase::layoutDictionaryId() const { return m_core->roots.layouts; }
AcDbObjectId AcDbDatabase::plotStyleNameDictionaryId() const { return m_core->roots.plotStyles; }
AcDbObjectId AcDbDatabase::layerZero() const { return m_core->roots.layerZero; }
AcDbObjectId AcDbDatabase::continuousLinetype() const { return m_core->roots.continuousLinetype; }
AcDbObjectId AcDbDatabase::byLayerLinetype() const { return m_core->roots.byLayerLinetype; }
AcDbObjectId AcDbDatabase::byBlockLinetype() const { return m_core->roots.byBlockLinetype; }
AcDbObjectId AcDbDatabase::clayer() const { return m_core->roots.currentLayer; }
AcGePoint3d AcDbDatabase::ucsorg() const { return m_core->ucs.origin; }
AcGeVector3d AcDbDatabase::ucsxdir() const { return m_core->ucs.xAxis; }
AcGeVector3d AcDbDatabase::ucsydir() const { return m_core->ucs.yAxis; }

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, blockTableId(), mode);
}

Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, layerTableId(), mode);
}

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
    return acdbOpenObject(dictionary, namedObjectsDictionaryId(), mode);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* object) {
    AcDbObjectId id;
    return addAcDbObject(id, object);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object) {
    id.setNull();
    if (object == nullptr)
        return Acad::eInvalidInput;
    if (!object->objectId().isNull())
        return Acad::eAlreadyInDb;
    id = m_core->add(object);
    notices::appended(*object);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound,
                                                const AcDbHandle& handle, Adesk::UInt32) {
    id.setNull();
    if (handle.isNull())
        return Acad::eNullHandle;
    AcDbStub* stub = m_core->stubs().find(handle);
    if (stub == nullptr && createIfNotFound)
        stub = &m_core->stubs().make(handle);
    if (stub == nullptr)
        return Acad::eUnknownHandle;
    id = AcDbObjectId(stub);
    return Acad::eOk;
}

AcDbHandle AcDbDatabase::handseed() const { return AcDbHandle(m_core->handseed); }

Acad::ErrorStatus AcDbDatabase::setHandseed(const AcDbHandle& handle) {
    if (static_cast<Adesk::UInt64>(handle) <= m_core->stubs().highestHandle())
        return Acad::eInvalidInput;
    m_core->handseed = handle;
    return Acad::eOk;
}

AcDbTransactionManager* AcDbDatabase::transactionManager() const { return &m_core->transactions(); }

void AcDbDatabase::disableUndoRecording(bool disable) {
    if (m_core->undo().active())
        return;
    if (disable)
        m_core->dropErased();
    m_core->undo().setRecording(!disable);
}

bool AcDbDatabase::undoRecording() const { return m_core->undo().recording(); }
void AcDbDatabase::startUndoRecord() { m_core->undo().beginStep(); }
bool AcDbDatabase::isModified() const { return m_core->modified; }

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    return openStub(id, mode, openErased, object);
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    return acdbOpenObject(entity, id, mode, openErased);
}
