// Old drawings, whose systems are described by an object and not by a record.

#include "dbx/doc/system_fallback.h"

#include "base/exceptions.h"
#include "dbproxy.h"
#include "dbx/cdb/read_blob.h"
#include "dbx/dictionary.h"
#include "dbx/doc/ORV_CCSysPar.h"
#include "dbx/doc/system_manager.h"
#include "dbx/nod.h"
#include "dbxrecrd.h"
#include "embedded/user_coordinate_system.h"
#include "support/report_recorder.h"
#include "support/system_records.h"

#include <algorithm>
#include <cstring>
#include <limits>

using orv::SystemManager;
using testing_support::entryAt;
using testing_support::putObject;
using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::subDictionary;
using testing_support::Texts;

namespace {

template <class Char, std::size_t kSize>
void setText(Char (&field)[kSize], const Char* text) {
    std::fill(std::begin(field), std::end(field), Char());
    for (std::size_t i = 0; i + 1 < kSize && text[i] != Char(); ++i)
        field[i] = text[i];
}

ccsys description(int system = orv::RAUM) {
    ccsys data;
    setText(data.projectName, L"Halle");
    data.system = system;
    data.zustand = 0;
    data.numkn = 12;
    data.maxkn = 345;
    data.iachs = 2;
    data.igdiv = 5000;
    setText(data.codeName, "EC_2");
    setText(data.codeCategory, "A");
    data.nation = 49;
    data.versionText = L"9.1";
    return data;
}

class Fallback : public testing::Test {
protected:
    void describe(const ccsys& data) {
        putObject(subDictionary(m_drawing.named, L"SYSTEM"), L"SYST", new ORV_CCSysPar(data));
    }
    boost::shared_ptr<orv::System> takeUp() {
        SystemManager::instance().initFromDatabase(&m_drawing.db);
        return SystemManager::instance().getSystemByName(&m_drawing.db, L"ASDWG");
    }
    orv::typeCDB_SYST record() {
        orv::cdb::NodCdb cdb(&m_drawing.db);
        EXPECT_EQ(cdb.open(L"ASDWG", orv::cdb::kSharedLocking), orv::cdb::CD_ERR_NONE);
        const orv::Blob blob = orv::cdb::readBlob(cdb, 10, 0, orv::cdb::kFirstRecord);
        orv::typeCDB_SYST syst{};
        EXPECT_EQ(blob.size(), sizeof syst);
        std::memcpy(&syst, blob.data(), std::min(blob.size(), sizeof syst));
        return syst;
    }
    void expectNoRecord() {
        ReportRecorder reports;
        EXPECT_EQ(takeUp(), nullptr);
        EXPECT_EQ(reports.messages(),
                  (Texts{"Failed to find fallback record for 10/0.", "system could not be initialized"}));
    }

    StoreDrawing m_drawing;
};

TEST_F(Fallback, TheRecordIsBuiltFromTheDescription) {
    describe(description());
    ReportRecorder reports;
    const auto system = takeUp();
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(reports.size(), 0u);
    const orv::typeCDB_SYST syst = record();
    EXPECT_EQ(syst.iprob, 0);
    EXPECT_EQ(syst.iachs, 2);
    EXPECT_EQ(syst.sys_numkn, 12);
    EXPECT_EQ(syst.sys_maxkn, 345);
    EXPECT_EQ(syst.igdiv, 5000);
    EXPECT_EQ(syst.igres, 127);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(syst.box_min[i], 1.0e8F);
        EXPECT_EQ(syst.box_max[i], -1.0e8F);
        EXPECT_EQ(syst.m_tg.origin[i], 0.0F);
        EXPECT_EQ(syst.m_tg.x[i], i == 0 ? 1.0F : 0.0F);
        EXPECT_EQ(syst.m_tg.y[i], i == 1 ? 1.0F : 0.0F);
        EXPECT_EQ(syst.m_tg.z[i], i == 2 ? 1.0F : 0.0F);
    }
    const auto* const bytes = reinterpret_cast<const unsigned char*>(&syst);
    EXPECT_TRUE(std::all_of(bytes + 96, bytes + sizeof syst, [](unsigned char byte) { return byte == 0; }));
}

TEST_F(Fallback, ProjectAndDesignCodeBecomeProperties) {
    describe(description());
    auto& properties = takeUp()->properties();
    EXPECT_EQ(properties.getCasted<std::wstring>("project.name"), L"Halle");
    EXPECT_EQ(properties.getCasted<std::wstring>("designcode.name"), L"EC_2");
    EXPECT_EQ(properties.getCasted<int>("designcode.nation"), 49);
    EXPECT_EQ(properties.getCasted<std::wstring>("designcode.category"), L"A");
    EXPECT_EQ(properties.size(), 4u);
}

TEST_F(Fallback, TheVersionTextGoesToTheGeneralData) {
    describe(description());
    takeUp();
    std::wstring text;
    EXPECT_TRUE(orv::acad::nod_readGeneralData(L"$Kelmoran", L"version_string", text));
    EXPECT_EQ(text, L"9.1");
}

TEST_F(Fallback, OfADrawingAtTheSideTheVersionTextGoesToTheWorkingOne) {
    describe(description());
    AcDbDatabase working(true);
    acdbHostApplicationServices()->setWorkingDatabase(&working);
    EXPECT_EQ(takeUp()->properties().size(), 4u);
    EXPECT_EQ(record().sys_numkn, 12);
    std::wstring text;
    EXPECT_TRUE(orv::acad::nod_readGeneralData(L"$Kelmoran", L"version_string", text));
    EXPECT_EQ(text, L"9.1");
    acdbHostApplicationServices()->setWorkingDatabase(&m_drawing.db);
    EXPECT_FALSE(orv::acad::nod_readGeneralData(L"$Kelmoran", L"version_string", text));
}

TEST_F(Fallback, AWildStateGoesRound) {
    ccsys data = description(orv::EBENE);
    data.zustand = std::numeric_limits<Adesk::Int32>::max();
    describe(data);
    ReportRecorder reports;
    takeUp();
    EXPECT_EQ(record().iprob, std::numeric_limits<std::int32_t>::min() + 13);
}

TEST_F(Fallback, NoSystemOfAnOldDrawingIsEditable) {
    describe(description());
    EXPECT_FALSE(takeUp()->editable());
}

TEST_F(Fallback, OnceTheRecordIsThereTheDescriptionIsNotAskedAgain) {
    describe(description());
    takeUp();
    const auto again = takeUp();
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->properties().size(), 0u);
}

TEST_F(Fallback, AxesOfTheDrawingsCoordinateSystemAreTaken) {
    embedded::setUserCoordinateSystem(m_drawing.db, AcGePoint3d(1, 2, 3), AcGeVector3d::kYAxis,
                                      AcGeVector3d::kZAxis);
    describe(description());
    takeUp();
    const auto tg = record().m_tg;
    EXPECT_EQ(std::vector<float>(tg.origin, tg.origin + 3), (std::vector<float>{0, 0, 0}));
    EXPECT_EQ(std::vector<float>(tg.x, tg.x + 3), (std::vector<float>{0, 1, 0}));
    EXPECT_EQ(std::vector<float>(tg.y, tg.y + 3), (std::vector<float>{0, 0, 1}));
    EXPECT_EQ(std::vector<float>(tg.z, tg.z + 3), (std::vector<float>{1, 0, 0}));
}

TEST_F(Fallback, APlateGetsItsGravityFromItsKindOfProblem) {
    describe(description(orv::PLATTE));
    takeUp();
    EXPECT_EQ(record().iprob, 34);
    EXPECT_EQ(record().iachs, -3);
    EXPECT_EQ(record().igres, 28);
}

TEST_F(Fallback, APlateInAnotherPlaneHasGravityTheOtherWay) {
    embedded::setUserCoordinateSystem(m_drawing.db, AcGePoint3d::kOrigin, AcGeVector3d::kXAxis,
                                      AcGeVector3d::kZAxis);
    ccsys data = description(orv::PLATTE);
    data.chunkValue = 0;
    describe(data);
    takeUp();
    EXPECT_EQ(record().iprob, 30);
    EXPECT_EQ(record().iachs, 3);
}

TEST_F(Fallback, APlaneKeepsTheGravityThatIsStored) {
    ccsys data = description(orv::EBENE);
    data.zustand = 3;
    describe(data);
    takeUp();
    EXPECT_EQ(record().iprob, 17);
    EXPECT_EQ(record().iachs, 2);
    EXPECT_EQ(record().igres, 35);
}

TEST_F(Fallback, TheEmptyBoxStaysAsItIs) {
    describe(description());
    AcGePoint3d min;
    AcGePoint3d max;
    takeUp()->getExtents(min, max);
    EXPECT_EQ(min.x, 1.0e8);
    EXPECT_EQ(max.z, -1.0e8);
}

TEST_F(Fallback, AStoreWithoutADescriptionIsReported) { expectNoRecord(); }

TEST_F(Fallback, AnEmptySystemDictionaryIsReported) {
    subDictionary(m_drawing.named, L"SYSTEM");
    expectNoRecord();
}

TEST_F(Fallback, AnObjectOfAnotherClassIsNoDescription) {
    putObject(subDictionary(m_drawing.named, L"SYSTEM"), L"SYST", new AcDbXrecord);
    expectNoRecord();
}

TEST_F(Fallback, SomethingElseInThePlaceOfTheDictionaryIsNoDescription) {
    putObject(m_drawing.named, L"SYSTEM", new ORV_CCSysPar(description()));
    expectNoRecord();
}

TEST_F(Fallback, AProxyInThePlaceOfTheDescriptionIsNone) {
    putObject(subDictionary(m_drawing.named, L"SYSTEM"), L"SYST", new AcDbProxyObject);
    expectNoRecord();
}

TEST_F(Fallback, AProxyInThePlaceOfTheDictionaryIsNoDescription) {
    putObject(m_drawing.named, L"SYSTEM", new AcDbProxyObject);
    expectNoRecord();
}

TEST_F(Fallback, APropertyThatIsThereAlreadyThrows) {
    describe(description());
    orv::System system;
    system.properties().add<int>("project.name", 1);
    orv::cdb::NodCdb cdb(&m_drawing.db);
    ASSERT_EQ(cdb.open(L"ASDWG", orv::cdb::kSharedLocking), orv::cdb::CD_ERR_NONE);
    EXPECT_THROW(orv::detail::makeSystemRecord(m_drawing.db, L"ASDWG", system, cdb),
                 orv::AlreadyExistsException);
    EXPECT_TRUE(cdb.exists(10, 0)); // written before
}

TEST_F(Fallback, ADrawingWithoutStoresHasNoDescription) {
    AcDbDatabase db(true);
    orv::System system;
    orv::cdb::NodCdb cdb(&m_drawing.db);
    ASSERT_EQ(cdb.open(L"ASDWG", orv::cdb::kSharedLocking), orv::cdb::CD_ERR_NONE);
    EXPECT_FALSE(orv::detail::makeSystemRecord(db, L"ASDWG", system, cdb));
    EXPECT_FALSE(cdb.exists(10, 0));
}

} // namespace
