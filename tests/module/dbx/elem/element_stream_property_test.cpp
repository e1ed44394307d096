// Elements at random, filed and read again.

#include "embedded/memory_filer.h"
#include "module/dbx/elem/element_streams.h"
#include "module/dbx/elem/filed_values.h"

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>

using namespace testing_support;
using orv::elem::ElementBase;

namespace {

constexpr int kKinds = 4;

// Kinds of plugins whose code is missing just now.
std::set<int> s_missing;

std::string idOfKind(int kind) { return "test.random." + std::to_string(kind); }

template <int kind>
boost::shared_ptr<ElementBase::IPlugin> createKind() {
    return boost::shared_ptr<ElementBase::IPlugin>(
        s_missing.count(kind) != 0 ? nullptr : new RecordingPlugin(idOfKind(kind)));
}

void registerKinds() {
    static const bool registered = [] {
        registerTestElement();
        orv::elem::ElementPluginRegistry::registerCreator(idOfKind(0), &createKind<0>);
        orv::elem::ElementPluginRegistry::registerCreator(idOfKind(1), &createKind<1>);
        orv::elem::ElementPluginRegistry::registerCreator(idOfKind(2), &createKind<2>);
        orv::elem::ElementPluginRegistry::registerCreator(idOfKind(3), &createKind<3>);
        return true;
    }();
    RC_ASSERT(registered);
    s_missing.clear();
}

std::deque<AcDbObjectId> anyIds(const std::vector<AcDbObjectId>& ids) {
    std::deque<AcDbObjectId> some;
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i)
        some.push_back(*rc::gen::elementOf(ids));
    return some;
}

void fill(TestElement& element) {
    const std::vector<AcDbObjectId> ids = someIds();
    for (int i = *rc::gen::inRange(0, 5); i > 0; --i) {
        RecordingPlugin& plugin =
            addRecording(element, *rc::gen::arbitrary<std::string>(), idOfKind(*rc::gen::inRange(0, kKinds)));
        plugin.softIds = anyIds(ids);
        plugin.hardIds = anyIds(ids);
        plugin.setProperties() = anyProperties(ids);
        plugin.properties(AcDb::kForWrite) = anyTree(ids, 2);
    }
    element.setNodDatabaseId(*rc::gen::elementOf(ids), anyWideText() + L"x");
    element.setProperties() = anyProperties(ids);
    element.properties(AcDb::kForWrite) = anyTree(ids, 3);
    if (!*rc::gen::arbitrary<bool>())
        return;
    orv::ElementLog& log = element.assertLog();
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i) {
        std::deque<boost::any> arguments;
        for (int k = *rc::gen::inRange(0, 3); k > 0; --k)
            arguments.push_back(anyProperty(ids)->value());
        log.append(static_cast<orv::LogLevel>(*rc::gen::inRange(1, 6)), *rc::gen::arbitrary<std::uint64_t>(),
                   arguments, *rc::gen::arbitrary<unsigned int>());
    }
}

Bytes bytesOf(const TestElement& element) {
    Bytes bytes;
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
    RC_ASSERT(element.outStream(filer) == Acad::eOk);
    return bytes;
}

void readFrom(TestElement& element, const Bytes& bytes) {
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    RC_ASSERT(element.inStream(filer) == Acad::eOk);
    RC_ASSERT(filer.left() == 0u);
}

void assertSame(const RecordingPlugin& a, const RecordingPlugin& b) {
    RC_ASSERT(a.pluginId() == b.pluginId());
    RC_ASSERT(a.data == b.data);
    RC_ASSERT((a.softIds == b.softIds && a.hardIds == b.hardIds));
    RC_ASSERT(identical(a.getProperties(), b.getProperties()));
    RC_ASSERT(identical(a.properties(), b.properties()));
}

void assertSame(const orv::ElementLog& a, const orv::ElementLog& b) {
    RC_ASSERT(a.size() == b.size());
    for (auto one = a.begin(), other = b.begin(); one != a.end(); ++one, ++other) {
        RC_ASSERT((one->level == other->level && one->extra == other->extra));
        RC_ASSERT((one->msgId & 0xffffffff) == other->msgId);
        RC_ASSERT(std::equal(one->arguments.begin(), one->arguments.end(), other->arguments.begin(),
                             other->arguments.end(),
                             [](const boost::any& x, const boost::any& y) { return identical(x, y); }));
    }
}

} // namespace

RC_GTEST_PROP(ElementStreamProperty, AnElementComesBackEqualAndFilesTheSameBytesAgain, ()) {
    ReportRecorder reports;
    ConsoleRecorder console;
    registerKinds();
    TestElement element;
    fill(element);
    const Bytes bytes = bytesOf(element);
    TestElement back;
    readFrom(back, bytes);
    const auto plugins = recordingPlugins(element);
    const auto readPlugins = recordingPlugins(back);
    RC_ASSERT(readPlugins.size() == plugins.size());
    for (std::size_t i = 0; i < plugins.size(); ++i)
        assertSame(*plugins[i], *readPlugins[i]);
    RC_ASSERT(back.getNodDatabaseId() == element.getNodDatabaseId());
    RC_ASSERT(back.getNodDatabaseName() == element.getNodDatabaseName());
    RC_ASSERT(identical(back.getProperties(), element.getProperties()));
    RC_ASSERT(identical(back.properties(AcDb::kForRead), element.properties(AcDb::kForRead)));
    RC_ASSERT(back.isLogEmpty() == element.isLogEmpty());
    if (!element.isLogEmpty())
        assertSame(element.getLog(), back.getLog());
    RC_ASSERT(bytesOf(back) == bytes);
    RC_ASSERT(reports.size() == 0u);
    RC_ASSERT(console.text().empty());
}

RC_GTEST_PROP(ElementStreamProperty, WhateverCodeIsMissingNothingIsLost, ()) {
    ReportRecorder reports;
    ConsoleRecorder console;
    registerKinds();
    TestElement element;
    fill(element);
    const Bytes before = bytesOf(element);
    for (int kind = 0; kind < kKinds; ++kind)
        if (*rc::gen::arbitrary<bool>())
            s_missing.insert(kind);
    TestElement without;
    readFrom(without, before);
    const Bytes between = bytesOf(without);
    // The records of the missing ones are those of the plugins, moved behind the others.
    std::size_t missing = 0;
    for (RecordingPlugin* const plugin : recordingPlugins(element))
        if (s_missing.count(plugin->pluginId().back() - '0') != 0) {
            element.addPlugin(element.detachPlugin(plugin));
            ++missing;
        }
    RC_ASSERT(without.unknownPlugins().size() == missing);
    RC_ASSERT(between == bytesOf(element));
    // And with the code there again they are plugins.
    s_missing.clear();
    TestElement again;
    readFrom(again, between);
    RC_ASSERT(again.unknownPlugins().empty());
    const auto plugins = recordingPlugins(element);
    const auto readPlugins = recordingPlugins(again);
    RC_ASSERT(readPlugins.size() == plugins.size());
    for (std::size_t i = 0; i < plugins.size(); ++i)
        assertSame(*plugins[i], *readPlugins[i]);
    RC_ASSERT(bytesOf(again) == between);
}
