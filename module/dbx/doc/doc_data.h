#pragma once

#include "dbapserv.h"
#include "orvcore/doc_data_base.h"
#include "orvcore/mdi_data_manager.h"

#include <map>

class AcDbDatabase;

// A T for each drawing. It comes into being as a copy of a prototype when it is first asked for, and goes
// with its drawing. Should the T that goes ask for its drawing's T once more, it gets a fresh one, which goes
// right behind it. One entry is remembered, so that repeated calls for the same drawing search nothing; for
// the host's main thread only.
template <class T>
class ORV_CDocData final : public ORV_CDocDataBase {
public:
    explicit ORV_CDocData(const T& prototype = T()) : m_prototype(prototype) {
        orv_getMDIDataManager()->attach(this);
    }
    ~ORV_CDocData() { orv_getMDIDataManager()->detach(this); }

    ORV_CDocData(const ORV_CDocData&) = delete;
    ORV_CDocData& operator=(const ORV_CDocData&) = delete;

    // A drawing's T. Null stands for the working drawing. The reference holds until the drawing goes.
    T& operator()(AcDbDatabase* db) const {
        if (db == nullptr)
            db = acdbHostApplicationServices()->workingDatabase();
        if (db == m_last && m_lastData != nullptr)
            return *m_lastData;
        m_lastData = nullptr; // should the copy throw, nothing is remembered
        m_last = db;
        m_lastData = &m_data.emplace(db, m_prototype).first->second;
        return *m_lastData;
    }

    void onDatabaseToBeDestroyed(AcDbDatabase* db) override {
        remove(db);
        remove(db); // what the first one asked for while it went
    }

private:
    // Out of the map first: while it goes, nobody may come upon it.
    void remove(AcDbDatabase* db) {
        m_lastData = nullptr;
        m_data.extract(db); // goes at the end of this line
        m_lastData = nullptr;
    }

    // Asking is no change, though it may make the entry that is asked for.
    mutable std::map<AcDbDatabase*, T> m_data;
    T m_prototype;
    mutable AcDbDatabase* m_last = nullptr;
    mutable T* m_lastData = nullptr;
};
