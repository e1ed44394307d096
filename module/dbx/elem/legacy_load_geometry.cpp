// How the load entity is edited: grips, stretch points, transforms.

#include "base/assert.h"
#include "base/guard.h"
#include "dbx/elem/free_load_base.h"
#include "dbx/elem/legacy_load.h"
#include "orvshape/grip_icons.h"
#include "orvshape/grip_manager.h"

#include <cstddef>

namespace orv::elem::legacy {

namespace {

constexpr auto kNotImplemented = static_cast<Acad::ErrorStatus>(1);

FreeLoadBase* freeLoadOf(const ORV_Load& entity) {
    for (const auto& plugin : entity.getConstPluginIterator())
        if (auto* const load = dynamic_cast<FreeLoadBase*>(plugin.get()))
            return load;
    return nullptr;
}

// The edit is done, whatever the plugin throws.
void tellEdited(const ORV_Load& entity) {
    try {
        if (FreeLoadBase* const load = freeLoadOf(entity)) {
            load->onGeometryModified();
            load->onEdited();
        }
    }
    ORV_GUARD
}

// What a grip of a vertex does when it is moved; `entity` may be a copy that is dragged about.
void moveVertex(std::size_t i, AcDbEntity& entity, const AcGeVector3d& offset) {
    ORV_Load* const elem = ORV_Load::cast(&entity);
    ORV_ASSERT(elem);
    if (elem == nullptr)
        return;
    elem->assertWriteEnabled();
    elem->acdb_assertWriteEnabled();
    std::deque<ORV_Load::Vertex> vertices = elem->getVertices();
    if (i >= vertices.size()) // the vertices were changed since the grips were made
        return;
    ORV_ASSERT(vertices[i].posSource == ORV_Load::PS_POINT);
    vertices[i].point += offset;
    elem->setVertices(vertices);
}

void drawGrip(AcGiViewportDraw& draw, const AcGePoint3d& point, AcDbGripOperations::DrawType type, int size) {
    drawGripPointIcon_GripButton(draw, point, type, size, getReferenceGeometryGripPointColors());
}

} // namespace

Acad::ErrorStatus ORV_Load::appendVertexPoints(AcGePoint3dArray& points) const {
    if (freeLoadOf(*this) == nullptr)
        return kNotImplemented;
    for (const Vertex& vertex : getVertices())
        points.append(vertex.point);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_Load::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    return appendVertexPoints(stretchPoints);
}

Acad::ErrorStatus ORV_Load::subGetOsnapPoints(AcDb::OsnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                              const AcGePoint3d&, const AcGeMatrix3d&,
                                              AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    return appendVertexPoints(snapPoints);
}

Acad::ErrorStatus ORV_Load::subGetGripPoints(AcDbGripDataPtrArray& grips, double, int, const AcGeVector3d&,
                                             int) const {
    assertReadEnabled();
    if (freeLoadOf(*this) == nullptr)
        return kNotImplemented;
    GripManager::ScopedCreator creator(*this, grips);
    std::size_t i = 0;
    for (const Vertex& vertex : getVertices()) {
        creator.createPointGrip(
            vertex.point,
            [i](AcDbEntity& entity, const AcGeVector3d& offset) { moveVertex(i, entity, offset); },
            std::wstring(), &drawGrip);
        ++i;
    }
    return Acad::eOk;
}

Acad::ErrorStatus ORV_Load::subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                                const AcGeVector3d& offset, int) {
    assertWriteEnabled();
    AcDbVoidPtrArray mine, others;
    GripManager::filterMyAppData(database(), gripAppData, mine, others);
    GripManager::onMove(*this, mine, offset);
    tellEdited(*this);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_Load::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    assertWriteEnabled();
    if (freeLoadOf(*this) == nullptr)
        return kNotImplemented;
    if (indices.isEmpty())
        return Acad::eOk;
    std::deque<Vertex> vertices = getVertices();
    for (const int index : indices)
        vertices.at(static_cast<std::size_t>(index)).point += offset;
    setVertices(vertices);
    tellEdited(*this);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_Load::subTransformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    if (getElement().isNull()) {
        std::deque<Vertex> vertices = getVertices();
        for (Vertex& vertex : vertices)
            if (vertex.posSource == PS_POINT)
                vertex.point.transformBy(xform);
        setVertices(vertices);
        tellEdited(*this);
    }
    recordGraphicsModified(true);
    return Acad::eOk;
}

} // namespace orv::elem::legacy
