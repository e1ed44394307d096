#pragma once

#include "acgi.h"
#include "dbextents.h"

#include <string>
#include <vector>

class AcDbEntity;

// What a drawing looks like, as a list of primitives. Headless: whoever wants a picture renders the list.
namespace embedded {

// The traits of a primitive. What was by block is already that of the block's reference, as far as there is
// one.
struct DrawTraits {
    Adesk::UInt16 colour = 256; // 1 to 255, 256 by layer; 0 by block, outside of any block
    AcCmEntityColor trueColour; // counts where it isByColor
    AcDbObjectId layer;
    AcDbObjectId lineType;
    double lineTypeScale = 1.0;
    AcDb::LineWeight lineWeight = AcDb::kLnWtByLayer;
    AcGiFillType fill = kAcGiFillNever;
    Adesk::GsMarker marker = 0;
    double thickness = 0.0;
};

enum class PrimitiveKind { kPolyline, kPolygon, kCircle, kArc, kMesh, kShell, kText, kXline, kRay };

// One drawn thing, in the world's coordinates. Which fields count depends on the kind; all others have their
// defaults.
struct Primitive {
    PrimitiveKind kind = PrimitiveKind::kPolyline;
    // Drawn for the viewport, and right for its view alone.
    bool ofViewport = false;
    // False for what its drawable, or one around it, keeps off any plot. Its layer may do so too.
    bool isPlottable = true;
    // The entity whose drawing it is. Inside of a block the entity of the block's; null for what is in no
    // database.
    AcDbObjectId owner;
    AcRxClass* ownerClass = nullptr;
    // The outermost entity: the block reference in model space, say. The owner itself if it is not nested.
    AcDbObjectId outermost;
    DrawTraits traits;

    // Polyline, polygon: the points. Circle, arc: the centre. Mesh: row by row. Shell: the corners. Text:
    // where its base line begins. Xline, ray: two points.
    std::vector<AcGePoint3d> points;
    // Of length 1. Polyline: that of the thickness, without length if none was told.
    AcGeVector3d normal;
    // Circle, arc: towards the begin. Text: along the base line. Of length 1.
    AcGeVector3d direction;
    double radius = 0.0;
    // Radians about the normal, above 0.
    double sweep = 0.0;
    AcGiArcType arcType = kAcGiArcSimple;
    Adesk::UInt32 rows = 0;
    Adesk::UInt32 columns = 0;
    // As AcGiGeometry::shell takes them.
    std::vector<Adesk::Int32> faces;

    // As it is read, without codes.
    std::wstring text;
    double height = 0.0;
    double widthFactor = 1.0;
    double oblique = 0.0;
    // Font and the rest; size, width and slant are those above.
    AcGiTextStyle style;

    // What of it has an end. Of a text the room of its letters from the base line to the height of capitals.
    AcDbExtents extents() const;
};

// A drawable whose drawing failed. What it drew before stays.
struct DrawFailure {
    AcDbObjectId owner;
    AcRxClass* ownerClass = nullptr;
    std::string reason;
};

struct DisplayList {
    std::vector<Primitive> primitives;
    std::vector<DrawFailure> failures;
    // The most primitives or nested drawables that were asked for are there, and more would have come.
    bool isCut = false;

    AcDbExtents extents() const;
};

// How a drawing is looked at. The view is parallel.
struct ViewParameters {
    AcGePoint3d target;
    // From the target to the viewer; any length but none.
    AcGeVector3d direction = AcGeVector3d::kZAxis;
    // How far the picture is turned, counter-clockwise, in radians.
    double twist = 0.0;
    // What the view shows from bottom to top, in drawing units.
    double height = 100.0;
    int pixelsWide = 1600;
    int pixelsHigh = 1000;
    Adesk::ULongPtr viewportId = 2;
    AcDbObjectId viewport;
    AcGiRegenType regenType = kAcGiStandardDisplay;
    // Draws layers that are off or frozen, and invisible entities, too.
    bool showsHidden = false;
    // No more primitives than that; 0 for any number. The drawables are told to stop then.
    std::size_t mostPrimitives = 0;
    // No more drawables inside of others than that, entities of blocks above all; 0 for any number. A few
    // blocks that hold each other many times over are more than any machine can draw.
    std::size_t mostNested = 2000000;
};

// Draws model space, or another block, in its order: each entity's worldDraw, and viewportDraw if that
// answered false. What an entity's drawing throws (also an Acad::ErrorStatus) ends that entity's drawing
// alone and stands in the failures; so does an entity that cannot be opened. A block that holds itself is
// drawn to a depth of 32.
DisplayList draw(AcDbDatabase& database, const ViewParameters& view = ViewParameters());
DisplayList draw(AcDbDatabase& database, AcDbObjectId block, const ViewParameters& view = ViewParameters());
// A single drawable, in a database or not. Needs it to be open for read.
DisplayList draw(AcGiDrawable& drawable, const ViewParameters& view = ViewParameters());

// The box of what an entity draws in the world. eInvalidExtents if that is nothing. In a block reference with
// very many entities inside (beyond 100,000, not counting again what is there in the same posture) nested
// blocks may take more room than they have, which is that of their own boxes turned.
Acad::ErrorStatus drawnExtents(const AcDbEntity& entity, AcDbExtents& extents);

} // namespace embedded
