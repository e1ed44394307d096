// Loads at random, filed and read again.

#include "module/dbx/elem/filed_values.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "module/dbx/elem/test_load.h"

#include <rapidcheck/gtest.h>

#include <cstring>

using namespace testing_support;
using orv::elem::LoadBase;

namespace {

// Any bits, also those of no number.
double anyDouble() {
    const auto bits = *rc::gen::arbitrary<std::uint64_t>();
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

LoadBase::Vertex anyVertex() {
    LoadBase::Vertex vertex;
    vertex.posSource = static_cast<orv::elem::PositionSource>(*rc::gen::arbitrary<unsigned char>());
    vertex.segment = *rc::gen::arbitrary<unsigned int>();
    vertex.distanceMode = static_cast<orv::elem::DistanceMode>(*rc::gen::arbitrary<unsigned char>());
    vertex.position = anyDouble();
    vertex.node = *rc::gen::arbitrary<unsigned int>();
    vertex.point.set(anyDouble(), anyDouble(), anyDouble());
    vertex.value = anyDouble();
    vertex.text = anyWideText();
    return vertex;
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

bool isSame(const LoadBase::Vertex& a, const LoadBase::Vertex& b) {
    return a.posSource == b.posSource && a.segment == b.segment && a.distanceMode == b.distanceMode &&
           sameBits(a.position, b.position) && a.node == b.node && sameBits(a.point.x, b.point.x) &&
           sameBits(a.point.y, b.point.y) && sameBits(a.point.z, b.point.z) && sameBits(a.value, b.value) &&
           a.text == b.text;
}

void fill(TestLoad& load) {
    load.setType(*rc::gen::inRange(0, 0x10000));
    load.setClass(static_cast<orv::elem::LOAD_KIND>(*rc::gen::inRange(0, 0x10000)));
    load.setCategory(static_cast<orv::elem::LoadTypeCategory>(*rc::gen::inRange(0, 0x10000)));
    load.setDistribution(static_cast<orv::elem::LoadDistribution>(*rc::gen::inRange(0, 0x10000)));
    load.setUDL(*rc::gen::arbitrary<bool>());
    for (int i = *rc::gen::inRange(0, 6); i > 0; --i)
        load.appendVertex(anyVertex());
    load.setLoadCases(*rc::gen::arbitrary<std::set<unsigned int>>());
    load.setUnitText(anyWideText());
    load.setPolygonal(*rc::gen::arbitrary<bool>());
}

} // namespace

RC_GTEST_PROP(LoadBaseProperty, ALoadComesBackEqualAndFilesTheSameBytesAgain, ()) {
    TestLoad load;
    fill(load);
    orv::serialization::BinaryOutArchive out;
    RC_ASSERT(load.onSave(out));
    const StoredBody stored(blockOf(out), {}, {});
    TestLoad back;
    fill(back);
    std::uint64_t taken = 0;
    RC_ASSERT(stored.read([&back](auto& archive) { return back.onLoad(archive, 6); }, &taken));
    RC_ASSERT(taken == stored.bytes.size());
    RC_ASSERT(back.getType() == load.getType());
    RC_ASSERT(back.getClass() == load.getClass());
    RC_ASSERT(back.getCategory() == load.getCategory());
    RC_ASSERT(back.getDistribution() == load.getDistribution());
    RC_ASSERT(back.isUDL() == load.isUDL());
    RC_ASSERT(back.numVertices() == load.numVertices());
    for (std::size_t i = 0; i < load.getVertices().size(); ++i)
        RC_ASSERT(isSame(back.getVertices()[i], load.getVertices()[i]));
    RC_ASSERT(back.getLoadCases() == load.getLoadCases());
    RC_ASSERT(back.getUnitText() == load.getUnitText());
    RC_ASSERT(back.isPolygonal() == load.isPolygonal());
    orv::serialization::BinaryOutArchive again;
    RC_ASSERT(back.onSave(again));
    RC_ASSERT(blockOf(again) == stored.bytes);
}

RC_GTEST_PROP(LoadBaseProperty, AnyBytesEndInAnAnswerOrAFilerError,
              (const std::vector<unsigned char>& tail)) {
    const ReportRecorder reports;
    const NewVersionRecorder warnings;
    std::vector<unsigned char> bytes = {static_cast<unsigned char>(*rc::gen::inRange(0, 10)), 0, 0, 0};
    bytes.insert(bytes.end(), tail.begin(), tail.end());
    const StoredBody stored(bytes, {}, {});
    TestLoad load;
    try {
        stored.read([&load](auto& archive) { return load.onLoad(archive, 6); });
    } catch (const orv::Exception& failure) {
        RC_ASSERT(std::string(failure.what()) == "filer error");
    }
}
