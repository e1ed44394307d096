#pragma once

#include "base/export.h"

#include "acadstrc.h"

namespace orv {

// Whether two statuses are equal. When they are not, reports both with the host's texts, the expression that
// gave the first, and the place where it was run.
TALDORK_API bool checkErrorStatus(Acad::ErrorStatus es, Acad::ErrorStatus es2, const char* expression,
                                  const char* file, int line);

// Statuses of the host that are known here by their numbers.
namespace status {
constexpr auto kKeyNotFound = static_cast<Acad::ErrorStatus>(22);
constexpr auto kImproperlyRead = static_cast<Acad::ErrorStatus>(67);
constexpr auto kGoneForGood = static_cast<Acad::ErrorStatus>(81);
constexpr auto kMakeProxy = static_cast<Acad::ErrorStatus>(301);
constexpr auto kFilingFailed = static_cast<Acad::ErrorStatus>(2);
} // namespace status

} // namespace orv
