#include "structure/slab.h"

#include "base/key_value_storage.h"
#include "structure/class_rows.h"

#include "dbents.h"
#include "geplane.h"

#include <cmath>

namespace structure {

ORV_DEFINE_CLASS(Slab, kSlabRow)

namespace {

bool isFinite(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

} // namespace

Slab::Slab() = default;
Slab::~Slab() = default;

Slab::Slab(const std::vector<AcGePoint3d>& corners, double thickness)
    : m_corners(corners), m_thickness(thickness) {
    addUsualPlugins(orv::elem::kSoftPointer, Connections::kRefreshOnTransform);
}

AcGePoint3d Slab::labelPoint() const {
    AcGeVector3d sum;
    for (const AcGePoint3d& point : corners())
        sum += point.asVector();
    return m_corners.empty() ? AcGePoint3d() : AcGePoint3d() + sum / static_cast<double>(m_corners.size());
}

const std::vector<AcGePoint3d>& Slab::corners() const {
    assertReadEnabled();
    return m_corners;
}

double Slab::thickness() const {
    assertReadEnabled();
    return m_thickness;
}

AcGeVector3d Slab::doubleArea() const {
    AcGeVector3d sum;
    for (std::size_t i = 1; i + 1 < m_corners.size(); ++i)
        sum += (m_corners[i] - m_corners[0]).crossProduct(m_corners[i + 1] - m_corners[0]);
    return sum;
}

AcGeVector3d Slab::normal() const {
    assertReadEnabled();
    const AcGeVector3d sum = doubleArea();
    return sum.isZeroLength() ? AcGeVector3d() : sum.normal();
}

double Slab::area() const {
    assertReadEnabled();
    return doubleArea().length() / 2.0;
}

Acad::ErrorStatus Slab::addSupport(const AcDbObjectId& beam) {
    Connections* const beams = connections();
    if (beams == nullptr || database() == nullptr || beam.database() != database())
        return Acad::eWrongDatabase;
    beams->add(beam);
    return Acad::eOk;
}

Acad::ErrorStatus Slab::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    const AcGeVector3d up = normal();
    if (up.isZeroLength())
        return Acad::eDegenerateGeometry;
    plane.set(m_corners.front(), up);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

void Slab::writeOwn(AcDbDwgFiler& filer) const {
    ORV_ASSERT_STATUS(filer.writeInt32(kVersion));
    ORV_ASSERT_STATUS(filer.writeDouble(m_thickness));
    ORV_ASSERT_STATUS(filer.writeUInt32(static_cast<Adesk::UInt32>(m_corners.size())));
    for (const AcGePoint3d& point : m_corners)
        ORV_ASSERT_STATUS(filer.writePoint3d(point));
    ORV_ASSERT_STATUS(filer.writeUInt32(kMagic));
}

void Slab::readOwn(AcDbDwgFiler& filer) {
    Adesk::Int32 version = 0;
    ORV_ASSERT_STATUS(filer.readInt32(&version));
    if (version < 1 || version > kVersion)
        throw Acad::eMakeMeProxy;
    double thickness = 0.0;
    ORV_ASSERT_STATUS(filer.readDouble(&thickness));
    Adesk::UInt32 count = 0;
    ORV_ASSERT_STATUS(filer.readUInt32(&count));
    // A damaged count ends at the end of the data; no room is made for it in advance.
    std::vector<AcGePoint3d> corners;
    for (Adesk::UInt32 i = 0; i < count; ++i) {
        AcGePoint3d point;
        ORV_ASSERT_STATUS(filer.readPoint3d(&point));
        if (!isFinite(point))
            throw Acad::eMakeMeProxy;
        corners.push_back(point);
    }
    Adesk::UInt32 magic = 0;
    ORV_ASSERT_STATUS(filer.readUInt32(&magic));
    if (magic != kMagic || !std::isfinite(thickness))
        throw Acad::eMakeMeProxy;
    m_thickness = thickness;
    m_corners.swap(corners);
}

bool Slab::onSave(orv::KeyValueStorage& storage) const {
    storage.set("slab/thickness", m_thickness);
    return true;
}

bool Slab::onLoad(const orv::KeyValueStorage& storage) {
    m_thickness = storage.getValue("slab/thickness", m_thickness);
    return true;
}

Acad::ErrorStatus Slab::transformOwn(const AcGeMatrix3d& xform) {
    for (AcGePoint3d& point : m_corners)
        point.transformBy(xform);
    return Acad::eOk;
}

void Slab::drawOwn(AcGiWorldDraw& draw) {
    if (m_corners.size() >= 3)
        draw.geometry().polygon(static_cast<Adesk::UInt32>(m_corners.size()), m_corners.data());
}

Acad::ErrorStatus Slab::auditOwn() const {
    return doubleArea().isZeroLength() ? Acad::eDegenerateGeometry : Acad::eOk;
}

Acad::ErrorStatus Slab::ownGripPoints(AcGePoint3dArray& points, AcDbIntArray&, AcDbIntArray&) const {
    for (const AcGePoint3d& point : m_corners)
        points.append(point);
    return Acad::eOk;
}

Acad::ErrorStatus Slab::moveOwnGripPoints(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    for (int index : indices)
        if (index < 0 || static_cast<std::size_t>(index) >= m_corners.size())
            return Acad::eInvalidIndex;
    for (int index : indices)
        m_corners[static_cast<std::size_t>(index)] += offset;
    return Acad::eOk;
}

Acad::ErrorStatus Slab::ownGrips(AcDbGripDataPtrArray& grips, double, int, const AcGeVector3d&, int) const {
    orv::GripManager::ScopedCreator creator(*this, grips);
    for (std::size_t i = 0; i < m_corners.size(); ++i)
        creator.createPointGrip(
            m_corners[i],
            [i](AcDbEntity& entity, const AcGeVector3d& offset) {
                Slab* const slab = Slab::cast(&entity);
                if (slab != nullptr && i < slab->m_corners.size())
                    slab->m_corners[i] += offset;
            },
            L"Corner");
    return Acad::eOk;
}

Acad::ErrorStatus Slab::moveOwnGrips(const AcDbVoidPtrArray& appData, const AcGeVector3d& offset, int) {
    AcDbVoidPtrArray mine, others;
    orv::GripManager::filterMyAppData(database(), appData, mine, others);
    orv::GripManager::onMove(*this, mine, offset);
    return Acad::eOk;
}

Acad::ErrorStatus Slab::subGetClassID(CLSID* classId) const {
    *classId = {0x6d1f4a20, 0x3c5e, 0x4b7a, {0x9e, 0x01, 0x53, 0x54, 0x52, 0x00, 0x00, 0x03}};
    return Acad::eOk;
}

Acad::ErrorStatus Slab::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (const AcGePoint3d& point : m_corners)
        box.addPoint(point);
    if (box.isEmpty())
        return Acad::eInvalidExtents;
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus Slab::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                          const AcGePoint3d&, const AcGeMatrix3d&,
                                          AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    for (std::size_t i = 0; i < m_corners.size(); ++i) {
        if (osnapMode == AcDb::kOsModeEnd)
            snapPoints.append(corner(i));
        else if (osnapMode == AcDb::kOsModeMid)
            snapPoints.append(corner(i) + (corner(i + 1) - corner(i)) / 2.0);
    }
    return Acad::eOk;
}

Acad::ErrorStatus Slab::subExplode(AcDbVoidPtrArray& entities) const {
    for (std::size_t i = 0; i < m_corners.size(); ++i) {
        auto* const edge = new AcDbLine(corner(i), corner(i + 1));
        edge->setLayer(layerId());
        edge->setColorIndex(colorIndex());
        entities.append(static_cast<AcDbEntity*>(edge));
    }
    return Acad::eOk;
}

} // namespace structure
