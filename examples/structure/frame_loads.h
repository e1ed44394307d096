#pragma once

#include "structure/frame.h"
#include "structure/load.h"
#include "structure/model_space.h"

#include <memory>
#include <utility>
#include <vector>

namespace structure {

class Beam;
class Slab;

// The members of a frame, open for write.
struct FrameMembers {
    std::vector<Beam*> corner;   // the columns at the first corner, from below
    std::vector<Beam*> straight; // beams, storey by storey: in front, behind, across
    Beam* rafter = nullptr;
    Beam* curved = nullptr;
    std::vector<Slab*> slabs;
};

// Puts loads onto the members of one frame, so that each kind of load and each shape is there once, as far as
// there are members: weight on the lower storey, imposed loads on the roof, wind on the corner, snow on the
// rafter, and free loads over the slabs. Each load case has a layer of its own. Throws std::runtime_error.
class FrameLoads {
public:
    FrameLoads(ModelSpace& space, double metre, const FrameMembers& members);

    void make();
    const std::vector<AcDbObjectId>& ids() const { return m_ids; }
    // Free loads, each with the slab that it stands over.
    const std::vector<std::pair<AcDbObjectId, AcDbObjectId>>& overSlabs() const { return m_overSlabs; }

private:
    void loadBeams();
    void loadCorner();
    void loadSlabs();

    Load& add(std::unique_ptr<Load> load);
    void addTo(Beam& beam, double from, double to, const LoadProperties& properties);
    void addOver(const Slab& slab, std::unique_ptr<Load> load);
    // A place over a slab, in shares of its first and last edge.
    static AcGePoint3d placeOver(const Slab& slab, double along, double across);

    ModelSpace& m_space;
    const double m_metre;
    const FrameMembers m_members;
    std::vector<AcDbObjectId> m_ids;
    std::vector<std::pair<AcDbObjectId, AcDbObjectId>> m_overSlabs;
};

// Lets each free load of a frame refer to its slab by the number that this has got meanwhile. Throws
// std::runtime_error.
void referToSlabs(const std::vector<std::pair<AcDbObjectId, AcDbObjectId>>& overSlabs);

} // namespace structure
