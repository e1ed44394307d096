#pragma once

#include "base/assert.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/guard.h"
#include "orvshape/acad_draw.h"
#include "orvshape/element_contexts.h"
#include "orvshape/grip_manager.h"
#include "structure/element.h"

#include "acgi.h"
#include "dbfiler.h"
#include "dbidmap.h"

namespace structure {

// Joins a class of the host with Element: what the host calls goes to the element's plugins, to the host's
// class and to the concrete element, in the order in which each expects it. Host is AcDbEntity or a class
// below it.
//
// Nothing that is thrown gets past here: the host knows statuses only. A stream that cannot be read makes the
// host keep the object as it is, as a proxy; one that cannot be written makes the save fail.
template <class Host>
class ElementOf : public Host, public Element {
public:
    // The host's fields, the element's stream, then the class's own.
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        try {
            this->assertReadEnabled();
            ORV_ASSERT_STATUS(Host::dwgOutFields(filer));
            ORV_ASSERT_STATUS(ElementBase::dwgOutFields(*filer));
            writeOwn(*filer);
            return filer->filerStatus();
        } catch (Acad::ErrorStatus failed) {
            return failed;
        }
        ORV_CRITICAL_GUARD(Acad::eFilerError)
    }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        try {
            this->assertWriteEnabled();
            const Acad::ErrorStatus es = Host::dwgInFields(filer);
            const Acad::ErrorStatus read = es == Acad::eOk ? ElementBase::dwgInFields(*filer) : es;
            // Of these some are no failure: a newer stream asks for a proxy.
            if (read != Acad::eOk)
                return read;
            readOwn(*filer);
            if (filer->filerType() == AcDb::kCopyFiler)
                noteCopied();
            return filer->filerStatus();
        } catch (Acad::ErrorStatus failed) {
            return failed;
        }
        ORV_CRITICAL_GUARD(Acad::eMakeMeProxy)
    }

    // Connections to what is not there any more are no damage, but of no use: they go, where the object may
    // be written.
    Acad::ErrorStatus audit(AcDbAuditInfo* auditInfo) override {
        try {
            const Acad::ErrorStatus es = Host::audit(auditInfo);
            if (es != Acad::eOk)
                return es;
            if (this->isWriteEnabled())
                dropLostConnections();
            return auditOwn();
        }
        ORV_GUARD
        return Acad::eUnrecoverableErrors;
    }

    // The element's way to the host's operations.
    void acdb_assertWriteEnabled() override { this->assertWriteEnabled(); }
    void acdb_assertReadEnabled() const override { this->assertReadEnabled(); }
    AcRxClass* acdb_isA() const override { return this->isA(); }
    int acdb_isNewObject() const override { return this->isNewObject(); }
    AcDbObjectId acdb_id() override { return this->objectId(); }

protected:
    ElementOf() : Element(static_cast<AcDbEntity&>(*this)) {}

    // What a class says for itself. Those that file throw the status of the call that failed; a newer version
    // throws eMakeMeProxy, before anything is changed.
    virtual void writeOwn(AcDbDwgFiler& filer) const = 0;
    virtual void readOwn(AcDbDwgFiler& filer) = 0;
    virtual Acad::ErrorStatus transformOwn(const AcGeMatrix3d& xform) { return Host::subTransformBy(xform); }
    virtual void drawOwn(AcGiWorldDraw& draw) { Host::subWorldDraw(&draw); }
    virtual void drawOwn(AcGiViewportDraw&) {}
    virtual Acad::ErrorStatus auditOwn() const { return Acad::eOk; }
    virtual Acad::ErrorStatus ownGripPoints(AcGePoint3dArray& points, AcDbIntArray& snaps,
                                            AcDbIntArray& geomIds) const {
        return Host::subGetGripPoints(points, snaps, geomIds);
    }
    virtual Acad::ErrorStatus moveOwnGripPoints(const AcDbIntArray& indices, const AcGeVector3d& offset) {
        return Host::subMoveGripPointsAt(indices, offset);
    }
    // The grips with data; made through the grip manager.
    virtual Acad::ErrorStatus ownGrips(AcDbGripDataPtrArray& grips, double unitSize, int gripSize,
                                       const AcGeVector3d& viewDirection, int flags) const {
        return Host::subGetGripPoints(grips, unitSize, gripSize, viewDirection, flags);
    }
    virtual Acad::ErrorStatus moveOwnGrips(const AcDbVoidPtrArray& appData, const AcGeVector3d& offset,
                                           int flags) {
        return Host::subMoveGripPointsAt(appData, offset, flags);
    }

    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override {
        try {
            const Acad::ErrorStatus es = Host::subErase(erasing);
            if (es == Acad::eOk)
                triggerOnErase(erasing != 0);
            return es;
        }
        ORV_GUARD
        return Acad::eInternalError;
    }

    // A plugin may forbid it, and may change the matrix.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override {
        try {
            this->assertWriteEnabled();
            if (!canBeTransformed())
                return Acad::eVetoed;
            AcGeMatrix3d matrix = xform;
            triggerOnPreTransform(matrix);
            const Acad::ErrorStatus es = transformOwn(matrix);
            if (es == Acad::eOk) {
                triggerOnPostTransform(matrix);
                changedPlace();
            }
            return es;
        }
        ORV_GUARD
        return Acad::eInternalError;
    }

    // An element that may not be cloned is left out, and the cloning of the others goes on. A clone is told
    // that it is one when all are there and know each other: see MovedElementsReactor.
    Acad::ErrorStatus subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& mapping,
                                   Adesk::Boolean isPrimary) const override {
        return mayBeCloned(orv::ElementCloneContext::kDeepClone, mapping)
                   ? Host::subDeepClone(owner, clone, mapping, isPrimary)
                   : Acad::eNotApplicable;
    }
    Acad::ErrorStatus subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& mapping,
                                     Adesk::Boolean isPrimary) const override {
        return mayBeCloned(orv::ElementCloneContext::kWblockClone, mapping)
                   ? Host::subWblockClone(owner, clone, mapping, isPrimary)
                   : Acad::eNotApplicable;
    }

    // Always asks for the viewports too, since any plugin may draw there.
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* draw) override {
        try {
            triggerOnPreWorldDraw(*draw);
            drawOwn(*draw);
            if (orv::System* const system = findSystem()) {
                orv::AcadWorldDraw worldDraw(*draw);
                triggerOnWorldDraw(worldDraw, *system);
            }
        }
        ORV_GUARD
        return false;
    }
    void subViewportDraw(AcGiViewportDraw* draw) override {
        try {
            triggerOnPreViewportDraw(*draw);
            drawOwn(*draw);
            if (orv::System* const system = findSystem()) {
                orv::AcadViewportDraw viewportDraw(*draw);
                triggerOnViewportDraw(viewportDraw, *system);
            }
        }
        ORV_GUARD
    }

    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcDbIntArray& snaps,
                                       AcDbIntArray& geomIds) const override {
        return ownGripPoints(points, snaps, geomIds);
    }
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override {
        return moveGuarded(offset, [&](const AcGeVector3d& by) { return moveOwnGripPoints(indices, by); });
    }
    Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices,
                                             const AcGeVector3d& offset) override {
        return moveGuarded(offset, [&](const AcGeVector3d& by) { return moveOwnGripPoints(indices, by); });
    }
    // The class's own grips and those of the plugins; a filter may take some away.
    Acad::ErrorStatus subGetGripPoints(AcDbGripDataPtrArray& grips, double unitSize, int gripSize,
                                       const AcGeVector3d& viewDirection, int flags) const override {
        try {
            const int before = grips.length();
            const Acad::ErrorStatus es = ownGrips(grips, unitSize, gripSize, viewDirection, flags);
            if (es != Acad::eOk)
                return es;
            orv::GripManager::ScopedCreator creator(*this, grips);
            triggerOnGetGrips(creator);
            for (int i = grips.length() - 1; i >= before; --i)
                if (!filterGrip(grips[i]->gripPoint())) {
                    delete grips[i];
                    grips.removeAt(i);
                }
            return Acad::eOk;
        }
        ORV_GUARD
        return Acad::eInternalError;
    }
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbVoidPtrArray& appData, const AcGeVector3d& offset,
                                          int flags) override {
        return moveGuarded(offset, [&](const AcGeVector3d& by) { return moveOwnGrips(appData, by, flags); });
    }

    // The element's place is another one: it is drawn anew, and the reactor hears of it.
    void changedPlace() {
        noteMoved();
        this->recordGraphicsModified(true);
    }

private:
    template <class Move>
    Acad::ErrorStatus moveGuarded(const AcGeVector3d& offset, Move move) {
        try {
            this->assertWriteEnabled();
            if (!canBeTransformed())
                return Acad::eVetoed;
            AcGeVector3d changed = offset;
            triggerOnPreMoveGrips(changed);
            const Acad::ErrorStatus es = move(changed);
            if (es == Acad::eOk)
                changedPlace();
            return es;
        }
        ORV_GUARD
        return Acad::eInternalError;
    }

    bool mayBeCloned(orv::ElementCloneContext::Operation operation, const AcDbIdMapping& mapping) const {
        return canElementBeCloned(orv::ElementCloneContext::of(operation, this->objectId(), mapping));
    }
};

} // namespace structure
