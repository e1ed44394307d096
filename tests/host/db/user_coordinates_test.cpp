#include "dbapserv.h"
#include "dbmain.h"
#include "dbxutil.h"
#include "embedded/user_coordinate_system.h"
#include "geassign.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace {

class UserCoordinates : public testing::Test {
protected:
    UserCoordinates() : m_before(acdbHostApplicationServices()->workingDatabase()) {
        acdbHostApplicationServices()->setWorkingDatabase(&m_database);
    }
    ~UserCoordinates() override { acdbHostApplicationServices()->setWorkingDatabase(m_before); }

    void setUcs(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y) {
        ASSERT_EQ(embedded::setUserCoordinateSystem(m_database, origin, x, y), Acad::eOk);
    }

    AcDbDatabase m_database;
    AcDbDatabase* m_before;
};

template <class Numbers>
void expectNumbers(const Numbers& got, double x, double y, double z) {
    EXPECT_EQ(got.x, x);
    EXPECT_EQ(got.y, y);
    EXPECT_EQ(got.z, z);
}

TEST_F(UserCoordinates, AreTheWorldsInANewDrawing) {
    const AcGePoint3d point(1.1, -2.2, 1e300);
    AcGePoint3d result;
    EXPECT_TRUE(acdbWcs2Ucs(asDblArray(point), asDblArray(result), false));
    expectNumbers(result, point.x, point.y, point.z);
    EXPECT_TRUE(acdbUcs2Wcs(asDblArray(point), asDblArray(result), true));
    expectNumbers(result, point.x, point.y, point.z);
}

TEST_F(UserCoordinates, OfAPointCountFromTheOriginAndThoseOfADirectionDoNot) {
    // X up, Y along the world's X: Z along the world's Y.
    setUcs({10, 20, 30}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis);
    const AcGePoint3d world(11, 22, 33);
    AcGePoint3d user;
    ASSERT_TRUE(acdbWcs2Ucs(asDblArray(world), asDblArray(user), false));
    expectNumbers(user, 3, 1, 2);
    AcGePoint3d back;
    ASSERT_TRUE(acdbUcs2Wcs(asDblArray(user), asDblArray(back), false));
    expectNumbers(back, 11, 22, 33);

    const AcGeVector3d direction(1, 2, 3);
    AcGeVector3d turned;
    ASSERT_TRUE(acdbWcs2Ucs(asDblArray(direction), asDblArray(turned), true));
    expectNumbers(turned, 3, 1, 2);
    AcGeVector3d turnedBack;
    ASSERT_TRUE(acdbUcs2Wcs(asDblArray(turned), asDblArray(turnedBack), true));
    expectNumbers(turnedBack, 1, 2, 3);
}

TEST_F(UserCoordinates, MayReplaceTheArgument) {
    setUcs({1, 1, 1}, AcGeVector3d::kYAxis, -AcGeVector3d::kXAxis);
    ads_point point = {2, 4, 6};
    ASSERT_TRUE(acdbWcs2Ucs(point, point, false));
    EXPECT_EQ(point[0], 3);
    EXPECT_EQ(point[1], -1);
    EXPECT_EQ(point[2], 5);
}

TEST_F(UserCoordinates, AreThoseOfTheDrawingThatIsWorkedIn) {
    setUcs({1, 2, 3}, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis);
    AcDbDatabase other;
    acdbHostApplicationServices()->setWorkingDatabase(&other);
    ads_point point = {5, 5, 5};
    ASSERT_TRUE(acdbWcs2Ucs(point, point, false));
    EXPECT_EQ(point[0], 5);
    acdbHostApplicationServices()->setWorkingDatabase(&m_database);
    ASSERT_TRUE(acdbWcs2Ucs(point, point, false));
    EXPECT_EQ(point[0], 4);
}

TEST_F(UserCoordinates, AreRefusedWithoutADrawingAndForNull) {
    ads_point point = {1, 2, 3};
    EXPECT_FALSE(acdbWcs2Ucs(nullptr, point, false));
    EXPECT_FALSE(acdbUcs2Wcs(point, nullptr, true));
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    ads_point result = {7, 8, 9};
    EXPECT_FALSE(acdbWcs2Ucs(point, result, false));
    EXPECT_FALSE(acdbUcs2Wcs(point, result, false));
    EXPECT_EQ(result[0], 7);
    EXPECT_EQ(result[2], 9);
}

// Any right-handed system whose axes have the rounding of single precision, as files have them.
RC_GTEST_FIXTURE_PROP(UserCoordinates, ComeBackAsTheyWent, ()) {
    const auto number = [] { return *rc::gen::inRange(-1000, 1000) / 8.0; };
    const AcGeVector3d first(number(), number(), number());
    const AcGeVector3d second(number(), number(), number());
    const AcGeVector3d normal = first.crossProduct(second);
    RC_PRE(normal.length() > 1.0);
    const auto single = [](const AcGeVector3d& v) {
        return AcGeVector3d(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z));
    };
    const AcGeVector3d x = single(first.normal());
    const AcGeVector3d y = single(normal.crossProduct(first).normal());
    const AcGePoint3d origin(number(), number(), number());
    RC_ASSERT(embedded::setUserCoordinateSystem(m_database, origin, x, y) == Acad::eOk);
    const AcGePoint3d point(number(), number(), number());
    AcGePoint3d user, back;
    RC_ASSERT(acdbWcs2Ucs(asDblArray(point), asDblArray(user), false));
    RC_ASSERT(acdbUcs2Wcs(asDblArray(user), asDblArray(back), false));
    RC_ASSERT(back.distanceTo(point) < 1e-9);
    RC_ASSERT(std::abs(user.distanceTo(AcGePoint3d()) - point.distanceTo(origin)) < 1e-3);
}

} // namespace
