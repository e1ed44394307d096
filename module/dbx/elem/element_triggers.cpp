// The host's events on their way to the plugins. Each guard stands around the whole round.

#include "base/guard.h"
#include "dbx/elem/element_base.h"
#include "dbx/elem/plugin_round.h"
#include "orvshape/acad_draw.h"
#include "orvshape/save_entity_traits.h"

#include "acgi.h"
#include "dbmain.h"

namespace orv::elem {

const AcDbEntity* ElementBase::hostEntity() const { return AcDbEntity::cast(m_host); }

void ElementBase::triggerOnGetGrips(GripManager::ScopedCreator& creator) const {
    try {
        acdb_assertReadEnabled();
        forEachPlugin([&creator](IPlugin& plugin) { plugin.onGetGrips(creator); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnPreMoveGrips(AcGeVector3d& offset) {
    try {
        acdb_assertWriteEnabled();
        forEachPlugin([&offset](IPlugin& plugin) { plugin.onPreMoveGrips(offset); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnPreTransform(AcGeMatrix3d& xform) {
    try {
        acdb_assertWriteEnabled();
        forEachPlugin([&xform](IPlugin& plugin) { plugin.onPreTransform(xform); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnPostTransform(const AcGeMatrix3d& xform) {
    try {
        acdb_assertWriteEnabled();
        forEachPlugin([&xform](IPlugin& plugin) { plugin.onPostTransform(xform); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnPreWorldDraw(AcGiWorldDraw& wd) const {
    try {
        acdb_assertReadEnabled();
        if (const AcDbEntity* const entity = hostEntity())
            forEachPlugin([entity, &wd](IPlugin& plugin) { plugin.onPreWorldDraw(*entity, wd); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnWorldDraw(AcadWorldDraw& wd, System& system) const {
    try {
        acdb_assertReadEnabled();
        forEachPlugin([&wd, &system](IPlugin& plugin) {
            const SaveEntityTraits saved(wd.subEntityTraits());
            plugin.onWorldDraw(wd, system);
        });
    }
    ORV_GUARD
}

void ElementBase::triggerOnPreViewportDraw(AcGiViewportDraw& vd) const {
    try {
        acdb_assertReadEnabled();
        if (const AcDbEntity* const entity = hostEntity())
            forEachPlugin([entity, &vd](IPlugin& plugin) { plugin.onPreViewportDraw(*entity, vd); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnViewportDraw(AcadViewportDraw& vd, System& system) const {
    try {
        acdb_assertReadEnabled();
        // What a plugin sets here stays for the next one, other than in the world's drawing.
        forEachPlugin([&vd, &system](IPlugin& plugin) { plugin.onViewportDraw(vd, system); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnErase(bool erasing) {
    try {
        acdb_assertWriteEnabled();
        forEachPlugin([erasing](IPlugin& plugin) { plugin.onErase(erasing); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnPostClone() {
    try {
        acdb_assertWriteEnabled();
        onPostClone();
        forEachPlugin([](IPlugin& plugin) { plugin.onPostClone(); });
    }
    ORV_GUARD
}

void ElementBase::triggerOnMoved() {
    try {
        acdb_assertWriteEnabled();
        onMoved();
        forEachPlugin([](IPlugin& plugin) { plugin.onMoved(); });
    }
    ORV_GUARD
}

void ElementBase::appendElementInfo(ElementInfoContext& info) const {
    try {
        acdb_assertReadEnabled();
        DatabaseElementBase::appendElementInfo(info);
        forEachPlugin([&info](IPlugin& plugin) { plugin.onAppendElementInfo(info); });
    }
    ORV_GUARD
}

bool ElementBase::canElementBeCloned(const ElementCloneContext& context) const {
    try {
        acdb_assertReadEnabled();
        return doAllAgree([&context](const IPlugin& plugin) { return plugin.canElementBeCloned(context); });
    }
    ORV_GUARD
    return true;
}

bool ElementBase::canBeTransformed() const {
    try {
        acdb_assertReadEnabled();
        return doAllAgree([](const IPlugin& plugin) { return plugin.canElementBeTransformed(); });
    }
    ORV_GUARD
    return true;
}

} // namespace orv::elem
