#include "dwg/object_envelope.h"

#include "dwg/bit_reader.h"

namespace embedded::dwg {
namespace {

bool readExtendedData(BitReader& in, std::vector<FiledExtendedData>& all) {
    while (const std::size_t size = in.bitShort()) {
        FiledExtendedData data;
        data.application = in.handle();
        if (!in.ok() || size > in.left() / 8)
            return false;
        data.bytes.resize(size);
        in.rawBytes(data.bytes.data(), size);
        all.push_back(std::move(data));
    }
    return in.ok();
}

bool readGraphics(BitReader& in, EntityPart& entity) {
    entity.hasGraphics = in.bit();
    if (!entity.hasGraphics)
        return in.ok();
    const std::uint32_t size = in.rawLong();
    if (!in.ok() || size > in.left() / 8)
        return false;
    entity.graphics.resize(size);
    return in.rawBytes(entity.graphics.data(), size);
}

void readEntityData(BitReader& in, EntityPart& entity) {
    entity.linksImplied = in.bit();
    entity.colour = in.bitShort();
    entity.linetypeScale = in.bitDouble();
    entity.linetypeBits = in.twoBits();
    entity.plotStyleBits = in.twoBits();
    entity.invisible = in.bitShort();
    entity.lineWeight = in.rawChar();
}

void readHandles(BitReader& in, std::uint32_t reactorCount, ObjectEnvelope& envelope) {
    if (!envelope.isEntity || envelope.entity.mode == EntityPart::kOwnerFiled)
        envelope.owner = in.handle();
    for (std::uint32_t i = 0; i < reactorCount && in.ok(); ++i)
        envelope.reactors.push_back(in.handle());
    envelope.extensionDictionary = in.handle();
    if (!envelope.isEntity)
        return;
    EntityPart& entity = envelope.entity;
    if (!entity.linksImplied) {
        entity.previous = in.handle();
        entity.next = in.handle();
    }
    entity.layer = in.handle();
    if (entity.linetypeBits == EntityPart::kByHandle)
        entity.linetype = in.handle();
    if (entity.plotStyleBits == EntityPart::kByHandle)
        entity.plotStyle = in.handle();
}

} // namespace

std::size_t endOfHandles(ByteSpan body, const ObjectParts& parts) {
    BitReader in(body, parts.handlesBegin, body.size * 8);
    while (in.left() >= 8) {
        in.handle();
        if (!in.ok())
            return in.end();
    }
    return in.position();
}

namespace {

HandleReference linkReference(std::uint64_t own, std::uint64_t target) {
    if (target == 0)
        return HandleReference(kSoftPointer, 0);
    if (target == own + 1 || target + 1 == own)
        return HandleReference(target > own ? kNextHandle : kPreviousHandle, 0);
    return target > own ? HandleReference(kPlusOffset, target - own)
                        : HandleReference(kMinusOffset, own - target);
}

} // namespace

EntityLinks linksOf(const ObjectEnvelope& envelope) {
    const std::uint64_t own = envelope.own.value;
    if (envelope.entity.linksImplied)
        return {own - 1, own + 1};
    return {envelope.entity.previous.absolute(own), envelope.entity.next.absolute(own)};
}

void setLinks(const EntityLinks& links, ObjectEnvelope& envelope) {
    const std::uint64_t own = envelope.own.value;
    EntityPart& part = envelope.entity;
    part.linksImplied = links == EntityLinks{own - 1, own + 1};
    part.previous = linkReference(own, links.previous);
    part.next = linkReference(own, links.next);
}

std::uint16_t typeOf(ByteSpan body) { return BitReader(body).bitShort(); }

bool readEnvelope(ByteSpan body, bool isEntity, ObjectParts& parts, std::string& why) {
    BitReader front(body);
    ObjectEnvelope& envelope = parts.envelope;
    envelope = {};
    envelope.type = front.bitShort();
    parts.dataEnd = front.rawLong();
    if (!front.ok() || parts.dataEnd < front.position() || parts.dataEnd > body.size * 8) {
        why = "its data end outside of it";
        return false;
    }
    BitReader in(body, front.position(), parts.dataEnd);
    envelope.own = in.handle();
    envelope.isEntity = isEntity;
    if (!readExtendedData(in, envelope.extendedData)) {
        why = "its extended data are longer than it";
        return false;
    }
    if (isEntity && !readGraphics(in, envelope.entity)) {
        why = "its graphics are longer than it";
        return false;
    }
    if (isEntity)
        envelope.entity.mode = in.twoBits();
    const std::uint32_t reactorCount = in.bitLong();
    if (isEntity)
        readEntityData(in, envelope.entity);
    parts.dataBegin = in.position();

    BitReader handles(body, parts.dataEnd, body.size * 8);
    if (in.ok() && reactorCount <= handles.left() / 8)
        readHandles(handles, reactorCount, envelope);
    else
        handles.fail();
    if (!in.ok() || !handles.ok()) {
        why = "its common data cannot be read";
        return false;
    }
    parts.handlesBegin = handles.position();
    return true;
}

namespace {

void writeFront(BitWriter& out, const ObjectEnvelope& envelope) {
    out.handle(envelope.own);
    for (const FiledExtendedData& data : envelope.extendedData) {
        out.bitShort(static_cast<std::uint16_t>(data.bytes.size()));
        out.handle(data.application);
        out.rawBytes(data.bytes.data(), data.bytes.size());
    }
    out.bitShort(0);
    const EntityPart& entity = envelope.entity;
    if (envelope.isEntity) {
        out.bit(entity.hasGraphics);
        if (entity.hasGraphics) {
            out.rawLong(static_cast<std::uint32_t>(entity.graphics.size()));
            out.rawBytes(entity.graphics.data(), entity.graphics.size());
        }
        out.twoBits(entity.mode);
    }
    out.bitLong(static_cast<std::uint32_t>(envelope.reactors.size()));
    if (!envelope.isEntity)
        return;
    out.bit(entity.linksImplied);
    out.bitShort(entity.colour);
    out.bitDouble(entity.linetypeScale);
    out.twoBits(entity.linetypeBits);
    out.twoBits(entity.plotStyleBits);
    out.bitShort(entity.invisible);
    out.rawChar(entity.lineWeight);
}

void writeHandles(BitWriter& out, const ObjectEnvelope& envelope) {
    if (!envelope.isEntity || envelope.entity.mode == EntityPart::kOwnerFiled)
        out.handle(envelope.owner);
    for (const HandleReference& reactor : envelope.reactors)
        out.handle(reactor);
    out.handle(envelope.extensionDictionary);
    if (!envelope.isEntity)
        return;
    const EntityPart& entity = envelope.entity;
    if (!entity.linksImplied) {
        out.handle(entity.previous);
        out.handle(entity.next);
    }
    out.handle(entity.layer);
    if (entity.linetypeBits == EntityPart::kByHandle)
        out.handle(entity.linetype);
    if (entity.plotStyleBits == EntityPart::kByHandle)
        out.handle(entity.plotStyle);
}

} // namespace

Bytes writeObject(const ObjectEnvelope& envelope, ByteSpan data, std::size_t dataBegin, std::size_t dataEnd,
                  ByteSpan handles, std::size_t handlesBegin, std::size_t handlesEnd) {
    BitWriter out;
    out.bitShort(envelope.type);
    const std::size_t sizeAt = out.position();
    out.rawLong(0);
    writeFront(out, envelope);
    out.copyBits(data, dataBegin, dataEnd);
    const std::size_t size = out.position();
    out.seek(sizeAt);
    out.rawLong(static_cast<std::uint32_t>(size));
    out.seek(size);
    writeHandles(out, envelope);
    out.copyBits(handles, handlesBegin, handlesEnd);
    return out.takeBytes();
}

} // namespace embedded::dwg
