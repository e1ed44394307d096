#include "clone_fixture.h"

#include "db/database_core.h"
#include "rxevent.h"

#include <functional>

namespace {

using Heard = std::vector<std::string>;

class Listener : public AcRxEventReactor {
public:
    Listener() { acrxEvent->addReactor(this); }
    ~Listener() override { acrxEvent->removeReactor(this); }

    Heard heard;
    Acad::ErrorStatus answer = Acad::eOk;
    std::function<void(AcDbIdMapping&)> atXlation;

    void beginDeepClone(AcDbDatabase* to, AcDbIdMapping& mapping) override {
        AcDbDatabase* known = nullptr;
        mapping.destDb(known);
        hear(known == to && AcDbIdMappingIter(mapping).done() ? "begin" : "begin wrongly");
    }
    void beginDeepCloneXlation(AcDbIdMapping& mapping, Acad::ErrorStatus* status) override {
        hear("translate");
        if (atXlation)
            atXlation(mapping);
        *status = answer;
    }
    void abortDeepClone(AcDbIdMapping&) override { hear("abort"); }
    void endDeepClone(AcDbIdMapping& mapping) override {
        hear(AcDbIdMappingIter(mapping).done() ? "end of nothing" : "end");
    }
    void beginWblockObjects(AcDbDatabase*, AcDbIdMapping&) override { hear("objects"); }
    void wblockNotice(AcDbDatabase*) override { hear("notice"); }
    void beginWblock(AcDbDatabase*, AcDbDatabase*, const AcGePoint3d*& point) override {
        hear(point->x == 7.0 ? "wblock at 7" : "wblock");
    }
    void beginWblock(AcDbDatabase*, AcDbDatabase*, AcDbObjectId) override { hear("wblock of a block"); }
    void beginWblock(AcDbDatabase*, AcDbDatabase*) override { hear("wblock of all"); }
    void otherWblock(AcDbDatabase*, AcDbIdMapping&, AcDbDatabase*) override { hear("other"); }
    void abortWblock(AcDbDatabase*) override { hear("abort wblock"); }
    void endWblock(AcDbDatabase*) override { hear("end wblock"); }

private:
    void hear(const char* what) { heard.emplace_back(what); }
};

class CloneEvents : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        m_a = entity(modelSpace(*m_from), L"A");
        embedded::forgetHistory(*m_from);
    }
    Acad::ErrorStatus deepClone(bool defer = false) {
        return m_from->deepCloneObjects(ids({m_a}), modelSpace(*m_from), m_mapping, defer);
    }
    Acad::ErrorStatus wblockClone() {
        return m_to->wblockCloneObjects(ids({m_a}), modelSpace(*m_to), m_mapping, AcDb::kDrcIgnore);
    }

    AcDbObjectId m_a;
    AcDbIdMapping m_mapping;
};

TEST_F(CloneEvents, ADeepCloningBeginsTranslatesAndEnds) {
    Listener listener;
    ASSERT_EQ(deepClone(), Acad::eOk);
    EXPECT_EQ(listener.heard, (Heard{"begin", "translate", "end"}));
}

TEST_F(CloneEvents, SeveralCallsWithOneMappingAreOneCloning) {
    Listener listener;
    ASSERT_EQ(deepClone(true), Acad::eOk);
    EXPECT_EQ(listener.heard, (Heard{"begin"}));
    m_a = entity(modelSpace(*m_from), L"B");
    ASSERT_EQ(deepClone(), Acad::eOk);
    EXPECT_EQ(listener.heard, (Heard{"begin", "translate", "end"}));
}

TEST_F(CloneEvents, AFailureEndsInAnAbort) {
    Listener listener;
    nodeFaults().text = L"A";
    nodeFaults().write = Acad::eFilerError;
    EXPECT_EQ(deepClone(), Acad::eFilerError);
    EXPECT_EQ(listener.heard, (Heard{"begin", "abort"}));
}

TEST_F(CloneEvents, AnAnswerBeforeTheTranslationGivesTheCloningUp) {
    Listener listener, second;
    listener.answer = Acad::eUserBreak;
    const Texts before = everything(*m_from);
    EXPECT_EQ(deepClone(), Acad::eUserBreak);
    EXPECT_EQ(listener.heard, (Heard{"begin", "translate", "abort"}));
    EXPECT_EQ(second.heard, listener.heard);
    EXPECT_EQ(difference(everything(*m_from), before), L"");
}

TEST_F(CloneEvents, MoreMayBeClonedBeforeTheTranslation) {
    Listener listener;
    const AcDbObjectId b = entity(modelSpace(*m_from), L"B");
    change<CloneEntity>(m_a, [&](CloneEntity& e) { e.fields.softPointers = {b}; });
    const AcDbObjectId owned = ownedNode(b, L"owned");
    listener.atXlation = [&](AcDbIdMapping& mapping) {
        auto* source = open<CloneEntity>(b);
        AcDbObject* clone = nullptr;
        AcDbDatabase* to = nullptr;
        mapping.destDb(to);
        EXPECT_EQ(source->wblockClone(to, clone, mapping, false), Acad::eOk);
        ASSERT_NE(clone, nullptr);
        EXPECT_TRUE(clone->isWriteEnabled());
        clone->close();
        source->close();
    };
    ASSERT_EQ(wblockClone(), Acad::eOk);
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A", L"B"}));
    EXPECT_EQ(fieldsOf(cloneOf(m_mapping, m_a)).softPointers,
              (std::vector<AcDbObjectId>{cloneOf(m_mapping, b)}));
    EXPECT_EQ(fieldsOf(cloneOf(m_mapping, b)).hardOwned,
              (std::vector<AcDbObjectId>{cloneOf(m_mapping, owned)}));
}

TEST_F(CloneEvents, WhatAReactorEntersIsTranslatedToo) {
    Listener listener;
    AcDbObjectId copy;
    const AcDbObjectId b = entity(modelSpace(*m_from), L"B");
    listener.atXlation = [&](AcDbIdMapping& mapping) {
        copy = entity(modelSpace(*m_to), L"B2");
        change<CloneEntity>(copy, [&](CloneEntity& e) { e.fields.softPointers = {m_a}; });
        EXPECT_TRUE(mapping.assign(AcDbIdPair(b, copy, true)));
    };
    ASSERT_EQ(wblockClone(), Acad::eOk);
    EXPECT_EQ(fieldsOf(copy).softPointers, (std::vector<AcDbObjectId>{cloneOf(m_mapping, m_a)}));
}

TEST_F(CloneEvents, AnUntranslatedOwnerIsTranslatedWithTheRestOrFails) {
    Listener listener;
    AcDbObjectId copy;
    const AcDbObjectId b = entity(modelSpace(*m_from), L"B");
    AcDbObjectId owner = m_a;
    listener.atXlation = [&](AcDbIdMapping& mapping) {
        auto* made = new CloneNode;
        m_to->addAcDbObject(copy, made);
        made->setOwnerId(owner);
        made->close();
        EXPECT_TRUE(mapping.assign(AcDbIdPair(b, copy, true, false, false)));
    };
    ASSERT_EQ(wblockClone(), Acad::eOk);
    EXPECT_EQ(ownerOf(copy), cloneOf(m_mapping, m_a));
    AcDbIdMapping other;
    owner = b;
    listener.heard.clear();
    const AcDbObjectId c = entity(modelSpace(*m_from), L"C");
    owner = c;
    EXPECT_EQ(m_to->wblockCloneObjects(ids({m_a}), modelSpace(*m_to), other, AcDb::kDrcIgnore),
              Acad::eOwnerNotSet);
    EXPECT_EQ(listener.heard, (Heard{"objects", "begin", "translate", "abort"}));
}

TEST_F(CloneEvents, IntoAnotherDrawingTheObjectsAreAnnounced) {
    Listener listener;
    ASSERT_EQ(wblockClone(), Acad::eOk);
    EXPECT_EQ(listener.heard, (Heard{"objects", "begin", "translate", "end"}));
}

TEST_F(CloneEvents, ANewDrawingIsAnnouncedByWhatItGets) {
    Listener listener;
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_from->wblock(made, ids({m_a}), AcGePoint3d(7, 0, 0)), Acad::eOk);
    EXPECT_EQ(listener.heard,
              (Heard{"notice", "wblock at 7", "begin", "other", "translate", "end", "end wblock"}));
    delete made;
    listener.heard.clear();
    ASSERT_EQ(m_from->wblock(made, modelSpace(*m_from)), Acad::eOk);
    EXPECT_EQ(listener.heard,
              (Heard{"notice", "wblock of a block", "begin", "other", "translate", "end", "end wblock"}));
    delete made;
    listener.heard.clear();
    nodeFaults().text = L"A";
    nodeFaults().write = Acad::eFilerError;
    EXPECT_EQ(m_from->wblock(made), Acad::eFilerError);
    EXPECT_EQ(listener.heard, (Heard{"notice", "wblock of all", "begin", "abort", "abort wblock"}));
    EXPECT_EQ(made, nullptr);
}

TEST_F(CloneEvents, ACloningThatWaitsIsTakenBackOnce) {
    Listener listener;
    ASSERT_EQ(deepClone(true), Acad::eOk);
    m_from->abortDeepClone(m_mapping);
    m_from->abortDeepClone(m_mapping);
    EXPECT_EQ(listener.heard, (Heard{"begin", "abort"}));
    EXPECT_EQ(texts(modelSpace(*m_from)), (Texts{L"A"}));
    EXPECT_EQ(deepClone(), Acad::eOk) << "the mapping serves again";
}

} // namespace
