#include "structure/node.h"

#include "base/key_value_storage.h"
#include "structure/class_rows.h"

#include "dbents.h"

#include <cmath>

namespace structure {

ORV_DEFINE_CLASS(Node, kNodeRow)

namespace {

// Half the side of the square that marks a node, in pixels.
constexpr double kMarkPixels = 4.0;

bool isFinite(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

} // namespace

Node::Node() = default;
Node::~Node() = default;

Node::Node(const AcGePoint3d& position) : m_position(position) {
    addUsualPlugins(orv::elem::kSoftPointer, Connections::kEraseConnected | Connections::kRefreshOnTransform);
}

AcGePoint3d Node::position() const {
    assertReadEnabled();
    return m_position;
}

Acad::ErrorStatus Node::setPosition(const AcGePoint3d& position) {
    if (!isFinite(position))
        return Acad::eInvalidInput;
    return position == m_position ? Acad::eOk : transformBy(AcGeMatrix3d::translation(position - m_position));
}

void Node::writeOwn(AcDbDwgFiler& filer) const {
    ORV_ASSERT_STATUS(filer.writeInt32(kVersion));
    ORV_ASSERT_STATUS(filer.writePoint3d(m_position));
    ORV_ASSERT_STATUS(filer.writeUInt32(kMagic));
}

void Node::readOwn(AcDbDwgFiler& filer) {
    Adesk::Int32 version = 0;
    ORV_ASSERT_STATUS(filer.readInt32(&version));
    if (version < 1 || version > kVersion)
        throw Acad::eMakeMeProxy;
    AcGePoint3d position;
    ORV_ASSERT_STATUS(filer.readPoint3d(&position));
    Adesk::UInt32 magic = 0;
    ORV_ASSERT_STATUS(filer.readUInt32(&magic));
    if (magic != kMagic || !isFinite(position))
        throw Acad::eMakeMeProxy;
    m_position = position;
}

bool Node::onSave(orv::KeyValueStorage& storage) const {
    storage.set("node/x", m_position.x).set("node/y", m_position.y).set("node/z", m_position.z);
    return true;
}

bool Node::onLoad(const orv::KeyValueStorage& storage) {
    const AcGePoint3d position(storage.getValue("node/x", m_position.x),
                               storage.getValue("node/y", m_position.y),
                               storage.getValue("node/z", m_position.z));
    if (!isFinite(position))
        return false;
    m_position = position;
    changedPlace();
    return true;
}

Acad::ErrorStatus Node::transformOwn(const AcGeMatrix3d& xform) {
    m_position.transformBy(xform);
    return Acad::eOk;
}

void Node::drawOwn(AcGiWorldDraw& draw) {
    const AcGePoint3d points[] = {m_position, m_position};
    draw.geometry().polyline(2, points);
}

void Node::drawOwn(AcGiViewportDraw& draw) {
    AcGePoint2d pixels;
    draw.viewport().getNumPixelsInUnitSquare(m_position, pixels);
    if (!(pixels.x > 0.0) || !(pixels.y > 0.0))
        return;
    AcGeMatrix3d toEye;
    draw.viewport().getModelToEyeTransform(toEye);
    const AcGePoint3d eye = toEye * m_position;
    const double right = kMarkPixels / pixels.x;
    const double up = kMarkPixels / pixels.y;
    const AcGePoint3d corners[] = {{eye.x - right, eye.y - up, eye.z},
                                   {eye.x + right, eye.y - up, eye.z},
                                   {eye.x + right, eye.y + up, eye.z},
                                   {eye.x - right, eye.y + up, eye.z}};
    draw.geometry().polygonEye(4, corners);
}

Acad::ErrorStatus Node::auditOwn() const { return isFinite(m_position) ? Acad::eOk : Acad::eInvalidInput; }

Acad::ErrorStatus Node::ownGripPoints(AcGePoint3dArray& points, AcDbIntArray&, AcDbIntArray&) const {
    points.append(m_position);
    return Acad::eOk;
}

Acad::ErrorStatus Node::moveOwnGripPoints(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    for (int index : indices)
        if (index != 0)
            return Acad::eInvalidIndex;
    if (!indices.isEmpty())
        m_position += offset;
    return Acad::eOk;
}

Acad::ErrorStatus Node::ownGrips(AcDbGripDataPtrArray& grips, double, int, const AcGeVector3d&, int) const {
    orv::GripManager::ScopedCreator creator(*this, grips);
    creator.createPointGrip(
        m_position,
        [](AcDbEntity& entity, const AcGeVector3d& offset) {
            if (Node* const node = Node::cast(&entity))
                node->m_position += offset;
        },
        L"Node");
    return Acad::eOk;
}

Acad::ErrorStatus Node::moveOwnGrips(const AcDbVoidPtrArray& appData, const AcGeVector3d& offset, int) {
    AcDbVoidPtrArray mine, others;
    orv::GripManager::filterMyAppData(database(), appData, mine, others);
    orv::GripManager::onMove(*this, mine, offset);
    return Acad::eOk;
}

Acad::ErrorStatus Node::subGetClassID(CLSID* classId) const {
    *classId = {0x6d1f4a20, 0x3c5e, 0x4b7a, {0x9e, 0x01, 0x53, 0x54, 0x52, 0x00, 0x00, 0x01}};
    return Acad::eOk;
}

Acad::ErrorStatus Node::subGetGeomExtents(AcDbExtents& extents) const {
    return extents.set(m_position, m_position);
}

Acad::ErrorStatus Node::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                          const AcGePoint3d&, const AcGeMatrix3d&,
                                          AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    if (osnapMode == AcDb::kOsModeNode || osnapMode == AcDb::kOsModeNear)
        snapPoints.append(m_position);
    return Acad::eOk;
}

Acad::ErrorStatus Node::subExplode(AcDbVoidPtrArray& entities) const {
    auto* const point = new AcDbPoint(m_position);
    point->setLayer(layerId());
    point->setColorIndex(colorIndex());
    entities.append(static_cast<AcDbEntity*>(point));
    return Acad::eOk;
}

} // namespace structure
