#pragma once

#include "dbmain.h"
#include "dbx/elem/base.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

// An element and a plugin for tests of all that is built on plugins. Link support/test_element.cpp.
namespace testing_support {

// A concrete element as a front end writes one: an entity whose behaviour is all in its plugins. It files
// AcDbEntity's fields, then the element's stream, and nothing else. Each of the host's operations hands over
// to the element's trigger:
//
//   subErase: the host's; then triggerOnErase.
//   subTransformBy: eVetoed unless canBeTransformed; else triggerOnPreTransform with a copy of the matrix,
//     `place` is moved by what the plugins made of it, triggerOnPostTransform, triggerOnMoved.
//   subWorldDraw: triggerOnPreWorldDraw, then triggerOnWorldDraw with the element's system if it has one;
//     answers false, so that the host asks for the viewport's drawing as well.
//   subViewportDraw: the same with the viewport's triggers.
//   subGetGripPoints: triggerOnGetGrips (the form with data of the application's own).
//   subMoveGripPointsAt: triggerOnPreMoveGrips with a copy of the offset, GripManager::onMove, and
//     triggerOnMoved.
//   subDeepClone, subWblockClone: eNotApplicable unless canElementBeCloned; else the host's, and
//     triggerOnPostClone on the clone, if one was made.
//   dwgInFields: status 301 for an exception, unless `letsExceptionsOut`.
class TestElement : public AcDbEntity, public orv::elem::ElementBase {
public:
    ACRX_DECLARE_MEMBERS(TestElement);
    TestElement();

    // Calls of the two checks through the element's side, since the test set them to 0.
    mutable int readChecks = 0;
    int writeChecks = 0;

    // The element's own data; nothing while they are empty. They are asked of `asked` instead of each
    // element, since the host makes some of them: set it for the length of a test and clear it afterwards.
    struct Asked {
        std::function<bool(const TestElement&, orv::serialization::IOutArchive&)> save;
        std::function<bool(TestElement&, orv::serialization::IInArchive&, unsigned int version)> load;
        std::function<bool(const TestElement&, orv::KeyValueStorage&)> saveValues;
        std::function<bool(TestElement&, const orv::KeyValueStorage&)> loadValues;
        std::function<void(TestElement&)> postClone;
        std::function<void(TestElement&)> moved;
    };
    static Asked asked;
    static bool letsExceptionsOut;

    // Not filed.
    AcGePoint3d place;
    // Drawn with instead of that of the drawing; not owned.
    orv::System* system = nullptr;

    // Those of the base that are protected.
    using ElementBase::assertLog;
    using ElementBase::getLog;
    using ElementBase::isLogEmpty;

    // The element's stream alone.
    Acad::ErrorStatus outStream(AcDbDwgFiler& filer) const { return ElementBase::dwgOutFields(filer); }
    Acad::ErrorStatus inStream(AcDbDwgFiler& filer) { return ElementBase::dwgInFields(filer); }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    void acdb_assertWriteEnabled() override;
    void acdb_assertReadEnabled() const override;
    AcRxClass* acdb_isA() const override;
    int acdb_isNewObject() const override;
    AcDbObjectId acdb_id() override;
    void onPostClone() override;

protected:
    bool onSave(orv::serialization::IOutArchive& archive) const override;
    bool onSave(orv::KeyValueStorage& storage) const override;
    bool onLoad(orv::serialization::IInArchive& archive, unsigned int version) override;
    bool onLoad(const orv::KeyValueStorage& storage) override;
    void onMoved() override;

    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;
    void subViewportDraw(AcGiViewportDraw* viewportDraw) override;
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    Acad::ErrorStatus subGetGripPoints(AcDbGripDataPtrArray& grips, double curViewUnitSize, int gripSize,
                                       const AcGeVector3d& curViewDir, int bitflags) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData, const AcGeVector3d& offset,
                                          int bitflags) override;
    Acad::ErrorStatus subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                   Adesk::Boolean isPrimary) const override;
    Acad::ErrorStatus subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                     Adesk::Boolean isPrimary) const override;
};

// Writes down each hook that is called, and files what a test puts into it. Its own data: the text `data`,
// then the ids of both lists, with their numbers ahead of them.
class RecordingPlugin : public orv::elem::ElementBase::IPlugin {
public:
    // The id that registerTestElement makes known to the registry.
    static const std::string kRegisteredId; // "test.recording"
    // A plugin of another id is filed under that, and comes back unknown unless its test registers it.
    explicit RecordingPlugin(std::string id = kRegisteredId, std::string name = "");
    static boost::shared_ptr<orv::elem::ElementBase::IPlugin> createPlugin();

    // Every hook of every such plugin in the order of the calls, one line each: the plugin's name and a
    // blank, if it has a name, the hook, and what can be said about its arguments ("first onErase 1"). The
    // test empties it.
    static std::vector<std::string> events;
    // Called on each plugin that the registry makes, before it gets its element. The test clears it.
    static std::function<void(RecordingPlugin&)> onCreate;

    std::string name;
    // Called in every hook, behind the line, with the hook's name alone; may throw.
    std::function<void(const std::string& hook)> onHook;
    // What is put to the vector or the matrix that a hook may change.
    std::function<void(AcGeVector3d&)> changeOffset;
    std::function<void(AcGeMatrix3d&)> changeMatrix;
    // Called in the hooks for grips and drawing.
    std::function<void(orv::GripManager::ScopedCreator&)> makeGrips;
    std::function<void(orv::AcadWorldDraw&, orv::System&)> drawWorld;
    std::function<void(orv::AcadViewportDraw&, orv::System&)> drawViewport;

    // Answers.
    bool canBeCloned = true;
    bool canBeTransformed = true;
    bool saves = true;
    bool loads = true;

    std::string data;
    std::deque<AcDbObjectId> softIds;
    std::deque<AcDbObjectId> hardIds;
    // What onLoad got last.
    unsigned int elementVersion = 0;

    const std::string& pluginId() const override { return m_id; }

    using IPlugin::assertReadEnabled;
    using IPlugin::assertWriteEnabled;

    void onDetached(orv::elem::ElementBase* previousOwner) override;
    void onAttached() override;
    void onPreMoveGrips(AcGeVector3d& offset) override;
    void onGetGrips(orv::GripManager::ScopedCreator& creator) const override;
    void onPreTransform(AcGeMatrix3d& xform) override;
    void onPostTransform(const AcGeMatrix3d& xform) override;
    void onPreWorldDraw(const AcDbEntity& entity, AcGiWorldDraw& wd) override;
    void onWorldDraw(orv::AcadWorldDraw& wd, orv::System& system) override;
    void onPreViewportDraw(const AcDbEntity& entity, AcGiViewportDraw& vd) override;
    void onViewportDraw(orv::AcadViewportDraw& vd, orv::System& system) override;
    void onErase(bool erasing) override;
    void onPostClone() override;
    void onAppendElementInfo(orv::ElementInfoContext& info) const override;
    bool canElementBeCloned(const orv::ElementCloneContext& context) const override;
    bool canElementBeTransformed() const override;
    void onMoved() override;
    void onQueryEndpointInterface(orv::geom::EndpointInterface& endpoints) const override;
    bool onSave(orv::serialization::IOutArchive& archive) const override;
    bool onSave(orv::KeyValueStorage& storage) const override;
    bool onLoad(orv::serialization::IInArchive& archive, unsigned int version) override;
    bool onLoad(const orv::KeyValueStorage& storage) override;

private:
    void record(const std::string& hook, const std::string& detail = "") const;

    std::string m_id;
};

// A class that is there, and one whose module is missing: its elements then are proxies. The host must be
// started. The plugin's id stays registered.
void registerTestElement();
void unregisterTestElement();

// Puts an element, or any entity, into model space and closes it. Its id.
AcDbObjectId putEntity(AcDbDatabase& database, AcDbEntity* entity);

} // namespace testing_support
