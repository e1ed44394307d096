#include "structure/beam.h"

#include "base/key_value_storage.h"
#include "orvcore/transaction_manager.h"
#include "structure/beam_general.h"
#include "structure/class_rows.h"
#include "structure/load.h"
#include "structure/load_connections.h"
#include "structure/node.h"

#include <boost/make_shared.hpp>

#include <cmath>
#include <vector>

namespace structure {

ORV_DEFINE_CLASS(Beam, kBeamRow)

namespace {

void moveNode(const AcDbObjectId& id, const AcGePoint3d& place) {
    if (id.isNull() || id.isErased())
        return;
    ORV_CDBTransactionManager manager(id.database(), false);
    AcDbObject* object = nullptr;
    if (manager.getObject(object, id, AcDb::kForRead, false, false) != Acad::eOk)
        return;
    Node* const node = Node::cast(object);
    // One that is in its place already is not written.
    if (node == nullptr || node->position().isEqualTo(place))
        return;
    if (manager.getObject(object, id, AcDb::kForWrite, false, false) == Acad::eOk)
        node->setPosition(place);
}

template <class Work>
void withLoad(const AcDbObjectId& id, Work work) {
    if (id.isNull() || id.isErased())
        return;
    ORV_CDBTransactionManager manager(id.database(), false);
    AcDbObject* object = nullptr;
    if (manager.getObject(object, id, AcDb::kForWrite, false, false) != Acad::eOk)
        return;
    if (Load* const load = Load::cast(object))
        work(*load);
}

} // namespace

Beam::Beam() = default;
Beam::~Beam() = default;

Beam::Beam(const orv::CurveSegment& segment) {
    append(segment);
    addUsualPlugins(orv::elem::kHardPointer, 0, boost::make_shared<BeamGeneral>());
}

AcGePoint3d Beam::labelPoint() const {
    AcGePoint3d point;
    getPointAtParam(getLength() / 2.0, point);
    return point;
}

AcGeVector3d Beam::labelDirection() const {
    AcGeVector3d direction;
    getFirstDeriv(getLength() / 2.0, direction);
    return direction.isZeroLength() ? AcGeVector3d::kXAxis : direction;
}

double Beam::roll() const {
    assertReadEnabled();
    return m_roll;
}

void Beam::setRoll(double roll) {
    assertWriteEnabled();
    m_roll = roll;
    recordGraphicsModified();
    if (const LoadConnections* const present = loads())
        for (const AcDbObjectId& id : *present)
            withLoad(id, [](Load& load) { load.turnWithBeam(); });
}

AcDbObjectId Beam::startNode() const {
    assertReadEnabled();
    return m_startNode;
}

AcDbObjectId Beam::endNode() const {
    assertReadEnabled();
    return m_endNode;
}

Acad::ErrorStatus Beam::connect(Node* start, Node* end) {
    for (const Node* const node : {start, end})
        if (node != nullptr && (database() == nullptr || node->database() != database()))
            return Acad::eWrongDatabase;
    Connections* const nodes = connections();
    if (nodes == nullptr)
        return Acad::eNotApplicable;
    assertWriteEnabled();
    letGo(m_startNode);
    letGo(m_endNode);
    nodes->removeAll();
    m_startNode = take(start);
    m_endNode = take(end);
    return Acad::eOk;
}

// Both sides know of each other.
AcDbObjectId Beam::take(Node* node) {
    if (node == nullptr)
        return AcDbObjectId();
    if (Connections* const nodes = connections())
        nodes->add(node->objectId());
    if (Connections* const beams = node->connections())
        beams->add(objectId());
    return node->objectId();
}

void Beam::letGo(const AcDbObjectId& id) {
    if (id.isNull() || id.isErased())
        return;
    ORV_CDBTransactionManager manager(id.database(), false);
    AcDbObject* object = nullptr;
    if (manager.getObject(object, id, AcDb::kForWrite, false, false) != Acad::eOk)
        return;
    Node* const node = Node::cast(object);
    Connections* const beams = node != nullptr ? node->connections() : nullptr;
    if (beams != nullptr)
        beams->remove(objectId());
}

LoadConnections* Beam::loads() const { return LoadConnections::of(*this); }

void Beam::takeLoad(const AcDbObjectId& load) {
    if (loads() == nullptr)
        addPlugin(boost::make_shared<LoadConnections>());
    loads()->add(load);
}

void Beam::letGoOfLoad(const AcDbObjectId& beam, const AcDbObjectId& load) {
    if (beam.isErased())
        return;
    ORV_CDBTransactionManager manager(beam.database(), false);
    AcDbObject* object = nullptr;
    if (manager.getObject(object, beam, AcDb::kForWrite, false, false) != Acad::eOk)
        return;
    const Beam* const holder = Beam::cast(object);
    if (holder != nullptr && holder->loads() != nullptr)
        holder->loads()->remove(load);
}

void Beam::layLoads() {
    const LoadConnections* const present = loads();
    if (present == nullptr)
        return;
    const std::vector<AcDbObjectId> ids(present->begin(), present->end());
    for (const AcDbObjectId& id : ids)
        withLoad(id, [this](Load& load) {
            if (load.beam() == objectId())
                load.layAlong(*this);
        });
}

// Which node stands at which end is filed beside the plugin's set, which has no order of its own. The set
// keeps them in the drawing: here soft pointers will do.
void Beam::writeOwn(AcDbDwgFiler& filer) const {
    ORV_ASSERT_STATUS(filer.writeInt32(kVersion));
    ORV_ASSERT_STATUS(filer.writeDouble(m_roll));
    ORV_ASSERT_STATUS(filer.writeSoftPointerId(m_startNode));
    ORV_ASSERT_STATUS(filer.writeSoftPointerId(m_endNode));
    ORV_ASSERT_STATUS(filer.writeUInt32(kMagic));
}

void Beam::readOwn(AcDbDwgFiler& filer) {
    Adesk::Int32 version = 0;
    ORV_ASSERT_STATUS(filer.readInt32(&version));
    if (version < 1 || version > kVersion)
        throw Acad::eMakeMeProxy;
    double roll = 0.0;
    ORV_ASSERT_STATUS(filer.readDouble(&roll));
    AcDbSoftPointerId startNode, endNode;
    ORV_ASSERT_STATUS(filer.readSoftPointerId(&startNode));
    ORV_ASSERT_STATUS(filer.readSoftPointerId(&endNode));
    Adesk::UInt32 magic = 0;
    ORV_ASSERT_STATUS(filer.readUInt32(&magic));
    if (magic != kMagic || !std::isfinite(roll))
        throw Acad::eMakeMeProxy;
    m_roll = roll;
    m_startNode = startNode;
    m_endNode = endNode;
}

bool Beam::onSave(orv::KeyValueStorage& storage) const {
    storage.set("beam/roll", m_roll);
    return true;
}

bool Beam::onLoad(const orv::KeyValueStorage& storage) {
    m_roll = storage.getValue("beam/roll", m_roll);
    return true;
}

void Beam::onPostClone() {
    Element::onPostClone();
    for (AcDbObjectId* const node : {&m_startNode, &m_endNode})
        if (!CopiedTogether::has(*node))
            node->setNull();
}

void Beam::onMoved() {
    AcGePoint3d start, end;
    if (getStartPoint(start) != Acad::eOk || getEndPoint(end) != Acad::eOk)
        return;
    moveNode(m_startNode, start);
    moveNode(m_endNode, end);
    layLoads();
}

Acad::ErrorStatus Beam::auditOwn() const { return isEmpty() ? Acad::eDegenerateGeometry : Acad::eOk; }

Acad::ErrorStatus Beam::subGetClassID(CLSID* classId) const {
    *classId = {0x6d1f4a20, 0x3c5e, 0x4b7a, {0x9e, 0x01, 0x53, 0x54, 0x52, 0x00, 0x00, 0x02}};
    return Acad::eOk;
}

} // namespace structure
