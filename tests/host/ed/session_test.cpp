#include "embedded/session.h"

#include "dbapserv.h"
#include "dbdict.h"
#include "embedded/inventory.h"
#include "rx_fixture.h"

#include <fstream>

namespace {

class Session : public RxFixture {
protected:
    void TearDown() override {
        embedded::closeAllDocuments();
        RxFixture::TearDown();
    }

    static AcDbDatabase* working() { return acdbHostApplicationServices()->workingDatabase(); }

    static std::vector<int> told(const wchar_t* module) {
        const std::vector<int> messages = journal(module)->messages;
        journal(module)->messages.clear();
        return messages;
    }

    std::wstring file(const wchar_t* name) const { return platform::joinPath(m_folder, name); }

    // Puts a dictionary into the named object dictionary.
    static AcDbObjectId put(AcDbDatabase& database, const wchar_t* name) {
        AcDbDictionary* named = nullptr;
        EXPECT_EQ(database.getNamedObjectsDictionary(named, AcDb::kForWrite), Acad::eOk);
        auto* dictionary = new AcDbDictionary;
        AcDbObjectId id;
        EXPECT_EQ(named->setAt(name, dictionary, id), Acad::eOk);
        dictionary->close();
        named->close();
        return id;
    }

    std::string m_error;
};

using Messages = std::vector<int>;

TEST_F(Session, ADocumentIsTheWorkingDatabaseWhenApplicationsHearOfIt) {
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    told(L"Rx_Plain.dbx");
    AcDbDatabase* document = embedded::newDocument();
    EXPECT_EQ(working(), document);
    EXPECT_EQ(told(L"Rx_Plain.dbx"), Messages{AcRx::kLoadDwgMsg});
    embedded::closeDocument(document);
    EXPECT_EQ(told(L"Rx_Plain.dbx"), Messages{AcRx::kUnloadDwgMsg});
    EXPECT_EQ(working(), nullptr);
}

TEST_F(Session, AnApplicationThatComesLaterIsNotToldOfDrawingsThatAreOpen) {
    embedded::newDocument();
    ASSERT_TRUE(load(L"rx_second.dbx"));
    EXPECT_EQ(told(L"rx_second.dbx"), Messages{AcRx::kInitAppMsg});
}

TEST_F(Session, ASaveIsToldBeforeItHappens) {
    AcDbDatabase* document = embedded::newDocument();
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    told(L"Rx_Plain.dbx");
    ASSERT_TRUE(embedded::saveDocument(*document, file(L"a.dwg"), m_error)) << m_error;
    EXPECT_EQ(told(L"Rx_Plain.dbx"), Messages{AcRx::kSaveMsg});
}

TEST_F(Session, TheEndTellsEveryoneThenUnloads) {
    embedded::newDocument();
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    told(L"Rx_Plain.dbx");
    embedded::endSession();
    EXPECT_EQ(told(L"Rx_Plain.dbx"),
              (Messages{AcRx::kPreQuitMsg, AcRx::kUnloadDwgMsg, AcRx::kQuitMsg, AcRx::kUnloadAppMsg}));
    EXPECT_TRUE(embedded::documents().empty());
    EXPECT_TRUE(loaded().empty());
}

TEST_F(Session, ClosingAnotherDocumentLeavesTheOneThatIsWorkedIn) {
    AcDbDatabase* first = embedded::newDocument();
    AcDbDatabase* second = embedded::newDocument();
    AcDbDatabase* third = embedded::newDocument();
    embedded::activateDocument(*second);
    embedded::closeDocument(third);
    EXPECT_EQ(working(), second);
    embedded::closeDocument(second);
    EXPECT_EQ(working(), first);
    EXPECT_EQ(embedded::documents(), std::vector<AcDbDatabase*>{first});
}

TEST_F(Session, ADatabaseThatIsEndedDirectlyIsNoDocumentAnyMore) {
    AcDbDatabase* first = embedded::newDocument();
    AcDbDatabase* second = embedded::newDocument();
    delete second;
    EXPECT_EQ(embedded::documents(), std::vector<AcDbDatabase*>{first});
    EXPECT_EQ(working(), nullptr);
    EXPECT_TRUE(acdbActiveDatabaseArray()->contains(first));
    EXPECT_FALSE(acdbActiveDatabaseArray()->contains(second));
}

TEST_F(Session, WhatIsSavedIsThereWhenTheDrawingIsOpenedAgain) {
    AcDbDatabase* document = embedded::newDocument();
    put(*document, L"MINE");
    EXPECT_TRUE(document->isModified());
    ASSERT_TRUE(embedded::saveDocument(*document, file(L"a.dwg"), m_error)) << m_error;
    EXPECT_FALSE(document->isModified());
    const auto before = embedded::countByKind(*document);
    embedded::closeDocument(document);
    document = embedded::openDocument(file(L"a.dwg"), m_error);
    ASSERT_NE(document, nullptr) << m_error;
    EXPECT_EQ(embedded::countByKind(*document), before) << "a kind has one name, in a file or not";
    EXPECT_EQ(embedded::fileVersion(*document), "AC1015");
    AcDbDictionary* named = nullptr;
    ASSERT_EQ(document->getNamedObjectsDictionary(named, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(named->has(L"mine"));
    named->close();
    const ACHAR* name = nullptr;
    EXPECT_EQ(document->getFilename(name), Acad::eOk);
    EXPECT_EQ(std::wstring(name), file(L"a.dwg"));
}

TEST_F(Session, AFileThatCannotBeReadGivesOneLineThatNamesIt) {
    std::ofstream(platform::toUtf8(file(L"bad.dwg"))) << "this is no drawing";
    const std::size_t before = embedded::documents().size();
    EXPECT_EQ(embedded::openDocument(file(L"bad.dwg"), m_error), nullptr);
    EXPECT_NE(m_error.find("bad.dwg: "), std::string::npos) << m_error;
    EXPECT_EQ(m_error.find('\n'), std::string::npos) << m_error;
    EXPECT_EQ(embedded::openDocument(file(L"missing.dwg"), m_error), nullptr);
    EXPECT_NE(m_error.find("missing.dwg"), std::string::npos) << m_error;
    EXPECT_EQ(embedded::documents().size(), before);
}

TEST_F(Session, UndoAndRedoMoveWholeCommands) {
    AcDbDatabase* document = embedded::newDocument();
    embedded::forgetHistory(*document);
    embedded::beginCommand(*document);
    const AcDbObjectId a = put(*document, L"A");
    const AcDbObjectId b = put(*document, L"B");
    embedded::beginCommand(*document);
    const AcDbObjectId c = put(*document, L"C");
    EXPECT_TRUE(embedded::undo(*document));
    EXPECT_TRUE(c.isErased());
    EXPECT_FALSE(b.isErased());
    EXPECT_TRUE(embedded::undo(*document));
    EXPECT_TRUE(a.isErased() && b.isErased());
    EXPECT_FALSE(embedded::undo(*document));
    EXPECT_TRUE(embedded::redo(*document));
    EXPECT_FALSE(a.isErased() || b.isErased());
    EXPECT_FALSE(embedded::undoRedoActive(*document));
}

} // namespace
