#include "gi/display_recorder.h"

#include "acadstrc.h"
#include "acestext.h"
#include "dbmain.h"
#include "gi/recording_draws.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <exception>
#include <utility>

namespace embedded {
namespace {

const int kDeepest = 32;

// A walk for extents goes through so many drawables before it takes the blocks' own boxes.
const std::size_t kMostWithExactBoxes = 100000;

// A factor that the transform has in a direction, of a length along it.
double lengthAlong(const AcGeMatrix3d& matrix, const AcGeVector3d& direction) {
    const double length = direction.length();
    return length > 0.0 ? (matrix * direction).length() / length : matrix.scale();
}

// Empty boxes for a scope; the others come back whatever happens in it.
class SetAside {
public:
    explicit SetAside(DrawnBoxes& boxes) : m_boxes(boxes), m_before(std::exchange(boxes, DrawnBoxes())) {}
    ~SetAside() { m_boxes = m_before; }
    SetAside(const SetAside&) = delete;
    SetAside& operator=(const SetAside&) = delete;

private:
    DrawnBoxes& m_boxes;
    const DrawnBoxes m_before;
};

} // namespace

std::string textOf(Acad::ErrorStatus es) {
    const ACHAR* text = acadErrorStatusText(es);
    return text != nullptr ? platform::toUtf8(text) : "status " + std::to_string(es);
}

class DisplayRecorder::Interfaces {
public:
    explicit Interfaces(DisplayRecorder& recorder) : m_world(recorder), m_viewport(recorder) {}
    RecordingWorldDraw m_world;
    RecordingViewportDraw m_viewport;
};

DisplayRecorder::DisplayRecorder(AcDbDatabase* database, const ViewParameters& view, DisplayList& list)
    : m_database(database), m_parameters(view), m_list(list), m_view(view, *this, m_layers), m_transforms(1),
      m_interfaces(std::make_unique<Interfaces>(*this)) {}

DisplayRecorder::~DisplayRecorder() = default;

AcGiWorldDraw& DisplayRecorder::worldDraw() { return m_interfaces->m_world; }
AcGiViewportDraw& DisplayRecorder::viewportDraw() { return m_interfaces->m_viewport; }

double DisplayRecorder::deviation() const { return m_view.pixelSize() / 2.0; }

DisplayRecorder::State DisplayRecorder::state() const {
    return {m_traits.values, m_transforms.size(), m_ownTransforms, m_owner,
            m_ownerClass,    m_outermost,         m_inViewport,    m_isPlottable};
}

void DisplayRecorder::restore(const State& saved) {
    m_traits.values = saved.traits;
    m_transforms.resize(saved.transforms);
    m_ownTransforms = saved.ownTransforms;
    m_owner = saved.owner;
    m_ownerClass = saved.ownerClass;
    m_outermost = saved.outermost;
    m_inViewport = saved.inViewport;
    m_isPlottable = saved.isPlottable;
}

void DisplayRecorder::fail(const std::string& reason) {
    m_list.failures.push_back({m_owner, m_ownerClass, reason});
}

void DisplayRecorder::enter(AcGiDrawable& drawable) {
    m_ownerClass = drawable.isA();
    // What is in no database is a part of whoever draws it.
    if (drawable.isPersistent())
        m_owner = drawable.id();
    if (m_depth == 1)
        m_outermost = m_owner;
}

// Whether there is room for one more drawable.
bool DisplayRecorder::count() {
    ++m_drawables;
    if (m_depth > 0 && m_parameters.mostNested != 0 && ++m_nested > m_parameters.mostNested)
        m_list.isCut = true;
    return !isCut();
}

bool DisplayRecorder::draw(AcGiDrawable& drawable) {
    if (isCut() || !count())
        return true;
    const State saved = state();
    ++m_depth;
    m_ownTransforms = m_transforms.size();
    enter(drawable);
    try {
        if (m_depth > kDeepest)
            fail("it is nested too deep");
        else
            drawInside(drawable);
    } catch (const std::exception& failure) {
        fail(failure.what());
    } catch (Acad::ErrorStatus es) {
        fail(textOf(es));
    } catch (...) {
        fail("something that is no std::exception was thrown");
    }
    --m_depth;
    restore(saved);
    return isCut();
}

void DisplayRecorder::drawInside(AcGiDrawable& drawable) {
    const DrawTraits around = m_traits.values;
    m_traits.values = DrawTraits();
    const Adesk::UInt32 flags = drawable.setAttributes(&m_traits);
    if (m_depth > 1)
        m_traits.values = insideOf(around, m_traits.values);
    // What is frozen goes with all that is inside; what is off shows nothing of its own.
    const bool hidden = (flags & AcGiDrawable::kDrawableIsInvisible) != 0 ||
                        m_layers.of(m_traits.values.layer) == LayerStates::State::kFrozen;
    if (hidden && !m_parameters.showsHidden)
        return;
    if ((flags & AcGiDrawable::kDrawableNotPlottable) != 0)
        m_isPlottable = false;
    const State begin = state();
    m_inViewport = false;
    if (drawable.worldDraw(&worldDraw()) || m_parameters.regenType == kAcGiForExtents)
        return;
    restore(begin);
    m_inViewport = true;
    drawable.viewportDraw(&viewportDraw());
}

void DisplayRecorder::drawBlock(const AcDbObjectId& block, const AcGeMatrix3d& place,
                                const std::function<void()>& drawEntities) {
    const auto drawUnder = [&](const AcGeMatrix3d& matrix) {
        m_transforms.push_back(matrix);
        drawEntities();
        m_transforms.pop_back();
    };
    const AcGeMatrix3d toWorld = modelToWorld() * place;
    if (!m_keepsBoxesOnly) {
        drawUnder(toWorld);
        return;
    }
    const auto walk = [&](const AcGeMatrix3d& matrix) {
        const SetAside around(m_boxes);
        drawUnder(matrix);
        return m_boxes;
    };
    m_boxes.add(m_drawables <= kMostWithExactBoxes ? m_blockBoxes.under(block, toWorld, walk)
                                                   : m_blockBoxes.roughlyUnder(block, toWorld, walk));
}

bool DisplayRecorder::push(const AcGeMatrix3d& matrix) {
    m_transforms.push_back(modelToWorld() * matrix);
    return true;
}

bool DisplayRecorder::pop() {
    // What is around the drawable that is drawn is not its to take off.
    if (m_transforms.size() <= m_ownTransforms)
        return false;
    m_transforms.pop_back();
    return true;
}

void DisplayRecorder::begin(Primitive& made, PrimitiveKind kind) const {
    made.kind = kind;
    made.ofViewport = m_inViewport;
    made.isPlottable = m_isPlottable;
    made.owner = m_owner;
    made.ownerClass = m_ownerClass;
    made.outermost = m_outermost;
    made.traits = m_traits.values;
}

// Filled in where it stays: a drawing has millions of lines, and moving one costs as much as drawing it.
template <class Fill>
bool DisplayRecorder::add(PrimitiveKind kind, const Fill& fill) {
    if (isCut() || !m_view.layerVisible(m_traits.values.layer))
        return isCut();
    if (m_keepsBoxesOnly) {
        Primitive made;
        begin(made, kind);
        fill(made);
        m_boxes.drawn.addExt(made.extents());
        return false;
    }
    if (m_parameters.mostPrimitives != 0 && m_list.primitives.size() >= m_parameters.mostPrimitives) {
        m_list.isCut = true;
        return true;
    }
    Primitive& made = m_list.primitives.emplace_back();
    try {
        begin(made, kind);
        fill(made);
    } catch (...) {
        m_list.primitives.pop_back();
        throw;
    }
    return false;
}

// Where there is a thickness, its length in the world along that direction of the model.
void DisplayRecorder::stretchThickness(Primitive& made, const AcGeVector3d& direction) const {
    if (made.traits.thickness != 0.0)
        made.traits.thickness *= lengthAlong(modelToWorld(), direction);
}

// Points in the model, as points in the world.
void DisplayRecorder::place(Primitive& made, std::size_t count, const AcGePoint3d* points) const {
    made.points.assign(points, points + count);
    for (AcGePoint3d& point : made.points)
        point.transformBy(modelToWorld());
}

bool DisplayRecorder::arc(PlaneArc arc, AcGiArcType type, bool whole) {
    const AcGeMatrix3d& matrix = modelToWorld();
    const PlaneArc model = arc;
    if (arc.transformBy(matrix))
        return add(whole ? PrimitiveKind::kCircle : PrimitiveKind::kArc, [&](Primitive& made) {
            stretchThickness(made, model.normal);
            made.points = {arc.centre};
            made.normal = arc.normal;
            made.direction = arc.xAxis;
            made.radius = arc.radius;
            made.sweep = arc.sweep;
            made.arcType = type;
        });
    // An ellipse, which is a chain of chords here.
    const bool isOpen = !whole && type == kAcGiArcSimple;
    return add(isOpen ? PrimitiveKind::kPolyline : PrimitiveKind::kPolygon, [&](Primitive& made) {
        stretchThickness(made, model.normal);
        std::vector<AcGePoint3d> chords = model.chords(deviation() / std::max(matrix.scale(), 1.0e-12));
        if (whole)
            chords.pop_back();
        else if (type == kAcGiArcSector)
            chords.push_back(model.centre);
        place(made, chords.size(), chords.data());
        made.normal = (matrix * model.xAxis).crossProduct(matrix * model.yAxis()).normal();
    });
}

bool DisplayRecorder::points(PrimitiveKind kind, std::size_t count, const AcGePoint3d* points,
                             const AcGeVector3d* normal) {
    return add(kind, [&](Primitive& made) {
        stretchThickness(made, normal != nullptr ? *normal : AcGeVector3d());
        if (normal != nullptr)
            made.normal = (modelToWorld() * *normal).normal();
        place(made, count, points);
    });
}

bool DisplayRecorder::mesh(Adesk::UInt32 rows, Adesk::UInt32 columns, const AcGePoint3d* points) {
    return add(PrimitiveKind::kMesh, [&](Primitive& made) {
        made.rows = rows;
        made.columns = columns;
        place(made, std::size_t{rows} * columns, points);
    });
}

namespace {

bool facesFit(std::size_t count, std::size_t faceListSize, const Adesk::Int32* faceList) {
    std::size_t at = 0;
    while (at < faceListSize) {
        const std::int64_t told = faceList[at];
        const std::size_t corners = static_cast<std::size_t>(told < 0 ? -told : told);
        if (corners == 0 || corners >= faceListSize - at)
            return false;
        for (std::size_t i = at + 1; i <= at + corners; ++i)
            if (faceList[i] < 0 || static_cast<std::size_t>(faceList[i]) >= count)
                return false;
        at += corners + 1;
    }
    return faceListSize != 0;
}

} // namespace

bool DisplayRecorder::shell(std::size_t count, const AcGePoint3d* points, std::size_t faceListSize,
                            const Adesk::Int32* faceList) {
    if (!facesFit(count, faceListSize, faceList))
        return isCut();
    return add(PrimitiveKind::kShell, [&](Primitive& made) {
        made.faces.assign(faceList, faceList + faceListSize);
        place(made, count, points);
    });
}

// Along the base line, up and slanted: what the transform makes of these three tells width, height and slant
// of the letters, whatever it is.
bool DisplayRecorder::text(const AcGePoint3d& position, const AcGeVector3d& normal,
                           const AcGeVector3d& direction, const std::wstring& text,
                           const AcGiTextStyle& style) {
    const AcGeMatrix3d& matrix = modelToWorld();
    const AcGeVector3d along = direction.normal();
    const AcGeVector3d up = normal.crossProduct(along).normal();
    const AcGeVector3d madeAlong = matrix * along;
    const AcGeVector3d slanted = matrix * (up + along * std::tan(style.obliquingAngle()));
    const double stretch = madeAlong.length();
    const double rise = stretch > 0.0 ? madeAlong.crossProduct(slanted).length() / stretch : 0.0;
    if (!(rise > 0.0))
        return isCut();
    return add(PrimitiveKind::kText, [&](Primitive& made) {
        made.points = {matrix * position};
        made.direction = madeAlong / stretch;
        made.normal = madeAlong.crossProduct(slanted).normal();
        made.text = text;
        made.height = style.textSize() * rise;
        made.widthFactor = style.xScale() * stretch / rise;
        made.oblique = std::atan2(slanted.dotProduct(made.direction), rise);
        made.style = style;
        made.style.setTextSize(made.height);
        made.style.setXScale(made.widthFactor);
        made.style.setObliquingAngle(made.oblique);
        stretchThickness(made, normal);
    });
}

bool DisplayRecorder::worldPoints(PrimitiveKind kind, std::vector<AcGePoint3d> points) {
    return add(kind, [&points](Primitive& made) { made.points = std::move(points); });
}

bool DisplayRecorder::eyePoints(PrimitiveKind kind, std::size_t count, const AcGePoint3d* points) {
    AcGeMatrix3d toWorld;
    m_view.getEyeToWorldTransform(toWorld);
    std::vector<AcGePoint3d> made(points, points + count);
    for (AcGePoint3d& point : made)
        point.transformBy(toWorld);
    return worldPoints(kind, std::move(made));
}

void DisplayRecorder::setExtents(const AcGePoint3d corners[2]) {
    AcDbExtents told;
    told.addPoint(corners[0]);
    told.addPoint(corners[1]);
    told.transformBy(modelToWorld());
    m_boxes.told.addExt(told);
}

} // namespace embedded
