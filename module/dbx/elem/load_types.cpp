#include "dbx/elem/load_types.h"

#include "base/assert.h"
#include "dbx/doc/system.h"
#include "dbx/elem/finite_value.h"
#include "dbx/elem/load_settings.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace orv::elem {

namespace {

// Load types from the first to the last.
struct TypeRange {
    int first;
    int last;

    bool contains(int type) const { return first <= type && type <= last; }
};

constexpr TypeRange kMoments[] = {{20, 29}, {1004, 1006}, {1011, 1011}};
constexpr TypeRange kProjected[] = {{17, 19}};
constexpr TypeRange kLocal[] = {{11, 13}, {21, 23}, {31, 33}, {37, 39},
                                {41, 43}, {47, 49}, {51, 56}, {101, 108}};
constexpr TypeRange kThermal[] = {{51, 56}};

template <std::size_t count>
bool isOneOf(const TypeRange (&ranges)[count], int type) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [type](const TypeRange& range) { return range.contains(type); });
}

enum Axis { kX, kY, kZ };

// The types that act along the same axis.
struct DirectedTypes {
    int types[11];
    Axis axis;
    bool isReversed;
};

constexpr DirectedTypes kDirections[] = {
    {{11, 14, 17, 21, 24, 27, 31, 34, 37, 41, 44}, kX, false},
    {{12, 15, 18, 22, 25, 28, 32, 35, 38, 42, 45}, kY, false},
    {{13, 16, 19, 23, 26, 29, 33, 36, 39, 43, 46}, kZ, false},
    {{51, 54}, kX, true},
    {{52, 55}, kY, true},
    {{53, 56}, kZ, true},
};

struct Axes {
    AcGeVector3d axis[3];
};

Axes axesFor(const System& system, int type, const boost::optional<AcGeMatrix3d>& xform) {
    Axes axes;
    if (xform && isLocal(type))
        axes = {
            {*xform * AcGeVector3d::kXAxis, *xform * AcGeVector3d::kYAxis, *xform * AcGeVector3d::kZAxis}};
    else
        system.getCoordinateSystem(axes.axis[kX], axes.axis[kY], axes.axis[kZ]);
    return axes;
}

AcGeVector3d gravityAlong(const Axes& axes, GravityOrientation gravity) {
    switch (gravity) {
    case kGravityPlusX:
        return axes.axis[kX];
    case kGravityPlusY:
        return axes.axis[kY];
    case kGravityMinusX:
        return -axes.axis[kX];
    case kGravityMinusY:
        return -axes.axis[kY];
    case kGravityMinusZ:
        return -axes.axis[kZ];
    default:
        return axes.axis[kZ];
    }
}

// What the numbers of the record store are higher by than those of a point load.
int codeOffset(LoadDistribution distribution) {
    switch (distribution) {
    case kLineLoad:
        return 10;
    case kAreaLoad:
        return 20;
    case kVolumeLoad:
        return 30;
    default:
        return 0;
    }
}

bool isDistinctReference(std::int64_t code) {
    return code >= FreeLoadReference::kFirst && code <= FreeLoadReference::kLast;
}

constexpr int kLogarithmicScale = 151; // a switch of the settings

} // namespace

int FreeLoadReference::toCdbCode(Type type, LoadDistribution distribution) {
    return (isDistinctReference(type) ? type : kGeneral) + codeOffset(distribution);
}

FreeLoadReference::Type FreeLoadReference::fromCdbCode(int code, LoadDistribution distribution) {
    // A record may hold any number, also one that has nothing so far below it.
    const std::int64_t type = static_cast<std::int64_t>(code) - codeOffset(distribution);
    return isDistinctReference(type) ? static_cast<Type>(type) : kGeneral;
}

bool isMoment(int type) { return isOneOf(kMoments, type); }
bool isProjected(int type) { return isOneOf(kProjected, type); }
bool isLocal(int type) { return isOneOf(kLocal, type); }
bool isThermal(int type) { return isOneOf(kThermal, type); }

AcGeVector3d getDirectionFor(const System& system, int type, const boost::optional<AcGeMatrix3d>& xform) {
    const Axes axes = axesFor(system, type, xform);
    if (type == kLoadTypeGravity)
        return gravityAlong(axes, system.gravityDirection());
    for (const DirectedTypes& directed : kDirections) {
        // The shorter lists end in zeros.
        if (type == 0 ||
            std::find(std::begin(directed.types), std::end(directed.types), type) == std::end(directed.types))
            continue;
        const AcGeVector3d& axis = axes.axis[directed.axis];
        return directed.isReversed ? -axis : axis;
    }
    return {};
}

double scaleLoadValueForDisplay(const System& system, int type, double v) {
    ORV_ASSERT(!isNaN(v) && !isInfinite(v))(v);
    double shown = isThermal(type) ? v * 200.0 : v; // strains are small numbers
    const settings::Settings& settings = system.visSettings();
    if (settings.isOn(kLogarithmicScale)) {
        const double sign = v < 0.0 ? -10.0 : 10.0;
        shown = std::log(std::abs(shown) * 0.1 + 1.0) * sign;
    }
    return settings.getSize(kLoadUnitSize) * shown;
}

double getArrowHeadLen(const System& system, double value) {
    return std::min(system.visSettings().getSize(kArrowHeadSize), 0.3 * std::abs(value));
}

} // namespace orv::elem
