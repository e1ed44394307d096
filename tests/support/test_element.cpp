#include "support/test_element.h"

#include "dbx/doc/system.h"
#include "dbx/doc/use_system.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"
#include "orvshape/acad_draw.h"
#include "orvshape/element_contexts.h"
#include "orvshape/grip_manager.h"

#include "acgi.h"
#include "dbidmap.h"
#include "dbsymtb.h"
#include "rxclass.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

using orv::ElementCloneContext;
using orv::GripManager;
using orv::elem::ElementBase;

namespace testing_support {

ACRX_DXF_DEFINE_MEMBERS(TestElement, AcDbEntity, AcDb::kDHL_1015, 0, 0, TESTELEMENT, ElementTests)

TestElement::Asked TestElement::asked;
bool TestElement::letsExceptionsOut = false;

TestElement::TestElement() : ElementBase(static_cast<AcDbObject&>(*this)) {}

Acad::ErrorStatus TestElement::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    const Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    if (letsExceptionsOut)
        return ElementBase::dwgInFields(*filer);
    try {
        return ElementBase::dwgInFields(*filer);
    } catch (...) {
        return Acad::eMakeMeProxy;
    }
}

Acad::ErrorStatus TestElement::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    return es != Acad::eOk ? es : ElementBase::dwgOutFields(*filer);
}

void TestElement::acdb_assertWriteEnabled() {
    ++writeChecks;
    assertWriteEnabled();
}

void TestElement::acdb_assertReadEnabled() const {
    ++readChecks;
    assertReadEnabled();
}

AcRxClass* TestElement::acdb_isA() const { return isA(); }
int TestElement::acdb_isNewObject() const { return isNewObject(); }
AcDbObjectId TestElement::acdb_id() { return objectId(); }

bool TestElement::onSave(orv::serialization::IOutArchive& archive) const {
    return !asked.save || asked.save(*this, archive);
}
bool TestElement::onSave(orv::KeyValueStorage& storage) const {
    return !asked.saveValues || asked.saveValues(*this, storage);
}
bool TestElement::onLoad(orv::serialization::IInArchive& archive, unsigned int version) {
    return !asked.load || asked.load(*this, archive, version);
}
bool TestElement::onLoad(const orv::KeyValueStorage& storage) {
    return !asked.loadValues || asked.loadValues(*this, storage);
}
void TestElement::onPostClone() {
    if (asked.postClone)
        asked.postClone(*this);
}
void TestElement::onMoved() {
    if (asked.moved)
        asked.moved(*this);
}

Acad::ErrorStatus TestElement::subErase(Adesk::Boolean erasing) {
    const Acad::ErrorStatus es = AcDbEntity::subErase(erasing);
    if (es == Acad::eOk)
        triggerOnErase(erasing != 0);
    return es;
}

Acad::ErrorStatus TestElement::subTransformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    if (!canBeTransformed())
        return Acad::eVetoed;
    AcGeMatrix3d changed = xform;
    triggerOnPreTransform(changed);
    place.transformBy(changed);
    triggerOnPostTransform(changed);
    triggerOnMoved();
    recordGraphicsModified(true);
    return Acad::eOk;
}

Adesk::Boolean TestElement::subWorldDraw(AcGiWorldDraw* worldDraw) {
    triggerOnPreWorldDraw(*worldDraw);
    orv::AcadWorldDraw draw(*worldDraw);
    if (system != nullptr) {
        triggerOnWorldDraw(draw, *system);
    } else if (!getNodDatabaseId().isNull()) {
        const orv::UseSystem linked(this);
        if (!linked.empty())
            triggerOnWorldDraw(draw, *linked);
    }
    return false;
}

void TestElement::subViewportDraw(AcGiViewportDraw* viewportDraw) {
    triggerOnPreViewportDraw(*viewportDraw);
    orv::AcadViewportDraw draw(*viewportDraw);
    if (system != nullptr) {
        triggerOnViewportDraw(draw, *system);
    } else if (!getNodDatabaseId().isNull()) {
        const orv::UseSystem linked(this);
        if (!linked.empty())
            triggerOnViewportDraw(draw, *linked);
    }
}

Acad::ErrorStatus TestElement::subGetGripPoints(AcDbGripDataPtrArray& grips, double, int, const AcGeVector3d&,
                                                int) const {
    assertReadEnabled();
    GripManager::ScopedCreator creator(*this, grips);
    triggerOnGetGrips(creator);
    return Acad::eOk;
}

Acad::ErrorStatus TestElement::subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                                   const AcGeVector3d& offset, int) {
    assertWriteEnabled();
    AcGeVector3d changed = offset;
    triggerOnPreMoveGrips(changed);
    AcDbVoidPtrArray mine;
    AcDbVoidPtrArray others;
    GripManager::filterMyAppData(database(), gripAppData, mine, others);
    GripManager::onMove(*this, mine, changed);
    triggerOnMoved();
    return Acad::eOk;
}

Acad::ErrorStatus TestElement::subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                            Adesk::Boolean isPrimary) const {
    clone = nullptr;
    if (!canElementBeCloned(ElementCloneContext::of(ElementCloneContext::kDeepClone, objectId(), idMap)))
        return Acad::eNotApplicable;
    const Acad::ErrorStatus es = AcDbEntity::subDeepClone(owner, clone, idMap, isPrimary);
    if (TestElement* const element = TestElement::cast(clone))
        element->triggerOnPostClone();
    return es;
}

Acad::ErrorStatus TestElement::subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                              Adesk::Boolean isPrimary) const {
    clone = nullptr;
    if (!canElementBeCloned(ElementCloneContext::of(ElementCloneContext::kWblockClone, objectId(), idMap)))
        return Acad::eNotApplicable;
    const Acad::ErrorStatus es = AcDbEntity::subWblockClone(owner, clone, idMap, isPrimary);
    if (TestElement* const element = TestElement::cast(clone))
        element->triggerOnPostClone();
    return es;
}

const std::string RecordingPlugin::kRegisteredId = "test.recording";
std::vector<std::string> RecordingPlugin::events;
std::function<void(RecordingPlugin&)> RecordingPlugin::onCreate;

RecordingPlugin::RecordingPlugin(std::string id, std::string called)
    : name(std::move(called)), m_id(std::move(id)) {}

boost::shared_ptr<ElementBase::IPlugin> RecordingPlugin::createPlugin() {
    auto plugin = boost::make_shared<RecordingPlugin>();
    if (onCreate)
        onCreate(*plugin);
    return plugin;
}

void RecordingPlugin::record(const std::string& hook, const std::string& detail) const {
    events.push_back((name.empty() ? "" : name + " ") + hook + (detail.empty() ? "" : " " + detail));
    if (onHook)
        onHook(hook);
}

void RecordingPlugin::onDetached(ElementBase* previousOwner) {
    record("onDetached", previousOwner == nullptr ? "null" : previousOwner == owner() ? "owner" : "other");
}
void RecordingPlugin::onAttached() { record("onAttached", owner() == nullptr ? "null" : "owner"); }
void RecordingPlugin::onPreMoveGrips(AcGeVector3d& offset) {
    record("onPreMoveGrips");
    if (changeOffset)
        changeOffset(offset);
}
void RecordingPlugin::onGetGrips(GripManager::ScopedCreator& creator) const {
    record("onGetGrips");
    if (makeGrips)
        makeGrips(creator);
}
void RecordingPlugin::onPreTransform(AcGeMatrix3d& xform) {
    record("onPreTransform");
    if (changeMatrix)
        changeMatrix(xform);
}
void RecordingPlugin::onPostTransform(const AcGeMatrix3d&) { record("onPostTransform"); }
void RecordingPlugin::onPreWorldDraw(const AcDbEntity&, AcGiWorldDraw&) { record("onPreWorldDraw"); }
void RecordingPlugin::onWorldDraw(orv::AcadWorldDraw& wd, orv::System& system) {
    record("onWorldDraw");
    if (drawWorld)
        drawWorld(wd, system);
}
void RecordingPlugin::onPreViewportDraw(const AcDbEntity&, AcGiViewportDraw&) { record("onPreViewportDraw"); }
void RecordingPlugin::onViewportDraw(orv::AcadViewportDraw& vd, orv::System& system) {
    record("onViewportDraw");
    if (drawViewport)
        drawViewport(vd, system);
}
void RecordingPlugin::onErase(bool erasing) { record("onErase", erasing ? "1" : "0"); }
void RecordingPlugin::onPostClone() { record("onPostClone"); }
void RecordingPlugin::onAppendElementInfo(orv::ElementInfoContext&) const { record("onAppendElementInfo"); }
bool RecordingPlugin::canElementBeCloned(const ElementCloneContext&) const {
    record("canElementBeCloned");
    return canBeCloned;
}
bool RecordingPlugin::canElementBeTransformed() const {
    record("canElementBeTransformed");
    return canBeTransformed;
}
void RecordingPlugin::onMoved() { record("onMoved"); }
void RecordingPlugin::onQueryEndpointInterface(orv::geom::EndpointInterface&) const {
    record("onQueryEndpointInterface");
}

bool RecordingPlugin::onSave(orv::serialization::IOutArchive& archive) const {
    record("onSave");
    archive << data;
    archive << static_cast<unsigned int>(softIds.size()) << static_cast<unsigned int>(hardIds.size());
    for (const AcDbObjectId& id : softIds)
        archive.softPointer(id);
    for (const AcDbObjectId& id : hardIds)
        archive.hardPointer(id);
    return saves;
}
bool RecordingPlugin::onSave(orv::KeyValueStorage&) const {
    record("onSave values");
    return saves;
}
bool RecordingPlugin::onLoad(orv::serialization::IInArchive& archive, unsigned int version) {
    record("onLoad", std::to_string(version));
    elementVersion = version;
    unsigned int softCount = 0;
    unsigned int hardCount = 0;
    archive >> data >> softCount >> hardCount;
    softIds.clear();
    hardIds.clear();
    AcDbObjectId id;
    for (unsigned int i = 0; i < softCount; ++i) {
        archive.softPointer(id);
        softIds.push_back(id);
    }
    for (unsigned int i = 0; i < hardCount; ++i) {
        archive.hardPointer(id);
        hardIds.push_back(id);
    }
    return loads;
}
bool RecordingPlugin::onLoad(const orv::KeyValueStorage&) {
    record("onLoad values");
    return loads;
}

void registerTestElement() {
    TestElement::rxInit();
    acrxBuildClassHierarchy();
    static const bool registered = [] {
        orv::elem::ElementPluginRegistry::registerCreator(RecordingPlugin::kRegisteredId,
                                                          &RecordingPlugin::createPlugin);
        return true;
    }();
    static_cast<void>(registered);
}

void unregisterTestElement() {
    if (TestElement::gpDesc != nullptr)
        deleteAcRxClass(TestElement::gpDesc);
    TestElement::gpDesc = nullptr;
}

AcDbObjectId putEntity(AcDbDatabase& database, AcDbEntity* entity) {
    AcDbBlockTable* blocks = nullptr;
    EXPECT_EQ(database.getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
    blocks->close();
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
    space->close();
    entity->close();
    return id;
}

} // namespace testing_support
