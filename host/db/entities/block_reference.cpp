#include "dbents.h"

#include "db/database_core.h"
#include "db/entities/entity_parts.h"
#include "db/entities/owned_chain.h"
#include "db/field_stream.h"
#include "dbsymtb.h"
#include "geplane.h"
#include "rxclass.h"

using namespace embedded;

AcDbBlockReference::AcDbBlockReference() : m_attributes(std::make_unique<OwnedChain>()) {}
AcDbBlockReference::~AcDbBlockReference() = default;

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block)
    : AcDbBlockReference() {
    m_fields.position = position;
    m_fields.block = block;
}

AcDbObjectId AcDbBlockReference::blockTableRecord() const { return readField(*this, m_fields.block); }

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
    return setField(*this, m_fields.position, worldToOwn(m_fields.normal, point));
}

AcGeScale3d AcDbBlockReference::scaleFactors() const { return readField(*this, m_fields.scale); }

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
    if (scale.sx == 0.0 || scale.sy == 0.0 || scale.sz == 0.0)
        return Acad::eInvalidInput;
    return setField(*this, m_fields.scale, scale);
}

double AcDbBlockReference::rotation() const { return readField(*this, m_fields.rotation); }

Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) {
    return setField(*this, m_fields.rotation, angle);
}

AcGeVector3d AcDbBlockReference::normal() const { return readField(*this, m_fields.normal); }

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
    const bool has = !out.toFile() || m_attributes->isFiled();
    if (out.toFile())
        out.flag(has);
    writeMore(filer);
    out.hardPointer(m_fields.block);
    if (has)
        m_attributes->write(filer);
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
    readMore(filer);
    in.hardPointer(m_fields.block);
    if (has)
        m_attributes->read(filer);
}

void AcDbBlockReference::readMore(AcDbDwgFiler&) {}
void AcDbBlockReference::writeMore(AcDbDwgFiler&) const {}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
    assertReadEnabled();
    return new AcDbObjectIterator(m_attributes->live());
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
    id = m_attributes->insert(*this, *attribute, OwnedChain::kAtEnd);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::openAttribute(AcDbAttribute*& attribute, AcDbObjectId id,
                                                    AcDb::OpenMode mode, bool openErased) const {
    attribute = nullptr;
    assertReadEnabled();
    if (!m_attributes->holds(id))
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
    return acdbOpenObject(end, m_attributes->end(), mode);
}

Acad::ErrorStatus AcDbBlockReference::subErase(Adesk::Boolean erasing) {
    const Acad::ErrorStatus es = AcDbEntity::subErase(erasing);
    if (es == Acad::eOk)
        m_attributes->erase(erasing != 0);
    return es;
}
