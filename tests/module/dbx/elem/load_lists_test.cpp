// What every kind of load draws on every kind of member and in every view, compared with golden lists.

#include "module/dbx/elem/loaded_shapes.h"
#include "support/display_list_text.h"
#include "support/golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>

using namespace testing_support;
using embedded::PrimitiveKind;
using orv::elem::kPointLoad;
using Primitives = std::vector<embedded::Primitive>;

namespace {

constexpr double kMostOfPoints = 10.0;

bool isOfHatch(const embedded::Primitive& primitive) {
    return primitive.traits.colour == 1 && !primitive.traits.trueColour.isByColor();
}

// Lines of primitives, with what they look like on a line of its own in front of all those that look so. A
// list that is the same as one before it is told by that one's title.
class ListText {
public:
    // Begins the next list.
    void title(const std::string& what, const std::string& which) {
        finish();
        m_title = what + " " + which;
    }
    void heading(const std::string& text) { m_text << text << "\n"; }
    void add(const Primitives& part) {
        std::string looks;
        for (const auto& primitive : part) {
            std::string line = displayListText(primitive);
            const std::size_t bar = line.find(" | ");
            const std::string own = bar == std::string::npos ? "" : line.substr(bar + 3);
            line.resize(std::min(bar, line.size()));
            if (line.rfind("viewport ", 0) == 0)
                line.erase(0, 9);
            if (own != looks)
                m_text << "[" << own << "]\n";
            looks = own;
            m_text << line << "\n";
        }
    }
    std::string text() {
        finish();
        return m_all.str();
    }

private:
    void finish() {
        const std::string list = m_text.str();
        m_text.str("");
        if (!m_title.empty())
            m_all << "== " << m_title << "\n";
        const auto known = m_titles.emplace(list, m_title);
        m_all << (known.second ? list : "as " + known.first->second + "\n");
    }

    std::string m_title;
    std::ostringstream m_text; // of the list that is under way
    std::ostringstream m_all;
    std::map<std::string, std::string> m_titles; // by what is in the list
};

enum HatchShown { kWithHatch, kWithoutHatch };

// What is drawn for all views, once, and then what each of them adds.
void addAllViews(ListText& text, LoadedMember& loaded, HatchShown hatch = kWithoutHatch) {
    Primitives world = worldPart(loaded.draw(fromTop()));
    const auto textOf = [](const Primitives& part) {
        ListText all;
        all.add(part);
        return all.text();
    };
    const std::string fromAbove = textOf(world);
    if (hatch == kWithoutHatch)
        world.erase(std::remove_if(world.begin(), world.end(), &isOfHatch), world.end());
    text.add(world);
    for (const NamedView& view : kNamedViews) {
        const auto list = loaded.draw(view.make());
        EXPECT_EQ(textOf(worldPart(list)), fromAbove) << view.name;
        EXPECT_TRUE(list.failures.empty());
        text.heading(std::string("-- ") + view.name);
        text.add(viewPart(list));
    }
}

const char* signOf(double value) { return value < 0.0 ? "negative" : "positive"; }
std::string typeName(int type) { return "type " + std::to_string(type); }

// All that there are, but for those along axes that nobody has.
constexpr int kTypesInSpace[] = {10, 14, 15, 16, 17, 18, 19, 20, 24, 25, 26, 1004};
constexpr int kTypesOnElements[] = {11, 12, 13, 21, 22, 23, 51, 52, 53, 54, 55, 56};

// Calls that with a load of each type, those that need it on an element with axes.
void forEachType(const std::function<void(LoadedMember&, int type)>& call) {
    for (const int type : kTypesInSpace) {
        const auto loaded = onMember(kMemberShapes[0]);
        (*loaded)->setType(type);
        call(*loaded, type);
    }
    for (const int type : kTypesOnElements) {
        const auto loaded = onMember(kMemberShapes[0]);
        putOnRolledElement(*loaded);
        (*loaded)->setType(type);
        call(*loaded, type);
    }
}

} // namespace

TEST(LoadListsTest, lineLoadsOfEveryDistributionOnEveryMemberInEveryView) {
    for (const MemberShape& member : kMemberShapes) {
        ListText text;
        for (std::size_t shape = 0; shape < kLoadShapeCount; ++shape)
            for (const LoadSign& sign : kLoadSigns) {
                if (sign.first * sign.second < 0.0 && !kLoadShapes[shape].changesSign)
                    continue;
                const auto loaded = onMember(member);
                setSpaces(*loaded, 4);
                setLine(*loaded, static_cast<LoadShapeIndex>(shape), sign);
                text.title(kLoadShapes[shape].name, sign.name);
                addAllViews(text, *loaded);
            }
        EXPECT_TRUE(isGoldenText(std::string("loads/line_") + member.name + ".txt", text.text()));
    }
}

TEST(LoadListsTest, lineLoadsOfEveryTypeInEveryView) {
    ListText text;
    forEachType([&text](LoadedMember& loaded, int type) {
        setSpaces(loaded, 2);
        setLine(loaded, kLinear, kLoadSigns[2]);
        text.title("type", std::to_string(type));
        addAllViews(text, loaded);
    });
    EXPECT_TRUE(isGoldenText("loads/line_types.txt", text.text()));
}

TEST(LoadListsTest, thermalLoadsOnAnElementWithoutAxesOnEveryMember) {
    AcDbDatabase db(true);
    ListText text;
    for (const int type : {51, 52, 53, 54, 55, 56})
        for (const MemberShape& member : kMemberShapes) {
            const auto loaded = onMember(member);
            (*loaded)->setElement(db.layerZero());
            (*loaded)->setType(type);
            setSpaces(*loaded, 2);
            setLine(*loaded, kLinear, kLoadSigns[0]);
            text.title(typeName(type), member.name);
            text.add(loaded->draw(fromFront()).primitives);
        }
    EXPECT_TRUE(isGoldenText("loads/line_thermal.txt", text.text()));
}

TEST(LoadListsTest, textsOfLineLoadsInEveryView) {
    ListText text;
    for (const MemberShape& member : kMemberShapes)
        for (const LoadSign& sign : kLoadSigns) {
            const auto loaded = onMember(member);
            setLine(*loaded, kLinear, sign);
            (*loaded)->change = [](DrawnLoad::Picture& picture) { picture.flags = 0; };
            setTextAtEnds(*loaded, L"LC 1", sign);
            text.title(member.name, sign.name);
            for (const NamedView& view : kNamedViews) {
                text.heading(std::string("-- ") + view.name);
                text.add(viewPart(loaded->draw(view.make())));
            }
        }
    EXPECT_TRUE(isGoldenText("loads/line_texts.txt", text.text()));
}

TEST(LoadListsTest, pointLoadsOfEveryTypeInEveryView) {
    ListText text;
    for (const double sign : {1.0, -1.0})
        forEachType([&text, sign](LoadedMember& loaded, int type) {
            // What comes of a temperature is a small number.
            const double value = sign * (type >= 51 && type <= 56 ? kMostOfPoints / 200.0 : kMostOfPoints);
            loaded->setDistribution(kPointLoad);
            loaded->setVertices(vertexAt({4, 0, 0}, value, sign < 0.0 ? L"-10 kN" : L"10 kN"));
            text.title(typeName(type), signOf(sign));
            addAllViews(text, loaded);
        });
    EXPECT_TRUE(isGoldenText("loads/point_types.txt", text.text()));
}

TEST(LoadListsTest, pointLoadsOfTheDashedKind) {
    const DashedDrawing drawing;
    ListText text;
    for (const int type : {10, 26})
        for (const double value : {kMostOfPoints, -kMostOfPoints}) {
            const auto loaded = onMember(kMemberShapes[0]);
            (*loaded)->setDistribution(kPointLoad);
            (*loaded)->setClass(orv::elem::kLoadKindDashed);
            (*loaded)->setType(type);
            (*loaded)->setVertices(vertexAt({4, 0, 0}, value, L"10"));
            text.title(typeName(type), signOf(value));
            addAllViews(text, *loaded);
        }
    EXPECT_TRUE(isGoldenText("loads/point_dashed.txt", text.text()));
}

namespace {

struct Slope {
    const char* name;
    double height;
    double slope;
};
const Slope kSlopes[] = {
    {"even", 1.5, 0.0}, {"positive", 1.5, 0.1}, {"negative", -1.5, -0.1}, {"changing", 1.5, -0.5}};

struct AreaShape {
    const char* name;
    void (*build)(LoadedMember&);
};
const AreaShape kAreaShapes[] = {{"triangle", &buildTriangle}, {"rounded", &buildRoundedArea}};

} // namespace

TEST(LoadListsTest, areaLoadsOfEverySignInEveryView) {
    ListText text;
    for (const AreaShape& shape : kAreaShapes)
        for (const Slope& slope : kSlopes) {
            const auto loaded = onMember(kMemberShapes[0]);
            shape.build(*loaded);
            setSlope(*loaded, slope.height, slope.slope);
            const bool isFirst = &slope == kSlopes;
            setSpaces(*loaded, isFirst ? 10 : 5);
            setTextOfArea(*loaded, {1, 1, 0});
            text.title(shape.name, slope.name);
            addAllViews(text, *loaded, isFirst ? kWithHatch : kWithoutHatch);
        }
    EXPECT_TRUE(isGoldenText("loads/area.txt", text.text()));
}

TEST(LoadListsTest, areaLoadsOfEveryTypeInEveryView) {
    ListText text;
    forEachType([&text](LoadedMember& loaded, int type) {
        buildTriangle(loaded);
        setSlope(loaded, 1.5, -0.5);
        setSpaces(loaded, 3);
        text.title("type", std::to_string(type));
        addAllViews(text, loaded);
    });
    EXPECT_TRUE(isGoldenText("loads/area_types.txt", text.text()));
}

TEST(LoadListsTest, localLoadsInSpaceShowNoArrowsInAnyView) {
    for (const MemberShape& member : kMemberShapes)
        for (std::size_t shape = 0; shape < kLoadShapeCount; ++shape)
            for (const NamedView& view : kNamedViews) {
                const auto loaded = onMember(member);
                setLine(*loaded, static_cast<LoadShapeIndex>(shape), kLoadSigns[0]);
                (*loaded)->setType(13);
                EXPECT_TRUE(loaded->draw(view.make()).primitives.empty()) << member.name;
            }
}

TEST(LoadListsTest, localLoadsInSpaceShowTheirTextsAlone) {
    ListText text;
    for (const int type : {12, 13, 23, 53})
        for (const double sign : {1.0, -1.0}) {
            const std::string title = typeName(type) + " " + signOf(sign);
            const auto line = onMember(kMemberShapes[1]);
            (*line)->setType(type);
            const LoadSign ends{"", sign, sign * 2.0};
            setLine(*line, kLinear, ends);
            setTextAtEnds(*line, L"", ends);
            text.title(title, "line");
            addAllViews(text, *line);
            const auto area = onMember(kMemberShapes[0]);
            buildTriangle(*area);
            (*area)->setType(type);
            setSlope(*area, sign * 1.5, 0.0);
            setTextOfArea(*area, {1, 1, 0});
            text.title(title, "area");
            addAllViews(text, *area);
            const auto point = onMember(kMemberShapes[0]);
            (*point)->setType(type);
            (*point)->setDistribution(kPointLoad);
            (*point)->setVertices(vertexAt({4, 0, 0}, sign * (type == 53 ? 0.05 : 10.0), L"10"));
            text.title(title, "point");
            addAllViews(text, *point);
        }
    EXPECT_TRUE(isGoldenText("loads/hidden.txt", text.text()));
}
