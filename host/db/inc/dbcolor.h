#pragma once

#include "acadstrc.h"
#include "adesk.h"

// A colour: by layer, by block, by the drawing's index, or as red, green and blue.
class AcCmEntityColor {
public:
    enum ColorMethod {
        kByLayer = 0xC0,
        kByBlock = 0xC1,
        kByColor = 0xC2,
        kByACI = 0xC3,
        kByPen = 0xC4,
        kForeground = 0xC5,
        kLayerOff = 0xC6,
        kLayerFrozen = 0xC7,
        kNone = 0xC8
    };
    enum ACIcolorMethod {
        kACIbyBlock = 0,
        kACIforeground = 7,
        kACIbyLayer = 256,
        kACIclear = 0,
        kACInone = 257
    };

    constexpr AcCmEntityColor() = default;
    explicit constexpr AcCmEntityColor(ColorMethod method) : m_method(method) {}
    constexpr AcCmEntityColor(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue)
        : m_method(kByColor), m_red(red), m_green(green), m_blue(blue) {}

    ColorMethod colorMethod() const { return m_method; }
    bool isByColor() const { return m_method == kByColor; }
    bool isByLayer() const { return m_method == kByLayer; }
    bool isByBlock() const { return m_method == kByBlock; }
    bool isByACI() const { return m_method == kByACI; }

    // 0 by block, 1 to 255, 256 by layer; 257 for what is no index.
    Adesk::Int16 colorIndex() const {
        if (m_method == kByACI)
            return m_index;
        return m_method == kByLayer ? kACIbyLayer : m_method == kByBlock ? kACIbyBlock : kACInone;
    }
    // eInvalidInput for a number outside of 0 to 256.
    Acad::ErrorStatus setColorIndex(Adesk::Int16 index) {
        if (index < 0 || index > kACIbyLayer)
            return Acad::eInvalidInput;
        *this = AcCmEntityColor(index == kACIbyLayer ? kByLayer : index == kACIbyBlock ? kByBlock : kByACI);
        m_index = index;
        return Acad::eOk;
    }

    Adesk::UInt8 red() const { return m_red; }
    Adesk::UInt8 green() const { return m_green; }
    Adesk::UInt8 blue() const { return m_blue; }
    Acad::ErrorStatus setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
        *this = AcCmEntityColor(red, green, blue);
        return Acad::eOk;
    }

    bool operator==(const AcCmEntityColor& other) const {
        return m_method == other.m_method && m_index == other.m_index && m_red == other.m_red &&
               m_green == other.m_green && m_blue == other.m_blue;
    }
    bool operator!=(const AcCmEntityColor& other) const { return !(*this == other); }

private:
    ColorMethod m_method = kByLayer;
    Adesk::Int16 m_index = 0;
    Adesk::UInt8 m_red = 0;
    Adesk::UInt8 m_green = 0;
    Adesk::UInt8 m_blue = 0;
};
