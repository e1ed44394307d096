#pragma once

#include "base/export.h"

#include "acadstrc.h"

namespace orv {

// Whether two statuses are equal. When they are not, reports both with the host's texts, the expression that
// gave the first, and the place where it was run.
TALDORK_API bool checkErrorStatus(Acad::ErrorStatus es, Acad::ErrorStatus es2, const char* expression,
                                  const char* file, int line);

// What some statuses of the host mean here.
namespace status {
constexpr Acad::ErrorStatus kFilingFailed = Acad::eNotApplicable;
constexpr Acad::ErrorStatus kKeyNotFound = Acad::eKeyNotFound;
constexpr Acad::ErrorStatus kImproperlyRead = Acad::eDwgObjectImproperlyRead;
constexpr Acad::ErrorStatus kGoneForGood = Acad::ePermanentlyErased;
constexpr Acad::ErrorStatus kMakeProxy = Acad::eMakeMeProxy;

// Other modules compare with the numbers.
static_assert(kFilingFailed == 2 && kKeyNotFound == 22 && kImproperlyRead == 67 && kGoneForGood == 81 &&
                  kMakeProxy == 301,
              "the host numbers its statuses otherwise");
} // namespace status

} // namespace orv
