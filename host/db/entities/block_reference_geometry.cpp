#include "acgi.h"
#include "db/entities/entity_parts.h"
#include "db/entities/owned_chain.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "gi/block_drawing.h"

#include <cmath>
#include <map>
#include <memory>

using namespace embedded;

namespace {

AcGeMatrix3d scaling(const AcGeScale3d& scale) {
    AcGeMatrix3d matrix;
    matrix(0, 0) = scale.sx;
    matrix(1, 1) = scale.sy;
    matrix(2, 2) = scale.sz;
    return matrix;
}

AcGePoint3d originOf(AcDbObjectId block) {
    AcDbBlockTableRecord* record = nullptr;
    AcGePoint3d origin;
    if (acdbOpenObject(record, block, AcDb::kForRead) == Acad::eOk) {
        origin = record->origin();
        record->close();
    }
    return origin;
}

bool areAcross(const AcGeVector3d& a, const AcGeVector3d& b) {
    return std::fabs(a.dotProduct(b)) <= 1.0e-9 * a.length() * b.length();
}

// What a visit throws must leave nothing open.
struct Closing {
    void operator()(AcDbObject* object) const { object->close(); }
};
template <class T>
using Opened = std::unique_ptr<T, Closing>;

// The entities of a block, opened for read one by one. What cannot be opened is passed over, or ends the walk
// with its status; so does a status of the visit.
template <class Visit>
Acad::ErrorStatus forEachEntity(AcDbObjectId block, bool passesOver, Visit visit) {
    AcDbBlockTableRecord* opened = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(opened, block, AcDb::kForRead);
    if (es != Acad::eOk)
        return es;
    const Opened<AcDbBlockTableRecord> record(opened);
    AcDbBlockTableRecordIterator* made = nullptr;
    record->newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    for (; !entities->done() && es == Acad::eOk; entities->step()) {
        AcDbEntity* entity = nullptr;
        const Acad::ErrorStatus found = entities->getEntity(entity, AcDb::kForRead);
        const Opened<AcDbEntity> held(entity);
        if (found == Acad::eOk)
            es = visit(*entity);
        else if (!passesOver)
            es = found;
    }
    return es;
}

} // namespace

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    assertReadEnabled();
    const AcGePoint3d origin = originOf(m_fields.block);
    AcGeMatrix3d own = AcGeMatrix3d::translation(m_fields.position.asVector()) *
                       AcGeMatrix3d::rotation(m_fields.rotation, AcGeVector3d::kZAxis) *
                       scaling(m_fields.scale) * AcGeMatrix3d::translation(-origin.asVector());
    return AcGeMatrix3d::planeToWorld(m_fields.normal) * own;
}

// Takes place, scale, rotation and normal from a matrix. The signs of the scale factors stay as far as they
// can.
bool AcDbBlockReference::placeFrom(const AcGeMatrix3d& matrix) {
    AcGePoint3d place;
    AcGeVector3d x, y, z;
    matrix.getCoordSystem(place, x, y, z);
    if (!areAcross(x, y) || !areAcross(y, z) || !areAcross(z, x))
        return false;
    Fields& f = m_fields;
    AcGeScale3d scale(std::copysign(x.length(), f.scale.sx), std::copysign(y.length(), f.scale.sy),
                      std::copysign(z.length(), f.scale.sz));
    const AcGeVector3d normal = (z / scale.sz).normal();
    if ((x / scale.sx).crossProduct(y / scale.sy).dotProduct(normal) < 0.0)
        scale.sx = -scale.sx;
    const AcGeVector3d along = x / scale.sx;
    const AcGeVector3d zero = normal.perpVector();
    const AcGePoint3d position = matrix * originOf(f.block);
    f.scale = scale;
    f.normal = normal;
    f.rotation = std::atan2(along.dotProduct(normal.crossProduct(zero)), along.dotProduct(zero));
    if (f.rotation < 0.0)
        f.rotation += 2.0 * std::acos(-1.0);
    f.position = worldToOwn(normal, position);
    return true;
}

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular())
        return Acad::eInvalidInput;
    assertWriteEnabled();
    return placeFrom(matrix) ? Acad::eOk : Acad::eCannotScaleNonUniformly;
}

Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    const AcGeMatrix3d made = xform * blockTransform();
    if (made.isSingular())
        return Acad::eCannotScaleNonUniformly;
    const PartsToWrite<AcDbEntity> attributes(*m_attributes);
    if (attributes.status() != Acad::eOk)
        return attributes.status();
    if (!placeFrom(made))
        return Acad::eCannotScaleNonUniformly;
    for (AcDbEntity* attribute : attributes.parts())
        attribute->transformBy(xform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                                       AcDbIntArray&) const {
    gripPoints.append(position());
    for (const AcDbObjectId& id : m_attributes->live()) {
        AcDbAttribute* attribute = nullptr;
        if (openAttribute(attribute, id, AcDb::kForRead) != Acad::eOk)
            continue;
        gripPoints.append(attribute->isDefaultAlignment() ? attribute->position()
                                                          : attribute->alignmentPoint());
        attribute->close();
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                          const AcGeVector3d& offset) {
    const std::vector<AcDbObjectId> ids = m_attributes->live();
    if (!indicesAreBelow(indices, static_cast<int>(ids.size()) + 1))
        return Acad::eInvalidIndex;
    const AcGeMatrix3d move = AcGeMatrix3d::translation(offset);
    if (indices.contains(0))
        return transformBy(move);
    // All of them are there before the first one moves.
    std::map<int, Opened<AcDbAttribute>> held;
    for (const int index : indices) {
        Opened<AcDbAttribute>& place = held[index];
        if (place)
            continue;
        AcDbAttribute* attribute = nullptr;
        const Acad::ErrorStatus es =
            openAttribute(attribute, ids[static_cast<std::size_t>(index) - 1], AcDb::kForWrite);
        if (es != Acad::eOk)
            return es;
        place.reset(attribute);
    }
    for (const int index : indices)
        held[index]->transformBy(move);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    stretchPoints.append(position());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker,
                                                        const AcGePoint3d&, const AcGePoint3d&,
                                                        const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                                        AcDbIntArray&) const {
    if (osnapMode == AcDb::kOsModeIns)
        snapPoints.append(position());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subExplode(AcDbVoidPtrArray& entitySet) const {
    const AcGeMatrix3d place = blockTransform();
    std::vector<std::unique_ptr<AcDbEntity>> parts;
    const Acad::ErrorStatus es = forEachEntity(m_fields.block, false, [&](AcDbEntity& entity) {
        AcDbEntity* part = nullptr;
        const Acad::ErrorStatus made = entity.getTransformedCopy(place, part);
        if (made == Acad::eOk)
            parts.emplace_back(part);
        return made;
    });
    if (es != Acad::eOk)
        return es;
    for (std::unique_ptr<AcDbEntity>& part : parts)
        entitySet.append(part.release());
    return Acad::eOk;
}

Adesk::UInt32 AcDbBlockReference::subSetAttributes(AcGiDrawableTraits* traits) {
    return AcDbEntity::subSetAttributes(traits) | kDrawableIsCompoundObject;
}

void AcDbBlockReference::drawBlock(AcGiWorldDraw& worldDraw, const AcGeMatrix3d& place) const {
    AcGiWorldGeometry& geometry = worldDraw.geometry();
    const auto drawEntities = [&] {
        forEachEntity(m_fields.block, true, [&](AcDbEntity& entity) {
            geometry.draw(&entity);
            return worldDraw.regenAbort() ? Acad::eUserBreak : Acad::eOk;
        });
    };
    if (auto* const ofBlocks = dynamic_cast<BlockDrawing*>(&worldDraw)) {
        ofBlocks->drawBlock(m_fields.block, place, drawEntities);
        return;
    }
    geometry.pushModelTransform(place);
    drawEntities();
    geometry.popModelTransform();
}

void AcDbBlockReference::drawAttributes(AcGiWorldDraw& worldDraw) const {
    AcGiWorldGeometry& geometry = worldDraw.geometry();
    geometry.startAttributesSegment();
    for (const AcDbObjectId& id : m_attributes->live()) {
        AcDbEntity* attribute = nullptr;
        if (acdbOpenAcDbEntity(attribute, id, AcDb::kForRead) != Acad::eOk)
            continue;
        const Opened<AcDbEntity> held(attribute);
        geometry.draw(attribute);
    }
}

Adesk::Boolean AcDbBlockReference::subWorldDraw(AcGiWorldDraw* worldDraw) {
    drawBlock(*worldDraw, blockTransform());
    drawAttributes(*worldDraw);
    return true;
}
