#include "acgitextstyle.h"

#include "acgi.h"
#include "dbsymtb.h"
#include "gi/text_metrics.h"

#include <cwchar>

AcGiTextStyle::AcGiTextStyle(const ACHAR* fontName, const ACHAR* bigFontName, double textSize, double xScale,
                             double obliqueAngle, double trackingPercent, Adesk::Boolean isBackward,
                             Adesk::Boolean isUpsideDown, Adesk::Boolean isVertical,
                             Adesk::Boolean isOverlined, Adesk::Boolean isUnderlined)
    : m_textSize(textSize), m_xScale(xScale), m_obliquing(obliqueAngle), m_tracking(trackingPercent),
      m_backward(isBackward), m_upsideDown(isUpsideDown), m_vertical(isVertical), m_underlined(isUnderlined),
      m_overlined(isOverlined) {
    m_fontName = fontName;
    m_bigFontName = bigFontName;
}

AcGePoint2d AcGiTextStyle::extents(const ACHAR* text, Adesk::Boolean, int length, Adesk::Boolean raw,
                                   AcGiWorldDraw*) const {
    std::wstring letters = text != nullptr ? text : L"";
    if (length >= 0 && static_cast<std::size_t>(length) < letters.size())
        letters.resize(static_cast<std::size_t>(length));
    if (!raw)
        letters = embedded::withoutTextCodes(letters);
    if (letters.empty())
        return AcGePoint2d::kOrigin;
    return {embedded::textWidth(letters, m_textSize, m_xScale, embedded::settingOf(*this)), m_textSize};
}

namespace {

// The bits of a text style's flags.
constexpr Adesk::UInt8 kBackwardFlag = 2;
constexpr Adesk::UInt8 kUpsideDownFlag = 4;

} // namespace

Acad::ErrorStatus fromAcDbTextStyle(AcGiTextStyle& style, const AcDbObjectId& styleId) {
    AcDbTextStyleTableRecord* record = nullptr;
    const Acad::ErrorStatus es = acdbOpenObject(record, styleId, AcDb::kForRead);
    if (es != Acad::eOk)
        return es;
    const ACHAR* font = nullptr;
    const ACHAR* bigFont = nullptr;
    record->fileName(font);
    record->bigFontFileName(bigFont);
    style.setFileName(font);
    style.setBigFontFileName(bigFont);
    if (record->textSize() > 0.0)
        style.setTextSize(record->textSize());
    style.setXScale(record->xScale());
    style.setObliquingAngle(record->obliquingAngle());
    style.setVertical(record->isVertical());
    style.setBackward((record->flagBits() & kBackwardFlag) != 0);
    style.setUpsideDown((record->flagBits() & kUpsideDownFlag) != 0);
    record->close();
    return es;
}
