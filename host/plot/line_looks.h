#pragma once

#include "embedded/plot.h"
#include "plot/colour_table.h"

#include <map>
#include <vector>

namespace embedded {

// How a primitive is drawn, on the page.
struct LineLook {
    Rgb colour;
    double width = 0.25; // millimetres
    // Dashes above 0, gaps below, dots 0, in millimetres; none for a whole line.
    std::vector<double> pattern;

    bool hasSamePen(const LineLook& other) const { return colour == other.colour && width == other.width; }
};

// Finds out how primitives look: what is by layer comes from the layers' records, each of which is opened
// once.
class LineLooks {
public:
    // `scale`: millimetres of the page for a drawing unit. `thinnest`: no line is thinner than that.
    LineLooks(AcDbDatabase* database, const PlotStyle& style, double scale, double thinnest);

    // Valid until the next call.
    const LineLook& of(const DrawTraits& traits);

private:
    struct Layer {
        int colour = 7;
        AcDb::LineWeight weight = AcDb::kLnWtByLwDefault;
        AcDbObjectId lineType;
    };

    const Layer& layer(const AcDbObjectId& id);
    // In drawing units.
    const std::vector<double>& dashes(const AcDbObjectId& lineType);
    Rgb colourOf(const DrawTraits& traits);
    double widthOf(const DrawTraits& traits);
    void setPattern(const DrawTraits& traits, std::vector<double>& pattern);

    AcDbDatabase* m_database;
    const PlotStyle& m_style;
    double m_scale;
    double m_thinnest;
    double m_lineTypeScale = 1.0;
    std::map<AcDbStub*, Layer> m_layers;
    std::map<AcDbStub*, std::vector<double>> m_lineTypes;
    bool m_hasLast = false;
    DrawTraits m_last;
    LineLook m_look;
};

} // namespace embedded
