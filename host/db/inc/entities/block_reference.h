#pragma once

#include "dbmain.h"
#include "entities/object_iterator.h"
#include "gescl3d.h"

#include <memory>

class AcDbAttribute;
class AcDbSequenceEnd;

namespace embedded {
class OwnedChain;
struct ReferenceAccess;
} // namespace embedded

// A block that is shown at a place. Owns its attributes: erasing it, or bringing it back, takes those along
// that went with it.
class AcDbBlockReference : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockReference);
    AcDbBlockReference();
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block);
    ~AcDbBlockReference() override;

    // Getters need read; setters need write and answer eOk unless something else is said.
    AcDbObjectId blockTableRecord() const;
    // eInvalidInput for the id of something that is no block.
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
    // In the world.
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& point);
    AcGeScale3d scaleFactors() const;
    // eInvalidInput for a factor of 0.
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
    // Radians, from the first axis of the reference's own coordinates.
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const;
    // The position stays where it is. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    // From the block's coordinates to the world's: the block's origin goes to the position.
    AcGeMatrix3d blockTransform() const;
    // eCannotScaleNonUniformly, with nothing changed, for a matrix whose columns are not perpendicular;
    // eInvalidInput for a singular one.
    Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& matrix);

    // The caller deletes it.
    AcDbObjectIterator* attributeIterator() const;
    // Takes a new attribute, gives it an id and leaves it open for write. eNullEntityPointer; eAlreadyInDb;
    // eNoDatabase for a reference that is in none.
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
    Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
    // Statuses of opening; eKeyNotFound for what is no attribute of this reference.
    Acad::ErrorStatus openAttribute(AcDbAttribute*& attribute, AcDbObjectId id, AcDb::OpenMode mode,
                                    bool openErased = false) const;
    Acad::ErrorStatus openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) const;

    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The position, which takes the whole reference along, then that of each attribute, which moves by
    // itself. Transforming takes the attributes along; what could not be a reference any more answers
    // eCannotScaleNonUniformly, with nothing changed. An attribute that cannot be opened for write, since
    // somebody has it open, refuses both with that status, and nothing is changed either.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // The position.
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    // Copies of the block's entities, moved to where they are seen. An entity that cannot go there ends it
    // with its status and no copies.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;
    // What the block holds, then the attributes.
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;
    // The two halves of drawing it.
    void drawBlock(AcGiWorldDraw& worldDraw, const AcGeMatrix3d& place) const;
    void drawAttributes(AcGiWorldDraw& worldDraw) const;
    // What a derived class files in front of the block's id.
    virtual void readMore(AcDbDwgFiler& filer);
    virtual void writeMore(AcDbDwgFiler& filer) const;

private:
    friend struct embedded::ReferenceAccess;
    struct Fields {
        AcGePoint3d position; // in the reference's own coordinates, as filed
        AcGeScale3d scale;
        double rotation = 0.0;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        AcDbObjectId block;
    };
    void readAttributes(AcDbDwgFiler& filer, bool ofFile);
    void writeAttributes(AcDbDwgFiler& filer) const;
    bool placeFrom(const AcGeMatrix3d& matrix);

    Fields m_fields;
    std::unique_ptr<embedded::OwnedChain> m_attributes;
};
