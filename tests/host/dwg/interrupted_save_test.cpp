#include "support/failing_file_calls.h"
#include "thing_fixture.h"

using tests::FailingFileCalls;

namespace {

class InterruptedSave : public ThingFixture, public testing::WithParamInterface<FailingFileCalls::Manner> {
protected:
    void SetUp() override {
        ThingFixture::SetUp();
        AcDbDatabase first(true);
        put(first, L"THING", made<FiledThing>(L"old"));
        save(first, L"drawing.dwg");
        m_old = bytesOfFile(narrowPath(L"drawing.dwg"));
        m_database = read(L"drawing.dwg");
        put(*m_database, L"MORE", made<FiledThing>(L"new"));
        save(*m_database, L"other.dwg");
        put(*m_database, L"AGAIN", made<FiledThing>(L"newer"));
        ASSERT_TRUE(m_database->isModified());
    }

    // Saves over the old drawing with the given call failing. Answers whether a call failed.
    bool saveFailing(int call) {
        // What a dead process leaves beside the drawing stays there, and the next save takes another name.
        for (const std::wstring& name : platform::listFolder(m_folder))
            if (name.rfind(L"drawing.dwg.new", 0) == 0)
                platform::removeFile(path(name));
        writeFile(narrowPath(L"drawing.dwg"), m_old);
        FailingFileCalls calls(call, GetParam());
        m_status = m_database->saveAs(path(L"drawing.dwg").c_str());
        return calls.hasStruck();
    }

    embedded::dwg::Bytes m_old;
    std::unique_ptr<AcDbDatabase> m_database;
    Acad::ErrorStatus m_status = Acad::eOk;
};

} // namespace

TEST_P(InterruptedSave, LeavesTheOldOrTheNewDrawingWhole) {
    ASSERT_FALSE(saveFailing(0));
    ASSERT_EQ(m_status, Acad::eOk);
    const embedded::dwg::Bytes whole = bytesOfFile(narrowPath(L"drawing.dwg"));
    ASSERT_FALSE(whole == m_old);
    bool keptOld = false;
    for (int call = 1; saveFailing(call); ++call) {
        const embedded::dwg::Bytes left = bytesOfFile(narrowPath(L"drawing.dwg"));
        EXPECT_TRUE(left == m_old || left == whole) << "call " << call;
        EXPECT_EQ(m_status, Acad::eFilerError) << "call " << call;
        EXPECT_NE(embedded::lastFileError().find("drawing.dwg"), std::string::npos);
        keptOld = keptOld || left == m_old;
    }
    EXPECT_TRUE(keptOld);
    EXPECT_EQ(m_status, Acad::eOk) << "the last one met no failure";
}

TEST_P(InterruptedSave, LeavesTheDatabaseModifiedAndUnderItsName) {
    ASSERT_TRUE(saveFailing(1));
    EXPECT_TRUE(m_database->isModified());
    const ACHAR* name = nullptr;
    ASSERT_EQ(m_database->getFilename(name), Acad::eOk);
    EXPECT_EQ(std::wstring(name), path(L"other.dwg"));
}

INSTANTIATE_TEST_SUITE_P(Manners, InterruptedSave,
                         testing::Values(FailingFileCalls::kError, FailingFileCalls::kDeath));
