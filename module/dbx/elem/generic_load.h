#pragma once

#include "base/export.h"
#include "dbx/elem/load_types.h"
#include "dbx/elem/load_vertex.h"
#include "dbx/elem/plugin.h"

#include "dbid.h"
#include "dbmtext.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <boost/function.hpp>
#include <boost/optional.hpp>
#include <boost/shared_ptr.hpp>

#include <deque>
#include <memory>
#include <set>
#include <string>

class ORV_SegmentedCurve;

namespace orv::elem {

namespace legacy {
class ORV_Load;
}
namespace detail {
struct LoadVisualizationData;
}

// What all plugins are that make an element a load.
class TALDORK_API ILoad : public ElementBase::IPlugin {
public:
    ~ILoad() override;

protected:
    // Nothing.
    void onErase(bool erasing) override;
};

// The load as a plugin: its data, and how it is drawn. The element has identity and layer; it may be the
// curve that the load stands on itself (an ORV_SegmentedCurve), or the plugin has a curve of its own.
// Concrete loads derive from FreeLoadBase or ElementLoad, with an id and a creator of their own.
//
// "Read" and "write" are the owner's checks, as in IPlugin. Each change asks for the arrows to be laid out
// anew at the next drawing, unless it says otherwise. For the data see docs/loads.md.
struct TALDORK_API GenericLoad : public ILoad {
public:
    using Vertex = LoadVertex;
    using AttachmentCallback = boost::function<AcDbMText::AttachmentPoint(const AcGeVector3d&)>;

    static constexpr unsigned int kVersion = 3; // of this class's part of the plugin's data
    static constexpr unsigned int kMagic = 0x57c5d8c1;

    ~GenericLoad() override;

protected:
    GenericLoad();

    // Takes the points of all vertices through the matrix, and asks for no new arrows.
    void onPostTransform(const AcGeMatrix3d& xform) override;
    // Sets the colour that a load is drawn in: green for thermal ones, a darker red for others.
    void onPreWorldDraw(const AcDbEntity& entity, AcGiWorldDraw& wd) override;
    // Stems, the line through the tails, and the hatch of an area. Lays the arrows out where that was asked
    // for. Local types that have no element are laid out and not drawn.
    void onWorldDraw(AcadWorldDraw& wd, System& system) override;
    void onPreViewportDraw(const AcDbEntity& entity, AcGiViewportDraw& vd) override;
    // Heads, and the text of a point load. std::out_of_range, after a report, for a point load without a
    // vertex.
    void onViewportDraw(AcadViewportDraw& vd, System& system) override;
    // When the element goes, the one that it acted on forgets it. Nothing during an undo or redo, which
    // brings that one's own state back.
    void onErase(bool erasing) override;
    // A load on an element is cloned only together with it.
    bool canElementBeCloned(const ElementCloneContext& context) const override;
    void onMoved() override;
    // True.
    bool onSave(serialization::IOutArchive& archive) const override;
    // Puts name, first load case, kind, type and values, and of two vertices or more the loaded stretch,
    // under the keys that LoadBase::createSaveString begins, free for a load without an element. True.
    bool onSave(KeyValueStorage& storage) const override;
    // False for data of a newer version, of which nothing is taken, and for a wrong end; both are reported.
    // What the archive throws passes through, with what was read before it taken. Drops the plugin's own
    // curve, but not for data of version 1, which hold nothing: they only take vertices and load cases away.
    bool onLoad(serialization::IInArchive& archive, unsigned int elementVersion) override;

public:
    // The order of the virtual operations is known to other modules.

    // An edit of the entity's vertices (LoadBase) is over. Behind onGeometryModified.
    virtual void onEdited() = 0;
    // The entity's vertices (LoadBase) were edited. Nothing, unless overridden.
    virtual void onGeometryModified();

protected:
    // Sets getValueAtDistFn or getValueAtPosFn, both of which are empty, for the arrows that are laid out
    // next.
    virtual void setupInterpolationData(System& system, detail::LoadVisualizationData& data) = 0;

public:
    // May change the arrows that were laid out. Nothing, unless overridden.
    virtual void postprocessInterpolationData(detail::LoadVisualizationData& data) const;

protected:
    // What was changed, after the change. Nothing, unless overridden.
    virtual void onValuesChanged();
    virtual void onElementChanged();
    virtual void onLoadTypeChanged();

public:
    // Read, all. The element that the load acts on; null for one that is free in space.
    const AcDbObjectId& getElement() const;
    const std::deque<Vertex>& getVertices() const;
    unsigned int numVertices() const;
    int getType() const;
    LOAD_KIND getClass() const;
    LoadTypeCategory getCategory() const;
    LoadDistribution getDistribution() const;
    const std::set<unsigned int>& getLoadCases() const;
    // Write.
    std::deque<Vertex>& getVerticesForWrite();

    // Write, all.
    // Then onLoadTypeChanged.
    void setType(int type);
    void setClass(LOAD_KIND kind);
    void setCategory(LoadTypeCategory category);
    void setDistribution(LoadDistribution distribution);
    // Then onValuesChanged, if there are any.
    void setVertices(const std::deque<Vertex>& vertices);
    // Then onValuesChanged. An index that names no vertex is reported, and changes and asks for nothing.
    void setValueAt(int index, double value);
    // An index that names no vertex is reported, and changes no vertex.
    void setTextAt(int index, const std::wstring& text);
    // Replaces all.
    void setLoadCase(unsigned int loadCase);
    void setLoadCases(const std::set<unsigned int>& loadCases);
    // Also sets the properties 30004 and 1012 of the load's element to false, since what they say holds for
    // the old one. Then onElementChanged. TypeMismatchException for such a property that is no bool, with the
    // element taken and nothing told.
    void setElement(const AcDbObjectId& id);

    // Read. None, or an empty text that lives for ever, for an index that names no vertex; the text is then
    // reported.
    boost::optional<double> getValueAt(int index) const;
    const std::wstring& getTextAt(int index) const;
    // Read. An index that names no vertex is reported, and leaves `point` alone.
    void getPointAt(int index, AcGePoint3d& point) const;

    // Whether the arrows are to be laid out anew at the next drawing; asks for it, without a check.
    bool refreshGraphics() const;
    void requestRefreshGraphics();

    // Which place of a line load's text comes to its point, by the load's direction. It is asked when the dot
    // of the text was drawn; what it throws passes through, and the text is not drawn then. Without it, or
    // with an empty one: middle centre. One for all loads: it is kept until another one, or an empty one, is
    // set, so whoever sets one of their own takes it back before their code goes.
    static void setAttachmentCallback(AttachmentCallback callback);

    // Of a local load on an element: the element's own coordinate system in the drawing's world, as its first
    // Plugin_General tells it. None for any other load; for an element that is erased, a proxy, or cannot be
    // opened for reading (as while somebody has it open for writing); without such a plugin; and where the
    // plugin has none. No check of the owner. What the plugin throws passes through.
    boost::optional<AcGeMatrix3d> getElementXform() const;

    // A line or area load as points with values, at most 63, in the drawing's world: along its curve, in
    // chords of five point sizes of the system at most, unless 63 are too few for that. Empty for point and
    // volume loads, for one without a curve, and, with a report, for one whose system cannot be told or whose
    // picture cannot be prepared, and one that got no value function. What is drawn stays as it is.
    //
    // Read, unless it is empty before anything is prepared. What the owner's check, setupInterpolationData,
    // the value function and a Plugin_General throw passes through, and so do the exceptions of UseSystem.
    std::deque<Vertex> getVerticesForExport();
    // Of a projected load on an element that is a curve: the loaded part of that curve, by the positions of
    // the first and the last vertex, as a curve in no drawing; the caller's. Null for any other, and for one
    // without vertices; with a report for an element that is erased, no curve or cannot be opened for
    // reading, and for a part that no curve can be made of, as one without length. No check of the owner.
    std::unique_ptr<ORV_SegmentedCurve> getExportCurveForProjectedLoad() const;

protected:
    // Read; write. The curve that a line or area load is drawn along where its element is no curve, or an
    // empty one; null without one. Shared with whoever set it: who changes it asks for new arrows
    // (requestRefreshGraphics). A load's own data do not have it: the load entity (ORV_Load) files it, and
    // loading drops it.
    const boost::shared_ptr<ORV_SegmentedCurve>& getOwnCurve() const;
    void setOwnCurve(boost::shared_ptr<ORV_SegmentedCurve> curve);

    // Of line and area loads: draws the name and the text of a vertex, and a dot at the arrow's tail, at a
    // distance along the curve or at a point. Draws nothing without a text, or before the load was drawn. An
    // index that names no vertex is reported. What the value function throws passes through, and so does that
    // it is not the one that is asked (boost::bad_function_call).
    void _draw_lineload_text_at(AcadViewportDraw& vd, System& system, double dist, unsigned int vertexIndex);
    void _draw_areaload_text_at(AcadViewportDraw& vd, System& system, const AcGePoint3d& point,
                                unsigned int vertexIndex, const std::wstring& prefix);

private:
    friend class legacy::ORV_Load;

    bool hasVertex(int index) const;
    // A local direction that there is no element for means nothing: such a load shows no arrows.
    bool isHidden() const;
    AcGeVector3d getDirection(const System& system) const;
    // The curve that the load is drawn along: its element, or its own one; null if neither is there, or both
    // are empty.
    ORV_SegmentedCurve* getDrawnCurve() const;
    // Whether that is one to which the picture's curve belongs still.
    bool hasPictureOfCurve() const;
    // The element's name with a colon, if it has one, and the text of a vertex.
    std::wstring getDisplayText(int index) const;
    // Makes all ready for laying arrows out along the picture's curve. False, with the picture as it was, if
    // there is nothing to lay out.
    bool prepare(System& system, detail::LoadVisualizationData& visData);
    void drawPointStem(AcadWorldDraw& wd, System& system);
    void drawAlongCurve(AcadWorldDraw& wd, System& system);
    struct VertexText; // what stands at which place of the picture
    void drawVertexText(AcadViewportDraw& vd, const VertexText& shown) const;
    void readData(serialization::IInArchive& archive, unsigned int version);
    void dropCurve();

    AcDbObjectId m_element;
    boost::shared_ptr<ORV_SegmentedCurve> m_visCurve;
    int m_type = kLoadTypeGravity;
    LOAD_KIND m_class = kLoadKindDefault;
    LoadTypeCategory m_category = kLoadTypeCategoryNone;
    LoadDistribution m_distribution = kPointLoad;
    std::set<unsigned int> m_loadCases;
    std::deque<Vertex> m_vertices;
    boost::shared_ptr<detail::LoadVisualizationData> m_vis;
    bool m_refreshGraphics = false;
};

} // namespace orv::elem
