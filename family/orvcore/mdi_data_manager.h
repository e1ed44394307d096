#pragma once

#include "orvcore/doc_data_base.h"
#include "orvcore/export.h"

#include <memory>
#include <vector>

// Knows everything that is kept per drawing, and tells it when a drawing goes.
class ORVCORE_API ORV_CMDIDataManager {
public:
    // Does not own `data`, which has to be detached before it ends. Attaching twice is as once; null does
    // nothing.
    void attach(ORV_CDocDataBase* data);
    // What is not attached is left alone. Allowed while a drawing's end is being told.
    void detach(ORV_CDocDataBase* data);

private:
    friend ORVCORE_API ORV_CMDIDataManager* orv_getMDIDataManager();
    class DatabaseListener;

    ORV_CMDIDataManager();
    ~ORV_CMDIDataManager();

    void tellEnd(AcDbDatabase* db);

    std::vector<ORV_CDocDataBase*>
        m_attached; // in the order of attaching; null where one left during a telling
    std::unique_ptr<DatabaseListener> m_listener;
    int m_telling = 0;
};

// The one manager; never null, and there until the process ends.
ORVCORE_API ORV_CMDIDataManager* orv_getMDIDataManager();
