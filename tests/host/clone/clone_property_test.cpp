#include "clone_fixture.h"

#include "db/database_core.h"

#include <rapidcheck/gtest.h>

namespace {

// What a drawing's model space is to hold, with its history.
struct Model {
    std::vector<Texts> states{Texts()};
    std::size_t now = 0;

    const Texts& content() const { return states[now]; }
    void change(Texts to) {
        states.resize(now + 1);
        states.push_back(std::move(to));
        ++now;
    }
    void forget() {
        states = {content()};
        now = 0;
    }
};

class CloneModel : public CloneFixture {
protected:
    struct Drawing {
        std::unique_ptr<AcDbDatabase> database;
        Model model;
    };

    void start() {
        registerCloneNodes();
        for (Drawing& drawing : m_drawings) {
            drawing.database = std::make_unique<AcDbDatabase>(true);
            drawing.model = Model();
            embedded::forgetHistory(*drawing.database);
        }
    }
    // The id of the live entity at an index of the model.
    static AcDbObjectId nth(AcDbDatabase& database, std::size_t index) {
        auto* block = open<AcDbBlockTableRecord>(modelSpace(database));
        AcDbBlockTableRecordIterator* made = nullptr;
        block->newIterator(made);
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
        for (; index > 0; --index)
            it->step();
        AcDbObjectId id;
        it->getEntityId(id);
        block->close();
        return id;
    }
    void add(Drawing& drawing) {
        const std::wstring text = L"T" + std::to_wstring(++m_number);
        embedded::beginCommand(*drawing.database);
        const AcDbObjectId id = entity(modelSpace(*drawing.database), text.c_str());
        ownedNode(id, L"owned");
        Texts content = drawing.model.content();
        content.push_back(text);
        drawing.model.change(content);
    }
    void clone(Drawing& from, Drawing& to, std::size_t which) {
        if (from.model.content().empty())
            return;
        which %= from.model.content().size();
        const AcDbObjectId id = nth(*from.database, which);
        embedded::beginCommand(*to.database);
        AcDbIdMapping mapping;
        AcDbObjectId owner = modelSpace(*to.database);
        const Acad::ErrorStatus es =
            &from == &to ? to.database->deepCloneObjects(ids({id}), owner, mapping)
                         : to.database->wblockCloneObjects(ids({id}), owner, mapping, AcDb::kDrcReplace);
        RC_ASSERT(es == Acad::eOk);
        Texts content = to.model.content();
        content.push_back(from.model.content()[which]);
        to.model.change(content);
    }
    void erase(Drawing& drawing, std::size_t which) {
        if (drawing.model.content().empty())
            return;
        which %= drawing.model.content().size();
        embedded::beginCommand(*drawing.database);
        change<CloneEntity>(nth(*drawing.database, which), [](CloneEntity& e) { e.erase(); });
        Texts content = drawing.model.content();
        content.erase(content.begin() + static_cast<std::ptrdiff_t>(which));
        drawing.model.change(content);
    }
    static void undo(Drawing& drawing) {
        RC_ASSERT(embedded::undo(*drawing.database) == (drawing.model.now > 0));
        drawing.model.now -= drawing.model.now > 0 ? 1 : 0;
    }
    static void redo(Drawing& drawing) {
        const bool there = drawing.model.now + 1 < drawing.model.states.size();
        RC_ASSERT(embedded::redo(*drawing.database) == there);
        drawing.model.now += there ? 1 : 0;
    }
    void saveAndReopen(Drawing& drawing) {
        std::string error;
        const std::wstring file = m_folder.file(L"a.dwg");
        RC_ASSERT(embedded::saveDocument(*drawing.database, file, error));
        const Texts before = everything(*drawing.database);
        drawing.database = std::make_unique<AcDbDatabase>(false);
        RC_ASSERT(drawing.database->readDwgFile(file.c_str()) == Acad::eOk);
        RC_ASSERT(difference(everything(*drawing.database), before).empty());
        drawing.model.forget();
    }
    void check(const Drawing& drawing) {
        RC_ASSERT(texts(modelSpace(*drawing.database)) == drawing.model.content());
        for (std::size_t i = 0; i < drawing.model.content().size(); ++i) {
            const AcDbObjectId id = nth(*drawing.database, i);
            const NodeFields fields = fieldsOf(id);
            RC_ASSERT(fields.hardOwned.size() == 1);
            RC_ASSERT(ownerOf(fields.hardOwned[0]) == id);
        }
    }

    Drawing m_drawings[2];
    CloneFolder m_folder;
    int m_number = 0;
};

RC_GTEST_FIXTURE_PROP(CloneModel, AnyStepsKeepModelAndDrawingsEqual, ()) {
    start();
    const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 100000));
    for (int step : steps) {
        Drawing& one = m_drawings[step % 2];
        Drawing& other = m_drawings[1 - step % 2];
        const std::size_t which = static_cast<std::size_t>(step) / 100;
        switch (step / 2 % 10) {
        case 0:
        case 1:
            add(one);
            break;
        case 2:
        case 3:
            clone(one, one, which);
            break;
        case 4:
        case 5:
            clone(one, other, which);
            break;
        case 6:
            erase(one, which);
            break;
        case 7:
            undo(one);
            break;
        case 8:
            redo(one);
            break;
        default:
            saveAndReopen(one);
        }
        check(one);
        check(other);
    }
}

} // namespace
