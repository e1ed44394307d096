#include "plot_fixture.h"
#include "support/golden.h"

#include "platform/files.h"
#include "platform/text.h"

#include <cmath>
#include <filesystem>
#include <limits>

using embedded::StandardView;

namespace {

class PlottedViews : public PlotFixture {
protected:
    // A box on the ground with its letters on top, as far as a box is needed to know where one stands.
    void addHouse() {
        const std::vector<AcGePoint3d> ground = {{-20, -15, 0}, {20, -15, 0}, {20, 15, 0}, {-20, 15, 0}};
        Primitive& walls = add(Kind::kPolygon, ground, 1);
        walls.traits.thickness = 20.0;
        add(Kind::kPolyline, {{-20, -15, 20}, {0, -15, 30}, {20, -15, 20}}, 5);
        addText(L"F", {-16, -11, 20}, 18.0);
        Primitive& front = addText(L"R", {-5, -15, 3}, 12.0);
        front.normal = -AcGeVector3d::kYAxis;
    }

    void see(StandardView view, const char* name) {
        addHouse();
        m_view.direction = embedded::directionOf(view);
        m_page.margin = 2.0;
        m_view = embedded::fittedView(m_list, m_view, m_page);
        EXPECT_TRUE(isGolden(name));
    }

    std::string failureOf() {
        std::vector<unsigned char> bytes = {1, 2, 3};
        std::string failure;
        EXPECT_FALSE(
            embedded::plot(m_list, m_database.get(), m_view, m_page, m_style, m_format, bytes, failure));
        EXPECT_TRUE(bytes.empty());
        EXPECT_EQ(failure.find('\n'), std::string::npos);
        return failure;
    }

    embedded::PlotFormat m_format = embedded::PlotFormat::kPng;
};

class TemporaryPictures {
public:
    TemporaryPictures() : m_folder(platform::makeTemporaryFolder()) {}
    ~TemporaryPictures() { std::filesystem::remove_all(std::filesystem::path(m_folder)); }
    std::wstring path(const wchar_t* name) const { return platform::joinPath(m_folder, name); }

private:
    std::wstring m_folder;
};

} // namespace

TEST_F(PlottedViews, FromTheTop) { see(StandardView::kTop, "view_top"); }
TEST_F(PlottedViews, FromBelow) { see(StandardView::kBottom, "view_bottom"); }
TEST_F(PlottedViews, FromTheFront) { see(StandardView::kFront, "view_front"); }
TEST_F(PlottedViews, FromTheBack) { see(StandardView::kBack, "view_back"); }
TEST_F(PlottedViews, FromTheLeft) { see(StandardView::kLeft, "view_left"); }
TEST_F(PlottedViews, FromTheRight) { see(StandardView::kRight, "view_right"); }
TEST_F(PlottedViews, FromTheSouthWest) { see(StandardView::kSouthWest, "view_sw"); }
TEST_F(PlottedViews, FromTheSouthEast) { see(StandardView::kSouthEast, "view_se"); }
TEST_F(PlottedViews, FromTheNorthEast) { see(StandardView::kNorthEast, "view_ne"); }
TEST_F(PlottedViews, FromTheNorthWest) { see(StandardView::kNorthWest, "view_nw"); }

TEST_F(PlottedViews, AFittedViewTouchesTheMarginsWithTheLongerSide) {
    add(Kind::kPolyline, {{1000, 0, 0}, {1200, 0, 0}, {1200, 50, 7}});
    m_page = embedded::PlotPage();
    m_page.width = 110.0;
    m_page.height = 60.0;
    m_page.margin = 5.0;
    m_view = embedded::fittedView(m_list, m_view, m_page);
    EXPECT_NEAR(m_view.target.x, 1100.0, 1e-9);
    EXPECT_NEAR(m_view.target.y, 25.0, 1e-9);
    EXPECT_NEAR(m_view.height, 120.0, 1e-9); // two units to the millimetre
    EXPECT_EQ(m_view.pixelsWide, m_page.pixelsWide());
    EXPECT_EQ(m_view.pixelsHigh, m_page.pixelsHigh());
}

TEST_F(PlottedViews, WhatHasNoEndIsNotFittedAndNothingLeavesTheViewAsItIs) {
    add(Kind::kXline, {{0, 0, 0}, {1, 1, 0}});
    m_view.target.set(3.0, 4.0, 5.0);
    embedded::ViewParameters fitted = embedded::fittedView(m_list, m_view, m_page);
    EXPECT_EQ(fitted.height, 90.0);
    EXPECT_EQ(fitted.target.x, 3.0);
    EXPECT_TRUE(embedded::eyeExtents(m_list, m_view).isEmpty());
    // A single point gives the middle and no height.
    add(Kind::kPolyline, {{7, 8, 0}, {7, 8, 0}});
    const double none = std::numeric_limits<double>::quiet_NaN();
    add(Kind::kPolyline, {{none, 8, 0}, {7, none, 0}});
    fitted = embedded::fittedView(m_list, m_view, m_page);
    EXPECT_EQ(fitted.height, 90.0);
    EXPECT_NEAR(fitted.target.x, 7.0, 1e-12);
}

TEST_F(PlottedViews, ATextThatIsSeenFromItsSideTakesNoRoom) {
    addText(L"Beam", {0, 0, 0}, 10.0);
    const AcDbExtents box = embedded::eyeExtents(m_list, m_view);
    EXPECT_GT(box.maxPoint().x, 20.0);
    EXPECT_NEAR(box.maxPoint().y, 10.0, 1e-9);
    EXPECT_LT(box.minPoint().y, -2.0); // for letters that hang down
    m_view.direction = embedded::directionOf(StandardView::kFront);
    EXPECT_TRUE(embedded::eyeExtents(m_list, m_view).isEmpty());
}

TEST_F(PlottedViews, ACircleInASlantedViewHasItsOwnBox) {
    addRound(Kind::kCircle, {0, 0, 0}, 10.0);
    m_view.direction = embedded::directionOf(StandardView::kSouthWest);
    const AcDbExtents box = embedded::eyeExtents(m_list, m_view);
    EXPECT_NEAR(box.maxPoint().x, 10.0, 1e-9);
    EXPECT_NEAR(box.maxPoint().y, 10.0 / std::sqrt(3.0), 1e-9);
}

TEST_F(PlottedViews, APageWithoutSizeOrWithTooManyPixelsIsRefused) {
    m_page.width = 0.0;
    EXPECT_EQ(failureOf(), "the page has no size");
    m_page.width = std::numeric_limits<double>::infinity();
    EXPECT_EQ(failureOf(), "the page has no size");
    m_page = embedded::PlotPage::ofPixels(30001, 10);
    EXPECT_EQ(failureOf(), "the picture would have too many pixels");
    m_page = embedded::PlotPage::ofPixels(25000, 25000);
    EXPECT_EQ(failureOf(), "the picture would have too many pixels");
    m_page.pixelsPerMillimetre = 0.0;
    EXPECT_EQ(failureOf(), "the page has no pixels");
    m_page.width = 6000.0;
    m_format = embedded::PlotFormat::kPdf;
    EXPECT_EQ(failureOf(), "the page is larger than 5080 mm");
    m_page = embedded::PlotPage();
    m_view.height = 0.0;
    EXPECT_EQ(failureOf(), "the view has no height");
}

TEST_F(PlottedViews, TheEndingOfTheNameIsTheFormat) {
    embedded::PlotFormat format = embedded::PlotFormat::kSvg;
    EXPECT_TRUE(embedded::plotFormatOf(L"a.b/c.PnG", format));
    EXPECT_EQ(format, embedded::PlotFormat::kPng);
    EXPECT_TRUE(embedded::plotFormatOf(L"c.pdf", format));
    EXPECT_EQ(format, embedded::PlotFormat::kPdf);
    EXPECT_TRUE(embedded::plotFormatOf(L"c.svg", format));
    EXPECT_EQ(format, embedded::PlotFormat::kSvg);
    EXPECT_FALSE(embedded::plotFormatOf(L"c.jpg", format));
    EXPECT_FALSE(embedded::plotFormatOf(L".svg", format));
    EXPECT_FALSE(embedded::plotFormatOf(L"", format));
}

TEST_F(PlottedViews, AFileIsReplacedWholeOrNotAtAll) {
    const TemporaryPictures folder;
    addHouse();
    std::string failure, bytes;
    for (const auto& [name, begin] : {std::pair<const wchar_t*, std::string>{L"a.svg", "<?xml"},
                                      {L"a.pdf", "%PDF-"},
                                      {L"a.png", "\x89PNG"}}) {
        ASSERT_TRUE(embedded::plotToFile(m_list, m_database.get(), m_view, m_page, m_style, folder.path(name),
                                         failure))
            << failure;
        ASSERT_TRUE(testing_support::readFile(platform::toUtf8(folder.path(name)), bytes));
        EXPECT_EQ(bytes.substr(0, begin.size()), begin);
    }
    m_view.height = -1.0;
    EXPECT_FALSE(embedded::plotToFile(m_list, m_database.get(), m_view, m_page, m_style,
                                      folder.path(L"a.png"), failure));
    std::string after;
    ASSERT_TRUE(testing_support::readFile(platform::toUtf8(folder.path(L"a.png")), after));
    EXPECT_EQ(after, bytes);
    m_view.height = 90.0;
    EXPECT_FALSE(embedded::plotToFile(m_list, m_database.get(), m_view, m_page, m_style,
                                      folder.path(L"no/such/a.png"), failure));
    EXPECT_NE(failure.find("a.png"), std::string::npos) << failure;
    EXPECT_FALSE(embedded::plotToFile(m_list, m_database.get(), m_view, m_page, m_style,
                                      folder.path(L"a.jpg"), failure));
    EXPECT_EQ(failure, "the name ends in none of .svg, .pdf and .png");
}

TEST_F(PlottedViews, TheSameListIsTheSameFile) {
    addHouse();
    EXPECT_EQ(bytes(embedded::PlotFormat::kSvg), bytes(embedded::PlotFormat::kSvg));
    EXPECT_EQ(png(), png());
}

TEST_F(PlottedViews, WithoutADrawingAllIsInTheUsualLook) {
    Primitive& line = add(Kind::kPolyline, {{-50, 0.5, 0}, {50, 0.5, 0}}, 256);
    line.traits.layer = m_database->layerTableId();
    m_database.reset();
    m_list.primitives[0].traits.layer.setNull();
    EXPECT_GE(picture().count(0x000000, 120), 98u);
}
