#include "structure/class_rows.h"

#include "dbproxy.h"

namespace structure {

namespace {

// The version of drawings, and its maintenance release, from which on they may hold the classes.
constexpr int kDrawingVersion = AcDb::kDHL_1015;
constexpr int kMaintenanceRelease = 0;

// Without the module anything may be done to an element but moving it: what it consists of cannot be moved
// without its code.
constexpr int kProxyFlags = kAllAllowedBits & ~kTransformAllowed;

} // namespace

const wchar_t* const kApplicationName = L"TaldorkStructure";

const orv::ClassRow kNodeRow = {L"STR_Node", L"AcDbEntity", kDrawingVersion, kMaintenanceRelease,
                                kProxyFlags, L"STR_NODE",   kApplicationName};
const orv::ClassRow kBeamRow = {L"STR_Beam", L"ORV_SegmentedCurve", kDrawingVersion, kMaintenanceRelease,
                                kProxyFlags, L"STR_BEAM",           kApplicationName};
const orv::ClassRow kSlabRow = {L"STR_Slab", L"AcDbEntity", kDrawingVersion, kMaintenanceRelease,
                                kProxyFlags, L"STR_SLAB",   kApplicationName};
const orv::ClassRow kLoadRow = {L"STR_Load", L"ORV_SegmentedCurve", kDrawingVersion, kMaintenanceRelease,
                                kProxyFlags, L"STR_LOAD",           kApplicationName};

} // namespace structure
