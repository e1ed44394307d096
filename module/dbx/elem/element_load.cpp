#include "dbx/elem/element_load.h"

#include "base/assert.h"
#include "base/product_name.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"
#include "orvcore/warn_on_new_version.h"

namespace orv::elem {

namespace {

// The first version that has it.
constexpr unsigned int kHasElement = 2;

} // namespace

ElementLoad::ElementLoad() = default;
ElementLoad::~ElementLoad() = default;

const AcDbObjectId& ElementLoad::getElement() const {
    assertReadEnabled();
    return m_ownElement;
}

void ElementLoad::setElement(const AcDbObjectId& id) {
    assertWriteEnabled();
    m_ownElement = id;
}

bool ElementLoad::onSave(serialization::IOutArchive& archive) const {
    if (!GenericLoad::onSave(archive))
        return false;
    archive << kVersion;
    archive.softPointer(m_ownElement);
    archive << kMagic;
    return true;
}

bool ElementLoad::onLoad(serialization::IInArchive& archive, unsigned int elementVersion) {
    if (!GenericLoad::onLoad(archive, elementVersion))
        return false;
    unsigned int version = 0;
    archive >> version;
    ORV_ASSERT(version <= kVersion)(version)(kVersion);
    orv_warnOnNewVersion(version, kVersion, productName());
    if (version > kVersion)
        return false;
    if (version >= kHasElement)
        archive.softPointer(m_ownElement);
    unsigned int magic = 0;
    archive >> magic;
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("filing error");
    return magic == kMagic;
}

} // namespace orv::elem
