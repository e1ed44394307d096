#include "module/dbx/elem/drawn_loads.h"

#include "dbx/doc/use_system.h"
#include "orvshape/acad_draw.h"
#include "rxclass.h"

#include <gtest/gtest.h>

using orv::elem::LoadVertex;

namespace testing_support {

ACRX_DXF_DEFINE_MEMBERS(LoadMember, ORV_SegmentedCurve, AcDb::kDHL_1015, 0, 0, LOADMEMBER, LoadTests)

const std::string& DrawnLoad::pluginId() const {
    static const std::string s_id = "tests.drawn_load";
    return s_id;
}

void DrawnLoad::setupInterpolationData(orv::System& system, Picture& picture) {
    ++setups;
    if (setup)
        setup(system, picture);
    else
        picture.getValueAtDistFn = [](double) { return 1.0; };
}

void DrawnLoad::postprocessInterpolationData(Picture& picture) const {
    ++layouts;
    if (change)
        change(picture);
    laidOut = picture;
}

void DrawnLoad::onViewportDraw(orv::AcadViewportDraw& vd, orv::System& system) {
    GenericLoad::onViewportDraw(vd, system);
    if (drawTexts)
        drawTexts(vd, system);
}

LoadMember::LoadMember() : ElementBase(static_cast<AcDbObject&>(*this)) {}

Acad::ErrorStatus LoadMember::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    const Acad::ErrorStatus es = ORV_SegmentedCurve::dwgInFields(filer);
    return es != Acad::eOk ? es : ElementBase::dwgInFields(*filer);
}

Acad::ErrorStatus LoadMember::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    const Acad::ErrorStatus es = ORV_SegmentedCurve::dwgOutFields(filer);
    return es != Acad::eOk ? es : ElementBase::dwgOutFields(*filer);
}

Adesk::Boolean LoadMember::subWorldDraw(AcGiWorldDraw* worldDraw) {
    if (showsItself)
        ORV_SegmentedCurve::subWorldDraw(worldDraw);
    triggerOnPreWorldDraw(*worldDraw);
    orv::AcadWorldDraw draw(*worldDraw);
    if (system != nullptr)
        triggerOnWorldDraw(draw, *system);
    else if (const orv::UseSystem linked(this); !linked.empty())
        triggerOnWorldDraw(draw, *linked);
    return false;
}

void LoadMember::subViewportDraw(AcGiViewportDraw* viewportDraw) {
    triggerOnPreViewportDraw(*viewportDraw);
    orv::AcadViewportDraw draw(*viewportDraw);
    if (system != nullptr)
        triggerOnViewportDraw(draw, *system);
    else if (const orv::UseSystem linked(this); !linked.empty())
        triggerOnViewportDraw(draw, *linked);
}

void registerLoadMember() {
    if (LoadMember::gpDesc != nullptr)
        return;
    LoadMember::rxInit();
    acrxBuildClassHierarchy();
}

std::deque<LoadVertex> verticesOf(const std::vector<double>& values) {
    std::deque<LoadVertex> vertices;
    for (const double value : values) {
        vertices.emplace_back();
        vertices.back().value = value;
    }
    return vertices;
}

std::deque<LoadVertex> vertexAt(const AcGePoint3d& point, double value, const std::wstring& text) {
    std::deque<LoadVertex> vertices(1);
    vertices.front().point = point;
    vertices.front().value = value;
    vertices.front().text = text;
    return vertices;
}

embedded::ViewParameters viewFrom(const AcGeVector3d& direction) {
    embedded::ViewParameters view;
    view.direction = direction;
    return view;
}
embedded::ViewParameters fromTop() { return viewFrom(AcGeVector3d::kZAxis); }
embedded::ViewParameters fromFront() { return viewFrom(-AcGeVector3d::kYAxis); }
embedded::ViewParameters fromSide() { return viewFrom(AcGeVector3d::kXAxis); }
embedded::ViewParameters aslant() { return viewFrom(AcGeVector3d(1.0, -2.0, 1.5)); }

namespace {

std::vector<embedded::Primitive> partOf(const embedded::DisplayList& list, bool ofViewport) {
    std::vector<embedded::Primitive> part;
    for (const embedded::Primitive& primitive : list.primitives)
        if (primitive.ofViewport == ofViewport)
            part.push_back(primitive);
    return part;
}

} // namespace

std::vector<embedded::Primitive> worldPart(const embedded::DisplayList& list) { return partOf(list, false); }
std::vector<embedded::Primitive> viewPart(const embedded::DisplayList& list) { return partOf(list, true); }

LoadedMember::LoadedMember() {
    registerLoadMember();
    system.visSettings().setSize(3, 2.0);
    member.system = &system;
    member.addPlugin(load);
    load->setDistribution(orv::elem::kLineLoad);
}

LoadedMember& LoadedMember::through(const std::vector<AcGePoint3d>& points) {
    orv::CurveSegment segment;
    std::size_t next = 1;
    if (member.isEmpty()) {
        EXPECT_TRUE(orv::CurveSegment::line(points.at(0), points.at(1), segment));
        EXPECT_EQ(member.append(segment), Acad::eOk);
        next = 2;
    } else {
        next = 0;
    }
    for (; next < points.size(); ++next)
        EXPECT_EQ(member.appendLineTo(points[next]), Acad::eOk);
    return *this;
}

LoadedMember& LoadedMember::arc(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end) {
    orv::CurveSegment segment;
    EXPECT_TRUE(orv::CurveSegment::arcThrough(start, middle, end, segment));
    EXPECT_EQ(member.append(segment), Acad::eOk);
    return *this;
}

LoadedMember& LoadedMember::values(std::function<double(double, double)> valueAt) {
    const double length = member.getLength();
    load->setVertices(
        verticesOf(std::vector<double>(static_cast<std::size_t>(member.getSegmentCount() + 1))));
    load->setup = [valueAt, length](orv::System&, DrawnLoad::Picture& picture) {
        picture.getValueAtDistFn = [valueAt, length](double distance) { return valueAt(length, distance); };
    };
    return *this;
}

LoadedMember& LoadedMember::ofArea(double value) {
    load->setDistribution(orv::elem::kAreaLoad);
    load->setVertices(verticesOf({value, value, value}));
    load->setup = [value](orv::System&, DrawnLoad::Picture& picture) {
        picture.getValueAtPosFn = [value](const AcGePoint3d&) { return value; };
    };
    return *this;
}

embedded::DisplayList LoadedMember::draw(const embedded::ViewParameters& view) {
    return embedded::draw(member, view);
}

} // namespace testing_support
