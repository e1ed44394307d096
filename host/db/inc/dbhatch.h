#pragma once

#include "dbmain.h"
#include "gedblar.h"
#include "gept2dar.h"

#include <memory>

namespace embedded {
struct HatchFields;
struct HatchPicture;
} // namespace embedded

// An area filled with a pattern of lines, or solid, inside of loops that lie in one plane. Points in the
// plane are in the hatch's own coordinates: those of its normal, lifted by its elevation. The lines are found
// by evaluateHatch, and by drawing where that was not called since the last change.
class AcDbHatch : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbHatch);

    // What a loop is, as a sum. kPolyline is set by the host for a loop of vertices.
    enum HatchLoopType {
        kDefault = 0,
        kExternal = 1,
        kPolyline = 2,
        kDerived = 4,
        kTextbox = 8,
        kOutermost = 0x10,
        kNotClosed = 0x20,
        kSelfIntersecting = 0x40,
        kTextIsland = 0x80,
        kDuplicate = 0x100
    };
    enum HatchEdgeType { kLine = 1, kCirArc = 2, kEllArc = 3, kSpline = 4 };
    enum HatchPatternType { kUserDefined = 0, kPreDefined = 1, kCustomDefined = 2 };
    // Loops inside of each other: every second area is filled; the outermost only; all inside of any loop.
    enum HatchStyle { kNormal = 0, kOuter = 1, kIgnore = 2 };

    // Associative, of the predefined pattern SOLID with scale and space 1, without loops.
    AcDbHatch();
    ~AcDbHatch() override;

    // Getters need read; setters need write and answer eOk unless something else is said.
    AcGeVector3d normal() const;
    // The loops keep their own coordinates. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double elevation() const;
    Acad::ErrorStatus setElevation(double elevation);
    // Whether the hatch follows the objects that its loops were made from. The host keeps it, and does not
    // make hatches follow.
    bool associative() const;
    Acad::ErrorStatus setAssociative(bool isAssociative);

    HatchPatternType patternType() const;
    // Valid until the pattern is set.
    const ACHAR* patternName() const;
    // User-defined: lines in the pattern's angle, one space apart, and across them too if double; the name is
    // kept. Predefined: one of the host's own patterns (ANSI31 to ANSI38, ANGLE, BRICK, CROSS, DASH, DOTS,
    // LINE, NET, NET3, SOLID, SQUARE), whatever the case of the letters, in millimetres: the lines of ANSI31
    // are 3.175 apart at scale 1. A space that was set since the
    // scale was, or that alone was set, becomes the scale of a predefined pattern, so that the distance
    // between its lines follows it. Angle, space, scale and double count for the lines also when they are set
    // afterwards; the space does so for user-defined lines alone. eInvalidInput, with nothing changed, for
    // null, for a predefined pattern that the host does not have, for kCustomDefined, whose lines the host
    // has no file to read from.
    Acad::ErrorStatus setPattern(HatchPatternType type, const ACHAR* name);
    // Radians.
    double patternAngle() const;
    Acad::ErrorStatus setPatternAngle(double angle);
    double patternScale() const;
    // eInvalidInput unless above 0.
    Acad::ErrorStatus setPatternScale(double scale);
    // Between user-defined lines, in drawing units.
    double patternSpace() const;
    // eInvalidInput unless above 0.
    Acad::ErrorStatus setPatternSpace(double space);
    bool patternDouble() const;
    Acad::ErrorStatus setPatternDouble(bool isDouble);
    bool isSolidFill() const;
    // The families of lines; 0 for a solid fill.
    int numPatternDefinitions() const;
    // A family as it is drawn, turned and scaled: the direction of its lines in radians, a point on one of
    // them, the way to the next one, and lengths of dashes (below 0: gaps; 0: dots; none: whole lines).
    // eInvalidIndex.
    Acad::ErrorStatus getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY,
                                             double& offsetX, double& offsetY, AcGeDoubleArray& dashes) const;
    HatchStyle hatchStyle() const;
    // eInvalidInput for a number that is no style.
    Acad::ErrorStatus setHatchStyle(HatchStyle style);

    int numLoops() const;
    // eInvalidIndex is answered by the operations with an index; loopTypeAt answers kDefault then.
    Adesk::Int32 loopTypeAt(int loopIndex) const;
    // The vertices of a loop, and its bulges, none if all are straight. A loop of edges comes as the chords
    // by which it is filled.
    Acad::ErrorStatus getLoopAt(int loopIndex, Adesk::Int32& loopType, AcGePoint2dArray& vertices,
                                AcGeDoubleArray& bulges) const;
    // Takes a loop of vertices, closed whether the last one is the first one or not, with a bulge (the
    // tangent of a quarter of the angle; above 0 counter-clockwise) for the segment behind each, or none at
    // all. eInvalidInput for another number of bulges, or a number that is not finite; eDegenerateGeometry
    // for fewer than two different vertices, or two without a bulge.
    Acad::ErrorStatus appendLoop(Adesk::Int32 loopType, const AcGePoint2dArray& vertices,
                                 const AcGeDoubleArray& bulges);
    Acad::ErrorStatus insertLoopAt(int loopIndex, Adesk::Int32 loopType, const AcGePoint2dArray& vertices,
                                   const AcGeDoubleArray& bulges);
    Acad::ErrorStatus removeLoopAt(int loopIndex);

    // Finds the lines, or the area of a solid fill. `bUnderestimateNumLines` allows ten times more lines
    // before they count as too many. eOk, also for an area without extent, which has no lines;
    // eInvalidInput for a hatch without loops; eExcessiveItemCount, with no lines, for more than 100,000
    // lines or 1,000,000 dashes.
    Acad::ErrorStatus evaluateHatch(bool bUnderestimateNumLines = false);
    // Of the last evaluation, in the order of the families; 0 if something has changed since. Each dash is
    // a line; a dot is one whose ends are the same.
    int numHatchLines() const;
    // eInvalidIndex.
    Acad::ErrorStatus getHatchLineDataAt(int lineIndex, AcGePoint2d& startPoint, AcGePoint2d& endPoint) const;
    // Appends to both.
    Acad::ErrorStatus getHatchLinesData(AcGePoint2dArray& startPoints, AcGePoint2dArray& endPoints) const;
    // What is filled, islands taken out. eInvalidInput for a hatch without loops.
    Acad::ErrorStatus getArea(double& area) const;

    // The matrix of the normal, without the elevation.
    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    // Pattern and loops. eCannotScaleNonUniformly, with nothing changed, where the pattern would not stay
    // one.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    // Of the loops. eInvalidExtents without one.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // The lines. eCannotExplodeEntity for a solid fill, or where there are none.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    // Its lines or its area. Throws the status of evaluateHatch, behind the loops' outlines, where that
    // fails: whoever draws tells of it.
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;

private:
    void changed();
    // Evaluated if it is not there; empty, with the status, where that fails.
    const embedded::HatchPicture& picture() const;
    std::unique_ptr<embedded::HatchFields> m_fields;
    mutable std::unique_ptr<embedded::HatchPicture> m_picture;
};
