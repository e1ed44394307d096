#pragma once

#include "base/export.h"

#include "gemat3d.h"
#include "gevec3d.h"

#include <boost/optional.hpp>

namespace orv {
class System;
}

// The vocabulary that all loads share. Numbers outside of an enumeration are filed and handed back as they
// are.
namespace orv::elem {

// What a load acts along.
enum LoadDistribution : int { kPointLoad = 0, kLineLoad = 1, kAreaLoad = 2, kVolumeLoad = 3 };

// The kind of a load, an analysis number. Point loads of the dashed kind are drawn so.
enum LOAD_KIND : int { kLoadKindDefault = 1, kLoadKindDashed = 3 };

// Numbers of the analysis that decide nothing here.
enum LoadTypeCategory : int { kLoadTypeCategoryNone = 0 };
enum LoadNature : int { kLoadNatureNone = 0 };
enum LineLoadDistributionCurve : int { kLineLoadDistributionDefault = 1 };

// What a free load refers to.
struct TALDORK_API FreeLoadReference {
    enum Type : int { kFirst = 100, kLast = 107, kGeneral = 108 };

    // The number that the record store has for it: kFirst to kLast as they are, anything else as kGeneral,
    // and 10 more for a line, 20 for an area, 30 for a volume.
    static int toCdbCode(Type type, LoadDistribution distribution);
    // The way back; kGeneral for what is not from kFirst to kLast then.
    static Type fromCdbCode(int code, LoadDistribution distribution);
};

// In which direction a free load is projected; an analysis number.
struct FreeLoadProjection {
    enum Type : int { kNone = 0 };
};

// The type of a new load: along gravity.
constexpr int kLoadTypeGravity = 10;

// What a load type, the analysis code of a load's direction and kind, says about it.
TALDORK_API bool isMoment(int type);
// Given per length of the load's projection across its direction.
TALDORK_API bool isProjected(int type);
// Along the axes of the element that it acts on.
TALDORK_API bool isLocal(int type);
// By temperature or strain: 51 to 56.
TALDORK_API bool isThermal(int type);

// The direction in which a positive load acts, in the drawing's world: a unit vector, as far as the axes are;
// without length for a type that has none. Local types take the world's axes through the matrix, if it is
// there; all other ones, and local ones without it, go by the axes of the system.
TALDORK_API AcGeVector3d getDirectionFor(const System& system, int type,
                                         const boost::optional<AcGeMatrix3d>& xform);

// How long a value is drawn, in drawing units, with its sign; by the system's settings: the size 7 for each
// unit of the value, or for ten times its logarithm with the switch 151. A value that is no finite number is
// reported, and the result then is none either.
TALDORK_API double scaleLoadValueForDisplay(const System& system, int type, double value);

// The length of an arrow head in drawing units, for a value that was scaled: the size 2 of the settings, or
// 0.3 of the value's magnitude if that is less.
TALDORK_API double getArrowHeadLen(const System& system, double value);

} // namespace orv::elem
