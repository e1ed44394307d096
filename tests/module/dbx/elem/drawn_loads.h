#pragma once

#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_visualization_data.h"
#include "dbx/elem/plugin_general.h"
#include "embedded/display_list.h"
#include "orvshape/segmented_curve.h"
#include "support/system_store.h"

#include "dbmain.h"

#include <boost/make_shared.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

// Loads on members, as a front end writes them, and drawn by the host.
namespace testing_support {

// A load whose values a test tells, and that keeps the picture that was laid out.
class DrawnLoad : public orv::elem::GenericLoad {
public:
    using Picture = orv::elem::detail::LoadVisualizationData;

    // Gives the picture its values; constant 1 along the curve unless a test sets it.
    std::function<void(orv::System&, Picture&)> setup;
    // May change what was laid out.
    std::function<void(Picture&)> change;
    // Draws texts, behind the load's own drawing, as the front end's loads do.
    std::function<void(orv::AcadViewportDraw&, orv::System&)> drawTexts;

    // As they were given to postprocessInterpolationData.
    mutable Picture laidOut;
    mutable int layouts = 0;
    int setups = 0;

    const std::string& pluginId() const override;
    void onEdited() override {}
    void setupInterpolationData(orv::System& system, Picture& picture) override;
    void postprocessInterpolationData(Picture& picture) const override;
    void onViewportDraw(orv::AcadViewportDraw& vd, orv::System& system) override;
    using GenericLoad::_draw_areaload_text_at;
    using GenericLoad::_draw_lineload_text_at;
    using GenericLoad::getOwnCurve;
    using GenericLoad::onWorldDraw;
    using GenericLoad::setOwnCurve;
};

// A curve that is an element. It shows itself too where a picture is to be looked at.
class LoadMember : public ORV_SegmentedCurve, public orv::elem::ElementBase {
public:
    ACRX_DECLARE_MEMBERS(LoadMember);
    LoadMember();

    // Drawn with; not owned. Without one, that of the drawing.
    orv::System* system = nullptr;
    bool showsItself = false;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    void acdb_assertWriteEnabled() override { assertWriteEnabled(); }
    void acdb_assertReadEnabled() const override { assertReadEnabled(); }
    AcRxClass* acdb_isA() const override { return isA(); }
    int acdb_isNewObject() const override { return isNewObject(); }
    AcDbObjectId acdb_id() override { return objectId(); }

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;
    void subViewportDraw(AcGiViewportDraw* viewportDraw) override;
};

// What a load on an element takes its local directions from.
class TurnedGeneral : public orv::elem::Plugin_General {
public:
    boost::optional<AcGeMatrix3d> matrix;
    boost::optional<AcGeMatrix3d> getCoordinateSystem() const override { return matrix; }
};

// Registers the class once. The host must be started.
void registerLoadMember();

// Vertices at these values, with no points.
std::deque<orv::elem::LoadVertex> verticesOf(const std::vector<double>& values);
std::deque<orv::elem::LoadVertex> vertexAt(const AcGePoint3d& point, double value,
                                           const std::wstring& text = L"");

embedded::ViewParameters viewFrom(const AcGeVector3d& direction);
embedded::ViewParameters fromTop();
embedded::ViewParameters fromFront();
embedded::ViewParameters fromSide();
embedded::ViewParameters aslant();

// What of a list is drawn for all views, and for the one view.
std::vector<embedded::Primitive> worldPart(const embedded::DisplayList& list);
std::vector<embedded::Primitive> viewPart(const embedded::DisplayList& list);

// A member with one load, along gravity (-Z) with the values of `setup`, and a system whose arrows are two
// drawing units apart.
struct LoadedMember {
    LoadedMember();

    DrawnLoad* operator->() { return load.get(); }
    // Adds a straight piece; the first point begins the curve.
    LoadedMember& through(const std::vector<AcGePoint3d>& points);
    LoadedMember& arc(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end);
    // Puts values along the curve in, and as many vertices as the curve needs.
    LoadedMember& values(std::function<double(double length, double distance)> valueAt);
    LoadedMember& ofArea(double value);

    embedded::DisplayList draw(const embedded::ViewParameters& view = fromFront());

    std::unique_ptr<AcDbDatabase> drawing; // of the load's element, where a test puts it on one
    FilledSystem system;
    LoadMember member;
    boost::shared_ptr<DrawnLoad> load = boost::make_shared<DrawnLoad>();
};

} // namespace testing_support
