#include "dwg/file_source.h"

#include "db/file_failure.h"
#include "db/opaque.h"
#include "dwg/dwg_in_filer.h"
#include "dwg/object_map.h"
#include "dwg/raw_fields.h"
#include "embedded/classes.h"
#include "platform/text.h"
#include "rxclass.h"

#include <exception>

namespace embedded::dwg {
namespace {

std::vector<std::uint8_t> bitsOf(ByteSpan body, std::size_t begin, std::size_t end) {
    BitWriter bits;
    bits.copyBits(body, begin, end);
    return bits.takeBytes();
}

std::unique_ptr<ObjectBody> bodyOf(const ObjectKind& kind, ByteSpan body, const ObjectParts& parts) {
    auto kept = std::make_unique<ObjectBody>();
    kept->fileType = kind.type;
    kept->data = bitsOf(body, parts.dataBegin, parts.dataEnd);
    kept->dataBits = static_cast<std::uint32_t>(parts.dataEnd - parts.dataBegin);
    const std::size_t handlesEnd = endOfHandles(body, parts);
    kept->handles = bitsOf(body, parts.handlesBegin, handlesEnd);
    kept->handleBits = static_cast<std::uint32_t>(handlesEnd - parts.handlesBegin);
    kept->proxyFlags = kind.proxyFlags;
    kept->className = kind.className;
    kept->dxfName = kind.dxfName;
    kept->application = kind.application;
    return kept;
}

} // namespace

const ObjectKind* FileSource::kindOf(const AcDbStub& stub) {
    return m_frame.kinds.find(typeOf(slotOf(stub).body));
}

AcDbObjectId FileSource::idOf(const HandleReference& reference, const AcDbStub& from) {
    return m_core.idOf(reference.absolute(from.handle));
}

Acad::ErrorStatus FileSource::refuse(const AcDbStub& stub, Acad::ErrorStatus es, const std::string& reason) {
    noteFileFailure(platform::toUtf8(m_core.fileName) + ": object " + hexText(stub.handle) + " (" +
                    platform::toUtf8(dxfNameOf(stub)) + "): " + reason);
    return es;
}

AcRxClass* FileSource::classOf(const AcDbStub& stub) {
    const ObjectKind* kind = kindOf(stub);
    if (kind == nullptr)
        return AcDbProxyObject::desc();
    return kind->maker != nullptr ? kind->maker : kind->standIn;
}

std::wstring FileSource::dxfNameOf(const AcDbStub& stub) {
    const ObjectKind* kind = kindOf(stub);
    return kind != nullptr ? kind->dxfName : L"UNKNOWN";
}

bool FileSource::canComeAlive(const AcDbStub& stub) {
    const ObjectKind* kind = kindOf(stub);
    if (kind == nullptr || kind->maker == nullptr)
        return false;
    const auto declined = m_declined.find(&stub);
    return declined == m_declined.end() || declined->second != rx::classGeneration();
}

AcDbObjectId FileSource::ownerIn(const ObjectEnvelope& envelope, const AcDbStub& stub) {
    if (!envelope.isEntity || envelope.entity.mode == EntityPart::kOwnerFiled)
        return idOf(envelope.owner, stub);
    return envelope.entity.mode == EntityPart::kInModelSpace ? m_core.roots.modelSpace
                                                             : m_core.roots.paperSpace;
}

AcDbObjectId FileSource::ownerOf(const AcDbStub& stub) {
    const ObjectKind* kind = kindOf(stub);
    ObjectParts parts;
    std::string why;
    if (kind == nullptr || !readEnvelope(slotOf(stub).body, kind->isEntity, parts, why))
        return AcDbObjectId();
    return ownerIn(parts.envelope, stub);
}

std::vector<AcDbObjectId> FileSource::entitiesOf(AcDbObjectId first, AcDbObjectId last) {
    std::vector<AcDbObjectId> entities;
    const AcDbStub* at = first;
    // A damaged chain may run in a circle; none is longer than the file has objects.
    while (at != nullptr && at->fileIndex != kNoFileIndex && entities.size() < m_frame.parts.objects.size()) {
        const ObjectKind* kind = kindOf(*at);
        ObjectParts parts;
        std::string why;
        if (kind == nullptr || !kind->isEntity || !readEnvelope(slotOf(*at).body, true, parts, why))
            break;
        entities.push_back(AcDbObjectId(const_cast<AcDbStub*>(at)));
        if (entities.back() == last)
            break;
        at = m_core.stubs().find(linksOf(parts.envelope).next);
    }
    return entities;
}

Acad::ErrorStatus FileSource::takeApart(const AcDbStub& stub, const ObjectKind& kind, ObjectParts& parts) {
    const ObjectSlot& slot = slotOf(stub);
    if (objectSum(slot.body) != slot.sum)
        return refuse(stub, Acad::eDwgCRCDoesNotMatch, "wrong check sum");
    std::string why;
    if (!readEnvelope(slot.body, kind.isEntity, parts, why))
        return refuse(stub, Acad::eDwgObjectImproperlyRead, why);
    if (parts.envelope.own.value != stub.handle)
        return refuse(stub, Acad::eDwgObjectImproperlyRead, "it bears another handle");
    return Acad::eOk;
}

void FileSource::applyEntity(const AcDbStub& stub, const EntityPart& part, AcDbEntity& entity) {
    ObjectAccess::EntitySettings settings;
    settings.layer = idOf(part.layer, stub);
    if (part.linetypeBits == EntityPart::kByHandle)
        settings.linetype = idOf(part.linetype, stub);
    if (part.plotStyleBits == EntityPart::kByHandle)
        settings.plotStyle = idOf(part.plotStyle, stub);
    settings.linetypeScale = part.linetypeScale;
    settings.colour = part.colour;
    settings.invisible = part.invisible;
    settings.lineWeightCode = part.lineWeight;
    settings.linetypeBits = part.linetypeBits;
    settings.plotStyleBits = part.plotStyleBits;
    ObjectAccess::setSettings(entity, settings);
    if (part.hasGraphics) {
        ObjectExtras& extras = ObjectAccess::makeExtras(entity);
        extras.hasGraphics = true;
        extras.graphics = part.graphics;
    }
}

void FileSource::applyEnvelope(const AcDbStub& stub, const ObjectEnvelope& envelope, AcDbObject& object) {
    ObjectAccess::setOwner(object, ownerIn(envelope, stub));
    std::vector<AcDbObjectId> reactors;
    for (const HandleReference& reactor : envelope.reactors)
        reactors.push_back(idOf(reactor, stub));
    ObjectAccess::setReactors(object, std::move(reactors));
    const AcDbObjectId extension = idOf(envelope.extensionDictionary, stub);
    if (!extension.isNull())
        ObjectAccess::makeExtras(object).extensionDictionary = extension;
    for (const FiledExtendedData& data : envelope.extendedData)
        ObjectAccess::makeExtras(object).extendedData.push_back({idOf(data.application, stub), data.bytes});
    if (envelope.isEntity)
        applyEntity(stub, envelope.entity, static_cast<AcDbEntity&>(object));
}

Acad::ErrorStatus FileSource::readLive(AcDbStub& stub, const AcRxClass& maker, const ObjectParts& parts,
                                       std::unique_ptr<AcDbObject>& object) {
    std::unique_ptr<AcRxObject> made(maker.create());
    AcDbObject* fresh = AcDbObject::cast(made.get());
    if (fresh == nullptr || (AcDbEntity::cast(fresh) != nullptr) != parts.envelope.isEntity)
        return Acad::eMakeMeProxy;
    object.reset(fresh);
    static_cast<void>(made.release()); // the same object
    ObjectAccess::setId(*fresh, AcDbObjectId(&stub));
    stub.object = fresh;
    applyEnvelope(stub, parts.envelope, *fresh);
    const ByteSpan body = slotOf(stub).body;
    DwgInFiler filer(m_core, m_frame.text, BitReader(body, parts.dataBegin, parts.dataEnd),
                     BitReader(body, parts.handlesBegin, body.size * 8), stub.handle);
    Acad::ErrorStatus es = Acad::eDwgObjectImproperlyRead;
    try {
        es = fresh->dwgInFields(&filer);
        if (es == Acad::eOk)
            es = filer.filerStatus();
    } catch (...) {
        // No memory for what a damaged count asks for, or a reader that lets something out: the object is not
        // there.
    }
    if (es != Acad::eOk) {
        stub.object = nullptr;
        object.reset();
    }
    return es;
}

std::unique_ptr<AcDbObject> FileSource::makeStandIn(AcDbStub& stub, const ObjectKind& kind,
                                                    const ObjectParts& parts, bool declined) {
    std::unique_ptr<AcDbObject> object;
    const bool proxy = kind.standInIsProxy || declined;
    if (kind.isEntity && proxy)
        object = std::make_unique<AcDbProxyEntity>();
    else if (kind.isEntity)
        object = std::make_unique<OpaqueEntity>(kind.standIn);
    else if (proxy)
        object = std::make_unique<AcDbProxyObject>();
    else
        object = std::make_unique<OpaqueObject>(kind.standIn);
    ObjectAccess::setId(*object, AcDbObjectId(&stub));
    applyEnvelope(stub, parts.envelope, *object);
    ObjectAccess::setBody(*object, bodyOf(kind, slotOf(stub).body, parts));
    if (kind.fromClassTable)
        stub.set(kStandIn);
    return object;
}

Acad::ErrorStatus FileSource::load(AcDbStub& stub, std::unique_ptr<AcDbObject>& object) {
    const ObjectKind* kind = kindOf(stub);
    if (kind == nullptr)
        return refuse(stub, Acad::eDwgObjectImproperlyRead, "the drawing has no class for its type");
    ObjectParts parts;
    Acad::ErrorStatus es = takeApart(stub, *kind, parts);
    if (es != Acad::eOk)
        return es;
    // What a reader has declined is a proxy, whatever else the host would show for the kind.
    const bool declined = kind->maker != nullptr;
    if (declined) {
        es = readLive(stub, *kind->maker, parts, object);
        if (es == Acad::eOk)
            return es;
        if (es != Acad::eMakeMeProxy)
            return refuse(stub, es, "its fields cannot be read");
        m_declined[&stub] = rx::classGeneration();
        kind = kindOf(stub); // reading may register classes, and with them change the kind
    }
    object = makeStandIn(stub, *kind, parts, declined);
    return Acad::eOk;
}

} // namespace embedded::dwg
