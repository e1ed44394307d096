#pragma once

#include "dbents.h"
#include "dbsymtb.h"
#include "orvshape/segmented_curve.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

constexpr double kPi = 3.14159265358979323846;

inline void expectNear(const AcGePoint3d& found, const AcGePoint3d& expected, double distance = 1.0e-9) {
    EXPECT_LE(found.distanceTo(expected), distance)
        << "(" << found.x << ", " << found.y << ", " << found.z << ") instead of (" << expected.x << ", "
        << expected.y << ", " << expected.z << ")";
}

inline void expectNear(const AcGeVector3d& found, const AcGeVector3d& expected, double distance = 1.0e-9) {
    expectNear(AcGePoint3d::kOrigin + found, AcGePoint3d::kOrigin + expected, distance);
}

inline orv::CurveSegment lineOf(const AcGePoint3d& start, const AcGePoint3d& end) {
    orv::CurveSegment segment;
    EXPECT_TRUE(orv::CurveSegment::line(start, end, segment));
    return segment;
}

inline orv::CurveSegment arcAbout(const AcGePoint3d& start, const AcGePoint3d& centre, double sweep,
                                  const AcGeVector3d& normal = AcGeVector3d::kZAxis) {
    orv::CurveSegment segment;
    EXPECT_TRUE(orv::CurveSegment::arcAbout(start, centre, normal, sweep, segment));
    return segment;
}

// 4 to the right, a quarter turn with radius 2 to the left, 3 up: from (0, 0) by (4, 0) and (6, 2) to (6, 5).
inline void makeHook(ORV_SegmentedCurve& curve) {
    ASSERT_EQ(curve.append(lineOf({0, 0, 0}, {4, 0, 0})), Acad::eOk);
    ASSERT_EQ(curve.appendArcAbout({4, 2, 0}, AcGeVector3d::kZAxis, kPi / 2), Acad::eOk);
    ASSERT_EQ(curve.appendLineTo({6, 5, 0}), Acad::eOk);
}
constexpr double kHookLength = 4 + kPi + 3;

// Two lines of length 4 and two half circles with radius 1, counter-clockwise from (0, 0).
inline void makeStadium(ORV_SegmentedCurve& curve) {
    ASSERT_EQ(curve.append(lineOf({0, 0, 0}, {4, 0, 0})), Acad::eOk);
    ASSERT_EQ(curve.appendArcTo({4, 2, 0}, 1, AcGeVector3d::kZAxis), Acad::eOk);
    ASSERT_EQ(curve.appendLineTo({0, 2, 0}), Acad::eOk);
    ASSERT_EQ(curve.appendArcTo({0, 0, 0}, 1, AcGeVector3d::kZAxis), Acad::eOk);
}

inline void expectSameShape(const ORV_SegmentedCurve& found, const ORV_SegmentedCurve& expected) {
    ASSERT_EQ(found.getSegmentCount(), expected.getSegmentCount());
    for (int i = 0; i < found.getSegmentCount(); ++i) {
        const orv::CurveSegment& a = *found.getSegmentAt(i);
        const orv::CurveSegment& b = *expected.getSegmentAt(i);
        EXPECT_EQ(a.isArc(), b.isArc());
        expectNear(a.start(), b.start());
        expectNear(a.end(), b.end());
        expectNear(a.centre(), b.centre());
        expectNear(a.normal(), b.normal());
        EXPECT_NEAR(a.sweep(), b.sweep(), 1.0e-12);
    }
}

// A fresh drawing, and entities in its model space.
class CurveDrawing : public testing::Test {
protected:
    AcDbObjectId add(AcDbEntity* entity) {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(m_database->getBlockTable(table, AcDb::kForRead), Acad::eOk);
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        space->close();
        table->close();
        return id;
    }

    AcDbObjectId addHook() {
        auto* curve = new ORV_SegmentedCurve;
        makeHook(*curve);
        return add(curve);
    }

    template <class T = ORV_SegmentedCurve>
    static T* open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead) {
        T* object = nullptr;
        EXPECT_EQ(acdbOpenObject(object, id, mode), Acad::eOk);
        return object;
    }

    std::unique_ptr<AcDbDatabase> m_database = std::make_unique<AcDbDatabase>(true);
};

// The grips of an entity, ended with it.
struct Grips {
    explicit Grips(const AcDbEntity& entity) {
        EXPECT_EQ(entity.getGripPoints(array, 1.0, 5, AcGeVector3d::kZAxis, 0), Acad::eOk);
    }
    Grips() = default;
    ~Grips() {
        for (AcDbGripData* grip : array)
            delete grip;
    }
    Grips(const Grips&) = delete;
    Grips& operator=(const Grips&) = delete;

    void* dataOf(int index) const { return array[index]->appData(); }
    // As the host hands them back when these are dragged.
    AcDbVoidPtrArray held(const std::vector<int>& indices) const {
        AcDbVoidPtrArray data;
        for (const int index : indices)
            data.append(dataOf(index));
        return data;
    }

    AcDbGripDataPtrArray array;
};
