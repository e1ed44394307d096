#include "support/display_list_text.h"

#include "dbsymtb.h"
#include "platform/text.h"
#include "rxclass.h"

#include <cmath>
#include <cstdio>
#include <map>

namespace testing_support {
namespace {

using embedded::Primitive;
using embedded::PrimitiveKind;

std::string text(double value) {
    const double rounded = std::round(value * 1.0e6) / 1.0e6;
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.6f", rounded == 0.0 ? 0.0 : rounded);
    std::string made = buffer;
    // What is beyond six digits of a large number means nothing; zeros behind the point neither.
    while (made.find('.') != std::string::npos && (made.back() == '0' || made.back() == '.')) {
        const bool isPoint = made.back() == '.';
        made.pop_back();
        if (isPoint)
            break;
    }
    return made;
}

std::string triple(double x, double y, double z) {
    return " (" + text(x) + " " + text(y) + " " + text(z) + ")";
}
std::string triple(const AcGePoint3d& p) { return triple(p.x, p.y, p.z); }
std::string triple(const AcGeVector3d& v) { return triple(v.x, v.y, v.z); }

std::string symbolName(const AcDbObjectId& id) {
    AcDbSymbolTableRecord* record = nullptr;
    if (acdbOpenObject(record, id, AcDb::kForRead) != Acad::eOk)
        return "?";
    const ACHAR* name = nullptr;
    record->getName(name);
    const std::string made = name != nullptr ? platform::toUtf8(name) : "?";
    record->close();
    return made;
}

std::string shapeOf(const Primitive& p) {
    static const char* const kNames[] = {"polyline", "polygon", "circle", "arc", "mesh",
                                         "shell",    "text",    "xline",  "ray"};
    std::string line = std::string(p.ofViewport ? "viewport " : "") + kNames[static_cast<int>(p.kind)];
    for (const AcGePoint3d& point : p.points)
        line += triple(point);
    const bool isRound = p.kind == PrimitiveKind::kCircle || p.kind == PrimitiveKind::kArc;
    const bool isText = p.kind == PrimitiveKind::kText;
    if (isRound)
        line += " radius " + text(p.radius);
    if (isRound || isText || !p.normal.isZeroLength())
        line += " normal" + triple(p.normal);
    if (p.kind == PrimitiveKind::kArc)
        line += " from" + triple(p.direction) + " sweep " + text(p.sweep);
    if (p.arcType != kAcGiArcSimple)
        line += p.arcType == kAcGiArcSector ? " sector" : " chord";
    if (p.kind == PrimitiveKind::kMesh)
        line += " " + std::to_string(p.rows) + "x" + std::to_string(p.columns);
    if (!p.faces.empty())
        line += " faces";
    for (const Adesk::Int32 number : p.faces)
        line += " " + std::to_string(number);
    if (isText) {
        line += " '" + platform::toUtf8(p.text) + "' height " + text(p.height);
        if (text(p.widthFactor) != "1")
            line += " width " + text(p.widthFactor);
        if (text(p.oblique) != "0")
            line += " oblique " + text(p.oblique);
        line += " along" + triple(p.direction);
    }
    return line;
}

std::string looksOf(const Primitive& p, std::map<AcDbStub*, std::string>& names) {
    const auto nameOf = [&](const AcDbObjectId& id) {
        const auto place = names.try_emplace(static_cast<AcDbStub*>(id));
        if (place.second)
            place.first->second = symbolName(id);
        return place.first->second;
    };
    const embedded::DrawTraits& t = p.traits;
    std::string line;
    if (p.ownerClass != nullptr)
        line += " " + platform::toUtf8(p.ownerClass->name());
    if (t.trueColour.isByColor()) {
        char buffer[16];
        std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", t.trueColour.red(), t.trueColour.green(),
                      t.trueColour.blue());
        line += std::string(" rgb ") + buffer;
    } else if (t.colour != AcCmEntityColor::kACIbyLayer) {
        line += " colour " + std::to_string(t.colour);
    }
    if (!t.layer.isNull() && nameOf(t.layer) != "0")
        line += " layer '" + nameOf(t.layer) + "'";
    if (!t.lineType.isNull() && nameOf(t.lineType) != "ByLayer")
        line += " linetype '" + nameOf(t.lineType) + "'";
    if (t.lineTypeScale != 1.0)
        line += " scale " + text(t.lineTypeScale);
    if (t.lineWeight != AcDb::kLnWtByLayer)
        line += " weight " + std::to_string(static_cast<int>(t.lineWeight));
    if (t.fill == kAcGiFillAlways)
        line += " filled";
    if (t.marker != 0)
        line += " marker " + std::to_string(t.marker);
    if (t.thickness != 0.0)
        line += " thickness " + text(t.thickness);
    return line.empty() ? "" : " |" + line;
}

} // namespace

std::string displayListText(const Primitive& primitive) {
    std::map<AcDbStub*, std::string> names;
    return shapeOf(primitive) + looksOf(primitive, names);
}

std::string displayListText(const embedded::DisplayList& list) {
    std::map<AcDbStub*, std::string> names;
    std::string lines;
    for (const Primitive& primitive : list.primitives)
        lines += shapeOf(primitive) + looksOf(primitive, names) + "\n";
    for (const embedded::DrawFailure& failure : list.failures)
        lines += "failure " +
                 (failure.ownerClass != nullptr ? platform::toUtf8(failure.ownerClass->name()) : "?") + ": " +
                 failure.reason + "\n";
    return lines + (list.isCut ? "cut\n" : "");
}

} // namespace testing_support
