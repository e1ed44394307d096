#include "dbproxy.h"

#include "db/object_access.h"

using namespace embedded;

AcDbProxyObject::AcDbProxyObject() = default;
AcDbProxyObject::~AcDbProxyObject() = default;
AcDbProxyEntity::AcDbProxyEntity() = default;
AcDbProxyEntity::~AcDbProxyEntity() = default;

namespace {

const ObjectBody& bodyOrEmpty(const ObjectBody* body) {
    static const ObjectBody empty;
    return body != nullptr ? *body : empty;
}

// A proxy is not to be taken away without its class allowing it; coming back is always allowed.
Acad::ErrorStatus mayErase(int flags, Adesk::Boolean erasing) {
    return erasing && (flags & kEraseAllowed) == 0 ? Acad::eNotAllowedForThisProxy : Acad::eOk;
}

} // namespace

int AcDbProxyObject::proxyFlags() const { return bodyOrEmpty(m_body.get()).proxyFlags; }
const ACHAR* AcDbProxyObject::originalClassName() const {
    return bodyOrEmpty(m_body.get()).className.c_str();
}
const ACHAR* AcDbProxyObject::originalDxfName() const { return bodyOrEmpty(m_body.get()).dxfName.c_str(); }
const ACHAR* AcDbProxyObject::applicationDescription() const {
    return bodyOrEmpty(m_body.get()).application.c_str();
}

// What the class filed stays in the body, which nothing changes: only the common part can differ.
Acad::ErrorStatus AcDbProxyObject::dwgInFields(AcDbDwgFiler* filer) { return AcDbObject::dwgInFields(filer); }
Acad::ErrorStatus AcDbProxyObject::dwgOutFields(AcDbDwgFiler* filer) const {
    return AcDbObject::dwgOutFields(filer);
}

Acad::ErrorStatus AcDbProxyObject::subErase(Adesk::Boolean erasing) {
    Acad::ErrorStatus es = mayErase(proxyFlags(), erasing);
    return es == Acad::eOk ? AcDbObject::subErase(erasing) : es;
}

int AcDbProxyEntity::proxyFlags() const { return bodyOrEmpty(m_body.get()).proxyFlags; }
const ACHAR* AcDbProxyEntity::originalClassName() const {
    return bodyOrEmpty(m_body.get()).className.c_str();
}
const ACHAR* AcDbProxyEntity::originalDxfName() const { return bodyOrEmpty(m_body.get()).dxfName.c_str(); }
const ACHAR* AcDbProxyEntity::applicationDescription() const {
    return bodyOrEmpty(m_body.get()).application.c_str();
}

Acad::ErrorStatus AcDbProxyEntity::dwgInFields(AcDbDwgFiler* filer) { return AcDbEntity::dwgInFields(filer); }
Acad::ErrorStatus AcDbProxyEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    return AcDbEntity::dwgOutFields(filer);
}

Acad::ErrorStatus AcDbProxyEntity::setLayer(AcDbObjectId layer, Adesk::Boolean doSubents) {
    return allows(kLayerChangeAllowed) ? AcDbEntity::setLayer(layer, doSubents)
                                       : Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::setLinetype(AcDbObjectId linetype, Adesk::Boolean doSubents) {
    return allows(kLinetypeChangeAllowed) ? AcDbEntity::setLinetype(linetype, doSubents)
                                          : Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::setColorIndex(Adesk::UInt16 colour, Adesk::Boolean doSubents) {
    return allows(kColorChangeAllowed) ? AcDbEntity::setColorIndex(colour, doSubents)
                                       : Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::setLinetypeScale(double scale, Adesk::Boolean doSubents) {
    return allows(kLinetypeScaleChangeAllowed) ? AcDbEntity::setLinetypeScale(scale, doSubents)
                                               : Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::setVisibility(AcDb::Visibility visibility, Adesk::Boolean doSubents) {
    return allows(kVisibilityChangeAllowed) ? AcDbEntity::setVisibility(visibility, doSubents)
                                            : Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::setLineWeight(AcDb::LineWeight weight, Adesk::Boolean doSubents) {
    return allows(kLineWeightChangeAllowed) ? AcDbEntity::setLineWeight(weight, doSubents)
                                            : Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::subTransformBy(const AcGeMatrix3d& xform) {
    return allows(kTransformAllowed) ? AcDbEntity::subTransformBy(xform) : Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::subErase(Adesk::Boolean erasing) {
    Acad::ErrorStatus es = mayErase(proxyFlags(), erasing);
    return es == Acad::eOk ? AcDbEntity::subErase(erasing) : es;
}
