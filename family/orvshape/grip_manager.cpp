#include "orvshape/grip_manager.h"

#include "acgi.h"
#include "dbmain.h"

#include <set>

namespace orv {

struct GripManager::AppData {
    const AcDbObject* entity = nullptr;
    const AcDbDatabase* database = nullptr;
    MoveHandler moveHandler;
    std::wstring toolTip;
    IconFunction icon;
};

// Hears of the end of each entity that has grips: of one that is deleted as of one whose drawing ends.
class GripManager::EntityListener : public AcDbObjectReactor {
public:
    explicit EntityListener(GripManager& manager) : m_manager(manager) {}

    void goodbye(const AcDbObject* object) override { m_manager.forget(object, nullptr); }

private:
    GripManager& m_manager;
};

GripManager::GripManager() : m_listener(std::make_unique<EntityListener>(*this)) {}
GripManager::~GripManager() = default;

GripManager& GripManager::instance() {
    // Never destroyed: entities say goodbye until the very end of the process.
    static GripManager& manager = *new GripManager;
    return manager;
}

const GripManager::AppData* GripManager::find(const void* appData) const {
    const auto found = m_appData.find(appData);
    return found == m_appData.end() ? nullptr : found->second.get();
}

void GripManager::forget(const AcDbObject* entity, const AcDbGripDataPtrArray* kept) {
    std::set<const void*> stay;
    if (kept != nullptr)
        for (const AcDbGripData* grip : *kept)
            stay.insert(grip != nullptr ? grip->appData() : nullptr);
    // What handlers hold may end other entities, which leads back here: so they end when the walk is done.
    std::vector<std::unique_ptr<AppData>> ended;
    const auto range = m_ofEntity.equal_range(entity);
    for (auto at = range.first; at != range.second;) {
        if (stay.count(at->second) != 0) {
            ++at;
            continue;
        }
        const auto found = m_appData.find(at->second);
        ended.push_back(std::move(found->second));
        m_appData.erase(found);
        at = m_ofEntity.erase(at);
    }
}

// An address that no grip had before and that nobody else has: the host may hand a grip back long after its
// data have ended, and it must not be taken for a later one. So each grip takes one byte for good.
void* GripManager::freshKey() {
    constexpr std::size_t kBytes = 4096;
    if (m_keysLeft == 0) {
        m_keys.push_back(std::make_unique<char[]>(kBytes));
        m_keysLeft = kBytes;
    }
    return &m_keys.back()[--m_keysLeft];
}

void* GripManager::keep(std::unique_ptr<AppData> appData) {
    void* const key = freshKey();
    m_ofEntity.emplace(appData->entity, key);
    m_appData[key] = std::move(appData);
    return key;
}

GripManager::ScopedCreator::ScopedCreator(const AcDbEntity& entity, AcDbGripDataPtrArray& grips)
    : m_entity(entity), m_grips(grips) {
    instance().forget(&entity, &grips);
}

void GripManager::ScopedCreator::createPointGrip(const AcGePoint3d& point, const MoveHandler& moveHandler,
                                                 const std::wstring& toolTip, const IconFunction& icon) {
    auto appData = std::make_unique<AppData>();
    appData->entity = &m_entity;
    appData->database = m_entity.database();
    appData->moveHandler = moveHandler;
    appData->toolTip = toolTip;
    appData->icon = icon;
    GripManager& manager = instance();
    m_entity.addReactor(manager.m_listener.get()); // once; a second time is refused

    auto grip = std::make_unique<AcDbGripData>(point);
    if (!toolTip.empty())
        grip->setToolTipFunc(&GripManager::toolTipOf);
    if (!icon.empty())
        grip->setViewportDraw(&GripManager::drawIcon);
    grip->setAppData(manager.keep(std::move(appData)));
    m_grips.append(grip.get());
    static_cast<void>(grip.release()); // the array's from here on
}

void GripManager::filterMyAppData(const AcDbDatabase* database, const AcDbVoidPtrArray& appData,
                                  AcDbVoidPtrArray& mine, AcDbVoidPtrArray& others) {
    mine.removeAll();
    others.removeAll();
    for (void* pointer : appData) {
        const AppData* known = instance().find(pointer);
        const bool isMine = known != nullptr && (database == nullptr || known->database == database);
        (isMine ? mine : others).append(pointer);
    }
}

void GripManager::onMove(AcDbEntity& entity, const AcDbVoidPtrArray& mine, const AcGeVector3d& offset) {
    // A handler may have grips made anew, and with that end what it is called from: each is copied.
    for (void* pointer : mine) {
        const AppData* known = instance().find(pointer);
        if (known == nullptr || known->moveHandler.empty())
            continue;
        const MoveHandler move = known->moveHandler;
        move(entity, offset);
    }
}

const ACHAR* GripManager::toolTipOf(AcDbGripData* grip) {
    const AppData* known = grip != nullptr ? instance().find(grip->appData()) : nullptr;
    return known != nullptr ? known->toolTip.c_str() : nullptr;
}

void GripManager::drawIcon(AcDbGripData* grip, AcGiViewportDraw* draw, const AcDbObjectId&,
                           AcDbGripOperations::DrawType type, AcGePoint3d* imagePoint, int size) {
    const AppData* known = grip != nullptr ? instance().find(grip->appData()) : nullptr;
    if (known == nullptr || draw == nullptr || known->icon.empty())
        return;
    const IconFunction icon = known->icon;
    icon(*draw, imagePoint != nullptr ? *imagePoint : grip->gripPoint(), type, size);
}

} // namespace orv
