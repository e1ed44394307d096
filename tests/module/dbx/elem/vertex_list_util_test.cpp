#include "dbx/elem/vertex_list_util.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using orv::elem::GenericLoad;
using orv::elem::isEqualLoadValue;
using orv::elem::VertextListUtil;

namespace {

using Vertices = VertextListUtil::Vertices;

// With a text that numbers them from 0.
Vertices verticesOf(const std::vector<double>& values) {
    Vertices vertices;
    for (const double value : values) {
        GenericLoad::Vertex vertex;
        vertex.value = value;
        vertex.text = std::to_wstring(vertices.size());
        vertices.push_back(vertex);
    }
    return vertices;
}

std::vector<double> valuesOf(const Vertices& vertices) {
    std::vector<double> values;
    for (const GenericLoad::Vertex& vertex : vertices)
        values.push_back(vertex.value);
    return values;
}

// "01 12" for two sides.
std::wstring sidesOf(const Vertices& vertices, bool closed) {
    std::deque<Vertices> sides(3);
    VertextListUtil::splitIntoSegments(vertices, closed, sides);
    std::wstring text;
    for (const Vertices& side : sides) {
        text += text.empty() ? L"" : L" ";
        for (const GenericLoad::Vertex& vertex : side)
            text += vertex.text;
    }
    return text;
}

bool isUniform(const std::vector<double>& values) { return VertextListUtil::isUniform(verticesOf(values)); }

const double kTolerance = 2.220446049250313e-10;
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(VertexListUtil, AValueIsSetEverywhere) {
    Vertices vertices = verticesOf({1, 2, 3});
    VertextListUtil::setValue(5.5, vertices);
    EXPECT_EQ(valuesOf(vertices), (std::vector<double>{5.5, 5.5, 5.5}));
    EXPECT_EQ(vertices[2].text, L"2");
    Vertices none;
    VertextListUtil::setValue(5.5, none);
    EXPECT_TRUE(none.empty());
}

TEST(VertexListUtil, EverySignIsChanged) {
    Vertices vertices = verticesOf({1, -2, 0});
    VertextListUtil::negateValues(vertices);
    EXPECT_EQ(valuesOf(vertices), (std::vector<double>{-1, 2, 0}));
    EXPECT_TRUE(std::signbit(vertices[2].value));
}

TEST(VertexListUtil, NoneAndOneVertexAreUniform) {
    EXPECT_TRUE(isUniform({}));
    EXPECT_TRUE(isUniform({7}));
}

TEST(VertexListUtil, EqualValuesAreUniformAndOthersAreNot) {
    EXPECT_TRUE(isUniform({3, 3, 3}));
    EXPECT_FALSE(isUniform({3, 3, 4}));
    EXPECT_FALSE(isUniform({4, 3, 3}));
    EXPECT_FALSE(isUniform({3, 4}));
    EXPECT_FALSE(isUniform({3, -3}));
}

TEST(VertexListUtil, TheLastValueIsComparedWithTheFirst) {
    // Each step is within the tolerance, the whole way is not.
    EXPECT_TRUE(isUniform({0, 2e-10, 0}));
    EXPECT_FALSE(isUniform({0, 2e-10, 4e-10}));
}

TEST(VertexListUtil, LargeValuesAreComparedByTheirShare) {
    EXPECT_TRUE(isUniform({1e6, 1e6 + 1e-6}));
    EXPECT_FALSE(isUniform({1e6, 1e6 + 4e-6}));
    EXPECT_FALSE(isUniform({1, 1 + 1e-9}));
}

TEST(VertexListUtil, AZeroTakesTheComparisonByShareAway) {
    EXPECT_FALSE(isUniform({0, 1e-9}));
    EXPECT_TRUE(isUniform({0, 1e-10}));
    EXPECT_TRUE(isUniform({0, -0.0}));
}

TEST(VertexListUtil, WhatIsNoFiniteNumberEqualsNothing) {
    EXPECT_FALSE(isUniform({kNaN}));
    EXPECT_FALSE(isUniform({kInfinity}));
    EXPECT_FALSE(isUniform({1, kNaN}));
    EXPECT_FALSE(isEqualLoadValue(kNaN, kNaN));
}

TEST(LoadValueComparison, TheToleranceItselfIsEqual) {
    EXPECT_TRUE(isEqualLoadValue(kTolerance, 0));
    EXPECT_TRUE(isEqualLoadValue(0, -kTolerance));
    EXPECT_FALSE(isEqualLoadValue(std::nextafter(kTolerance, 1), 0));
    EXPECT_FALSE(isEqualLoadValue(0, std::nextafter(kTolerance, 1)));
}

TEST(LoadValueComparison, TheShareIsThatOfTheFirst) {
    // A share of 1 / (1 + share) lies between the two limits.
    const double share = kTolerance * 0.01;
    const double a = 1e12;
    EXPECT_TRUE(isEqualLoadValue(a, a + a * share * 0.999));
    EXPECT_FALSE(isEqualLoadValue(a, a + a * share * 1.001));
    EXPECT_TRUE(isEqualLoadValue(-a, -a - a * share * 0.999));
    // Far apart, only the first counts.
    EXPECT_FALSE(isEqualLoadValue(1, kInfinity));
    EXPECT_TRUE(isEqualLoadValue(kInfinity, 1));
}

TEST(VertexListSides, ThreeVerticesHaveTwoSidesAndThreeIfClosed) {
    EXPECT_EQ(sidesOf(verticesOf({1, 2, 3}), false), L"01 12");
    EXPECT_EQ(sidesOf(verticesOf({1, 2, 3}), true), L"01 12 20");
}

TEST(VertexListSides, TwoVerticesHaveOneSideAlsoIfClosed) {
    EXPECT_EQ(sidesOf(verticesOf({1, 2}), false), L"01");
    EXPECT_EQ(sidesOf(verticesOf({1, 2}), true), L"01");
}

TEST(VertexListSides, FewerVerticesHaveNoneAndWhatWasThereIsGone) {
    for (const std::vector<double>& values : {std::vector<double>{}, std::vector<double>{1}}) {
        std::deque<Vertices> sides(3);
        VertextListUtil::splitIntoSegments(verticesOf(values), true, sides);
        EXPECT_TRUE(sides.empty());
    }
}

TEST(VertexListSides, TheVerticesAreCopiedWithAllThatTheyHave) {
    Vertices vertices = verticesOf({1, 2});
    vertices[1].posSource = static_cast<orv::elem::PositionSource>(2);
    vertices[1].segment = 7;
    vertices[1].distanceMode = orv::elem::kAbsoluteDistance;
    vertices[1].position = 0.25;
    vertices[1].node = 9;
    vertices[1].point.set(1, 2, 3);
    std::deque<Vertices> sides;
    VertextListUtil::splitIntoSegments(vertices, false, sides);
    ASSERT_EQ(sides.size(), 1u);
    const GenericLoad::Vertex& copy = sides[0].at(1);
    EXPECT_EQ(copy.posSource, 2);
    EXPECT_EQ(copy.segment, 7u);
    EXPECT_EQ(copy.distanceMode, orv::elem::kAbsoluteDistance);
    EXPECT_EQ(copy.position, 0.25);
    EXPECT_EQ(copy.node, 9u);
    EXPECT_EQ(copy.point.z, 3.0);
    EXPECT_EQ(copy.value, 2.0);
    EXPECT_EQ(copy.text, L"1");
}

RC_GTEST_PROP(VertexListProperty, EachSideBeginsWhereTheOneBeforeEnds, (const std::vector<double>& values)) {
    std::deque<Vertices> sides;
    VertextListUtil::splitIntoSegments(verticesOf(values), true, sides);
    RC_ASSERT(sides.size() == (values.size() < 2 ? 0 : values.size() == 2 ? 1 : values.size()));
    for (std::size_t i = 0; i < sides.size(); ++i) {
        RC_ASSERT(sides[i].size() == 2u);
        RC_ASSERT(sides[i][0].text == std::to_wstring(i));
        RC_ASSERT(sides[i][1].text == std::to_wstring((i + 1) % values.size()));
    }
}
