#include "embedded/user_coordinate_system.h"

#include "dwg/container_r2000.h"
#include "dwg/file_frame.h"
#include "thing_fixture.h"

#include <limits>

using embedded::setUserCoordinateSystem;

namespace {

const AcGeVector3d& X = AcGeVector3d::kXAxis;
const AcGeVector3d& Y = AcGeVector3d::kYAxis;
const AcGeVector3d& Z = AcGeVector3d::kZAxis;

// The same numbers, not only within a tolerance.
void expectUcs(const AcDbDatabase& database, const AcGePoint3d& origin, const AcGeVector3d& x,
               const AcGeVector3d& y) {
    for (unsigned i = 0; i < 3; ++i) {
        EXPECT_EQ(database.ucsorg()[i], origin[i]);
        EXPECT_EQ(database.ucsxdir()[i], x[i]);
        EXPECT_EQ(database.ucsydir()[i], y[i]);
    }
}

class UserCoordinateSystem : public ThingFixture {
protected:
    // The variables of a saved drawing, as the file has them.
    embedded::dwg::HeaderVariables variables(const wchar_t* name) const {
        auto file = std::make_shared<const embedded::dwg::Bytes>(bytesOfFile(narrowPath(name)));
        const embedded::dwg::DrawingParts parts = embedded::dwg::readContainerR2000(file);
        return embedded::dwg::HeaderVariables::read(parts.headerVariables);
    }
};

} // namespace

TEST_F(UserCoordinateSystem, OfANewDrawingIsTheWorlds) {
    AcDbDatabase database(true);
    expectUcs(database, AcGePoint3d::kOrigin, X, Y);
    save(database, L"new.dwg");
    expectUcs(*read(L"new.dwg"), AcGePoint3d::kOrigin, X, Y);
}

TEST_F(UserCoordinateSystem, IsInTheFileOnceItIsSet) {
    AcDbDatabase database(true);
    const AcGeVector3d x(0.6, 0.8, 0.0);
    ASSERT_EQ(setUserCoordinateSystem(database, {1.5, -2.5, 1e9}, x, Z), Acad::eOk);
    expectUcs(database, {1.5, -2.5, 1e9}, x, Z);
    EXPECT_TRUE(database.isModified());
    save(database, L"ucs.dwg");
    EXPECT_FALSE(database.isModified());
    expectUcs(*read(L"ucs.dwg"), {1.5, -2.5, 1e9}, x, Z);
    const embedded::dwg::HeaderVariables filed = variables(L"ucs.dwg");
    EXPECT_EQ(filed.triple("UCSORG").y, -2.5);
    EXPECT_EQ(filed.triple("UCSXDIR").x, 0.6);
    EXPECT_EQ(filed.triple("UCSYDIR").z, 1.0);
    // Paper space's own stays.
    EXPECT_EQ(filed.triple("PUCSXDIR").x, 1.0);
    EXPECT_EQ(filed.triple("PUCSYDIR").y, 1.0);
}

TEST_F(UserCoordinateSystem, OfADrawingThatWasReadCanBeChanged) {
    AcDbDatabase database(true);
    const AcDbObjectId id = put(database, L"THING", made<FiledThing>(L"thing"));
    save(database, L"first.dwg");
    const auto second = read(L"first.dwg");
    EXPECT_FALSE(second->isModified());
    ASSERT_EQ(setUserCoordinateSystem(*second, {0, 0, 0}, Y, Z), Acad::eOk);
    save(*second, L"second.dwg");
    const auto third = read(L"second.dwg");
    expectUcs(*third, AcGePoint3d::kOrigin, Y, Z);
    EXPECT_EQ(find(*third, L"THING").handle(), id.handle());
}

TEST_F(UserCoordinateSystem, SavedAgainWithoutAChangeItIsTheSameFile) {
    AcDbDatabase database(true);
    ASSERT_EQ(setUserCoordinateSystem(database, {0.1, 0.2, 0.3}, -Y, X), Acad::eOk);
    save(database, L"ucs.dwg");
    save(*read(L"ucs.dwg"), L"again.dwg");
    EXPECT_TRUE(bytesOfFile(narrowPath(L"ucs.dwg")) == bytesOfFile(narrowPath(L"again.dwg")));
}

TEST_F(UserCoordinateSystem, HasNoNameAfterItIsSet) {
    AcDbDatabase database(true);
    save(database, L"first.dwg");
    const auto named = read(L"first.dwg");
    auto& frame = static_cast<embedded::dwg::FileFrame&>(*named->core().frame);
    frame.variables.setHandle("UCSNAME", 0x77);
    frame.variables.setNumber("UCSORTHOVIEW", 3);
    save(*named, L"named.dwg");
    EXPECT_EQ(variables(L"named.dwg").handle("UCSNAME"), 0x77u);
    EXPECT_EQ(variables(L"named.dwg").number("UCSORTHOVIEW"), 3u);
    ASSERT_EQ(setUserCoordinateSystem(*named, {0, 0, 1}, X, Y), Acad::eOk);
    save(*named, L"unnamed.dwg");
    EXPECT_EQ(variables(L"unnamed.dwg").handle("UCSNAME"), 0u);
    EXPECT_EQ(variables(L"unnamed.dwg").number("UCSORTHOVIEW"), 0u);
}

TEST_F(UserCoordinateSystem, AxesThatAreNoneAreRefused) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    AcDbDatabase database(true);
    const AcGePoint3d o;
    EXPECT_EQ(setUserCoordinateSystem(database, o, X, X), Acad::eInvalidInput);
    EXPECT_EQ(setUserCoordinateSystem(database, o, X, (X + Y).normal()), Acad::eInvalidInput);
    EXPECT_EQ(setUserCoordinateSystem(database, o, AcGeVector3d(), Y), Acad::eInvalidInput);
    EXPECT_EQ(setUserCoordinateSystem(database, o, X, AcGeVector3d()), Acad::eInvalidInput);
    EXPECT_EQ(setUserCoordinateSystem(database, o, X * 2.0, Y), Acad::eInvalidInput);
    EXPECT_EQ(setUserCoordinateSystem(database, o, X, Y * 0.5), Acad::eInvalidInput);
    EXPECT_EQ(setUserCoordinateSystem(database, o, {nan, 0, 0}, Y), Acad::eInvalidInput);
    EXPECT_EQ(setUserCoordinateSystem(database, {inf, 0, 0}, X, Y), Acad::eInvalidInput);
    EXPECT_EQ(setUserCoordinateSystem(database, {0, nan, 0}, X, Y), Acad::eInvalidInput);
    expectUcs(database, o, X, Y);
    EXPECT_FALSE(database.isModified());
}

TEST_F(UserCoordinateSystem, AxesFromSinglePrecisionAreTaken) {
    AcDbDatabase database(true);
    const double c = static_cast<float>(std::cos(0.3));
    const double s = static_cast<float>(std::sin(0.3));
    ASSERT_EQ(setUserCoordinateSystem(database, {0, 0, 0}, {c, s, 0}, {-s, c, 0}), Acad::eOk);
    expectUcs(database, {0, 0, 0}, {c, s, 0}, {-s, c, 0});
}

TEST_F(UserCoordinateSystem, OfADrawingIsReadAndKeptWhateverItsNumbers) {
    AcDbDatabase database(true);
    save(database, L"first.dwg");
    const auto odd = read(L"first.dwg");
    auto& core = odd->core();
    // No axes at all, as a damaged drawing may have them.
    core.ucs.origin.set(1e300, -0.0, 3);
    core.ucs.xAxis.set(0, 0, 0);
    core.ucs.yAxis.set(7, 7, 7);
    save(*odd, L"odd.dwg");
    const auto again = read(L"odd.dwg");
    expectUcs(*again, {1e300, -0.0, 3}, {0, 0, 0}, {7, 7, 7});
    EXPECT_TRUE(std::signbit(again->ucsorg().y));
    save(*again, L"again.dwg");
    EXPECT_TRUE(bytesOfFile(narrowPath(L"odd.dwg")) == bytesOfFile(narrowPath(L"again.dwg")));
}

TEST_F(UserCoordinateSystem, ChangedInARealDrawingEveryObjectStays) {
    NEED_DRAWING("small_AC1015.dwg");
    const std::string source = drawingFile("small_AC1015.dwg");
    const auto database = readFile(platform::fromUtf8(source));
    expectUcs(*database, AcGePoint3d::kOrigin, X, Y);
    ASSERT_EQ(setUserCoordinateSystem(*database, {1, 2, 3}, Z, X), Acad::eOk);
    save(*database, L"turned.dwg");
    expectUcs(*read(L"turned.dwg"), {1, 2, 3}, Z, X);
    EXPECT_EQ(objectsOf(bytesOfFile(narrowPath(L"turned.dwg"))), objectsOf(bytesOfFile(source)));
}
