#include "db/clone/cloned_body.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "db/opaque.h"
#include "rxclass.h"

#include <algorithm>

namespace embedded {

namespace {

// In the four upper bits of a reference's first byte. Codes above 5 count from the handle of the object
// itself.
enum ReferenceCode : std::uint8_t {
    kSoftOwnerCode = 2,
    kHardOwnerCode = 3,
    kSoftPointerCode = 4,
    kHardPointerCode = 5,
    kNextCode = 6,
    kPreviousCode = 8,
    kPlusCode = 0xA,
    kMinusCode = 0xC
};

struct BodyReference {
    std::uint8_t code = kSoftPointerCode;
    std::uint64_t handle = 0;
};

Strength strengthOf(std::uint8_t code) {
    switch (code) {
    case kSoftOwnerCode:
        return Strength::kSoftOwner;
    case kHardOwnerCode:
        return Strength::kHardOwner;
    case kHardPointerCode:
        return Strength::kHardPointer;
    default:
        return Strength::kSoftPointer;
    }
}

std::uint64_t absolute(std::uint8_t code, std::uint64_t value, std::uint64_t own) {
    switch (code) {
    case kNextCode:
        return own + 1;
    case kPreviousCode:
        return own - 1;
    case kPlusCode:
        return own + value;
    case kMinusCode:
        return own - value;
    default:
        return value;
    }
}

// A reference is a whole number of bytes, and the run begins with the first one.
std::vector<BodyReference> referencesOf(const ObjectBody& body, std::uint64_t own) {
    std::vector<BodyReference> references;
    const std::size_t end = std::min<std::size_t>(body.handles.size(), body.handleBits / 8);
    for (std::size_t at = 0; at < end;) {
        const std::uint8_t code = body.handles[at] >> 4;
        const std::size_t count = body.handles[at] & 0x0F;
        if (count > 8 || count > end - at - 1)
            break;
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < count; ++i)
            value = value << 8 | body.handles[at + 1 + i];
        references.push_back({code, absolute(code, value, own)});
        at += 1 + count;
    }
    return references;
}

void appendReference(std::vector<std::uint8_t>& bytes, std::uint8_t code, std::uint64_t handle) {
    std::uint8_t count = 0;
    for (std::uint64_t rest = handle; rest != 0; rest >>= 8)
        ++count;
    bytes.push_back(static_cast<std::uint8_t>(code << 4 | count));
    for (unsigned i = count; i-- > 0;)
        bytes.push_back(static_cast<std::uint8_t>(handle >> (8 * i)));
}

AcDbObjectId idOf(const DatabaseCore& core, std::uint64_t handle) {
    return AcDbObjectId(core.stubs().find(handle));
}

} // namespace

bool holdsBytes(const AcDbObject& object) {
    const AcRxClass* kind = object.isA();
    const bool proxy = kind == AcDbProxyEntity::desc() || kind == AcDbProxyObject::desc();
    return (proxy || kind->constructor() == nullptr) && ObjectAccess::body(object) != nullptr;
}

bool mayBeCloned(const AcDbObject& object) {
    const AcRxClass* kind = object.isA();
    if (kind != AcDbProxyEntity::desc() && kind != AcDbProxyObject::desc())
        return true;
    const ObjectBody* body = ObjectAccess::body(object);
    return body != nullptr && (body->proxyFlags & kCloningAllowed) != 0;
}

std::unique_ptr<AcDbObject> makeBodyHolder(const AcDbObject& object) {
    std::unique_ptr<AcDbObject> made;
    if (dynamic_cast<const AcDbProxyEntity*>(&object) != nullptr)
        made = std::make_unique<AcDbProxyEntity>();
    else if (dynamic_cast<const AcDbProxyObject*>(&object) != nullptr)
        made = std::make_unique<AcDbProxyObject>();
    else if (dynamic_cast<const OpaqueEntity*>(&object) != nullptr)
        made = std::make_unique<OpaqueEntity>(object.isA());
    else
        made = std::make_unique<OpaqueObject>(object.isA());
    ObjectAccess::setBody(*made, std::make_unique<ObjectBody>(*ObjectAccess::body(object)));
    return made;
}

void gatherBodyReferences(const AcDbObject& object, std::vector<FiledReference>& references) {
    const ObjectBody* body = holdsBytes(object) ? ObjectAccess::body(object) : nullptr;
    const AcDbStub* stub = object.objectId();
    if (body == nullptr || stub == nullptr)
        return;
    for (const BodyReference& reference : referencesOf(*body, stub->handle)) {
        const AcDbObjectId id = idOf(*coreOf(stub), reference.handle);
        if (!id.isNull())
            references.push_back({id, strengthOf(reference.code)});
    }
}

bool chainsOthers(const AcDbObject& object) {
    if (!holdsBytes(object) || !object.isKindOf(AcDbEntity::desc()))
        return false;
    std::vector<FiledReference> references;
    gatherBodyReferences(object, references);
    for (const FiledReference& reference : references) {
        const AcRxClass* kind = reference.id.objectClass();
        AcDbStub* stub = reference.id;
        AcDbObject* other = nullptr;
        if (kind != nullptr && kind->isDerivedFrom(AcDbEntity::desc()) &&
            coreOf(stub)->resident(*stub, other) == Acad::eOk && other->ownerId() == object.objectId())
            return true;
    }
    return false;
}

void translateBody(AcDbObject& clone, const AcDbObjectId& own, bool otherDrawing,
                   const Translate& translate) {
    const ObjectBody* before = holdsBytes(clone) ? ObjectAccess::body(clone) : nullptr;
    const AcDbStub* source = own;
    if (before == nullptr || source == nullptr || coreOf(source) == nullptr)
        return;
    auto body = std::make_unique<ObjectBody>(*before);
    body->handles.clear();
    for (const BodyReference& reference : referencesOf(*before, source->handle)) {
        const AcDbObjectId id = idOf(*coreOf(source), reference.handle);
        const AcDbStub* target = id.isNull() ? nullptr : translate(id, strengthOf(reference.code));
        const std::uint8_t code =
            reference.code > kHardPointerCode ? std::uint8_t{kSoftPointerCode} : reference.code;
        appendReference(body->handles, code, target != nullptr ? target->handle : 0);
    }
    body->handleBits = static_cast<std::uint32_t>(body->handles.size() * 8);
    constexpr std::uint16_t kFirstOfClassTable = 500;
    if (otherDrawing && body->fileType >= kFirstOfClassTable)
        body->fileType = 0;
    ObjectAccess::setBody(clone, std::move(body));
}

} // namespace embedded
