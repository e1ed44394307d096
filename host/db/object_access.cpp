#include "db/object_access.h"

#include "db/opaque.h"

namespace embedded {

std::vector<AcDbObjectId> ObjectAccess::reactors(const AcDbObject& object) {
    std::vector<AcDbObjectId> ids;
    if ((object.mBits & kOwnerIsReactor) != 0)
        ids.push_back(object.mOwner);
    if (object.mExtras != nullptr)
        ids.insert(ids.end(), object.mExtras->reactors.begin(), object.mExtras->reactors.end());
    return ids;
}

void ObjectAccess::setReactors(AcDbObject& object, std::vector<AcDbObjectId> reactors) {
    object.mBits &= ~static_cast<std::uint32_t>(kOwnerIsReactor);
    if (!reactors.empty() && reactors.front() == object.mOwner && !object.mOwner.isNull()) {
        object.mBits |= kOwnerIsReactor;
        reactors.erase(reactors.begin());
    }
    if (object.mExtras != nullptr || !reactors.empty())
        makeExtras(object).reactors = std::move(reactors);
}

const ObjectBody* ObjectAccess::body(const AcDbObject& object) {
    if (auto* proxy = dynamic_cast<const AcDbProxyObject*>(&object))
        return proxy->m_body.get();
    if (auto* proxy = dynamic_cast<const AcDbProxyEntity*>(&object))
        return proxy->m_body.get();
    if (auto* opaque = dynamic_cast<const OpaqueObject*>(&object))
        return opaque->body.get();
    if (auto* opaque = dynamic_cast<const OpaqueEntity*>(&object))
        return opaque->body.get();
    return nullptr;
}

void ObjectAccess::setBody(AcDbObject& object, std::unique_ptr<ObjectBody> body) {
    if (auto* proxy = dynamic_cast<AcDbProxyObject*>(&object))
        proxy->m_body = std::move(body);
    else if (auto* proxyEntity = dynamic_cast<AcDbProxyEntity*>(&object))
        proxyEntity->m_body = std::move(body);
    else if (auto* opaque = dynamic_cast<OpaqueObject*>(&object))
        opaque->body = std::move(body);
    else if (auto* opaqueEntity = dynamic_cast<OpaqueEntity*>(&object))
        opaqueEntity->body = std::move(body);
}

} // namespace embedded
