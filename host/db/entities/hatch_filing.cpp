#include "db/entities/hatch_filing.h"

#include "db/field_stream.h"

#include <limits>

namespace embedded {
namespace {

const Adesk::UInt16 kUserDefined = 0;
const Adesk::UInt32 kLoopOfVertices = 2;
const Adesk::UInt32 kDerivedLoop = 4;

// A count and that many rows. What a damaged count promises beyond the data is not made room for. False where
// a row is none.
template <class Row, class FileRow>
bool fileRows(FieldReader& in, std::vector<Row>& rows, FileRow fileRow) {
    Adesk::UInt32 count = 0;
    in.int32(count);
    for (Adesk::UInt32 i = 0; i < count && in.ok(); ++i) {
        rows.emplace_back();
        if (!fileRow(rows.back()))
            return false;
    }
    return true;
}

template <class Row, class FileRow>
bool fileRows(FieldWriter& out, const std::vector<Row>& rows, FileRow fileRow) {
    out.int32(static_cast<Adesk::UInt32>(rows.size()));
    for (const Row& row : rows)
        if (!fileRow(row))
            return false;
    return true;
}

// The same with a count of 16 bits.
template <class Row, class FileRow>
void fileFewRows(FieldReader& in, std::vector<Row>& rows, FileRow fileRow) {
    Adesk::UInt16 count = 0;
    in.int16(count);
    for (Adesk::UInt16 i = 0; i < count && in.ok(); ++i) {
        rows.emplace_back();
        fileRow(rows.back());
    }
}

template <class Row, class FileRow>
void fileFewRows(FieldWriter& out, const std::vector<Row>& rows, FileRow fileRow) {
    const std::size_t count = std::min<std::size_t>(rows.size(), std::numeric_limits<Adesk::UInt16>::max());
    out.int16(static_cast<Adesk::UInt16>(count));
    for (std::size_t i = 0; i < count; ++i)
        fileRow(rows[i]);
}

// The two counts of a spline stand in front of both rows.
template <class Edge>
void fileSplineRows(FieldReader& in, Edge& edge) {
    Adesk::UInt32 knots = 0, controls = 0;
    in.int32(knots);
    in.int32(controls);
    for (Adesk::UInt32 i = 0; i < knots && in.ok(); ++i) {
        edge.knots.push_back(0.0);
        in.real(edge.knots.back());
    }
    for (Adesk::UInt32 i = 0; i < controls && in.ok(); ++i) {
        edge.controls.emplace_back();
        in.rawPoint(edge.controls.back());
        if (edge.isRational) {
            edge.weights.push_back(0.0);
            in.real(edge.weights.back());
        }
    }
}

template <class Edge>
void fileSplineRows(FieldWriter& out, const Edge& edge) {
    out.int32(static_cast<Adesk::UInt32>(edge.knots.size()));
    out.int32(static_cast<Adesk::UInt32>(edge.controls.size()));
    for (const double knot : edge.knots)
        out.real(knot);
    for (std::size_t i = 0; i < edge.controls.size(); ++i) {
        out.rawPoint(edge.controls[i]);
        if (edge.isRational)
            out.real(edge.weights[i]);
    }
}

bool fileKind(FieldReader& in, HatchEdgeKind& kind) {
    Adesk::UInt8 number = 0;
    in.byte(number);
    kind = static_cast<HatchEdgeKind>(number);
    return number >= 1 && number <= 4;
}

bool fileKind(FieldWriter& out, HatchEdgeKind kind) {
    out.byte(static_cast<Adesk::UInt8>(kind));
    return true;
}

template <class Edge, class Stream>
bool fileEdge(Edge& edge, Stream& s) {
    if (!fileKind(s, edge.kind))
        return false;
    if (edge.kind == HatchEdgeKind::kSpline) {
        s.int32(edge.degree);
        s.flag(edge.isRational);
        s.flag(edge.isPeriodic);
        fileSplineRows(s, edge);
        return true;
    }
    s.rawPoint(edge.from);
    if (edge.kind != HatchEdgeKind::kArc)
        s.rawPoint(edge.to);
    if (edge.kind == HatchEdgeKind::kLine)
        return true;
    if (edge.kind == HatchEdgeKind::kArc)
        s.real(edge.radius);
    else
        s.real(edge.ratio);
    s.real(edge.startAngle);
    s.real(edge.endAngle);
    s.flag(edge.isCounterClockwise);
    return true;
}

void fileVertices(FieldReader& in, HatchLoop& loop) {
    fileRows(in, loop.vertices, [&](AcGePoint2d& vertex) {
        in.rawPoint(vertex);
        if (loop.hasBulges) {
            loop.bulges.push_back(0.0);
            in.real(loop.bulges.back());
        }
        return true;
    });
}

void fileVertices(FieldWriter& out, const HatchLoop& loop) {
    std::size_t i = 0;
    fileRows(out, loop.vertices, [&](const AcGePoint2d& vertex) {
        out.rawPoint(vertex);
        if (loop.hasBulges)
            out.real(loop.bulges[i++]);
        return true;
    });
}

template <class Loop, class Stream>
bool fileLoop(Loop& loop, Stream& s) {
    bool isKnown = true;
    s.int32(loop.type);
    if ((loop.type & kLoopOfVertices) != 0) {
        s.flag(loop.hasBulges);
        s.flag(loop.isClosed);
        fileVertices(s, loop);
    } else {
        isKnown = fileRows(s, loop.edges, [&](auto& edge) { return fileEdge(edge, s); });
    }
    return isKnown && fileRows(s, loop.boundary, [&](auto& id) {
               s.softPointer(id);
               return true;
           });
}

template <class F, class Stream>
void filePattern(F& f, Stream& s) {
    s.real(f.angle);
    s.real(f.patternType == kUserDefined ? f.space : f.scale);
    s.flag(f.isDouble);
    fileFewRows(s, f.families, [&](auto& family) {
        s.real(family.angle);
        s.real(family.base.x);
        s.real(family.base.y);
        s.real(family.offset.x);
        s.real(family.offset.y);
        fileFewRows(s, family.dashes, [&](auto& dash) { s.real(dash); });
    });
}

template <class F, class Stream>
bool fileFields(F& f, Stream& s) {
    s.real(f.elevation);
    s.vector(f.normal);
    s.text(f.name);
    s.flag(f.isSolid);
    s.flag(f.isAssociative);
    if (!fileRows(s, f.loops, [&](auto& loop) { return fileLoop(loop, s); }))
        return false;
    s.int16(f.style);
    s.int16(f.patternType);
    if (!f.isSolid)
        filePattern(f, s);
    bool isDerived = false;
    for (const HatchLoop& loop : f.loops)
        isDerived = isDerived || (loop.type & kDerivedLoop) != 0;
    if (isDerived)
        s.real(f.pixelSize);
    fileRows(s, f.seeds, [&](auto& seed) {
        s.rawPoint(seed);
        return true;
    });
    if (!s.toFile()) {
        // What the drawing file has no place for: a copy, and an undone change, are like the original.
        s.real(f.angle);
        s.real(f.scale);
        s.real(f.space);
        s.flag(f.spaceCounts);
        s.flag(f.isDouble);
        s.real(f.pixelSize);
    }
    return true;
}

} // namespace

Acad::ErrorStatus readHatch(AcDbDwgFiler& filer, HatchFields& fields) {
    FieldReader in(filer);
    if (!fileFields(fields, in))
        filer.setFilerStatus(Acad::eDwgObjectImproperlyRead);
    return filer.filerStatus();
}

Acad::ErrorStatus writeHatch(AcDbDwgFiler& filer, const HatchFields& fields) {
    FieldWriter out(filer);
    fileFields(fields, out);
    return filer.filerStatus();
}

} // namespace embedded
