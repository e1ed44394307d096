#include "dbents.h"

#include "db/database_core.h"
#include "db/entities/entity_parts.h"
#include "db/entities/reference_access.h"
#include "db/entity_list.h"
#include "db/field_stream.h"
#include "db/object_access.h"
#include "db/open_close.h"
#include "db/reactors/notices.h"
#include "db/symbol_index.h"
#include "dbsymtb.h"
#include "geplane.h"
#include "rxclass.h"

#include <algorithm>

using namespace embedded;

AcDbBlockReference::AcDbBlockReference() = default;

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block) {
    m_fields.position = position;
    m_fields.block = block;
}

AcDbObjectId AcDbBlockReference::blockTableRecord() const {
    assertReadEnabled();
    return m_fields.block;
}

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
    AcRxClass* kind = block.objectClass();
    if (kind == nullptr || !kind->isDerivedFrom(AcDbBlockTableRecord::desc()))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    // Its record is to take this reference out of its list when the drawing is saved, so it has to be there.
    AcDbObject* before = nullptr;
    if (DatabaseCore* core = coreOf(m_fields.block))
        core->resident(*static_cast<AcDbStub*>(m_fields.block), before);
    m_fields.block = block;
    return Acad::eOk;
}

AcGePoint3d AcDbBlockReference::position() const {
    assertReadEnabled();
    return ownToWorld(m_fields.normal, m_fields.position);
}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& point) {
    assertWriteEnabled();
    m_fields.position = worldToOwn(m_fields.normal, point);
    return Acad::eOk;
}

AcGeScale3d AcDbBlockReference::scaleFactors() const {
    assertReadEnabled();
    return m_fields.scale;
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
    if (scale.sx == 0.0 || scale.sy == 0.0 || scale.sz == 0.0)
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.scale = scale;
    return Acad::eOk;
}

double AcDbBlockReference::rotation() const {
    assertReadEnabled();
    return m_fields.rotation;
}

Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) {
    assertWriteEnabled();
    m_fields.rotation = angle;
    return Acad::eOk;
}

AcGeVector3d AcDbBlockReference::normal() const {
    assertReadEnabled();
    return m_fields.normal;
}

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    assertWriteEnabled();
    const AcGePoint3d place = position();
    m_fields.normal = normal.normal();
    m_fields.position = worldToOwn(m_fields.normal, place);
    return Acad::eOk;
}

void AcDbBlockReference::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDbBlockReference::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    plane.set(position(), m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

namespace {

// The ids that are filed are what other filers need of the attributes; the file names only the first and the
// last of their chain.
void readIds(AcDbDwgFiler& filer, std::vector<AcDbObjectId>& ids) {
    Adesk::UInt32 count = 0;
    filer.readUInt32(&count);
    for (Adesk::UInt32 i = 0; i < count && filer.filerStatus() == Acad::eOk; ++i) {
        AcDbHardOwnershipId id;
        filer.readHardOwnershipId(&id);
        // One that has been left out of a cloning.
        if (!id.isNull())
            ids.push_back(id);
    }
}

// How the file tells the three scale factors.
enum ScaleForm : Adesk::UInt8 { kAllTold = 0, kFirstIsOne = 1, kAllTheSame = 2, kAllAreOne = 3 };

Adesk::UInt8 formOf(const AcGeScale3d& scale) {
    const bool same = scale.sx == scale.sy && scale.sx == scale.sz;
    if (scale.sx == 1.0)
        return same ? kAllAreOne : kFirstIsOne;
    return same ? kAllTheSame : kAllTold;
}

template <class Scale, class Stream>
void fileScale(Scale& scale, Adesk::UInt8 form, Stream& s) {
    s.bits(form, 2);
    if (form == kAllTold || form == kAllTheSame)
        s.rawReal(scale.sx);
    if (form == kAllTold || form == kFirstIsOne) {
        s.realBy(scale.sy, scale.sx);
        s.realBy(scale.sz, scale.sx);
    }
}

} // namespace

Acad::ErrorStatus AcDbBlockReference::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer), [this, filer](FieldWriter& out) {
        const Fields& f = m_fields;
        out.point(f.position);
        const Adesk::UInt8 form = out.toFile() ? formOf(f.scale) : static_cast<Adesk::UInt8>(kAllTold);
        fileScale(f.scale, form, out);
        out.real(f.rotation);
        out.vector(f.normal);
        writeAttributes(*filer);
    });
}

void AcDbBlockReference::writeAttributes(AcDbDwgFiler& filer) const {
    FieldWriter out(filer);
    if (!out.toFile()) {
        out.hardPointer(m_fields.block);
        const std::vector<AcDbObjectId>& ids = attributes();
        out.int32(static_cast<Adesk::UInt32>(ids.size()));
        for (const AcDbObjectId& id : ids)
            out.hardOwner(id);
        out.hardOwner(m_fields.end);
        return;
    }
    const bool unread = !m_firstFiled.isNull();
    const std::vector<AcDbObjectId> live = unread ? std::vector<AcDbObjectId>() : liveAttributes();
    out.flag(unread || !live.empty());
    out.hardPointer(m_fields.block);
    if (!unread && live.empty())
        return;
    out.softPointer(unread ? m_firstFiled : live.front());
    out.softPointer(unread ? m_lastFiled : live.back());
    out.hardOwner(m_fields.end);
}

Acad::ErrorStatus AcDbBlockReference::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es =
        readFields(filer, AcDbEntity::dwgInFields(filer), [this, filer](FieldReader& in) {
            Fields& f = m_fields;
            in.point(f.position);
            f.scale = AcGeScale3d();
            Adesk::UInt8 form = 0;
            in.bits(form, 2);
            if (form == kAllTold || form == kAllTheSame) {
                in.rawReal(f.scale.sx);
                f.scale.sy = f.scale.sz = f.scale.sx;
            }
            if (form == kAllTold || form == kFirstIsOne) {
                in.realBy(f.scale.sy, f.scale.sx);
                in.realBy(f.scale.sz, f.scale.sx);
            }
            in.real(f.rotation);
            in.vector(f.normal);
            readAttributes(*filer, in.toFile());
        });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}

void AcDbBlockReference::readAttributes(AcDbDwgFiler& filer, bool ofFile) {
    FieldReader in(filer);
    bool has = !ofFile;
    if (ofFile)
        in.flag(has);
    in.hardPointer(m_fields.block);
    std::vector<AcDbObjectId> ids;
    AcDbObjectId first, last, end;
    if (has && ofFile) {
        in.softPointer(first);
        in.softPointer(last);
    } else if (has) {
        readIds(filer, ids);
    }
    if (has)
        in.hardOwner(end);
    // A copy takes over what the other looks like and keeps the attributes that are its own, or none.
    if (!in.ok() || filer.filerType() == AcDb::kCopyFiler)
        return;
    m_attributes = std::move(ids);
    m_firstFiled = first;
    m_lastFiled = last;
    m_fields.end = end;
}

const std::vector<AcDbObjectId>& AcDbBlockReference::attributes() const {
    if (!m_firstFiled.isNull()) {
        const DatabaseCore* core = coreOf(objectId());
        if (core != nullptr && core->source != nullptr)
            m_attributes = core->source->entitiesOf(m_firstFiled, m_lastFiled);
        m_firstFiled.setNull();
        m_lastFiled.setNull();
    }
    return m_attributes;
}

std::vector<AcDbObjectId> AcDbBlockReference::liveAttributes() const {
    std::vector<AcDbObjectId> live;
    for (const AcDbObjectId& id : attributes())
        if (objectIsLive(id))
            live.push_back(id);
    return live;
}

std::vector<AcDbStub*> ReferenceAccess::liveAttributes(const AcDbBlockReference& reference) {
    std::vector<AcDbStub*> stubs;
    for (const AcDbObjectId& id : reference.liveAttributes())
        stubs.push_back(id);
    return stubs;
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
    assertReadEnabled();
    return new AcDbObjectIterator(liveAttributes());
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
    AcDbObjectId id;
    return appendAttribute(id, attribute);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
    id.setNull();
    if (attribute == nullptr)
        return Acad::eNullEntityPointer;
    if (!attribute->objectId().isNull())
        return Acad::eAlreadyInDb;
    if (objectId().isNull())
        return Acad::eNoDatabase;
    assertWriteEnabled();
    attributes();
    DatabaseCore& core = *coreOf(objectId());
    id = core.add(attribute);
    ObjectAccess::setOwner(*attribute, objectId());
    if (attribute->layerId().isNull())
        takeSettings(*this, *attribute);
    m_attributes.push_back(id);
    if (m_fields.end.isNull() || m_fields.end.isErased()) {
        auto* end = new AcDbSequenceEnd;
        m_fields.end = core.add(end);
        ObjectAccess::setOwner(*end, objectId());
        takeSettings(*this, *end);
        notices::appended(*end);
        end->close();
    }
    notices::appended(*attribute);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::openAttribute(AcDbAttribute*& attribute, AcDbObjectId id,
                                                    AcDb::OpenMode mode, bool openErased) const {
    attribute = nullptr;
    assertReadEnabled();
    const std::vector<AcDbObjectId>& ids = attributes();
    if (std::find(ids.begin(), ids.end(), id) == ids.end())
        return Acad::eKeyNotFound;
    AcDbObject* object = nullptr;
    const Acad::ErrorStatus es = acdbOpenAcDbObject(object, id, mode, openErased);
    if (es != Acad::eOk)
        return es;
    attribute = AcDbAttribute::cast(object);
    if (attribute != nullptr)
        return es;
    object->close();
    return Acad::eNotThatKindOfClass;
}

Acad::ErrorStatus AcDbBlockReference::openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) const {
    assertReadEnabled();
    return acdbOpenObject(end, m_fields.end, mode);
}

// What went with the reference comes back with it; what was erased before stays so.
Acad::ErrorStatus AcDbBlockReference::subErase(Adesk::Boolean erasing) {
    const Acad::ErrorStatus es = AcDbEntity::subErase(erasing);
    if (es != Acad::eOk)
        return es;
    if (erasing) {
        m_erasedWithThis = liveAttributes();
        if (objectIsLive(m_fields.end))
            m_erasedWithThis.push_back(m_fields.end);
    }
    for (const AcDbObjectId& id : m_erasedWithThis)
        eraseOwned(*static_cast<AcDbStub*>(id), erasing);
    return Acad::eOk;
}
