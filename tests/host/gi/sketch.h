#pragma once

#include "acgi.h"
#include "dbmain.h"
#include "embedded/display_list.h"

#include <functional>
#include <sstream>
#include <string>
#include <vector>

// An entity that draws what a test tells it to.
class Sketch : public AcDbEntity {
public:
    std::function<bool(AcGiWorldDraw&)> world;
    std::function<void(AcGiViewportDraw&)> viewport;
    Adesk::UInt32 flags = kDrawableNone; // beside those of every entity

protected:
    Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override {
        return AcDbEntity::subSetAttributes(traits) | flags;
    }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override {
        return world == nullptr || world(*worldDraw);
    }
    void subViewportDraw(AcGiViewportDraw* viewportDraw) override {
        if (viewport != nullptr)
            viewport(*viewportDraw);
    }
};

// A list as lines: kind, points, what else counts. Numbers as short as they are.
inline std::string told(const embedded::Primitive& p) {
    static const char* const kNames[] = {"polyline", "polygon", "circle", "arc", "mesh",
                                         "shell",    "text",    "xline",  "ray"};
    std::ostringstream out;
    const auto number = [&](double value) { out << (std::abs(value) < 1.0e-12 ? 0.0 : value); };
    const auto triple = [&](double x, double y, double z) {
        out << " (";
        number(x);
        out << ' ';
        number(y);
        out << ' ';
        number(z);
        out << ')';
    };
    out << (p.ofViewport ? "viewport " : "") << kNames[static_cast<int>(p.kind)];
    for (const AcGePoint3d& point : p.points)
        triple(point.x, point.y, point.z);
    if (p.kind == embedded::PrimitiveKind::kCircle || p.kind == embedded::PrimitiveKind::kArc) {
        out << " radius ";
        number(p.radius);
        out << " normal";
        triple(p.normal.x, p.normal.y, p.normal.z);
    }
    if (p.kind == embedded::PrimitiveKind::kArc) {
        out << " from";
        triple(p.direction.x, p.direction.y, p.direction.z);
        out << " sweep ";
        number(p.sweep);
    }
    if (p.kind == embedded::PrimitiveKind::kText) {
        out << " '" << std::string(p.text.begin(), p.text.end()) << "' height ";
        number(p.height);
        out << " width ";
        number(p.widthFactor);
        out << " slant ";
        number(p.oblique);
        out << " along";
        triple(p.direction.x, p.direction.y, p.direction.z);
    }
    for (const Adesk::Int32 index : p.faces)
        out << ' ' << index;
    return out.str();
}

inline std::vector<std::string> told(const embedded::DisplayList& list) {
    std::vector<std::string> lines;
    for (const embedded::Primitive& primitive : list.primitives)
        lines.push_back(told(primitive));
    return lines;
}
