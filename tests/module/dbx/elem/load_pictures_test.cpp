// What loads look like, compared with golden pictures. The lists of all that is drawn are
// load_lists_test.cpp's.

#include "embedded/plot.h"
#include "module/dbx/elem/loaded_shapes.h"
#include "support/picture_compare.h"

#include <gtest/gtest.h>

using namespace testing_support;
using orv::elem::kPointLoad;

namespace {

struct Shown {
    const char* name;
    void (*build)(LoadedMember&);
    embedded::ViewParameters (*view)();
};

void setPoint(LoadedMember& loaded, int type, double value, const std::wstring& text) {
    loaded->setDistribution(kPointLoad);
    loaded->setType(type);
    loaded->setVertices(vertexAt({4, 0, 0}, value, text));
}

void rebuild(LoadedMember& loaded, std::size_t member) {
    loaded.member.clear();
    kMemberShapes[member].build(loaded);
}

const LoadSign& kPositive = kLoadSigns[0];
const LoadSign& kNegative = kLoadSigns[1];
const LoadSign& kChanging = kLoadSigns[2];

template <LoadShapeIndex shape>
void positiveLine(LoadedMember& loaded) {
    setLine(loaded, shape, kPositive);
}

// A load along the second or third axis of an element that is rolled.
template <int type>
void lineOnElement(LoadedMember& loaded) {
    putOnRolledElement(loaded);
    loaded.system.visSettings().setSize(3, 1.6);
    setLine(loaded, kLinear, kPositive);
    loaded->setType(type);
}

void textedLine(LoadedMember& loaded) {
    setLine(loaded, kLinear, kPositive);
    setTextAtEnds(loaded, L"LC 1", kPositive);
}

void slopedArea(LoadedMember& loaded, double height, double slope) {
    loaded.system.visSettings().setSize(3, 1.6);
    buildRoundedArea(loaded);
    setSlope(loaded, height, slope);
}

const Shown kLines[] = {
    {"uniform_beam",
     [](LoadedMember& l) {
         setLine(l, kUniform, kNegative);
         l->setType(16);
     },
     &fromFront},
    {"linear_beam", &textedLine, &fromFront},
    {"linear_beam_top",
     [](LoadedMember& l) {
         textedLine(l);
         l->setType(15);
     },
     &fromTop},
    {"linear_beam_side",
     [](LoadedMember& l) {
         textedLine(l);
         l->setType(19);
     },
     &fromSide},
    {"beam_aslant", &textedLine, &aslant},
    {"changing_beam",
     [](LoadedMember& l) {
         setLine(l, kLinear, kChanging);
         setTextAtEnds(l, L"", kChanging);
     },
     &fromFront},
    {"linear_mid_beam", &positiveLine<kLinearMid>, &fromFront},
    {"quadratic_start_beam", &positiveLine<kQuadraticStart>, &fromFront},
    {"quadratic_end_beam", &positiveLine<kQuadraticEnd>, &fromFront},
    {"cubic_start_beam", &positiveLine<kCubicStart>, &fromFront},
    {"cubic_end_beam", &positiveLine<kCubicEnd>, &fromFront},
    {"parabola_arch",
     [](LoadedMember& l) {
         rebuild(l, 1);
         setLine(l, kQuadraticMid, kPositive);
     },
     &fromFront},
    {"frame",
     [](LoadedMember& l) {
         rebuild(l, 2);
         setLine(l, kLinear, kPositive);
         l->setType(14);
     },
     &fromFront},
    {"moments",
     [](LoadedMember& l) {
         setLine(l, kUniform, kPositive);
         l->setType(26);
     },
     &fromFront},
    {"thermal_beam", &lineOnElement<53>, &aslant},
    {"local_beam", &lineOnElement<12>, &aslant},
    {"hidden_beam",
     [](LoadedMember& l) {
         textedLine(l);
         l->setType(13);
     },
     &fromFront},
};

const Shown kPointsAndAreas[] = {
    {"point_down", [](LoadedMember& l) { setPoint(l, 10, 10.0, L"10 kN"); }, &fromFront},
    {"point_up", [](LoadedMember& l) { setPoint(l, 10, -10.0, L"-10 kN"); }, &fromFront},
    {"point_sideways", [](LoadedMember& l) { setPoint(l, 14, 10.0, L"10 kN"); }, &fromFront},
    {"point_moment", [](LoadedMember& l) { setPoint(l, 26, -10.0, L"M = -10 kNm"); }, &fromFront},
    {"point_top", [](LoadedMember& l) { setPoint(l, 15, 10.0, L"10 kN"); }, &fromTop},
    {"area_top", [](LoadedMember& l) { slopedArea(l, 1.5, 0.1); }, &fromTop},
    {"area_aslant", [](LoadedMember& l) { slopedArea(l, 1.5, 0.1); }, &aslant},
    {"area_negative", [](LoadedMember& l) { slopedArea(l, -1.5, -0.1); }, &fromFront},
    {"area_side", [](LoadedMember& l) { slopedArea(l, 1.5, -0.5); }, &fromSide},
};

std::string pictureOf(LoadedMember& loaded, embedded::ViewParameters (*from)()) {
    // Hatches are many lines, and an area's page is smaller for that.
    const bool isArea = loaded->getDistribution() == orv::elem::kAreaLoad;
    const embedded::PlotPage page =
        isArea ? embedded::PlotPage::ofPixels(240, 160) : embedded::PlotPage::ofPixels(330, 220);
    const embedded::ViewParameters view = embedded::fittedView(loaded.draw(from()), from(), page);
    std::vector<unsigned char> bytes;
    std::string failure;
    EXPECT_TRUE(embedded::plot(loaded.draw(view), nullptr, view, page, embedded::PlotStyle(),
                               embedded::PlotFormat::kPng, bytes, failure))
        << failure;
    return {bytes.begin(), bytes.end()};
}

template <std::size_t count>
void comparePictures(const Shown (&all)[count]) {
    constexpr std::size_t kMostBytes = 10240;
    for (const Shown& shown : all) {
        const auto loaded = onMember(kMemberShapes[0]);
        loaded->system.visSettings().setSize(3, 0.8);
        loaded->system.visSettings().setSize(4, 0.3);
        loaded->member.showsItself = true;
        shown.build(*loaded);
        const std::string png = pictureOf(*loaded, shown.view);
        EXPECT_LE(png.size(), kMostBytes) << shown.name;
        EXPECT_TRUE(isGoldenPicture(std::string("loads/") + shown.name + ".png", png));
    }
}

} // namespace

TEST(LoadPicturesTest, lineLoadsLookAsTheyDid) { comparePictures(kLines); }

TEST(LoadPicturesTest, pointAndAreaLoadsLookAsTheyDid) { comparePictures(kPointsAndAreas); }
