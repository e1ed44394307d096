#include "dbx/doc/database_element_base.h"

#include "arx/types.h"
#include "dbfiler.h"
#include "embedded/memory_filer.h"
#include "linked_thing.h"
#include "orvcore/warn_on_new_version.h"
#include "platform/files.h"
#include "support/recording_filer.h"
#include "support/report_recorder.h"
#include "support/slots.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

using orv::doc::DatabaseElementBase;
using orv::doc::DatabaseElementBase_kMagic;
using orv::doc::DatabaseElementBase_kVersion;
using testing_support::RecordingFiler;
using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::Texts;
using testing_support::Values;

namespace {

using Bytes = std::vector<std::uint8_t>;

// The link alone.
struct Link : DatabaseElementBase {
    using DatabaseElementBase::dwgInFields;
    using DatabaseElementBase::dwgOutFields;

    Link() = default;
    Link(const AcDbObjectId& linkId, const std::wstring& linkName) : id(linkId), name(linkName) {}

    void setNodDatabaseId(const AcDbObjectId& newId, const std::wstring& newName) override {
        id = newId;
        name = newName;
        ++timesSet;
    }
    AcDbObjectId getNodDatabaseId() override { return id; }
    const std::wstring& getNodDatabaseName() const override { return name; }

    AcDbObjectId id;
    std::wstring name;
    int timesSet = 0;
};

// Answers the two reads that are no numbers, too.
struct LinkFiler : RecordingFiler {
    LinkFiler() = default;
    LinkFiler(Adesk::UInt32 version, const AcDbObjectId& linkId, const wchar_t* linkName, Adesk::UInt32 magic)
        : id(linkId), name(linkName) {
        feed(version).feed(magic);
    }
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* read) override {
        const Acad::ErrorStatus es = RecordingFiler::readSoftPointerId(read);
        if (es == Acad::eOk)
            *read = id;
        return es;
    }
    using RecordingFiler::readString;
    Acad::ErrorStatus readString(AcString& read) override {
        const Acad::ErrorStatus es = RecordingFiler::readString(read);
        read = es == Acad::eOk ? name : L"";
        return es;
    }
    AcDbObjectId id;
    const wchar_t* name = L"";
};

const Texts kWrites = {"writeUInt32 1", "writeSoftPointerId set", "writeString ASDWG",
                       "writeUInt32 4159408702"};
const Texts kReads = {"readUInt32", "readSoftPointerId", "readString", "readUInt32"};
const Texts kWriteChecks = {"filer.writeUInt32(DatabaseElementBase_kVersion)",
                            "filer.writeSoftPointerId(elem.getNodDatabaseId())",
                            "filer.writeString(AcString(elem.getNodDatabaseName().c_str()))",
                            "filer.writeUInt32(DatabaseElementBase_kMagic)"};
const Texts kReadChecks = {"filer.readUInt32(&version)", "filer.readSoftPointerId(&id)",
                           "filer.readString(name)", "filer.readUInt32(&magic)"};

// The expressions of the failed calls; the other reports by their conditions.
Texts checksOf(const ReportRecorder& reports) {
    Texts checks;
    for (const auto& report : reports.reports())
        checks.push_back(report.condition == "es == es2" ? report.values.at(0).value : report.condition);
    return checks;
}

class WarningRecorder {
public:
    WarningRecorder() {
        orv_forgetNewVersionWarnings();
        m_before = orv_setNewVersionSink([this](const ORV_NewVersionWarning& w) { warnings.push_back(w); });
    }
    ~WarningRecorder() { orv_setNewVersionSink(m_before); }
    std::vector<ORV_NewVersionWarning> warnings;

private:
    ORV_NewVersionSink m_before;
};

} // namespace

TEST(DatabaseElementBase, VersionAndMagic) {
    EXPECT_EQ(DatabaseElementBase_kVersion, 1u);
    EXPECT_EQ(DatabaseElementBase_kMagic, 0xf7eb8a3eu);
    EXPECT_EQ(DatabaseElementBase_kMagic, 4159408702u);
}

TEST(DatabaseElementBase, WritesVersionDictionaryNameAndMagic) {
    ReportRecorder reports;
    StoreDrawing drawing;
    RecordingFiler filer;
    EXPECT_EQ(Link::dwgOutFields(Link(drawing.named, L"ASDWG"), filer), Acad::eOk);
    EXPECT_EQ(filer.calls, kWrites);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(DatabaseElementBase, ReadsThemBackAndSetsTheLinkOnce) {
    ReportRecorder reports;
    StoreDrawing drawing;
    LinkFiler filer(1, drawing.named, L"ASDWG", DatabaseElementBase_kMagic);
    Link link;
    EXPECT_EQ(Link::dwgInFields(link, filer), Acad::eOk);
    EXPECT_EQ(filer.calls, kReads);
    EXPECT_EQ(link.id, drawing.named);
    EXPECT_EQ(link.name, L"ASDWG");
    EXPECT_EQ(link.timesSet, 1);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(DatabaseElementBase, ANewerVersionGivesTheProxyStatusAndTheOldLinkStays) {
    ReportRecorder reports;
    WarningRecorder warned;
    StoreDrawing drawing;
    for (const Adesk::UInt32 version : {2u, 0x80000000u, 0xffffffffu}) {
        LinkFiler filer(version, drawing.base, L"other", DatabaseElementBase_kMagic);
        Link link(drawing.named, L"ASDWG");
        EXPECT_EQ(static_cast<int>(Link::dwgInFields(link, filer)), 301);
        EXPECT_EQ(filer.calls, Texts{"readUInt32"});
        EXPECT_EQ(link.id, drawing.named);
        EXPECT_EQ(link.name, L"ASDWG");
        EXPECT_EQ(link.timesSet, 0);
    }
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_TRUE(warned.warnings.empty());
}

TEST(DatabaseElementBase, AnOlderVersionIsRead) {
    ReportRecorder reports;
    LinkFiler filer(0, AcDbObjectId(), L"old", DatabaseElementBase_kMagic);
    Link link;
    EXPECT_EQ(Link::dwgInFields(link, filer), Acad::eOk);
    EXPECT_EQ(link.name, L"old");
    EXPECT_EQ(reports.size(), 0u);
}

TEST(DatabaseElementBase, AWrongMagicIsReportedAndTheLinkStands) {
    ReportRecorder reports;
    StoreDrawing drawing;
    LinkFiler filer(1, drawing.named, L"ASDWG", 5);
    Link link;
    EXPECT_EQ(Link::dwgInFields(link, filer), Acad::eOk);
    EXPECT_EQ(link.id, drawing.named);
    EXPECT_EQ(link.name, L"ASDWG");
    EXPECT_EQ(reports.conditions(), (Texts{"magic == DatabaseElementBase_kMagic"}));
    EXPECT_EQ(reports.at(0).values, (Values{{"magic", "5"}, {"DatabaseElementBase_kMagic", "4159408702"}}));
    EXPECT_EQ(reports.at(0).message, "filer error");
    EXPECT_EQ(reports.at(0).severity, orv::smartassert::Severity::kDebug);
}

TEST(DatabaseElementBase, AnEmptyNameIsFiledAsAnEmptyTextAndComesBackEmpty) {
    ReportRecorder reports;
    RecordingFiler filer;
    EXPECT_EQ(Link::dwgOutFields(Link(), filer), Acad::eOk);
    EXPECT_EQ(filer.calls,
              (Texts{"writeUInt32 1", "writeSoftPointerId null", "writeString ", "writeUInt32 4159408702"}));
    LinkFiler in(1, AcDbObjectId(), L"", DatabaseElementBase_kMagic);
    Link link(AcDbObjectId(), L"before");
    EXPECT_EQ(Link::dwgInFields(link, in), Acad::eOk);
    EXPECT_EQ(link.name, L"");
    EXPECT_EQ(link.timesSet, 1);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(DatabaseElementBase, AFilerThatFailsFromAnyCallOnIsWrittenToToTheEnd) {
    StoreDrawing drawing;
    const Link link(drawing.named, L"ASDWG");
    for (int failing = 0; failing < 4; ++failing) {
        ReportRecorder reports;
        RecordingFiler filer;
        filer.failAt = failing;
        EXPECT_EQ(Link::dwgOutFields(link, filer), Acad::eOk);
        EXPECT_EQ(filer.calls, kWrites);
        EXPECT_EQ(checksOf(reports), Texts(kWriteChecks.begin() + failing, kWriteChecks.end()));
        EXPECT_EQ(filer.filerStatus(), Acad::eFilerError);
    }
}

TEST(DatabaseElementBase, AFailedWriteIsReportedWithItsExpressionTextsAndPlace) {
    ReportRecorder reports;
    RecordingFiler filer;
    filer.failAt = 3;
    Link::dwgOutFields(Link(), filer);
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports.at(0).condition, "es == es2");
    const auto& values = reports.at(0).values;
    ASSERT_EQ(values.size(), 5u);
    EXPECT_EQ(values[0].name, "expression");
    EXPECT_EQ(values[1].name, "acadErrorStatusText(es)");
    EXPECT_EQ(values[1].value, "eFilerError");
    EXPECT_EQ(values[2].name, "acadErrorStatusText(es2)");
    EXPECT_EQ(values[2].value, "eOk");
    EXPECT_NE(values[3].value.find("database_element_base.cpp"), std::string::npos);
}

TEST(DatabaseElementBase, AFilerThatFailsFromAnyCallOnIsReadToTheEndAndTheLinkIsSet) {
    StoreDrawing drawing;
    for (int failing = 0; failing < 4; ++failing) {
        ReportRecorder reports;
        LinkFiler filer(1, drawing.named, L"ASDWG", DatabaseElementBase_kMagic);
        filer.failAt = failing;
        Link link(drawing.base, L"before");
        EXPECT_EQ(Link::dwgInFields(link, filer), Acad::eOk);
        EXPECT_EQ(filer.calls, kReads);
        Texts expected(kReadChecks.begin() + failing, kReadChecks.end());
        expected.push_back("magic == DatabaseElementBase_kMagic");
        EXPECT_EQ(checksOf(reports), expected);
        EXPECT_EQ(link.id, failing > 1 ? drawing.named : AcDbObjectId());
        EXPECT_EQ(link.name, failing > 2 ? L"ASDWG" : L"");
        EXPECT_EQ(link.timesSet, 1);
    }
}

TEST(DatabaseElementBase, BytesAreThoseOfTheFormatAlsoForNamesOutsideTheFirstPlane) {
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    ASSERT_EQ(Link::dwgOutFields(Link(AcDbObjectId(), L"a\u00e4\U0001f3d7"), out), Acad::eOk);
    const Bytes expected = {1,    0,    0,    0,                           // version
                            0,    0,    0,    0,   0,    0,    0,    0,    // no dictionary
                            4,    0,    0,    0,                           // four units of 16 bits
                            0x61, 0,    0xe4, 0,   0x3c, 0xd8, 0xd7, 0xdf, //
                            0x3e, 0x8a, 0xeb, 0xf7};                       // magic
    EXPECT_EQ(bytes, expected);
    Link link;
    embedded::MemoryFiler in(AcDb::kFileFiler, bytes.data(), bytes.size());
    EXPECT_EQ(Link::dwgInFields(link, in), Acad::eOk);
    EXPECT_EQ(link.name, L"a\u00e4\U0001f3d7");
    EXPECT_EQ(in.left(), 0u);
}

TEST(DatabaseElementBase, TheDictionaryGoesThroughRawBytesAsItIs) {
    StoreDrawing drawing;
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kDeepCloneFiler, bytes);
    ASSERT_EQ(Link::dwgOutFields(Link(drawing.named, L"ASDWG"), out), Acad::eOk);
    Link link;
    embedded::MemoryFiler in(AcDb::kDeepCloneFiler, bytes.data(), bytes.size());
    EXPECT_EQ(Link::dwgInFields(link, in), Acad::eOk);
    EXPECT_EQ(link.id, drawing.named);
}

TEST(DatabaseElementBase, EveryBeginningOfTheBytesIsReportedAndHarmless) {
    StoreDrawing drawing;
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    Link::dwgOutFields(Link(drawing.named, L"ASDWG"), out);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const Bytes cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
        ReportRecorder reports;
        embedded::MemoryFiler in(AcDb::kFileFiler, cut.data(), cut.size());
        Link link;
        EXPECT_EQ(Link::dwgInFields(link, in), Acad::eOk);
        EXPECT_EQ(link.timesSet, 1);
        EXPECT_GE(reports.size(), 2u) << "a call that failed, and the magic; length " << length;
        EXPECT_EQ(reports.conditions().back(), "magic == DatabaseElementBase_kMagic");
        EXPECT_NE(in.filerStatus(), Acad::eOk) << "the host sees it there";
    }
}

TEST(DatabaseElementBase, ADamagedBitIsTakenRefusedOrReported) {
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    Link::dwgOutFields(Link(AcDbObjectId(), L"ASDWG"), out);
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        if (bit / 8 >= 4 && bit / 8 < 12)
            continue; // raw bytes of an id are an address, which this filer takes for one of its own
        Bytes damaged = bytes;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(1u << (bit % 8));
        ReportRecorder reports;
        embedded::MemoryFiler in(AcDb::kFileFiler, damaged.data(), damaged.size());
        Link link;
        const bool proxy = static_cast<int>(Link::dwgInFields(link, in)) == 301;
        const bool noticed = proxy || reports.size() > 0 || link.name != L"ASDWG";
        EXPECT_TRUE(noticed || bit == 0) << "only a version of 0 goes unnoticed; bit " << bit;
    }
}

RC_GTEST_PROP(DatabaseElementBase, AnyNameComesBack, (const std::vector<std::uint16_t>& characters)) {
    std::wstring name;
    for (const std::uint16_t character : characters)
        if (character != 0 && (character < 0xd800 || character > 0xdfff))
            name += static_cast<wchar_t>(character);
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    Link::dwgOutFields(Link(AcDbObjectId(), name), out);
    RC_ASSERT(bytes.size() == 20 + 2 * name.size());
    Link link;
    embedded::MemoryFiler in(AcDb::kFileFiler, bytes.data(), bytes.size());
    RC_ASSERT(Link::dwgInFields(link, in) == Acad::eOk);
    RC_ASSERT(link.name == name);
}

TEST(DatabaseElementBase, FilingNeverTouchesTheSystem) {
    // The link is filed as it stands: to a dictionary that is no store, under a name that no store has.
    ReportRecorder reports;
    StoreDrawing drawing;
    RecordingFiler out;
    Link::dwgOutFields(Link(drawing.kelmoran, L"none"), out);
    EXPECT_EQ(out.calls.at(2), "writeString none");
    LinkFiler in(1, drawing.kelmoran, L"none", DatabaseElementBase_kMagic);
    Link link;
    EXPECT_EQ(Link::dwgInFields(link, in), Acad::eOk);
    EXPECT_EQ(link.id, drawing.kelmoran);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(DatabaseElementBase, TheLinkLeadsToTheStoreOfTheDrawingThatItIsReadInto) {
    registerLinkedThing();
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"link.dwg");
    {
        StoreDrawing drawing;
        auto* const thing = new LinkedThing;
        thing->setNodDatabaseId(drawing.named, L"ASDWG \U0001f3d7");
        testing_support::putObject(drawing.db.namedObjectsDictionaryId(), L"thing", thing);
        ASSERT_EQ(drawing.db.saveAs(file.c_str()), Acad::eOk);
    }
    ReportRecorder reports;
    AcDbDatabase db(false);
    ASSERT_EQ(db.readDwgFile(file.c_str()), Acad::eOk);
    LinkedThing* thing = nullptr;
    const AcDbObjectId id = testing_support::entryOf(db.namedObjectsDictionaryId(), L"thing");
    ASSERT_EQ(acdbOpenObject(thing, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(thing->getNodDatabaseId(),
              testing_support::entryAt(db.namedObjectsDictionaryId(), {L"KELMORAN", L"ASDWG"}));
    EXPECT_EQ(thing->getNodDatabaseId().database(), &db);
    EXPECT_EQ(thing->getNodDatabaseName(), L"ASDWG \U0001f3d7");
    thing->close();
    EXPECT_EQ(reports.size(), 0u);
    platform::removeFile(file);
}

TEST(DatabaseElementBase, TellsNothingAboutAnElementUnlessOverridden) {
    // What the context is, only its users know.
    alignas(8) char context[64] = "untouched";
    Link().appendElementInfo(reinterpret_cast<orv::ElementInfoContext&>(context));
    EXPECT_STREQ(context, "untouched");
}

#if defined(__GNUC__)
TEST(DatabaseElementBase, SlotsStandInTheirOrder) {
    struct Probe : DatabaseElementBase {
        void setNodDatabaseId(const AcDbObjectId&, const std::wstring&) override { called = 2; }
        AcDbObjectId getNodDatabaseId() override {
            called = 3;
            return AcDbObjectId();
        }
        const std::wstring& getNodDatabaseName() const override {
            called = 4;
            return name;
        }
        void appendElementInfo(orv::ElementInfoContext&) const override { called = 5; }
        mutable int called = 0;
        std::wstring name;
    };
    Probe probe;
    const AcDbObjectId id;
    using testing_support::slotOf;
    slotOf<void (*)(void*, const AcDbObjectId&, const std::wstring&)>(&probe, 2)(&probe, id, probe.name);
    EXPECT_EQ(probe.called, 2);
    slotOf<AcDbObjectId (*)(void*)>(&probe, 3)(&probe);
    EXPECT_EQ(probe.called, 3);
    EXPECT_EQ(&slotOf<const std::wstring& (*)(const void*)>(&probe, 4)(&probe), &probe.name);
    EXPECT_EQ(probe.called, 4);
    slotOf<void (*)(const void*, void*)>(&probe, 5)(&probe, nullptr);
    EXPECT_EQ(probe.called, 5);
}
#endif
