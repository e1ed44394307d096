#include "clone_fixture.h"

#include "entities/line.h"
#include "gemat3d.h"

namespace {

class Insert : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        const AcDbObjectId l = layer(*m_from, L"L", 3);
        for (const wchar_t* text : {L"A", L"B"}) {
            const AcDbObjectId id = entity(modelSpace(*m_from), text);
            change<CloneEntity>(id, [&](CloneEntity& e) {
                e.setLayer(l);
                e.place = AcGePoint3d(1, 2, 3);
            });
            m_entities.push_back(id);
        }
        change<CloneEntity>(m_entities[0], [&](CloneEntity& e) { e.fields.softPointers = {m_entities[1]}; });
    }
    static std::vector<AcDbObjectId> entitiesOf(AcDbObjectId blockId) {
        std::vector<AcDbObjectId> found;
        auto* block = open<AcDbBlockTableRecord>(blockId);
        AcDbBlockTableRecordIterator* made = nullptr;
        block->newIterator(made);
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
        for (AcDbObjectId id; !it->done(); it->step()) {
            it->getEntityId(id);
            found.push_back(id);
        }
        block->close();
        return found;
    }
    static AcGePoint3d placeOf(AcDbObjectId id) {
        auto* entity = open<CloneEntity>(id);
        const AcGePoint3d place = entity->place;
        entity->close();
        return place;
    }

    std::vector<AcDbObjectId> m_entities;
};

TEST_F(Insert, ADrawingBecomesABlock) {
    AcDbObjectId id;
    ASSERT_EQ(m_to->insert(id, L"PART", m_from.get()), Acad::eOk);
    EXPECT_EQ(id, record(m_to->blockTableId(), L"PART"));
    EXPECT_EQ(texts(id), (Texts{L"A", L"B"}));
    EXPECT_TRUE(texts(modelSpace(*m_to)).empty());
    EXPECT_FALSE(record(m_to->layerTableId(), L"L").isNull());
    const std::vector<AcDbObjectId> clones = entitiesOf(id);
    EXPECT_EQ(fieldsOf(clones[0]).softPointers, (std::vector<AcDbObjectId>{clones[1]}));
    EXPECT_EQ(placeOf(clones[0]), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(texts(modelSpace(*m_from)), (Texts{L"A", L"B"})) << "the other drawing stays as it was";
}

TEST_F(Insert, ADrawingGoesIntoModelSpaceMovedByTheMatrix) {
    ASSERT_EQ(m_to->insert(AcGeMatrix3d::translation({10, 0, 0}), m_from.get()), Acad::eOk);
    const std::vector<AcDbObjectId> clones = entitiesOf(modelSpace(*m_to));
    ASSERT_EQ(clones.size(), 2u);
    EXPECT_EQ(placeOf(clones[0]), AcGePoint3d(11, 2, 3));
    EXPECT_EQ(placeOf(clones[1]), AcGePoint3d(11, 2, 3));
    EXPECT_EQ(placeOf(m_entities[0]), AcGePoint3d(1, 2, 3));
}

TEST_F(Insert, IsUndoneAndRedoneAsOneStep) {
    const Texts before = everything(*m_to);
    embedded::beginCommand(*m_to);
    AcDbObjectId id;
    ASSERT_EQ(m_to->insert(id, L"PART", m_from.get()), Acad::eOk);
    const Texts after = everything(*m_to);
    ASSERT_TRUE(embedded::undo(*m_to));
    EXPECT_EQ(difference(everything(*m_to), before), L"");
    ASSERT_TRUE(embedded::redo(*m_to));
    EXPECT_EQ(difference(everything(*m_to), after), L"");
}

TEST_F(Insert, AnEntityThatCannotBeMovedLeavesNothing) {
    entity(modelSpace(*m_from), L"FIXED");
    const Texts before = everything(*m_to);
    EXPECT_EQ(m_to->insert(AcGeMatrix3d::translation({10, 0, 0}), m_from.get()),
              Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(difference(everything(*m_to), before), L"");
    EXPECT_TRUE(m_to->undoRecording());
}

TEST_F(Insert, AFailureTakesTheBlockBackToo) {
    nodeFaults().text = L"B";
    nodeFaults().wblockClone = Acad::eOutOfMemory;
    const Texts before = everything(*m_to);
    AcDbObjectId id = m_entities[0];
    EXPECT_EQ(m_to->insert(id, L"PART", m_from.get()), Acad::eOutOfMemory);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(difference(everything(*m_to), before), L"");
    EXPECT_TRUE(record(m_to->blockTableId(), L"PART").isNull());
}

TEST_F(Insert, WhatIsRefusedSaysWhy) {
    AcDbObjectId id;
    EXPECT_EQ(m_to->insert(id, L"PART", nullptr), Acad::eInvalidInput);
    EXPECT_EQ(m_to->insert(id, L"PART", m_to.get()), Acad::eInvalidInput);
    EXPECT_EQ(m_to->insert(id, nullptr, m_from.get()), Acad::eInvalidInput);
    EXPECT_EQ(m_to->insert(id, L"", m_from.get()), Acad::eInvalidInput);
    EXPECT_EQ(m_to->insert(AcGeMatrix3d(), nullptr), Acad::eInvalidInput);
    EXPECT_EQ(m_to->insert(AcGeMatrix3d(), m_to.get()), Acad::eInvalidInput);
    block(*m_to, L"PART", {L"own"});
    EXPECT_EQ(m_to->insert(id, L"part", m_from.get()), Acad::eDuplicateRecordName);
    EXPECT_EQ(texts(record(m_to->blockTableId(), L"PART")), (Texts{L"own"}));
}

TEST_F(Insert, AnEmptyDrawingMakesAnEmptyBlock) {
    AcDbDatabase empty(true);
    AcDbObjectId id;
    ASSERT_EQ(m_to->insert(id, L"PART", &empty), Acad::eOk);
    EXPECT_TRUE(entitiesOf(id).empty());
    EXPECT_EQ(m_to->insert(AcGeMatrix3d::translation({1, 1, 1}), &empty), Acad::eOk);
}

} // namespace
