#include "embedded/display_list.h"
#include "embedded/host_start.h"
#include "gi/display_recorder.h"

#include <gtest/gtest.h>

namespace {

void expectNear(const AcGePoint3d& found, const AcGePoint3d& expected) {
    EXPECT_LE(found.distanceTo(expected), 1.0e-9)
        << "(" << found.x << ", " << found.y << ", " << found.z << ")";
}

class View : public testing::Test {
protected:
    void SetUp() override { embedded::startHost(); }

    AcGePoint3d toEye(const AcGePoint3d& point) {
        embedded::DisplayRecorder recorder(nullptr, m_view, m_list);
        AcGeMatrix3d matrix;
        recorder.view().getWorldToEyeTransform(matrix);
        return matrix * point;
    }

    embedded::ViewParameters m_view;
    embedded::DisplayList m_list;
};

} // namespace

TEST_F(View, FromAboveTheEyeSeesTheWorldsAxesFromTheTarget) {
    m_view.target.set(10.0, 20.0, 5.0);
    expectNear(toEye({11.0, 22.0, 5.5}), {1.0, 2.0, 0.5});
}

TEST_F(View, FromTheFrontZIsUp) {
    m_view.direction.set(0.0, -7.0, 0.0);
    expectNear(toEye({1.0, 2.0, 3.0}), {1.0, 3.0, -2.0});
}

TEST_F(View, ATwistTurnsThePictureCounterClockwise) {
    m_view.twist = 3.14159265358979323846 / 2.0;
    expectNear(toEye({1.0, 0.0, 0.0}), {0.0, 1.0, 0.0});
}

TEST_F(View, TellsDirectionUpAndCamera) {
    m_view.direction.set(0.0, -2.0, 0.0);
    m_view.target.set(1.0, 1.0, 1.0);
    embedded::DisplayRecorder recorder(nullptr, m_view, m_list);
    AcGePoint3d place;
    AcGeVector3d up;
    recorder.view().getCameraLocation(place);
    recorder.view().getCameraUpVector(up);
    expectNear(place, {1.0, 0.0, 1.0});
    expectNear(AcGePoint3d::kOrigin + up, {0.0, 0.0, 1.0});
    expectNear(AcGePoint3d::kOrigin + recorder.view().viewDir(), {0.0, -1.0, 0.0});
    recorder.view().getCameraTarget(place);
    expectNear(place, m_view.target);
}

TEST_F(View, PixelsComeFromTheHeight) {
    m_view.height = 50.0;
    m_view.pixelsHigh = 500;
    m_view.pixelsWide = 1000;
    embedded::DisplayRecorder recorder(nullptr, m_view, m_list);
    AcGePoint2d pixels, lower, upper;
    recorder.view().getNumPixelsInUnitSquare(AcGePoint3d::kOrigin, pixels, true);
    EXPECT_DOUBLE_EQ(pixels.x, 10.0);
    EXPECT_DOUBLE_EQ(pixels.y, 10.0);
    recorder.view().getViewportDcCorners(lower, upper);
    EXPECT_DOUBLE_EQ(lower.x, -50.0);
    EXPECT_DOUBLE_EQ(upper.y, 25.0);
    EXPECT_DOUBLE_EQ(recorder.worldDraw().deviation(kAcGiMaxDevForCircle, AcGePoint3d::kOrigin), 0.05);
}

TEST_F(View, AViewIsParallelAndClipsNothing) {
    embedded::DisplayRecorder recorder(nullptr, m_view, m_list);
    AcGePoint3d point(1.0, 2.0, 3.0);
    EXPECT_FALSE(recorder.view().isPerspective());
    EXPECT_FALSE(recorder.view().doPerspective(point));
    EXPECT_FALSE(recorder.view().doInversePerspective(point));
    expectNear(point, {1.0, 2.0, 3.0});
    Adesk::Boolean front = true, back = true;
    double frontAt = 1.0, backAt = 1.0;
    EXPECT_FALSE(recorder.view().getFrontAndBackClipValues(front, back, frontAt, backAt));
    EXPECT_FALSE(front);
    EXPECT_FALSE(back);
}

TEST_F(View, ADirectionWithoutLengthLooksFromAbove) {
    m_view.direction.set(0.0, 0.0, 0.0);
    expectNear(toEye({1.0, 2.0, 3.0}), {1.0, 2.0, 3.0});
}

TEST_F(View, ModelCoordinatesAreThoseOfThePushedTransform) {
    embedded::DisplayRecorder recorder(nullptr, m_view, m_list);
    recorder.push(AcGeMatrix3d::translation({5.0, 0.0, 0.0}));
    AcGeMatrix3d matrix;
    recorder.view().getModelToEyeTransform(matrix);
    expectNear(matrix * AcGePoint3d(1.0, 1.0, 0.0), {6.0, 1.0, 0.0});
    recorder.view().getEyeToModelTransform(matrix);
    expectNear(matrix * AcGePoint3d(6.0, 1.0, 0.0), {1.0, 1.0, 0.0});
}

TEST_F(View, OnlyItsOwnNumberIsAViewportsId) {
    m_view.viewportId = 7;
    embedded::DisplayRecorder recorder(nullptr, m_view, m_list);
    EXPECT_TRUE(recorder.viewportDraw().isValidId(7));
    EXPECT_FALSE(recorder.viewportDraw().isValidId(2));
    EXPECT_EQ(recorder.viewportDraw().viewport().viewportId(), 7u);
}
