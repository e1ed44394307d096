#include "module/dbx/elem/load_plugins.h"

#include "orvshape/segmented_curve.h"

using orv::elem::GenericLoad;

// Members that the class keeps for itself.
namespace {

template <bool GenericLoad::*flag>
struct OpenedFlag {
    friend bool& refreshFlag(GenericLoad& load) { return load.*flag; }
};
bool& refreshFlag(GenericLoad& load);

template <boost::shared_ptr<ORV_SegmentedCurve> GenericLoad::*curve>
struct OpenedCurve {
    friend boost::shared_ptr<ORV_SegmentedCurve>& curveOf(GenericLoad& load) { return load.*curve; }
};
boost::shared_ptr<ORV_SegmentedCurve>& curveOf(GenericLoad& load);

template struct OpenedFlag<&GenericLoad::m_refreshGraphics>;
template struct OpenedCurve<&GenericLoad::m_visCurve>;

} // namespace

namespace testing_support {

void forgetRefresh(GenericLoad& load) { refreshFlag(load) = false; }
boost::shared_ptr<ORV_SegmentedCurve>& ownCurve(GenericLoad& load) { return curveOf(load); }

} // namespace testing_support
