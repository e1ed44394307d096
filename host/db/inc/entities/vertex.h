#pragma once

#include "dbmain.h"

// The numbers are the interface's own.
namespace AcDb {
enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 1, k3dFitVertex = 2 };
} // namespace AcDb

// A corner of an old polyline, which owns it. Nothing is seen of it by itself.
class AcDbVertex : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbVertex);

    // Of the kind that the file's flags tell: made by a curve fit, by a spline fit, or a frame's corner.
    bool isCurveFit() const { return (m_flags & kCurveFitFlag) != 0; }
    bool isSplineFit() const { return (m_flags & kSplineFitFlag) != 0; }
    bool isSplineFrame() const { return (m_flags & kSplineFrameFlag) != 0; }

protected:
    enum Flag : Adesk::UInt8 {
        kCurveFitFlag = 1,
        kTangentFlag = 2,
        kSplineFitFlag = 8,
        kSplineFrameFlag = 16,
        kIn3dPolylineFlag = 32
    };
    explicit AcDbVertex(Adesk::UInt8 flags = 0) : m_flags(flags) {}

    Adesk::UInt8 m_flags;
    AcGePoint3d m_position; // as filed
};

// Of a polyline in a plane. Its point is in the polyline's own coordinates; the height is the polyline's.
class AcDb2dVertex : public AcDbVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dVertex);
    AcDb2dVertex();
    explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0.0, double startWidth = 0.0,
                          double endWidth = 0.0, double tangent = 0.0);

    // Getters need read; setters need write and answer eOk unless something else is said.
    AcDb::Vertex2dType vertexType() const;
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& point);
    // The tangent of a quarter of the angle of the segment behind the vertex; above 0 counter-clockwise.
    double bulge() const;
    Acad::ErrorStatus setBulge(double bulge);
    // Of the segment behind the vertex. eInvalidInput for one below 0.
    double startWidth() const;
    Acad::ErrorStatus setStartWidth(double width);
    double endWidth() const;
    Acad::ErrorStatus setEndWidth(double width);
    // The direction of the curve that is fitted through the vertex, in radians; only looked at while it is
    // used.
    double tangent() const;
    Acad::ErrorStatus setTangent(double tangent);
    bool isTangentUsed() const;
    Acad::ErrorStatus useTangent();
    Acad::ErrorStatus ignoreTangent();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    // It moves in the polyline's plane.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    // The point where it is seen.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    struct Fields {
        double startWidth = 0.0;
        double endWidth = 0.0;
        // Widths that are one are filed in a shorter form, but came in the long one.
        bool filedApart = false;
        double bulge = 0.0;
        double tangent = 0.0;
    };
    Acad::ErrorStatus setFlag(Adesk::UInt8 flag, bool on);
    Fields m_fields;
};

// Of a polyline in space; its point is the world's.
class AcDb3dPolylineVertex : public AcDbVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex);
    AcDb3dPolylineVertex();
    explicit AcDb3dPolylineVertex(const AcGePoint3d& position);

    // Getters need read; setters need write and answer eOk.
    AcDb::Vertex3dType vertexType() const;
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& point);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
};
