#include "dbx/elem/vertex_list_util.h"

#include <cmath>

namespace orv::elem {

bool isEqualLoadValue(double a, double b) {
    const double difference = std::abs(a - b);
    if (difference <= kLoadValueTolerance)
        return true;
    // Nothing is a small share of zero.
    if (a == 0.0 || b == 0.0)
        return false;
    return std::abs(a) * kLoadValueTolerance * 0.01 >= difference;
}

void VertextListUtil::setValue(double value, Vertices& vertices) {
    for (GenericLoad::Vertex& vertex : vertices)
        vertex.value = value;
}

void VertextListUtil::negateValues(Vertices& vertices) {
    for (GenericLoad::Vertex& vertex : vertices)
        vertex.value = -vertex.value;
}

bool VertextListUtil::isUniform(const Vertices& vertices) {
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        if (!isEqualLoadValue(vertices[i].value, vertices[(i + 1) % vertices.size()].value))
            return false;
    }
    return true;
}

void VertextListUtil::splitIntoSegments(const Vertices& vertices, bool closed, std::deque<Vertices>& out) {
    out.clear();
    for (std::size_t i = 1; i < vertices.size(); ++i)
        out.push_back({vertices[i - 1], vertices[i]});
    if (closed && vertices.size() >= 3)
        out.push_back({vertices.back(), vertices.front()});
}

} // namespace orv::elem
