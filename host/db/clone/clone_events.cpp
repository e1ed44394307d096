#include "db/clone/clone_events.h"

#include "embedded/event_source.h"

namespace embedded::events {

void beginDeepClone(AcDbDatabase* to, AcDbIdMapping& mapping) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.beginDeepClone(to, mapping); });
}

// The first one that objects decides; the others are told all the same.
void beginDeepCloneXlation(AcDbIdMapping& mapping, Acad::ErrorStatus* status) {
    tellAll([&](AcRxEventReactor& reactor) {
        Acad::ErrorStatus es = Acad::eOk;
        reactor.beginDeepCloneXlation(mapping, &es);
        if (*status == Acad::eOk)
            *status = es;
    });
}

void abortDeepClone(AcDbIdMapping& mapping) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.abortDeepClone(mapping); });
}

void endDeepClone(AcDbIdMapping& mapping) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.endDeepClone(mapping); });
}

void beginWblockObjects(AcDbDatabase* from, AcDbIdMapping& mapping) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.beginWblockObjects(from, mapping); });
}

void wblockNotice(AcDbDatabase* from) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.wblockNotice(from); });
}

void beginWblock(AcDbDatabase* to, AcDbDatabase* from, const AcGePoint3d& basePoint) {
    tellAll([&](AcRxEventReactor& reactor) {
        const AcGePoint3d* point = &basePoint;
        reactor.beginWblock(to, from, point);
    });
}

void beginWblock(AcDbDatabase* to, AcDbDatabase* from, AcDbObjectId block) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.beginWblock(to, from, block); });
}

void beginWblock(AcDbDatabase* to, AcDbDatabase* from) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.beginWblock(to, from); });
}

void otherWblock(AcDbDatabase* to, AcDbIdMapping& mapping, AcDbDatabase* from) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.otherWblock(to, mapping, from); });
}

void abortWblock(AcDbDatabase* to) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.abortWblock(to); });
}

void endWblock(AcDbDatabase* to) {
    tellAll([&](AcRxEventReactor& reactor) { reactor.endWblock(to); });
}

} // namespace embedded::events
