#pragma once

#include "dbmain.h"

#include <memory>

namespace embedded {
class ObjectBody;
}

// What a proxy's class allows to be done without its code.
enum AcDbProxyFlags {
    kNoOperation = 0,
    kEraseAllowed = 0x1,
    kTransformAllowed = 0x2,
    kColorChangeAllowed = 0x4,
    kLayerChangeAllowed = 0x8,
    kLinetypeChangeAllowed = 0x10,
    kLinetypeScaleChangeAllowed = 0x20,
    kVisibilityChangeAllowed = 0x40,
    kCloningAllowed = 0x80,
    kLineWeightChangeAllowed = 0x100,
    kPlotStyleNameChangeAllowed = 0x200,
    kAllButCloningAllowed = 0x37F,
    kAllAllowedBits = 0x3FF
};

// Stands for an object whose class is not there, or whose reader asked for it: bytes and ids are kept as they
// came and go back the same. When the class is there at a later opening, the object is made live. One whose
// class does not allow it (kCloningAllowed) is left out of every cloning.
class AcDbProxyObject : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbProxyObject);
    ~AcDbProxyObject() override;

    int proxyFlags() const;
    const ACHAR* originalClassName() const;
    const ACHAR* originalDxfName() const;
    const ACHAR* applicationDescription() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    AcDbProxyObject();

protected:
    // eNotAllowedForThisProxy unless the class allows it.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    friend struct embedded::ObjectAccess;
    std::unique_ptr<embedded::ObjectBody> m_body;
};

// The same for an entity. Layer, colour, line type and the like are those of the entity, since every file has
// them outside of what its class files. What changes them answers eNotAllowedForThisProxy, with nothing
// changed, unless the class allows it. Moving answers that too; where the class allows it eNotImplementedYet,
// since the host cannot move what only the class understands.
class AcDbProxyEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbProxyEntity);
    ~AcDbProxyEntity() override;

    using AcDbEntity::setLayer;
    Acad::ErrorStatus setLayer(AcDbObjectId layer, Adesk::Boolean doSubents = true) override;
    Acad::ErrorStatus setLinetype(AcDbObjectId linetype, Adesk::Boolean doSubents = true) override;
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 colour, Adesk::Boolean doSubents = true) override;
    Acad::ErrorStatus setLinetypeScale(double scale, Adesk::Boolean doSubents = true) override;
    Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, Adesk::Boolean doSubents = true) override;
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, Adesk::Boolean doSubents = true) override;

    int proxyFlags() const;
    const ACHAR* originalClassName() const;
    const ACHAR* originalDxfName() const;
    const ACHAR* applicationDescription() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    AcDbProxyEntity();

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;

private:
    friend struct embedded::ObjectAccess;
    bool allows(AcDbProxyFlags flag) const { return (proxyFlags() & flag) != 0; }
    std::unique_ptr<embedded::ObjectBody> m_body;
};
