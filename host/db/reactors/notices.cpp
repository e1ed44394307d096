#include "db/reactors/notices.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "db/open_close.h"
#include "db/symbol_index.h"
#include "embedded/guarded.h"
#include "rxclass.h"

#include <algorithm>

namespace embedded::notices {

namespace {

// In the order of adding. Whoever is removed meanwhile is not told any more.
template <class Reactor, class List, class Call>
void tellEach(List list, Call call) {
    const std::vector<Reactor*>* now = list();
    if (now == nullptr || now->empty())
        return;
    const std::vector<Reactor*> told = *now;
    for (Reactor* reactor : told) {
        now = list();
        if (now != nullptr && std::find(now->begin(), now->end(), reactor) != now->end())
            guarded(kReactorFailed, [&] { call(*reactor); });
    }
}

template <class Call>
void tellReactors(const AcDbObject& object, Call call) {
    if (ObjectAccess::extras(object) == nullptr)
        return;
    tellEach<AcDbObjectReactor>(
        [&]() -> const std::vector<AcDbObjectReactor*>* {
            const ObjectExtras* extras = ObjectAccess::extras(object);
            return extras != nullptr ? &extras->transientReactors : nullptr;
        },
        call);
}

template <class Call>
void tellDatabase(const AcDbObject& object, Call call) {
    AcDbStub* stub = object.objectId();
    DatabaseCore* core = coreOf(stub);
    if (core == nullptr || core->reactors.empty())
        return;
    AcDbDatabase* database = &core->owner();
    tellEach<AcDbDatabaseReactor>([&] { return &core->reactors; },
                                  [&](AcDbDatabaseReactor& reactor) { call(reactor, database); });
}

// The objects that are named as reactors. A dictionary is named by all of its entries, and listens to none.
// `onlyResident`: for what happens too often to make objects from their bytes for it.
template <class Call>
void tellPersistent(const AcDbObject& object, Call call, bool onlyResident = false) {
    const ObjectExtras* extras = ObjectAccess::extras(object);
    if (extras == nullptr || extras->reactors.empty())
        return;
    const std::vector<AcDbObjectId> ids = extras->reactors;
    for (const AcDbObjectId& id : ids) {
        if (!objectIsLive(id) || id == object.objectId() ||
            (onlyResident && static_cast<AcDbStub*>(id)->object == nullptr))
            continue;
        bool opened = false;
        guarded(kReactorFailed, [&] {
            AcDbObject* reactor = nullptr;
            opened = openStub(id, AcDb::kForNotify, false, reactor) == Acad::eOk;
            if (opened)
                call(*reactor);
        });
        // Only the notify is given back: the object may be open for something else beside it.
        if (opened)
            static_cast<AcDbStub*>(id)->clear(kOpenForNotify);
    }
}

template <class Call>
void tellObject(const AcDbObject& object, Call call) {
    tellReactors(object, call);
    tellPersistent(object, call);
}

} // namespace

void appended(AcDbObject& object) {
    tellDatabase(object, [&](AcDbDatabaseReactor& reactor, AcDbDatabase* database) {
        reactor.objectAppended(database, &object);
    });
}

void remade(AcDbObject& object, bool there) {
    tellObject(object,
               [&](auto& reactor) { there ? reactor.reappended(&object) : reactor.unappended(&object); });
    tellDatabase(object, [&](AcDbDatabaseReactor& reactor, AcDbDatabase* database) {
        there ? reactor.objectReAppended(database, &object) : reactor.objectUnAppended(database, &object);
    });
}

void copied(const AcDbObject& source, const AcDbObject& copy) {
    tellObject(source, [&](auto& reactor) { reactor.copied(&source, &copy); });
}

void openedForModify(AcDbObject& object) {
    tellObject(object, [&](auto& reactor) { reactor.openedForModify(&object); });
    tellDatabase(object, [&](AcDbDatabaseReactor& reactor, AcDbDatabase* database) {
        reactor.objectOpenedForModify(database, &object);
    });
}

void modified(AcDbObject& object) {
    tellObject(object, [&](auto& reactor) { reactor.modified(&object); });
    tellDatabase(object, [&](AcDbDatabaseReactor& reactor, AcDbDatabase* database) {
        reactor.objectModified(database, &object);
    });
}

void erased(AcDbObject& object, bool erasing) {
    tellObject(object, [&](auto& reactor) { reactor.erased(&object, erasing); });
    tellDatabase(object, [&](AcDbDatabaseReactor& reactor, AcDbDatabase* database) {
        reactor.objectErased(database, &object, erasing);
    });
}

void undone(AcDbObject& object) {
    tellObject(object, [&](auto& reactor) { reactor.modifyUndone(&object); });
    tellDatabase(object, [&](AcDbDatabaseReactor& reactor, AcDbDatabase* database) {
        reactor.objectModified(database, &object);
    });
}

void cancelled(AcDbObject& object) {
    tellObject(object, [&](auto& reactor) { reactor.cancelled(&object); });
}

void closed(AcDbObject& object) {
    const AcDbObjectId id = object.objectId();
    const auto call = [&](auto& reactor) { reactor.objectClosed(id); };
    tellReactors(object, call);
    tellPersistent(object, call, true);
}

void goodbye(AcDbObject& object) {
    tellReactors(object, [&](AcDbObjectReactor& reactor) { reactor.goodbye(&object); });
}

void databaseGoes(AcDbDatabase& database) {
    DatabaseCore& core = database.core();
    tellEach<AcDbDatabaseReactor>([&] { return &core.reactors; },
                                  [&](AcDbDatabaseReactor& reactor) { reactor.goodbye(&database); });
}

} // namespace embedded::notices
