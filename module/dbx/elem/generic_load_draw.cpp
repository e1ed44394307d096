// How a load draws itself.

#include "base/assert.h"
#include "dbx/doc/system.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_draw.h"
#include "dbx/elem/load_sampling.h"
#include "dbx/elem/load_settings.h"
#include "dbx/elem/load_visualization_data.h"
#include "orvshape/acad_draw.h"
#include "orvshape/arrow_head.h"
#include "orvshape/colours.h"
#include "orvshape/readable_text.h"
#include "orvshape/segmented_curve.h"

#include <boost/make_shared.hpp>

#include <algorithm>

namespace orv::elem {

namespace {

constexpr double kLoadShade = 0.9;

Adesk::UInt8 toByte(double part) {
    return static_cast<Adesk::UInt8>(std::min(std::max(part, 0.0), 1.0) * 255.0);
}

AcCmEntityColor colourOf(int type) {
    if (isThermal(type))
        return {27, 186, 0};
    const ColourRGBA shade = Colours::Red * kLoadShade;
    return {toByte(shade.red), toByte(shade.green), toByte(shade.blue)};
}

} // namespace

bool GenericLoad::isHidden() const { return isLocal(m_type) && m_element.isNull(); }

AcGeVector3d GenericLoad::getDirection(const System& system) const {
    return getDirectionFor(system, m_type, getElementXform());
}

ORV_SegmentedCurve* GenericLoad::getDrawnCurve() const {
    auto* const ownerCurve = dynamic_cast<ORV_SegmentedCurve*>(owner());
    if (ownerCurve != nullptr && !ownerCurve->isEmpty())
        return ownerCurve;
    return m_visCurve && !m_visCurve->isEmpty() ? m_visCurve.get() : nullptr;
}

// What was loaded anew since the last drawing has another curve, and the picture's one may be gone.
bool GenericLoad::hasPictureOfCurve() const {
    return m_vis && m_vis->visCurve != nullptr &&
           (m_vis->visCurve == m_visCurve.get() ||
            m_vis->visCurve == dynamic_cast<ORV_SegmentedCurve*>(owner()));
}

bool GenericLoad::prepare(System& system, detail::LoadVisualizationData& visData) {
    if (!detail::prepare(system, *this, visData))
        return false;
    setupInterpolationData(system, visData);
    return true;
}

void GenericLoad::onPreWorldDraw(const AcDbEntity&, AcGiWorldDraw& wd) {
    wd.subEntityTraits().setTrueColor(colourOf(m_type));
}

void GenericLoad::onPreViewportDraw(const AcDbEntity&, AcGiViewportDraw& vd) {
    vd.subEntityTraits().setTrueColor(colourOf(m_type));
}

void GenericLoad::onWorldDraw(AcadWorldDraw& wd, System& system) {
    ORV_ASSERT(owner());
    if (m_distribution == kPointLoad)
        drawPointStem(wd, system);
    else if (m_distribution == kLineLoad || m_distribution == kAreaLoad)
        drawAlongCurve(wd, system);
}

void GenericLoad::drawPointStem(AcadWorldDraw& wd, System& system) {
    const std::deque<Vertex>& vertices = m_vertices;
    ORV_ASSERT(vertices.size() == 1)(vertices.size());
    if (vertices.empty())
        return;
    if (m_class == kLoadKindDashed)
        wd.lineType(L"STRICHLINIE");
    const AcGeVector3d direction = getDirection(system);
    const double value = scaleLoadValueForDisplay(system, m_type, vertices.front().value);
    if (!isHidden())
        drawPointLoad(wd, system, -direction, vertices.front().point, value);
}

void GenericLoad::drawAlongCurve(AcadWorldDraw& wd, System& system) {
    ORV_SegmentedCurve* const visCurve = getDrawnCurve();
    if (visCurve == nullptr)
        return;
    if (!m_vis) {
        m_vis = boost::make_shared<detail::LoadVisualizationData>();
        m_vis->owned = true;
    }
    m_vis->arrowLength = system.visSettings().getSize(kArrowHeadSize);
    m_vis->visCurve = visCurve;
    if (m_distribution == kAreaLoad) {
        const std::deque<Vertex>& vertices = m_vertices;
        ORV_ASSERT(vertices.size() >= 3)(vertices.size())(visCurve->getSegmentCount());
    }
    if (m_refreshGraphics) {
        if (prepare(system, *m_vis)) {
            detail::sampleAlongCurve(system, *m_vis);
            postprocessInterpolationData(*m_vis);
        }
        m_refreshGraphics = false;
    }
    if (isHidden() || detail::drawLoadLines(wd, *m_vis) || m_distribution != kAreaLoad)
        return;
    AcGeVector3d normal;
    if (visCurve->getNormalFromSegments(normal))
        drawHatch(wd, system, *visCurve, normal);
}

void GenericLoad::onViewportDraw(AcadViewportDraw& vd, System& system) {
    if (!isHidden() && m_vis)
        detail::drawLoadArrowHeads(vd, *m_vis);
    if (m_distribution != kPointLoad)
        return;
    const AcGeVector3d direction = getDirection(system);
    vd.textSize(system.visSettings().getSize(kLoadTextSize));
    const std::deque<Vertex>& vertices = m_vertices;
    ORV_ASSERT(vertices.size() == 1)(vertices.size());
    if (!isHidden()) {
        const Vertex& vertex = vertices.at(0);
        const double f = vertices.size() == 1 && vertex.value < 0.0 ? -1.0 : 1.0;
        const double length = getArrowHeadLen(system, scaleLoadValueForDisplay(system, m_type, vertex.value));
        drawArrowHead2D(vd, vertex.point, -direction * f, length, isMoment(m_type), true);
    }
    const std::wstring text = getDisplayText(0);
    if (text.empty())
        return;
    const Vertex& vertex = vertices.at(0);
    const double value = scaleLoadValueForDisplay(system, m_type, vertex.value);
    drawOrientedReadableText(vd, vertex.point - direction * value,
                             vertex.value > 0.0 ? direction : -direction, text);
}

} // namespace orv::elem
