#include "dbx/elem/element_reader.h"

#include "arx/types.h"
#include "base/assert.h"
#include "base/blob.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/product_name.h"
#include "dbx/binary_in_archive.h"
#include "dbx/elem/element_log.h"
#include "dbx/elem/element_log_filing.h"
#include "dbx/elem/plugin.h"
#include "dbx/elem/plugin_registry.h"
#include "dbx/elem/proxy_plugin.h"
#include "orvcore/warn_on_new_version.h"
#include "property_tree/arx/property_tree_filer.h"

#include "AcString.h"
#include "acutads.h"
#include "dbfiler.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace orv::elem {

namespace {

// The first stream versions that have these.
constexpr unsigned int kHasOwnData = 3;
constexpr unsigned int kHasIdLists = 4;
constexpr unsigned int kHasTrees = 6;
// The only one with a flag behind the plugins.
constexpr unsigned int kHasOldFlag = 1;

// For what has reported its failure itself.
void passOn(Acad::ErrorStatus es) {
    if (es != Acad::eOk)
        throw es;
}

} // namespace

// What a stream holds of a plugin ahead of its properties. The ids go straight into the lists of the archive
// that the plugin will read from.
struct ElementReader::Record {
    Record(AcString id, const boost::shared_ptr<Blob>& block)
        : pluginId(std::move(id)), data(block), archive(block->data(), block->size()) {}

    AcString pluginId;
    boost::shared_ptr<Blob> data;
    serialization::BinaryInArchive archive;
};

void ElementReader::read() {
    readVersion();
    m_element.m_plugins.clear();
    m_element.m_unknownPlugins.clear();
    readPlugins();
    if (m_version == kHasOldFlag) {
        bool dropped = false;
        ORV_ASSERT_STATUS(m_filer.readBool(&dropped));
    }
    readLink();
    if (m_version >= kHasOwnData)
        readOwnData();
    ORV_ASSERT_STATUS(dwgInProperties(m_filer, m_element.setProperties()));
    if (m_version >= kHasTrees)
        ORV_ASSERT_STATUS(property_tree::dwgIn(m_filer, m_element.properties(AcDb::kForWrite)));
    readLog();
    readMagic();
}

void ElementReader::readVersion() {
    Adesk::Int32 version = 0;
    ORV_ASSERT_STATUS(m_filer.readInt32(&version));
    m_version = static_cast<unsigned int>(version);
    if (m_version > static_cast<unsigned int>(ElementBase::kVersion))
        throw status::kMakeProxy;
    orv_warnOnNewVersion(version, ElementBase::kVersion, productName());
}

void ElementReader::readPlugins() {
    Adesk::UInt32 count = 0;
    ORV_ASSERT_STATUS(m_filer.readUInt32(&count));
    const std::int64_t numPlugins = count;
    ORV_ASSERT((numPlugins >= 0) && (numPlugins < 1000))
    (numPlugins).debug("Sanity check. We don't expect more than 1000 plugins.");
    for (Adesk::UInt32 i = 0; i < count; ++i)
        readPlugin();
}

void ElementReader::readPlugin() {
    AcString pluginId;
    ORV_ASSERT_STATUS(m_filer.readString(pluginId));
    ORV_ASSERT(pluginId.isAscii() && !pluginId.isEmpty());
    ORV_ASSERT(pluginId.kszPtr());
    Adesk::UInt32 pluginDataSize = 0;
    ORV_ASSERT_STATUS(m_filer.readUInt32(&pluginDataSize));
    // clang-format off
    ORV_ASSERT(pluginDataSize <= (1024*10)).debug("Sanity check. Maximum of 10K data per plugin!");
    // clang-format on
    Record record(std::move(pluginId), readBlock(pluginDataSize));
    if (m_version >= kHasIdLists) {
        readSoftIds(record.archive);
        readHardIds(record.archive);
    }
    if (const boost::shared_ptr<ElementBase::IPlugin> plugin = createPlugin(record))
        readLivingPlugin(plugin, record);
    else
        keepUnknownPlugin(record);
}

void ElementReader::readSoftIds(serialization::BinaryInArchive& archive) {
    Adesk::UInt32 count = 0;
    ORV_ASSERT_STATUS(m_filer.readUInt32(&count));
    for (Adesk::UInt32 i = 0; i < count; ++i) {
        AcDbSoftPointerId id;
        ORV_ASSERT_STATUS(m_filer.readSoftPointerId(&id));
        archive.softPointers().push_back(id);
    }
}

void ElementReader::readHardIds(serialization::BinaryInArchive& archive) {
    Adesk::UInt32 count = 0;
    ORV_ASSERT_STATUS(m_filer.readUInt32(&count));
    for (Adesk::UInt32 i = 0; i < count; ++i) {
        AcDbHardPointerId id;
        ORV_ASSERT_STATUS(m_filer.readHardPointerId(&id));
        archive.hardPointers().push_back(id);
    }
}

boost::shared_ptr<ElementBase::IPlugin> ElementReader::createPlugin(const Record& record) const {
    const char* const id = record.pluginId.kszPtr();
    if (id == nullptr) {
        acutPrintf(L"Warning: Cannot handle 0 type!\n");
        return {};
    }
    boost::shared_ptr<ElementBase::IPlugin> plugin = ElementPluginRegistry::create(id);
    if (!plugin)
        acutPrintf(L"Warning: Plugin type not registered: %s!\n", record.pluginId.kACharPtr());
    return plugin;
}

void ElementReader::readLivingPlugin(const boost::shared_ptr<ElementBase::IPlugin>& plugin, Record& record) {
    plugin->setOwner(&m_element);
    if (!plugin->load(record.archive, m_version)) {
        acutPrintf(L"Warning: Failed to de-serialize plugin: %s!\n", record.pluginId.kACharPtr());
        throw status::kMakeProxy;
    }
    ORV_ASSERT_STATUS(dwgInProperties(m_filer, plugin->setProperties()));
    if (m_version >= kHasTrees)
        ORV_ASSERT_STATUS(property_tree::dwgIn(m_filer, plugin->properties(AcDb::kForWrite)));
    m_element.m_plugins.push_back(plugin);
}

void ElementReader::keepUnknownPlugin(Record& record) {
    auto plugin = boost::make_shared<ElementBase::ProxyPlugin>();
    plugin->m_data = record.data;
    plugin->m_softIds.swap(record.archive.softPointers());
    plugin->m_hardIds.swap(record.archive.hardPointers());
    ORV_ASSERT_STATUS(dwgInProperties(m_filer, plugin->m_properties));
    if (m_version >= kHasTrees)
        ORV_ASSERT_STATUS(property_tree::dwgIn(m_filer, plugin->m_tree));
    // Not what kszPtr gives, which is the system's code page: the writer takes the id for UTF-8.
    m_element.m_unknownPlugins.emplace_back(record.pluginId.utf8(), plugin);
}

void ElementReader::readLink() {
    AcDbHardPointerId id;
    ORV_ASSERT_STATUS(m_filer.readHardPointerId(&id));
    AcString name;
    ORV_ASSERT_STATUS(m_filer.readString(name));
    ORV_ASSERT(!id.isNull() || !name.isEmpty()).warning("filer: SE object does not belong to a database");
    m_element.setNodDatabaseId(id, name.kACharPtr());
}

void ElementReader::readOwnData() {
    Adesk::UInt32 dataSize = 0;
    ORV_ASSERT_STATUS(m_filer.readUInt32(&dataSize));
    // clang-format off
    ORV_ASSERT(dataSize <= (1024*10)).debug("Sanity check. Maximum of 10K data per element base!");
    // clang-format on
    const boost::shared_ptr<Blob> data = readBlock(dataSize);
    serialization::BinaryInArchive archive(data->data(), data->size());
    if (!m_element.load(archive, m_version)) {
        acutPrintf(L"Warning: Failed to de-serialize self!\n");
        throw status::kMakeProxy;
    }
}

void ElementReader::readLog() {
    m_element.m_log.reset();
    bool hasLog = false;
    ORV_ASSERT_STATUS(m_filer.readBool(&hasLog));
    if (!hasLog)
        return;
    m_element.m_log = boost::make_shared<ElementLog>();
    passOn(dwgInLog(m_filer, *m_element.m_log));
}

void ElementReader::readMagic() {
    constexpr Adesk::Int32 kMagic = ElementBase::kMagic;
    Adesk::Int32 magic = 0;
    ORV_ASSERT_STATUS(m_filer.readInt32(&magic));
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("Filing error. Possible reason: data corruption.");
    if (magic != kMagic)
        throw status::kMakeProxy;
}

boost::shared_ptr<Blob> ElementReader::readBlock(unsigned int size) {
    auto block = boost::make_shared<Blob>();
    passOn(block->dwgInBytes(&m_filer, size));
    return block;
}

} // namespace orv::elem
