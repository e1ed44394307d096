#pragma once

#include "dbid.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "orvshape/export.h"

#include <vector>

namespace orv::geom {

// A place where an element ends and another one may begin.
struct Endpoint {
    AcGePoint3d point;
    // Out of the element, of length 1; without length where there is none.
    AcGeVector3d direction;
    // What the end belongs to; null for something in no drawing.
    AcDbObjectId owner;
};

// Takes the end points of elements from whoever is asked for them.
class ORVSHAPE_API EndpointInterface {
public:
    virtual ~EndpointInterface() = default;

    virtual void addEndpoint(const Endpoint& endpoint) = 0;

protected:
    EndpointInterface() = default;
};

// Keeps them in the order in which they come.
class ORVSHAPE_API EndpointList : public EndpointInterface {
public:
    void addEndpoint(const Endpoint& endpoint) override { m_endpoints.push_back(endpoint); }

    const std::vector<Endpoint>& endpoints() const { return m_endpoints; }
    // The nearest one within a distance, the first of equal ones; null if there is none. Belongs to the list.
    const Endpoint* nearest(const AcGePoint3d& point, double distance) const;

private:
    std::vector<Endpoint> m_endpoints;
};

} // namespace orv::geom
