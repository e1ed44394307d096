#include "acutmem.h"
#include "embedded/display_list.h"
#include "entity_fixture.h"
#include "gi/text_metrics.h"

namespace {

class TextAndPoint : public EntityFixture {};

double widthOf(const wchar_t* text, double height = 1.0, double factor = 1.0) {
    return embedded::textWidth(text, height, factor);
}

} // namespace

TEST_F(TextAndPoint, ATextStandsAtItsPosition) {
    AcDbText text({1.0, 2.0, 0.0}, L"Beam", AcDbObjectId(), 2.5);
    EXPECT_TRUE(text.isDefaultAlignment());
    EXPECT_EQ(text.setAlignmentPoint({5.0, 5.0, 0.0}), Acad::eNotApplicable);
    expectBox(extentsOf(text), {1.0, 2.0, 0.0}, {1.0 + widthOf(L"Beam", 2.5), 4.5, 0.0});
}

TEST_F(TextAndPoint, AlignmentPutsThePositionWhereTheModesWantIt) {
    AcDbText text({0.0, 0.0, 0.0}, L"Beam", AcDbObjectId(), 1.0);
    const double width = widthOf(L"Beam");
    text.setHorizontalMode(AcDb::kTextCenter);
    text.setVerticalMode(AcDb::kTextTop);
    EXPECT_EQ(text.setAlignmentPoint({10.0, 10.0, 0.0}), Acad::eOk);
    expectNear(text.position(), {10.0 - width / 2.0, 9.0, 0.0});
    text.setHorizontalMode(AcDb::kTextRight);
    text.setVerticalMode(AcDb::kTextVertMid);
    EXPECT_EQ(text.adjustAlignment(), Acad::eOk);
    expectNear(text.position(), {10.0 - width, 9.5, 0.0});
    text.setRotation(kTestPi / 2.0);
    EXPECT_EQ(text.adjustAlignment(), Acad::eOk);
    expectNear(text.position(), {10.5, 10.0 - width, 0.0});
}

TEST_F(TextAndPoint, FitAndAlignedFillTheWayBetweenTheirPoints) {
    AcDbText fit({0.0, 0.0, 0.0}, L"Beam", AcDbObjectId(), 1.0);
    fit.setHorizontalMode(AcDb::kTextFit);
    EXPECT_EQ(fit.setAlignmentPoint({0.0, 20.0, 0.0}), Acad::eOk);
    EXPECT_NEAR(fit.rotation(), kTestPi / 2.0, 1.0e-12);
    EXPECT_NEAR(fit.widthFactor() * widthOf(L"Beam"), 20.0, 1.0e-9);
    EXPECT_EQ(fit.height(), 1.0);
    AcDbText aligned({0.0, 0.0, 0.0}, L"Beam", AcDbObjectId(), 1.0);
    aligned.setHorizontalMode(AcDb::kTextAlign);
    EXPECT_EQ(aligned.setAlignmentPoint({20.0, 0.0, 0.0}), Acad::eOk);
    EXPECT_NEAR(widthOf(L"Beam", aligned.height()), 20.0, 1.0e-9);
    EXPECT_EQ(aligned.widthFactor(), 1.0);
}

TEST_F(TextAndPoint, TransformingKeepsTheLettersShapeInAllButTheirSlant) {
    AcDbText text({1.0, 0.0, 0.0}, L"Beam", AcDbObjectId(), 1.0);
    EXPECT_EQ(text.transformBy(AcGeMatrix3d::scaling(3.0)), Acad::eOk);
    EXPECT_NEAR(text.height(), 3.0, 1.0e-12);
    EXPECT_NEAR(text.widthFactor(), 1.0, 1.0e-12);
    AcGeMatrix3d wide;
    wide(0, 0) = 2.0;
    EXPECT_EQ(text.transformBy(wide), Acad::eOk);
    EXPECT_NEAR(text.height(), 3.0, 1.0e-12);
    EXPECT_NEAR(text.widthFactor(), 2.0, 1.0e-12);
    AcGeMatrix3d shear;
    shear(0, 1) = 1.0;
    EXPECT_EQ(text.transformBy(shear), Acad::eOk);
    EXPECT_NEAR(text.oblique(), kTestPi / 4.0, 1.0e-12);
    EXPECT_NEAR(text.height(), 3.0, 1.0e-12);
    AcGeMatrix3d nothing;
    nothing(1, 1) = 0.0;
    EXPECT_EQ(text.transformBy(nothing), Acad::eCannotScaleNonUniformly);
}

TEST_F(TextAndPoint, ATurnedTextTurnsInItsPlane) {
    AcDbText text({1.0, 0.0, 0.0}, L"Beam");
    EXPECT_EQ(text.transformBy(AcGeMatrix3d::rotation(0.5, AcGeVector3d::kZAxis)), Acad::eOk);
    EXPECT_NEAR(text.rotation(), 0.5, 1.0e-12);
    EXPECT_EQ(text.transformBy(AcGeMatrix3d::rotation(kTestPi / 2.0, AcGeVector3d::kXAxis)), Acad::eOk);
    expectNear(text.normal(), {0.0, -1.0, 0.0});
}

TEST_F(TextAndPoint, SettersRefuseWhatNoTextHas) {
    AcDbText text;
    EXPECT_EQ(text.setTextString(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(text.setHeight(0.0), Acad::eInvalidInput);
    EXPECT_EQ(text.setWidthFactor(-1.0), Acad::eInvalidInput);
    EXPECT_EQ(text.setTextStyle(AcDbObjectId()), Acad::eInvalidInput);
    EXPECT_EQ(text.setTextStyle(m_database->layerZero()), Acad::eInvalidInput);
    EXPECT_EQ(text.setTextStyle(m_database->core().roots.textStyleStandard), Acad::eOk);
    EXPECT_EQ(text.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(AcDbAttribute().setTag(nullptr), Acad::eInvalidInput);
}

TEST_F(TextAndPoint, ATextOfNoLettersHasAHeightAllTheSame) {
    const AcDbText text({1.0, 2.0, 0.0}, L"", AcDbObjectId(), 3.0);
    expectBox(extentsOf(text), {1.0, 2.0, 0.0}, {1.0, 5.0, 0.0});
}

TEST_F(TextAndPoint, ATextComesBackFromAFileWithAllItHas) {
    auto* fresh = new AcDbText({1.0, 2.0, 3.0}, L"\x00D8 20 %%d \U0001F600",
                               m_database->core().roots.textStyleStandard, 2.0, 0.25);
    fresh->setWidthFactor(0.75);
    fresh->setOblique(0.125);
    fresh->setThickness(4.0);
    fresh->setHorizontalMode(AcDb::kTextRight);
    fresh->setVerticalMode(AcDb::kTextTop);
    fresh->setAlignmentPoint({7.0, 8.0, 3.0});
    fresh->mirrorInX(true);
    const AcGePoint3d position = fresh->position();
    auto* text = open<AcDbText>(reopened(add(fresh)));
    EXPECT_STREQ(text->textStringConst(), L"\x00D8 20 %%d \U0001F600");
    ACHAR* copy = text->textString();
    EXPECT_STREQ(copy, text->textStringConst());
    acutDelString(copy);
    expectNear(text->position(), position, 0.0);
    expectNear(text->alignmentPoint(), {7.0, 8.0, 3.0}, 0.0);
    EXPECT_EQ(text->height(), 2.0);
    EXPECT_EQ(text->rotation(), 0.25);
    EXPECT_EQ(text->widthFactor(), 0.75);
    EXPECT_EQ(text->oblique(), 0.125);
    EXPECT_EQ(text->thickness(), 4.0);
    EXPECT_EQ(text->horizontalMode(), AcDb::kTextRight);
    EXPECT_EQ(text->verticalMode(), AcDb::kTextTop);
    EXPECT_TRUE(text->isMirroredInX());
    EXPECT_FALSE(text->isMirroredInY());
    EXPECT_TRUE(text->textStyle() == m_database->core().roots.textStyleStandard);
    text->close();
}

TEST_F(TextAndPoint, ATextModifiedUndoneRedone) {
    const AcDbObjectId id = add(new AcDbText({0.0, 0.0, 0.0}, L"old"));
    embedded::beginCommand(*m_database);
    auto* text = open<AcDbText>(id, AcDb::kForWrite);
    text->setTextString(L"new");
    text->close();
    ASSERT_TRUE(embedded::undo(*m_database));
    text = open<AcDbText>(id);
    EXPECT_STREQ(text->textStringConst(), L"old");
    text->close();
    ASSERT_TRUE(embedded::redo(*m_database));
    text = open<AcDbText>(id);
    EXPECT_STREQ(text->textStringConst(), L"new");
    text->close();
}

TEST_F(TextAndPoint, CodesCountAsTheSignsThatTheyStandFor) {
    EXPECT_EQ(embedded::withoutTextCodes(L"%%c20%%d%%p1%%%"), L"\x2205"
                                                              L"20\x00B0\x00B1"
                                                              L"1%");
    EXPECT_EQ(embedded::withoutTextCodes(L"%%uunder%%U %%065 %%C"), L"under A \x2205");
    EXPECT_EQ(embedded::withoutTextCodes(L"%%999 %%z %% %"), L"%%999 %%z %% %");
    EXPECT_EQ(widthOf(L""), 0.0);
    EXPECT_GT(widthOf(L"WWW"), widthOf(L"iii"));
    EXPECT_DOUBLE_EQ(widthOf(L"Beam", 2.0, 0.5), widthOf(L"Beam"));
}

TEST_F(TextAndPoint, CodesDrawLinesUnderAndOverIt) {
    const struct {
        const wchar_t* text;
        const wchar_t* read;
        bool isUnderlined, isOverlined;
    } rows[] = {{L"plain", L"plain", false, false},       {L"%%uunder", L"under", true, false},
                {L"a%%Ub%%uc", L"abc", true, false},      {L"%%oover%%O!", L"over!", false, true},
                {L"%%u%%oboth", L"both", true, true},     {L"never%%u", L"never", false, false},
                {L"on%%o%%ooff", L"onoff", false, false}, {L"%%u%%d", L"\x00B0", true, false}};
    for (const auto& row : rows) {
        AcDbText text({0.0, 0.0, 0.0}, row.text);
        const embedded::DisplayList list = embedded::draw(text);
        ASSERT_EQ(list.primitives.size(), 1u);
        EXPECT_EQ(list.primitives[0].text, row.read);
        EXPECT_EQ(list.primitives[0].style.isUnderlined(), row.isUnderlined) << row.read;
        EXPECT_EQ(list.primitives[0].style.isOverlined(), row.isOverlined) << row.read;
    }
}

TEST_F(TextAndPoint, APointHasExtentsGripsAndSnapsAtItself) {
    AcDbPoint point({1.0, 2.0, 3.0});
    point.setThickness(2.0);
    expectBox(extentsOf(point), {1.0, 2.0, 3.0}, {1.0, 2.0, 5.0});
    AcGePoint3dArray points;
    AcDbIntArray ids, modes, which;
    point.getOsnapPoints(AcDb::kOsModeNode, 0, {}, {}, AcGeMatrix3d(), points, ids);
    point.getOsnapPoints(AcDb::kOsModeEnd, 0, {}, {}, AcGeMatrix3d(), points, ids);
    EXPECT_EQ(points.length(), 1);
    which.append(0);
    EXPECT_EQ(point.moveStretchPointsAt(which, {1.0, 0.0, 0.0}), Acad::eOk);
    expectNear(point.position(), {2.0, 2.0, 3.0});
    which[0] = -1;
    EXPECT_EQ(point.moveGripPointsAt(which, {1.0, 0.0, 0.0}), Acad::eInvalidIndex);
    EXPECT_EQ(point.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
}

TEST_F(TextAndPoint, APointComesBackFromAFile) {
    auto* fresh = new AcDbPoint({0.0, -2.0, 1.0e20});
    fresh->setEcsRotation(0.5);
    fresh->setNormal(AcGeVector3d::kXAxis);
    fresh->setThickness(3.0);
    auto* point = open<AcDbPoint>(reopened(add(fresh)));
    expectNear(point->position(), {0.0, -2.0, 1.0e20}, 0.0);
    EXPECT_EQ(point->ecsRotation(), 0.5);
    EXPECT_EQ(point->thickness(), 3.0);
    expectNear(point->normal(), AcGeVector3d::kXAxis);
    point->close();
}
