#pragma once

#include "dbx/elem/legacy_load.h"
#include "module/dbx/elem/element_streams.h"
#include "module/dbx/elem/load_plugins.h"
#include "orvshape/segmented_curve.h"

#include "acdb.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "embedded/session.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// The load entity of old drawings: its fields line by line, as a drawing's file has them, and such entities
// with plugins.
namespace testing_support {

using orv::elem::legacy::ORV_Load;

// The data of LoadBase in version 8 that a fresh load has: type 10, class 1, the load case 1.
const Lines kFreshData = {"UInt32 34", "Bytes 08 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 00 00 "
                                       "01 00 00 00 01 00 00 00 00 00 00 00 00 4d 6a 7e fd"};

// A PlainLoad and a FreeLoad that are fresh, each within the frame of plugins, with a null element.
const Lines kPlainLoadRecord = {"String test.load.plain",
                                "UInt32 32",
                                "Bytes 01 00 00 00 03 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 00 "
                                "00 00 00 00 c1 d8 c5 57 e5 7d db af",
                                "UInt32 1",
                                "SoftPointerId null",
                                "UInt32 0",
                                "UInt32 0",
                                "Int32 1",
                                "Int8 69",
                                "Int32 -889262164"};
const Lines kFreeLoadRecord = {"String test.load.free",
                               "UInt32 64",
                               "Bytes 01 00 00 00 04 00 00 00 03 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 "
                               "00 00 00 00 00 c1 d8 c5 57 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
                               "6c 00 00 00 00 00 00 00 c1 a7 a7 81 e5 7d db af",
                               "UInt32 1",
                               "SoftPointerId null",
                               "UInt32 0",
                               "UInt32 0",
                               "Int32 1",
                               "Int8 69",
                               "Int32 -889262164"};

// The stream of the element within, with these records of plugins.
inline Lines loadElement(int count = 0, const Lines& records = {}) {
    return joined({{"Int32 6", "UInt32 " + std::to_string(count)},
                   records,
                   kLink,
                   kFreshData,
                   kNoProperties,
                   kEmptyTree,
                   kNoLog,
                   kMagic});
}

const Lines kActsOnNothing = {"SoftPointerId null"};
const Lines kActsOn2a = {"SoftPointerId 2a"};
const Lines kNoCurve = {"Bool false"};
const Lines kLoadEntityEnd = {"UInt32 2952684325"};

// A curve of a line and half a circle: version, count, start; the end of the line; end, centre, normal and
// sweep; the end mark.
const Lines kCurveFields = {
    "UInt32 1",         "UInt32 2",      "Point3d 0 0 0", "UInt8 0",        "Point3d 2 0 0",
    "UInt8 1",          "Point3d 2 2 0", "Point3d 2 1 0", "Vector3d 0 0 1", "Double 3.1415926535897931",
    "UInt32 1584181715"};
const Lines kCurve = joined({{"Bool true", "String ORV_SegmentedCurve"}, kCurveFields});

template <class Curve = ORV_SegmentedCurve>
boost::shared_ptr<Curve> makeCurve() {
    orv::CurveSegment line, arc;
    EXPECT_TRUE(orv::CurveSegment::line({0, 0, 0}, {2, 0, 0}, line));
    EXPECT_TRUE(orv::CurveSegment::arcOf({2, 0, 0}, {2, 2, 0}, {2, 1, 0}, AcGeVector3d::kZAxis,
                                         3.1415926535897931, arc));
    const auto curve = boost::make_shared<Curve>();
    EXPECT_EQ(curve->setSegments({line, arc}), Acad::eOk);
    return curve;
}

// As a drawing's file gets them, where the host's part of an entity stands elsewhere. Expects success.
inline Lines fieldsOf(const ORV_Load& load) {
    ScriptFiler filer;
    filer.type = AcDb::kFileFiler;
    EXPECT_EQ(load.dwgOutFields(&filer), Acad::eOk);
    return filer.lines;
}
inline Acad::ErrorStatus readFields(ORV_Load& load, const Lines& lines, std::size_t* taken = nullptr) {
    ScriptFiler filer(lines);
    filer.type = AcDb::kFileFiler;
    const Acad::ErrorStatus es = load.dwgInFields(&filer);
    if (taken != nullptr)
        *taken = filer.next;
    return es;
}
// Expects success, and that nothing is left.
inline void readAllFields(ORV_Load& load, const Lines& lines) {
    std::size_t taken = 0;
    EXPECT_EQ(readFields(load, lines, &taken), Acad::eOk);
    EXPECT_EQ(taken, lines.size());
}

// The plugin belongs to the entity.
template <class Plugin>
Plugin& addPluginTo(ORV_Load& load) {
    auto* const plugin = new Plugin;
    load.addPlugin(plugin);
    return *plugin;
}

// A plugin by its place.
template <class Plugin>
Plugin& pluginAt(const ORV_Load& load, int place) {
    auto held = load.getConstPluginIterator();
    for (; place > 0; --place)
        held.next();
    return dynamic_cast<Plugin&>(*held.get());
}

// Such entities in a drawing.
class LegacyLoadsInDrawing : public testing::Test {
protected:
    LegacyLoadsInDrawing() : db(true) {
        registerTestElement();
        registerLoads();
        RecordingPlugin::events.clear();
    }

    // A load with that plugin and vertices at (0, 0, 0), (1, 0, 0) ...
    template <class Plugin = FreeLoad>
    AcDbObjectId loadWith(int vertices = 3) {
        auto* const load = new ORV_Load;
        load->setNodDatabaseId(AcDbObjectId(), L"ASDWG");
        load->setVertices(verticesOf(vertices));
        addPluginTo<Plugin>(*load);
        return putEntity(db, load);
    }
    AcDbObjectId line() { return putEntity(db, new AcDbLine({0, 0, 0}, {1, 0, 0})); }

    static void use(AcDbObjectId id, AcDb::OpenMode mode, const std::function<void(ORV_Load&)>& with) {
        ORV_Load* load = nullptr;
        ASSERT_EQ(acdbOpenObject(load, id, mode, true), Acad::eOk);
        with(*load);
        load->close();
    }
    static void look(AcDbObjectId id, const std::function<void(ORV_Load&)>& with) {
        use(id, AcDb::kForRead, with);
    }
    static void change(AcDbObjectId id, const std::function<void(ORV_Load&)>& with) {
        use(id, AcDb::kForWrite, with);
    }
    // The points of the vertices.
    static std::vector<AcGePoint3d> pointsOf(const ORV_Load& load) {
        std::vector<AcGePoint3d> points;
        for (const ORV_Load::Vertex& vertex : load.getVertices())
            points.push_back(vertex.point);
        return points;
    }
    static std::vector<AcGePoint3d> pointsOf(AcDbObjectId id) {
        std::vector<AcGePoint3d> points;
        look(id, [&points](ORV_Load& load) { points = pointsOf(load); });
        return points;
    }
    static Texts hooksOf(const ORV_Load& load) { return pluginAt<FreeLoad>(load, 0).hooks; }

    AcDbDatabase db;
    ReportRecorder reports;
};

using Points = std::vector<AcGePoint3d>;

} // namespace testing_support
