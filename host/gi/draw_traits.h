#pragma once

#include "embedded/display_list.h"

namespace embedded {

// The traits that count for what is drawn next.
class RecordedTraits final : public AcGiDrawableTraits {
public:
    void setColor(const Adesk::UInt16 color) override;
    void setTrueColor(const AcCmEntityColor& color) override;
    void setLayer(const AcDbObjectId layerId) override { values.layer = layerId; }
    void setLineType(const AcDbObjectId linetypeId) override { values.lineType = linetypeId; }
    void setSelectionMarker(const Adesk::GsMarker markerId) override { values.marker = markerId; }
    void setFillType(const AcGiFillType fillType) override { values.fill = fillType; }
    void setLineWeight(const AcDb::LineWeight weight) override { values.lineWeight = weight; }
    void setLineTypeScale(double scale) override { values.lineTypeScale = scale; }
    void setThickness(double thickness) override { values.thickness = thickness; }

    Adesk::UInt16 color() const override { return values.colour; }
    AcCmEntityColor trueColor() const override;
    AcDbObjectId layerId() const override { return values.layer; }
    AcDbObjectId lineTypeId() const override { return values.lineType; }
    AcGiFillType fillType() const override { return values.fill; }
    AcDb::LineWeight lineWeight() const override { return values.lineWeight; }
    double lineTypeScale() const override { return values.lineTypeScale; }
    double thickness() const override { return values.thickness; }

    Acad::ErrorStatus setupForEntity(AcDbObjectId id) override;

    DrawTraits values;
};

// What something inside of a block takes from the block's reference: all that is by block, and the layer of
// what is on layer 0 or on none.
DrawTraits insideOf(const DrawTraits& reference, DrawTraits traits);

} // namespace embedded
