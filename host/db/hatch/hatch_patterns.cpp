#include "db/hatch/hatch_patterns.h"

#include "gi/plane_arc.h"

#include <cmath>
#include <cwctype>

namespace embedded {
namespace {

// A line of a definition, in inches: angle in degrees, base, and the way to the next line along and across;
// then the dashes.
struct FamilyRow {
    const wchar_t* pattern;
    double degrees;
    AcGePoint2d base;
    AcGeVector2d step;
    std::vector<double> dashes;
};

// The common patterns are told in inches, and drawn in millimetres.
const double kInch = 25.4;

const std::vector<FamilyRow>& rows() {
    static const std::vector<FamilyRow> table = {
        {L"ANGLE", 0, {0, 0}, {0, 0.275}, {0.2, -0.075}},
        {L"ANGLE", 90, {0, 0}, {0, 0.275}, {0.2, -0.075}},
        {L"ANSI31", 45, {0, 0}, {0, 0.125}, {}},
        {L"ANSI32", 45, {0, 0}, {0, 0.375}, {}},
        {L"ANSI32", 45, {0.176776695, 0}, {0, 0.375}, {}},
        {L"ANSI33", 45, {0, 0}, {0, 0.25}, {}},
        {L"ANSI33", 45, {0.176776695, 0}, {0, 0.25}, {0.125, -0.0625}},
        {L"ANSI34", 45, {0, 0}, {0, 0.75}, {}},
        {L"ANSI34", 45, {0.176776695, 0}, {0, 0.75}, {}},
        {L"ANSI34", 45, {0.353553391, 0}, {0, 0.75}, {}},
        {L"ANSI34", 45, {0.530330086, 0}, {0, 0.75}, {}},
        {L"ANSI35", 45, {0, 0}, {0, 0.25}, {}},
        {L"ANSI35", 45, {0.176776695, 0}, {0, 0.25}, {0.3125, -0.0625, 0, -0.0625}},
        {L"ANSI36", 45, {0, 0}, {0.21875, 0.125}, {0.3125, -0.0625, 0, -0.0625}},
        {L"ANSI37", 45, {0, 0}, {0, 0.125}, {}},
        {L"ANSI37", 135, {0, 0}, {0, 0.125}, {}},
        {L"ANSI38", 45, {0, 0}, {0, 0.125}, {}},
        {L"ANSI38", 135, {0, 0}, {0.25, 0.125}, {0.3125, -0.1875}},
        {L"BRICK", 0, {0, 0}, {0, 0.25}, {}},
        {L"BRICK", 90, {0, 0}, {0, 0.5}, {0.25, -0.25}},
        {L"BRICK", 90, {0.25, 0}, {0, 0.5}, {-0.25, 0.25}},
        {L"CROSS", 0, {0, 0}, {0.25, 0.25}, {0.125, -0.375}},
        {L"CROSS", 90, {0.0625, -0.0625}, {0.25, 0.25}, {0.125, -0.375}},
        {L"DASH", 0, {0, 0}, {0.125, 0.125}, {0.125, -0.125}},
        {L"DOTS", 0, {0, 0}, {0.03125, 0.0625}, {0, -0.0625}},
        {L"LINE", 0, {0, 0}, {0, 0.125}, {}},
        {L"NET", 0, {0, 0}, {0, 0.125}, {}},
        {L"NET", 90, {0, 0}, {0, 0.125}, {}},
        {L"NET3", 0, {0, 0}, {0, 0.125}, {}},
        {L"NET3", 60, {0, 0}, {0, 0.125}, {}},
        {L"NET3", 120, {0, 0}, {0, 0.125}, {}},
        {L"SQUARE", 0, {0, 0}, {0, 0.125}, {0.125, -0.125}},
        {L"SQUARE", 90, {0, 0}, {0, 0.125}, {0.125, -0.125}},
    };
    return table;
}

// Quarters and eighths of a turn come out without dust, so that lines along an axis are along it.
AcGeVector2d directionOf(double degrees) {
    if (degrees == 0.0)
        return {1.0, 0.0};
    if (degrees == 90.0)
        return {0.0, 1.0};
    const double angle = degrees * kPi / 180.0;
    return {std::cos(angle), std::sin(angle)};
}

HatchFamily familyOf(const FamilyRow& row) {
    const AcGeVector2d along = directionOf(row.degrees);
    HatchFamily family;
    family.angle = row.degrees * kPi / 180.0;
    family.base = row.base * kInch;
    family.offset = (along * row.step.x + along.perpVector() * row.step.y) * kInch;
    for (const double dash : row.dashes)
        family.dashes.push_back(dash * kInch);
    return family;
}

std::vector<HatchPattern> allPatterns() {
    std::vector<HatchPattern> patterns(1);
    patterns[0].name = L"SOLID";
    patterns[0].isSolid = true;
    for (const FamilyRow& row : rows()) {
        if (patterns.back().name != row.pattern) {
            patterns.emplace_back();
            patterns.back().name = row.pattern;
        }
        patterns.back().families.push_back(familyOf(row));
    }
    return patterns;
}

} // namespace

const HatchPattern* hatchPattern(const std::wstring& name) {
    static const std::vector<HatchPattern> patterns = allPatterns();
    std::wstring capitals;
    for (const wchar_t letter : name)
        capitals.push_back(static_cast<wchar_t>(std::towupper(static_cast<wint_t>(letter))));
    for (const HatchPattern& pattern : patterns)
        if (pattern.name == capitals)
            return &pattern;
    return nullptr;
}

std::vector<HatchFamily> userDefinedFamilies(double angle, double space, bool isDouble) {
    std::vector<HatchFamily> families(isDouble ? 2 : 1);
    families[0].offset = AcGeVector2d(0.0, space);
    if (isDouble) {
        families[1].angle = kPi / 2.0;
        families[1].offset = AcGeVector2d(-space, 0.0);
    }
    for (HatchFamily& family : families)
        family = turned(family, angle, 1.0);
    return families;
}

HatchFamily turned(const HatchFamily& family, double angle, double scale) {
    const double c = std::cos(angle), s = std::sin(angle);
    const auto turn = [&](double x, double y) {
        return angle == 0.0 ? AcGeVector2d(x, y) * scale : AcGeVector2d(x * c - y * s, x * s + y * c) * scale;
    };
    HatchFamily made = family;
    made.angle += angle;
    made.base = AcGePoint2d::kOrigin + turn(family.base.x, family.base.y);
    made.offset = turn(family.offset.x, family.offset.y);
    for (double& dash : made.dashes)
        dash *= scale;
    return made;
}

} // namespace embedded
