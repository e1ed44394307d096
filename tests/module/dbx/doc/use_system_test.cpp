#include "dbx/doc/use_system.h"

#include "base/exceptions.h"
#include "dbsymtb.h"
#include "dbx/doc/doc.h"
#include "platform/sanitizer.h"
#include "platform/text.h"
#include "support/report_recorder.h"
#include "support/system_records.h"

#include <memory>

using orv::SystemManager;
using orv::UseSystem;
using testing_support::makeStore;
using testing_support::putSystem;
using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::Texts;
using testing_support::Values;

namespace {

class PlainEntity : public AcDbEntity {};

class Element : public AcDbEntity, public orv::doc::DatabaseElementBase {
public:
    void setNodDatabaseId(const AcDbObjectId& id, const std::wstring& name) override {
        m_id = id;
        m_name = name;
    }
    AcDbObjectId getNodDatabaseId() override { return m_id; }
    const std::wstring& getNodDatabaseName() const override { return m_name; }

private:
    AcDbObjectId m_id;
    std::wstring m_name;
};

class UseSystemTest : public testing::Test {
protected:
    UseSystemTest() {
        makeStore(m_drawing, L"X");
        putSystem(m_drawing.db, L"ASDWG", 0);
        putSystem(m_drawing.db, L"X", 10);
    }

    // Puts an entity into model space, on a layer that is made if it is missing.
    template <class Entity>
    Entity* place(Entity* entity, const wchar_t* layer) {
        AcDbLayerTable* layers = nullptr;
        EXPECT_EQ(acdbOpenObject(layers, m_drawing.db.layerTableId(), AcDb::kForWrite), Acad::eOk);
        if (!layers->has(layer)) {
            auto* const record = new AcDbLayerTableRecord;
            EXPECT_EQ(record->setName(layer), Acad::eOk);
            EXPECT_EQ(layers->add(record), Acad::eOk);
            record->close();
        }
        layers->close();
        AcDbBlockTable* blocks = nullptr;
        EXPECT_EQ(acdbOpenObject(blocks, m_drawing.db.blockTableId(), AcDb::kForRead), Acad::eOk);
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
        blocks->close();
        EXPECT_EQ(space->appendAcDbEntity(entity), Acad::eOk);
        space->close();
        EXPECT_EQ(entity->setLayer(layer), Acad::eOk);
        m_placed.push_back(entity);
        return entity;
    }
    ~UseSystemTest() override {
        for (AcDbEntity* const entity : m_placed)
            entity->close();
    }

    StoreDrawing m_drawing;
    std::vector<AcDbEntity*> m_placed;
};

TEST_F(UseSystemTest, TheLayerNamesTheStoreBehindItsPrefix) {
    ReportRecorder reports;
    UseSystem use(place(new PlainEntity, L"123456789ASDWG"));
    ASSERT_TRUE(use);
    EXPECT_FALSE(use.empty());
    EXPECT_EQ(use.operator->(), SystemManager::instance().getSystemById(m_drawing.named).get());
    EXPECT_EQ(&use.get(), use.operator->());
    EXPECT_EQ(&*use, use.operator->());
    EXPECT_STREQ(use.layer().name(), L"123456789ASDWG");
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(UseSystemTest, ALayerOfTenCharactersGivesAStoreNameOfOne) {
    UseSystem use(place(new PlainEntity, L"123456789X"));
    ASSERT_TRUE(use);
    EXPECT_EQ(use->get_type(), orv::EBENE);
}

TEST_F(UseSystemTest, ALayerOfNineCharactersLeavesTheGuardEmptyWithoutAReport) {
    ReportRecorder reports;
    UseSystem use(place(new PlainEntity, L"123456789"));
    EXPECT_TRUE(use.empty());
    EXPECT_EQ(use.operator->(), nullptr);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(UseSystemTest, ThePrefixIsCountedInSixteenBitUnits) {
    // The character outside the first plane takes two of the nine.
    UseSystem use(place(new PlainEntity, (platform::fromUtf8("\xF0\x9F\x98\x80") + L"3456789X").c_str()));
    ASSERT_TRUE(use);
    EXPECT_EQ(use->get_type(), orv::EBENE);
}

TEST_F(UseSystemTest, ADamagedRecordThrowsOutOfTheFirstGuardOnly) {
    const std::int32_t record[] = {1, 15, 300, -1};
    testing_support::putRecord(m_drawing.db, L"X", 10, 100, record, sizeof record);
    PlainEntity* const entity = place(new PlainEntity, L"123456789X");
    ReportRecorder reports;
    EXPECT_THROW(UseSystem first(entity), orv::Exception);
    UseSystem second(entity);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->get_type(), orv::EBENE);
}

TEST_F(UseSystemTest, ALayerOfAnUnknownStoreIsReported) {
    ReportRecorder reports;
    UseSystem use(place(new PlainEntity, L"123456789nobody"));
    EXPECT_TRUE(use.empty());
    ASSERT_EQ(reports.conditions(), Texts{"m_system"});
    EXPECT_EQ(reports.at(0).values, (Values{{"layerName", "123456789nobody"}, {"dbName", "nobody"}}));
    EXPECT_EQ(reports.at(0).message, "system not found");
}

TEST_F(UseSystemTest, TheFirstGuardLooksTheDrawingThrough) {
    PlainEntity* const entity = place(new PlainEntity, L"123456789ASDWG");
    EXPECT_FALSE(SystemManager::instance().wasDatabaseCheckedAtLeastOnce(&m_drawing.db));
    const UseSystem first(entity);
    EXPECT_TRUE(SystemManager::instance().wasDatabaseCheckedAtLeastOnce(&m_drawing.db));
    const UseSystem second(entity);
    EXPECT_EQ(first.operator->(), second.operator->()); // not looked through again
}

TEST_F(UseSystemTest, AnElementsIdGoesBeforeItsNameAndItsLayer) {
    Element* const element = place(new Element, L"123456789X");
    element->setNodDatabaseId(m_drawing.named, L"X");
    EXPECT_EQ(UseSystem(element)->get_type(), orv::RAUM);
}

TEST_F(UseSystemTest, AnElementWhoseSystemIsGoneFallsBackOnItsStoreName) {
    Element* const element = place(new Element, L"123456789ASDWG");
    element->setNodDatabaseId(m_drawing.kelmoran, L"X");
    EXPECT_EQ(UseSystem(element)->get_type(), orv::EBENE);
    element->setNodDatabaseId(AcDbObjectId(), L"X");
    EXPECT_EQ(UseSystem(element)->get_type(), orv::EBENE);
}

TEST_F(UseSystemTest, AnElementWithoutALinkFallsBackOnItsLayer) {
    ReportRecorder reports;
    Element* const element = place(new Element, L"123456789X");
    element->setNodDatabaseId(m_drawing.kelmoran, L"nobody");
    EXPECT_EQ(UseSystem(element)->get_type(), orv::EBENE);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(UseSystemTest, AnElementInNoDrawingTakesTheOneOfItsStore) {
    const auto element = std::make_unique<Element>();
    element->setNodDatabaseId(m_drawing.named, L"");
    EXPECT_TRUE(UseSystem(element.get()));
}

TEST_F(UseSystemTest, AnEntityInNoDrawingIsReported) {
    ReportRecorder reports;
    const auto plain = std::make_unique<PlainEntity>();
    EXPECT_TRUE(UseSystem(plain.get()).empty());
    const auto element = std::make_unique<Element>();
    EXPECT_TRUE(UseSystem(element.get()).empty());
    EXPECT_EQ(reports.conditions(), (Texts{"0", "0"}));
}

TEST_F(UseSystemTest, ANullEntityIsReportedAndLeavesTheGuardEmpty) {
    ReportRecorder reports;
    EXPECT_TRUE(UseSystem(nullptr).empty());
    EXPECT_EQ(reports.messages(), Texts{"You passed a null pointer! Cannot determine the database!"});
    EXPECT_EQ(reports.at(0).severity, orv::smartassert::Severity::kError);
}

PLATFORM_ALLOW_NULL_REFERENCE const void* addressOf(const orv::System& system) { return &system; }

PLATFORM_ALLOW_NULL_REFERENCE const void* dereferenced(const UseSystem& use) { return addressOf(*use); }

TEST_F(UseSystemTest, AnEmptyGuardGivesANullReferenceWhereasGetThrows) {
    UseSystem use(place(new PlainEntity, L"0"));
    ReportRecorder reports;
    EXPECT_EQ(dereferenced(use), nullptr);
    EXPECT_EQ(reports.conditions(), Texts{"m_system"});
    EXPECT_EQ(reports.messages(), Texts{""});
    reports.clear();
    try {
        use.get();
        FAIL();
    } catch (const orv::Exception& failure) {
        EXPECT_STREQ(failure.what(), "attempt to dereference 0 pointer");
    }
    EXPECT_EQ(reports.conditions(), Texts{"m_system"});
    EXPECT_EQ(reports.messages(), Texts{"attempt to dereference 0 pointer"});
}

TEST_F(UseSystemTest, EveryGuardOnADrawingWithoutStoresReports) {
    AcDbDatabase db(true);
    const auto element = std::make_unique<Element>();
    element->setNodDatabaseId(db.namedObjectsDictionaryId(), L"ASDWG");
    ReportRecorder reports;
    EXPECT_TRUE(UseSystem(element.get()).empty());
    EXPECT_EQ(reports.size(), 0u); // its layer has no name to look for
    testing_support::removeEntry(m_drawing.db.namedObjectsDictionaryId(), L"KELMORAN");
    PlainEntity* const plain = place(new PlainEntity, L"123456789ASDWG");
    for (int round = 1; round <= 2; ++round) {
        EXPECT_TRUE(UseSystem(plain).empty());
        EXPECT_EQ(reports.size(), static_cast<std::size_t>(round));
    }
}

} // namespace
