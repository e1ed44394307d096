// The texts beside a load's arrows.

#include "arx/types.h"
#include "base/assert.h"
#include "dbx/doc/system.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_settings.h"
#include "dbx/elem/load_visualization_data.h"
#include "orvshape/acad_draw.h"
#include "orvshape/segmented_curve.h"

#include <utility>

namespace orv::elem {

namespace {

constexpr double kDotOfText = 0.1; // the dot's radius by the height of letters

GenericLoad::AttachmentCallback& attachmentCallback() {
    static GenericLoad::AttachmentCallback s_callback;
    return s_callback;
}

// Fills what is drawn while it lives.
class ScopedFill {
public:
    explicit ScopedFill(AcGiSubEntityTraits& traits) : m_traits(traits), m_before(traits.fillType()) {
        m_traits.setFillType(kAcGiFillAlways);
    }
    ~ScopedFill() { m_traits.setFillType(m_before); }
    ScopedFill(const ScopedFill&) = delete;
    ScopedFill& operator=(const ScopedFill&) = delete;

private:
    AcGiSubEntityTraits& m_traits;
    const AcGiFillType m_before;
};

} // namespace

void GenericLoad::setAttachmentCallback(AttachmentCallback callback) {
    attachmentCallback() = std::move(callback);
}

std::wstring GenericLoad::getDisplayText(int index) const {
    std::wstring text;
    if (owner() != nullptr)
        if (const auto name = owner()->getProperties().getValueNotThrow<std::wstring>(kElementNameKey))
            text = name->empty() ? L"" : *name + L":";
    return text + getTextAt(index);
}

struct GenericLoad::VertexText {
    std::wstring text;
    double height = 0.0;
    AcGeVector3d direction;         // of the load
    AcGePoint3d point;              // on the curve or in the area
    double value = 0.0;             // there
    bool isAttachmentAsked = false; // else it is centred
};

void GenericLoad::drawVertexText(AcadViewportDraw& vd, const VertexText& shown) const {
    const double away = shown.value * m_vis->scale;
    const AcGePoint3d tail = isHidden() ? shown.point : shown.point - shown.direction * away;
    const AcGeVector3d viewDir = vd.viewDir();
    {
        const ScopedFill filled(vd.subEntityTraits());
        vd.circle(tail, shown.height * kDotOfText, viewDir);
    }
    // A copy, since what is called may set another one.
    const AttachmentCallback callback = shown.isAttachmentAsked ? attachmentCallback() : AttachmentCallback();
    vd.textAttachment(callback ? callback(shown.direction) : AcDbMText::kMiddleCenter);
    const double beyondTail = shown.value < 0.0 ? -shown.height : shown.height;
    vd.text(tail - shown.direction * beyondTail, shown.text, vd.viewRight(), viewDir);
}

void GenericLoad::_draw_lineload_text_at(AcadViewportDraw& vd, System& system, double dist,
                                         unsigned int vertexIndex) {
    ORV_ASSERT(vertexIndex < m_vertices.size());
    if (vertexIndex >= m_vertices.size() || !hasPictureOfCurve())
        return;
    VertexText shown;
    shown.direction = getDirection(system);
    shown.height = system.visSettings().getSize(kLoadTextSize);
    vd.textSize(shown.height);
    shown.text = getDisplayText(static_cast<int>(vertexIndex));
    if (shown.text.empty())
        return;
    shown.value = m_vis->getValueAtDistFn(dist);
    AcGePoint3d pt;
    checkErrorStatus(m_vis->visCurve->getPointAtDist(dist, pt), Acad::eOk,
                     "m_vis->visCurve->getPointAtDist(dist,pt)", __FILE__, __LINE__);
    shown.point = pt;
    shown.isAttachmentAsked = true;
    drawVertexText(vd, shown);
}

void GenericLoad::_draw_areaload_text_at(AcadViewportDraw& vd, System& system, const AcGePoint3d& point,
                                         unsigned int vertexIndex, const std::wstring& prefix) {
    ORV_ASSERT(vertexIndex < m_vertices.size());
    if (vertexIndex >= m_vertices.size() || !hasPictureOfCurve())
        return;
    VertexText shown;
    shown.direction = getDirection(system);
    shown.height = system.visSettings().getSize(kLoadTextSize);
    vd.textSize(shown.height);
    shown.text = prefix + getDisplayText(static_cast<int>(vertexIndex));
    if (shown.text.empty())
        return;
    shown.value = m_vis->getValueAtPosFn(point);
    shown.point = point;
    drawVertexText(vd, shown);
}

} // namespace orv::elem
