#pragma once

#include "entities/vertex.h"
#include "entities/vertex_polyline.h"
#include "gedblar.h"

// The numbers are the interface's own.
namespace AcDb {
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
} // namespace AcDb

// The old kind of polyline in a plane: lines and arcs between vertices that are objects. Of one that is
// fitted with a spline the fitted vertices are seen, and the frame's are not.
class AcDb2dPolyline : public embedded::VertexPolyline {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dPolyline);
    AcDb2dPolyline();
    // `bulges`, if given, has one for each vertex. Every vertex gets the default widths.
    AcDb2dPolyline(AcDb::Poly2dType type, AcGePoint3dArray& vertices, double elevation = 0.0,
                   Adesk::Boolean closed = false, double defStartWidth = 0.0, double defEndWidth = 0.0,
                   AcGeDoubleArray* bulges = nullptr);

    // Takes a new vertex; in a database it gets an id and stays open for write, otherwise the polyline keeps
    // it and the id is null. eNullEntityPointer; eAlreadyInDb.
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDb2dVertex* vertex);
    // The same behind a vertex, or at the begin for null. Also eNoDatabase; eKeyNotFound.
    Acad::ErrorStatus insertVertexAt(AcDbObjectId& id, AcDbObjectId indexVertex, AcDb2dVertex* vertex);
    // Statuses of opening; eKeyNotFound for what is no vertex of this polyline.
    Acad::ErrorStatus openVertex(AcDb2dVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const;
    // In the world.
    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const;

    // Getters need read; setters need write and answer eOk unless something else is said.
    AcDb::Poly2dType polyType() const;
    Adesk::Boolean isClosed() const override;
    Acad::ErrorStatus makeClosed();
    Acad::ErrorStatus makeOpen();
    // Of vertices that are made for it. eInvalidInput for one below 0.
    double defaultStartWidth() const;
    Acad::ErrorStatus setDefaultStartWidth(double width);
    double defaultEndWidth() const;
    Acad::ErrorStatus setDefaultEndWidth(double width);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    double elevation() const;
    Acad::ErrorStatus setElevation(double elevation);
    AcGeVector3d normal() const;
    // The points keep their own coordinates. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    // Line types run on over the vertices.
    bool isLinetypeGenerationOn() const;
    Acad::ErrorStatus setLinetypeGenerationOn();
    Acad::ErrorStatus setLinetypeGenerationOff();

    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool getPath(embedded::CurvePath& path) const override;
    AcGeVector3d thicknessVector() const override;
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The vertices go along. eCannotScaleNonUniformly where an arc would not stay one, and the status of a
    // vertex that cannot be opened, both with nothing changed.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    // The vertices, those of a frame too.
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // Lines and arcs.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    // With the widths of the segments.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;

private:
    struct Fields {
        Adesk::UInt16 flags = 0;
        Adesk::UInt16 curveType = 0; // of a spline: 5 quadratic, 6 cubic
        double startWidth = 0.0;
        double endWidth = 0.0;
        double thickness = 0.0;
        double elevation = 0.0;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
    };
    Acad::ErrorStatus setFlag(Adesk::UInt16 flag, bool on);
    bool mayTransform(const AcGeMatrix3d& xform) const;
    Fields m_fields;
};
