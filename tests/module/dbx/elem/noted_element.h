#pragma once

#include "dbx/elem/element_base.h"
#include "dbx/elem/plugin.h"
#include "orvshape/acad_draw.h"
#include "orvshape/element_contexts.h"

#include "acgi.h"
#include "dbmain.h"
#include "gemat3d.h"
#include "gevec3d.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

// What happened, in order.
using Notes = std::vector<std::string>;

// Notes each call of its hooks ("b.onErase true"), then does what a test has put under the hook's name.
class NotedPlugin : public orv::elem::ElementBase::IPlugin {
public:
    explicit NotedPlugin(Notes& notes, const std::string& name = "plugin",
                         const std::string& id = "tests.noted")
        : m_notes(notes), m_name(name), m_id(id) {}
    ~NotedPlugin() override { note("destroyed"); }

    std::map<std::string, std::function<void()>> on;
    bool agreesToClone = true;
    bool agreesToTransform = true;
    // What its savings and loadings answer.
    bool succeeds = true;

    const std::string& pluginId() const override { return m_id; }

    void onDetached(orv::elem::ElementBase* previousOwner) override {
        note(previousOwner == nullptr ? "onDetached null" : "onDetached");
        lastPreviousOwner = previousOwner;
        ownerAtDetached = owner();
    }
    void onAttached() override {
        note("onAttached");
        ownerAtAttached = owner();
    }
    void onPreMoveGrips(AcGeVector3d& offset) override {
        note("onPreMoveGrips " + std::to_string(static_cast<int>(offset.x)));
        offset.x += 1;
    }
    void onGetGrips(orv::GripManager::ScopedCreator& creator) const override {
        note("onGetGrips");
        creator.createPointGrip(AcGePoint3d(1, 2, 3), {});
    }
    void onPreTransform(AcGeMatrix3d& xform) override {
        note("onPreTransform " + std::to_string(static_cast<int>(xform(0, 3))));
        xform(0, 3) += 1;
    }
    void onPostTransform(const AcGeMatrix3d& xform) override {
        note("onPostTransform " + std::to_string(static_cast<int>(xform(0, 3))));
    }
    void onPreWorldDraw(const AcDbEntity& entity, AcGiWorldDraw& wd) override {
        note("onPreWorldDraw");
        drawnEntity = &entity;
        wd.subEntityTraits().setColor(static_cast<Adesk::UInt16>(wd.subEntityTraits().color() + 1));
    }
    void onWorldDraw(orv::AcadWorldDraw& wd, orv::System& system) override {
        note("onWorldDraw");
        drawnSystem = &system;
        drawWithOwnColour(wd);
    }
    void onPreViewportDraw(const AcDbEntity& entity, AcGiViewportDraw& vd) override {
        note("onPreViewportDraw");
        drawnEntity = &entity;
        vd.subEntityTraits().setColor(static_cast<Adesk::UInt16>(vd.subEntityTraits().color() + 1));
    }
    void onViewportDraw(orv::AcadViewportDraw& vd, orv::System& system) override {
        note("onViewportDraw");
        drawnSystem = &system;
        drawWithOwnColour(vd);
    }
    void onErase(bool erasing) override { note(erasing ? "onErase true" : "onErase false"); }
    void onPostClone() override { note("onPostClone"); }
    void onAppendElementInfo(orv::ElementInfoContext& info) const override {
        note("onAppendElementInfo");
        info.heading(L"from the plugin");
    }
    bool canElementBeCloned(const orv::ElementCloneContext& context) const override {
        note("canElementBeCloned " + std::to_string(context.operation));
        return agreesToClone;
    }
    bool canElementBeTransformed() const override {
        note("canElementBeTransformed");
        return agreesToTransform;
    }
    void onMoved() override { note("onMoved"); }
    bool onSave(orv::serialization::IOutArchive&) const override {
        note("onSave archive");
        return succeeds;
    }
    bool onSave(orv::KeyValueStorage&) const override {
        note("onSave storage");
        return succeeds;
    }
    bool onLoad(orv::serialization::IInArchive&, unsigned int elementVersion) override {
        note("onLoad archive " + std::to_string(elementVersion));
        return succeeds;
    }
    bool onLoad(const orv::KeyValueStorage&) override {
        note("onLoad storage");
        return succeeds;
    }

    using IPlugin::assertReadEnabled;
    using IPlugin::assertWriteEnabled;

    const AcDbEntity* drawnEntity = nullptr;
    orv::System* drawnSystem = nullptr;
    orv::elem::ElementBase* lastPreviousOwner = nullptr;
    orv::elem::ElementBase* ownerAtDetached = nullptr;
    orv::elem::ElementBase* ownerAtAttached = nullptr;

private:
    // A line in the colour behind the present one.
    static void drawWithOwnColour(const orv::AcadCommonDraw& draw) {
        AcGiSubEntityTraits& traits = draw.subEntityTraits();
        traits.setColor(static_cast<Adesk::UInt16>(traits.color() + 1));
        draw.line(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
    }
    // "onErase true" runs what stands under "onErase".
    void note(const std::string& call) const {
        m_notes.push_back(m_name + "." + call);
        const auto action = on.find(call.substr(0, call.find(' ')));
        if (action != on.end())
            action->second();
    }

    Notes& m_notes;
    std::string m_name;
    std::string m_id;
};

// Notes the checks ("read", "write") and its own hooks. Its host object is not the element itself, so that it
// needs no class of the host.
class NotedElement : public orv::elem::ElementBase {
public:
    NotedElement(AcDbObject& host, Notes& notes) : ElementBase(host), m_notes(notes) {}

    std::map<std::string, std::function<void()>> on;
    // What its savings and loadings answer.
    bool succeeds = true;

    void acdb_assertWriteEnabled() override { note("write"); }
    void acdb_assertReadEnabled() const override { note("read"); }
    AcRxClass* acdb_isA() const override { return AcDbObject::desc(); }
    int acdb_isNewObject() const override { return 0; }
    AcDbObjectId acdb_id() override { return AcDbObjectId(); }

    void onPostClone() override { note("element.onPostClone"); }
    bool onSave(orv::serialization::IOutArchive&) const override {
        note("element.onSave archive");
        return succeeds;
    }
    bool onSave(orv::KeyValueStorage&) const override {
        note("element.onSave storage");
        return succeeds;
    }
    bool onLoad(orv::serialization::IInArchive&, unsigned int version) override {
        note("element.onLoad archive " + std::to_string(version));
        return succeeds;
    }
    bool onLoad(const orv::KeyValueStorage&) override {
        note("element.onLoad storage");
        return succeeds;
    }
    void onMoved() override { note("element.onMoved"); }

    using ElementBase::assertLog;
    using ElementBase::getLog;
    using ElementBase::isLogEmpty;

private:
    void note(const std::string& call) const {
        m_notes.push_back(call);
        const auto action = on.find(call.substr(0, call.find(' ')));
        if (action != on.end())
            action->second();
    }

    Notes& m_notes;
};

// A new plugin at the end of the element's list; it belongs to the element.
inline NotedPlugin& addNoted(orv::elem::ElementBase& element, Notes& notes, const std::string& name,
                             const std::string& id = "tests.noted") {
    auto* const plugin = new NotedPlugin(notes, name, id);
    element.addPlugin(plugin);
    return *plugin;
}

// The notes so far, which are gone then.
inline Notes taken(Notes& notes) { return std::exchange(notes, {}); }

} // namespace testing_support
