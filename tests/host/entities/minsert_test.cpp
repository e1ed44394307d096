#include "embedded/display_list.h"
#include "entity_fixture.h"

namespace {

class ArrayOfReferences : public EntityFixture {
protected:
    void SetUp() override {
        EntityFixture::SetUp();
        m_block = addBlock(L"TICK");
        add(new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}), m_block);
    }
    std::unique_ptr<AcDbMInsertBlock> array() const {
        return std::make_unique<AcDbMInsertBlock>(AcGePoint3d(10.0, 0.0, 0.0), m_block, Adesk::UInt16(3),
                                                  Adesk::UInt16(2), 4.0, 5.0);
    }
    AcDbObjectId m_block;
};

} // namespace

TEST_F(ArrayOfReferences, IsSeenInColumnsAndRows) {
    add(array().release());
    const embedded::DisplayList list = embedded::draw(*m_database);
    EXPECT_TRUE(list.failures.empty());
    EXPECT_EQ(list.primitives.size(), 6u);
    AcDbExtents box;
    for (const embedded::Primitive& primitive : list.primitives)
        for (const AcGePoint3d& point : primitive.points)
            box.addPoint(point);
    expectBox(box, {10.0, 0.0, 0.0}, {19.0, 5.0, 0.0});
}

TEST_F(ArrayOfReferences, SpacingsTurnWithTheReferenceButAreNotScaledByIt) {
    const auto turned = array();
    turned->setRotation(kTestPi / 2.0);
    turned->setScaleFactors({2.0, 2.0, 2.0});
    expectBox(extentsOf(*turned), {5.0, 0.0, 0.0}, {10.0, 10.0, 0.0});
}

TEST_F(ArrayOfReferences, ATransformScalesTheSpacings) {
    const auto moved = array();
    const AcGeMatrix3d move = AcGeMatrix3d::translation({0.0, 0.0, 7.0}) *
                              AcGeMatrix3d::rotation(0.5, AcGeVector3d::kXAxis) * AcGeMatrix3d::scaling(2.0);
    AcDbExtents expected;
    for (const AcGePoint3d& corner : {AcGePoint3d(10, 0, 0), AcGePoint3d(19, 0, 0), AcGePoint3d(19, 5, 0)})
        expected.addPoint(move * corner);
    EXPECT_EQ(moved->transformBy(move), Acad::eOk);
    EXPECT_NEAR(moved->columnSpacing(), 8.0, 1.0e-12);
    EXPECT_NEAR(moved->rowSpacing(), 10.0, 1.0e-12);
    expectBox(extentsOf(*moved), expected.minPoint(), expected.maxPoint());
}

TEST_F(ArrayOfReferences, AMirroredOneGrowsTheOtherWay) {
    const auto mirrored = array();
    EXPECT_EQ(mirrored->transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), AcGeVector3d::kXAxis))),
              Acad::eOk);
    expectBox(extentsOf(*mirrored), {-19.0, 0.0, 0.0}, {-10.0, 5.0, 0.0});
}

TEST_F(ArrayOfReferences, ExplodesIntoReferencesThatShowTheSame) {
    const auto whole = array();
    whole->setRotation(0.5);
    whole->setNormal({1.0, 2.0, 3.0});
    AcDbVoidPtrArray parts;
    EXPECT_EQ(whole->explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 6);
    AcDbExtents box;
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
        EXPECT_EQ(owned->isA(), AcDbBlockReference::desc());
        box.addExt(extentsOf(*owned));
    }
    expectBox(box, extentsOf(*whole).minPoint(), extentsOf(*whole).maxPoint());
}

TEST_F(ArrayOfReferences, CountsThatNobodyCanShowEndAtTheCorners) {
    const auto huge = array();
    huge->setColumns(65535);
    huge->setRows(65535);
    expectBox(extentsOf(*huge), {10.0, 0.0, 0.0}, {11.0 + 4.0 * 65534, 5.0 * 65534, 0.0});
    AcDbVoidPtrArray parts;
    EXPECT_EQ(huge->explode(parts), Acad::eCannotExplodeEntity);
    huge->setColumns(0);
    huge->setRows(0);
    expectBox(extentsOf(*huge), {10.0, 0.0, 0.0}, {11.0, 0.0, 0.0});
}

TEST_F(ArrayOfReferences, SavedAndReadAgainItIsTheSameWithItsAttributes) {
    const AcDbObjectId id = add(array().release());
    auto* made = open<AcDbMInsertBlock>(id, AcDb::kForWrite);
    auto* attribute = new AcDbAttribute({1.0, 1.0, 0.0}, L"17", L"NR");
    EXPECT_EQ(made->appendAttribute(attribute), Acad::eOk);
    attribute->close();
    made->close();
    const AcDbObjectId again = reopened(id);
    EXPECT_EQ(embedded::kindOf(again), L"MINSERT");
    auto* read = open<AcDbMInsertBlock>(again, AcDb::kForWrite);
    EXPECT_EQ(read->columns(), 3);
    EXPECT_EQ(read->rows(), 2);
    EXPECT_EQ(read->columnSpacing(), 4.0);
    EXPECT_EQ(read->rowSpacing(), 5.0);
    const std::unique_ptr<AcDbObjectIterator> it(read->attributeIterator());
    EXPECT_FALSE(it->done());
    embedded::beginCommand(*m_database);
    read->setColumns(9);
    EXPECT_EQ(read->erase(), Acad::eOk);
    read->close();
    EXPECT_TRUE(it->objectId().isErased());
    ASSERT_TRUE(embedded::undo(*m_database));
    read = open<AcDbMInsertBlock>(again);
    EXPECT_EQ(read->columns(), 3);
    read->close();
    EXPECT_FALSE(it->objectId().isErased());
}
