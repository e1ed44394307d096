#include "thing_fixture.h"

#include <algorithm>
#include <random>

namespace {

class Damage : public ThingFixture {
protected:
    void SetUp() override {
        ThingFixture::SetUp();
        const std::string original = drawingFile("small_AC1015.dwg");
        if (!std::filesystem::exists(original))
            GTEST_SKIP() << "no " << original;
        // With objects of a module's classes in it.
        const auto database = readFile(platform::fromUtf8(original));
        put(*database, L"THING", made<FiledThing>(L"thing"));
        append(*database, made<FiledEntity>(L"entity"));
        save(*database, L"whole.dwg");
        m_whole = bytesOfFile(narrowPath(L"whole.dwg"));
    }

    // Reads a file of these bytes, opens each object, and saves what there is. What does not open says why in
    // one line.
    bool survives(const embedded::dwg::Bytes& bytes, bool andSave = true) {
        writeFile(narrowPath(L"damaged.dwg"), bytes);
        AcDbDatabase database(false);
        const Acad::ErrorStatus es = database.readDwgFile(path(L"damaged.dwg").c_str());
        if (es != Acad::eOk) {
            expectOneLine();
            EXPECT_EQ(database.core().stubs().size(), 0u);
            return false;
        }
        embedded::forEachObject(database, [&](AcDbObjectId id) {
            AcDbObject* object = nullptr;
            if (acdbOpenAcDbObject(object, id, AcDb::kForRead) == Acad::eOk)
                object->close();
            else
                expectOneLine();
        });
        if (andSave) {
            EXPECT_EQ(database.saveAs(path(L"saved.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
        }
        EXPECT_TRUE(bytesOfFile(narrowPath(L"damaged.dwg")) == bytes) << "the file is left alone";
        return true;
    }

    static void expectOneLine() {
        const std::string& line = embedded::lastFileError();
        EXPECT_NE(line.find("damaged.dwg: "), std::string::npos) << line;
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    }

    embedded::dwg::Bytes m_whole;
};

} // namespace

TEST_F(Damage, NoneIsWhole) {
    EXPECT_TRUE(survives(m_whole));
    EXPECT_TRUE(bytesOfFile(narrowPath(L"saved.dwg")) == m_whole);
}

TEST_F(Damage, CutOffAtEvery512thByte) {
    for (std::size_t size = 0; size < m_whole.size(); size += 512) {
        const embedded::dwg::Bytes cut(m_whole.begin(), m_whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(survives(cut)) << size;
    }
}

TEST_F(Damage, SingleBytesChangedAtFiveThousandPlaces) {
    std::mt19937 random(2000);
    std::size_t opened = 0;
    for (int i = 0; i < 5000; ++i) {
        embedded::dwg::Bytes changed = m_whole;
        changed[random() % changed.size()] ^= static_cast<std::uint8_t>(1 + random() % 255);
        // A save waits for the disk: not each time.
        opened += survives(changed, i % 250 == 0) ? 1 : 0;
    }
    // Most of the file is a picture, and objects that each stand for themselves.
    EXPECT_GT(opened, 2500u);
    EXPECT_LT(opened, 5000u);
}

TEST_F(Damage, ADamagedObjectFailsAloneAndIsSavedAsItStands) {
    const auto whole = readFile(path(L"whole.dwg"));
    const AcDbObjectId id = find(*whole, L"THING");
    const std::string body = bytesOf(m_whole, id);
    const auto place = std::search(m_whole.begin(), m_whole.end(), body.begin(), body.end(),
                                   [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); });
    ASSERT_NE(place, m_whole.end());
    embedded::dwg::Bytes changed = m_whole;
    changed[static_cast<std::size_t>(place - m_whole.begin()) + body.size() / 2] ^= 0x20;
    EXPECT_TRUE(survives(changed));
    const auto damaged = readFile(path(L"damaged.dwg"));
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(object, find(*damaged, L"THING"), AcDb::kForRead),
              Acad::eDwgCRCDoesNotMatch);
    EXPECT_NE(embedded::lastFileError().find("(FILEDTHING): wrong check sum"), std::string::npos);
    EXPECT_TRUE(bytesOfFile(narrowPath(L"saved.dwg")) == changed);
}

TEST_F(Damage, ForeignEmptyAndNewerFiles) {
    EXPECT_FALSE(survives({}));
    EXPECT_FALSE(survives({'A', 'C'}));
    const std::string text = "%PDF-1.4 and so on";
    EXPECT_FALSE(survives(embedded::dwg::Bytes(text.begin(), text.end())));
    embedded::dwg::Bytes newer = m_whole;
    newer[4] = '3';
    newer[5] = '2';
    EXPECT_FALSE(survives(newer));
    EXPECT_NE(embedded::lastFileError().find(
                  "drawing version AC1032 (2018) is not supported; only AC1015 (2000) is"),
              std::string::npos);
}
