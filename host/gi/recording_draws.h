#pragma once

#include "gi/block_drawing.h"
#include "gi/display_recorder.h"
#include "gi/recording_geometry.h"

namespace embedded {

// What a drawing is made from: the database, for the screen.
class RecordingContext final : public AcGiContext {
public:
    explicit RecordingContext(DisplayRecorder& recorder) : m_recorder(recorder) {}
    Adesk::Boolean isPsOut() const override { return false; }
    Adesk::Boolean isPlotGeneration() const override { return false; }
    AcDbDatabase* database() const override { return m_recorder.database(); }
    bool isBoundaryClipping() const override { return false; }

private:
    DisplayRecorder& m_recorder;
};

// The half that world and viewport drawing share.
template <class Draw, class Geometry>
class RecordingDraw : public Draw {
public:
    explicit RecordingDraw(DisplayRecorder& recorder)
        : m_recorder(recorder), m_geometry(recorder), m_context(recorder) {}

    AcGiRegenType regenType() const override { return m_recorder.parameters().regenType; }
    Adesk::Boolean regenAbort() const override { return m_recorder.isCut(); }
    AcGiSubEntityTraits& subEntityTraits() const override { return m_recorder.traits(); }
    AcGiGeometry* rawGeometry() const override { return &m_geometry; }
    Adesk::Boolean isDragging() const override { return false; }
    double deviation(const AcGiDeviationType, const AcGePoint3d&) const override {
        return m_recorder.deviation();
    }
    Adesk::UInt32 numberOfIsolines() const override { return 4; }
    AcGiContext* context() override { return &m_context; }
    Geometry& geometry() const override { return m_geometry; }

protected:
    DisplayRecorder& m_recorder;

private:
    // Drawables draw through what they are given as constant.
    mutable RecordingGeometry<Geometry> m_geometry;
    RecordingContext m_context;
};

class RecordingWorldDraw final : public RecordingDraw<AcGiWorldDraw, AcGiWorldGeometry>, public BlockDrawing {
public:
    using RecordingDraw::RecordingDraw;
    void drawBlock(const AcDbObjectId& block, const AcGeMatrix3d& place,
                   const std::function<void()>& drawEntities) override {
        m_recorder.drawBlock(block, place, drawEntities);
    }
};

class RecordingViewportDraw final : public RecordingDraw<AcGiViewportDraw, AcGiViewportGeometry> {
public:
    using RecordingDraw::RecordingDraw;
    AcGiViewport& viewport() const override { return m_recorder.view(); }
    Adesk::UInt32 sequenceNumber() const override { return 0; }
    Adesk::Boolean isValidId(const Adesk::ULongPtr id) const override {
        return id == m_recorder.parameters().viewportId;
    }
    AcDbObjectId viewportObjectId() const override { return m_recorder.parameters().viewport; }
};

} // namespace embedded
