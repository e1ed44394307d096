#include "dbx/NamedSelection.h"

#include "embedded/memory_filer.h"
#include "orvcore/warn_on_new_version.h"
#include "selection_filer.h"
#include "support/beep_recorder.h"
#include "support/own_calls.h"
#include "support/report_recorder.h"
#include "support/slots.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

using orv::ORV_NamedSelection;
using testing_support::ownCalls;
using testing_support::ownReads;
using testing_support::ReportRecorder;
using testing_support::slotOf;
using testing_support::Texts;

namespace {

using Ids = std::set<AcDbObjectId>;
using Names = std::set<AcString>;
using Bytes = std::vector<std::uint8_t>;

class NamedSelection : public testing::Test {
protected:
    NamedSelection() {
        a = m_db.layerTableId();
        b = m_db.layerZero();
        c = m_db.namedObjectsDictionaryId();
        if (b < a)
            std::swap(a, b);
        if (c < a)
            std::swap(a, c);
        if (c < b)
            std::swap(b, c);
    }
    // An id whose drawing has gone.
    static AcDbObjectId goneId() { return std::make_unique<AcDbDatabase>(true)->layerZero(); }
    // A selection that has something else in every set.
    ORV_NamedSelection* other() {
        m_other.m_objects = {c};
        m_other.m_members = {c};
        m_other.m_names = {L"other"};
        return &m_other;
    }
    static Texts written(const ORV_NamedSelection& selection) {
        SelectionFiler filer;
        EXPECT_EQ(selection.dwgOutFields(&filer), Acad::eOk);
        return ownCalls(filer);
    }

    AcDbDatabase m_db{true};
    AcDbObjectId a, b, c; // ascending
    ORV_NamedSelection m_selection;
    ReportRecorder m_reports;

private:
    ORV_NamedSelection m_other;
};

// An id as the memory filer has it: where it points, in eight bytes.
Bytes bytesOf(const AcDbObjectId& id) {
    const auto number = static_cast<std::uint64_t>(id.asOldId());
    Bytes bytes(sizeof number);
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

// The place of a virtual operation in the table of its class, as the compilers of these tests lay it out.
template <class Operation>
int slotNumber(Operation operation) {
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &operation, sizeof offset);
    return static_cast<int>((offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

struct PlainObject : AcDbObject {
    static int slots() { return slotNumber(&PlainObject::subWblockClone) + 1; }
};

} // namespace

TEST_F(NamedSelection, AnEmptyOneFilesItsVersionANullIdAndTwoZeros) {
    EXPECT_EQ(written(m_selection),
              (Texts{"writeInt32 3", "writeSoftPointerId null", "writeUInt32 0", "writeUInt32 0"}));
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(NamedSelection, WritesAllFieldsInOrder) {
    m_selection.m_objects = {b, a};
    m_selection.m_members = {c, a, b};
    m_selection.m_names = {L"b", L"B", L"", L"\u00c4"};
    EXPECT_EQ(written(m_selection),
              (Texts{"writeInt32 3", SelectionFiler::lineOf(a), SelectionFiler::lineOf(b),
                     "writeSoftPointerId null", "writeUInt32 4", "writeString ", "writeString B",
                     "writeString b", "writeString \u00c4", "writeUInt32 3", SelectionFiler::lineOf(a),
                     SelectionFiler::lineOf(b), SelectionFiler::lineOf(c)}));
}

TEST_F(NamedSelection, AnObjectWhoseDrawingHasGoneIsSkippedAndAMemberIsNot) {
    const AcDbObjectId gone = goneId();
    m_selection.m_objects = {AcDbObjectId(), a, gone, b};
    m_selection.m_members = {AcDbObjectId(), gone};
    const Texts calls = written(m_selection);
    EXPECT_EQ(calls, (Texts{"writeInt32 3", SelectionFiler::lineOf(a), SelectionFiler::lineOf(b),
                            "writeSoftPointerId null", "writeUInt32 0", "writeUInt32 2",
                            "writeSoftPointerId null", SelectionFiler::lineOf(gone)}));
}

TEST_F(NamedSelection, WritesAnErasedObject) {
    const AcDbObjectId id = m_db.layoutDictionaryId();
    m_selection.m_objects = {id};
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(object->erase(), Acad::eOk);
    object->close();
    EXPECT_EQ(written(m_selection).at(1), SelectionFiler::lineOf(id));
}

TEST_F(NamedSelection, ReadsVersion3) {
    SelectionFiler filer;
    filer.feed<Adesk::Int32>(3).feedId(b).feedId(a).feedId(AcDbObjectId());
    filer.feed<Adesk::UInt32>(2).feedName(L"x").feedName(L"A");
    filer.feed<Adesk::UInt32>(2).feedId(c).feedId(AcDbObjectId());
    ORV_NamedSelection& read = *other();
    EXPECT_EQ(read.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(ownReads(filer),
              (Texts{"readInt32", "readSoftPointerId", "readSoftPointerId", "readSoftPointerId", "readUInt32",
                     "readString", "readString", "readUInt32", "readSoftPointerId", "readSoftPointerId"}));
    EXPECT_TRUE(filer.allTaken());
    EXPECT_EQ(read.m_objects, (Ids{a, b}));
    EXPECT_EQ(read.m_names, (Names{L"A", L"x"}));
    EXPECT_EQ(read.m_members, (Ids{AcDbObjectId(), c}));
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(NamedSelection, ReadsTheDroppedListOfVersion2AndDropsIt) {
    SelectionFiler filer;
    filer.feed<Adesk::Int32>(2).feedId(a).feedId(AcDbObjectId());
    filer.feed<Adesk::UInt32>(3).feedId(b).feedId(AcDbObjectId()).feedId(c);
    filer.feed<Adesk::UInt32>(1).feedName(L"n");
    filer.feed<Adesk::UInt32>(1).feedId(b);
    ORV_NamedSelection& read = *other();
    EXPECT_EQ(read.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(ownReads(filer), (Texts{"readInt32", "readSoftPointerId", "readSoftPointerId", "readUInt32",
                                      "readSoftPointerId", "readSoftPointerId", "readSoftPointerId",
                                      "readUInt32", "readString", "readUInt32", "readSoftPointerId"}));
    EXPECT_TRUE(filer.allTaken());
    EXPECT_EQ(read.m_objects, Ids{a});
    EXPECT_EQ(read.m_names, Names{L"n"});
    EXPECT_EQ(read.m_members, Ids{b});
}

class NamedSelectionVersion : public NamedSelection, public testing::WithParamInterface<int> {};

TEST_P(NamedSelectionVersion, UpTo1ReadsNoMembersAndLeavesThoseThatAreHere) {
    SelectionFiler filer;
    filer.feed<Adesk::Int32>(GetParam()).feedId(a).feedId(AcDbObjectId());
    filer.feed<Adesk::UInt32>(1).feedId(b);
    filer.feed<Adesk::UInt32>(1).feedName(L"n");
    ORV_NamedSelection& read = *other();
    EXPECT_EQ(read.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(ownReads(filer), (Texts{"readInt32", "readSoftPointerId", "readSoftPointerId", "readUInt32",
                                      "readSoftPointerId", "readUInt32", "readString"}));
    EXPECT_TRUE(filer.allTaken());
    EXPECT_EQ(read.m_objects, Ids{a});
    EXPECT_EQ(read.m_names, Names{L"n"});
    EXPECT_EQ(read.m_members, Ids{c}) << "as it was";
}

INSTANTIATE_TEST_SUITE_P(Old, NamedSelectionVersion, testing::Values(1, 0, -1, INT_MIN));

TEST_F(NamedSelection, ANewerVersionIsRefusedWithTheSetsUnchangedAndWithoutAWord) {
    orv_forgetNewVersionWarnings();
    int warnings = 0;
    const ORV_NewVersionSink before =
        orv_setNewVersionSink([&](const ORV_NewVersionWarning&) { ++warnings; });
    for (const Adesk::Int32 version : {4, INT_MAX}) {
        SelectionFiler filer;
        filer.feed(version).feedId(a).feedId(AcDbObjectId());
        ORV_NamedSelection& read = *other();
        EXPECT_EQ(static_cast<int>(read.dwgInFields(&filer)), 301);
        EXPECT_EQ(ownReads(filer), Texts{"readInt32"});
        EXPECT_EQ(read.m_objects, Ids{c});
        EXPECT_EQ(read.m_names, Names{L"other"});
        EXPECT_EQ(read.m_members, Ids{c});
    }
    orv_setNewVersionSink(before);
    EXPECT_EQ(warnings, 0);
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(NamedSelection, DuplicatesCollapse) {
    SelectionFiler filer;
    filer.feed<Adesk::Int32>(3).feedId(a).feedId(a).feedId(AcDbObjectId());
    filer.feed<Adesk::UInt32>(3).feedName(L"n").feedName(L"N").feedName(L"n");
    filer.feed<Adesk::UInt32>(2).feedId(b).feedId(b);
    EXPECT_EQ(m_selection.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(m_selection.m_objects, Ids{a});
    EXPECT_EQ(m_selection.m_names, (Names{L"N", L"n"}));
    EXPECT_EQ(m_selection.m_members, Ids{b});
}

TEST_F(NamedSelection, WritingStopsAtTheFirstCallThatFails) {
    m_selection.m_objects = {a};
    m_selection.m_members = {b};
    m_selection.m_names = {L"n"};
    const Texts whole = written(m_selection);
    ASSERT_EQ(whole.size(), 7u);
    for (std::size_t failing = 0; failing < whole.size(); ++failing) {
        SelectionFiler filer;
        filer.failAt = testing_support::baseWrites(filer.type) + static_cast<int>(failing);
        filer.failure = Acad::eOutOfDisk;
        m_reports.clear();
        EXPECT_EQ(m_selection.dwgOutFields(&filer), Acad::eOutOfDisk);
        EXPECT_EQ(ownCalls(filer), Texts(whole.begin(), whole.begin() + static_cast<long>(failing) + 1));
        EXPECT_EQ(m_reports.conditions(), Texts{"es == es2"});
    }
}

TEST_F(NamedSelection, ReadingStopsAtTheFirstCallThatFails) {
    const auto feed = [&](SelectionFiler& filer) {
        filer.feed<Adesk::Int32>(2).feedId(a).feedId(AcDbObjectId());
        filer.feed<Adesk::UInt32>(1).feedId(c);
        filer.feed<Adesk::UInt32>(1).feedName(L"n");
        filer.feed<Adesk::UInt32>(1).feedId(b);
    };
    const std::vector<Ids> objects = {{c}, {}, {a}, {a}, {a}, {a}, {a}, {a}, {a}};
    const std::vector<Names> names = {{L"other"}, {L"other"}, {L"other"}, {L"other"}, {L"other"},
                                      {},         {},         {L"n"},     {L"n"}};
    const std::vector<Ids> members = {{c}, {c}, {c}, {c}, {c}, {c}, {c}, {}, {}};
    for (std::size_t failing = 0; failing < objects.size(); ++failing) {
        SelectionFiler filer;
        feed(filer);
        filer.failAt = testing_support::baseReads(filer.type) + static_cast<int>(failing);
        filer.failure = Acad::eOutOfDisk;
        m_reports.clear();
        ORV_NamedSelection& read = *other();
        EXPECT_EQ(read.dwgInFields(&filer), Acad::eOutOfDisk);
        EXPECT_EQ(ownReads(filer).size(), failing + 1);
        EXPECT_EQ(m_reports.conditions(), Texts{"es == es2"});
        EXPECT_EQ(read.m_objects, objects[failing]) << failing;
        EXPECT_EQ(read.m_names, names[failing]) << failing;
        EXPECT_EQ(read.m_members, members[failing]) << failing;
    }
}

TEST_F(NamedSelection, AFailureOfTheBaseEndsFiling) {
    SelectionFiler out;
    out.type = AcDb::kBagFiler;
    out.failAt = 0;
    EXPECT_EQ(m_selection.dwgOutFields(&out), Acad::eFilerError);
    EXPECT_LE(out.calls.size(), static_cast<std::size_t>(testing_support::baseWrites(out.type)));
    EXPECT_EQ(m_reports.conditions(), Texts{"es == es2"});
    m_reports.clear();
    SelectionFiler in;
    in.type = AcDb::kBagFiler;
    in.failAt = 0;
    ORV_NamedSelection& read = *other();
    EXPECT_EQ(read.dwgInFields(&in), Acad::eFilerError);
    EXPECT_EQ(m_reports.conditions(), Texts{"es == es2"});
    EXPECT_EQ(read.m_objects, Ids{c});
}

TEST_F(NamedSelection, AnExceptionInAFilerReachesTheConsoleAndEndsInAFixedStatus) {
    const testing_support::BeepRecorder beep;
    SelectionFiler out;
    out.throwAt = testing_support::baseWrites(out.type);
    EXPECT_EQ(static_cast<int>(m_selection.dwgOutFields(&out)), 2);
    SelectionFiler in;
    in.throwAt = testing_support::baseReads(in.type);
    ORV_NamedSelection& read = *other();
    EXPECT_EQ(static_cast<int>(read.dwgInFields(&in)), 301);
    EXPECT_EQ(read.m_objects, Ids{c});
    SelectionFiler base;
    base.type = AcDb::kBagFiler;
    base.throwAt = 0;
    EXPECT_EQ(static_cast<int>(read.dwgInFields(&base)), 301);
    ASSERT_EQ(beep.lines().size(), 3u);
    for (const std::wstring& line : beep.lines())
        EXPECT_EQ(line.find(L"Unhandled Exception: "), 0u);
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(NamedSelection, ItsBytesAreThese) {
    m_selection.m_objects = {a, b};
    m_selection.m_members = {c};
    m_selection.m_names = {L"n"};
    Bytes expected = {3, 0, 0, 0};
    const auto append = [&](const Bytes& more) { expected.insert(expected.end(), more.begin(), more.end()); };
    append(bytesOf(a));
    append(bytesOf(b));
    append(Bytes(8, 0));
    append({1, 0, 0, 0, 1, 0, 0, 0, 'n', 0, 1, 0, 0, 0});
    append(bytesOf(c));
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    EXPECT_EQ(m_selection.dwgOutFields(&out), Acad::eOk);
    EXPECT_EQ(bytes, expected);
    embedded::MemoryFiler in(AcDb::kFileFiler, expected.data(), expected.size());
    ORV_NamedSelection read;
    EXPECT_EQ(read.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(read.m_objects, m_selection.m_objects);
    EXPECT_EQ(read.m_names, m_selection.m_names);
    EXPECT_EQ(read.m_members, m_selection.m_members);
}

TEST_F(NamedSelection, EveryPrefixOfTheBytesFailsAndTheWholeReads) {
    m_selection.m_objects = {a, b};
    m_selection.m_members = {c};
    m_selection.m_names = {L"one", L"two"};
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    ASSERT_EQ(m_selection.dwgOutFields(&out), Acad::eOk);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const Bytes part(bytes.begin(), bytes.begin() + static_cast<long>(length));
        embedded::MemoryFiler in(AcDb::kFileFiler, part.data(), part.size());
        EXPECT_EQ(ORV_NamedSelection().dwgInFields(&in), Acad::eEndOfObject) << length;
    }
    embedded::MemoryFiler in(AcDb::kFileFiler, bytes.data(), bytes.size());
    ORV_NamedSelection read;
    EXPECT_EQ(read.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(read.m_objects, m_selection.m_objects);
    EXPECT_EQ(read.m_members, m_selection.m_members);
    EXPECT_EQ(read.m_names, m_selection.m_names);
}

TEST_F(NamedSelection, ACountBeyondTheDataFailsAtTheirEnd) {
    SelectionFiler names;
    names.feed<Adesk::Int32>(3).feedId(AcDbObjectId()).feed<Adesk::UInt32>(UINT_MAX).feedName(L"n");
    EXPECT_EQ(m_selection.dwgInFields(&names), Acad::eEndOfObject);
    EXPECT_EQ(m_selection.m_names, Names{L"n"});
    SelectionFiler members;
    members.feed<Adesk::Int32>(3).feedId(AcDbObjectId()).feed<Adesk::UInt32>(0);
    members.feed<Adesk::UInt32>(UINT_MAX).feedId(a);
    EXPECT_EQ(m_selection.dwgInFields(&members), Acad::eEndOfObject);
    EXPECT_EQ(m_selection.m_members, Ids{a});
    SelectionFiler dropped;
    dropped.feed<Adesk::Int32>(1).feedId(AcDbObjectId()).feed<Adesk::UInt32>(UINT_MAX).feedId(a);
    EXPECT_EQ(m_selection.dwgInFields(&dropped), Acad::eEndOfObject);
}

TEST_F(NamedSelection, WithoutAFilerReportsAndFails) {
    EXPECT_EQ(m_selection.dwgOutFields(nullptr), Acad::eNullPtr);
    EXPECT_EQ(m_selection.dwgInFields(nullptr), Acad::eNullPtr);
    EXPECT_EQ(m_reports.conditions(), (Texts{"filer", "filer"}));
}

TEST_F(NamedSelection, ACopyHasItsOwnSets) {
    m_selection.m_objects = {a, goneId()};
    m_selection.m_members = {b};
    m_selection.m_names = {L"n"};
    ORV_NamedSelection copy(m_selection);
    EXPECT_EQ(copy.m_objects, m_selection.m_objects) << "the one whose drawing has gone too";
    EXPECT_EQ(copy.m_members, Ids{b});
    EXPECT_EQ(copy.m_names, Names{L"n"});
    EXPECT_TRUE(copy.objectId().isNull());
    copy.m_objects.clear();
    EXPECT_EQ(m_selection.m_objects.size(), 2u);
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(NamedSelection, AssignmentReplacesTheSetsAndTakesOverTheBase) {
    m_selection.m_objects = {a};
    m_selection.addPersistentReactor(b);
    ORV_NamedSelection& target = *other();
    target = m_selection;
    EXPECT_EQ(target.m_objects, Ids{a});
    EXPECT_TRUE(target.m_members.empty());
    EXPECT_TRUE(target.m_names.empty());
    EXPECT_TRUE(target.hasPersistentReactor(b));
    const ORV_NamedSelection copy(m_selection);
    EXPECT_TRUE(copy.hasPersistentReactor(b));
}

TEST_F(NamedSelection, AssignmentToItselfLeavesTheSetsAlone) {
    ORV_NamedSelection& same = *other();
    const ORV_NamedSelection& self = same;
    same = self;
    EXPECT_EQ(same.m_objects, Ids{c});
    EXPECT_EQ(same.m_members, Ids{c});
    EXPECT_EQ(same.m_names, Names{L"other"});
}

TEST_F(NamedSelection, HasTheFrameOfItsClass) {
    EXPECT_EQ(ORV_NamedSelection::kVersion, 3);
    EXPECT_EQ(static_cast<Adesk::UInt32>(ORV_NamedSelection::kMagic), 0xa6f84cdeu);
    EXPECT_EQ(m_selection.isA(), ORV_NamedSelection::desc());
    EXPECT_EQ(ORV_NamedSelection::cast(&m_selection), &m_selection);
    EXPECT_EQ(ORV_NamedSelection::cast(nullptr), nullptr);
    PlainObject plain;
    EXPECT_EQ(ORV_NamedSelection::cast(&plain), nullptr);
    const std::unique_ptr<AcRxObject> made(ORV_NamedSelection::desc()->create());
    EXPECT_NE(ORV_NamedSelection::cast(made.get()), nullptr);
}

TEST_F(NamedSelection, OverridesDestructorClassAndFilersAlone) {
    // The destructor takes the first two slots.
    const std::set<int> own = {0, 1, slotNumber(&AcDbObject::isA), slotNumber(&AcDbObject::dwgInFields),
                               slotNumber(&AcDbObject::dwgOutFields)};
    EXPECT_EQ(own.size(), 5u);
    EXPECT_LT(slotNumber(&AcDbObject::isA), slotNumber(&AcDbObject::dwgInFields));
    EXPECT_LT(slotNumber(&AcDbObject::dwgInFields), slotNumber(&AcDbObject::dwgOutFields));
    const PlainObject plain;
    std::set<int> differing;
    for (int slot = 0; slot < PlainObject::slots(); ++slot)
        if (slotOf<const void*>(&m_selection, slot) != slotOf<const void*>(&plain, slot))
            differing.insert(slot);
    EXPECT_EQ(differing, own);
}
