#include "db/open_close.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "db/reactors/notices.h"
#include "embedded/guarded.h"
#include "rxclass.h"

namespace embedded {

namespace {

Acad::ErrorStatus refusal(const AcDbStub& stub, AcDb::OpenMode mode) {
    switch (mode) {
    case AcDb::kForRead:
        if (stub.has(kOpenForWrite))
            return Acad::eWasOpenForWrite;
        if (stub.has(kOpenForNotify))
            return Acad::eWasOpenForNotify;
        return stub.readers() >= kMaxReaders ? Acad::eAtMaxReaders : Acad::eOk;
    case AcDb::kForWrite:
        if (stub.has(kOpenForWrite))
            return Acad::eWasOpenForWrite;
        if (stub.has(kOpenForNotify))
            return Acad::eWasOpenForNotify;
        return stub.readers() != 0 ? Acad::eWasOpenForRead : Acad::eOk;
    case AcDb::kForNotify:
        // Whoever reads or writes an object may be told of another one's change: notify stands beside both.
        return stub.has(kOpenForNotify) ? Acad::eWasOpenForNotify : Acad::eOk;
    }
    return Acad::eInvalidInput;
}

// What happened to an object since it was opened for write. The marks go first: a reactor may change it
// again.
void tellOfChanges(AcDbStub& stub) {
    const std::uint32_t marks = stub.bits & kOpenMarks;
    stub.clear(kEraseToggled);
    if ((marks & kWrittenSinceOpen) != 0 && (marks & kNewSinceOpen) == 0)
        notices::modified(*stub.object);
    if ((marks & kEraseToggled) != 0)
        notices::erased(*stub.object, stub.has(kErased));
}

} // namespace

Acad::ErrorStatus openStub(AcDbStub* stub, AcDb::OpenMode mode, bool openErased, AcDbObject*& object) {
    object = nullptr;
    if (stub == nullptr)
        return Acad::eNullObjectId;
    DatabaseCore* core = stub->tag->core;
    if (core == nullptr)
        return Acad::eInvalidInput;
    if (stub->has(kPermanentlyErased))
        return Acad::ePermanentlyErased;
    if (stub->has(kErased) && !openErased)
        return Acad::eWasErased;
    Acad::ErrorStatus es = refusal(*stub, mode);
    if (es != Acad::eOk)
        return es;
    AcDbObject* opened = nullptr;
    es = core->resident(*stub, opened);
    if (es != Acad::eOk)
        return es;
    es = ObjectAccess::subOpen(*opened, mode);
    if (es != Acad::eOk)
        return es;
    if (mode == AcDb::kForRead)
        ++stub->bits;
    else if (mode == AcDb::kForWrite) {
        stub->set(kOpenForWrite);
        ObjectAccess::bits(*opened) &= ~static_cast<std::uint32_t>(kGraphicsModified);
    } else
        stub->set(kOpenForNotify);
    object = opened;
    return Acad::eOk;
}

Acad::ErrorStatus closeStub(AcDbStub& stub) {
    if (!stub.isOpen())
        return Acad::eNotOpenForRead;
    Acad::ErrorStatus es = Acad::eOk;
    try {
        es = ObjectAccess::subClose(*stub.object);
    } catch (...) {
        // An answer keeps an object open; what is thrown does not, since nobody would close it again.
        printCaught(std::wstring(stub.object->isA()->name()) + L" failed when it was closed");
    }
    if (es != Acad::eOk)
        return es;
    if (stub.has(kOpenForNotify) && !stub.has(kOpenForWrite) && stub.readers() == 0) {
        stub.clear(kOpenForNotify);
        return Acad::eOk;
    }
    if (stub.has(kOpenForWrite)) {
        tellOfChanges(stub);
        stub.clear(kOpenForWrite | kOpenMarks);
    } else {
        --stub.bits;
    }
    notices::closed(*stub.object);
    return Acad::eOk;
}

Acad::ErrorStatus upgradeStub(AcDbStub& stub) {
    if (stub.has(kOpenForWrite))
        return Acad::eOk;
    if (stub.readers() == 0)
        return Acad::eNotOpenForRead;
    if (stub.readers() > 1)
        return Acad::eHadMultipleReaders;
    Acad::ErrorStatus es = ObjectAccess::subOpen(*stub.object, AcDb::kForWrite);
    if (es != Acad::eOk)
        return es;
    --stub.bits;
    stub.set(kOpenForWrite);
    return Acad::eOk;
}

Acad::ErrorStatus downgradeStub(AcDbStub& stub) {
    if (!stub.has(kOpenForWrite))
        return Acad::eNotOpenForWrite;
    tellOfChanges(stub);
    stub.clear(kOpenForWrite | kOpenMarks);
    ++stub.bits;
    return Acad::eOk;
}

void eraseOwned(AcDbStub& stub, bool erasing) {
    if (stub.has(kPermanentlyErased) || stub.has(kErased) == erasing || stub.tag->core == nullptr)
        return;
    AcDbObject* object = nullptr;
    if (stub.tag->core->resident(stub, object) != Acad::eOk)
        return;
    // An undo that erases the owner or brings it back has records of what went with it.
    const AcDbStub* owner = object->ownerId();
    if (owner != nullptr && owner->has(kUndoing))
        return;
    // The owner's going decides, whoever else has the object open now.
    const std::uint32_t before = stub.bits & (kOpenForWrite | kOpenMarks);
    stub.set(kOpenForWrite);
    if (object->erase(erasing) != Acad::eOk) {
        // A proxy that refuses to go, say: without its owner it would be an object that nothing leads to.
        stub.tag->core->undo().recordErasedBit(stub, !erasing);
        erasing ? stub.set(kErased) : stub.clear(kErased);
        stub.set(kDirty);
    }
    if ((before & kOpenForWrite) == 0) {
        tellOfChanges(stub);
        stub.clear(kOpenForWrite | kOpenMarks);
        stub.set(before);
    }
}

} // namespace embedded
