#pragma once

#include "acdb.h"
#include "acgidefs.h"
#include "acgitextstyle.h"
#include "dbcolor.h"
#include "dbid.h"
#include "drawable.h"
#include "gemat3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "rxobject.h"

class AcDbDatabase;
class AcDbPolyline;
class AcGiContext;

// How what is drawn next is to look. What is not set is as the entity says.
class AcGiSubEntityTraits : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcGiSubEntityTraits);

    // Index: 0 by block, 1 to 255, 256 by layer. Index and true colour replace each other.
    virtual void setColor(const Adesk::UInt16 color) = 0;
    virtual void setTrueColor(const AcCmEntityColor& color) = 0;
    virtual void setLayer(const AcDbObjectId layerId) = 0;
    virtual void setLineType(const AcDbObjectId linetypeId) = 0;
    // The part of the entity that what follows belongs to; 0 for none.
    virtual void setSelectionMarker(const Adesk::GsMarker markerId) = 0;
    // Whether polygons, circles and the like are filled.
    virtual void setFillType(const AcGiFillType fillType) = 0;
    virtual void setLineWeight(const AcDb::LineWeight weight) = 0;
    virtual void setLineTypeScale(double scale = 1.0) = 0;
    // How far what follows stands up along its normal.
    virtual void setThickness(double thickness) = 0;

    virtual Adesk::UInt16 color() const = 0;
    virtual AcCmEntityColor trueColor() const = 0;
    virtual AcDbObjectId layerId() const = 0;
    virtual AcDbObjectId lineTypeId() const = 0;
    virtual AcGiFillType fillType() const = 0;
    virtual AcDb::LineWeight lineWeight() const = 0;
    virtual double lineTypeScale() const = 0;
    virtual double thickness() const = 0;
};

// What a drawable sets in setAttributes: the traits that its drawing begins with.
class AcGiDrawableTraits : public AcGiSubEntityTraits {
public:
    ACRX_DECLARE_MEMBERS(AcGiDrawableTraits);

    // Takes the traits of an entity. Statuses of opening.
    virtual Acad::ErrorStatus setupForEntity(AcDbObjectId id) = 0;
};

// Takes what is drawn. Points and vectors are in model coordinates: those of the block or drawable that is
// just drawn. Every operation answers true when whoever draws is to stop, and false otherwise; what makes no
// picture (fewer than two points, a radius or height that is not above 0, a vector without length) is left
// out without a word.
class AcGiGeometry : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcGiGeometry);

    virtual void getModelToWorldTransform(AcGeMatrix3d& matrix) const = 0;
    virtual void getWorldToModelTransform(AcGeMatrix3d& matrix) const = 0;
    // What follows goes through this matrix first, then through those that are on. False when nothing was
    // pushed: a normal without length, or a pop without a push.
    virtual Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) = 0;
    virtual Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) = 0;
    virtual Adesk::Boolean popModelTransform() = 0;

    virtual Adesk::Boolean circle(const AcGePoint3d& center, const double radius,
                                  const AcGeVector3d& normal) const = 0;
    // Through three points. Points on a line make no picture.
    virtual Adesk::Boolean circle(const AcGePoint3d& first, const AcGePoint3d& second,
                                  const AcGePoint3d& third) const = 0;
    // Counter-clockwise about the normal, in radians; clockwise for a sweep below 0.
    virtual Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius,
                                       const AcGeVector3d& normal, const AcGeVector3d& startVector,
                                       const double sweepAngle,
                                       const AcGiArcType arcType = kAcGiArcSimple) const = 0;
    virtual Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                       const AcGePoint3d& end,
                                       const AcGiArcType arcType = kAcGiArcSimple) const = 0;
    // The normal is the direction of a thickness. The marker, unless -1, is that of the first segment; each
    // further one has the next number.
    virtual Adesk::Boolean polyline(const Adesk::UInt32 count, const AcGePoint3d* points,
                                    const AcGeVector3d* normal = nullptr,
                                    Adesk::LongPtr baseSubEntMarker = -1) const = 0;
    virtual Adesk::Boolean polygon(const Adesk::UInt32 count, const AcGePoint3d* points) const = 0;
    // Row by row. Fewer than two rows or columns make no picture.
    virtual Adesk::Boolean mesh(const Adesk::UInt32 rows, const Adesk::UInt32 columns,
                                const AcGePoint3d* points) const = 0;
    // Faces as a number of corners (below 0 for a hole) and that many indexes, one behind the other. Faces
    // that name points that are not there make no picture.
    virtual Adesk::Boolean shell(const Adesk::UInt32 count, const AcGePoint3d* points,
                                 const Adesk::UInt32 faceListSize, const Adesk::Int32* faceList) const = 0;
    // `width` is the factor of the letters' width, `oblique` their slant in radians.
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, const double height, const double width,
                                const double oblique, const ACHAR* text) const = 0;
    // `length` characters, or all for -1; `raw` leaves %% codes as they stand.
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, const ACHAR* text, const Adesk::Int32 length,
                                const Adesk::Boolean raw, const AcGiTextStyle& style) const = 0;
    // A line without ends, and one that begins at the first point.
    virtual Adesk::Boolean xline(const AcGePoint3d& first, const AcGePoint3d& second) const = 0;
    virtual Adesk::Boolean ray(const AcGePoint3d& first, const AcGePoint3d& second) const = 0;
    // Segments of a polyline, from one on; 0 for all that follow.
    virtual Adesk::Boolean pline(const AcDbPolyline& polyline, const Adesk::UInt32 fromIndex = 0,
                                 const Adesk::UInt32 numSegs = 0) const = 0;
    // Two points in the world's coordinates, whatever is pushed.
    virtual Adesk::Boolean worldLine(const AcGePoint3d points[2]) = 0;
    // Another drawable, with its own traits, in the present coordinates.
    virtual Adesk::Boolean draw(AcGiDrawable* drawable) const = 0;
};

class AcGiWorldGeometry : public AcGiGeometry {
public:
    ACRX_DECLARE_MEMBERS(AcGiWorldGeometry);

    // Two corners of a box that holds the entity, where it is not what was drawn.
    virtual void setExtents(AcGePoint3d* newExtents) const = 0;
    // What follows are attributes of the compound object that is drawn.
    virtual void startAttributesSegment() = 0;
};

// Eye coordinates: X to the right, Y up, Z towards the viewer, from the view's target. Display coordinates
// are the same in a view without perspective.
class AcGiViewportGeometry : public AcGiGeometry {
public:
    ACRX_DECLARE_MEMBERS(AcGiViewportGeometry);

    virtual Adesk::Boolean polylineEye(const Adesk::UInt32 count, const AcGePoint3d* points) const = 0;
    virtual Adesk::Boolean polygonEye(const Adesk::UInt32 count, const AcGePoint3d* points) const = 0;
    virtual Adesk::Boolean polylineDc(const Adesk::UInt32 count, const AcGePoint3d* points) const = 0;
    virtual Adesk::Boolean polygonDc(const Adesk::UInt32 count, const AcGePoint3d* points) const = 0;
};

// Where and from where a drawing is seen. Model coordinates are those of the block that is just drawn.
class AcGiViewport : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcGiViewport);

    virtual void getModelToEyeTransform(AcGeMatrix3d& matrix) const = 0;
    virtual void getEyeToModelTransform(AcGeMatrix3d& matrix) const = 0;
    virtual void getWorldToEyeTransform(AcGeMatrix3d& matrix) const = 0;
    virtual void getEyeToWorldTransform(AcGeMatrix3d& matrix) const = 0;
    virtual Adesk::Boolean isPerspective() const = 0;
    // From eye to display coordinates and back; false, with the point untouched, in a view without
    // perspective.
    virtual Adesk::Boolean doPerspective(AcGePoint3d& point) const = 0;
    virtual Adesk::Boolean doInversePerspective(AcGePoint3d& point) const = 0;
    // Pixels along X and Y of a square with sides of one drawing unit at the point.
    virtual void getNumPixelsInUnitSquare(const AcGePoint3d& point, AcGePoint2d& pixelArea,
                                          bool includePerspective = true) const = 0;
    virtual void getCameraLocation(AcGePoint3d& location) const = 0;
    virtual void getCameraTarget(AcGePoint3d& target) const = 0;
    virtual void getCameraUpVector(AcGeVector3d& upVector) const = 0;
    // From the target to the viewer, of length 1, in the world's coordinates.
    virtual AcGeVector3d viewDir() const = 0;
    // The number of this view among all that are drawn for; the same whenever it is drawn again.
    virtual Adesk::ULongPtr viewportId() const = 0;
    // The number of its window, as CVPORT counts windows.
    virtual Adesk::Int16 acadWindowId() const = 0;
    // In display coordinates.
    virtual void getViewportDcCorners(AcGePoint2d& lowerLeft, AcGePoint2d& upperRight) const = 0;
    // Where the view cuts off what is near and what is far: the distances of the two planes from the target,
    // above 0 towards the viewer, in drawing units. A distance counts only if its plane cuts. True if either
    // does; the embedded host's views cut nothing: false, with both off and both distances 0.
    virtual Adesk::Boolean getFrontAndBackClipValues(Adesk::Boolean& clipFront, Adesk::Boolean& clipBack,
                                                     double& front, double& back) const = 0;
    virtual double linetypeScaleMultiplier() const = 0;
    // Line types need at least that many pixels for a dash.
    virtual double linetypeGenerationCriteria() const = 0;
    virtual Adesk::Boolean layerVisible(const AcDbObjectId& layer) const = 0;
};

// What every drawing has, whatever it is made for.
class AcGiCommonDraw : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcGiCommonDraw);

    virtual AcGiRegenType regenType() const = 0;
    // Whoever draws is to stop.
    virtual Adesk::Boolean regenAbort() const = 0;
    virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
    virtual AcGiGeometry* rawGeometry() const = 0;
    virtual Adesk::Boolean isDragging() const = 0;
    // How far a chord near the point may be from its curve.
    virtual double deviation(const AcGiDeviationType type, const AcGePoint3d& point) const = 0;
    virtual Adesk::UInt32 numberOfIsolines() const = 0;
    // The draw's own: as long as the draw. The embedded host's is never null.
    virtual AcGiContext* context() = 0;
};

// The drawing of what looks the same from everywhere.
class AcGiWorldDraw : public AcGiCommonDraw {
public:
    ACRX_DECLARE_MEMBERS(AcGiWorldDraw);

    virtual AcGiWorldGeometry& geometry() const = 0;
};

// The drawing for one viewport.
class AcGiViewportDraw : public AcGiCommonDraw {
public:
    ACRX_DECLARE_MEMBERS(AcGiViewportDraw);

    virtual AcGiViewport& viewport() const = 0;
    virtual AcGiViewportGeometry& geometry() const = 0;
    // The place of this viewport among those that are drawn for one after the other, from 0 on. The embedded
    // host draws for one alone: always 0.
    virtual Adesk::UInt32 sequenceNumber() const = 0;
    // Whether a number that AcGiViewport::viewportId answered once is still that of a viewport that is drawn.
    virtual Adesk::Boolean isValidId(const Adesk::ULongPtr id) const = 0;
    // The object of the viewport in the drawing; null for a view that is in none.
    virtual AcDbObjectId viewportObjectId() const = 0;
};

// What a drawing is made from and on.
class AcGiContext : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcGiContext);

    // It goes into a PostScript file.
    virtual Adesk::Boolean isPsOut() const = 0;
    // It goes to a plotter. The embedded host draws its pictures as for the screen: always false.
    virtual Adesk::Boolean isPlotGeneration() const = 0;
    // The drawing that is drawn, which its owner keeps; null for what is in none.
    virtual AcDbDatabase* database() const = 0;
    // What is drawn is cut along the edge of a clipped block. Never so in the embedded host.
    virtual bool isBoundaryClipping() const = 0;
};
