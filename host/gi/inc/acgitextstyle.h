#pragma once

#include "AcString.h"
#include "acadstrc.h"
#include "dbid.h"
#include "gepnt2d.h"

class AcGiWorldDraw;

// How a text is drawn: font, height, width, slant.
class AcGiTextStyle {
public:
    AcGiTextStyle() = default;
    AcGiTextStyle(const ACHAR* fontName, const ACHAR* bigFontName, double textSize, double xScale,
                  double obliqueAngle, double trackingPercent, Adesk::Boolean isBackward,
                  Adesk::Boolean isUpsideDown, Adesk::Boolean isVertical, Adesk::Boolean isOverlined,
                  Adesk::Boolean isUnderlined);

    double textSize() const { return m_textSize; }
    double xScale() const { return m_xScale; }
    // Radians.
    double obliquingAngle() const { return m_obliquing; }
    // 1: as the font has it.
    double trackingPercent() const { return m_tracking; }
    Adesk::Boolean isBackward() const { return m_backward; }
    Adesk::Boolean isUpsideDown() const { return m_upsideDown; }
    Adesk::Boolean isVertical() const { return m_vertical; }
    Adesk::Boolean isUnderlined() const { return m_underlined; }
    Adesk::Boolean isOverlined() const { return m_overlined; }
    const ACHAR* fileName() const { return m_fontName.kACharPtr(); }
    const ACHAR* bigFontFileName() const { return m_bigFontName.kACharPtr(); }

    void setTextSize(double size) { m_textSize = size; }
    void setXScale(double scale) { m_xScale = scale; }
    void setObliquingAngle(double angle) { m_obliquing = angle; }
    void setTrackingPercent(double tracking) { m_tracking = tracking; }
    void setBackward(Adesk::Boolean backward) { m_backward = backward; }
    void setUpsideDown(Adesk::Boolean upsideDown) { m_upsideDown = upsideDown; }
    void setVertical(Adesk::Boolean vertical) { m_vertical = vertical; }
    void setUnderlined(Adesk::Boolean underlined) { m_underlined = underlined; }
    void setOverlined(Adesk::Boolean overlined) { m_overlined = overlined; }
    void setFileName(const ACHAR* name) { m_fontName = name; }
    void setBigFontFileName(const ACHAR* name) { m_bigFontName = name; }

    // Width and height of `length` characters (-1: all) in drawing units: the width that the font's letters
    // take, with the room behind the last one, and the height of capital letters. Without `raw`, %% codes
    // count as what they stand for. A font that is not installed counts as DejaVu Sans.
    AcGePoint2d extents(const ACHAR* text, Adesk::Boolean penUps, int length, Adesk::Boolean raw,
                        AcGiWorldDraw* context = nullptr) const;

private:
    AcString m_fontName;
    AcString m_bigFontName;
    double m_textSize = 1.0;
    double m_xScale = 1.0;
    double m_obliquing = 0.0;
    double m_tracking = 1.0;
    Adesk::Boolean m_backward = false;
    Adesk::Boolean m_upsideDown = false;
    Adesk::Boolean m_vertical = false;
    Adesk::Boolean m_underlined = false;
    Adesk::Boolean m_overlined = false;
};

// The settings of a text style into an AcGiTextStyle. Statuses of opening.
Acad::ErrorStatus fromAcDbTextStyle(AcGiTextStyle& style, const AcDbObjectId& styleId);
