// Writes a drawing with four nodes of the example front end, as a person's work would hardly leave them:
//
//   first   number 3, with properties, named values, a log, and a plugin that nobody knows
//   second  number 3 as well
//   third   number 6
//   fourth  no number
//
// and one line. The first two stand in the selection "pair".

#include "arx/dictionary_utils.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "dbx/dictionary.h"
#include "dbx/elem/element_log.h"
#include "dbx/out_archive.h"
#include "embedded/host_start.h"
#include "platform/text.h"
#include "rxdlinkr.h"
#include "structure/node.h"
#include "structure/selections.h"

#include <boost/make_shared.hpp>

#include <cstdio>

namespace {

// The element's own log is for derived classes.
class LoggedNode : public structure::Node {
public:
    using Node::assertLog;
    using Node::Node;
};

// Filed under an id for which no module brings a creator.
class UnknownPlugin : public orv::elem::ElementBase::IPlugin {
public:
    explicit UnknownPlugin(AcDbObjectId id) : m_id(id) {
        setProperties().add<int>(12, -5);
        properties(AcDb::kForWrite).add("kept", boost::any(std::string("as it is")));
    }
    const std::string& pluginId() const override {
        static const std::string id = "test.away.1";
        return id;
    }

protected:
    bool onSave(orv::serialization::IOutArchive& archive) const override {
        archive << 42;
        archive.softPointer(m_id);
        return true;
    }

private:
    AcDbObjectId m_id;
};

AcDbObjectId put(AcDbDatabase& drawing, AcDbEntity* entity) {
    AcDbBlockTable* blocks = nullptr;
    AcDbBlockTableRecord* space = nullptr;
    drawing.getBlockTable(blocks, AcDb::kForRead);
    blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
    AcDbObjectId id;
    space->appendAcDbEntity(id, entity);
    entity->close();
    space->close();
    blocks->close();
    return id;
}

// A store without a system.
constexpr const wchar_t* kStore = L"LOOSE";

AcDbObjectId makeStore(AcDbDatabase& drawing) {
    AcDbObjectId id = orv::dictionary::getOrCreateKelmoran(&drawing);
    return orv::acad::get_subDict_id(id, kStore, true, &drawing);
}

LoggedNode* makeNode(AcDbObjectId store, double x, const wchar_t* name, unsigned int number) {
    auto* const node = new LoggedNode(AcGePoint3d(x, 0.0, 0.0));
    node->bindTo(store, kStore);
    node->general()->setName(name);
    node->general()->setNumber(number);
    return node;
}

void enrich(LoggedNode& node, AcDbObjectId other) {
    node.setProperties().add<unsigned int>(30003, 7);
    node.setProperties().add<std::wstring>(5, L"Gr\xfc\xdf"
                                              L"e\t\"x\"");
    node.setProperties().add<AcDbObjectId>(6, other);
    node.properties(AcDb::kForWrite).add("a", boost::any(1)).add("b", boost::any(2.5));
    node.properties(AcDb::kForWrite).add("corner", boost::any(AcGePoint3d(1.0, 2.0, -3.0)));
    orv::ElementLog& log = node.assertLog();
    log.append(orv::kLogError, 17, 3);
    log.append(orv::kLogWarning, 18, boost::any(std::wstring(L"too long")), 1);
    node.addPlugin(boost::make_shared<UnknownPlugin>(other));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    embedded::startHost();
    if (!acrxDynamicLinker->loadModule(L"structure191_x64.dbx", false)) {
        std::fputs("the example's module cannot be loaded\n", stderr);
        return 1;
    }
    AcDbDatabase drawing(true);
    acdbHostApplicationServices()->setWorkingDatabase(&drawing);
    put(drawing, new AcDbLine(AcGePoint3d(), AcGePoint3d(1.0, 0.0, 0.0)));
    const AcDbObjectId store = makeStore(drawing);
    const AcDbObjectId second = put(drawing, makeNode(store, 1.0, L"second", 3));
    put(drawing, makeNode(store, 2.0, L"third", 6));
    put(drawing, makeNode(store, 3.0, L"", 0));
    LoggedNode* const first = makeNode(store, 0.0, L"Knoten \xdc\nx", 3);
    enrich(*first, second);
    const AcDbObjectId firstId = put(drawing, first);
    if (structure::setSelection(drawing, L"pair", {second, firstId}) != Acad::eOk ||
        drawing.saveAs(platform::fromUtf8(argv[1]).c_str()) != Acad::eOk) {
        std::fputs("the drawing cannot be written\n", stderr);
        return 1;
    }
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    return 0;
}
