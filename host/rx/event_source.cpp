#include "embedded/event_source.h"

#include "embedded/guarded.h"
#include "rxclass.h"

#include <algorithm>
#include <vector>

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxEventReactor, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcRxEvent, AcRxObject)

namespace embedded::events {

namespace {

class EventSource : public AcRxEvent {
public:
    void addReactor(AcRxEventReactor* reactor) override {
        if (reactor != nullptr && !has(reactor))
            m_reactors.push_back(reactor);
    }

    void removeReactor(AcRxEventReactor* reactor) override {
        m_reactors.erase(std::remove(m_reactors.begin(), m_reactors.end(), reactor), m_reactors.end());
    }

    template <class Call>
    void tell(Call call) {
        const std::vector<AcRxEventReactor*> now = m_reactors;
        for (AcRxEventReactor* reactor : now)
            if (has(reactor))
                guarded(kReactorFailed, [&] { call(*reactor); });
    }

private:
    bool has(const AcRxEventReactor* reactor) const {
        return std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end();
    }

    std::vector<AcRxEventReactor*> m_reactors;
};

// Never destroyed: modules remove their reactors in their static termination.
EventSource& source() {
    static EventSource& one = *new EventSource;
    return one;
}

} // namespace

void databaseConstructed(AcDbDatabase* database) {
    source().tell([&](AcRxEventReactor& reactor) { reactor.databaseConstructed(database); });
}

void databaseToBeDestroyed(AcDbDatabase* database) {
    source().tell([&](AcRxEventReactor& reactor) { reactor.databaseToBeDestroyed(database); });
}

void dwgFileOpened(AcDbDatabase* database, const ACHAR* fileName) {
    source().tell([&](AcRxEventReactor& reactor) { reactor.dwgFileOpened(database, fileName); });
}

void initialDwgFileOpenComplete(AcDbDatabase* database) {
    source().tell([&](AcRxEventReactor& reactor) { reactor.initialDwgFileOpenComplete(database); });
}

void beginSave(AcDbDatabase* database, const ACHAR* intendedName) {
    source().tell([&](AcRxEventReactor& reactor) { reactor.beginSave(database, intendedName); });
}

void saveComplete(AcDbDatabase* database, const ACHAR* actualName) {
    source().tell([&](AcRxEventReactor& reactor) { reactor.saveComplete(database, actualName); });
}

void abortSave(AcDbDatabase* database) {
    source().tell([&](AcRxEventReactor& reactor) { reactor.abortSave(database); });
}

void tellAll(const std::function<void(AcRxEventReactor&)>& call) { source().tell(call); }

} // namespace embedded::events

AcRxEvent* acrxEventSource() { return &embedded::events::source(); }
