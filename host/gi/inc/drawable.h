#pragma once

#include "dbid.h"
#include "rxobject.h"

class AcDbExtents;
class AcGiDrawableTraits;
class AcGiViewportDraw;
class AcGiWorldDraw;

// What can be drawn. Whoever draws it calls setAttributes, then worldDraw, and viewportDraw for each viewport
// if that answered false: then something of it depends on the view.
class AcGiDrawable : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcGiDrawable);

    // What setAttributes answers, as a sum.
    enum SetAttributesFlags {
        kDrawableNone = 0,
        kDrawableIsAnEntity = 1,
        kDrawableUsesNesting = 2,
        kDrawableIsCompoundObject = 4,
        kDrawableViewIndependentViewportDraw = 8,
        kDrawableIsInvisible = 16,
        kDrawableHasAttributes = 32,
        kDrawableRegenTypeDependantGeometry = 64,
        kDrawableIsDimension = kDrawableIsAnEntity + kDrawableIsCompoundObject + 128,
        kDrawableRegenDraw = 256,
        kDrawableStandardDisplaySingleLOD = 512,
        kDrawableShadedDisplaySingleLOD = 1024,
        kDrawableViewDependentViewportDraw = 2048,
        kDrawableBlockDependentViewportDraw = 4096,
        kDrawableIsExternalReference = 8192,
        kDrawableNotPlottable = 16384
    };

    enum DrawableType { kGeometry = 0, kDistantLight, kPointLight, kSpotLight, kAmbientLight };

    Adesk::UInt32 setAttributes(AcGiDrawableTraits* traits) { return subSetAttributes(traits); }
    Adesk::Boolean worldDraw(AcGiWorldDraw* worldDraw) { return subWorldDraw(worldDraw); }
    void viewportDraw(AcGiViewportDraw* viewportDraw) { subViewportDraw(viewportDraw); }
    Adesk::UInt32 viewportDrawLogicalFlags(AcGiViewportDraw* viewportDraw) {
        return subViewportDrawLogicalFlags(viewportDraw);
    }

    // Stands in a database, under `id`.
    virtual Adesk::Boolean isPersistent() const = 0;
    virtual AcDbObjectId id() const = 0;
    // False, with `extents` untouched, for what has none; so by default.
    virtual bool bounds(AcDbExtents& extents) const;
    virtual DrawableType drawableType() const { return kGeometry; }

protected:
    AcGiDrawable() = default;

    virtual Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) = 0;
    // True: all of it is drawn; no viewport needs to be asked.
    virtual Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) = 0;
    virtual void subViewportDraw(AcGiViewportDraw* viewportDraw) = 0;
    virtual Adesk::UInt32 subViewportDrawLogicalFlags(AcGiViewportDraw* viewportDraw);
};
