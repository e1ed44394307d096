#include "structure/frame_builder.h"

#include <boost/make_shared.hpp>

#include <stdexcept>

namespace structure {

namespace {

// There are two rows of columns: one bay along Y.
constexpr int kRows = 2;

// What is on a layer, in nine characters; the name of the store follows.
const wchar_t* const kNodeLayer = L"XSTRNODE_";
const wchar_t* const kBeamLayer = L"XSTRBEAM_";
const wchar_t* const kSlabLayer = L"XSTRSLAB_";

const Section kColumnSection = {L"SHS 200x10", L"S 355", 0.2, 0.2};
const Section kBeamSection = {L"I 300x150", L"S 355", 0.15, 0.3};
const Section kSlabSection = {L"d = 22 cm", L"C 30/37", 1.0, 0.22};

} // namespace

FrameBuilder::FrameBuilder(AcDbDatabase& database, const FrameOptions& options, const ModelStore& store)
    : m_options(options), m_store(store), m_space(database, store) {}

Frame FrameBuilder::build() {
    m_frame.system = m_store.name;
    makeNodes();
    makeColumns();
    for (int storey = 1; storey <= m_options.storeys; ++storey) {
        makeBeams(storey);
        makeSlabs(storey);
    }
    makeRafter();
    makeCurvedBeam();
    if (m_options.hasLoads)
        makeLoads();
    return m_frame;
}

AcGePoint3d FrameBuilder::gridPoint(int x, int y, int storey) const {
    const AcGeVector3d metres(x * m_options.bayLength, y * m_options.bayWidth,
                              storey * m_options.storeyHeight);
    return m_options.origin + metres * m_store.metre;
}

Node* FrameBuilder::nodeAt(int x, int y, int storey) const {
    const auto perRow = static_cast<std::size_t>(m_options.bays) + 1;
    const auto row = static_cast<std::size_t>(storey) * kRows + static_cast<std::size_t>(y);
    return m_nodes[row * perRow + static_cast<std::size_t>(x)];
}

std::wstring FrameBuilder::nameOf(const wchar_t* kind, std::size_t number) const {
    return std::wstring(kind) + std::to_wstring(number);
}

void FrameBuilder::makeNodes() {
    for (int storey = 0; storey <= m_options.storeys; ++storey)
        for (int y = 0; y < kRows; ++y)
            for (int x = 0; x <= m_options.bays; ++x) {
                Node* const node = m_space.add(std::make_unique<Node>(gridPoint(x, y, storey)), kNodeLayer);
                m_nodes.push_back(node);
                m_frame.nodes.push_back(node->objectId());
                node->general()->setName(nameOf(L"N", m_nodes.size()));
            }
}

Beam* FrameBuilder::addBeam(const orv::CurveSegment& segment, Node* start, Node* end, const Section& section,
                            const wchar_t* kind, std::vector<AcDbObjectId>& list) {
    Beam* const beam = m_space.add(std::make_unique<Beam>(segment), kBeamLayer);
    list.push_back(beam->objectId());
    beam->general()->setName(nameOf(kind, list.size()));
    beam->addPlugin(boost::make_shared<SectionPlugin>(section));
    demand(beam->connect(start, end), "a beam cannot be put at its nodes");
    return beam;
}

void FrameBuilder::makeColumns() {
    for (int storey = 0; storey < m_options.storeys; ++storey)
        for (int y = 0; y < kRows; ++y)
            for (int x = 0; x <= m_options.bays; ++x) {
                orv::CurveSegment line;
                orv::CurveSegment::line(gridPoint(x, y, storey), gridPoint(x, y, storey + 1), line);
                Beam* const column = addBeam(line, nodeAt(x, y, storey), nodeAt(x, y, storey + 1),
                                             kColumnSection, L"C", m_frame.columns);
                if (x == 0 && y == 0)
                    m_members.corner.push_back(column);
            }
}

void FrameBuilder::makeBeams(int storey) {
    m_storeyBeams.clear();
    const auto between = [&](int x, int y, int toX, int toY) {
        orv::CurveSegment line;
        orv::CurveSegment::line(gridPoint(x, y, storey), gridPoint(toX, toY, storey), line);
        m_storeyBeams.push_back(
            addBeam(line, nodeAt(x, y, storey), nodeAt(toX, toY, storey), kBeamSection, L"B", m_frame.beams));
        m_members.straight.push_back(m_storeyBeams.back());
        if (storey == m_options.storeys)
            m_roof.push_back(m_storeyBeams.back()->objectId());
    };
    for (int y = 0; y < kRows; ++y)
        for (int x = 0; x < m_options.bays; ++x)
            between(x, y, x + 1, y);
    for (int x = 0; x <= m_options.bays; ++x)
        between(x, 0, x, 1);
}

void FrameBuilder::makeSlabs(int storey) {
    const std::size_t bays = static_cast<std::size_t>(m_options.bays);
    for (int x = 0; x < m_options.bays; ++x) {
        const std::vector<AcGePoint3d> corners = {gridPoint(x, 0, storey), gridPoint(x + 1, 0, storey),
                                                  gridPoint(x + 1, 1, storey), gridPoint(x, 1, storey)};
        Slab* const slab =
            m_space.add(std::make_unique<Slab>(corners, kSlabSection.height * m_store.metre), kSlabLayer);
        m_members.slabs.push_back(slab);
        m_frame.slabs.push_back(slab->objectId());
        slab->general()->setName(nameOf(L"S", m_frame.slabs.size()));
        slab->addPlugin(boost::make_shared<SectionPlugin>(kSlabSection));
        // In front and behind, left and right.
        const std::size_t at = static_cast<std::size_t>(x);
        for (const std::size_t beam : {at, bays + at, 2 * bays + at, 2 * bays + at + 1})
            demand(slab->addSupport(m_storeyBeams[beam]->objectId()), "a slab cannot be put on its beams");
        if (storey == m_options.storeys)
            m_roof.push_back(slab->objectId());
    }
}

// Over the columns behind: up to a ridge in the middle, and down again.
void FrameBuilder::makeRafter() {
    const int top = m_options.storeys;
    const AcGePoint3d start = gridPoint(0, 1, top);
    const AcGePoint3d end = gridPoint(m_options.bays, 1, top);
    const AcGePoint3d ridge =
        start + (end - start) / 2.0 + AcGeVector3d::kZAxis * (m_options.storeyHeight / 2.0 * m_store.metre);
    orv::CurveSegment rise;
    orv::CurveSegment::line(start, ridge, rise);
    m_members.rafter =
        addBeam(rise, nodeAt(0, 1, top), nodeAt(m_options.bays, 1, top), kBeamSection, L"B", m_frame.beams);
    demand(m_members.rafter->appendLineTo(end), "the rafter has no curve");
    m_roof.push_back(m_members.rafter->objectId());
}

void FrameBuilder::makeCurvedBeam() {
    const int top = m_options.storeys;
    const AcGePoint3d start = gridPoint(0, 0, top);
    const AcGePoint3d end = gridPoint(m_options.bays, 0, top);
    const AcGePoint3d middle =
        start + (end - start) / 2.0 - AcGeVector3d::kYAxis * (m_options.bayWidth / 4.0 * m_store.metre);
    orv::CurveSegment arc;
    if (!orv::CurveSegment::arcThrough(start, middle, end, arc))
        throw std::runtime_error("the curved beam has no curve");
    m_members.curved =
        addBeam(arc, nodeAt(0, 0, top), nodeAt(m_options.bays, 0, top), kBeamSection, L"B", m_frame.beams);
    m_roof.push_back(m_members.curved->objectId());
}

void FrameBuilder::makeLoads() {
    FrameLoads loads(m_space, m_store.metre, m_members);
    loads.make();
    m_frame.loads = loads.ids();
    m_loadsOverSlabs = loads.overSlabs();
}

} // namespace structure
