#pragma once

#include "dbapserv.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dbsymtb.h"
#include "dbtrans.h"
#include "dbx/elem/plugin_connected_elements.h"
#include "dbx/elem/plugin_general.h"
#include "embedded/session.h"
#include "module/dbx/elem/load_plugins.h"
#include "rxclass.h"
#include "support/store_drawing.h"
#include "support/test_element.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// Beams with loads in a drawing.
namespace testing_support {

// The number and the axes of a beam; its axes are turned by a quarter about X, so that its Z lies along -Y.
struct BeamGeneral : orv::elem::Plugin_General {
    const std::string& pluginId() const override {
        static const std::string s_id = "test.general.beam";
        return s_id;
    }
    static AcGeMatrix3d axes() { return AcGeMatrix3d::rotation(1.5707963267948966, AcGeVector3d::kXAxis); }
    boost::optional<AcGeMatrix3d> getCoordinateSystem() const override { return axes(); }
    void onErase(bool) override {}
    void onPostClone() override {}
};

// With a list of what it was told.
struct BeamConnections : orv::elem::Plugin_ConnectedElements {
    using Plugin_ConnectedElements::Plugin_ConnectedElements;
    const std::string& pluginId() const override {
        static const std::string s_id = "test.connected.beam";
        return s_id;
    }
    void onConnectedElementRemoved(const AcDbObjectId& id) override {
        removed.push_back(id);
        if (throwsOnRemoval)
            throw std::runtime_error("not that one");
    }
    std::vector<AcDbObjectId> removed;
    bool throwsOnRemoval = false;
};

class LoadsInDrawing : public ::testing::Test {
protected:
    using Ids = std::vector<AcDbObjectId>;
    using Connected = orv::elem::Plugin_ConnectedElements;
    static constexpr unsigned int kErase = Connected::kEraseConnected;
    static constexpr unsigned int kRefresh = Connected::kRefreshOnTransform;

    LoadsInDrawing() : db(true) {
        registerTestElement();
        registerLoads();
        registerPlugin<BeamGeneral>();
        registerPlugin<BeamConnections>();
    }

    AcDbObjectId put(TestElement* element) {
        element->setNodDatabaseId(AcDbObjectId(), L"ASDWG");
        return putEntity(db, element);
    }
    AcDbObjectId beam(unsigned int behaviour = 0, orv::elem::Ownership ownership = orv::elem::kHardPointer) {
        auto* const made = new TestElement;
        made->addPlugin(new BeamGeneral);
        auto* const connections = new BeamConnections(ownership);
        made->addPlugin(connections);
        connections->setBehaviour(behaviour);
        return put(made);
    }
    // Both know each other, and the load looks as if it had been drawn.
    template <class Load = PlainLoad>
    AcDbObjectId loadOn(AcDbObjectId beamId, int type = 10) {
        auto* const made = new TestElement;
        auto* const load = new Load;
        made->addPlugin(load);
        static_cast<orv::elem::GenericLoad*>(load)->setElement(beamId);
        load->setType(type);
        load->setVertices(verticesOf(1));
        load->setLoadCase(3);
        drawOnce(*load);
        const AcDbObjectId id = put(made);
        if (!beamId.isNull())
            change(beamId, [&id](TestElement& element) { connectionsOf(element).add(id); });
        return id;
    }
    AcDbObjectId point() { return putEntity(db, new AcDbPoint); }

    static void use(AcDbObjectId id, AcDb::OpenMode mode, const std::function<void(TestElement&)>& with) {
        TestElement* element = nullptr;
        ASSERT_EQ(acdbOpenObject(element, id, mode, true), Acad::eOk);
        with(*element);
        element->close();
    }
    static void change(AcDbObjectId id, const std::function<void(TestElement&)>& with) {
        use(id, AcDb::kForWrite, with);
    }
    static BeamConnections& connectionsOf(TestElement& element) {
        return dynamic_cast<BeamConnections&>(*element.getFirstPlugin("test.connected.beam"));
    }
    static orv::elem::GenericLoad& loadOf(TestElement& element) {
        return dynamic_cast<orv::elem::GenericLoad&>(**element.getConstPluginIterator().begin());
    }
    static Ids connected(AcDbObjectId id) {
        Ids ids;
        use(id, AcDb::kForRead, [&ids](TestElement& element) {
            const BeamConnections& connections = connectionsOf(element);
            ids.assign(connections.begin(), connections.end());
        });
        return ids;
    }
    static AcDbObjectId elementOf(AcDbObjectId id) {
        AcDbObjectId found;
        use(id, AcDb::kForRead, [&found](TestElement& element) { found = loadOf(element).getElement(); });
        return found;
    }
    static bool wantsArrows(AcDbObjectId id) {
        bool wants = false;
        use(id, AcDb::kForRead,
            [&wants](TestElement& element) { wants = loadOf(element).refreshGraphics(); });
        return wants;
    }
    static bool isMarked(AcDbObjectId id) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead, true), Acad::eOk);
        const bool marked = entity->isModifiedGraphics();
        entity->close();
        return marked;
    }
    static void erase(AcDbObjectId id, bool erasing = true) {
        change(id, [erasing](TestElement& element) { EXPECT_EQ(element.erase(erasing), Acad::eOk); });
    }
    static void move(AcDbObjectId id) {
        change(id, [](TestElement& element) {
            const AcGeMatrix3d by = AcGeMatrix3d::translation(AcGeVector3d(5, 0, 0));
            EXPECT_EQ(element.transformBy(by), Acad::eOk);
        });
    }
    static AcDbObjectId modelSpaceOf(AcDbDatabase& database) {
        AcDbBlockTable* blocks = nullptr;
        EXPECT_EQ(database.getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
        AcDbObjectId space;
        EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, space), Acad::eOk);
        blocks->close();
        return space;
    }
    static AcDbObjectIdArray arrayOf(const Ids& ids) {
        AcDbObjectIdArray array;
        for (const AcDbObjectId& id : ids)
            array.append(id);
        return array;
    }
    static AcDbObjectId cloneOf(const AcDbIdMapping& map, AcDbObjectId id) {
        AcDbIdPair pair(id, AcDbObjectId(), false);
        return map.compute(pair) ? pair.value() : AcDbObjectId();
    }
    void copy(const Ids& ids, AcDbIdMapping& map) {
        ASSERT_EQ(db.deepCloneObjects(arrayOf(ids), modelSpaceOf(db), map), Acad::eOk);
    }
    void copyTo(AcDbDatabase& target, const Ids& ids, AcDbIdMapping& map) {
        ASSERT_EQ(db.wblockCloneObjects(arrayOf(ids), modelSpaceOf(target), map, AcDb::kDrcIgnore),
                  Acad::eOk);
    }

    AcDbDatabase db;
};

} // namespace testing_support
