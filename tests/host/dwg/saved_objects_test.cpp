#include "thing_fixture.h"

#include "db/object_access.h"
#include "dbproxy.h"
#include "dwg/class_table.h"

#include <algorithm>

namespace {

class SavedObjects : public ThingFixture {
protected:
    template <class T>
    static ThingFields fieldsOf(AcDbObjectId id) {
        T* thing = nullptr;
        EXPECT_EQ(acdbOpenObject(thing, id, AcDb::kForRead), Acad::eOk) << embedded::lastFileError();
        if (thing == nullptr)
            return {};
        const ThingFields fields = thing->fields;
        thing->close();
        return fields;
    }

    static Acad::ErrorStatus openStatus(AcDbObjectId id) {
        AcDbObject* object = nullptr;
        const Acad::ErrorStatus es = acdbOpenAcDbObject(object, id, AcDb::kForRead);
        if (object != nullptr)
            object->close();
        return es;
    }

    static bool isProxy(AcDbObjectId id) {
        AcDbObject* object = nullptr;
        EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk) << embedded::lastFileError();
        const bool proxy = object != nullptr && object->isAProxy();
        if (object != nullptr)
            object->close();
        return proxy;
    }

    embedded::dwg::Bytes fileBytes(const wchar_t* name) const { return bytesOfFile(narrowPath(name)); }
};

} // namespace

TEST_F(SavedObjects, ACustomObjectComesBackWithItsFields) {
    AcDbDatabase database(true);
    FiledThing* thing = made<FiledThing>(L"Stra\u00DFe \u0421\u043B\u043E\u0439 \U0001F600 \\U+0041");
    thing->fields.id = database.layerZero();
    put(database, L"THING", thing);
    save(database, L"a.dwg");
    const auto again = read(L"a.dwg");
    const ThingFields fields = fieldsOf<FiledThing>(find(*again, L"THING"));
    EXPECT_EQ(fields.text, L"Stra\u00DFe \u0421\u043B\u043E\u0439 \U0001F600 \\U+0041");
    EXPECT_EQ(fields.bytes, (std::vector<unsigned char>{0, 1, 2, 0xFF}));
    EXPECT_EQ(fields.id, again->layerZero());
    EXPECT_EQ(fields.point.z, -2.5);
}

TEST_F(SavedObjects, ClassRowsComeFromTheRunTimeClass) {
    AcDbDatabase database(true);
    put(database, L"A", made<FiledThing>(L"a"));
    append(database, made<FiledEntity>(L"e"));
    save(database, L"a.dwg");
    const auto rows = embedded::classTable(*read(L"a.dwg"));
    const auto rowOf = [&](const std::wstring& className) {
        return *std::find_if(rows.begin(), rows.end(),
                             [&](const auto& row) { return row.className == className; });
    };
    EXPECT_EQ(rowOf(L"FiledThing").dxfName, L"FILEDTHING");
    EXPECT_EQ(rowOf(L"FiledThing").applicationName, L"THINGS_191");
    EXPECT_EQ(rowOf(L"FiledThing").proxyFlags, 0x481);
    EXPECT_FALSE(rowOf(L"FiledThing").isEntity);
    EXPECT_TRUE(rowOf(L"FiledEntity").isEntity);
    EXPECT_GE(rowOf(L"FiledThing").number, 500);
}

TEST_F(SavedObjects, TwoClassesOfOneDxfNameStayApart) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    put(database, L"TWIN", made<FiledTwin>(L"twin"));
    save(database, L"a.dwg");
    const auto again = read(L"a.dwg");
    EXPECT_EQ(fieldsOf<FiledThing>(find(*again, L"THING")).text, L"thing");
    EXPECT_EQ(fieldsOf<FiledTwin>(find(*again, L"TWIN")).text, L"twin");
}

TEST_F(SavedObjects, WithoutItsModuleAnObjectIsAProxyAndKeepsItsBytes) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    const AcDbObjectId entity = append(database, made<FiledEntity>(L"entity"));
    save(database, L"a.dwg");
    unregisterThings();
    {
        const auto away = read(L"a.dwg");
        const AcDbObjectId id = find(*away, L"THING");
        EXPECT_TRUE(isProxy(id));
        AcDbProxyObject* proxy = nullptr;
        ASSERT_EQ(acdbOpenObject(proxy, id, AcDb::kForRead), Acad::eOk);
        EXPECT_STREQ(proxy->originalClassName(), L"FiledThing");
        EXPECT_STREQ(proxy->originalDxfName(), L"FILEDTHING");
        EXPECT_EQ(proxy->proxyFlags(), 0x481);
        proxy->close();
        save(*away, L"b.dwg");
        EXPECT_TRUE(fileBytes(L"b.dwg") == fileBytes(L"a.dwg"));
    }
    registerThings();
    const auto back = read(L"b.dwg");
    EXPECT_EQ(fieldsOf<FiledThing>(find(*back, L"THING")).text, L"thing");
    AcDbObjectId sameEntity;
    ASSERT_EQ(back->getAcDbObjectId(sameEntity, false, entity.handle()), Acad::eOk);
    EXPECT_EQ(fieldsOf<FiledEntity>(sameEntity).text, L"entity");
}

TEST_F(SavedObjects, AProxyComesAliveWhenItsClassIsRegistered) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    save(database, L"a.dwg");
    unregisterThings();
    const auto again = read(L"a.dwg");
    const AcDbObjectId id = find(*again, L"THING");
    EXPECT_TRUE(isProxy(id));
    EXPECT_EQ(embedded::kindOf(id), L"FILEDTHING");
    registerThings();
    EXPECT_FALSE(isProxy(id));
    EXPECT_EQ(fieldsOf<FiledThing>(id).text, L"thing");
}

TEST_F(SavedObjects, AProxyThatIsChangedAroundKeepsItsOwnFields) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    save(database, L"a.dwg");
    unregisterThings();
    {
        const auto away = read(L"a.dwg");
        AcDbObject* proxy = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(proxy, find(*away, L"THING"), AcDb::kForWrite), Acad::eOk);
        proxy->addPersistentReactor(away->layerZero());
        EXPECT_EQ(proxy->createExtensionDictionary(), Acad::eOk);
        proxy->close();
        save(*away, L"b.dwg");
    }
    registerThings();
    const auto back = read(L"b.dwg");
    const AcDbObjectId id = find(*back, L"THING");
    EXPECT_EQ(fieldsOf<FiledThing>(id).text, L"thing");
    FiledThing* thing = nullptr;
    ASSERT_EQ(acdbOpenObject(thing, id, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(thing->hasPersistentReactor(back->layerZero()));
    EXPECT_FALSE(thing->extensionDictionary().isNull());
    thing->close();
}

TEST_F(SavedObjects, AReaderThatAsksForAProxyGetsOne) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    save(database, L"a.dwg");
    const auto again = read(L"a.dwg");
    const AcDbObjectId id = find(*again, L"THING");
    filingFaults().read = Acad::eMakeMeProxy;
    EXPECT_TRUE(isProxy(id));
    filingFaults().read = Acad::eOk;
    EXPECT_TRUE(isProxy(id)) << "the same class is not asked again";
    save(*again, L"b.dwg");
    EXPECT_TRUE(fileBytes(L"b.dwg") == fileBytes(L"a.dwg"));
    EXPECT_EQ(fieldsOf<FiledThing>(find(*read(L"b.dwg"), L"THING")).text, L"thing");
}

TEST_F(SavedObjects, AReaderThatFailsLeavesTheBytesAndItsStatus) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    put(database, L"OTHER", made<FiledThing>(L"other"));
    save(database, L"a.dwg");
    const auto again = read(L"a.dwg");
    filingFaults().read = Acad::eInvalidInput;
    EXPECT_EQ(openStatus(find(*again, L"THING")), Acad::eInvalidInput);
    filingFaults().read = Acad::eOk;
    EXPECT_EQ(openStatus(find(*again, L"THING")), Acad::eInvalidInput);
    EXPECT_EQ(openStatus(find(*again, L"OTHER")), Acad::eOk);
    EXPECT_NE(embedded::lastFileError().find("(FILEDTHING): its fields cannot be read"), std::string::npos);
    save(*again, L"b.dwg");
    EXPECT_TRUE(fileBytes(L"b.dwg") == fileBytes(L"a.dwg"));
}

TEST_F(SavedObjects, AReaderThatReadsTooMuchIsStopped) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    save(database, L"a.dwg");
    const auto again = read(L"a.dwg");
    filingFaults().readsTooMuch = true;
    EXPECT_EQ(openStatus(find(*again, L"THING")), Acad::eDwgObjectImproperlyRead);
}

TEST_F(SavedObjects, AReaderThatThrowsIsStopped) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    save(database, L"a.dwg");
    const auto again = read(L"a.dwg");
    filingFaults().throws = true;
    EXPECT_EQ(openStatus(find(*again, L"THING")), Acad::eDwgObjectImproperlyRead);
}

TEST_F(SavedObjects, AWriterThatFailsMakesTheSaveFailWithTheOldFileWhole) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    save(database, L"a.dwg");
    const embedded::dwg::Bytes before = fileBytes(L"a.dwg");
    filingFaults().write = Acad::eOutOfMemory;
    EXPECT_EQ(database.saveAs(path(L"a.dwg").c_str()), Acad::eOutOfMemory);
    EXPECT_NE(embedded::lastFileError().find("(FiledThing): its fields cannot be written"),
              std::string::npos);
    EXPECT_TRUE(fileBytes(L"a.dwg") == before);
    EXPECT_TRUE(std::filesystem::is_empty(m_folder) == false);
    EXPECT_EQ(platform::listFolder(m_folder), std::vector<std::wstring>{L"a.dwg"});
}

TEST_F(SavedObjects, AClassWithoutADxfNameCannotBeSaved) {
    AcDbDatabase database(true);
    put(database, L"THING", new UnfiledThing);
    EXPECT_EQ(database.saveAs(path(L"a.dwg").c_str()), Acad::eNotApplicable);
    EXPECT_NE(embedded::lastFileError().find("class UnfiledThing has no DXF name"), std::string::npos);
    EXPECT_FALSE(platform::fileExists(path(L"a.dwg")));
}

TEST_F(SavedObjects, ATextTooLongForTheFormatFailsTheSave) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(std::wstring(65535, L'x')));
    EXPECT_EQ(database.saveAs(path(L"a.dwg").c_str()), Acad::eStringTooLong);
    AcDbDatabase fits(true);
    put(fits, L"THING", made<FiledThing>(std::wstring(65534, L'x')));
    save(fits, L"b.dwg");
    EXPECT_EQ(fieldsOf<FiledThing>(find(*read(L"b.dwg"), L"THING")).text.size(), 65534u);
}

TEST_F(SavedObjects, ErasedObjectsAreNotSaved) {
    AcDbDatabase database(true);
    const AcDbObjectId kept = put(database, L"KEPT", made<FiledThing>(L"kept"));
    const AcDbObjectId erased = put(database, L"ERASED", made<FiledThing>(L"erased"));
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(object, erased, AcDb::kForWrite), Acad::eOk);
    object->erase();
    object->close();
    save(database, L"a.dwg");
    const auto objects = objectsOf(fileBytes(L"a.dwg"));
    EXPECT_EQ(objects.count(static_cast<Adesk::UInt64>(kept.handle())), 1u);
    EXPECT_EQ(objects.count(static_cast<Adesk::UInt64>(erased.handle())), 0u);
}

TEST_F(SavedObjects, ExtendedDataAndReactorsComeBack) {
    AcDbDatabase database(true);
    const AcDbObjectId id = put(database, L"THING", made<FiledThing>(L"thing"));
    FiledThing* thing = nullptr;
    ASSERT_EQ(acdbOpenObject(thing, id, AcDb::kForWrite), Acad::eOk);
    thing->assertWriteEnabled();
    embedded::ObjectAccess::makeExtras(*thing).extendedData.push_back({database.layerZero(), {1, 2, 3}});
    thing->addPersistentReactor(database.clayer());
    thing->close();
    save(database, L"a.dwg");
    const auto again = read(L"a.dwg");
    ASSERT_EQ(acdbOpenObject(thing, find(*again, L"THING"), AcDb::kForRead), Acad::eOk);
    const embedded::ObjectExtras* extras = embedded::ObjectAccess::extras(*thing);
    ASSERT_NE(extras, nullptr);
    ASSERT_EQ(extras->extendedData.size(), 1u);
    EXPECT_EQ(extras->extendedData[0].application, again->layerZero());
    EXPECT_EQ(extras->extendedData[0].bytes, (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_TRUE(thing->hasPersistentReactor(again->clayer()));
    thing->close();
}

TEST_F(SavedObjects, SavingTwiceGivesTheSameFile) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    append(database, made<FiledEntity>(L"entity"));
    save(database, L"a.dwg");
    save(database, L"b.dwg");
    EXPECT_TRUE(fileBytes(L"a.dwg") == fileBytes(L"b.dwg"));
    save(*read(L"a.dwg"), L"c.dwg");
    EXPECT_TRUE(fileBytes(L"a.dwg") == fileBytes(L"c.dwg"));
}

TEST_F(SavedObjects, APrecedingSaveLeavesOtherNamesAndTheModifiedMark) {
    AcDbDatabase database(true);
    put(database, L"THING", made<FiledThing>(L"thing"));
    EXPECT_TRUE(database.isModified());
    save(database, L"a.dwg");
    EXPECT_FALSE(database.isModified());
    const ACHAR* name = nullptr;
    ASSERT_EQ(database.getFilename(name), Acad::eOk);
    EXPECT_EQ(std::wstring(name), path(L"a.dwg"));
    put(database, L"MORE", made<FiledThing>(L"more"));
    EXPECT_EQ(database.save(), Acad::eOk);
    EXPECT_EQ(fieldsOf<FiledThing>(find(*read(L"a.dwg"), L"MORE")).text, L"more");
}

TEST_F(SavedObjects, OnlyTheVersionThatIsReadIsWritten) {
    AcDbDatabase database(true);
    EXPECT_EQ(database.saveAs(path(L"a.dwg").c_str(), true, AcDb::kDHL_1800), Acad::eInvalidDwgVersion);
    EXPECT_EQ(database.saveAs(path(L"a.dwg").c_str(), true, AcDb::kDHL_1015), Acad::eOk);
    EXPECT_EQ(database.saveAs(L""), Acad::eInvalidInput);
}

TEST_F(SavedObjects, ADatabaseThatHasADrawingRefusesAnother) {
    AcDbDatabase database(true);
    save(database, L"a.dwg");
    EXPECT_EQ(database.readDwgFile(path(L"a.dwg").c_str()), Acad::eWasOpenForWrite);
}

TEST_F(SavedObjects, AFileThatIsNotThereIsToldByName) {
    AcDbDatabase database(false);
    EXPECT_EQ(database.readDwgFile(path(L"none.dwg").c_str()), Acad::eFilerError);
    EXPECT_NE(embedded::lastFileError().find("none.dwg"), std::string::npos);
    EXPECT_EQ(database.originalFileName(), nullptr);
}
