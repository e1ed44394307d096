#include "property_tree/arx/property_tree_filer.h"

#include "module/property_tree/arx/value_trees.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace orv::property_tree;
using namespace testing_support;
using orv::PropertyTree;
using orv::smartassert::Severity;

namespace {

constexpr Adesk::Int8 kC = 'C';
constexpr Adesk::Int8 kE = 'E';
constexpr auto kMagic = static_cast<Adesk::Int32>(0xcafeefac);
const std::string kWriteMagic = "writeInt32 -889262164";

void feedKey(ValueRecordingFiler& filer, const std::string& key) {
    filer.feed<Adesk::Int8>(kC).feed<Adesk::UInt32>(static_cast<Adesk::UInt32>(key.size()));
    if (!key.empty())
        filer.feedBytes(key);
}

// A tree of one child of this value, as far as it is written around the value.
Texts aroundValue(const Texts& value) {
    Texts calls = {"writeInt32 1", "writeInt8 67", "writeUInt32 1", "writeBytes 1: 6b"};
    calls.insert(calls.end(), value.begin(), value.end());
    calls.insert(calls.end(), {"writeInt8 69", "writeInt8 69", kWriteMagic});
    return calls;
}

} // namespace

TEST(PropertyTreeFiler, AnEmptyTreeIsVersionEndAndMagic) {
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOut(filer, PropertyTree()), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"writeInt32 1", "writeInt8 69", kWriteMagic}));
}

TEST(PropertyTreeFiler, AnEmptyTreeReadsBackAsAnEmptyTree) {
    ValueRecordingFiler filer;
    filer.feed<Adesk::Int32>(1).feed(kE).feed(kMagic);
    PropertyTree tree;
    addNode(tree, "before", 1);
    tree.data() = 2;
    EXPECT_EQ(dwgIn(filer, tree), Acad::eOk);
    EXPECT_TRUE(tree.empty());
    EXPECT_TRUE(tree.data().empty());
    EXPECT_EQ(filer.calls, (Texts{"readInt32", "readInt8", "readInt32"}));
    EXPECT_TRUE(filer.allRead());
}

TEST(PropertyTreeFiler, ChildrenAreWrittenInTheirOrderOfInsertion) {
    PropertyTree tree;
    PropertyTree& b = addNode(tree, "b", 1);
    addNode(tree, "a");
    addNode(b, "x", true);
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOut(filer, tree), Acad::eOk);
    EXPECT_EQ(filer.calls,
              (Texts{"writeInt32 1",                                                       //
                     "writeInt8 67",  "writeUInt32 1", "writeBytes 1: 62",                 //
                     "writeInt8 105", "writeInt32 1",                                      //
                     "writeInt8 67",  "writeUInt32 1", "writeBytes 1: 78",                 //
                     "writeInt8 98",  "writeBool 1",   "writeInt8 69",     "writeInt8 69", //
                     "writeInt8 67",  "writeUInt32 1", "writeBytes 1: 61",                 //
                     "writeInt8 78",  "writeInt8 69",  "writeInt8 69",     kWriteMagic}));
}

TEST(PropertyTreeFiler, NestedChildrenReadBackAtTheirPlaces) {
    ValueRecordingFiler filer;
    filer.feed<Adesk::Int32>(1);
    feedKey(filer, "b");
    filer.feed<Adesk::Int8>('i').feed<Adesk::Int32>(1);
    feedKey(filer, "x");
    filer.feed<Adesk::Int8>('b').feed(true).feed(kE).feed(kE);
    feedKey(filer, "a");
    filer.feed<Adesk::Int8>('N').feed(kE).feed(kE).feed(kMagic);
    PropertyTree expected;
    addNode(addNode(expected, "b", 1), "x", true);
    addNode(expected, "a");
    PropertyTree tree;
    EXPECT_EQ(dwgIn(filer, tree), Acad::eOk);
    EXPECT_TRUE(identical(tree, expected));
    EXPECT_EQ(filer.calls,
              (Texts{"readInt32", "readInt8",   "readUInt32",  "readBytes 1", "readInt8", "readInt32", //
                     "readInt8",  "readUInt32", "readBytes 1", "readInt8",    "readBool", "readInt8",  //
                     "readInt8",  "readInt8",   "readUInt32",  "readBytes 1", "readInt8", "readInt8",  //
                     "readInt8",  "readInt32"}));
    EXPECT_TRUE(filer.allRead());
}

TEST(PropertyTreeFiler, AnEmptyKeyHasNoBytesAndReadsBackAsAnEmptyPath) {
    PropertyTree tree;
    addNode(tree, "", 5);
    ValueRecordingFiler out;
    EXPECT_EQ(dwgOut(out, tree), Acad::eOk);
    EXPECT_EQ(out.calls, (Texts{"writeInt32 1", "writeInt8 67", "writeUInt32 0", "writeInt8 105",
                                "writeInt32 5", "writeInt8 69", "writeInt8 69", kWriteMagic}));
    ValueRecordingFiler in;
    in.feed<Adesk::Int32>(1);
    feedKey(in, "");
    in.feed<Adesk::Int8>('i').feed<Adesk::Int32>(5).feed(kE).feed(kE).feed(kMagic);
    PropertyTree back;
    EXPECT_EQ(dwgIn(in, back), Acad::eOk);
    EXPECT_TRUE(identical(back, tree));
    EXPECT_EQ(in.calls, (Texts{"readInt32", "readInt8", "readUInt32", "readInt8", "readInt32", "readInt8",
                               "readInt8", "readInt32"}));
}

TEST(PropertyTreeFiler, AKeyWithAFullStopIsWrittenAsItStandsAndReadsBackAsAChain) {
    PropertyTree tree;
    addNode(tree, "a.b", 1);
    const Bytes bytes = treeBytes(tree);
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    PropertyTree back;
    EXPECT_EQ(dwgIn(filer, back), Acad::eOk);
    PropertyTree expected;
    addNode(addNode(expected, "a"), "b", 1);
    EXPECT_TRUE(identical(back, expected));
    EXPECT_EQ(back.get_child("a.b").data().type(), typeid(int));
}

TEST(PropertyTreeFiler, AChainGoesThroughTheFirstNodeOfANameThatIsThere) {
    PropertyTree tree;
    addNode(tree, "a", 1);
    addNode(tree, "a", 2);
    addNode(tree, "a.b", 3);
    addNode(tree, "a.b", 4);
    addNode(tree, ".", 5);
    addNode(tree, "c.", 6);
    const Bytes bytes = treeBytes(tree);
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    PropertyTree back;
    EXPECT_EQ(dwgIn(filer, back), Acad::eOk);
    PropertyTree expected;
    PropertyTree& first = addNode(expected, "a", 1);
    addNode(expected, "a", 2);
    addNode(first, "b", 3);
    addNode(first, "b", 4);
    addNode(addNode(expected, ""), "", 5);
    addNode(addNode(expected, "c"), "", 6);
    EXPECT_TRUE(identical(back, expected));
}

TEST(PropertyTreeFiler, ASecondChildOfTheSameKeyIsAddedBesideTheFirst) {
    PropertyTree tree;
    addNode(tree, "a", 1);
    addNode(tree, "a", 2);
    const Bytes bytes = treeBytes(tree);
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    PropertyTree back;
    EXPECT_EQ(dwgIn(filer, back), Acad::eOk);
    EXPECT_TRUE(identical(back, tree));
}

TEST(PropertyTreeFiler, ARootWithDataIsRefusedBehindTheVersion) {
    ReportRecorder recorder;
    PropertyTree tree(boost::any(1));
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOut(filer, tree), static_cast<Acad::ErrorStatus>(3));
    EXPECT_EQ(filer.calls, (Texts{"writeInt32 1"}));
    EXPECT_EQ(recorder.conditions(), (Texts{"t.data().empty()"}));
    EXPECT_EQ(recorder.messages(), (Texts{"Root node MUST NOT contain any DATA."}));
    EXPECT_EQ(recorder.at(0).severity, Severity::kError);
}

TEST(PropertyTreeFiler, AWideTextStopsTheWritingBehindItsKey) {
    ReportRecorder recorder;
    PropertyTree tree;
    addNode(tree, "k", std::wstring(L"text"));
    addNode(tree, "l", 1);
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOut(filer, tree), static_cast<Acad::ErrorStatus>(22));
    EXPECT_EQ(filer.calls, (Texts{"writeInt32 1", "writeInt8 67", "writeUInt32 1", "writeBytes 1: 6b"}));
    EXPECT_EQ(recorder.conditions(), (Texts{"false"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"v.type().name()", typeid(std::wstring).name()}}));
    EXPECT_EQ(recorder.messages(), (Texts{"dwgOutNode(): Unknown type"}));
    EXPECT_EQ(recorder.at(0).severity, Severity::kError);
}

TEST(PropertyTreeFiler, AnotherVersionIsReportedAndReadAllTheSame) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.feed<Adesk::Int32>(2);
    feedKey(filer, "a");
    filer.feed<Adesk::Int8>('i').feed<Adesk::Int32>(5).feed(kE).feed(kE).feed(kMagic);
    PropertyTree tree;
    EXPECT_EQ(dwgIn(filer, tree), Acad::eOk);
    EXPECT_EQ(tree.size(), 1u);
    EXPECT_EQ(recorder.conditions(), (Texts{"version == 1"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"version", "2"}}));
}

TEST(PropertyTreeFiler, AnotherMagicIsReportedAndTheTreeCountsAsRead) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.feed<Adesk::Int32>(1);
    feedKey(filer, "a");
    filer.feed<Adesk::Int8>('i').feed<Adesk::Int32>(5).feed(kE).feed(kE).feed<Adesk::Int32>(7);
    PropertyTree tree;
    EXPECT_EQ(dwgIn(filer, tree), Acad::eOk);
    EXPECT_EQ(tree.size(), 1u);
    EXPECT_EQ(recorder.conditions(), (Texts{"magic == 0xcafeefac"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"magic", "7"}}));
}

TEST(PropertyTreeFiler, AnUnknownMarkerIsStatus33AndWhatWasReadStays) {
    ReportRecorder recorder;
    for (Adesk::Int8 marker : {'D', 'c', '\0', '\x7f'}) {
        ValueRecordingFiler filer;
        filer.feed<Adesk::Int32>(1);
        feedKey(filer, "a");
        filer.feed<Adesk::Int8>('N').feed(kE).feed(marker);
        PropertyTree tree;
        EXPECT_EQ(dwgIn(filer, tree), static_cast<Acad::ErrorStatus>(33));
        EXPECT_EQ(tree.size(), 1u);
    }
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeFiler, AFailingVersionLeavesTheTreeAsItWas) {
    ValueRecordingFiler filer;
    filer.failAt = 0;
    PropertyTree tree;
    addNode(tree, "before", 1);
    EXPECT_EQ(dwgIn(filer, tree), Acad::eFilerError);
    EXPECT_EQ(tree.size(), 1u);
}

TEST(PropertyTreeFiler, WritingEndsAtAnyCallThatFailsWithItsStatusAndNoReport) {
    ReportRecorder recorder;
    PropertyTree tree;
    addNode(addNode(tree, "a", std::string("text")), "b", numberedMatrix());
    addNode(tree, "c", AcGePoint3d(1, 2, 3));
    ValueRecordingFiler whole;
    ASSERT_EQ(dwgOut(whole, tree), Acad::eOk);
    for (std::size_t call = 0; call < whole.calls.size(); ++call) {
        ValueRecordingFiler filer;
        filer.failAt = static_cast<int>(call);
        filer.failure = Acad::eOutOfMemory;
        EXPECT_EQ(dwgOut(filer, tree), Acad::eOutOfMemory) << call;
        EXPECT_EQ(filer.calls.size(), call + 1);
    }
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeFiler, ReadingEndsAtAnyCallThatFailsWithItsStatusAndNoReport) {
    ReportRecorder recorder;
    for (int call = 0; call < 12; ++call) {
        ValueRecordingFiler filer;
        filer.failAt = call;
        filer.failure = Acad::eOutOfMemory;
        filer.feed<Adesk::Int32>(1);
        feedKey(filer, "a");
        filer.feed<Adesk::Int8>('s').feed<Adesk::UInt32>(2).feedBytes("xy");
        feedKey(filer, "");
        filer.feed<Adesk::Int8>('N').feed(kE).feed(kE).feed(kE).feed(kMagic);
        PropertyTree tree;
        EXPECT_EQ(dwgIn(filer, tree), Acad::eOutOfMemory) << call;
        EXPECT_EQ(filer.calls.size(), static_cast<std::size_t>(call) + 1);
        EXPECT_EQ(tree.size(), call > 3 ? 1u : 0u);
    }
    EXPECT_EQ(recorder.size(), 0u);
}

// Every row of the table of values: what is written for it, the calls behind the tag that read it, and what
// feeds these.
struct ValueRow {
    const char* name;
    char tag;
    boost::any value;
    Texts calls;
    Texts reads;
    std::function<void(ValueRecordingFiler&)> feed;
};

class PropertyTreeValue : public testing::TestWithParam<ValueRow> {};

namespace {

void feedValue(ValueRecordingFiler& filer, const ValueRow& row) {
    filer.feed(static_cast<Adesk::Int8>(row.tag));
    row.feed(filer);
}

} // namespace

TEST_P(PropertyTreeValue, IsItsTagAndItsPayload) {
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOutValue(filer, GetParam().value), Acad::eOk);
    EXPECT_EQ(filer.calls, GetParam().calls);
    PropertyTree tree;
    addNode(tree, "k", GetParam().value);
    ValueRecordingFiler whole;
    EXPECT_EQ(dwgOut(whole, tree), Acad::eOk);
    EXPECT_EQ(whole.calls, aroundValue(GetParam().calls));
}

TEST_P(PropertyTreeValue, IsReadByTheCallsOfItsTag) {
    ValueRecordingFiler filer;
    feedValue(filer, GetParam());
    boost::any value = 4711;
    EXPECT_EQ(dwgInValue(filer, value), Acad::eOk);
    Texts expected = {"readInt8"};
    expected.insert(expected.end(), GetParam().reads.begin(), GetParam().reads.end());
    EXPECT_EQ(filer.calls, expected);
    EXPECT_TRUE(identical(value, GetParam().value));
    EXPECT_TRUE(filer.allRead() && filer.points.empty() && filer.ids.empty());
}

TEST_P(PropertyTreeValue, IsReadByTheSameCallsInATree) {
    ValueRecordingFiler filer;
    filer.feed<Adesk::Int32>(1);
    feedKey(filer, "k");
    feedValue(filer, GetParam());
    filer.feed(kE).feed(kE).feed(kMagic);
    PropertyTree tree;
    EXPECT_EQ(dwgIn(filer, tree), Acad::eOk);
    Texts expected = {"readInt32", "readInt8", "readUInt32", "readBytes 1", "readInt8"};
    expected.insert(expected.end(), GetParam().reads.begin(), GetParam().reads.end());
    expected.insert(expected.end(), {"readInt8", "readInt8", "readInt32"});
    EXPECT_EQ(filer.calls, expected);
    PropertyTree only;
    addNode(only, "k", GetParam().value);
    EXPECT_TRUE(identical(tree, only));
}

TEST_P(PropertyTreeValue, ReadsBackAsTheSameTypeAndValue) {
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    ASSERT_EQ(dwgOutValue(out, GetParam().value), Acad::eOk);
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    boost::any back = 4711;
    EXPECT_EQ(dwgInValue(in, back), Acad::eOk);
    EXPECT_EQ(in.left(), 0u);
    EXPECT_TRUE(identical(back, GetParam().value));
}

TEST_P(PropertyTreeValue, EveryCutEndsInAFailureThatLeavesTheTargetAsItWas) {
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    ASSERT_EQ(dwgOutValue(out, GetParam().value), Acad::eOk);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const Bytes cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
        embedded::MemoryFiler in(AcDb::kCopyFiler, cut.data(), cut.size());
        boost::any target = 4711;
        EXPECT_EQ(dwgInValue(in, target), Acad::eEndOfObject);
        EXPECT_TRUE(identical(target, boost::any(4711)));
    }
}

namespace {

Texts matrixCalls() {
    Texts calls = {"writeInt8 109"};
    for (int i = 1; i <= 16; ++i)
        calls.push_back("writeDouble " + std::to_string(i) + ".000000");
    return calls;
}

using Feed = std::function<void(ValueRecordingFiler&)>;

template <class T>
Feed number(T value) {
    return [value](ValueRecordingFiler& filer) { filer.feed(value); };
}
Feed text(const std::string& bytes) {
    return [bytes](ValueRecordingFiler& filer) {
        filer.feed(static_cast<Adesk::UInt32>(bytes.size()));
        if (!bytes.empty())
            filer.feedBytes(bytes);
    };
}
Feed id(Adesk::IntPtr value) {
    return [value](ValueRecordingFiler& filer) { filer.ids.push_back(idOf(value)); };
}
Feed point(double x, double y, double z) {
    return [=](ValueRecordingFiler& filer) { filer.points.emplace_back(x, y, z); };
}
void nothing(ValueRecordingFiler&) {}
void oneTo16(ValueRecordingFiler& filer) {
    for (int i = 1; i <= 16; ++i)
        filer.feed<double>(i);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(
    AllTags, PropertyTreeValue,
    testing::Values(
        ValueRow{"Empty", 'N', boost::any(), {"writeInt8 78"}, {}, nothing},
        ValueRow{"True", 'b', true, {"writeInt8 98", "writeBool 1"}, {"readBool"}, number(true)},
        ValueRow{"False", 'b', false, {"writeInt8 98", "writeBool 0"}, {"readBool"}, number(false)},
        ValueRow{"Int",
                 'i',
                 -2147483647 - 1,
                 {"writeInt8 105", "writeInt32 -2147483648"},
                 {"readInt32"},
                 number<Adesk::Int32>(-2147483647 - 1)},
        ValueRow{"Double", 'd', 0.1, {"writeInt8 100", "writeDouble 0.100000"}, {"readDouble"}, number(0.1)},
        ValueRow{"Text",
                 's',
                 std::string("x\0\xff", 3),
                 {"writeInt8 115", "writeUInt32 3", "writeBytes 3: 78 00 ff"},
                 {"readUInt32", "readBytes 3"},
                 text(std::string("x\0\xff", 3))},
        ValueRow{
            "EmptyText", 's', std::string(), {"writeInt8 115", "writeUInt32 0"}, {"readUInt32"}, text("")},
        ValueRow{"ObjectId",
                 'o',
                 idOf(0x2a),
                 {"writeInt8 111", "writeSoftPointerId 2a"},
                 {"readSoftPointerId"},
                 id(0x2a)},
        ValueRow{"NullObjectId",
                 'o',
                 AcDbObjectId(),
                 {"writeInt8 111", "writeSoftPointerId 0"},
                 {"readSoftPointerId"},
                 id(0)},
        ValueRow{"SoftPointerId",
                 'x',
                 AcDbSoftPointerId(idOf(0x2b)),
                 {"writeInt8 120", "writeSoftPointerId 2b"},
                 {"readSoftPointerId"},
                 id(0x2b)},
        ValueRow{"Point",
                 'p',
                 AcGePoint3d(1, 2, 3),
                 {"writeInt8 112", "writePoint3d 1 2 3"},
                 {"readPoint3d"},
                 point(1, 2, 3)},
        ValueRow{"Vector",
                 'v',
                 AcGeVector3d(4, 5, 6),
                 {"writeInt8 118", "writeVector3d 4 5 6"},
                 {"readVector3d"},
                 point(4, 5, 6)},
        ValueRow{"Matrix", 'm', numberedMatrix(), matrixCalls(), Texts(16, "readDouble"), oneTo16}),
    [](const testing::TestParamInfo<ValueRow>& row) { return row.param.name; });

TEST(PropertyTreeValue, TypesWithoutATagAreStatus22AndNothingIsWritten) {
    const boost::any values[] = {1u,
                                 1.0f,
                                 std::int64_t{1},
                                 'c',
                                 static_cast<const wchar_t*>(L"text"),
                                 static_cast<const char*>("text"),
                                 std::wstring(),
                                 AcDbHardPointerId(),
                                 short{1},
                                 AcDbHandle()};
    for (const boost::any& value : values) {
        ReportRecorder recorder;
        ValueRecordingFiler filer;
        EXPECT_EQ(dwgOutValue(filer, value), static_cast<Acad::ErrorStatus>(22));
        EXPECT_TRUE(filer.calls.empty());
        ASSERT_EQ(recorder.messages(), (Texts{"dwgOutNode(): Unknown type"}));
        EXPECT_EQ(recorder.at(0).values, (Values{{"v.type().name()", value.type().name()}}));
    }
}

TEST(PropertyTreeValue, EveryUnknownTagIsStatus22AndLeavesTheTargetAsItWas) {
    const std::string known = "Nbidsoxpvm";
    for (int tag = -128; tag < 128; ++tag) {
        if (tag > 0 && known.find(static_cast<char>(tag)) != std::string::npos)
            continue;
        ReportRecorder recorder;
        ValueRecordingFiler filer;
        filer.feed(static_cast<Adesk::Int8>(tag));
        boost::any target = 4711;
        EXPECT_EQ(dwgInValue(filer, target), static_cast<Acad::ErrorStatus>(22)) << tag;
        EXPECT_TRUE(identical(target, boost::any(4711)));
        ASSERT_EQ(recorder.conditions(), (Texts{"false"})) << tag;
        EXPECT_EQ(recorder.messages(), (Texts{"unhandled key"}));
        EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
        EXPECT_TRUE(recorder.at(0).values.empty());
    }
}

TEST(PropertyTreeValue, AMatrixIsReadRowAfterRow) {
    ValueRecordingFiler filer;
    filer.feed<Adesk::Int8>('m');
    for (int i = 1; i <= 16; ++i)
        filer.feed<double>(i);
    boost::any value;
    EXPECT_EQ(dwgInValue(filer, value), Acad::eOk);
    EXPECT_TRUE(identical(value, boost::any(numberedMatrix())));
}

TEST(PropertyTreeValue, TheTagBringsBackTheKindOfAnId) {
    for (const char tag : {'o', 'x'}) {
        ValueRecordingFiler filer;
        filer.feed<Adesk::Int8>(tag);
        filer.ids.push_back(idOf(0x2a));
        boost::any value;
        EXPECT_EQ(dwgInValue(filer, value), Acad::eOk);
        EXPECT_EQ(filer.calls, (Texts{"readInt8", "readSoftPointerId"}));
        EXPECT_EQ(value.type(), tag == 'o' ? typeid(AcDbObjectId) : typeid(AcDbSoftPointerId));
    }
}

TEST(PropertyTreeValue, ATextOfNoLengthReadsNoBytes) {
    ValueRecordingFiler filer;
    filer.feed<Adesk::Int8>('s').feed<Adesk::UInt32>(0);
    boost::any value;
    EXPECT_EQ(dwgInValue(filer, value), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"readInt8", "readUInt32"}));
    EXPECT_TRUE(identical(value, boost::any(std::string())));
}

TEST(PropertyTreeValue, ALongTextIsReadByOneCallAsItIsWritten) {
    const std::string text(1000000, 'x');
    ValueRecordingFiler out;
    EXPECT_EQ(dwgOutValue(out, boost::any(text)), Acad::eOk);
    ASSERT_EQ(out.calls.size(), 3u);
    EXPECT_EQ(out.calls[1], "writeUInt32 1000000");
    EXPECT_EQ(out.calls[2].substr(0, 19), "writeBytes 1000000:");
    ValueRecordingFiler in;
    in.feed<Adesk::Int8>('s').feed<Adesk::UInt32>(1000000).feedBytes(text);
    boost::any value;
    EXPECT_EQ(dwgInValue(in, value), Acad::eOk);
    EXPECT_EQ(in.calls, (Texts{"readInt8", "readUInt32", "readBytes 1000000"}));
    EXPECT_TRUE(identical(value, boost::any(text)));
}

TEST(PropertyTreeFiler, ALongKeyIsReadByOneCall) {
    const std::string key(1000000, 'k');
    ValueRecordingFiler in;
    in.feed<Adesk::Int32>(1);
    feedKey(in, key);
    in.feed<Adesk::Int8>('N').feed(kE).feed(kE).feed(kMagic);
    PropertyTree tree;
    EXPECT_EQ(dwgIn(in, tree), Acad::eOk);
    EXPECT_EQ(in.calls[3], "readBytes 1000000");
    ASSERT_EQ(tree.size(), 1u);
    EXPECT_EQ(tree.front().first, key);
}
