#include "structure/load.h"

#include "dbx/doc/system.h"
#include "dbx/elem/generic_load.h"
#include "orvcore/transaction_manager.h"
#include "structure/beam.h"
#include "structure/beam_load.h"
#include "structure/class_rows.h"
#include "structure/free_load.h"
#include "structure/load_connections.h"
#include "structure/load_curve.h"

#include <boost/make_shared.hpp>

#include <algorithm>

namespace structure {

ORV_DEFINE_CLASS(Load, kLoadRow)

using orv::elem::GenericLoad;
using orv::elem::LoadVertex;

namespace {

// The property that has the name which stands in front of a load's texts.
constexpr unsigned int kLoadNameProperty = 30001;

// Where the load pushes: its values count against the direction of its type where they are below 0.
AcGeVector3d senseOf(const GenericLoad& load, const orv::System& system) {
    double sum = 0.0;
    for (const LoadVertex& vertex : load.getVertices())
        sum += vertex.value;
    const AcGeVector3d direction = orv::elem::getDirectionFor(system, load.getType(), boost::none);
    return sum < 0.0 ? -direction : direction;
}

double distanceOf(const LoadVertex& vertex, double length) {
    const double distance =
        vertex.distanceMode == orv::elem::kAbsoluteDistance ? vertex.position : vertex.position * length;
    return std::clamp(distance, 0.0, length);
}

} // namespace

Load::Load() = default;
Load::~Load() = default;

Load::Load(const boost::shared_ptr<GenericLoad>& plugin, orv::elem::LoadDistribution distribution,
           const LoadProperties& properties) {
    const auto general = boost::make_shared<General>();
    addPlugin(general);
    general->createBIMID();
    addPlugin(plugin);
    plugin->setType(properties.type);
    plugin->setClass(properties.kind);
    plugin->setDistribution(distribution);
    plugin->setLoadCases(properties.cases);
    if (auto* const shaped = dynamic_cast<ShapedLoad*>(plugin.get())) {
        shaped->setShape(properties.shape);
        shaped->setUnit(properties.unit);
    }
    if (!properties.name.empty())
        setProperties().add(kLoadNameProperty, properties.name);
}

std::unique_ptr<Load> Load::atPoint(const AcGePoint3d& point, const LoadProperties& properties) {
    if (properties.values.empty())
        return nullptr;
    std::unique_ptr<Load> load(new Load(boost::make_shared<FreeLoad>(), orv::elem::kPointLoad, properties));
    LoadVertex vertex;
    vertex.point = point;
    vertex.value = properties.values.front();
    load->plugin()->setVertices({vertex});
    return load;
}

std::unique_ptr<Load> Load::alongLine(const std::vector<AcGePoint3d>& points,
                                      const LoadProperties& properties) {
    std::unique_ptr<Load> load(new Load(boost::make_shared<FreeLoad>(), orv::elem::kLineLoad, properties));
    for (std::size_t i = 1; i < points.size(); ++i) {
        orv::CurveSegment piece;
        if (!orv::CurveSegment::line(points[i - 1], points[i], piece) || load->append(piece) != Acad::eOk)
            return nullptr;
    }
    if (load->isEmpty() || properties.values.empty())
        return nullptr;
    load->plugin()->setVertices(verticesAlong(*load, properties.shape, properties.values));
    takePointsFrom(*load, *load->plugin());
    return load;
}

std::unique_ptr<Load> Load::overArea(const std::vector<AcGePoint3d>& corners,
                                     const LoadProperties& properties) {
    if (corners.size() < 3 || properties.values.empty())
        return nullptr;
    std::unique_ptr<Load> load(new Load(boost::make_shared<FreeLoad>(), orv::elem::kAreaLoad, properties));
    for (std::size_t i = 0; i < corners.size(); ++i) {
        orv::CurveSegment piece;
        if (!orv::CurveSegment::line(corners[i], corners[(i + 1) % corners.size()], piece) ||
            load->append(piece) != Acad::eOk)
            return nullptr;
    }
    std::vector<double> values = properties.values;
    values.resize(corners.size(), values.back());
    load->spreadVertices(0.0, 1.0, values);
    takePointsFrom(*load, *load->plugin());
    return load;
}

std::unique_ptr<Load> Load::forBeam(double from, double to, const LoadProperties& properties) {
    if (properties.values.empty())
        return nullptr;
    const bool isPoint = properties.values.size() == 1;
    std::unique_ptr<Load> load(new Load(boost::make_shared<BeamLoad>(),
                                        isPoint ? orv::elem::kPointLoad : orv::elem::kLineLoad, properties));
    load->spreadVertices(from, to, properties.values);
    return load;
}

void Load::spreadVertices(double from, double to, const std::vector<double>& values) {
    std::deque<LoadVertex> vertices;
    const double steps = values.size() > 1 ? static_cast<double>(values.size() - 1) : 1.0;
    for (const double value : values) {
        LoadVertex vertex;
        vertex.position = from + (to - from) * static_cast<double>(vertices.size()) / steps;
        vertex.value = value;
        vertices.push_back(vertex);
    }
    plugin()->setVertices(vertices);
}

AcGePoint3d Load::labelPoint() const {
    AcGePoint3d point = this->point();
    if (!isEmpty())
        getPointAtParam(getLength() / 2.0, point);
    return point;
}

GenericLoad* Load::plugin() const {
    for (const auto& one : getConstPluginIterator())
        if (auto* const load = dynamic_cast<GenericLoad*>(one.get()))
            return load;
    return nullptr;
}

BeamLoad* Load::onBeam() const { return dynamic_cast<BeamLoad*>(plugin()); }

AcDbObjectId Load::beam() const {
    const BeamLoad* const load = onBeam();
    return load != nullptr ? load->getElement() : AcDbObjectId();
}

bool Load::isPoint() const {
    const GenericLoad* const load = plugin();
    return load != nullptr && load->getDistribution() == orv::elem::kPointLoad;
}

AcGePoint3d Load::point() const {
    const GenericLoad* const load = plugin();
    return load != nullptr && load->numVertices() != 0 ? load->getVertices().front().point : AcGePoint3d();
}

void Load::movePoint(const AcGeVector3d& offset) {
    GenericLoad* const load = plugin();
    if (load != nullptr && load->numVertices() != 0)
        load->getVerticesForWrite().front().point += offset;
}

Acad::ErrorStatus Load::attachTo(Beam& beam) {
    if (database() == nullptr || beam.database() != database())
        return Acad::eWrongDatabase;
    BeamLoad* const load = onBeam();
    if (load == nullptr)
        return Acad::eNotApplicable;
    assertWriteEnabled();
    if (!load->getElement().isNull() && load->getElement() != beam.objectId())
        Beam::letGoOfLoad(load->getElement(), objectId());
    load->standOn(beam.objectId());
    beam.takeLoad(objectId());
    layAlong(beam);
    return Acad::eOk;
}

void Load::layAlong(const Beam& beam) {
    GenericLoad* const load = plugin();
    if (load == nullptr || load->numVertices() == 0 || beam.isEmpty())
        return;
    const double length = beam.getLength();
    const double from = distanceOf(load->getVertices().front(), length);
    if (load->getDistribution() == orv::elem::kPointLoad)
        layPoint(beam, from);
    else
        layCurve(beam, from, distanceOf(load->getVertices().back(), length));
    if (orv::elem::isLocal(load->getType()))
        turnWithBeam();
}

void Load::turnWithBeam() {
    if (GenericLoad* const load = plugin())
        load->getVerticesForWrite();
    recordGraphicsModified(true);
}

void Load::layPoint(const Beam& beam, double distance) {
    AcGePoint3d place;
    if (beam.getPointAtDist(distance, place) != Acad::eOk)
        return;
    if (!place.isEqualTo(point())) {
        movePoint(place - point());
        recordGraphicsModified(true);
    }
}

void Load::layCurve(const Beam& beam, double from, double to) {
    std::unique_ptr<ORV_SegmentedCurve> part;
    if (beam.createCurve(from, to, part) != Acad::eOk)
        return;
    GenericLoad* const load = plugin();
    CurvePieces segments = segmentsOf(*part);
    const orv::System* const system = orv::elem::isProjected(load->getType()) ? findSystem() : nullptr;
    if (system != nullptr) {
        const CurvePieces across = projectedAlong(senseOf(*load, *system), segments);
        if (!across.empty())
            segments = across;
    }
    if (!isSameCurve(segments, segmentsOf(*this)) && setSegments(segments) == Acad::eOk) {
        load->requestRefreshGraphics();
        recordGraphicsModified(true);
    }
    takePointsFrom(*this, *load);
}

void Load::writeOwn(AcDbDwgFiler& filer) const {
    ORV_ASSERT_STATUS(filer.writeInt32(kVersion));
    ORV_ASSERT_STATUS(filer.writeUInt32(kMagic));
}

void Load::readOwn(AcDbDwgFiler& filer) {
    Adesk::Int32 version = 0;
    ORV_ASSERT_STATUS(filer.readInt32(&version));
    if (version < 1 || version > kVersion)
        throw Acad::eMakeMeProxy;
    Adesk::UInt32 magic = 0;
    ORV_ASSERT_STATUS(filer.readUInt32(&magic));
    if (magic != kMagic)
        throw Acad::eMakeMeProxy;
}

// The vertices go with it by the plugin's own hand.
Acad::ErrorStatus Load::transformOwn(const AcGeMatrix3d& xform) {
    return isEmpty() ? Acad::eOk : ElementOf::transformOwn(xform);
}

void Load::drawOwn(AcGiWorldDraw& draw) {
    if (!isEmpty() && beam().isNull())
        ElementOf::drawOwn(draw);
}

Acad::ErrorStatus Load::auditOwn() const {
    return isEmpty() && !isPoint() ? Acad::eDegenerateGeometry : Acad::eOk;
}

Acad::ErrorStatus Load::ownGripPoints(AcGePoint3dArray& points, AcDbIntArray& snaps,
                                      AcDbIntArray& geomIds) const {
    if (!isPoint())
        return ElementOf::ownGripPoints(points, snaps, geomIds);
    points.append(point());
    return Acad::eOk;
}

Acad::ErrorStatus Load::moveOwnGripPoints(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!isPoint())
        return ElementOf::moveOwnGripPoints(indices, offset);
    for (int index : indices)
        if (index != 0)
            return Acad::eInvalidIndex;
    if (!indices.isEmpty())
        movePoint(offset);
    return Acad::eOk;
}

Acad::ErrorStatus Load::ownGrips(AcDbGripDataPtrArray& grips, double unitSize, int gripSize,
                                 const AcGeVector3d& viewDirection, int flags) const {
    if (!isPoint())
        return ElementOf::ownGrips(grips, unitSize, gripSize, viewDirection, flags);
    orv::GripManager::ScopedCreator creator(*this, grips);
    creator.createPointGrip(
        point(),
        [](AcDbEntity& entity, const AcGeVector3d& offset) {
            if (Load* const load = Load::cast(&entity))
                load->movePoint(offset);
        },
        L"Load");
    return Acad::eOk;
}

Acad::ErrorStatus Load::moveOwnGrips(const AcDbVoidPtrArray& appData, const AcGeVector3d& offset, int flags) {
    if (!isPoint())
        return ElementOf::moveOwnGrips(appData, offset, flags);
    AcDbVoidPtrArray mine, others;
    orv::GripManager::filterMyAppData(database(), appData, mine, others);
    orv::GripManager::onMove(*this, mine, offset);
    return Acad::eOk;
}

void Load::onPostClone() {
    Element::onPostClone();
    BeamLoad* const load = onBeam();
    if (load != nullptr && !CopiedTogether::has(load->getElement()))
        load->standOn(AcDbObjectId());
}

void Load::onMoved() {
    const AcDbObjectId id = beam();
    if (id.isNull() || id.isErased())
        return;
    ORV_CDBTransactionManager manager(id.database(), false);
    AcDbObject* object = nullptr;
    if (manager.getObject(object, id, AcDb::kForRead, false, false) != Acad::eOk)
        return;
    if (const Beam* const holder = Beam::cast(object))
        layAlong(*holder);
}

Acad::ErrorStatus Load::subGetClassID(CLSID* classId) const {
    *classId = {0x6d1f4a20, 0x3c5e, 0x4b7a, {0x9e, 0x01, 0x53, 0x54, 0x52, 0x00, 0x00, 0x04}};
    return Acad::eOk;
}

Acad::ErrorStatus Load::subGetGeomExtents(AcDbExtents& extents) const {
    return isPoint() ? extents.set(point(), point()) : ElementOf::subGetGeomExtents(extents);
}

Acad::ErrorStatus Load::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                          const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                          const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                          AcDbIntArray& geomIds) const {
    if (!isPoint())
        return ElementOf::subGetOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform,
                                            snapPoints, geomIds);
    if (osnapMode == AcDb::kOsModeNode || osnapMode == AcDb::kOsModeNear)
        snapPoints.append(point());
    return Acad::eOk;
}

} // namespace structure
