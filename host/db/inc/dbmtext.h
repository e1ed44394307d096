#pragma once

#include "AcString.h"
#include "dbmain.h"

#include <string>

namespace AcDb {

// Whether letters higher than the text push lines apart.
enum LineSpacingStyle { kAtLeast = 1, kExactly = 2 };

} // namespace AcDb

// A text of several lines, broken at a width. Its contents hold format codes: \P a new paragraph, \~ a blank
// that is not broken at, \S a stack (1/2, 1^2, 1#2), {} a stretch with settings of its own, \H \W \Q \T \A \C
// \f \F \p settings up to a semicolon, \L \l \O \o \K \k lines under, over and through, \\ \{ \} the letters
// themselves, \U+0041 a letter by its number, and the %% codes of plain texts. The host draws all in the
// text's own height, colour and style: it reads the codes and draws the letters.
class AcDbMText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbMText);

    enum AttachmentPoint {
        kTopLeft = 1,
        kTopCenter = 2,
        kTopRight = 3,
        kMiddleLeft = 4,
        kMiddleCenter = 5,
        kMiddleRight = 6,
        kBottomLeft = 7,
        kBottomCenter = 8,
        kBottomRight = 9,
        kBaseLeft = 10,
        kBaseCenter = 11,
        kBaseRight = 12,
        kBaseAlign = 13,
        kBottomAlign = 14,
        kMiddleAlign = 15,
        kTopAlign = 16,
        kBaseFit = 17,
        kBottomFit = 18,
        kMiddleFit = 19,
        kTopFit = 20,
        kBaseMid = 21,
        kBottomMid = 22,
        kMiddleMid = 23,
        kTopMid = 24
    };
    enum FlowDirection { kLtoR = 1, kRtoL = 2, kTtoB = 3, kBtoT = 4, kByStyle = 5 };

    // At the origin, along X, of height 0.2 and no width, attached at its top left, empty.
    AcDbMText();

    // Getters need read; setters need write and answer eOk unless something else is said. Points and
    // directions are the world's.
    AcGePoint3d location() const;
    Acad::ErrorStatus setLocation(const AcGePoint3d& point);
    AcGeVector3d normal() const;
    // The direction is turned into the new plane. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    // Along the lines of text.
    AcGeVector3d direction() const;
    // eInvalidInput for a vector without length.
    Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
    // Of the direction about the normal, from the first axis of the normal's plane, in radians.
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    // At which lines are broken, in drawing units; 0: not at all.
    double width() const;
    // eInvalidInput below 0.
    Acad::ErrorStatus setWidth(double width);
    // Of capital letters.
    double textHeight() const;
    // eInvalidInput unless above 0.
    Acad::ErrorStatus setTextHeight(double height);
    // Which point of the text's box the location is.
    AttachmentPoint attachment() const;
    // eInvalidInput for none of the first twelve.
    Acad::ErrorStatus setAttachment(AttachmentPoint point);
    FlowDirection flowDirection() const;
    // eInvalidInput for a number that is none.
    Acad::ErrorStatus setFlowDirection(FlowDirection direction);
    // With its codes. For the caller to give back with acutDelString.
    ACHAR* contents() const;
    Acad::ErrorStatus contents(AcString& contents) const;
    // 1; 0, with nothing changed, for null.
    int setContents(const ACHAR* contents);
    // The letters without codes, lines parted by a line feed; broken lines count as one.
    Acad::ErrorStatus plainText(AcString& text) const;
    AcDbObjectId textStyle() const;
    // eInvalidInput for the id of something that is no text style.
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    AcDb::LineSpacingStyle lineSpacingStyle() const;
    // eInvalidInput for a number that is none.
    Acad::ErrorStatus setLineSpacingStyle(AcDb::LineSpacingStyle style);
    // As a share of the common distance of lines, 5/3 of the height.
    double lineSpacingFactor() const;
    // eInvalidInput outside of 0.25 to 4.
    Acad::ErrorStatus setLineSpacingFactor(double factor);

    // Of the lines as they are drawn, in drawing units; 0 for an empty text.
    double actualHeight() const;
    double actualWidth() const;
    // Appends the corners of their box: top left, top right, bottom left, bottom right. Nothing for an empty
    // text.
    void getBoundingPoints(AcGePoint3dArray& corners) const;

    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The location.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    // The box of the lines; the location for an empty text.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // A plain text for each line.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;

private:
    struct Fields {
        AcGePoint3d location;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        AcGeVector3d direction = AcGeVector3d::kXAxis; // as long as it was given
        double width = 0.0;
        double height = 0.2;
        Adesk::UInt16 attachment = kTopLeft;
        Adesk::UInt16 flow = kLtoR;
        double actualHeight = 0.0; // as the file tells it
        double actualWidth = 0.0;
        AcString contents;
        std::string spelling; // of the contents in the drawing file, where that is not the common one
        AcDbObjectId style;
        Adesk::UInt16 spacingStyle = AcDb::kAtLeast;
        double spacingFactor = 1.0;
        bool unknownBit = false;
    };
    struct Layout;
    template <class F, class Stream>
    static void fileFields(AcDbDwgFiler& filer, F& fields, Stream& stream);
    // Takes the size down that the file tells.
    Acad::ErrorStatus measure();
    Layout layout() const;
    AcGeVector3d alongLines() const;
    Fields m_fields;
};
