// How a load is saved and loaded.

#include "base/assert.h"
#include "base/key_value_storage.h"
#include "base/product_name.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_base.h"
#include "dbx/elem/load_filing.h"
#include "dbx/elem/load_settings.h"
#include "orvcore/warn_on_new_version.h"

#include <cmath>

namespace orv::elem {

namespace {

// The first versions that have more than an end, and these.
constexpr unsigned int kHasData = 2;
constexpr unsigned int kHasElement = 3;

// The part of a line that is loaded, as shares of the whole: free at the start, loaded, free at the end.
void putStretch(KeyValueStorage& storage, const std::string& prefix, const LoadVertex& first,
                const LoadVertex& last) {
    const double a = first.position;
    const double c = std::abs(1.0 - last.position);
    storage.set(prefix + "relative", first.distanceMode == kRelativeDistance);
    storage.set(prefix + "a", a);
    storage.set(prefix + "b", std::abs(1.0 - a - c));
    storage.set(prefix + "c", c);
}

} // namespace

bool GenericLoad::onSave(serialization::IOutArchive& archive) const {
    archive << kVersion;
    writeShort(archive, m_type);
    writeShort(archive, m_class);
    writeShort(archive, m_category);
    writeShort(archive, m_distribution);
    archive.softPointer(m_element); // a copied load does not take its element into another drawing
    archive << static_cast<unsigned int>(m_vertices.size());
    for (const Vertex& vertex : m_vertices)
        writeLoadVertex(archive, vertex);
    writeNumbers(archive, m_loadCases);
    archive << kMagic;
    return true;
}

bool GenericLoad::onLoad(serialization::IInArchive& archive, unsigned int) {
    m_refreshGraphics = true;
    unsigned int version = 0;
    archive >> version;
    ORV_ASSERT(version <= kVersion)(version)(kVersion);
    orv_warnOnNewVersion(version, kVersion, productName());
    if (version > kVersion)
        return false;
    m_vertices.clear();
    m_loadCases.clear();
    if (version >= kHasData)
        readData(archive, version);
    unsigned int magic = 0;
    archive >> magic;
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("filing error");
    return magic == kMagic;
}

void GenericLoad::readData(serialization::IInArchive& archive, unsigned int version) {
    dropCurve();
    readShort(archive, m_type);
    readShort(archive, m_class);
    readShort(archive, m_category);
    readShort(archive, m_distribution);
    m_element.setNull();
    if (version >= kHasElement)
        archive.softPointer(m_element);
    // Nothing is reserved: a count that is wrong ends with the archive.
    unsigned int count = 0;
    archive >> count;
    for (unsigned int i = 0; i < count; ++i) {
        Vertex vertex;
        readLoadVertex(archive, true, vertex);
        m_vertices.push_back(vertex);
    }
    readNumbers(archive, m_loadCases);
}

bool GenericLoad::onSave(KeyValueStorage& storage) const {
    std::string prefix;
    LoadBase::createSaveString(m_distribution, m_element.isNull(), prefix);
    if (owner() != nullptr) {
        const ElementBase& element = *owner();
        if (const auto name = element.getProperties().getValueNotThrow<std::wstring>(kElementNameKey))
            storage.set(prefix + "name", *name);
    }
    if (!m_loadCases.empty())
        storage.set(prefix + "loadcase", static_cast<int>(*m_loadCases.begin()));
    storage.set(prefix + "kind", static_cast<int>(m_class));
    storage.set(prefix + "type", m_type);
    for (std::size_t i = 0; i < m_vertices.size(); ++i)
        storage.set(prefix + "values/" + std::to_string(i), m_vertices[i].value);
    if (m_vertices.size() >= 2)
        putStretch(storage, prefix, m_vertices.front(), m_vertices.back());
    return true;
}

} // namespace orv::elem
