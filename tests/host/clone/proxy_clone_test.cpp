#include "clone_fixture.h"

#include "db/database_core.h"
#include "dbproxy.h"

namespace {

// A drawing whose module is away: its nodes and entities are proxies.
class ProxyClone : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        const AcDbObjectId a = entity(modelSpace(*m_from), L"A"), b = entity(modelSpace(*m_from), L"B");
        const AcDbObjectId c = entity(modelSpace(*m_from), L"C");
        const AcDbObjectId n = node(dictionary(*m_from, {L"P", L"Q"}), L"N");
        const AcDbObjectId owned = ownedNode(a, L"owned");
        const AcDbObjectId l = layer(*m_from, L"L", 3);
        change<CloneEntity>(a, [&](CloneEntity& e) {
            e.setLayer(l);
            e.place = AcGePoint3d(1, 2, 3);
            e.fields.softPointers = {b, c};
            e.fields.hardPointers = {n, b};
        });
        m_a = a.handle();
        m_b = b.handle();
        m_c = c.handle();
        m_n = n.handle();
        m_owned = owned.handle();
        saveAndRead(*m_from, m_from);
    }
    void TearDown() override {
        registerCloneNodes();
        CloneFixture::TearDown();
    }

    // Reads a drawing that is saved for it; with or without the module.
    void saveAndRead(AcDbDatabase& database, std::unique_ptr<AcDbDatabase>& again, bool withModule = false) {
        std::string error;
        ASSERT_TRUE(embedded::saveDocument(database, m_folder.file(L"a.dwg"), error)) << error;
        unregisterCloneNodes();
        if (withModule)
            registerCloneNodes();
        auto read = std::make_unique<AcDbDatabase>(false);
        ASSERT_EQ(read->readDwgFile(m_folder.file(L"a.dwg").c_str()), Acad::eOk);
        again = std::move(read);
    }
    AcDbObjectId id(AcDbDatabase& database, const AcDbHandle& handle) {
        AcDbObjectId found;
        EXPECT_EQ(database.getAcDbObjectId(found, false, handle), Acad::eOk);
        return found;
    }

    CloneFolder m_folder;
    AcDbHandle m_a, m_b, m_c, m_n, m_owned;
    AcDbIdMapping m_mapping;
};

TEST_F(ProxyClone, InsideItsDrawingAProxyIsCopiedWithItsIdsTranslated) {
    const AcDbObjectId a = id(*m_from, m_a), b = id(*m_from, m_b);
    auto* proxy = open<AcDbEntity>(a);
    EXPECT_TRUE(proxy->isAProxy());
    proxy->close();
    ASSERT_EQ(m_from->deepCloneObjects(ids({a, b}), modelSpace(*m_from), m_mapping), Acad::eOk);
    const AcDbHandle copyA = cloneOf(m_mapping, a).handle(), copyB = cloneOf(m_mapping, b).handle();
    const AcDbHandle copyOwned = cloneOf(m_mapping, id(*m_from, m_owned)).handle();
    auto* copy = AcDbProxyEntity::cast(open<AcDbEntity>(cloneOf(m_mapping, a)));
    ASSERT_NE(copy, nullptr);
    EXPECT_STREQ(copy->originalClassName(), L"CloneEntity");
    copy->close();
    saveAndRead(*m_from, m_to, true);
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A", L"B", L"C", L"A", L"B"}));
    const NodeFields fields = fieldsOf(id(*m_to, copyA));
    EXPECT_EQ(fields.softPointers, (std::vector<AcDbObjectId>{id(*m_to, copyB), id(*m_to, m_c)}));
    EXPECT_EQ(fields.hardPointers, (std::vector<AcDbObjectId>{id(*m_to, m_n), id(*m_to, copyB)}));
    EXPECT_EQ(fields.hardOwned, (std::vector<AcDbObjectId>{id(*m_to, copyOwned)}));
    EXPECT_EQ(ownerOf(id(*m_to, copyOwned)), id(*m_to, copyA));
    EXPECT_EQ(fieldsOf(id(*m_to, m_a)).softPointers,
              (std::vector<AcDbObjectId>{id(*m_to, m_b), id(*m_to, m_c)}));
    auto* live = open<CloneEntity>(id(*m_to, copyA));
    EXPECT_EQ(live->place, AcGePoint3d(1, 2, 3));
    live->close();
}

TEST_F(ProxyClone, IntoAnotherDrawingAProxyTakesItsClassAndWhatItNeeds) {
    // Another class comes first there, so that the numbers differ.
    AcDbDatabase to(true);
    const AcDbObjectId a = id(*m_from, m_a);
    ASSERT_EQ(to.wblockCloneObjects(ids({a}), modelSpace(to), m_mapping, AcDb::kDrcIgnore), Acad::eOk);
    const AcDbHandle copyA = cloneOf(m_mapping, a).handle();
    const AcDbHandle copyB = cloneOf(m_mapping, id(*m_from, m_b)).handle();
    const AcDbHandle copyN = cloneOf(m_mapping, id(*m_from, m_n)).handle();
    std::unique_ptr<AcDbDatabase> again;
    saveAndRead(to, again, true);
    EXPECT_EQ(texts(modelSpace(*again)), (Texts{L"A", L"B"}));
    const NodeFields fields = fieldsOf(id(*again, copyA));
    EXPECT_EQ(fields.softPointers, (std::vector<AcDbObjectId>{id(*again, copyB), AcDbObjectId()}));
    EXPECT_EQ(fields.hardPointers, (std::vector<AcDbObjectId>{id(*again, copyN), id(*again, copyB)}));
    ASSERT_EQ(fields.hardOwned.size(), 1u);
    EXPECT_EQ(fieldsOf(fields.hardOwned[0]).text, L"owned");
    EXPECT_EQ(fieldsOf(at(dictionary(*again, {L"P", L"Q"}), L"N")).text, L"N");
    EXPECT_EQ(at(dictionary(*again, {L"P", L"Q"}), L"N"), id(*again, copyN));
    auto* live = open<CloneEntity>(id(*again, copyA));
    EXPECT_EQ(live->layerId(), record(again->layerTableId(), L"L"));
    live->close();
}

TEST_F(ProxyClone, ACopiedProxyIsUndoneAndRedone) {
    const AcDbObjectId a = id(*m_from, m_a);
    embedded::beginCommand(*m_from);
    ASSERT_EQ(m_from->deepCloneObjects(ids({a}), modelSpace(*m_from), m_mapping), Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*m_from)).size(), 4u);
    ASSERT_TRUE(embedded::undo(*m_from));
    EXPECT_EQ(texts(modelSpace(*m_from)).size(), 3u);
    ASSERT_TRUE(embedded::redo(*m_from));
    EXPECT_EQ(texts(modelSpace(*m_from)).size(), 4u);
}

} // namespace
