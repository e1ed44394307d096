#include "entities/vertex_polyline.h"

#include "db/entities/owned_chain.h"
#include "db/entities/reference_access.h"
#include "dbents.h"

namespace embedded {

VertexPolyline::VertexPolyline() : m_vertices(std::make_unique<OwnedChain>()) {}
VertexPolyline::~VertexPolyline() = default;

AcDbObjectIterator* VertexPolyline::vertexIterator() const {
    assertReadEnabled();
    std::vector<AcDbEntity*> loose;
    for (const std::unique_ptr<AcDbEntity>& vertex : m_vertices->loose())
        loose.push_back(vertex.get());
    return new AcDbObjectIterator(m_vertices->live(), std::move(loose));
}

Acad::ErrorStatus VertexPolyline::openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) const {
    assertReadEnabled();
    return acdbOpenObject(end, m_vertices->end(), mode);
}

AcRxObject* VertexPolyline::clone() const {
    AcRxObject* made = AcDbCurve::clone();
    auto* copy = dynamic_cast<VertexPolyline*>(made);
    if (copy == nullptr)
        return made;
    const PartsToRead<AcDbVertex> vertices(*m_vertices);
    for (const AcDbVertex* vertex : vertices.parts())
        if (AcRxObject* part = vertex->clone())
            copy->m_vertices->keepLoose(std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(part)));
    return made;
}

Acad::ErrorStatus VertexPolyline::append(AcDbObjectId& id, AcDbVertex* vertex) {
    id.setNull();
    if (vertex == nullptr)
        return Acad::eNullEntityPointer;
    if (!vertex->objectId().isNull())
        return Acad::eAlreadyInDb;
    assertWriteEnabled();
    if (objectId().isNull()) {
        m_vertices->keepLoose(std::unique_ptr<AcDbEntity>(vertex));
        return Acad::eOk;
    }
    store();
    id = m_vertices->insert(*this, *vertex, OwnedChain::kAtEnd);
    return Acad::eOk;
}

Acad::ErrorStatus VertexPolyline::insertBehind(AcDbObjectId& id, AcDbObjectId before, AcDbVertex* vertex) {
    id.setNull();
    if (vertex == nullptr)
        return Acad::eNullEntityPointer;
    if (!vertex->objectId().isNull())
        return Acad::eAlreadyInDb;
    if (objectId().isNull())
        return Acad::eNoDatabase;
    if (!before.isNull() && !m_vertices->holds(before))
        return Acad::eKeyNotFound;
    assertWriteEnabled();
    store();
    id = m_vertices->insert(*this, *vertex, before.isNull() ? 0 : m_vertices->placeOf(before) + 1);
    return Acad::eOk;
}

Acad::ErrorStatus VertexPolyline::refuseForeign(AcDbObjectId id) const {
    assertReadEnabled();
    return m_vertices->holds(id) ? Acad::eOk : Acad::eKeyNotFound;
}

void VertexPolyline::store() {
    if (!m_vertices->loose().empty() && !objectId().isNull() && isWriteEnabled())
        m_vertices->store(*this);
}

Acad::ErrorStatus VertexPolyline::subClose() {
    const Acad::ErrorStatus es = AcDbCurve::subClose();
    if (es == Acad::eOk)
        store();
    return es;
}

Acad::ErrorStatus VertexPolyline::subErase(Adesk::Boolean erasing) {
    const Acad::ErrorStatus es = AcDbCurve::subErase(erasing);
    if (es == Acad::eOk)
        m_vertices->erase(erasing != 0);
    return es;
}

const OwnedChain* ownedChainOf(const AcDbObject& object) {
    if (const auto* reference = AcDbBlockReference::cast(&object))
        return &ReferenceAccess::attributes(*reference);
    const auto* polyline = dynamic_cast<const VertexPolyline*>(&object);
    return polyline != nullptr ? polyline->m_vertices.get() : nullptr;
}

} // namespace embedded
