#include "acutmem.h"
#include "db/database_core.h"
#include "db/entity_list.h"
#include "db/field_stream.h"
#include "db/object_access.h"
#include "db/open_close.h"
#include "db/reactors/notices.h"
#include "db/symbol_index.h"

using namespace embedded;

AcDbBlockTableRecord::AcDbBlockTableRecord() : m_entities(std::make_unique<EntityList>()) {}
AcDbBlockTableRecord::~AcDbBlockTableRecord() = default;

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

// Nothing is recorded for undo but that the entity is new: taken back, it stays in the list, erased. So a
// thousand additions cost as much each as one.
Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    id.setNull();
    if (entity == nullptr)
        return Acad::eNullEntityPointer;
    if (!entity->objectId().isNull())
        return Acad::eAlreadyInDb;
    if (objectId().isNull())
        return Acad::eMustFirstAddBlockToDb;
    assertWriteEnabled(false);
    EntityList& list = BlockAccess::entities(*this);
    DatabaseCore& core = *coreOf(objectId());
    id = core.add(entity);
    ObjectAccess::setOwner(*entity, objectId());
    if (entity->layerId().isNull()) {
        ObjectAccess::EntitySettings settings = ObjectAccess::settings(*entity);
        settings.layer = core.roots.currentLayer.isNull() ? core.roots.layerZero : core.roots.currentLayer;
        ObjectAccess::setSettings(*entity, settings);
    }
    list.append(id);
    notices::appended(*entity);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                                    bool skipDeleted) const {
    assertReadEnabled();
    iterator = new AcDbBlockTableRecordIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::comments(ACHAR*& text) const {
    assertReadEnabled();
    text = acutNewString(m_fields.comments.kACharPtr());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::comments(const ACHAR*& text) const {
    assertReadEnabled();
    text = m_fields.comments.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* text) {
    assertWriteEnabled();
    m_fields.comments = text;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::pathName(ACHAR*& path) const {
    assertReadEnabled();
    path = acutNewString(m_fields.pathName.kACharPtr());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::pathName(const ACHAR*& path) const {
    assertReadEnabled();
    path = m_fields.pathName.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setPathName(const ACHAR* path) {
    assertWriteEnabled();
    m_fields.pathName = path;
    return Acad::eOk;
}

AcGePoint3d AcDbBlockTableRecord::origin() const {
    assertReadEnabled();
    return m_fields.origin;
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
    assertWriteEnabled();
    m_fields.origin = origin;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::openBlockBegin(AcDbBlockBegin*& begin, AcDb::OpenMode mode) {
    assertReadEnabled();
    return acdbOpenObject(begin, m_fields.begin, mode);
}

Acad::ErrorStatus AcDbBlockTableRecord::openBlockEnd(AcDbBlockEnd*& end, AcDb::OpenMode mode) {
    assertReadEnabled();
    return acdbOpenObject(end, m_fields.end, mode);
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
    assertReadEnabled();
    return m_fields.hasAttributeDefinitions;
}

bool AcDbBlockTableRecord::isAnonymous() const {
    assertReadEnabled();
    return m_fields.anonymous;
}

bool AcDbBlockTableRecord::isFromExternalReference() const {
    assertReadEnabled();
    return m_fields.externalReference;
}

bool AcDbBlockTableRecord::isFromOverlayReference() const {
    assertReadEnabled();
    return m_fields.overlay;
}

bool AcDbBlockTableRecord::isUnloaded() const {
    assertReadEnabled();
    return m_fields.unloaded;
}

Acad::ErrorStatus AcDbBlockTableRecord::setIsUnloaded(bool unloaded) {
    assertWriteEnabled();
    m_fields.unloaded = unloaded;
    return Acad::eOk;
}

bool AcDbBlockTableRecord::isLayout() const { return !getLayoutId().isNull(); }

AcDbObjectId AcDbBlockTableRecord::getLayoutId() const {
    assertReadEnabled();
    return m_fields.layout;
}

Acad::ErrorStatus AcDbBlockTableRecord::setLayoutId(AcDbObjectId id) {
    assertWriteEnabled();
    m_fields.layout = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::subErase(Adesk::Boolean erasing) {
    const Acad::ErrorStatus es = AcDbSymbolTableRecord::subErase(erasing);
    if (es != Acad::eOk)
        return es;
    EntityList& list = BlockAccess::entities(*this);
    if (erasing)
        list.erasedWithBlock = list.live();
    for (AcDbStub* stub : list.erasedWithBlock)
        eraseOwned(*stub, erasing);
    for (AcDbStub* stub : {static_cast<AcDbStub*>(m_fields.begin), static_cast<AcDbStub*>(m_fields.end)})
        if (stub != nullptr)
            eraseOwned(*stub, erasing);
    return Acad::eOk;
}

namespace {

template <class Fields, class Stream>
void fileBody(Fields& f, Stream& s) {
    s.flag(f.anonymous);
    s.flag(f.hasAttributeDefinitions);
    s.flag(f.externalReference);
    s.flag(f.overlay);
    s.flag(f.unloaded);
    s.point(f.origin);
    s.text(f.pathName);
}

template <class Fields, class Stream>
void fileIds(Fields& f, Stream& s) {
    s.hardOwner(f.begin);
    // The entities of an external reference are in its own file.
    if (!f.externalReference && !f.overlay) {
        s.softPointer(f.firstEntity);
        s.softPointer(f.lastEntity);
    }
    s.hardOwner(f.end);
    for (auto& id : f.inserts)
        s.softPointer(id);
    s.hardPointer(f.layout);
}

} // namespace

// The references to the block are counted by a byte of 1 for each, ended by 0. Entities are filed by none but
// the first and the last; to the history by none, since the list only ever grows.
Acad::ErrorStatus AcDbBlockTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer), [this](FieldWriter& out) {
        Fields fields = m_fields;
        if (m_entities->isRead()) {
            fields.firstEntity = AcDbObjectId(m_entities->firstLive());
            fields.lastEntity = AcDbObjectId(m_entities->lastLive());
        }
        fileBody(fields, out);
        for (std::size_t i = 0; i < fields.inserts.size(); ++i)
            out.byte(1);
        out.byte(0);
        out.text(fields.comments);
        out.int32(static_cast<Adesk::UInt32>(fields.preview.size()));
        out.bytes(fields.preview, fields.preview.size());
        fileIds(fields, out);
    });
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer), [&](FieldReader& in) {
        fileBody(m_fields, in);
        std::size_t inserts = 0;
        Adesk::UInt8 mark = 1;
        for (in.byte(mark); mark != 0 && in.ok(); in.byte(mark))
            ++inserts;
        in.text(m_fields.comments);
        Adesk::UInt32 previewSize = 0;
        in.int32(previewSize);
        in.bytes(m_fields.preview, previewSize);
        in.handleCount(inserts);
        m_fields.inserts.assign(inserts, AcDbObjectId());
        fileIds(m_fields, in);
        if (filer->filerType() == AcDb::kFileFiler)
            m_entities->forget();
    });
}
