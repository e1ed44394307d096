#include "gi/draw_view.h"

#include "gi/display_recorder.h"

#include <algorithm>

namespace embedded {

AcGeMatrix3d eyeToWorldOf(const ViewParameters& view) {
    const AcGeVector3d direction =
        view.direction.isZeroLength() ? AcGeVector3d::kZAxis : view.direction.normal();
    AcGeVector3d right = direction.perpVector();
    // The picture turns counter-clockwise, so the viewer turns the other way.
    right.rotateBy(-view.twist, direction);
    AcGeMatrix3d matrix;
    matrix.setCoordSystem(view.target, right, direction.crossProduct(right), direction);
    return matrix;
}

DrawView::DrawView(const ViewParameters& parameters, const DisplayRecorder& recorder, LayerStates& layers)
    : m_parameters(parameters), m_recorder(recorder), m_layers(layers),
      m_direction(parameters.direction.isZeroLength() ? AcGeVector3d::kZAxis
                                                      : parameters.direction.normal()) {
    m_eyeToWorld = eyeToWorldOf(parameters);
    m_worldToEye = m_eyeToWorld.inverse();
}

void DrawView::getModelToEyeTransform(AcGeMatrix3d& matrix) const {
    matrix = m_worldToEye * m_recorder.modelToWorld();
}

void DrawView::getEyeToModelTransform(AcGeMatrix3d& matrix) const {
    // Asked for with every arrow head; most drawables are in no block.
    matrix = m_recorder.isInWorld() ? m_eyeToWorld : m_recorder.modelToWorld().inverse() * m_eyeToWorld;
}

double DrawView::pixelSize() const { return m_parameters.height / std::max(m_parameters.pixelsHigh, 1); }

void DrawView::getNumPixelsInUnitSquare(const AcGePoint3d&, AcGePoint2d& pixelArea, bool) const {
    pixelArea.set(1.0 / pixelSize(), 1.0 / pixelSize());
}

void DrawView::getCameraLocation(AcGePoint3d& location) const {
    location = m_parameters.target + m_direction;
}

void DrawView::getCameraUpVector(AcGeVector3d& upVector) const {
    upVector = m_eyeToWorld * AcGeVector3d::kYAxis;
}

void DrawView::getViewportDcCorners(AcGePoint2d& lowerLeft, AcGePoint2d& upperRight) const {
    upperRight.set(pixelSize() * m_parameters.pixelsWide / 2.0, m_parameters.height / 2.0);
    lowerLeft.set(-upperRight.x, -upperRight.y);
}

Adesk::Boolean DrawView::getFrontAndBackClipValues(Adesk::Boolean& clipFront, Adesk::Boolean& clipBack,
                                                   double& front, double& back) const {
    clipFront = clipBack = false;
    front = back = 0.0;
    return false;
}

Adesk::Boolean DrawView::layerVisible(const AcDbObjectId& layer) const {
    return m_parameters.showsHidden || m_layers.of(layer) == LayerStates::State::kShown;
}

} // namespace embedded
