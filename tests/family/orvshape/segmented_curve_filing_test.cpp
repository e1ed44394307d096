#include "curve_fixture.h"
#include "embedded/memory_filer.h"
#include "embedded/session.h"
#include "platform/files.h"
#include "support/own_calls.h"
#include "support/report_recorder.h"

#include <cmath>
#include <cstring>
#include <deque>
#include <filesystem>
#include <limits>
#include <sstream>

using embedded::MemoryFiler;
using testing_support::ReportRecorder;

namespace {

using Bytes = std::vector<std::uint8_t>;

// Shows points and vectors, too, and answers them.
struct PointFiler : testing_support::RecordingFiler {
    std::deque<AcGePoint3d> points;

    PointFiler() { type = AcDb::kFileFiler; }

    Acad::ErrorStatus writePoint3d(const AcGePoint3d& p) override {
        const Acad::ErrorStatus es = RecordingFiler::writePoint3d(p);
        show(p);
        return es;
    }
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& v) override {
        const Acad::ErrorStatus es = RecordingFiler::writeVector3d(v);
        show(AcGePoint3d::kOrigin + v);
        return es;
    }
    Acad::ErrorStatus readPoint3d(AcGePoint3d* p) override {
        const Acad::ErrorStatus es = RecordingFiler::readPoint3d(p);
        *p = next(es);
        return filerStatus();
    }
    Acad::ErrorStatus readVector3d(AcGeVector3d* v) override {
        const Acad::ErrorStatus es = RecordingFiler::readVector3d(v);
        *v = next(es).asVector();
        return filerStatus();
    }

private:
    void show(const AcGePoint3d& p) {
        std::ostringstream text;
        text << ' ' << p.x << ' ' << p.y << ' ' << p.z;
        calls.back() += text.str();
    }
    AcGePoint3d next(Acad::ErrorStatus es) {
        AcGePoint3d point;
        if (es != Acad::eOk)
            return point;
        if (points.empty()) {
            setFilerStatus(Acad::eEndOfObject);
            return point;
        }
        point = points.front();
        points.pop_front();
        return point;
    }
};

Bytes bytesOf(const ORV_SegmentedCurve& curve) {
    Bytes bytes;
    MemoryFiler filer(AcDb::kFileFiler, bytes);
    EXPECT_EQ(curve.dwgOutFields(&filer), Acad::eOk);
    return bytes;
}

// A line from (0, 0) to (4, 0), half a circle about (4, 2) to (4, 4), with the numbers exact.
void makeExact(ORV_SegmentedCurve& curve) {
    ASSERT_EQ(curve.append(lineOf({0, 0, 0}, {4, 0, 0})), Acad::eOk);
    orv::CurveSegment arc;
    ASSERT_TRUE(orv::CurveSegment::arcOf({4, 0, 0}, {4, 4, 0}, {4, 2, 0}, {0, 0, 1}, kPi, arc));
    ASSERT_EQ(curve.append(arc), Acad::eOk);
}

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

// What reads it as one piece: a stream that fails in one of its numbers.
struct Arc {
    double sweep = kPi;
    AcGePoint3d start{4, 0, 0}, end{4, 4, 0}, centre{4, 2, 0}, normal{0, 0, 1};
};

void expectRefused(const Arc& arc) {
    ORV_SegmentedCurve curve, before;
    makeHook(curve);
    makeHook(before);
    PointFiler filer;
    filer.points = {arc.start, arc.end, arc.centre, arc.normal};
    filer.feed(Adesk::UInt32(1)).feed(Adesk::UInt32(1)).feed(Adesk::UInt8(1)).feed(arc.sweep);
    filer.feed(ORV_SegmentedCurve::kMagic);
    EXPECT_EQ(curve.dwgInFields(&filer), Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(filer.filerStatus(), Acad::eDwgObjectImproperlyRead);
    expectSameShape(curve, before);
}

} // namespace

TEST(SegmentedCurveFiling, EveryFieldInItsPlace) {
    ORV_SegmentedCurve curve;
    makeExact(curve);
    PointFiler filer;
    ASSERT_EQ(curve.dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(testing_support::ownCalls(filer),
              (std::vector<std::string>{"writeUInt32 1", "writeUInt32 2", "writePoint3d 0 0 0",
                                        "writeUInt8 0", "writePoint3d 4 0 0", "writeUInt8 1",
                                        "writePoint3d 4 4 0", "writePoint3d 4 2 0", "writeVector3d 0 0 1",
                                        "writeDouble 3.141593", "writeUInt32 1584181715"}));
}

TEST(SegmentedCurveFiling, VersionNoughtIsReadAsTheFirst) {
    ORV_SegmentedCurve curve, expected;
    makeExact(expected);
    PointFiler filer;
    filer.points = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {4, 2, 0}, {0, 0, 1}};
    filer.feed(Adesk::UInt32(0)).feed(Adesk::UInt32(2)).feed(Adesk::UInt8(0));
    filer.feed(Adesk::UInt8(1)).feed(kPi).feed(ORV_SegmentedCurve::kMagic);
    EXPECT_EQ(curve.dwgInFields(&filer), Acad::eOk);
    expectSameShape(curve, expected);
    EXPECT_NE(bytesOf(curve), Bytes());
    EXPECT_EQ(bytesOf(curve), bytesOf(expected)) << "and is written as the first";
}

TEST(SegmentedCurveFiling, EmptyCurveHasNoStart) {
    PointFiler filer;
    ASSERT_EQ(ORV_SegmentedCurve().dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(testing_support::ownCalls(filer),
              (std::vector<std::string>{"writeUInt32 1", "writeUInt32 0", "writeUInt32 1584181715"}));
    PointFiler reader;
    reader.feed(Adesk::UInt32(1)).feed(Adesk::UInt32(0)).feed(ORV_SegmentedCurve::kMagic);
    ORV_SegmentedCurve curve;
    makeHook(curve);
    ASSERT_EQ(curve.dwgInFields(&reader), Acad::eOk);
    EXPECT_TRUE(curve.isEmpty());
    EXPECT_EQ(curve.getLength(), 0.0);
}

TEST(SegmentedCurveFiling, FieldsAreReadInTheSameOrder) {
    PointFiler filer;
    filer.points = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {4, 2, 0}, {0, 0, 1}};
    filer.feed(Adesk::UInt32(1)).feed(Adesk::UInt32(2)).feed(Adesk::UInt8(0)).feed(Adesk::UInt8(1));
    filer.feed(kPi).feed(Adesk::UInt32(0x5E6CB1D3));
    ORV_SegmentedCurve curve, expected;
    ASSERT_EQ(curve.dwgInFields(&filer), Acad::eOk);
    EXPECT_TRUE(filer.allRead());
    EXPECT_EQ(testing_support::ownReads(filer),
              (std::vector<std::string>{"readUInt32", "readUInt32", "readPoint3d", "readUInt8", "readPoint3d",
                                        "readUInt8", "readPoint3d", "readPoint3d", "readVector3d",
                                        "readDouble", "readUInt32"}));
    makeExact(expected);
    expectSameShape(curve, expected);
    EXPECT_NEAR(curve.getLength(), 4 + 2 * kPi, 1e-12);
}

TEST(SegmentedCurveFiling, BytesOfALine) {
    ORV_SegmentedCurve curve;
    curve.append(lineOf({0, 0, 0}, {1, 2, -0.5}));
    const Bytes zero(8, 0);
    Bytes expected = {1, 0, 0, 0, 1, 0, 0, 0};
    for (int i = 0; i < 3; ++i)
        expected.insert(expected.end(), zero.begin(), zero.end());
    for (const int byte : {0x00,                                    // straight
                           0,    0,    0,    0,   0, 0, 0xF0, 0x3F, // 1
                           0,    0,    0,    0,   0, 0, 0x00, 0x40, // 2
                           0,    0,    0,    0,   0, 0, 0xE0, 0xBF, // -0.5
                           0xD3, 0xB1, 0x6C, 0x5E})                 // magic
        expected.push_back(static_cast<std::uint8_t>(byte));
    EXPECT_EQ(bytesOf(curve), expected);
}

TEST(SegmentedCurveFiling, ComesBackBitByBit) {
    ORV_SegmentedCurve curve, read;
    makeStadium(curve);
    curve.transformBy(AcGeMatrix3d::rotation(0.3, {1, 2, 3}, {4e5, 5, 6}));
    const Bytes bytes = bytesOf(curve);
    MemoryFiler filer(AcDb::kFileFiler, bytes.data(), bytes.size());
    ASSERT_EQ(read.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(filer.left(), 0u);
    EXPECT_EQ(bytesOf(read), bytes);
    EXPECT_TRUE(read.isClosed());
}

TEST(SegmentedCurveFiling, EveryPrefixFailsAndChangesNothing) {
    ORV_SegmentedCurve curve, before;
    makeStadium(curve);
    makeHook(before);
    const Bytes bytes = bytesOf(curve);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const Bytes prefix(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
        MemoryFiler filer(AcDb::kFileFiler, prefix.data(), prefix.size());
        ORV_SegmentedCurve read;
        makeHook(read);
        EXPECT_EQ(read.dwgInFields(&filer), Acad::eEndOfObject) << length;
        expectSameShape(read, before);
    }
}

TEST(SegmentedCurveFiling, CountThatTheStreamDoesNotHoldIsNotBelieved) {
    ORV_SegmentedCurve curve;
    makeStadium(curve);
    Bytes bytes = bytesOf(curve);
    for (std::size_t i = 4; i < 8; ++i)
        bytes[i] = 0xFF;
    // The magic is taken for a further piece, and there the stream ends.
    MemoryFiler filer(AcDb::kFileFiler, bytes.data(), bytes.size());
    ORV_SegmentedCurve read;
    EXPECT_EQ(read.dwgInFields(&filer), Acad::eEndOfObject);
    EXPECT_TRUE(read.isEmpty());
}

TEST(SegmentedCurveFiling, NewerVersionAsksForAProxy) {
    PointFiler filer;
    filer.feed(Adesk::UInt32(2)).feed(Adesk::UInt32(0)).feed(ORV_SegmentedCurve::kMagic);
    ORV_SegmentedCurve curve;
    makeHook(curve);
    EXPECT_EQ(static_cast<int>(curve.dwgInFields(&filer)), 301);
    EXPECT_EQ(testing_support::ownReads(filer), (std::vector<std::string>{"readUInt32"}));
    EXPECT_EQ(curve.getSegmentCount(), 3);
}

TEST(SegmentedCurveFiling, OtherMagicIsReportedAndRefused) {
    ReportRecorder reports;
    PointFiler filer;
    filer.feed(Adesk::UInt32(1)).feed(Adesk::UInt32(0)).feed(Adesk::UInt32(9));
    ORV_SegmentedCurve curve;
    makeHook(curve);
    EXPECT_EQ(curve.dwgInFields(&filer), Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(curve.getSegmentCount(), 3);
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports.at(0).condition, "magic == kMagic");
    EXPECT_EQ(reports.at(0).message, "filing error");
}

TEST(SegmentedCurveFiling, NumbersThatMakeNoPieceAreRefused) {
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double sweep : {0.0, -1.0, 7.0, kNotANumber, infinite, 1e-300})
        expectRefused({sweep});
    expectRefused({kPi, {kNotANumber, 0, 0}});
    expectRefused({kPi, {4, 0, 0}, {infinite, 4, 0}});
    expectRefused({kPi, {4, 0, 0}, {4, 4.1, 0}}); // not where the sweep leads
    expectRefused({kPi, {4, 0, 0}, {4, 4, 0}, {4, 0, 0}});
    expectRefused({kPi, {4, 0, 0}, {4, 4, 0}, {4, 2, kNotANumber}});
    expectRefused({kPi, {4, 0, 0}, {4, 4, 0}, {4, 2, 0}, {0, 0, 0}});
    expectRefused({kPi, {4, 0, 0}, {4, 4, 0}, {4, 2, 0}, {0, kNotANumber, 0}});
    expectRefused({kPi, {4, 0, 0}, {4, 4, 0}, {4, 2, 0}, {0, 1, 0}}); // the start is off the plane
}

TEST(SegmentedCurveFiling, UnknownKindOfPieceIsRefused) {
    PointFiler filer;
    filer.points = {{0, 0, 0}, {1, 0, 0}};
    filer.feed(Adesk::UInt32(1)).feed(Adesk::UInt32(1)).feed(Adesk::UInt8(2));
    ORV_SegmentedCurve curve;
    EXPECT_EQ(curve.dwgInFields(&filer), Acad::eDwgObjectImproperlyRead);
}

TEST(SegmentedCurveFiling, FailureOfTheFilerIsItsAnswer) {
    ORV_SegmentedCurve curve;
    makeExact(curve);
    PointFiler whole;
    ASSERT_EQ(curve.dwgOutFields(&whole), Acad::eOk);
    for (int at = 0; at < static_cast<int>(whole.calls.size()); ++at) {
        PointFiler filer;
        filer.failAt = at;
        filer.failure = Acad::eFilerError;
        EXPECT_EQ(curve.dwgOutFields(&filer), Acad::eFilerError) << at;
    }
    EXPECT_EQ(curve.dwgOutFields(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(curve.dwgInFields(nullptr), Acad::eInvalidInput);
}

class FiledCurve : public CurveDrawing {
protected:
    void TearDown() override { std::filesystem::remove_all(m_folder); }
    const std::wstring m_folder = platform::makeTemporaryFolder();
};

TEST_F(FiledCurve, ComesBackFromADrawingFile) {
    ORV_SegmentedCurve expected;
    makeHook(expected);
    const AcDbHandle handle = addHook().handle();
    const std::wstring file = platform::joinPath(m_folder, L"curve.dwg");
    ASSERT_EQ(m_database->saveAs(file.c_str()), Acad::eOk) << embedded::lastFileError();
    m_database = std::make_unique<AcDbDatabase>(false);
    ASSERT_EQ(m_database->readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbObjectId id;
    ASSERT_EQ(m_database->getAcDbObjectId(id, false, handle), Acad::eOk);
    ORV_SegmentedCurve* curve = open(id);
    ASSERT_NE(curve, nullptr);
    expectSameShape(*curve, expected);
    curve->close();
}

TEST_F(FiledCurve, ChangeIsUndoneAndRedone) {
    const AcDbObjectId id = addHook();
    embedded::beginCommand(*m_database);
    ORV_SegmentedCurve* curve = open(id, AcDb::kForWrite);
    ASSERT_EQ(curve->moveVertices({3}, {0, 2, 0}), Acad::eOk);
    ASSERT_EQ(curve->appendLineTo({9, 9, 9}), Acad::eOk);
    EXPECT_TRUE(curve->isModifiedGraphics());
    curve->close();
    ASSERT_TRUE(embedded::undo(*m_database));
    ORV_SegmentedCurve expected;
    makeHook(expected);
    curve = open(id);
    expectSameShape(*curve, expected);
    EXPECT_NEAR(curve->getLength(), kHookLength, 1e-12);
    curve->close();
    ASSERT_TRUE(embedded::redo(*m_database));
    curve = open(id);
    EXPECT_EQ(curve->getSegmentCount(), 4);
    expectNear(curve->getSegmentAt(2)->end(), {6, 7, 0});
    curve->close();
}
