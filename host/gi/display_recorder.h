#pragma once

#include "gi/block_boxes.h"
#include "gi/draw_traits.h"
#include "gi/draw_view.h"
#include "gi/plane_arc.h"

#include <memory>
#include <string>

namespace embedded {

// The status in words, or its number if it has none.
std::string textOf(Acad::ErrorStatus es);

// Takes what drawables draw and makes primitives of it: transformed to the world, with the traits that count
// and the entity that is drawn. The draw interfaces that drawables see stand in front of it.
class DisplayRecorder {
public:
    // `database` may be null. All that is given must outlive the recorder.
    DisplayRecorder(AcDbDatabase* database, const ViewParameters& view, DisplayList& list);
    ~DisplayRecorder();

    // A drawable with its traits and its owner's place. True when the drawing is to stop.
    bool draw(AcGiDrawable& drawable);
    bool isCut() const { return m_list.isCut; }

    const AcGeMatrix3d& modelToWorld() const { return m_transforms.back(); }
    // Nothing is between the model and the world.
    bool isInWorld() const { return m_transforms.size() == 1; }
    // From now on primitives are not listed, only their boxes are kept, and those of a block for all of its
    // references.
    void keepBoxesOnly() { m_keepsBoxesOnly = true; }
    // The entities of a block, which `drawEntities` draws, at a place in the drawable that is drawn.
    void drawBlock(const AcDbObjectId& block, const AcGeMatrix3d& place,
                   const std::function<void()>& drawEntities);

    bool push(const AcGeMatrix3d& matrix);
    bool pop();

    // Each takes model coordinates and is transformed here; true when the drawing is to stop.
    bool arc(PlaneArc arc, AcGiArcType type, bool whole);
    bool points(PrimitiveKind kind, std::size_t count, const AcGePoint3d* points,
                const AcGeVector3d* normal = nullptr);
    bool mesh(Adesk::UInt32 rows, Adesk::UInt32 columns, const AcGePoint3d* points);
    bool shell(std::size_t count, const AcGePoint3d* points, std::size_t faceListSize,
               const Adesk::Int32* faceList);
    bool text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
              const std::wstring& text, const AcGiTextStyle& style);
    // World coordinates.
    bool worldPoints(PrimitiveKind kind, std::vector<AcGePoint3d> points);
    bool eyePoints(PrimitiveKind kind, std::size_t count, const AcGePoint3d* points);

    // An entity has told its box itself.
    void setExtents(const AcGePoint3d corners[2]);
    // What was drawn, while only boxes are kept, and what was told.
    const DrawnBoxes& boxes() const { return m_boxes; }

    RecordedTraits& traits() { return m_traits; }
    DrawView& view() { return m_view; }
    const ViewParameters& parameters() const { return m_parameters; }
    AcDbDatabase* database() const { return m_database; }
    double deviation() const;

    AcGiWorldDraw& worldDraw();
    AcGiViewportDraw& viewportDraw();

private:
    class Interfaces;
    // What is put back behind each drawable.
    struct State {
        DrawTraits traits;
        std::size_t transforms;
        std::size_t ownTransforms;
        AcDbObjectId owner;
        AcRxClass* ownerClass;
        AcDbObjectId outermost;
        bool inViewport;
        bool isPlottable;
    };

    State state() const;
    void restore(const State& saved);
    bool count();
    void enter(AcGiDrawable& drawable);
    void drawInside(AcGiDrawable& drawable);
    void fail(const std::string& reason);
    void begin(Primitive& made, PrimitiveKind kind) const;
    template <class Fill>
    bool add(PrimitiveKind kind, const Fill& fill);
    void stretchThickness(Primitive& made, const AcGeVector3d& direction) const;
    void place(Primitive& made, std::size_t count, const AcGePoint3d* points) const;

    AcDbDatabase* m_database;
    const ViewParameters& m_parameters;
    DisplayList& m_list;
    LayerStates m_layers;
    DrawView m_view;
    RecordedTraits m_traits;
    std::vector<AcGeMatrix3d> m_transforms;
    std::size_t m_ownTransforms = 1; // those below are around the drawable that is drawn
    AcDbObjectId m_owner;
    AcRxClass* m_ownerClass = nullptr;
    AcDbObjectId m_outermost;
    bool m_inViewport = false;
    bool m_isPlottable = true;
    int m_depth = 0;
    std::size_t m_drawables = 0;
    std::size_t m_nested = 0; // of the drawables those inside of others
    bool m_keepsBoxesOnly = false;
    DrawnBoxes m_boxes;
    BlockBoxes m_blockBoxes;
    std::unique_ptr<Interfaces> m_interfaces;
};

} // namespace embedded
