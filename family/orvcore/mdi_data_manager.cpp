#include "orvcore/mdi_data_manager.h"

#include "rxevent.h"

#include <algorithm>

class ORV_CMDIDataManager::DatabaseListener : public AcRxEventReactor {
public:
    explicit DatabaseListener(ORV_CMDIDataManager& manager) : m_manager(manager) {}

    void databaseToBeDestroyed(AcDbDatabase* db) override { m_manager.tellEnd(db); }

private:
    ORV_CMDIDataManager& m_manager;
};

ORV_CMDIDataManager::ORV_CMDIDataManager() : m_listener(new DatabaseListener(*this)) {
    acrxEvent->addReactor(m_listener.get());
}

ORV_CMDIDataManager::~ORV_CMDIDataManager() = default;

void ORV_CMDIDataManager::attach(ORV_CDocDataBase* data) {
    if (data != nullptr && std::find(m_attached.begin(), m_attached.end(), data) == m_attached.end())
        m_attached.push_back(data);
}

void ORV_CMDIDataManager::detach(ORV_CDocDataBase* data) {
    const auto place = std::find(m_attached.begin(), m_attached.end(), data);
    if (place == m_attached.end())
        return;
    if (m_telling > 0)
        *place = nullptr; // the walk goes by positions
    else
        m_attached.erase(place);
}

void ORV_CMDIDataManager::tellEnd(AcDbDatabase* db) {
    ++m_telling;
    const std::size_t count =
        m_attached.size(); // what is attached during the walk has nothing of this drawing yet
    for (std::size_t i = 0; i < count; ++i)
        if (m_attached[i] != nullptr)
            m_attached[i]->onDatabaseToBeDestroyed(db);
    if (--m_telling == 0)
        m_attached.erase(std::remove(m_attached.begin(), m_attached.end(), nullptr), m_attached.end());
}

ORV_CMDIDataManager* orv_getMDIDataManager() {
    // Never destroyed: data with static life detach themselves at the end of the process, in any order.
    static ORV_CMDIDataManager* const s_manager = new ORV_CMDIDataManager;
    return s_manager;
}
