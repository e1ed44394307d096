#include "acarray.h"
#include "dbcolor.h"
#include "dbgrip.h"
#include "dbintar.h"

#include <gtest/gtest.h>

namespace {

AcDbIntArray row(std::initializer_list<int> values) {
    AcDbIntArray made;
    for (const int value : values)
        made.append(value);
    return made;
}

} // namespace

TEST(Array, GrowsAtItsEndAndTellsWhere) {
    AcDbIntArray values;
    EXPECT_TRUE(values.isEmpty());
    EXPECT_EQ(values.append(7), 0);
    EXPECT_EQ(values.append(8), 1);
    EXPECT_EQ(values.length(), 2);
    EXPECT_EQ(values.first(), 7);
    EXPECT_EQ(values.last(), 8);
    EXPECT_EQ(values.append(values), row({7, 8, 7, 8}));
}

TEST(Array, InsertingAndRemovingOutsideOfTheRowDoesNothing) {
    AcDbIntArray values = row({1, 2, 3, 4});
    EXPECT_EQ(values.insertAt(5, 9), row({1, 2, 3, 4}));
    EXPECT_EQ(values.insertAt(-1, 9), row({1, 2, 3, 4}));
    EXPECT_EQ(values.removeAt(4), row({1, 2, 3, 4}));
    EXPECT_EQ(values.removeSubArray(2, 4), row({1, 2, 3, 4}));
    EXPECT_EQ(values.removeSubArray(2, 1), row({1, 2, 3, 4}));
    EXPECT_EQ(values.swap(0, 4), row({1, 2, 3, 4}));
    EXPECT_EQ(values.insertAt(4, values[0]), row({1, 2, 3, 4, 1}));
    EXPECT_EQ(values.removeSubArray(1, 2), row({1, 4, 1}));
    EXPECT_EQ(values.swap(0, 1), row({4, 1, 1}));
    EXPECT_EQ(values.reverse(), row({1, 1, 4}));
    EXPECT_EQ(values.removeFirst(), row({1, 4}));
    EXPECT_EQ(values.removeLast(), row({1}));
    EXPECT_TRUE(values.removeAll().isEmpty());
    EXPECT_TRUE(values.removeLast().isEmpty());
}

TEST(Array, FindsFromAPlaceOn) {
    AcDbIntArray values = row({5, 6, 5});
    int index = -7;
    EXPECT_EQ(values.find(5), 0);
    EXPECT_EQ(values.findFrom(5, 1), 2);
    EXPECT_EQ(values.find(9), -1);
    EXPECT_TRUE(values.find(6, index));
    EXPECT_EQ(index, 1);
    EXPECT_FALSE(values.find(9, index));
    EXPECT_EQ(index, 1);
    EXPECT_TRUE(values.contains(5, 2));
    EXPECT_FALSE(values.contains(6, 2));
    EXPECT_TRUE(values.remove(5));
    EXPECT_FALSE(values.remove(9));
    EXPECT_EQ(values, row({6, 5}));
}

TEST(Array, LengthsAreSetWithDefaultValues) {
    AcDbIntArray values = row({1, 2, 3});
    EXPECT_EQ(values.setLogicalLength(5), row({1, 2, 3, 0, 0}));
    EXPECT_EQ(values.setPhysicalLength(2), row({1, 2}));
    EXPECT_EQ(values.setAll(4), row({4, 4}));
    EXPECT_EQ(values.setAt(1, 9), row({4, 9}));
    EXPECT_TRUE(values.setLogicalLength(-1).isEmpty());
    EXPECT_GE(AcDbIntArray(16).physicalLength(), 16);
}

TEST(EntityColour, IndexAndComponentsReplaceEachOther) {
    AcCmEntityColor colour;
    EXPECT_TRUE(colour.isByLayer());
    EXPECT_EQ(colour.colorIndex(), 256);
    EXPECT_EQ(colour.setColorIndex(0), Acad::eOk);
    EXPECT_TRUE(colour.isByBlock());
    EXPECT_EQ(colour.setColorIndex(7), Acad::eOk);
    EXPECT_TRUE(colour.isByACI());
    EXPECT_EQ(colour.setColorIndex(257), Acad::eInvalidInput);
    EXPECT_EQ(colour.setColorIndex(-1), Acad::eInvalidInput);
    EXPECT_EQ(colour.colorIndex(), 7);
    EXPECT_EQ(colour.setRGB(1, 2, 3), Acad::eOk);
    EXPECT_TRUE(colour.isByColor());
    EXPECT_EQ(colour.blue(), 3);
    EXPECT_EQ(colour.colorIndex(), AcCmEntityColor::kACInone);
    EXPECT_TRUE(colour == AcCmEntityColor(1, 2, 3));
    EXPECT_TRUE(colour != AcCmEntityColor());
}

TEST(GripData, KeepsWhatTheApplicationGaveIt) {
    int own = 0;
    AcDbGripData grip({1.0, 2.0, 3.0}, &own);
    EXPECT_EQ(grip.appData(), &own);
    EXPECT_EQ(grip.gripPoint().z, 3.0);
    EXPECT_EQ(grip.toolTipFunc(), nullptr);
    grip.setToolTipFunc(
        [](AcDbGripData* held) -> const ACHAR* { return held->appData() != nullptr ? L"vertex" : L""; });
    EXPECT_STREQ(grip.toolTipFunc()(&grip), L"vertex");
    EXPECT_FALSE(grip.triggerGrip());
    grip.setTriggerGrip(true);
    grip.disableModeKeywords(true);
    grip.setIsPerViewport(true);
    EXPECT_TRUE(grip.triggerGrip() && grip.areModeKeywordsDisabled() && grip.isPerViewport());
}
