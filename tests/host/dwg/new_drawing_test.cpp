#include "thing_fixture.h"

#include "rxclass.h"

namespace {

class NewDrawing : public ThingFixture {};

} // namespace

TEST_F(NewDrawing, CanBeReadAgainWithAllItsObjects) {
    AcDbDatabase database(true);
    save(database, L"new.dwg");
    const auto again = read(L"new.dwg");
    EXPECT_EQ(embedded::countByKind(*again)[L"LAYER"], 1u);
    std::size_t opened = 0;
    embedded::forEachObject(*again, [&](AcDbObjectId id) {
        AcDbObject* object = nullptr;
        EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk) << embedded::lastFileError();
        if (object == nullptr)
            return;
        EXPECT_FALSE(object->isAProxy());
        ++opened;
        object->close();
    });
    std::size_t made = 0;
    embedded::forEachObject(database, [&](AcDbObjectId) { ++made; });
    EXPECT_EQ(opened, made);
}

TEST_F(NewDrawing, HasItsRootsUnderTheSameHandles) {
    AcDbDatabase database(true);
    save(database, L"new.dwg");
    const auto again = read(L"new.dwg");
    const embedded::RootIds& before = database.core().roots;
    const embedded::RootIds& after = again->core().roots;
    for (AcDbObjectId embedded::RootIds::*root :
         {&embedded::RootIds::blockTable, &embedded::RootIds::layerTable, &embedded::RootIds::namedObjects,
          &embedded::RootIds::groups, &embedded::RootIds::layouts, &embedded::RootIds::plotStyles,
          &embedded::RootIds::modelSpace, &embedded::RootIds::paperSpace, &embedded::RootIds::layerZero,
          &embedded::RootIds::byLayerLinetype, &embedded::RootIds::textStyleStandard,
          &embedded::RootIds::dimStyleStandard, &embedded::RootIds::mlineStyleStandard,
          &embedded::RootIds::currentLayer}) {
        EXPECT_FALSE((after.*root).isNull());
        EXPECT_EQ((before.*root).handle(), (after.*root).handle());
    }
    EXPECT_EQ(database.handseed(), again->handseed());
}

TEST_F(NewDrawing, KeepsWhatIsPutIn) {
    AcDbDatabase database(true);
    const AcDbObjectId id = put(database, L"THING", made<FiledThing>(L"thing"));
    save(database, L"new.dwg");
    const auto again = read(L"new.dwg");
    EXPECT_EQ(find(*again, L"THING").handle(), id.handle());
    EXPECT_GT(static_cast<Adesk::UInt64>(again->handseed()), static_cast<Adesk::UInt64>(id.handle()));
}

TEST_F(NewDrawing, SavedAgainWithoutAChangeItIsTheSameFile) {
    AcDbDatabase database(true);
    save(database, L"new.dwg");
    save(*read(L"new.dwg"), L"again.dwg");
    EXPECT_TRUE(bytesOfFile(narrowPath(L"new.dwg")) == bytesOfFile(narrowPath(L"again.dwg")));
}
