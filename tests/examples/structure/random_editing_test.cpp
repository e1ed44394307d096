// Whatever is done to a frame in whatever order: the history gives each state back, a file keeps it, and the
// elements stay elements of their own.

#include "examples/structure/structure_test.h"

#include "dbx/elem/generic_load.h"
#include "embedded/session.h"

#include <rapidcheck/gtest.h>

#include <map>
#include <set>

namespace structure_tests {
namespace {

using structure::Beam;
using structure::Load;
using structure::Node;
using structure::Slab;

// What a user would say of an element: where it is, which nodes a beam stands at, and which beam a load
// stands on. By handles.
struct Known {
    AcRxClass* kind = nullptr;
    AcGePoint3d first, second;
    Adesk::UInt64 startNode = 0, endNode = 0;
    Adesk::UInt64 beam = 0;
    // Of a load on a beam, from the beam's first point: what stays the same wherever the beam goes.
    AcGeVector3d toFirst, toSecond;
};
using Model = std::map<Adesk::UInt64, Known>;

bool operator==(const Known& a, const Known& b) {
    return a.kind == b.kind && a.first.isEqualTo(b.first) && a.second.isEqualTo(b.second) &&
           a.startNode == b.startNode && a.endNode == b.endNode && a.beam == b.beam;
}

Known lookAt(const AcDbObjectId& id) {
    Known known;
    known.kind = id.objectClass();
    if (known.kind == Node::desc()) {
        known.first = known.second = Open<Node>(id)->position();
    } else if (known.kind == Slab::desc()) {
        const Open<Slab> slab(id);
        known.first = slab->corners().front();
        known.second = slab->corners().back();
    } else if (known.kind == Load::desc()) {
        const Open<Load> load(id);
        const auto& vertices = load->plugin()->getVertices();
        known.first = load->isEmpty() ? vertices.front().point : load->startPoint();
        known.second = load->isEmpty() ? vertices.back().point : load->endPoint();
        known.beam = load->beam().handle();
        if (known.beam != 0) {
            const AcGePoint3d begin = Open<Beam>(load->beam())->startPoint();
            known.toFirst = known.first - begin;
            known.toSecond = known.second - begin;
        }
    } else {
        const Open<Beam> beam(id);
        beam->getStartPoint(known.first);
        beam->getEndPoint(known.second);
        known.startNode = beam->startNode().handle();
        known.endNode = beam->endNode().handle();
    }
    return known;
}

// What a move is expected to do: nodes come to the ends of the beams that moved, the newest beam last, and
// loads to where they stand on theirs, whether these or they themselves moved.
void moveIn(Model& model, const std::set<Adesk::UInt64>& moved, const AcGeVector3d& offset) {
    for (const Adesk::UInt64 handle : moved) {
        model[handle].first += offset;
        model[handle].second += offset;
    }
    for (const Adesk::UInt64 handle : moved) {
        const Known beam = model[handle];
        if (beam.startNode != 0)
            model[beam.startNode].first = model[beam.startNode].second = beam.first;
        if (beam.endNode != 0)
            model[beam.endNode].first = model[beam.endNode].second = beam.second;
    }
    for (auto& [handle, load] : model) {
        if (load.beam == 0)
            continue;
        load.first = model[load.beam].first + load.toFirst;
        load.second = model[load.beam].first + load.toSecond;
    }
}

// What is copied of these: loads only with their beams.
std::vector<AcDbObjectId> copied(const Model& model, const std::vector<AcDbObjectId>& chosen) {
    std::set<Adesk::UInt64> handles;
    for (const AcDbObjectId& id : chosen)
        handles.insert(id.handle());
    std::vector<AcDbObjectId> left;
    for (const AcDbObjectId& id : chosen) {
        const Adesk::UInt64 beam = model.at(id.handle()).beam;
        if (beam == 0 || handles.count(beam) != 0)
            left.push_back(id);
    }
    return left;
}

// A copy stands at a node if that was copied with it.
void copyIn(Model& model, const std::vector<AcDbObjectId>& originals, const std::vector<AcDbObjectId>& copies,
            const AcGeVector3d& offset) {
    std::map<Adesk::UInt64, Adesk::UInt64> copyOf;
    std::set<Adesk::UInt64> made;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        copyOf[originals[i].handle()] = copies[i].handle();
        made.insert(copies[i].handle());
    }
    for (const auto& pair : copyOf) {
        Known known = model[pair.first];
        for (Adesk::UInt64* const node : {&known.startNode, &known.endNode})
            *node = copyOf.count(*node) != 0 ? copyOf[*node] : 0;
        if (known.beam != 0)
            known.beam = copyOf.at(known.beam);
        model[pair.second] = known;
    }
    moveIn(model, made, offset);
}

// A node takes its beams with it, and a beam its loads.
void eraseIn(Model& model, const std::vector<AcDbObjectId>& erased) {
    const auto eraseWhere = [&](const auto& isToGo) {
        for (auto it = model.begin(); it != model.end();)
            it = isToGo(it->second) ? model.erase(it) : std::next(it);
    };
    for (const AcDbObjectId& id : erased) {
        const Adesk::UInt64 handle = id.handle();
        model.erase(handle);
        eraseWhere([&](const Known& one) { return one.startNode == handle || one.endNode == handle; });
    }
    eraseWhere([&](const Known& one) { return one.beam != 0 && model.count(one.beam) == 0; });
}

// A drawing, and what has stood in it so far, newest last.
class EditedDrawing {
public:
    explicit EditedDrawing(const std::wstring& folder) : m_folder(folder), m_db(embedded::newDocument()) {
        structure::FrameOptions options;
        options.bays = 1;
        options.storeys = 1;
        structure::buildFrame(*m_db, options);
        m_states.push_back({streams(), look()});
    }
    ~EditedDrawing() { embedded::closeAllDocuments(); }

    std::vector<AcDbObjectId> elements() const {
        std::vector<AcDbObjectId> ids;
        AcDbObjectId space;
        AcDbBlockTable* blocks = nullptr;
        m_db->getBlockTable(blocks, AcDb::kForRead);
        blocks->getAt(ACDB_MODEL_SPACE, space);
        blocks->close();
        const Open<AcDbBlockTableRecord> record(space);
        AcDbBlockTableRecordIterator* raw = nullptr;
        record->newIterator(raw);
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
        for (; !it->done(); it->step()) {
            AcDbObjectId id;
            it->getEntityId(id);
            ids.push_back(id);
        }
        return ids;
    }

    Streams streams() const {
        Streams found;
        for (const AcDbObjectId& id : elements())
            found[id.handle()] = streamOf(id);
        return found;
    }

    Model look() const {
        Model model;
        for (const AcDbObjectId& id : elements())
            model[id.handle()] = lookAt(id);
        return model;
    }

    // Some of what is there.
    std::vector<AcDbObjectId> pick() const {
        const std::vector<AcDbObjectId> all = elements();
        std::vector<AcDbObjectId> chosen;
        for (const AcDbObjectId& id : all)
            if (*rc::gen::inRange(0, 3) == 0)
                chosen.push_back(id);
        return chosen;
    }

    void change(int kind) {
        const std::vector<AcDbObjectId> chosen = pick();
        if (chosen.empty())
            return;
        const AcGeVector3d offset(*rc::gen::inRange(-3, 4), *rc::gen::inRange(-3, 4),
                                  *rc::gen::inRange(-3, 4));
        embedded::beginCommand(*m_db);
        Model expected = m_states[m_at].model;
        std::vector<AcDbObjectId> copies;
        if (kind == 0) {
            RC_ASSERT(structure::moveElements(*m_db, chosen, offset) == Acad::eOk);
            std::set<Adesk::UInt64> moved;
            for (const AcDbObjectId& id : chosen)
                moved.insert(id.handle());
            moveIn(expected, moved, offset);
        } else if (kind == 1) {
            RC_ASSERT(structure::copyElements(*m_db, chosen, offset, copies) == Acad::eOk);
            const std::vector<AcDbObjectId> originals = copied(expected, chosen);
            RC_ASSERT(copies.size() == originals.size());
            copyIn(expected, originals, copies, offset);
        } else {
            RC_ASSERT(structure::eraseElements(chosen) == Acad::eOk);
            eraseIn(expected, chosen);
        }
        m_states.resize(m_at + 1);
        m_states.push_back({streams(), expected});
        ++m_at;
    }

    void undo() {
        if (m_at == 0)
            return;
        RC_ASSERT(embedded::undo(*m_db));
        --m_at;
        RC_ASSERT(isAsBefore());
    }

    void redo() {
        if (m_at + 1 == m_states.size())
            return;
        RC_ASSERT(embedded::redo(*m_db));
        ++m_at;
        RC_ASSERT(isAsBefore());
    }

    // The history does not go into the file.
    void saveAndOpen() {
        std::string error;
        const std::wstring name = platform::joinPath(m_folder, L"random.dwg");
        RC_ASSERT(embedded::saveDocument(*m_db, name, error));
        embedded::closeAllDocuments();
        m_db = embedded::openDocument(name, error);
        RC_ASSERT(m_db != nullptr);
        RC_ASSERT(isAsBefore());
        m_states = {m_states[m_at]};
        m_at = 0;
    }

    void check() const {
        RC_ASSERT(look() == m_states[m_at].model);
        std::map<AcRxClass*, std::set<unsigned int>> numbers;
        std::set<std::string> identifiers;
        std::map<Adesk::UInt64, std::set<Adesk::UInt64>> loads, known;
        for (const auto& [handle, one] : m_states[m_at].model)
            if (one.beam != 0)
                loads[one.beam].insert(handle);
        for (const AcDbObjectId& id : elements()) {
            if (id.objectClass() == Beam::desc())
                for (const AcDbObjectId& load : loadsOf(id))
                    known[id.handle()].insert(load.handle());
            RC_ASSERT(numbers[id.objectClass()].insert(numberOf(id)).second);
            RC_ASSERT(identifiers.insert(bimOf(id)).second);
        }
        RC_ASSERT(known == loads);
    }

private:
    struct State {
        Streams streams;
        Model model;
    };

    // Told as a yes or no: streams are long.
    bool isAsBefore() const { return streams() == m_states[m_at].streams; }

    std::wstring m_folder;
    AcDbDatabase* m_db;
    std::vector<State> m_states;
    std::size_t m_at = 0;
};

RC_GTEST_FIXTURE_PROP(StructureTest, EditingKeepsModelHistoryAndFileEqual, ()) {
    EditedDrawing drawing(folder);
    const int steps = *rc::gen::inRange(1, 14);
    for (int i = 0; i < steps; ++i) {
        const int action = *rc::gen::inRange(0, 7);
        if (action < 3)
            drawing.change(action);
        else if (action < 5)
            drawing.undo();
        else if (action == 5)
            drawing.redo();
        else
            drawing.saveAndOpen();
        drawing.check();
    }
}

} // namespace
} // namespace structure_tests
