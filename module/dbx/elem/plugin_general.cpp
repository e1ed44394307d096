#include "dbx/elem/plugin_general.h"

#include "base/assert.h"
#include "base/blob.h"
#include "base/key_value_storage.h"
#include "base/product_name.h"
#include "dbx/elem/bimid.h"
#include "dbx/elem/plugin_registry.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"
#include "orvcore/warn_on_new_version.h"

#include <boost/make_shared.hpp>

#include <cstring>
#include <limits>

namespace orv::elem {

namespace {

// The element's property that holds its group.
constexpr unsigned int kGroupKey = 30003;

const char* const kStoredGroup = "general/group";
const char* const kStoredName = "general/name";
const char* const kStoredNumber = "general/number";

// The versions in which the identifier was a UUID: in a block of its size, then in one of any size.
constexpr unsigned int kLastWithUuid = 2;
constexpr unsigned int kWithBlob = 3;

[[maybe_unused]] const bool s_isRegistered = [] {
    ElementPluginRegistry::registerCreator(Plugin_General::static_pluginId(), &Plugin_General::createPlugin);
    return true;
}();

} // namespace

Plugin_General_PE* Plugin_General::s_protExt = nullptr;

Plugin_General::Plugin_General() = default;
Plugin_General::~Plugin_General() = default;

const std::string& Plugin_General::static_pluginId() {
    static const std::string s_id = "orv.base.general";
    return s_id;
}

const std::string& Plugin_General::pluginId() const { return static_pluginId(); }

boost::shared_ptr<ElementBase::IPlugin> Plugin_General::createPlugin() {
    return boost::make_shared<Plugin_General>();
}

void Plugin_General::onPreWorldDraw(const AcDbEntity&, AcGiWorldDraw&) {}
void Plugin_General::onWorldDraw(AcadWorldDraw&, System&) {}

boost::optional<AcGeMatrix3d> Plugin_General::getCoordinateSystem() const { return boost::none; }

unsigned int Plugin_General::getNumber() const {
    assertReadEnabled();
    return m_number;
}

void Plugin_General::setNumber(unsigned int number) {
    ORV_ASSERT(getProtExt()).debug("This functionality is only available when the ARX is loaded!");
    if (getProtExt() != nullptr)
        getProtExt()->setNumber(*this, number);
}

void Plugin_General::onPostClone() {
    ORV_ASSERT(getProtExt()).debug("This functionality is only available when the ARX is loaded!");
    if (getProtExt() != nullptr)
        getProtExt()->onPostClone(*this);
}

void Plugin_General::onErase(bool erasing) {
    ORV_ASSERT(getProtExt()).debug("This functionality is only available when the ARX is loaded!");
    if (getProtExt() != nullptr)
        getProtExt()->onErase(*this, erasing);
}

void Plugin_General_PE::storeNumber(Plugin_General& plugin, unsigned int number) {
    plugin.assertWriteEnabled();
    plugin.m_number = number;
}

const std::wstring& Plugin_General::getName() const {
    assertReadEnabled();
    return m_name;
}

void Plugin_General::setName(const std::wstring& name) {
    assertWriteEnabled();
    m_name = name;
}

const std::string& Plugin_General::getBIMID() const {
    assertReadEnabled();
    return m_bimId;
}

void Plugin_General::setBIMID(const std::string& id) {
    assertWriteEnabled();
    m_bimId = id;
}

void Plugin_General::createBIMID() {
    assertWriteEnabled();
    m_bimId.clear();
    m_bimId = bimid::generate();
}

const AcGeVector3d& Plugin_General::getTextAttachmentOffset() const {
    assertReadEnabled();
    return m_textAttachmentOffset;
}

void Plugin_General::setTextAttachmentOffset(const AcGeVector3d& offset) {
    assertWriteEnabled();
    m_textAttachmentOffset = offset;
}

bool Plugin_General::onSave(serialization::IOutArchive& archive) const {
    archive << kVersion << m_name << m_number << m_bimId;
    archive << m_textAttachmentOffset.x << m_textAttachmentOffset.y << m_textAttachmentOffset.z;
    archive << kMagic;
    return true;
}

bool Plugin_General::onLoad(serialization::IInArchive& archive, unsigned int) {
    archive >> m_lastLoadVersion;
    const unsigned int version = m_lastLoadVersion;
    ORV_ASSERT(version <= kVersion)(version)(kVersion);
    orv_warnOnNewVersion(version, kVersion, productName());
    if (version > kVersion)
        return false;
    archive >> m_name >> m_number;
    m_bimId.clear();
    readIdentifier(archive);
    archive >> m_textAttachmentOffset.x >> m_textAttachmentOffset.y >> m_textAttachmentOffset.z;
    unsigned int magic = 0;
    archive >> magic;
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("filing error");
    return magic == kMagic;
}

void Plugin_General::readIdentifier(serialization::IInArchive& archive) {
    if (m_lastLoadVersion <= kLastWithUuid) {
        GUID guid = {};
        BlobRef bytes(&guid, sizeof guid);
        archive >> bytes;
        bimid::assign(m_bimId, guid);
    } else if (m_lastLoadVersion == kWithBlob) {
        readIdentifierOfAnyLength(archive);
    } else {
        archive >> m_bimId;
    }
}

void Plugin_General::readIdentifierOfAnyLength(serialization::IInArchive& archive) {
    Blob oldid;
    archive >> oldid;
    if (oldid.size() == 0)
        return;
    ORV_ASSERT(oldid.size() == sizeof(GUID))
        .debug("Cannot not convert from previous GUID format - creating new GUID.");
    if (oldid.size() != sizeof(GUID)) {
        createBIMID(); // a new identity rather than none
        return;
    }
    GUID guid = {};
    std::memcpy(&guid, oldid.data(), sizeof guid);
    bimid::assign(m_bimId, guid);
}

bool Plugin_General::onSave(KeyValueStorage& storage) const {
    ORV_ASSERT(owner());
    if (owner() == nullptr)
        return false;
    const ElementBase& element = *owner();
    if (const auto group = element.getProperties().getValueNotThrow<unsigned int>(kGroupKey))
        storage.set(kStoredGroup, static_cast<int>(*group));
    storage.set(kStoredName, m_name);
    storage.set(kStoredNumber, static_cast<int>(m_number));
    return true;
}

bool Plugin_General::onLoad(const KeyValueStorage& storage) {
    ORV_ASSERT(owner());
    if (owner() == nullptr)
        return false;
    // Exactly an `unsigned int`, as the text form of a storage makes it; onSave puts an `int`.
    const auto group = storage.getValue<unsigned int>(kStoredGroup, std::numeric_limits<unsigned int>::max());
    AcadObjectProperties& properties = owner()->setProperties();
    if (const boost::shared_ptr<property_base> property = properties.get(kGroupKey)) {
        const bool isSet = property->setValue(group);
        ORV_ASSERT(isSet).debug("the group is of another type");
    } else {
        properties.add(kGroupKey, group);
    }
    m_number = static_cast<unsigned int>(storage.getValue<int>(kStoredNumber, 0));
    m_name = storage.getValue<std::wstring>(kStoredName, std::wstring());
    return true;
}

} // namespace orv::elem
