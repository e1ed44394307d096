#include "clone_fixture.h"

#include "db/database_core.h"
#include "dbtrans.h"
#include "embedded/console.h"
#include "rxevent.h"

#include <functional>
#include <stdexcept>

namespace {

using Heard = std::vector<std::string>;

class ObjectListener : public AcDbObjectReactor {
public:
    Heard heard;
    std::function<void(const std::string&)> also;

    void cancelled(const AcDbObject*) override { hear("cancelled"); }
    void copied(const AcDbObject* from, const AcDbObject* to) override {
        hear(from->isA() == to->isA() ? "copied" : "copied to something else");
    }
    void erased(const AcDbObject* object, Adesk::Boolean erasing) override {
        hear(object->isErased() == (erasing != 0) ? (erasing ? "erased" : "unerased") : "erased wrongly");
    }
    void goodbye(const AcDbObject*) override { hear("goodbye"); }
    void openedForModify(const AcDbObject* object) override { hear("opened " + text(object)); }
    void modified(const AcDbObject* object) override { hear("modified " + text(object)); }
    void modifyUndone(const AcDbObject* object) override {
        hear((object->isUndoing() ? "undone " : "undone outside ") + text(object));
    }
    void unappended(const AcDbObject*) override { hear("unappended"); }
    void reappended(const AcDbObject*) override { hear("reappended"); }
    void objectClosed(const AcDbObjectId id) override {
        AcDbObject* object = nullptr;
        const bool free = acdbOpenAcDbObject(object, id, AcDb::kForRead, true) == Acad::eOk;
        hear(free ? "closed" : "closed and still open");
        // Its closing would be heard as well.
        if (object != nullptr)
            static_cast<AcDbStub*>(id)->bits -= 1;
    }

private:
    static std::string text(const AcDbObject* object) {
        const std::wstring wide = CloneEntity::cast(object)->fields.text;
        return std::string(wide.begin(), wide.end());
    }
    void hear(const std::string& what) {
        heard.push_back(what);
        if (also)
            also(what);
    }
};

class DatabaseListener : public AcDbDatabaseReactor {
public:
    Heard heard;

    void objectAppended(const AcDbDatabase* database, const AcDbObject* object) override {
        hear(database, object, object->ownerId().isNull() ? "appended without owner" : "appended");
    }
    void objectUnAppended(const AcDbDatabase* database, const AcDbObject* object) override {
        hear(database, object, "unappended");
    }
    void objectReAppended(const AcDbDatabase* database, const AcDbObject* object) override {
        hear(database, object, "reappended");
    }
    void objectOpenedForModify(const AcDbDatabase* database, const AcDbObject* object) override {
        hear(database, object, "opened");
    }
    void objectModified(const AcDbDatabase* database, const AcDbObject* object) override {
        hear(database, object, "modified");
    }
    void objectErased(const AcDbDatabase* database, const AcDbObject* object,
                      Adesk::Boolean erased) override {
        hear(database, object, erased ? "erased" : "unerased");
    }
    void goodbye(const AcDbDatabase*) override { heard.push_back("goodbye"); }

private:
    void hear(const AcDbDatabase* database, const AcDbObject* object, const std::string& what) {
        EXPECT_EQ(object->database(), database);
        if (CloneEntity::cast(object) != nullptr)
            heard.push_back(what);
    }
};

class Reactors : public CloneFixture {
protected:
    void SetUp() override {
        CloneFixture::SetUp();
        m_a = entity(modelSpace(*m_from), L"A");
        embedded::forgetHistory(*m_from);
    }
    void listen(ObjectListener& listener) {
        auto* object = open<CloneEntity>(m_a);
        EXPECT_EQ(object->addReactor(&listener), Acad::eOk);
        object->close();
        listener.heard.clear();
    }
    void silence(ObjectListener& listener) {
        auto* object = open<CloneEntity>(m_a, AcDb::kForRead, true);
        EXPECT_EQ(object->removeReactor(&listener), Acad::eOk);
        object->close();
    }
    void setText(const wchar_t* text) {
        change<CloneEntity>(m_a, [&](CloneEntity& e) { e.fields.text = text; });
    }

    AcDbObjectId m_a;
};

TEST_F(Reactors, AChangeIsToldBeforeItAndWhenTheObjectIsClosed) {
    ObjectListener listener;
    listen(listener);
    setText(L"B");
    EXPECT_EQ(listener.heard, (Heard{"opened A", "modified B", "closed"}));
    listener.heard.clear();
    open<CloneEntity>(m_a)->close();
    EXPECT_EQ(listener.heard, (Heard{"closed"}));
    silence(listener);
}

TEST_F(Reactors, SeveralChangesOfOneOpeningAreOne) {
    ObjectListener listener;
    listen(listener);
    auto* object = open<CloneEntity>(m_a, AcDb::kForWrite);
    object->assertWriteEnabled();
    object->assertWriteEnabled();
    object->downgradeOpen();
    EXPECT_EQ(listener.heard, (Heard{"opened A", "modified A"}));
    object->close();
    EXPECT_EQ(listener.heard, (Heard{"opened A", "modified A", "closed"}));
    silence(listener);
}

TEST_F(Reactors, AnErasingIsToldAtTheClose) {
    ObjectListener listener;
    listen(listener);
    change<CloneEntity>(m_a, [](CloneEntity& e) { e.erase(); });
    EXPECT_EQ(listener.heard, (Heard{"opened A", "modified A", "erased", "closed"}));
    listener.heard.clear();
    auto* object = open<CloneEntity>(m_a, AcDb::kForWrite, true);
    object->erase(false);
    object->close();
    EXPECT_EQ(listener.heard, (Heard{"opened A", "modified A", "unerased", "closed"}));
    listener.heard.clear();
    object = open<CloneEntity>(m_a, AcDb::kForWrite);
    object->erase();
    object->erase(false);
    object->close();
    EXPECT_EQ(listener.heard, (Heard{"opened A", "modified A", "closed"})) << "it is as it was";
    silence(listener);
}

TEST_F(Reactors, UndoAndRedoTell) {
    ObjectListener listener;
    listen(listener);
    embedded::beginCommand(*m_from);
    setText(L"B");
    embedded::beginCommand(*m_from);
    change<CloneEntity>(m_a, [](CloneEntity& e) { e.erase(); });
    listener.heard.clear();
    embedded::undo(*m_from);
    EXPECT_EQ(listener.heard.front(), "unerased");
    listener.heard.clear();
    embedded::undo(*m_from);
    EXPECT_EQ(listener.heard, (Heard{"undone A"}));
    listener.heard.clear();
    embedded::redo(*m_from);
    EXPECT_EQ(listener.heard, (Heard{"undone B"}));
    silence(listener);
    auto* object = open<CloneEntity>(m_a);
    EXPECT_FALSE(object->isUndoing());
    EXPECT_FALSE(object->isModified());
    object->close();
}

TEST_F(Reactors, AMakingThatIsTakenBackIsToldAsSuch) {
    DatabaseListener listener;
    ASSERT_EQ(m_from->addReactor(&listener), Acad::eOk);
    embedded::beginCommand(*m_from);
    const AcDbObjectId b = entity(modelSpace(*m_from), L"B");
    EXPECT_EQ(listener.heard, (Heard{"appended"}));
    ObjectListener of;
    auto* object = open<CloneEntity>(b);
    object->addReactor(&of);
    object->close();
    listener.heard.clear();
    of.heard.clear();
    embedded::undo(*m_from);
    embedded::redo(*m_from);
    EXPECT_EQ(listener.heard, (Heard{"unappended", "reappended"}));
    EXPECT_EQ(of.heard, (Heard{"unappended", "reappended"}));
    object = open<CloneEntity>(b);
    object->removeReactor(&of);
    object->close();
    m_from->removeReactor(&listener);
}

TEST_F(Reactors, ADatabasesReactorHearsOfAllItsObjects) {
    DatabaseListener listener, other;
    EXPECT_EQ(m_from->addReactor(nullptr), Acad::eInvalidInput);
    ASSERT_EQ(m_from->addReactor(&listener), Acad::eOk);
    EXPECT_EQ(m_from->addReactor(&listener), Acad::eDuplicateKey);
    ASSERT_EQ(m_to->addReactor(&other), Acad::eOk);
    setText(L"B");
    change<CloneEntity>(m_a, [](CloneEntity& e) { e.erase(); });
    EXPECT_EQ(listener.heard, (Heard{"opened", "modified", "opened", "modified", "erased"}));
    EXPECT_TRUE(other.heard.empty());
    EXPECT_EQ(m_from->removeReactor(&listener), Acad::eOk);
    EXPECT_EQ(m_from->removeReactor(&listener), Acad::eKeyNotFound);
    m_to.reset();
    EXPECT_EQ(other.heard, (Heard{"goodbye"}));
}

TEST_F(Reactors, EveryWayIntoADatabaseIsTold) {
    class Counter : public AcDbDatabaseReactor {
    public:
        int appended = 0;
        void objectAppended(const AcDbDatabase*, const AcDbObject*) override { ++appended; }
    } counter;
    m_from->addReactor(&counter);
    layer(*m_from, L"L", 1);
    EXPECT_EQ(counter.appended, 1);
    const AcDbObjectId d = dictionary(*m_from, {L"D"});
    EXPECT_EQ(counter.appended, 2);
    node(d, L"N");
    EXPECT_EQ(counter.appended, 3);
    change<CloneEntity>(m_a, [](CloneEntity& e) { e.createExtensionDictionary(); });
    EXPECT_EQ(counter.appended, 4);
    auto* loose = new CloneNode;
    m_from->addAcDbObject(loose);
    loose->close();
    EXPECT_EQ(counter.appended, 5);
    m_from->removeReactor(&counter);
}

TEST_F(Reactors, WhoIsRemovedWhileTheyAreToldIsNotCalled) {
    ObjectListener first, second, third;
    listen(first);
    listen(second);
    listen(third);
    auto* object = open<CloneEntity>(m_a, AcDb::kForWrite);
    EXPECT_EQ(object->addReactor(&first), Acad::eDuplicateKey);
    EXPECT_EQ(object->addReactor(nullptr), Acad::eInvalidInput);
    for (ObjectListener* listener : {&first, &second, &third})
        listener->heard.clear();
    first.also = [&](const std::string&) {
        object->removeReactor(&first);
        object->removeReactor(&second);
    };
    object->assertWriteEnabled();
    object->close();
    EXPECT_EQ(first.heard, (Heard{"opened A"}));
    EXPECT_TRUE(second.heard.empty());
    EXPECT_EQ(third.heard, (Heard{"opened A", "modified A", "closed"}));
    silence(third);
    object = open<CloneEntity>(m_a);
    EXPECT_EQ(object->removeReactor(&first), Acad::eKeyNotFound);
    object->close();
}

TEST_F(Reactors, OneThatThrowsIsPrintedAndTheNextIsTold) {
    std::wstring printed;
    const embedded::ConsoleSink before =
        embedded::setConsoleSink([&](const std::wstring& text) { printed += text; });
    ObjectListener bad, good;
    listen(bad);
    listen(good);
    bad.also = [](const std::string& what) {
        if (what == "modified B")
            throw std::runtime_error("no");
    };
    good.heard.clear();
    setText(L"B");
    embedded::setConsoleSink(before);
    EXPECT_EQ(printed, L"A reactor failed: no\n");
    EXPECT_EQ(good.heard, (Heard{"opened A", "modified B", "closed"}));
    silence(bad);
    silence(good);
}

TEST_F(Reactors, TheEndOfADatabaseIsTheEndOfItsObjects) {
    ObjectListener listener;
    listen(listener);
    m_from.reset();
    EXPECT_EQ(listener.heard, (Heard{"goodbye"}));
}

TEST_F(Reactors, ATransactionTellsAtItsEnd) {
    ObjectListener listener;
    listen(listener);
    auto* manager = m_from->transactionManager();
    manager->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(manager->getObject(object, m_a, AcDb::kForWrite), Acad::eOk);
    object->assertWriteEnabled();
    object->close();
    EXPECT_EQ(listener.heard, (Heard{"opened A"}));
    manager->endTransaction();
    EXPECT_EQ(listener.heard, (Heard{"opened A", "modified A", "closed"}));
    silence(listener);
}

TEST_F(Reactors, AnObjectThatIsNamedAsReactorIsTold) {
    const AcDbObjectId n = node(dictionary(*m_from, {L"D"}), L"N");
    change<CloneEntity>(m_a, [&](CloneEntity& e) { e.addPersistentReactor(n); });
    CloneNode::heard().clear();
    setText(L"B");
    EXPECT_EQ(CloneNode::heard(), (Texts{L"N modified"}));
    CloneNode::heard().clear();
    change<CloneEntity>(m_a, [](CloneEntity& e) { e.erase(); });
    EXPECT_EQ(CloneNode::heard(), (Texts{L"N modified", L"N erased"}));
    CloneNode::heard().clear();
    AcDbIdMapping mapping;
    auto* object = open<CloneEntity>(m_a, AcDb::kForWrite, true);
    object->erase(false);
    object->close();
    CloneNode::heard().clear();
    ASSERT_EQ(m_from->deepCloneObjects(ids({m_a}), modelSpace(*m_from), mapping), Acad::eOk);
    EXPECT_EQ(CloneNode::heard(), (Texts{L"N copied"}));
    auto* copy = open<CloneEntity>(cloneOf(mapping, m_a));
    EXPECT_TRUE(copy->hasPersistentReactor(n));
    copy->close();
    change<CloneNode>(n, [](CloneNode& one) { one.erase(); });
    CloneNode::heard().clear();
    setText(L"C");
    EXPECT_TRUE(CloneNode::heard().empty());
}

TEST_F(Reactors, AReactorIsMadeFromItsBytesForAChangeAndNotForAReading) {
    const AcDbObjectId n = node(dictionary(*m_from, {L"D"}), L"N");
    change<CloneEntity>(m_a, [&](CloneEntity& e) { e.addPersistentReactor(n); });
    CloneFolder folder;
    std::string error;
    ASSERT_TRUE(embedded::saveDocument(*m_from, folder.file(L"a.dwg"), error)) << error;
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(folder.file(L"a.dwg").c_str()), Acad::eOk);
    AcDbObjectId a, reactor;
    ASSERT_EQ(again.getAcDbObjectId(a, false, m_a.handle()), Acad::eOk);
    ASSERT_EQ(again.getAcDbObjectId(reactor, false, n.handle()), Acad::eOk);
    CloneNode::heard().clear();
    open<CloneEntity>(a)->close();
    EXPECT_EQ(static_cast<AcDbStub*>(reactor)->object, nullptr);
    change<CloneEntity>(a, [](CloneEntity& e) { e.fields.text = L"B"; });
    EXPECT_EQ(CloneNode::heard(), (Texts{L"N modified"}));
    EXPECT_FALSE(static_cast<AcDbStub*>(reactor)->isOpen());
}

TEST_F(Reactors, CopyingIsToldToTheOriginalAndNobodyElse) {
    ObjectListener listener;
    listen(listener);
    AcDbIdMapping mapping;
    ASSERT_EQ(m_from->deepCloneObjects(ids({m_a}), modelSpace(*m_from), mapping), Acad::eOk);
    EXPECT_EQ(listener.heard, (Heard{"copied", "closed"}));
    listener.heard.clear();
    change<CloneEntity>(cloneOf(mapping, m_a), [](CloneEntity& e) { e.fields.text = L"C"; });
    EXPECT_TRUE(listener.heard.empty()) << "a copy has no reactors of the other's";
    auto* object = open<CloneEntity>(m_a);
    delete object->clone();
    EXPECT_EQ(listener.heard, (Heard{"copied"}));
    object->close();
    silence(listener);
}

TEST_F(Reactors, GivingUpTakesTheChangesOfTheOpeningBack) {
    ObjectListener listener;
    listen(listener);
    auto* object = open<CloneEntity>(m_a, AcDb::kForWrite);
    object->assertWriteEnabled();
    object->fields.text = L"B";
    EXPECT_EQ(object->cancel(), Acad::eOk);
    EXPECT_EQ(listener.heard, (Heard{"opened A", "cancelled", "closed"}));
    EXPECT_EQ(fieldsOf(m_a).text, L"A");
    object = open<CloneEntity>(m_a, AcDb::kForWrite);
    EXPECT_EQ(object->cancel(), Acad::eOk);
    object = open<CloneEntity>(m_a);
    EXPECT_EQ(object->cancel(), Acad::eOk) << "read only: it is a close";
    EXPECT_EQ(object->close(), Acad::eNotOpenForRead);
    silence(listener);
}

TEST_F(Reactors, WhatCannotBeGivenUpStaysOpen) {
    CloneEntity loose;
    EXPECT_EQ(loose.cancel(), Acad::eNoDatabase);
    setText(L"B"); // the step has its state already
    auto* object = open<CloneEntity>(m_a, AcDb::kForWrite);
    object->assertWriteEnabled();
    object->fields.text = L"C";
    EXPECT_EQ(object->cancel(), Acad::eNotApplicable);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_EQ(object->fields.text, L"C");
    object->erase();
    EXPECT_EQ(object->cancel(), Acad::eNotApplicable);
    object->close();
    auto* block = open<AcDbBlockTableRecord>(modelSpace(*m_from), AcDb::kForWrite);
    auto* made = new CloneEntity;
    block->appendAcDbEntity(made);
    EXPECT_EQ(made->cancel(), Acad::eNotApplicable);
    made->close();
    block->close();
    auto* manager = m_from->transactionManager();
    manager->startTransaction();
    AcDbObject* held = nullptr;
    ASSERT_EQ(manager->getObject(held, made->objectId(), AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(held->cancel(), Acad::eNotApplicable);
    manager->endTransaction();
}

} // namespace
