#pragma once

#include "entities/vertex.h"
#include "entities/vertex_polyline.h"

// The numbers are the interface's own.
namespace AcDb {
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
} // namespace AcDb

// Lines through space between vertices that are objects. Of one that is fitted with a spline the fitted
// vertices are seen, and the frame's are not.
class AcDb3dPolyline : public embedded::VertexPolyline {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolyline);
    AcDb3dPolyline();
    AcDb3dPolyline(AcDb::Poly3dType type, AcGePoint3dArray& vertices, Adesk::Boolean closed = false);

    // Takes a new vertex; in a database it gets an id and stays open for write, otherwise the polyline keeps
    // it and the id is null. eNullEntityPointer; eAlreadyInDb.
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* vertex);
    // The same behind a vertex, or at the begin for null. Also eNoDatabase; eKeyNotFound.
    Acad::ErrorStatus insertVertexAt(AcDbObjectId& id, AcDbObjectId indexVertex,
                                     AcDb3dPolylineVertex* vertex);
    // Statuses of opening; eKeyNotFound for what is no vertex of this polyline.
    Acad::ErrorStatus openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const;

    // Getters need read; setters need write and answer eOk.
    AcDb::Poly3dType polyType() const;
    Adesk::Boolean isClosed() const override;
    Acad::ErrorStatus makeClosed();
    Acad::ErrorStatus makeOpen();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool getPath(embedded::CurvePath& path) const override;
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The vertices go along; the status of one that cannot be opened, with nothing changed.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    // The vertices, those of a frame too.
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // Lines.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;

private:
    struct Fields {
        Adesk::UInt8 splineFlags = 0; // 1 quadratic, 2 cubic
        Adesk::UInt8 flags = 0;       // 1 closed
    };
    Acad::ErrorStatus setClosed(bool closed);
    Fields m_fields;
};
