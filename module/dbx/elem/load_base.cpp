#include "dbx/elem/load_base.h"

#include "base/assert.h"

namespace orv::elem {

namespace {

// The load case of a new load.
constexpr unsigned int kFirstLoadCase = 1;

const char* pathOf(LoadDistribution distribution) {
    switch (distribution) {
    case kPointLoad:
        return "point/";
    case kLineLoad:
        return "line/";
    case kAreaLoad:
        return "area/";
    case kVolumeLoad:
        return "volume/";
    }
    ORV_ASSERT(0);
    return "unknown/";
}

} // namespace

LoadBase::LoadBase(AcDbObject& host) : ElementBase(host), m_loadCases{kFirstLoadCase} {}

LoadBase::~LoadBase() = default;

const AcDbObjectId& LoadBase::getElement() const {
    acdb_assertReadEnabled();
    return m_element;
}

void LoadBase::setElement(const AcDbObjectId& id) {
    acdb_assertWriteEnabled();
    m_element = id;
}

bool LoadBase::isUDL() const {
    acdb_assertReadEnabled();
    return m_isUDL;
}

void LoadBase::setUDL(bool isUniform) {
    acdb_assertWriteEnabled();
    m_isUDL = isUniform;
}

int LoadBase::getType() const {
    acdb_assertReadEnabled();
    return m_type;
}

void LoadBase::setType(int type) {
    acdb_assertWriteEnabled();
    m_type = type;
}

LOAD_KIND LoadBase::getClass() const {
    acdb_assertReadEnabled();
    return m_class;
}

void LoadBase::setClass(LOAD_KIND kind) {
    acdb_assertWriteEnabled();
    m_class = kind;
}

LoadTypeCategory LoadBase::getCategory() const {
    acdb_assertReadEnabled();
    return m_category;
}

void LoadBase::setCategory(LoadTypeCategory category) {
    acdb_assertWriteEnabled();
    m_category = category;
}

LoadDistribution LoadBase::getDistribution() const {
    acdb_assertReadEnabled();
    return m_distribution;
}

void LoadBase::setDistribution(LoadDistribution distribution) {
    acdb_assertWriteEnabled();
    m_distribution = distribution;
}

const std::set<unsigned int>& LoadBase::getLoadCases() const {
    acdb_assertReadEnabled();
    return m_loadCases;
}

void LoadBase::setLoadCases(const std::set<unsigned int>& loadCases) {
    acdb_assertWriteEnabled();
    m_loadCases = loadCases;
}

void LoadBase::setLoadCase(unsigned int loadCase) {
    acdb_assertWriteEnabled();
    m_loadCases.clear();
    m_loadCases.insert(loadCase);
}

const std::deque<LoadBase::Vertex>& LoadBase::getVertices() const {
    acdb_assertReadEnabled();
    return m_vertices;
}

std::deque<LoadBase::Vertex>& LoadBase::getVertices() {
    acdb_assertReadEnabled();
    return m_vertices;
}

unsigned int LoadBase::numVertices() const {
    acdb_assertReadEnabled();
    return static_cast<unsigned int>(m_vertices.size());
}

void LoadBase::setVertices(const std::deque<Vertex>& vertices) {
    acdb_assertWriteEnabled();
    m_vertices = vertices;
    if (!m_isUDL)
        return;
    for (Vertex& vertex : m_vertices)
        vertex.value = m_vertices.front().value;
}

void LoadBase::appendVertex(const Vertex& vertex) {
    acdb_assertWriteEnabled();
    m_vertices.push_back(vertex);
}

bool LoadBase::hasVertex(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < m_vertices.size();
}

int LoadBase::lastIndex() const { return static_cast<int>(m_vertices.size()) - 1; }

void LoadBase::setTextAt(int index, const std::wstring& text) {
    acdb_assertWriteEnabled();
    const bool indexInBounds = hasVertex(index);
    ORV_ASSERT(indexInBounds);
    if (indexInBounds)
        m_vertices[static_cast<std::size_t>(index)].text = text;
}

const std::wstring& LoadBase::getTextAt(int index) const {
    acdb_assertReadEnabled();
    const bool indexInBounds = hasVertex(index);
    ORV_ASSERT(indexInBounds);
    static const std::wstring s_noText;
    return indexInBounds ? m_vertices[static_cast<std::size_t>(index)].text : s_noText;
}

void LoadBase::setTextAtStart(const std::wstring& text) { setTextAt(0, text); }
const std::wstring& LoadBase::getTextAtStart() const { return getTextAt(0); }
void LoadBase::setTextAtEnd(const std::wstring& text) { setTextAt(lastIndex(), text); }
const std::wstring& LoadBase::getTextAtEnd() const { return getTextAt(lastIndex()); }

const std::wstring& LoadBase::getUnitText() const {
    acdb_assertReadEnabled();
    return m_unitText;
}

void LoadBase::setUnitText(const std::wstring& text) {
    acdb_assertWriteEnabled();
    m_unitText = text;
}

bool LoadBase::isPolygonal() const {
    acdb_assertReadEnabled();
    return m_isPolygonal;
}

void LoadBase::setPolygonal(bool isPolygonal) {
    acdb_assertWriteEnabled();
    m_isPolygonal = isPolygonal;
}

void LoadBase::createSaveString(LoadDistribution distribution, bool isFree, std::string& out) {
    out = "load/";
    out += pathOf(distribution);
    out += isFree ? "free/" : "element_based/";
}

} // namespace orv::elem
