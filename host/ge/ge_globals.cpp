#include "geline3d.h"
#include "gemat2d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gescl3d.h"

// Points, vectors, scales and matrices are there before anything runs. Lines and planes are built from them
// in this file's order.
AcGeTol AcGeContext::gTol;

const AcGeVector2d AcGeVector2d::kIdentity(0.0, 0.0);
const AcGeVector2d AcGeVector2d::kXAxis(1.0, 0.0);
const AcGeVector2d AcGeVector2d::kYAxis(0.0, 1.0);
const AcGePoint2d AcGePoint2d::kOrigin(0.0, 0.0);
const AcGeMatrix2d AcGeMatrix2d::kIdentity;
const AcGeVector3d AcGeVector3d::kIdentity(0.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kXAxis(1.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kYAxis(0.0, 1.0, 0.0);
const AcGeVector3d AcGeVector3d::kZAxis(0.0, 0.0, 1.0);
const AcGePoint3d AcGePoint3d::kOrigin(0.0, 0.0, 0.0);
const AcGeScale3d AcGeScale3d::kIdentity(1.0, 1.0, 1.0);
const AcGeMatrix3d AcGeMatrix3d::kIdentity;

const AcGeLine3d AcGeLine3d::kXAxis(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis);
const AcGeLine3d AcGeLine3d::kYAxis(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis);
const AcGeLine3d AcGeLine3d::kZAxis(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);
const AcGePlane AcGePlane::kXYPlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis);
const AcGePlane AcGePlane::kYZPlane(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis);
const AcGePlane AcGePlane::kZXPlane(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis);
