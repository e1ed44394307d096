#include "dbx/elem/element_base.h"

#include "base/assert.h"
#include "base/guard.h"
#include "base/key_value_storage.h"
#include "dbx/elem/element_log.h"
#include "dbx/elem/element_reader.h"
#include "dbx/elem/element_writer.h"
#include "dbx/elem/plugin_round.h"
#include "dbx/elem/proxy_plugin.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <stdexcept>

namespace orv::elem {

ElementBasePE* ElementBase::s_protExt = nullptr;

ElementBase::ElementBase(AcDbObject& host) : m_host(&host) {}

ElementBase::~ElementBase() = default;

void ElementBase::setNodDatabaseId(const AcDbObjectId& id, const std::wstring& name) {
    acdb_assertWriteEnabled();
    m_nodDatabaseId = id;
    m_nodDatabaseName = name;
}

AcDbObjectId ElementBase::getNodDatabaseId() {
    acdb_assertReadEnabled();
    return m_nodDatabaseId;
}

const std::wstring& ElementBase::getNodDatabaseName() const {
    acdb_assertReadEnabled();
    return m_nodDatabaseName;
}

void ElementBase::onPostClone() {}

bool ElementBase::onSave(serialization::IOutArchive&) const { return true; }
bool ElementBase::onSave(KeyValueStorage&) const { return true; }
bool ElementBase::onLoad(serialization::IInArchive&, unsigned int) { return true; }
bool ElementBase::onLoad(const KeyValueStorage&) { return true; }

void ElementBase::onMoved() {}

void ElementBase::addPlugin(boost::shared_ptr<IPlugin> plugin) {
    acdb_assertWriteEnabled();
    ORV_ASSERT(plugin);
    if (!plugin)
        return;
    m_plugins.push_back(plugin);
    plugin->setOwner(this);
}

void ElementBase::addPlugin(IPlugin* plugin) { addPlugin(boost::shared_ptr<IPlugin>(plugin)); }

boost::shared_ptr<ElementBase::IPlugin> ElementBase::detachPlugin(IPlugin* plugin) {
    if (plugin == nullptr)
        return {};
    acdb_assertWriteEnabled();
    const auto place = std::find_if(m_plugins.begin(), m_plugins.end(),
                                    [plugin](const auto& held) { return held.get() == plugin; });
    if (place == m_plugins.end())
        return {};
    boost::shared_ptr<IPlugin> detached = *place;
    m_plugins.erase(place);
    return detached;
}

const ElementBase::IPlugin* ElementBase::getFirstPlugin(const std::string& id) const {
    acdb_assertReadEnabled();
    const auto place = std::find_if(m_plugins.begin(), m_plugins.end(),
                                    [&id](const auto& plugin) { return plugin->pluginId() == id; });
    return place != m_plugins.end() ? place->get() : nullptr;
}

ElementBase::IPlugin* ElementBase::getFirstPlugin(const std::string& id) {
    return const_cast<IPlugin*>(static_cast<const ElementBase&>(*this).getFirstPlugin(id));
}

ConstVectorIterator<ElementBase::Plugins> ElementBase::getConstPluginIterator() const {
    acdb_assertReadEnabled();
    return ConstVectorIterator<Plugins>(m_plugins);
}

const ElementBase::UnknownPlugins& ElementBase::unknownPlugins() const {
    acdb_assertReadEnabled();
    return m_unknownPlugins;
}

const AcadObjectProperties& ElementBase::getProperties() const {
    acdb_assertReadEnabled();
    return m_properties;
}

AcadObjectProperties& ElementBase::setProperties() {
    acdb_assertWriteEnabled();
    return m_properties;
}

const PropertyTree& ElementBase::properties() const {
    acdb_assertReadEnabled();
    return m_tree;
}

PropertyTree& ElementBase::properties(AcDb::OpenMode mode) {
    if (mode == AcDb::kForWrite)
        acdb_assertWriteEnabled();
    else
        acdb_assertReadEnabled();
    return m_tree;
}

const ElementLog& ElementBase::getLog() const {
    acdb_assertReadEnabled();
    ORV_ASSERT(m_log);
    if (!m_log)
        throw std::runtime_error("element log not available");
    return *m_log;
}

ElementLog& ElementBase::assertLog() {
    acdb_assertWriteEnabled();
    if (!m_log)
        m_log = boost::make_shared<ElementLog>();
    return *m_log;
}

bool ElementBase::isLogEmpty() const {
    acdb_assertReadEnabled();
    return !m_log || m_log->empty();
}

void ElementBase::addGripFilter(const GripFilter& filter) {
    if (filter)
        m_gripFilters.push_back(filter);
}

bool ElementBase::filterGrip(const AcGePoint3d& point) const {
    // By index and with a copy: a filter may add one.
    for (std::size_t i = 0; i < m_gripFilters.size(); ++i) {
        const GripFilter filter = m_gripFilters[i];
        if (!filter(point))
            return false;
    }
    return true;
}

void ElementBase::copyFromBase(const ElementBase* source) { ORV_ASSERT(source); }

bool ElementBase::save(KeyValueStorage& storage) const {
    try {
        acdb_assertReadEnabled();
        onSave(storage);
        forEachPlugin([&storage](IPlugin& plugin) { plugin.save(storage); });
        return true;
    }
    ORV_GUARD
    return false;
}

bool ElementBase::load(const KeyValueStorage& storage) {
    try {
        acdb_assertWriteEnabled();
        onLoad(storage);
        forEachPlugin([&storage](IPlugin& plugin) { plugin.load(storage); });
        return true;
    }
    ORV_GUARD
    return false;
}

bool ElementBase::save(serialization::IOutArchive& archive) const { return onSave(archive); }

bool ElementBase::load(serialization::IInArchive& archive, unsigned int version) {
    return onLoad(archive, version);
}

Acad::ErrorStatus ElementBase::dwgOutFields(AcDbDwgFiler& filer) const {
    m_activeFiler = &filer;
    try {
        ElementWriter(*this, filer).write();
    } catch (Acad::ErrorStatus failed) {
        return failed;
    }
    m_activeFiler = nullptr;
    return Acad::eOk;
}

Acad::ErrorStatus ElementBase::dwgInFields(AcDbDwgFiler& filer) {
    m_activeFiler = &filer;
    try {
        ElementReader(*this, filer).read();
    } catch (Acad::ErrorStatus failed) {
        return failed;
    }
    m_activeFiler = nullptr;
    return Acad::eOk;
}

} // namespace orv::elem
