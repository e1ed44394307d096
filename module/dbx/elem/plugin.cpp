#include "dbx/elem/plugin.h"

#include "base/assert.h"
#include "base/key_value_storage.h"
#include "base/product_name.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"
#include "orvcore/warn_on_new_version.h"

namespace orv::elem {

ElementBase::IPlugin::IPlugin() = default;
ElementBase::IPlugin::~IPlugin() = default;

void ElementBase::IPlugin::onDetached(ElementBase*) {}
void ElementBase::IPlugin::onAttached() {}
void ElementBase::IPlugin::onPreMoveGrips(AcGeVector3d&) {}
void ElementBase::IPlugin::onGetGrips(GripManager::ScopedCreator&) const {}
void ElementBase::IPlugin::onPreTransform(AcGeMatrix3d&) {}
void ElementBase::IPlugin::onPostTransform(const AcGeMatrix3d&) {}
void ElementBase::IPlugin::onPreWorldDraw(const AcDbEntity&, AcGiWorldDraw&) {}
void ElementBase::IPlugin::onWorldDraw(AcadWorldDraw&, System&) {}
void ElementBase::IPlugin::onPreViewportDraw(const AcDbEntity&, AcGiViewportDraw&) {}
void ElementBase::IPlugin::onViewportDraw(AcadViewportDraw&, System&) {}
void ElementBase::IPlugin::onErase(bool) {}
void ElementBase::IPlugin::onPostClone() {}
void ElementBase::IPlugin::onAppendElementInfo(ElementInfoContext&) const {}
bool ElementBase::IPlugin::canElementBeCloned(const ElementCloneContext&) const { return true; }
bool ElementBase::IPlugin::canElementBeTransformed() const { return true; }
void ElementBase::IPlugin::onMoved() {}
void ElementBase::IPlugin::onQueryEndpointInterface(geom::EndpointInterface&) const {}
bool ElementBase::IPlugin::onSave(serialization::IOutArchive&) const { return true; }
bool ElementBase::IPlugin::onSave(KeyValueStorage&) const { return true; }
bool ElementBase::IPlugin::onLoad(serialization::IInArchive&, unsigned int) { return true; }
bool ElementBase::IPlugin::onLoad(const KeyValueStorage&) { return true; }

void ElementBase::IPlugin::assertReadEnabled() const {
    if (m_owner != nullptr)
        m_owner->acdb_assertReadEnabled();
}

void ElementBase::IPlugin::assertWriteEnabled() {
    if (m_owner != nullptr)
        m_owner->acdb_assertWriteEnabled();
}

void ElementBase::IPlugin::setOwner(ElementBase* newOwner) {
    onDetached(m_owner);
    m_owner = newOwner;
    onAttached();
}

const AcadObjectProperties& ElementBase::IPlugin::getProperties() const {
    assertReadEnabled();
    return m_properties;
}

AcadObjectProperties& ElementBase::IPlugin::setProperties() {
    assertWriteEnabled();
    return m_properties;
}

const PropertyTree& ElementBase::IPlugin::properties() const {
    assertReadEnabled();
    return m_tree;
}

PropertyTree& ElementBase::IPlugin::properties(AcDb::OpenMode mode) {
    if (mode == AcDb::kForWrite)
        assertWriteEnabled();
    else
        assertReadEnabled();
    return m_tree;
}

bool ElementBase::IPlugin::save(serialization::IOutArchive& archive) const {
    archive << kVersion;
    if (!onSave(archive))
        return false;
    archive << kMagic;
    return true;
}

bool ElementBase::IPlugin::load(serialization::IInArchive& archive, unsigned int elementVersion) {
    unsigned int version = 0;
    archive >> version;
    orv_warnOnNewVersion(version, kVersion, productName());
    ORV_ASSERT(version <= kVersion)(version)(kVersion).debug("version mismatch");
    if (!onLoad(archive, elementVersion))
        return false;
    unsigned int magic = 0;
    archive >> magic;
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("filing error");
    return magic == kMagic;
}

bool ElementBase::IPlugin::save(KeyValueStorage& storage) const {
    storage.set("iplugin/version", static_cast<int>(kVersion));
    return onSave(storage);
}

bool ElementBase::IPlugin::load(const KeyValueStorage& storage) {
    // Read for the day when there is a second version; the first has nothing to decide by it.
    storage.getValue<int>("iplugin/version");
    return onLoad(storage);
}

} // namespace orv::elem
