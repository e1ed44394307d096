#include "orvcheck/smart_assert.h"
#include "orvshape/segmented_curve.h"

#include <string>

using orv::CurveSegment;

namespace {

enum Kind : Adesk::UInt8 { kStraight = 0, kRound = 1 };

Acad::ErrorStatus improper(AcDbDwgFiler& filer) {
    filer.setFilerStatus(Acad::eDwgObjectImproperlyRead);
    return Acad::eDwgObjectImproperlyRead;
}

void writeSegment(AcDbDwgFiler& filer, const CurveSegment& segment) {
    filer.writeUInt8(segment.isArc() ? kRound : kStraight);
    filer.writePoint3d(segment.end());
    if (!segment.isArc())
        return;
    filer.writePoint3d(segment.centre());
    filer.writeVector3d(segment.normal());
    filer.writeDouble(segment.sweep());
}

// False for what is no piece; the filer's status tells whether it could be read at all.
bool readSegment(AcDbDwgFiler& filer, const AcGePoint3d& start, CurveSegment& segment) {
    Adesk::UInt8 kind = kStraight;
    AcGePoint3d end;
    filer.readUInt8(&kind);
    filer.readPoint3d(&end);
    if (kind == kStraight)
        return CurveSegment::line(start, end, segment);
    if (kind != kRound)
        return false;
    AcGePoint3d centre;
    AcGeVector3d normal;
    double sweep = 0.0;
    filer.readPoint3d(&centre);
    filer.readVector3d(&normal);
    filer.readDouble(&sweep);
    return CurveSegment::arcOf(start, end, centre, normal, sweep, segment);
}

// The count is not believed: every piece is read before there is room for the next one.
Acad::ErrorStatus readSegments(AcDbDwgFiler& filer, std::vector<CurveSegment>& segments) {
    Adesk::UInt32 count = 0;
    AcGePoint3d start;
    filer.readUInt32(&count);
    if (count > 0 && filer.filerStatus() == Acad::eOk)
        filer.readPoint3d(&start);
    for (Adesk::UInt32 i = 0; i < count && filer.filerStatus() == Acad::eOk; ++i) {
        CurveSegment segment;
        const bool isPiece = readSegment(filer, start, segment);
        if (filer.filerStatus() != Acad::eOk)
            break;
        if (!isPiece)
            return improper(filer);
        segments.push_back(segment);
        start = segment.end();
    }
    return filer.filerStatus();
}

} // namespace

Acad::ErrorStatus ORV_SegmentedCurve::dwgOutFields(AcDbDwgFiler* filer) const {
    if (filer == nullptr)
        return Acad::eInvalidInput;
    const Acad::ErrorStatus es = AcDbCurve::dwgOutFields(filer);
    if (es != Acad::eOk)
        return es;
    filer->writeUInt32(kVersion);
    filer->writeUInt32(static_cast<Adesk::UInt32>(m_segments.size()));
    if (!m_segments.empty())
        filer->writePoint3d(m_segments.front().start());
    for (const CurveSegment& segment : m_segments)
        writeSegment(*filer, segment);
    filer->writeUInt32(kMagic);
    return filer->filerStatus();
}

Acad::ErrorStatus ORV_SegmentedCurve::dwgInFields(AcDbDwgFiler* filer) {
    if (filer == nullptr)
        return Acad::eInvalidInput;
    Acad::ErrorStatus es = AcDbCurve::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    Adesk::UInt32 version = 0;
    es = filer->readUInt32(&version);
    if (es != Acad::eOk)
        return es;
    if (version > kVersion)
        return Acad::eMakeMeProxy;
    Segments segments;
    es = readSegments(*filer, segments);
    Adesk::UInt32 magic = 0;
    if (es == Acad::eOk)
        es = filer->readUInt32(&magic);
    if (es != Acad::eOk)
        return es;
    if (magic != kMagic) {
        orv::smartassert::SmartAssert("magic == kMagic")
            .setFileContext(__FILE__, __LINE__)
            .printValue("magic", std::to_string(magic))
            .debug("filing error");
        return improper(*filer);
    }
    take(std::move(segments));
    return Acad::eOk;
}
