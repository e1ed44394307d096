#pragma once

#include "gemat3d.h"
#include "gepnt3d.h"

#include <vector>

namespace embedded {

// A place or a way on the page: millimetres to the right and down, from its upper left corner.
struct PagePoint {
    double x = 0.0;
    double y = 0.0;
};

inline PagePoint operator+(PagePoint a, PagePoint b) { return {a.x + b.x, a.y + b.y}; }
inline PagePoint operator-(PagePoint a, PagePoint b) { return {a.x - b.x, a.y - b.y}; }
inline PagePoint operator*(PagePoint a, double factor) { return {a.x * factor, a.y * factor}; }
inline double crossProduct(PagePoint a, PagePoint b) { return a.x * b.y - a.y * b.x; }

using PagePoints = std::vector<PagePoint>;

// From the drawing to the page, looking along the view.
class PageTransform {
public:
    PageTransform() = default;
    // `scale`: millimetres for a drawing unit. The eye's origin comes to `middle`.
    PageTransform(const AcGeMatrix3d& worldToEye, double scale, PagePoint middle) {
        for (unsigned int i = 0; i < 4; ++i) {
            m_x[i] = worldToEye(0, i) * scale;
            m_y[i] = -worldToEye(1, i) * scale;
        }
        m_x[3] += middle.x;
        m_y[3] += middle.y;
    }

    PagePoint operator()(const AcGePoint3d& p) const {
        return {m_x[0] * p.x + m_x[1] * p.y + m_x[2] * p.z + m_x[3],
                m_y[0] * p.x + m_y[1] * p.y + m_y[2] * p.z + m_y[3]};
    }
    PagePoint operator()(const AcGeVector3d& v) const {
        return {m_x[0] * v.x + m_x[1] * v.y + m_x[2] * v.z, m_y[0] * v.x + m_y[1] * v.y + m_y[2] * v.z};
    }

private:
    double m_x[4] = {};
    double m_y[4] = {};
};

// An upright rectangle of the page.
struct PageBox {
    PagePoint least, most;

    bool holds(PagePoint p) const {
        return p.x >= least.x && p.x <= most.x && p.y >= least.y && p.y <= most.y;
    }
    // The part of the line a + t * way within the box, of what lies between `from` and `to`; false if there
    // is none. Any number is fine for the two, also infinite ones.
    bool clip(PagePoint a, PagePoint way, double& from, double& to) const;
    // The part of a polygon within the box.
    void clip(PagePoints& polygon) const;
};

// An arc of an ellipse: centre + u * cos(t) + v * sin(t) for t from 0 to the sweep. The two may be along one
// line: a circle that is seen from its side.
struct PageArc {
    PagePoint centre, u, v;
    double sweep = 0.0;

    PagePoint at(double angle) const;
    PagePoint wayAt(double angle) const;
    // Both ends included, none further from the arc than that.
    void addChords(double deviation, PagePoints& points) const;
};

} // namespace embedded
