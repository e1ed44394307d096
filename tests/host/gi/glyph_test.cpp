#include "dbents.h"
#include "embedded/display_list.h"
#include "embedded/host_start.h"
#include "gi/glyph_outline.h"
#include "gi/text_metrics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using embedded::glyphOutline;
using embedded::glyphWidth;
using embedded::TextSetting;

namespace {

double widthIn(const std::wstring& font) { return glyphWidth(L"Beam 17", {font, 1.0}); }

// The highest and lowest point of the letters.
std::pair<double, double> reach(const wchar_t* text) {
    double least = 1.0e9, most = -1.0e9;
    for (const embedded::GlyphOutline::Point& point : glyphOutline(text, {})->points) {
        least = std::min(least, point.y);
        most = std::max(most, point.y);
    }
    return {least, most};
}

double furthest(const embedded::GlyphOutline& outline) {
    double most = 0.0;
    for (const embedded::GlyphOutline::Point& point : outline.points)
        most = std::max(most, point.x);
    return most;
}

} // namespace

TEST(Glyphs, HeightsAreInCapitalLetters) {
    EXPECT_NEAR(reach(L"H").second, 1.0, 1.0e-3);
    EXPECT_NEAR(reach(L"H").first, 0.0, 1.0e-3);
    EXPECT_LT(reach(L"x").second, 0.8);
    EXPECT_LT(reach(L"g").first, -0.2);
}

TEST(Glyphs, WidthsAreThoseOfTheLetters) {
    EXPECT_EQ(glyphWidth(L"", {}), 0.0);
    // 752, 278 and 989 of 1000 parts of the size, which is 729 for capitals.
    EXPECT_NEAR(glyphWidth(L"H", {}), 751.95 / 729.0, 2.0e-3);
    EXPECT_NEAR(glyphWidth(L"i", {}), 277.83 / 729.0, 2.0e-3);
    EXPECT_NEAR(glyphWidth(L"W", {}), 988.77 / 729.0, 2.0e-3);
    EXPECT_NEAR(glyphWidth(L"HHHH", {}), 4.0 * glyphWidth(L"H", {}), 1.0e-9);
    EXPECT_GT(glyphWidth(L"H ", {}), glyphWidth(L"H", {}) + 0.3);
    EXPECT_EQ(glyphOutline(L"HHHH", {})->width, glyphWidth(L"HHHH", {}));
}

TEST(Glyphs, FontsThatAreNotInstalledAndShapeFontsAreTheUsualOne) {
    const double usual = widthIn(L"DejaVu Sans");
    for (const wchar_t* font : {L"", L"txt", L"romans.shx", L"no such font.ttf", L"C:\\fonts\\TXT.SHX",
                                L"DejaVuSans.ttf", L"c:\\windows\\fonts\\DEJAVUSANS.TTF"})
        EXPECT_EQ(widthIn(font), usual) << std::string(font, font + std::wcslen(font));
    EXPECT_GT(widthIn(L"DejaVuSans-Bold.ttf"), usual * 1.05);
    EXPECT_NE(widthIn(L"DejaVuSansMono.ttf"), usual);
}

TEST(Glyphs, TrackingIsAShareOfTheLettersWidth) {
    const double usual = glyphWidth(L"Beam", {});
    EXPECT_NEAR(glyphWidth(L"Beam", {L"", 1.5}), usual * 1.5, 1.0e-9);
    const auto wide = glyphOutline(L"Beam", {L"", 1.5});
    const double last = furthest(*wide);
    EXPECT_GT(last, usual * 1.2);
    EXPECT_LT(last, usual * 1.5);
    EXPECT_EQ(glyphWidth(L"Beam", {L"", std::numeric_limits<double>::quiet_NaN()}), usual);
}

TEST(Glyphs, ALongTextIsAsWideAsItsLetters) {
    EXPECT_NEAR(glyphWidth(std::wstring(5000, L'H'), {}), 5000.0 * glyphWidth(L"H", {}), 1.0e-6);
    const auto outline = glyphOutline(std::wstring(5000, L'H'), {});
    const double last = furthest(*outline);
    EXPECT_GT(last, 4999.5 * glyphWidth(L"H", {}));
    EXPECT_LT(last, outline->width);
}

TEST(Glyphs, WhatIsNoCharacterHurtsNobody) {
    EXPECT_GE(glyphWidth(std::wstring(1, static_cast<wchar_t>(0xD800)), {}), 0.0);
    EXPECT_GE(glyphWidth(L"a\nb\x01"
                         L"c",
                         {}),
              0.0);
    EXPECT_GT(glyphWidth(L"\x4E2D", {}), 0.0);
}

TEST(Glyphs, MirroredTextsHaveTheirBoxesOnTheOtherSide) {
    embedded::startHost();
    AcDbText text({1.0, 2.0, 0.0}, L"Beam", AcDbObjectId(), 2.0);
    const double width = embedded::textWidth(L"Beam", 2.0, 1.0);
    AcDbExtents box;
    text.mirrorInX(true);
    ASSERT_EQ(text.getGeomExtents(box), Acad::eOk);
    EXPECT_NEAR(box.minPoint().x, 1.0 - width, 1.0e-9);
    EXPECT_NEAR(box.maxPoint().x, 1.0, 1.0e-9);
    text.mirrorInX(false);
    text.mirrorInY(true);
    ASSERT_EQ(text.getGeomExtents(box), Acad::eOk);
    EXPECT_NEAR(box.minPoint().y, 0.0, 1.0e-9);
    EXPECT_NEAR(box.maxPoint().x, 1.0 + width, 1.0e-9);
}
