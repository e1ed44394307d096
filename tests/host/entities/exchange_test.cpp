#include "dbdict.h"
#include "dbtrans.h"
#include "entity_fixture.h"

namespace {

class Exchange : public EntityFixture {
protected:
    void SetUp() override {
        EntityFixture::SetUp();
        m_line = add(new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}));
        m_block = addBlock(L"B");
        m_circle = add(new AcDbCircle({5.0, 0.0, 0.0}, AcGeVector3d::kZAxis, 2.0), m_block);
    }

    static AcRxClass* classOf(AcDbObjectId id) {
        auto* object = open<AcDbObject>(id);
        AcRxClass* kind = object->isA();
        EXPECT_TRUE(object->objectId() == id);
        object->close();
        return kind;
    }

    static AcDbObjectId ownerOf(AcDbObjectId id) {
        auto* object = open<AcDbObject>(id);
        const AcDbObjectId owner = object->ownerId();
        object->close();
        return owner;
    }

    static AcDbObjectId extend(AcDbObjectId id) {
        auto* object = open<AcDbObject>(id, AcDb::kForWrite);
        EXPECT_EQ(object->createExtensionDictionary(), Acad::eOk);
        const AcDbObjectId dictionary = object->extensionDictionary();
        object->close();
        return dictionary;
    }

    static Acad::ErrorStatus swap(AcDbObjectId id, AcDbObjectId other, bool extension = false) {
        auto* object = open<AcDbObject>(id, AcDb::kForWrite);
        const Acad::ErrorStatus es = object->swapIdWith(other, false, extension);
        EXPECT_EQ(object->close(), Acad::eOk);
        return es;
    }

    std::size_t entitiesIn(AcDbObjectId block) {
        auto* record = open<AcDbBlockTableRecord>(block);
        AcDbBlockTableRecordIterator* made = nullptr;
        record->newIterator(made);
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
        std::size_t count = 0;
        for (; !it->done(); it->step())
            ++count;
        record->close();
        return count;
    }

    AcDbObjectId m_line, m_circle, m_block;
};

} // namespace

TEST_F(Exchange, WhoFollowsAnIdFindsTheOtherObjectInTheSamePlace) {
    const AcDbObjectId modelSpace = ownerOf(m_line);
    ASSERT_EQ(swap(m_line, m_circle), Acad::eOk);
    EXPECT_EQ(classOf(m_line), AcDbCircle::desc());
    EXPECT_EQ(classOf(m_circle), AcDbLine::desc());
    EXPECT_TRUE(ownerOf(m_line) == modelSpace);
    EXPECT_TRUE(ownerOf(m_circle) == m_block);
    const AcDbHandle circle = m_circle.handle();
    const AcDbObjectId again = reopened(m_line);
    EXPECT_EQ(classOf(again), AcDbCircle::desc());
    AcDbObjectId other;
    m_database->getAcDbObjectId(other, false, circle);
    EXPECT_EQ(classOf(other), AcDbLine::desc());
}

TEST_F(Exchange, IsUndoneAndRedoneTogetherWithChangesAroundIt) {
    embedded::beginCommand(*m_database);
    auto* line = open<AcDbLine>(m_line, AcDb::kForWrite);
    line->setStartPoint({7.0, 0.0, 0.0});
    EXPECT_EQ(line->swapIdWith(m_circle), Acad::eOk);
    line->setEndPoint({8.0, 0.0, 0.0});
    line->close();
    ASSERT_TRUE(embedded::undo(*m_database));
    line = open<AcDbLine>(m_line);
    expectNear(line->startPoint(), {0.0, 0.0, 0.0});
    expectNear(line->endPoint(), {1.0, 0.0, 0.0});
    line->close();
    EXPECT_EQ(classOf(m_circle), AcDbCircle::desc());
    EXPECT_TRUE(ownerOf(m_circle) == m_block);
    ASSERT_TRUE(embedded::redo(*m_database));
    line = open<AcDbLine>(m_circle);
    expectNear(line->startPoint(), {7.0, 0.0, 0.0});
    expectNear(line->endPoint(), {8.0, 0.0, 0.0});
    line->close();
    EXPECT_TRUE(ownerOf(m_circle) == m_block);
}

TEST_F(Exchange, TheExtensionDictionaryGoesWithTheObjectOrStaysWithTheId) {
    const AcDbObjectId dictionary = extend(m_line);
    ASSERT_EQ(swap(m_line, m_circle), Acad::eOk);
    EXPECT_TRUE(ownerOf(dictionary) == m_circle);
    ASSERT_EQ(swap(m_line, m_circle), Acad::eOk);
    EXPECT_TRUE(ownerOf(dictionary) == m_line);
    ASSERT_EQ(swap(m_line, m_circle, true), Acad::eOk);
    EXPECT_TRUE(ownerOf(dictionary) == m_line);
    auto* circle = open<AcDbCircle>(m_line);
    EXPECT_TRUE(circle->extensionDictionary() == dictionary);
    circle->close();
    auto* line = open<AcDbLine>(m_circle);
    EXPECT_TRUE(line->extensionDictionary().isNull());
    line->close();
}

TEST_F(Exchange, WhatAnObjectOwnsFollowsIt) {
    AcGePoint3dArray points;
    points.append({0.0, 0.0, 0.0});
    points.append({1.0, 0.0, 0.0});
    const AcDbObjectId polyline = add(new AcDb3dPolyline(AcDb::k3dSimplePoly, points));
    auto* before = open<AcDb3dPolyline>(polyline);
    const std::unique_ptr<AcDbObjectIterator> it(before->vertexIterator());
    before->close();
    ASSERT_EQ(swap(polyline, m_line), Acad::eOk);
    EXPECT_TRUE(ownerOf(it->objectId()) == m_line);
    const AcDbObjectId again = reopened(m_line);
    auto* after = open<AcDb3dPolyline>(again);
    expectBox(extentsOf(*after), {0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
    after->close();
}

TEST_F(Exchange, TheOtherOneMayBeOpenForWriteToo) {
    auto* line = open<AcDbLine>(m_line, AcDb::kForWrite);
    auto* circle = open<AcDbCircle>(m_circle, AcDb::kForWrite);
    EXPECT_EQ(line->swapIdWith(m_circle), Acad::eOk);
    EXPECT_TRUE(circle->objectId() == m_line);
    circle->setRadius(3.0);
    EXPECT_EQ(line->close(), Acad::eOk);
    EXPECT_EQ(circle->close(), Acad::eOk);
    EXPECT_EQ(circle->close(), Acad::eNotOpenForRead);
}

TEST_F(Exchange, InATransactionBothAreClosedAtItsEnd) {
    AcTransaction* transaction = m_database->transactionManager()->startTransaction();
    AcDbObject* line = nullptr;
    ASSERT_EQ(transaction->getObject(line, m_line, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(line->swapIdWith(m_circle), Acad::eOk);
    EXPECT_EQ(m_database->transactionManager()->abortTransaction(), Acad::eOk);
    EXPECT_EQ(classOf(m_line), AcDbLine::desc());
    transaction = m_database->transactionManager()->startTransaction();
    ASSERT_EQ(transaction->getObject(line, m_line, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(line->swapIdWith(m_circle), Acad::eOk);
    EXPECT_EQ(m_database->transactionManager()->endTransaction(), Acad::eOk);
    EXPECT_EQ(classOf(m_line), AcDbCircle::desc());
    EXPECT_EQ(classOf(m_circle), AcDbLine::desc());
}

TEST_F(Exchange, WhatCannotChangePlacesIsRefusedAndStays) {
    AcDbDatabase other(true);
    AcDbLine loose;
    auto* line = open<AcDbLine>(m_line, AcDb::kForWrite);
    EXPECT_EQ(loose.swapIdWith(m_line), Acad::eNoDatabase);
    EXPECT_EQ(line->swapIdWith(AcDbObjectId()), Acad::eNoDatabase);
    EXPECT_EQ(line->swapIdWith(other.layerZero()), Acad::eWrongDatabase);
    EXPECT_EQ(line->swapIdWith(m_database->layerZero()), Acad::eNotApplicable);
    EXPECT_EQ(line->swapIdWith(m_database->namedObjectsDictionaryId()), Acad::eNotApplicable);
    auto* circle = open<AcDbCircle>(m_circle);
    EXPECT_EQ(line->swapIdWith(m_circle), Acad::eWasOpenForRead);
    circle->close();
    EXPECT_EQ(line->swapIdWith(m_line), Acad::eOk);
    EXPECT_TRUE(line->objectId() == m_line);
    line->close();
}

TEST_F(Exchange, AReplacementTakesIdOwnerAndExtensionDictionary) {
    const AcDbObjectId dictionary = extend(m_line), owner = ownerOf(m_line);
    const std::size_t count = entitiesIn(owner);
    embedded::beginCommand(*m_database);
    auto* line = open<AcDbLine>(m_line, AcDb::kForWrite);
    line->setColorIndex(3);
    auto* arc = new AcDbArc({0.0, 0.0, 0.0}, 1.0, 0.0, 1.0);
    ASSERT_EQ(line->handOverTo(arc), Acad::eOk);
    EXPECT_TRUE(arc->objectId() == m_line);
    EXPECT_TRUE(arc->extensionDictionary() == dictionary);
    EXPECT_EQ(arc->colorIndex(), 3);
    EXPECT_EQ(arc->close(), Acad::eOk);
    EXPECT_TRUE(ownerOf(m_line) == owner);
    EXPECT_EQ(entitiesIn(owner), count);
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(classOf(m_line), AcDbLine::desc());
    line = open<AcDbLine>(m_line);
    EXPECT_TRUE(line->extensionDictionary() == dictionary);
    EXPECT_EQ(line->colorIndex(), 256);
    line->close();
    EXPECT_TRUE(ownerOf(dictionary) == m_line);
    ASSERT_TRUE(embedded::redo(*m_database));
    EXPECT_EQ(classOf(m_line), AcDbArc::desc());
    EXPECT_EQ(classOf(reopened(m_line)), AcDbArc::desc());
    EXPECT_EQ(entitiesIn(m_database->core().roots.modelSpace), count);
}

TEST_F(Exchange, WithoutAHistoryTheReplacedOneIsTheCallersToDelete) {
    m_database->disableUndoRecording(true);
    auto* line = open<AcDbLine>(m_line, AcDb::kForWrite);
    auto* arc = new AcDbArc({0.0, 0.0, 0.0}, 1.0, 0.0, 1.0);
    ASSERT_EQ(line->handOverTo(arc), Acad::eObjectToBeDeleted);
    EXPECT_TRUE(line->objectId().isNull());
    delete line;
    arc->close();
    EXPECT_EQ(classOf(reopened(m_line)), AcDbArc::desc());
}

TEST_F(Exchange, WhatTheReplacedOneOwnedBesideIsErasedAndComesBack) {
    AcGePoint3dArray points;
    points.append({0.0, 0.0, 0.0});
    points.append({1.0, 0.0, 0.0});
    const AcDbObjectId id = add(new AcDb3dPolyline(AcDb::k3dSimplePoly, points));
    embedded::beginCommand(*m_database);
    auto* polyline = open<AcDb3dPolyline>(id, AcDb::kForWrite);
    const std::unique_ptr<AcDbObjectIterator> it(polyline->vertexIterator());
    auto* line = new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
    ASSERT_EQ(polyline->handOverTo(line), Acad::eOk);
    line->close();
    EXPECT_TRUE(it->objectId().isErased());
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_FALSE(it->objectId().isErased());
    EXPECT_TRUE(ownerOf(it->objectId()) == id);
    EXPECT_EQ(classOf(id), AcDb3dPolyline::desc());
}

TEST_F(Exchange, AnIllegalReplacementChangesNothing) {
    AcDbLine loose, second;
    AcDbDictionary dictionary;
    EXPECT_EQ(loose.handOverTo(&second), Acad::eIllegalReplacement);
    auto* line = open<AcDbLine>(m_line, AcDb::kForWrite);
    auto* circle = open<AcDbCircle>(m_circle, AcDb::kForWrite);
    EXPECT_EQ(line->handOverTo(circle), Acad::eIllegalReplacement);
    EXPECT_EQ(line->handOverTo(&dictionary), Acad::eIllegalReplacement);
    EXPECT_EQ(line->handOverTo(nullptr), Acad::eNullObjectPointer);
    EXPECT_TRUE(line->objectId() == m_line);
    circle->close();
    line->close();
}
