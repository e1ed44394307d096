#pragma once

#include "dbx/elem/base.h"
#include "dbx/elem/element_load.h"
#include "dbx/elem/free_load_base.h"
#include "dbx/elem/generic_load.h"
#include "orvshape/acad_draw.h"
#include "orvshape/segmented_curve.h"
#include "support/report_recorder.h"
#include "support/test_element.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

// Loads as a front end derives them, with what is protected laid open and all notifications written down.
namespace testing_support {

// What a load does when it is told of something; the test clears it.
struct LoadHooks {
    static LoadHooks& all() {
        static LoadHooks s_hooks;
        return s_hooks;
    }
    std::function<void(orv::elem::GenericLoad&, const std::string& hook)> call;
};

// A straight piece of curve.
boost::shared_ptr<ORV_SegmentedCurve> shortCurve();
// Lets a load draw itself, whether its element can draw or not.
void drawWith(const std::function<void(orv::AcadWorldDraw&, orv::System&)>& draw);

template <class Base>
struct OpenLoad : Base {
    using Base::canElementBeCloned;
    using Base::getOwnCurve;
    using Base::onErase;
    using Base::onLoad;
    using Base::onMoved;
    using Base::onPostTransform;
    using Base::onSave;
    using Base::setOwnCurve;

    // The names of the notifications in the order in which they came.
    Texts hooks;

    void onEdited() override { note("onEdited"); }
    void onGeometryModified() override { note("onGeometryModified"); }
    void setupInterpolationData(orv::System&, orv::elem::detail::LoadVisualizationData&) override {
        note("setupInterpolationData");
    }
    void onValuesChanged() override { note("onValuesChanged"); }
    void onElementChanged() override { note("onElementChanged"); }
    void onLoadTypeChanged() override { note("onLoadTypeChanged"); }

    // See testing_support::drawOnce.
    void drawOnce() {
        const Texts before = hooks;
        const ReportRecorder ignored; // the load may lack an owner and values
        Base::setDistribution(orv::elem::kLineLoad);
        Base::setOwnCurve(shortCurve());
        drawWith([this](orv::AcadWorldDraw& wd, orv::System& system) { this->onWorldDraw(wd, system); });
        hooks = before;
        EXPECT_FALSE(Base::refreshGraphics());
    }

    void note(const std::string& hook) {
        hooks.push_back(hook);
        if (LoadHooks::all().call)
            LoadHooks::all().call(*this, hook);
    }
};

// One for each of the three bases, under an id of its own.
struct PlainLoad : OpenLoad<orv::elem::GenericLoad> {
    const std::string& pluginId() const override {
        static const std::string s_id = "test.load.plain";
        return s_id;
    }
};
struct FreeLoad : OpenLoad<orv::elem::FreeLoadBase> {
    using FreeLoadBase::setFreeLoadType;
    const std::string& pluginId() const override {
        static const std::string s_id = "test.load.free";
        return s_id;
    }
};
struct BeamLoad : OpenLoad<orv::elem::ElementLoad> {
    const std::string& pluginId() const override {
        static const std::string s_id = "test.load.beam";
        return s_id;
    }
};

template <class Plugin>
boost::shared_ptr<orv::elem::ElementBase::IPlugin> makePlugin() {
    return boost::make_shared<Plugin>();
}

template <class Plugin>
void registerPlugin() {
    static const bool s_registered = [] {
        orv::elem::ElementPluginRegistry::registerCreator(Plugin().pluginId(), &makePlugin<Plugin>);
        return true;
    }();
    static_cast<void>(s_registered);
}

inline void registerLoads() {
    registerPlugin<PlainLoad>();
    registerPlugin<FreeLoad>();
    registerPlugin<BeamLoad>();
}

inline orv::elem::LoadVertex vertexAt(double x, double value = 10.0) {
    orv::elem::LoadVertex vertex;
    vertex.point = AcGePoint3d(x, 0, 0);
    vertex.value = value;
    return vertex;
}

// So many along the X axis, with the values 1, 2, 3 ...
inline std::deque<orv::elem::LoadVertex> verticesOf(int count) {
    std::deque<orv::elem::LoadVertex> vertices;
    for (int i = 0; i < count; ++i)
        vertices.push_back(vertexAt(i, i + 1.0));
    return vertices;
}

// The bytes of vertices: of (1, 2, -0.5) with all else set, and of one with the default values.
inline const std::string kSetVertexHex =
    "02 05 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 00 00 00 00 00 00 e0 bf 00 00 00 00 00 "
    "00 "
    "04 c0 07 00 00 00 01 00 00 00 00 00 00 e8 3f 02 00 00 00 41 00 00 00 31 00 00 00";
inline const std::string kNewVertexHex = "01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
                                         "00 00 00 00 00 00 00 00 00 00 00 00 00 "
                                         "24 40 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
inline orv::elem::LoadVertex setVertex() {
    orv::elem::LoadVertex vertex;
    vertex.posSource = static_cast<orv::elem::PositionSource>(2);
    vertex.segment = 5;
    vertex.point = AcGePoint3d(1, 2, -0.5);
    vertex.value = -2.5;
    vertex.node = 7;
    vertex.distanceMode = orv::elem::kAbsoluteDistance;
    vertex.position = 0.75;
    vertex.text = L"A1";
    return vertex;
}

inline void expectSameVertex(const orv::elem::LoadVertex& a, const orv::elem::LoadVertex& b) {
    EXPECT_EQ(a.posSource, b.posSource);
    EXPECT_EQ(a.segment, b.segment);
    EXPECT_EQ(a.distanceMode, b.distanceMode);
    EXPECT_EQ(a.position, b.position);
    EXPECT_EQ(a.node, b.node);
    EXPECT_EQ(a.point.x, b.point.x);
    EXPECT_EQ(a.point.y, b.point.y);
    EXPECT_EQ(a.point.z, b.point.z);
    EXPECT_EQ(a.value, b.value);
    EXPECT_EQ(a.text, b.text);
}

// The data of GenericLoad in version 3: type 12, class 2, category 4, line; both vertices; cases 1 and 16.
// One entry in the list of soft pointers goes with it.
inline const std::string kGenericHex = "03 00 00 00 0c 00 02 00 04 00 01 00 02 00 00 00 " + kSetVertexHex +
                                       " " + kNewVertexHex +
                                       " 02 00 00 00 01 00 00 00 10 00 00 00 c1 d8 c5 57";
inline void fillGeneric(orv::elem::GenericLoad& load, const AcDbObjectId& element) {
    load.setType(12);
    load.setClass(static_cast<orv::elem::LOAD_KIND>(2));
    load.setCategory(static_cast<orv::elem::LoadTypeCategory>(4));
    load.setDistribution(orv::elem::kLineLoad);
    load.setElement(element);
    load.setVertices({setVertex(), orv::elem::LoadVertex()});
    load.setLoadCases({16, 1});
}
inline void expectGeneric(const orv::elem::GenericLoad& load, const AcDbObjectId& element) {
    EXPECT_EQ(load.getType(), 12);
    EXPECT_EQ(load.getClass(), 2);
    EXPECT_EQ(load.getCategory(), 4);
    EXPECT_EQ(load.getDistribution(), orv::elem::kLineLoad);
    EXPECT_EQ(load.getElement(), element);
    EXPECT_EQ(load.getLoadCases(), (std::set<unsigned int>{1, 16}));
    ASSERT_EQ(load.numVertices(), 2u);
    expectSameVertex(load.getVertices()[0], setVertex());
    expectSameVertex(load.getVertices()[1], orv::elem::LoadVertex());
}

// Makes a line load of it, on a curve of its own, and draws it, so that it asks for nothing until it is
// changed. Checks of its owner are counted, notifications are not.
template <class Load>
void drawOnce(Load& load) {
    load.drawOnce();
}

} // namespace testing_support
