#pragma once

#include "dbpl.h"
#include "gi/display_recorder.h"
#include "gi/text_metrics.h"

#include <cmath>

namespace embedded {

// What both kinds of geometry have: checks what comes and hands it on.
template <class Base>
class CommonGeometry : public Base {
public:
    explicit CommonGeometry(DisplayRecorder& recorder) : m_recorder(recorder) {}

    void getModelToWorldTransform(AcGeMatrix3d& matrix) const override { matrix = m_recorder.modelToWorld(); }
    void getWorldToModelTransform(AcGeMatrix3d& matrix) const override {
        matrix = m_recorder.modelToWorld().inverse();
    }
    Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) override {
        return !normal.isZeroLength() && m_recorder.push(AcGeMatrix3d::planeToWorld(normal));
    }
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) override { return m_recorder.push(matrix); }
    Adesk::Boolean popModelTransform() override { return m_recorder.pop(); }

    Adesk::Boolean circle(const AcGePoint3d& center, const double radius,
                          const AcGeVector3d& normal) const override {
        return circularArc(center, radius, normal, normal.perpVector(), kTwoPi, kAcGiArcSimple);
    }
    Adesk::Boolean circle(const AcGePoint3d& first, const AcGePoint3d& second,
                          const AcGePoint3d& third) const override {
        PlaneArc arc;
        if (!PlaneArc::through(first, second, third, arc))
            return m_recorder.isCut();
        return circle(arc.centre, arc.radius, arc.normal);
    }
    Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                               const AcGeVector3d& startVector, const double sweepAngle,
                               const AcGiArcType arcType) const override {
        PlaneArc arc;
        arc.centre = center;
        arc.radius = radius;
        arc.normal = sweepAngle < 0.0 ? -normal.normal() : normal.normal();
        arc.sweep = std::min(std::fabs(sweepAngle), kTwoPi);
        // The start's part in the plane.
        const AcGeVector3d start = startVector - arc.normal * startVector.dotProduct(arc.normal);
        if (!(radius > 0.0) || normal.isZeroLength() || start.isZeroLength() || !(arc.sweep > 0.0))
            return m_recorder.isCut();
        arc.xAxis = start.normal();
        return m_recorder.arc(arc, arcType, arc.sweep >= kTwoPi);
    }
    Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end,
                               const AcGiArcType arcType) const override {
        PlaneArc arc;
        return PlaneArc::through(start, point, end, arc) ? m_recorder.arc(arc, arcType, false)
                                                         : m_recorder.isCut();
    }
    Adesk::Boolean polyline(const Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d* normal,
                            Adesk::LongPtr baseSubEntMarker) const override {
        if (baseSubEntMarker == -1)
            return chain(PrimitiveKind::kPolyline, count, points, normal);
        // Each segment is a part of its own.
        const Adesk::GsMarker before = m_recorder.traits().values.marker;
        for (Adesk::UInt32 i = 0; i + 1 < count && !m_recorder.isCut(); ++i) {
            m_recorder.traits().values.marker = baseSubEntMarker + static_cast<Adesk::LongPtr>(i);
            chain(PrimitiveKind::kPolyline, 2, points + i, normal);
        }
        m_recorder.traits().values.marker = before;
        return m_recorder.isCut();
    }
    Adesk::Boolean polygon(const Adesk::UInt32 count, const AcGePoint3d* points) const override {
        return chain(PrimitiveKind::kPolygon, count, points, nullptr);
    }
    Adesk::Boolean mesh(const Adesk::UInt32 rows, const Adesk::UInt32 columns,
                        const AcGePoint3d* points) const override {
        return rows < 2 || columns < 2 || points == nullptr ? m_recorder.isCut()
                                                            : m_recorder.mesh(rows, columns, points);
    }
    Adesk::Boolean shell(const Adesk::UInt32 count, const AcGePoint3d* points,
                         const Adesk::UInt32 faceListSize, const Adesk::Int32* faceList) const override {
        return points == nullptr || faceList == nullptr
                   ? m_recorder.isCut()
                   : m_recorder.shell(count, points, faceListSize, faceList);
    }
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const double height, const double width,
                        const double oblique, const ACHAR* text) const override {
        AcGiTextStyle style;
        style.setTextSize(height);
        style.setXScale(width);
        style.setObliquingAngle(oblique);
        return this->text(position, normal, direction, text, -1, false, style);
    }
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const ACHAR* text, const Adesk::Int32 length,
                        const Adesk::Boolean raw, const AcGiTextStyle& style) const override {
        std::wstring letters = text != nullptr ? text : L"";
        if (length >= 0 && static_cast<std::size_t>(length) < letters.size())
            letters.resize(static_cast<std::size_t>(length));
        TextLines lines;
        if (!raw)
            letters = withoutTextCodes(letters, &lines);
        if (letters.empty() || !(style.textSize() > 0.0) || normal.crossProduct(direction).isZeroLength())
            return m_recorder.isCut();
        if (!lines.isUnderlined && !lines.isOverlined)
            return m_recorder.text(position, normal, direction, letters, style);
        // A primitive has its lines along all of it or not at all.
        AcGiTextStyle lined = style;
        lined.setUnderlined(style.isUnderlined() || lines.isUnderlined);
        lined.setOverlined(style.isOverlined() || lines.isOverlined);
        return m_recorder.text(position, normal, direction, letters, lined);
    }
    Adesk::Boolean xline(const AcGePoint3d& first, const AcGePoint3d& second) const override {
        return endless(PrimitiveKind::kXline, first, second);
    }
    Adesk::Boolean ray(const AcGePoint3d& first, const AcGePoint3d& second) const override {
        return endless(PrimitiveKind::kRay, first, second);
    }
    Adesk::Boolean pline(const AcDbPolyline& polyline, const Adesk::UInt32 fromIndex,
                         const Adesk::UInt32 numSegs) const override {
        return polyline.drawSegments(*this, fromIndex, numSegs);
    }
    Adesk::Boolean worldLine(const AcGePoint3d points[2]) override {
        return m_recorder.worldPoints(PrimitiveKind::kPolyline, {points[0], points[1]});
    }
    Adesk::Boolean draw(AcGiDrawable* drawable) const override {
        return drawable == nullptr ? m_recorder.isCut() : m_recorder.draw(*drawable);
    }

protected:
    bool chain(PrimitiveKind kind, Adesk::UInt32 count, const AcGePoint3d* points,
               const AcGeVector3d* normal) const {
        return count < 2 || points == nullptr ? m_recorder.isCut()
                                              : m_recorder.points(kind, count, points, normal);
    }
    bool endless(PrimitiveKind kind, const AcGePoint3d& first, const AcGePoint3d& second) const {
        const AcGePoint3d points[] = {first, second};
        return (second - first).isZeroLength() ? m_recorder.isCut() : m_recorder.points(kind, 2, points);
    }

    DisplayRecorder& m_recorder;
};

template <class Base>
class RecordingGeometry;

template <>
class RecordingGeometry<AcGiWorldGeometry> final : public CommonGeometry<AcGiWorldGeometry> {
public:
    using CommonGeometry::CommonGeometry;
    void setExtents(AcGePoint3d* newExtents) const override {
        if (newExtents != nullptr)
            m_recorder.setExtents(newExtents);
    }
    void startAttributesSegment() override {}
};

template <>
class RecordingGeometry<AcGiViewportGeometry> final : public CommonGeometry<AcGiViewportGeometry> {
public:
    using CommonGeometry::CommonGeometry;
    Adesk::Boolean polylineEye(const Adesk::UInt32 count, const AcGePoint3d* points) const override {
        return eye(PrimitiveKind::kPolyline, count, points);
    }
    Adesk::Boolean polygonEye(const Adesk::UInt32 count, const AcGePoint3d* points) const override {
        return eye(PrimitiveKind::kPolygon, count, points);
    }
    Adesk::Boolean polylineDc(const Adesk::UInt32 count, const AcGePoint3d* points) const override {
        return eye(PrimitiveKind::kPolyline, count, points);
    }
    Adesk::Boolean polygonDc(const Adesk::UInt32 count, const AcGePoint3d* points) const override {
        return eye(PrimitiveKind::kPolygon, count, points);
    }

private:
    bool eye(PrimitiveKind kind, Adesk::UInt32 count, const AcGePoint3d* points) const {
        return count < 2 || points == nullptr ? m_recorder.isCut()
                                              : m_recorder.eyePoints(kind, count, points);
    }
};

} // namespace embedded
