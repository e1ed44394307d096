#pragma once

#include "dwg/bit_writer.h"
#include "dwg/byte_span.h"
#include "dwg/handle_reference.h"

#include <string>
#include <vector>

namespace embedded::dwg {

// The extended data of one application: the bytes behind the application's handle, as filed.
struct FiledExtendedData {
    HandleReference application;
    Bytes bytes;
};

// The part of an entity's common data that other objects do not have.
struct EntityPart {
    // Where an entity that stands in model or paper space has its owner: nowhere, since the header names
    // both.
    enum Mode : std::uint8_t { kOwnerFiled = 0, kInPaperSpace = 1, kInModelSpace = 2 };

    bool hasGraphics = false;
    Bytes graphics;
    std::uint8_t mode = kOwnerFiled;
    // The neighbours in the block are the objects with the handles before and behind; otherwise they are
    // filed.
    bool linksImplied = true;
    std::uint16_t colour = 256;
    double linetypeScale = 1.0;
    std::uint8_t linetypeBits = 0;
    std::uint8_t plotStyleBits = 0;
    std::uint16_t invisible = 0;
    std::uint8_t lineWeight = 29;
    HandleReference previous{kSoftPointer, 0};
    HandleReference next{kSoftPointer, 0};
    HandleReference layer{kHardPointer, 0};
    HandleReference linetype{kHardPointer, 0};
    HandleReference plotStyle{kHardPointer, 0};

    // The value of the two bit fields with which a handle is filed.
    static constexpr std::uint8_t kByHandle = 3;
};

// The neighbours of an entity in its block; 0 for none.
struct EntityLinks {
    std::uint64_t previous = 0;
    std::uint64_t next = 0;

    bool operator==(const EntityLinks& other) const {
        return previous == other.previous && next == other.next;
    }
};

// What every object of a drawing has around its own fields.
struct ObjectEnvelope {
    std::uint16_t type = 0;
    HandleReference own;
    std::vector<FiledExtendedData> extendedData;
    bool isEntity = false;
    EntityPart entity;
    // Of an entity only when its mode says so.
    HandleReference owner{kSoftPointer, 0};
    std::vector<HandleReference> reactors;
    HandleReference extensionDictionary{kHardOwner, 0};
};

// An object taken apart. The places count bits of its body.
struct ObjectParts {
    ObjectEnvelope envelope;
    std::size_t dataBegin = 0;
    std::size_t dataEnd = 0;
    std::size_t handlesBegin = 0;
};

// The place behind the last whole handle of a body; up to seven bits of filling follow. Found by a walk over
// the handles, which only those need who keep or write a body, not those who read it.
std::size_t endOfHandles(ByteSpan body, const ObjectParts& parts);

// The neighbours that an entity's envelope tells.
EntityLinks linksOf(const ObjectEnvelope& envelope);
// Puts neighbours in, in the shortest form.
void setLinks(const EntityLinks& links, ObjectEnvelope& envelope);

// The type number of an object; 0 if there is none.
std::uint16_t typeOf(ByteSpan body);

// Takes a body apart. False, with the reason in `why`, for one that does not hold together.
bool readEnvelope(ByteSpan body, bool isEntity, ObjectParts& parts, std::string& why);

// A body from an envelope, the bits of the object's own data, and those of its own handles.
Bytes writeObject(const ObjectEnvelope& envelope, ByteSpan data, std::size_t dataBegin, std::size_t dataEnd,
                  ByteSpan handles, std::size_t handlesBegin, std::size_t handlesEnd);

} // namespace embedded::dwg
