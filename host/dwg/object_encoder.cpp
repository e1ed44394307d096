#include "dwg/object_encoder.h"

#include "AcString.h"
#include "acutmem.h"
#include "dwg/dwg_out_filer.h"
#include "dwg/open_for_filing.h"
#include "embedded/guarded.h"
#include "platform/text.h"
#include "rxclass.h"

namespace embedded::dwg {
namespace {

// The application under which a class is filed, which its module may choose by release.
std::wstring applicationOf(const AcRxClass& filed) {
    std::wstring name = filed.appName() != nullptr ? filed.appName() : L"";
    if (filed.appNameCallbackPtr() != nullptr) {
        wchar_t* other = nullptr;
        filed.appNameCallbackPtr()(&filed, other, AcDb::kDHL_1015);
        if (other != nullptr)
            name = other;
        acutDelString(other);
    }
    return name;
}

} // namespace

HandleReference ObjectEncoder::referenceTo(std::uint8_t code, AcDbObjectId id) const {
    const AcDbStub* stub = id;
    return HandleReference(code, stub != nullptr && stub->tag == m_core.tag() ? stub->handle : 0);
}

std::uint16_t ObjectEncoder::typeNumberOf(const AcDbObject& object) {
    if (const ObjectBody* body = ObjectAccess::body(object))
        return body->fileType != 0 ? body->fileType : rowFor(*body, object.isKindOf(AcDbEntity::desc()));
    std::uint16_t& number = m_typeNumbers[object.isA()];
    if (number == 0)
        number = typeNumberOf(*object.isA());
    return number;
}

// The class of an object that came from another drawing, where it had another number.
std::uint16_t ObjectEncoder::rowFor(const ObjectBody& body, bool isEntity) {
    const std::string className = m_frame.text.encode(body.className);
    if (const ClassRow* row = m_frame.classes.find(className))
        return row->number;
    ClassRow row;
    row.className = className;
    row.dxfName = m_frame.text.encode(body.dxfName);
    row.application = m_frame.text.encode(body.application);
    row.proxyFlags = static_cast<std::uint16_t>(body.proxyFlags);
    row.itemClass = isEntity ? ClassRow::kEntities : ClassRow::kObjects;
    const std::uint16_t number = m_frame.classes.add(std::move(row));
    if (number == 0)
        m_reason = "the class table is full";
    return number;
}

std::uint16_t ObjectEncoder::typeNumberOf(const AcRxClass& filed) {
    const std::uint16_t fixed = fixedNumber(filed.name());
    if (fixed != 0 && fixed < kFirstNamedType)
        return fixed;
    const std::string className = m_frame.text.encode(filed.name());
    if (const ClassRow* row = m_frame.classes.find(className))
        return row->number;
    if (filed.dxfName() == nullptr) {
        m_reason = "class " + platform::toUtf8(filed.name()) + " has no DXF name, so no drawing can hold it";
        return 0;
    }
    ClassRow row;
    row.className = className;
    row.dxfName = m_frame.text.encode(filed.dxfName());
    row.application = m_frame.text.encode(applicationOf(filed));
    row.proxyFlags = static_cast<std::uint16_t>(filed.proxyFlags());
    const bool isEntity = filed.isDerivedFrom(AcDbEntity::desc());
    row.itemClass = isEntity ? ClassRow::kEntities : ClassRow::kObjects;
    const std::uint16_t number = m_frame.classes.add(std::move(row));
    if (number == 0)
        m_reason = "the class table is full";
    return number;
}

void ObjectEncoder::fillEntity(const AcDbEntity& entity, ObjectEnvelope& envelope) const {
    EntityPart& part = envelope.entity;
    envelope.isEntity = true;
    if (const ObjectExtras* extras = ObjectAccess::extras(entity)) {
        part.hasGraphics = extras->hasGraphics;
        part.graphics = extras->graphics;
    }
    const AcDbObjectId owner = entity.ownerId();
    if (owner == m_core.roots.modelSpace)
        part.mode = EntityPart::kInModelSpace;
    else if (owner == m_core.roots.paperSpace)
        part.mode = EntityPart::kInPaperSpace;
    const ObjectAccess::EntitySettings settings = ObjectAccess::settings(entity);
    part.colour = settings.colour;
    part.linetypeScale = settings.linetypeScale;
    part.linetypeBits = settings.linetypeBits;
    part.plotStyleBits = settings.plotStyleBits;
    part.invisible = settings.invisible;
    part.lineWeight = settings.lineWeightCode;
    part.layer = referenceTo(kHardPointer, settings.layer);
    part.linetype = referenceTo(kHardPointer, settings.linetype);
    part.plotStyle = referenceTo(kHardPointer, settings.plotStyle);
}

ObjectEnvelope ObjectEncoder::envelopeOf(const AcDbStub& stub, const AcDbObject& object,
                                         const EntityLinks& links) const {
    ObjectEnvelope envelope;
    envelope.own = HandleReference(kPlainHandle, stub.handle);
    envelope.owner = referenceTo(kSoftPointer, object.ownerId());
    for (const AcDbObjectId& reactor : ObjectAccess::reactors(object))
        envelope.reactors.push_back(referenceTo(kSoftPointer, reactor));
    if (const ObjectExtras* extras = ObjectAccess::extras(object)) {
        envelope.extensionDictionary = referenceTo(kHardOwner, extras->extensionDictionary);
        for (const ExtendedData& data : extras->extendedData)
            envelope.extendedData.push_back({referenceTo(kHardPointer, data.application), data.bytes});
    }
    if (const AcDbEntity* entity = AcDbEntity::cast(&object)) {
        fillEntity(*entity, envelope);
        setLinks(links, envelope);
    }
    return envelope;
}

Acad::ErrorStatus ObjectEncoder::encode(AcDbStub& stub, const ObjectEnvelope* filed, const EntityLinks& links,
                                        Bytes& bytes) {
    AcDbObject& object = *stub.object;
    m_reason.clear();
    ObjectEnvelope envelope = envelopeOf(stub, object, links);
    // Products name an owner by its handle or by its distance, by rules of their own.
    if (filed != nullptr && filed->owner.absolute(stub.handle) == envelope.owner.value)
        envelope.owner = filed->owner;
    envelope.type = typeNumberOf(object);
    if (envelope.type == 0)
        return Acad::eNotApplicable;
    if (const ObjectBody* body = ObjectAccess::body(object)) {
        bytes = writeObject(envelope, body->data, 0, body->dataBits, body->handles, 0, body->handleBits);
        return Acad::eOk;
    }
    const OpenForFiling open(stub);
    DwgOutFiler filer(m_core.tag(), m_frame.text, m_terminateTexts);
    Acad::ErrorStatus es = Acad::eFilerError;
    try {
        es = object.dwgOutFields(&filer);
        if (es == Acad::eOk)
            es = filer.filerStatus();
    } catch (...) {
        m_reason = platform::toUtf8(describeCaught());
    }
    if (es == Acad::eOk)
        bytes = writeObject(envelope, filer.data().bytes(), 0, filer.data().length(), filer.handles().bytes(),
                            0, filer.handles().length());
    else if (m_reason.empty())
        m_reason = "its fields cannot be written";
    return es;
}

Bytes ObjectEncoder::relink(const ObjectSlot& slot, const ObjectParts& parts,
                            const EntityLinks& links) const {
    ObjectEnvelope envelope = parts.envelope;
    setLinks(links, envelope);
    return writeObject(envelope, slot.body, parts.dataBegin, parts.dataEnd, slot.body, parts.handlesBegin,
                       endOfHandles(slot.body, parts));
}

} // namespace embedded::dwg
