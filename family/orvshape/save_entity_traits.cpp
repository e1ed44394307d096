#include "orvshape/save_entity_traits.h"

namespace orv {

SaveEntityTraits::SaveEntityTraits(AcGiSubEntityTraits& traits)
    : m_traits(traits), m_colour(traits.color()), m_trueColour(traits.trueColor()), m_layer(traits.layerId()),
      m_lineType(traits.lineTypeId()), m_fill(traits.fillType()), m_weight(traits.lineWeight()),
      m_lineTypeScale(traits.lineTypeScale()), m_thickness(traits.thickness()) {}

SaveEntityTraits::~SaveEntityTraits() {
    // The two colours replace each other, so the one that held comes last.
    m_traits.setColor(m_colour);
    if (m_trueColour.isByColor())
        m_traits.setTrueColor(m_trueColour);
    m_traits.setLayer(m_layer);
    m_traits.setLineType(m_lineType);
    m_traits.setFillType(m_fill);
    m_traits.setLineWeight(m_weight);
    m_traits.setLineTypeScale(m_lineTypeScale);
    m_traits.setThickness(m_thickness);
}

} // namespace orv
