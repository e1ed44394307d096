#include "dbidmap.h"
#include "entity_fixture.h"

namespace {

class ClonedReference : public EntityFixture {
protected:
    void SetUp() override {
        EntityFixture::SetUp();
        m_block = addBlock(L"FRAME");
        add(new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}), m_block);
        m_reference = add(new AcDbBlockReference({10.0, 0.0, 0.0}, m_block));
        auto* reference = open<AcDbBlockReference>(m_reference, AcDb::kForWrite);
        for (const wchar_t* tag : {L"A", L"B"}) {
            auto* attribute = new AcDbAttribute({0.0, 0.0, 0.0}, L"1", tag);
            EXPECT_EQ(reference->appendAttribute(attribute), Acad::eOk);
            attribute->close();
        }
        reference->close();
    }

    // Tags of the attributes that are a reference's own.
    std::wstring tagsOf(AcDbObjectId id) {
        std::wstring tags;
        auto* reference = open<AcDbBlockReference>(id);
        const std::unique_ptr<AcDbObjectIterator> it(reference->attributeIterator());
        for (; !it->done(); it->step()) {
            AcDbAttribute* attribute = nullptr;
            EXPECT_EQ(reference->openAttribute(attribute, it->objectId(), AcDb::kForRead), Acad::eOk);
            EXPECT_TRUE(attribute->ownerId() == id);
            EXPECT_TRUE(attribute->database() == reference->database());
            tags += attribute->tagConst();
            attribute->close();
        }
        reference->close();
        return tags;
    }

    AcDbObjectId valueOf(AcDbIdMapping& mapping, AcDbObjectId key) {
        AcDbIdPair pair(key, AcDbObjectId(), true);
        EXPECT_TRUE(mapping.compute(pair));
        return pair.value();
    }

    AcDbObjectId m_block;
    AcDbObjectId m_reference;
};

} // namespace

TEST_F(ClonedReference, ACopyInsideTheDrawingHasAttributesOfItsOwn) {
    AcDbIdMapping mapping;
    AcDbObjectIdArray ids;
    ids.append(m_reference);
    ASSERT_EQ(m_database->deepCloneObjects(ids, m_database->core().roots.modelSpace, mapping), Acad::eOk);
    const AcDbObjectId copy = valueOf(mapping, m_reference);
    ASSERT_TRUE(copy != m_reference);
    EXPECT_EQ(tagsOf(copy), L"AB");
    EXPECT_EQ(tagsOf(m_reference), L"AB");
    auto* reference = open<AcDbBlockReference>(copy, AcDb::kForWrite);
    EXPECT_TRUE(reference->blockTableRecord() == m_block);
    AcDbSequenceEnd* end = nullptr;
    EXPECT_EQ(reference->openSequenceEnd(end, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(end->ownerId() == copy);
    end->close();
    EXPECT_EQ(reference->erase(), Acad::eOk);
    reference->close();
    EXPECT_EQ(tagsOf(m_reference), L"AB");
    EXPECT_EQ(tagsOf(reopened(m_reference)), L"AB");
}

TEST_F(ClonedReference, ACopyInAnotherDrawingBringsItsBlock) {
    AcDbDatabase target(true);
    AcDbIdMapping mapping;
    AcDbObjectIdArray ids;
    ids.append(m_reference);
    ASSERT_EQ(m_database->wblockCloneObjects(ids, target.core().roots.modelSpace, mapping, AcDb::kDrcIgnore),
              Acad::eOk);
    const AcDbObjectId copy = valueOf(mapping, m_reference);
    ASSERT_TRUE(copy.database() == &target);
    EXPECT_EQ(tagsOf(copy), L"AB");
    auto* reference = open<AcDbBlockReference>(copy);
    EXPECT_TRUE(reference->blockTableRecord().database() == &target);
    EXPECT_NEAR(extentsOf(*reference).maxPoint().x, 11.0, 1.0e-9);
    reference->close();
    ASSERT_EQ(target.saveAs(path(L"target.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(path(L"target.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbObjectId id;
    again.getAcDbObjectId(id, false, copy.handle());
    EXPECT_EQ(tagsOf(id), L"AB");
}

TEST_F(ClonedReference, ACopyInNoDatabaseHasNoAttributes) {
    auto* reference = open<AcDbBlockReference>(m_reference);
    AcDbEntity* copied = nullptr;
    EXPECT_EQ(reference->getTransformedCopy(AcGeMatrix3d::translation({0.0, 5.0, 0.0}), copied), Acad::eOk);
    const std::unique_ptr<AcDbBlockReference> copy(AcDbBlockReference::cast(copied));
    reference->close();
    ASSERT_NE(copy, nullptr);
    const std::unique_ptr<AcDbObjectIterator> it(copy->attributeIterator());
    EXPECT_TRUE(it->done());
    expectNear(copy->position(), {10.0, 5.0, 0.0});
    EXPECT_EQ(tagsOf(m_reference), L"AB");
}

TEST_F(ClonedReference, CopyFromKeepsItsOwnAttributes) {
    const AcDbObjectId otherId = add(new AcDbBlockReference({7.0, 7.0, 7.0}, m_block));
    auto* other = open<AcDbBlockReference>(otherId);
    auto* reference = open<AcDbBlockReference>(m_reference, AcDb::kForWrite);
    EXPECT_EQ(reference->copyFrom(other), Acad::eOk);
    expectNear(reference->position(), {7.0, 7.0, 7.0});
    reference->close();
    other->close();
    EXPECT_EQ(tagsOf(m_reference), L"AB");
    EXPECT_EQ(tagsOf(otherId), L"");
}
