#include "dbx/elem/generic_load.h"

#include "base/assert.h"
#include "dbx/elem/load_visualization_data.h"
#include "dbx/elem/plugin_connected_elements.h"
#include "dbx/elem/plugin_general.h"
#include "orvcore/transaction_manager.h"
#include "orvshape/element_contexts.h"

#include "dbidmap.h"
#include "dbmain.h"

#include <utility>

namespace orv::elem {

namespace {

// Properties of the load's element that say how it stands to the element that it acts on.
constexpr unsigned int kPropertiesOfElement[] = {30004, 1012};

// Open until the transaction ends; null for what cannot be had, is erased, a proxy, or no element.
ElementBase* openElement(ORV_CDBTransactionManager& transaction, const AcDbObjectId& id,
                         AcDb::OpenMode mode) {
    AcDbObject* object = nullptr;
    const Acad::ErrorStatus es = transaction.getObject(object, id, mode, false, false);
    return es == Acad::eOk ? dynamic_cast<ElementBase*>(object) : nullptr;
}

// A copy: what is called on one of them may take plugins in or out.
ElementBase::Plugins pluginsOf(const ElementBase& element) {
    const auto walk = element.getConstPluginIterator();
    return ElementBase::Plugins(walk.begin(), walk.end());
}

void setToFalse(AcadObjectProperties& properties, unsigned int key) {
    if (properties.get(key))
        properties.getCasted<bool>(key) = false;
    else
        properties.add(key, false);
}

} // namespace

ILoad::~ILoad() = default;
void ILoad::onErase(bool) {}

GenericLoad::GenericLoad() = default;
GenericLoad::~GenericLoad() = default;

void GenericLoad::onGeometryModified() {}
void GenericLoad::postprocessInterpolationData(detail::LoadVisualizationData&) const {}
void GenericLoad::onValuesChanged() {}
void GenericLoad::onElementChanged() {}
void GenericLoad::onLoadTypeChanged() {}

const AcDbObjectId& GenericLoad::getElement() const {
    assertReadEnabled();
    return m_element;
}

const std::deque<GenericLoad::Vertex>& GenericLoad::getVertices() const {
    assertReadEnabled();
    return m_vertices;
}

unsigned int GenericLoad::numVertices() const {
    assertReadEnabled();
    return static_cast<unsigned int>(m_vertices.size());
}

int GenericLoad::getType() const {
    assertReadEnabled();
    return m_type;
}

LOAD_KIND GenericLoad::getClass() const {
    assertReadEnabled();
    return m_class;
}

LoadTypeCategory GenericLoad::getCategory() const {
    assertReadEnabled();
    return m_category;
}

LoadDistribution GenericLoad::getDistribution() const {
    assertReadEnabled();
    return m_distribution;
}

const std::set<unsigned int>& GenericLoad::getLoadCases() const {
    assertReadEnabled();
    return m_loadCases;
}

std::deque<GenericLoad::Vertex>& GenericLoad::getVerticesForWrite() {
    assertWriteEnabled();
    m_refreshGraphics = true;
    return m_vertices;
}

void GenericLoad::setType(int type) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    m_type = type;
    onLoadTypeChanged();
}

void GenericLoad::setClass(LOAD_KIND kind) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    m_class = kind;
}

void GenericLoad::setCategory(LoadTypeCategory category) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    m_category = category;
}

void GenericLoad::setDistribution(LoadDistribution distribution) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    m_distribution = distribution;
}

void GenericLoad::setVertices(const std::deque<Vertex>& vertices) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    m_vertices = vertices;
    if (!m_vertices.empty())
        onValuesChanged();
}

bool GenericLoad::hasVertex(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < m_vertices.size();
}

void GenericLoad::setValueAt(int index, double value) {
    assertWriteEnabled();
    const bool indexInBounds = hasVertex(index);
    ORV_ASSERT(indexInBounds);
    if (!indexInBounds)
        return;
    m_vertices[static_cast<std::size_t>(index)].value = value;
    m_refreshGraphics = true;
    onValuesChanged();
}

void GenericLoad::setTextAt(int index, const std::wstring& text) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    const bool indexInBounds = hasVertex(index);
    ORV_ASSERT(indexInBounds);
    if (indexInBounds)
        m_vertices[static_cast<std::size_t>(index)].text = text;
}

void GenericLoad::setLoadCase(unsigned int loadCase) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    m_loadCases.clear();
    m_loadCases.insert(loadCase);
}

void GenericLoad::setLoadCases(const std::set<unsigned int>& loadCases) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    if (&loadCases != &m_loadCases)
        m_loadCases = loadCases;
}

void GenericLoad::setElement(const AcDbObjectId& id) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    m_element = id;
    if (owner() != nullptr)
        for (const unsigned int key : kPropertiesOfElement)
            setToFalse(owner()->setProperties(), key);
    onElementChanged();
}

boost::optional<double> GenericLoad::getValueAt(int index) const {
    assertReadEnabled();
    if (!hasVertex(index))
        return boost::none;
    return m_vertices[static_cast<std::size_t>(index)].value;
}

const std::wstring& GenericLoad::getTextAt(int index) const {
    assertReadEnabled();
    const bool indexInBounds = hasVertex(index);
    ORV_ASSERT(indexInBounds);
    static const std::wstring s_none;
    return indexInBounds ? m_vertices[static_cast<std::size_t>(index)].text : s_none;
}

void GenericLoad::getPointAt(int index, AcGePoint3d& point) const {
    assertReadEnabled();
    const bool indexInBounds = hasVertex(index);
    ORV_ASSERT(indexInBounds);
    if (indexInBounds)
        point = m_vertices[static_cast<std::size_t>(index)].point;
}

bool GenericLoad::refreshGraphics() const { return m_refreshGraphics; }
void GenericLoad::requestRefreshGraphics() { m_refreshGraphics = true; }

const boost::shared_ptr<ORV_SegmentedCurve>& GenericLoad::getOwnCurve() const {
    assertReadEnabled();
    return m_visCurve;
}

void GenericLoad::setOwnCurve(boost::shared_ptr<ORV_SegmentedCurve> curve) {
    assertWriteEnabled();
    m_refreshGraphics = true;
    dropCurve();
    m_visCurve = std::move(curve);
}

void GenericLoad::dropCurve() {
    if (m_vis && m_vis->visCurve == m_visCurve.get())
        m_vis->visCurve = nullptr; // the picture does not own it
    m_visCurve.reset();
}

boost::optional<AcGeMatrix3d> GenericLoad::getElementXform() const {
    if (!isLocal(m_type) || m_element.isNull())
        return boost::none;
    ORV_CDBTransactionManager transaction(m_element.database(), false);
    const ElementBase* const element = openElement(transaction, m_element, AcDb::kForRead);
    if (element == nullptr)
        return boost::none;
    for (const auto& plugin : pluginsOf(*element))
        if (const auto* const general = dynamic_cast<const Plugin_General*>(plugin.get()))
            return general->getCoordinateSystem();
    return boost::none;
}

void GenericLoad::onMoved() {
    assertWriteEnabled();
    m_refreshGraphics = true;
}

void GenericLoad::onPostTransform(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    for (Vertex& vertex : m_vertices)
        vertex.point.transformBy(xform);
}

bool GenericLoad::canElementBeCloned(const ElementCloneContext& context) const {
    if (context.idMapping == nullptr || m_element.isNull())
        return true;
    AcDbIdPair pair;
    pair.setKey(m_element);
    return context.idMapping->compute(pair);
}

void GenericLoad::onErase(bool erasing) {
    if (ORV_CDBTransactionManager::getUndoRedoActive() || !erasing || owner() == nullptr ||
        m_element.isNull())
        return;
    const AcDbObjectId own = owner()->acdb_id();
    ORV_CDBTransactionManager transaction(own.database(), false);
    ElementBase* const element = openElement(transaction, m_element, AcDb::kForWrite);
    if (element == nullptr)
        return;
    for (const auto& plugin : pluginsOf(*element))
        if (auto* const connected = dynamic_cast<Plugin_ConnectedElements*>(plugin.get()))
            connected->remove(own);
}

} // namespace orv::elem
