#include "db/drawing_settings.h"

#include "dwg/file_frame.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

namespace embedded {
namespace {

// Says that a handle follows, which stays behind.
const char* const kOfObjects[] = {"CEPSNTYPE"};

// Where things are in the drawing.
const char* const kOfPlaces[] = {"INSBASE",  "EXTMIN",  "EXTMAX",  "ELEVATION",
                                 "PINSBASE", "PEXTMIN", "PEXTMAX", "PELEVATION"};

bool isPlace(const char* name) {
    return std::strncmp(name, "UCS", 3) == 0 || std::strncmp(name, "PUCS", 4) == 0 ||
           std::any_of(std::begin(kOfPlaces), std::end(kOfPlaces),
                       [&](const char* one) { return std::strcmp(one, name) == 0; });
}

bool namesObjects(const char* name) {
    return std::any_of(std::begin(kOfObjects), std::end(kOfObjects),
                       [&](const char* one) { return std::strcmp(one, name) == 0; });
}

// Times and texts are the new drawing's own, handles are other ones there.
void copyVariable(const dwg::HeaderField& field, const dwg::HeaderVariables& from, dwg::HeaderVariables& to) {
    switch (field.kind) {
    case dwg::FieldKind::kBit:
    case dwg::FieldKind::kShort:
    case dwg::FieldKind::kColour:
    case dwg::FieldKind::kLong:
        to.setNumber(field.name, from.number(field.name));
        break;
    case dwg::FieldKind::kDouble:
        to.setReal(field.name, from.real(field.name));
        break;
    case dwg::FieldKind::kTriple:
    case dwg::FieldKind::kRawPair:
        to.setTriple(field.name, from.triple(field.name));
        break;
    default:
        break;
    }
}

} // namespace

AcGePoint3d basePointOf(const DatabaseCore& core) {
    if (core.frame == nullptr)
        return AcGePoint3d();
    const dwg::Triple& point = static_cast<const dwg::FileFrame&>(*core.frame).variables.triple("INSBASE");
    return {point.x, point.y, point.z};
}

double lineTypeScaleOf(const DatabaseCore& core) {
    if (core.frame == nullptr)
        return 1.0;
    const double scale = static_cast<const dwg::FileFrame&>(*core.frame).variables.real("LTSCALE");
    return std::isfinite(scale) && scale > 0.0 ? scale : 1.0;
}

void copyDrawingSettings(const DatabaseCore& from, DatabaseCore& to, bool withPlaces) {
    if (withPlaces) {
        to.ucs = from.ucs;
        to.ucs.unnamed = true;
    }
    // One that was never in a file has the settings of a new one.
    if (from.frame == nullptr)
        return;
    if (to.frame == nullptr)
        to.frame = std::make_unique<dwg::FileFrame>();
    const auto& variables = static_cast<const dwg::FileFrame&>(*from.frame).variables;
    auto& own = static_cast<dwg::FileFrame&>(*to.frame).variables;
    for (std::size_t i = 0; i < dwg::kHeaderFieldCount; ++i) {
        const dwg::HeaderField& field = dwg::kHeaderFields[i];
        if (!namesObjects(field.name) && (withPlaces || !isPlace(field.name)))
            copyVariable(field, variables, own);
    }
}

} // namespace embedded
