#include "dbelipse.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbspline.h"
#include "embedded/host_start.h"
#include "entities/solid.h"
#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbCurve, AcDbEntity)
ACRX_DXF_DEFINE_MEMBERS(AcDbLine, AcDbCurve, AcDb::kDHL_1012, 0, 0, LINE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbArc, AcDbCurve, AcDb::kDHL_1012, 0, 0, ARC, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, AcDb::kDHL_1012, 0, 0, CIRCLE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve, AcDb::kDHL_1014, 0, 0, LWPOLYLINE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbPoint, AcDbEntity, AcDb::kDHL_1012, 0, 0, POINT, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbText, AcDbEntity, AcDb::kDHL_1012, 0, 0, TEXT, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbAttribute, AcDbText, AcDb::kDHL_1012, 0, 0, ATTRIB, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbSequenceEnd, AcDbEntity, AcDb::kDHL_1012, 0, 0, SEQEND, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, AcDb::kDHL_1012, 0, 0, INSERT, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbMInsertBlock, AcDbBlockReference, AcDb::kDHL_1012, 0, 0, INSERT,
                        ObjectDBX Classes)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbVertex, AcDbEntity)
ACRX_DXF_DEFINE_MEMBERS(AcDb2dVertex, AcDbVertex, AcDb::kDHL_1012, 0, 0, VERTEX, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDb3dPolylineVertex, AcDbVertex, AcDb::kDHL_1012, 0, 0, VERTEX, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDb2dPolyline, AcDbCurve, AcDb::kDHL_1012, 0, 0, POLYLINE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDb3dPolyline, AcDbCurve, AcDb::kDHL_1012, 0, 0, POLYLINE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbHatch, AcDbEntity, AcDb::kDHL_1014, 0, 0, HATCH, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbEllipse, AcDbCurve, AcDb::kDHL_1012, 0, 0, ELLIPSE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbSpline, AcDbCurve, AcDb::kDHL_1012, 0, 0, SPLINE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbSolid, AcDbEntity, AcDb::kDHL_1012, 0, 0, SOLID, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbMText, AcDbEntity, AcDb::kDHL_1012, 0, 0, MTEXT, ObjectDBX Classes)

namespace {

void initEntityClasses() {
    AcDbCurve::rxInit();
    AcDbLine::rxInit();
    AcDbArc::rxInit();
    AcDbCircle::rxInit();
    AcDbPolyline::rxInit();
    AcDbPoint::rxInit();
    AcDbText::rxInit();
    AcDbAttribute::rxInit();
    AcDbSequenceEnd::rxInit();
    AcDbBlockReference::rxInit();
    AcDbMInsertBlock::rxInit();
    AcDbVertex::rxInit();
    AcDb2dVertex::rxInit();
    AcDb3dPolylineVertex::rxInit();
    AcDb2dPolyline::rxInit();
    AcDb3dPolyline::rxInit();
    AcDbHatch::rxInit();
    AcDbMText::rxInit();
    AcDbEllipse::rxInit();
    AcDbSolid::rxInit();
    AcDbSpline::rxInit();
}

const embedded::RoomInitialiser roomInitialiser(31, initEntityClasses);

} // namespace
