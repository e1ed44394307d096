#include "orvshape/readable_text.h"

#include <cmath>

namespace orv {

namespace {

// Of a direction of length 1 that is seen shorter than this nothing tells any more where it leads.
constexpr double kLeastSeen = 1.0e-3;
// How far from upright rounding may have taken a direction that is upright.
constexpr double kUpright = 1.0e-6;

enum Attachment { kMiddleLeft = 4, kMiddleCentre = 5, kMiddleRight = 6 };

class AttachmentScope {
public:
    AttachmentScope(AcadCommonDraw& draw, Attachment attachment)
        : m_draw(draw), m_attachment(draw.textAttachment()) {
        draw.textAttachment(attachment);
    }
    ~AttachmentScope() { m_draw.textAttachment(m_attachment); }

    AttachmentScope(const AttachmentScope&) = delete;
    AttachmentScope& operator=(const AttachmentScope&) = delete;

private:
    AcadCommonDraw& m_draw;
    int m_attachment;
};

} // namespace

bool drawOrientedReadableText(AcadViewportDraw& draw, const AcGePoint3d& position,
                              const AcGeVector3d& direction, const std::wstring& text) {
    const AcGeVector3d viewDir = draw.viewDir();
    // Inside of a mirrored block the way out of the text is away from the viewer.
    const AcGeVector3d normal = draw.viewRight().crossProduct(draw.viewUp());
    // The arrow leads one way, its text lies the other way.
    const AcGeVector3d whole = -direction.normal();
    const AcGeVector3d seen = whole - viewDir * whole.dotProduct(viewDir);
    if (direction.isZeroLength() || !(seen.length() > kLeastSeen)) {
        const AttachmentScope scope(draw, kMiddleCentre);
        return draw.text(position, text, draw.viewRight(), normal);
    }
    const AcGeVector3d away = seen.normal();
    const double toRight = away.dotProduct(draw.viewRight());
    const bool isUpright = std::fabs(toRight) <= kUpright;
    const bool isTurned = isUpright ? away.dotProduct(draw.viewUp()) < 0.0 : toRight < 0.0;
    const AcGePoint3d begin = position + away * (draw.textSize() / 2.0);
    const AttachmentScope scope(draw, isTurned ? kMiddleRight : kMiddleLeft);
    return draw.text(begin, text, isTurned ? -away : away, normal);
}

} // namespace orv
