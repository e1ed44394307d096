#pragma once

#include "structure/beam.h"
#include "structure/frame.h"
#include "structure/model_store.h"
#include "structure/node.h"
#include "structure/section_plugin.h"
#include "structure/slab.h"

#include "dbsymtb.h"

#include <memory>
#include <string>
#include <vector>

namespace structure {

// Makes the elements of one frame. All of them stay open until the transaction ends that is running.
class FrameBuilder {
public:
    FrameBuilder(AcDbDatabase& database, const FrameOptions& options, const ModelStore& store);

    Frame build();
    // Of the topmost storey: beams and slabs.
    const std::vector<AcDbObjectId>& roof() const { return m_roof; }
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
    void makeCurvedBeam();

    Beam* addBeam(const orv::CurveSegment& segment, Node* start, Node* end, const Section& section,
                  const wchar_t* kind, std::vector<AcDbObjectId>& list);
    // Puts an element into model space; the drawing's from then on.
    template <class Kind>
    Kind* add(std::unique_ptr<Kind> element, const wchar_t* layer);
    AcDbObjectId layerOf(const wchar_t* prefix);

    AcDbDatabase& m_database;
    const FrameOptions m_options;
    const ModelStore m_store;
    AcDbBlockTableRecord* m_space = nullptr;
    Frame m_frame;
    std::vector<Node*> m_nodes;
    std::vector<Beam*> m_storeyBeams; // of the storey that is just made: along X, then along Y
    std::vector<AcDbObjectId> m_roof;
};

} // namespace structure
