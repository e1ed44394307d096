#pragma once

#include "acgi.h"

// Draws over the host's that want to stop at some point, and count what is drawn all the same.
namespace testing_support {

struct DrawnCalls {
    int stopAt = 0; // from that call on each one answers that it is to be the last; 0 for never
    int made = 0;

    Adesk::Boolean answer() {
        ++made;
        return stopAt != 0 && made >= stopAt;
    }
};

// Draws nothing; where the drawing is comes from the host's.
template <class Base>
class StoppingGeometry : public Base {
public:
    StoppingGeometry(Base& host, DrawnCalls& calls) : m_host(host), m_calls(calls) {}

    void getModelToWorldTransform(AcGeMatrix3d& matrix) const override {
        m_host.getModelToWorldTransform(matrix);
    }
    void getWorldToModelTransform(AcGeMatrix3d& matrix) const override {
        m_host.getWorldToModelTransform(matrix);
    }
    Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) override {
        return m_host.pushModelTransform(normal);
    }
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) override {
        return m_host.pushModelTransform(matrix);
    }
    Adesk::Boolean popModelTransform() override { return m_host.popModelTransform(); }

    Adesk::Boolean circle(const AcGePoint3d&, const double, const AcGeVector3d&) const override {
        return m_calls.answer();
    }
    Adesk::Boolean circle(const AcGePoint3d&, const AcGePoint3d&, const AcGePoint3d&) const override {
        return m_calls.answer();
    }
    Adesk::Boolean circularArc(const AcGePoint3d&, const double, const AcGeVector3d&, const AcGeVector3d&,
                               const double, const AcGiArcType) const override {
        return m_calls.answer();
    }
    Adesk::Boolean circularArc(const AcGePoint3d&, const AcGePoint3d&, const AcGePoint3d&,
                               const AcGiArcType) const override {
        return m_calls.answer();
    }
    Adesk::Boolean polyline(const Adesk::UInt32, const AcGePoint3d*, const AcGeVector3d*,
                            Adesk::LongPtr) const override {
        return m_calls.answer();
    }
    Adesk::Boolean polygon(const Adesk::UInt32, const AcGePoint3d*) const override {
        return m_calls.answer();
    }
    Adesk::Boolean mesh(const Adesk::UInt32, const Adesk::UInt32, const AcGePoint3d*) const override {
        return m_calls.answer();
    }
    Adesk::Boolean shell(const Adesk::UInt32, const AcGePoint3d*, const Adesk::UInt32,
                         const Adesk::Int32*) const override {
        return m_calls.answer();
    }
    Adesk::Boolean text(const AcGePoint3d&, const AcGeVector3d&, const AcGeVector3d&, const double,
                        const double, const double, const ACHAR*) const override {
        return m_calls.answer();
    }
    Adesk::Boolean text(const AcGePoint3d&, const AcGeVector3d&, const AcGeVector3d&, const ACHAR*,
                        const Adesk::Int32, const Adesk::Boolean, const AcGiTextStyle&) const override {
        return m_calls.answer();
    }
    Adesk::Boolean xline(const AcGePoint3d&, const AcGePoint3d&) const override { return m_calls.answer(); }
    Adesk::Boolean ray(const AcGePoint3d&, const AcGePoint3d&) const override { return m_calls.answer(); }
    Adesk::Boolean pline(const AcDbPolyline&, const Adesk::UInt32, const Adesk::UInt32) const override {
        return m_calls.answer();
    }
    Adesk::Boolean worldLine(const AcGePoint3d[2]) override { return m_calls.answer(); }
    Adesk::Boolean draw(AcGiDrawable*) const override { return m_calls.answer(); }

protected:
    Base& m_host;
    DrawnCalls& m_calls;
};

class StoppingWorldGeometry : public StoppingGeometry<AcGiWorldGeometry> {
public:
    using StoppingGeometry::StoppingGeometry;
    void setExtents(AcGePoint3d* newExtents) const override { m_host.setExtents(newExtents); }
    void startAttributesSegment() override { m_host.startAttributesSegment(); }
};

class StoppingViewportGeometry : public StoppingGeometry<AcGiViewportGeometry> {
public:
    using StoppingGeometry::StoppingGeometry;
    Adesk::Boolean polylineEye(const Adesk::UInt32, const AcGePoint3d*) const override {
        return m_calls.answer();
    }
    Adesk::Boolean polygonEye(const Adesk::UInt32, const AcGePoint3d*) const override {
        return m_calls.answer();
    }
    Adesk::Boolean polylineDc(const Adesk::UInt32, const AcGePoint3d*) const override {
        return m_calls.answer();
    }
    Adesk::Boolean polygonDc(const Adesk::UInt32, const AcGePoint3d*) const override {
        return m_calls.answer();
    }
};

template <class Base, class Geometry>
class StoppingDraw : public Base {
public:
    StoppingDraw(Base& host, DrawnCalls& calls) : m_host(host), m_geometry(host.geometry(), calls) {}

    AcGiRegenType regenType() const override { return m_host.regenType(); }
    Adesk::Boolean regenAbort() const override { return m_host.regenAbort(); }
    AcGiSubEntityTraits& subEntityTraits() const override { return m_host.subEntityTraits(); }
    AcGiGeometry* rawGeometry() const override { return &m_geometry; }
    Adesk::Boolean isDragging() const override { return m_host.isDragging(); }
    double deviation(const AcGiDeviationType type, const AcGePoint3d& point) const override {
        return m_host.deviation(type, point);
    }
    Adesk::UInt32 numberOfIsolines() const override { return m_host.numberOfIsolines(); }
    AcGiContext* context() override { return m_host.context(); }
    Geometry& geometry() const override { return m_geometry; }

protected:
    Base& m_host;
    mutable Geometry m_geometry;
};

using StoppingWorldDraw = StoppingDraw<AcGiWorldDraw, StoppingWorldGeometry>;

class StoppingViewportDraw : public StoppingDraw<AcGiViewportDraw, StoppingViewportGeometry> {
public:
    using StoppingDraw::StoppingDraw;
    AcGiViewport& viewport() const override { return m_host.viewport(); }
    Adesk::UInt32 sequenceNumber() const override { return m_host.sequenceNumber(); }
    Adesk::Boolean isValidId(const Adesk::ULongPtr id) const override { return m_host.isValidId(id); }
    AcDbObjectId viewportObjectId() const override { return m_host.viewportObjectId(); }
};

} // namespace testing_support
