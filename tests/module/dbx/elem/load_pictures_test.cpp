// Every kind of load on every kind of member, drawn and compared with golden lists and pictures.

#include "dbx/elem/load_distribution_functions.h"
#include "embedded/plot.h"
#include "module/dbx/elem/drawn_loads.h"
#include "orvshape/acad_draw.h"
#include "support/display_list_text.h"
#include "support/golden.h"
#include "support/picture_compare.h"

#include "geplane.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

using namespace testing_support;
using orv::elem::kAreaLoad;
using orv::elem::kLineLoad;
using orv::elem::kPointLoad;

namespace {

using Values = std::function<double(double length, double distance)>;

struct Member {
    const char* name;
    void (*build)(LoadedMember&);
};

void buildStraight(LoadedMember& loaded) { loaded.through({{0, 0, 0}, {8, 0, 0}}); }
void buildArc(LoadedMember& loaded) { loaded.arc({0, 0, 0}, {4, 0, 3}, {8, 0, 0}); }
void buildPolygon(LoadedMember& loaded) { loaded.through({{0, 0, 0}, {3, 0, 0}, {3, 0, 2}, {8, 0, 2}}); }

const Member kMembers[] = {{"straight", &buildStraight}, {"arc", &buildArc}, {"polygon", &buildPolygon}};

// A distribution whose ends or peak are these two values.
struct Distribution {
    const char* name;
    Values (*of)(double first, double second);
};

using namespace orv::elem;

const Distribution kDistributions[] = {
    {"uniform",
     [](double a, double) -> Values {
         return [a](double, double) { return _getValueAtPos_uniform(a, AcGePoint3d::kOrigin); };
     }},
    {"linear",
     [](double a, double b) -> Values {
         return [a, b](double L, double d) { return _getValueAtDist_linear(L, a, b, d); };
     }},
    {"linear_mid",
     [](double a, double b) -> Values {
         return [a, b](double L, double d) { return _getValueAtDist_linearMid(L, a, b, d); };
     }},
    {"quadratic_start",
     [](double a, double) -> Values {
         return [a](double L, double d) { return _getValueAtDist_quadratic_P_at_start(L, a, d); };
     }},
    {"quadratic_end",
     [](double, double b) -> Values {
         return [b](double L, double d) { return _getValueAtDist_quadratic_P_at_end(L, b, d); };
     }},
    {"cubic_start",
     [](double a, double) -> Values {
         return [a](double L, double d) { return _getValueAtDist_cubic_P_at_start(L, a, d); };
     }},
    {"cubic_end",
     [](double, double b) -> Values {
         return [b](double L, double d) { return _getValueAtDist_cubic_P_at_end(L, b, d); };
     }},
    {"quadratic_mid",
     [](double, double b) -> Values {
         return [b](double L, double d) { return _getValueAtDist_quadratic_P_at_mid_inverse(L, b, d); };
     }},
};

struct Sign {
    const char* name;
    double first;
    double second;
};
const Sign kSigns[] = {{"positive", 1.0, 2.0}, {"negative", -1.0, -2.0}, {"changing", -1.0, 2.0}};

struct View {
    const char* name;
    embedded::ViewParameters (*make)();
};
const View kViews[] = {{"top", &fromTop}, {"front", &fromFront}, {"side", &fromSide}, {"aslant", &aslant}};

std::unique_ptr<LoadedMember> onMember(const Member& member) {
    auto loaded = std::make_unique<LoadedMember>();
    loaded->system.visSettings().setSwitch(151, 0);
    member.build(*loaded);
    return loaded;
}

// Names and texts at the first and the last vertex of a line load.
void textAtEnds(LoadedMember& loaded, const std::wstring& name) {
    if (!name.empty())
        loaded.member.setProperties().add(30001U, name);
    const unsigned int last = loaded->numVertices() - 1;
    loaded->setTextAt(0, L"1.0 kN/m");
    loaded->setTextAt(static_cast<int>(last), L"2.0 kN/m");
    const double length = loaded.member.getLength();
    loaded->drawTexts = [&loaded, last, length](orv::AcadViewportDraw& vd, orv::System& system) {
        loaded->_draw_lineload_text_at(vd, system, 0.0, 0);
        loaded->_draw_lineload_text_at(vd, system, length, last);
    };
}

// A roof: the values are the height of a slanted plane over the boundary's plane.
void buildArea(LoadedMember& loaded, double slope) {
    loaded.member.clear();
    loaded.through({{0, 0, 0}, {6, 0, 0}});
    EXPECT_EQ(loaded.member.appendArcThrough({8, 2, 0}, {6, 4, 0}), Acad::eOk);
    EXPECT_EQ(loaded.member.appendLineTo({0, 4, 0}), Acad::eOk);
    EXPECT_EQ(loaded.member.appendClosingLine(), Acad::eOk);
    loaded.ofArea(1.5);
    loaded->setup = [slope](orv::System&, DrawnLoad::Picture& picture) {
        const AcGePlane geometry(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);
        const AcGePlane values(AcGePoint3d(0, 0, 1.5), AcGeVector3d(-slope, 0, 1));
        picture.getValueAtPosFn = [geometry, values](const AcGePoint3d& point) {
            return _getValueAtPos_planar(geometry, values, point);
        };
    };
}

embedded::DisplayList partAsList(const std::vector<embedded::Primitive>& part) {
    embedded::DisplayList list;
    list.primitives = part;
    return list;
}

} // namespace

TEST(LoadPicturesTest, lineLoadsOfEveryDistributionOnEveryMember) {
    for (const Member& member : kMembers) {
        std::ostringstream lines;
        for (const Distribution& distribution : kDistributions)
            for (const Sign& sign : kSigns) {
                const auto loaded = onMember(member);
                loaded->values(distribution.of(sign.first, sign.second));
                lines << "== " << distribution.name << " " << sign.name << "\n"
                      << displayListText(loaded->draw(fromFront()));
            }
        EXPECT_TRUE(isGoldenText(std::string("loads/line_") + member.name + ".txt", lines.str()));
    }
}

TEST(LoadPicturesTest, headsAndTextsOfLineLoadsInEveryView) {
    std::ostringstream lines;
    for (const Member& member : kMembers)
        for (const Sign& sign : kSigns)
            for (const View& view : kViews) {
                const auto loaded = onMember(member);
                loaded->values(kDistributions[1].of(sign.first, sign.second));
                textAtEnds(*loaded, L"LC 1");
                lines << "== " << member.name << " " << sign.name << " " << view.name << "\n"
                      << displayListText(partAsList(viewPart(loaded->draw(view.make()))));
            }
    EXPECT_TRUE(isGoldenText("loads/line_views.txt", lines.str()));
}

TEST(LoadPicturesTest, pointLoadsInEveryView) {
    std::ostringstream lines;
    for (const int type : {10, 14, 15, 26})
        for (const double value : {10.0, -10.0})
            for (const View& view : kViews) {
                const auto loaded = onMember(kMembers[0]);
                (*loaded)->setDistribution(kPointLoad);
                (*loaded)->setType(type);
                (*loaded)->setVertices(vertexAt({4, 0, 0}, value, L"10 kN"));
                lines << "== type " << type << " value " << value << " " << view.name << "\n"
                      << displayListText(loaded->draw(view.make()));
            }
    EXPECT_TRUE(isGoldenText("loads/point.txt", lines.str()));
}

TEST(LoadPicturesTest, areaLoadsInEveryView) {
    std::ostringstream lines;
    for (const double slope : {0.0, 0.1, -0.5})
        for (const View& view : kViews) {
            const auto loaded = onMember(kMembers[0]);
            buildArea(*loaded, slope);
            lines << "== slope " << slope << " " << view.name << "\n"
                  << displayListText(partAsList(viewPart(loaded->draw(view.make()))));
            if (view.make == &fromTop)
                lines << "-- world\n" << displayListText(partAsList(worldPart(loaded->draw(fromTop()))));
        }
    EXPECT_TRUE(isGoldenText("loads/area.txt", lines.str()));
}

TEST(LoadPicturesTest, momentsAndThermalLoads) {
    AcDbDatabase db(true);
    std::ostringstream lines;
    for (const int type : {20, 24, 25, 26, 51, 52, 53, 56, 1004})
        for (const Member& member : kMembers) {
            const auto loaded = onMember(member);
            (*loaded)->setElement(db.layerZero());
            loaded->values(kDistributions[1].of(1.0, 2.0));
            (*loaded)->setType(type);
            lines << "== type " << type << " " << member.name << "\n"
                  << displayListText(loaded->draw(fromFront()));
        }
    EXPECT_TRUE(isGoldenText("loads/types.txt", lines.str()));
}

TEST(LoadPicturesTest, localLoadsInSpaceShowNoArrowsInAnyView) {
    for (const Member& member : kMembers)
        for (const Distribution& distribution : kDistributions)
            for (const View& view : kViews) {
                const auto loaded = onMember(member);
                loaded->values(distribution.of(1.0, 2.0));
                (*loaded)->setType(13);
                EXPECT_TRUE(loaded->draw(view.make()).primitives.empty()) << member.name;
            }
}

namespace {

struct Shown {
    const char* name;
    void (*build)(LoadedMember&);
    embedded::ViewParameters (*view)();
};

template <std::size_t kDistribution, std::size_t kSign>
void lineOn(LoadedMember& loaded, const Member& member) {
    loaded.member.clear();
    member.build(loaded);
    loaded.values(kDistributions[kDistribution].of(kSigns[kSign].first, kSigns[kSign].second));
}

const Shown kShown[] = {
    {"uniform_beam",
     [](LoadedMember& l) {
         lineOn<0, 1>(l, kMembers[0]);
         l->setType(16);
     },
     &fromFront},
    {"linear_beam",
     [](LoadedMember& l) {
         lineOn<1, 0>(l, kMembers[0]);
         textAtEnds(l, L"LC 1");
     },
     &fromFront},
    {"changing_beam",
     [](LoadedMember& l) {
         lineOn<1, 2>(l, kMembers[0]);
         textAtEnds(l, L"");
     },
     &fromFront},
    {"parabola_arch", [](LoadedMember& l) { lineOn<7, 0>(l, kMembers[1]); }, &fromFront},
    {"frame",
     [](LoadedMember& l) {
         lineOn<1, 0>(l, kMembers[2]);
         l->setType(14);
     },
     &fromFront},
    {"moments",
     [](LoadedMember& l) {
         lineOn<0, 0>(l, kMembers[0]);
         l->setType(26);
     },
     &fromFront},
    {"beam_aslant",
     [](LoadedMember& l) {
         lineOn<1, 0>(l, kMembers[0]);
         textAtEnds(l, L"LC 1");
     },
     &aslant},
    {"point_down",
     [](LoadedMember& l) {
         l->setDistribution(kPointLoad);
         l->setVertices(vertexAt({4, 0, 0}, 10.0, L"10 kN"));
     },
     &fromFront},
    {"point_up",
     [](LoadedMember& l) {
         l->setDistribution(kPointLoad);
         l->setVertices(vertexAt({4, 0, 0}, -10.0, L"-10 kN"));
     },
     &fromFront},
    {"point_sideways",
     [](LoadedMember& l) {
         l->setDistribution(kPointLoad);
         l->setType(14);
         l->setVertices(vertexAt({4, 0, 0}, 10.0, L"10 kN"));
     },
     &fromFront},
    {"point_moment",
     [](LoadedMember& l) {
         l->setDistribution(kPointLoad);
         l->setType(26);
         l->setVertices(vertexAt({4, 0, 0}, -10.0, L"M = 10 kNm"));
     },
     &fromFront},
    {"area_top", [](LoadedMember& l) { buildArea(l, 0.1); }, &fromTop},
    {"area_aslant", [](LoadedMember& l) { buildArea(l, 0.1); }, &aslant},
};

} // namespace

TEST(LoadPicturesTest, picturesOfLoads) {
    for (const Shown& shown : kShown) {
        const auto loaded = onMember(kMembers[0]);
        loaded->system.visSettings().setSize(3, 0.8);
        loaded->system.visSettings().setSize(4, 0.3);
        loaded->member.showsItself = true;
        shown.build(*loaded);
        const embedded::PlotPage page = embedded::PlotPage::ofPixels(330, 220);
        const embedded::ViewParameters view =
            embedded::fittedView(loaded->draw(shown.view()), shown.view(), page);
        std::vector<unsigned char> bytes;
        std::string failure;
        ASSERT_TRUE(embedded::plot(loaded->draw(view), nullptr, view, page, embedded::PlotStyle(),
                                   embedded::PlotFormat::kPng, bytes, failure))
            << failure;
        const std::string png(bytes.begin(), bytes.end());
        EXPECT_TRUE(isGoldenPicture(std::string("loads/") + shown.name + ".png", png));
    }
}
