#include "dbx/elem/load_base.h"

#include "base/assert.h"
#include "base/key_value_storage.h"
#include "base/product_name.h"
#include "dbx/elem/free_load_base.h"
#include "dbx/elem/load_filing.h"
#include "dbx/elem/load_settings.h"
#include "orvcore/warn_on_new_version.h"

namespace orv::elem {

namespace {

// The versions of the stream from which on it holds something.
constexpr unsigned int kWithEndTexts = 2;
constexpr unsigned int kWithCategory = 3;
constexpr unsigned int kWithUDL = 4;
constexpr unsigned int kWithLoadCases = 5;
constexpr unsigned int kWithUnitText = 6;
constexpr unsigned int kWithPolygonal = 7;
constexpr unsigned int kWithVertexTexts = 8;

unsigned int readCount(serialization::IInArchive& archive) {
    unsigned int count = 0;
    archive >> count;
    return count;
}

const FreeLoadBase* freeLoadOf(const ElementBase& element) {
    for (auto plugins = element.getConstPluginIterator(); !plugins.done(); plugins.next()) {
        if (const auto* const freeLoad = dynamic_cast<const FreeLoadBase*>(plugins.get().get()))
            return freeLoad;
    }
    return nullptr;
}

} // namespace

bool LoadBase::onSave(serialization::IOutArchive& archive) const {
    archive << kVersion;
    ElementBase::onSave(archive);
    writeShort(archive, m_type);
    writeShort(archive, m_class);
    writeShort(archive, m_category);
    writeShort(archive, m_distribution);
    archive << m_isUDL << static_cast<unsigned int>(m_vertices.size());
    for (const Vertex& vertex : m_vertices)
        writeLoadVertex(archive, vertex);
    writeNumbers(archive, m_loadCases);
    archive << m_unitText << m_isPolygonal << kMagic;
    return true;
}

bool LoadBase::onLoad(serialization::IInArchive& archive, unsigned int elementVersion) {
    unsigned int version = 0;
    archive >> version;
    ORV_ASSERT(version <= kVersion)(version)(kVersion);
    orv_warnOnNewVersion(version, kVersion, productName());
    if (version > kVersion)
        return false;
    m_vertices.clear();
    m_loadCases.clear();
    ElementBase::onLoad(archive, elementVersion);
    readKind(archive, version);
    readVertices(archive, version);
    if (version >= kWithLoadCases)
        readNumbers(archive, m_loadCases);
    if (version >= kWithLoadCases && version < kWithVertexTexts)
        readEndTexts(archive);
    if (version >= kWithUnitText)
        archive >> m_unitText;
    else
        m_unitText.clear();
    if (version >= kWithPolygonal)
        archive >> m_isPolygonal;
    else
        m_isPolygonal = m_vertices.size() != 4; // a quad used to be told by its corners
    unsigned int magic = 0;
    archive >> magic;
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("filing error");
    return magic == kMagic;
}

void LoadBase::readKind(serialization::IInArchive& archive, unsigned int version) {
    readShort(archive, m_type);
    readShort(archive, m_class);
    if (version >= kWithCategory) {
        readShort(archive, m_category);
        readShort(archive, m_distribution);
    }
    if (version >= kWithUDL)
        archive >> m_isUDL;
    else
        m_isUDL = false;
}

void LoadBase::readVertices(serialization::IInArchive& archive, unsigned int version) {
    const unsigned int count = readCount(archive);
    for (unsigned int i = 0; i < count; ++i) {
        Vertex vertex;
        readLoadVertex(archive, version >= kWithVertexTexts, vertex);
        m_vertices.push_back(vertex);
    }
    if (version < kWithEndTexts || version >= kWithLoadCases)
        return;
    std::wstring start;
    std::wstring end;
    archive >> start >> end;
    setTextAtStart(start);
    setTextAtEnd(end);
}

void LoadBase::readEndTexts(serialization::IInArchive& archive) {
    const unsigned int count = readCount(archive);
    for (unsigned int i = 0; i < count; ++i) {
        std::wstring text;
        archive >> text;
        ORV_ASSERT(i <= 1);
        if (i == 0)
            setTextAtStart(text);
        else
            setTextAtEnd(text);
    }
}

bool LoadBase::onSave(KeyValueStorage& storage) const {
    const FreeLoadBase* const freeLoad = freeLoadOf(*this);
    std::string prefix;
    createSaveString(m_distribution, freeLoad != nullptr, prefix);
    if (const auto name = getProperties().getValueNotThrow<std::wstring>(kElementNameKey))
        storage.set(prefix + "name", *name);
    if (!m_loadCases.empty())
        storage.set(prefix + "loadcase", static_cast<int>(*m_loadCases.begin()));
    storage.set(prefix + "kind", static_cast<int>(m_class));
    storage.set(prefix + "type", m_type);
    storage.set(prefix + "uniform_distribution_checked", m_isUDL);
    for (std::size_t i = 0; i < m_vertices.size(); ++i)
        storage.set(prefix + "values/" + std::to_string(i), m_vertices[i].value);
    if (freeLoad != nullptr)
        freeLoad->save(storage);
    return true;
}

bool LoadBase::onLoad(const KeyValueStorage&) { return true; }

} // namespace orv::elem
