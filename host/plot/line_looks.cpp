#include "plot/line_looks.h"

#include "db/database_core.h"
#include "db/drawing_settings.h"
#include "dbsymtb.h"

#include <algorithm>
#include <cmath>

namespace embedded {
namespace {

constexpr double kMillimetresOfWeight = 0.01;
// A pattern that repeats within less of the page, in millimetres or in line widths, is drawn as a whole line.
constexpr double kDensest = 0.5;
constexpr double kDensestInWidths = 2.0;

bool looksAlike(const DrawTraits& a, const DrawTraits& b) {
    return a.layer == b.layer && a.colour == b.colour && a.lineType == b.lineType &&
           a.lineWeight == b.lineWeight && a.lineTypeScale == b.lineTypeScale && a.trueColour == b.trueColour;
}

// Lines have round ends, half a width beyond them, which are to be within the dashes and not in the gaps.
void makeRoomForEnds(double width, std::vector<double>& pattern) {
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        double& gap = pattern[(i + 1) % pattern.size()];
        if (!(pattern[i] > 0.0) || !(gap < 0.0))
            continue;
        const double part = std::min(pattern[i], width);
        pattern[i] -= part;
        gap -= part;
    }
}

} // namespace

LineLooks::LineLooks(AcDbDatabase* database, const PlotStyle& style, double scale, double thinnest)
    : m_database(database), m_style(style), m_scale(scale), m_thinnest(thinnest) {
    if (style.lineTypeScale > 0.0)
        m_lineTypeScale = style.lineTypeScale;
    else if (database != nullptr)
        m_lineTypeScale = lineTypeScaleOf(database->core());
}

const LineLook& LineLooks::of(const DrawTraits& traits) {
    if (m_hasLast && looksAlike(traits, m_last))
        return m_look;
    m_look.colour = colourOf(traits);
    m_look.width = widthOf(traits);
    setPattern(traits, m_look.pattern);
    m_last = traits;
    m_hasLast = true;
    return m_look;
}

const LineLooks::Layer& LineLooks::layer(const AcDbObjectId& id) {
    const auto [place, isNew] = m_layers.try_emplace(static_cast<AcDbStub*>(id));
    AcDbLayerTableRecord* record = nullptr;
    if (isNew && !id.isNull() && acdbOpenObject(record, id, AcDb::kForRead) == Acad::eOk) {
        place->second.colour = record->colorIndex();
        place->second.weight = record->lineWeight();
        place->second.lineType = record->linetypeObjectId();
        record->close();
    }
    return place->second;
}

const std::vector<double>& LineLooks::dashes(const AcDbObjectId& lineType) {
    const auto [place, isNew] = m_lineTypes.try_emplace(static_cast<AcDbStub*>(lineType));
    AcDbLinetypeTableRecord* record = nullptr;
    if (isNew && !lineType.isNull() && acdbOpenObject(record, lineType, AcDb::kForRead) == Acad::eOk) {
        for (int i = 0; i < record->numDashes(); ++i)
            place->second.push_back(record->dashLengthAt(i));
        record->close();
    }
    return place->second;
}

Rgb LineLooks::colourOf(const DrawTraits& traits) {
    if (traits.trueColour.isByColor())
        return {traits.trueColour.red(), traits.trueColour.green(), traits.trueColour.blue()};
    const int index =
        traits.colour == AcCmEntityColor::kACIbyLayer ? layer(traits.layer).colour : traits.colour;
    return colourOfIndex(index, m_style.isDark);
}

double LineLooks::widthOf(const DrawTraits& traits) {
    const AcDb::LineWeight weight =
        traits.lineWeight == AcDb::kLnWtByLayer ? layer(traits.layer).weight : traits.lineWeight;
    const double width =
        weight >= 0 ? static_cast<double>(weight) * kMillimetresOfWeight : m_style.defaultLineWeight;
    return std::max(width * m_style.lineWeightScale, m_thinnest);
}

void LineLooks::setPattern(const DrawTraits& traits, std::vector<double>& pattern) {
    pattern.clear();
    if (m_database == nullptr)
        return;
    const RootIds& roots = m_database->core().roots;
    const bool isByLayer = traits.lineType.isNull() || traits.lineType == roots.byLayerLinetype;
    const AcDbObjectId lineType = isByLayer ? layer(traits.layer).lineType : traits.lineType;
    double length = 0.0;
    for (const double dash : dashes(lineType)) {
        pattern.push_back(dash * m_lineTypeScale * traits.lineTypeScale * m_scale);
        length += std::fabs(pattern.back());
    }
    const bool hasGap = std::any_of(pattern.begin(), pattern.end(), [](double dash) { return dash < 0.0; });
    const double least = std::max(kDensest, kDensestInWidths * m_look.width);
    if (!hasGap || !std::isfinite(length) || length < least)
        pattern.clear();
    makeRoomForEnds(m_look.width, pattern);
}

} // namespace embedded
