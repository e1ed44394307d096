// What loads file, and what of damaged streams is taken.

#include "examples/structure/loads_test.h"
#include "support/archive_bytes.h"
#include "support/beep_recorder.h"
#include "support/console_recorder.h"

#include "base/key_value_storage.h"
#include "dbx/binary_in_archive.h"
#include "dbx/binary_out_archive.h"
#include "orvcore/warn_on_new_version.h"
#include "orvshape/element_contexts.h"

#include <algorithm>

namespace structure_tests {
namespace {

using namespace testing_support;
using structure::BeamLoad;
using structure::FreeLoad;

// The plugins' frame, and in it a load of the type 10 at no vertex and in no case; the element's id is on the
// side. Behind that the data of the bases, then those of the example: cubic, counted in kN.
const std::string kFrameBegin = "01 00 00 00 ";
const std::string kFrameEnd = " e5 7d db af";
const std::string kGeneric = "03 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 c1 d8 c5 57 ";
const std::string kFree = "04 00 00 00 " + kGeneric +
                          "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 6c 00 00 00 00 00 00 00 "
                          "c1 a7 a7 81 ";
const std::string kOnElement = kGeneric + "02 00 00 00 c1 a7 a7 81 ";
const std::string kUnit = "02 00 00 00 6b 00 00 00 4e 00 00 00 ";
const std::string kOwn = "01 00 00 00 04 00 00 00 " + kUnit + "44 4c 54 53";

template <class Plugin>
bool load(Plugin& plugin, const std::string& hex) {
    const std::vector<unsigned char> bytes = fromHex(hex);
    orv::serialization::BinaryInArchive archive(bytes.data(), bytes.size());
    archive.softPointers() = {AcDbObjectId(), AcDbObjectId()}; // no element, in both places
    return plugin.load(archive, orv::elem::ElementBase::kVersion);
}

class LoadFilingTest : public LoadsTest {
protected:
    template <class Plugin>
    void expectBothWays(const std::string& golden) {
        Plugin plugin;
        plugin.setShape(LoadShape::kCubicStart);
        plugin.setUnit(L"kN");
        orv::serialization::BinaryOutArchive archive;
        EXPECT_TRUE(static_cast<const orv::elem::ElementBase::IPlugin&>(plugin).save(archive));
        EXPECT_EQ(hexOf(archive), golden);
        Plugin read;
        EXPECT_TRUE(load(read, golden));
        EXPECT_EQ(read.shape(), LoadShape::kCubicStart);
        EXPECT_EQ(read.unit(), L"kN");
    }
};

TEST_F(LoadFilingTest, AFreeLoadFilesItsShapeBehindTheBase) {
    expectBothWays<FreeLoad>(kFrameBegin + kFree + kOwn + kFrameEnd);
}

TEST_F(LoadFilingTest, ALoadOnABeamFilesItsShapeBehindTheBase) {
    expectBothWays<BeamLoad>(kFrameBegin + kOnElement + kOwn + kFrameEnd);
}

TEST_F(LoadFilingTest, AShapeOfANewerVersionAnUnknownOneAndAWrongEndAreNotTaken) {
    FreeLoad plugin;
    plugin.setUnit(L"old");
    orv_forgetNewVersionWarnings();
    const ConsoleRecorder console;
    const ReportRecorder newer;
    const auto loads = [&](const std::string& own) {
        return load(plugin, kFrameBegin + kFree + own + kFrameEnd);
    };
    EXPECT_FALSE(loads("02 00 00 00 04 00 00 00 " + kUnit + "44 4c 54 53"));
    EXPECT_EQ(newer.conditions(), Texts{"version <= kShapeVersion"});
    EXPECT_NE(console.text().find(L"version 2"), std::wstring::npos);
    EXPECT_FALSE(loads("01 00 00 00 09 00 00 00 " + kUnit + "44 4c 54 53"));
    const ReportRecorder ends;
    EXPECT_FALSE(loads("01 00 00 00 04 00 00 00 " + kUnit + "00 00 00 00"));
    EXPECT_EQ(ends.conditions(), Texts{"magic == kShapeMagic"});
    EXPECT_EQ(plugin.unit(), L"old");
    EXPECT_EQ(plugin.shape(), LoadShape::kLinear);
}

TEST_F(LoadFilingTest, EveryShapeComesBackFromAFile) {
    std::map<AcDbHandle, LoadShape> shapes;
    for (std::uint32_t shape = 0; shape <= static_cast<std::uint32_t>(structure::kLastLoadShape); ++shape) {
        LoadProperties properties = linear(1.0, 2.0);
        properties.shape = static_cast<LoadShape>(shape);
        shapes[addLoad(beam, 0.0, 1.0, properties).handle()] = properties.shape;
    }
    const Streams before = streams();
    saveAndOpen();
    EXPECT_TRUE(streams() == before);
    for (const auto& [handle, shape] : shapes) {
        AcDbObjectId id;
        ASSERT_EQ(db->getAcDbObjectId(id, false, handle), Acad::eOk);
        const Open<Load> open(id);
        const auto* const plugin = dynamic_cast<const BeamLoad*>(open->plugin());
        ASSERT_NE(plugin, nullptr);
        EXPECT_EQ(plugin->shape(), shape);
        EXPECT_EQ(plugin->unit(), L"kN/m");
    }
}

TEST_F(LoadFilingTest, ShapeAndUnitHaveNamesBesideTheValues) {
    const std::unique_ptr<Load> line = Load::alongLine({{0, 0, 0}, {1, 0, 0}}, linear(1.0, 2.0));
    orv::KeyValueStorage storage;
    ASSERT_TRUE(line->plugin()->save(storage));
    EXPECT_EQ(storage.getValue("load/line/free/shape", -1), 0);
    EXPECT_EQ(storage.getValue<std::wstring>("load/line/free/unit", L""), L"kN/m");
    EXPECT_EQ(storage.getValue("load/line/free/values/1", 0.0), 2.0);
}

// Files a load to memory, lets the test damage the bytes, and reads them into a fresh one.
Acad::ErrorStatus readDamaged(const Load& original,
                              const std::function<void(std::vector<std::uint8_t>&)>& damage) {
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    EXPECT_EQ(original.dwgOutFields(&out), Acad::eOk);
    damage(bytes);
    Load fresh;
    embedded::MemoryFiler in(AcDb::kFileFiler, bytes.data(), bytes.size());
    return fresh.dwgInFields(&in);
}

TEST_F(LoadFilingTest, ALoadFilesVersionAndMagicBehindItsStream) {
    const std::unique_ptr<Load> line = Load::alongLine({{0, 0, 0}, {1, 0, 0}}, linear(1.0, 2.0));
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    ASSERT_EQ(line->dwgOutFields(&out), Acad::eOk);
    const std::vector<std::uint8_t> end = {1, 0, 0, 0, 0x4f, 0x4c, 0x54, 0x53};
    ASSERT_GT(bytes.size(), end.size());
    EXPECT_TRUE(std::equal(end.rbegin(), end.rend(), bytes.rbegin()));
    EXPECT_EQ(readDamaged(*line, [](auto&) {}), Acad::eOk);
    EXPECT_EQ(readDamaged(*line, [](auto& all) { all[all.size() - 8] = 2; }), Acad::eMakeMeProxy);
    EXPECT_EQ(readDamaged(*line, [](auto& all) { all[all.size() - 8] = 0; }), Acad::eMakeMeProxy);
    EXPECT_EQ(readDamaged(*line, [](auto& all) { all.back() ^= 1; }), Acad::eMakeMeProxy);
}

TEST_F(LoadFilingTest, ShortenedStreamsAreRefused) {
    const std::unique_ptr<Load> point = Load::atPoint({1.0, 2.0, 3.0}, linear(5.0, 5.0));
    const ReportRecorder reports;
    std::vector<std::uint8_t> whole;
    embedded::MemoryFiler out(AcDb::kFileFiler, whole);
    ASSERT_EQ(point->dwgOutFields(&out), Acad::eOk);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(readDamaged(*point, [length](auto& bytes) { bytes.resize(length); }), Acad::eOk) << length;
}

TEST_F(LoadFilingTest, ASingleWrongBitIsReadOrRefusedAndDoesNoHarm) {
    const std::unique_ptr<Load> point = Load::atPoint({1.0, 2.0, 3.0}, linear(5.0, 5.0));
    const ReportRecorder reports;
    const ConsoleRecorder console;
    const BeepRecorder beeps;
    std::vector<std::uint8_t> whole;
    embedded::MemoryFiler out(AcDb::kFileFiler, whole);
    ASSERT_EQ(point->dwgOutFields(&out), Acad::eOk);
    std::size_t refused = 0;
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit)
        refused += readDamaged(*point,
                               [bit](auto& bytes) {
                                   bytes[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
                               }) != Acad::eOk
                       ? 1
                       : 0;
    // The magic numbers alone are this many bits.
    EXPECT_GT(refused, 5u * 32u);
}

TEST_F(LoadFilingTest, ALoadTellsAboutItself) {
    const AcDbObjectId id = addLoad(beam, 0.0, 1.0, linear(4.0, 8.0));
    orv::ElementInfoContext info;
    OpenElement(id)->appendElementInfo(info);
    ASSERT_EQ(info.sections().size(), 2u);
    EXPECT_EQ(info.sections()[0].heading, L"load");
    EXPECT_EQ(info.sections()[1].heading, L"Load on a beam");
    const auto& values = info.sections()[1].values;
    ASSERT_EQ(values.size(), 4u);
    EXPECT_EQ(values[0].text, L"10");
    EXPECT_EQ(values[1].text, L"linear");
    EXPECT_EQ(values[2].text, L"1");
    EXPECT_EQ(values[3].text, L"4 kN/m, 8 kN/m");
}

} // namespace
} // namespace structure_tests
