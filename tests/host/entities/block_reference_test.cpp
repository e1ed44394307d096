#include "db/entity_list.h"
#include "entity_fixture.h"

namespace {

class BlockReference : public EntityFixture {
protected:
    void SetUp() override {
        EntityFixture::SetUp();
        m_block = addBlock(L"FRAME", {1.0, 0.0, 0.0});
        add(new AcDbLine({1.0, 0.0, 0.0}, {3.0, 0.0, 0.0}), m_block);
        add(new AcDbCircle({1.0, 0.0, 0.0}, AcGeVector3d::kZAxis, 0.5), m_block);
    }

    AcDbObjectId addAttribute(AcDbObjectId reference, const wchar_t* tag, const wchar_t* text) {
        auto* owner = open<AcDbBlockReference>(reference, AcDb::kForWrite);
        auto* attribute = new AcDbAttribute({10.0, 11.0, 0.0}, text, tag);
        AcDbObjectId id;
        EXPECT_EQ(owner->appendAttribute(id, attribute), Acad::eOk);
        attribute->close();
        owner->close();
        return id;
    }

    // Tag and text of each, in their order.
    std::wstring attributesOf(AcDbObjectId reference) {
        std::wstring all;
        auto* owner = open<AcDbBlockReference>(reference);
        const std::unique_ptr<AcDbObjectIterator> it(owner->attributeIterator());
        for (; !it->done(); it->step()) {
            AcDbAttribute* attribute = nullptr;
            EXPECT_EQ(owner->openAttribute(attribute, it->objectId(), AcDb::kForRead), Acad::eOk);
            all += std::wstring(attribute->tagConst()) + L"=" + attribute->textStringConst() + L";";
            EXPECT_TRUE(attribute->ownerId() == reference);
            attribute->close();
        }
        EXPECT_TRUE(it->objectId().isNull());
        owner->close();
        return all;
    }

    void erase(AcDbObjectId id, bool erasing = true) {
        auto* object = open<AcDbObject>(id, AcDb::kForWrite, true);
        EXPECT_EQ(object->erase(erasing), Acad::eOk);
        object->close();
    }

    // The references that the block's record lists.
    std::vector<AcDbObjectId> listed(AcDbObjectId block) {
        auto* record = open<AcDbBlockTableRecord>(block);
        const auto ids = embedded::BlockAccess::frameOf(*record).inserts;
        record->close();
        return ids;
    }

    AcDbObjectId m_block;
};

} // namespace

TEST_F(BlockReference, TheBlocksOriginGoesToThePosition) {
    AcDbBlockReference reference({10.0, 10.0, 0.0}, m_block);
    reference.setScaleFactors({2.0, 2.0, 2.0});
    reference.setRotation(kTestPi / 2.0);
    expectNear(reference.blockTransform() * AcGePoint3d(1.0, 0.0, 0.0), {10.0, 10.0, 0.0});
    expectNear(reference.blockTransform() * AcGePoint3d(3.0, 0.0, 0.0), {10.0, 14.0, 0.0});
    expectBox(extentsOf(reference), {9.0, 9.0, 0.0}, {11.0, 14.0, 0.0});
}

TEST_F(BlockReference, SettersRefuseWhatNoReferenceHas) {
    AcDbBlockReference reference({0.0, 0.0, 0.0}, m_block);
    EXPECT_EQ(reference.setScaleFactors({1.0, 0.0, 1.0}), Acad::eInvalidInput);
    EXPECT_EQ(reference.setBlockTableRecord(m_database->layerZero()), Acad::eInvalidInput);
    EXPECT_EQ(reference.setBlockTableRecord(AcDbObjectId()), Acad::eInvalidInput);
    EXPECT_EQ(reference.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(reference.setBlockTransform(AcGeMatrix3d::scaling(0.0)), Acad::eInvalidInput);
    AcDbObjectId id;
    AcDbAttribute attribute;
    EXPECT_EQ(reference.appendAttribute(id, nullptr), Acad::eNullEntityPointer);
    EXPECT_EQ(reference.appendAttribute(id, &attribute), Acad::eNoDatabase);
}

TEST_F(BlockReference, ATransformIsTakenApartIntoWhatAReferenceHas) {
    AcDbBlockReference reference({10.0, 10.0, 0.0}, m_block);
    reference.setScaleFactors({-1.0, 2.0, 3.0});
    reference.setRotation(0.25);
    reference.setNormal({1.0, 2.0, 3.0});
    const AcGeMatrix3d move = AcGeMatrix3d::rotation(1.5, {3.0, 1.0, 2.0}) * AcGeMatrix3d::scaling(2.0);
    const AcGeMatrix3d wanted = move * reference.blockTransform();
    EXPECT_EQ(reference.transformBy(move), Acad::eOk);
    EXPECT_TRUE(reference.blockTransform().isEqualTo(wanted, [] {
        AcGeTol tolerance;
        tolerance.setEqualVector(1.0e-9);
        return tolerance;
    }()));
    EXPECT_NEAR(reference.scaleFactors().sx, -2.0, 1.0e-9);
    EXPECT_NEAR(reference.scaleFactors().sy, 4.0, 1.0e-9);
}

TEST_F(BlockReference, AMirrorTurnsTheFirstScaleFactorRound) {
    AcDbBlockReference reference({10.0, 0.0, 0.0}, m_block);
    EXPECT_EQ(reference.transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), AcGeVector3d::kXAxis))),
              Acad::eOk);
    EXPECT_NEAR(reference.scaleFactors().sx, -1.0, 1.0e-12);
    EXPECT_NEAR(reference.scaleFactors().sy, 1.0, 1.0e-12);
    expectNear(reference.normal(), AcGeVector3d::kZAxis);
    expectBox(extentsOf(reference), {-12.0, -0.5, 0.0}, {-9.5, 0.5, 0.0});
}

TEST_F(BlockReference, AShearIsRefusedAndChangesNothing) {
    AcDbBlockReference reference({10.0, 0.0, 0.0}, m_block);
    AcGeMatrix3d shear;
    shear(0, 1) = 0.5;
    EXPECT_EQ(reference.transformBy(shear), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(reference.setBlockTransform(shear), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(reference.transformBy(AcGeMatrix3d::scaling(0.0)), Acad::eCannotScaleNonUniformly);
    expectNear(reference.position(), {10.0, 0.0, 0.0});
}

TEST_F(BlockReference, AttributesMoveAlongAndByThemselves) {
    const AcDbObjectId id = add(new AcDbBlockReference({10.0, 10.0, 0.0}, m_block));
    const AcDbObjectId attributeId = addAttribute(id, L"NR", L"17");
    auto* reference = open<AcDbBlockReference>(id, AcDb::kForWrite);
    AcDbIntArray which;
    which.append(1);
    EXPECT_EQ(reference->moveGripPointsAt(which, {1.0, 0.0, 0.0}), Acad::eOk);
    expectNear(reference->position(), {10.0, 10.0, 0.0});
    EXPECT_EQ(reference->transformBy(AcGeMatrix3d::translation({0.0, 5.0, 0.0})), Acad::eOk);
    which[0] = 2;
    EXPECT_EQ(reference->moveGripPointsAt(which, {1.0, 0.0, 0.0}), Acad::eInvalidIndex);
    AcGePoint3dArray points;
    AcDbIntArray modes, ids;
    EXPECT_EQ(reference->getGripPoints(points, modes, ids), Acad::eOk);
    ASSERT_EQ(points.length(), 2);
    expectNear(points[0], {10.0, 15.0, 0.0});
    expectNear(points[1], {11.0, 16.0, 0.0});
    reference->close();
    EXPECT_FALSE(attributeId.isErased());
}

TEST_F(BlockReference, AnAttributeThatIsOpenElsewhereRefusesTheMoveOfAll) {
    const AcDbObjectId id = add(new AcDbBlockReference({10.0, 10.0, 0.0}, m_block));
    const AcDbObjectId first = addAttribute(id, L"A", L"1");
    const AcDbObjectId second = addAttribute(id, L"B", L"2");
    auto* reader = open<AcDbAttribute>(second);
    auto* reference = open<AcDbBlockReference>(id, AcDb::kForWrite);
    const AcGeMatrix3d move = AcGeMatrix3d::translation({0.0, 5.0, 0.0});
    EXPECT_EQ(reference->transformBy(move), Acad::eWasOpenForRead);
    AcDbIntArray which;
    which.append(1);
    which.append(2);
    EXPECT_EQ(reference->moveGripPointsAt(which, {1.0, 0.0, 0.0}), Acad::eWasOpenForRead);
    reader->close();
    expectNear(reference->position(), {10.0, 10.0, 0.0});
    auto* attribute = open<AcDbAttribute>(first, AcDb::kForWrite);
    expectNear(attribute->position(), {10.0, 11.0, 0.0});
    attribute->close();
    which.append(2);
    EXPECT_EQ(reference->moveGripPointsAt(which, {1.0, 0.0, 0.0}), Acad::eOk);
    EXPECT_EQ(reference->transformBy(move), Acad::eOk);
    reference->close();
    attribute = open<AcDbAttribute>(first);
    expectNear(attribute->position(), {11.0, 16.0, 0.0});
    attribute->close();
    attribute = open<AcDbAttribute>(second);
    expectNear(attribute->position(), {12.0, 16.0, 0.0});
    attribute->close();
}

TEST_F(BlockReference, WhatAnEntityInsideThrowsLeavesNothingOpen) {
    class Throwing : public AcDbLine {
    protected:
        Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d&, AcDbEntity*&) const override {
            throw std::runtime_error("it will not be copied");
        }
    };
    const AcDbObjectId inside = add(new Throwing, m_block);
    const AcDbBlockReference reference({0.0, 0.0, 0.0}, m_block);
    AcDbVoidPtrArray parts;
    EXPECT_THROW(reference.explode(parts), std::runtime_error);
    EXPECT_TRUE(parts.isEmpty());
    open<AcDbBlockTableRecord>(m_block, AcDb::kForWrite)->close();
    open<AcDbEntity>(inside, AcDb::kForWrite)->close();
}

TEST_F(BlockReference, ErasingTakesTheAttributesAlongAndBringsTheSameBack) {
    const AcDbObjectId id = add(new AcDbBlockReference({0.0, 0.0, 0.0}, m_block));
    const AcDbObjectId first = addAttribute(id, L"A", L"1");
    const AcDbObjectId second = addAttribute(id, L"B", L"2");
    erase(first);
    EXPECT_EQ(attributesOf(id), L"B=2;");
    erase(id);
    EXPECT_TRUE(second.isErased());
    erase(id, false);
    EXPECT_TRUE(first.isErased());
    EXPECT_FALSE(second.isErased());
    EXPECT_EQ(attributesOf(id), L"B=2;");
}

TEST_F(BlockReference, AppendingAndErasingAreUndoneAndRedone) {
    const AcDbObjectId id = add(new AcDbBlockReference({0.0, 0.0, 0.0}, m_block));
    addAttribute(id, L"A", L"1");
    embedded::beginCommand(*m_database);
    addAttribute(id, L"B", L"2");
    embedded::beginCommand(*m_database);
    erase(id);
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(attributesOf(id), L"A=1;B=2;");
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(attributesOf(id), L"A=1;");
    ASSERT_TRUE(embedded::redo(*m_database));
    EXPECT_EQ(attributesOf(id), L"A=1;B=2;");
    ASSERT_TRUE(embedded::redo(*m_database));
    EXPECT_TRUE(id.isErased());
}

TEST_F(BlockReference, ComesBackFromAFileWithItsAttributesInTheirOrder) {
    auto* fresh = new AcDbBlockReference({1.0, 2.0, 3.0}, m_block);
    fresh->setScaleFactors({1.0, 2.0, -3.0});
    fresh->setRotation(0.5);
    fresh->setNormal({0.0, 1.0, 1.0});
    const AcDbObjectId id = add(fresh);
    addAttribute(id, L"A", L"1");
    addAttribute(id, L"B", L"2");
    const AcDbObjectId again = reopened(id);
    auto* reference = open<AcDbBlockReference>(again);
    expectNear(reference->position(), {1.0, 2.0, 3.0});
    EXPECT_EQ(reference->scaleFactors().sy, 2.0);
    EXPECT_EQ(reference->scaleFactors().sz, -3.0);
    EXPECT_EQ(reference->rotation(), 0.5);
    AcDbBlockTableRecord* record = open<AcDbBlockTableRecord>(reference->blockTableRecord());
    const ACHAR* name = nullptr;
    record->getName(name);
    EXPECT_STREQ(name, L"FRAME");
    record->close();
    AcDbSequenceEnd* end = nullptr;
    EXPECT_EQ(reference->openSequenceEnd(end, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(end->ownerId() == again);
    end->close();
    reference->close();
    EXPECT_EQ(attributesOf(again), L"A=1;B=2;");
}

TEST_F(BlockReference, WhatChangesOfTheAttributesOfAReadDrawingIsSaved) {
    const AcDbObjectId id = add(new AcDbBlockReference({0.0, 0.0, 0.0}, m_block));
    addAttribute(id, L"A", L"1");
    const AcDbHandle middle = addAttribute(id, L"B", L"2").handle();
    addAttribute(id, L"C", L"3");
    AcDbObjectId again = reopened(id);
    AcDbObjectId attribute;
    m_database->getAcDbObjectId(attribute, false, middle);
    erase(attribute);
    again = reopened(again);
    EXPECT_EQ(attributesOf(again), L"A=1;C=3;");
    addAttribute(again, L"D", L"4");
    again = reopened(again);
    EXPECT_EQ(attributesOf(again), L"A=1;C=3;D=4;");
}

TEST_F(BlockReference, AReferenceWithoutAttributesHasNone) {
    const AcDbObjectId id = reopened(add(new AcDbBlockReference({0.0, 0.0, 0.0}, m_block)));
    EXPECT_EQ(attributesOf(id), L"");
    auto* reference = open<AcDbBlockReference>(id);
    AcDbAttribute* attribute = nullptr;
    EXPECT_EQ(reference->openAttribute(attribute, id, AcDb::kForRead), Acad::eKeyNotFound);
    AcDbSequenceEnd* end = nullptr;
    EXPECT_EQ(reference->openSequenceEnd(end, AcDb::kForRead), Acad::eNullObjectId);
    reference->close();
}

TEST_F(BlockReference, TheBlocksRecordListsItsReferencesWhenItIsSaved) {
    const AcDbObjectId other = addBlock(L"OTHER");
    const AcDbHandle otherHandle = other.handle(), blockHandle = m_block.handle();
    const AcDbObjectId kept = add(new AcDbBlockReference({0.0, 0.0, 0.0}, m_block));
    const AcDbObjectId moved = add(new AcDbBlockReference({1.0, 0.0, 0.0}, m_block));
    const AcDbObjectId erased = add(new AcDbBlockReference({2.0, 0.0, 0.0}, m_block));
    const AcDbHandle movedHandle = moved.handle(), erasedHandle = erased.handle();
    AcDbObjectId id = reopened(kept);
    m_database->getAcDbObjectId(m_block, false, blockHandle);
    EXPECT_EQ(listed(m_block).size(), 3u);
    AcDbObjectId change, away, target;
    m_database->getAcDbObjectId(change, false, movedHandle);
    m_database->getAcDbObjectId(away, false, erasedHandle);
    m_database->getAcDbObjectId(target, false, otherHandle);
    erase(away);
    auto* reference = open<AcDbBlockReference>(change, AcDb::kForWrite);
    EXPECT_EQ(reference->setBlockTableRecord(target), Acad::eOk);
    reference->close();
    id = reopened(id);
    m_database->getAcDbObjectId(m_block, false, blockHandle);
    m_database->getAcDbObjectId(target, false, otherHandle);
    EXPECT_EQ(listed(m_block), std::vector<AcDbObjectId>{id});
    EXPECT_EQ(listed(target).size(), 1u);
}

TEST_F(BlockReference, ExplodesIntoWhatIsSeen) {
    AcDbBlockReference reference({10.0, 10.0, 0.0}, m_block);
    reference.setScaleFactors({2.0, 2.0, 2.0});
    AcDbVoidPtrArray parts;
    EXPECT_EQ(reference.explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 2);
    AcDbExtents box;
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
        box.addExt(extentsOf(*owned));
    }
    expectBox(box, extentsOf(reference).minPoint(), extentsOf(reference).maxPoint());
}

TEST_F(BlockReference, ExplodingWhatBecomesNoCircleGivesNoParts) {
    AcDbBlockReference reference({10.0, 10.0, 0.0}, m_block);
    reference.setScaleFactors({2.0, 1.0, 1.0});
    AcDbVoidPtrArray parts;
    EXPECT_EQ(reference.explode(parts), Acad::eCannotScaleNonUniformly);
    EXPECT_TRUE(parts.isEmpty());
}
