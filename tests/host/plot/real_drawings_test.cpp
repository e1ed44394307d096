#include "plot_fixture.h"

#include "platform/files.h"
#include "platform/text.h"

namespace {

class PlottedDrawings : public PlotFixture, public testing::WithParamInterface<const char*> {};

} // namespace

TEST_P(PlottedDrawings, AreOnThePicture) {
    const std::wstring file =
        platform::fromUtf8(std::string(TALDORK_DRAWINGS "/") + GetParam() + "_AC1015.dwg");
    if (!platform::isOrdinaryFile(file))
        GTEST_SKIP() << "no " << GetParam();
    m_database = std::make_unique<AcDbDatabase>(false, true);
    ASSERT_EQ(m_database->readDwgFile(file.c_str()), Acad::eOk);
    m_page = embedded::PlotPage::ofPixels(320, 240);
    m_page.margin = 2.0;
    m_list = embedded::draw(*m_database, m_view);
    EXPECT_TRUE(m_list.failures.empty());
    m_view = embedded::fittedView(m_list, m_view, m_page);
    m_list = embedded::draw(*m_database, m_view);
    const auto seen = picture();
    const std::size_t ground = seen.count(0xFFFFFF, 0);
    EXPECT_LT(ground, seen.pixels.size() / 4 - 300);
    // The others have kinds in them that the host may come to know.
    if (std::string(GetParam()) == "small") {
        EXPECT_TRUE(isGolden("drawing_small"));
    }
}

INSTANTIATE_TEST_SUITE_P(Version2000, PlottedDrawings, testing::Values("small", "sample", "leader"));
