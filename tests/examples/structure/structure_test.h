#pragma once

#include "embedded/memory_filer.h"
#include "embedded/session.h"
#include "platform/files.h"
#include "structure/beam.h"
#include "structure/edit.h"
#include "structure/frame.h"
#include "structure/load.h"
#include "structure/load_connections.h"
#include "structure/moved_elements_reactor.h"
#include "structure/node.h"
#include "structure/section_plugin.h"
#include "structure/selections.h"
#include "structure/slab.h"
#include "support/report_recorder.h"

#include "appinfo.h"
#include "dbsymtb.h"
#include "rxdlinkr.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace structure_tests {

inline constexpr const wchar_t* kModule = L"structure191_x64.dbx";
inline constexpr const wchar_t* kApplication = L"TaldorkStructure";

// An object that is open for the length of a scope.
template <class T>
class Open {
public:
    explicit Open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead) {
        EXPECT_EQ(acdbOpenObject(m_object, id, mode), Acad::eOk);
        if (m_object == nullptr)
            throw std::runtime_error("the object cannot be opened");
    }
    ~Open() { m_object->close(); }
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }

private:
    T* m_object = nullptr;
};

// Any element, through the host's class.
class OpenElement {
public:
    explicit OpenElement(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead) : m_entity(id, mode) {}
    structure::Element* operator->() const { return structure::Element::cast(&*m_entity); }
    structure::Element& operator*() const { return *structure::Element::cast(&*m_entity); }

private:
    Open<AcDbEntity> m_entity;
};

// Takes the module and its entry away, for the length of a scope.
class WithoutModule {
public:
    WithoutModule() {
        EXPECT_TRUE(acrxDynamicLinker->unloadModule(kModule));
        AcadAppInfo entry;
        entry.setAppName(kApplication);
        EXPECT_EQ(entry.delFromRegistry(), AcadApp::eOk);
    }
    ~WithoutModule() { EXPECT_TRUE(acrxDynamicLinker->loadModule(kModule, false)); }
};

// What an element's class files to the drawing, ids as the handles of what they name.
class StreamFiler : public embedded::MemoryFiler {
public:
    explicit StreamFiler(std::vector<std::uint8_t>& bytes) : MemoryFiler(AcDb::kFileFiler, bytes) {}
    Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override { return put(1, id); }
    Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override { return put(2, id); }
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override { return put(3, id); }
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override { return put(4, id); }

private:
    Acad::ErrorStatus put(Adesk::UInt8 strength, const AcDbObjectId& id) {
        writeUInt8(strength);
        return writeUInt64(id.handle());
    }
};

inline std::vector<std::uint8_t> streamOf(AcDbObjectId id) {
    std::vector<std::uint8_t> bytes;
    StreamFiler filer(bytes);
    const OpenElement element(id);
    EXPECT_EQ(element->entity().dwgOutFields(&filer), Acad::eOk);
    return bytes;
}

using Streams = std::map<Adesk::UInt64, std::vector<std::uint8_t>>;

// The module runs, and a new drawing is the working one.
class StructureTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(acrxDynamicLinker->loadModule(kModule, false));
        folder = platform::makeTemporaryFolder();
        db = embedded::newDocument();
    }
    void TearDown() override { embedded::closeAllDocuments(); }

    std::wstring file(const wchar_t* name) const { return platform::joinPath(folder, name); }

    void save(const std::wstring& name) {
        std::string error;
        ASSERT_TRUE(embedded::saveDocument(*db, name, error)) << error;
    }
    // Closes what is open, and opens a file instead.
    void open(const std::wstring& name) {
        embedded::closeAllDocuments();
        std::string error;
        db = embedded::openDocument(name, error);
        ASSERT_NE(db, nullptr) << error;
    }
    void saveAndOpen() {
        save(file(L"drawing.dwg"));
        open(file(L"drawing.dwg"));
    }

    AcDbObjectId modelSpace(AcDbDatabase& database) const {
        AcDbObjectId id;
        AcDbBlockTable* blocks = nullptr;
        EXPECT_EQ(database.getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
        EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, id), Acad::eOk);
        blocks->close();
        return id;
    }
    // Puts an entity into model space and closes it.
    AcDbObjectId append(AcDbEntity* entity) {
        const Open<AcDbBlockTableRecord> space(modelSpace(*db), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        return id;
    }
    std::vector<AcDbObjectId> entities(AcDbDatabase& database) const {
        std::vector<AcDbObjectId> ids;
        const Open<AcDbBlockTableRecord> space(modelSpace(database));
        AcDbBlockTableRecordIterator* it = nullptr;
        EXPECT_EQ(space->newIterator(it), Acad::eOk);
        const std::unique_ptr<AcDbBlockTableRecordIterator> owned(it);
        for (; !it->done(); it->step()) {
            AcDbObjectId id;
            it->getEntityId(id);
            ids.push_back(id);
        }
        return ids;
    }
    // Of all elements of this module in model space.
    Streams streams() const {
        Streams found;
        for (const AcDbObjectId& id : entities(*db)) {
            AcDbEntity* entity = nullptr;
            EXPECT_EQ(acdbOpenObject(entity, id), Acad::eOk);
            const bool isElement = structure::Element::cast(static_cast<AcDbObject*>(entity)) != nullptr;
            entity->close();
            if (isElement)
                found[id.handle()] = streamOf(id);
        }
        return found;
    }

    structure::Frame frame() {
        structure::FrameOptions options;
        return structure::buildFrame(*db, options);
    }

    AcDbDatabase* db = nullptr;
    std::wstring folder;
    // Elements that are bound to no system are reported when they are read.
    testing_support::ReportRecorder reports;
};

inline std::vector<AcDbObjectId> allOf(const structure::Frame& frame) {
    std::vector<AcDbObjectId> all = frame.nodes;
    for (const auto* list : {&frame.columns, &frame.beams, &frame.slabs, &frame.loads})
        all.insert(all.end(), list->begin(), list->end());
    return all;
}

inline unsigned int numberOf(AcDbObjectId id) { return OpenElement(id)->general()->getNumber(); }
inline std::string bimOf(AcDbObjectId id) { return OpenElement(id)->general()->getBIMID(); }
inline std::set<AcDbObjectId> connectionsOf(AcDbObjectId id) {
    const OpenElement element(id);
    const auto* const connections = element->connections();
    return connections != nullptr ? std::set<AcDbObjectId>(connections->begin(), connections->end())
                                  : std::set<AcDbObjectId>();
}
// The loads that a beam knows of.
inline std::set<AcDbObjectId> loadsOf(AcDbObjectId beam) {
    const Open<structure::Beam> element(beam);
    const auto* const loads = element->loads();
    return loads != nullptr ? std::set<AcDbObjectId>(loads->begin(), loads->end()) : std::set<AcDbObjectId>();
}

} // namespace structure_tests
