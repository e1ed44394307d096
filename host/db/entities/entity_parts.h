#pragma once

#include "dbmain.h"

#include <vector>

class AcDbArc;
class AcGiGeometry;
class AcGiWorldDraw;

// What the host's own entities share.
namespace embedded {

class CurvePath;
struct PlaneArc;

// What most getters and setters of an entity come to.
template <class Field>
const Field& readField(const AcDbObject& object, const Field& field) {
    object.assertReadEnabled();
    return field;
}
template <class Field, class Value>
Acad::ErrorStatus setField(AcDbObject& object, Field& field, const Value& value) {
    object.assertWriteEnabled();
    field = value;
    return Acad::eOk;
}

// From the coordinates of entities with that normal to the world's and back.
AcGePoint3d ownToWorld(const AcGeVector3d& normal, const AcGePoint3d& point);
AcGePoint3d worldToOwn(const AcGeVector3d& normal, const AcGePoint3d& point);

// The normal of a plane behind a transformation. False, with the normal untouched, if the plane comes out as
// a line or a point.
bool transformsPlane(const AcGeMatrix3d& matrix, AcGeVector3d& normal);
// The new length of a thickness along the normal, with the sign that belongs to the new normal.
double transformedThickness(const AcGeMatrix3d& matrix, const AcGeVector3d& normal,
                            const AcGeVector3d& newNormal, double thickness);

// Whether a circle in the plane with that normal stays one.
bool keepsCirclesRound(const AcGeMatrix3d& matrix, const AcGeVector3d& normal);

// All from 0 on, and none as high as `count`.
bool indicesAreBelow(const AcDbIntArray& indices, int count);

// eMakeMeProxy if a drawing file has more of the entity than was read: what a newer product has put behind
// must not be lost.
Acad::ErrorStatus declineWhatIsLeft(AcDbDwgFiler& filer);

// Layer, colour, line type and the rest from one entity to another.
void takeSettings(const AcDbEntity& from, AcDbEntity& to);

// Draws a path: straight pieces in a row as one chain. A whole one is a circle. What the geometry answers.
bool drawPath(const CurvePath& path, const AcGeVector3d* normal, bool isWhole, const AcGiGeometry& geometry);

struct WidthPair {
    double start = 0.0;
    double end = 0.0;
};
// Draws the pieces of a path in a plane, each between two edges as its widths say; `widths` has a pair for
// each. The extents of an entity that draws itself so, and stands up by `thickness`.
void drawWidePath(const CurvePath& path, const std::vector<WidthPair>& widths, const AcGeVector3d& normal,
                  AcGiWorldDraw& worldDraw);
Acad::ErrorStatus wideExtents(const AcDbEntity& entity, const AcGeVector3d& thickness, AcDbExtents& extents);

// Appends a line or an arc for each piece, with the entity's settings, for the caller to delete.
// eCannotExplodeEntity for a path without pieces.
Acad::ErrorStatus explodePath(const CurvePath& path, const AcGeVector3d& normal, double thickness,
                              const AcDbEntity& from, AcDbVoidPtrArray& entitySet);

// A new arc, for the caller to delete.
AcDbArc* newArc(const PlaneArc& arc);

} // namespace embedded
