#pragma once

#include "embedded/display_list.h"
#include "gi/layer_states.h"

namespace embedded {

class DisplayRecorder;

// Eye coordinates are X to the right, Y up, Z towards the viewer, from the target.
AcGeMatrix3d eyeToWorldOf(const ViewParameters& view);

// The one viewport of a recording.
class DrawView final : public AcGiViewport {
public:
    DrawView(const ViewParameters& parameters, const DisplayRecorder& recorder, LayerStates& layers);

    void getModelToEyeTransform(AcGeMatrix3d& matrix) const override;
    void getEyeToModelTransform(AcGeMatrix3d& matrix) const override;
    void getWorldToEyeTransform(AcGeMatrix3d& matrix) const override { matrix = m_worldToEye; }
    void getEyeToWorldTransform(AcGeMatrix3d& matrix) const override { matrix = m_eyeToWorld; }
    Adesk::Boolean isPerspective() const override { return false; }
    Adesk::Boolean doPerspective(AcGePoint3d&) const override { return false; }
    Adesk::Boolean doInversePerspective(AcGePoint3d&) const override { return false; }
    void getNumPixelsInUnitSquare(const AcGePoint3d& point, AcGePoint2d& pixelArea,
                                  bool includePerspective) const override;
    void getCameraLocation(AcGePoint3d& location) const override;
    void getCameraTarget(AcGePoint3d& target) const override { target = m_parameters.target; }
    void getCameraUpVector(AcGeVector3d& upVector) const override;
    AcGeVector3d viewDir() const override { return m_direction; }
    Adesk::ULongPtr viewportId() const override { return m_parameters.viewportId; }
    Adesk::Int16 acadWindowId() const override { return static_cast<Adesk::Int16>(m_parameters.viewportId); }
    void getViewportDcCorners(AcGePoint2d& lowerLeft, AcGePoint2d& upperRight) const override;
    Adesk::Boolean getFrontAndBackClipValues(Adesk::Boolean& clipFront, Adesk::Boolean& clipBack,
                                             double& front, double& back) const override;
    double linetypeScaleMultiplier() const override { return 1.0; }
    double linetypeGenerationCriteria() const override { return 0.0; }
    Adesk::Boolean layerVisible(const AcDbObjectId& layer) const override;

    // Drawing units for one pixel.
    double pixelSize() const;

private:
    const ViewParameters& m_parameters;
    const DisplayRecorder& m_recorder;
    LayerStates& m_layers;
    AcGeVector3d m_direction;
    AcGeMatrix3d m_worldToEye;
    AcGeMatrix3d m_eyeToWorld;
};

} // namespace embedded
