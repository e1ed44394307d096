#include "clone_fixture.h"

#include "dbents.h"
#include "entities/line.h"
#include "gemat3d.h"
#include "rxclass.h"
#include "rxdict.h"

#include <rapidcheck/gtest.h>

namespace {

// An entity that takes others along when it is erased and forgets them then, as elements with loads do. In an
// undo it changes without a word to the history.
class Carrier : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(Carrier);
    std::vector<AcDbObjectId> carried;

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        assertReadEnabled();
        AcDbEntity::dwgOutFields(filer);
        filer->writeUInt32(static_cast<Adesk::UInt32>(carried.size()));
        for (const AcDbObjectId& id : carried)
            filer->writeSoftPointerId(id);
        return filer->filerStatus();
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        assertWriteEnabled();
        AcDbEntity::dwgInFields(filer);
        Adesk::UInt32 count = 0;
        filer->readUInt32(&count);
        carried.clear();
        for (Adesk::UInt32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
            AcDbSoftPointerId id;
            filer->readSoftPointerId(&id);
            carried.push_back(id);
        }
        return filer->filerStatus();
    }

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override {
        if (!isUndoing())
            assertWriteEnabled();
        if (erasing) {
            for (const AcDbObjectId& id : carried) {
                AcDbEntity* entity = nullptr;
                if (isUndoing() || acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk)
                    continue;
                entity->erase();
                entity->close();
            }
            carried.clear();
        }
        return AcDbEntity::subErase(erasing);
    }
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d&) override {
        assertWriteEnabled();
        return Acad::eOk;
    }
};

ACRX_DXF_DEFINE_MEMBERS(Carrier, AcDbEntity, AcDb::kDHL_1015, 0, 0xFFF, UNDOCARRIER, CLONES_191)

// Moves a line whenever another entity is changed, as long as no undo runs.
class Follower : public AcDbDatabaseReactor {
public:
    AcDbObjectId line;

    void objectModified(const AcDbDatabase*, const AcDbObject* object) override {
        AcDbLine* follower = nullptr;
        if (object->isUndoing() || object->objectId() == line || AcDbEntity::cast(object) == nullptr ||
            acdbOpenObject(follower, line, AcDb::kForWrite) != Acad::eOk)
            return;
        follower->setEndPoint(follower->endPoint() + AcGeVector3d(1, 0, 0));
        follower->close();
    }
};

class UndoBytes : public CloneFixture {
protected:
    void start() {
        SetUp();
        if (acrxClassDictionary->at(L"Carrier") == nullptr) {
            Carrier::rxInit();
            acrxBuildClassHierarchy();
        }
        m_entities.clear();
        m_sources.clear();
        m_follower.line = appendLine(*m_from, 0);
        for (int i = 0; i < 3; ++i)
            m_sources.push_back(appendLine(*m_to, i));
        m_sources.push_back(append(*m_to, *reference(*m_to, L"OTHERS")));
        m_block = block(*m_from, L"OWN", {L"inside"});
        m_from->addReactor(&m_follower);
        embedded::forgetHistory(*m_from);
    }
    void TearDown() override {
        m_from->removeReactor(&m_follower);
        CloneFixture::TearDown();
    }

    static AcDbObjectId append(AcDbDatabase& database, AcDbEntity& entity) {
        auto* space = open<AcDbBlockTableRecord>(modelSpace(database), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, &entity), Acad::eOk);
        entity.close();
        space->close();
        return id;
    }
    static AcDbObjectId appendLine(AcDbDatabase& database, int number) {
        return append(database, *new AcDbLine({1.0 * number, 0, 0}, {0, 1.0 * number, 5}));
    }
    static AcDbBlockReference* reference(AcDbDatabase& database, const wchar_t* name) {
        return new AcDbBlockReference({1, 2, 3}, block(database, name, {L"one", L"two"}));
    }

    AcDbObjectId any() const { return m_entities[*rc::gen::inRange<std::size_t>(0, m_entities.size())]; }
    // Another entity to be carried along, if there is one.
    void addCarrier() {
        auto* carrier = new Carrier;
        for (int i = 0; i < 2 && !m_entities.empty(); ++i)
            carrier->carried.push_back(any());
        m_entities.push_back(append(*m_from, *carrier));
    }
    void addReference() {
        auto* made = new AcDbBlockReference({1, 2, 3}, m_block);
        auto* attribute = new AcDbAttribute({1, 1, 1}, L"text", L"TAG");
        auto* space = open<AcDbBlockTableRecord>(modelSpace(*m_from), AcDb::kForWrite);
        AcDbObjectId id;
        RC_ASSERT(space->appendAcDbEntity(id, made) == Acad::eOk);
        RC_ASSERT(made->appendAttribute(attribute) == Acad::eOk);
        attribute->close();
        made->close();
        space->close();
        m_entities.push_back(id);
    }
    void eraseOrBringBack(AcDbObjectId id) {
        auto* entity = open<AcDbEntity>(id, AcDb::kForWrite, true);
        entity->erase(!entity->isErased());
        entity->close();
    }
    bool move(AcDbObjectId id) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk)
            return false;
        entity->transformBy(AcGeMatrix3d::translation({1, 1, 0}));
        entity->close();
        return true;
    }
    bool copy(AcDbObjectId id) {
        if (id.isErased())
            return false;
        AcDbIdMapping mapping;
        RC_ASSERT(m_from->deepCloneObjects(ids({id}), modelSpace(*m_from), mapping) == Acad::eOk);
        m_entities.push_back(cloneOf(mapping, id));
        return true;
    }
    void bring() {
        const AcDbObjectId id = m_sources[*rc::gen::inRange<std::size_t>(0, m_sources.size())];
        AcDbIdMapping mapping;
        RC_ASSERT(m_to->wblockCloneObjects(ids({id}), modelSpace(*m_from), mapping, AcDb::kDrcIgnore) ==
                  Acad::eOk);
        m_entities.push_back(cloneOf(mapping, id));
    }
    // False if nothing was changed.
    bool change() {
        const int kind = *rc::gen::inRange(0, 8);
        embedded::beginCommand(*m_from);
        if (kind == 0)
            m_entities.push_back(appendLine(*m_from, static_cast<int>(m_entities.size())));
        else if (kind == 1)
            addCarrier();
        else if (kind == 2)
            addReference();
        else if (kind == 3)
            bring();
        else if (m_entities.empty())
            return false;
        else if (kind == 4)
            return move(any());
        else if (kind == 5)
            return copy(any());
        else
            eraseOrBringBack(any());
        return true;
    }

    std::vector<AcDbObjectId> m_entities, m_sources;
    AcDbObjectId m_block;
    Follower m_follower;
};

// After any number of undos and as many redos each object files the same bytes.
RC_GTEST_FIXTURE_PROP(UndoBytes, ComeBackAtEveryStepOfTheHistory, ()) {
    start();
    std::vector<Texts> states{everything(*m_from)};
    std::size_t now = 0;
    const int steps = *rc::gen::inRange(1, 25);
    for (int i = 0; i < steps; ++i) {
        const int kind = *rc::gen::inRange(0, 6);
        if (kind == 0) {
            RC_ASSERT(embedded::undo(*m_from) == (now > 0));
            now -= now > 0 ? 1 : 0;
        } else if (kind == 1) {
            RC_ASSERT(embedded::redo(*m_from) == (now + 1 < states.size()));
            now += now + 1 < states.size() ? 1 : 0;
        } else {
            if (!change())
                continue; // a step in which nothing happened is none
            states.resize(++now);
            states.push_back(everything(*m_from));
        }
        RC_ASSERT(difference(everything(*m_from), states[now]).empty());
    }
    for (int round = 0; round < 2; ++round) {
        while (now > 0) {
            RC_ASSERT(embedded::undo(*m_from));
            RC_ASSERT(difference(everything(*m_from), states[--now]).empty());
        }
        RC_ASSERT(!embedded::undo(*m_from));
        while (now + 1 < states.size()) {
            RC_ASSERT(embedded::redo(*m_from));
            RC_ASSERT(difference(everything(*m_from), states[++now]).empty());
        }
        RC_ASSERT(!embedded::redo(*m_from));
    }
}

} // namespace
