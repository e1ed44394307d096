#include "dbx/elem/plugin_connected_elements.h"

#include "arx/types.h"
#include "base/assert.h"
#include "base/product_name.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/plugin_registry.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"
#include "orvcore/transaction_manager.h"
#include "orvcore/warn_on_new_version.h"

#include "dbfiler.h"
#include "dbmain.h"

#include <boost/make_shared.hpp>

namespace orv::elem {

namespace {

// The one version of the data without a behaviour, and what such data stand
// for.
constexpr unsigned int kWithoutBehaviour = 1;
constexpr unsigned int kFirstBehaviour =
    Plugin_ConnectedElements::kEraseConnected | Plugin_ConnectedElements::kRefreshOnTransform;

// The first versions that have these.
constexpr unsigned int kHasIds = 3;
constexpr unsigned int kHasOwnership = 4;

[[maybe_unused]] const bool s_isRegistered = [] {
    ElementPluginRegistry::registerCreator(Plugin_ConnectedElements::static_pluginId(),
                                           &Plugin_ConnectedElements::createPlugin);
    return true;
}();

// Open for write until the transaction ends; null for what cannot be had, is no
// object of a known class, or is not there any more.
AcDbObject* openConnected(ORV_CDBTransactionManager& transaction, const AcDbObjectId& id) {
    if (id.isNull() || id.isErased())
        return nullptr;
    AcDbObject* object = nullptr;
    const Acad::ErrorStatus es = transaction.getObject(object, id, AcDb::kForWrite, false, true);
    if (es == status::kGoneForGood || object == nullptr || object->isAProxy())
        return nullptr;
    return object;
}

GenericLoad* firstLoad(const AcDbEntity& entity) {
    const auto* const element = dynamic_cast<const ElementBase*>(&entity);
    if (element == nullptr)
        return nullptr;
    const auto walk = element->getConstPluginIterator();
    for (const auto& plugin : walk)
        if (auto* const load = dynamic_cast<GenericLoad*>(plugin.get()))
            return load;
    return nullptr;
}

// What a connected entity needs so that it shows the element as it is now.
// False for a load that acts on another element: this one gets nothing, and the
// walk is over.
bool requestDrawing(AcDbEntity& entity, const AcDbObjectId& owner) {
    if (GenericLoad* const load = firstLoad(entity)) {
        if (load->getElement() != owner)
            return false;
        load->requestRefreshGraphics();
    }
    entity.recordGraphicsModified(true);
    return true;
}

struct ClearingAtEnd {
    Plugin_ConnectedElements::Ids& ids;
    ~ClearingAtEnd() { ids.clear(); }
};

AcDbDatabase* databaseOf(ElementBase& element) { return element.acdb_id().database(); }

} // namespace

Plugin_ConnectedElements::Plugin_ConnectedElements(Ownership ownership) : m_ownership(ownership) {}
Plugin_ConnectedElements::~Plugin_ConnectedElements() = default;

const std::string& Plugin_ConnectedElements::static_pluginId() {
    static const std::string s_id = "orv.se.connectedelements.1";
    return s_id;
}

const std::string& Plugin_ConnectedElements::pluginId() const { return static_pluginId(); }

boost::shared_ptr<ElementBase::IPlugin> Plugin_ConnectedElements::createPlugin() {
    return boost::make_shared<Plugin_ConnectedElements>();
}

void Plugin_ConnectedElements::onConnectedElementAdded(const AcDbObjectId&) {}
void Plugin_ConnectedElements::onConnectedElementRemoved(const AcDbObjectId&) {}
void Plugin_ConnectedElements::onOwnerChanged(ElementBase&, unsigned int) {}

Ownership Plugin_ConnectedElements::ownership() {
    assertReadEnabled();
    return m_ownership;
}

void Plugin_ConnectedElements::setBehaviour(unsigned int behaviour) {
    assertWriteEnabled();
    m_behaviour = behaviour;
}

std::uint64_t Plugin_ConnectedElements::size() const {
    assertReadEnabled();
    return m_ids.size();
}

Plugin_ConnectedElements::const_iterator Plugin_ConnectedElements::begin() const {
    assertReadEnabled();
    return m_ids.begin();
}

Plugin_ConnectedElements::const_iterator Plugin_ConnectedElements::end() const {
    assertReadEnabled();
    return m_ids.end();
}

AcDbObjectId Plugin_ConnectedElements::add(const AcDbObjectId& id) {
    assertWriteEnabled();
    // A copy: the id may be the caller's view into the set, which a hook may
    // change.
    const AcDbObjectId added = id;
    m_ids.insert(added);
    onConnectedElementAdded(added);
    return added;
}

void Plugin_ConnectedElements::remove(const AcDbObjectId& id) {
    assertWriteEnabled();
    const AcDbObjectId removed = id;
    m_ids.erase(removed);
    onConnectedElementRemoved(removed);
}

void Plugin_ConnectedElements::removeAll() {
    assertWriteEnabled();
    const Ids removed = m_ids;
    m_ids.clear();
    for (const AcDbObjectId& id : removed)
        onConnectedElementRemoved(id);
}

bool Plugin_ConnectedElements::contains(const AcDbObjectId& id) const {
    assertReadEnabled();
    return m_ids.count(id) != 0;
}

AcDbObjectId Plugin_ConnectedElements::getReference(const AcDbObjectId& id) const {
    const auto place = m_ids.find(id);
    return place != m_ids.end() ? *place : AcDbObjectId();
}

void Plugin_ConnectedElements::recordGraphicsModifiedForAll() {
    if (owner() == nullptr)
        return;
    const AcDbObjectId own = owner()->acdb_id();
    ORV_CDBTransactionManager transaction(own.database(), false);
    const Ids ids = m_ids;
    for (const AcDbObjectId& id : ids) {
        AcDbEntity* const entity = AcDbEntity::cast(openConnected(transaction, id));
        if (entity != nullptr && !requestDrawing(*entity, own))
            return;
    }
}

void Plugin_ConnectedElements::assertWriteEnabledForAll() {
    if (owner() == nullptr)
        return;
    ORV_CDBTransactionManager transaction(databaseOf(*owner()), false);
    const Ids ids = m_ids;
    for (const AcDbObjectId& id : ids)
        if (AcDbObject* const object = openConnected(transaction, id))
            object->assertWriteEnabled();
}

void Plugin_ConnectedElements::onPreTransform(AcGeMatrix3d&) {
    if ((m_behaviour & kRefreshOnTransform) != 0)
        recordGraphicsModifiedForAll();
}

void Plugin_ConnectedElements::onErase(bool erasing) {
    ORV_ASSERT(owner());
    if (!erasing)
        return;
    const ClearingAtEnd clearing{m_ids}; // also when an object that goes throws
    if (owner() != nullptr && !ORV_CDBTransactionManager::getUndoRedoActive() &&
        (m_behaviour & kEraseConnected) != 0)
        eraseAll();
}

void Plugin_ConnectedElements::eraseAll() {
    ORV_CDBTransactionManager transaction(databaseOf(*owner()), false);
    // A copy: an object that goes may take itself out of the set.
    const Ids ids = m_ids;
    for (const AcDbObjectId& id : ids)
        if (AcDbEntity* const ent = AcDbEntity::cast(openConnected(transaction, id)))
            checkErrorStatus(ent->erase(true), Acad::eOk, "ent->erase()", __FILE__, __LINE__);
}

void Plugin_ConnectedElements::triggerOwnerChanged(ElementBase& element, unsigned int flags) {
    element.acdb_assertWriteEnabled();
    const auto walk = element.getConstPluginIterator();
    // A copy: a hook may take plugins in or out.
    const ElementBase::Plugins plugins(walk.begin(), walk.end());
    for (const auto& plugin : plugins)
        if (auto* const connected = dynamic_cast<Plugin_ConnectedElements*>(plugin.get()))
            connected->onOwnerChanged(element, flags);
}

bool Plugin_ConnectedElements::onSave(serialization::IOutArchive& archive) const {
    archive << kVersion << m_behaviour << static_cast<unsigned int>(m_ownership);
    archive << static_cast<unsigned int>(m_ids.size());
    for (const AcDbObjectId& id : m_ids)
        m_ownership == kHardPointer ? archive.hardPointer(id) : archive.softPointer(id);
    archive << kMagic;
    return true;
}

bool Plugin_ConnectedElements::onLoad(serialization::IInArchive& archive, unsigned int) {
    unsigned int version = 0;
    archive >> version;
    ORV_ASSERT(version <= kVersion)(version)(kVersion).debug("version mismatch");
    orv_warnOnNewVersion(version, kVersion, productName());
    if (version == kWithoutBehaviour)
        m_behaviour = kFirstBehaviour;
    else
        archive >> m_behaviour;
    unsigned int tmpOwnership = kHardPointer;
    if (version >= kHasOwnership)
        archive >> tmpOwnership;
    ORV_ASSERT(m_ownership == tmpOwnership)
    (m_ownership)(tmpOwnership).debug("ownership type mismatch - intentional change?");
    m_ownership = static_cast<Ownership>(tmpOwnership);
    if (version >= kHasIds)
        readIds(archive);
    unsigned int magic = 0;
    archive >> magic;
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("filing error");
    return magic == kMagic;
}

void Plugin_ConnectedElements::readIds(serialization::IInArchive& archive) {
    m_ids.clear();
    unsigned int count = 0;
    archive >> count;
    for (unsigned int i = 0; i < count; ++i) {
        AcDbObjectId id;
        m_ownership == kHardPointer ? archive.hardPointer(id) : archive.softPointer(id);
        m_ids.insert(id);
    }
}

Acad::ErrorStatus Plugin_ConnectedElements::_read(AcDbDwgFiler* pFiler) {
    ORV_ASSERT(pFiler);
    if (pFiler == nullptr)
        return Acad::eInvalidInput;
    m_ids.clear();
    Adesk::UInt32 count = 0;
    Acad::ErrorStatus es = pFiler->readUInt32(&count);
    for (Adesk::UInt32 i = 0; es == Acad::eOk && i < count; ++i) {
        AcDbHardPointerId id;
        es = pFiler->readHardPointerId(&id);
        if (es == Acad::eOk && !id.isNull())
            m_ids.insert(id);
    }
    return es;
}

} // namespace orv::elem
