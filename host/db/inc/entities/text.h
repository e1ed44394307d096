#pragma once

#include "AcString.h"
#include "dbmain.h"

// A line of text. It stands at its position, the left end of its base line, unless a mode is set; then it
// stands by its alignment point, and the position follows from that and the text's width, which is that of
// its font's letters.
class AcDbText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbText);
    AcDbText();
    AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = AcDbObjectId(),
             double height = 0.2, double rotation = 0.0);

    // Getters need read; setters need write and answer eOk unless something else is said. Points are the
    // world's.
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& point);
    AcGePoint3d alignmentPoint() const;
    // eNotApplicable for a text that stands by its position.
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
    bool isDefaultAlignment() const;
    AcDb::TextHorzMode horizontalMode() const;
    Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
    AcDb::TextVertMode verticalMode() const;
    Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
    // Puts the position where alignment point, modes and text want it.
    Acad::ErrorStatus adjustAlignment(const AcDbDatabase* database = nullptr);

    // As it stands, with its %% codes. For the caller to give back with acutDelString.
    ACHAR* textString() const;
    const ACHAR* textStringConst() const;
    // eInvalidInput for null.
    Acad::ErrorStatus setTextString(const ACHAR* text);
    AcDbObjectId textStyle() const;
    // eInvalidInput for the id of something that is no text style.
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    double height() const;
    // eInvalidInput unless above 0.
    Acad::ErrorStatus setHeight(double height);
    double widthFactor() const;
    // eInvalidInput unless above 0.
    Acad::ErrorStatus setWidthFactor(double factor);
    // Radians, from the first axis of the text's own coordinates.
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    // Of the letters, radians.
    double oblique() const;
    Acad::ErrorStatus setOblique(double angle);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const;
    // The points stay where they are. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    Adesk::Boolean isMirroredInX() const;
    Acad::ErrorStatus mirrorInX(Adesk::Boolean mirrored);
    Adesk::Boolean isMirroredInY() const;
    Acad::ErrorStatus mirrorInY(Adesk::Boolean mirrored);

    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The position, and the alignment point where it counts. Both take the whole text along.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // Position and height, and for a text with letters the box of them.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // The position, and the alignment point where it counts.
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;

    // What the file has behind the fields of a text; nothing but for attributes.
    virtual void readMore(AcDbDwgFiler&) {}
    virtual void writeMore(AcDbDwgFiler&) const {}

private:
    struct Fields {
        double elevation = 0.0;
        AcGePoint2d position; // in the text's own coordinates, as filed
        AcGePoint2d alignment;
        double thickness = 0.0;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        double oblique = 0.0;
        double rotation = 0.0;
        double height = 0.2;
        double widthFactor = 1.0;
        AcString text;
        Adesk::UInt16 generation = 0;
        Adesk::UInt16 horizontal = 0;
        Adesk::UInt16 vertical = 0;
        AcDbObjectId style;
    };
    template <class F, class Stream>
    static void fileFields(F& fields, Adesk::UInt8 absent, Stream& stream);
    AcGePoint3d toWorld(const AcGePoint2d& point) const;
    AcGeVector3d baseLine() const;
    double letterWidth() const;
    Fields m_fields;
};
