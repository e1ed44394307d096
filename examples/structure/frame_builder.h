#pragma once

#include "structure/beam.h"
#include "structure/frame.h"
#include "structure/frame_loads.h"
#include "structure/model_space.h"
#include "structure/node.h"
#include "structure/section_plugin.h"
#include "structure/slab.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace structure {

// Makes the elements of one frame. All of them stay open until the transaction ends that is running.
class FrameBuilder {
public:
    FrameBuilder(AcDbDatabase& database, const FrameOptions& options, const ModelStore& store);

    Frame build();
    // Of the topmost storey: beams and slabs.
    const std::vector<AcDbObjectId>& roof() const { return m_roof; }
    // Its free loads, each with the slab that it stands over.
    const std::vector<std::pair<AcDbObjectId, AcDbObjectId>>& loadsOverSlabs() const {
        return m_loadsOverSlabs;
    }
    // Of the columns' grid.
    AcGePoint3d lowestCorner() const { return gridPoint(0, 0, 0); }
    AcGePoint3d highestCorner() const { return gridPoint(m_options.bays, 1, m_options.storeys); }

private:
    AcGePoint3d gridPoint(int x, int y, int storey) const;
    Node* nodeAt(int x, int y, int storey) const;
    std::wstring nameOf(const wchar_t* kind, std::size_t number) const;

    void makeNodes();
    void makeColumns();
    void makeBeams(int storey);
    void makeSlabs(int storey);
    void makeRafter();
    void makeCurvedBeam();
    void makeLoads();

    Beam* addBeam(const orv::CurveSegment& segment, Node* start, Node* end, const Section& section,
                  const wchar_t* kind, std::vector<AcDbObjectId>& list);
    const FrameOptions m_options;
    const ModelStore m_store;
    ModelSpace m_space;
    Frame m_frame;
    FrameMembers m_members;
    std::vector<Node*> m_nodes;
    std::vector<Beam*> m_storeyBeams; // of the storey that is just made: along X, then along Y
    std::vector<AcDbObjectId> m_roof;
    std::vector<std::pair<AcDbObjectId, AcDbObjectId>> m_loadsOverSlabs;
};

} // namespace structure
