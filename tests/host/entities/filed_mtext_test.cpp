#include "acutmem.h"
#include "dbmtext.h"
#include "filed_entities.h"

TEST_F(FiledEntities, ATextOfSeveralLines) {
    FiledBits bits;
    bits.data.threeBitDoubles({1.0, 2.0, 3.0});
    bits.data.threeBitDoubles({0.0, 0.0, 1.0});
    bits.data.threeBitDoubles({0.0, 2.0, 0.0}); // as long as it was told
    bits.data.bitDouble(12.5);
    bits.data.bitDouble(0.5);
    bits.data.bitShort(AcDbMText::kMiddleRight);
    bits.data.bitShort(AcDbMText::kByStyle);
    bits.data.bitDouble(1.25); // size, as the file tells it
    bits.data.bitDouble(9.0);
    writeText(bits.data, "{\\fArial|b0;A}\\PB");
    bits.data.bitShort(AcDb::kExactly);
    bits.data.bitDouble(1.5);
    bits.data.bit(true);
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_style)});
    expectBothWays<AcDbMText>(bits, [this](const AcDbMText& text) {
        expectNear(text.location(), {1.0, 2.0, 3.0}, 0.0);
        expectNear(text.direction(), {0.0, 2.0, 0.0}, 0.0);
        EXPECT_NEAR(text.rotation(), kTestPi / 2.0, 1.0e-12);
        EXPECT_EQ(text.width(), 12.5);
        EXPECT_EQ(text.textHeight(), 0.5);
        EXPECT_EQ(text.attachment(), AcDbMText::kMiddleRight);
        EXPECT_EQ(text.flowDirection(), AcDbMText::kByStyle);
        EXPECT_EQ(text.lineSpacingStyle(), AcDb::kExactly);
        EXPECT_EQ(text.lineSpacingFactor(), 1.5);
        EXPECT_TRUE(text.textStyle() == m_style);
        ACHAR* contents = text.contents();
        EXPECT_STREQ(contents, L"{\\fArial|b0;A}\\PB");
        acutDelString(contents);
        AcString plain;
        EXPECT_EQ(text.plainText(plain), Acad::eOk);
        EXPECT_STREQ(plain.kACharPtr(), L"A\nB");
    });
}

TEST_F(FiledEntities, ATextOfSeveralLinesWithTheNumbersThatMostHave) {
    FiledBits bits;
    bits.data.threeBitDoubles({0.0, 0.0, 0.0});
    bits.data.threeBitDoubles({0.0, 0.0, 1.0});
    bits.data.threeBitDoubles({1.0, 0.0, 0.0});
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(1.0);
    bits.data.bitShort(1);
    bits.data.bitShort(1);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(0.0);
    bits.data.bitShort(0); // no letters, and no zero behind them
    bits.data.bitShort(1);
    bits.data.bitDouble(1.0);
    bits.data.bit(false);
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_style)});
    expectBothWays<AcDbMText>(bits, [](const AcDbMText& text) {
        EXPECT_EQ(text.actualHeight(), 0.0);
        EXPECT_EQ(text.actualWidth(), 0.0);
        AcDbExtents box;
        EXPECT_EQ(text.getGeomExtents(box), Acad::eOk);
        expectBox(box, AcGePoint3d::kOrigin, AcGePoint3d::kOrigin, 0.0);
    });
}

TEST_F(FiledEntities, ATextThatSpellsALetterOutKeepsThatSpelling) {
    FiledBits bits;
    bits.data.threeBitDoubles({0.0, 0.0, 0.0});
    bits.data.threeBitDoubles({0.0, 0.0, 1.0});
    bits.data.threeBitDoubles({1.0, 0.0, 0.0});
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(1.0);
    bits.data.bitShort(1);
    bits.data.bitShort(1);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(0.0);
    writeText(bits.data, "94\\U+00B0"); // the code page has that letter
    bits.data.bitShort(1);
    bits.data.bitDouble(1.0);
    bits.data.bit(false);
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_style)});
    expectBothWays<AcDbMText>(bits, [](const AcDbMText& text) {
        AcString contents;
        EXPECT_EQ(text.contents(contents), Acad::eOk);
        EXPECT_STREQ(contents.kACharPtr(), L"94\u00B0");
    });
    // A text that is set has the common spelling.
    AcDbMText text;
    ASSERT_EQ(read(text, bits), Acad::eOk);
    text.setContents(L"9\u00B0");
    DwgOutFiler changed(m_database->core().tag(), m_text), fresh(m_database->core().tag(), m_text);
    AcDbMText other;
    other.setTextHeight(1.0);
    other.setTextStyle(m_style);
    other.setContents(L"9\u00B0");
    ASSERT_EQ(text.dwgOutFields(&changed), Acad::eOk);
    ASSERT_EQ(other.dwgOutFields(&fresh), Acad::eOk);
    EXPECT_EQ(changed.data().bytes(), fresh.data().bytes());
}
