#include "db/database_core.h"

#include "db/object_access.h"
#include "db/transactions.h"

#include <deque>

namespace embedded {

namespace {

// Tags are kept for the life of the process: ids ask them whether their database is still there.
DatabaseTag* newTag(DatabaseCore* core) {
    static std::deque<DatabaseTag>* tags = new std::deque<DatabaseTag>;
    tags->push_back({tags->size() + 1, core});
    return &tags->back();
}

} // namespace

DatabaseCore::DatabaseCore(AcDbDatabase& owner)
    : m_owner(owner), m_tag(newTag(this)), m_stubs(m_tag),
      m_transactions(std::make_unique<TransactionManager>(*this)) {}

DatabaseCore::~DatabaseCore() {
    m_undo.setRecording(false);
    m_stubs.forEach([](AcDbStub& stub) {
        AcDbObject* object = stub.object;
        stub.object = nullptr;
        stub.bits = (stub.bits & (kUsed | kErased)) | kPermanentlyErased;
        delete object;
    });
    m_tag->core = nullptr;
}

AcDbObjectId DatabaseCore::idOf(std::uint64_t handle) {
    return handle == 0 ? AcDbObjectId() : AcDbObjectId(&m_stubs.make(handle));
}

AcDbObjectId DatabaseCore::add(AcDbObject* object) {
    // A handle that a reference of the file names, though nothing stands there, is not given to something
    // new.
    while (m_stubs.find(handseed) != nullptr)
        ++handseed;
    return addWithHandle(object, handseed);
}

AcDbObjectId DatabaseCore::addWithHandle(AcDbObject* object, std::uint64_t handle) {
    AcDbStub& stub = m_stubs.make(handle);
    if (handseed <= handle)
        handseed = handle + 1;
    stub.object = object;
    stub.set(kOpenForWrite | kDirty | kNewSinceOpen | kWrittenSinceOpen);
    ObjectAccess::setId(*object, AcDbObjectId(&stub));
    m_undo.recordErasedBit(stub, true, true);
    ObjectAccess::undoScope(*object) = m_undo.scope();
    modified = true;
    return AcDbObjectId(&stub);
}

Acad::ErrorStatus DatabaseCore::resident(AcDbStub& stub, AcDbObject*& object) {
    if (stub.object != nullptr) {
        const bool replaceable = stub.has(kStandIn) && !stub.isOpen() && !stub.has(kDirty);
        if (!replaceable || !source->canComeAlive(stub)) {
            object = stub.object;
            return Acad::eOk;
        }
        delete stub.object;
        stub.object = nullptr;
        stub.clear(kStandIn);
    }
    object = nullptr;
    // A handle that something names and that has no object: what it named is gone for good.
    if (stub.fileIndex == kNoFileIndex || source == nullptr)
        return Acad::ePermanentlyErased;
    if (stub.has(kLoading))
        return Acad::eWasOpenForWrite;
    if (stub.has(kLoadFailed)) {
        auto failure = m_loadFailures.find(&stub);
        if (failure != m_loadFailures.end())
            return failure->second;
    }
    std::unique_ptr<AcDbObject> made;
    stub.set(kLoading);
    Acad::ErrorStatus es = source->load(stub, made);
    stub.clear(kLoading);
    if (es != Acad::eOk || made == nullptr) {
        stub.object = nullptr;
        stub.set(kLoadFailed);
        es = es != Acad::eOk ? es : Acad::eDwgObjectImproperlyRead;
        m_loadFailures[&stub] = es;
        return es;
    }
    stub.object = made.release();
    ObjectAccess::setId(*stub.object, AcDbObjectId(&stub));
    object = stub.object;
    return Acad::eOk;
}

void DatabaseCore::dropErased() {
    m_stubs.forEach([](AcDbStub& stub) {
        if (!stub.has(kErased) || stub.isOpen())
            return;
        AcDbObject* object = stub.object;
        stub.object = nullptr;
        stub.set(kPermanentlyErased);
        delete object;
    });
}

} // namespace embedded
