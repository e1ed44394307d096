#include "dwg/object_envelope.h"

#include "bits.h"

#include <gtest/gtest.h>

using namespace embedded::dwg;

namespace {

ObjectEnvelope entityEnvelope() {
    ObjectEnvelope envelope;
    envelope.type = 0x13;
    envelope.own = HandleReference(kPlainHandle, 0x91);
    envelope.isEntity = true;
    envelope.entity.hasGraphics = true;
    envelope.entity.graphics = {1, 2, 3};
    envelope.entity.colour = 3;
    envelope.entity.linetypeScale = 0.5;
    envelope.entity.linetypeBits = EntityPart::kByHandle;
    envelope.entity.plotStyleBits = EntityPart::kByHandle;
    envelope.entity.invisible = 1;
    envelope.entity.lineWeight = 31;
    envelope.entity.layer = HandleReference(kHardPointer, 0x10);
    envelope.entity.linetype = HandleReference(kHardPointer, 0x16);
    envelope.entity.plotStyle = HandleReference(kHardPointer, 0x17);
    envelope.extendedData.push_back({HandleReference(kHardPointer, 0x12), {9, 8, 7, 6}});
    envelope.owner = HandleReference(kSoftPointer, 0x1F);
    envelope.reactors = {HandleReference(kSoftPointer, 0x20), HandleReference(kSoftPointer, 0x21)};
    envelope.extensionDictionary = HandleReference(kHardOwner, 0x30);
    setLinks({0x8E, 0x92}, envelope);
    return envelope;
}

Bytes withOwnFields(const ObjectEnvelope& envelope) {
    const Bytes data = bytesOfBits("10110");
    BitWriter handles;
    handles.handle(HandleReference(kHardPointer, 0x44));
    return writeObject(envelope, data, 0, 5, handles.bytes(), 0, handles.length());
}

} // namespace

TEST(ObjectEnvelope, AnEntityComesApartAndTogetherBitByBit) {
    const Bytes body = withOwnFields(entityEnvelope());
    ObjectParts parts;
    std::string why;
    ASSERT_TRUE(readEnvelope(body, true, parts, why)) << why;
    const ObjectEnvelope& read = parts.envelope;
    EXPECT_EQ(read.type, 0x13);
    EXPECT_EQ(read.own.value, 0x91u);
    EXPECT_EQ(read.entity.graphics, (Bytes{1, 2, 3}));
    EXPECT_EQ(read.entity.colour, 3);
    EXPECT_EQ(read.entity.linetypeScale, 0.5);
    EXPECT_EQ(read.entity.lineWeight, 31);
    EXPECT_EQ(read.entity.layer.value, 0x10u);
    EXPECT_EQ(read.entity.plotStyle.value, 0x17u);
    EXPECT_EQ(read.owner.value, 0x1Fu);
    ASSERT_EQ(read.reactors.size(), 2u);
    EXPECT_EQ(read.reactors[1].value, 0x21u);
    EXPECT_EQ(read.extensionDictionary.value, 0x30u);
    ASSERT_EQ(read.extendedData.size(), 1u);
    EXPECT_EQ(read.extendedData[0].bytes, (Bytes{9, 8, 7, 6}));
    EXPECT_EQ(parts.dataEnd - parts.dataBegin, 5u);
    const std::size_t handlesEnd = endOfHandles(body, parts);
    EXPECT_EQ(handlesEnd - parts.handlesBegin, 16u);
    EXPECT_EQ(writeObject(read, body, parts.dataBegin, parts.dataEnd, body, parts.handlesBegin, handlesEnd),
              body);
}

TEST(ObjectEnvelope, AChangedCommonPartLeavesTheObjectsOwnBits) {
    const Bytes body = withOwnFields(entityEnvelope());
    ObjectParts parts;
    std::string why;
    ASSERT_TRUE(readEnvelope(body, true, parts, why));
    ObjectEnvelope changed = parts.envelope;
    changed.reactors.clear();
    changed.extendedData.clear();
    changed.entity.layer = HandleReference(kHardPointer, 0x7777);
    changed.entity.linetypeBits = 0;
    const Bytes made = writeObject(changed, body, parts.dataBegin, parts.dataEnd, body, parts.handlesBegin,
                                   endOfHandles(body, parts));
    ObjectParts again;
    ASSERT_TRUE(readEnvelope(made, true, again, why));
    EXPECT_EQ(again.envelope.entity.layer.value, 0x7777u);
    EXPECT_TRUE(again.envelope.reactors.empty());
    BitReader data(made, again.dataBegin, again.dataEnd);
    EXPECT_EQ(data.take(5), 0x16u);
    EXPECT_EQ(data.left(), 0u);
    BitReader handles(made, again.handlesBegin, endOfHandles(made, again));
    EXPECT_EQ(handles.handle().value, 0x44u);
}

TEST(ObjectEnvelope, AnObjectHasNoEntityPart) {
    ObjectEnvelope envelope;
    envelope.type = 500;
    envelope.own = HandleReference(kPlainHandle, 0x200);
    envelope.owner = HandleReference(kSoftPointer, 0xC);
    envelope.reactors = {HandleReference(kSoftPointer, 0xC)};
    const Bytes body = withOwnFields(envelope);
    EXPECT_EQ(typeOf(body), 500);
    ObjectParts parts;
    std::string why;
    ASSERT_TRUE(readEnvelope(body, false, parts, why)) << why;
    EXPECT_EQ(parts.envelope.owner.value, 0xCu);
    EXPECT_EQ(parts.envelope.extensionDictionary.value, 0u);
    EXPECT_EQ(parts.dataEnd - parts.dataBegin, 5u);
}

TEST(ObjectEnvelope, NeighboursTakeTheirShortestForm) {
    ObjectEnvelope envelope;
    envelope.own = HandleReference(kPlainHandle, 0x90);
    setLinks({0x8F, 0x91}, envelope);
    EXPECT_TRUE(envelope.entity.linksImplied);
    setLinks({0x8F, 0x98}, envelope);
    EXPECT_FALSE(envelope.entity.linksImplied);
    EXPECT_EQ(envelope.entity.previous.code, kPreviousHandle);
    EXPECT_EQ(envelope.entity.next.code, kPlusOffset);
    EXPECT_EQ(envelope.entity.next.value, 8u);
    setLinks({0x80, 0}, envelope);
    EXPECT_EQ(envelope.entity.previous.code, kMinusOffset);
    EXPECT_EQ(envelope.entity.next.code, kSoftPointer);
    for (const EntityLinks& links : {EntityLinks{0, 0}, EntityLinks{0x8F, 0x91}, EntityLinks{1, 0x91}}) {
        setLinks(links, envelope);
        EXPECT_EQ(linksOf(envelope), links);
    }
}

TEST(ObjectEnvelope, EveryPrefixIsRefusedOrShorter) {
    const Bytes body = withOwnFields(entityEnvelope());
    for (std::size_t size = 0; size + 3 < body.size(); ++size) {
        ObjectParts parts;
        std::string why;
        const Bytes prefix(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(readEnvelope(prefix, true, parts, why)) << size;
        EXPECT_FALSE(why.empty());
    }
}

TEST(ObjectEnvelope, EverySingleDamagedBitIsRefusedOrStaysInside) {
    const Bytes body = withOwnFields(entityEnvelope());
    for (std::size_t bit = 0; bit < body.size() * 8; ++bit) {
        Bytes damaged = body;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(0x80 >> bit % 8);
        ObjectParts parts;
        std::string why;
        if (!readEnvelope(damaged, true, parts, why))
            continue;
        EXPECT_LE(parts.dataBegin, parts.dataEnd);
        EXPECT_LE(parts.dataEnd, parts.handlesBegin);
        EXPECT_LE(parts.handlesBegin, endOfHandles(damaged, parts));
        EXPECT_LE(endOfHandles(damaged, parts), damaged.size() * 8);
    }
}

TEST(ObjectEnvelope, AReactorCountBeyondTheHandlesIsRefused) {
    BitWriter out;
    out.bitShort(0x2A);
    const std::size_t sizeAt = out.position();
    out.rawLong(0);
    out.handle(HandleReference(kPlainHandle, 5));
    out.bitShort(0);
    out.bitLong(0x7FFFFFFF);
    const std::size_t end = out.position();
    out.seek(sizeAt);
    out.rawLong(static_cast<std::uint32_t>(end));
    ObjectParts parts;
    std::string why;
    EXPECT_FALSE(readEnvelope(out.bytes(), false, parts, why));
    EXPECT_EQ(why, "its common data cannot be read");
}
