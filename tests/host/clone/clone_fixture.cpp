#include "clone_fixture.h"

#include "AcString.h"
#include "db/database_core.h"
#include "db/symbol_index.h"
#include "embedded/memory_filer.h"
#include "rxclass.h"

#include <filesystem>
#include <random>

void CloneFixture::SetUp() {
    registerCloneNodes();
    nodeFaults() = NodeFaults();
    CloneNode::heard().clear();
    m_from = std::make_unique<AcDbDatabase>(true);
    m_to = std::make_unique<AcDbDatabase>(true);
    embedded::forgetHistory(*m_from);
    embedded::forgetHistory(*m_to);
}

void CloneFixture::TearDown() { nodeFaults() = NodeFaults(); }

AcDbObjectId CloneFixture::modelSpace(AcDbDatabase& database) { return database.core().roots.modelSpace; }

AcDbObjectId CloneFixture::dictionary(AcDbDatabase& database, const Texts& path) {
    AcDbObjectId id = database.namedObjectsDictionaryId();
    for (const std::wstring& name : path) {
        AcDbDictionary* parent = open<AcDbDictionary>(id, AcDb::kForWrite);
        if (parent->getAt(name.c_str(), id) != Acad::eOk) {
            auto* made = new AcDbDictionary;
            EXPECT_EQ(parent->setAt(name.c_str(), made, id), Acad::eOk);
            made->close();
        }
        parent->close();
    }
    return id;
}

AcDbObjectId CloneFixture::node(AcDbObjectId dictionary, const wchar_t* name) {
    AcDbDictionary* owner = open<AcDbDictionary>(dictionary, AcDb::kForWrite);
    auto* made = new CloneNode;
    made->fields.text = name;
    AcDbObjectId id;
    EXPECT_EQ(owner->setAt(name, made, id), Acad::eOk);
    made->close();
    owner->close();
    return id;
}

AcDbObjectId CloneFixture::ownedNode(AcDbObjectId owner, const wchar_t* text, bool hard) {
    auto* made = new CloneNode;
    made->fields.text = text;
    AcDbObjectId id;
    EXPECT_EQ(owner.database()->addAcDbObject(id, made), Acad::eOk);
    EXPECT_EQ(made->setOwnerId(owner), Acad::eOk);
    made->close();
    AcDbObject* object = open<AcDbObject>(owner, AcDb::kForWrite);
    object->assertWriteEnabled();
    NodeFields& fields = CloneNode::cast(object) != nullptr ? CloneNode::cast(object)->fields
                                                            : CloneEntity::cast(object)->fields;
    (hard ? fields.hardOwned : fields.softOwned).push_back(id);
    object->close();
    return id;
}

AcDbObjectId CloneFixture::entity(AcDbObjectId blockId, const wchar_t* text) {
    auto* block = open<AcDbBlockTableRecord>(blockId, AcDb::kForWrite);
    auto* made = new CloneEntity;
    made->fields.text = text;
    AcDbObjectId id;
    EXPECT_EQ(block->appendAcDbEntity(id, made), Acad::eOk);
    made->close();
    block->close();
    return id;
}

AcDbObjectId CloneFixture::layer(AcDbDatabase& database, const wchar_t* name, Adesk::UInt16 colour) {
    auto* table = open<AcDbLayerTable>(database.layerTableId(), AcDb::kForWrite);
    auto* made = new AcDbLayerTableRecord;
    made->setName(name);
    made->setColorIndex(colour);
    made->setLinetypeObjectId(database.continuousLinetype());
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, made), Acad::eOk);
    made->close();
    table->close();
    return id;
}

AcDbObjectId CloneFixture::block(AcDbDatabase& database, const wchar_t* name, const Texts& entities) {
    auto* table = open<AcDbBlockTable>(database.blockTableId(), AcDb::kForWrite);
    auto* made = new AcDbBlockTableRecord;
    made->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, made), Acad::eOk);
    made->close();
    table->close();
    for (const std::wstring& text : entities)
        entity(id, text.c_str());
    return id;
}

NodeFields CloneFixture::fieldsOf(AcDbObjectId id) {
    AcDbObject* object = open<AcDbObject>(id);
    if (object == nullptr)
        return NodeFields();
    NodeFields fields;
    if (const auto* node = CloneNode::cast(object))
        fields = node->fields;
    else if (const auto* entity = CloneEntity::cast(object))
        fields = entity->fields;
    else
        ADD_FAILURE() << "neither node nor entity";
    object->close();
    return fields;
}

AcDbObjectId CloneFixture::ownerOf(AcDbObjectId id) {
    AcDbObject* object = open<AcDbObject>(id);
    if (object == nullptr)
        return AcDbObjectId();
    const AcDbObjectId owner = object->ownerId();
    object->close();
    return owner;
}

AcDbObjectId CloneFixture::at(AcDbObjectId dictionaryId, const wchar_t* name) {
    AcDbDictionary* dictionary = open<AcDbDictionary>(dictionaryId);
    AcDbObjectId id;
    dictionary->getAt(name, id);
    dictionary->close();
    return id;
}

AcDbObjectId CloneFixture::record(AcDbObjectId tableId, const wchar_t* name) {
    auto* table = open<AcDbSymbolTable>(tableId);
    AcDbObjectId id;
    table->getAt(name, id);
    table->close();
    return id;
}

Texts CloneFixture::names(AcDbObjectId dictionaryId) {
    Texts all;
    AcDbDictionary* dictionary = open<AcDbDictionary>(dictionaryId);
    const std::unique_ptr<AcDbDictionaryIterator> it(dictionary->newIterator());
    for (; !it->done(); it->next())
        all.emplace_back(it->name());
    dictionary->close();
    return all;
}

Texts CloneFixture::texts(AcDbObjectId blockId) {
    Texts all;
    auto* block = open<AcDbBlockTableRecord>(blockId);
    AcDbBlockTableRecordIterator* made = nullptr;
    EXPECT_EQ(block->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
    for (; !it->done(); it->step()) {
        AcDbObjectId id;
        it->getEntityId(id);
        AcDbObject* entity = open<AcDbObject>(id);
        // Also while the class is not registered.
        const auto* own = dynamic_cast<CloneEntity*>(entity);
        all.push_back(own != nullptr ? own->fields.text : entity->isA()->name());
        entity->close();
    }
    block->close();
    return all;
}

namespace {

// Ids as handles, so that two states of a drawing can be compared.
class HandleFiler : public embedded::MemoryFiler {
public:
    explicit HandleFiler(std::vector<std::uint8_t>& bytes) : MemoryFiler(AcDb::kCopyFiler, bytes) {}
    Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override { return put(id, 3); }
    Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override { return put(id, 5); }
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override { return put(id, 2); }
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override { return put(id, 4); }

private:
    // What is erased or not there is as good as nothing.
    Acad::ErrorStatus put(const AcDbObjectId& id, Adesk::UInt8 code) {
        writeUInt8(code);
        return writeUInt64(embedded::objectIsLive(id) ? static_cast<Adesk::UInt64>(id.handle()) : 0);
    }
};

} // namespace

Texts CloneFixture::everything(AcDbDatabase& database) {
    Texts all;
    database.core().stubs().forEach([&](AcDbStub& stub) {
        AcDbObject* object = nullptr;
        if (acdbOpenAcDbObject(object, AcDbObjectId(&stub), AcDb::kForRead) != Acad::eOk)
            return;
        std::wstring line = std::to_wstring(stub.handle) + L" " + object->isA()->name() + L" ";
        std::vector<std::uint8_t> bytes;
        HandleFiler filer(bytes);
        EXPECT_EQ(object->dwgOutFields(&filer), Acad::eOk);
        for (std::uint8_t byte : bytes) {
            line += L"0123456789ABCDEF"[byte >> 4];
            line += L"0123456789ABCDEF"[byte & 15];
        }
        all.push_back(line);
        object->close();
    });
    return all;
}

std::wstring CloneFixture::difference(const Texts& a, const Texts& b) {
    for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
        const std::wstring first = i < a.size() ? a[i] : L"nothing",
                           second = i < b.size() ? b[i] : L"nothing";
        if (first != second)
            return first + L" against " + second;
    }
    return std::wstring();
}

AcDbObjectIdArray CloneFixture::ids(std::initializer_list<AcDbObjectId> all) {
    AcDbObjectIdArray array;
    for (const AcDbObjectId& id : all)
        array.append(id);
    return array;
}

AcDbObjectId CloneFixture::cloneOf(const AcDbIdMapping& mapping, AcDbObjectId key) {
    AcDbIdPair pair;
    pair.setKey(key);
    return mapping.compute(pair) ? pair.value() : AcDbObjectId();
}

CloneFolder::CloneFolder() {
    std::random_device random;
    const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                       ("clones" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path);
    m_path = path.wstring();
}

CloneFolder::~CloneFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::wstring CloneFolder::file(const wchar_t* name) const {
    return (std::filesystem::path(m_path) / name).wstring();
}
