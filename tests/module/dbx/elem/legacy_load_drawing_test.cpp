// Load entities in drawings that are saved, opened, copied and undone, with their class and without it.

#include "app/class_table.h"
#include "dbidmap.h"
#include "dbproxy.h"
#include "embedded/inventory.h"
#include "module/dbx/elem/legacy_loads.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "platform/files.h"
#include "platform/text.h"
#include "rxclass.h"
#include "rxdict.h"
#include "support/program_run.h"

#include <cstdlib>
#include <memory>

using namespace testing_support;

namespace {

// Writes the fields of an older version, or of one to come.
class OtherVersion : public ORV_Load {
public:
    explicit OtherVersion(Adesk::UInt32 version) : m_version(version) {}

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        if (filer->filerType() != AcDb::kFileFiler)
            return ORV_Load::dwgOutFields(filer);
        Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
        filer->writeUInt32(m_version);
        es = es == Acad::eOk ? ElementBase::dwgOutFields(*filer) : es;
        if (m_version > 1)
            filer->writeSoftPointerId(getElement());
        filer->writeUInt32(kMagic);
        return es == Acad::eOk ? filer->filerStatus() : es;
    }

private:
    Adesk::UInt32 m_version;
};

class LegacyLoadInDrawing : public LegacyLoadsInDrawing {
protected:
    LegacyLoadInDrawing() {
        m_folder = platform::makeTemporaryFolder();
        m_line = line();
    }
    ~LegacyLoadInDrawing() override {
        ORV_Load::rxInit();
        acrxBuildClassHierarchy();
        m_back.reset();
        for (const std::wstring& name : m_files)
            platform::removeFile(name);
    }

    static void takeClassAway() {
        deleteAcRxClass(ORV_Load::gpDesc);
        ORV_Load::gpDesc = nullptr;
    }

    // With all that such a load can have: data, values, an element, plugins with and without a curve, one
    // that nobody knows.
    ORV_Load* fill(ORV_Load* load) {
        load->setNodDatabaseId(db.namedObjectsDictionaryId(), L"ASDWG");
        load->setVertices({setVertex(), vertexAt(4.5)});
        load->setLoadCases({2, 7});
        load->setUnitText(L"kN/m\u00b2");
        load->setElement(m_line);
        load->setProperties().add(30001, std::wstring(L"Wind"));
        load->properties(AcDb::kForWrite) = singleNode("id", m_line);
        PlainLoad& plain = addPluginTo<PlainLoad>(*load);
        fillGeneric(plain, m_line);
        plain.setOwnCurve(makeCurve());
        FreeLoad& free = addPluginTo<FreeLoad>(*load);
        free.setAffectedNos({3, 5});
        // Behind those that are known, where it is filed from then on.
        auto* const gone = new RecordingPlugin("test.gone");
        gone->softIds = {m_line};
        load->addPlugin(gone);
        return load;
    }
    AcDbObjectId put(ORV_Load* load) { return putEntity(db, load); }
    AcDbObjectId full() { return put(fill(new ORV_Load)); }

    std::wstring save(AcDbDatabase& database) {
        const std::wstring name = platform::joinPath(m_folder, std::to_wstring(m_files.size()) + L".dwg");
        m_files.push_back(name);
        EXPECT_EQ(database.saveAs(name.c_str()), Acad::eOk) << embedded::lastFileError();
        return name;
    }
    // The drawing, or the one that was opened last, after one more way over the disk.
    AcDbDatabase& reopened() {
        const std::wstring name = save(m_back ? *m_back : db);
        m_back = std::make_unique<AcDbDatabase>(false);
        EXPECT_EQ(m_back->readDwgFile(name.c_str()), Acad::eOk) << embedded::lastFileError();
        return *m_back;
    }
    static AcDbObjectId sameIn(AcDbDatabase& database, AcDbObjectId id) {
        AcDbObjectId same;
        EXPECT_EQ(database.getAcDbObjectId(same, false, id.handle()), Acad::eOk);
        return same;
    }
    // With ids by their handles.
    static Lines lines(AcDbObjectId id) {
        ScriptFiler filer;
        filer.type = AcDb::kFileFiler;
        filer.showsHandles = true;
        look(id, [&filer](ORV_Load& load) { EXPECT_EQ(load.dwgOutFields(&filer), Acad::eOk); });
        return filer.lines;
    }
    static bool isProxy(AcDbObjectId id) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
        const AcDbProxyEntity* const proxy = AcDbProxyEntity::cast(entity);
        if (proxy != nullptr) {
            EXPECT_STREQ(proxy->originalClassName(), L"ORV_Load");
            EXPECT_STREQ(proxy->originalDxfName(), L"ORV_LOAD");
            EXPECT_STREQ(proxy->applicationDescription(), L"ORV_OE_LOADER_191");
        }
        entity->close();
        return proxy != nullptr;
    }
    static AcDbObjectId spaceOf(AcDbDatabase& database) {
        AcDbBlockTable* blocks = nullptr;
        EXPECT_EQ(database.getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
        AcDbObjectId space;
        EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, space), Acad::eOk);
        blocks->close();
        return space;
    }
    static AcDbObjectIdArray arrayOf(std::initializer_list<AcDbObjectId> ids) {
        AcDbObjectIdArray array;
        for (const AcDbObjectId& id : ids)
            array.append(id);
        return array;
    }
    static AcDbObjectId cloneOf(const AcDbIdMapping& map, AcDbObjectId id) {
        AcDbIdPair pair(id, AcDbObjectId(), false);
        return map.compute(pair) ? pair.value() : AcDbObjectId();
    }

    std::wstring m_folder;
    std::vector<std::wstring> m_files;
    std::unique_ptr<AcDbDatabase> m_back;
    AcDbObjectId m_line;
    ConsoleRecorder console;
};

} // namespace

// Over the disk.

TEST_F(LegacyLoadInDrawing, AllOfItComesBackFromAFile) {
    const AcDbObjectId id = full();
    const Lines before = lines(id);
    AcDbDatabase& back = reopened();
    const AcDbObjectId found = sameIn(back, id);
    EXPECT_EQ(lines(found), before);
    look(found, [&](ORV_Load& load) {
        EXPECT_EQ(load.getElement(), sameIn(back, m_line));
        ASSERT_EQ(load.numVertices(), 2u);
        expectSameVertex(load.getVertices()[0], setVertex());
        EXPECT_EQ(load.getUnitText(), L"kN/m\u00b2");
        const PlainLoad& plain = pluginAt<PlainLoad>(load, 0);
        expectGeneric(plain, sameIn(back, m_line));
        EXPECT_EQ(plain.owner(), &load);
        const auto& curve = plain.getOwnCurve();
        ASSERT_TRUE(curve);
        EXPECT_EQ(curve->endPoint(), AcGePoint3d(2, 2, 0));
        EXPECT_EQ(pluginAt<FreeLoad>(load, 1).getAffectedNos(), (std::set<unsigned int>{3, 5}));
        ASSERT_EQ(load.unknownPlugins().size(), 1u);
        EXPECT_EQ(load.unknownPlugins()[0].first, "test.gone");
    });
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadInDrawing, StandsInTheClassTableOfTheFile) {
    full();
    int rows = 0;
    for (const embedded::ClassTableRow& row : embedded::classTable(reopened()))
        if (row.className == L"ORV_Load") {
            ++rows;
            EXPECT_EQ(row.dxfName, L"ORV_LOAD");
            EXPECT_EQ(row.applicationName, L"ORV_OE_LOADER_191");
            EXPECT_EQ(row.proxyFlags, 0);
            EXPECT_TRUE(row.isEntity);
        }
    EXPECT_EQ(rows, 1);
}

TEST_F(LegacyLoadInDrawing, AFileOfVersion1HasNoElementAndNoCurves) {
    const AcDbObjectId id = put(fill(new OtherVersion(1)));
    look(sameIn(reopened(), id), [](ORV_Load& load) {
        EXPECT_TRUE(load.getElement().isNull());
        EXPECT_FALSE(pluginAt<PlainLoad>(load, 0).getOwnCurve());
        EXPECT_EQ(load.numVertices(), 2u);
    });
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadInDrawing, AFileOfVersion2HasTheElementAndNoCurves) {
    const AcDbObjectId id = put(fill(new OtherVersion(2)));
    AcDbDatabase& back = reopened();
    look(sameIn(back, id), [&](ORV_Load& load) {
        EXPECT_EQ(load.getElement(), sameIn(back, m_line));
        EXPECT_FALSE(pluginAt<PlainLoad>(load, 0).getOwnCurve());
        EXPECT_EQ(load.numVertices(), 2u);
    });
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadInDrawing, AnOldFileIsWrittenInThePresentVersion) {
    const AcDbObjectId id = put(fill(new OtherVersion(1)));
    reopened();
    const Lines written = lines(sameIn(reopened(), id));
    EXPECT_EQ(written.front(), "UInt32 3");
    EXPECT_EQ(Lines(written.end() - 4, written.end()),
              (Lines{"SoftPointerId null", "Bool false", "Bool false", kLoadEntityEnd[0]}));
}

TEST_F(LegacyLoadInDrawing, AFileOfANewerVersionIsAProxyAndStaysSo) {
    const AcDbObjectId id = put(fill(new OtherVersion(4)));
    EXPECT_TRUE(isProxy(sameIn(reopened(), id)));
    EXPECT_TRUE(isProxy(sameIn(reopened(), id)));
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadInDrawing, WithoutItsClassItIsAProxyAndIsTheSameAfterwards) {
    const AcDbObjectId id = full();
    const Lines before = lines(id);
    reopened();
    save(*m_back);
    takeClassAway();
    // The drawings of before hold such loads still, and are not looked at meanwhile.
    m_back = std::make_unique<AcDbDatabase>(false);
    ASSERT_EQ(m_back->readDwgFile(m_files.back().c_str()), Acad::eOk) << embedded::lastFileError();
    EXPECT_TRUE(isProxy(sameIn(*m_back, id)));
    EXPECT_TRUE(isProxy(sameIn(reopened(), id)));
    save(*m_back);
    ORV_Load::rxInit();
    acrxBuildClassHierarchy();
    m_back = std::make_unique<AcDbDatabase>(false);
    ASSERT_EQ(m_back->readDwgFile(m_files.back().c_str()), Acad::eOk) << embedded::lastFileError();
    EXPECT_FALSE(isProxy(sameIn(*m_back, id)));
    EXPECT_EQ(lines(sameIn(*m_back, id)), before);
}

TEST_F(LegacyLoadInDrawing, ACurveOfAClassThatIsNotThereMakesAProxyThatLosesNothing) {
    const AcDbObjectId id = full();
    const Lines before = lines(id);
    AcRxClass* const curves = ORV_SegmentedCurve::desc();
    Adesk::UInt32 place = 0;
    acrxClassDictionary->remove(L"ORV_SegmentedCurve");
    EXPECT_TRUE(isProxy(sameIn(reopened(), id)));
    EXPECT_EQ(reports.conditions(), Texts{"rx"});
    save(*m_back);
    acrxClassDictionary->atPut(L"ORV_SegmentedCurve", curves, place);
    EXPECT_EQ(lines(sameIn(reopened(), id)), before);
}

// Undo.

TEST_F(LegacyLoadInDrawing, UndoBringsTheDataTheElementAndTheCurvesBack) {
    const AcDbObjectId id = full();
    const Lines before = lines(id);
    embedded::beginCommand(db);
    change(id, [](ORV_Load& load) {
        load.setType(99);
        load.setElement(AcDbObjectId());
        load.detachPlugin(&pluginAt<PlainLoad>(load, 0));
    });
    const Lines after = lines(id);
    ASSERT_NE(after, before);
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_EQ(lines(id), before);
    ASSERT_TRUE(embedded::redo(db));
    EXPECT_EQ(lines(id), after);
}

// Copies.

TEST_F(LegacyLoadInDrawing, ACopyWithFreeLoadsHasItAll) {
    const AcDbObjectId id = full();
    AcDbIdMapping map;
    ASSERT_EQ(db.deepCloneObjects(arrayOf({id}), spaceOf(db), map), Acad::eOk);
    const AcDbObjectId copy = cloneOf(map, id);
    ASSERT_FALSE(copy.isNull());
    EXPECT_EQ(lines(copy), lines(id)) << "the element was not copied";
}

TEST_F(LegacyLoadInDrawing, ACopyTogetherWithItsElementActsOnTheCopy) {
    const AcDbObjectId id = full();
    AcDbIdMapping map;
    ASSERT_EQ(db.deepCloneObjects(arrayOf({id, m_line}), spaceOf(db), map), Acad::eOk);
    look(cloneOf(map, id), [&](ORV_Load& load) {
        EXPECT_EQ(load.getElement(), cloneOf(map, m_line));
        EXPECT_EQ(static_cast<orv::elem::GenericLoad&>(pluginAt<PlainLoad>(load, 0)).getElement(),
                  cloneOf(map, m_line));
        EXPECT_TRUE(pluginAt<PlainLoad>(load, 0).getOwnCurve());
    });
}

TEST_F(LegacyLoadInDrawing, ACopyInAnotherDrawingActsOnTheElementThere) {
    const AcDbObjectId id = full();
    AcDbDatabase other(true);
    AcDbIdMapping map;
    ASSERT_EQ(db.wblockCloneObjects(arrayOf({id, m_line}), spaceOf(other), map, AcDb::kDrcIgnore), Acad::eOk);
    look(cloneOf(map, id), [&](ORV_Load& load) {
        EXPECT_EQ(load.database(), &other);
        EXPECT_EQ(load.getElement(), cloneOf(map, m_line));
        EXPECT_EQ(load.getElement().database(), &other);
        EXPECT_TRUE(pluginAt<PlainLoad>(load, 0).getOwnCurve());
    });
}

TEST_F(LegacyLoadInDrawing, ALoadWithAnElementLoadIsLeftOutOfCopies) {
    const AcDbObjectId id = loadWith<BeamLoad>();
    AcDbIdMapping map;
    ASSERT_EQ(db.deepCloneObjects(arrayOf({id, m_line}), spaceOf(db), map), Acad::eOk);
    EXPECT_TRUE(cloneOf(map, id).isNull());
    EXPECT_FALSE(cloneOf(map, m_line).isNull()) << "the others are copied";
    AcDbDatabase other(true);
    AcDbIdMapping there;
    ASSERT_EQ(db.wblockCloneObjects(arrayOf({id, m_line}), spaceOf(other), there, AcDb::kDrcIgnore),
              Acad::eOk);
    EXPECT_TRUE(cloneOf(there, id).isNull());
    EXPECT_FALSE(cloneOf(there, m_line).isNull());
    EXPECT_EQ(embedded::countByKind(other).count(L"ORV_LOAD"), 0u);
}

TEST_F(LegacyLoadInDrawing, CloningALoadWithAnElementLoadAnswers2AndMakesNothing) {
    const AcDbObjectId id = loadWith<FreeLoad>();
    change(id, [](ORV_Load& load) { addPluginTo<BeamLoad>(load); });
    AcDbDatabase other(true);
    look(id, [&](ORV_Load& load) {
        AcDbIdMapping map;
        AcDbObject* clone = nullptr;
        EXPECT_EQ(static_cast<int>(load.wblockClone(&other, clone, map)), 2);
        EXPECT_EQ(clone, nullptr);
        EXPECT_EQ(static_cast<int>(load.deepClone(nullptr, clone, map)), 2);
        EXPECT_EQ(clone, nullptr);
    });
    EXPECT_EQ(embedded::countByKind(other).count(L"ORV_LOAD"), 0u);
}

TEST_F(LegacyLoadInDrawing, ACloneByItselfHasItAll) {
    const AcDbObjectId id = full();
    look(id, [this](ORV_Load& load) {
        const std::unique_ptr<AcRxObject> copied(load.clone());
        ORV_Load* const copy = ORV_Load::cast(copied.get());
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(copy->getElement(), m_line);
        EXPECT_TRUE(pluginAt<PlainLoad>(*copy, 0).getOwnCurve());
        EXPECT_EQ(fieldsOf(*copy), fieldsOf(load));
    });
}

// Other programs.

TEST_F(LegacyLoadInDrawing, AnIndependentReaderReadsTheDrawing) {
    const char* const named = std::getenv("TALDORK_INDEPENDENT_READER");
    const auto reader =
        named != nullptr && *named != '\0' ? std::filesystem::path(named) : tests::findOnPath("dwgread");
    if (reader.empty())
        GTEST_SKIP() << "no dwgread on the PATH, and TALDORK_INDEPENDENT_READER is not set";
    full();
    loadWith<FreeLoad>();
    const std::filesystem::path drawing(save(db));
    const tests::TemporaryFolder scratch;
    const std::string out = (scratch.path() / "read.json").string();
    const tests::ProgramRun run = tests::runProgram(
        reader, {"-O", "JSON", "-o", out, drawing.string()},
        {{"LD_LIBRARY_PATH", (reader.parent_path().parent_path() / "lib").string()}}, scratch.path());
    EXPECT_EQ(run.code, 0) << run.out << run.err;
    EXPECT_EQ(run.err.find("ERROR"), std::string::npos) << run.err;
    const std::string read = tests::readWholeFile(out);
    EXPECT_NE(read.find("\"ORV_LOAD\""), std::string::npos);
    EXPECT_NE(read.find("\"ORV_Load\""), std::string::npos);
}
