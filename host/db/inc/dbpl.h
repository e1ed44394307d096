#pragma once

#include "dbcurve.h"
#include "gepnt2d.h"

#include <vector>

// A chain of lines and arcs in a plane. Its parameter counts the segments: 1.5 is the middle of the second.
// Points in the plane are in the entity's own coordinates. Where a vertex is named, eInvalidIndex for one
// that is not there.
class AcDbPolyline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyline);
    // What a segment is: kCoincident has no length, kPoint is that of a chain of one point.
    enum SegType { kLine, kArc, kCoincident, kPoint, kEmpty };

    AcDbPolyline();
    // Room for that many vertices.
    explicit AcDbPolyline(unsigned int vertices);

    // Getters need read; setters need write and answer eOk unless something else is said.
    unsigned int numVerts() const;
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& point) const;
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& point) const;
    Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& point);
    // The tangent of a quarter of the angle of the segment behind a vertex; above 0 counter-clockwise.
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
    // Of the segment behind a vertex.
    Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
    Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
    // In front of `index`, or at the end for numVerts. A width below 0 takes the constant one.
    Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge = 0.0,
                                  double startWidth = -1.0, double endWidth = -1.0);
    // eDegenerateGeometry for one of the last two.
    Acad::ErrorStatus removeVertexAt(unsigned int index);
    SegType segType(unsigned int index) const;
    Adesk::Boolean hasBulges() const;
    Adesk::Boolean hasWidth() const;
    Adesk::Boolean isOnlyLines() const;

    Adesk::Boolean isClosed() const override;
    void setClosed(Adesk::Boolean closed);
    // Line types run on over the vertices.
    bool hasPlinegen() const;
    void setPlinegen(bool runsOn);
    double elevation() const;
    Acad::ErrorStatus setElevation(double elevation);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    // eInvalidInput for segments of differing widths.
    Acad::ErrorStatus getConstantWidth(double& width) const;
    // eInvalidInput for one below 0.
    Acad::ErrorStatus setConstantWidth(double width);
    AcGeVector3d normal() const;
    // The points keep their own coordinates. eInvalidInput for a vector without length.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus reverseCurve() override;
    void getEcs(AcGeMatrix3d& ecs) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    // Draws segments from one on, `count` of them or all that follow for 0. What the geometry answers.
    Adesk::Boolean drawSegments(const AcGiGeometry& geometry, unsigned int from, unsigned int count) const;

protected:
    bool getPath(embedded::CurvePath& path) const override;
    AcGeVector3d thicknessVector() const override;
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The vertices.
    // Transforming answers eCannotScaleNonUniformly, with nothing changed, where an arc would not stay one.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // Lines and arcs.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    // With the widths of the segments.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // A segment with a width is a filled polygon.
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;

private:
    struct Widths {
        double start = 0.0;
        double end = 0.0;
    };
    struct Fields {
        Adesk::UInt16 flags = 0; // only those that tell nothing of what is filed
        double constantWidth = 0.0;
        double elevation = 0.0;
        double thickness = 0.0;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        std::vector<AcGePoint2d> points;
        std::vector<double> bulges; // none, or one for each point
        std::vector<Widths> widths; // likewise
    };
    Adesk::UInt16 filedFlags() const;
    AcGePoint3d toWorld(const AcGePoint2d& point) const;
    void appendSegment(std::size_t index, embedded::CurvePath& path) const;
    std::size_t segmentCount() const;
    Fields m_fields;
};
