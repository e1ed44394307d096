#pragma once

#include "dbgrip.h"
#include "dbptrar.h"
#include "orvshape/export.h"

#include <boost/function.hpp>

#include <map>
#include <memory>
#include <string>
#include <vector>

class AcDbDatabase;
class AcDbEntity;
class AcDbObject;

namespace orv {

// Knows what belongs to the grips that elements make: which call moves them, what they tell, how they look.
// The host gets a bare pointer with each grip and hands it back later; a pointer is looked up here before it
// is used, so one that is too old, or not of this manager, is never followed.
//
// What is kept for an entity's grips ends when its grips are made anew, and with the entity. It does not end
// with the module whose code a handler or an icon is: a module that adds grips to entities of other modules
// stays loaded (lockApplication) as long as there are drawings.
class ORVSHAPE_API GripManager {
public:
    GripManager(const GripManager&) = delete;
    GripManager& operator=(const GripManager&) = delete;

    // Moves what the grip stands for. `entity` is the one that is moved, open for write by its caller: the
    // one whose grip it is, or a copy of it that is dragged about.
    using MoveHandler = boost::function<void(AcDbEntity& entity, const AcGeVector3d& offset)>;
    // Draws the grip at a point, `size` pixels to either side. Point and view are the world's.
    using IconFunction = boost::function<void(AcGiViewportDraw& draw, const AcGePoint3d& point,
                                              AcDbGripOperations::DrawType type, int size)>;

    // Makes the grips of one entity for as long as a request for them runs.
    class ORVSHAPE_API ScopedCreator {
    public:
        // What was kept for grips of this entity ends, but for those that stand in `grips` already: several
        // creators may fill one array, one inside or behind the other. Both must outlive the creator; the
        // entity is open for read.
        ScopedCreator(const AcDbEntity& entity, AcDbGripDataPtrArray& grips);

        ScopedCreator(const ScopedCreator&) = delete;
        ScopedCreator& operator=(const ScopedCreator&) = delete;

        const AcDbEntity& entity() const { return m_entity; }

        // Appends a grip, which belongs to whoever asked for the grips. Without a handler nothing moves. An
        // empty tip or icon leaves it to the host.
        void createPointGrip(const AcGePoint3d& point, const MoveHandler& moveHandler,
                             const std::wstring& toolTip = std::wstring(),
                             const IconFunction& icon = IconFunction());

    private:
        const AcDbEntity& m_entity;
        AcDbGripDataPtrArray& m_grips;
    };

    // Splits what the host handed back, each part in its order: what was made here for entities of that
    // database goes to `mine`, all else to `others`. For null, which is where a dragged copy stands, all that
    // was made here is `mine`. Both are emptied first; they may not be `appData` itself.
    static void filterMyAppData(const AcDbDatabase* database, const AcDbVoidPtrArray& appData,
                                AcDbVoidPtrArray& mine, AcDbVoidPtrArray& others);

    // Calls the move handlers in their order. Pointers that are not of this manager are left out; so are
    // those that a handler ends meanwhile. What a handler throws passes out, and ends the row.
    static void onMove(AcDbEntity& entity, const AcDbVoidPtrArray& mine, const AcGeVector3d& offset);

private:
    struct AppData;
    class EntityListener;
    friend class ScopedCreator;

    static GripManager& instance();
    GripManager();
    ~GripManager();

    const AppData* find(const void* appData) const;
    void forget(const AcDbObject* entity, const AcDbGripDataPtrArray* kept);
    void* freshKey();
    void* keep(std::unique_ptr<AppData> appData);

    static const ACHAR* toolTipOf(AcDbGripData* grip);
    static void drawIcon(AcDbGripData* grip, AcGiViewportDraw* draw, const AcDbObjectId& entity,
                         AcDbGripOperations::DrawType type, AcGePoint3d* imagePoint, int size);

    std::vector<std::unique_ptr<char[]>> m_keys;
    std::size_t m_keysLeft = 0;
    std::map<const void*, std::unique_ptr<AppData>> m_appData; // by what the host gets as a grip's data
    std::multimap<const AcDbObject*, const void*> m_ofEntity;
    std::unique_ptr<EntityListener> m_listener;
};

} // namespace orv
