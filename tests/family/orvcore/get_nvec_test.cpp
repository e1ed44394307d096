#include "orvcore/get_nvec.h"

#include "dbapserv.h"
#include "dbmain.h"
#include "embedded/user_coordinate_system.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

class GetNvec : public testing::Test {
protected:
    GetNvec() : m_before(acdbHostApplicationServices()->workingDatabase()) {}
    ~GetNvec() override { acdbHostApplicationServices()->setWorkingDatabase(m_before); }

    void work(AcDbDatabase* db) { acdbHostApplicationServices()->setWorkingDatabase(db); }

private:
    AcDbDatabase* m_before;
};

void expectSame(const AcGeVector3d& left, const AcGeVector3d& right) {
    EXPECT_TRUE(left.isEqualTo(right)) << left.x << " " << left.y << " " << left.z;
}

} // namespace

TEST_F(GetNvec, IsTheZAxisWithoutADrawing) {
    work(nullptr);
    expectSame(orv_get_nvec(), AcGeVector3d::kZAxis);
}

TEST_F(GetNvec, IsTheZAxisInANewDrawing) {
    AcDbDatabase db;
    work(&db);
    expectSame(orv_get_nvec(), AcGeVector3d::kZAxis);
}

TEST_F(GetNvec, StandsOnBothAxesOfTheUsersSystem) {
    AcDbDatabase db;
    work(&db);
    ASSERT_EQ(embedded::setUserCoordinateSystem(db, {1, 2, 3}, AcGeVector3d::kXAxis, AcGeVector3d::kZAxis),
              Acad::eOk);
    expectSame(orv_get_nvec(), -AcGeVector3d::kYAxis);
    ASSERT_EQ(embedded::setUserCoordinateSystem(db, {}, AcGeVector3d::kYAxis, AcGeVector3d::kXAxis),
              Acad::eOk);
    expectSame(orv_get_nvec(), -AcGeVector3d::kZAxis);
}

TEST_F(GetNvec, HasLengthOneWhateverTheRounding) {
    AcDbDatabase db;
    work(&db);
    const double third = static_cast<double>(std::sqrt(1.0F / 3.0F));
    const AcGeVector3d x = AcGeVector3d(third, third, third).normal();
    const AcGeVector3d y = AcGeVector3d(1, -1, 0).normal();
    ASSERT_EQ(embedded::setUserCoordinateSystem(db, {}, x, y), Acad::eOk);
    EXPECT_TRUE(orv_get_nvec().isUnitLength());
    EXPECT_NEAR(orv_get_nvec().dotProduct(x), 0.0, 1e-12);
    EXPECT_NEAR(orv_get_nvec().dotProduct(y), 0.0, 1e-12);
}

TEST_F(GetNvec, IsThatOfTheDrawingThatIsWorkedIn) {
    AcDbDatabase tilted, flat;
    ASSERT_EQ(embedded::setUserCoordinateSystem(tilted, {}, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis),
              Acad::eOk);
    work(&tilted);
    expectSame(orv_get_nvec(), AcGeVector3d::kXAxis);
    work(&flat);
    expectSame(orv_get_nvec(), AcGeVector3d::kZAxis);
}
