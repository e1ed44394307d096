#include "dbx/elem/element_base.h"

#include "dbx/elem/element_log.h"
#include "dbx/elem/proxy_plugin.h"
#include "module/dbx/elem/noted_element.h"
#include "module/dbx/elem/value_recording_filer.h"
#include "support/beep_recorder.h"
#include "support/report_recorder.h"
#include "support/slots.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

using namespace testing_support;
using orv::elem::ElementBase;

namespace {

struct PlainObject : AcDbObject {};

class ElementBaseTest : public testing::Test {
protected:
    // How many plugins there are, without a note.
    std::size_t pluginCount() {
        const Notes before = notes;
        const auto plugins = element.getConstPluginIterator();
        notes = before;
        return static_cast<std::size_t>(plugins.end() - plugins.begin());
    }

    Notes notes;
    PlainObject host;
    NotedElement element{host, notes};
};

} // namespace

TEST_F(ElementBaseTest, IsEmptyAtFirst) {
    EXPECT_EQ(element.activeFiler(), nullptr);
    EXPECT_TRUE(element.getNodDatabaseId().isNull());
    EXPECT_TRUE(element.getNodDatabaseName().empty());
    EXPECT_EQ(pluginCount(), 0u);
    EXPECT_TRUE(element.unknownPlugins().empty());
    EXPECT_TRUE(element.getProperties().empty());
    EXPECT_TRUE(static_cast<const ElementBase&>(element).properties().empty());
    EXPECT_TRUE(element.isLogEmpty());
    EXPECT_EQ(ElementBase::kVersion, 6);
    EXPECT_EQ(ElementBase::kMagic, 0x736456af);
}

TEST_F(ElementBaseTest, IsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible<NotedElement>::value);
    EXPECT_FALSE(std::is_copy_assignable<ElementBase>::value);
    EXPECT_TRUE((std::is_base_of<orv::doc::DatabaseElementBase, ElementBase>::value));
}

TEST_F(ElementBaseTest, TheLinkIsWrittenAndReadUnderTheHostsChecks) {
    element.setNodDatabaseId(idOf(0x2a), L"ASDWG");
    EXPECT_EQ(taken(notes), Notes{"write"});
    EXPECT_EQ(element.getNodDatabaseId(), idOf(0x2a));
    EXPECT_EQ(taken(notes), Notes{"read"});
    EXPECT_EQ(element.getNodDatabaseName(), L"ASDWG");
    EXPECT_EQ(taken(notes), Notes{"read"});
}

TEST_F(ElementBaseTest, AFailingCheckLeavesTheLinkAlone) {
    element.on["write"] = [] { throw std::runtime_error("not open"); };
    EXPECT_THROW(element.setNodDatabaseId(idOf(0x2a), L"ASDWG"), std::runtime_error);
    EXPECT_TRUE(element.getNodDatabaseId().isNull());
    EXPECT_TRUE(element.getNodDatabaseName().empty());
}

TEST_F(ElementBaseTest, APluginGoesToTheEndOfTheListAndIsAttached) {
    NotedPlugin& a = addNoted(element, notes, "a");
    EXPECT_EQ(taken(notes), (Notes{"write", "a.onDetached null", "a.onAttached"}));
    EXPECT_EQ(a.ownerAtDetached, nullptr);
    EXPECT_EQ(a.ownerAtAttached, &element);
    const boost::shared_ptr<NotedPlugin> b(new NotedPlugin(notes, "b"));
    element.addPlugin(b);
    EXPECT_EQ(taken(notes), (Notes{"write", "b.onDetached null", "b.onAttached"}));
    EXPECT_EQ(b->owner(), &element);
    const auto plugins = element.getConstPluginIterator();
    EXPECT_EQ(taken(notes), Notes{"read"});
    ASSERT_EQ(plugins.end() - plugins.begin(), 2);
    EXPECT_EQ(plugins.begin()[0].get(), &a);
    EXPECT_EQ(plugins.begin()[1].get(), b.get());
}

TEST_F(ElementBaseTest, ThePluginIsInTheListWhenItIsAttached) {
    auto* const plugin = new NotedPlugin(notes);
    std::size_t countAtDetached = 0;
    plugin->on["onDetached"] = [&] { countAtDetached = pluginCount(); };
    element.addPlugin(plugin);
    EXPECT_EQ(countAtDetached, 1u);
}

TEST_F(ElementBaseTest, ANullPluginIsReportedAndIgnored) {
    ReportRecorder recorder;
    element.addPlugin(boost::shared_ptr<ElementBase::IPlugin>());
    element.addPlugin(static_cast<ElementBase::IPlugin*>(nullptr));
    EXPECT_EQ(recorder.conditions(), (Texts{"plugin", "plugin"}));
    EXPECT_EQ(notes, (Notes{"write", "write"}));
    EXPECT_EQ(pluginCount(), 0u);
}

TEST_F(ElementBaseTest, ABarePointerBelongsToTheElementEvenIfTheCheckFails) {
    element.on["write"] = [] { throw std::runtime_error("not open"); };
    EXPECT_THROW(element.addPlugin(new NotedPlugin(notes, "a")), std::runtime_error);
    EXPECT_EQ(notes, (Notes{"write", "a.destroyed"}));
}

TEST_F(ElementBaseTest, TheEndOfTheElementRunsNoHook) {
    {
        NotedElement other(host, notes);
        addNoted(other, notes, "a");
        notes.clear();
    }
    EXPECT_EQ(notes, Notes{"a.destroyed"});
}

TEST_F(ElementBaseTest, APluginOutlivesTheElementForWhoHoldsIt) {
    const boost::shared_ptr<NotedPlugin> kept(new NotedPlugin(notes, "a"));
    {
        NotedElement other(host, notes);
        other.addPlugin(kept);
    }
    EXPECT_EQ(kept.use_count(), 1);
}

TEST_F(ElementBaseTest, DetachingNullGivesAnEmptyPointerWithoutAWriteCheck) {
    EXPECT_FALSE(element.detachPlugin(nullptr));
    EXPECT_TRUE(notes.empty());
}

TEST_F(ElementBaseTest, ADetachedPluginLeavesTheListAndKeepsItsOwner) {
    NotedPlugin& a = addNoted(element, notes, "a");
    NotedPlugin& b = addNoted(element, notes, "b");
    NotedPlugin& c = addNoted(element, notes, "c");
    notes.clear();
    const boost::shared_ptr<ElementBase::IPlugin> detached = element.detachPlugin(&b);
    EXPECT_EQ(notes, Notes{"write"});
    EXPECT_EQ(detached.get(), &b);
    EXPECT_EQ(detached.use_count(), 1);
    EXPECT_EQ(b.owner(), &element);
    const auto plugins = element.getConstPluginIterator();
    ASSERT_EQ(plugins.end() - plugins.begin(), 2);
    EXPECT_EQ(plugins.begin()[0].get(), &a);
    EXPECT_EQ(plugins.begin()[1].get(), &c);
}

TEST_F(ElementBaseTest, OfAPluginThatIsTwiceInTheListTheFirstEntryIsTaken) {
    const boost::shared_ptr<NotedPlugin> twice(new NotedPlugin(notes, "twice"));
    element.addPlugin(twice);
    NotedPlugin& between = addNoted(element, notes, "between");
    element.addPlugin(twice);
    element.detachPlugin(twice.get());
    const auto plugins = element.getConstPluginIterator();
    ASSERT_EQ(plugins.end() - plugins.begin(), 2);
    EXPECT_EQ(plugins.begin()[0].get(), &between);
    EXPECT_EQ(plugins.begin()[1].get(), twice.get());
}

TEST_F(ElementBaseTest, APluginAddedToASecondElementIsDetachedFromTheFirst) {
    NotedElement second(host, notes);
    NotedPlugin& plugin = addNoted(element, notes, "a");
    const boost::shared_ptr<ElementBase::IPlugin> detached = element.detachPlugin(&plugin);
    notes.clear();
    second.addPlugin(detached);
    EXPECT_EQ(notes, (Notes{"write", "a.onDetached", "a.onAttached"}));
    EXPECT_EQ(plugin.lastPreviousOwner, &element);
    EXPECT_EQ(plugin.ownerAtDetached, &element);
    EXPECT_EQ(plugin.ownerAtAttached, &second);
}

TEST_F(ElementBaseTest, TheFirstPluginOfAnIdIsFound) {
    addNoted(element, notes, "a", "tests.one");
    NotedPlugin& b = addNoted(element, notes, "b", "tests.two");
    addNoted(element, notes, "c", "tests.two");
    notes.clear();
    EXPECT_EQ(element.getFirstPlugin("tests.two"), &b);
    EXPECT_EQ(taken(notes), Notes{"read"});
    EXPECT_EQ(static_cast<const ElementBase&>(element).getFirstPlugin("tests.two"), &b);
    EXPECT_EQ(taken(notes), Notes{"read"});
    EXPECT_EQ(element.getFirstPlugin("tests.three"), nullptr);
    EXPECT_EQ(element.getFirstPlugin("TESTS.TWO"), nullptr);
    EXPECT_EQ(element.getFirstPlugin(""), nullptr);
}

TEST_F(ElementBaseTest, TheIteratorWalksTheListInOrder) {
    NotedPlugin& a = addNoted(element, notes, "a");
    NotedPlugin& b = addNoted(element, notes, "b");
    auto plugins = element.getConstPluginIterator();
    ASSERT_FALSE(plugins.done());
    EXPECT_EQ(plugins.get().get(), &a);
    plugins.next();
    ASSERT_FALSE(plugins.done());
    EXPECT_EQ(plugins.get().get(), &b);
    plugins.next();
    EXPECT_TRUE(plugins.done());
    plugins.start();
    EXPECT_EQ(plugins.get().get(), &a);
}

TEST_F(ElementBaseTest, PropertiesAreReadAndWrittenUnderTheHostsChecks) {
    element.setProperties().add(7, 5);
    EXPECT_EQ(taken(notes), Notes{"write"});
    EXPECT_EQ(element.getProperties().getValueNotThrow<int>(7).value_or(0), 5);
    EXPECT_EQ(taken(notes), Notes{"read"});
}

TEST_F(ElementBaseTest, TheTreeIsCheckedForWritingForThatModeAlone) {
    element.properties(AcDb::kForWrite).put_value(boost::any());
    EXPECT_EQ(taken(notes), Notes{"write"});
    element.properties(AcDb::kForRead);
    EXPECT_EQ(taken(notes), Notes{"read"});
    element.properties(AcDb::kForNotify);
    EXPECT_EQ(taken(notes), Notes{"read"});
    const ElementBase& constant = element;
    EXPECT_EQ(&constant.properties(), &element.properties(AcDb::kForRead));
    EXPECT_EQ(taken(notes), (Notes{"read", "read"}));
}

TEST_F(ElementBaseTest, TheLogIsMadeWhenItIsAskedForToWrite) {
    EXPECT_TRUE(element.isLogEmpty());
    EXPECT_EQ(taken(notes), Notes{"read"});
    orv::ElementLog& log = element.assertLog();
    EXPECT_EQ(taken(notes), Notes{"write"});
    EXPECT_TRUE(element.isLogEmpty());
    log.append(orv::kLogError, 5, 1);
    EXPECT_FALSE(element.isLogEmpty());
    notes.clear();
    EXPECT_EQ(&element.getLog(), &log);
    EXPECT_EQ(taken(notes), Notes{"read"});
    EXPECT_EQ(&element.assertLog(), &log);
    EXPECT_EQ(log.size(), 1u);
}

TEST_F(ElementBaseTest, AMissingLogIsReportedAndThrown) {
    ReportRecorder recorder;
    EXPECT_TRUE(element.isLogEmpty());
    try {
        element.getLog();
        FAIL();
    } catch (const std::runtime_error& thrown) {
        EXPECT_STREQ(thrown.what(), "element log not available");
        EXPECT_EQ(typeid(thrown), typeid(std::runtime_error));
    }
    EXPECT_EQ(recorder.conditions(), Texts{"m_log"});
    EXPECT_EQ(notes, (Notes{"read", "read"}));
}

TEST_F(ElementBaseTest, WithoutFiltersEveryGripStays) {
    EXPECT_TRUE(element.filterGrip(AcGePoint3d(1, 2, 3)));
    EXPECT_TRUE(notes.empty());
}

TEST_F(ElementBaseTest, TheFirstFilterThatRefusesEndsTheQuestion) {
    std::vector<AcGePoint3d> asked;
    element.addGripFilter([&](const AcGePoint3d& point) {
        asked.push_back(point);
        return point.x < 5;
    });
    element.addGripFilter([](const AcGePoint3d&) -> bool { throw std::runtime_error("asked"); });
    EXPECT_FALSE(element.filterGrip(AcGePoint3d(7, 0, 0)));
    EXPECT_THROW(element.filterGrip(AcGePoint3d(1, 0, 0)), std::runtime_error);
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[0].x, 7.0);
    EXPECT_TRUE(notes.empty());
}

TEST_F(ElementBaseTest, AllFiltersMustAgree) {
    std::vector<int> asked;
    for (const int number : {1, 2, 3})
        element.addGripFilter([&asked, number](const AcGePoint3d& point) {
            asked.push_back(number);
            return point.y < number;
        });
    EXPECT_TRUE(element.filterGrip(AcGePoint3d(0, 0, 0)));
    EXPECT_EQ(asked, (std::vector<int>{1, 2, 3}));
    asked.clear();
    EXPECT_FALSE(element.filterGrip(AcGePoint3d(0, 1, 0)));
    EXPECT_EQ(asked, std::vector<int>{1});
}

TEST_F(ElementBaseTest, AFilterThatAFilterAddsIsAskedBehindTheOthers) {
    std::vector<std::string> asked;
    // So many that the list does not stay where it was.
    constexpr int kAdded = 500;
    element.addGripFilter([&](const AcGePoint3d&) {
        asked.push_back("adding");
        for (int i = 0; i < kAdded; ++i)
            element.addGripFilter([&asked](const AcGePoint3d& point) {
                asked.push_back("added");
                return point.x < 5;
            });
        // What the filter itself holds is still there.
        asked.push_back("done");
        return true;
    });
    element.addGripFilter([&asked](const AcGePoint3d&) {
        asked.push_back("second");
        return true;
    });
    EXPECT_TRUE(element.filterGrip(AcGePoint3d(1, 0, 0)));
    ASSERT_EQ(asked.size(), 3u + kAdded);
    EXPECT_EQ(asked[1], "done");
    EXPECT_EQ(asked[2], "second");
    EXPECT_EQ(asked.back(), "added");
    asked.clear();
    EXPECT_FALSE(element.filterGrip(AcGePoint3d(7, 0, 0)));
    EXPECT_EQ(asked, (std::vector<std::string>{"adding", "done", "second", "added"}));
}

TEST_F(ElementBaseTest, AnEmptyFilterIsIgnored) {
    element.addGripFilter(ElementBase::GripFilter());
    EXPECT_TRUE(element.filterGrip(AcGePoint3d()));
    EXPECT_TRUE(notes.empty());
}

TEST_F(ElementBaseTest, CopyFromBaseCopiesNothing) {
    NotedElement source(host, notes);
    source.setNodDatabaseId(idOf(5), L"ASDWG");
    source.setProperties().add(1, 2);
    addNoted(source, notes, "a");
    source.assertLog();
    notes.clear();
    element.copyFromBase(&source);
    EXPECT_TRUE(notes.empty());
    EXPECT_TRUE(element.getNodDatabaseId().isNull());
    EXPECT_TRUE(element.getProperties().empty());
    EXPECT_EQ(pluginCount(), 0u);
    ReportRecorder recorder;
    element.copyFromBase(nullptr);
    EXPECT_EQ(recorder.conditions(), Texts{"source"});
}

TEST_F(ElementBaseTest, TheExtensionOfTheClassIsKeptAsAPointer) {
    EXPECT_EQ(ElementBase::getProtExt(), nullptr);
    int thing = 0;
    auto* const extension = reinterpret_cast<orv::elem::ElementBasePE*>(&thing);
    ElementBase::setProtExt(extension);
    EXPECT_EQ(ElementBase::getProtExt(), extension);
    ElementBase::setProtExt(nullptr);
    EXPECT_EQ(ElementBase::getProtExt(), nullptr);
}

TEST_F(ElementBaseTest, IsFoundThroughTheLinksInterface) {
    orv::doc::DatabaseElementBase& link = element;
    EXPECT_EQ(dynamic_cast<ElementBase*>(&link), &element);
    link.setNodDatabaseId(idOf(3), L"OTHER");
    EXPECT_EQ(element.getNodDatabaseName(), L"OTHER");
}

#if !defined(_MSC_VER)
namespace {

// Remembers the number of the operation that was called.
class NumberedElement : public ElementBase {
public:
    explicit NumberedElement(AcDbObject& host) : ElementBase(host) {}

    mutable int called = 0;

    void setNodDatabaseId(const AcDbObjectId&, const std::wstring&) override { called = 2; }
    AcDbObjectId getNodDatabaseId() override {
        called = 3;
        return AcDbObjectId();
    }
    const std::wstring& getNodDatabaseName() const override {
        called = 4;
        return m_name;
    }
    void appendElementInfo(orv::ElementInfoContext&) const override { called = 5; }
    void onPostClone() override { called = 6; }
    bool canElementBeCloned(const orv::ElementCloneContext&) const override { return call(7); }
    bool canBeTransformed() const override { return call(8); }
    void acdb_assertWriteEnabled() override { called = 9; }
    void acdb_assertReadEnabled() const override { called = 10; }
    AcRxClass* acdb_isA() const override {
        called = 11;
        return nullptr;
    }
    int acdb_isNewObject() const override {
        called = 12;
        return 0;
    }
    AcDbObjectId acdb_id() override {
        called = 13;
        return AcDbObjectId();
    }
    bool onSave(orv::serialization::IOutArchive&) const override { return call(14); }
    bool onSave(orv::KeyValueStorage&) const override { return call(15); }
    bool onLoad(orv::serialization::IInArchive&, unsigned int) override { return call(16); }
    bool onLoad(const orv::KeyValueStorage&) override { return call(17); }
    void onMoved() override { called = 18; }

private:
    bool call(int number) const {
        called = number;
        return true;
    }

    std::wstring m_name;
};

} // namespace

// The destructor, which is the first, takes two slots, so that operation n stands at n.
TEST_F(ElementBaseTest, OperationsStandInTheirSlots) {
    NumberedElement numbered(host);
    const AcDbObjectId id;
    const std::wstring name;
    using Operation = void (*)(void*, const void*, const void*);
    for (int slot = 2; slot <= 18; ++slot) {
        numbered.called = 0;
        if (slot == 3 || slot == 13)
            slotOf<AcDbObjectId (*)(void*)>(static_cast<ElementBase*>(&numbered), slot)(&numbered);
        else
            slotOf<Operation>(static_cast<ElementBase*>(&numbered), slot)(&numbered, &id, &name);
        EXPECT_EQ(numbered.called, slot);
    }
}
#endif
