#pragma once

#include "dbid.h"
#include "gepnt3d.h"
#include "rxevent.h"

// How a cloning tells the event reactors what happens; see AcRxEventReactor.
namespace embedded::events {

void beginDeepClone(AcDbDatabase* to, AcDbIdMapping& mapping);
void beginDeepCloneXlation(AcDbIdMapping& mapping, Acad::ErrorStatus* status);
void abortDeepClone(AcDbIdMapping& mapping);
void endDeepClone(AcDbIdMapping& mapping);
void beginWblockObjects(AcDbDatabase* from, AcDbIdMapping& mapping);
void wblockNotice(AcDbDatabase* from);
void beginWblock(AcDbDatabase* to, AcDbDatabase* from, const AcGePoint3d& basePoint);
void beginWblock(AcDbDatabase* to, AcDbDatabase* from, AcDbObjectId block);
void beginWblock(AcDbDatabase* to, AcDbDatabase* from);
void otherWblock(AcDbDatabase* to, AcDbIdMapping& mapping, AcDbDatabase* from);
void abortWblock(AcDbDatabase* to);
void endWblock(AcDbDatabase* to);

} // namespace embedded::events
