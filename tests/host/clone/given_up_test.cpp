#include "clone_fixture.h"

#include "gemat3d.h"
#include "rxevent.h"
#include "support/console_recorder.h"

#include <functional>
#include <stdexcept>

namespace {

using Heard = std::vector<std::string>;

class Listener : public AcRxEventReactor {
public:
    Listener() { acrxEvent->addReactor(this); }
    ~Listener() override { acrxEvent->removeReactor(this); }

    Heard heard;
    std::function<void(const std::string&, AcDbIdMapping&)> also;

    void beginDeepClone(AcDbDatabase*, AcDbIdMapping& mapping) override { hear("begin", mapping); }
    void abortDeepClone(AcDbIdMapping& mapping) override { hear("abort", mapping); }
    void endDeepClone(AcDbIdMapping& mapping) override { hear("end", mapping); }
    void abortWblock(AcDbDatabase*) override { heard.emplace_back("abort wblock"); }
    void endWblock(AcDbDatabase*) override { heard.emplace_back("end wblock"); }

private:
    void hear(const char* what, AcDbIdMapping& mapping) {
        heard.emplace_back(what);
        if (also)
            also(what, mapping);
    }
};

// The target keeps no history, so that only the cloning itself can take anything back.
class GivenUp : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        m_a = entity(modelSpace(*m_from), L"A");
        m_to->disableUndoRecording(true);
        m_before = everything(*m_to);
    }
    Acad::ErrorStatus cloneInto(AcDbIdMapping& mapping, bool defer = false) {
        return m_to->wblockCloneObjects(ids({m_a}), modelSpace(*m_to), mapping, AcDb::kDrcIgnore, defer);
    }
    void expectNoTrace() {
        EXPECT_EQ(difference(everything(*m_to), m_before), L"");
        EXPECT_FALSE(m_to->undoRecording());
    }

    AcDbObjectId m_a;
    Texts m_before;
    const testing_support::ConsoleRecorder m_console;
};

TEST_F(GivenUp, AReactorThatThrowsAtTheAbortDoesNotKeepTheClones) {
    Listener listener;
    listener.also = [](const std::string& what, AcDbIdMapping&) {
        if (what == "abort")
            throw std::runtime_error("no");
    };
    nodeFaults().text = L"A";
    nodeFaults().write = Acad::eFilerError;
    const AcDbObjectId b = entity(modelSpace(*m_from), L"B");
    AcDbIdMapping mapping;
    EXPECT_EQ(m_to->wblockCloneObjects(ids({b, m_a}), modelSpace(*m_to), mapping, AcDb::kDrcIgnore),
              Acad::eFilerError);
    EXPECT_EQ(listener.heard, (Heard{"begin", "abort"}));
    EXPECT_EQ(m_console.text(), L"A reactor failed: no\n");
    expectNoTrace();
}

TEST_F(GivenUp, AReactorThatThrowsAtTheEndIsNotToldOfAnAbort) {
    Listener listener;
    listener.also = [](const std::string& what, AcDbIdMapping&) {
        if (what == "end")
            throw Acad::eUserBreak;
    };
    AcDbIdMapping mapping;
    EXPECT_EQ(cloneInto(mapping), Acad::eOk);
    EXPECT_EQ(listener.heard, (Heard{"begin", "end"}));
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A"}));
    EXPECT_FALSE(m_to->undoRecording());
}

TEST_F(GivenUp, AStatusThatAReaderThrowsIsAFailureOfTheFiling) {
    nodeFaults().text = L"A";
    nodeFaults().thrownOnRead = Acad::eMakeMeProxy;
    AcDbIdMapping mapping;
    EXPECT_EQ(cloneInto(mapping), Acad::eFilerError);
    expectNoTrace();
}

TEST_F(GivenUp, APairWithoutAValueGivesWayToTheClone) {
    const AcDbObjectId d = dictionary(*m_from, {L"D"});
    const AcDbObjectId n = node(d, L"N");
    const AcDbObjectId b = entity(modelSpace(*m_from), L"B");
    change<CloneEntity>(b, [&](CloneEntity& e) {
        e.fields.softPointers = {m_a};
        e.fields.hardPointers = {n};
    });
    change<CloneNode>(n, [&](CloneNode& one) { one.fields.softPointers = {m_a}; });
    Listener listener;
    listener.also = [&](const std::string& what, AcDbIdMapping& mapping) {
        if (what != "begin")
            return;
        for (const AcDbObjectId& id : {b, n, d})
            EXPECT_TRUE(mapping.assign(AcDbIdPair(id, AcDbObjectId(), false)));
    };
    AcDbIdMapping mapping;
    ASSERT_EQ(m_to->wblockCloneObjects(ids({m_a, b}), modelSpace(*m_to), mapping, AcDb::kDrcIgnore),
              Acad::eOk);
    const AcDbObjectId copy = cloneOf(mapping, b);
    ASSERT_EQ(copy.database(), m_to.get());
    EXPECT_EQ(fieldsOf(copy).softPointers, (std::vector<AcDbObjectId>{cloneOf(mapping, m_a)}));
    const AcDbObjectId node = cloneOf(mapping, n);
    EXPECT_EQ(fieldsOf(copy).hardPointers, (std::vector<AcDbObjectId>{node}));
    EXPECT_EQ(node, at(dictionary(*m_to, {L"D"}), L"N"));
    EXPECT_EQ(fieldsOf(node).softPointers, (std::vector<AcDbObjectId>{cloneOf(mapping, m_a)}));
    auto* object = open<CloneEntity>(copy);
    EXPECT_EQ(object->layerId().database(), m_to.get());
    object->close();
}

TEST_F(GivenUp, ACloningThatWaitsIsGivenUpWithTheEndOfItsMapping) {
    Listener listener;
    {
        AcDbIdMapping mapping;
        ASSERT_EQ(cloneInto(mapping, true), Acad::eOk);
        listener.also = [&](const std::string& what, AcDbIdMapping& told) {
            AcDbDatabase* database = nullptr;
            EXPECT_EQ(what, "abort");
            EXPECT_EQ(told.destDb(database), Acad::eOk);
            EXPECT_EQ(database, m_to.get());
            EXPECT_EQ(told.origDb(database), Acad::eNoDatabase);
        };
        m_from.reset();
    }
    EXPECT_EQ(listener.heard, (Heard{"begin", "abort"}));
    expectNoTrace();
}

TEST_F(GivenUp, AnEndedCloningStaysAfterTheEndOfItsMapping) {
    Listener listener;
    {
        AcDbIdMapping mapping;
        ASSERT_EQ(cloneInto(mapping, true), Acad::eOk);
        const AcDbObjectId b = entity(modelSpace(*m_from), L"B");
        ASSERT_EQ(m_to->wblockCloneObjects(ids({b}), modelSpace(*m_to), mapping, AcDb::kDrcIgnore),
                  Acad::eOk);
    }
    EXPECT_EQ(listener.heard, (Heard{"begin", "end"}));
    EXPECT_EQ(texts(modelSpace(*m_to)), (Texts{L"A", L"B"}));
}

TEST_F(GivenUp, WhoWaitsForATargetThatHasGoneHearsOfTheEnd) {
    Listener listener;
    {
        AcDbIdMapping mapping;
        ASSERT_EQ(cloneInto(mapping, true), Acad::eOk);
        listener.also = [&](const std::string&, AcDbIdMapping& told) {
            AcDbDatabase* database = nullptr;
            EXPECT_EQ(told.destDb(database), Acad::eNoDatabase);
            EXPECT_EQ(told.origDb(database), Acad::eOk);
        };
        m_to.reset();
    }
    EXPECT_EQ(listener.heard, (Heard{"begin", "abort"}));
}

TEST_F(GivenUp, AnInsertThatThrowsLeavesNeitherBlockNorEntities) {
    entity(modelSpace(*m_from), L"B");
    nodeFaults().text = L"B";
    nodeFaults().throwsOnClone = true;
    AcDbObjectId id = m_a;
    EXPECT_THROW(m_to->insert(id, L"PART", m_from.get()), std::runtime_error);
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(record(m_to->blockTableId(), L"PART").isNull());
    expectNoTrace();
    nodeFaults() = NodeFaults();
    EXPECT_EQ(m_to->insert(id, L"PART", m_from.get()), Acad::eOk);
}

TEST_F(GivenUp, AnInsertThatThrowsWhenItMovesLeavesNothing) {
    entity(modelSpace(*m_from), L"B");
    nodeFaults().text = L"B";
    nodeFaults().thrownOnTransform = Acad::eCannotScaleNonUniformly;
    Listener listener;
    EXPECT_THROW(m_to->insert(AcGeMatrix3d::translation({1, 0, 0}), m_from.get()), Acad::ErrorStatus);
    EXPECT_EQ(listener.heard, (Heard{"begin", "end"})) << "the cloning had ended";
    expectNoTrace();
}

TEST_F(GivenUp, ANewDrawingThatThrowsIsToldAsAborted) {
    nodeFaults().text = L"A";
    nodeFaults().throwsOnClone = true;
    Listener listener;
    AcDbDatabase* made = nullptr;
    EXPECT_THROW(m_from->wblock(made), std::runtime_error);
    EXPECT_EQ(listener.heard, (Heard{"begin", "abort", "abort wblock"}));
    EXPECT_EQ(made, nullptr);
    listener.heard.clear();
    nodeFaults() = NodeFaults();
    nodeFaults().text = L"A";
    nodeFaults().thrownOnTransform = Acad::eInvalidInput;
    EXPECT_THROW(m_from->wblock(made, ids({m_a}), AcGePoint3d(1, 0, 0)), Acad::ErrorStatus);
    EXPECT_EQ(listener.heard, (Heard{"begin", "end", "abort wblock"}));
}

} // namespace
