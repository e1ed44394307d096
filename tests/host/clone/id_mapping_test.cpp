#include "clone_fixture.h"

#include "rxevent.h"

namespace {

class IdMapping : public CloneFixture {};

TEST_F(IdMapping, APairIsEnteredOnceFoundChangedAndTakenOut) {
    const AcDbObjectId key = m_from->layerTableId(), value = m_to->layerTableId();
    AcDbIdMapping mapping;
    EXPECT_FALSE(mapping.assign(AcDbIdPair()));
    EXPECT_TRUE(mapping.assign(AcDbIdPair(key, value, true, true, false)));
    EXPECT_FALSE(mapping.assign(AcDbIdPair(key, key, false)));
    AcDbIdPair pair;
    EXPECT_FALSE(mapping.compute(pair));
    pair.setKey(key);
    ASSERT_TRUE(mapping.compute(pair));
    EXPECT_EQ(pair.value(), value);
    EXPECT_TRUE(pair.isCloned());
    EXPECT_TRUE(pair.isPrimary());
    EXPECT_FALSE(pair.isOwnerXlated());
    EXPECT_TRUE(mapping.change(AcDbIdPair(key, key, false)));
    EXPECT_FALSE(mapping.change(AcDbIdPair(value, key, false)));
    ASSERT_TRUE(mapping.compute(pair));
    EXPECT_EQ(pair.value(), key);
    EXPECT_FALSE(pair.isCloned());
    EXPECT_FALSE(pair.isPrimary());
    EXPECT_TRUE(pair.isOwnerXlated());
    EXPECT_TRUE(mapping.del(key));
    EXPECT_FALSE(mapping.del(key));
    EXPECT_FALSE(mapping.compute(pair));
}

TEST_F(IdMapping, SettersOfAPairChain) {
    AcDbIdPair pair;
    pair.setKey(m_from->layerTableId())
        .setValue(m_to->layerTableId())
        .setIsCloned(true)
        .setIsPrimary(true)
        .setIsOwnerXlated(false);
    EXPECT_EQ(pair.key(), m_from->layerTableId());
    EXPECT_EQ(pair.value(), m_to->layerTableId());
    EXPECT_TRUE(pair.isCloned() && pair.isPrimary() && !pair.isOwnerXlated());
}

TEST_F(IdMapping, TheWalkGoesInTheOrderOfEntryAndPassesGaps) {
    const std::vector<AcDbObjectId> keys{m_from->viewTableId(), m_from->layerTableId(),
                                         m_from->blockTableId(), m_from->UCSTableId()};
    AcDbIdMapping mapping;
    EXPECT_TRUE(AcDbIdMappingIter(mapping).done());
    for (const AcDbObjectId& key : keys)
        mapping.assign(AcDbIdPair(key, key, false));
    mapping.del(keys[0]);
    mapping.del(keys[2]);
    AcDbIdMappingIter it(mapping);
    AcDbIdPair pair;
    ASSERT_TRUE(it.getMap(pair));
    EXPECT_EQ(pair.key(), keys[1]);
    EXPECT_TRUE(it.next());
    ASSERT_TRUE(it.getMap(pair));
    EXPECT_EQ(pair.key(), keys[3]);
    EXPECT_FALSE(it.next());
    EXPECT_TRUE(it.done());
    EXPECT_FALSE(it.getMap(pair));
    EXPECT_FALSE(it.next());
    it.start();
    ASSERT_TRUE(it.getMap(pair));
    EXPECT_EQ(pair.key(), keys[1]);
}

TEST_F(IdMapping, DatabasesAndOccasionAreKnownFromTheBeginningOfACloning) {
    AcDbIdMapping mapping;
    AcDbDatabase* database = m_from.get();
    EXPECT_EQ(mapping.destDb(database), Acad::eNoDatabase);
    EXPECT_EQ(database, nullptr);
    EXPECT_EQ(mapping.origDb(database), Acad::eNoDatabase);
    EXPECT_EQ(mapping.setDestDb(m_to.get()), Acad::eOk);
    EXPECT_EQ(mapping.destDb(database), Acad::eOk);
    EXPECT_EQ(database, m_to.get());
    const AcDbObjectId id = entity(modelSpace(*m_from), L"E");
    ASSERT_EQ(m_to->wblockCloneObjects(ids({id}), modelSpace(*m_to), mapping, AcDb::kDrcMangleName, true),
              Acad::eOk);
    EXPECT_EQ(mapping.origDb(database), Acad::eOk);
    EXPECT_EQ(database, m_from.get());
    EXPECT_EQ(mapping.deepCloneContext(), AcDb::kDcWblkObjects);
    EXPECT_EQ(mapping.duplicateRecordCloning(), AcDb::kDrcMangleName);
    EXPECT_TRUE(mapping.insertingXrefBlockId().isNull());
    EXPECT_EQ(mapping.setDestDb(m_from.get()), Acad::eInvalidContext);
    m_to->abortDeepClone(mapping);
}

} // namespace
