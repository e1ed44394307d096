// Load entities whose fields are cut off or damaged.

#include "embedded/memory_filer.h"
#include "module/dbx/elem/legacy_loads.h"
#include "support/allocation_watch.h"
#include "support/beep_recorder.h"

#include <cstdint>
#include <vector>

using namespace testing_support;

namespace {

using Bytes = std::vector<std::uint8_t>;

class LegacyLoadDamage : public testing::Test {
protected:
    LegacyLoadDamage() {
        registerLoads();
        ORV_Load load;
        load.setNodDatabaseId(AcDbObjectId(), L"AB");
        addPluginTo<PlainLoad>(load).setOwnCurve(makeCurve());
        addPluginTo<FreeLoad>(load);
        load.setVertices(verticesOf(2));
        whole = bytesOf(load);
        curveAt = whole.size() - 4 - 1 - curveSize(); // the end mark; the flag of the second curve
    }

    static Bytes bytesOf(const ORV_Load& load) {
        Bytes bytes;
        embedded::MemoryFiler filer(AcDb::kFileFiler, bytes);
        EXPECT_EQ(load.dwgOutFields(&filer), Acad::eOk);
        return bytes;
    }
    // Name and fields of the curve.
    static std::size_t curveSize() {
        Bytes bytes;
        embedded::MemoryFiler filer(AcDb::kFileFiler, bytes);
        filer.writeString(AcString(L"ORV_SegmentedCurve"));
        EXPECT_EQ(makeCurve()->dwgOutFields(&filer), Acad::eOk);
        return bytes.size();
    }
    // From a copy of its own, so that reading behind the end is found.
    static Acad::ErrorStatus read(ORV_Load& load, const Bytes& bytes) {
        const Bytes exact(bytes);
        embedded::MemoryFiler filer(AcDb::kFileFiler, exact.data(), exact.size());
        return load.dwgInFields(&filer);
    }
    static constexpr std::size_t kMostAtOnce = std::size_t{17} << 20;

    Bytes whole;
    std::size_t curveAt = 0;
    ReportRecorder reports;
    ConsoleRecorder console;
    BeepRecorder beeps;
};

} // namespace

TEST_F(LegacyLoadDamage, TheWholeIsRead) {
    ORV_Load load;
    EXPECT_EQ(read(load, whole), Acad::eOk);
    EXPECT_TRUE(pluginAt<PlainLoad>(load, 0).getOwnCurve());
    EXPECT_EQ(bytesOf(load), whole);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadDamage, NoPartOfItIsReadToAGoodEnd) {
    takeLargestAllocation();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        ORV_Load load;
        EXPECT_NE(read(load, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))),
                  Acad::eOk)
            << length;
    }
    EXPECT_LE(takeLargestAllocation(), kMostAtOnce);
}

TEST_F(LegacyLoadDamage, EveryWrongBitEndsCleanly) {
    takeLargestAllocation();
    int refused = 0;
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        Bytes damaged = whole;
        damaged[bit / 8] = static_cast<std::uint8_t>(damaged[bit / 8] ^ (1 << bit % 8));
        ORV_Load load;
        if (read(load, damaged) != Acad::eOk) {
            ++refused;
            continue;
        }
        const Bytes again = bytesOf(load);
        ORV_Load other;
        EXPECT_EQ(read(other, again), Acad::eOk) << bit;
        // A curve's numbers may be rounded once more.
        EXPECT_EQ(bytesOf(other).size(), again.size()) << bit;
    }
    EXPECT_GT(refused, static_cast<int>(whole.size()));
    EXPECT_LE(takeLargestAllocation(), kMostAtOnce);
}

// Each bit of the class's name asks for a class that is not there, or for no class at all.
TEST_F(LegacyLoadDamage, NoWrongBitOfTheCurvesNameIsTaken) {
    const std::size_t nameSize = 4 + 2 * 18;
    for (std::size_t bit = 0; bit < nameSize * 8; ++bit) {
        Bytes damaged = whole;
        std::uint8_t& byte = damaged[curveAt + bit / 8];
        byte = static_cast<std::uint8_t>(byte ^ (1 << bit % 8));
        ORV_Load load;
        EXPECT_NE(read(load, damaged), Acad::eOk) << bit;
    }
}

// Its section is there and nobody asks for it: the end is looked for one byte too early.
TEST_F(LegacyLoadDamage, ASectionOfAPluginWhoseCodeIsMissingPutsTheEndOutOfPlace) {
    struct GoneLoad : PlainLoad {
        const std::string& pluginId() const override {
            static const std::string s_id = "test.load.gone";
            return s_id;
        }
    };
    ORV_Load load;
    load.setNodDatabaseId(AcDbObjectId(), L"AB");
    addPluginTo<GoneLoad>(load);
    const Bytes filed = bytesOf(load);
    ORV_Load back;
    EXPECT_EQ(read(back, filed), Acad::eOk);
    EXPECT_EQ(back.unknownPlugins().size(), 1u);
    EXPECT_EQ(reports.conditions(), Texts{"magicNo == kMagic"});
    EXPECT_EQ(bytesOf(back).size(), filed.size() - 1) << "filed without a section from then on";
}
