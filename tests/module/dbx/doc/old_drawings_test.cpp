// Drawings that older releases have left, written to a file through the host's filers, opened again and taken
// up as on any opening.

#include "base/dbx/inc/orvrxuti_dbx.h"
#include "dbfiler.h"
#include "dbx/doc/ORV_CCSysPar.h"
#include "dbx/doc/system_manager.h"
#include "dbx/nod.h"
#include "dbx/serArchives.h"
#include "embedded/session.h"
#include "platform/files.h"
#include "support/report_recorder.h"
#include "support/system_records.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

using orv::SystemManager;
using testing_support::putObject;
using testing_support::putRecord;
using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::subDictionary;
using testing_support::Texts;

namespace {

constexpr Adesk::Int32 kFiledMagic = 123456789;

// Files itself as an older release did; read back it is an ORV_CCSysPar.
class OldSysPar : public ORV_CCSysPar {
public:
    // 0: before there was a magic; below that: nothing stands in its place.
    explicit OldSysPar(int version) : m_version(version) {}

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        AcDbObject::dwgOutFields(filer);
        filer->writeString(L"first text");
        filer->writeString(L"Halle");
        for (const Adesk::Int32 value : {1 /* EBENE */, 9, 12, 345, -2, 5000, 77, 4 /* norm */})
            filer->writeInt32(value);
        filer->writeDouble(1.5);
        filer->writeBoolean(true);
        filer->writeBoolean(false);
        filer->writeDouble(2.5);
        filer->writeBoolean(false);
        filer->writeInt32(3);
        if (m_version == 0)
            filer->writeInt32(0);
        else if (m_version > 0)
            writeVersioned(*filer);
        return filer->filerStatus();
    }

private:
    void writeVersioned(AcDbDwgFiler& filer) const {
        filer.writeInt32(kFiledMagic);
        filer.writeInt32(m_version);
        filer.writeInt32(1);
        if (m_version >= 2)
            filer.writeString(L"EC_5");
        if (m_version >= 3)
            filer.writeInt32(8);
        if (m_version >= 4) {
            char text[132] = "10.20";
            filer.writeBytes(text, sizeof text);
            Adesk::Int32 value = 1;
            ads_binary chunk{sizeof value, reinterpret_cast<char*>(&value)};
            filer.writeBChunk(chunk);
        }
        if (m_version >= 5)
            filer.writeInt32(6);
        if (m_version >= 6)
            filer.writeString(L"class B");
        if (m_version >= 7)
            filer.writeBoolean(true);
    }

    int m_version;
};

// A drawing as it comes out of its file.
class Reopened {
public:
    explicit Reopened(StoreDrawing& drawing) : Reopened(drawing.db) {}
    explicit Reopened(AcDbDatabase& saved) : m_folder(platform::makeTemporaryFolder()) {
        const std::wstring file = platform::joinPath(m_folder, L"old.dwg");
        EXPECT_EQ(saved.saveAs(file.c_str()), Acad::eOk);
        EXPECT_EQ(db.readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
        acdbHostApplicationServices()->setWorkingDatabase(&db);
        SystemManager::instance().initFromDatabase(&db);
    }
    ~Reopened() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    orv::System* system(const wchar_t* name = L"ASDWG") {
        return SystemManager::instance().getSystemByName(&db, name).get();
    }

    AcDbDatabase db{false};

private:
    std::wstring m_folder;
};

class OldDescription : public testing::TestWithParam<int> {};

TEST_P(OldDescription, IsTakenUpAsItsVersionSays) {
    const int version = GetParam();
    StoreDrawing drawing;
    putObject(subDictionary(drawing.named, L"SYSTEM"), L"SYST", new OldSysPar(version));
    ReportRecorder reports;
    Reopened reopened(drawing);
    EXPECT_EQ(reports.size(), 0u);
    orv::System* const system = reopened.system();
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->get_type(), orv::EBENE);
    EXPECT_EQ(system->gravityDirection(), -2);
    EXPECT_EQ(system->get_sys_anzkn(), 12);
    EXPECT_EQ(system->get_sys_maxkn(), 345);
    EXPECT_EQ(system->get_igdiv(), 5000);
    EXPECT_EQ(system->drawingUnit(), 13);
    auto& properties = system->properties();
    EXPECT_EQ(properties.getCasted<std::wstring>("project.name"), L"Halle");
    EXPECT_EQ(properties.getCasted<std::wstring>("designcode.name"), version >= 2 ? L"EC_5" : L"SIA_162");
    EXPECT_EQ(properties.getCasted<std::wstring>("designcode.category"), version >= 6 ? L"class B" : L"");
    EXPECT_EQ(properties.getCasted<int>("designcode.nation"), version >= 7 ? 1 : 0);
    std::wstring text;
    orv::acad::nod_readGeneralData(L"$Kelmoran", L"version_string", text);
    EXPECT_EQ(text, version >= 4 ? L"10.20" : L"");
}

INSTANTIATE_TEST_SUITE_P(Versions, OldDescription, testing::Range(-1, 8));

TEST(OldDescriptionOfAnUnknownVersion, StaysAProxyAndGivesNoSystem) {
    StoreDrawing drawing;
    putObject(subDictionary(drawing.named, L"SYSTEM"), L"SYST", new OldSysPar(8));
    ReportRecorder reports;
    Reopened reopened(drawing);
    EXPECT_EQ(reopened.system(), nullptr);
    EXPECT_EQ(reports.messages(),
              (Texts{"Failed to find fallback record for 10/0.", "system could not be initialized"}));
}

TEST(OldDescriptionTakenUp, ShowsNoDesignCodeOnceTheDrawingWasSavedWithItsRecord) {
    StoreDrawing drawing;
    putObject(subDictionary(drawing.named, L"SYSTEM"), L"SYST", new OldSysPar(7));
    Reopened first(drawing);
    Reopened reopened(first.db);
    ASSERT_NE(reopened.system(), nullptr);
    EXPECT_EQ(reopened.system()->get_type(), orv::EBENE);
    EXPECT_EQ(reopened.system()->properties().size(), 0u);
}

struct OldUnit {
    std::int32_t unit;
    double scale;
};

class OldSystemInfo : public testing::TestWithParam<OldUnit> {};

TEST_P(OldSystemInfo, OfVersionOneTakesItsScaleFromItsUnit) {
    StoreDrawing drawing;
    testing_support::putSystem(drawing.db, L"ASDWG");
    struct {
        std::int32_t version;
        std::int32_t unit;
        double scale;
    } const record{1, GetParam().unit, 7.0};
    putRecord(drawing.db, L"ASDWG", 10, 102, &record, sizeof record);
    ReportRecorder reports;
    Reopened reopened(drawing);
    EXPECT_EQ(reopened.system()->scaleWcs2Cdb(), GetParam().scale);
    EXPECT_EQ(reopened.system()->drawingUnit(), GetParam().unit);
    const bool known = GetParam().unit != 14;
    EXPECT_EQ(reports.conditions(), known ? Texts{} : Texts{"0"});
}

INSTANTIATE_TEST_SUITE_P(Units, OldSystemInfo,
                         testing::Values(OldUnit{13, 1.0}, OldUnit{14, 7.0}, OldUnit{15, 0.01},
                                         OldUnit{16, 0.001}));

// What a record 10/100 of a version says before its tables.
void putSettings(AcDbDatabase& db, std::int32_t version, bool tables) {
    orv::serialization::BinaryOutArchive archive;
    archive << 1 << version;
    if (tables) {
        archive << 1 << 0x80402010u; // one colour
        archive << 2 << 3.0F << 0u;  // two sizes
        archive << 0.5F << 2u;
        archive << 1 << static_cast<unsigned char>(1); // one switch
    }
    putRecord(db, L"ASDWG", 10, 100, archive.buffer().data(), archive.offset());
}

class OldSettings : public testing::TestWithParam<int> {};

TEST_P(OldSettings, KeepTheirTablesAndGetWhatNewerVersionsAdded) {
    const int version = GetParam();
    StoreDrawing drawing;
    testing_support::putSystem(drawing.db, L"ASDWG");
    putSettings(drawing.db, version, version <= 15);
    ReportRecorder reports;
    Reopened reopened(drawing);
    auto& settings = reopened.system()->visSettings();
    EXPECT_EQ(reports.size(), version <= 15 ? 0u : 1u);
    EXPECT_EQ(settings.getVersion(), 15);
    if (version <= 15) {
        EXPECT_EQ(settings.getColour(0).red, 128 / 255.0);
        EXPECT_EQ(settings.getRawSize(0).value, 3.0);
        EXPECT_EQ(settings.getRawSize(1).value, 0.5);
        EXPECT_EQ(settings.getRawSize(1).flags, 2u);
        EXPECT_EQ(settings.getSwitch(0), 1);
    } else {
        EXPECT_EQ(reports.at(0).condition, "version <= static_cast<int32>(settings.getVersion())");
    }
    // The steps run over defaults that are there already, so each leaves them as they are.
    EXPECT_TRUE(settings.isOn(271));
    EXPECT_EQ(settings.getRawSize(8).value, 0.2);
}

INSTANTIATE_TEST_SUITE_P(Versions, OldSettings, testing::Range(1, 17));

class OldSymbolSetup : public testing::TestWithParam<std::size_t> {};

// A record of settings of a future version leaves what the older record has set.
TEST_P(OldSymbolSetup, FillsTheFieldsThatItReaches) {
    const std::size_t length = GetParam();
    std::vector<unsigned char> record(3600);
    const auto put = [&record](std::size_t offset, auto value) {
        std::memcpy(record.data() + offset, &value, sizeof value);
    };
    for (const std::size_t offset : {664, 668, 752, 828})
        put(offset, static_cast<std::int32_t>(offset));
    put(888, 888.5);
    for (const std::size_t offset : {3248, 3252, 3268})
        put(offset, std::int32_t{1});
    StoreDrawing drawing;
    testing_support::putSystem(drawing.db, L"ASDWG");
    putRecord(drawing.db, L"ASDWG", 0, 98, record.data(), length);
    putSettings(drawing.db, 16, false);
    ReportRecorder reports;
    Reopened reopened(drawing);
    EXPECT_EQ(reports.size(), length > 3224 ? 1u : 2u);
    auto& settings = reopened.system()->visSettings();
    const auto reached = [length](std::size_t end) { return length >= end; };
    EXPECT_EQ(settings.getRawSize(151).value, reached(668) ? 664.0 : 0.0);
    EXPECT_EQ(settings.getRawSize(152).value, reached(672) ? 668.0 : 0.0);
    EXPECT_EQ(settings.getRawSize(153).value, reached(756) ? 752.0 : 0.0);
    EXPECT_EQ(settings.getRawSize(155).value, reached(832) ? 828.0 : 0.0);
    EXPECT_EQ(settings.getRawSize(154).value, reached(896) ? 888.5 : 0.0);
    EXPECT_EQ(settings.isOn(62), reached(3252));
    EXPECT_EQ(settings.isOn(63), reached(3256));
    EXPECT_EQ(settings.isOn(61), reached(3272));
}

INSTANTIATE_TEST_SUITE_P(Lengths, OldSymbolSetup,
                         testing::Values(1, 8, 12, 664, 668, 672, 756, 832, 896, 3224, 3225, 3252, 3256, 3272,
                                         3524, 3528, 3600));

TEST(OldSymbolSetupAlone, EndsWithTheDefaults) {
    std::vector<unsigned char> record(3528, 0x11);
    StoreDrawing drawing;
    testing_support::putSystem(drawing.db, L"ASDWG");
    putRecord(drawing.db, L"ASDWG", 0, 98, record.data(), record.size());
    Reopened reopened(drawing);
    auto& settings = reopened.system()->visSettings();
    EXPECT_EQ(settings.getRawSize(151).value, 3.0);
    EXPECT_EQ(settings.getRawSize(154).value, 10.0);
    EXPECT_TRUE(settings.isOn(61));
    EXPECT_FALSE(settings.isOn(63));
}

} // namespace
