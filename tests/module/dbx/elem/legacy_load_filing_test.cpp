// The fields of the load entity, call by call in both directions.

#include "embedded/memory_filer.h"
#include "module/dbx/elem/legacy_loads.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "rxclass.h"
#include "support/archive_bytes.h"
#include "support/beep_recorder.h"

#include <stdexcept>

using namespace testing_support;

namespace {

// A curve of a class of its own, with one more field.
class MarkedCurve : public ORV_SegmentedCurve {
public:
    ACRX_DECLARE_MEMBERS(MarkedCurve);
    Adesk::UInt32 mark = 0;

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        const Acad::ErrorStatus es = ORV_SegmentedCurve::dwgOutFields(filer);
        return es != Acad::eOk ? es : filer->writeUInt32(mark);
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        const Acad::ErrorStatus es = ORV_SegmentedCurve::dwgInFields(filer);
        return es != Acad::eOk ? es : filer->readUInt32(&mark);
    }
};
ACRX_DXF_DEFINE_MEMBERS(MarkedCurve, ORV_SegmentedCurve, AcDb::kDHL_1015, 0, 0, MARKEDCURVE, LoadTests)

const Lines kMarkedCurve = joined({{"Bool true", "String MarkedCurve"}, kCurveFields, {"UInt32 77"}});

// Its status goes bad with the last call, which does not tell.
class LateFiler : public ScriptFiler {
public:
    explicit LateFiler(std::size_t calls, Lines script = {})
        : ScriptFiler(std::move(script)), m_calls(static_cast<int>(calls)) {
        type = AcDb::kFileFiler;
    }
    Acad::ErrorStatus writeUInt32(Adesk::UInt32 value) override {
        return noticed(ScriptFiler::writeUInt32(value));
    }
    Acad::ErrorStatus readUInt32(Adesk::UInt32* value) override {
        return noticed(ScriptFiler::readUInt32(value));
    }

private:
    Acad::ErrorStatus noticed(Acad::ErrorStatus es) {
        if (callCount == m_calls)
            setFilerStatus(Acad::eOutOfDisk);
        return es;
    }
    int m_calls;
};

class LegacyLoadFiling : public testing::Test {
protected:
    LegacyLoadFiling() {
        registerTestElement();
        registerLoads();
        MarkedCurve::rxInit();
        acrxBuildClassHierarchy();
        load.setNodDatabaseId(idOf(0x10), L"ASDWG");
    }
    ~LegacyLoadFiling() override { RecordingPlugin::onCreate = {}; }

    // A plain load with a curve, a plugin that is no load, and a free load without a curve.
    void addThreePlugins() {
        addPluginTo<PlainLoad>(load).setOwnCurve(makeCurve());
        addPluginTo<RecordingPlugin>(load);
        addPluginTo<FreeLoad>(load);
        load.setElement(idOf(0x2a));
    }
    static Lines threeRecords() {
        return joined(
            {kPlainLoadRecord, kEmptyLivingHead, kNoIds, kNoProperties, kEmptyTree, kFreeLoadRecord});
    }
    static Lines threePlugins(const Lines& curve = kCurve) {
        return joined(
            {{"UInt32 3"}, loadElement(3, threeRecords()), kActsOn2a, curve, kNoCurve, kLoadEntityEnd});
    }
    // Of one plain load.
    static Lines withCurve(const Lines& curve, const Lines& end = kLoadEntityEnd) {
        return joined({{"UInt32 3"}, loadElement(1, kPlainLoadRecord), kActsOnNothing, curve, end});
    }

    ORV_Load load;
    ReportRecorder reports;
    BeepRecorder beeps;
};

} // namespace

TEST_F(LegacyLoadFiling, ALoadWithoutPlugins) {
    const Lines golden = joined({{"UInt32 3"}, loadElement(), kActsOnNothing, kLoadEntityEnd});
    EXPECT_EQ(fieldsOf(load), golden);
    ORV_Load back;
    readAllFields(back, golden);
    EXPECT_EQ(fieldsOf(back), golden);
    EXPECT_TRUE(back.getElement().isNull());
    EXPECT_EQ(back.getNodDatabaseName(), L"ASDWG");
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadFiling, TheElementStandsBehindTheElementsStream) {
    const Lines golden = joined({{"UInt32 3"}, loadElement(), kActsOn2a, kLoadEntityEnd});
    load.setElement(idOf(0x2a));
    EXPECT_EQ(fieldsOf(load), golden);
    ORV_Load back;
    readAllFields(back, golden);
    EXPECT_EQ(back.getElement(), idOf(0x2a));
}

TEST_F(LegacyLoadFiling, TheDataOfTheLoadAreTheElementsOwn) {
    const Lines data = {"UInt32 34", "Bytes 08 00 00 00 0c 00 03 00 05 00 01 00 01 00 00 00 00 "
                                     "01 00 00 00 04 00 00 00 00 00 00 00 01 4d 6a 7e fd"};
    const Lines golden = joined({{"UInt32 3", "Int32 6", "UInt32 0"},
                                 kLink,
                                 data,
                                 kNoProperties,
                                 kEmptyTree,
                                 kNoLog,
                                 kMagic,
                                 kActsOnNothing,
                                 kLoadEntityEnd});
    load.setType(12);
    load.setClass(static_cast<orv::elem::LOAD_KIND>(3));
    load.setCategory(static_cast<orv::elem::LoadTypeCategory>(5));
    load.setDistribution(orv::elem::kLineLoad);
    load.setUDL(true);
    load.setLoadCase(4);
    load.setPolygonal(true);
    EXPECT_EQ(fieldsOf(load), golden);
    ORV_Load back;
    readAllFields(back, golden);
    EXPECT_EQ(back.getType(), 12);
    EXPECT_EQ(back.getDistribution(), orv::elem::kLineLoad);
    EXPECT_TRUE(back.isUDL());
    EXPECT_EQ(back.getLoadCases(), std::set<unsigned int>{4});
    EXPECT_TRUE(back.isPolygonal());
}

TEST_F(LegacyLoadFiling, EachPluginThatIsALoadHasACurveSectionInTheirOrder) {
    addThreePlugins();
    EXPECT_EQ(fieldsOf(load), threePlugins());
    ORV_Load back;
    readAllFields(back, threePlugins());
    ASSERT_TRUE(pluginAt<PlainLoad>(back, 0).getOwnCurve());
    EXPECT_FALSE(pluginAt<FreeLoad>(back, 2).getOwnCurve());
    EXPECT_EQ(fieldsOf(back), threePlugins());
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadFiling, ACurveComesBackPieceByPiece) {
    ORV_Load back;
    readAllFields(back, withCurve(kCurve));
    const auto& curve = pluginAt<PlainLoad>(back, 0).getOwnCurve();
    ASSERT_TRUE(curve);
    ASSERT_EQ(curve->getSegmentCount(), 2);
    EXPECT_EQ(curve->getSegmentAt(0)->end(), AcGePoint3d(2, 0, 0));
    EXPECT_TRUE(curve->getSegmentAt(1)->isArc());
    EXPECT_EQ(curve->endPoint(), AcGePoint3d(2, 2, 0));
    EXPECT_EQ(curve->isA(), ORV_SegmentedCurve::desc());
}

TEST_F(LegacyLoadFiling, AnEmptyCurveIsACurve) {
    const Lines golden =
        withCurve({"Bool true", "String ORV_SegmentedCurve", "UInt32 1", "UInt32 0", "UInt32 1584181715"});
    addPluginTo<PlainLoad>(load).setOwnCurve(boost::make_shared<ORV_SegmentedCurve>());
    EXPECT_EQ(fieldsOf(load), golden);
    ORV_Load back;
    readAllFields(back, golden);
    ASSERT_TRUE(pluginAt<PlainLoad>(back, 0).getOwnCurve());
    EXPECT_TRUE(pluginAt<PlainLoad>(back, 0).getOwnCurve()->isEmpty());
}

TEST_F(LegacyLoadFiling, ACurveIsFiledUnderItsOwnClassAndReadByThat) {
    const auto marked = makeCurve<MarkedCurve>();
    marked->mark = 77;
    addPluginTo<PlainLoad>(load).setOwnCurve(marked);
    EXPECT_EQ(fieldsOf(load), withCurve(kMarkedCurve));
    ORV_Load back;
    readAllFields(back, withCurve(kMarkedCurve));
    const auto* const read = MarkedCurve::cast(pluginAt<PlainLoad>(back, 0).getOwnCurve().get());
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->mark, 77u);
}

TEST_F(LegacyLoadFiling, ALoadThatIsReadAgainHasTheNewStreamsCurvesAlone) {
    readAllFields(load, threePlugins());
    readAllFields(load, threePlugins(kNoCurve));
    EXPECT_FALSE(pluginAt<PlainLoad>(load, 0).getOwnCurve());
    EXPECT_EQ(fieldsOf(load), threePlugins(kNoCurve));
}

TEST_F(LegacyLoadFiling, InRawWidthsALoadWithACurve) {
    const std::string golden =
        // Version; the element's: version, one record, its id.
        "03 00 00 00 06 00 00 00 01 00 00 00 0f 00 00 00 74 00 65 00 73 00 74 00 2e 00 6c 00 6f 00 61 00 64 "
        "00 2e 00 70 00 6c 00 61 00 69 00 6e 00 "
        // The plugin's 32 bytes, one soft id, no hard one, no properties, an empty tree.
        "20 00 00 00 01 00 00 00 03 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 c1 d8 c5 57 "
        "e5 7d db af 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 00 00 00 45 ac ef fe ca "
        // The link, the load's 34 bytes, no properties, an empty tree, no log, the element's end.
        "10 00 00 00 00 00 00 00 02 00 00 00 41 00 42 00 22 00 00 00 08 00 00 00 0a 00 01 00 00 00 00 00 00 "
        "00 00 00 00 01 00 00 00 01 00 00 00 00 00 00 00 00 4d 6a 7e fd 00 00 00 00 01 00 00 00 45 ac ef fe "
        "ca 00 af 56 64 73 "
        // What it acts on; a curve, of the class ORV_SegmentedCurve.
        "2a 00 00 00 00 00 00 00 01 12 00 00 00 4f 00 52 00 56 00 5f 00 53 00 65 00 67 00 6d 00 65 00 6e 00 "
        "74 00 65 00 64 00 43 00 75 00 72 00 76 00 65 00 "
        // Version, one piece, from the origin straight to (1, 2, -0.5), the curve's end and the load's.
        "01 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
        "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 00 00 00 00 00 00 e0 bf d3 b1 6c 5e 25 63 fe af";
    orv::CurveSegment line;
    ASSERT_TRUE(orv::CurveSegment::line({0, 0, 0}, {1, 2, -0.5}, line));
    const auto curve = boost::make_shared<ORV_SegmentedCurve>();
    ASSERT_EQ(curve->append(line), Acad::eOk);
    addPluginTo<PlainLoad>(load).setOwnCurve(curve);
    load.setNodDatabaseId(idOf(0x10), L"AB");
    load.setElement(idOf(0x2a));
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    EXPECT_EQ(load.dwgOutFields(&out), Acad::eOk);
    EXPECT_EQ(hexOf(bytes), golden);
    const std::vector<unsigned char> filed = fromHex(golden);
    ORV_Load back;
    embedded::MemoryFiler in(AcDb::kFileFiler, filed.data(), filed.size());
    EXPECT_EQ(back.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(back.getElement(), idOf(0x2a));
    ASSERT_TRUE(pluginAt<PlainLoad>(back, 0).getOwnCurve());
    EXPECT_EQ(pluginAt<PlainLoad>(back, 0).getOwnCurve()->endPoint(), AcGePoint3d(1, 2, -0.5));
}

TEST_F(LegacyLoadFiling, ToACopyTheHostsPartComesFirst) {
    struct Plain : AcDbEntity {};
    RecordingFiler hosts;
    RecordingFiler whole;
    hosts.type = whole.type = AcDb::kCopyFiler;
    ASSERT_EQ(Plain().dwgOutFields(&hosts), Acad::eOk);
    ASSERT_EQ(load.dwgOutFields(&whole), Acad::eOk);
    const auto own = static_cast<std::ptrdiff_t>(hosts.calls.size());
    ASSERT_GT(whole.calls.size(), hosts.calls.size());
    EXPECT_EQ(Lines(whole.calls.begin(), whole.calls.begin() + own), hosts.calls);
    EXPECT_EQ(whole.calls[hosts.calls.size()], "writeUInt32 3");
    EXPECT_EQ(whole.calls.back(), "writeUInt32 2952684325");
    EXPECT_EQ(whole.calls.size() - hosts.calls.size(), fieldsOf(load).size());
}

// Versions.

TEST_F(LegacyLoadFiling, Versions0And1HaveNoElementAndNoCurveSections) {
    for (const char* const version : {"UInt32 0", "UInt32 1"}) {
        ORV_Load old;
        readAllFields(old, joined({{version}, loadElement(3, threeRecords()), kLoadEntityEnd}));
        EXPECT_TRUE(old.getElement().isNull());
        EXPECT_FALSE(pluginAt<PlainLoad>(old, 0).getOwnCurve());
        EXPECT_EQ(fieldsOf(old), joined({{"UInt32 3"},
                                         loadElement(3, threeRecords()),
                                         kActsOnNothing,
                                         kNoCurve,
                                         kNoCurve,
                                         kLoadEntityEnd}));
    }
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadFiling, Version2HasTheElementAndNoCurveSections) {
    readAllFields(load, joined({{"UInt32 2"}, loadElement(3, threeRecords()), kActsOn2a, kLoadEntityEnd}));
    EXPECT_EQ(load.getElement(), idOf(0x2a));
    EXPECT_EQ(fieldsOf(load), threePlugins(kNoCurve));
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadFiling, Version3HasBoth) {
    readAllFields(load, threePlugins());
    EXPECT_EQ(load.getElement(), idOf(0x2a));
    EXPECT_TRUE(pluginAt<PlainLoad>(load, 0).getOwnCurve());
}

TEST_F(LegacyLoadFiling, ANewerVersionIsRefusedAtOnceWithoutAWord) {
    const NewVersionRecorder warned;
    load.setElement(idOf(0x2a));
    addPluginTo<PlainLoad>(load);
    for (const char* const version : {"UInt32 4", "UInt32 2147483648", "UInt32 4294967295"}) {
        std::size_t taken = 0;
        EXPECT_EQ(readFields(load, joined({{version}, loadElement()}), &taken), Acad::eMakeMeProxy);
        EXPECT_EQ(taken, 1u);
    }
    EXPECT_EQ(load.getElement(), idOf(0x2a));
    pluginAt<PlainLoad>(load, 0);
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_TRUE(warned.warnings.empty());
}

// What is wrong with a stream.

TEST_F(LegacyLoadFiling, AWrongEndIsReportedAndTheLoadIsTaken) {
    readAllFields(load, joined({{"UInt32 2"}, loadElement(), kActsOn2a, {"UInt32 4294967295"}}));
    EXPECT_EQ(load.getElement(), idOf(0x2a));
    ASSERT_EQ(reports.conditions(), Texts{"magicNo == kMagic"});
    const Values values = {
        {"kMagic", "2952684325"}, {"magicNo", "4294967295"}, {"kVersion", "3"}, {"version", "2"}};
    EXPECT_EQ(reports.at(0).values, values);
    EXPECT_EQ(reports.at(0).message, "filing error");
    EXPECT_EQ(reports.at(0).severity, orv::smartassert::Severity::kDebug);
}

TEST_F(LegacyLoadFiling, AStreamThatTheElementRefusesEndsThere) {
    Lines lines = joined({{"UInt32 3"}, loadElement(), kActsOn2a, kLoadEntityEnd});
    const std::size_t end = 1 + loadElement().size();
    lines[end - 1] = "Int32 0";
    std::size_t taken = 0;
    EXPECT_EQ(readFields(load, lines, &taken), Acad::eMakeMeProxy);
    EXPECT_EQ(taken, end);
    EXPECT_TRUE(load.getElement().isNull());
}

TEST_F(LegacyLoadFiling, ACurveOfAnUnknownClassIsReportedAndRefused) {
    std::size_t taken = 0;
    const Lines lines = withCurve(joined({{"Bool true", "String NobodysCurve"}, kCurveFields}));
    EXPECT_EQ(readFields(load, lines, &taken), Acad::eMakeMeProxy);
    EXPECT_EQ(taken, lines.size() - kCurveFields.size() - 1) << "nothing behind the name";
    ASSERT_EQ(reports.conditions(), Texts{"rx"});
    EXPECT_EQ(reports.at(0).values, (Values{{"rxclsName.kwszPtr()", "NobodysCurve"}}));
    EXPECT_EQ(reports.at(0).message, "");
}

TEST_F(LegacyLoadFiling, ACurveWithoutAClassNameIsOfAnUnknownClass) {
    EXPECT_EQ(readFields(load, withCurve({"Bool true", "String "})), Acad::eMakeMeProxy);
    EXPECT_EQ(reports.conditions(), Texts{"rx"});
}

// Of a class without objects, of other entities, of what is no entity, of loads.
TEST_F(LegacyLoadFiling, AClassThatIsNoSegmentedCurveIsReportedAndRefused) {
    for (const std::string name : {"AcDbCurve", "AcDbLine", "AcDbDictionary", "AcRxObject", "ORV_Load"}) {
        reports.clear();
        std::size_t taken = 0;
        const Lines lines = withCurve(joined({{"Bool true", "String " + name}, kCurveFields}));
        EXPECT_EQ(readFields(load, lines, &taken), Acad::eMakeMeProxy) << name;
        EXPECT_EQ(taken, lines.size() - kCurveFields.size() - 1);
        ASSERT_EQ(reports.conditions(), Texts{"load.m_visCurve.get()"});
        EXPECT_EQ(reports.at(0).values, (Values{{"rxclsName.kwszPtr()", name}}));
        EXPECT_FALSE(pluginAt<PlainLoad>(load, 0).getOwnCurve());
    }
}

TEST_F(LegacyLoadFiling, TheStatusOfADamagedCurveIsThatOfTheLoad) {
    EXPECT_EQ(readFields(load, withCurve({"Bool true", "String ORV_SegmentedCurve", "UInt32 2"})),
              Acad::eMakeMeProxy);
    EXPECT_EQ(readFields(load, withCurve({"Bool true", "String ORV_SegmentedCurve", "UInt32 1", "UInt32 1",
                                          "Point3d 0 0 0", "UInt8 9", "Point3d 1 0 0"})),
              Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(reports.conditions(), (Texts{"es == es2", "es == es2"}));
}

TEST_F(LegacyLoadFiling, NoFilerIsReported) {
    EXPECT_EQ(load.dwgOutFields(nullptr), Acad::eNullPtr);
    EXPECT_EQ(load.dwgInFields(nullptr), Acad::eNullPtr);
    EXPECT_EQ(reports.conditions(), (Texts{"filer", "filer"}));
}

// Failing filers.

TEST_F(LegacyLoadFiling, TheStatusOfEachFailingWriteIsReturned) {
    addThreePlugins();
    for (std::size_t call = 0; call < threePlugins().size(); ++call) {
        reports.clear();
        ScriptFiler filer;
        filer.type = AcDb::kFileFiler;
        filer.failAt = static_cast<int>(call);
        filer.failure = Acad::eOutOfDisk;
        EXPECT_EQ(load.dwgOutFields(&filer), Acad::eOutOfDisk) << call;
        EXPECT_EQ(filer.lines.size(), call);
        ASSERT_GE(reports.size(), 1u);
        EXPECT_EQ(reports.conditions().back(), "es == es2");
    }
}

TEST_F(LegacyLoadFiling, TheStatusOfEachFailingReadIsReturned) {
    const Lines whole = threePlugins();
    for (int call = 0; call < static_cast<int>(whole.size()); ++call) {
        ScriptFiler filer(whole);
        filer.type = AcDb::kFileFiler;
        filer.failAt = call;
        filer.failure = Acad::eOutOfDisk;
        ORV_Load read;
        EXPECT_EQ(read.dwgInFields(&filer), Acad::eOutOfDisk) << call;
        EXPECT_EQ(filer.next, static_cast<std::size_t>(call));
    }
}

TEST_F(LegacyLoadFiling, TheEntitysOwnCallsEndTheFilingEachByItself) {
    const Lines whole =
        joined({{"UInt32 3"}, loadElement(1, kPlainLoadRecord), kActsOn2a, kNoCurve, kLoadEntityEnd});
    readAllFields(load, whole);
    const int last = static_cast<int>(whole.size()) - 1;
    for (const int call : {0, last - 2, last - 1, last}) {
        ScriptFiler out;
        out.type = AcDb::kFileFiler;
        out.failAt = call;
        out.failsOnce = true;
        EXPECT_EQ(load.dwgOutFields(&out), Acad::eFilerError) << call;
        EXPECT_EQ(out.callCount, call + 1);
        ScriptFiler in(whole);
        in.type = AcDb::kFileFiler;
        in.failAt = call;
        in.failsOnce = true;
        ORV_Load read;
        EXPECT_EQ(read.dwgInFields(&in), Acad::eFilerError) << call;
        EXPECT_EQ(in.callCount, call + 1);
    }
}

TEST_F(LegacyLoadFiling, AFilerThatEndsInABadStatusIsAskedForIt) {
    const Lines whole = joined({{"UInt32 3"}, loadElement(), kActsOnNothing, kLoadEntityEnd});
    LateFiler out(whole.size());
    EXPECT_EQ(load.dwgOutFields(&out), Acad::eOutOfDisk);
    EXPECT_EQ(out.lines, whole);
    LateFiler in(whole.size(), whole);
    EXPECT_EQ(load.dwgInFields(&in), Acad::eOutOfDisk);
    EXPECT_TRUE(in.isAtEnd());
    EXPECT_EQ(reports.conditions(), (Texts{"es == es2", "es == es2"}));
}

// What is thrown.

TEST_F(LegacyLoadFiling, WhatAPluginThrowsIsPrintedAndMakesAProxyOfTheLoad) {
    RecordingPlugin::onCreate = [](RecordingPlugin& plugin) {
        plugin.onHook = [](const std::string& hook) {
            if (hook == "onLoad")
                throw std::runtime_error("not me");
        };
    };
    EXPECT_EQ(readFields(load, threePlugins()), Acad::eMakeMeProxy);
    ASSERT_EQ(beeps.lines().size(), 1u);
    EXPECT_EQ(beeps.lines()[0].find(L"Caught Exception: not me "), 0u);
}

TEST_F(LegacyLoadFiling, DataThatEndTooEarlyMakeAProxyOfTheLoad) {
    Lines lines = joined({{"UInt32 3"}, loadElement(), kActsOnNothing, kLoadEntityEnd});
    lines[5] = "UInt32 4";
    lines[6] = "Bytes 08 00 00 00";
    EXPECT_EQ(readFields(load, lines), Acad::eMakeMeProxy);
    ASSERT_EQ(beeps.lines().size(), 1u);
    EXPECT_EQ(beeps.lines()[0].find(L"Caught Exception: filer error "), 0u);
}

TEST_F(LegacyLoadFiling, WhatAPluginThrowsWhenItIsSavedIsPrintedAndFailsTheSave) {
    addPluginTo<RecordingPlugin>(load).onHook = [](const std::string& hook) {
        if (hook == "onSave")
            throw std::runtime_error("not now");
    };
    ScriptFiler filer;
    filer.type = AcDb::kFileFiler;
    EXPECT_EQ(static_cast<int>(load.dwgOutFields(&filer)), 2);
    EXPECT_EQ(beeps.lines().size(), 1u);
}
