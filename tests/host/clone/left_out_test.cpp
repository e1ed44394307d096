#include "clone_fixture.h"

#include "db/object_access.h"
#include "dbproxy.h"
#include "gemat3d.h"

namespace {

// What is left out of a cloning: objects that do not apply, and proxies whose class forbids it.
class LeftOut : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        nodeFaults().text = L"OUT";
        nodeFaults().wblockClone = Acad::eNotApplicable;
        nodeFaults().deepClone = Acad::eNotApplicable;
    }
    static AcDbObjectId proxy(AcDbDatabase& database, int flags) {
        auto* made = new AcDbProxyEntity;
        auto body = std::make_unique<embedded::ObjectBody>();
        body->proxyFlags = flags;
        body->className = L"Elsewhere";
        embedded::ObjectAccess::setBody(*made, std::move(body));
        auto* space = open<AcDbBlockTableRecord>(modelSpace(database), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, made), Acad::eOk);
        made->close();
        space->close();
        return id;
    }

    AcDbIdMapping m_mapping;
};

TEST_F(LeftOut, APrimaryOfAWblockAndWhatPointsAtItHasNull) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A"), out = entity(modelSpace(*m_from), L"OUT");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.softPointers = {out}; });
    ASSERT_EQ(m_from->wblockCloneObjects(ids({out, a}), modelSpace(*m_to), m_mapping, AcDb::kDrcIgnore),
              Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A"}));
    EXPECT_EQ(fieldsOf(cloneOf(m_mapping, a)).softPointers, (std::vector<AcDbObjectId>{AcDbObjectId()}));
}

TEST_F(LeftOut, WhatAHardPointerLeadsToAndThePointerIsNull) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A"), out = entity(modelSpace(*m_from), L"OUT");
    const AcDbObjectId n = node(dictionary(*m_from, {L"D"}), L"OUT");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {out, n}; });
    ASSERT_EQ(m_from->wblockCloneObjects(ids({a}), modelSpace(*m_to), m_mapping, AcDb::kDrcIgnore),
              Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A"}));
    EXPECT_EQ(fieldsOf(cloneOf(m_mapping, a)).hardPointers,
              (std::vector<AcDbObjectId>{AcDbObjectId(), AcDbObjectId()}));
}

TEST_F(LeftOut, WhatIsOwnedAndTheOwnersIdIsNull) {
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A");
    ownedNode(a, L"OUT");
    ownedNode(a, L"IN");
    ASSERT_EQ(m_from->deepCloneObjects(ids({a}), modelSpace(*m_from), m_mapping), Acad::eOk);
    const NodeFields fields = fieldsOf(cloneOf(m_mapping, a));
    ASSERT_EQ(fields.hardOwned.size(), 2u);
    EXPECT_TRUE(fields.hardOwned[0].isNull());
    EXPECT_EQ(fieldsOf(fields.hardOwned[1]).text, L"IN");
}

TEST_F(LeftOut, ABlocksEntity) {
    const AcDbObjectId b = block(*m_from, L"B", {L"1", L"OUT", L"2"});
    ASSERT_EQ(m_from->wblockCloneObjects(ids({b}), m_to->blockTableId(), m_mapping, AcDb::kDrcIgnore),
              Acad::eOk);
    EXPECT_EQ(texts(record(m_to->blockTableId(), L"B")), (Texts{L"1", L"2"}));
}

TEST_F(LeftOut, OfAWholeDrawing) {
    for (const wchar_t* text : {L"A", L"OUT", L"B"})
        entity(modelSpace(*m_from), text);
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> written(made);
    EXPECT_EQ(texts(modelSpace(*written)), (Texts{L"A", L"B"}));
}

TEST_F(LeftOut, AnyOtherAnswerVetoesTheWhole) {
    nodeFaults().wblockClone = Acad::eNotAllowedForThisProxy;
    const AcDbObjectId a = entity(modelSpace(*m_from), L"A"), out = entity(modelSpace(*m_from), L"OUT");
    change<CloneEntity>(a, [&](CloneEntity& e) { e.fields.hardPointers = {out}; });
    const Texts before = everything(*m_to);
    EXPECT_EQ(m_from->wblockCloneObjects(ids({a}), modelSpace(*m_to), m_mapping, AcDb::kDrcIgnore),
              Acad::eNotAllowedForThisProxy);
    EXPECT_EQ(difference(everything(*m_to), before), L"");
}

TEST_F(LeftOut, AProxyWhoseClassForbidsCloning) {
    const AcDbObjectId forbidden = proxy(*m_from, kAllButCloningAllowed);
    const AcDbObjectId allowed = proxy(*m_from, kCloningAllowed);
    ASSERT_EQ(m_from->deepCloneObjects(ids({forbidden, allowed}), modelSpace(*m_from), m_mapping), Acad::eOk);
    EXPECT_TRUE(cloneOf(m_mapping, forbidden).isNull());
    EXPECT_FALSE(cloneOf(m_mapping, allowed).isNull());
    AcDbIdMapping mapping;
    ASSERT_EQ(
        m_from->wblockCloneObjects(ids({forbidden, allowed}), modelSpace(*m_to), mapping, AcDb::kDrcIgnore),
        Acad::eOk);
    EXPECT_TRUE(cloneOf(mapping, forbidden).isNull());
    auto* clone = open<AcDbProxyEntity>(cloneOf(mapping, allowed));
    EXPECT_STREQ(clone->originalClassName(), L"Elsewhere");
    clone->close();
}

// Each change of a proxy beside the flag that allows it.
TEST_F(LeftOut, AProxyEntityChangesOnlyAsItsClassAllows) {
    struct Change {
        int flag;
        Acad::ErrorStatus (*change)(AcDbEntity&);
        Acad::ErrorStatus allowed;
    };
    const Change changes[] = {
        {kLayerChangeAllowed, [](AcDbEntity& e) { return e.setLayer(L"0"); }, Acad::eOk},
        {kLayerChangeAllowed, [](AcDbEntity& e) { return e.setLayer(e.database()->layerZero()); }, Acad::eOk},
        {kColorChangeAllowed, [](AcDbEntity& e) { return e.setColorIndex(3); }, Acad::eOk},
        {kLinetypeChangeAllowed,
         [](AcDbEntity& e) { return e.setLinetype(e.database()->continuousLinetype()); }, Acad::eOk},
        {kLinetypeScaleChangeAllowed, [](AcDbEntity& e) { return e.setLinetypeScale(2.0); }, Acad::eOk},
        {kVisibilityChangeAllowed, [](AcDbEntity& e) { return e.setVisibility(AcDb::kInvisible); },
         Acad::eOk},
        {kLineWeightChangeAllowed, [](AcDbEntity& e) { return e.setLineWeight(AcDb::kLnWt100); }, Acad::eOk},
        {kTransformAllowed, [](AcDbEntity& e) { return e.transformBy(AcGeMatrix3d()); },
         Acad::eNotImplementedYet},
        {kEraseAllowed, [](AcDbEntity& e) { return e.erase(); }, Acad::eOk},
    };
    for (const Change& one : changes) {
        SCOPED_TRACE(one.flag);
        const AcDbObjectId forbidden = proxy(*m_from, kAllAllowedBits & ~one.flag);
        const AcDbObjectId allowed = proxy(*m_from, one.flag);
        auto* entity = open<AcDbEntity>(forbidden, AcDb::kForWrite);
        EXPECT_EQ(one.change(*entity), Acad::eNotAllowedForThisProxy);
        EXPECT_EQ(entity->colorIndex(), 256);
        EXPECT_EQ(entity->linetypeScale(), 1.0);
        EXPECT_EQ(entity->visibility(), AcDb::kVisible);
        entity->close();
        EXPECT_FALSE(forbidden.isErased());
        entity = open<AcDbEntity>(allowed, AcDb::kForWrite);
        EXPECT_EQ(one.change(*entity), one.allowed);
        entity->close();
    }
}

} // namespace
