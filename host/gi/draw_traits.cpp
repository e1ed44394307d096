#include "gi/draw_traits.h"

#include "db/database_core.h"

namespace embedded {

void RecordedTraits::setColor(const Adesk::UInt16 color) {
    values.colour = color;
    values.trueColour = AcCmEntityColor();
}

void RecordedTraits::setTrueColor(const AcCmEntityColor& color) {
    values.trueColour = color;
    if (!color.isByColor() && color.colorIndex() != AcCmEntityColor::kACInone)
        values.colour = static_cast<Adesk::UInt16>(color.colorIndex());
}

AcCmEntityColor RecordedTraits::trueColor() const {
    if (values.trueColour.isByColor())
        return values.trueColour;
    AcCmEntityColor colour;
    colour.setColorIndex(static_cast<Adesk::Int16>(values.colour));
    return colour;
}

Acad::ErrorStatus RecordedTraits::setupForEntity(AcDbObjectId id) {
    AcDbEntity* entity = nullptr;
    const Acad::ErrorStatus es = acdbOpenAcDbEntity(entity, id, AcDb::kForRead);
    if (es != Acad::eOk)
        return es;
    entity->setAttributes(this);
    return entity->close();
}

DrawTraits insideOf(const DrawTraits& reference, DrawTraits traits) {
    const DatabaseCore* core = coreOf(traits.layer.isNull() ? reference.layer : traits.layer);
    if (traits.layer.isNull() || (core != nullptr && traits.layer == core->roots.layerZero))
        traits.layer = reference.layer;
    if (traits.colour == AcCmEntityColor::kACIbyBlock && !traits.trueColour.isByColor()) {
        traits.colour = reference.colour;
        traits.trueColour = reference.trueColour;
    }
    if (core != nullptr && traits.lineType == core->roots.byBlockLinetype)
        traits.lineType = reference.lineType;
    if (traits.lineWeight == AcDb::kLnWtByBlock)
        traits.lineWeight = reference.lineWeight;
    return traits;
}

} // namespace embedded
