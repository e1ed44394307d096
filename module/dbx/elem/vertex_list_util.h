#pragma once

#include "base/export.h"
#include "dbx/elem/generic_load.h"

#include <deque>

namespace orv::elem {

constexpr double kLoadValueTolerance = 2.220446049250313e-10;

// The comparison of two numbers that loads go by: equal if they differ by no more than the tolerance, or,
// where neither is 0, by that share of a hundredth of the first.
TALDORK_API bool isEqualLoadValue(double a, double b);

// Works on the vertices of a load.
class TALDORK_API VertextListUtil {
public:
    using Vertices = std::deque<GenericLoad::Vertex>;

    static void setValue(double value, Vertices& vertices);
    static void negateValues(Vertices& vertices);
    // Each value is that of the next vertex, the last that of the first; see isEqualLoadValue. True for no
    // vertices.
    static bool isUniform(const Vertices& vertices);
    // Replaces `out` by one list of two vertices for each side. A closed outline, of three vertices at least,
    // has one more side, from the last vertex to the first.
    static void splitIntoSegments(const Vertices& vertices, bool closed, std::deque<Vertices>& out);
};

} // namespace orv::elem
