#pragma once

#include "dbx/elem/generic_load.h"
#include "examples/structure/structure_test.h"
#include "orvshape/geom.h"
#include "structure/beam_load.h"
#include "structure/free_load.h"
#include "structure/model_store.h"

#include "dbidmap.h"

namespace structure_tests {

using structure::Beam;
using structure::Load;
using structure::LoadProperties;
using structure::LoadShape;

// A drawing with a beam of 6 m along X, at (0, 0, 3), that is bound to a system.
class LoadsTest : public StructureTest {
protected:
    void SetUp() override {
        StructureTest::SetUp();
        store = structure::findOrCreateStore(*db, L"", orv::kUnitMetre);
        beam = addBeam(AcGePoint3d(0.0, 0.0, 3.0), AcGePoint3d(6.0, 0.0, 3.0));
    }

    AcDbObjectId addBeam(const AcGePoint3d& start, const AcGePoint3d& end) {
        orv::CurveSegment line;
        EXPECT_TRUE(orv::CurveSegment::line(start, end, line));
        return addBound(std::make_unique<Beam>(line));
    }

    template <class Kind>
    AcDbObjectId addBound(std::unique_ptr<Kind> element) {
        const AcDbObjectId id = append(element.release());
        Open<Kind>(id, AcDb::kForWrite)->bindTo(store.id, store.name);
        structure::processMovedElements(*db);
        return id;
    }

    AcDbObjectId addLoad(const AcDbObjectId& on, double from, double to, const LoadProperties& properties) {
        const AcDbObjectId id = addBound(Load::forBeam(from, to, properties));
        const Open<Beam> holder(on, AcDb::kForWrite);
        EXPECT_EQ(Open<Load>(id, AcDb::kForWrite)->attachTo(*holder), Acad::eOk);
        return id;
    }

    static LoadProperties linear(double first, double last) {
        LoadProperties properties;
        properties.values = {first, last};
        properties.unit = L"kN/m";
        return properties;
    }

    static AcGePoint3d startOf(AcDbObjectId curve) { return Open<ORV_SegmentedCurve>(curve)->startPoint(); }
    static AcGePoint3d endOf(AcDbObjectId curve) { return Open<ORV_SegmentedCurve>(curve)->endPoint(); }
    static AcGePoint3d vertexOf(AcDbObjectId load, int index) {
        AcGePoint3d point;
        Open<Load>(load)->plugin()->getPointAt(index, point);
        return point;
    }
    static AcDbObjectId beamOf(AcDbObjectId load) { return Open<Load>(load)->beam(); }

    static AcDbObjectId valueIn(const AcDbIdMapping& mapping, const AcDbObjectId& key) {
        AcDbIdPair pair(key, AcDbObjectId(), false);
        return mapping.compute(pair) && pair.isCloned() ? pair.value() : AcDbObjectId();
    }

    structure::ModelStore store;
    AcDbObjectId beam;
};

inline testing::AssertionResult isAt(const AcGePoint3d& point, double x, double y, double z) {
    const AcGePoint3d expected(x, y, z);
    if (point.isEqualTo(expected, orv::geom::gTol))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << point.x << " " << point.y << " " << point.z;
}

} // namespace structure_tests
