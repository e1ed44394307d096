// A load as points with values, for whoever exports it.

#include "base/assert.h"
#include "dbx/doc/system.h"
#include "dbx/doc/use_system.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_sampling.h"
#include "dbx/elem/load_visualization_data.h"
#include "orvcore/transaction_manager.h"
#include "orvshape/segmented_curve.h"

#include "dbmain.h"

namespace orv::elem {

namespace {

double distanceAlong(const LoadVertex& vertex, double length) {
    return vertex.distanceMode == kAbsoluteDistance ? vertex.position : length * vertex.position;
}

bool isThere(const ORV_SegmentedCurve* curve) { return curve != nullptr && !curve->isEmpty(); }

} // namespace

std::unique_ptr<ORV_SegmentedCurve> GenericLoad::getExportCurveForProjectedLoad() const {
    if (m_element.isNull() || !isProjected(m_type))
        return nullptr;
    ORV_CDBTransactionManager transaction(m_element.database(), false);
    AcDbObject* object = nullptr;
    transaction.getObject(object, m_element, AcDb::kForRead, false, false);
    const auto* const refCrv = dynamic_cast<const ORV_SegmentedCurve*>(object);
    ORV_ASSERT(refCrv);
    if (refCrv == nullptr || m_vertices.empty())
        return nullptr;
    const double length = detail::distancesOf(*refCrv).length();
    const double param1 = distanceAlong(m_vertices.front(), length);
    const double param2 = distanceAlong(m_vertices.back(), length);
    std::unique_ptr<ORV_SegmentedCurve> newCrv;
    if (refCrv->createCurve(param1, param2, newCrv) != Acad::eOk) {
        orv::detail::AssertSite("refCrv->createCurve(param1,param2,newCrv)", __FILE__, __LINE__);
        return nullptr;
    }
    return newCrv;
}

std::deque<GenericLoad::Vertex> GenericLoad::getVerticesForExport() {
    const UseSystem system(dynamic_cast<const AcDbEntity*>(owner()));
    ORV_ASSERT(system);
    if (!system || (m_distribution != kLineLoad && m_distribution != kAreaLoad))
        return {};
    auto* curve = dynamic_cast<ORV_SegmentedCurve*>(owner());
    std::unique_ptr<ORV_SegmentedCurve> tempCurveForProjectedLoads;
    if (m_distribution == kLineLoad && !m_element.isNull() && isProjected(m_type)) {
        tempCurveForProjectedLoads = getExportCurveForProjectedLoad();
        ORV_ASSERT(tempCurveForProjectedLoads.get());
        if (tempCurveForProjectedLoads != nullptr)
            curve = tempCurveForProjectedLoads.get();
    }
    if (!isThere(curve))
        curve = m_visCurve.get();
    if (!isThere(curve))
        return {};
    detail::LoadVisualizationData visData;
    visData.visCurve = curve;
    if (!prepare(system.get(), visData))
        return {};
    detail::sampleForExport(system.get(), visData);
    std::deque<Vertex> sampled;
    for (const auto& arrow : visData.vertices) {
        Vertex vertex;
        vertex.posSource = PS_POINT;
        vertex.point = arrow.point;
        vertex.value = arrow.value;
        sampled.push_back(vertex);
    }
    return sampled;
}

} // namespace orv::elem
