#pragma once

#include "acgi.h"
#include "orvshape/export.h"

namespace orv {

// Puts the traits back as they were when it was made: colour, true colour, layer, line type and its scale,
// fill, weight and thickness. The selection marker cannot be asked for and stays as it is. The traits must
// outlive it.
class ORVSHAPE_API SaveEntityTraits {
public:
    explicit SaveEntityTraits(AcGiSubEntityTraits& traits);
    ~SaveEntityTraits();

    SaveEntityTraits(const SaveEntityTraits&) = delete;
    SaveEntityTraits& operator=(const SaveEntityTraits&) = delete;

private:
    AcGiSubEntityTraits& m_traits;
    Adesk::UInt16 m_colour;
    AcCmEntityColor m_trueColour;
    AcDbObjectId m_layer;
    AcDbObjectId m_lineType;
    AcGiFillType m_fill;
    AcDb::LineWeight m_weight;
    double m_lineTypeScale;
    double m_thickness;
};

} // namespace orv
