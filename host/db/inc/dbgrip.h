#pragma once

#include "AdAChar.h"
#include "acadstrc.h"
#include "acarray.h"
#include "adesk.h"
#include "dbid.h"
#include "gepnt3d.h"
#include "gevec3d.h"

class AcDbGripData;
class AcGiViewportDraw;
class AcGiWorldDraw;

namespace AcDbGripOperations {
// What a grip's function is told of, or answers about it.
enum GripStatus {
    kGripStart = 0,
    kGripEnd = 1,
    kGripAbort = 2,
    kStretchStart = 3,
    kStretchEnd = 4,
    kStretchAbort = 5
};
enum DrawType { kWarmGrip = 0, kHoverGrip = 1, kHotGrip = 2, kDragImageGrip = 3 };
} // namespace AcDbGripOperations

// What an application may do with a grip of its own: draw it, take the click on it, tell what it is. The grip
// data come along, so that the function finds its own in appData.
using GripWorldDrawPtr = bool (*)(AcDbGripData* grip, AcGiWorldDraw* worldDraw, const AcDbObjectId& entity,
                                  AcDbGripOperations::DrawType type, AcGePoint3d* imageGripPoint,
                                  double gripSize);
using GripViewportDrawPtr = void (*)(AcDbGripData* grip, AcGiViewportDraw* viewportDraw,
                                     const AcDbObjectId& entity, AcDbGripOperations::DrawType type,
                                     AcGePoint3d* imageGripPoint, int gripSize);
using GripOperationPtr = Acad::ErrorStatus (*)(AcDbGripData* grip, const AcDbObjectId& entity,
                                               int contextFlags);
using GripToolTipPtr = const ACHAR* (*)(AcDbGripData* grip);
using GripOpStatusPtr = void (*)(AcDbGripData* grip, const AcDbObjectId& entity,
                                 AcDbGripOperations::GripStatus status);

// A grip: a place by which a user takes hold of an entity, and what its application keeps with it. Does not
// own the application's data.
class AcDbGripData {
public:
    AcDbGripData() = default;
    explicit AcDbGripData(const AcGePoint3d& point, void* appData = nullptr)
        : m_point(point), m_appData(appData) {}

    const AcGePoint3d& gripPoint() const { return m_point; }
    void setGripPoint(const AcGePoint3d& point) { m_point = point; }
    void* appData() const { return m_appData; }
    void setAppData(void* data) { m_appData = data; }

    // Null where the application leaves it to the host.
    GripWorldDrawPtr worldDraw() const { return m_worldDraw; }
    void setWorldDraw(GripWorldDrawPtr function) { m_worldDraw = function; }
    GripViewportDrawPtr viewportDraw() const { return m_viewportDraw; }
    void setViewportDraw(GripViewportDrawPtr function) { m_viewportDraw = function; }
    GripOperationPtr hotGripFunc() const { return m_hotGrip; }
    void setHotGripFunc(GripOperationPtr function) { m_hotGrip = function; }
    GripOperationPtr hoverFunc() const { return m_hover; }
    void setHoverFunc(GripOperationPtr function) { m_hover = function; }
    GripToolTipPtr toolTipFunc() const { return m_toolTip; }
    void setToolTipFunc(GripToolTipPtr function) { m_toolTip = function; }
    GripOpStatusPtr gripOpStatFunc() const { return m_status; }
    void setGripOpStatFunc(GripOpStatusPtr function) { m_status = function; }

    // The host's mode keywords (move, rotate, …) are not offered at it.
    bool areModeKeywordsDisabled() const { return m_noKeywords; }
    void disableModeKeywords(bool disable) { m_noKeywords = disable; }
    // A click does its work at once, without a drag.
    bool triggerGrip() const { return m_trigger; }
    void setTriggerGrip(bool trigger) { m_trigger = trigger; }
    bool isPerViewport() const { return m_perViewport; }
    void setIsPerViewport(bool perViewport) { m_perViewport = perViewport; }

private:
    AcGePoint3d m_point;
    void* m_appData = nullptr;
    GripWorldDrawPtr m_worldDraw = nullptr;
    GripViewportDrawPtr m_viewportDraw = nullptr;
    GripOperationPtr m_hotGrip = nullptr;
    GripOperationPtr m_hover = nullptr;
    GripToolTipPtr m_toolTip = nullptr;
    GripOpStatusPtr m_status = nullptr;
    bool m_noKeywords = false;
    bool m_trigger = false;
    bool m_perViewport = false;
};

// Whoever asked for the grips deletes them.
using AcDbGripDataPtrArray = AcArray<AcDbGripData*>;
