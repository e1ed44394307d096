#include "thing_fixture.h"

#include "dwg/container_r2000.h"
#include "dwg/object_envelope.h"

namespace {

class BlockChainsTest : public ThingFixture {
protected:
    // The texts of model space's entities in order.
    static std::vector<std::wstring> texts(AcDbDatabase& database) {
        std::vector<std::wstring> found;
        for (const AcDbObjectId& id : entities(database)) {
            FiledEntity* entity = nullptr;
            if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk)
                continue;
            found.push_back(entity->fields.text);
            entity->close();
        }
        return found;
    }

    static std::vector<AcDbObjectId> entities(AcDbDatabase& database) {
        std::vector<AcDbObjectId> ids;
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(acdbOpenObject(space, database.core().roots.modelSpace, AcDb::kForRead), Acad::eOk);
        AcDbBlockTableRecordIterator* made = nullptr;
        EXPECT_EQ(space->newIterator(made), Acad::eOk);
        const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
        for (; !iterator->done(); iterator->step()) {
            AcDbObjectId id;
            EXPECT_EQ(iterator->getEntityId(id), Acad::eOk);
            ids.push_back(id);
        }
        space->close();
        return ids;
    }

    static void erase(AcDbObjectId id) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(object->erase(), Acad::eOk);
        object->close();
    }

    std::wstring sample() const { return platform::fromUtf8(drawingFile("small_AC1015.dwg")); }
};

} // namespace

TEST_F(BlockChainsTest, EntitiesOfANewDrawingComeBackInTheirOrder) {
    AcDbDatabase database(true);
    for (const wchar_t* text : {L"one", L"two", L"three"})
        append(database, made<FiledEntity>(text));
    save(database, L"a.dwg");
    EXPECT_EQ(texts(*read(L"a.dwg")), (std::vector<std::wstring>{L"one", L"two", L"three"}));
}

TEST_F(BlockChainsTest, AnEntityThatIsAppendedFollowsTheLastOneOfTheFile) {
    NEED_DRAWING("small_AC1015.dwg");
    const auto database = readFile(sample());
    const std::vector<AcDbObjectId> before = entities(*database);
    ASSERT_EQ(before.size(), 6u);
    const AcDbObjectId fresh = append(*database, made<FiledEntity>(L"fresh"));
    save(*database, L"a.dwg");
    const auto again = read(L"a.dwg");
    const std::vector<AcDbObjectId> after = entities(*again);
    ASSERT_EQ(after.size(), 7u);
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(after[i].handle(), before[i].handle());
    EXPECT_EQ(after.back().handle(), fresh.handle());
    EXPECT_EQ(texts(*again), std::vector<std::wstring>{L"fresh"});
}

TEST_F(BlockChainsTest, AppendingChangesTheBlockAndItsLastEntityAlone) {
    NEED_DRAWING("small_AC1015.dwg");
    const auto database = readFile(sample());
    const AcDbObjectId last = entities(*database).back();
    append(*database, made<FiledEntity>(L"fresh"));
    save(*database, L"a.dwg");
    const auto before = objectsOf(bytesOfFile(drawingFile("small_AC1015.dwg")));
    const auto after = objectsOf(bytesOfFile(narrowPath(L"a.dwg")));
    std::vector<std::uint64_t> changed;
    for (const auto& object : before) {
        if (after.at(object.first) != object.second)
            changed.push_back(object.first);
    }
    const std::uint64_t space = database->core().roots.modelSpace.handle();
    EXPECT_EQ(changed, (std::vector<std::uint64_t>{space, static_cast<Adesk::UInt64>(last.handle())}));
    EXPECT_EQ(after.size(), before.size() + 1);
}

TEST_F(BlockChainsTest, AnErasedEntityLeavesItsNeighboursChained) {
    NEED_DRAWING("small_AC1015.dwg");
    for (std::size_t victim : {0u, 2u, 5u}) {
        const auto database = readFile(sample());
        std::vector<AcDbObjectId> left = entities(*database);
        erase(left[victim]);
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(victim));
        save(*database, L"a.dwg");
        const auto again = read(L"a.dwg");
        const std::vector<AcDbObjectId> after = entities(*again);
        ASSERT_EQ(after.size(), left.size()) << victim;
        for (std::size_t i = 0; i < left.size(); ++i)
            EXPECT_EQ(after[i].handle(), left[i].handle());
    }
}

TEST_F(BlockChainsTest, ABlockWithoutEntitiesLeftIsEmpty) {
    NEED_DRAWING("small_AC1015.dwg");
    const auto database = readFile(sample());
    for (const AcDbObjectId& id : entities(*database))
        erase(id);
    save(*database, L"a.dwg");
    EXPECT_TRUE(entities(*read(L"a.dwg")).empty());
}
