#include "dbx/elem/element_writer.h"

#include "base/assert.h"
#include "base/blob.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "dbx/binary_out_archive.h"
#include "dbx/elem/element_log_filing.h"
#include "dbx/elem/plugin.h"
#include "dbx/elem/proxy_plugin.h"
#include "property_tree/arx/property_tree_filer.h"

#include "AcString.h"
#include "dbfiler.h"

namespace orv::elem {

// What is filed of a plugin, living or not.
struct ElementWriter::Record {
    const std::string& id;
    const unsigned char* data;
    std::uint64_t size;
    const std::deque<AcDbObjectId>& softIds;
    const std::deque<AcDbObjectId>& hardIds;
};

void ElementWriter::write() {
    ORV_ASSERT_STATUS(m_filer.writeInt32(ElementBase::kVersion));
    writePlugins();
    // The id is asked for by an operation that is not const.
    auto& link = const_cast<ElementBase&>(m_element);
    ORV_ASSERT_STATUS(m_filer.writeHardPointerId(link.getNodDatabaseId()));
    ORV_ASSERT_STATUS(m_filer.writeString(AcString(m_element.getNodDatabaseName().c_str())));
    writeOwnData();
    ORV_ASSERT_STATUS(dwgOutProperties(m_filer, m_element.getProperties()));
    ORV_ASSERT_STATUS(property_tree::dwgOut(m_filer, m_element.properties()));
    writeLog();
    ORV_ASSERT_STATUS(m_filer.writeInt32(ElementBase::kMagic));
}

void ElementWriter::writePlugins() {
    const auto& plugins = m_element.m_plugins;
    const auto& unknownPlugins = m_element.m_unknownPlugins;
    ORV_ASSERT_STATUS(
        m_filer.writeUInt32(static_cast<Adesk::UInt32>(plugins.size() + unknownPlugins.size())));
    for (const auto& plugin : plugins) {
        ORV_ASSERT(plugin);
        if (plugin)
            writePlugin(*plugin);
    }
    for (auto itPlugin = unknownPlugins.begin(); itPlugin != unknownPlugins.end(); ++itPlugin) {
        ORV_ASSERT(itPlugin->second);
        if (!itPlugin->second)
            continue;
        const ElementBase::ProxyPlugin& plugin = *itPlugin->second;
        ORV_ASSERT(plugin.m_data);
        if (plugin.m_data)
            writeUnknownPlugin(itPlugin->first, plugin);
    }
}

void ElementWriter::writePlugin(const ElementBase::IPlugin& plugin) {
    serialization::BinaryOutArchive archive;
    // One plugin that cannot save itself does not keep the element from being saved.
    plugin.save(archive);
    writeRecord({plugin.pluginId(), archive.data(), archive.offset(), archive.softPointers(),
                 archive.hardPointers()});
    ORV_ASSERT_STATUS(dwgOutProperties(m_filer, plugin.getProperties()));
    ORV_ASSERT_STATUS(property_tree::dwgOut(m_filer, plugin.properties()));
}

void ElementWriter::writeUnknownPlugin(const std::string& id, const ElementBase::ProxyPlugin& plugin) {
    writeRecord({id, plugin.m_data->data(), plugin.m_data->size(), plugin.m_softIds, plugin.m_hardIds});
    ORV_ASSERT_STATUS(dwgOutProperties(m_filer, plugin.m_properties));
    ORV_ASSERT_STATUS(property_tree::dwgOut(m_filer, plugin.m_tree));
}

template <class WriteId>
void ElementWriter::writeIds(const std::deque<AcDbObjectId>& ids, WriteId writeId) {
    ORV_ASSERT_STATUS(m_filer.writeUInt32(static_cast<Adesk::UInt32>(ids.size())));
    for (const AcDbObjectId& id : ids)
        ORV_ASSERT_STATUS(writeId(id));
}

void ElementWriter::writeRecord(const Record& record) {
    const AcString pluginId(record.id.c_str());
    ORV_ASSERT(pluginId.isAscii() && !pluginId.isEmpty());
    ORV_ASSERT(pluginId.kszPtr());
    ORV_ASSERT_STATUS(m_filer.writeString(pluginId));
    const std::uint64_t pluginDataSize = record.size;
    // clang-format off
    ORV_ASSERT(pluginDataSize <= (1024*10)).debug("Sanity check. Maximum of 10K data per plugin!");
    // clang-format on
    writeBlock(record.data, record.size);
    writeIds(record.softIds, [this](const AcDbObjectId& id) { return m_filer.writeSoftPointerId(id); });
    writeIds(record.hardIds, [this](const AcDbObjectId& id) { return m_filer.writeHardPointerId(id); });
}

void ElementWriter::writeBlock(const unsigned char* data, std::uint64_t size) {
    ORV_ASSERT_STATUS(m_filer.writeUInt32(static_cast<Adesk::UInt32>(size)));
    if (size != 0)
        ORV_ASSERT_STATUS(m_filer.writeBytes(data, static_cast<Adesk::UIntPtr>(size)));
}

void ElementWriter::writeOwnData() {
    serialization::BinaryOutArchive archive;
    m_element.save(archive);
    writeBlock(archive.data(), archive.offset());
}

void ElementWriter::writeLog() {
    const boost::shared_ptr<ElementLog>& log = m_element.m_log;
    ORV_ASSERT_STATUS(m_filer.writeBool(log.get() != nullptr));
    if (!log)
        return;
    const Acad::ErrorStatus es = dwgOutLog(m_filer, *log); // reports its failure itself
    if (es != Acad::eOk)
        throw es;
}

} // namespace orv::elem
