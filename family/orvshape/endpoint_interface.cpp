#include "orvshape/endpoint_interface.h"

namespace orv::geom {

const Endpoint* EndpointList::nearest(const AcGePoint3d& point, double distance) const {
    const Endpoint* found = nullptr;
    for (const Endpoint& endpoint : m_endpoints) {
        const double away = endpoint.point.distanceTo(point);
        if (away > distance || (found != nullptr && away == distance))
            continue;
        found = &endpoint;
        distance = away;
    }
    return found;
}

} // namespace orv::geom
