#include "acutmem.h"
#include "dbmtext.h"
#include "embedded/display_list.h"
#include "entity_fixture.h"

namespace {

struct CodeRow {
    const wchar_t* contents;
    const wchar_t* plain;
};

const CodeRow kCodeRows[] = {
    {L"one\\Ptwo", L"one\ntwo"},
    {L"\\Pafter an empty line", L"\nafter an empty line"},
    {L"one\\~two", L"one two"},
    {L"{\\fArial|b1|i0|c0|p34;bold} thin", L"bold thin"},
    {L"{\\H2.5x;\\C1;big red}", L"big red"},
    {L"\\Lunder\\l \\Oover\\o \\Kthrough\\k", L"under over through"},
    {L"1 \\S1/2; inch", L"1 1/2 inch"},
    {L"\\S1#2;", L"1/2"},
    {L"x\\S2^ ;", L"x2"},
    {L"\\Sa\\/b/c;", L"a/b/c"},
    {L"a\\\\b \\{c\\}", L"a\\b {c}"},
    {L"%%c20 %%p1 45%%d", L"\u220520 \u00B11 45\u00B0"},
    {L"\\U+00E4", L"\u00E4"},
    {L"\\U+12", L"\\U+12"},
    {L"tab^Iand caret^ ", L"tab and caret^"},
    {L"\\pi1,l2;list", L"list"},
    {L"\\W0.8;\\Q15;\\T1.2;\\A1;set", L"set"},
    {L"unknown \\z", L"unknown \\z"},
    {L"no end \\H2", L"no end "},
    {L"no end \\S1/2", L"no end 1/2"},
    {L"last \\", L"last \\"},
    {L"", L""},
};

class MText : public EntityFixture {
protected:
    static std::vector<embedded::Primitive> drawn(AcDbMText& text) {
        embedded::DisplayList list = embedded::draw(text);
        EXPECT_TRUE(list.failures.empty());
        return list.primitives;
    }
};

} // namespace

TEST_F(MText, FormatCodesAreReadAndLettersStay) {
    for (const CodeRow& row : kCodeRows) {
        AcDbMText text;
        ASSERT_EQ(text.setContents(row.contents), 1);
        AcString plain;
        EXPECT_EQ(text.plainText(plain), Acad::eOk);
        std::wstring expected = row.plain;
        expected.erase(expected.find_last_not_of(L' ') + 1);
        EXPECT_EQ(std::wstring(plain.kACharPtr()), expected) << platform::toUtf8(row.contents);
    }
}

TEST_F(MText, EachParagraphIsALineBelowTheOneBefore) {
    AcDbMText text;
    text.setLocation({10.0, 20.0, 3.0});
    text.setTextHeight(3.0);
    text.setContents(L"one\\Ptwo\\P\\Pfour");
    const auto lines = drawn(text);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].kind, embedded::PrimitiveKind::kText);
    EXPECT_EQ(lines[0].text, L"one");
    EXPECT_EQ(lines[2].text, L"four");
    expectNear(lines[0].points[0], {10.0, 17.0, 3.0});
    expectNear(lines[1].points[0], {10.0, 12.0, 3.0});
    expectNear(lines[2].points[0], {10.0, 2.0, 3.0});
    EXPECT_EQ(lines[0].height, 3.0);
    EXPECT_NEAR(text.actualHeight(), 18.0, 1.0e-12);
    text.setLineSpacingFactor(2.0);
    EXPECT_NEAR(text.actualHeight(), 33.0, 1.0e-12);
}

TEST_F(MText, LinesAreBrokenAtBlanksSoThatNoneIsWiderThanTheText) {
    AcDbMText text;
    text.setTextHeight(1.0);
    text.setContents(L"many short words in one long row");
    const double whole = text.actualWidth();
    text.setWidth(whole / 2.5);
    const auto lines = drawn(text);
    ASSERT_GE(lines.size(), 3u);
    std::wstring joined;
    for (const auto& line : lines)
        joined += (joined.empty() ? L"" : L" ") + line.text;
    EXPECT_EQ(joined, L"many short words in one long row");
    EXPECT_LE(text.actualWidth(), whole / 2.5 + 1.0e-9);
    // A word that is too wide stays whole, and a fixed blank is none to break at.
    text.setWidth(0.1);
    text.setContents(L"wide\\~word next");
    const auto wide = drawn(text);
    ASSERT_EQ(wide.size(), 2u);
    EXPECT_EQ(wide[0].text, L"wide word");
}

TEST_F(MText, TheAttachmentSaysWhichPointOfTheBoxTheLocationIs) {
    for (int point = AcDbMText::kTopLeft; point <= AcDbMText::kBottomRight; ++point) {
        AcDbMText text;
        text.setTextHeight(2.0);
        text.setContents(L"longer line\\Px");
        ASSERT_EQ(text.setAttachment(static_cast<AcDbMText::AttachmentPoint>(point)), Acad::eOk);
        const double w = text.actualWidth(), h = text.actualHeight();
        const double left = -w * ((point - 1) % 3) / 2.0, top = h * ((point - 1) / 3) / 2.0;
        AcGePoint3dArray corners;
        text.getBoundingPoints(corners);
        ASSERT_EQ(corners.length(), 4);
        expectNear(corners[0], {left, top, 0.0});
        expectNear(corners[3], {left + w, top - h, 0.0});
        expectBox(extentsOf(text), {left, top - h, 0.0}, {left + w, top, 0.0});
        // The last line stands on the lower edge.
        EXPECT_NEAR(drawn(text)[1].points[0].y, top - h, 1.0e-9);
    }
    AcDbMText text;
    EXPECT_EQ(text.setAttachment(static_cast<AcDbMText::AttachmentPoint>(0)), Acad::eInvalidInput);
    EXPECT_EQ(text.setAttachment(AcDbMText::kTopMid), Acad::eInvalidInput);
}

TEST_F(MText, LinesRunAlongItsDirectionInItsPlane) {
    AcDbMText text;
    text.setNormal(-AcGeVector3d::kYAxis);
    text.setDirection(AcGeVector3d::kZAxis);
    text.setContents(L"a\\Pb");
    const auto lines = drawn(text);
    ASSERT_EQ(lines.size(), 2u);
    expectNear(lines[0].direction, AcGeVector3d::kZAxis);
    // Down is right of the direction: normal x direction points up.
    const AcGeVector3d down = lines[1].points[0] - lines[0].points[0];
    expectNear(down.normal(), AcGeVector3d::kXAxis);
    EXPECT_EQ(text.setDirection(AcGeVector3d()), Acad::eInvalidInput);
}

TEST_F(MText, ATransformationTakesPlaceDirectionAndSizeAlong) {
    AcDbMText text;
    text.setLocation({1.0, 0.0, 0.0});
    text.setWidth(10.0);
    text.setTextHeight(1.0);
    text.setContents(L"abc");
    AcGeMatrix3d uneven;
    uneven.entry[1][1] = 3.0;
    EXPECT_EQ(text.transformBy(uneven), Acad::eCannotScaleNonUniformly);
    ASSERT_EQ(text.transformBy(AcGeMatrix3d::rotation(kTestPi / 2.0, AcGeVector3d::kZAxis) *
                               AcGeMatrix3d::scaling(2.0)),
              Acad::eOk);
    expectNear(text.location(), {0.0, 2.0, 0.0});
    expectNear(text.direction(), AcGeVector3d::kYAxis);
    EXPECT_NEAR(text.rotation(), kTestPi / 2.0, 1.0e-12);
    EXPECT_NEAR(text.width(), 20.0, 1.0e-12);
    EXPECT_NEAR(text.textHeight(), 2.0, 1.0e-12);
}

TEST_F(MText, WhatIsNoValueIsRefused) {
    AcDbMText text;
    EXPECT_EQ(text.setContents(nullptr), 0);
    EXPECT_EQ(text.setTextHeight(0.0), Acad::eInvalidInput);
    EXPECT_EQ(text.setWidth(-1.0), Acad::eInvalidInput);
    EXPECT_EQ(text.setLineSpacingFactor(5.0), Acad::eInvalidInput);
    EXPECT_EQ(text.setNormal(AcGeVector3d()), Acad::eInvalidInput);
    EXPECT_EQ(text.setTextStyle(m_database->layerZero()), Acad::eInvalidInput);
    EXPECT_EQ(text.setFlowDirection(static_cast<AcDbMText::FlowDirection>(6)), Acad::eInvalidInput);
    AcDbVoidPtrArray parts;
    EXPECT_EQ(text.explode(parts), Acad::eCannotExplodeEntity);
}

TEST_F(MText, ExplodedItIsATextForEachLine) {
    auto* text = new AcDbMText;
    text->setDatabaseDefaults(m_database.get());
    text->setLocation({5.0, 5.0, 0.0});
    text->setRotation(0.5);
    text->setTextStyle(m_database->core().roots.textStyleStandard);
    text->setContents(L"a\\P\\Pb");
    const AcDbObjectId id = add(text);
    AcDbMText* opened = open<AcDbMText>(id);
    AcDbVoidPtrArray parts;
    ASSERT_EQ(opened->explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 2);
    for (void* part : parts) {
        const std::unique_ptr<AcDbText> line(static_cast<AcDbText*>(part));
        EXPECT_NEAR(line->rotation(), 0.5, 1.0e-12);
        EXPECT_EQ(line->height(), 0.2);
    }
    opened->close();
}

TEST_F(MText, SavedAndReadAgainItIsTheSame) {
    auto* text = new AcDbMText;
    text->setDatabaseDefaults(m_database.get());
    text->setTextStyle(m_database->core().roots.textStyleStandard);
    text->setContents(L"gr\u00FCn\\Pblau");
    AcDbMText* again = open<AcDbMText>(reopened(add(text)));
    AcString contents;
    EXPECT_EQ(again->contents(contents), Acad::eOk);
    EXPECT_STREQ(contents.kACharPtr(), L"gr\u00FCn\\Pblau");
    again->close();
}
