#include "drawable.h"

#include "acgi.h"
#include "dbextents.h"
#include "embedded/host_start.h"
#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcGiDrawable, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiSubEntityTraits, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiDrawableTraits, AcGiSubEntityTraits)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiGeometry, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiWorldGeometry, AcGiGeometry)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiViewportGeometry, AcGiGeometry)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiViewport, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiCommonDraw, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiWorldDraw, AcGiCommonDraw)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiViewportDraw, AcGiCommonDraw)
ACRX_NO_CONS_DEFINE_MEMBERS(AcGiContext, AcRxObject)

namespace {

void initDrawClasses() {
    AcGiDrawable::rxInit();
    AcGiSubEntityTraits::rxInit();
    AcGiDrawableTraits::rxInit();
    AcGiGeometry::rxInit();
    AcGiWorldGeometry::rxInit();
    AcGiViewportGeometry::rxInit();
    AcGiViewport::rxInit();
    AcGiCommonDraw::rxInit();
    AcGiWorldDraw::rxInit();
    AcGiViewportDraw::rxInit();
    AcGiContext::rxInit();
}

const embedded::RoomInitialiser roomInitialiser(40, initDrawClasses);

} // namespace

bool AcGiDrawable::bounds(AcDbExtents&) const { return false; }
Adesk::UInt32 AcGiDrawable::subViewportDrawLogicalFlags(AcGiViewportDraw*) { return kDrawableNone; }
