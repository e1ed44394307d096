#include "gemat3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"

AcGeTol AcGeContext::gTol;

const AcGeVector2d AcGeVector2d::kIdentity(0.0, 0.0);
const AcGeVector2d AcGeVector2d::kXAxis(1.0, 0.0);
const AcGeVector2d AcGeVector2d::kYAxis(0.0, 1.0);
const AcGePoint2d AcGePoint2d::kOrigin(0.0, 0.0);
const AcGeVector3d AcGeVector3d::kIdentity(0.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kXAxis(1.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kYAxis(0.0, 1.0, 0.0);
const AcGeVector3d AcGeVector3d::kZAxis(0.0, 0.0, 1.0);
const AcGePoint3d AcGePoint3d::kOrigin(0.0, 0.0, 0.0);
const AcGeScale3d AcGeScale3d::kIdentity(1.0, 1.0, 1.0);
const AcGeMatrix3d AcGeMatrix3d::kIdentity;
